#pragma once

#include <array>
#include <cstdint>

#include "core/display_bitmap.h"

namespace corvane {

using LevelCounts = std::array<std::uint32_t, 256>;

// How many pixels have each gray level; padding bytes are not counted.
LevelCounts CountLevels(ConstGrayView levels);

}  // namespace corvane
