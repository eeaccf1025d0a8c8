#include "base/levels.h"

#include "base/vectors.h"

namespace corvane::VECTOR_NAMESPACE {
namespace {

void FindRange(const float* values, std::size_t count, float* minimum, float* maximum) {
  constexpr int kChains = 4;  // independent chains hide the latency of a comparison
  Floats low[kChains];
  Floats high[kChains];
  for (int c = 0; c < kChains; ++c) {
    low[c] = Broadcast(*minimum);
    high[c] = Broadcast(*maximum);
  }
  std::size_t i = 0;
  for (; i + kChains * kLanes <= count; i += kChains * kLanes) {
    for (int c = 0; c < kChains; ++c) {
      const Floats v = Load<Floats>(values + i + c * kLanes);
      low[c] = Smaller(low[c], v);
      high[c] = Larger(high[c], v);
    }
  }
  float least = *minimum;
  float most = *maximum;
  for (int c = 0; c < kChains; ++c) {
    for (int lane = 0; lane < kLanes; ++lane) {
      if (low[c][lane] < least) least = low[c][lane];
      if (high[c][lane] > most) most = high[c][lane];
    }
  }
  for (; i < count; ++i) {
    if (values[i] < least) least = values[i];
    if (values[i] > most) most = values[i];
  }
  *minimum = least;
  *maximum = most;
}

// The comparison passes NaN on to the conversion, which packs to 0 as negative values do.
ALWAYS_INLINE Ints Levels(const float* values, Floats minimum, Floats scale) {
  const Floats v = (Load<Floats>(values) - minimum) * scale;
  return RoundToInts(Smaller(v, Broadcast(255.0f)));
}

void MapRow(const float* values, float minimum, float scale, std::uint8_t* levels, int width) {
  const Floats least = Broadcast(minimum);
  const Floats gain = Broadcast(scale);
  int x = 0;
  for (; x + 4 * kLanes <= width; x += 4 * kLanes) {
    Store(levels + x, PackToOctets(Levels(values + x, least, gain), Levels(values + x + kLanes, least, gain),
                                   Levels(values + x + 2 * kLanes, least, gain),
                                   Levels(values + x + 3 * kLanes, least, gain)));
  }
  for (; x < width; ++x) {
    const float v = (values[x] - minimum) * scale;
    levels[x] = !(v > 0.0f) ? 0 : v > 255.0f ? 255 : static_cast<std::uint8_t>(__builtin_nearbyintf(v));
  }
}

}  // namespace

extern const LevelKernels levelKernels{FindRange, MapRow};

}  // namespace corvane::VECTOR_NAMESPACE
