#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "base/numeric.h"
#include "filters/equalization.h"
#include "filters/filter_table.h"
#include "filters/grain.h"
#include "luminance/deconvolution.h"
#include "tests/support/images.h"
#include "tests/support/instruction_sets.h"

namespace corvane {
namespace {

constexpr float kMax = 30000;  // what the data forms take for the largest value

// Plain versions, written from the definition: one pixel after the other, on floats of either kind of
// picture.
struct Picture {
  int width, height;
  std::vector<float> values;
  float At(int x, int y) const {
    return values[std::clamp(y, 0, height - 1) * width + std::clamp(x, 0, width - 1)];
  }
};
using Definition = std::function<float(const Picture&, int x, int y)>;

Picture Transformed(const Picture& source, const Definition& pixel) {
  Picture result = source;
  for (int y = 0; y < source.height; ++y)
    for (int x = 0; x < source.width; ++x) result.values[y * source.width + x] = pixel(source, x, y);
  return result;
}

Picture Blurred(const Picture& source, const std::vector<float>& weights) {
  const int half = static_cast<int>(weights.size()) / 2;
  float sum = 0;
  for (const float weight : weights) sum += weight;
  const float normalizer = sum * sum;
  const Picture rows = Transformed(source, [&](const Picture& p, int x, int y) {
    float value = 0;
    for (int j = -half; j <= half; ++j) value += weights[j + half] * p.At(x + j, y);
    return value;
  });
  return Transformed(rows, [&](const Picture& p, int x, int y) {
    float value = 0;
    for (int j = -half; j <= half; ++j) value += weights[j + half] * p.At(x, y + j);
    return value / normalizer;
  });
}

Picture SlowAverage(const Picture& source, int radius) {
  return Blurred(source, std::vector<float>(2 * radius + 1, 1.0f));
}

Picture SlowGaussian(const Picture& source, int radius) {
  return Blurred(source, GaussianPointSpread(static_cast<float>(radius)).kernel);
}

// Sums of products over the window, where it fits into the picture; elsewhere the pixel itself.
Picture Weighted(const Picture& source, int halfX, int halfY, const std::vector<float>& weights,
                 float divisor) {
  return Transformed(source, [&](const Picture& p, int x, int y) {
    if (x < halfX || y < halfY || x >= p.width - halfX || y >= p.height - halfY) return p.At(x, y);
    float value = 0;
    auto weight = weights.begin();
    for (int dy = -halfY; dy <= halfY; ++dy)
      for (int dx = -halfX; dx <= halfX; ++dx) value += *weight++ * p.At(x + dx, y + dy);
    return value / divisor;
  });
}

Picture SlowSharpen(const Picture& source, int radius, float most) {
  std::vector<float> weights(radius == 3 ? 25 : 9, -1.0f);
  weights[weights.size() / 2] = radius == 1 ? 7.0f : radius == 2 ? 11.0f : 30.0f;
  if (radius == 1) weights[1] = weights[3] = weights[5] = weights[7] = 0;
  const int half = radius == 3 ? 2 : 1;
  const Picture sums = Weighted(source, half, half, weights, radius == 3 ? 6.0f : 3.0f);
  return Transformed(sums, [&](const Picture& p, int x, int y) {
    if (x < half || y < half || x >= p.width - half || y >= p.height - half) return p.At(x, y);
    const float value = p.At(x, y) > most ? most : p.At(x, y);
    return value < 0 ? 0.0f : value;
  });
}

Picture SlowGrain(const Picture& source) { return Weighted(source, 2, 0, {-3, 12, 17, 12, -3}, 35); }

Picture SlowEqualize(const Picture& source, float highest) {
  const auto index = [&](float v) { return v > 0 ? RoundEven(std::min(v, highest)) : 0; };
  std::vector<float> shares(static_cast<int>(highest) + 1);
  for (const float value : source.values) ++shares[index(value)];
  float sum = 0;
  for (float& share : shares) {
    sum += share;
    share = sum / static_cast<float>(source.values.size()) * highest;
  }
  return Transformed(source, [&](const Picture& p, int x, int y) { return shares[index(p.At(x, y))]; });
}

Picture Rounded(const Picture& source) {
  return Transformed(source,
                     [](const Picture& p, int x, int y) { return static_cast<float>(ToByte(p.At(x, y))); });
}

Picture Merged(const Picture& source, const Picture& blurred, int border) {
  return Transformed(source, [&](const Picture& p, int x, int y) {
    const float b = blurred.At(x, y);
    const bool inside = x >= border && y >= border && x < p.width - border && y < p.height - border;
    return inside ? p.At(x, y) * 3.0f - (b + b) : b;
  });
}

Picture ExpectedLevels(const std::string& caption, const Picture& source, int radius) {
  if (caption == "Average") return Rounded(SlowAverage(source, radius));
  if (caption == "Gaussian Blur") return Rounded(SlowGaussian(source, radius));
  if (caption == "Sharpen") return Rounded(SlowSharpen(source, radius, 255));
  if (caption == "Unsharp Mask") return Rounded(Merged(source, Rounded(SlowAverage(source, radius)), radius));
  if (caption == "Reduce Grain") return Rounded(SlowGrain(source));
  return Rounded(SlowEqualize(source, 255));
}

Picture ExpectedData(const std::string& caption, const Picture& source, int radius) {
  if (caption == "Average") return SlowAverage(source, radius);
  if (caption == "Gaussian Blur") return SlowGaussian(source, radius);
  if (caption == "Sharpen") return SlowSharpen(source, radius, kMax);
  if (caption == "Unsharp Mask") return Merged(source, SlowGaussian(source, radius), 0);
  if (caption == "Reduce Grain") return SlowGrain(source);
  return SlowEqualize(source, 32767);
}

class RowRecorder : public Progress {
 public:
  explicit RowRecorder(int rowsUntilCancel = std::numeric_limits<int>::max()) : left_(rowsUntilCancel) {}
  bool Row(int done, int total) override {
    percents.push_back(Percent(done, total));
    return --left_ > 0;
  }
  std::vector<int> percents;

 private:
  int left_;
};

void CheckPreview(const FilterEntry& filter, int width, int height, int stride, int radius) {
  DisplayBitmap memory = Noise(stride, height, 31u * width + height);
  const ConstGrayView source{memory.bits.data(), width, height, memory.stride};
  DisplayBitmap copy = Copy({memory.bits.data(), memory.stride, height, memory.stride});
  const GrayView result{copy.bits.data(), width, height, copy.stride};
  NoProgress progress;
  ASSERT_TRUE(filter.preview({source, result, radius, progress}));

  const std::vector<int> levels = Pixels(source);
  const Picture expected =
      ExpectedLevels(filter.caption, {width, height, {levels.begin(), levels.end()}}, radius);
  const std::vector<int> pixels = Pixels(result);
  ASSERT_EQ(std::vector<float>(pixels.begin(), pixels.end()), expected.values);
  if (std::string(filter.caption) == "Equalization") return;
  for (int y = 0; y < height; ++y)
    ASSERT_EQ(std::memcmp(result.Row(y) + width, source.Row(y) + width, source.stride - width), 0)
        << "padding";
}

void CheckData(const FilterEntry& filter, int width, int height, int radius, bool withBlanks) {
  FloatImage image = NoiseFloats(width, height, 7u * width + height, -2000, 40000);
  const FloatView values = image.Edit();
  for (std::size_t i = 3; withBlanks && i < values.Count(); i += 1 + 5 * i)
    values.values[i] = std::numeric_limits<float>::quiet_NaN();
  FloatImage result = image;
  NoProgress progress;
  ASSERT_TRUE(filter.data({image.View(), result.Edit(), radius, kMax, progress}));

  const Picture expected = ExpectedData(filter.caption, {width, height, Values(image.View())}, radius);
  const std::vector<float> actual = Values(result.View());
  for (std::size_t i = 0; i < actual.size(); ++i) {
    if (std::isnan(expected.values[i]) && std::isnan(actual[i])) continue;
    ASSERT_EQ(std::memcmp(&actual[i], &expected.values[i], sizeof(float)), 0)
        << "pixel " << i << ": " << actual[i] << ", not " << expected.values[i];
  }
}

// The median, which has a test of its own, is no sum over a window.
std::vector<FilterEntry> SummingFilters() {
  std::vector<FilterEntry> filters;
  for (const FilterEntry& filter : FilterTable())
    if (std::string(filter.caption) != "Median") filters.push_back(filter);
  return filters;
}

void CheckSize(int width, int height) {
  for (const FilterEntry& filter : SummingFilters()) {
    for (int radius = 1; radius <= (filter.usesRadius ? 3 : 1); ++radius) {
      SCOPED_TRACE(testing::Message()
                   << filter.caption << ' ' << width << 'x' << height << " radius " << radius);
      CheckPreview(filter, width, height, width, radius);
      CheckPreview(filter, width, height, width + 13, radius);
      CheckData(filter, width, height, radius, false);
      CheckData(filter, width, height, radius, true);
    }
  }
}

TEST(EveryFilter, EqualsItsDefinitionAtEverySmallSize) {
  OnEveryInstructionSet([] {
    for (int width = 1; width <= 9; ++width)
      for (int height = 1; height <= 9; ++height) CheckSize(width, height);
  });
}

TEST(EveryFilter, EqualsItsDefinitionWhereVectorsEnd) {
  OnEveryInstructionSet([] {
    for (const int width :
         {15, 16, 17, 31, 32, 33, 34, 63, 64, 65, 66, 67, 68, 69, 70, 71, 127, 128, 129, 133})
      CheckSize(width, 6);
    CheckSize(301, 205);
  });
}

// Percentages of a picture of eleven rows: main passes start at `first` and count to `last` or `total`.
TEST(EveryFilter, ReportsEachRowAndStopsWhenToldSo) {
  constexpr int kRows = 11;
  for (const FilterEntry& filter : SummingFilters()) {
    SCOPED_TRACE(filter.caption);
    const std::string caption = filter.caption;
    const bool blurs = caption == "Average" || caption == "Gaussian Blur" || caption == "Unsharp Mask";
    const bool sharpens = caption == "Sharpen";
    const DisplayBitmap source = Noise(20, kRows, 5);
    const FloatImage data = NoiseFloats(20, kRows, 5);
    const auto preview = [&](RowRecorder& rows) {
      DisplayBitmap result = Copy(source.View());
      return filter.preview({source.View(), result.View(), 3, rows});
    };
    const auto full = [&](RowRecorder& rows) {
      FloatImage result = data;
      return filter.data({data.View(), result.Edit(), 3, kMax, rows});
    };
    std::vector<int> previewPercents;
    std::vector<int> dataPercents;
    for (int y = sharpens ? 2 : 0; y < (sharpens ? kRows - 2 : kRows); ++y) {
      previewPercents.push_back(sharpens ? RoundEven((y - 2) * 100 / 7.0)
                                         : RoundEven(y * 100.0 / (blurs ? 11 : 10)));
      dataPercents.push_back(RoundEven(y * 100.0 / (sharpens ? 8 : blurs ? 11 : 10)));
    }
    for (const int until : {1, 5, static_cast<int>(dataPercents.size())}) {
      RowRecorder previewRows(until);
      EXPECT_FALSE(preview(previewRows));
      EXPECT_EQ(previewRows.percents.size(), static_cast<std::size_t>(until));
      RowRecorder dataRows(until);
      EXPECT_FALSE(full(dataRows));
      EXPECT_EQ(dataRows.percents.size(), static_cast<std::size_t>(until));
    }
    RowRecorder previewRows;
    EXPECT_TRUE(preview(previewRows));
    EXPECT_EQ(previewRows.percents, previewPercents);
    RowRecorder dataRows;
    EXPECT_TRUE(full(dataRows));
    EXPECT_EQ(dataRows.percents, dataPercents);
  }
}

TEST(Equalization, MapsPaddingButCountsPixelsOnly) {
  DisplayBitmap source = Levels(2, 2, {10, 10, 200, 200});
  for (int y = 0; y < 2; ++y) source.View().Row(y)[2] = source.View().Row(y)[3] = 10;
  DisplayBitmap result = Copy(source.View());
  NoProgress progress;
  EXPECT_TRUE(Equalization().preview({source.View(), result.View(), 1, progress}));
  EXPECT_EQ(AllBytes(result.View()), (std::vector<int>{128, 128, 128, 128, 255, 255, 128, 128}));
}

TEST(ReduceGrain, ShowsItsWeightsAroundASingleStar) {
  const DisplayBitmap source = Levels(9, 1, {0, 0, 0, 0, 210, 0, 0, 0, 0});
  DisplayBitmap result = Copy(source.View());
  NoProgress progress;
  EXPECT_TRUE(ReduceGrain().preview({source.View(), result.View(), 1, progress}));
  EXPECT_EQ(Pixels(result.View()), (std::vector<int>{0, 0, 0, 72, 102, 72, 0, 0, 0}));
}

}  // namespace
}  // namespace corvane
