#pragma once

#include <QDialog>
#include <memory>

#include "core/modcv.h"
#include "platform/desk.h"
#include "platform/platform.h"
#include "widgets/ToolWindow.h"

namespace corvane {

// The desk of the running program: shows, positions and unloads the real windows.
class ApplicationDesk : public Desk {
 public:
  ApplicationDesk(ModCV& store, Platform& platform) : cv(store), os(platform) {}

  // The opener has recorded WindowLeft and WindowTop and committed what it shows. Its unload rules run before
  // the next window reads the store: what they delete is never a file of the next window.
  void Replace(Window next) override;
  // The dialog stands beside the main window, wholly on its screen. It blocks the main window alone: the help
  // window stays usable.
  void ShowModal(Dialog dialog) override;

  // What File > Exit does, without questions.
  void UnloadForGood();

  // The main window on screen, or null.
  ToolWindow* Shown() const { return shown_.get(); }

 private:
  ModCV& cv;
  Platform& os;
  std::unique_ptr<ToolWindow> shown_;
  QSize growth_{0, 0};  // by which the user has enlarged the windows that can be
};

}  // namespace corvane
