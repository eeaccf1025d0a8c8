#include "widgets/Thumbnail.h"

#include <QGridLayout>
#include <QPainter>

#include "platform/BitmapImage.h"

namespace corvane {

Thumbnail::Thumbnail(QSize box, Fit fit) : box_(box), fit_(fit) { ShowNothing(); }

bool Thumbnail::LoadFile(const std::filesystem::path& path) {
  const BitmapFile file(path);
  ShowNothing();
  if (!file.IsOpen()) return false;
  const FittedSize fitted = fit_(file.Width(), file.Height(), box_.width(), box_.height());
  const QSize shown(fitted.width, fitted.height);
  picture_ = LoadReduced(file, (QSizeF(shown) * devicePixelRatioF()).toSize());
  setFixedSize(shown);
  return !picture_.isNull();
}

void Thumbnail::ShowNothing() {
  picture_ = {};
  setFixedSize(box_);
  update();
}

QFrame* Thumbnail::InFrame() {
  auto* frame = new QFrame;
  frame->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
  frame->setFixedSize(box_ + QSize(8, 8));
  auto* around = new QGridLayout(frame);
  around->setContentsMargins(0, 0, 0, 0);
  around->addWidget(this, 0, 0, Qt::AlignCenter);
  return frame;
}

void Thumbnail::paintEvent(QPaintEvent*) {
  if (picture_.isNull()) return;
  QPainter painter(this);
  painter.drawImage(rect(), picture_);
}

}  // namespace corvane
