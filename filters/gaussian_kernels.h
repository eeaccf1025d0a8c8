#pragma once

namespace corvane {

// The weights of Gaussians whose half width at half maximum is 1, 2 and 3 pixels, from the middle outwards:
// those of `GaussianPointSpread` (luminance/deconvolution.h), known while compiling.
template <int radius>
struct GaussianKernel;

template <>
struct GaussianKernel<1> {
  static constexpr int kHalf = 3;
  static constexpr float kWeights[kHalf + 1] = {0x1.e0fdeep-2f, 0x1.e0fdeep-3f, 0x1.e0fdeep-6f,
                                                0x1.e0fdeep-11f};
  static constexpr float Weight(int distance) { return kWeights[distance]; }
};

template <>
struct GaussianKernel<2> {
  static constexpr int kHalf = 6;
  static constexpr float kWeights[kHalf + 1] = {0x1.e0fdeep-3f, 0x1.9476e2p-3f, 0x1.e0fdeep-4f,
                                                0x1.9476e2p-5f, 0x1.e0fdeep-7f, 0x1.9476dep-9f,
                                                0x1.e0fdeep-12f};
  static constexpr float Weight(int distance) { return kWeights[distance]; }
};

template <>
struct GaussianKernel<3> {
  static constexpr int kHalf = 8;
  static constexpr float kWeights[kHalf + 1] = {0x1.40a94cp-3f, 0x1.28e468p-3f, 0x1.d74978p-4f,
                                                0x1.40a94ap-4f, 0x1.760f8ap-5f, 0x1.760f86p-6f,
                                                0x1.40a946p-7f, 0x1.d7496ap-9f, 0x1.28e45ep-10f};
  static constexpr float Weight(int distance) { return kWeights[distance]; }
};

}  // namespace corvane
