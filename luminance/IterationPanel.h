#pragma once

#include <QLabel>
#include <QProgressBar>
#include <QWidget>

namespace corvane {

// Shows the progress of a deconvolution: the rows of the iteration on `ProgressBar1`, its number in
// `lblIteration`, its residual in `lblError`.
class IterationPanel : public QWidget {
 public:
  struct Captions {
    const char* bar;  // "" = none
    const char* iteration;
    const char* error;
  };
  // The residual is shown with `decimals` decimals.
  IterationPanel(const Captions& captions, int decimals);

  void Clear();
  void ShowRow(int done, int total);
  void ShowIteration(int iteration, float relativeError);

 private:
  QLabel* Value(const char* name, const char* spokenName);

  QProgressBar* ProgressBar1;
  QLabel* lblIteration;
  QLabel* lblError;
  const int decimals_;
};

}  // namespace corvane
