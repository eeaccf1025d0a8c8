#pragma once

#include <QGridLayout>
#include <QLabel>
#include <QSlider>
#include <QWidget>

namespace corvane {

// The names of a slider for gray levels and of the labels beside it.
struct LevelSliderNames {
  const char* slider;
  const char* caption;  // the label's name
  const char* value;
};

// A row of a grid: caption, slider 0..255, the level in digits. Returns the slider.
QSlider* AddLevelSlider(QGridLayout* grid, const LevelSliderNames& names, const char* caption, int level);

// A low and a high level that the user cannot bring closer together than 16.
class ClipSliders : public QObject {
  Q_OBJECT

 public:
  static constexpr int kLeastDistance = 16;

  // Fills two rows of a grid.
  ClipSliders(QGridLayout* grid, const LevelSliderNames& lowNames, const char* lowCaption,
              const LevelSliderNames& highNames, const char* highCaption, QObject* parent);

  int Low() const { return sldLow->value(); }
  int High() const { return sldHigh->value(); }
  // 0 and 255.
  void Reset();
  void SetEnabled(bool enabled);
  QSlider* LowSlider() const { return sldLow; }
  QSlider* HighSlider() const { return sldHigh; }

 Q_SIGNALS:
  void Moved();

 private:
  void LowMoved(int level);
  void HighMoved(int level);

  QSlider* sldLow;
  QSlider* sldHigh;
};

}  // namespace corvane
