#pragma once

namespace corvane {

// The main windows; exactly one is on screen.
enum class Window { Examine, Scale, Mask, Filter, Align, Combine, Color };
enum class Dialog {
  Info,
  Histogram,
  Profile,
  Preferences,
  About,
  SaveOptions,
  Deconvolution,
  Exponent,
  AutoAdjust
};

// The program's own windows, as flows and windows see them. Dialogs talk through the store.
class Desk {
 public:
  virtual ~Desk() = default;
  // Opens `next` at (WindowLeft, WindowTop) and unloads the main window now on screen.
  virtual void Replace(Window next) = 0;
  // Shows a dialog beside the main window and returns when it is closed.
  virtual void ShowModal(Dialog dialog) = 0;
};

}  // namespace corvane
