#include "viewer/geometry.h"

#include <cstring>

#include "viewer/geometry_kernels.h"

namespace corvane {
namespace {

void ClearPadding(GrayView picture) {
  if (picture.stride == picture.width) return;
  for (int y = 0; y < picture.height; ++y) {
    std::memset(picture.Row(y) + picture.width, 0, picture.stride - picture.width);
  }
}

}  // namespace

void Rotate90(ConstGrayView source, GrayView result) {
  if (source.height == 0) return;
  // Row x of the result is column x of the source read from the top row down.
  ChosenGeometryKernels().transposeBytes(source.Row(source.height - 1), -source.stride, source.width,
                                         source.height, result.bits, result.stride);
  ClearPadding(result);
}

void Rotate180(ConstGrayView source, GrayView result) {
  const GeometryKernels& kernels = ChosenGeometryKernels();
  for (int y = 0; y < source.height; ++y) {
    kernels.reverseBytes(source.Row(y), result.Row(source.height - 1 - y), source.width);
  }
  ClearPadding(result);
}

void FlipVertical(ConstGrayView source, GrayView result) {
  const GeometryKernels& kernels = ChosenGeometryKernels();
  for (int y = 0; y < source.height; ++y) kernels.reverseBytes(source.Row(y), result.Row(y), source.width);
  ClearPadding(result);
}

void FlipHorizontal(ConstGrayView source, GrayView result) {
  for (int y = 0; y < source.height; ++y) {
    std::memcpy(result.Row(source.height - 1 - y), source.Row(y), source.width);
  }
  ClearPadding(result);
}

FloatImage Rotate90(ConstFloatView source) {
  FloatImage result(source.height, source.width);
  if (source.Count() == 0) return result;
  // Column x of the source is row width-1-x of the result.
  const FloatView target = result.Overwrite();
  ChosenGeometryKernels().transposeFloats(source.values, source.width, source.width, source.height,
                                          target.Row(source.width - 1), -target.width);
  return result;
}

FloatImage Rotate180(ConstFloatView source) {
  FloatImage result(source.width, source.height);
  const FloatView target = result.Overwrite();
  const GeometryKernels& kernels = ChosenGeometryKernels();
  for (int y = 0; y < source.height; ++y) {
    kernels.reverseFloats(source.Row(y), target.Row(source.height - 1 - y), source.width);
  }
  return result;
}

FloatImage FlipVertical(ConstFloatView source) {
  FloatImage result(source.width, source.height);
  const FloatView target = result.Overwrite();
  const GeometryKernels& kernels = ChosenGeometryKernels();
  for (int y = 0; y < source.height; ++y) kernels.reverseFloats(source.Row(y), target.Row(y), source.width);
  return result;
}

FloatImage FlipHorizontal(ConstFloatView source) {
  FloatImage result(source.width, source.height);
  const FloatView target = result.Overwrite();
  for (int y = 0; y < source.height; ++y) {
    std::memcpy(target.Row(source.height - 1 - y), source.Row(y), source.width * sizeof(float));
  }
  return result;
}

}  // namespace corvane
