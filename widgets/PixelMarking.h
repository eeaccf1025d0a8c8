#pragma once

#include <QLineEdit>
#include <QObject>

#include "base/marker.h"
#include "core/modcv.h"
#include "widgets/PictureArea.h"

namespace corvane {

// The marker on the picture of a PictureArea, which DisplayBits hold: a left press sets it, the arrow
// keys move it, a right press removes it. Its place is MarkX, MarkY; a cross shows it. Three boxes
// describe the marked pixel or, while the pointer is free, the one under it; the arrow keys then
// scroll.
class PixelMarking : public QObject {
  Q_OBJECT

 public:
  struct Boxes {
    QLineEdit* x;
    QLineEdit* y;
    QLineEdit* level;
  };
  PixelMarking(ModCV& store, PictureArea* area, const Boxes& boxes);
  // Follows mouse and keys in the window around the picture: a mouse move there clears the read-out of a free
  // pointer; an arrow key that no control uses acts as on the picture.
  void Watch(QWidget* window);

  // A pixel is marked, so the pointer is not free.
  bool MarkerMode() const { return markerMode_; }
  Mark Marker() const;
  // Marks the nearest pixel of the picture, scrolled into sight.
  void Place(Mark wanted);
  // Removes the marker.
  void Remove();
  // The same once the picture has been replaced, so that there is no cross to remove.
  void Free();
  // The marker in a picture that has replaced another: the nearest pixel, with its cross.
  void Redraw();
  // Draws the cross and changes nothing else.
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
