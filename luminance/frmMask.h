#pragma once

#include <QSlider>

#include "luminance/ClipSliders.h"
#include "luminance/LevelMap.h"
#include "luminance/mask.h"
#include "preview/PreviewWindow.h"

namespace corvane {

// Image mask: the darkest and the brightest levels become one gray level. It knows 8-bit pictures only.
class frmMask : public PreviewWindow {
  Q_OBJECT

 public:
  frmMask(ModCV& store, Platform& platform, Desk& windows);

 protected:
  void Apply() override;
  bool RunPreview(ConstGrayView source, GrayView result, Progress& progress) override;
  bool SaveChanged(const ImageSave& save) override;
  void ResetControls() override;
  void MarkGraph() override;
  void EnableControls(bool enabled) override;

 private:
  QWidget* Controls();
  void MasksMoved();
  void ColorMoved();
  void stretchline();
  Mask CurrentMask() const;

  ClipSliders* masks_ = nullptr;
  QSlider* sldClr = nullptr;
  LevelMap* map_;
};

}  // namespace corvane
