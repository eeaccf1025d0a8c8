#pragma once

#include <QDialog>
#include <QLineEdit>

#include "core/modcv.h"
#include "platform/platform.h"

namespace corvane {

// Asks for ScaleExponent. Left without a usable exponent, it keeps the one from before.
class frmPower : public QDialog {
 public:
  frmPower(ModCV& store, Platform& platform);
  void reject() override;

 private:
  void cmdOK_Click();
  void ReturnToBox();

  ModCV& cv;
  Platform& os;
  QLineEdit* txbExp;
  float before_;
};

}  // namespace corvane
