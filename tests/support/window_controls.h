#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QTimer>
#include <functional>
#include <stdexcept>
#include <string>

namespace corvane {

// A control by its name; a missing one ends the test.
template <class Control>
Control& Find(const QWidget& window, const char* name) {
  auto* control = window.findChild<Control*>(QLatin1String(name));
  if (!control) throw std::runtime_error(std::string("no control ") + name);
  return *control;
}

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
