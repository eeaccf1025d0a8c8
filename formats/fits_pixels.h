#pragma once

#include <cstddef>

#include "base/instruction_set.h"
#include "formats/fits_format.h"

namespace corvane {

// One for each sample type: `count` big-endian pixels to value = raw * scale + zero. Neither array needs
// alignment.
struct FitsKernels {
  using Decode = void (*)(const unsigned char* raw, double scale, double zero, float* values,
                          std::size_t count);
  Decode bytes;
  Decode words;
  Decode longs;
  Decode floats;
};
DECLARE_VECTOR_KERNELS(FitsKernels, fitsKernels, ChosenFitsKernels)

// Big-endian pixels to physical values: `raw` holds `count` pixels of the layout's type.
inline void DecodePixels(const FitsLayout& layout, const unsigned char* raw, float* values,
                         std::size_t count) {
  const FitsKernels& kernels = ChosenFitsKernels();
  const FitsKernels::Decode decode = layout.bytesPerPixel == 1   ? kernels.bytes
                                     : layout.bytesPerPixel == 2 ? kernels.words
                                     : layout.bytesPerPixel == 4 ? kernels.longs
                                                                 : kernels.floats;
  decode(raw, layout.scale, layout.zero, values, count);
}

}  // namespace corvane
