#include "widgets/UpDown.h"

#include <QKeyEvent>
#include <QStyle>
#include <QStyleOptionSpinBox>

#include "base/numeric.h"
#include "base/text.h"

namespace corvane {

UpDown::UpDown(QLineEdit* box, int lowest, int highest, int stepsPerUnit) : box_(box) {
  setRange(lowest, highest);
  setFocusPolicy(Qt::NoFocus);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  lineEdit()->hide();
  const auto follow = [this, stepsPerUnit](const QString& text) {
    const double steps = ParseNumber(text.toStdString()).value_or(0) * stepsPerUnit;
    if (steps >= minimum() && steps <= maximum()) {
      const QSignalBlocker quiet(this);
      setValue(RoundEven(steps));
    }
  };
  follow(box->text());
  connect(box, &QLineEdit::textChanged, this, follow);
  connect(this, &QSpinBox::valueChanged, box, [box, stepsPerUnit](int value) {
    box->setText(QString::fromStdString(ShortestDecimal(static_cast<float>(value) / stepsPerUnit)));
  });
  box->installEventFilter(this);
}

QSize UpDown::sizeHint() const {
  QStyleOptionSpinBox option;
  initStyleOption(&option);
  option.rect = QRect(0, 0, 100, box_->sizeHint().height());
  const QRect arrow = style()->subControlRect(QStyle::CC_SpinBox, &option, QStyle::SC_SpinBoxUp, this);
  return {100 - arrow.left() + 2, box_->sizeHint().height()};
}

bool UpDown::eventFilter(QObject* watched, QEvent* event) {
  if (watched != box_ || event->type() != QEvent::KeyPress || box_->isReadOnly()) return false;
  const int key = static_cast<QKeyEvent*>(event)->key();
  if (key != Qt::Key_Up && key != Qt::Key_Down) return false;
  stepBy(key == Qt::Key_Up ? 1 : -1);
  return true;
}

}  // namespace corvane
