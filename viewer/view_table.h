#pragma once

#include <filesystem>
#include <span>

#include "core/display_bitmap.h"
#include "core/float_image.h"
#include "core/marker.h"
#include "core/modcv.h"

namespace corvane {

// A picture shown instead of the slot's own: one of the viewer's check items.
struct ViewEntry {
  int menuIndex;  // of mnuToolSel
  bool turns;     // width and height change places
  bool isColor;   // the picture has colours that a FITS file cannot keep
  // The viewer runs both forms itself, as they take long and have a dialog: `display` and `data` are null.
  bool deconvolves;

  // Whose header and palette the view's picture has.
  std::filesystem::path (*header)(const ModCV& cv);
  // The view of `source`; `result` is another picture, of the size that `turns` tells.
  void (*display)(const ModCV& settings, ConstGrayView source, GrayView result);
  // The same on data of the range 0..32767. Null where the view is saved with 8 bits only.
  void (*data)(FloatImage& image);
  // The pixel of a source of this size that a pixel of the view shows.
  Mark (*source)(Mark shown, int width, int height);
};

std::span<const ViewEntry> ViewTable();

}  // namespace corvane
