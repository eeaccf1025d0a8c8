#include "viewer/view_table.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#include "analysis/views.h"
#include "core/working_files.h"
#include "viewer/geometry.h"

namespace corvane {
namespace {

// A slot whose picture was made from a pseudo-color view keeps its palette.
std::filesystem::path OwnHeader(const ModCV& cv) { return cv.SlotBitmap(cv.CurrentSlot); }
std::filesystem::path GrayHeader(const ModCV& cv) { return cv.AppDir / kGrayTemplate; }
std::filesystem::path PaletteHeader(const ModCV& cv) {
  const int last = static_cast<int>(std::size(kPalettes)) - 1;
  return cv.AppDir / kPalettes[std::clamp(cv.PColorSetting, 0, last)];
}

void Raster(const ModCV& cv, ConstGrayView source, GrayView result) {
  RasterView(source, cv.RasterCycles, result);
}
void Edge(const ModCV&, ConstGrayView source, GrayView result) { EdgeView(source, result); }
void Negative(const ModCV&, ConstGrayView source, GrayView result) { NegativeView(source, result); }
void Unchanged(const ModCV&, ConstGrayView source, GrayView result) {
  std::memcpy(result.bits, source.bits, source.Size());
}
template <void (*Form)(ConstGrayView, GrayView)>
void Geometry(const ModCV&, ConstGrayView source, GrayView result) {
  Form(source, result);
}

void NegateData(FloatImage& image) { NegativeData(image.Edit()); }
template <FloatImage (*Form)(ConstFloatView)>
void DataGeometry(FloatImage& image) {
  image = Form(image.View());
}

Mark BeforeRotate90(Mark shown, int, int height) { return {shown.y, height - 1 - shown.x}; }
Mark BeforeRotate180(Mark shown, int width, int height) {
  return {width - 1 - shown.x, height - 1 - shown.y};
}
Mark BeforeFlipVertical(Mark shown, int width, int) { return {width - 1 - shown.x, shown.y}; }
Mark BeforeFlipHorizontal(Mark shown, int, int height) { return {shown.x, height - 1 - shown.y}; }

constexpr ViewEntry kViews[] = {
    {.menuIndex = kRaster, .header = OwnHeader, .display = Raster},
    {.menuIndex = kEdge, .header = OwnHeader, .display = Edge},
    {.menuIndex = kNegative, .header = OwnHeader, .display = Negative, .data = NegateData},
    {.menuIndex = kPseudoColor, .isColor = true, .header = PaletteHeader, .display = Unchanged},
    {.menuIndex = kDeconvolution, .deconvolves = true, .header = OwnHeader},
    {.menuIndex = kRotate90,
     .transposes = true,
     .header = GrayHeader,
     .display = Geometry<Rotate90>,
     .data = DataGeometry<Rotate90>,
     .source = BeforeRotate90},
    {.menuIndex = kRotate180,
     .header = GrayHeader,
     .display = Geometry<Rotate180>,
     .data = DataGeometry<Rotate180>,
     .source = BeforeRotate180},
    {.menuIndex = kFlipVertical,
     .header = GrayHeader,
     .display = Geometry<FlipVertical>,
     .data = DataGeometry<FlipVertical>,
     .source = BeforeFlipVertical},
    {.menuIndex = kFlipHorizontal,
     .header = GrayHeader,
     .display = Geometry<FlipHorizontal>,
     .data = DataGeometry<FlipHorizontal>,
     .source = BeforeFlipHorizontal},
};

}  // namespace

std::span<const ViewEntry> ViewTable() { return kViews; }

}  // namespace corvane
