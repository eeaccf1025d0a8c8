#include "filters/equalization.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <vector>

#include "base/byte_map.h"
#include "base/level_count.h"
#include "base/numeric.h"

namespace corvane {
namespace {

// The share of the pixels at or below each level, times `scale`.
template <class Counts>
void Accumulate(const Counts& counts, float pixels, float scale, float* shares) {
  float sum = 0;
  for (const std::uint32_t count : counts) {
    sum += static_cast<float>(count);
    *shares++ = sum / pixels * scale;
  }
}

bool EqualizeBytes(const PreviewRun& run) {
  const int last = std::max(run.source.height - 1, 1);
  LevelCounter counter;
  for (int y = 0; y < run.source.height; ++y) {
    counter.Add(run.source.Row(y), run.source.width);
    if (!run.progress.Row(y, last)) return false;
  }
  std::array<float, 256> shares;
  const float pixels = static_cast<float>(run.source.width) * static_cast<float>(run.source.height);
  Accumulate(counter.Counts(), std::max(pixels, 1.0f), 255.0f, shares.data());
  std::array<std::uint8_t, 256> table;
  std::transform(shares.begin(), shares.end(), table.begin(), ToByte);
  MapBytes(table.data(), run.source.bits, run.result.bits, run.source.Size());
  return true;
}

int IndexOf(float value) {
  return value > 0.0f ? static_cast<int>(std::nearbyint(std::min(value, 32767.0f))) : 0;
}

bool EqualizeFloats(const DataRun& run) {
  std::vector<std::uint32_t> counts(32768);
  std::vector<float> shares(counts.size());
  const float* end = run.source.values + run.source.Count();
  for (const float* value = run.source.values; value != end; ++value) ++counts[IndexOf(*value)];
  const float pixels = static_cast<float>(run.source.width) * static_cast<float>(run.source.height);
  Accumulate(counts, pixels, 32767.0f, shares.data());
  const int last = std::max(run.source.height - 1, 1);
  for (int y = 0; y < run.source.height; ++y) {
    const float* in = run.source.Row(y);
    std::transform(in, in + run.source.width, run.result.Row(y),
                   [&](float value) { return shares[IndexOf(value)]; });
    if (!run.progress.Row(y, last)) return false;
  }
  return true;
}

}  // namespace

FilterEntry Equalization() { return {"Equalization", false, EqualizeBytes, EqualizeFloats}; }

}  // namespace corvane
