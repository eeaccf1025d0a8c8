#include "tests/support/images.h"

#include <algorithm>
#include <cstring>

namespace corvane {

std::uint32_t Random::Next() {
  state_ += 0x9E3779B97F4A7C15u;
  std::uint64_t mixed = state_;
  mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9u;
  mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBu;
  return static_cast<std::uint32_t>(mixed >> 32);
}

DisplayBitmap Noise(int width, int height, std::uint32_t seed) {
  DisplayBitmap bitmap(width, height);
  Random random(seed);
  for (unsigned char& byte : bitmap.bits) byte = static_cast<unsigned char>(random.Next() >> 24);
  return bitmap;
}

DisplayBitmap Levels(int width, int height, std::initializer_list<int> levels) {
  DisplayBitmap bitmap(width, height);
  auto level = levels.begin();
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width && level != levels.end(); ++x)
      bitmap.View().At(x, y) = static_cast<std::uint8_t>(*level++);
  return bitmap;
}

DisplayBitmap Uniform(int width, int height, int level) {
  DisplayBitmap bitmap(width, height);
  for (int y = 0; y < height; ++y) std::fill_n(bitmap.View().Row(y), width, static_cast<std::uint8_t>(level));
  return bitmap;
}

DisplayBitmap Copy(ConstGrayView source) {
  DisplayBitmap bitmap(source.width, source.height);
  for (int y = 0; y < source.height; ++y)
    std::memcpy(bitmap.View().Row(y), source.Row(y), std::min(source.stride, bitmap.stride));
  return bitmap;
}

std::vector<int> Pixels(ConstGrayView view) {
  std::vector<int> pixels;
  pixels.reserve(static_cast<std::size_t>(view.width) * view.height);
  for (int y = 0; y < view.height; ++y) pixels.insert(pixels.end(), view.Row(y), view.Row(y) + view.width);
  return pixels;
}

std::vector<int> AllBytes(ConstGrayView view) { return {view.bits, view.bits + view.Size()}; }

FloatImage NoiseFloats(int width, int height, std::uint32_t seed, float low, float high) {
  FloatImage image(width, height);
  Random random(seed);
  const FloatView values = image.Overwrite();
  for (std::size_t i = 0; i < values.Count(); ++i)
    values.values[i] = static_cast<float>(low + (high - low) * random.Fraction());
  return image;
}

FloatImage Floats(int width, int height, std::initializer_list<float> values) {
  FloatImage image = UniformFloats(width, height, 0);
  std::copy_n(values.begin(), std::min(values.size(), image.Count()), image.Edit().values);
  return image;
}

FloatImage UniformFloats(int width, int height, float value) {
  FloatImage image(width, height);
  std::fill_n(image.Overwrite().values, image.Count(), value);
  return image;
}

std::vector<float> Values(ConstFloatView view) { return {view.values, view.values + view.Count()}; }

}  // namespace corvane
