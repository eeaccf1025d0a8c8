#include "align/frmAlign.h"

#include <QVBoxLayout>
#include <algorithm>

#include "align/centroid.h"
#include "base/files.h"
#include "core/open_image.h"
#include "core/read_out.h"
#include "core/slot_picture.h"
#include "core/startup.h"
#include "core/working_files.h"
#include "platform/QtText.h"
#include "platform/busy.h"
#include "widgets/PictureLayout.h"

namespace corvane {
namespace {

// Rows of the menus that have work of their own.
enum FileItem { kOpen, kClose, kExit = 7 };
enum ModeItem { kCrop, kMosaic, kAutoAdjust = 3 };
constexpr char kModes[] = "mnuModeSel";

constexpr MenuItem kFileMenu[] = {
    {"&Open File", "Ctrl+O"},
    {"&Close File"},
    {"-"},
    {.text = "&Image Processor", .shortcut = "Ctrl+I", .opens = Window::Examine},
    {.text = "&Combine Images", .shortcut = "Ctrl+C", .opens = Window::Combine},
    {.text = "&RGB Composite", .shortcut = "Ctrl+R", .opens = Window::Color},
    {"-"},
    {"E&xit"},
};

constexpr MenuItem kToolMenu[] = {
    {.text = "&Image Information", .opens = Dialog::Info},
    {.text = "&Histogram", .opens = Dialog::Histogram},
};

constexpr MenuItem kModeMenu[] = {
    {.text = "&Crop", .check = true},
    {.text = "&Mosaic", .check = true},
    {"-"},
    {.text = "&Auto-Adjust", .check = true},
};

constexpr ToolKey kToolbar[] = {
    {"open", "Open File", "mnuFileSel", kOpen},
    {"close", "Close File", "mnuFileSel", kClose},
    {"-"},
    {.key = "info", .tip = "Image Information", .opens = Dialog::Info},
    {.key = "hist", .tip = "Histogram", .opens = Dialog::Histogram},
    {"-"},
    {"crop", "Crop Mode", kModes, kCrop},
    {"mosaic", "Mosaic Mode", kModes, kMosaic},
    {"auto", "Auto-Adjust", kModes, kAutoAdjust},
    {"-"},
    {.key = "corvane", .tip = "Image Processor", .opens = Window::Examine},
    {.key = "combine", .tip = "Image Combiner", .opens = Window::Combine},
    {.key = "color", .tip = "RGB Composite", .opens = Window::Color},
};

constexpr char kNoImage[] = "No image is open.\n\nFile > Open File.";
constexpr int kButtonGap = 12;

}  // namespace

frmAlign::frmAlign(ModCV& store, Platform& platform, Desk& windows)
    : ToolWindow("frmAlign", store, platform, windows),
      Combo1(new ImageList("Combo1", "Open images")),
      area_(new PictureArea("picMark")),
      txbX(Named(new ReadOnlyBox, "txbX", "Image width")),
      txbY(Named(new ReadOnlyBox, "txbY", "Image height")),
      txbXX(Named(new ReadOnlyBox, "txbXX", "X alignment")),
      txbYY(Named(new ReadOnlyBox, "txbYY", "Y alignment")),
      txbLum(Named(new ReadOnlyBox, "txbLum", "Luminance")),
      cmdAlign(Named(new QPushButton("&Align and Resize"), "cmdAlign", "Align and Resize")),
      cmdCancel(Named(new QPushButton("&Undo"), "cmdCancel", "Undo")),
      cmdSave(Named(new QPushButton("&Save"), "cmdSave", "Save")),
      lblStatus(Named(PlainLabel(), "lblStatus", "Status")),
      marking_(new PixelMarking(cv, area_, {txbXX, txbYY, txbLum})) {
  setWindowTitle("Corvane Image Aligner");
  AddMenu("mnuFileSel", "&File", kFileMenu, [this](int index) { mnuFileSel_Click(index); });
  AddMenu("mnuToolSel", "&Tools", kToolMenu);
  AddMenu(kModes, "&Mode", kModeMenu, [this](int index) { mnuModeSel_Click(index); });
  AddHelpMenu();
  AddToolbar(kToolbar);
  LayOut();
  Connect();
  ShowNothing(kNoImage);
}

void frmAlign::LayOut() {
  auto* side = new QVBoxLayout;
  side->addWidget(
      BoxFrame("frAlign", "Image", {{"lblX", "Image Width", txbX}, {"lblY", "Image Height", txbY}}));
  side->addWidget(BoxFrame(
      "Frame2", "Alignment",
      {{"lblXX", "X Alignment", txbXX}, {"lblYY", "Y Alignment", txbYY}, {"lblLum", "Luminance", txbLum}}));
  side->addSpacing(kButtonGap);
  for (QPushButton* button : {cmdAlign, cmdCancel, cmdSave}) side->addWidget(button);
  side->addStretch();
  cmdAlign->setToolTip("Bring the marks of all marked images to the same pixel");
  cmdCancel->setToolTip("Return to the Images before the Alignment");
  cmdSave->setToolTip("Save the Aligned Images");

  LayOutAroundPicture(*this, Combo1, area_, side, lblStatus);
}

void frmAlign::Connect() {
  connect(Combo1, &ImageList::Chosen, this, &frmAlign::ShowSlot);
  connect(marking_, &PixelMarking::Marked, this, &frmAlign::Marked);
  connect(marking_, &PixelMarking::Removed, this, &frmAlign::Unmark);
  connect(marking_, &PixelMarking::ReadoutShown, this, [this](int x, int y) { Hover(Mark{x, y}); });
  connect(marking_, &PixelMarking::ReadoutCleared, this, [this] { Hover(std::nullopt); });
  marking_->Watch(this);
  OnClick(cmdAlign, [this] { cmdAlign_Click(); });
  OnClick(cmdCancel, [this] { cmdCancel_Click(); });
  OnClick(cmdSave, [this] { cmdSave_Click(); });
}

void frmAlign::Open() {
  cv.OriginalFiles.clear();
  cv.AutoAdjustOn = false;
  Combo1->Fill(cv);
  if (cv.ImageCount > 0) ShowSlot(cv.CurrentSlot);
  Enter();
  area_->Picture()->setFocus();
}

void frmAlign::mnuFileSel_Click(int index) {
  switch (index) {
    case kOpen:
      return OpenFile();
    case kClose:
      return CloseFile();
    case kExit:
      return Exit();
  }
}

void frmAlign::mnuModeSel_Click(int index) {
  if (index == kAutoAdjust)
    SwitchAutoAdjust();
  else
    AlignMode = AlignMode == kCropMode ? kMosaicMode : kCropMode;
  Enter();
}

void frmAlign::SwitchAutoAdjust() {
  if (cv.ImageCount > 0 && !cv.AutoAdjustOn) return desk.ShowModal(Dialog::AutoAdjust);
  cv.AutoAdjustOn = false;
}

void frmAlign::ShowModal(Dialog dialog) {
  ToolWindow::ShowModal(dialog);
  if (dialog == Dialog::Histogram) ReadShown();
}

void frmAlign::OpenFile() {
  cv.OpenPath.clear();
  const std::optional<int> slot = OpenImage(cv, os, OpenRequest(cv, "File to View"));
  if (slot) {
    Combo1->Insert(*slot, cv.SlotName[*slot]);
    return ShowSlot(*slot);
  }
  // After a cancelled dialog, or for a file that can't be an image, nothing was read: the picture is intact.
  const bool wasRead = KindOf(cv.OpenPath.filename().string()) != ImageKind::Unknown;
  if (wasRead && cv.ImageCount > 0) ReadShown();
}

void frmAlign::CloseFile() {
  if (cv.ImageCount == 0) return;
  ImageCloser();
  cv.ImageCount > 0 ? ShowSlot(cv.CurrentSlot) : ShowNothing(kNoImage);
}

void frmAlign::ImageCloser() {
  const int closed = cv.CurrentSlot;
  const auto names = cv.SlotName;
  if (CloseImage(cv, os)) {
    cv.ImageData = {};
    std::move(Marks.begin() + closed + 1, Marks.end(), Marks.begin() + closed);
    Marks.back().reset();
  } else if (cv.SlotName != names) {
    Marks.fill(std::nullopt);  // nobody knows any more which image they are for
  }
  Combo1->Fill(cv);
}

void frmAlign::ShowSlot(int slot) {
  marking_->Free();
  marking_->ClearReadout();
  cv.CurrentSlot = slot;
  cv.CurrentName = cv.SlotName[slot];
  Combo1->Select(slot);
  const Busy busy(os);
  if (!LoadSlotPicture(cv, os, slot)) return ShowBroken();
  if (!area_->LoadPicture(cv.SlotBitmap(slot))) {
    os.Message("The file \"" + SlotBitmapName(slot) + "\" can't be shown.", "FILE OPEN ERROR");
    return ShowBroken();
  }
  txbX->setText(QString::number(cv.Width()));
  txbY->setText(QString::number(cv.Height()));
  area_->Picture()->setCursor(Qt::CrossCursor);
  area_->Picture()->Clear();
  DrawCross();
  Enter();
}

void frmAlign::ReadShown() {
  const bool isShown = area_->Picture()->HasPicture();
  if (!isShown || LoadDisplayBits(cv, cv.SlotBitmap(cv.CurrentSlot))) ShowSlot(cv.CurrentSlot);
}

void frmAlign::DrawCross() {
  const auto& marked = Marks[cv.CurrentSlot];
  if (!marked || AlignedUnsaved) return;
  marking_->DrawCross(marked->mark);
  marking_->ShowReadout(marked->mark);
}

void frmAlign::ShowBroken() { ShowNothing("The picture of this image is missing."); }

void frmAlign::ShowNothing(const char* reason) {
  marking_->Free();
  cv.DisplayBits = {};
  DescribeDisplayBitmap(cv, 0, 0);
  area_->ShowEmpty(QLatin1String(reason));
  txbX->clear();
  txbY->clear();
  marking_->ClearReadout();
  Enter();
}

void frmAlign::Marked(bool byMouse) {
  if (byMouse && cv.AutoAdjustOn) return Center(cv.AutoRadius, cv.AutoThreshold);
  Marks[cv.CurrentSlot] = MarkedPicture{marking_->Marker(), cv.Width(), cv.Height()};
  ShowStatus();
}

void frmAlign::Center(int radius, int threshold) {
  marking_->Place(corvane::Center(cv.Display(), marking_->Marker(), radius, threshold));
}

void frmAlign::Unmark() {
  Marks[cv.CurrentSlot].reset();
  ShowStatus();
}

void frmAlign::Hover(std::optional<Mark> pixel) {
  hovered_ = pixel;
  ShowStatus();
}

void frmAlign::ShowStatus() {
  if (cv.ImageCount == 0) return lblStatus->clear();
  if (AlignedUnsaved) return lblStatus->setText("Aligned. Save keeps the result, Undo takes it back.");
  const auto& marked = Marks[cv.CurrentSlot];
  QStringList texts;
  if (marked) texts << QString("Marked at %1, %2.").arg(marked->mark.x + 1).arg(marked->mark.y + 1);
  if (marked && marking_->MarkerMode()) texts << "Arrow keys move the mark, a right click removes it.";
  const std::optional<Mark> pixel = marked ? marked->mark : hovered_;
  std::string value;
  if (pixel) value = DescribeData(cv, cv.CurrentSlot, cv.Width(), cv.Height(), *pixel);
  if (!value.empty()) texts << ToQt(value) + '.';
  if (!pixel) texts << "Click the reference star to mark it.";
  texts << QString("%1 of %2 images marked.").arg(MarkedSlots().size()).arg(cv.ImageCount);
  lblStatus->setText(texts.join(' '));
}

void frmAlign::Enter() {
  const bool isFree = !AlignedUnsaved;
  const bool isOpen = cv.ImageCount > 0;
  const bool isShown = isOpen && area_->Picture()->HasPicture();
  EnableItem("mnuFileSel", kOpen, isFree);
  EnableItem("mnuFileSel", kClose, isFree && isOpen);
  for (const Window window : {Window::Examine, Window::Combine, Window::Color}) EnableItem(window, isFree);
  for (const Dialog dialog : {Dialog::Info, Dialog::Histogram}) EnableItem(dialog, isFree && isShown);
  for (const int mode : {kCrop, kMosaic, kAutoAdjust}) EnableItem(kModes, mode, isFree);
  Item(kModes, kCrop)->setChecked(AlignMode == kCropMode);
  Item(kModes, kMosaic)->setChecked(AlignMode == kMosaicMode);
  Item(kModes, kAutoAdjust)->setChecked(cv.AutoAdjustOn);
  Toolbar1->setEnabled(isFree);
  cmdAlign->setEnabled(isFree);
  cmdCancel->setEnabled(AlignedUnsaved);
  cmdSave->setEnabled(AlignedUnsaved);
  marking_->Lock(AlignedUnsaved);
  ShowStatus();
}

bool frmAlign::MayExit() {
  return !AlignedUnsaved || os.Message(
                                "The aligned images have not been saved and will be lost by exiting!\n"
                                "Do you still want to quit?",
                                "UNSAVED FILES", Buttons::YesNo) == Answer::Yes;
}

void frmAlign::OnUnload() {
  SaveDirectories(cv, os);
  for (const CroppedSlot& cropped : cropped_) QuietDelete(cv.AppDir / SlotHoldName(cropped.slot));
  if (cv.KeepTempFiles) return;
  DeleteSlotBitmaps(cv);
  DeleteViewFiles(cv.AppDir);
}

}  // namespace corvane
