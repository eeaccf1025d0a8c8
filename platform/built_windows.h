#pragma once

#include "platform/desk.h"

namespace corvane {

// The windows that this version of the program has; menus disable the items of the others.
constexpr bool IsBuilt(Window window) {
  return window == Window::Examine || window == Window::Scale || window == Window::Mask;
}

constexpr bool IsBuilt(Dialog dialog) {
  switch (dialog) {
    case Dialog::Info:
    case Dialog::Histogram:
    case Dialog::Profile:
    case Dialog::Preferences:
    case Dialog::About:
    case Dialog::SaveOptions:
    case Dialog::Deconvolution:
    case Dialog::Exponent:
      return true;
    default:
      return false;
  }
}

}  // namespace corvane
