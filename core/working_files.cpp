#include "core/working_files.h"

namespace corvane {

std::string SlotBitmapName(int slot) { return std::to_string(slot) + kTempBitmap; }
std::string SlotHoldName(int slot) { return std::to_string(slot) + "hold.bmp"; }

}  // namespace corvane
