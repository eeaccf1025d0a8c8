#pragma once

#include <QDialog>
#include <memory>

#include "core/modcv.h"
#include "platform/desk.h"
#include "platform/platform.h"
#include "widgets/ToolWindow.h"

namespace corvane {

// The one place that knows every window. A main window has read nothing yet: the desk calls Open() before it
// shows it.
std::unique_ptr<ToolWindow> MakeWindow(Window window, ModCV& cv, Platform& os, Desk& desk);
std::unique_ptr<QDialog> MakeDialog(Dialog dialog, ModCV& cv, Platform& os);

}  // namespace corvane
