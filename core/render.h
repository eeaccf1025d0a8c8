#pragma once

#include <optional>

#include "core/display_bitmap.h"
#include "core/float_image.h"
#include "core/modcv.h"
#include "core/refusal.h"
#include "platform/platform.h"

namespace corvane {

struct ValueRange {
  float min = 3.4028e38f;
  float max = -3.4028e38f;
};
// The smallest and largest value; blanks (not-a-number) are passed over.
ValueRange FindRange(ConstFloatView values);

// Levels (value - minimum) * scale, limited to 0..255 and rounded to the nearest, ties to even; not-a-number
// is 0. The top row of `values` becomes the last row of `levels`; padding bytes become 0.
void MapLevels(ConstFloatView values, float minimum, float scale, GrayView levels);

// ImageMin, ImageMax and DisplayScale of ImageData for its BytesPerPixel.
void FindMinMax(ModCV& cv);

// DisplayBits from ImageData as BytesPerPixel and SlotFullRange ask, then the display bitmap of `slot`.
std::optional<Refusal> RenderInto(ModCV& cv, int slot);
// The same for the slot about to be added, ImageCount. Sets LoadFailed after a message.
void RenderFits(ModCV& cv, Platform& os);

// The same for the current slot after its data were saved: any range wider than 1 is stretched, also when the
// picture must be made again later. Recounts LumHist. False after a message.
bool RenderSlotData(ModCV& cv, Platform& os);

}  // namespace corvane
