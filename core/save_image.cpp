#include "core/save_image.h"

#include <new>
#include <utility>

#include "base/files.h"
#include "base/safe_write.h"
#include "core/accepted.h"
#include "core/fits_writer.h"
#include "core/render.h"
#include "core/slot_picture.h"
#include "core/working_files.h"
#include "formats/bitmap_format.h"
#include "platform/busy.h"

namespace corvane {
namespace {

constexpr int kKeptCards = 10;  // up to END, without the blank cards that fill the block

// Restores the working state that a save changes, unless the save succeeds.
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

// The kind is left open.
SaveChoice ChooseSavePath(ModCV& cv, Platform& os, const FileRequest& request) {
  const FileChoice choice = os.SaveFile(request);
  if (choice.outcome == FileChoice::Outcome::Cancelled) return {SaveChoice::Outcome::Cancelled};
  if (choice.outcome == FileChoice::Outcome::Failed) {
    Report(os, choice.error);
    return {};
  }
  if (IsOwnFile(cv, choice.path)) {
    os.Message("This name is used by the program itself. Please choose another.", "SAVE ERROR");
    return {};
  }
  cv.SaveDir = choice.path.parent_path();
  return {SaveChoice::Outcome::Chosen, {choice.path}};
}

// A FITS file being written: the constructor asks the user; the working state is restored unless the file is
// written.
class FitsWrite {
 public:
  FitsWrite(ModCV& cv, Platform& os, Desk& desk, const ImageSave& save)
      : cv_(cv), os_(os), save_(save), before_(cv) {
    cv.BytesPerPixel = save.precision;
    desk.ShowModal(Dialog::SaveOptions);
    isSixteenBit_ = save.precision != 1 && cv.BytesPerPixel == 2;
    busy_.emplace(os);
  }
  ~FitsWrite() { cv_.OriginalFiles.clear(); }

  bool IsSixteenBit() const { return isSixteenBit_; }

  // Encodes ImageData, or the picture, and writes the file. False after a message.
  bool Finish() {
    if (isSixteenBit_) EncodeSixteenBit(cv_);
    cv_.BytesPerPixel = isSixteenBit_ ? 2 : 1;
    BuildFitsHeader(cv_, save_.source.empty() ? cv_.SlotName[save_.slot] : save_.source);
    if (!Report(os_, WriteFits(cv_, save_.path))) return false;
    cv_.HeaderCards.resize(kKeptCards);
    cv_.HeaderCount = kKeptCards;
    before_.Keep();
    return true;
  }

 private:
  ModCV& cv_;
  Platform& os_;
  const ImageSave& save_;
  WorkingState before_;
  bool isSixteenBit_ = false;
  std::optional<Busy> busy_;
};

bool NoMemory(Platform& os) {
  os.Message(NotEnoughMemory().text, "DATA SAVE ERROR");
  return false;
}

// The slot's data after `operation` as a file.
bool WriteSlotData(ModCV& cv, Platform& os, Desk& desk, const ImageSave& save,
                   const std::function<void()>& operation) try {
  FitsWrite file(cv, os, desk, save);
  if (file.IsSixteenBit()) {
    PrepareSixteenBit(cv, save.slot, save.precision);
    operation();
  }
  return file.Finish();
} catch (const std::bad_alloc&) {
  return NoMemory(os);
}

// True for a sound picture. That of the slot is made again where it is lost.
bool HasPicture(ModCV& cv, Platform& os, const ImageSave& save) {
  if (save.picture == cv.SlotBitmap(save.slot)) return EnsureSlotPicture(cv, os, save.slot);
  int width = 0;
  int height = 0;
  return Accepted(os, ReadDisplaySize(save.picture, width, height));
}

// `save.picture` as that of the slot; where it can't be moved, DisplayBits are the same.
std::optional<Refusal> TakePicture(ModCV& cv, const ImageSave& save) {
  const std::filesystem::path own = cv.SlotBitmap(save.slot);
  if (save.picture == own || MoveToSlot(cv, save.picture, save.slot) == std::nullopt) return std::nullopt;
  return WriteWorkingBitmap(cv, cv.AppDir / kGrayTemplate, own, cv.Display());
}

// What the file holds as the working data, and in 8 bits its picture as that of the slot.
std::optional<Refusal> TakeSaved(ModCV& cv, const ImageSave& save) try {
  const bool isFits = !cv.HeaderCards.empty();
  const bool isEightBit = cv.BytesPerPixel == 1;
  if (isEightBit) cv.ImageData = {};  // the slot keeps its data until its picture is taken
  if (isFits) TakeWrittenData(cv, save.slot);
  return isEightBit ? TakePicture(cv, save) : std::nullopt;
} catch (const std::bad_alloc&) {
  return NotEnoughMemory();
}

// Renders the data that were written. Where the picture can't be written the old one is removed, so that it
// is never shown for them.
std::optional<Refusal> RenderSaved(ModCV& cv, const ImageSave& save) {
  const std::filesystem::path own = cv.SlotBitmap(save.slot);
  if (save.picture != own) QuietDelete(save.picture);
  auto refusal = RenderSlotData(cv);
  if (refusal) QuietDelete(own);
  return refusal;
}

// Accepted, for what fails after the user's file is safe.
bool AcceptedAfterSave(Platform& os, const ImageSave& save, std::optional<Refusal> refusal) {
  if (refusal)
    refusal->text = "\"" + save.path.filename().string() + "\" is saved, but not shown. " + refusal->text;
  return Accepted(os, refusal);
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
  const SaveChoice choice = ChooseSavePath(cv, os, request);
  if (choice.outcome != SaveChoice::Outcome::Chosen) return std::nullopt;
  return choice.target.path;
}

std::optional<SaveTarget> AskSaveFile(ModCV& cv, Platform& os, const FileRequest& request) {
  const SaveChoice choice = ChooseSaveFile(cv, os, request);
  if (choice.outcome != SaveChoice::Outcome::Chosen) return std::nullopt;
  return choice.target;
}

SaveChoice ChooseSaveFile(ModCV& cv, Platform& os, const FileRequest& request) {
  SaveChoice choice = ChooseSavePath(cv, os, request);
  if (choice.outcome != SaveChoice::Outcome::Chosen) return choice;
  choice.target.kind = KindOf(choice.target.path.filename().string());
  if (choice.target.kind != ImageKind::Unknown) return choice;
  os.Message("Unrecognized file extension! File save cancelled.", "SAVE ERROR");
  return {};
}

int SlotPrecision(const ModCV& cv, int slot, int width, int height) {
  const FloatImage& data = cv.SlotData[slot];
  const bool fits = !data.Empty() && data.Width() == width && data.Height() == height;
  return fits ? cv.SlotBytesPerPixel[slot] : 1;
}

bool SaveCopy(Platform& os, const std::filesystem::path& source, const std::filesystem::path& path) {
  const Busy busy(os);
  return Report(os, SafeCopy(source, path));
}

bool SaveBitmap(ModCV& cv, Platform& os, const ImageSave& save) {
  return WriteBitmapFile(cv, os, save) && CommitSave(cv, os, save);
}

bool SaveFits(ModCV& cv, Platform& os, Desk& desk, const ImageSave& save,
              const std::function<void()>& operation) {
  return WriteSlotData(cv, os, desk, save, operation) && CommitSave(cv, os, save);
}

bool SaveFitsData(ModCV& cv, Platform& os, Desk& desk, const ImageSave& save,
                  const std::function<FloatImage()>& data) {
  return WriteFitsFile(cv, os, desk, save, data) && CommitSave(cv, os, save);
}

bool WriteBitmapFile(ModCV& cv, Platform& os, const ImageSave& save) {
  cv.OriginalFiles.clear();
  if (!HasPicture(cv, os, save) || !SaveCopy(os, save.picture, save.path)) return false;
  cv.ImageData = {};
  cv.HeaderCards.clear();
  cv.HeaderCount = 0;
  cv.FitsFileSize = '0';
  cv.BytesPerPixel = 1;
  return true;
}

bool WriteFitsFile(ModCV& cv, Platform& os, Desk& desk, const ImageSave& save,
                   const std::function<FloatImage()>& data) try {
  FitsWrite file(cv, os, desk, save);
  if (file.IsSixteenBit()) cv.ImageData = data();
  return file.Finish();
} catch (const std::bad_alloc&) {
  return NoMemory(os);
}

bool CommitSave(ModCV& cv, Platform& os, const ImageSave& save) {
  const Busy busy(os);
  if (!AcceptedAfterSave(os, save, TakeSaved(cv, save))) return false;
  StoreSlot(cv, save.slot);
  cv.OpenTitle = save.path.filename().string();
  cv.SlotName[save.slot] = cv.OpenTitle;
  cv.CurrentSlot = save.slot;
  cv.CurrentName = cv.OpenTitle;
  if (save.slot == cv.ImageCount) ++cv.ImageCount;
  if (cv.BytesPerPixel == 2) AcceptedAfterSave(os, save, RenderSaved(cv, save));
  return true;
}

}  // namespace corvane
