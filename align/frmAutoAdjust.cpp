#include "align/frmAutoAdjust.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

#include "base/numeric.h"
#include "base/text.h"
#include "widgets/SelectingBox.h"
#include "widgets/UpDown.h"
#include "widgets/controls.h"

namespace corvane {
namespace {

constexpr int kLeastRadius = 1;
constexpr int kMostRadius = 10;
constexpr int kMostThreshold = 50;

std::optional<double> NumberIn(const QLineEdit* box) { return ParseNumber(box->text().toStdString()); }

}  // namespace

frmAutoAdjust::frmAutoAdjust(ModCV& store, Platform& platform)
    : cv(store),
      os(platform),
      txbRad(Named(new SelectingBox, "txbRad", "Capture radius in pixels, 1 to 10")),
      txbThresh(Named(new SelectingBox, "txbThresh", "Background threshold, 0 to 50")) {
  setObjectName("frmAutoAdjust");
  setWindowTitle("Auto-Adjust");
  auto* grid = new QGridLayout;
  const auto addRow = [grid](int row, QLabel* label, QLineEdit* box, int value, UpDown* arrows) {
    box->setText(QString::number(value));
    box->setMaximumWidth(box->fontMetrics().averageCharWidth() * 10);
    label->setBuddy(box);
    auto* number = new QHBoxLayout;
    number->setSpacing(1);
    number->addWidget(box);
    number->addWidget(arrows);
    grid->addWidget(label, row, 0);
    grid->addLayout(number, row, 1);
  };
  addRow(0, Named(PlainLabel("Capture Radius"), "Label1"), txbRad, cv.AutoRadius,
         Named(new UpDown(txbRad, kLeastRadius, kMostRadius), "UpDown1", "Change the capture radius"));
  addRow(1, Named(PlainLabel("Background Threshold"), "Label2"), txbThresh, cv.AutoThreshold,
         Named(new UpDown(txbThresh, 0, kMostThreshold), "UpDown2", "Change the background threshold"));

  auto* cmdApply = Named(new QPushButton("&Apply"), "cmdApply", "Apply");
  auto* cmdCancel = Named(new QPushButton("&Cancel"), "cmdCancel", "Cancel");
  cmdApply->setDefault(true);
  connect(cmdApply, &QPushButton::clicked, this, &frmAutoAdjust::cmdApply_Click);
  connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(cmdApply);
  buttons->addWidget(cmdCancel);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(grid);
  layout->addSpacing(6);
  layout->addLayout(buttons);
  layout->setSizeConstraint(QLayout::SetFixedSize);
  txbRad->setFocus();
}

void frmAutoAdjust::cmdApply_Click() {
  static constexpr Limits kRadius{kLeastRadius, "The minimum radius is 1 pixel.", kMostRadius,
                                  "The maximum radius is 10 pixels!"};
  static constexpr Limits kThreshold{0, "The minimum luminance background is 0.", kMostThreshold,
                                     "The maximum luminance background is 50!"};
  std::optional<double> radius = NumberIn(txbRad);
  if (radius) radius = std::fabs(*radius);
  if (!Take(radius, kRadius, txbRad, cv.AutoRadius)) return;
  if (!Take(NumberIn(txbThresh), kThreshold, txbThresh, cv.AutoThreshold)) return;
  cv.AutoAdjustOn = true;
  accept();
}

bool frmAutoAdjust::Take(std::optional<double> number, const Limits& limits, QLineEdit* box, int& value) {
  if (!number) {
    os.Message("Non-Numeric Input!", "DATA ENTRY ERROR");
    return ReturnTo(box), false;
  }
  const int rounded = RoundEven(std::clamp(*number, -1e6, 1e6));
  value = std::clamp(rounded, limits.least, limits.most);
  if (value == rounded) return true;
  if (rounded > limits.most)
    os.Message(limits.tooLarge, "MAXIMUM VALUE");
  else
    os.Message(limits.tooSmall, "MINIMUM VALUE");
  box->setText(QString::number(value));
  return ReturnTo(box), false;
}

void frmAutoAdjust::ReturnTo(QLineEdit* box) {
  box->setFocus();
  box->selectAll();
}

void frmAutoAdjust::reject() {
  cv.AutoAdjustOn = false;
  QDialog::reject();
}

}  // namespace corvane
