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
  // Takes the choices over; false, with the focus in the box, where the raster cycles can't be taken.
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
