#include "widgets/PixelMarking.h"

#include <QKeyEvent>

#include "base/numeric.h"

namespace corvane {

PixelMarking::PixelMarking(ModCV& store, PictureArea* area, const Boxes& boxes)
    : QObject(area), cv(store), area_(area), boxes_(boxes) {
  connect(area, &PictureArea::PixelHovered, this, [this](int x, int y) {
    if (!markerMode_) ShowReadout({x, y});
  });
  connect(area, &PictureArea::PixelPressed, this, &PixelMarking::MouseDown);
  connect(area, &PictureArea::ArrowPressed, this, &PixelMarking::Arrow);
  connect(area, &PictureArea::Scrolled, this, &PixelMarking::ClearReadout);
  connect(area, &PictureArea::MouseLeft, this, &PixelMarking::Leave);
}

void PixelMarking::Watch(QWidget* window) {
  window_ = window;
  QList<QWidget*> around = window->findChildren<QWidget*>();
  around.append(window);
  for (QWidget* widget : around) {
    if (area_->isAncestorOf(widget)) continue;
    widget->setMouseTracking(true);
    widget->installEventFilter(this);
  }
}

bool PixelMarking::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseMove) Leave();
  return watched == window_ && event->type() == QEvent::KeyPress &&
         area_->TakeKey(static_cast<QKeyEvent*>(event)->key());
}

Mark PixelMarking::Marker() const { return {RoundEven(cv.MarkX), RoundEven(cv.MarkY)}; }

void PixelMarking::SetMarker(Mark wanted) {
  const Mark mark = ClampMark(wanted, cv.Width(), cv.Height());
  cv.MarkX = static_cast<float>(mark.x);
  cv.MarkY = static_cast<float>(mark.y);
  area_->Picture()->Clear();
  DrawCross(mark);
}

void PixelMarking::Place(Mark wanted) { MoveTo(wanted, false); }

void PixelMarking::MoveTo(Mark wanted, bool byMouse) {
  SetMarker(wanted);
  markerMode_ = true;
  const Mark mark = Marker();
  area_->ShowPixel(mark.x, mark.y);
  ShowReadout(mark);
  Q_EMIT Marked(byMouse);
}

void PixelMarking::Remove() {
  Free();
  area_->Picture()->Clear();
  ClearReadout();
  Q_EMIT Removed();
}

void PixelMarking::Free() { markerMode_ = false; }

void PixelMarking::Redraw() {
  if (!markerMode_) return;
  SetMarker(Marker());
  Q_EMIT Marked(false);
}

void PixelMarking::DrawCross(Mark mark) { area_->Picture()->Draw(MarkerCross(mark)); }

void PixelMarking::ShowReadout(Mark pixel) {
  if (pixel.x < 0 || pixel.y < 0 || pixel.x >= cv.Width() || pixel.y >= cv.Height()) return;
  boxes_.level->setText(QString::number(cv.Display().At(pixel.x, pixel.y)));
  boxes_.x->setText(QString::number(pixel.x + 1));
  boxes_.y->setText(QString::number(pixel.y + 1));
  Q_EMIT ReadoutShown(pixel.x, pixel.y);
}

void PixelMarking::ClearReadout() {
  for (QLineEdit* box : {boxes_.level, boxes_.x, boxes_.y}) box->clear();
  Q_EMIT ReadoutCleared();
}

void PixelMarking::Leave() {
  if (!markerMode_) ClearReadout();
}

void PixelMarking::MouseDown(int x, int y, Qt::MouseButton button) {
  if (locked_) return;
  if (button == Qt::LeftButton) return MoveTo({x, y}, true);
  if (button == Qt::RightButton) return Remove();
}

void PixelMarking::Arrow(int dx, int dy) {
  if (!markerMode_) return area_->Step(dx, dy);
  if (!locked_) MoveTo({Marker().x + dx, Marker().y + dy}, false);
}

}  // namespace corvane
