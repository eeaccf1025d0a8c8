#include "core/bitmap_reader.h"

#include <utility>

#include "core/accepted.h"
#include "core/working_files.h"
#include "formats/gray_picture.h"

namespace corvane {
namespace {

std::optional<Refusal> ReadInto(ModCV& cv, const std::filesystem::path& path) {
  DisplayBitmap picture;
  BitmapFields fields;
  if (auto refusal = ReadGrayPicture(path, picture, fields)) return refusal;
  if (auto refusal =
          WriteWorkingBitmap(cv, cv.AppDir / kGrayTemplate, cv.SlotBitmap(cv.ImageCount), picture.View()))
    return refusal;
  cv.DisplayBits = std::move(picture.bits);
  DescribeDisplayBitmap(cv, picture.width, picture.height);
  cv.BitCount = fields.bitCount;
  cv.HeaderSize = static_cast<float>(fields.headerSize);
  cv.BytesPerPixel = 1;
  if (cv.ImageCount < kSlots) cv.SlotBytesPerPixel[cv.ImageCount] = 1;
  return std::nullopt;
}

// The faults of a bitmap set LoadFailed; a file that is none at all only fails the check.
bool IsFaultOfABitmap(const Refusal& fault) { return fault.title == "FILE OPEN ERROR"; }

}  // namespace

bool CheckBitmap(ModCV& cv, Platform& os, const std::filesystem::path& path) {
  const std::vector<Refusal> faults = FindBitmapFaults(path);
  for (const Refusal& fault : faults) {
    Refuse(os, fault);
    if (!IsFaultOfABitmap(fault)) continue;
    cv.LoadFailed = true;
    cv.OpenTitle.clear();
  }
  return faults.empty();
}

void ReadBitmap(ModCV& cv, Platform& os, const std::filesystem::path& path) {
  if (Accepted(os, ReadInto(cv, path))) return;
  cv.LoadFailed = true;
  cv.OpenTitle.clear();
}

}  // namespace corvane
