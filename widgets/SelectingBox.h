#pragma once

#include <QLineEdit>
#include <QTimer>

namespace corvane {

// A text box that selects its whole text whenever it gets the focus, by the mouse too.
class SelectingBox : public QLineEdit {
 protected:
  void focusInEvent(QFocusEvent* event) override {
    QLineEdit::focusInEvent(event);
    // Once a click has placed the cursor. The focus may be gone by then.
    QTimer::singleShot(0, this, [this] {
      if (hasFocus()) selectAll();
    });
  }
};

}  // namespace corvane
