#include "widgets/Thumbnail.h"

#include <QPainter>
#include <algorithm>
#include <array>
#include <vector>

#include "core/fit.h"
#include "widgets/BitmapImage.h"

namespace corvane {
namespace {

constexpr int kChannels = 3;
using Sums = std::array<std::int64_t, kChannels>;

// The pixels begin .. end - 1 of the long side that pixel `place` of the short side covers.
int Edge(int place, int longSide, int shortSide) {
  return static_cast<int>(static_cast<std::int64_t>(place) * longSide / shortSide);
}

void AddRow(const QRgb* row, int width, std::vector<Sums>& columns) {
  const int count = static_cast<int>(columns.size());
  for (int column = 0; column < count; ++column) {
    const int end = Edge(column + 1, width, count);
    std::uint32_t red = 0;
    std::uint32_t green = 0;
    std::uint32_t blue = 0;
    for (int x = Edge(column, width, count); x < end; ++x) {
      red += row[x] >> 16 & 0xff;
      green += row[x] >> 8 & 0xff;
      blue += row[x] & 0xff;
    }
    Sums& sums = columns[static_cast<std::size_t>(column)];
    sums[0] += red;
    sums[1] += green;
    sums[2] += blue;
  }
}

QRgb Mean(const Sums& sums, std::int64_t count) {
  const auto mean = [&](int channel) {
    return static_cast<int>((sums[static_cast<std::size_t>(channel)] + count / 2) / count);
  };
  return qRgb(mean(0), mean(1), mean(2));
}

}  // namespace

QImage ReducedPicture(const BitmapFile& picture, QSize size) {
  const QSize whole = picture.Size();
  size = size.boundedTo(whole);
  if (size == whole) return picture.Part(QRect(QPoint(0, 0), whole));
  QImage reduced(size, QImage::Format_RGB32);
  if (reduced.isNull()) return {};
  std::vector<Sums> columns(static_cast<std::size_t>(size.width()));
  for (int y = 0; y < size.height(); ++y) {
    const int top = Edge(y, whole.height(), size.height());
    const int rows = Edge(y + 1, whole.height(), size.height()) - top;
    const QImage part = picture.Part(QRect(0, top, whole.width(), rows));
    if (part.isNull()) return {};
    std::fill(columns.begin(), columns.end(), Sums{});
    for (int row = 0; row < rows; ++row)
      AddRow(reinterpret_cast<const QRgb*>(part.constScanLine(row)), whole.width(), columns);
    auto* target = reinterpret_cast<QRgb*>(reduced.scanLine(y));
    for (int x = 0; x < size.width(); ++x) {
      const int covered = Edge(x + 1, whole.width(), size.width()) - Edge(x, whole.width(), size.width());
      target[x] = Mean(columns[static_cast<std::size_t>(x)], static_cast<std::int64_t>(covered) * rows);
    }
  }
  return reduced;
}

Thumbnail::Thumbnail(QSize box, QWidget* parent) : QWidget(parent), box_(box) { ShowNothing(); }

bool Thumbnail::LoadFile(const std::filesystem::path& path) {
  const BitmapFile file(path);
  ShowNothing();
  if (!file.IsOpen()) return false;
  const FittedSize fitted = FitInto(file.Size().width(), file.Size().height(), box_.width(), box_.height());
  const QSize shown(fitted.width, fitted.height);
  picture_ = ReducedPicture(file, (QSizeF(shown) * devicePixelRatioF()).toSize());
  setFixedSize(shown);
  return !picture_.isNull();
}

void Thumbnail::ShowNothing() {
  picture_ = {};
  setFixedSize(box_);
  update();
}

void Thumbnail::paintEvent(QPaintEvent*) {
  if (picture_.isNull()) return;
  QPainter painter(this);
  painter.drawImage(rect(), picture_);
}

}  // namespace corvane
