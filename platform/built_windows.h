#pragma once

#include <algorithm>
#include <iterator>

#include "platform/desk.h"

namespace corvane {

// The main windows that are still to come: menus disable the items that lead to them.
inline constexpr Window kAbsentWindows[] = {
    Window::Color,
};

constexpr bool IsBuilt(Window window) {
  return std::find(std::begin(kAbsentWindows), std::end(kAbsentWindows), window) == std::end(kAbsentWindows);
}

}  // namespace corvane
