#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "base/display_bitmap.h"
#include "base/float_image.h"

namespace corvane {

inline constexpr int kSlots = 10;

// How the picture of a slot can be made again from its data.
enum class Rendering {
  None,       // not at all: there are no data, or the picture shows something else
  AsOpened,   // by the rule of its sample type
  FullRange,  // any range wider than 1 is stretched to all levels, as after a save
};

// The one store. Slots 0..ImageCount-1 last; the working state is of the image read, shown or saved last.
struct ModCV {
  // Slots, densely packed in the order of opening.
  std::array<std::string, kSlots> SlotName;
  std::array<int, kSlots> SlotBytesPerPixel{};  // 1, 2, 4, -4; 0 = free
  std::array<std::string, kSlots> SlotFileSize;
  std::array<std::vector<std::string>, kSlots> SlotHeader;
  std::array<FloatImage, kSlots> SlotData;
  std::array<Rendering, kSlots> SlotRendering{};
  int ImageCount = 0;
  int CurrentSlot = 0;
  std::string CurrentName;

  // Working state of the image just read, shown or saved.
  FloatImage ImageData;
  float ImageWidth = 0;
  float ImageHeight = 0;
  float ImageAspect = 1;
  int BytesPerPixel = 0;
  std::vector<std::string> HeaderCards;
  int HeaderCount = 0;
  float ImageMin = 0;
  float ImageMax = 0;
  float DisplayScale = 1;
  ByteBuffer DisplayBits;
  int RowStride = 0;
  float BitmapFileSize = 0;
  float BitmapDataSize = 0;
  float DataOffset = 0;
  float BitCount = 0;
  float HeaderSize = 0;

  // The file being opened or saved.
  std::filesystem::path OpenPath;
  std::string OpenTitle;
  bool LoadFailed = false;
  bool HeaderOK = false;
  std::string FitsFileSize;
  ByteBuffer FitsOutBuf;
  std::string FitsComment;
  std::string OriginalFiles;

  // Settings and defaults.
  std::filesystem::path AppDir;
  std::function<void()> RefillAppDir;  // makes the folder and its shipped files again; may be empty
  std::filesystem::path DefaultDir;
  std::filesystem::path SaveDir;
  int MagMode = 1;
  int RasterCycles = 5;
  int FileTypeSetting = 2;
  int PColorSetting = 0;
  int AutoRadius = 5;
  int AutoThreshold = 10;
  bool AutoAdjustOn = false;
  float DeconvRadius = 3.0f;
  bool DeconvStandard = true;
  bool DeconvCancelled = false;
  float ScaleExponent = 1.0f;
  bool KeepTempFiles = true;
  bool ImageChanged = false;
  int WindowLeft = 0;
  int WindowTop = 0;

  // Luminance histogram of the display bitmap.
  std::array<float, 256> LumHist{};
  std::array<float, 256> LumHistLog{};
  float HistDecades = 2;

  // The marked pixel, x from the left, y from the bottom row, and the gray levels through it.
  float MarkX = 0;
  float MarkY = 0;
  std::vector<std::int32_t> XProfile;
  std::vector<std::int32_t> YProfile;

  // Place of the picture on the printed page.
  float PrintScale = 1;
  float PrintLeft = 0;
  float PrintTop = 0;

  // Size of the working picture in pixels.
  int Width() const;
  int Height() const;
  // The working picture; `DisplayBits` must hold it.
  GrayView Display();
  ConstGrayView Display() const;
  // The display bitmap of a slot.
  std::filesystem::path SlotBitmap(int slot) const;
};

// Sets the size fields (ImageWidth .. DataOffset) for a display bitmap of this size.
void DescribeDisplayBitmap(ModCV& cv, int width, int height);

// Copies the working state of a FITS image into the slot, whose picture is the rendering of its data then;
// any slot outside 0..9 does nothing.
void StoreSlot(ModCV& cv, int slot);
// Exchange and clear all that the store knows of a slot; the files of their pictures stay.
void SwapSlots(ModCV& cv, int a, int b);
void ClearSlot(ModCV& cv, int slot);

// `ImageData` becomes the data of the current slot, `ImageMin` and `ImageMax` its range. Does nothing where
// CurrentSlot is outside 0..9.
void LoadSlotData(ModCV& cv);

// The cards of a slot's header, each followed by CR LF; "" for a slot outside 0..9. Control characters inside
// a card become "?", so that a card is always one line.
std::string HeaderText(const ModCV& cv, int slot);

}  // namespace corvane
