#pragma once

#include <QDialog>
#include <QLineEdit>
#include <QRadioButton>

#include "core/modcv.h"
#include "platform/platform.h"

namespace corvane {

// Asks for the bits per pixel and the comment of a FITS file to be written. The caller has set BytesPerPixel
// to what the image can give; the answer is left in BytesPerPixel (1 or 2) and FitsComment, however the
// dialog is closed.
class frmFITS : public QDialog {
 public:
  frmFITS(ModCV& store, Platform& os);
  void done(int result) override;

 private:
  ModCV& cv;
  QRadioButton* Option1;
  QRadioButton* Option2;
  QLineEdit* txbComment;
};

}  // namespace corvane
