#pragma once

#include <cstdint>
#include <initializer_list>
#include <vector>

#include "base/display_bitmap.h"
#include "base/float_image.h"

namespace corvane {

// The same numbers on every machine.
class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}
  std::uint32_t Next();
  int Below(int limit) { return static_cast<int>(Next() % static_cast<std::uint32_t>(limit)); }
  // [0, 1)
  double Fraction() { return Next() / 4294967296.0; }

 private:
  std::uint64_t state_;
};

// Random levels everywhere, row padding included: a kernel that lets padding in is noticed.
DisplayBitmap Noise(int width, int height, std::uint32_t seed);
// Levels in stored order: the bottom row first. Padding is 0.
DisplayBitmap Levels(int width, int height, std::initializer_list<int> levels);
DisplayBitmap Uniform(int width, int height, int level);
DisplayBitmap Copy(ConstGrayView source);

// The pixels without padding, in stored order.
std::vector<int> Pixels(ConstGrayView view);
// All bytes, padding included.
std::vector<int> AllBytes(ConstGrayView view);

FloatImage NoiseFloats(int width, int height, std::uint32_t seed, float low = 0, float high = 32767);
// Values in rows from the top.
FloatImage Floats(int width, int height, std::initializer_list<float> values);
FloatImage UniformFloats(int width, int height, float value);
std::vector<float> Values(ConstFloatView view);

}  // namespace corvane
