#include "core/level_count.h"

#include <cstring>

namespace corvane {
namespace {

// A counter cannot be raised again before its last increment has reached memory, so neighbours, which are
// often equal, are counted in tables of their own.
constexpr int kTables = 8;
using Tables = std::array<LevelCounts, kTables>;

void CountRow(const std::uint8_t* row, std::size_t width, Tables& tables) {
  std::size_t x = 0;
  for (; x + 8 <= width; x += 8) {
    std::uint64_t eight;
    std::memcpy(&eight, row + x, 8);
    for (int i = 0; i < 8; ++i) ++tables[i % kTables][eight >> (8 * i) & 255];
  }
  for (; x < width; ++x) ++tables[0][row[x]];
}

}  // namespace

LevelCounts CountLevels(ConstGrayView levels) {
  Tables tables{};
  for (int y = 0; y < levels.height; ++y) CountRow(levels.Row(y), levels.width, tables);
  LevelCounts& sum = tables[0];
  for (int t = 1; t < kTables; ++t) {
    for (int level = 0; level < 256; ++level) sum[level] += tables[t][level];
  }
  return sum;
}

}  // namespace corvane
