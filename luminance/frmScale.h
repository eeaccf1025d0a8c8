#pragma once

#include <QComboBox>
#include <QLabel>

#include "luminance/ClipSliders.h"
#include "luminance/LevelMap.h"
#include "luminance/curves.h"
#include "preview/PreviewWindow.h"

namespace corvane {

// Luminance scaling: gray levels through a transfer curve between two clip levels.
class frmScale : public PreviewWindow {
  Q_OBJECT

 public:
  frmScale(ModCV& store, Platform& platform, Desk& windows);

 protected:
  void Undo() override;
  bool RunPreview(ConstGrayView source, GrayView result, Progress& progress) override;
  void RunOnData(Progress& progress) override;
  void ResetControls() override;
  void MarkGraph() override;
  void EnableControls(bool enabled) override;

 private:
  QWidget* Controls();
  void Combo1_Click(int index);
  void SlidersMoved();
  // Shows the exponent dialog; false where the curve has become "Linear Scale".
  bool AskExponent();
  void stretchline();
  Scaling CurrentScaling() const;

  QComboBox* Combo1;
  ClipSliders* clips_ = nullptr;
  QLabel* lblL = nullptr;
  LevelMap* map_;
  int ScaleMode = 0;
};

}  // namespace corvane
