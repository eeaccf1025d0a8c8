#pragma once

#include <cstdint>
#include <vector>

// A made-up star field and a camera that looks at it. Everything is computed with plain IEEE arithmetic and a
// generator of our own, so the same bytes come out on every machine.

inline constexpr int kFrameWidth = 600;
inline constexpr int kFrameHeight = 400;

class Generator {
 public:
  explicit Generator(std::uint64_t seed) : state_(seed) {}
  double Uniform();  // [0, 1)
  double Normal();   // mean 0, deviation 1; a sum of uniforms, never beyond 6
 private:
  std::uint64_t state_;
};

// A round or oval spot of light, brightness peak / (1 + (r / radius)^2)^3.
struct Spot {
  double x, y;        // sky position; the first frame's top left pixel is (0, 0)
  double peak;        // counts in white light
  double radius;      // pixels
  double flattening;  // 1 = round
  double tilt;        // slope of the long axis
  double tint[3];     // share of the peak in red, green and blue light
};

enum class Light { Red, Green, Blue, White };

// A plane of numbers, row 0 the top line.
struct Plane {
  int width = 0;
  int height = 0;
  std::vector<double> values;
  Plane(int planeWidth, int planeHeight)
      : width(planeWidth), height(planeHeight), values(static_cast<std::size_t>(planeWidth) * planeHeight) {}
  double& At(int x, int y) { return values[static_cast<std::size_t>(y) * width + x]; }
  double At(int x, int y) const { return values[static_cast<std::size_t>(y) * width + x]; }
};

std::vector<Spot> MakeSky();

// The light of `sky` on a frame whose top left pixel looks at (left, top).
Plane Expose(const std::vector<Spot>& sky, Light light, int left, int top);
// The share of light that reaches each pixel of the sensor: vignetting and dust.
Plane Sensitivity();
// What the camera records: sky glow with a gradient, sensitivity, noise, hot pixels. Whole counts 0..65535.
Plane Record(const Plane& exposure, const Plane& sensitivity, std::uint64_t seed);
// An evenly lit screen.
Plane RecordFlat(const Plane& sensitivity, std::uint64_t seed);
