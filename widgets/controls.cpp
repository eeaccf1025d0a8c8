#include "widgets/controls.h"

#include <QEvent>
#include <QGridLayout>

namespace corvane {
namespace {

class WheelGuard : public QObject {
 public:
  using QObject::QObject;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::Wheel || static_cast<QWidget*>(watched)->hasFocus()) return false;
    event->ignore();  // what lies under the control may scroll
    return true;
  }
};

}  // namespace

QLabel* PlainLabel(const QString& text, QWidget* parent) {
  auto* label = new QLabel(text, parent);
  label->setTextFormat(Qt::PlainText);
  return label;
}

ReadOnlyBox::ReadOnlyBox(QWidget* parent) : QLineEdit(parent) {
  setReadOnly(true);
  setFocusPolicy(Qt::NoFocus);
  setContextMenuPolicy(Qt::NoContextMenu);
}

bool ReadOnlyBox::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride) {
    event->ignore();
    return false;
  }
  return QLineEdit::event(event);
}

QGroupBox* BoxFrame(const char* name, const char* title, std::initializer_list<BoxRow> rows) {
  auto* group = Named(new QGroupBox(title), name, title);
  auto* grid = new QGridLayout(group);
  int line = 0;
  for (const BoxRow& row : rows) {
    grid->addWidget(Named(PlainLabel(row.caption), row.label), line, 0);
    grid->addWidget(row.box, line++, 1);
    row.box->setAlignment(Qt::AlignRight);
    row.box->setFixedWidth(row.box->fontMetrics().horizontalAdvance("0") * 10);
  }
  return group;
}

void WheelOnlyWithFocus(QWidget* widget) {
  widget->setFocusPolicy(Qt::StrongFocus);  // not by the wheel
  widget->installEventFilter(new WheelGuard(widget));
}

}  // namespace corvane
