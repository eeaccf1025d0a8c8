#pragma once

#include <QLineEdit>
#include <QSpinBox>

namespace corvane {

// The pair of arrows beside a text box: a spin control without a number of its own, whose value is the box's
// number times `stepsPerUnit`. It steps the box, by the box's Up and Down keys too, and follows a number in
// its range that is typed or set there, to the nearest step.
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
