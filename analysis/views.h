#pragma once

#include <array>
#include <cstdint>

#include "base/byte_map.h"
#include "base/display_bitmap.h"
#include "base/float_image.h"
#include "base/instruction_set.h"

namespace corvane {

struct ViewKernels {
  void (*negative)(ConstGrayView source, GrayView result);
  void (*negativeData)(FloatView values);
  void (*edge)(ConstGrayView source, GrayView result);
};
DECLARE_VECTOR_KERNELS(ViewKernels, viewKernels, ChosenViewKernels)

// Display bytes re-mapped for inspection. Source and result have the same size and stride, and every byte of
// the result is written, row padding included. (The pseudo-color view changes no byte: it is the picture
// under one of the palette templates.)

// The gray ramp `cycles` (1..128) times over: (cycles * level) mod 255. `result` may be `source`.
inline void RasterView(ConstGrayView source, int cycles, GrayView result) {
  std::array<std::uint8_t, 256> table;
  for (int level = 0; level < 256; ++level) table[level] = static_cast<std::uint8_t>(cycles * level % 255);
  MapBytes(table.data(), source.bits, result.bits, source.Size());
}

// 255 - level. `result` may be `source`.
inline void NegativeView(ConstGrayView source, GrayView result) {
  ChosenViewKernels().negative(source, result);
}
// The same for data of the range 0..32767.
inline void NegativeData(FloatView values) { ChosenViewKernels().negativeData(values); }

// Gradients along rows and columns added to a gray of 100; the outermost pixels and the padding are 100.
// `result` is another picture.
inline void EdgeView(ConstGrayView source, GrayView result) { ChosenViewKernels().edge(source, result); }

}  // namespace corvane
