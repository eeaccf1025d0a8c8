#pragma once

#include <QImage>
#include <QScrollBar>
#include <QWidget>
#include <filesystem>
#include <memory>

#include "filters/magnifier_geometry.h"
#include "platform/BitmapImage.h"

namespace corvane {

// `picMag`: part of a bitmap file, enlarged 2 to 6 times pixel by pixel. The scroll bars `HScroll` and
// `VScroll` choose the part; Ctrl with the left button enlarges more, Ctrl with the right button less.
class Magnifier : public QWidget {
  Q_OBJECT

 public:
  explicit Magnifier(QWidget* parent = nullptr);

  // Shows a bitmap file. A picture of another size starts in its middle at twice its size; one of the same
  // size keeps place and factor. Shows nothing where the file cannot be read.
  void ShowFile(const std::filesystem::path& path);
  QScrollBar* Horizontal() const { return HScroll; }
  QScrollBar* Vertical() const { return VScroll; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  static constexpr int kLeastFactor = 2;
  static constexpr int kMostFactor = 6;

  void LayOut();
  void Zoom(int factor);
  void SetRanges();
  void SetRange(QScrollBar* bar, int imageLength, int boxLength);
  // Reads the visible part, so that painting needs no file and no memory.
  void ReadPart();
  void Paint();
  QPoint Offset() const;

  QWidget* picMag;
  QScrollBar* HScroll;
  QScrollBar* VScroll;
  std::unique_ptr<BitmapFile> file_;
  QImage part_;       // the image pixels that are visible
  QPoint partStart_;  // where the first of them stands in `picMag`
  QSize size_;        // of the image
  MagnifierBox box_;
  int MagFactor = kLeastFactor;
};

}  // namespace corvane
