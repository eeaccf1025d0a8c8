#include "color/frmColor.h"

#include <QGridLayout>
#include <QShortcut>
#include <algorithm>
#include <new>

#include "base/files.h"
#include "base/multiplier.h"
#include "color/composite.h"
#include "core/accepted.h"
#include "core/open_image.h"
#include "core/print_picture.h"
#include "core/save_image.h"
#include "core/slot_picture.h"
#include "core/startup.h"
#include "core/working_files.h"
#include "formats/bitmap_format.h"
#include "platform/QtText.h"
#include "platform/busy.h"
#include "widgets/controls.h"

namespace corvane {
namespace {

enum FileItem { kOpen, kClose, kPrint = 7, kExit = 9 };

constexpr MenuItem kFileMenu[] = {
    {"&Open File", "Ctrl+O"},
    {"&Close File"},
    {"-"},
    {.text = "&Image Processor", .shortcut = "Ctrl+I", .opens = Window::Examine},
    {.text = "&Align Images", .shortcut = "Ctrl+A", .opens = Window::Align},
    {.text = "&Combine Images", .shortcut = "Ctrl+C", .opens = Window::Combine},
    {"-"},
    {"Print", "Ctrl+P"},
    {"-"},
    {"E&xit"},
};

constexpr MenuItem kToolMenu[] = {
    {.text = "&Image Information", .opens = Dialog::Info},
    {.text = "&Histogram", .opens = Dialog::Histogram},
};

constexpr ToolKey kToolbar[] = {
    {"open", "Open File", "mnuFileSel", kOpen},
    {"close", "Close File", "mnuFileSel", kClose},
    {"-"},
    {.key = "info", .tip = "Image Information", .opens = Dialog::Info},
    {.key = "hist", .tip = "Histogram", .opens = Dialog::Histogram},
    {"-"},
    {.key = "corvane", .tip = "Image Processor", .opens = Window::Examine},
    {"-"},
    {.key = "align", .tip = "Image Aligner", .opens = Window::Align},
    {.key = "combine", .tip = "Image Combiner", .opens = Window::Combine},
};

constexpr char kTitle[] = "  Corvane RGB Composite";
constexpr char kShows[] = ":  Displayed Image =  ";
constexpr char kNoImage[] = "No image is open.\n\nFile > Open File";
constexpr char kBroken[] = "The picture of this image is missing.";
constexpr int kSideWidth = 220;
constexpr int kSpacing = 5;
constexpr int kGap = 14;  // between what belongs to different colors

}  // namespace

frmColor::frmColor(ModCV& store, Platform& platform, Desk& windows)
    : ToolWindow("frmColor", store, platform, windows),
      sources_{{{new ImageList("ComboR", "Red image"),
                 new MultiplierBox("txbRed", "udRed", "Red multiplier", "1.0")},
                {new ImageList("ComboG", "Green image"),
                 new MultiplierBox("txbGreen", "udGreen", "Green multiplier", "1.0")},
                {new ImageList("ComboB", "Blue image"),
                 new MultiplierBox("txbBlue", "udBlue", "Blue multiplier", "1.0")}}},
      area_(new PictureArea("picColor")),
      cmdCombine(Named(new QPushButton("&Combine"), "cmdCombine", "Combine")),
      cmdCancel(Named(new QPushButton("&Undo"), "cmdCancel", "Undo")),
      cmdSave(Named(new QPushButton("&Save"), "cmdSave", "Save")) {
  AddMenu("mnuFileSel", "&File", kFileMenu, [this](int index) { mnuFileSel_Click(index); });
  AddMenu("mnuToolSel", "&Tools", kToolMenu);
  AddHelpMenu();
  AddToolbar(kToolbar);
  cmdCombine->setToolTip("Make a Color Picture of the Three Images");
  cmdCancel->setToolTip("Discard the Color Picture");
  cmdSave->setToolTip("Save the Color Picture as a Bitmap");
  LayOut();
  for (const Source& source : sources_) connect(source.list, &ImageList::Chosen, this, &frmColor::ShowImage);
  connect(area_, &PictureArea::ArrowPressed, area_, &PictureArea::Step);
  OnClick(cmdCombine, [this] { Combine(); });
  OnClick(cmdCancel, [this] { Undo(); });
  OnClick(cmdSave, [this] { Save(); });
  connect(new QShortcut(QKeySequence::Save, this), &QShortcut::activated, cmdSave, &QPushButton::click);
  ShowNothing(kNoImage);
}

void frmColor::LayOut() {
  auto* side = new QGridLayout;
  side->setVerticalSpacing(kSpacing);
  for (int color = 0; color < kColors; ++color) {
    static constexpr const char* kNames[] = {"Red", "Green", "Blue"};
    const QString name = kNames[color];
    const Source& source = sources_[color];
    source.list->setFixedWidth(kSideWidth);
    const int row = 4 * color;
    side->addWidget(PlainLabel(name + " Image"), row, 0, 1, 2);
    side->addWidget(source.list, row + 1, 0, 1, 2);
    side->addWidget(PlainLabel(name + " Multiplier"), row + 2, 0);
    side->addWidget(source.multiplier, row + 2, 1, Qt::AlignRight);
    side->setRowMinimumHeight(row + 3, kGap);
  }
  int row = 4 * kColors;
  for (QPushButton* button : {cmdCombine, cmdCancel, cmdSave}) side->addWidget(button, row++, 0, 1, 2);
  side->setRowStretch(row, 1);

  auto* center = new QWidget;
  auto* grid = new QGridLayout(center);
  grid->setHorizontalSpacing(16);
  grid->addWidget(area_, 0, 0);
  grid->addLayout(side, 0, 1);
  grid->setColumnStretch(0, 1);
  setCentralWidget(center);
}

void frmColor::Open() {
  for (const Source& source : sources_) source.list->Fill(cv);
  if (cv.ImageCount == 0) return;
  for (const Source& source : sources_) source.list->Select(cv.CurrentSlot);
  ShowImage(cv.CurrentSlot);
  area_->Picture()->setFocus();
}

void frmColor::mnuFileSel_Click(int index) {
  switch (index) {
    case kOpen:
      return OpenFile();
    case kClose:
      return ImageCloser();
    case kPrint:
      return PrintImage();
    case kExit:
      return Exit();
  }
}

void frmColor::Enter(bool isComposite) {
  ColorUnsaved = isComposite;
  const bool open = cv.ImageCount > 0;
  const bool shown = open && area_->Picture()->HasPicture();
  cmdCombine->setEnabled(open && !isComposite);
  cmdCancel->setEnabled(isComposite);
  cmdSave->setEnabled(isComposite);
  for (const Source& source : sources_) source.list->setEnabled(open && !isComposite);
  EnableItem("mnuFileSel", kOpen, !isComposite);
  EnableItem("mnuFileSel", kClose, open && !isComposite);
  EnableItem("mnuFileSel", kPrint, shown);
  for (const Window window : {Window::Examine, Window::Align, Window::Combine})
    EnableItem(window, !isComposite);
  for (const Dialog dialog : {Dialog::Info, Dialog::Histogram}) EnableItem(dialog, shown && !isComposite);
  Toolbar1->setEnabled(!isComposite);
}

void frmColor::ShowImage(int slot) {
  cv.CurrentSlot = slot;
  cv.CurrentName = cv.SlotName[slot];
  setWindowTitle(QLatin1String(kTitle) + kShows + ToQt(cv.CurrentName));
  const Busy busy(os);
  if (!LoadSlotPicture(cv, os, slot)) return ShowNothing(kBroken);
  if (!area_->LoadPicture(cv.SlotBitmap(slot))) {
    Refuse(os, NotEnoughMemory());
    return ShowNothing(kBroken);
  }
  Enter(false);
}

void frmColor::ShowNothing(const char* reason) {
  cv.DisplayBits = {};
  DescribeDisplayBitmap(cv, 0, 0);
  area_->ShowEmpty(QLatin1String(reason));
  if (cv.ImageCount == 0) setWindowTitle(QLatin1String(kTitle));
  Enter(false);
}

void frmColor::OpenFile() {
  cv.OpenPath.clear();
  const std::optional<int> slot = OpenImage(cv, os, OpenRequest(cv, "File to View"));
  if (slot) {
    for (const Source& source : sources_) {
      source.list->Insert(*slot, cv.SlotName[*slot]);
      source.list->Select(*slot);
    }
    return ShowImage(*slot);
  }
  const bool wasRead = !cv.OpenPath.empty();
  if (wasRead && cv.ImageCount > 0) ShowImage(cv.CurrentSlot);
}

// The lists keep what they show; where that is the image that goes, they show the one that is shown then.
void frmColor::ImageCloser() {
  if (cv.ImageCount < 1) return;
  const int closed = cv.CurrentSlot;
  if (!CloseImage(cv, os)) return Open();
  for (const Source& source : sources_) {
    const int chosen = source.list->currentIndex();
    source.list->Remove(closed);
    source.list->Select(chosen == closed ? cv.CurrentSlot : chosen > closed ? chosen - 1 : chosen);
  }
  if (cv.ImageCount > 0) return ShowImage(cv.CurrentSlot);
  ShowNothing(kNoImage);
}

void frmColor::PrintImage() {
  if (ColorUnsaved) return PrintPicture(cv, os, CompositeFile(), "Color Composite");
  PrintPicture(cv, os, cv.SlotBitmap(cv.CurrentSlot), cv.CurrentName);
}

std::filesystem::path frmColor::CompositeFile() const { return cv.AppDir / kTempBitmap; }

void frmColor::Combine() try {
  if (cv.ImageCount == 0 || !AreMeant()) return;
  Pictures pictures;
  if (!ReadSources(pictures)) return;
  if (Compatibility(pictures)) return MakeComposite(pictures);
  if (os.Message("The images can not be combined unless they are the same size!\n"
                 "Do you want to switch to the size and alignment program?",
                 "SIZE ERROR", Buttons::YesNoCancel) == Answer::Yes)
    SwitchTo(Window::Align);
} catch (const std::bad_alloc&) {
  Refuse(os, NotEnoughMemory());
  ShowImage(cv.CurrentSlot);
}

bool frmColor::AreMeant() {
  const int red = sources_[kRed].list->currentIndex();
  const int green = sources_[kGreen].list->currentIndex();
  const int blue = sources_[kBlue].list->currentIndex();
  if (red != green && green != blue && blue != red) return true;
  return os.Message(
             "The three selected images are not all different!\n"
             "Do you want to proceed with the color composite anyway?",
             "???", Buttons::YesNoCancel) == Answer::Yes;
}

bool frmColor::ReadSources(Pictures& pictures) {
  const Busy busy(os);
  const int width = cv.Width();
  const int height = cv.Height();
  ByteBuffer shown;
  shown.Swap(cv.DisplayBits);
  bool isRead = true;
  for (int color = kRed; color <= kBlue && isRead; ++color) {
    isRead = LoadSlotPicture(cv, os, sources_[color].list->currentIndex());
    DisplayBitmap& picture = pictures[color];
    picture.bits.Swap(cv.DisplayBits);
    picture.width = cv.Width();
    picture.height = cv.Height();
    picture.stride = cv.RowStride;
  }
  cv.DisplayBits.Swap(shown);
  DescribeDisplayBitmap(cv, width, height);
  return isRead;
}

bool frmColor::Compatibility(const Pictures& pictures) {
  return std::all_of(pictures.begin(), pictures.end(), [&](const DisplayBitmap& picture) {
    return picture.width == pictures[kRed].width && picture.height == pictures[kRed].height;
  });
}

bool frmColor::ReadMultiplier(Channel color, float& multiplier) {
  MultiplierBox& box = *sources_[color].multiplier;
  multiplier = ParseMultiplier(box.Text());
  const bool isSmall = multiplier < kSmallestMultiplier;
  if (!isSmall && multiplier <= kLargestMultiplier) return true;
  os.Message(isSmall ? "The minimum scale factor is 0.05 !" : "The maximum scale factor is 2 !",
             "SCALE FACTOR ERROR");
  box.ReturnToLimit(isSmall ? kSmallestMultiplier : kLargestMultiplier);
  return false;
}

void frmColor::MakeComposite(const Pictures& pictures) {
  ColorPlane planes[kColors];
  for (const Channel color : {kRed, kBlue, kGreen}) {
    planes[color].levels = pictures[color].View();
    if (!ReadMultiplier(color, planes[color].multiplier)) return;
  }
  const ConstGrayView& size = planes[kRed].levels;
  if (!FitsBitmapFile(size.width, size.height, 3))
    return Refuse(os, {"SIZE ERROR", "The picture is too large for a bitmap file."});
  const Busy busy(os);
  ColorBitmap composite(size.width, size.height);
  Composite(planes[kRed], planes[kGreen], planes[kBlue], composite);
  if (Accepted(os, WriteWorkingBitmap(cv, CompositeFile(), composite))) return ShowComposite();
  QuietDelete(CompositeFile());
}

void frmColor::ShowComposite() {
  if (!area_->LoadPicture(CompositeFile())) {
    QuietDelete(CompositeFile());
    return Refuse(os, NotEnoughMemory());
  }
  ShownSlot = sources_[kRed].list->currentIndex();
  setWindowTitle(QLatin1String(kTitle) + kShows + "Color Composite");
  Enter(true);
}

void frmColor::Undo() {
  QuietDelete(CompositeFile());
  ShowImage(ShownSlot);
}

void frmColor::Save() {
  const auto path = AskSavePath(cv, os,
                                {.title = "Save Color Composite Image As...",
                                 .filter = "bmp File (*.bmp)|*.bmp|",
                                 .defaultExtension = "bmp",
                                 .filterIndex = 1,
                                 .directory = cv.SaveDir});
  if (path && SaveCopy(os, CompositeFile(), *path)) Undo();
}

bool frmColor::MayExit() {
  return !ColorUnsaved || os.Message(
                              "The colored image has not been saved and will be lost by exiting!\n"
                              "Do you still want to quit?",
                              "UNSAVED FILE", Buttons::YesNo) == Answer::Yes;
}

void frmColor::OnUnload() {
  SaveDirectories(cv, os);
  if (!cv.KeepTempFiles) DeleteSlotBitmaps(cv);
  QuietDelete(CompositeFile());
}

}  // namespace corvane
