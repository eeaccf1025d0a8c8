#include "app/Factory.h"

#include "core/frmAbout.h"
#include "core/frmFITS.h"
#include "core/frmPref.h"
#include "viewer/frmExamine.h"

namespace corvane {

std::unique_ptr<ToolWindow> MakeWindow(Window window, ModCV& cv, Platform& os, Desk& desk) {
  switch (window) {
    case Window::Examine:
      return std::make_unique<frmExamine>(cv, os, desk);
    default:
      return nullptr;
  }
}

std::unique_ptr<QDialog> MakeDialog(Dialog dialog, ModCV& cv, Platform& os) {
  switch (dialog) {
    case Dialog::Preferences:
      return std::make_unique<frmPref>(cv, os);
    case Dialog::About:
      return std::make_unique<frmAbout>(cv, os);
    case Dialog::SaveOptions:
      return std::make_unique<frmFITS>(cv, os);
    default:
      return nullptr;
  }
}

}  // namespace corvane
