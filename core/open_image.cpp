#include "core/open_image.h"

#include <new>

#include "core/bitmap_file.h"
#include "core/bitmap_reader.h"
#include "core/files.h"
#include "core/fits_reader.h"
#include "core/render.h"

namespace corvane {
namespace {

bool RoomForOneMore(const ModCV& cv, Platform& os) {
  if (cv.ImageCount < kSlots) return true;
  os.Message("Only 10 files may be open at once.", "FILE LIMIT");
  return false;
}

// Reads the file into the working state and the display bitmap of slot ImageCount.
bool ReadFits(ModCV& cv, Platform& os, const std::filesystem::path& path) {
  ReadFitsHeader(cv, os, path);
  if (!cv.HeaderOK || cv.LoadFailed) return false;
  os.BusyCursor(true);
  ReadFitsData(cv, os, path);
  if (cv.LoadFailed) return false;
  RenderFits(cv, os);
  return !cv.LoadFailed;
}

bool ReadGray(ModCV& cv, Platform& os, const std::filesystem::path& path) {
  if (!CheckBitmap(cv, os, path)) return false;
  os.BusyCursor(true);
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
  const Refusal refusal = NotEnoughMemory();
  os.Message(refusal.text, refusal.title);
  return false;
}

// The empty record of a slot that holds no image.
void FreeSlot(ModCV& cv, int slot) {
  cv.SlotName[slot].clear();
  cv.SlotBytesPerPixel[slot] = 0;
  cv.SlotFileSize[slot] = '0';
  cv.SlotHeader[slot].clear();
  cv.SlotData[slot] = {};
  cv.SlotFullRange[slot] = false;
}

void MoveSlotDown(ModCV& cv, int slot) {
  const int to = slot - 1;
  cv.SlotName[to] = std::move(cv.SlotName[slot]);
  cv.SlotBytesPerPixel[to] = cv.SlotBytesPerPixel[slot];
  cv.SlotFileSize[to] = std::move(cv.SlotFileSize[slot]);
  cv.SlotHeader[to] = std::move(cv.SlotHeader[slot]);
  cv.SlotData[to] = std::move(cv.SlotData[slot]);
  cv.SlotFullRange[to] = cv.SlotFullRange[slot];
  QuietRename(cv.SlotBitmap(slot), cv.SlotBitmap(to));
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

std::optional<int> OpenImage(ModCV& cv, Platform& os, const FileRequest& request) {
  if (!RoomForOneMore(cv, os)) return std::nullopt;
  cv.LoadFailed = false;
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
  const bool read = ReadAny(cv, os, path, kind);
  os.BusyCursor(false);
  if (!read) {
    QuietDelete(cv.SlotBitmap(slot));
    cv.SlotBytesPerPixel[slot] = 0;
    return std::nullopt;
  }
  StoreSlot(cv, slot);
  cv.SlotName[slot] = cv.OpenTitle;
  cv.CurrentSlot = slot;
  cv.CurrentName = cv.OpenTitle;
  ++cv.ImageCount;
  return slot;
}

void CloseImage(ModCV& cv) {
  if (cv.ImageCount < 1 || cv.CurrentSlot < 0 || cv.CurrentSlot >= cv.ImageCount) return;
  const int last = cv.ImageCount - 1;
  QuietDelete(cv.SlotBitmap(cv.CurrentSlot));
  for (int slot = cv.CurrentSlot + 1; slot <= last; ++slot) MoveSlotDown(cv, slot);
  FreeSlot(cv, last);
  cv.ImageCount = last;
  cv.CurrentSlot = last > 0 ? last - 1 : 0;
  cv.CurrentName = cv.SlotName[cv.CurrentSlot];
}

}  // namespace corvane
