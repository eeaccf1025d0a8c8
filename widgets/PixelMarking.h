#pragma once

#include <QLineEdit>
#include <QObject>

#include "base/marker.h"
#include "core/modcv.h"
#include "widgets/PictureArea.h"

namespace corvane {

// Marks a pixel of the picture in a PictureArea, which DisplayBits hold: a left press puts the marker, the
// arrow keys move it, a right press takes it away. It is MarkX, MarkY and has a cross over the picture. Three
// boxes read out the marked pixel or, while the pointer is free, the one under it; without a marker the arrow
// keys scroll.
class PixelMarking : public QObject {
  Q_OBJECT

 public:
  struct Boxes {
    QLineEdit* x;
    QLineEdit* y;
    QLineEdit* level;
  };
  PixelMarking(ModCV& store, PictureArea* area, const Boxes& boxes);
  // Everything of a window around the picture: a mouse move there clears the read-out of a free pointer, an
  // arrow key that no control has a use for does what it does on the picture.
  void Watch(QWidget* window);

  // The pointer is not free.
  bool MarkerMode() const { return markerMode_; }
  Mark Marker() const;
  // Marks the nearest pixel of the picture, scrolled into sight.
  void Place(Mark wanted);
  // Takes the marker away.
  void Remove();
  // The same where another picture is shown or none: there is no cross to take away.
  void Free();
  // The marker in a picture that has replaced another: the nearest pixel, with its cross.
  void Redraw();
  // The cross alone.
  void DrawCross(Mark mark);
  void ShowReadout(Mark pixel);
  void ClearReadout();
  // While it is locked the user can neither mark nor move.
  void Lock(bool locked) { locked_ = locked; }

 Q_SIGNALS:
  // MarkX and MarkY have been set.
  void Marked(bool byMouse);
  void Removed();
  void ReadoutShown(int x, int y);
  void ReadoutCleared();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void MoveTo(Mark wanted, bool byMouse);
  void SetMarker(Mark wanted);
  void MouseDown(int x, int y, Qt::MouseButton button);
  void Arrow(int dx, int dy);
  void Leave();

  ModCV& cv;
  PictureArea* area_;
  Boxes boxes_;
  QWidget* window_ = nullptr;
  bool markerMode_ = false;
  bool locked_ = false;
};

}  // namespace corvane
