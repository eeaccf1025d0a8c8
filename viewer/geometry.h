#pragma once

#include "base/display_bitmap.h"
#include "base/float_image.h"
#include "base/instruction_set.h"

namespace corvane {

template <class View, class Result>
using Transform = void (*)(View source, Result result);

struct GeometryKernels {
  Transform<ConstGrayView, GrayView> rotate90, rotate180, flipVertical, flipHorizontal;
  Transform<ConstFloatView, FloatView> rotateData90, rotateData180, flipDataVertical, flipDataHorizontal;
};
DECLARE_VECTOR_KERNELS(GeometryKernels, geometryKernels, ChosenGeometryKernels)

// Rotations and flips of a picture as it stands on screen. Display rows count from the bottom, data rows from
// the top; both forms of an operation show the same picture.

// On display rows. `result` is another picture of the stated size; its padding bytes become 0.
// Height x width; counter-clockwise.
inline void Rotate90(ConstGrayView source, GrayView result) {
  ChosenGeometryKernels().rotate90(source, result);
}
// Width x height, as the flips.
inline void Rotate180(ConstGrayView source, GrayView result) {
  ChosenGeometryKernels().rotate180(source, result);
}
// Left and right exchange.
inline void FlipVertical(ConstGrayView source, GrayView result) {
  ChosenGeometryKernels().flipVertical(source, result);
}
// Top and bottom exchange.
inline void FlipHorizontal(ConstGrayView source, GrayView result) {
  ChosenGeometryKernels().flipHorizontal(source, result);
}

// On data rows.
inline FloatImage Rotate90(ConstFloatView source) {
  FloatImage result(source.height, source.width);
  ChosenGeometryKernels().rotateData90(source, result.Overwrite());
  return result;
}
inline FloatImage Rotate180(ConstFloatView source) {
  FloatImage result(source.width, source.height);
  ChosenGeometryKernels().rotateData180(source, result.Overwrite());
  return result;
}
inline FloatImage FlipVertical(ConstFloatView source) {
  FloatImage result(source.width, source.height);
  ChosenGeometryKernels().flipDataVertical(source, result.Overwrite());
  return result;
}
inline FloatImage FlipHorizontal(ConstFloatView source) {
  FloatImage result(source.width, source.height);
  ChosenGeometryKernels().flipDataHorizontal(source, result.Overwrite());
  return result;
}

}  // namespace corvane
