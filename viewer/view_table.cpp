#include "viewer/view_table.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#include "analysis/views.h"
#include "core/working_files.h"
#include "viewer/geometry.h"

namespace corvane {
namespace {

// A slot whose picture was made from a pseudo-colour view keeps its palette.
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
template <void (*Turn)(ConstGrayView, GrayView)>
void Turned(const ModCV&, ConstGrayView source, GrayView result) {
  Turn(source, result);
}

void NegateData(FloatImage& image) { NegativeData(image.Edit()); }
template <FloatImage (*Turn)(ConstFloatView)>
void TurnData(FloatImage& image) {
  image = Turn(image.View());
}

Mark Same(Mark shown, int, int) { return shown; }
Mark BeforeQuarterTurn(Mark shown, int, int height) { return {shown.y, height - 1 - shown.x}; }
Mark BeforeHalfTurn(Mark shown, int width, int height) { return {width - 1 - shown.x, height - 1 - shown.y}; }
Mark BeforeFlipVertical(Mark shown, int width, int) { return {width - 1 - shown.x, shown.y}; }
Mark BeforeFlipHorizontal(Mark shown, int, int height) { return {shown.x, height - 1 - shown.y}; }

constexpr ViewEntry kViews[] = {
    {4, false, false, false, OwnHeader, Raster, nullptr, Same},
    {5, false, false, false, OwnHeader, Edge, nullptr, Same},
    {6, false, false, false, OwnHeader, Negative, NegateData, Same},
    {7, false, true, false, PaletteHeader, Unchanged, nullptr, Same},
    {8, false, false, true, OwnHeader, nullptr, nullptr, Same},
    {13, true, false, false, GrayHeader, Turned<Rotate90>, TurnData<Rotate90>, BeforeQuarterTurn},
    {14, false, false, false, GrayHeader, Turned<Rotate180>, TurnData<Rotate180>, BeforeHalfTurn},
    {15, false, false, false, GrayHeader, Turned<FlipVertical>, TurnData<FlipVertical>, BeforeFlipVertical},
    {16, false, false, false, GrayHeader, Turned<FlipHorizontal>, TurnData<FlipHorizontal>,
     BeforeFlipHorizontal},
};

}  // namespace

std::span<const ViewEntry> ViewTable() { return kViews; }

}  // namespace corvane
