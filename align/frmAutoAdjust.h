#pragma once

#include <QDialog>
#include <QLineEdit>
#include <optional>

#include "core/modcv.h"
#include "platform/platform.h"

namespace corvane {

// Asks for AutoRadius and AutoThreshold. AutoAdjustOn tells whether it was left by Apply; a number that Apply
// set to its limit stays stored however it is left.
class frmAutoAdjust : public QDialog {
 public:
  frmAutoAdjust(ModCV& store, Platform& platform);
  void reject() override;

 private:
  struct Limits {
    int least;
    const char* tooSmall;
    int most;
    const char* tooLarge;
  };

  void cmdApply_Click();
  // Takes `number` over as `value`; false after the message for one that is refused, `value` being the limit.
  bool Take(std::optional<double> number, const Limits& limits, QLineEdit* box, int& value);
  void ReturnTo(QLineEdit* box);

  ModCV& cv;
  Platform& os;
  QLineEdit* txbRad;
  QLineEdit* txbThresh;
};

}  // namespace corvane
