#include "luminance/frmMask.h"

#include <QGroupBox>

#include "base/byte_map.h"
#include "widgets/controls.h"

namespace corvane {
namespace {

constexpr PreviewTexts kTexts = {
    .name = "frmMask",
    .title = "  Corvane Image Mask:  ",
    .apply = "&Apply Mask",
    .redoTip = "Show the Stretched Image",
    .save = "&Save Mask",
};

constexpr MenuItem kOptionsMenu[] = {
    {.text = "&Image Information", .opens = Dialog::Info},
    {.text = "&Histogram", .opens = Dialog::Histogram},
    {"-"},
    {.text = "Luminance &Scaling", .opens = Window::Scale},
    {.text = "Image &Filters", .opens = Window::Filter},
};

constexpr ToolKey kToolbar[] = {
    {.key = "corvane", .tip = "Image Processor", .opens = Window::Examine},
    {"-"},
    {.key = "save", .tip = "Save Image As", .menu = "mnuFileSel", .index = 0},
    {.key = "info", .tip = "Image Information", .opens = Dialog::Info},
    {.key = "hist", .tip = "Histogram", .opens = Dialog::Histogram},
    {"-"},
    {.key = "scale", .tip = "Luminance Scaling", .opens = Window::Scale},
    {.key = "filter", .tip = "Image Filters", .opens = Window::Filter},
    {"-"},
    {.key = "align", .tip = "Align Images", .opens = Window::Align},
    {.key = "combine", .tip = "Combine Images", .opens = Window::Combine},
    {.key = "color", .tip = "Color Composite", .opens = Window::Color},
};

}  // namespace

frmMask::frmMask(ModCV& store, Platform& platform, Desk& windows)
    : PreviewWindow(kTexts, store, platform, windows), map_(new LevelMap) {
  AddMenus(kOptionsMenu, kToolbar);
  QWidget* controls = Controls();
  LayOut(controls, map_, {masks_->LowSlider(), masks_->HighSlider(), sldClr});
  connect(masks_, &ClipSliders::Moved, this, &frmMask::MasksMoved);
  connect(sldClr, &QSlider::valueChanged, this, &frmMask::ColorMoved);
}

QWidget* frmMask::Controls() {
  auto* frame = Named(new QGroupBox("Mask Controls"), "Frame1", "Mask controls");
  auto* grid = new QGridLayout(frame);
  masks_ = new ClipSliders(grid, {"sldLow", "Label1", "lblLow"}, "Low Mask", {"sldHigh", "Label2", "lblHigh"},
                           "High Mask", this);
  sldClr = AddLevelSlider(grid, {"sldClr", "Label3", "lblClr"}, "Mask Color", 0);
  return frame;
}

Mask frmMask::CurrentMask() const {
  return {.low = masks_->Low(), .high = masks_->High(), .color = sldClr->value()};
}

void frmMask::MasksMoved() {
  DisableRedo();
  MarkGraph();
  stretchline();
}

void frmMask::ColorMoved() {
  DisableRedo();
  stretchline();
}

void frmMask::stretchline() {
  const Mask mask = CurrentMask();
  map_->Show(
      MaskMap(mask),
      QString("Levels up to %1 and from %2 on become %3").arg(mask.low).arg(mask.high).arg(mask.color));
}

void frmMask::MarkGraph() { Panel()->MarkClips(masks_->Low(), masks_->High()); }

void frmMask::ResetControls() {
  masks_->Reset();
  sldClr->setValue(0);
  Panel()->MarkBar(masks_->Low(), masks_->High());
  map_->ShowIdentity();
}

void frmMask::EnableControls(bool enabled) {
  masks_->SetEnabled(enabled);
  sldClr->setEnabled(enabled);
}

void frmMask::Apply() {
  if (!CurrentMask().Off()) PreviewWindow::Apply();
}

bool frmMask::RunPreview(ConstGrayView source, GrayView result, Progress&) {
  MapBytes(MaskTable(CurrentMask()).data(), source.bits, result.bits, source.Size());
  return true;
}

bool frmMask::SaveChanged(const ImageSave& save) {
  ImageSave masked = save;
  masked.precision = 1;
  masked.source = save.path.filename().string();  // the masked image is its own origin
  return SaveFits(cv, os, desk, masked, {});
}

}  // namespace corvane
