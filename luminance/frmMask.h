#pragma once

#include <QSlider>

#include "luminance/ClipSliders.h"
#include "luminance/LevelMap.h"
#include "luminance/PreviewWindow.h"
#include "luminance/mask.h"

namespace corvane {

// Image mask: the darkest and the brightest levels become one gray level. It knows 8-bit pictures only.
class frmMask : public PreviewWindow {
  Q_OBJECT

 public:
  frmMask(ModCV& store, Platform& platform, Desk& windows);

 protected:
  void Apply() override;
  bool RunPreview(ConstGrayView source, GrayView result) override;
  bool SaveChanged(const std::filesystem::path& path) override;
  void ResetControls() override;
  void MarkGraph() override;
  void Enter(State state) override;

 private:
  QWidget* Controls();
  void mnuOptSel_Click(int index);
  void MasksMoved();
  void ColorMoved();
  void stretchline();
  Mask CurrentMask() const;

  ClipSliders* masks_ = nullptr;
  QSlider* sldClr = nullptr;
  LevelMap* map_;
};

}  // namespace corvane
