#include "luminance/deconvolution.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numeric>

#include "tests/support/images.h"
#include "tests/support/instruction_sets.h"

namespace corvane {
namespace {

constexpr float kRadii[] = {0.5f, 3.0f, 20.0f};
constexpr Restoration kModes[] = {Restoration::Standard, Restoration::DeepSky};

// Records a run and cancels it after `mostRows` rows or `mostIterations` iterations.
struct Watch : IterationWatch {
  bool Row(int done, int total) override {
    rows.push_back(done);
    height = total;
    return static_cast<int>(rows.size()) < mostRows;
  }
  bool Iteration(int iteration, float relativeError) override {
    errors.push_back(relativeError);
    EXPECT_EQ(iteration, static_cast<int>(errors.size()));
    return iteration < mostIterations;
  }
  std::vector<int> rows;
  std::vector<float> errors;
  int height = 0;
  int mostRows = std::numeric_limits<int>::max();
  int mostIterations = std::numeric_limits<int>::max();
};

// The whole run over whole arrays, written from the definition. Rows count from the first stored one.
class SlowRun {
 public:
  SlowRun(std::vector<float> image, int width, float radius, Restoration mode, bool display)
      : observed_(image),
        estimate(std::move(image)),
        width_(width),
        height_(static_cast<int>(estimate.size()) / width),
        spread_(GaussianPointSpread(radius)),
        mode_(mode),
        display_(display) {
    const int most = display ? 75 : 100;
    double first = 1;
    for (int k = 1; k <= most; ++k) {
      Blur();
      const double energy = Update();
      if (k == 1 && energy != 0) first = energy;
      errors.push_back(static_cast<float>(100 * energy / first));
      if (k >= 2 && errors[k - 2] - errors[k - 1] < (display ? 0.02f : 0.0015f)) return;
    }
  }

 private:
  void Blur() {
    const int n = spread_.halfWidth;
    const int paddedWidth = width_ + 2 * n;
    const int paddedHeight = height_ + 2 * n;
    std::vector<float> padded(static_cast<std::size_t>(paddedWidth) * paddedHeight);
    for (int y = 0; y < paddedHeight; ++y) {
      for (int x = 0; x < paddedWidth; ++x) {
        const int row = std::clamp(y - n, 0, height_ - 1);
        padded[y * paddedWidth + x] = estimate[row * width_ + std::clamp(x - n, 0, width_ - 1)];
      }
    }
    std::vector<float> rowBlurred(static_cast<std::size_t>(width_) * paddedHeight);
    for (int y = 0; y < paddedHeight; ++y) {
      for (int x = 0; x < width_; ++x) {
        float sum = 0;
        for (int j = 0; j <= 2 * n; ++j) sum += padded[y * paddedWidth + x + j] * spread_.kernel[j];
        rowBlurred[y * width_ + x] = sum;
      }
    }
    blurred_.resize(observed_.size());
    for (int y = 0; y < height_; ++y) {
      for (int x = 0; x < width_; ++x) {
        float sum = 0;
        for (int j = 0; j <= 2 * n; ++j) sum += rowBlurred[(y + j) * width_ + x] * spread_.kernel[j];
        const float b = sum / spread_.normalizer;
        blurred_[y * width_ + x] = display_ ? std::clamp(b, 0.0f, 255.0f) : b;
      }
    }
  }

  double Update() {
    const double brightest =
        display_ ? 255.0 : std::max(0.0f, *std::max_element(blurred_.begin(), blurred_.end()));
    double energy = 0;
    for (int y = 0; y < height_; ++y) {
      double sums[16] = {};
      for (int x = 0; x < width_; ++x) {
        const std::size_t i = static_cast<std::size_t>(y) * width_ + x;
        float e = observed_[i] - blurred_[i];
        float weight = 1;
        if (mode_ == Restoration::DeepSky) {
          e = std::max(e, 0.0f);
        } else {
          weight = brightest > 0 ? static_cast<float>(std::sin(blurred_[i] * 1.57 / brightest)) : 0.0f;
        }
        sums[x % 16] += static_cast<double>(e) * e;
        const float v = std::max(0.0f, estimate[i] + e * weight);
        estimate[i] = display_ ? std::nearbyint(std::min(v, 255.0f)) : v;
      }
      energy += std::accumulate(std::begin(sums), std::end(sums), 0.0);
    }
    return energy;
  }

  std::vector<float> observed_;

 public:
  std::vector<float> estimate;
  std::vector<float> errors;

 private:
  std::vector<float> blurred_;
  int width_;
  int height_;
  PointSpread spread_;
  Restoration mode_;
  bool display_;
};

std::vector<float> AsFloats(const std::vector<int>& levels) { return {levels.begin(), levels.end()}; }

TEST(PointSpread, HasTheStatedWidths) {
  EXPECT_EQ(GaussianPointSpread(0.5f).halfWidth, 2);
  EXPECT_EQ(GaussianPointSpread(3).halfWidth, 8);
  EXPECT_EQ(GaussianPointSpread(20).halfWidth, 51);
  const PointSpread spread = GaussianPointSpread(3);
  ASSERT_EQ(spread.kernel.size(), 17u);
  EXPECT_NEAR(spread.kernel[8] / 2, spread.kernel[8 + 3], 1e-7);  // half the maximum at the radius
  EXPECT_EQ(spread.kernel[0], spread.kernel[16]);
  EXPECT_NEAR(spread.normalizer, 1, 0.005);
}

// Sizes around a tile and a segment, and smaller than the kernel.
TEST(Deconvolution, EqualsTheDefinition) {
  const int sizes[][2] = {{1, 1},   {1, 40},  {40, 1},  {7, 5},   {16, 16},
                          {17, 33}, {63, 18}, {65, 15}, {131, 47}};
  for (const auto& [width, height] : sizes) {
    for (const float radius : kRadii) {
      for (const Restoration mode : kModes) {
        SCOPED_TRACE(testing::Message()
                     << width << 'x' << height << " radius " << radius << " mode " << static_cast<int>(mode));
        const DisplayBitmap source = Noise(width, height, 7 * width + height);
        const SlowRun display(AsFloats(Pixels(source.View())), width, radius, mode, true);
        const FloatImage data = NoiseFloats(width, height, 9 * width + height, 0, 3000);
        const SlowRun values(Values(data.View()), width, radius, mode, false);
        OnEveryInstructionSet([&] {
          DisplayBitmap picture = Copy(source.View());
          Watch watch;
          ASSERT_TRUE(DeconvolveDisplay(picture.View(), radius, mode, watch));
          EXPECT_EQ(AsFloats(Pixels(picture.View())), display.estimate);
          EXPECT_EQ(watch.errors, display.errors);

          FloatImage image = data;
          Watch dataWatch;
          ASSERT_TRUE(Deconv16(image.Edit(), radius, mode, dataWatch));
          EXPECT_EQ(Values(image.View()), values.estimate);
          EXPECT_EQ(dataWatch.errors, values.errors);
        });
      }
    }
  }
}

TEST(Deconvolution, ReportsEveryRowAndLeavesPaddingAlone) {
  DisplayBitmap picture = Noise(33, 21, 4);
  const std::vector<int> before = AllBytes(picture.View());
  Watch watch;
  DeconvolveDisplay(picture.View(), 3, Restoration::Standard, watch);
  EXPECT_EQ(watch.height, 21);
  ASSERT_EQ(watch.rows.size(), 21 * watch.errors.size());
  for (std::size_t i = 0; i < watch.rows.size(); ++i) ASSERT_EQ(watch.rows[i], static_cast<int>(i % 21));
  const std::vector<int> after = AllBytes(picture.View());
  for (int y = 0; y < 21; ++y) {
    for (int x = 33; x < 36; ++x) EXPECT_EQ(after[y * 36 + x], before[y * 36 + x]);
  }
}

TEST(Deconvolution, EndsAUniformImageAfterTwoIterations) {
  for (const Restoration mode : kModes) {
    for (const int level : {0, 1, 77, 255}) {
      SCOPED_TRACE(testing::Message() << "level " << level << " mode " << static_cast<int>(mode));
      DisplayBitmap picture = Uniform(70, 40, level);
      Watch watch;
      DeconvolveDisplay(picture.View(), 3, mode, watch);
      EXPECT_EQ(watch.errors.size(), 2u);
      EXPECT_EQ(Pixels(picture.View()), Pixels(Uniform(70, 40, level).View()));
    }
    FloatImage dark = UniformFloats(70, 40, 0);
    Watch watch;
    Deconv16(dark.Edit(), 3, mode, watch);
    EXPECT_EQ(watch.errors, (std::vector<float>{0, 0}));
    EXPECT_EQ(Values(dark.View()), std::vector<float>(70 * 40, 0.0f));
  }
}

TEST(Deconvolution, OfDeepSkyNeverLowersAPixel) {
  const DisplayBitmap source = Noise(50, 50, 3);
  DisplayBitmap picture = Copy(source.View());
  FloatImage data = NoiseFloats(50, 50, 4);
  const std::vector<float> before = Values(data.View());
  Watch watch;
  Watch dataWatch;
  DeconvolveDisplay(picture.View(), 2, Restoration::DeepSky, watch);
  Deconv16(data.Edit(), 2, Restoration::DeepSky, dataWatch);
  for (int y = 0; y < 50; ++y) {
    for (int x = 0; x < 50; ++x) {
      EXPECT_GE(picture.View().At(x, y), source.View().At(x, y));
      EXPECT_GE(data.View().At(x, y), before[y * 50 + x]);
    }
  }
}

TEST(Deconvolution, LeavesTheImageWhenCancelled) {
  for (const Restoration mode : kModes) {
    for (const int afterRows : {1, 16, 47, 48, 90}) {
      for (const bool byRow : {true, false}) {
        Watch watch;
        Watch dataWatch;
        if (byRow) watch.mostRows = dataWatch.mostRows = afterRows;
        if (!byRow) watch.mostIterations = dataWatch.mostIterations = 1 + afterRows / 48;
        DisplayBitmap picture = Noise(37, 48, 8);
        const std::vector<int> before = AllBytes(picture.View());
        EXPECT_FALSE(DeconvolveDisplay(picture.View(), 3, mode, watch));
        EXPECT_EQ(AllBytes(picture.View()), before);
        EXPECT_TRUE(!byRow || static_cast<int>(watch.rows.size()) == afterRows);

        FloatImage data = NoiseFloats(37, 48, 8);
        const std::vector<float> values = Values(data.View());
        EXPECT_FALSE(Deconv16(data.Edit(), 3, mode, dataWatch));
        EXPECT_EQ(Values(data.View()), values);
      }
    }
  }
}

TEST(Deconvolution, TakesABlankAsZero) {
  FloatImage blank = NoiseFloats(40, 40, 2);
  FloatImage zero = blank;
  blank.Edit().At(20, 20) = std::numeric_limits<float>::quiet_NaN();
  zero.Edit().At(20, 20) = 0;
  for (const Restoration mode : kModes) {
    Watch watch;
    Deconv16(blank.Edit(), 3, mode, watch);
    Deconv16(zero.Edit(), 3, mode, watch = {});
    EXPECT_EQ(Values(blank.View()), Values(zero.View()));
  }
}

// Stars that the point spread has blurred: higher, narrower and of the same flux afterwards.
TEST(Deconvolution, SharpensABlurredStarField) {
  const double sigma = 3 * 0.8493218;
  const auto field = [sigma](double sky, double star) {
    std::vector<double> light(120 * 120, sky);
    for (const auto& [x0, y0, share] : {std::array{30.0, 30.0, 1.0}, {80.0, 40.0, 0.2}, {60.0, 90.0, 0.05}})
      for (int i = 0; i < 120 * 120; ++i) {
        const double r2 = std::pow(i % 120 - x0, 2) + std::pow(i / 120 - y0, 2);
        light[i] += star * share * std::exp(-r2 / (2 * sigma * sigma));
      }
    return light;
  };
  FloatImage data(120, 120);
  double before = 0;
  const std::vector<double> values = field(2000, 20000);
  for (std::size_t i = 0; i < values.size(); ++i) {
    data.Edit().values[i] = static_cast<float>(values[i]);
    before += values[i] - 2000;
  }
  DisplayBitmap picture(120, 120);
  const std::vector<double> levels = field(60, 60);
  for (int i = 0; i < 120 * 120; ++i)
    picture.View().At(i % 120, i / 120) = static_cast<std::uint8_t>(std::lround(levels[i]));
  Watch watch;
  Watch dataWatch;
  ASSERT_TRUE(Deconv16(data.Edit(), 3, Restoration::Standard, dataWatch));
  ASSERT_TRUE(DeconvolveDisplay(picture.View(), 3, Restoration::Standard, watch));
  double flux = 0;
  for (const float v : Values(data.View())) flux += v - 2000.0;
  EXPECT_NEAR(flux / before, 1, 0.02);
  EXPECT_GT(data.View().At(30, 30), 60000);  // was 22000
  EXPECT_LT(data.View().At(33, 30), 5000);   // was 12000
  EXPECT_GT(picture.View().At(30, 30), 200);
  EXPECT_LT(picture.View().At(33, 30) - 60, 0.3 * (picture.View().At(30, 30) - 60));  // was a half
}

}  // namespace
}  // namespace corvane
