#include "luminance/frmMask.h"

#include <QGroupBox>
#include <utility>

#include "core/byte_map.h"
#include "core/save_image.h"
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
    Leading("&Image Information", Dialog::Info),  Leading("&Histogram", Dialog::Histogram),  {"-"},
    Leading("Luminance &Scaling", Window::Scale), Leading("Image &Filters", Window::Filter),
};

constexpr ToolKey kToolbar[] = {
    {"corvane", "Image Processor", "mnuFileSel", 2},
    {"-"},
    {"save", "Save Image As", "mnuFileSel", 0},
    {"info", "Image Information", "mnuOptSel", 0},
    {"hist", "Histogram", "mnuOptSel", 1},
    {"-"},
    {"scale", "Luminance Scaling", "mnuOptSel", 3},
    {"filter", "Image Filters", "mnuOptSel", 4},
    {"-"},
    {"align", "Align Images", "mnuFileSel", 4},
    {"combine", "Combine Images", "mnuFileSel", 5},
    {"color", "Color Composite", "mnuFileSel", 6},
};

}  // namespace

frmMask::frmMask(ModCV& store, Platform& platform, Desk& windows)
    : PreviewWindow(kTexts, store, platform, windows), map_(new LevelMap) {
  AddMenus(
      kOptionsMenu, [this](int index) { mnuOptSel_Click(index); }, kToolbar);
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

void frmMask::mnuOptSel_Click(int index) {
  switch (index) {
    case 3:
      return HandOver(Window::Scale);
    case 4:
      return HandOver(Window::Filter);
    default:
      return PreviewWindow::mnuOptSel_Click(index);
  }
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

void frmMask::Enter(State state) {
  PreviewWindow::Enter(state);
  const bool free = state == State::Unchanged || state == State::Undone;
  masks_->SetEnabled(free);
  sldClr->setEnabled(free);
}

void frmMask::Apply() {
  if (!CurrentMask().Off()) PreviewWindow::Apply();
}

bool frmMask::RunPreview(ConstGrayView source, GrayView result) {
  MapBytes(MaskTable(CurrentMask()).data(), source.bits, result.bits, source.Size());
  return true;
}

bool frmMask::SaveChanged(const std::filesystem::path& path) {
  // The header names the masked image's own file as its origin.
  std::string name = path.filename().string();
  std::swap(cv.SlotName[cv.CurrentSlot], name);
  const bool saved = SaveFits(cv, os, desk, path, 1, {});
  std::swap(cv.SlotName[cv.CurrentSlot], name);
  return saved;
}

}  // namespace corvane
