#pragma once

#include "core/modcv.h"
#include "platform/platform.h"

namespace corvane {

// Loads the display bitmap of a slot into DisplayBits, with its sizes. One that has vanished or is damaged is
// made again where it was the plain rendering of the slot's data. False after a message otherwise: the
// working state is then unspecified, the slots are as before.
bool LoadSlotPicture(ModCV& cv, Platform& os, int slot);
// The same for a caller that needs the file: a sound one is not loaded.
bool EnsureSlotPicture(ModCV& cv, Platform& os, int slot);

}  // namespace corvane
