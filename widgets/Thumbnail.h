#pragma once

#include <QFrame>
#include <QImage>
#include <QWidget>
#include <filesystem>

#include "base/fit.h"

namespace corvane {

// A bitmap file's picture, reduced to a box where it is larger. The widget takes the size of what it shows.
class Thumbnail : public QWidget {
 public:
  using Fit = FittedSize (*)(int width, int height, int boxWidth, int boxHeight);
  explicit Thumbnail(QSize box, Fit fit = FitInto);

  // False, with nothing shown, where the file cannot be read.
  bool LoadFile(const std::filesystem::path& path);
  void ShowNothing();
  // A sunken frame of the box's size with the thumbnail in its middle.
  QFrame* InFrame();
  // What is shown: screen pixels, as many as there are on a finer screen.
  const QImage& Picture() const { return picture_; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QSize box_;
  Fit fit_;
  QImage picture_;
};

}  // namespace corvane
