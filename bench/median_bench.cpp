// Medians, beside OpenCV.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <random>

#include "filters/median.h"

#if defined(HAVE_OPENCV)
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#endif

namespace corvane {
namespace {

// Size, radius.
void SizesAndRadii(benchmark::internal::Benchmark* bench) {
  bench->ArgsProduct({{6000, 1000}, {1, 2, 3}})->Unit(benchmark::kMillisecond)->UseRealTime();
}

int HeightFor(int width) { return width == 6000 ? 4000 : width; }

DisplayBitmap NoiseLevels(int width) {
  DisplayBitmap picture(width, HeightFor(width));
  std::mt19937 random(1);
  for (std::uint8_t& level : picture.bits) level = static_cast<std::uint8_t>(random());
  return picture;
}

FloatImage NoiseValues(int width, std::uint32_t limit) {
  FloatImage image(width, HeightFor(width));
  const FloatView view = image.Edit();
  std::mt19937 random(1);
  for (std::size_t i = 0; i < view.Count(); ++i) view.values[i] = static_cast<float>(random() % limit);
  return image;
}

void MedianOfLevels(benchmark::State& state) {
  const DisplayBitmap source = NoiseLevels(static_cast<int>(state.range(0)));
  DisplayBitmap result(source.width, source.height);
  NoProgress progress;
  for (auto _ : state) {
    MedianPreview(source.View(), result.View(), static_cast<int>(state.range(1)), progress);
    benchmark::ClobberMemory();
  }
}
BENCHMARK(MedianOfLevels)->Apply(SizesAndRadii);

// Values of 16 bits, and larger ones.
template <std::uint32_t limit>
void MedianOfData(benchmark::State& state) {
  const FloatImage source = NoiseValues(static_cast<int>(state.range(0)), limit);
  FloatImage result(source.Width(), source.Height());
  NoProgress progress;
  for (auto _ : state) {
    MedianData(source.View(), result.Edit(), static_cast<int>(state.range(1)), progress);
    benchmark::ClobberMemory();
  }
}
BENCHMARK(MedianOfData<32768>)->Apply(SizesAndRadii);
BENCHMARK(MedianOfData<131072>)->Apply(SizesAndRadii);

#if defined(HAVE_OPENCV)
void OpenCvMedianOfLevels(benchmark::State& state) {
  cv::setNumThreads(1);
  DisplayBitmap source = NoiseLevels(static_cast<int>(state.range(0)));
  DisplayBitmap result(source.width, source.height);
  const cv::Mat in(source.height, source.stride, CV_8U, source.bits.data());
  cv::Mat out(source.height, source.stride, CV_8U, result.bits.data());
  for (auto _ : state) cv::medianBlur(in, out, 2 * static_cast<int>(state.range(1)) + 1);
}
BENCHMARK(OpenCvMedianOfLevels)->Apply(SizesAndRadii);

// Windows of 7 by 7 floats are beyond it.
void OpenCvMedianOfData(benchmark::State& state) {
  cv::setNumThreads(1);
  FloatImage source = NoiseValues(static_cast<int>(state.range(0)), 32768);
  const cv::Mat in(source.Height(), source.Width(), CV_32F, source.Edit().values);
  cv::Mat out(in.size(), CV_32F);
  for (auto _ : state) cv::medianBlur(in, out, 2 * static_cast<int>(state.range(1)) + 1);
}
BENCHMARK(OpenCvMedianOfData)
    ->ArgsProduct({{6000, 1000}, {1, 2}})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
#endif

}  // namespace
}  // namespace corvane
