#include "samples/sky.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr int kMargin = 20;  // stars beyond the first frame's edges, for the shifted frames
constexpr int kStars = 420;
constexpr int kHotPixels = 45;
constexpr double kReadNoise = 9;

struct HotPixel {
  int x, y;
  double counts;
};

std::vector<HotPixel> HotPixels() {
  Generator random(77);
  std::vector<HotPixel> pixels;
  for (int i = 0; i < kHotPixels; ++i) {
    const int x = static_cast<int>(random.Uniform() * kFrameWidth);
    const int y = static_cast<int>(random.Uniform() * kFrameHeight);
    pixels.push_back({x, y, 4000 + 50000 * random.Uniform()});
  }
  return pixels;
}

double Whole(double counts) { return std::clamp(std::floor(counts + 0.5), 0.0, 65535.0); }

double WithNoise(double counts, Generator& random) {
  return counts + std::sqrt(counts + kReadNoise * kReadNoise) * random.Normal();
}

Spot Star(Generator& random) {
  const double x = random.Uniform() * (kFrameWidth + 2 * kMargin) - kMargin;
  const double y = random.Uniform() * (kFrameHeight + 2 * kMargin) - kMargin;
  const double rank = random.Uniform();
  // Few bright stars, many faint ones.
  const double peak = std::min(80 / (rank * rank + 0.0012), 58000.0);
  const double warmth = random.Uniform();
  return {x, y, peak, 2.6, 1, 0, {0.55 + 0.75 * warmth, 1, 1.3 - 0.75 * warmth}};
}

// Stars crowd towards the middle of a cluster.
Spot ClusterStar(Generator& random) {
  Spot star = Star(random);
  star.x = 430 + 26 * random.Normal();
  star.y = 130 + 26 * random.Normal();
  star.peak = std::min(star.peak, 9000.0);
  return star;
}

void Add(const Spot& spot, double gain, int left, int top, Plane& plane) {
  const double reach = 8 * spot.radius + 3;
  const double stretch = reach * spot.flattening;
  const int firstX = std::max(0, static_cast<int>(spot.x - left - stretch));
  const int lastX = std::min(plane.width - 1, static_cast<int>(spot.x - left + stretch));
  const int firstY = std::max(0, static_cast<int>(spot.y - top - stretch));
  const int lastY = std::min(plane.height - 1, static_cast<int>(spot.y - top + stretch));
  const double norm = 1 + spot.tilt * spot.tilt;
  for (int y = firstY; y <= lastY; ++y)
    for (int x = firstX; x <= lastX; ++x) {
      const double dx = x + left - spot.x;
      const double dy = y + top - spot.y;
      const double along = (dx + spot.tilt * dy) / spot.flattening;
      const double across = dy - spot.tilt * dx;
      const double r2 = (along * along + across * across) / (norm * spot.radius * spot.radius);
      const double falloff = 1 + r2;
      plane.At(x, y) += gain * spot.peak / (falloff * falloff * falloff);
    }
}

double Gain(const Spot& spot, Light light) {
  if (light == Light::White) return (spot.tint[0] + spot.tint[1] + spot.tint[2]) / 3;
  return spot.tint[static_cast<int>(light)];
}

}  // namespace

double Generator::Uniform() {
  state_ += 0x9E3779B97F4A7C15u;
  std::uint64_t mixed = state_;
  mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9u;
  mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBu;
  return static_cast<double>((mixed ^ (mixed >> 31)) >> 11) / 9007199254740992.0;
}

double Generator::Normal() {
  double sum = -6;
  for (int i = 0; i < 12; ++i) sum += Uniform();
  return sum;
}

std::vector<Spot> MakeSky() {
  Generator random(2024);
  std::vector<Spot> sky;
  for (int i = 0; i < kStars; ++i) sky.push_back(Star(random));
  for (int i = 0; i < kStars / 2; ++i) sky.push_back(ClusterStar(random));
  // A galaxy: bulge and disc.
  sky.push_back({165, 255, 9000, 7, 1.3, 0.45, {1.15, 1, 0.8}});
  sky.push_back({165, 255, 1500, 22, 2.6, 0.45, {0.8, 1, 1.3}});
  // A red nebula of overlapping clouds.
  for (int i = 0; i < 9; ++i) {
    const double x = 380 + 130 * random.Uniform();
    const double y = 270 + 70 * random.Uniform();
    sky.push_back({x,
                   y,
                   90 + 160 * random.Uniform(),
                   30 + 45 * random.Uniform(),
                   1 + random.Uniform(),
                   2 * random.Uniform() - 1,
                   {1.7, 0.55, 0.75}});
  }
  return sky;
}

Plane Expose(const std::vector<Spot>& sky, Light light, int left, int top) {
  Plane plane(kFrameWidth, kFrameHeight);
  for (const Spot& spot : sky) Add(spot, Gain(spot, light), left, top, plane);
  return plane;
}

Plane Sensitivity() {
  Plane plane(kFrameWidth, kFrameHeight);
  const double middleX = kFrameWidth / 2.0;
  const double middleY = kFrameHeight / 2.0;
  for (int y = 0; y < plane.height; ++y)
    for (int x = 0; x < plane.width; ++x) {
      const double dx = (x - middleX) / middleX;
      const double dy = (y - middleY) / middleX;
      plane.At(x, y) = 1 - 0.3 * (dx * dx + dy * dy);
    }
  // Dust on the window in front of the sensor: dim rings.
  for (const auto& [dustX, dustY, radius] :
       {std::array{120.0, 90.0, 14.0}, {340.0, 330.0, 20.0}, {505.0, 215.0, 11.0}})
    for (int y = 0; y < plane.height; ++y)
      for (int x = 0; x < plane.width; ++x) {
        const double r2 = ((x - dustX) * (x - dustX) + (y - dustY) * (y - dustY)) / (radius * radius);
        if (r2 < 1) plane.At(x, y) *= 0.86 + 0.07 * (1 - r2);
      }
  return plane;
}

Plane Record(const Plane& exposure, const Plane& sensitivity, std::uint64_t seed) {
  static const std::vector<HotPixel> hotPixels = HotPixels();
  Generator random(seed);
  Plane frame(exposure.width, exposure.height);
  for (int y = 0; y < frame.height; ++y)
    for (int x = 0; x < frame.width; ++x) {
      const double glow = 620 + 0.22 * x + 0.35 * (frame.height - 1 - y);
      frame.At(x, y) = WithNoise((exposure.At(x, y) + glow) * sensitivity.At(x, y), random);
    }
  for (const HotPixel& pixel : hotPixels) frame.At(pixel.x, pixel.y) += pixel.counts;
  for (double& value : frame.values) value = Whole(value);
  return frame;
}

Plane RecordFlat(const Plane& sensitivity, std::uint64_t seed) {
  Generator random(seed);
  Plane frame = sensitivity;
  for (double& value : frame.values) value = Whole(WithNoise(32000 * value, random));
  return frame;
}
