#include "luminance/PreviewWindow.h"

#include <QFrame>
#include <QGridLayout>
#include <QVBoxLayout>
#include <new>
#include <utility>

#include "core/bitmap_file.h"
#include "core/files.h"
#include "core/fits_writer.h"
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
    Leading("&Image Processor", Window::Examine, "Ctrl+I"),
    {"-"},
    Leading("&Align Images", Window::Align, "Ctrl+A"),
    Leading("&Combine Images", Window::Combine, "Ctrl+C"),
    Leading("&RGB Composite", Window::Color, "Ctrl+R"),
    {"-"},
    {"E&xit"},
};

constexpr QSize kPreview(320, 240);

}  // namespace

PreviewWindow::PreviewWindow(const PreviewTexts& texts, ModCV& store, Platform& platform, Desk& windows)
    : ToolWindow(texts.name, store, platform, windows),
      panel_(new HistogramPanel(HistogramPanel::Form::WithGrayBar)),
      Image1(Named(new Thumbnail(kPreview), "Image1", "Preview")),
      cmdApply(Named(new QPushButton(texts.apply), "cmdApply")),
      cmdCancel(Named(new QPushButton("&Undo"), "cmdCancel", "Undo")),
      cmdRedo(Named(new QPushButton("&Redo"), "cmdRedo", "Redo")),
      cmdSave(Named(new QPushButton(texts.save), "cmdSave")),
      title_(texts.title) {
  cmdCancel->setToolTip("Return to Original Image");
  cmdRedo->setToolTip(texts.redoTip);
  cmdSave->setToolTip("Save as Working Image");
  for (QPushButton* button : {cmdApply, cmdSave}) button->setAccessibleName(button->text().remove('&'));
  OnClick(cmdApply, [this] { Apply(); });
  OnClick(cmdCancel, [this] { Undo(); });
  OnClick(cmdRedo, [this] { Redo(); });
  OnClick(cmdSave, [this] { mnuFileSel_Click(0); });
}

void PreviewWindow::AddMenus(std::span<const MenuItem> optionsMenu, Handler optionsHandler,
                             std::span<const ToolKey> toolbar) {
  AddMenu("mnuFileSel", "&File", kFileMenu, [this](int index) { mnuFileSel_Click(index); });
  AddMenu("mnuOptSel", "&Options", optionsMenu, std::move(optionsHandler));
  AddHelpMenu();
  AddToolbar(toolbar);
}

void PreviewWindow::LayOut(QWidget* controls, QWidget* side, std::initializer_list<QWidget*> tabOrder) {
  auto* frame = new QFrame;
  frame->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
  frame->setFixedSize(kPreview + QSize(8, 8));
  auto* around = new QGridLayout(frame);
  around->setContentsMargins(0, 0, 0, 0);
  around->addWidget(Image1, 0, 0, Qt::AlignCenter);

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
  grid->addWidget(frame, 0, 1, Qt::AlignCenter);
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
  if (Image1->LoadFile(SlotFile())) return true;
  os.Message(NotEnoughMemory().text, NotEnoughMemory().title);
  return false;
}

void PreviewWindow::CountUnchanged() {
  cv.LumHist.fill(0);
  cv.LumHistLog.fill(0);
  CountPixels(cv.Display(), cv.LumHist);
  panel_->DrawHistogram(cv);
  panel_->Keep(cv, kHist1);
  unchangedGraph_ = panel_->State();
}

void PreviewWindow::Enter(State state) {
  state_ = state;
  const bool changed = state == State::Changed;
  const bool unchanged = state == State::Unchanged || state == State::Undone;
  cv.ImageChanged = changed;
  cmdApply->setEnabled(unchanged);
  cmdCancel->setEnabled(changed);
  cmdRedo->setEnabled(state == State::Undone);
  cmdSave->setEnabled(changed);
  EnableItem("mnuFileSel", 0, state != State::Missing);
  for (const int index : {4, 5, 6}) EnableItem("mnuFileSel", index, !changed);
  for (const int index : {0, 1}) EnableItem("mnuOptSel", index, unchanged);
}

void PreviewWindow::DisableRedo() {
  if (state_ == State::Undone) Enter(State::Unchanged);
}

void PreviewWindow::mnuFileSel_Click(int index) {
  switch (index) {
    case 0:
      return SaveAs();
    case 2:
      return HandOver(Window::Examine);
    case 4:
      return HandOver(Window::Align);
    case 5:
      return HandOver(Window::Combine);
    case 6:
      return HandOver(Window::Color);
    case 8:
      return Exit();
  }
}

void PreviewWindow::mnuOptSel_Click(int index) {
  switch (index) {
    case 0:
      return desk.ShowModal(Dialog::Info);
    case 1:
      return desk.ShowModal(Dialog::Histogram);
  }
}

void PreviewWindow::HandOver(Window next) {
  if (KeepWorkingImage(cv, os)) SwitchTo(next);
}

void PreviewWindow::OnUnload() {
  ToolWindow::OnUnload();
  if (!cv.KeepTempFiles) DeleteToolFiles(cv.AppDir);
}

void PreviewWindow::Apply() {
  DisableRedo();
  const Busy busy(os);
  if (!MakeResult()) return;
  cv.LumHist.fill(0);
  cv.LumHistLog.fill(0);
  CountBytes({cv.DisplayBits.data(), cv.DisplayBits.size()}, cv.LumHist);
  panel_->DrawHistogram(cv);
  panel_->Keep(cv, kHist2);
  changedGraph_ = panel_->State();
  Enter(State::Changed);
}

// The result in DisplayBits, "temp.bmp" and the preview, or all of them as before.
bool PreviewWindow::MakeResult() try {
  if (!LoadSlotPicture(cv, os, cv.CurrentSlot)) return false;
  const ConstGrayView source = cv.Display();
  ReplaceSize(result_, source.Size());
  const GrayView result{result_.data(), source.width, source.height, source.stride};
  if (!RunPreview(source, result)) return false;
  if (const auto refusal = WriteDisplayBitmap(SlotFile(), ResultFile(), result)) {
    os.Message(refusal->text, refusal->title);
    return false;
  }
  if (!Image1->LoadFile(ResultFile())) throw std::bad_alloc();
  std::swap(cv.DisplayBits, result_);
  return true;
} catch (const std::bad_alloc&) {
  os.Message(NotEnoughMemory().text, NotEnoughMemory().title);
  Image1->LoadFile(SlotFile());
  return false;
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
  if (const auto refusal = LoadDisplayBits(cv, ResultFile())) {
    os.Message(refusal->text, refusal->title);
    return DisableRedo();
  }
  Image1->LoadFile(ResultFile());
  cv.LumHist = changedGraph_.counts;
  panel_->Restore(cv, kHist2, changedGraph_);
  Enter(State::Changed);
}

void PreviewWindow::SaveAs() {
  const auto target = AskSaveFile(cv, os, SaveRequest(cv, "Save Image As..."));
  if (!target) return;
  const bool changed = cv.ImageChanged;
  const std::filesystem::path shown = changed ? ResultFile() : SlotFile();
  const bool saved = target->kind == ImageKind::Bitmap ? SaveBitmap(cv, os, shown, target->path)
                     : changed                         ? SaveChanged(target->path)
                                                       : SaveSlot(target->path, [] {});
  if (saved && CommitSave(cv, os, cv.CurrentSlot, target->path, shown)) ShowSaved(changed);
}

bool PreviewWindow::SaveSlot(const std::filesystem::path& path, const std::function<void()>& operation) {
  const int code = SlotPrecision(cv, cv.CurrentSlot, cv.Width(), cv.Height());
  return SaveFits(cv, os, desk, path, code, [&] {
    return SixteenBitSave(cv, code, [&] {
      operation();
      return true;
    });
  });
}

void PreviewWindow::ShowSaved(bool wasChanged) {
  ShowTitle();
  if (wasChanged) ResetControls();
  const bool renderedAgain = cv.BytesPerPixel != 1;
  if (renderedAgain) {
    DeleteToolFiles(cv.AppDir);
    return ReadSlot();
  }
  if (!wasChanged) return;
  QuietRename(cv.AppDir / kHist2, cv.AppDir / kHist1);
  unchangedGraph_ = changedGraph_;
  panel_->Restore(cv, kHist1, unchangedGraph_);
  Image1->LoadFile(SlotFile());
  Enter(State::Unchanged);
}

}  // namespace corvane
