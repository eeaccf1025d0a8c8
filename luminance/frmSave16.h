#pragma once

#include <QDialog>

#include "luminance/IterationPanel.h"
#include "luminance/deconvolution.h"
#include "platform/platform.h"

namespace corvane {

// The window on screen while an image is deconvolved at full precision. It stays as long as the object lives:
// the run cannot be cancelled, so Esc and the close box do nothing.
class frmSave16 : public QDialog, public IterationWatch {
 public:
  frmSave16(Platform& platform, QWidget* opener);

  bool Row(int done, int total) override;
  bool Iteration(int iteration, float relativeError) override;
  void done(int) override {}

 private:
  Platform& os;
  IterationPanel* panel_;
};

}  // namespace corvane
