#include "base/level_count.h"

#include <cstring>

namespace corvane {

void LevelCounter::Add(const std::uint8_t* levels, int count) {
  int i = 0;
  for (; i + 8 <= count; i += 8) {
    std::uint64_t eight;
    std::memcpy(&eight, levels + i, 8);
    for (int k = 0; k < 8; ++k) ++tables_[k % kTables][eight >> (8 * k) & 255];
  }
  for (; i < count; ++i) ++tables_[0][levels[i]];
}

LevelCounts LevelCounter::Counts() const {
  LevelCounts sum{};
  for (const LevelCounts& table : tables_) {
    for (int level = 0; level < 256; ++level) sum[level] += table[level];
  }
  return sum;
}

LevelCounts CountLevels(ConstGrayView levels) {
  LevelCounter counter;
  for (int y = 0; y < levels.height; ++y) counter.Add(levels.Row(y), levels.width);
  return counter.Counts();
}

}  // namespace corvane
