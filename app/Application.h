#pragma once

#include <QApplication>

#include "platform/platform.h"

namespace corvane {

// Catches std::bad_alloc around each event, so that running out of memory ends the event and not the program.
// The user is told once, and the images are kept.
class Application : public QApplication {
 public:
  Application(int& argc, char** argv) : QApplication(argc, argv) {}
  // Who shows the message. Until then, and after `nullptr`, nothing is said.
  void ReportTo(Platform* os) { os_ = os; }
  bool notify(QObject* receiver, QEvent* event) override;

 private:
  void TellLater();
  void Tell();

  Platform* os_ = nullptr;
  bool told_ = false;  // and memory is still short
};

}  // namespace corvane
