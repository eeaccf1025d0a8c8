// Curves and deconvolution, beside OpenCV.

#include <benchmark/benchmark.h>

#include <array>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <random>
#include <utility>

#include "base/byte_map.h"
#include "luminance/curves.h"
#include "luminance/deconvolution.h"

#if defined(HAVE_OPENCV)
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#endif

namespace corvane {
namespace {

void BothSizes(benchmark::internal::Benchmark* bench) {
  bench->Args({6000, 4000})->Args({1000, 1000})->Unit(benchmark::kMillisecond)->UseRealTime();
}

// Size, radius.
void SizesAndRadii(benchmark::internal::Benchmark* bench) {
  bench->ArgsProduct({{6000, 1000}, {3, 20}})->Unit(benchmark::kMillisecond)->UseManualTime();
}

int HeightFor(int width) { return width == 6000 ? 4000 : width; }

DisplayBitmap NoiseLevels(int width, int height) {
  DisplayBitmap picture(width, height);
  std::mt19937 random(1);
  for (std::uint8_t& level : picture.bits) level = static_cast<std::uint8_t>(random());
  return picture;
}

FloatImage NoiseValues(int width, int height) {
  FloatImage image(width, height);
  const FloatView view = image.Edit();
  std::mt19937 random(1);
  for (std::size_t i = 0; i < view.Count(); ++i) view.values[i] = static_cast<float>(random() % 32768);
  return image;
}

void CurveOnLevels(benchmark::State& state) {
  const DisplayBitmap source =
      NoiseLevels(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
  DisplayBitmap result(source.width, source.height);
  for (auto _ : state) {
    const auto table = ScaleTable({1, 0, 255});
    MapBytes(table.data(), source.bits.data(), result.bits.data(), source.bits.size());
    benchmark::ClobberMemory();
  }
}
BENCHMARK(CurveOnLevels)->Apply(BothSizes);

template <int mode>
void CurveOnData(benchmark::State& state) {
  FloatImage image = NoiseValues(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
  for (auto _ : state) {
    ScaleData({mode, 0, 255}, 0, 32767, image.Edit());
    benchmark::ClobberMemory();
  }
}
BENCHMARK(CurveOnData<1>)->Apply(BothSizes);
BENCHMARK(CurveOnData<2>)->Apply(BothSizes);
BENCHMARK(CurveOnData<3>)->Apply(BothSizes);
BENCHMARK(CurveOnData<5>)->Apply(BothSizes);

// The time of the second iteration: the first one also meets fresh memory.
class SecondIteration : public IterationWatch {
 public:
  bool Row(int, int) override { return true; }
  bool Iteration(int iteration, float) override {
    const auto now = std::chrono::steady_clock::now();
    seconds = std::chrono::duration<double>(now - last_).count();
    last_ = now;
    return iteration < 2;
  }
  double seconds = 0;

 private:
  std::chrono::steady_clock::time_point last_;
};

template <Restoration mode>
void DisplayIteration(benchmark::State& state) {
  const int width = static_cast<int>(state.range(0));
  DisplayBitmap picture = NoiseLevels(width, HeightFor(width));
  for (auto _ : state) {
    SecondIteration watch;
    DeconvolveDisplay(picture.View(), static_cast<float>(state.range(1)), mode, watch);
    state.SetIterationTime(watch.seconds);
  }
}
BENCHMARK(DisplayIteration<Restoration::Standard>)->Apply(SizesAndRadii);
BENCHMARK(DisplayIteration<Restoration::DeepSky>)->Apply(SizesAndRadii);

template <Restoration mode>
void DataIteration(benchmark::State& state) {
  const int width = static_cast<int>(state.range(0));
  FloatImage image = NoiseValues(width, HeightFor(width));
  for (auto _ : state) {
    SecondIteration watch;
    Deconv16(image.Edit(), static_cast<float>(state.range(1)), mode, watch);
    state.SetIterationTime(watch.seconds);
  }
}
BENCHMARK(DataIteration<Restoration::Standard>)->Apply(SizesAndRadii);
BENCHMARK(DataIteration<Restoration::DeepSky>)->Apply(SizesAndRadii);

#if defined(HAVE_OPENCV)
void OpenCvLut(benchmark::State& state) {
  cv::setNumThreads(1);
  DisplayBitmap source = NoiseLevels(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
  DisplayBitmap result(source.width, source.height);
  const cv::Mat in(source.height, source.stride, CV_8U, source.bits.data());
  cv::Mat out(source.height, source.stride, CV_8U, result.bits.data());
  auto table = ScaleTable({1, 0, 255});
  const cv::Mat lut(1, 256, CV_8U, table.data());
  for (auto _ : state) cv::LUT(in, lut, out);
}
BENCHMARK(OpenCvLut)->Apply(BothSizes);

template <bool logarithm>
void OpenCvCurveOnData(benchmark::State& state) {
  cv::setNumThreads(1);
  FloatImage image = NoiseValues(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
  const cv::Mat in(image.Height(), image.Width(), CV_32F, image.Edit().values);
  cv::Mat out(in.size(), CV_32F);
  for (auto _ : state) logarithm ? cv::log(in, out) : cv::pow(in, 0.33, out);
}
BENCHMARK(OpenCvCurveOnData<true>)->Apply(BothSizes);
BENCHMARK(OpenCvCurveOnData<false>)->Apply(BothSizes);

// One iteration composed of library calls; buffers are kept.
class OpenCvRestoration {
 public:
  OpenCvRestoration(cv::Mat image, float radius) : observed_(image.clone()), estimate_(std::move(image)) {
    cv::setNumThreads(1);
    const PointSpread spread = GaussianPointSpread(radius);
    kernel_ = cv::Mat(spread.kernel).clone() / std::sqrt(spread.normalizer);
  }
  void Step(bool weighted) {
    cv::sepFilter2D(estimate_, blurred_, CV_32F, kernel_, kernel_, {-1, -1}, 0, cv::BORDER_REPLICATE);
    cv::subtract(observed_, blurred_, residual_, cv::noArray(), CV_32F);
    if (!weighted) cv::max(residual_, 0, residual_);
    energy = residual_.dot(residual_);
    if (weighted) {
      double brightest = 255;
      if (estimate_.depth() == CV_32F) cv::minMaxLoc(blurred_, nullptr, &brightest);
      angle_ = blurred_ * (1.57 / brightest);
      cv::polarToCart(cv::noArray(), angle_, cosine_, sine_);
      cv::multiply(residual_, sine_, residual_);
    }
    cv::add(estimate_, residual_, estimate_, cv::noArray(), estimate_.depth());
    if (estimate_.depth() == CV_32F) cv::max(estimate_, 0, estimate_);
  }
  double energy = 0;

 private:
  cv::Mat observed_, estimate_, kernel_, blurred_, residual_, angle_, cosine_, sine_;
};

template <bool weighted>
void OpenCvDisplayIteration(benchmark::State& state) {
  const int width = static_cast<int>(state.range(0));
  DisplayBitmap picture = NoiseLevels(width, HeightFor(width));
  OpenCvRestoration run(cv::Mat(picture.height, picture.stride, CV_8U, picture.bits.data()),
                        static_cast<float>(state.range(1)));
  run.Step(weighted);
  for (auto _ : state) {
    const auto start = std::chrono::steady_clock::now();
    run.Step(weighted);
    state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
  }
}
BENCHMARK(OpenCvDisplayIteration<true>)->Apply(SizesAndRadii);
BENCHMARK(OpenCvDisplayIteration<false>)->Apply(SizesAndRadii);

template <bool weighted>
void OpenCvDataIteration(benchmark::State& state) {
  const int width = static_cast<int>(state.range(0));
  FloatImage image = NoiseValues(width, HeightFor(width));
  OpenCvRestoration run(cv::Mat(image.Height(), image.Width(), CV_32F, image.Edit().values),
                        static_cast<float>(state.range(1)));
  run.Step(weighted);
  for (auto _ : state) {
    const auto start = std::chrono::steady_clock::now();
    run.Step(weighted);
    state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
  }
}
BENCHMARK(OpenCvDataIteration<true>)->Apply(SizesAndRadii);
BENCHMARK(OpenCvDataIteration<false>)->Apply(SizesAndRadii);
#endif

}  // namespace
}  // namespace corvane
