// FITS files in the page cache to floats in memory, beside CFITSIO. "Fresh" pays for new memory each time,
// as opening a file does; "Reused" reads into an array that is there.

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <string>

#include "base/files.h"
#include "base/levels.h"
#include "formats/fits_file.h"

#if defined(HAVE_CFITSIO)
#include <fitsio.h>
#endif

namespace corvane {
namespace {

std::string BenchCard(const std::string& keyword, const std::string& value) {
  std::string card = keyword;
  card.resize(8, ' ');
  card += "= " + std::string(20 - value.size(), ' ') + value;
  card.resize(kCardSize, ' ');
  return card;
}

// A file of noise: arguments are BITPIX, width and height; words have the camera's zero point.
struct NoiseFile {
  explicit NoiseFile(const benchmark::State& state)
      : bitpix(static_cast<int>(state.range(0))),
        width(static_cast<int>(state.range(1))),
        height(static_cast<int>(state.range(2))),
        path(std::filesystem::temp_directory_path() /
             ("corvane-bench-" + std::to_string(getpid()) + ".fit")) {
    std::string header = BenchCard("SIMPLE", "T") + BenchCard("BITPIX", std::to_string(bitpix)) +
                         BenchCard("NAXIS", "2") + BenchCard("NAXIS1", std::to_string(width)) +
                         BenchCard("NAXIS2", std::to_string(height));
    if (bitpix == 16) header += BenchCard("BSCALE", "1") + BenchCard("BZERO", "32768");
    header += "END";
    header.resize(kBlockSize, ' ');
    const std::size_t bytes = Count() * static_cast<std::size_t>(std::abs(bitpix) / 8);
    std::string data(bytes + static_cast<std::size_t>(BlockPadding(static_cast<std::int64_t>(bytes))), '\0');
    std::mt19937 random(1);
    for (std::size_t i = 0; i < bytes; ++i) {
      const bool highest = bitpix == -32 && i % 4 == 0;  // ordinary exponents
      data[i] = highest ? '\x44' : static_cast<char>(random() >> 11);
    }
    std::ofstream(path, std::ios::binary) << header << data;
  }
  ~NoiseFile() { std::filesystem::remove(path); }
  std::size_t Count() const { return static_cast<std::size_t>(width) * static_cast<std::size_t>(height); }

  int bitpix, width, height;
  std::filesystem::path path;
};

FitsLayout LayoutOf(const NoiseFile& noise) {
  FitsLayout layout;
  layout.bytesPerPixel = noise.bitpix / 8;
  layout.width = noise.width;
  layout.height = noise.height;
  layout.zero = noise.bitpix == 16 ? 32768.0 : 0.0;
  layout.start = kBlockSize;
  return layout;
}

void EveryType(benchmark::internal::Benchmark* bench) {
  for (const int bitpix : {16, 32, -32}) {
    bench->Args({bitpix, 6000, 4000})->Args({bitpix, 1000, 1000});
  }
  bench->Unit(benchmark::kMillisecond)->UseRealTime();
}

void ReadFresh(benchmark::State& state) {
  const NoiseFile noise(state);
  const FitsLayout layout = LayoutOf(noise);
  for (auto _ : state) {
    const InputFile file(noise.path);
    FloatImage image(layout.width, layout.height);
    if (!ReadPixels(file, layout, image.Edit().values)) state.SkipWithError("cannot read");
    benchmark::ClobberMemory();
  }
}
BENCHMARK(ReadFresh)->Apply(EveryType);

void ReadFreshThenRange(benchmark::State& state) {
  const NoiseFile noise(state);
  const FitsLayout layout = LayoutOf(noise);
  for (auto _ : state) {
    const InputFile file(noise.path);
    FloatImage image(layout.width, layout.height);
    if (!ReadPixels(file, layout, image.Edit().values)) state.SkipWithError("cannot read");
    benchmark::DoNotOptimize(FindRange(image.View()));
  }
}
BENCHMARK(ReadFreshThenRange)->Apply(EveryType);

void ReadReused(benchmark::State& state) {
  const NoiseFile noise(state);
  const FitsLayout layout = LayoutOf(noise);
  FloatImage image(layout.width, layout.height);
  std::memset(image.Edit().values, 0, image.Count() * sizeof(float));
  for (auto _ : state) {
    const InputFile file(noise.path);
    if (!ReadPixels(file, layout, image.Edit().values)) state.SkipWithError("cannot read");
    benchmark::ClobberMemory();
  }
}
BENCHMARK(ReadReused)->Apply(EveryType);

#if defined(HAVE_CFITSIO)
bool PeerRead(const NoiseFile& noise, float* values) {
  fitsfile* file = nullptr;
  int status = 0;
  int anyBlank = 0;
  fits_open_file(&file, noise.path.c_str(), READONLY, &status);
  fits_read_img(file, TFLOAT, 1, static_cast<LONGLONG>(noise.Count()), nullptr, values, &anyBlank, &status);
  fits_close_file(file, &status);
  return status == 0;
}

void PeerReadFresh(benchmark::State& state) {
  const NoiseFile noise(state);
  for (auto _ : state) {
    const std::unique_ptr<float[]> values(new float[noise.Count()]);
    if (!PeerRead(noise, values.get())) state.SkipWithError("cannot read");
    benchmark::ClobberMemory();
  }
}
BENCHMARK(PeerReadFresh)->Apply(EveryType);

void PeerReadReused(benchmark::State& state) {
  const NoiseFile noise(state);
  const std::unique_ptr<float[]> values(new float[noise.Count()]());
  for (auto _ : state) {
    if (!PeerRead(noise, values.get())) state.SkipWithError("cannot read");
    benchmark::ClobberMemory();
  }
}
BENCHMARK(PeerReadReused)->Apply(EveryType);
#endif

}  // namespace
}  // namespace corvane
