#include "color/composite.h"

#include "base/vectors.h"

namespace corvane::VECTOR_NAMESPACE {
namespace {

ALWAYS_INLINE Ints Scaled(const std::uint8_t* levels, float multiplier) {
  return RoundToInts(LoadBytesAsFloats(levels) * Broadcast(multiplier));
}

// kLanes pixels, at the front of a vector. Multipliers are small enough for packing to limit the levels.
ALWAYS_INLINE Octets Pixels(const std::uint8_t* const levels[3], const ColorPlane planes[3]) {
  return PackTriples(Scaled(levels[0], planes[0].multiplier), Scaled(levels[1], planes[1].multiplier),
                     Scaled(levels[2], planes[2].multiplier));
}

// Whole vectors are written as long as they stay in the row.
void CompositeRow(const ColorPlane planes[3], int y, std::uint8_t* row, std::int64_t stride) {
  const std::uint8_t* levels[3];
  for (int plane = 0; plane < 3; ++plane) {
    levels[plane] = planes[plane].levels.bits + (std::size_t)y * planes[plane].levels.stride;
  }
  const int width = planes[0].levels.width;
  int x = 0;
  for (; x + kLanes <= width && 3 * (std::int64_t)x + kVectorBytes <= stride; x += kLanes) {
    const std::uint8_t* const here[] = {levels[0] + x, levels[1] + x, levels[2] + x};
    Store(row + 3 * (std::int64_t)x, Pixels(here, planes));
  }
  for (int count; x < width; x += count) {
    count = width - x < kLanes ? width - x : kLanes;
    std::uint8_t last[3][kLanes] = {};
    for (int plane = 0; plane < 3; ++plane) __builtin_memcpy(last[plane], levels[plane] + x, count);
    const std::uint8_t* const here[] = {last[0], last[1], last[2]};
    const Octets pixels = Pixels(here, planes);
    __builtin_memcpy(row + 3 * (std::int64_t)x, &pixels, 3 * count);
  }
  __builtin_memset(row + 3 * (std::int64_t)width, 0, stride - 3 * (std::int64_t)width);
}

void CompositeRows(const ColorPlane planes[3], std::uint8_t* pixels, std::int64_t stride) {
  for (int y = 0; y < planes[0].levels.height; ++y) CompositeRow(planes, y, pixels + y * stride, stride);
}

}  // namespace

extern const CompositeKernels compositeKernels{CompositeRows};

}  // namespace corvane::VECTOR_NAMESPACE
