#include "filters/frmFilter.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QVBoxLayout>
#include <cstring>

#include "filters/filter_table.h"
#include "platform/QtText.h"
#include "widgets/controls.h"

namespace corvane {
namespace {

constexpr PreviewTexts kTexts = {
    .name = "frmFilter",
    .title = "  Corvane Image Filter:  ",
    .apply = "&Apply Filter",
    .redoTip = "Show the Scaled Image",
    .save = "&Save Change",
    .countsPadding = false,
};

constexpr MenuItem kOptionsMenu[] = {
    {.text = "&Image Information", .opens = Dialog::Info},
    {.text = "&Histogram", .opens = Dialog::Histogram},
    {"-"},
    {.text = "Luminance &Scaling", .opens = Window::Scale},
    {.text = "Image Mas&k", .opens = Window::Mask},
};

constexpr ToolKey kToolbar[] = {
    {.key = "corvane", .tip = "Image Processor", .opens = Window::Examine},
    {"-"},
    {.key = "save", .tip = "Save Image As", .menu = "mnuFileSel", .index = 0},
    {.key = "info", .tip = "Image Information", .opens = Dialog::Info},
    {.key = "hist", .tip = "Histogram", .opens = Dialog::Histogram},
    {"-"},
    {.key = "scale", .tip = "Luminance Scaling", .opens = Window::Scale},
    {.key = "mask", .tip = "Image Mask", .opens = Window::Mask},
    {"-"},
    {.key = "align", .tip = "Align Images", .opens = Window::Align},
    {.key = "combine", .tip = "Combine Images", .opens = Window::Combine},
    {.key = "color", .tip = "Color Composite", .opens = Window::Color},
};

}  // namespace

frmFilter::frmFilter(ModCV& store, Platform& platform, Desk& windows)
    : PreviewWindow(kTexts, store, platform, windows),
      Combo1(Named(new QComboBox, "Combo1", "Filter")),
      ProgressBar1(Named(new BarProgress(platform), "ProgressBar1", "Calculation progress")),
      magnifier_(new Magnifier) {
  AddMenus(kOptionsMenu, kToolbar);
  for (const FilterEntry& filter : FilterTable()) Combo1->addItem(QLatin1String(filter.caption));
  WheelOnlyWithFocus(Combo1);
  ProgressBar1->setToolTip("While a filter runs, a press here cancels it, as Esc does");
  QWidget* controls = Controls();
  LayOut(controls, magnifier_,
         {Combo1, Opt[0], Opt[1], Opt[2], magnifier_->Horizontal(), magnifier_->Vertical()});
  ShowRunsOn(ProgressBar1);
  connect(Combo1, &QComboBox::currentIndexChanged, this, &frmFilter::Combo1_Click);
  for (int i = 0; i < 3; ++i) connect(Opt[i], &QRadioButton::clicked, this, [this, i] { Opt_Click(i); });
}

QWidget* frmFilter::Controls() {
  auto* frame = Named(new QGroupBox("Image Filters"), "Frame1", "Image filters");
  auto* column = new QVBoxLayout(frame);
  column->addWidget(Combo1);
  column->addWidget(RadiusFrame());
  column->addWidget(PlainLabel("Calculation Progress"));
  column->addWidget(ProgressBar1);
  return frame;
}

QWidget* frmFilter::RadiusFrame() {
  auto* frame = Named(new QWidget, "frRad", "Filter radius");
  auto* row = new QHBoxLayout(frame);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(PlainLabel("Filter Radius"));
  for (int i = 0; i < 3; ++i) {
    Opt[i] = Named(new QRadioButton(QString::number(i + 1)), ("Opt_" + std::to_string(i)).c_str(),
                   QString("Filter radius %1").arg(i + 1));
    row->addWidget(Opt[i]);
  }
  row->addStretch();
  Opt[0]->setChecked(true);
  return frame;
}

void frmFilter::Combo1_Click(int index) {
  if (index == FilterIndex || index < 0) return;
  FilterIndex = index;
  DisableRedo();
  EnableControls(true);
}

void frmFilter::Opt_Click(int index) {
  FilterRadius = index + 1;
  DisableRedo();
}

void frmFilter::EnableControls(bool enabled) {
  Combo1->setEnabled(enabled);
  for (QRadioButton* option : Opt) option->setEnabled(enabled && FilterTable()[FilterIndex].usesRadius);
}

void frmFilter::PreviewShown(const std::filesystem::path& picture) { magnifier_->ShowFile(picture); }

bool frmFilter::RunPreview(ConstGrayView source, GrayView result, Progress& progress) {
  std::memcpy(result.bits, source.bits, source.Size());
  return FilterTable()[FilterIndex].preview({source, result, FilterRadius, progress});
}

void frmFilter::RunOnData(Progress& progress) {
  const FloatImage source = cv.ImageData;
  FilterTable()[FilterIndex].data({source.View(), cv.ImageData.Edit(), FilterRadius, cv.ImageMax, progress});
}

}  // namespace corvane
