#include "luminance/frmScale.h"

#include <QGroupBox>
#include <cmath>

#include "base/byte_map.h"
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
    {.text = "&Image Information", .opens = Dialog::Info},
    {.text = "&Histogram", .opens = Dialog::Histogram},
    {"-"},
    {.text = "Image Mas&k", .opens = Window::Mask},
    {.text = "Image &Filters", .opens = Window::Filter},
};

constexpr ToolKey kToolbar[] = {
    {.key = "corvane", .tip = "Image Processor", .opens = Window::Examine},
    {"-"},
    {.key = "mask", .tip = "Image Mask", .opens = Window::Mask},
    {.key = "filter", .tip = "Image Filters", .opens = Window::Filter},
    {"-"},
    {.key = "save", .tip = "Save Image As", .menu = "mnuFileSel", .index = 0},
    {.key = "info", .tip = "Image Information", .opens = Dialog::Info},
    {.key = "hist", .tip = "Histogram", .opens = Dialog::Histogram},
    {"-"},
    {.key = "align", .tip = "Align Images", .opens = Window::Align},
    {.key = "combine", .tip = "Combine Images", .opens = Window::Combine},
    {.key = "color", .tip = "Color Composite", .opens = Window::Color},
};

constexpr int kSelectExponent = 6;
constexpr int kBrightness = 7;

}  // namespace

frmScale::frmScale(ModCV& store, Platform& platform, Desk& windows)
    : PreviewWindow(kTexts, store, platform, windows),
      Combo1(Named(new QComboBox, "Combo1", "Scaling curve")),
      map_(new LevelMap) {
  AddMenus(kOptionsMenu, kToolbar);
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

void frmScale::EnableControls(bool enabled) {
  Combo1->setEnabled(enabled);
  clips_->SetEnabled(enabled);
}

bool frmScale::RunPreview(ConstGrayView source, GrayView result, Progress&) {
  MapBytes(ScaleTable(CurrentScaling()).data(), source.bits, result.bits, source.Size());
  return true;
}

void frmScale::RunOnData(Progress&) {
  ScaleData(CurrentScaling(), cv.ImageMin, cv.ImageMax, cv.ImageData.Edit());
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
