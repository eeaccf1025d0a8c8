#include "analysis/HistogramPanel.h"

#include <QEvent>
#include <QPainter>

#include "base/display_bitmap.h"
#include "core/working_files.h"
#include "platform/QtText.h"
#include "widgets/PaintLabels.h"
#include "widgets/controls.h"

namespace corvane {
namespace {

constexpr int kLeft = 20;       // room for the labels that begin left of the graph
constexpr int kBarHeight = 16;  // two more than the clip markers
constexpr int kMarkerTop = 13;
constexpr int kGap = 4;
// The longest label of the count axis: a picture has fewer than 2^31 pixels.
constexpr char kWidestCount[] = "10,000,000,000";

QImage GrayRamp() {
  QImage ramp(256, kBarHeight, QImage::Format_RGB32);
  for (int y = 0; y < kBarHeight; ++y)
    for (int level = 0; level < 256; ++level) ramp.setPixel(level, y, qRgb(level, level, level));
  return ramp;
}

Stroke ClipMarker(int level) {
  const auto x = static_cast<float>(level);
  return {x, 0, x, kMarkerTop, kRed};
}

// Bars and grid are gray on black, so the picture fits a display bitmap.
DisplayBitmap GrayPicture(const QImage& shown) {
  DisplayBitmap picture(shown.width(), shown.height());
  for (int y = 0; y < shown.height(); ++y)
    for (int x = 0; x < shown.width(); ++x)
      picture.View().Row(shown.height() - 1 - y)[x] = static_cast<std::uint8_t>(qGray(shown.pixel(x, y)));
  return picture;
}

}  // namespace

HistogramPanel::HistogramPanel(Form form, QWidget* parent)
    : QWidget(parent),
      picHist(Named(new PictureBox(this), "picHist", "Histogram")),
      picCBar(Named(new PictureBox(this), "picCBar", "Gray level")),
      hasBar_(form == Form::WithGrayBar) {
  picHist->setFixedSize(kGraphWidth, kGraphHeight);
  picHist->SetCoordinates(-1, 257, -1, 162);
  picHist->SetBackground(Qt::black);
  picCBar->setFixedSize(256, kBarHeight);
  picCBar->SetCoordinates(0, 256, 0, kBarHeight);
  picCBar->SetPicture(GrayRamp());
  picCBar->setVisible(hasBar_);
  LayOut();
  Describe();
}

void HistogramPanel::LayOut() {
  const int line = fontMetrics().height();
  const int top = hasBar_ ? line + kGap : line / 2 + kGap;
  picHist->move(kLeft, top);
  int bottom = top + kGraphHeight + qRound(kGap * TextScale(*this)) + line;
  if (hasBar_) {
    picCBar->move(kLeft + 1, bottom + kGap);
    bottom += kGap + kBarHeight + kGap + line;
  }
  setFixedSize(kLeft + kGraphWidth + 16 + fontMetrics().horizontalAdvance(kWidestCount), bottom + 1);
}

void HistogramPanel::changeEvent(QEvent* event) {
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) LayOut();
  QWidget::changeEvent(event);
}

void HistogramPanel::SetLevelAxis(const LevelAxis& axis) {
  axis_ = axis;
  Describe();
  update();
}

void HistogramPanel::DrawHistogram(ModCV& cv) {
  const HistogramGraph graph = GraphHistogram(cv.LumHist);
  cv.LumHistLog = graph.logarithms;
  picHist->SetPicture({});
  picHist->Clear();
  picHist->Draw(graph.strokes);
  TakeState(cv, {cv.LumHist, graph.decades, graph.barScale});
}

void HistogramPanel::Keep(const ModCV& cv, const char* file) {
  const QImage shown = picHist->Flattened();
  const DisplayBitmap picture = GrayPicture(shown);
  const std::filesystem::path target = cv.AppDir / file;
  const bool written = !WriteWorkingBitmap(cv, cv.AppDir / kGrayTemplate, target, picture.View());
  if (!written || !picHist->LoadFile(target)) picHist->SetPicture(shown);
  picHist->Clear();
}

void HistogramPanel::Restore(ModCV& cv, const char* file, const GraphState& state) {
  picHist->Clear();
  if (!picHist->LoadFile(cv.AppDir / file)) {
    picHist->SetPicture({});
    picHist->Draw(GraphHistogram(state.counts).strokes);
    picHist->SetPicture(picHist->Flattened());
    picHist->Clear();
  }
  TakeState(cv, state);
}

void HistogramPanel::TakeState(ModCV& cv, const GraphState& state) {
  state_ = state;
  isMarked_ = false;
  cv.HistDecades = static_cast<float>(state.decades);
  Describe();
  update();
}

void HistogramPanel::Describe() {
  picHist->setAccessibleDescription(ToQt(DescribeHistogram(state_.counts, axis_)));
}

void HistogramPanel::MarkBar(int lowLevel, int highLevel) {
  picCBar->Clear();
  picCBar->Draw(ClipMarker(lowLevel));
  picCBar->Draw(ClipMarker(highLevel));
  picCBar->setAccessibleDescription(
      QString("Clip markers at gray levels %1 and %2").arg(lowLevel).arg(highLevel));
}

void HistogramPanel::MarkClips(int lowLevel, int highLevel) {
  MarkBar(lowLevel, highLevel);
  isMarked_ = true;
  picHist->Clear();
  picHist->Draw(ClipMarker(lowLevel));
  picHist->Draw(ClipMarker(highLevel));
}

void HistogramPanel::ClearMarks() {
  picCBar->Clear();
  picCBar->setAccessibleDescription({});
  isMarked_ = false;
  if (picHist->HasPicture()) picHist->Clear();
}

void HistogramPanel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  Graphscales(painter);
}

// Ends at the line of a count of 1, so that ticks and grid lines meet.
GraphFrame HistogramPanel::Frame() const {
  return {picHist->x(), picHist->y(), kGraphWidth, kGraphHeight - 1, TextScale(*this)};
}

void HistogramPanel::Graphscales(QPainter& painter) const {
  CountAxis counts = LabelCounts(state_.decades, state_.barScale, Frame());
  PaintTicks(*this, painter, counts.ticks);
  // Keeps labels beside their lines at every font height.
  for (std::size_t k = 0; k < counts.labels.size(); ++k)
    counts.labels[k].y = counts.ticks[k].y1 - static_cast<float>(fontMetrics().height()) / 2;
  PaintLabels(*this, painter, counts.labels);
  PaintLabels(*this, painter, LabelLevels(axis_, Frame()));
  if (!hasBar_) return;
  const int line = fontMetrics().height();
  const auto caption = [&](int top, const char* text) {
    painter.drawText(QRect(kLeft, top, kGraphWidth, line), Qt::AlignCenter, QLatin1String(text));
  };
  caption(0, "HISTOGRAM");
  caption(picCBar->geometry().bottom() + 1 + kGap, "GRAY LEVEL");
}

}  // namespace corvane
