#pragma once

#include <QObject>
#include <functional>

namespace corvane {

// Calls `end` from the event loop when the program is asked to end by TERM, INT or HUP. One at a time.
class EndSignals : public QObject {
 public:
  explicit EndSignals(std::function<void()> end);
  ~EndSignals() override;

 private:
  std::function<void()> end_;
};

// A reader that goes away and a full quota are errors of a write, not of the program.
void IgnoreWriteSignals();

}  // namespace corvane
