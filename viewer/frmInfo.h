#pragma once

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTextEdit>
#include <string>

#include "core/modcv.h"
#include "platform/platform.h"

namespace corvane {

// Name, size and pixel dimensions of the image shown, and the header of a FITS image as text.
class frmInfo : public QDialog {
 public:
  frmInfo(ModCV& store, Platform& platform);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void LayOut();
  void ShowImage();
  void cmdPrint_Click();
  // The next place of what the find box holds, from the start again after the last.
  void FindNext();

  ModCV& cv;
  Platform& os;
  QLabel* Label2;  // file name
  QLabel* Label4;  // file size
  QLabel* Label6;  // pixels
  QLabel* Label7;
  QTextEdit* RichTextBox1;
  QLineEdit* txbFind;
  QLabel* lblFound;
  QPushButton* cmdPrint;
};

}  // namespace corvane
