#pragma once

#include <filesystem>
#include <span>

#include "base/display_bitmap.h"
#include "base/float_image.h"
#include "base/marker.h"
#include "core/modcv.h"

namespace corvane {

// The check items of mnuToolSel: each shows a picture instead of the slot's own.
enum ViewItem {
  kRaster = 4,
  kEdge,
  kNegative,
  kPseudoColor,
  kDeconvolution,
  kRotate90 = 13,
  kRotate180,
  kFlipVertical,
  kFlipHorizontal
};

inline Mark SamePixel(Mark shown, int, int) { return shown; }

struct ViewEntry {
  ViewItem menuIndex;
  bool transposes = false;  // width and height change places
  bool isColor = false;     // the picture has colors that a FITS file cannot keep
  // The viewer runs both forms itself, as they take long and have a dialog: `display` and `data` are null.
  bool deconvolves = false;

  // Whose header and palette the view's picture has.
  std::filesystem::path (*header)(const ModCV& cv);
  // The view of `source`; `result` is another picture, of the size that `transposes` tells.
  void (*display)(const ModCV& settings, ConstGrayView source, GrayView result) = nullptr;
  // The same on data of the range 0..32767. Null where the view is saved with 8 bits only.
  void (*data)(FloatImage& image) = nullptr;
  // The pixel of a source of this size that a pixel of the view shows.
  Mark (*source)(Mark shown, int width, int height) = SamePixel;
};

std::span<const ViewEntry> ViewTable();

}  // namespace corvane
