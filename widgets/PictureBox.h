#pragma once

#include <QColor>
#include <QImage>
#include <QWidget>
#include <filesystem>
#include <memory>
#include <span>
#include <vector>

#include "base/drawing.h"
#include "platform/BitmapImage.h"

namespace corvane {

inline QColor ToQt(Color color) { return {color.red, color.green, color.blue}; }

// A picture with user coordinates: a bitmap as background, one screen pixel for each of its own, and a layer
// of strokes over it. Clearing the layer leaves the bitmap.
class PictureBox : public QWidget {
 public:
  explicit PictureBox(QWidget* parent = nullptr);

  // A bitmap file as background. Only the part that is on screen is ever read, so the size of the picture
  // costs nothing. False, with the background unchanged, where the file cannot be read.
  bool LoadFile(const std::filesystem::path& path);
  // A picture in memory as background; a null one removes the background.
  void SetPicture(const QImage& picture);
  bool HasPicture() const { return file_ != nullptr || !picture_.isNull(); }
  QSize PictureSize() const;
  // The color where no picture is; an invalid one lets the parent show through.
  void SetBackground(const QColor& color);

  // Horizontal units from the left to the right edge, vertical ones from the bottom to the top edge. A pixel
  // covers the half-open range of units from its left and lower edge on.
  void SetCoordinates(double left, double right, double bottom, double top);
  QPoint Pixel(double x, double y) const;

  void Draw(std::span<const Stroke> strokes);
  void Draw(const Stroke& stroke) { Draw({&stroke, 1}); }
  void Clear();

  // The color shown at a place, in user coordinates. Invalid outside the box.
  QColor Point(double x, double y) const;
  // Background and strokes as one picture of the box's size.
  QImage Flattened() const;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void Paint(QPainter& painter, const QRect& exposed) const;
  void PaintStroke(QPainter& painter, const Stroke& stroke) const;

  std::unique_ptr<BitmapFile> file_;
  QImage picture_;
  QColor background_;
  std::vector<Stroke> strokes_;
  double left_ = 0;
  double right_ = 1;
  double bottom_ = 0;
  double top_ = 1;
};

}  // namespace corvane
