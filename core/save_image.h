#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "core/modcv.h"
#include "core/open_image.h"
#include "platform/desk.h"
#include "platform/platform.h"

namespace corvane {

struct SaveTarget {
  std::filesystem::path path;
  ImageKind kind = ImageKind::Unknown;
};

// The Save dialog as most windows show it: both kinds, SaveDir, the default type of the settings.
FileRequest SaveRequest(const ModCV& cv, const std::string& title);

// The Save dialog. Sets SaveDir; nothing after a cancel, or after the message for a dialog that failed, an
// extension that is not ours or a name that the program itself uses. The kind is Bitmap or Fits.
std::optional<SaveTarget> AskSaveFile(ModCV& cv, Platform& os, const FileRequest& request);
// The same without a test of the extension, for the window that writes only one format.
std::optional<std::filesystem::path> AskSavePath(ModCV& cv, Platform& os, const FileRequest& request);

// AskSaveFile for the window that goes on after a cancel: Refused is what a message was shown for.
struct SaveChoice {
  enum class Outcome { Chosen, Cancelled, Refused };
  Outcome outcome = Outcome::Refused;
  SaveTarget target{};  // where Chosen
};
SaveChoice ChooseSaveFile(ModCV& cv, Platform& os, const FileRequest& request);

// The slot's bytes-per-pixel code where its data array describes a picture of this size, else 1: what can be
// written at full precision.
int SlotPrecision(const ModCV& cv, int slot, int width, int height);

// An image about to be saved. DisplayBits and the size fields are those of `picture`.
struct ImageSave {
  std::filesystem::path path;     // of the file
  int slot = 0;                   // whose image it becomes; ImageCount for a new one, for which there is room
  std::filesystem::path picture;  // a display bitmap of AppDir: what is saved in 8 bits
  int precision = 1;              // 2, 4 or -4 where 16 bits can be written (see SlotPrecision)
  std::string source{};  // the file named in the header where OriginalFiles is empty; "" = the slot's name
};

// Writes the file and makes it the image of the slot, which becomes the current one and takes the file's
// name; then DisplayBits and the size fields describe the slot's picture. False after a message, with the
// slots as before; where it is the slot's picture that failed, the message says that the file is saved.
//
// A bitmap is a copy of the picture. A FITS file has the bits and the comment that the user is asked for; in
// 16 bits it holds the slot's data, prepared, after `operation` on ImageData, and the slot's picture is
// rendered from them. OriginalFiles names the files of an image made from several; every save leaves it
// empty.
bool SaveBitmap(ModCV& cv, Platform& os, const ImageSave& save);
bool SaveFits(ModCV& cv, Platform& os, Desk& desk, const ImageSave& save,
              const std::function<void()>& operation);
// The same for data that are no slot's: `data` gives the values to encode, and is called for 16 bits only.
bool SaveFitsData(ModCV& cv, Platform& os, Desk& desk, const ImageSave& save,
                  const std::function<FloatImage()>& data);

// The two steps of a save, for a window that has work between them, such as closing slots, and reads and
// shows nothing there. After false from the first the working state is as before.
bool WriteBitmapFile(ModCV& cv, Platform& os, const ImageSave& save);
bool WriteFitsFile(ModCV& cv, Platform& os, Desk& desk, const ImageSave& save,
                   const std::function<FloatImage()>& data);
bool CommitSave(ModCV& cv, Platform& os, const ImageSave& save);

// Copies any file of AppDir to a file that the user named. False after a message.
bool SaveCopy(Platform& os, const std::filesystem::path& source, const std::filesystem::path& path);

}  // namespace corvane
