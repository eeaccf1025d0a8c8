// Checks and reads any bytes as a Windows bitmap, and looks at what the store says afterwards.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string_view>
#include <vector>

#include "base/files.h"
#include "core/bitmap_reader.h"
#include "core/slot_picture.h"
#include "core/working_files.h"
#include "tests/support/quiet_platform.h"
#include "tests/support/test_files.h"

namespace corvane {
namespace {

void Require(bool holds, const char* what) {
  if (holds) return;
  std::cerr << "not so: " << what << '\n';
  std::abort();
}

void CheckRead(ModCV& cv, std::size_t fileSize) {
  const std::size_t pixels = static_cast<std::size_t>(cv.Width()) * cv.Height();
  Require(cv.Width() >= 1 && cv.Height() >= 1, "a picture has pixels");
  Require(pixels <= fileSize, "every pixel stood in the file");
  Require(cv.RowStride == RowStrideFor(cv.Width()), "the stride is the width's");
  Require(cv.DisplayBits.size() == cv.Display().Size(), "levels are complete");
  const std::vector<unsigned char> levels(cv.DisplayBits.begin(), cv.DisplayBits.end());
  Require(!LoadDisplayBits(cv, cv.SlotBitmap(0)), "the working bitmap is sound");
  Require(std::equal(levels.begin(), levels.end(), cv.DisplayBits.begin(), cv.DisplayBits.end()),
          "it holds the same levels");
}

void ReadBytes(std::string_view bytes) {
  static const TemporaryFolder folder;
  ModCV cv;
  QuietPlatform os;
  cv.AppDir = folder.Path();
  if (!std::filesystem::exists(cv.AppDir / kGrayTemplate))
    std::filesystem::copy_file(AssetFolder() / kGrayTemplate, cv.AppDir / kGrayTemplate);
  const std::filesystem::path path = folder.Path() / "input.bmp";
  WriteFile(path, bytes);
  cv.OpenTitle = "input.bmp";

  const bool sound = CheckBitmap(cv, os, path);
  Require(sound == (os.messages == 0), "the check speaks when it refuses");
  if (sound) ReadBitmap(cv, os, path);
  if (sound && !cv.LoadFailed) {
    Require(os.messages == 0, "nothing is said about a sound file");
    CheckRead(cv, bytes.size());
  } else {
    Require(os.messages >= 1, "a refusal is said");
    Require(cv.DisplayBits.empty() && cv.ImageWidth == 0, "a refused file leaves the store alone");
    Require(!std::filesystem::exists(cv.SlotBitmap(0)), "and no working file");
  }
  QuietDelete(cv.SlotBitmap(0));
}

}  // namespace
}  // namespace corvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  corvane::ReadBytes({reinterpret_cast<const char*>(data), size});
  return 0;
}
