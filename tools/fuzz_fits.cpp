// Opens any bytes as a FITS file, as the Open command does, and checks what the store says afterwards.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string_view>

#include "core/open_image.h"
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

struct Bench {
  Bench() {
    cv.AppDir = folder.Path();
    std::filesystem::copy_file(AssetFolder() / kGrayTemplate, cv.AppDir / kGrayTemplate);
  }
  TemporaryFolder folder;
  ModCV cv;
};

void CheckOpened(const ModCV& cv) {
  const ConstFloatView data = cv.SlotData[0].View();
  Require(data.width >= 1 && data.height >= 1, "an open image has pixels");
  Require(data.width == cv.Width() && data.height == cv.Height(), "the sizes agree");
  Require(cv.RowStride == RowStrideFor(data.width), "the stride is the width's");
  Require(cv.DisplayBits.size() == static_cast<std::size_t>(cv.RowStride) * data.height,
          "levels are complete");
  Require(std::filesystem::file_size(cv.SlotBitmap(0)) == cv.DisplayBits.size() + 1078, "so is their file");
  Require(!cv.SlotHeader[0].empty() && cv.SlotHeader[0].back().starts_with("END "),
          "the header ends with END");
  for (std::size_t i = 0; i < data.Count(); ++i) Require(!std::isinf(data.values[i]), "no value is infinite");
}

void OpenBytes(std::string_view bytes) {
  static Bench bench;
  ModCV& cv = bench.cv;
  QuietPlatform os;
  const std::filesystem::path path = bench.folder.Path() / "input.fits";
  WriteFile(path, bytes);
  const bool opened = OpenImageFile(cv, os, path).has_value();
  Require(opened == (cv.ImageCount == 1), "a slot is there when the file was opened");
  Require(!os.busy, "the busy cursor is gone");
  Require(os.messages <= 2, "at most a warning and a refusal");
  if (opened) {
    CheckOpened(cv);
    CloseImage(cv, os);
  }
  Require(cv.ImageCount == 0 && cv.SlotData[0].Empty(), "nothing is left");
  Require(!std::filesystem::exists(cv.SlotBitmap(0)), "no working file is left");
}

}  // namespace
}  // namespace corvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  corvane::OpenBytes({reinterpret_cast<const char*>(data), size});
  return 0;
}
