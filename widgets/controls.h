#pragma once

#include <initializer_list>

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QString>
#include <QWidget>

namespace corvane {

// Gives a control the name that tools and tests address it by, and what a screen reader says of it.
template <class Widget>
Widget* Named(Widget* widget, const char* name, const QString& accessibleName = {}) {
  widget->setObjectName(QLatin1String(name));
  if (!accessibleName.isEmpty()) widget->setAccessibleName(accessibleName);
  return widget;
}

// A label that shows its text as it is: no markup, whatever a file name or a header card contains.
QLabel* PlainLabel(const QString& text = {}, QWidget* parent = nullptr);

// A text box that only shows a value. It never takes the focus and lets every shortcut of its window through.
class ReadOnlyBox : public QLineEdit {
 public:
  explicit ReadOnlyBox(QWidget* parent = nullptr);

 protected:
  bool event(QEvent* event) override;
};

// A line of a group of boxes: the caption, the name of its label, and the box.
struct BoxRow {
  const char* label;
  const char* caption;
  ReadOnlyBox* box;
};

// A titled group of boxes of one width, right-aligned, each behind its caption.
QGroupBox* BoxFrame(const char* name, const char* title, std::initializer_list<BoxRow> rows);

// Lists, sliders and spin controls change by the wheel only while they have the focus, so that scrolling
// past one changes nothing.
void WheelOnlyWithFocus(QWidget* widget);

}  // namespace corvane
