#pragma once

#include <QImage>
#include <QWidget>
#include <filesystem>

namespace corvane {

class BitmapFile;

// `picture` reduced so that each new pixel is the mean of those it covers, channel by channel; a size that is
// not smaller gives the picture itself.
QImage ReducedPicture(const BitmapFile& picture, QSize size);

// A bitmap file's picture, reduced to a box where it is larger. The widget takes the size of what it shows.
class Thumbnail : public QWidget {
 public:
  explicit Thumbnail(QSize box, QWidget* parent = nullptr);

  // False, with nothing shown, where the file cannot be read.
  bool LoadFile(const std::filesystem::path& path);
  void ShowNothing();
  // What is shown: screen pixels, as many as there are on a finer screen.
  const QImage& Picture() const { return picture_; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QSize box_;
  QImage picture_;
};

}  // namespace corvane
