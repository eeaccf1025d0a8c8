#pragma once

#include <optional>

#include "base/display_bitmap.h"
#include "base/float_image.h"
#include "base/levels.h"
#include "base/refusal.h"
#include "core/modcv.h"
#include "platform/platform.h"

namespace corvane {

// ImageMin, ImageMax and DisplayScale of ImageData for its BytesPerPixel.
void FindMinMax(ModCV& cv);

// Renders ImageData into DisplayBits by the rule of BytesPerPixel and the slot's Rendering, sets the size
// fields and writes the display bitmap of `slot`.
std::optional<Refusal> RenderInto(ModCV& cv, int slot);
// The same for the slot about to be added, ImageCount. Sets LoadFailed after a message.
void RenderFits(ModCV& cv, Platform& os);

// The same for the current slot after its data were saved: any range wider than 1 is stretched, also when the
// picture must be made again later. Recounts LumHist.
std::optional<Refusal> RenderSlotData(ModCV& cv);

}  // namespace corvane
