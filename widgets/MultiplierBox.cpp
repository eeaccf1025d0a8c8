#include "widgets/MultiplierBox.h"

#include <QHBoxLayout>

#include "base/text.h"
#include "widgets/UpDown.h"
#include "widgets/controls.h"

namespace corvane {
namespace {

constexpr int kSteps = 20;

}  // namespace

MultiplierBox::MultiplierBox(const char* boxName, const char* arrowsName, const QString& accessibleName,
                             const char* text)
    : box_(Named(new SelectingBox, boxName, accessibleName)) {
  box_->setText(QLatin1String(text));
  box_->setFixedWidth(fontMetrics().horizontalAdvance("0.0000000"));
  setFocusProxy(box_);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(0);
  row->addWidget(box_);
  row->addWidget(
      Named(new UpDown(box_, 1, 2 * kSteps, kSteps), arrowsName, accessibleName + " in twentieths"));
}

void MultiplierBox::Show(float multiplier) {
  box_->setText(QString::fromStdString(ShortestDecimal(multiplier)));
}

void MultiplierBox::ReturnToLimit(float limit) {
  Show(limit);
  box_->setFocus();
  box_->selectAll();
}

}  // namespace corvane
