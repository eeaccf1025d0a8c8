#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "base/drawing.h"
#include "base/float_image.h"

namespace corvane {

// What the user sets: the curve's place in Curves() and the clip levels 0..255.
struct Scaling {
  int mode = 0;
  int lowClip = 0;
  int highClip = 255;
  float exponent = 1.0f;  // of "Select Exponent..."
};

// The exponents of a power curve in the four places it is computed.
struct Exponents {
  double gain = 1;
  double level = 1;
  double data = 1;
  double map = 1;
};

// One transfer curve. Everything is computed in 64-bit floats from d, the level above the low clip level;
// logarithms and powers are those of portable_math.h.
struct Curve {
  std::string_view caption;
  Exponents exponents;
  // What the curve is multiplied by; see ScaleFactor.
  double (*gain)(const Scaling&, const Exponents&);
  // The new level of `level`, before it is limited.
  double (*transfer)(const Scaling&, const Exponents&, float level, double gain);
  // The curve as lines, input level on x, output level on y.
  std::vector<Stroke> (*map)(const Scaling&, const Exponents&);
  // The transfer on physical values; see ScaleData.
  void (*data)(const Scaling&, const Exponents&, float lowest, float highest, FloatView);
};
// In the order of the list box.
std::span<const Curve> Curves();

// The gain of the curve in force; 1 where there is none.
double ScaleFactor(const Scaling& scaling);
// The new level: limited to 0..255, the nearest integer, ties to even. Without a curve it is d itself.
std::uint8_t ScalePixel(const Scaling& scaling, std::uint8_t level);
// ScalePixel of every level, for MapBytes.
std::array<std::uint8_t, 256> ScaleTable(const Scaling& scaling);

// The scaling map's white lines.
std::vector<Stroke> ScaleMap(const Scaling& scaling);

// The curve on physical values. The clip levels become L16 and H16 through the display range `minimum` ..
// `maximum`, in single precision like R16 = H16 - L16 and d = max(0, value - L16). The straight lines
// ("Linear Scale", "Brightness and Contrast") stay in single precision, each operation rounded. For the
// others the curve, the gain and their product are 64-bit floats, rounded once: the gain of a large exponent
// does not fit 32 bits. NaN values are blank and stay so.
void ScaleData(const Scaling& scaling, float minimum, float maximum, FloatView data);

}  // namespace corvane
