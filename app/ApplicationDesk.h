#pragma once

#include <QPointer>

#include "core/modcv.h"
#include "platform/desk.h"
#include "platform/platform.h"
#include "widgets/ToolWindow.h"

namespace corvane {

// The desk of the running program: shows, positions and unloads the real windows. What it asks of a main
// window (ToolWindow):
//   Open()    reads the store; called once, before the window is shown
//   Unload()  applies the unload rules once (settings, working files) and asks nothing; called when the
//             window gives way and when the program is ended from outside
class ApplicationDesk : public Desk {
 public:
  ApplicationDesk(ModCV& cv, Platform& os) : cv_(cv), os_(os) {}

  // The opener has recorded WindowLeft and WindowTop and committed what it shows.
  void Replace(Window next) override;
  void ShowModal(Dialog dialog) override;

  // What File > Exit does, without questions: nothing the program left behind stays in AppDir.
  void UnloadForGood();

 private:
  ModCV& cv_;
  Platform& os_;
  QPointer<ToolWindow> shown_;
};

}  // namespace corvane
