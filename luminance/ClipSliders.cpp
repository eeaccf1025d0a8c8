#include "luminance/ClipSliders.h"

#include "widgets/controls.h"

namespace corvane {
namespace {

constexpr int kPageStep = 16;

}  // namespace

QSlider* AddLevelSlider(QGridLayout* grid, const LevelSliderNames& names, const char* caption, int level) {
  const int row = grid->rowCount();
  auto* label = Named(PlainLabel(caption), names.caption);
  auto* slider = Named(new QSlider(Qt::Horizontal), names.slider, caption);
  auto* value = Named(PlainLabel(QString::number(level)), names.value);
  slider->setRange(0, 255);
  slider->setPageStep(kPageStep);
  slider->setValue(level);
  WheelOnlyWithFocus(slider);
  label->setBuddy(slider);
  value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  value->setFixedWidth(value->fontMetrics().horizontalAdvance("0000"));
  QObject::connect(slider, &QSlider::valueChanged, value,
                   [value](int moved) { value->setText(QString::number(moved)); });
  grid->addWidget(label, row, 0);
  grid->addWidget(slider, row, 1);
  grid->addWidget(value, row, 2);
  return slider;
}

ClipSliders::ClipSliders(QGridLayout* grid, const LevelSliderNames& lowNames, const char* lowCaption,
                         const LevelSliderNames& highNames, const char* highCaption, QObject* parent)
    : QObject(parent),
      sldLow(AddLevelSlider(grid, lowNames, lowCaption, 0)),
      sldHigh(AddLevelSlider(grid, highNames, highCaption, 255)) {
  connect(sldLow, &QSlider::valueChanged, this, &ClipSliders::LowMoved);
  connect(sldHigh, &QSlider::valueChanged, this, &ClipSliders::HighMoved);
}

// Setting a slider back to its limit calls the handler again, with the limit.
void ClipSliders::LowMoved(int level) {
  const int most = High() - kLeastDistance;
  if (level > most) return sldLow->setValue(most);
  Q_EMIT Moved();
}

void ClipSliders::HighMoved(int level) {
  const int least = Low() + kLeastDistance;
  if (level < least) return sldHigh->setValue(least);
  Q_EMIT Moved();
}

void ClipSliders::Reset() {
  sldLow->setValue(0);
  sldHigh->setValue(255);
}

void ClipSliders::SetEnabled(bool enabled) {
  sldLow->setEnabled(enabled);
  sldHigh->setEnabled(enabled);
}

}  // namespace corvane
