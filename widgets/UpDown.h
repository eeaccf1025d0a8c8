#pragma once

#include <QLineEdit>
#include <QSpinBox>

namespace corvane {

// The pair of arrows beside a text box: a spin control that shows no number of its own. Its value is the
// box's number times `stepsPerUnit`. It follows a number in its range that is typed or set in the box, to the
// nearest step, and steps it, from the box's Up and Down keys too.
class UpDown : public QSpinBox {
 public:
  UpDown(QLineEdit* box, int lowest, int highest, int stepsPerUnit = 1);
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QLineEdit* box_;
};

}  // namespace corvane
