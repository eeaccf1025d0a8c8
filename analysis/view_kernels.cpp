#include "analysis/view_kernels.h"

#include "core/vectors.h"

namespace corvane::VECTOR_NAMESPACE {
namespace {

void Negate(const std::uint8_t* in, std::uint8_t* out, std::size_t count) {
  std::size_t i = 0;
  for (; i + kVectorBytes <= count; i += kVectorBytes) Store(out + i, ~Load<Octets>(in + i));
  for (; i < count; ++i) out[i] = (std::uint8_t)~in[i];
}

// Weights of the column gradient and of the row gradient, already added, from the stored row below upwards:
//   -2 -5  0
//   -5  0  5
//    0  5  2
// Whole numbers of at most 4 digits: 16-bit integers give the sums that floats would.
using Shorts = std::int16_t __attribute__((vector_size(kVectorBytes)));

// What the sums take from the bytes of six places.
struct Neighbours {
  Shorts above, aboveRight, right, left, belowLeft, below;
};

ALWAYS_INLINE Shorts EdgeLevels(const Neighbours& n) {
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

}  // namespace

extern const ViewKernels viewKernels{Negate, EdgeRow};

}  // namespace corvane::VECTOR_NAMESPACE
