#pragma once

#include <span>

#include "base/display_bitmap.h"
#include "base/float_image.h"
#include "base/marker.h"

namespace corvane {

// A picture's size and its mark, the pixel that is to coincide with the marks of the others.
struct MarkedPicture {
  Mark mark;
  int width = 0;
  int height = 0;
};

// An output picture, as the pixels it has to each side of the common mark, which falls on its pixel
// (left, below).
struct AlignFrame {
  int left = 0;
  int right = 0;
  int below = 0;
  int above = 0;
  bool operator==(const AlignFrame&) const = default;
  // Of a frame that fits a bitmap file.
  int Width() const { return left + right + 1; }
  int Height() const { return below + above + 1; }
};

// What all pictures show, and what any of them shows. At least one picture.
AlignFrame CropFrame(std::span<const MarkedPicture> pictures);
AlignFrame MosaicFrame(std::span<const MarkedPicture> pictures);

// Whether a display bitmap of this size can be written. A crop always can.
bool FitsBitmapFile(const AlignFrame& frame);

// The part of `source` inside a frame that lies within it; the mark is the source's. On display rows `result`
// is another picture of the frame's size; its padding bytes become 0.
void Crop(ConstGrayView source, Mark mark, const AlignFrame& frame, GrayView result);
FloatImage Crop(ConstFloatView source, Mark mark, const AlignFrame& frame);

// Lays the whole of `source` over a mosaic of the frame's size, its mark on the common one. Pixels that it
// does not cover stay as they are.
void Paste(ConstGrayView source, Mark mark, const AlignFrame& frame, GrayView mosaic);
void Paste(ConstFloatView source, Mark mark, const AlignFrame& frame, FloatView mosaic);

}  // namespace corvane
