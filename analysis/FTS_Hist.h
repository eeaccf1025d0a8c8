#pragma once

#include <QDialog>

#include "analysis/HistogramPanel.h"
#include "core/modcv.h"
#include "platform/platform.h"

namespace corvane {

// The histogram of the picture in DisplayBits, over the range of values that the current slot's data have.
class FTS_Hist : public QDialog {
 public:
  FTS_Hist(ModCV& store, Platform& platform);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  HistogramPanel* panel_;
};

}  // namespace corvane
