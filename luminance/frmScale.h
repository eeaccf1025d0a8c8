#pragma once

#include <QComboBox>
#include <QLabel>

#include "luminance/ClipSliders.h"
#include "luminance/LevelMap.h"
#include "luminance/PreviewWindow.h"
#include "luminance/curves.h"

namespace corvane {

// Luminance scaling: gray levels through a transfer curve between two clip levels.
class frmScale : public PreviewWindow {
  Q_OBJECT

 public:
  frmScale(ModCV& store, Platform& platform, Desk& windows);

 protected:
  void Undo() override;
  bool RunPreview(ConstGrayView source, GrayView result) override;
  bool SaveChanged(const std::filesystem::path& path) override;
  void ResetControls() override;
  void MarkGraph() override;
  void Enter(State state) override;

 private:
  QWidget* Controls();
  void mnuOptSel_Click(int index);
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
