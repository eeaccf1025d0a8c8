#include "luminance/curves.h"

#include <cmath>

#include "base/numeric.h"
#include "luminance/curve_kernels.h"
#include "luminance/portable_math.h"

namespace corvane {
namespace {

// Stands for the exponent that the user chose.
constexpr double kSelected = 0;

double Resolve(double exponent, const Scaling& s) { return exponent == kSelected ? s.exponent : exponent; }

int Range(const Scaling& s) { return s.highClip - s.lowClip; }

float AboveClip(const Scaling& s, float level) {
  const float d = level - static_cast<float>(s.lowClip);
  return d < 0 ? 0 : d;
}

// Gains.

double LinearGain(const Scaling& s, const Exponents&) { return 255.0 / Range(s); }
double LogarithmicGain(const Scaling& s, const Exponents&) { return 255.0 / Logarithm(Range(s) + 1.0); }
double PowerGain(const Scaling& s, const Exponents& e) { return 255.0 / Power(Range(s), Resolve(e.gain, s)); }
double ContrastGain(const Scaling& s, const Exponents&) { return (255.0 - s.lowClip) / Range(s); }

// Transfers of display levels.

double LinearTransfer(const Scaling& s, const Exponents&, float level, double gain) {
  return AboveClip(s, level) * gain;
}
double LogarithmicTransfer(const Scaling& s, const Exponents&, float level, double gain) {
  return Logarithm(AboveClip(s, level) + 1.0) * gain;
}
double PowerTransfer(const Scaling& s, const Exponents& e, float level, double gain) {
  return Power(AboveClip(s, level), Resolve(e.level, s)) * gain;
}
double ContrastTransfer(const Scaling& s, const Exponents&, float level, double gain) {
  return level * gain + s.lowClip;
}

// Maps.

Stroke Line(double x1, double y1, double x2, double y2) {
  return {static_cast<float>(x1), static_cast<float>(y1), static_cast<float>(x2), static_cast<float>(y2),
          kWhite};
}

std::vector<Stroke> LinearMap(const Scaling& s, const Exponents&) {
  return {Line(s.lowClip, 0, s.highClip, 255)};
}

// Lines through (L, 0) and (x, height(x - L)) for every level x from L to H.
template <class Height>
std::vector<Stroke> CurvedMap(const Scaling& s, Height height) {
  std::vector<Stroke> lines;
  double lastX = s.lowClip;
  double lastY = 0;
  for (int x = s.lowClip; x <= s.highClip; ++x) {
    const double y = height(x - s.lowClip);
    lines.push_back(Line(lastX, lastY, x, y));
    lastX = x;
    lastY = y;
  }
  return lines;
}

std::vector<Stroke> LogarithmicMap(const Scaling& s, const Exponents&) {
  const double scale = 255.0 / Logarithm(Range(s));
  return CurvedMap(s, [&](int t) { return Logarithm(t + 0.00001) * scale; });
}

std::vector<Stroke> PowerMap(const Scaling& s, const Exponents& e) {
  const double exponent = Resolve(e.map, s);
  const double scale = 255.0 / Power(Range(s), exponent);
  return CurvedMap(s, [&](int t) { return Power(t, exponent) * scale; });
}

std::vector<Stroke> ContrastMap(const Scaling& s, const Exponents&) {
  const int low = s.lowClip;
  return {Line(low, 0, low, low), Line(low, low, s.highClip, 255)};
}

// Transfers of physical values.

struct DataGain {
  double gain = 1;
  float ceiling = 0;
};

// The gain takes the curve to its ceiling at `range`; the ceiling is the range, but at least 255. `least` is
// the range below which no curve is applied.
DataGain GainFor(float range, float least, double curveAtRange, double otherwise) {
  if (range >= 255.0f) return {range / curveAtRange, range};
  if (range > least) return {255.0 / curveAtRange, 255.0f};
  return {otherwise, range};
}

float AtMost(float ceiling, float value) { return value > ceiling ? ceiling : value; }

void LinearData(const Scaling&, const Exponents&, float lowest, float highest, FloatView data) {
  const float range = highest - lowest;
  const DataGain rule = GainFor(range, 0.0f, range, 1.0);
  const float gain = static_cast<float>(rule.gain);
  for (std::size_t i = 0; i < data.Count(); ++i) {
    const float d = data.values[i] - lowest;
    data.values[i] = AtMost(rule.ceiling, (d < 0 ? 0 : d) * gain);
  }
}

void LogarithmicData(const Scaling&, const Exponents&, float lowest, float highest, FloatView data) {
  const float range = highest - lowest;
  const DataGain rule = GainFor(range, 1.0f, range > 1.0f ? Logarithm(range) : 1.0, 0.0);
  ChosenCurveKernels().logarithm({lowest, rule.gain, rule.ceiling}, data.values, data.Count());
}

void PowerData(const Scaling& s, const Exponents& e, float lowest, float highest, FloatView data) {
  const float range = highest - lowest;
  const DataGain rule = GainFor(range, 0.0f, range > 0.0f ? Power(range, Resolve(e.gain, s)) : 1.0, 1.0);
  ChosenCurveKernels().power({lowest, rule.gain, rule.ceiling}, Resolve(e.data, s), data.values,
                             data.Count());
}

void ContrastData(const Scaling& s, const Exponents&, float lowest, float, FloatView data) {
  const float slope = Range(s) > 0 ? (255.0f - s.lowClip) / Range(s) : 1.0f;
  for (std::size_t i = 0; i < data.Count(); ++i) {
    const float y = slope * data.values[i] + lowest;
    data.values[i] = y < 0.0f ? 0.0f : AtMost(32767.0f, y);
  }
}

constexpr Exponents kNoPower{};

// One third stands as three different constants, because pictures and saved files have been made with each.
constexpr Curve kCurves[] = {
    // caption, exponents {gain, level, data, map}, gain, transfer, map, data
    {"Linear Scale", kNoPower, LinearGain, LinearTransfer, LinearMap, LinearData},
    {"Logarithmic Scale", kNoPower, LogarithmicGain, LogarithmicTransfer, LogarithmicMap, LogarithmicData},
    {"Scale Exponent = 0.33", {0.3333, 0.333, 0.33, 0.333}, PowerGain, PowerTransfer, PowerMap, PowerData},
    {"Scale Exponent = 0.50", {0.5, 0.5, 0.5, 0.5}, PowerGain, PowerTransfer, PowerMap, PowerData},
    {"Scale Exponent = 2.00", {2, 2, 2, 2}, PowerGain, PowerTransfer, PowerMap, PowerData},
    {"Scale Exponent = 3.00", {3, 3, 3, 3}, PowerGain, PowerTransfer, PowerMap, PowerData},
    {"Select Exponent...",
     {kSelected, kSelected, kSelected, kSelected},
     PowerGain,
     PowerTransfer,
     PowerMap,
     PowerData},
    {"Brightness and Contrast", kNoPower, ContrastGain, ContrastTransfer, ContrastMap, ContrastData},
};

const Curve* CurveOf(const Scaling& scaling) {
  const bool known = scaling.mode >= 0 && scaling.mode < static_cast<int>(std::size(kCurves));
  return known ? &kCurves[scaling.mode] : nullptr;
}

}  // namespace

std::span<const Curve> Curves() { return kCurves; }

double ScaleFactor(const Scaling& scaling) {
  const Curve* curve = CurveOf(scaling);
  return curve == nullptr ? 1.0 : curve->gain(scaling, curve->exponents);
}

std::uint8_t ScalePixel(const Scaling& scaling, std::uint8_t level) { return ScaleTable(scaling)[level]; }

std::array<std::uint8_t, 256> ScaleTable(const Scaling& scaling) {
  std::array<std::uint8_t, 256> table;
  const Curve* curve = CurveOf(scaling);
  const double gain = ScaleFactor(scaling);
  for (int level = 0; level < 256; ++level) {
    const float v = static_cast<float>(level);
    table[level] = ToByte(curve == nullptr ? AboveClip(scaling, v)
                                           : curve->transfer(scaling, curve->exponents, v, gain));
  }
  return table;
}

std::vector<Stroke> ScaleMap(const Scaling& scaling) {
  const Curve* curve = CurveOf(scaling);
  return curve == nullptr ? std::vector<Stroke>{} : curve->map(scaling, curve->exponents);
}

void ScaleData(const Scaling& scaling, float minimum, float maximum, FloatView data) {
  const Curve* curve = CurveOf(scaling);
  if (curve == nullptr) return;
  const float width = maximum - minimum;
  const float lowest = width * static_cast<float>(scaling.lowClip) / 255.0f + minimum;
  const float highest = width * static_cast<float>(scaling.highClip) / 255.0f + minimum;
  curve->data(scaling, curve->exponents, lowest, highest, data);
}

}  // namespace corvane
