#pragma once

#include <QProgressBar>
#include <filesystem>

#include "base/progress.h"
#include "platform/platform.h"

namespace corvane {

// Sets the value of a bar without painting it at once, which would take longer than the rows of a small
// image: the event loop paints it, as it paints other controls.
void ShowPercent(QProgressBar& bar, int percent);

// The progress of a run on a bar from 0 to 100. The events of the window system are delivered on the way.
class BarProgress : public QProgressBar, public Progress {
 public:
  explicit BarProgress(Platform& platform);

  // From here on a press on the bar, Esc and Pause in its window cancel. The bar shows the pointer of an icon
  // file.
  void AllowCancel(const std::filesystem::path& pointer);
  void Cancel() { cancelled_ = true; }
  bool Cancelled() const { return cancelled_; }
  // The bar as it is between runs, with nothing cancelled.
  void Reset();

  bool Row(int done, int total) override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  Platform& os;
  bool cancelled_ = false;
};

}  // namespace corvane
