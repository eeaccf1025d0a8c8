#pragma once

#include <QLineEdit>
#include <QTimer>

namespace corvane {

// A text box that selects its whole text whenever it gets the focus, by the mouse too.
class SelectingBox : public QLineEdit {
 protected:
  void focusInEvent(QFocusEvent* event) override {
    QLineEdit::focusInEvent(event);
    QTimer::singleShot(0, this, &QLineEdit::selectAll);
  }
};

}  // namespace corvane
