#include "viewer/frmExamine.h"

#include <QVBoxLayout>

#include "analysis/profile.h"
#include "core/print_picture.h"
#include "core/read_out.h"
#include "core/startup.h"
#include "core/working_files.h"
#include "platform/QtText.h"
#include "widgets/PictureLayout.h"

namespace corvane {
namespace {

// Rows of the menus that have work of their own; the views are in the view table.
enum FileItem { kOpen, kSave, kClose, kPrint = 8, kExit = 10 };
enum ToolItem { kMagnify = 10, kDeMagnify };

constexpr MenuItem kFileMenu[] = {
    {"&Open File", "Ctrl+O"},
    {"&Save Image", "Ctrl+S"},
    {"&Close File"},
    {"-"},
    {.text = "&Align Images", .shortcut = "Ctrl+A", .opens = Window::Align},
    {.text = "&Combine Images", .shortcut = "Ctrl+C", .opens = Window::Combine},
    {.text = "&RGB Composite", .shortcut = "Ctrl+R", .opens = Window::Color},
    {"-"},
    {"&Print Image", "Ctrl+P"},
    {"-"},
    {"E&xit"},
};

constexpr MenuItem kToolMenu[] = {
    {.text = "&Image Information", .opens = Dialog::Info},
    {.text = "&Histogram", .opens = Dialog::Histogram},
    {.text = "&XY Profile", .opens = Dialog::Profile},
    {"-"},
    {.text = "&Raster", .check = true},
    {.text = "&Edge Detection", .check = true},
    {.text = "&Negative Image", .check = true},
    {.text = "&Pseudo-Color", .check = true},
    {.text = "De-&Convolution", .check = true},
    {"-"},
    {"&Magnify Image"},
    {"&De-Magnify Image"},
    {"-"},
    {.text = "Rotate &90", .check = true},
    {.text = "Rotate &180", .check = true},
    {.text = "Flip &Vertical", .check = true},
    {.text = "Flip Hori&zontal", .check = true},
    {"-"},
    {.text = "Luminance &Scaling", .opens = Window::Scale},
    {.text = "Image &Filters", .opens = Window::Filter},
    {.text = "Image Mas&k", .opens = Window::Mask},
    {"-"},
    {.text = "&Preferences", .shortcut = "Ctrl+Z", .opens = Dialog::Preferences},
};

constexpr ToolKey kToolbar[] = {
    {"open", "Open File", "mnuFileSel", kOpen},
    {"save", "Save Image", "mnuFileSel", kSave},
    {"close", "Close File", "mnuFileSel", kClose},
    {"-"},
    {.key = "info", .tip = "Image Information", .opens = Dialog::Info},
    {.key = "hist", .tip = "Histogram", .opens = Dialog::Histogram},
    {.key = "profile", .tip = "XY Profile", .opens = Dialog::Profile},
    {"-"},
    {"raster", "Raster Intensity", "mnuToolSel", kRaster},
    {"edge", "Edge Detection", "mnuToolSel", kEdge},
    {"negative", "Negative Image", "mnuToolSel", kNegative},
    {"pcolor", "Pseudo-Color", "mnuToolSel", kPseudoColor},
    {"deconv", "Deconvolution", "mnuToolSel", kDeconvolution},
    {"-"},
    {"plus", "Increase Magnification", "mnuToolSel", kMagnify},
    {"minus", "Reduce Magnification", "mnuToolSel", kDeMagnify},
    {"-"},
    {"halfpi", "Rotate 90", "mnuToolSel", kRotate90},
    {"pi", "Rotate 180", "mnuToolSel", kRotate180},
    {"vert", "Flip Vertical", "mnuToolSel", kFlipVertical},
    {"hor", "Flip Horizontal", "mnuToolSel", kFlipHorizontal},
    {"-"},
    {.key = "scale", .tip = "Luminance Scaling", .opens = Window::Scale},
    {.key = "filter", .tip = "Image Filters", .opens = Window::Filter},
    {.key = "mask", .tip = "Image Mask", .opens = Window::Mask},
    {"-"},
    {.key = "align", .tip = "Align Images", .opens = Window::Align},
    {.key = "combine", .tip = "Combine Images", .opens = Window::Combine},
    {.key = "color", .tip = "Color Composite", .opens = Window::Color},
};

// What acts on the image shown; the others need none.
constexpr Target kImageTools[] = {Dialog::Info, Dialog::Histogram, Window::Scale, Window::Filter,
                                  Window::Mask};

}  // namespace

frmExamine::frmExamine(ModCV& store, Platform& platform, Desk& windows)
    : ToolWindow("frmExamine", store, platform, windows),
      Combo1(new ImageList("Combo1", "Open images")),
      area_(new PictureArea("picMark")),
      txbWidth(Named(new ReadOnlyBox, "txbWidth", "Image width")),
      txbHeight(Named(new ReadOnlyBox, "txbHeight", "Image height")),
      txbXPos(Named(new ReadOnlyBox, "txbXPos", "X position")),
      txbYPos(Named(new ReadOnlyBox, "txbYPos", "Y position")),
      txbLum(Named(new ReadOnlyBox, "txbLum", "Luminance")),
      lblStatus(Named(PlainLabel(), "lblStatus", "Status")),
      marking_(new PixelMarking(cv, area_, {txbXPos, txbYPos, txbLum})) {
  setWindowTitle("Corvane Image Processor");
  setAcceptDrops(true);
  AddMenu("mnuFileSel", "&File", kFileMenu, [this](int index) { mnuFileSel_Click(index); });
  AddMenu("mnuToolSel", "&Tools", kToolMenu, [this](int index) { mnuToolSel_Click(index); });
  AddHelpMenu();
  AddToolbar(kToolbar);
  LayOut();
  Connect();
  ShowNothing(kNoImage);
}

void frmExamine::LayOut() {
  auto* side = new QVBoxLayout;
  side->addWidget(BoxFrame(
      "frImage", "Image", {{"lblWidth", "Image Width", txbWidth}, {"lblHeight", "Image Height", txbHeight}}));
  side->addWidget(BoxFrame("frPixel", "Pixel",
                           {{"lblXPos", "X Position", txbXPos},
                            {"lblYPos", "Y Position", txbYPos},
                            {"lblLum", "Luminance", txbLum}}));
  side->addStretch();

  LayOutAroundPicture(*this, Combo1, area_, side, lblStatus);
}

void frmExamine::Connect() {
  connect(Combo1, &ImageList::Chosen, this, [this](int slot) {
    if (Running()) return Combo1->Select(cv.CurrentSlot);
    ShowImage(slot);
  });
  connect(marking_, &PixelMarking::Marked, this, [this] {
    Profile(cv);
    Enter();
    DescribeMarker();
  });
  connect(marking_, &PixelMarking::Removed, this, &frmExamine::Enter);
  connect(marking_, &PixelMarking::ReadoutShown, this, [this](int x, int y) { ShowStatus({x, y}); });
  connect(marking_, &PixelMarking::ReadoutCleared, this,
          [this] { lblStatus->setText(marking_->MarkerMode() ? marked_ : hint_); });
  marking_->Watch(this);
}

void frmExamine::Open() {
  cv.ImageChanged = false;
  cv.DeconvCancelled = false;
  Combo1->Fill(cv);
  if (cv.ImageCount > 0) {
    Combo1->Select(cv.CurrentSlot);
    ShowImage(cv.CurrentSlot);
  }
  Enter();
  area_->Picture()->setFocus();
}

void frmExamine::mnuFileSel_Click(int index) {
  switch (index) {
    case kOpen:
      return OpenFile();
    case kSave:
      return SaveImage();
    case kClose:
      return CloseFile();
    case kPrint:
      return PrintPicture(cv, os, ShownFile(), cv.CurrentName);
    case kExit:
      return Exit();
  }
}

void frmExamine::mnuToolSel_Click(int index) {
  switch (index) {
    case kMagnify:
      return ReSizeImage(1);
    case kDeMagnify:
      return ReSizeImage(-1);
    default:
      return ToggleView(index);
  }
}

void frmExamine::ShowModal(Dialog dialog) {
  ToolWindow::ShowModal(dialog);
  if (dialog == Dialog::Histogram) ReadShown();
}

void frmExamine::Enter() {
  const bool open = cv.ImageCount > 0;
  const bool shown = open && area_->Picture()->HasPicture();
  EnableItem("mnuFileSel", kSave, shown);
  EnableItem("mnuFileSel", kClose, open);
  EnableItem("mnuFileSel", kPrint, shown);
  for (const ViewEntry& view : ViewTable()) EnableItem("mnuToolSel", view.menuIndex, shown);
  for (const Target& target : kImageTools) EnableItem(target, shown);
  EnableItem(Dialog::Profile, shown && marking_->MarkerMode());
  EnableItem("mnuToolSel", kMagnify, shown && Magnification < kMostMagnified);
  EnableItem("mnuToolSel", kDeMagnify, shown && Magnification > 1);
}

void frmExamine::ShowStatus(Mark pixel) {
  lblStatus->setText(ToQt(DescribeData(cv, cv.CurrentSlot, slotWidth_, slotHeight_, SlotPixel(pixel))));
}

void frmExamine::DescribeMarker() {
  const Mark mark = marking_->Marker();
  std::string value = DescribeData(cv, cv.CurrentSlot, slotWidth_, slotHeight_, SlotPixel(mark));
  if (value.empty()) value = "Level " + std::to_string(cv.Display().At(mark.x, mark.y));
  marked_ = QString("Marked at %1, %2. %3. Arrow keys move the mark, a right click frees the pointer.")
                .arg(mark.x + 1)
                .arg(mark.y + 1)
                .arg(ToQt(value));
  lblStatus->setText(marked_);
}

void frmExamine::CancelRun() { cv.DeconvCancelled = true; }

void frmExamine::OnUnload() {
  SaveDirectories(cv, os);
  if (!cv.KeepTempFiles) DeleteSlotBitmaps(cv);
  DeleteViewFiles(cv.AppDir);
}

}  // namespace corvane
