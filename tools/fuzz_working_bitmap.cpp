// Reads any bytes back as a display bitmap of our own, and looks at what the store says afterwards.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string_view>

#include "core/slot_picture.h"
#include "core/working_files.h"
#include "formats/bitmap_format.h"
#include "tests/support/test_files.h"

namespace corvane {
namespace {

void Require(bool holds, const char* what) {
  if (holds) return;
  std::cerr << "not so: " << what << '\n';
  std::abort();
}

void LoadBytes(std::string_view bytes) {
  static const TemporaryFolder folder;
  const std::filesystem::path path = folder.Path() / kTempBitmap;
  WriteFile(path, bytes);
  ModCV cv;
  DescribeDisplayBitmap(cv, 3, 2);
  cv.DisplayBits.Resize(cv.Display().Size());

  ModCV header;
  const bool sound = !ReadBitmapHeader(header, path);
  const bool loaded = !LoadDisplayBits(cv, path);
  Require(sound == loaded, "a sound header and complete pixels go together");
  Require(cv.DisplayBits.size() == cv.Display().Size(), "levels are as many as the sizes say");
  if (!loaded) {
    Require(cv.Width() == 3 && cv.Height() == 2 && cv.RowStride == 4,
            "a refused file leaves the store alone");
    return;
  }
  Require(cv.Width() >= 1 && cv.Height() >= 1, "a picture has pixels");
  Require(cv.RowStride == RowStrideFor(cv.Width()), "the stride is the width's");
  Require(cv.Width() == header.Width() && cv.Height() == header.Height(), "both readers agree");
  Require(cv.DisplayBits.size() + kBitmapHeaderSize <= bytes.size(), "every level stood in the file");
  Require(bytes.substr(kBitmapHeaderSize, cv.DisplayBits.size()) ==
              std::string_view(reinterpret_cast<const char*>(cv.DisplayBits.data()), cv.DisplayBits.size()),
          "levels are those of the file");
}

}  // namespace
}  // namespace corvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  corvane::LoadBytes({reinterpret_cast<const char*>(data), size});
  return 0;
}
