#include "widgets/PictureArea.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QWheelEvent>
#include <algorithm>

#include "widgets/controls.h"

namespace corvane {
namespace {

constexpr int kLineStep = 24;
constexpr int kNotch = 120;  // what a wheel reports for one notch
constexpr int kNotchPixels = 72;

QScrollBar* MakeBar(Qt::Orientation orientation, const char* name, const QString& accessibleName) {
  auto* bar = Named(new QScrollBar(orientation), name, accessibleName);
  bar->setSingleStep(kLineStep);
  bar->setFocusPolicy(Qt::NoFocus);
  QSizePolicy policy = bar->sizePolicy();
  policy.setRetainSizeWhenHidden(true);  // the window keeps its layout whatever is shown
  bar->setSizePolicy(policy);
  bar->hide();
  return bar;
}

}  // namespace

PictureArea::PictureArea(const char* pictureName, QWidget* parent)
    : QWidget(parent),
      Picture1(Named(new QFrame, "Picture1", "Viewport")),
      emptyLabel_(PlainLabel({}, Picture1)),
      picture_(Named(new PictureBox(Picture1), pictureName, "Picture")),
      hsbHor(MakeBar(Qt::Horizontal, "hsbHor", "Scroll left and right")),
      vsbVert(MakeBar(Qt::Vertical, "vsbVert", "Scroll up and down")) {
  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setSpacing(0);
  grid->addWidget(Picture1, 0, 0);
  grid->addWidget(vsbVert, 0, 1);
  grid->addWidget(hsbHor, 1, 0);
  grid->setRowStretch(0, 1);
  grid->setColumnStretch(0, 1);
  Picture1->setMinimumSize(kWidth, kHeight);
  Picture1->resize(kWidth, kHeight);
  Picture1->setAutoFillBackground(true);
  emptyLabel_->setAlignment(Qt::AlignCenter);
  emptyLabel_->setForegroundRole(QPalette::PlaceholderText);
  emptyLabel_->setAttribute(Qt::WA_TransparentForMouseEvents);
  picture_->setFocusPolicy(Qt::StrongFocus);
  for (QWidget* widget : {static_cast<QWidget*>(Picture1), static_cast<QWidget*>(picture_)}) {
    widget->setMouseTracking(true);
    widget->installEventFilter(this);
  }
  connect(hsbHor, &QScrollBar::valueChanged, this, &PictureArea::MovePicture);
  connect(vsbVert, &QScrollBar::valueChanged, this, &PictureArea::MovePicture);
  ShowEmpty({});
}

bool PictureArea::LoadPicture(const std::filesystem::path& path) {
  const QSize before = picture_->PictureSize();
  const QPoint place(hsbHor->value(), vsbVert->value());
  if (!picture_->LoadFile(path)) return false;
  emptyLabel_->hide();
  Picture1->setFrameShape(QFrame::NoFrame);
  Picture1->setBackgroundRole(QPalette::Window);
  SizeCheck();
  if (picture_->PictureSize() == before) Pan(place.x(), place.y());
  return true;
}

void PictureArea::ShowEmpty(const QString& text) {
  picture_->Clear();
  picture_->SetPicture({});
  picture_->unsetCursor();
  emptyLabel_->setText(text);
  emptyLabel_->show();
  Picture1->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
  Picture1->setBackgroundRole(QPalette::Base);
  SizeCheck();
}

void PictureArea::SizeCheck() {
  const QSize size = picture_->HasPicture() ? picture_->PictureSize() : Picture1->size();
  picture_->setGeometry(QRect(QPoint(0, 0), size));
  picture_->SetCoordinates(0, size.width(), 0, size.height());
  for (QScrollBar* bar : {hsbHor, vsbVert}) {
    const QSignalBlocker quiet(bar);
    bar->setValue(0);
  }
  FitBars();
  picture_->update();
}

void PictureArea::ViewResized() {
  emptyLabel_->setGeometry(Picture1->rect());
  picture_->HasPicture() ? FitBars() : SizeCheck();
}

void PictureArea::FitBars() {
  FitBar(hsbHor, picture_->width(), Picture1->width());
  FitBar(vsbVert, picture_->height(), Picture1->height());
  picture_->move(-hsbHor->value(), -vsbVert->value());
}

void PictureArea::FitBar(QScrollBar* bar, int pictureLength, int viewLength) {
  const QSignalBlocker quiet(bar);
  bar->setRange(0, std::max(0, pictureLength - viewLength));
  bar->setPageStep(viewLength);
  bar->setVisible(pictureLength > viewLength);
}

void PictureArea::MovePicture() {
  picture_->move(-hsbHor->value(), -vsbVert->value());
  Q_EMIT Scrolled();
}

void PictureArea::ShowPixel(int x, int y) {
  const auto shown = [](int value, int at, int length) { return std::clamp(value, at + 1 - length, at); };
  hsbHor->setValue(shown(hsbHor->value(), x, Picture1->width()));
  vsbVert->setValue(shown(vsbVert->value(), picture_->height() - 1 - y, Picture1->height()));
}

QPoint PictureArea::Middle() const {
  const QSize seen = picture_->size().boundedTo(Picture1->size());
  return ImagePixel(QPoint(hsbHor->value() + seen.width() / 2, vsbVert->value() + seen.height() / 2));
}

void PictureArea::ShowInMiddle(QPoint pixel) {
  const QPoint place = ImagePixel(pixel);  // from the top
  hsbHor->setValue(place.x() - Picture1->width() / 2);
  vsbVert->setValue(place.y() - Picture1->height() / 2);
}

void PictureArea::Pan(int dx, int dy) {
  hsbHor->setValue(hsbHor->value() + dx);
  vsbVert->setValue(vsbVert->value() + dy);
}

void PictureArea::Step(int dx, int dy) { Pan(dx * kLineStep, -dy * kLineStep); }

bool PictureArea::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Wheel) {
    Wheel(static_cast<QWheelEvent*>(event));
    return true;
  }
  if (watched == picture_) return PictureEvent(event);
  if (event->type() == QEvent::Resize) ViewResized();
  if (event->type() == QEvent::MouseMove) Q_EMIT MouseLeft();
  return false;
}

bool PictureArea::PictureEvent(QEvent* event) {
  switch (event->type()) {
    // Mouse events end here: what is not taken would go on to the viewport around the picture.
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:  // the second of two quick presses
      Press(static_cast<QMouseEvent*>(event));
      return true;
    case QEvent::MouseMove:
      Move(static_cast<QMouseEvent*>(event));
      return true;
    case QEvent::MouseButtonRelease:
      if (static_cast<QMouseEvent*>(event)->button() == Qt::MiddleButton) panning_ = false;
      return true;
    case QEvent::KeyPress:
      return TakeKey(static_cast<QKeyEvent*>(event)->key());
    case QEvent::Leave:
      Q_EMIT MouseLeft();
      return false;
    default:
      return false;
  }
}

void PictureArea::Press(QMouseEvent* event) {
  if (event->button() == Qt::MiddleButton) {
    panning_ = true;
    panFrom_ = event->globalPosition().toPoint();
    return;
  }
  if (!picture_->HasPicture()) return;
  picture_->setFocus(Qt::MouseFocusReason);
  const QPoint pixel = ImagePixel(event->position().toPoint());
  Q_EMIT PixelPressed(pixel.x(), pixel.y(), event->button());
}

void PictureArea::Move(QMouseEvent* event) {
  if (panning_) {
    const QPoint now = event->globalPosition().toPoint();
    Pan(panFrom_.x() - now.x(), panFrom_.y() - now.y());
    panFrom_ = now;
    return;
  }
  const QPoint position = event->position().toPoint();
  const QPoint pixel = ImagePixel(position);
  if (picture_->HasPicture() && picture_->rect().contains(position))
    Q_EMIT PixelHovered(pixel.x(), pixel.y());
  else
    Q_EMIT MouseLeft();
}

bool PictureArea::TakeKey(int key) {
  switch (key) {
    case Qt::Key_Left:
      Q_EMIT ArrowPressed(-1, 0);
      return true;
    case Qt::Key_Right:
      Q_EMIT ArrowPressed(1, 0);
      return true;
    case Qt::Key_Up:
      Q_EMIT ArrowPressed(0, 1);
      return true;
    case Qt::Key_Down:
      Q_EMIT ArrowPressed(0, -1);
      return true;
    default:
      return false;
  }
}

void PictureArea::Wheel(QWheelEvent* event) {
  QPoint distance = event->pixelDelta();
  if (distance.isNull()) distance = event->angleDelta() * kNotchPixels / kNotch;
  if (event->modifiers() & Qt::ShiftModifier && distance.x() == 0) distance = distance.transposed();
  Pan(-distance.x(), -distance.y());
  event->accept();
}

QPoint PictureArea::ImagePixel(QPoint position) const {
  return {position.x(), picture_->height() - 1 - position.y()};
}

}  // namespace corvane
