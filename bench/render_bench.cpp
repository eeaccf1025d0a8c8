// From file to picture: range, levels, gray from colors, histogram counts, working bitmaps, whole opens;
// beside OpenCV, CFITSIO and memcpy.

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "base/files.h"
#include "base/level_count.h"
#include "base/levels.h"
#include "core/bitmap_reader.h"
#include "core/fits_reader.h"
#include "core/render.h"
#include "core/slot_picture.h"
#include "core/working_files.h"
#include "formats/bitmap_format.h"
#include "formats/gray_pixels.h"
#include "tests/support/quiet_platform.h"

#if defined(HAVE_OPENCV)
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>
#endif
#if defined(HAVE_CFITSIO)
#include <fitsio.h>
#endif

namespace corvane {
namespace {

void BothSizes(benchmark::internal::Benchmark* bench) {
  bench->Args({6000, 4000})->Args({1000, 1000})->Unit(benchmark::kMillisecond)->UseRealTime();
}

// A dark field with noise: sky levels are few, as in real frames.
FloatImage Sky(int width, int height) {
  FloatImage image(width, height);
  std::minstd_rand random(1);
  float* values = image.Edit().values;
  for (std::size_t i = 0; i < image.Count(); ++i) {
    const std::uint32_t bits = static_cast<std::uint32_t>(random());
    values[i] = 1200.0f + static_cast<float>(bits % 400) +
                (bits % 1009 == 0 ? static_cast<float>(bits % 60000) : 0.0f);
  }
  return image;
}

struct Frame {
  explicit Frame(const benchmark::State& state)
      : width(static_cast<int>(state.range(0))),
        height(static_cast<int>(state.range(1))),
        data(Sky(width, height)),
        levels(width, height) {
    // As it is shown: nearly all pixels in the few darkest levels.
    const ValueRange range = FindRange(data.View());
    MapLevels(data.View(), range.min, 255.0f / (range.max - range.min), levels.View());
  }
  int width;
  int height;
  FloatImage data;
  DisplayBitmap levels;
};

template <class Work>
void Run(benchmark::State& state, Work work) {
  for (auto _ : state) {
    work();
    benchmark::ClobberMemory();
  }
}

// A folder for working files, with the gray template that stands beside the benchmark.
class WorkFolder {
 public:
  WorkFolder() : path_(std::filesystem::temp_directory_path() / ("render_bench" + std::to_string(getpid()))) {
    std::filesystem::create_directory(path_);
    const auto shipped = std::filesystem::read_symlink("/proc/self/exe").parent_path() / kGrayTemplate;
    std::filesystem::copy_file(shipped, path_ / kGrayTemplate,
                               std::filesystem::copy_options::overwrite_existing);
  }
  ~WorkFolder() { std::filesystem::remove_all(path_); }
  std::filesystem::path operator/(const std::string& name) const { return path_ / name; }
  const std::filesystem::path& Path() const { return path_; }

 private:
  std::filesystem::path path_;
};

void MemcpyFloats(benchmark::State& state) {
  Frame f(state);
  FloatImage target = Sky(f.width, f.height);
  Run(state, [&] { std::memcpy(target.Edit().values, f.data.View().values, f.data.Count() * 4); });
}
BENCHMARK(MemcpyFloats)->Apply(BothSizes);

// As many bytes as the levels read and write: 5 for each pixel.
void MemcpyAsLevels(benchmark::State& state) {
  Frame f(state);
  ByteBuffer source(f.data.Count() * 5 / 2);
  ByteBuffer target(source.size());
  std::memset(source.data(), 1, source.size());
  std::memset(target.data(), 1, target.size());
  Run(state, [&] { std::memcpy(target.data(), source.data(), source.size()); });
}
BENCHMARK(MemcpyAsLevels)->Apply(BothSizes);

void Range(benchmark::State& state) {
  Frame f(state);
  Run(state, [&] { benchmark::DoNotOptimize(FindRange(f.data.View())); });
}
BENCHMARK(Range)->Apply(BothSizes);

void Levels(benchmark::State& state) {
  Frame f(state);
  Run(state, [&] { MapLevels(f.data.View(), 1200, 0.2f, f.levels.View()); });
}
BENCHMARK(Levels)->Apply(BothSizes);

void Count(benchmark::State& state) {
  Frame f(state);
  Run(state, [&] { benchmark::DoNotOptimize(CountLevels(f.levels.View())); });
}
BENCHMARK(Count)->Apply(BothSizes);

void FillWithNoise(DisplayBitmap& levels) {
  std::minstd_rand random(1);
  for (unsigned char& level : levels.bits) level = static_cast<unsigned char>(random() >> 8);
}

void CountNoise(benchmark::State& state) {
  Frame f(state);
  FillWithNoise(f.levels);
  Run(state, [&] { benchmark::DoNotOptimize(CountLevels(f.levels.View())); });
}
BENCHMARK(CountNoise)->Apply(BothSizes);

template <int Bytes>
void Gray(benchmark::State& state) {
  Frame f(state);
  ByteBuffer colors(static_cast<std::size_t>(f.width) * f.height * Bytes);
  for (std::size_t i = 0; i < colors.size(); ++i) colors[i] = static_cast<unsigned char>(i * 7 >> 2);
  Run(state, [&] {
    for (int y = 0; y < f.height; ++y)
      GrayFromColor(colors.data() + static_cast<std::size_t>(y) * f.width * Bytes, Bytes,
                    f.levels.View().Row(y), f.width);
  });
}
BENCHMARK(Gray<3>)->Apply(BothSizes)->Name("Gray24");
BENCHMARK(Gray<4>)->Apply(BothSizes)->Name("Gray32");

template <bool InPlace>
void WriteBitmap(benchmark::State& state) {
  Frame f(state);
  const WorkFolder folder;
  const auto target = folder / "0temp.bmp";
  for (auto _ : state) {
    if (!InPlace) {
      state.PauseTiming();
      QuietDelete(target);
      state.ResumeTiming();
    }
    if (WriteDisplayBitmap(folder / kGrayTemplate, target, f.levels.View()))
      state.SkipWithError("not written");
  }
}
BENCHMARK(WriteBitmap<false>)->Apply(BothSizes)->Name("WriteBitmapNew");
BENCHMARK(WriteBitmap<true>)->Apply(BothSizes)->Name("WriteBitmapInPlace");

void LoadBitmap(benchmark::State& state) {
  Frame f(state);
  const WorkFolder folder;
  ModCV cv;
  WriteDisplayBitmap(folder / kGrayTemplate, folder / "0temp.bmp", f.levels.View());
  Run(state, [&] { benchmark::DoNotOptimize(LoadDisplayBits(cv, folder / "0temp.bmp")); });
}
BENCHMARK(LoadBitmap)->Apply(BothSizes);

// A 24-bit bitmap file of the frame's size.
void MakeColorBitmap(const WorkFolder& folder, const Frame& f) {
  const int stride = RowStrideFor(f.width * 3);
  std::string bytes(54, '\0');
  const auto put = [&](std::size_t offset, double value) {
    const auto four = LongToBytes(value);
    std::copy(four.begin(), four.end(), bytes.begin() + static_cast<std::ptrdiff_t>(offset));
  };
  bytes.replace(0, 2, "BM");
  put(2, 54.0 + static_cast<double>(stride) * f.height);
  put(10, 54);
  put(14, 40);
  put(18, f.width);
  put(22, f.height);
  bytes[26] = 1;
  bytes[28] = 24;
  for (int y = 0; y < f.height; ++y) {
    std::string row(static_cast<std::size_t>(stride), '\0');
    for (int i = 0; i < f.width * 3; ++i) row[static_cast<std::size_t>(i)] = static_cast<char>(i * 31 + y);
    bytes += row;
  }
  std::FILE* file = std::fopen((folder / "color.bmp").c_str(), "wb");
  std::fwrite(bytes.data(), 1, bytes.size(), file);
  std::fclose(file);
}

void OpenColorBitmap(benchmark::State& state) {
  const WorkFolder folder;
  MakeColorBitmap(folder, Frame(state));
  ModCV cv;
  QuietPlatform os;
  cv.AppDir = folder.Path();
  Run(state, [&] {
    if (CheckBitmap(cv, os, folder / "color.bmp")) ReadBitmap(cv, os, folder / "color.bmp");
    if (os.messages > 0) std::abort();
  });
}
BENCHMARK(OpenColorBitmap)->Apply(BothSizes);

// The frame as a 16-bit FITS file with BZERO 32768.
void MakeFits(const WorkFolder& folder, const Frame& f) {
  std::string bytes;
  const auto card = [&](const char* keyword, const std::string& value) {
    char text[81];
    std::snprintf(text, sizeof text, "%-8s= %20s", keyword, value.c_str());
    bytes += text + std::string(80 - std::strlen(text), ' ');
  };
  card("SIMPLE", "T");
  card("BITPIX", "16");
  card("NAXIS", "2");
  card("NAXIS1", std::to_string(f.width));
  card("NAXIS2", std::to_string(f.height));
  card("BSCALE", "1.0");
  card("BZERO", "32768.0");
  bytes += "END";
  bytes.resize(2880, ' ');
  for (const float* v = f.data.View().values; v != f.data.View().values + f.data.Count(); ++v) {
    const int raw = static_cast<int>(*v) - 32768;
    bytes += static_cast<char>(raw >> 8);
    bytes += static_cast<char>(raw);
  }
  bytes.resize((bytes.size() + 2879) / 2880 * 2880);
  std::FILE* file = std::fopen((folder / "frame.fts").c_str(), "wb");
  std::fwrite(bytes.data(), 1, bytes.size(), file);
  std::fclose(file);
}

void OpenOne(ModCV& cv, QuietPlatform& os, const std::filesystem::path& path) {
  ReadFitsHeader(cv, os, path);
  ReadFitsData(cv, os, path);
  RenderFits(cv, os);
  if (os.messages > 0) std::abort();  // a file is missing: nothing would be measured
}

// The first open of a run: fresh memory, a new working bitmap.
void OpenFitsNew(benchmark::State& state) {
  const WorkFolder folder;
  MakeFits(folder, Frame(state));
  QuietPlatform os;
  for (auto _ : state) {
    ModCV cv;
    cv.AppDir = folder.Path();
    OpenOne(cv, os, folder / "frame.fts");
    state.PauseTiming();
    QuietDelete(folder / "0temp.bmp");
    state.ResumeTiming();
  }
}
BENCHMARK(OpenFitsNew)->Apply(BothSizes);

void OpenFitsAgain(benchmark::State& state) {
  const WorkFolder folder;
  MakeFits(folder, Frame(state));
  QuietPlatform os;
  ModCV cv;
  cv.AppDir = folder.Path();
  Run(state, [&] { OpenOne(cv, os, folder / "frame.fts"); });
}
BENCHMARK(OpenFitsAgain)->Apply(BothSizes);

#if defined(HAVE_OPENCV)

cv::Mat AsMat(DisplayBitmap& picture) {
  return {picture.height, picture.width, CV_8UC1, picture.bits.data(),
          static_cast<std::size_t>(picture.stride)};
}
cv::Mat AsMat(FloatImage& image) { return {image.Height(), image.Width(), CV_32FC1, image.Edit().values}; }

void PeerRange(benchmark::State& state) {
  cv::setNumThreads(1);
  Frame f(state);
  const cv::Mat data = AsMat(f.data);
  double least;
  double most;
  Run(state, [&] { cv::minMaxLoc(data, &least, &most); });
}
BENCHMARK(PeerRange)->Apply(BothSizes);

void PeerLevels(benchmark::State& state) {
  cv::setNumThreads(1);
  Frame f(state);
  const cv::Mat data = AsMat(f.data);
  cv::Mat levels = AsMat(f.levels);
  Run(state, [&] { data.convertTo(levels, CV_8U, 0.2, -240); });
}
BENCHMARK(PeerLevels)->Apply(BothSizes);

template <bool Noisy>
void PeerCount(benchmark::State& state) {
  cv::setNumThreads(1);
  Frame f(state);
  if (Noisy) FillWithNoise(f.levels);
  const cv::Mat levels = AsMat(f.levels);
  cv::Mat counts;
  const int bins = 256;
  const float limits[] = {0, 256};
  const float* ranges = limits;
  const int channel = 0;
  Run(state, [&] { cv::calcHist(&levels, 1, &channel, {}, counts, 1, &bins, &ranges); });
}
BENCHMARK(PeerCount<false>)->Apply(BothSizes)->Name("PeerCount");
BENCHMARK(PeerCount<true>)->Apply(BothSizes)->Name("PeerCountNoise");

template <int Type, int Code>
void PeerGray(benchmark::State& state) {
  cv::setNumThreads(1);
  Frame f(state);
  cv::Mat colors(f.height, f.width, Type, cv::Scalar(1, 2, 3, 4));
  cv::Mat levels = AsMat(f.levels);
  Run(state, [&] { cv::cvtColor(colors, levels, Code); });
}
BENCHMARK(PeerGray<CV_8UC3, cv::COLOR_BGR2GRAY>)->Apply(BothSizes)->Name("PeerGray24");
BENCHMARK(PeerGray<CV_8UC4, cv::COLOR_BGRA2GRAY>)->Apply(BothSizes)->Name("PeerGray32");

template <bool InPlace>
void PeerWriteBitmap(benchmark::State& state) {
  cv::setNumThreads(1);
  Frame f(state);
  const WorkFolder folder;
  const std::string target = (folder / "peer.bmp").string();
  const cv::Mat levels = AsMat(f.levels);
  for (auto _ : state) {
    if (!InPlace) {
      state.PauseTiming();
      QuietDelete(target);
      state.ResumeTiming();
    }
    cv::imwrite(target, levels);
  }
}
BENCHMARK(PeerWriteBitmap<false>)->Apply(BothSizes)->Name("PeerWriteBitmapNew");
BENCHMARK(PeerWriteBitmap<true>)->Apply(BothSizes)->Name("PeerWriteBitmapOver");

void PeerOpenColorBitmap(benchmark::State& state) {
  cv::setNumThreads(1);
  const WorkFolder folder;
  MakeColorBitmap(folder, Frame(state));
  Run(state, [&] {
    cv::imwrite((folder / "peer.bmp").string(),
                cv::imread((folder / "color.bmp").string(), cv::IMREAD_GRAYSCALE));
  });
}
BENCHMARK(PeerOpenColorBitmap)->Apply(BothSizes);

#if defined(HAVE_CFITSIO)

void PeerOpen(const WorkFolder& folder, cv::Mat& data, cv::Mat& levels) {
  fitsfile* file = nullptr;
  int status = 0;
  long size[2];
  fits_open_file(&file, (folder / "frame.fts").c_str(), READONLY, &status);
  fits_get_img_size(file, 2, size, &status);
  data.create(static_cast<int>(size[1]), static_cast<int>(size[0]), CV_32FC1);
  fits_read_img(file, TFLOAT, 1, size[0] * size[1], nullptr, data.ptr(), nullptr, &status);
  fits_close_file(file, &status);
  double least;
  double most;
  cv::minMaxLoc(data, &least, &most);
  data.convertTo(levels, CV_8U, 255 / (most - least), -least * 255 / (most - least));
  cv::imwrite((folder / "peer.bmp").string(), levels);
}

void PeerOpenFitsNew(benchmark::State& state) {
  cv::setNumThreads(1);
  const WorkFolder folder;
  MakeFits(folder, Frame(state));
  for (auto _ : state) {
    cv::Mat data;
    cv::Mat levels;
    PeerOpen(folder, data, levels);
    state.PauseTiming();
    QuietDelete(folder / "peer.bmp");
    state.ResumeTiming();
  }
}
BENCHMARK(PeerOpenFitsNew)->Apply(BothSizes);

void PeerOpenFitsAgain(benchmark::State& state) {
  cv::setNumThreads(1);
  const WorkFolder folder;
  MakeFits(folder, Frame(state));
  cv::Mat data;
  cv::Mat levels;
  Run(state, [&] { PeerOpen(folder, data, levels); });
}
BENCHMARK(PeerOpenFitsAgain)->Apply(BothSizes);

#endif
#endif

}  // namespace
}  // namespace corvane
