#include "analysis/views.h"

#include <array>
#include <cstring>

#include "analysis/view_kernels.h"
#include "core/byte_map.h"

namespace corvane {
namespace {

constexpr int kFlatGray = 100;  // what the edge view shows where nothing changes

}  // namespace

void RasterView(ConstGrayView source, int cycles, GrayView result) {
  std::array<std::uint8_t, 256> table;
  for (int level = 0; level < 256; ++level) table[level] = static_cast<std::uint8_t>(cycles * level % 255);
  MapBytes(table.data(), source.bits, result.bits, source.Size());
}

void NegativeView(ConstGrayView source, GrayView result) {
  ChosenViewKernels().negate(source.bits, result.bits, source.Size());
}

void NegativeData(FloatView values) {
  for (std::size_t i = 0; i < values.Count(); ++i) values.values[i] = 32767.0f - values.values[i];
}

void EdgeView(ConstGrayView source, GrayView result) {
  const ViewKernels& kernels = ChosenViewKernels();
  for (int y = 0; y < source.height; ++y) {
    std::uint8_t* row = result.Row(y);
    if (y == 0 || y == source.height - 1 || source.width < 3) {
      std::memset(row, kFlatGray, result.stride);
      continue;
    }
    row[0] = kFlatGray;
    kernels.edgeRow(source.Row(y - 1), source.Row(y), source.Row(y + 1), row, source.width);
    std::memset(row + source.width - 1, kFlatGray, result.stride - source.width + 1);
  }
}

}  // namespace corvane
