#include "analysis/views.h"

#include "base/vectors.h"

namespace corvane::VECTOR_NAMESPACE {
namespace {

void Negative(ConstGrayView source, GrayView result) {
  const std::size_t count = source.Size();
  std::size_t i = 0;
  for (; i + kVectorBytes <= count; i += kVectorBytes) Store(result.bits + i, ~Load<Octets>(source.bits + i));
  for (; i < count; ++i) result.bits[i] = (std::uint8_t)~source.bits[i];
}

void NegativeData(FloatView values) {
  for (std::size_t i = 0; i < values.Count(); ++i) values.values[i] = 32767.0f - values.values[i];
}

// Weights of the column gradient and of the row gradient, already added, from the stored row below upwards:
//   -2 -5  0
//   -5  0  5
//    0  5  2
// Whole numbers of at most 4 digits: 16-bit integers give the sums that floats would.

// The bytes of six neighbors, one vector for each place.
struct Neighbors {
  Shorts above, aboveRight, right, left, belowLeft, below;
};

ALWAYS_INLINE Shorts EdgeLevels(const Neighbors& n) {
  const Shorts strong = n.above - n.below + n.right - n.left;
  const Shorts weak = n.aboveRight - n.belowLeft;
  const Shorts level = strong * 5 + weak * 2 + 100;
  const Shorts black = {};
  const Shorts white = black + 255;
  const Shorts positive = level < black ? black : level;
  return positive > white ? white : positive;
}

ALWAYS_INLINE Shorts EvenBytes(const std::uint8_t* bytes) { return (Shorts)(Load<Words>(bytes) & 255); }
ALWAYS_INLINE Shorts OddBytes(const std::uint8_t* bytes) { return (Shorts)(Load<Words>(bytes) >> 8); }

// Columns 1..width-2 of `row`; `below` and `above` are the stored rows before and after it.
void EdgeRow(const std::uint8_t* below, const std::uint8_t* row, const std::uint8_t* above, std::uint8_t* out,
             int width) {
  int x = 1;
  for (; x + kVectorBytes < width; x += kVectorBytes) {
    const Shorts even = EdgeLevels({EvenBytes(above + x), EvenBytes(above + x + 1), EvenBytes(row + x + 1),
                                    EvenBytes(row + x - 1), EvenBytes(below + x - 1), EvenBytes(below + x)});
    const Shorts odd = EdgeLevels({OddBytes(above + x), OddBytes(above + x + 1), OddBytes(row + x + 1),
                                   OddBytes(row + x - 1), OddBytes(below + x - 1), OddBytes(below + x)});
    Store(out + x, even | odd << 8);
  }
  for (; x < width - 1; ++x) {
    const int level =
        100 + 5 * (above[x] - below[x] + row[x + 1] - row[x - 1]) + 2 * (above[x + 1] - below[x - 1]);
    out[x] = (std::uint8_t)(level < 0 ? 0 : level > 255 ? 255 : level);
  }
}

void Edge(ConstGrayView source, GrayView result) {
  constexpr int kFlatGray = 100;  // where nothing changes
  for (int y = 0; y < source.height; ++y) {
    std::uint8_t* row = result.Row(y);
    if (y == 0 || y == source.height - 1 || source.width < 3) {
      __builtin_memset(row, kFlatGray, result.stride);
      continue;
    }
    row[0] = kFlatGray;
    EdgeRow(source.Row(y - 1), source.Row(y), source.Row(y + 1), row, source.width);
    __builtin_memset(row + source.width - 1, kFlatGray, result.stride - source.width + 1);
  }
}

}  // namespace

extern const ViewKernels viewKernels{Negative, NegativeData, Edge};

}  // namespace corvane::VECTOR_NAMESPACE
