#include "viewer/geometry_kernels.h"

#include "core/vectors.h"

namespace corvane::VECTOR_NAMESPACE {
namespace {

// Squares of 16 x 16 bytes or 4 x 4 floats are turned in registers of 16 bytes: in every round the rows of
// the first half interleave with those of the second, and after as many rounds as the side has bits rows have
// become columns.
using Sixteen = std::uint8_t __attribute__((vector_size(16)));
using Four = float __attribute__((vector_size(16)));

ALWAYS_INLINE Sixteen InterleaveLow(Sixteen a, Sixteen b) {
  return __builtin_shufflevector(a, b, 0, 16, 1, 17, 2, 18, 3, 19, 4, 20, 5, 21, 6, 22, 7, 23);
}
ALWAYS_INLINE Sixteen InterleaveHigh(Sixteen a, Sixteen b) {
  return __builtin_shufflevector(a, b, 8, 24, 9, 25, 10, 26, 11, 27, 12, 28, 13, 29, 14, 30, 15, 31);
}
ALWAYS_INLINE Four InterleaveLow(Four a, Four b) { return __builtin_shufflevector(a, b, 0, 4, 1, 5); }
ALWAYS_INLINE Four InterleaveHigh(Four a, Four b) { return __builtin_shufflevector(a, b, 2, 6, 3, 7); }

template <class Vector>
inline constexpr int kSide = sizeof(Vector) / sizeof(Vector{}[0]);

template <class Vector>
ALWAYS_INLINE void Round(const Vector* in, Vector* out) {
  constexpr int kHalf = kSide<Vector> / 2;
  for (int i = 0; i < kHalf; ++i) {
    out[2 * i] = InterleaveLow(in[i], in[i + kHalf]);
    out[2 * i + 1] = InterleaveHigh(in[i], in[i + kHalf]);
  }
}

template <class Vector, class T>
ALWAYS_INLINE void TransposeSquare(const T* in, std::ptrdiff_t inStride, T* out, std::ptrdiff_t outStride) {
  Vector a[kSide<Vector>];
  Vector b[kSide<Vector>];
  for (int i = 0; i < kSide<Vector>; ++i) a[i] = Load<Vector>(in + i * inStride);
  for (int rounds = 1; rounds < kSide<Vector>; rounds *= 4) {
    Round(a, b);
    Round(b, a);
  }
  for (int i = 0; i < kSide<Vector>; ++i) Store(out + i * outStride, a[i]);
}

ALWAYS_INLINE int Lesser(int a, int b) { return b < a ? b : a; }

// Tiles of 64 x 64 fill whole cache lines on the writing side while the lines of the reading side stay near.
// The last square of a row or column is moved back over its neighbour.
template <class Vector, class T>
ALWAYS_INLINE void Transpose(const T* in, std::ptrdiff_t inStride, int width, int height, T* out,
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

void TransposeBytes(const std::uint8_t* in, std::ptrdiff_t inStride, int width, int height, std::uint8_t* out,
                    std::ptrdiff_t outStride) {
  Transpose<Sixteen>(in, inStride, width, height, out, outStride);
}

void TransposeFloats(const float* in, std::ptrdiff_t inStride, int width, int height, float* out,
                     std::ptrdiff_t outStride) {
  Transpose<Four>(in, inStride, width, height, out, outStride);
}

void ReverseBytes(const std::uint8_t* in, std::uint8_t* out, int count) {
  for (int i = 0; i < count; ++i) out[count - 1 - i] = in[i];
}

void ReverseFloats(const float* in, float* out, int count) {
  for (int i = 0; i < count; ++i) out[count - 1 - i] = in[i];
}

}  // namespace

extern const GeometryKernels geometryKernels{TransposeBytes, TransposeFloats, ReverseBytes, ReverseFloats};

}  // namespace corvane::VECTOR_NAMESPACE
