// Crops, mosaics, combinations and color composites, beside memcpy and OpenCV.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstring>
#include <random>

#include "align/combine.h"
#include "align/registration.h"
#include "color/composite.h"

#if defined(HAVE_OPENCV)
#include <opencv2/core.hpp>
#endif

namespace corvane {
namespace {

void BothSizes(benchmark::internal::Benchmark* bench) {
  bench->Args({6000, 4000})->Args({1000, 1000})->Unit(benchmark::kMillisecond)->UseRealTime();
}

DisplayBitmap Noise(int width, int height, unsigned seed) {
  DisplayBitmap picture(width, height);
  std::mt19937 random(seed);
  for (std::uint8_t& level : picture.bits) level = static_cast<std::uint8_t>(random());
  return picture;
}

FloatImage NoiseData(int width, int height, unsigned seed) {
  FloatImage data(width, height);
  std::mt19937 random(seed);
  const FloatView values = data.Overwrite();
  for (std::size_t i = 0; i < values.Count(); ++i) values.values[i] = static_cast<float>(random() >> 17);
  return data;
}

struct Frames {
  explicit Frames(const benchmark::State& state)
      : width(static_cast<int>(state.range(0))),
        height(static_cast<int>(state.range(1))),
        a(Noise(width, height, 1)),
        b(Noise(width, height, 2)),
        result(width, height),
        dataA(NoiseData(width, height, 1)),
        dataB(NoiseData(width, height, 2)),
        dataResult(NoiseData(width, height, 3)) {}
  int width;
  int height;
  DisplayBitmap a;
  DisplayBitmap b;
  DisplayBitmap result;
  FloatImage dataA;
  FloatImage dataB;
  FloatImage dataResult;
};

template <class Work>
void Run(benchmark::State& state, Work work) {
  for (auto _ : state) {
    work();
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations() * state.range(0) * state.range(1));
}

// As many bytes as a combination reads and writes: three pictures, half of them read.
void CopyDisplay(benchmark::State& state) {
  Frames f(state);
  const std::size_t size = f.a.bits.size();
  Run(state, [&] {
    std::memcpy(f.result.bits.data(), f.a.bits.data(), size);
    std::memcpy(f.result.bits.data(), f.b.bits.data(), size / 2);
  });
}
BENCHMARK(CopyDisplay)->Apply(BothSizes);

void CopyData(benchmark::State& state) {
  Frames f(state);
  const std::size_t size = f.dataA.Count() * sizeof(float);
  Run(state, [&] {
    float* target = f.dataResult.Overwrite().values;
    std::memcpy(target, f.dataA.View().values, size);
    std::memcpy(target, f.dataB.View().values, size / 2);
  });
}
BENCHMARK(CopyData)->Apply(BothSizes);

void CombineLevels(benchmark::State& state, int method, float m1 = 0.7f, float m2 = 1.1f) {
  Frames f(state);
  Run(state, [&] { CombineMethods()[method].display(f.a.View(), f.b.View(), m1, m2, f.result.View()); });
}
BENCHMARK_CAPTURE(CombineLevels, Add, 0)->Apply(BothSizes);
BENCHMARK_CAPTURE(CombineLevels, Subtract, 1)->Apply(BothSizes);
BENCHMARK_CAPTURE(CombineLevels, Average, 2)->Apply(BothSizes);
BENCHMARK_CAPTURE(CombineLevels, Darker, 3)->Apply(BothSizes);
BENCHMARK_CAPTURE(CombineLevels, Lighter, 4)->Apply(BothSizes);
BENCHMARK_CAPTURE(CombineLevels, Flat, 5)->Apply(BothSizes);
// What the peers of a choice can do: no multipliers.
BENCHMARK_CAPTURE(CombineLevels, DarkerAsTheyAre, 3, 1.0f, 1.0f)->Apply(BothSizes);
BENCHMARK_CAPTURE(CombineLevels, LighterAsTheyAre, 4, 1.0f, 1.0f)->Apply(BothSizes);

void CombineValues(benchmark::State& state, int method) {
  Frames f(state);
  Run(state, [&] {
    CombineMethods()[method].data(f.dataA.View(), f.dataB.View(), 0.7f, 1.1f, f.dataResult.Overwrite());
  });
}
BENCHMARK_CAPTURE(CombineValues, Add, 0)->Apply(BothSizes);
BENCHMARK_CAPTURE(CombineValues, Subtract, 1)->Apply(BothSizes);
BENCHMARK_CAPTURE(CombineValues, Average, 2)->Apply(BothSizes);
BENCHMARK_CAPTURE(CombineValues, Darker, 3)->Apply(BothSizes);
BENCHMARK_CAPTURE(CombineValues, Lighter, 4)->Apply(BothSizes);
BENCHMARK_CAPTURE(CombineValues, Flat, 5)->Apply(BothSizes);

// All but a few rows and columns, as shifted frames of one field share them.
struct Shifted {
  explicit Shifted(const Frames& f) : mark{f.width / 2, f.height / 2} {
    frame = {mark.x - 13, f.width - 1 - mark.x, mark.y - 7, f.height - 1 - mark.y};
    cut = DisplayBitmap(frame.Width(), frame.Height());
    cutData = FloatImage(frame.Width(), frame.Height());
  }
  Mark mark;
  AlignFrame frame;
  DisplayBitmap cut;
  FloatImage cutData;
};

void CopyCrop(benchmark::State& state) {
  Frames f(state);
  Shifted s(f);
  Run(state, [&] { std::memcpy(s.cut.bits.data(), f.a.bits.data(), s.cut.bits.size()); });
}
BENCHMARK(CopyCrop)->Apply(BothSizes);

void CropLevels(benchmark::State& state) {
  Frames f(state);
  Shifted s(f);
  Run(state, [&] { Crop(f.a.View(), s.mark, s.frame, s.cut.View()); });
}
BENCHMARK(CropLevels)->Apply(BothSizes);

void PasteLevels(benchmark::State& state) {
  Frames f(state);
  Shifted s(f);
  const AlignFrame mosaic = {s.mark.x, f.width - 1 - s.mark.x, s.mark.y, f.height - 1 - s.mark.y};
  Run(state, [&] { Paste(s.cut.View(), {s.mark.x - 13, s.mark.y - 7}, mosaic, f.result.View()); });
}
BENCHMARK(PasteLevels)->Apply(BothSizes);

void CopyCropData(benchmark::State& state) {
  Frames f(state);
  Shifted s(f);
  Run(state, [&] {
    FloatImage copy(s.frame.Width(), s.frame.Height());
    std::memcpy(copy.Overwrite().values, f.dataA.View().values, copy.Count() * sizeof(float));
  });
}
BENCHMARK(CopyCropData)->Apply(BothSizes);

void CropValues(benchmark::State& state) {
  Frames f(state);
  Shifted s(f);
  Run(state, [&] { benchmark::DoNotOptimize(Crop(f.dataA.View(), s.mark, s.frame).View().values); });
}
BENCHMARK(CropValues)->Apply(BothSizes);

void CopyComposite(benchmark::State& state) {
  Frames f(state);
  ColorBitmap from(f.width, f.height);
  ColorBitmap to(f.width, f.height);
  std::memset(from.bits.data(), 1, from.bits.size());
  std::memset(to.bits.data(), 1, to.bits.size());
  Run(state, [&] { std::memcpy(to.bits.data(), from.bits.data(), to.bits.size()); });
}
BENCHMARK(CopyComposite)->Apply(BothSizes);

void CompositePictures(benchmark::State& state) {
  Frames f(state);
  ColorBitmap color(f.width, f.height);
  std::memset(color.bits.data(), 1, color.bits.size());
  Run(state, [&] { Composite({f.a.View(), 0.7f}, {f.b.View(), 1.1f}, {f.result.View(), 1.3f}, color); });
}
BENCHMARK(CompositePictures)->Apply(BothSizes);

#if defined(HAVE_OPENCV)

cv::Mat AsMat(DisplayBitmap& picture) {
  return {picture.height, picture.width, CV_8UC1, picture.bits.data(),
          static_cast<std::size_t>(picture.stride)};
}

template <class Work>
void RunPeer(benchmark::State& state, Work work) {
  cv::setNumThreads(1);
  Frames f(state);
  cv::Mat a = AsMat(f.a);
  cv::Mat b = AsMat(f.b);
  cv::Mat result = AsMat(f.result);
  Run(state, [&] { work(a, b, result); });
}

void PeerAdd(benchmark::State& state) {
  RunPeer(state, [](auto& a, auto& b, auto& result) { cv::addWeighted(a, 0.7, b, 1.1, 0, result); });
}
BENCHMARK(PeerAdd)->Apply(BothSizes);

void PeerDarker(benchmark::State& state) {
  RunPeer(state, [](auto& a, auto& b, auto& result) { cv::min(a, b, result); });
}
BENCHMARK(PeerDarker)->Apply(BothSizes);

void PeerLighter(benchmark::State& state) {
  RunPeer(state, [](auto& a, auto& b, auto& result) { cv::max(a, b, result); });
}
BENCHMARK(PeerLighter)->Apply(BothSizes);

void PeerFlat(benchmark::State& state) {
  RunPeer(state, [](auto& a, auto& b, auto& result) { cv::divide(a, b, result, 0.7); });
}
BENCHMARK(PeerFlat)->Apply(BothSizes);

void PeerComposite(benchmark::State& state) {
  cv::setNumThreads(1);
  Frames f(state);
  const cv::Mat planes[] = {AsMat(f.a), AsMat(f.b), AsMat(f.result)};
  cv::Mat color;
  Run(state, [&] { cv::merge(planes, 3, color); });
}
BENCHMARK(PeerComposite)->Apply(BothSizes);

#endif

}  // namespace
}  // namespace corvane
