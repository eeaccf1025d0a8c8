#include "base/byte_map.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <random>
#include <vector>

#include "tests/support/instruction_sets.h"

namespace corvane {
namespace {

using Table = std::array<std::uint8_t, 256>;

Table RandomTable(unsigned seed) {
  std::mt19937 random(seed);
  Table table;
  for (std::uint8_t& level : table) level = static_cast<std::uint8_t>(random());
  return table;
}

// Every level meets every place within a vector, at lengths around the size of a vector and of a block.
TEST(MapBytes, LooksUpEveryLevelAtEveryPlaceAndLength) {
  const Table table = RandomTable(1);
  OnEveryInstructionSet([&] {
    for (const int count : {0, 1, 15, 63, 64, 65, 1023, 1024, 1025, 1100, 1279, 1280, 5000}) {
      for (int first = 0; first < 256; ++first) {
        std::vector<std::uint8_t> in(count + 1);
        std::vector<std::uint8_t> expected(count + 1, 77);
        for (int i = 0; i < count; ++i) {
          in[i] = static_cast<std::uint8_t>(first + i);
          expected[i] = table[in[i]];
        }
        std::vector<std::uint8_t> out(count + 1, 77);
        MapBytes(table.data(), in.data(), out.data(), count);
        ASSERT_EQ(out, expected) << count << " bytes from level " << first;
      }
    }
  });
}

TEST(MapBytes, WorksInPlace) {
  const Table table = RandomTable(2);
  std::vector<std::uint8_t> source(4001);
  for (std::size_t i = 0; i < source.size(); ++i) source[i] = static_cast<std::uint8_t>(7 * i + i / 256);
  OnEveryInstructionSet([&] {
    std::vector<std::uint8_t> bytes = source;
    MapBytes(table.data(), bytes.data(), bytes.data(), bytes.size());
    for (std::size_t i = 0; i < bytes.size(); ++i) ASSERT_EQ(bytes[i], table[source[i]]) << i;
  });
}

}  // namespace
}  // namespace corvane
