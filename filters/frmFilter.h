#pragma once

#include <QComboBox>
#include <QRadioButton>
#include <array>

#include "filters/Magnifier.h"
#include "preview/PreviewWindow.h"

namespace corvane {

// Image filters: one of the filter table is run over the current image, with a magnified view of the result.
class frmFilter : public PreviewWindow {
  Q_OBJECT

 public:
  frmFilter(ModCV& store, Platform& platform, Desk& windows);

 protected:
  bool RunPreview(ConstGrayView source, GrayView result, Progress& progress) override;
  void RunOnData(Progress& progress) override;
  void ResetControls() override {}
  void EnableControls(bool enabled) override;
  void PreviewShown(const std::filesystem::path& picture) override;

 private:
  QWidget* Controls();
  QWidget* RadiusFrame();
  void Combo1_Click(int index);
  void Opt_Click(int index);

  QComboBox* Combo1;
  std::array<QRadioButton*, 3> Opt{};
  BarProgress* ProgressBar1;
  Magnifier* magnifier_;
  int FilterIndex = 0;
  int FilterRadius = 1;
};

}  // namespace corvane
