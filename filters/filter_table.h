#pragma once

#include <array>

#include "filters/filter.h"

namespace corvane {

// Every filter in the order of the list, as compiled for the instruction set in use.
std::array<FilterEntry, 7> FilterTable();

}  // namespace corvane
