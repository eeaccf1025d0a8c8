#pragma once

#include <QObject>
#include <functional>

namespace corvane {

// Calls `end`, once, when the program must end without a command of its user: after TERM, INT or HUP, from
// the event loop, and the exit status is then 0; or when the toolkit exits because the display is lost. Only
// one object at a time.
class EndSignals : public QObject {
 public:
  explicit EndSignals(std::function<void()> end);
  ~EndSignals() override;

 private:
  void End();

  std::function<void()> end_;
};

}  // namespace corvane
