#pragma once

#include <QtTest>
#include <QtWidgets>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace corvane {

// A control by its name; a missing one ends the test.
template <class Control>
Control& Find(const QWidget& window, const char* name) {
  auto* control = window.findChild<Control*>(QLatin1String(name));
  if (!control) throw std::runtime_error(std::string("no control ") + name);
  return *control;
}

// The runs of columns (or of rows) in which anything is painted: pixels unlike the part's top left one.
inline std::vector<QRect> InkRuns(const QImage& shown, QRect part, bool ofRows = false) {
  const auto isInked = [&](const QRect& line) {
    for (int y = line.top(); y <= line.bottom(); ++y)
      for (int x = line.left(); x <= line.right(); ++x)
        if (shown.pixel(x, y) != shown.pixel(part.topLeft())) return true;
    return false;
  };
  std::vector<QRect> runs;
  bool wasInked = false;
  for (int i = 0; i < (ofRows ? part.height() : part.width()); ++i) {
    const QRect line = ofRows ? QRect(part.left(), part.top() + i, part.width(), 1)
                              : QRect(part.left() + i, part.top(), 1, part.height());
    const bool inked = isInked(line);
    if (inked && wasInked) runs.back() |= line;
    if (inked && !wasInked) runs.push_back(line);
    wasInked = inked;
  }
  return runs;
}
// While it lives the texts of new windows are this much larger.
class LargerText {
 public:
  explicit LargerText(double factor) {
    QFont font = usual_;
    font.setPointSizeF(usual_.pointSizeF() * factor);
    QApplication::setFont(font);
  }
  ~LargerText() { QApplication::setFont(usual_); }
  LargerText(const LargerText&) = delete;
  LargerText& operator=(const LargerText&) = delete;

 private:
  const QFont usual_ = QApplication::font();
};

inline void Press(const QWidget& window, const char* name) { Find<QAbstractButton>(window, name).click(); }

// Runs `user` once, as soon as a modal window of type `Dialog` is on screen; the loop that the window runs
// calls it.
template <class Dialog, class User>
void WhenShown(User user) {
  auto* timer = new QTimer(qApp);
  QObject::connect(timer, &QTimer::timeout, timer, [timer, user] {
    auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
    if (!dialog) return;
    timer->stop();
    timer->deleteLater();
    user(*dialog);
  });
  timer->start(0);
}

}  // namespace corvane
