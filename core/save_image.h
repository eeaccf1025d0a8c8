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

// Saving is three steps that a window composes:
//   1. AskSaveFile                 where to, and as what
//   2. SaveFits or SaveBitmap      the file; after false, file and store are as they were: just return
//   3. CommitSave                  slot record, name and picture
// Nothing that lasts changes before step 3. A window does its own work on a view, its list or its state after
// it, and may work between 2 and 3 (the stacker closes its inputs there) as long as nothing is read or shown.

struct SaveTarget {
  std::filesystem::path path;
  ImageKind kind = ImageKind::Unknown;
};

// The Save dialog as most windows show it: both kinds, SaveDir, the default type of the settings.
FileRequest SaveRequest(const ModCV& cv, const std::string& title);

// The Save dialog. Sets SaveDir; nothing after a cancel, or after the message for a dialog that failed, an
// extension that is not ours or a name that the program itself uses. The kind is Bitmap or Fits.
std::optional<SaveTarget> AskSaveFile(ModCV& cv, Platform& os, const FileRequest& request);
// The same without asking the extension: for the window that writes one format only.
std::optional<std::filesystem::path> AskSavePath(ModCV& cv, Platform& os, const FileRequest& request);

// The slot's bytes-per-pixel code where its data array describes a picture of this size, else 1: what can be
// written at full precision.
int SlotPrecision(const ModCV& cv, int slot, int width, int height);

// Asks for bits and comment (BytesPerPixel is `code` while the dialog is open), fills FitsOutBuf and writes
// the file.
//
// The caller has set: DisplayBits, RowStride, ImageWidth and ImageHeight to the picture that is shown (after
// reading something else: LoadDisplayBits of its file); CurrentSlot, whose name goes into the header;
// OriginalFiles where the image was made from several, empty otherwise (it is emptied by every save).
// `code` is 2, 4 or -4 where `fillSixteen` can write the picture at full precision (see SlotPrecision), else
// 1: only 8 bits are offered then and `fillSixteen` may be empty. It is called for 16 bits only and ends in
// EncodeSixteenBit, as SixteenBitSave does; false from it abandons the save without a message.
//
// After true the working state is what a slot of this file holds: HeaderCards (10 cards), ImageData (the
// values of the file), BytesPerPixel (1 or 2), FitsFileSize. After false all of it is as before the call.
bool SaveFits(ModCV& cv, Platform& os, Desk& desk, const std::filesystem::path& path, int code,
              const std::function<bool()>& fillSixteen);

// Copies the display bitmap `picture` to the file. After true the working state is what a slot of a bitmap
// holds: no header, no data, BytesPerPixel 1. False after a message.
bool SaveBitmap(ModCV& cv, Platform& os, const std::filesystem::path& picture,
                const std::filesystem::path& path);

// Copies any file of AppDir to a file that the user named. False after a message.
bool SaveCopy(Platform& os, const std::filesystem::path& source, const std::filesystem::path& path);

// Makes the image just saved that of `slot`, which becomes the current one: `picture` moves to the slot's
// display bitmap (unless it is that file), the working state is stored, the name is that of `path`. A slot at
// ImageCount is a new image (ImageCount grows; there must be room). After 16 bits the picture is rendered
// again from the written data and LumHist counted. DisplayBits and the size fields describe the slot's
// picture then. False after a message, with the slot as before; the saved file stands.
bool CommitSave(ModCV& cv, Platform& os, int slot, const std::filesystem::path& path,
                const std::filesystem::path& picture);

}  // namespace corvane
