#include "core/open_image.h"

#include <cerrno>
#include <new>

#include "base/files.h"
#include "core/accepted.h"
#include "core/bitmap_reader.h"
#include "core/fits_reader.h"
#include "core/render.h"
#include "core/working_files.h"
#include "platform/busy.h"

namespace corvane {
namespace {

// Reads the file into the working state and the display bitmap of slot ImageCount.
bool ReadFits(ModCV& cv, Platform& os, const std::filesystem::path& path) {
  ReadFitsHeader(cv, os, path);
  if (!cv.HeaderOK || cv.LoadFailed) return false;
  const Busy busy(os);
  ReadFitsData(cv, os, path);
  if (cv.LoadFailed) return false;
  RenderFits(cv, os);
  return !cv.LoadFailed;
}

bool ReadGray(ModCV& cv, Platform& os, const std::filesystem::path& path) {
  if (!CheckBitmap(cv, os, path)) return false;
  const Busy busy(os);
  ReadBitmap(cv, os, path);
  if (cv.LoadFailed) return false;
  cv.ImageData = {};
  cv.HeaderCards.clear();
  cv.HeaderCount = 0;
  cv.FitsFileSize = '0';
  return true;
}

bool ReadAny(ModCV& cv, Platform& os, const std::filesystem::path& path, ImageKind kind) try {
  return kind == ImageKind::Fits ? ReadFits(cv, os, path) : ReadGray(cv, os, path);
} catch (const std::bad_alloc&) {
  Refuse(os, NotEnoughMemory());
  return false;
}

// A picture file that is missing counts as moved.
int MovePicture(const std::filesystem::path& from, const std::filesystem::path& to) {
  const int error = QuietRename(from, to);
  return error == ENOENT ? 0 : error;
}

// Moves the image of `slot`, whose picture file was set aside, step by step to the place of `target`, and the
// picture files of those it passes. Returns the slot it reached: a failure, an errno in `error`, stops it.
int PassImage(ModCV& cv, int slot, int target, int& error) {
  while (slot != target) {
    const int next = slot < target ? slot + 1 : slot - 1;
    error = MovePicture(cv.SlotBitmap(next), cv.SlotBitmap(slot));
    if (error != 0) break;
    SwapSlots(cv, slot, next);
    slot = next;
  }
  return slot;
}

bool CantClose(const ModCV& cv, Platform& os, int error, bool isLost) {
  std::string text = "The image can't be closed. Error Number " + std::to_string(error);
  if (isLost) text += "\nThe picture of \"" + cv.SlotName[cv.CurrentSlot] + "\" is lost.";
  os.Message(text, "FILE CLOSE ERROR");
  return false;
}

// Makes the current image the last one; false, after a message, with it still in its place or near it.
bool PassToTheEnd(ModCV& cv, Platform& os) {
  const int first = cv.CurrentSlot;
  const int last = cv.ImageCount - 1;
  const std::filesystem::path aside = cv.AppDir / kDummyBitmap;  // "temp.bmp" may hold a result
  if (first == last) return true;
  int error = MovePicture(cv.SlotBitmap(first), aside);
  if (error != 0) return CantClose(cv, os, error, false);
  cv.CurrentSlot = PassImage(cv, first, last, error);
  if (cv.CurrentSlot == last) {
    QuietDelete(aside);
    return true;
  }
  int ignored = 0;
  cv.CurrentSlot = PassImage(cv, cv.CurrentSlot, first, ignored);
  const bool isBack = MovePicture(aside, cv.SlotBitmap(cv.CurrentSlot)) == 0;
  const bool isLost = !isBack && cv.SlotRendering[cv.CurrentSlot] == Rendering::None;
  return CantClose(cv, os, error, isLost);
}

}  // namespace

ImageKind KindOf(const std::string& name) {
  struct Extension {
    const char* text;
    ImageKind kind;
  };
  constexpr Extension kExtensions[] = {
      {"bmp", ImageKind::Bitmap}, {"BMP", ImageKind::Bitmap}, {"fit", ImageKind::Fits},
      {"FIT", ImageKind::Fits},   {"fts", ImageKind::Fits},   {"FTS", ImageKind::Fits},
      {"ftz", ImageKind::Fits},   {"FTZ", ImageKind::Fits},   {".fits", ImageKind::Fits},
      {".FITS", ImageKind::Fits},
  };
  for (const Extension& extension : kExtensions) {
    if (name.ends_with(extension.text)) return extension.kind;
  }
  return ImageKind::Unknown;
}

FileRequest OpenRequest(const ModCV& cv, const std::string& title) {
  return {.title = title,
          .filter = "Bitmaps (*.bmp)|*.bmp| FITS ( *.fit )( *.fts )( *.ftz )|*.fit;*.fts;*.ftz;*.fits|",
          .defaultExtension = "",
          .filterIndex = cv.FileTypeSetting,
          .directory = cv.DefaultDir};
}

bool RoomForOneMore(const ModCV& cv, Platform& os) {
  if (cv.ImageCount < kSlots) return true;
  os.Message("Only 10 files may be open at once.", "FILE LIMIT");
  return false;
}

std::optional<int> OpenImage(ModCV& cv, Platform& os, const FileRequest& request) {
  if (!RoomForOneMore(cv, os)) return std::nullopt;
  const FileChoice choice = os.OpenFile(request);
  if (choice.outcome == FileChoice::Outcome::Cancelled) return std::nullopt;
  if (choice.outcome == FileChoice::Outcome::Failed) {
    os.Message("Error Number " + std::to_string(choice.error), "FILE OPEN ERROR");
    return std::nullopt;
  }
  return OpenImageFile(cv, os, choice.path);
}

std::optional<int> OpenImageFile(ModCV& cv, Platform& os, const std::filesystem::path& path) {
  if (!RoomForOneMore(cv, os)) return std::nullopt;
  cv.LoadFailed = false;
  cv.OpenPath = path;
  cv.OpenTitle = path.filename().string();
  cv.DefaultDir = path.parent_path();
  const ImageKind kind = KindOf(cv.OpenTitle);
  if (kind == ImageKind::Unknown) {
    os.Message("File extension must be '.bmp', '.fit', '.fts' or '.ftz'.", "UNRECOGNISED FILE EXTENSION ");
    return std::nullopt;
  }
  const int slot = cv.ImageCount;
  if (!ReadAny(cv, os, path, kind)) {
    QuietDelete(cv.SlotBitmap(slot));
    ClearSlot(cv, slot);
    return std::nullopt;
  }
  StoreSlot(cv, slot);
  cv.SlotName[slot] = cv.OpenTitle;
  cv.CurrentSlot = slot;
  cv.CurrentName = cv.OpenTitle;
  ++cv.ImageCount;
  return slot;
}

bool CloseImage(ModCV& cv, Platform& os) {
  if (cv.ImageCount < 1 || cv.CurrentSlot < 0 || cv.CurrentSlot >= cv.ImageCount) return false;
  if (!PassToTheEnd(cv, os)) return false;
  const int last = --cv.ImageCount;
  QuietDelete(cv.SlotBitmap(last));
  ClearSlot(cv, last);
  cv.CurrentSlot = last > 0 ? last - 1 : 0;
  cv.CurrentName = cv.SlotName[cv.CurrentSlot];
  return true;
}

}  // namespace corvane
