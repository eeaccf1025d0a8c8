#include "base/pixel_buffer.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

namespace corvane {
namespace {

// Sizes below and above a huge page, and around the largest block that is kept for the next one.
TEST(PixelBuffer, OwnsItsMemoryAlone) {
  for (const std::size_t bytes : std::initializer_list<std::size_t>{1000, 3 << 20, 32 << 20, 33 << 20}) {
    for (int round = 0; round < 3; ++round) {
      std::vector<ByteBuffer> buffers;
      std::set<unsigned char*> blocks;
      for (int i = 0; i < 3; ++i) {
        buffers.emplace_back(bytes);
        buffers.back()[0] = buffers.back()[bytes - 1] = static_cast<unsigned char>(i);
        blocks.insert(buffers.back().data());
      }
      EXPECT_EQ(blocks.size(), 3u);
      for (int i = 0; i < 3; ++i) EXPECT_EQ(buffers[i][0] + buffers[i][bytes - 1], 2 * i);
    }
  }
}

}  // namespace
}  // namespace corvane
