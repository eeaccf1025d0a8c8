#include "preview/PreviewWindow.h"

#include <QGridLayout>
#include <QVBoxLayout>
#include <new>
#include <utility>

#include "base/files.h"
#include "core/accepted.h"
#include "core/save_image.h"
#include "core/slot_picture.h"
#include "core/working_files.h"
#include "platform/QtText.h"
#include "platform/busy.h"
#include "widgets/controls.h"

namespace corvane {
namespace {

constexpr MenuItem kFileMenu[] = {
    {"&Save Image As", "Ctrl+S"},
    {"-"},
    {.text = "&Image Processor", .shortcut = "Ctrl+I", .opens = Window::Examine},
    {"-"},
    {.text = "&Align Images", .shortcut = "Ctrl+A", .opens = Window::Align},
    {.text = "&Combine Images", .shortcut = "Ctrl+C", .opens = Window::Combine},
    {.text = "&RGB Composite", .shortcut = "Ctrl+R", .opens = Window::Color},
    {"-"},
    {"E&xit"},
};

// Rows of the File menu.
constexpr int kSaveAs = 0;
constexpr int kExit = 8;

constexpr QSize kPreview(320, 240);

// What the window shows while a run lasts. The busy cursor is set on the window alone, because the bar in it
// has another pointer.
class RunDisplay {
 public:
  RunDisplay(QWidget& window, BarProgress* bar, const std::filesystem::path& pointer)
      : window_(window), bar_(bar) {
    window_.setCursor(Qt::BusyCursor);
    if (bar_) bar_->AllowCancel(pointer);
  }
  ~RunDisplay() {
    if (bar_) bar_->Reset();
    window_.unsetCursor();
  }
  RunDisplay(const RunDisplay&) = delete;
  RunDisplay& operator=(const RunDisplay&) = delete;

 private:
  QWidget& window_;
  BarProgress* bar_;
};

}  // namespace

PreviewWindow::PreviewWindow(const PreviewTexts& texts, ModCV& store, Platform& platform, Desk& windows)
    : ToolWindow(texts.name, store, platform, windows),
      panel_(new HistogramPanel(HistogramPanel::Form::WithGrayBar)),
      Image1(Named(new Thumbnail(kPreview), "Image1", "Preview")),
      cmdApply(Named(new QPushButton(texts.apply), "cmdApply")),
      cmdCancel(Named(new QPushButton("&Undo"), "cmdCancel", "Undo")),
      cmdRedo(Named(new QPushButton("&Redo"), "cmdRedo", "Redo")),
      cmdSave(Named(new QPushButton(texts.save), "cmdSave")),
      title_(texts.title),
      countsPadding_(texts.countsPadding) {
  cmdCancel->setToolTip("Return to Original Image");
  cmdRedo->setToolTip(texts.redoTip);
  cmdSave->setToolTip("Save as Working Image");
  for (QPushButton* button : {cmdApply, cmdSave}) button->setAccessibleName(button->text().remove('&'));
  OnClick(cmdApply, [this] { Apply(); });
  OnClick(cmdCancel, [this] { Undo(); });
  OnClick(cmdRedo, [this] { Redo(); });
  OnClick(cmdSave, [this] { SaveAs(); });
}

void PreviewWindow::AddMenus(std::span<const MenuItem> optionsMenu, std::span<const ToolKey> toolbar) {
  AddMenu("mnuFileSel", "&File", kFileMenu, [this](int index) { mnuFileSel_Click(index); });
  AddMenu("mnuOptSel", "&Options", optionsMenu);
  AddHelpMenu();
  AddToolbar(toolbar);
}

void PreviewWindow::LayOut(QWidget* controls, QWidget* side, std::initializer_list<QWidget*> tabOrder) {
  auto* left = new QVBoxLayout;
  left->setContentsMargins(0, 12, 0, 0);
  left->addWidget(controls);
  left->addSpacing(12);
  left->addLayout(Buttons());
  left->addStretch();
  auto* center = new QWidget;
  auto* grid = new QGridLayout(center);
  grid->setHorizontalSpacing(16);
  grid->addWidget(panel_, 0, 0, Qt::AlignLeft | Qt::AlignTop);
  grid->addWidget(Image1->InFrame(), 0, 1, Qt::AlignCenter);
  grid->addLayout(left, 1, 0);
  grid->addWidget(side, 1, 1, Qt::AlignCenter);
  setCentralWidget(center);
  layout()->setSizeConstraint(QLayout::SetFixedSize);

  QWidget* before = nullptr;
  const auto next = [&before](QWidget* control) {
    if (before) setTabOrder(before, control);
    before = control;
  };
  for (QWidget* control : tabOrder) next(control);
  for (QWidget* button : {cmdApply, cmdCancel, cmdRedo, cmdSave}) next(button);
  (*tabOrder.begin())->setFocus();
}

QBoxLayout* PreviewWindow::Buttons() {
  auto* row = new QHBoxLayout;
  for (QPushButton* button : {cmdApply, cmdCancel, cmdRedo, cmdSave}) row->addWidget(button);
  return row;
}

void PreviewWindow::Open() {
  ShowTitle();
  ResetControls();
  ReadSlot();
}

void PreviewWindow::ShowTitle() { setWindowTitle(title_ + ToQt(cv.SlotName[cv.CurrentSlot])); }

std::filesystem::path PreviewWindow::ResultFile() const { return cv.AppDir / kTempBitmap; }

void PreviewWindow::ReadSlot() {
  const Busy busy(os);
  if (!LoadUnchanged()) {
    cv.DisplayBits = {};
    DescribeDisplayBitmap(cv, 0, 0);
  }
  CountUnchanged();
  Enter(cv.DisplayBits.empty() ? State::Missing : State::Unchanged);
}

bool PreviewWindow::LoadUnchanged() {
  if (!LoadSlotPicture(cv, os, cv.CurrentSlot)) return false;
  if (ShowPreview(SlotFile())) return true;
  Refuse(os, NotEnoughMemory());
  return false;
}

bool PreviewWindow::ShowPreview(const std::filesystem::path& picture) {
  const bool shown = Image1->LoadFile(picture);
  PreviewShown(picture);
  return shown;
}

void PreviewWindow::CountUnchanged() {
  cv.LumHist.fill(0);
  cv.LumHistLog.fill(0);
  CountPixels(cv.Display(), cv.LumHist);
  GraphUnchanged();
}

void PreviewWindow::GraphUnchanged() {
  panel_->DrawHistogram(cv);
  panel_->Keep(cv, kHist1);
  unchangedGraph_ = panel_->State();
}

void PreviewWindow::Enter(State state) {
  state_ = state;
  if (state == State::Running) return cmdApply->setEnabled(false);
  const bool changed = state == State::Changed;
  const bool unchanged = state == State::Unchanged || state == State::Undone;
  cv.ImageChanged = changed;
  cmdApply->setEnabled(unchanged);
  cmdCancel->setEnabled(changed);
  cmdRedo->setEnabled(state == State::Undone);
  cmdSave->setEnabled(changed);
  EnableItem("mnuFileSel", kSaveAs, state != State::Missing);
  for (const Window window : {Window::Align, Window::Combine, Window::Color}) EnableItem(window, !changed);
  for (const Dialog dialog : {Dialog::Info, Dialog::Histogram}) EnableItem(dialog, unchanged);
  EnableControls(unchanged);
}

void PreviewWindow::DisableRedo() {
  if (state_ == State::Undone) Enter(State::Unchanged);
}

void PreviewWindow::mnuFileSel_Click(int index) {
  switch (index) {
    case kSaveAs:
      return SaveAs();
    case kExit:
      return Exit();
  }
}

void PreviewWindow::Leave(Window next) {
  if (KeepWorkingImage(cv, os)) SwitchTo(next);
}

void PreviewWindow::OnUnload() {
  ToolWindow::OnUnload();
  if (!cv.KeepTempFiles) DeleteToolFiles(cv.AppDir);
}

void PreviewWindow::CancelRun() {
  if (bar_) bar_->Cancel();
}

Progress& PreviewWindow::RunProgress() { return bar_ ? static_cast<Progress&>(*bar_) : noBar_; }

void PreviewWindow::Apply() {
  const Run run(*this);
  DisableRedo();
  QWidget* focus = focusWidget();
  const Outcome outcome = MakeResult();
  if (outcome == Outcome::Done) return ShowResult();
  if (outcome == Outcome::Cancelled) QuietCopy(SlotFile(), ResultFile());
  Enter(State::Unchanged);
  if (focus) focus->setFocus();
  if (outcome == Outcome::Cancelled && !IsClosing())
    os.Message("Calculation cancelled !", "CANCEL CONFIRMATION");
}

// The result in DisplayBits, "temp.bmp" and the preview, or all of them as before.
PreviewWindow::Outcome PreviewWindow::MakeResult() try {
  if (!ReadSource()) return Outcome::Failed;
  const ConstGrayView source = cv.Display();
  ReplaceSize(result_, source.Size());
  const GrayView result{result_.data(), source.width, source.height, source.stride};
  if (!Calculate(source, result)) return Outcome::Cancelled;
  return TakeResult(result) ? Outcome::Done : Outcome::Failed;
} catch (const std::bad_alloc&) {
  Refuse(os, NotEnoughMemory());
  ShowPreview(SlotFile());
  return Outcome::Failed;
}

bool PreviewWindow::ReadSource() {
  const Busy busy(os);
  return LoadSlotPicture(cv, os, cv.CurrentSlot);
}

// False once the user has cancelled.
bool PreviewWindow::Calculate(ConstGrayView source, GrayView result) {
  Enter(State::Running);
  const RunDisplay display(*this, bar_, cv.AppDir / kCancelIcon);
  return RunPreview(source, result, RunProgress()) && !(bar_ && bar_->Cancelled());
}

bool PreviewWindow::TakeResult(GrayView result) {
  const Busy busy(os);
  if (!Accepted(os, WriteWorkingBitmap(cv, SlotFile(), ResultFile(), result))) return false;
  if (!ShowPreview(ResultFile())) throw std::bad_alloc();
  std::swap(cv.DisplayBits, result_);
  return true;
}

void PreviewWindow::ShowResult() {
  const Busy busy(os);
  cv.LumHist.fill(0);
  cv.LumHistLog.fill(0);
  if (countsPadding_)
    CountBytes({cv.DisplayBits.data(), cv.DisplayBits.size()}, cv.LumHist);
  else
    CountPixels(cv.Display(), cv.LumHist);
  panel_->DrawHistogram(cv);
  panel_->Keep(cv, kHist2);
  changedGraph_ = panel_->State();
  Enter(State::Changed);
}

void PreviewWindow::Undo() {
  const Busy busy(os);
  if (!LoadUnchanged()) return;
  cv.LumHist = unchangedGraph_.counts;
  panel_->Restore(cv, kHist1, unchangedGraph_);
  MarkGraph();
  Enter(State::Undone);
}

void PreviewWindow::Redo() {
  const Busy busy(os);
  if (!Accepted(os, LoadDisplayBits(cv, ResultFile()))) return DisableRedo();
  ShowPreview(ResultFile());
  cv.LumHist = changedGraph_.counts;
  panel_->Restore(cv, kHist2, changedGraph_);
  Enter(State::Changed);
}

void PreviewWindow::SaveAs() {
  const Run run(*this);
  const auto target = AskSaveFile(cv, os, SaveRequest(cv, "Save Image As..."));
  if (!target) return;
  const bool changed = cv.ImageChanged;
  const ImageSave save{.path = target->path,
                       .slot = cv.CurrentSlot,
                       .picture = changed ? ResultFile() : SlotFile(),
                       .precision = SlotPrecision(cv, cv.CurrentSlot, cv.Width(), cv.Height())};
  const bool saved = target->kind == ImageKind::Bitmap ? SaveBitmap(cv, os, save)
                     : changed                         ? SaveChanged(save)
                                                       : SaveFits(cv, os, desk, save, [] {});
  if (saved) ShowSaved(changed);
}

bool PreviewWindow::SaveChanged(const ImageSave& save) {
  const bool saved = SaveFits(cv, os, desk, save, [this] { RunOnData(RunProgress()); });
  if (bar_) bar_->Reset();
  return saved;
}

void PreviewWindow::ShowSaved(bool wasChanged) {
  ShowTitle();
  if (wasChanged) ResetControls();
  const bool renderedAgain = cv.BytesPerPixel != 1;
  if (renderedAgain) {
    const bool isMarked = !wasChanged && panel_->IsMarked();
    DeleteToolFiles(cv.AppDir);
    if (!ShowPreview(SlotFile())) return ReadSlot();
    GraphUnchanged();  // counted when the picture was rendered
    if (isMarked) MarkGraph();
    return Enter(State::Unchanged);
  }
  if (!wasChanged) return;
  QuietRename(cv.AppDir / kHist2, cv.AppDir / kHist1);
  unchangedGraph_ = changedGraph_;
  panel_->Restore(cv, kHist1, unchangedGraph_);
  ShowPreview(SlotFile());
  Enter(State::Unchanged);
}

}  // namespace corvane
