#pragma once

#include <array>
#include <cstdint>

#include "base/display_bitmap.h"

namespace corvane {

using LevelCounts = std::array<std::uint32_t, 256>;

// Counts gray levels row by row.
class LevelCounter {
 public:
  void Add(const std::uint8_t* levels, int count);
  LevelCounts Counts() const;

 private:
  // A counter can be raised again only once its last increment has reached memory. Neighbors are often equal,
  // so they are counted in different tables.
  static constexpr int kTables = 8;
  std::array<LevelCounts, kTables> tables_{};
};

// How many pixels have each gray level; padding bytes are not counted.
LevelCounts CountLevels(ConstGrayView levels);

}  // namespace corvane
