#include "luminance/LevelMap.h"

#include <QEvent>
#include <QPainter>
#include <algorithm>

#include "widgets/controls.h"

namespace corvane {
namespace {

constexpr int kSize = 256;
constexpr int kLeft = 28;  // room for the word beside the map
constexpr int kGap = 4;
constexpr int kWordOffset = 15;
constexpr int kWordTop = 50;
constexpr int kLetterStep = 12;

}  // namespace

LevelMap::LevelMap(QWidget* parent)
    : QWidget(parent), picStretch(Named(new PictureBox(this), "picStretch", "Scaling map")) {
  picStretch->setFixedSize(kSize, kSize);
  picStretch->SetCoordinates(0, kSize, 0, kSize);
  picStretch->SetBackground(Qt::black);
  LayOut();
  ShowIdentity();
}

void LevelMap::LayOut() {
  const int line = fontMetrics().height();
  picStretch->move(kLeft, line + kGap);
  setFixedSize(kLeft + kSize + kLeft, picStretch->y() + kSize + kGap + line + 1);
}

void LevelMap::changeEvent(QEvent* event) {
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) LayOut();
  QWidget::changeEvent(event);
}

void LevelMap::Show(std::span<const Stroke> strokes, const QString& meaning) {
  picStretch->Clear();
  picStretch->Draw(strokes);
  picStretch->setAccessibleDescription(meaning);
}

void LevelMap::ShowIdentity() {
  const Stroke identity{0, 0, 255, 255, kWhite};
  Show({&identity, 1}, "Every gray level stays what it is");
}

void LevelMap::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const int line = fontMetrics().height();
  const int below = picStretch->geometry().bottom() + 1 + kGap;
  const auto text = [&](int left, int top, int width, Qt::AlignmentFlag align, const char* words) {
    painter.drawText(QRect(left, top, width, line), align, QLatin1String(words));
  };
  text(kLeft, 0, kSize, Qt::AlignHCenter, "SCALING MAP");
  text(kLeft, below, kSize, Qt::AlignHCenter, "INITIAL");
  text(kLeft - 3, below, kLeft, Qt::AlignLeft, "0");
  text(kSize, below, 2 * kLeft, Qt::AlignHCenter, "255");
  const int step = std::max(kLetterStep, line);
  const QRect word(kLeft - kWordOffset, picStretch->y() + kWordTop, kWordOffset, line);
  for (int i = 0; i < 5; ++i)
    painter.drawText(word.translated(0, i * step), Qt::AlignLeft, QChar("FINAL"[i]));
}

}  // namespace corvane
