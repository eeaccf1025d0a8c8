#include "filters/Magnifier.h"

#include <QGridLayout>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

#include "base/numeric.h"
#include "widgets/controls.h"

namespace corvane {

Magnifier::Magnifier(QWidget* parent)
    : QWidget(parent),
      picMag(Named(new QWidget, "picMag", "Image magnifier")),
      HScroll(Named(new QScrollBar(Qt::Horizontal), "HScroll", "Scroll the magnifier left and right")),
      VScroll(Named(new QScrollBar(Qt::Vertical), "VScroll", "Scroll the magnifier up and down")) {
  LayOut();
  picMag->installEventFilter(this);
  picMag->setToolTip("Ctrl + left button enlarges, Ctrl + right button reduces");
  for (QScrollBar* bar : {HScroll, VScroll}) {
    bar->setFocusPolicy(Qt::StrongFocus);
    connect(bar, &QScrollBar::valueChanged, this, &Magnifier::ReadPart);
  }
}

void Magnifier::LayOut() {
  auto* frame = new QFrame;
  frame->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
  frame->setFixedSize(MagnifierBox::kMostWidth + 1 + 2 * frame->frameWidth(),
                      MagnifierBox::kMostHeight + 2 * frame->frameWidth());
  auto* inner = new QGridLayout(frame);
  inner->setContentsMargins(0, 0, 0, 0);
  inner->addWidget(picMag, 0, 0, Qt::AlignLeft | Qt::AlignTop);
  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setSpacing(2);
  grid->addWidget(Named(PlainLabel("IMAGE MAGNIFIER"), "lblMag"), 0, 0, Qt::AlignHCenter);
  grid->addWidget(frame, 1, 0);
  grid->addWidget(HScroll, 2, 0);
  grid->addWidget(VScroll, 1, 1);
}

void Magnifier::ShowFile(const std::filesystem::path& path) {
  file_ = std::make_unique<BitmapFile>(path);
  if (file_->IsOpen() && SizeOf(*file_) != size_) {
    size_ = SizeOf(*file_);
    box_ = MagScale(size_.width(), size_.height());
    picMag->setFixedSize(box_.PixelWidth(), box_.PixelHeight());
    MagFactor = kLeastFactor;
    SetRanges();
    for (QScrollBar* bar : {HScroll, VScroll}) bar->setValue(bar->maximum() / 2);
  }
  ReadPart();
}

void Magnifier::Zoom(int factor) {
  factor = std::clamp(factor, kLeastFactor, kMostFactor);
  if (factor == MagFactor) return;
  MagFactor = factor;
  const auto place = [](const QScrollBar* bar) {
    return bar->maximum() > 0 ? static_cast<double>(bar->value()) / bar->maximum() : 0.0;
  };
  const double across = place(HScroll);
  const double down = place(VScroll);
  SetRanges();
  HScroll->setValue(RoundEven(across * HScroll->maximum()));
  VScroll->setValue(RoundEven(down * VScroll->maximum()));
  ReadPart();
}

void Magnifier::SetRanges() {
  SetRange(HScroll, size_.width(), box_.width);
  SetRange(VScroll, size_.height(), box_.height);
}

void Magnifier::SetRange(QScrollBar* bar, int imageLength, int boxLength) {
  const int most = MagnifierScrollMaximum(imageLength, boxLength, MagFactor);
  bar->setRange(0, most);
  bar->setPageStep(std::max(1, RoundEven(most / 10.0)));
  bar->setSingleStep(std::max(1, RoundEven(most / 20.0)));
}

QPoint Magnifier::Offset() const {
  return {MagnifiedOffset(HScroll->value(), size_.width(), picMag->width(), MagFactor),
          MagnifiedOffset(VScroll->value(), size_.height(), picMag->height(), MagFactor)};
}

void Magnifier::ReadPart() {
  part_ = {};
  if (file_ && file_->IsOpen()) {
    const QPoint offset = Offset();
    const QPoint first = {offset.x() / MagFactor, offset.y() / MagFactor};
    const QPoint last = {(offset.x() + picMag->width() - 1) / MagFactor,
                         (offset.y() + picMag->height() - 1) / MagFactor};
    part_ = LoadPart(*file_, QRect(first, last).intersected(QRect(QPoint(0, 0), size_)));
    partStart_ = first * MagFactor - offset;
  }
  picMag->setAccessibleDescription(QString("%1 times, from column %2 and line %3 on")
                                       .arg(MagFactor)
                                       .arg(HScroll->value() + 1)
                                       .arg(VScroll->value() + 1));
  picMag->update();
}

bool Magnifier::eventFilter(QObject* watched, QEvent* event) {
  if (watched != picMag) return false;
  if (event->type() == QEvent::Paint) {
    Paint();
    return true;
  }
  if (event->type() != QEvent::MouseButtonPress && event->type() != QEvent::MouseButtonDblClick) return false;
  const auto* press = static_cast<QMouseEvent*>(event);
  if (press->modifiers() != Qt::ControlModifier) return false;
  if (press->button() == Qt::LeftButton) Zoom(MagFactor + 1);
  if (press->button() == Qt::RightButton) Zoom(MagFactor - 1);
  return true;
}

void Magnifier::Paint() {
  if (part_.isNull()) return;
  QPainter painter(picMag);
  painter.drawImage(QRect(partStart_, part_.size() * MagFactor), part_);
}

}  // namespace corvane
