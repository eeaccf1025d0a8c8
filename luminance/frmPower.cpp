#include "luminance/frmPower.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <cmath>

#include "base/text.h"
#include "platform/QtText.h"
#include "widgets/SelectingBox.h"
#include "widgets/controls.h"

namespace corvane {

frmPower::frmPower(ModCV& store, Platform& platform)
    : cv(store),
      os(platform),
      txbExp(Named(new SelectingBox, "txbExp", "Exponent, 0.1 to 10")),
      before_(store.ScaleExponent) {
  setObjectName("frmPower");
  setWindowTitle("Scale Exponent Selection");
  txbExp->setText(ToQt(ShortestDecimal(cv.ScaleExponent)));
  // Makes the window wide enough for its title.
  txbExp->setMinimumWidth(fontMetrics().horizontalAdvance(windowTitle()) + 40);
  auto* label = Named(new QLabel("Select Exponent"), "Label1");
  label->setBuddy(txbExp);
  auto* cmdOK = Named(new QPushButton("&OK"), "cmdOK", "OK");
  auto* cmdCancel = Named(new QPushButton("&Cancel"), "cmdCancel", "Cancel");
  cmdOK->setDefault(true);
  connect(cmdOK, &QPushButton::clicked, this, &frmPower::cmdOK_Click);
  connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);

  auto* entry = new QHBoxLayout;
  entry->addWidget(label);
  entry->addWidget(txbExp);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(cmdOK);
  buttons->addWidget(cmdCancel);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(entry);
  layout->addSpacing(6);
  layout->addLayout(buttons);
  layout->setSizeConstraint(QLayout::SetFixedSize);
  txbExp->setFocus();
}

void frmPower::cmdOK_Click() {
  const auto number = ParseNumber(txbExp->text().toStdString());
  if (!number) {
    os.Message("Non-Numeric Input", "INPUT ERROR");
    return ReturnToBox();
  }
  cv.ScaleExponent = static_cast<float>(std::fabs(*number));
  if (cv.ScaleExponent >= 0.1 && cv.ScaleExponent <= 10) return accept();
  os.Message("The exponent must be between 0.1 and 10.", "EXPONENT ERROR");
  ReturnToBox();
}

void frmPower::ReturnToBox() {
  txbExp->setFocus();
  txbExp->selectAll();
}

void frmPower::reject() {
  cv.ScaleExponent = before_;
  QDialog::reject();
}

}  // namespace corvane
