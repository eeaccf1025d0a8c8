#pragma once

#include <QDialog>
#include <QLineEdit>
#include <QRadioButton>

#include "core/modcv.h"
#include "platform/platform.h"

namespace corvane {

class frmPref : public QDialog {
 public:
  frmPref(ModCV& store, Platform& platform);

 private:
  QWidget* MagnificationFrame();
  QWidget* RasterFrame();
  QWidget* FileTypeFrame();
  QWidget* PaletteFrame();
  QWidget* Buttons();

  void cmdApply_Click();
  void cmdSave_Click();
  // Stores the choices; false, with the focus in the box, where the raster cycles are refused.
  bool Apply();

  ModCV& cv;
  Platform& os;
  QRadioButton* optRep;
  QRadioButton* optInterp;
  QLineEdit* Text1;
  QRadioButton* optBMP;
  QRadioButton* optFTS;
  int palette_;
};

}  // namespace corvane
