#pragma once

#include <QDialog>

#include "core/modcv.h"
#include "platform/platform.h"

namespace corvane {

class frmAbout : public QDialog {
 public:
  frmAbout(ModCV& cv, Platform& os);
};

}  // namespace corvane
