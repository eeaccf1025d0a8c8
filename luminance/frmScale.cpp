#include "luminance/frmScale.h"

#include <QGroupBox>
#include <cmath>

#include "core/byte_map.h"
#include "platform/QtText.h"
#include "widgets/controls.h"

namespace corvane {
namespace {

constexpr PreviewTexts kTexts = {
    .name = "frmScale",
    .title = "  Corvane Luminance Scaling:  ",
    .apply = "&Apply Scaling",
    .redoTip = "Show the Scaled Image",
    .save = "&Save Scaling",
};

constexpr MenuItem kOptionsMenu[] = {
    Leading("&Image Information", Dialog::Info), Leading("&Histogram", Dialog::Histogram),  {"-"},
    Leading("Image Mas&k", Window::Mask),        Leading("Image &Filters", Window::Filter),
};

constexpr ToolKey kToolbar[] = {
    {"corvane", "Image Processor", "mnuFileSel", 2},
    {"-"},
    {"mask", "Image Mask", "mnuOptSel", 3},
    {"filter", "Image Filters", "mnuOptSel", 4},
    {"-"},
    {"save", "Save Image As", "mnuFileSel", 0},
    {"info", "Image Information", "mnuOptSel", 0},
    {"hist", "Histogram", "mnuOptSel", 1},
    {"-"},
    {"align", "Align Images", "mnuFileSel", 4},
    {"combine", "Combine Images", "mnuFileSel", 5},
    {"color", "Color Composite", "mnuFileSel", 6},
};

constexpr int kSelectExponent = 6;
constexpr int kBrightness = 7;

}  // namespace

frmScale::frmScale(ModCV& store, Platform& platform, Desk& windows)
    : PreviewWindow(kTexts, store, platform, windows),
      Combo1(Named(new QComboBox, "Combo1", "Scaling curve")),
      map_(new LevelMap) {
  AddMenus(
      kOptionsMenu, [this](int index) { mnuOptSel_Click(index); }, kToolbar);
  for (const Curve& curve : Curves()) Combo1->addItem(ToQt(std::string(curve.caption)));
  WheelOnlyWithFocus(Combo1);
  QWidget* controls = Controls();
  LayOut(controls, map_, {Combo1, clips_->LowSlider(), clips_->HighSlider()});
  connect(Combo1, &QComboBox::currentIndexChanged, this, &frmScale::Combo1_Click);
  connect(clips_, &ClipSliders::Moved, this, &frmScale::SlidersMoved);
}

QWidget* frmScale::Controls() {
  auto* frame = Named(new QGroupBox("Scaling Controls"), "Frame1", "Scaling controls");
  auto* grid = new QGridLayout(frame);
  grid->addWidget(Combo1, 0, 0, 1, 3);
  clips_ = new ClipSliders(grid, {"sldLow", "lblL", "lblLVal"}, "Low Clip", {"sldHigh", "lblH", "lblHVal"},
                           "High Clip", this);
  lblL = frame->findChild<QLabel*>("lblL");
  // "Brightness" needs more room than the caption it replaces.
  grid->setColumnMinimumWidth(0, lblL->fontMetrics().horizontalAdvance("Brightness "));
  return frame;
}

void frmScale::mnuOptSel_Click(int index) {
  switch (index) {
    case 3:
      return HandOver(Window::Mask);
    case 4:
      return HandOver(Window::Filter);
    default:
      return PreviewWindow::mnuOptSel_Click(index);
  }
}

Scaling frmScale::CurrentScaling() const {
  return {
      .mode = ScaleMode, .lowClip = clips_->Low(), .highClip = clips_->High(), .exponent = cv.ScaleExponent};
}

void frmScale::Combo1_Click(int index) {
  if (index == ScaleMode || index < 0) return;
  ScaleMode = index;
  DisableRedo();
  if (index == kSelectExponent && !AskExponent()) return;
  const QString low = index == kBrightness ? "Brightness" : "Low Clip";
  lblL->setText(low);
  clips_->LowSlider()->setAccessibleName(low);
  stretchline();
}

bool frmScale::AskExponent() {
  desk.ShowModal(Dialog::Exponent);
  if (cv.ScaleExponent != 1.0f) return true;
  Combo1->setCurrentIndex(0);
  return false;
}

void frmScale::SlidersMoved() {
  DisableRedo();
  MarkGraph();
  stretchline();
}

void frmScale::stretchline() {
  map_->Show(ScaleMap(CurrentScaling()), QString("%1 from level %2 to level %3")
                                             .arg(Combo1->currentText())
                                             .arg(clips_->Low())
                                             .arg(clips_->High()));
}

void frmScale::MarkGraph() { Panel()->MarkClips(clips_->Low(), clips_->High()); }

void frmScale::ResetControls() {
  clips_->Reset();
  Panel()->MarkBar(clips_->Low(), clips_->High());
}

void frmScale::Enter(State state) {
  PreviewWindow::Enter(state);
  const bool free = state == State::Unchanged || state == State::Undone;
  Combo1->setEnabled(free);
  clips_->SetEnabled(free);
}

bool frmScale::RunPreview(ConstGrayView source, GrayView result) {
  MapBytes(ScaleTable(CurrentScaling()).data(), source.bits, result.bits, source.Size());
  return true;
}

bool frmScale::SaveChanged(const std::filesystem::path& path) {
  return SaveSlot(path,
                  [this] { ScaleData(CurrentScaling(), cv.ImageMin, cv.ImageMax, cv.ImageData.Edit()); });
}

void frmScale::Undo() {
  PreviewWindow::Undo();
  if (cv.ImageChanged || ScaleMode != kSelectExponent) return;
  const float applied = cv.ScaleExponent;
  if (!AskExponent()) return;
  // The kept result is that of the exponent applied.
  if (cv.ScaleExponent != applied) DisableRedo();
  stretchline();
}

}  // namespace corvane
