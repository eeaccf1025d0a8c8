#include "viewer/geometry.h"

#include "base/vectors.h"

namespace corvane::VECTOR_NAMESPACE {
namespace {

template <class Vector>
inline constexpr int kSide = sizeof(Vector) / sizeof(Vector{}[0]);

template <class Vector, class T>
ALWAYS_INLINE void TransposeSquare(const T* in, std::ptrdiff_t inStride, T* out, std::ptrdiff_t outStride) {
  Vector square[kSide<Vector>];
  for (int i = 0; i < kSide<Vector>; ++i) square[i] = Load<Vector>(in + i * inStride);
  Transpose(square);
  for (int i = 0; i < kSide<Vector>; ++i) Store(out + i * outStride, square[i]);
}

ALWAYS_INLINE int Lesser(int a, int b) { return b < a ? b : a; }

// out[x * outStride + y] = in[y * inStride + x]. Strides count elements and may be negative.
// Tiles of 64 x 64 fill whole cache lines on the writing side while the lines of the reading side stay near.
// The last square of a row or column is moved back over its neighbor.
template <class Vector, class T>
ALWAYS_INLINE void TransposeTiles(const T* in, std::ptrdiff_t inStride, int width, int height, T* out,
                                  std::ptrdiff_t outStride) {
  constexpr int kTile = 64;
  if (width < kSide<Vector> || height < kSide<Vector>) {
    for (int x = 0; x < width; ++x) {
      for (int y = 0; y < height; ++y) out[x * outStride + y] = in[y * inStride + x];
    }
    return;
  }
  for (int tileY = 0; tileY < height; tileY += kTile) {
    const int endY = Lesser(tileY + kTile, height);
    for (int tileX = 0; tileX < width; tileX += kTile) {
      const int endX = Lesser(tileX + kTile, width);
      for (int nextX = tileX; nextX < endX; nextX += kSide<Vector>) {
        const int x = Lesser(nextX, width - kSide<Vector>);
        for (int nextY = tileY; nextY < endY; nextY += kSide<Vector>) {
          const int y = Lesser(nextY, height - kSide<Vector>);
          TransposeSquare<Vector>(in + y * inStride + x, inStride, out + x * outStride + y, outStride);
        }
      }
    }
  }
}

template <class T>
ALWAYS_INLINE void Reverse(const T* in, T* out, int count) {
  for (int i = 0; i < count; ++i) out[count - 1 - i] = in[i];
}

void ClearPadding(GrayView picture) {
  if (picture.stride == picture.width) return;
  for (int y = 0; y < picture.height; ++y) {
    __builtin_memset(picture.Row(y) + picture.width, 0, picture.stride - picture.width);
  }
}

void Rotate90(ConstGrayView source, GrayView result) {
  if (source.height == 0) return;
  // Row x of the result is column x of the source read from the top row down.
  TransposeTiles<Octets16>(source.Row(source.height - 1), -(std::ptrdiff_t)source.stride, source.width,
                           source.height, result.bits, result.stride);
  ClearPadding(result);
}

void Rotate180(ConstGrayView source, GrayView result) {
  for (int y = 0; y < source.height; ++y) {
    Reverse(source.Row(y), result.Row(source.height - 1 - y), source.width);
  }
  ClearPadding(result);
}

void FlipVertical(ConstGrayView source, GrayView result) {
  for (int y = 0; y < source.height; ++y) Reverse(source.Row(y), result.Row(y), source.width);
  ClearPadding(result);
}

void FlipHorizontal(ConstGrayView source, GrayView result) {
  for (int y = 0; y < source.height; ++y) {
    __builtin_memcpy(result.Row(source.height - 1 - y), source.Row(y), source.width);
  }
  ClearPadding(result);
}

void RotateData90(ConstFloatView source, FloatView result) {
  if (source.Count() == 0) return;
  // Column x of the source is row width-1-x of the result.
  TransposeTiles<Floats4>(source.values, source.width, source.width, source.height,
                          result.Row(source.width - 1), -(std::ptrdiff_t)result.width);
}

void RotateData180(ConstFloatView source, FloatView result) {
  for (int y = 0; y < source.height; ++y) {
    Reverse(source.Row(y), result.Row(source.height - 1 - y), source.width);
  }
}

void FlipDataVertical(ConstFloatView source, FloatView result) {
  for (int y = 0; y < source.height; ++y) Reverse(source.Row(y), result.Row(y), source.width);
}

void FlipDataHorizontal(ConstFloatView source, FloatView result) {
  for (int y = 0; y < source.height; ++y) {
    __builtin_memcpy(result.Row(source.height - 1 - y), source.Row(y), source.width * sizeof(float));
  }
}

}  // namespace

extern const GeometryKernels geometryKernels{Rotate90,         Rotate180,         FlipVertical,
                                             FlipHorizontal,   RotateData90,      RotateData180,
                                             FlipDataVertical, FlipDataHorizontal};

}  // namespace corvane::VECTOR_NAMESPACE
