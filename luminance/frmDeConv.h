#pragma once

#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include "core/modcv.h"
#include "luminance/IterationPanel.h"
#include "luminance/deconvolution.h"
#include "platform/platform.h"

namespace corvane {

// Asks for the point spread and deconvolves DisplayBits. While it runs only Cancel, Esc and the close box
// act; they end the run at the next row. DeconvCancelled is set whenever it closes without a result:
// DisplayBits is then as before.
class frmDeConv : public QDialog, public IterationWatch {
 public:
  frmDeConv(ModCV& store, Platform& platform);

  bool Row(int done, int total) override;
  bool Iteration(int iteration, float relativeError) override;
  void done(int result) override;

 private:
  enum class State { Idle, Running, Finished };

  QWidget* RadiusRow();
  QWidget* ModeFrame();
  QWidget* ProgressFrame();
  QWidget* Buttons();
  void Enter(State state);

  void cmdApply_Click();
  // Takes the typed radius over; false after the message for one that is refused.
  bool TakeRadius();
  void RefuseRadius(float limit, const char* message);

  ModCV& cv;
  Platform& os;
  State state_ = State::Idle;
  QLineEdit* txbRad;
  QWidget* radiusRow_;
  QRadioButton* Option1;
  QRadioButton* Option2;
  QWidget* modeFrame_;
  IterationPanel* panel_;
  QWidget* Frame1;
  QPushButton* cmdApply;
  QPushButton* cmdCancel;
};

}  // namespace corvane
