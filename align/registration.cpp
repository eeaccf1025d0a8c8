#include "align/registration.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "formats/bitmap_format.h"

namespace corvane {
namespace {

AlignFrame Around(const MarkedPicture& picture) {
  return {picture.mark.x, picture.width - 1 - picture.mark.x, picture.mark.y,
          picture.height - 1 - picture.mark.y};
}

template <class Choose>
AlignFrame Reduce(std::span<const MarkedPicture> pictures, Choose choose) {
  AlignFrame frame = Around(pictures[0]);
  for (const MarkedPicture& picture : pictures.subspan(1)) {
    const AlignFrame next = Around(picture);
    frame = {choose(frame.left, next.left), choose(frame.right, next.right), choose(frame.below, next.below),
             choose(frame.above, next.above)};
  }
  return frame;
}

// The row from the top that lies `above` pixels over the mark.
int TopRow(ConstFloatView picture, Mark mark, int above) { return picture.height - 1 - (mark.y + above); }

}  // namespace

AlignFrame CropFrame(std::span<const MarkedPicture> pictures) {
  return Reduce(pictures, [](int a, int b) { return std::min(a, b); });
}

AlignFrame MosaicFrame(std::span<const MarkedPicture> pictures) {
  return Reduce(pictures, [](int a, int b) { return std::max(a, b); });
}

bool FitsBitmapFile(const AlignFrame& frame) {
  return FitsBitmapFile(std::int64_t{frame.left} + frame.right + 1,
                        std::int64_t{frame.below} + frame.above + 1);
}

void Crop(ConstGrayView source, Mark mark, const AlignFrame& frame, GrayView result) {
  for (int y = 0; y < result.height; ++y) {
    std::uint8_t* row = result.Row(y);
    std::memcpy(row, source.Row(mark.y - frame.below + y) + mark.x - frame.left, result.width);
    std::memset(row + result.width, 0, result.stride - result.width);
  }
}

FloatImage Crop(ConstFloatView source, Mark mark, const AlignFrame& frame) {
  FloatImage result(frame.Width(), frame.Height());
  const FloatView target = result.Overwrite();
  const int top = TopRow(source, mark, frame.above);
  for (int y = 0; y < target.height; ++y) {
    std::memcpy(target.Row(y), source.Row(top + y) + mark.x - frame.left, target.width * sizeof(float));
  }
  return result;
}

void Paste(ConstGrayView source, Mark mark, const AlignFrame& frame, GrayView mosaic) {
  for (int y = 0; y < source.height; ++y) {
    std::memcpy(mosaic.Row(frame.below - mark.y + y) + frame.left - mark.x, source.Row(y), source.width);
  }
}

void Paste(ConstFloatView source, Mark mark, const AlignFrame& frame, FloatView mosaic) {
  const int top = -TopRow(source, mark, frame.above);
  for (int y = 0; y < source.height; ++y) {
    std::memcpy(mosaic.Row(top + y) + frame.left - mark.x, source.Row(y), source.width * sizeof(float));
  }
}

}  // namespace corvane
