#pragma once

#include <cstddef>
#include <cstdint>

#include "base/instruction_set.h"

namespace corvane {

// The kernel behind MapBytes.
struct ByteMapKernels {
  void (*mapBytes)(const std::uint8_t* table, const std::uint8_t* in, std::uint8_t* out, std::size_t count);
};
DECLARE_VECTOR_KERNELS(ByteMapKernels, byteMapKernels, ChosenByteMapKernels)

// out[i] = table[in[i]] for a table of 256 levels. `out` may be `in` itself, but must not overlap it
// otherwise.
inline void MapBytes(const std::uint8_t* table, const std::uint8_t* in, std::uint8_t* out,
                     std::size_t count) {
  ChosenByteMapKernels().mapBytes(table, in, out, count);
}

}  // namespace corvane
