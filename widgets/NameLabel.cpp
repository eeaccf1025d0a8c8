#include "widgets/NameLabel.h"

#include <QPainter>

namespace corvane {

NameLabel::NameLabel(const QString& name) {
  setTextFormat(Qt::PlainText);
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  ShowName(name);
}

void NameLabel::ShowName(const QString& name) {
  setText(name);
  setToolTip("<p>" + name.toHtmlEscaped() + "</p>");
}

void NameLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setPen(palette().color(foregroundRole()));
  painter.drawText(rect(), Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                   fontMetrics().elidedText(text(), Qt::ElideMiddle, width()));
}

}  // namespace corvane
