#include "luminance/frmSave16.h"

#include <QVBoxLayout>

#include "widgets/placing.h"

namespace corvane {

frmSave16::frmSave16(Platform& platform, QWidget* opener)
    : QDialog(opener, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint),
      os(platform),
      panel_(new IterationPanel({"", "Iteration", "RMS Error"}, 3)) {
  setObjectName("frmSave16");
  setWindowTitle("Saving...");
  setWindowModality(Qt::WindowModal);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(panel_);
  layout->setSizeConstraint(QLayout::SetFixedSize);
  if (opener) PlaceAt(*this, opener->window()->pos() + QPoint(kDialogOffset, 0));
  show();
  os.Yield();
}

bool frmSave16::Row(int done, int total) {
  panel_->ShowRow(done, total);
  os.Yield();
  return true;
}

bool frmSave16::Iteration(int iteration, float relativeError) {
  panel_->ShowIteration(iteration, relativeError);
  os.Yield();
  return true;
}

}  // namespace corvane
