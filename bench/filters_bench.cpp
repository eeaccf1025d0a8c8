// The filters beside OpenCV, on one thread.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <string>
#include <string_view>

#include "filters/filter_table.h"
#include "luminance/deconvolution.h"

#if defined(HAVE_OPENCV)
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#endif

namespace corvane {
namespace {

struct Size {
  int width, height;
};

struct Bytes {
  explicit Bytes(Size size) : source(size.width, size.height), result(size.width, size.height) {
    std::mt19937 random(1);
    for (std::uint8_t& level : source.bits) level = static_cast<std::uint8_t>(random());
    std::copy(source.bits.begin(), source.bits.end(), result.bits.begin());
  }
  DisplayBitmap source;
  DisplayBitmap result;
};

struct Values {
  explicit Values(Size size) : source(size.width, size.height), result(size.width, size.height) {
    std::mt19937 random(1);
    const FloatView values = source.Edit();
    std::generate_n(values.values, values.Count(), [&] { return static_cast<float>(random() % 32768); });
    std::copy_n(values.values, values.Count(), result.Edit().values);
  }
  FloatImage source;
  FloatImage result;
};

template <class Work>
void Run(benchmark::State& state, Work work) {
  for (auto _ : state) {
    work();
    benchmark::ClobberMemory();
  }
}

const FilterEntry* Find(std::string_view caption) {
  static const auto table = FilterTable();
  return std::find_if(table.begin(), table.end(), [&](const FilterEntry& e) { return e.caption == caption; });
}

void Preview(benchmark::State& state, Size size, const char* caption, int radius) {
  Bytes p(size);
  NoProgress progress;
  Run(state, [&] { Find(caption)->preview({p.source.View(), p.result.View(), radius, progress}); });
}

void Data(benchmark::State& state, Size size, const char* caption, int radius) {
  Values p(size);
  NoProgress progress;
  Run(state, [&] { Find(caption)->data({p.source.View(), p.result.Edit(), radius, 32767, progress}); });
}

void CopyBytes(benchmark::State& state, Size size) {
  Bytes p(size);
  Run(state, [&] { std::memcpy(p.result.bits.data(), p.source.bits.data(), p.source.bits.size()); });
}

void CopyValues(benchmark::State& state, Size size) {
  Values p(size);
  Run(state, [&] { std::memcpy(p.result.Edit().values, p.source.View().values, 4 * p.source.Count()); });
}

#if defined(HAVE_OPENCV)

template <class Work>
void PeerOnBytes(benchmark::State& state, Size size, Work work) {
  Bytes p(size);
  const cv::Mat in(size.height, size.width, CV_8U, p.source.bits.data(), p.source.stride);
  cv::Mat out(size.height, size.width, CV_8U, p.result.bits.data(), p.result.stride);
  cv::setNumThreads(1);
  Run(state, [&] { work(in, out); });
}

template <class Work>
void PeerOnValues(benchmark::State& state, Size size, Work work) {
  Values p(size);
  const cv::Mat in(size.height, size.width, CV_32F, p.source.Edit().values);
  cv::Mat out(size.height, size.width, CV_32F, p.result.Edit().values);
  cv::setNumThreads(1);
  Run(state, [&] { work(in, out); });
}

cv::Mat Taps(const std::string& caption, int radius) {
  cv::Mat taps;
  if (caption == "Average") {
    taps.create(2 * radius + 1, 1, CV_32F);
    taps = 1.0f / static_cast<float>(taps.rows);
  } else {
    const PointSpread spread = GaussianPointSpread(static_cast<float>(radius));
    cv::Mat(spread.kernel, true).copyTo(taps);
    taps /= cv::sum(taps)[0];
  }
  return taps;
}

cv::Mat Window(const std::string& caption, int radius) {
  if (caption == "Reduce Grain") return (cv::Mat_<float>(1, 5) << -3, 12, 17, 12, -3) / 35;
  const int side = radius == 3 ? 5 : 3;
  cv::Mat_<float> window(side, side, -1.0f);
  window(side / 2, side / 2) = radius == 1 ? 7.0f : radius == 2 ? 11.0f : 30.0f;
  if (radius == 1) window(0, 1) = window(1, 0) = window(1, 2) = window(2, 1) = 0;
  return window / (radius == 3 ? 6 : 3);
}

void AddPeers(const std::string& name, Size size, const std::string& caption, int radius) {
  const auto bytes = [&](const std::string& peer, auto work) {
    benchmark::RegisterBenchmark((name + "/bytes/" + peer).c_str(), [=](benchmark::State& state) {
      PeerOnBytes(state, size, work);
    })->Unit(benchmark::kMillisecond);
  };
  const auto values = [&](const std::string& peer, auto work) {
    benchmark::RegisterBenchmark((name + "/floats/" + peer).c_str(), [=](benchmark::State& state) {
      PeerOnValues(state, size, work);
    })->Unit(benchmark::kMillisecond);
  };
  constexpr int kEdges = cv::BORDER_REPLICATE;
  const int side = 2 * radius + 1;
  const cv::Point middle(-1, -1);
  if (caption == "Equalization") {
    bytes("equalizeHist", [](const cv::Mat& in, cv::Mat& out) { cv::equalizeHist(in, out); });
  } else if (caption == "Sharpen" || caption == "Reduce Grain") {
    const cv::Mat window = Window(caption, radius);
    const auto filter = [=](const cv::Mat& in, cv::Mat& out) {
      cv::filter2D(in, out, -1, window, middle, 0, kEdges);
    };
    bytes("filter2D", filter);
    values("filter2D", filter);
  } else if (caption == "Average") {
    bytes("blur", [=](const cv::Mat& in, cv::Mat& out) { cv::blur(in, out, {side, side}, middle, kEdges); });
  }
  if (caption == "Average" || caption == "Gaussian Blur") {
    const cv::Mat taps = Taps(caption, radius);
    const auto separable = [=](const cv::Mat& in, cv::Mat& out) {
      cv::sepFilter2D(in, out, -1, taps, taps, middle, 0, kEdges);
    };
    values("sepFilter2D", separable);
    if (caption == "Average") return;
    bytes("sepFilter2D", separable);
    bytes("GaussianBlur", [=](const cv::Mat& in, cv::Mat& out) {
      cv::GaussianBlur(in, out, {taps.rows, taps.rows}, radius * 0.8493218, 0, kEdges);
    });
  }
}

#endif

const bool registered = [] {
  for (const Size size : {Size{6000, 4000}, Size{1000, 1000}}) {
    const std::string width = std::to_string(size.width);
    const auto add = [](const std::string& name, auto run) {
      benchmark::RegisterBenchmark(name.c_str(), run)->Unit(benchmark::kMillisecond);
    };
    add("Filter/Copy/" + width + "/bytes", [=](benchmark::State& state) { CopyBytes(state, size); });
    add("Filter/Copy/" + width + "/floats", [=](benchmark::State& state) { CopyValues(state, size); });
    for (const FilterEntry& filter : FilterTable()) {
      const char* caption = filter.caption;
      if (std::string_view(caption) == "Median") continue;  // median_bench.cpp
      for (int radius = 1; radius <= (filter.usesRadius ? 3 : 1); ++radius) {
        std::string name = std::string("Filter/") + caption + '/' + std::to_string(radius) + '/' + width;
        std::replace(name.begin(), name.end(), ' ', '_');
        add(name + "/bytes", [=](benchmark::State& state) { Preview(state, size, caption, radius); });
        add(name + "/floats", [=](benchmark::State& state) { Data(state, size, caption, radius); });
#if defined(HAVE_OPENCV)
        AddPeers(name, size, caption, radius);
#endif
      }
    }
  }
  return true;
}();

}  // namespace
}  // namespace corvane
