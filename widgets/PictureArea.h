#pragma once

#include <QFrame>
#include <QLabel>
#include <QScrollBar>
#include <QWidget>
#include <filesystem>

#include "widgets/PictureBox.h"

namespace corvane {

// The viewport `Picture1`, which grows with the window from 611 x 406 pixels on, with the picture inside it,
// which has its own size and is moved by the scroll bars `hsbHor` and `vsbVert`. Wheel and Shift+wheel
// scroll, a drag with the middle button pans. Positions are image pixels, y from the bottom row.
class PictureArea : public QWidget {
  Q_OBJECT

 public:
  static constexpr int kWidth = 611;
  static constexpr int kHeight = 406;

  // `pictureName` is the inner picture's control name.
  explicit PictureArea(const char* pictureName, QWidget* parent = nullptr);

  // Shows a bitmap file at its own size: scrolled as the picture before it where that has the same size, else
  // to its top left corner. False, with nothing changed, where
  // the file cannot be read.
  bool LoadPicture(const std::filesystem::path& path);
  // No picture; `text` stands in the viewport instead.
  void ShowEmpty(const QString& text);
  // Fits viewport, coordinates and scroll bars to the picture's size.
  void SizeCheck();
  // Scrolls as little as it takes to show a pixel.
  void ShowPixel(int x, int y);
  // The pixel in the middle of what is seen of the picture, y from the bottom row.
  QPoint Middle() const;
  // Scrolls a pixel there as far as the picture reaches.
  void ShowInMiddle(QPoint pixel);
  // Scrolls by this many screen pixels, right and down.
  void Pan(int dx, int dy);
  // The same by steps, `dy` upwards, as the arrow keys are reported.
  void Step(int dx, int dy);
  // Does what a key pressed on the picture does; false for a key that does nothing.
  bool TakeKey(int key);

  PictureBox* Picture() const { return picture_; }

 Q_SIGNALS:
  void PixelHovered(int x, int y);
  void PixelPressed(int x, int y, Qt::MouseButton button);
  // An arrow key on the picture: one of the two is 1 or -1; up is 1.
  void ArrowPressed(int dx, int dy);
  // The mouse is over the viewport beside the picture, or has left the area.
  void MouseLeft();
  void Scrolled();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void ViewResized();
  void FitBars();
  bool PictureEvent(QEvent* event);
  void Press(QMouseEvent* event);
  void Move(QMouseEvent* event);
  void Wheel(QWheelEvent* event);
  void FitBar(QScrollBar* bar, int pictureLength, int viewLength);
  void MovePicture();
  QPoint ImagePixel(QPoint position) const;

  QFrame* Picture1;
  QLabel* emptyLabel_;
  PictureBox* picture_;
  QScrollBar* hsbHor;
  QScrollBar* vsbVert;
  QPoint panFrom_;
  bool panning_ = false;
};

}  // namespace corvane
