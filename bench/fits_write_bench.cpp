#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "base/safe_write.h"
#include "core/fits_writer.h"
#include "core/save_image.h"
#include "core/working_files.h"
#include "formats/fits_cards.h"
#include "formats/sixteen_bit.h"
#include "tests/support/quiet_platform.h"

#ifdef HAVE_CFITSIO
#include <fitsio.h>
#endif

namespace corvane {
namespace {

struct Picture {
  explicit Picture(const benchmark::State& state)
      : width(static_cast<int>(state.range(0))),
        height(static_cast<int>(state.range(1))),
        values(width, height) {
    const FloatView view = values.Edit();
    for (std::size_t i = 0; i < view.Count(); ++i)
      view.values[i] = static_cast<float>(i * 2654435761u % 32768u);
  }
  std::size_t Count() const { return values.Count(); }

  int width;
  int height;
  FloatImage values;
};

// A store about to write the picture in 16 bits.
struct Store {
  explicit Store(const Picture& picture) {
    cv.FitsComment = CommentValue("");
    cv.ImageData = picture.values;
    EncodeSixteenBit(cv);
    cv.BytesPerPixel = 2;
    BuildFitsHeader(cv, "m42.fts");
  }
  ModCV cv;
};

std::filesystem::path Target() { return std::filesystem::current_path() / "corvane_bench.fts"; }

void Sizes(benchmark::internal::Benchmark* bench) {
  bench->Args({1000, 1000})->Args({6000, 4000})->Unit(benchmark::kMillisecond)->UseRealTime();
}

void EncodeSixteenValues(benchmark::State& state) {
  const Picture picture(state);
  ByteBuffer raw(2 * picture.Count());
  std::memset(raw.data(), 0, raw.size());
  for (auto _ : state) {
    EncodeSixteen(picture.values.View().values, raw.data(), picture.Count());
    benchmark::ClobberMemory();
  }
}
BENCHMARK(EncodeSixteenValues)->Apply(Sizes);

// The bytes that encoding reads and writes, six for each pixel, moved by memcpy: half of them are read.
void EncodeSixteenPeerMemcpy(benchmark::State& state) {
  const std::size_t count =
      static_cast<std::size_t>(state.range(0)) * static_cast<std::size_t>(state.range(1));
  ByteBuffer from(3 * count), to(3 * count);
  std::memset(from.data(), 1, from.size());
  std::memset(to.data(), 0, to.size());
  for (auto _ : state) {
    std::memcpy(to.data(), from.data(), from.size());
    benchmark::ClobberMemory();
  }
}
BENCHMARK(EncodeSixteenPeerMemcpy)->Apply(Sizes);

// Everything between the values and a file that is safe on the disk.
void WriteFitsSafely(benchmark::State& state) {
  const Picture picture(state);
  Store store(picture);
  for (auto _ : state) {
    store.cv.ImageData = picture.values;
    EncodeSixteenBit(store.cv);
    BuildFitsHeader(store.cv, "m42.fts");
    if (WriteFits(store.cv, Target()) != 0) state.SkipWithError("not written");
  }
  std::filesystem::remove(Target());
}
BENCHMARK(WriteFitsSafely)->Apply(Sizes);

// The same without the promise that it outlives a power cut, as the peer below does it.
void WriteFitsInPlace(benchmark::State& state) {
  const Picture picture(state);
  Store store(picture);
  std::string header;
  for (const std::string& card : store.cv.HeaderCards) header += card;
  const Bytes cards{reinterpret_cast<const unsigned char*>(header.data()), header.size()};
  for (auto _ : state) {
    store.cv.ImageData = picture.values;
    EncodeSixteenBit(store.cv);
    if (WriteInPlace(Target(), {cards, {store.cv.FitsOutBuf.data(), store.cv.FitsOutBuf.size()}}) != 0)
      state.SkipWithError("not written");
  }
  std::filesystem::remove(Target());
}
BENCHMARK(WriteFitsInPlace)->Apply(Sizes);

// A desk on which 16 bits are chosen.
class SixteenBitDesk : public Desk {
 public:
  explicit SixteenBitDesk(ModCV& store) : cv_(store) {}
  void Replace(Window) override {}
  void ShowModal(Dialog) override { cv_.BytesPerPixel = 2; }

 private:
  ModCV& cv_;
};

// A folder in memory: what is written there costs no disk.
struct MemoryFolder {
  MemoryFolder() : path("/dev/shm/corvane_bench" + std::to_string(getpid())) {
    std::filesystem::create_directory(path);
    const auto shipped = std::filesystem::read_symlink("/proc/self/exe").parent_path() / kGrayTemplate;
    std::filesystem::copy_file(shipped, path / kGrayTemplate,
                               std::filesystem::copy_options::overwrite_existing);
  }
  ~MemoryFolder() { std::filesystem::remove_all(path); }
  std::filesystem::path path;
};

// The whole command but the dialogs and the disk: prepare, encode, write over an old file, decode into the slot,
// render its picture, count it and write it.
void SaveWithoutDisk(benchmark::State& state) {
  const Picture picture(state);
  const MemoryFolder folder;
  ModCV cv;
  QuietPlatform os;
  SixteenBitDesk desk(cv);
  cv.AppDir = folder.path;
  const ImageSave save{
      .path = folder.path / "saved.fts", .slot = 0, .picture = cv.SlotBitmap(0), .precision = 2};
  cv.ImageCount = 1;
  cv.SlotData[0] = picture.values;
  cv.SlotData[0].Edit();  // the slot's own
  for (auto _ : state) {
    if (!SaveFits(cv, os, desk, save, [] {})) state.SkipWithError("not saved");
  }
}
BENCHMARK(SaveWithoutDisk)->Apply(Sizes);

// The same bytes through the same calls with memcpy for every computation: values, pixels and levels are
// written once each.
void SaveWithoutDiskPeerMemcpy(benchmark::State& state) {
  const Picture picture(state);
  const MemoryFolder folder;
  const std::size_t count = picture.Count();
  FloatImage values = picture.values;
  values.Edit();
  ByteBuffer pixels(2 * count), levels(count);
  const auto* source = reinterpret_cast<const unsigned char*>(picture.values.View().values);
  for (auto _ : state) {
    std::memcpy(pixels.data(), source, pixels.size());
    if (SafeWrite(folder.path / "saved.fts", {{pixels.data(), pixels.size()}}) != 0)
      state.SkipWithError("not saved");
    std::memcpy(values.Overwrite().values, source, 4 * count);
    std::memcpy(levels.data(), source, count);
    if (WriteInPlace(folder.path / "0temp.bmp", {{levels.data(), count}}) != 0)
      state.SkipWithError("not saved");
  }
}
BENCHMARK(SaveWithoutDiskPeerMemcpy)->Apply(Sizes);

#ifdef HAVE_CFITSIO
void WriteFitsPeerCfitsio(benchmark::State& state) {
  Picture picture(state);
  std::string name = Target().string();
  name.insert(0, 1, '!');  // replace an old file
  for (auto _ : state) {
    fitsfile* file = nullptr;
    int status = 0;
    long axes[] = {picture.width, picture.height};
    fits_create_file(&file, name.c_str(), &status);
    fits_create_img(file, SHORT_IMG, 2, axes, &status);
    fits_write_img(file, TFLOAT, 1, static_cast<LONGLONG>(picture.Count()), picture.values.Edit().values,
                   &status);
    fits_close_file(file, &status);
    if (status != 0) state.SkipWithError("not written");
  }
  std::filesystem::remove(Target());
}
BENCHMARK(WriteFitsPeerCfitsio)->Apply(Sizes);
#endif

}  // namespace
}  // namespace corvane
