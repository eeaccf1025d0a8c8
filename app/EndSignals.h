#pragma once

#include <QObject>
#include <functional>

namespace corvane {

// Calls `end`, once, when the program must end without being asked to by its user: from the event loop after
// TERM, INT or HUP, which then end it with status 0; and where the toolkit exits because the display is lost.
// One at a time.
class EndSignals : public QObject {
 public:
  explicit EndSignals(std::function<void()> end);
  ~EndSignals() override;

 private:
  void End();

  std::function<void()> end_;
};

}  // namespace corvane
