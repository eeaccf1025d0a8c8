#include "core/save_image.h"

#include <cstring>
#include <new>
#include <utility>

#include "core/bitmap_file.h"
#include "core/files.h"
#include "core/fits_format.h"
#include "core/fits_writer.h"
#include "core/render.h"
#include "core/safe_write.h"
#include "core/slot_picture.h"
#include "core/working_files.h"

namespace corvane {
namespace {

constexpr int kKeptCards = 10;  // up to END, without the blank cards that fill the block

// The working state that a save changes on its way, put back unless the save succeeds.
class WorkingState {
 public:
  explicit WorkingState(ModCV& cv)
      : cv_(cv),
        data_(cv.ImageData),
        cards_(cv.HeaderCards),
        cardCount_(cv.HeaderCount),
        bytesPerPixel_(cv.BytesPerPixel),
        fileSize_(cv.FitsFileSize),
        comment_(cv.FitsComment),
        sizes_{cv.ImageWidth,   cv.ImageHeight,    cv.ImageAspect,    cv.ImageMin,  cv.ImageMax,
               cv.DisplayScale, cv.BitmapFileSize, cv.BitmapDataSize, cv.DataOffset},
        rowStride_(cv.RowStride) {}
  ~WorkingState() {
    if (!kept_) Restore();
  }
  WorkingState(const WorkingState&) = delete;
  WorkingState& operator=(const WorkingState&) = delete;

  void Keep() { kept_ = true; }

 private:
  void Restore() {
    cv_.ImageData = std::move(data_);
    cv_.HeaderCards = std::move(cards_);
    cv_.HeaderCount = cardCount_;
    cv_.BytesPerPixel = bytesPerPixel_;
    cv_.FitsFileSize = std::move(fileSize_);
    cv_.FitsComment = std::move(comment_);
    float* fields[] = {&cv_.ImageWidth,     &cv_.ImageHeight,    &cv_.ImageAspect,
                       &cv_.ImageMin,       &cv_.ImageMax,       &cv_.DisplayScale,
                       &cv_.BitmapFileSize, &cv_.BitmapDataSize, &cv_.DataOffset};
    for (int i = 0; i < 9; ++i) *fields[i] = sizes_[i];
    cv_.RowStride = rowStride_;
  }

  ModCV& cv_;
  FloatImage data_;
  std::vector<std::string> cards_;
  int cardCount_;
  int bytesPerPixel_;
  std::string fileSize_;
  std::string comment_;
  float sizes_[9];
  int rowStride_;
  bool kept_ = false;
};

bool Report(Platform& os, int error) {
  if (error != 0) os.Message("Error Number " + std::to_string(error), "DATA SAVE ERROR");
  return error == 0;
}

// True where writing to `path` would write to a file of AppDir that the program uses, by whatever way the
// path leads there.
bool IsOwnFile(const ModCV& cv, const std::filesystem::path& path) {
  const std::filesystem::path target = LinkTarget(path);
  std::error_code error;
  return IsProgramFile(target.filename().string()) &&
         std::filesystem::equivalent(target.parent_path(), cv.AppDir, error);
}

// The bytes just written become the data, as a reader of the file would decode them.
void TakeWrittenBytes(ModCV& cv) {
  const FitsLayout written{.bytesPerPixel = 1, .width = cv.Width(), .height = cv.Height()};
  cv.ImageData = FloatImage(written.width, written.height);
  DecodePixels(written, cv.FitsOutBuf.data(), cv.ImageData.Overwrite().values, cv.ImageData.Count());
}

// Header and data for BytesPerPixel; false when filling 16 bits was abandoned.
bool Fill(ModCV& cv, const std::function<bool()>& fillSixteen) {
  const bool sixteen = cv.BytesPerPixel == 2;
  if (sixteen && !fillSixteen()) return false;
  cv.BytesPerPixel = sixteen ? 2 : 1;
  BuildFitsHeader(cv);
  if (!sixteen) TakeWrittenBytes(cv);
  return true;
}

bool FillAndWrite(ModCV& cv, Platform& os, const std::filesystem::path& path,
                  const std::function<bool()>& fillSixteen) try {
  return Fill(cv, fillSixteen) && Report(os, WriteFits(cv, path));
} catch (const std::bad_alloc&) {
  os.Message(NotEnoughMemory().text, "DATA SAVE ERROR");
  return false;
}

// `picture` as that of the slot; where it is lost, the data that were saved show the same.
std::optional<Refusal> TakePicture(ModCV& cv, int slot, const std::filesystem::path& picture) {
  if (picture == cv.SlotBitmap(slot)) return std::nullopt;
  const auto refusal = MoveToSlot(cv, picture, slot);
  return refusal && !cv.ImageData.Empty() ? RenderInto(cv, slot) : refusal;
}

}  // namespace

FileRequest SaveRequest(const ModCV& cv, const std::string& title) {
  return {.title = title,
          .filter =
              "Bitmap File (*.bmp)|*.bmp|"
              "FITS File ( *.fts,*.FTS,*.fit,*.FIT)|*.fts;*.FTS;*.fit;*.FIT;*.fits|",
          .defaultExtension = "fts",
          .filterIndex = cv.FileTypeSetting,
          .directory = cv.SaveDir};
}

std::optional<std::filesystem::path> AskSavePath(ModCV& cv, Platform& os, const FileRequest& request) {
  const FileChoice choice = os.SaveFile(request);
  if (choice.outcome == FileChoice::Outcome::Cancelled) return std::nullopt;
  if (choice.outcome == FileChoice::Outcome::Failed) {
    Report(os, choice.error);
    return std::nullopt;
  }
  if (IsOwnFile(cv, choice.path)) {
    os.Message("This name is used by the program itself. Please choose another.", "SAVE ERROR");
    return std::nullopt;
  }
  cv.SaveDir = choice.path.parent_path();
  return choice.path;
}

std::optional<SaveTarget> AskSaveFile(ModCV& cv, Platform& os, const FileRequest& request) {
  const std::optional<std::filesystem::path> path = AskSavePath(cv, os, request);
  if (!path) return std::nullopt;
  const ImageKind kind = KindOf(path->filename().string());
  if (kind == ImageKind::Unknown) {
    os.Message("Unrecognized file extension! File save cancelled.", "SAVE ERROR");
    return std::nullopt;
  }
  return SaveTarget{*path, kind};
}

int SlotPrecision(const ModCV& cv, int slot, int width, int height) {
  const FloatImage& data = cv.SlotData[slot];
  const bool fits = !data.Empty() && data.Width() == width && data.Height() == height;
  return fits ? cv.SlotBytesPerPixel[slot] : 1;
}

bool SaveFits(ModCV& cv, Platform& os, Desk& desk, const std::filesystem::path& path, int code,
              const std::function<bool()>& fillSixteen) {
  WorkingState before(cv);
  cv.BytesPerPixel = code;
  desk.ShowModal(Dialog::SaveOptions);
  if (code == 1) cv.BytesPerPixel = 1;
  os.BusyCursor(true);
  const bool saved = FillAndWrite(cv, os, path, fillSixteen);
  os.BusyCursor(false);
  cv.OriginalFiles.clear();
  if (!saved) return false;
  cv.HeaderCards.resize(kKeptCards);
  cv.HeaderCount = kKeptCards;
  before.Keep();
  return true;
}

bool SaveCopy(Platform& os, const std::filesystem::path& source, const std::filesystem::path& path) {
  os.BusyCursor(true);
  const bool saved = Report(os, SafeCopy(source, path));
  os.BusyCursor(false);
  return saved;
}

bool SaveBitmap(ModCV& cv, Platform& os, const std::filesystem::path& picture,
                const std::filesystem::path& path) {
  WorkingState before(cv);
  cv.OriginalFiles.clear();
  if (picture == cv.SlotBitmap(cv.CurrentSlot)) {
    if (!EnsureSlotPicture(cv, os, cv.CurrentSlot)) return false;
  } else if (const std::optional<Refusal> damaged = ReadBitmapHeader(cv, picture)) {
    os.Message(damaged->text, damaged->title);
    return false;
  }
  if (!SaveCopy(os, picture, path)) return false;
  cv.ImageData = {};
  cv.HeaderCards.clear();
  cv.HeaderCount = 0;
  cv.FitsFileSize = '0';
  cv.BytesPerPixel = 1;
  before.Keep();
  return true;
}

bool CommitSave(ModCV& cv, Platform& os, int slot, const std::filesystem::path& path,
                const std::filesystem::path& picture) {
  if (const auto refusal = TakePicture(cv, slot, picture)) {
    os.Message(refusal->text, refusal->title);
    return false;
  }
  StoreSlot(cv, slot);
  cv.OpenTitle = path.filename().string();
  cv.SlotName[slot] = cv.OpenTitle;
  cv.CurrentSlot = slot;
  cv.CurrentName = cv.OpenTitle;
  if (slot == cv.ImageCount) ++cv.ImageCount;
  if (cv.BytesPerPixel == 2) {
    os.BusyCursor(true);
    RenderSlotData(cv, os);
    os.BusyCursor(false);
  }
  return true;
}

}  // namespace corvane
