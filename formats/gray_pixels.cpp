#include "formats/gray_pixels.h"

#include "base/vectors.h"

namespace corvane::VECTOR_NAMESPACE {
namespace {

// A sum is 0..765, and thirds have no ties: the nearest third of s is the integer part of (s + 1) / 3.
template <int kBytes>
ALWAYS_INLINE void Plain(const std::uint8_t* pixels, std::uint8_t* gray, int width) {
  for (int x = 0; x < width; ++x, pixels += kBytes)
    gray[x] = (std::uint8_t)((pixels[0] + pixels[1] + pixels[2] + 1) * 21846 >> 16);
}

void FromThreeBytes(const std::uint8_t* pixels, std::uint8_t* gray, int width) {
  Plain<3>(pixels, gray, width);
}
void FromFourBytes(const std::uint8_t* pixels, std::uint8_t* gray, int width) {
  Plain<4>(pixels, gray, width);
}

}  // namespace

extern const GrayKernels grayKernels{FromThreeBytes, FromFourBytes};

}  // namespace corvane::VECTOR_NAMESPACE
