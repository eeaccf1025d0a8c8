// What the viewer does to the bytes of a picture, beside OpenCV.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstring>
#include <random>

#include "analysis/histogram.h"
#include "analysis/views.h"
#include "base/byte_map.h"
#include "viewer/geometry.h"
#include "viewer/magnify.h"

#if defined(HAVE_OPENCV)
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#endif

namespace corvane {
namespace {

void BothSizes(benchmark::internal::Benchmark* bench) {
  bench->Args({6000, 4000})->Args({1000, 1000})->Unit(benchmark::kMillisecond)->UseRealTime();
}

DisplayBitmap Noise(int width, int height) {
  DisplayBitmap picture(width, height);
  std::mt19937 random(1);
  for (std::uint8_t& level : picture.bits) level = static_cast<std::uint8_t>(random());
  return picture;
}

struct Pictures {
  explicit Pictures(const benchmark::State& state)
      : source(Noise(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)))),
        result(source.width, source.height),
        rotated(source.height, source.width) {}
  DisplayBitmap source;
  DisplayBitmap result;
  DisplayBitmap rotated;
};

template <class Work>
void Run(benchmark::State& state, Work work) {
  for (auto _ : state) {
    work();
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations() * state.range(0) * state.range(1));
}

void Memcpy(benchmark::State& state) {
  Pictures p(state);
  Run(state, [&] { std::memcpy(p.result.bits.data(), p.source.bits.data(), p.source.bits.size()); });
}
BENCHMARK(Memcpy)->Apply(BothSizes);

void Rotation90(benchmark::State& state) {
  Pictures p(state);
  Run(state, [&] { Rotate90(p.source.View(), p.rotated.View()); });
}
BENCHMARK(Rotation90)->Apply(BothSizes);

void Rotation180(benchmark::State& state) {
  Pictures p(state);
  Run(state, [&] { Rotate180(p.source.View(), p.result.View()); });
}
BENCHMARK(Rotation180)->Apply(BothSizes);

void FlipLeftRight(benchmark::State& state) {
  Pictures p(state);
  Run(state, [&] { FlipVertical(p.source.View(), p.result.View()); });
}
BENCHMARK(FlipLeftRight)->Apply(BothSizes);

void FlipTopBottom(benchmark::State& state) {
  Pictures p(state);
  Run(state, [&] { FlipHorizontal(p.source.View(), p.result.View()); });
}
BENCHMARK(FlipTopBottom)->Apply(BothSizes);

void LookUp(benchmark::State& state) {
  Pictures p(state);
  std::uint8_t table[256];
  for (int i = 0; i < 256; ++i) table[i] = static_cast<std::uint8_t>(i * i / 255);
  Run(state, [&] { MapBytes(table, p.source.bits.data(), p.result.bits.data(), p.source.bits.size()); });
}
BENCHMARK(LookUp)->Apply(BothSizes);

void Raster(benchmark::State& state) {
  Pictures p(state);
  Run(state, [&] { RasterView(p.source.View(), 5, p.result.View()); });
}
BENCHMARK(Raster)->Apply(BothSizes);

void Negative(benchmark::State& state) {
  Pictures p(state);
  Run(state, [&] { NegativeView(p.source.View(), p.result.View()); });
}
BENCHMARK(Negative)->Apply(BothSizes);

void Edge(benchmark::State& state) {
  Pictures p(state);
  Run(state, [&] { EdgeView(p.source.View(), p.result.View()); });
}
BENCHMARK(Edge)->Apply(BothSizes);

void Histogram(benchmark::State& state) {
  Pictures p(state);
  LevelHistogram counts{};
  Run(state, [&] { CountPixels(p.source.View(), counts); });
}
BENCHMARK(Histogram)->Apply(BothSizes);

// 1000 x 1000 to 3000 x 3000: close to the largest picture allowed.
template <void (*Enlarge)(ConstGrayView, int, GrayView)>
void Magnify(benchmark::State& state) {
  const DisplayBitmap source = Noise(1000, 1000);
  DisplayBitmap result(3000, 3000);
  for (auto _ : state) {
    Enlarge(source.View(), 3, result.View());
    benchmark::ClobberMemory();
  }
}
BENCHMARK(Magnify<Replicate>)->Name("MagnifyReplicated")->Unit(benchmark::kMillisecond);
BENCHMARK(Magnify<Interpolate>)->Name("MagnifyInterpolated")->Unit(benchmark::kMillisecond);

template <FloatImage (*Enlarge)(ConstFloatView, int)>
void MagnifyData(benchmark::State& state) {
  FloatImage source(1000, 1000);
  for (std::size_t i = 0; i < source.Count(); ++i) source.Edit().values[i] = static_cast<float>(i % 30011);
  for (auto _ : state) benchmark::DoNotOptimize(Enlarge(source.View(), 3).View().values);
}
BENCHMARK(MagnifyData<Replicate>)->Name("MagnifyDataReplicated")->Unit(benchmark::kMillisecond);
BENCHMARK(MagnifyData<Interpolate>)->Name("MagnifyDataInterpolated")->Unit(benchmark::kMillisecond);

#if defined(HAVE_OPENCV)

cv::Mat AsMat(DisplayBitmap& picture) {
  return {picture.height, picture.width, CV_8UC1, picture.bits.data(),
          static_cast<std::size_t>(picture.stride)};
}

void PeerRotation90(benchmark::State& state) {
  cv::setNumThreads(1);
  Pictures p(state);
  const cv::Mat source = AsMat(p.source);
  cv::Mat result = AsMat(p.rotated);
  Run(state, [&] { cv::rotate(source, result, cv::ROTATE_90_CLOCKWISE); });
}
BENCHMARK(PeerRotation90)->Apply(BothSizes);

template <int Axis>
void PeerFlip(benchmark::State& state) {
  cv::setNumThreads(1);
  Pictures p(state);
  const cv::Mat source = AsMat(p.source);
  cv::Mat result = AsMat(p.result);
  Run(state, [&] { cv::flip(source, result, Axis); });
}
BENCHMARK(PeerFlip<-1>)->Apply(BothSizes)->Name("PeerRotation180");
BENCHMARK(PeerFlip<1>)->Apply(BothSizes)->Name("PeerFlipLeftRight");
BENCHMARK(PeerFlip<0>)->Apply(BothSizes)->Name("PeerFlipTopBottom");

void PeerLookUp(benchmark::State& state) {
  cv::setNumThreads(1);
  Pictures p(state);
  cv::Mat table(1, 256, CV_8UC1);
  for (int i = 0; i < 256; ++i) table.at<std::uint8_t>(i) = static_cast<std::uint8_t>(i * i / 255);
  const cv::Mat source = AsMat(p.source);
  cv::Mat result = AsMat(p.result);
  Run(state, [&] { cv::LUT(source, table, result); });
}
BENCHMARK(PeerLookUp)->Apply(BothSizes);

void PeerNegative(benchmark::State& state) {
  cv::setNumThreads(1);
  Pictures p(state);
  const cv::Mat source = AsMat(p.source);
  cv::Mat result = AsMat(p.result);
  Run(state, [&] { cv::bitwise_not(source, result); });
}
BENCHMARK(PeerNegative)->Apply(BothSizes);

void PeerHistogram(benchmark::State& state) {
  cv::setNumThreads(1);
  Pictures p(state);
  const cv::Mat source = AsMat(p.source);
  const int levels = 256;
  const float range[] = {0, 256};
  const float* ranges[] = {range};
  cv::Mat counts;
  Run(state, [&] { cv::calcHist(&source, 1, nullptr, cv::Mat(), counts, 1, &levels, ranges); });
}
BENCHMARK(PeerHistogram)->Apply(BothSizes);

template <int Method>
void PeerMagnify(benchmark::State& state) {
  cv::setNumThreads(1);
  DisplayBitmap source = Noise(1000, 1000);
  DisplayBitmap enlarged(3000, 3000);
  cv::Mat result = AsMat(enlarged);
  for (auto _ : state) cv::resize(AsMat(source), result, result.size(), 0, 0, Method);
}
BENCHMARK(PeerMagnify<cv::INTER_NEAREST>)->Name("PeerMagnifyReplicated")->Unit(benchmark::kMillisecond);
BENCHMARK(PeerMagnify<cv::INTER_LINEAR>)->Name("PeerMagnifyInterpolated")->Unit(benchmark::kMillisecond);

void PeerEdge(benchmark::State& state) {
  cv::setNumThreads(1);
  Pictures p(state);
  const cv::Mat weights = (cv::Mat_<float>(3, 3) << -2, -5, 0, -5, 0, 5, 0, 5, 2);
  const cv::Mat source = AsMat(p.source);
  cv::Mat result = AsMat(p.result);
  Run(state, [&] { cv::filter2D(source, result, CV_8U, weights, {-1, -1}, 100); });
}
BENCHMARK(PeerEdge)->Apply(BothSizes);

#endif

}  // namespace
}  // namespace corvane
