#pragma once

#include <QTimer>
#include <QWidget>

#include "platform/desk.h"

namespace corvane {

// Shown while the program starts; when its timer fires, the viewer opens and the splash goes.
class frmCVSplash : public QWidget {
 public:
  explicit frmCVSplash(Desk& windows);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void Timer1_Timer();

  Desk& desk;
  QTimer* Timer1;
};

}  // namespace corvane
