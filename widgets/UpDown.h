#pragma once

#include <QLineEdit>
#include <QSpinBox>

namespace corvane {

// The pair of arrows beside a text box: a spin control that shows no number of its own. It follows a whole
// number in its range that is typed or set in the box, and steps it, from the box's Up and Down keys too.
class UpDown : public QSpinBox {
 public:
  UpDown(QLineEdit* box, int lowest, int highest);
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QLineEdit* box_;
};

}  // namespace corvane
