#pragma once

#include <QDialog>

#include "core/modcv.h"
#include "platform/platform.h"
#include "widgets/PictureBox.h"

namespace corvane {

// The gray levels along the row and the column through the marker, as XProfile and YProfile hold them.
class frmProfile : public QDialog {
 public:
  frmProfile(ModCV& store, Platform& platform);

 protected:
  // A repaint of the whole window brings back the grid.
  void paintEvent(QPaintEvent* event) override;

 private:
  QWidget* GraphColumn(PictureBox* graph, const char* title, const char* titleName, const char* left,
                       const char* right);
  void cmdRefresh_Click();
  void cmdGrid_Click();
  void DrawFrames();
  void ProfileScale(QPainter& painter) const;

  ModCV& cv;
  PictureBox* picXP;
  PictureBox* picYP;
  bool gridShown_ = false;
};

}  // namespace corvane
