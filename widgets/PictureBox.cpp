#include "widgets/PictureBox.h"

#include <QPaintEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace corvane {

PictureBox::PictureBox(QWidget* parent) : QWidget(parent) {}

bool PictureBox::LoadFile(const std::filesystem::path& path) {
  auto file = std::make_unique<BitmapFile>(path);
  if (!file->IsOpen()) return false;
  file_ = std::move(file);
  picture_ = {};
  update();
  return true;
}

void PictureBox::SetPicture(const QImage& picture) {
  file_.reset();
  picture_ = picture;
  update();
}

QSize PictureBox::PictureSize() const { return file_ ? SizeOf(*file_) : picture_.size(); }

void PictureBox::SetBackground(const QColor& color) {
  background_ = color;
  update();
}

void PictureBox::SetCoordinates(double left, double right, double bottom, double top) {
  left_ = left;
  right_ = right;
  bottom_ = bottom;
  top_ = top;
}

QPoint PictureBox::Pixel(double x, double y) const {
  const double column = (x - left_) * width() / (right_ - left_);
  const double row = (top_ - y) * height() / (top_ - bottom_);
  // A lower edge belongs to the row above it; 1e-6 keeps products like 0.1 * 10 on their pixel.
  return {static_cast<int>(std::floor(column + 1e-6)), static_cast<int>(std::ceil(row - 1e-6)) - 1};
}

void PictureBox::Draw(std::span<const Stroke> strokes) {
  strokes_.insert(strokes_.end(), strokes.begin(), strokes.end());
  update();
}

void PictureBox::Clear() {
  if (strokes_.empty()) return;
  strokes_.clear();
  update();
}

QColor PictureBox::Point(double x, double y) const {
  const QPoint pixel = Pixel(x, y);
  if (!rect().contains(pixel)) return {};
  QImage image(1, 1, QImage::Format_RGB32);
  image.fill(palette().color(QPalette::Window));
  QPainter painter(&image);
  painter.translate(-pixel);
  Paint(painter, QRect(pixel, QSize(1, 1)));
  painter.end();
  return image.pixelColor(0, 0);
}

QImage PictureBox::Flattened() const {
  QImage image(size(), QImage::Format_RGB32);
  image.fill(palette().color(QPalette::Window));
  QPainter painter(&image);
  Paint(painter, rect());
  return image;
}

void PictureBox::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  Paint(painter, event->rect());
}

void PictureBox::Paint(QPainter& painter, const QRect& exposed) const {
  if (background_.isValid()) painter.fillRect(exposed, background_);
  const QRect part = exposed.intersected(QRect(QPoint(0, 0), PictureSize()));
  if (!part.isEmpty()) {
    if (file_)
      painter.drawImage(part.topLeft(), LoadPart(*file_, part));
    else
      painter.drawImage(part.topLeft(), picture_, part);
  }
  for (const Stroke& stroke : strokes_) PaintStroke(painter, stroke);
}

void PictureBox::PaintStroke(QPainter& painter, const Stroke& stroke) const {
  const QPoint a = Pixel(stroke.x1, stroke.y1);
  const QPoint b = Pixel(stroke.x2, stroke.y2);
  const QColor color = ToQt(stroke.color);
  if (a.x() == b.x() || a.y() == b.y()) {
    painter.fillRect(QRect(QPoint(std::min(a.x(), b.x()), std::min(a.y(), b.y())),
                           QPoint(std::max(a.x(), b.x()), std::max(a.y(), b.y()))),
                     color);
    return;
  }
  // On a finer screen the line runs from the middle of its first pixel to the middle of its last.
  const double middle = painter.device()->devicePixelRatioF() > 1 ? 0.5 : 0;
  painter.setPen(QPen(color, 1));
  painter.drawLine(QPointF(a.x() + middle, a.y() + middle), QPointF(b.x() + middle, b.y() + middle));
}

}  // namespace corvane
