#include "viewer/frmExamine.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QMouseEvent>
#include <QStatusBar>
#include <QVBoxLayout>

#include "analysis/profile.h"
#include "core/numeric.h"
#include "core/startup.h"
#include "core/working_files.h"
#include "platform/QtText.h"
#include "viewer/read_out.h"

namespace corvane {
namespace {

constexpr MenuItem kFileMenu[] = {
    {"&Open File", "Ctrl+O"},
    {"&Save Image", "Ctrl+S"},
    {"&Close File"},
    {"-"},
    Leading("&Align Images", Window::Align, "Ctrl+A"),
    Leading("&Combine Images", Window::Combine, "Ctrl+C"),
    Leading("&RGB Composite", Window::Color, "Ctrl+R"),
    {"-"},
    {"&Print Image", "Ctrl+P"},
    {"-"},
    {"E&xit"},
};

constexpr MenuItem kToolMenu[] = {
    Leading("&Image Information", Dialog::Info),
    Leading("&Histogram", Dialog::Histogram),
    Leading("&XY Profile", Dialog::Profile),
    {"-"},
    {.text = "&Raster", .check = true},
    {.text = "&Edge Detection", .check = true},
    {.text = "&Negative Image", .check = true},
    {.text = "&Pseudo-Color", .check = true},
    {.text = "De-&Convolution", .check = true, .built = IsBuilt(Dialog::Deconvolution)},
    {"-"},
    {"&Magnify Image"},
    {"&De-Magnify Image"},
    {"-"},
    {.text = "Rotate &90", .check = true},
    {.text = "Rotate &180", .check = true},
    {.text = "Flip &Vertical", .check = true},
    {.text = "Flip Hori&zontal", .check = true},
    {"-"},
    Leading("Luminance &Scaling", Window::Scale),
    Leading("Image &Filters", Window::Filter),
    Leading("Image Mas&k", Window::Mask),
    {"-"},
    Leading("&Preferences", Dialog::Preferences, "Ctrl+Z"),
};

constexpr ToolKey kToolbar[] = {
    {"open", "Open File", "mnuFileSel", 0},
    {"save", "Save Image", "mnuFileSel", 1},
    {"close", "Close File", "mnuFileSel", 2},
    {"-"},
    {"info", "Image Information", "mnuToolSel", 0},
    {"hist", "Histogram", "mnuToolSel", 1},
    {"profile", "XY Profile", "mnuToolSel", 2},
    {"-"},
    {"raster", "Raster Intensity", "mnuToolSel", 4},
    {"edge", "Edge Detection", "mnuToolSel", 5},
    {"negative", "Negative Image", "mnuToolSel", 6},
    {"pcolor", "Pseudo-Color", "mnuToolSel", 7},
    {"deconv", "Deconvolution", "mnuToolSel", 8},
    {"-"},
    {"plus", "Increase Magnification", "mnuToolSel", 10},
    {"minus", "Reduce Magnification", "mnuToolSel", 11},
    {"-"},
    {"halfpi", "Rotate 90", "mnuToolSel", 13},
    {"pi", "Rotate 180", "mnuToolSel", 14},
    {"vert", "Flip Vertical", "mnuToolSel", 15},
    {"hor", "Flip Horizontal", "mnuToolSel", 16},
    {"-"},
    {"scale", "Luminance Scaling", "mnuToolSel", 18},
    {"filter", "Image Filters", "mnuToolSel", 19},
    {"mask", "Image Mask", "mnuToolSel", 20},
    {"-"},
    {"align", "Align Images", "mnuFileSel", 4},
    {"combine", "Combine Images", "mnuFileSel", 5},
    {"color", "Color Composite", "mnuFileSel", 6},
};

// Items that act on the image shown; the others need none.
constexpr int kImageTools[] = {0, 1, 4, 5, 6, 7, 8, 13, 14, 15, 16, 18, 19, 20};
constexpr int kPanStep = 24;
constexpr int kStatusMargin = 7;  // the text stands under the picture's edge

}  // namespace

frmExamine::frmExamine(ModCV& store, Platform& platform, Desk& windows)
    : ToolWindow("frmExamine", store, platform, windows),
      Combo1(Named(new QComboBox, "Combo1", "Open images")),
      area_(new PictureArea("picMark")),
      txbWidth(Named(new ReadOnlyBox, "txbWidth", "Image width")),
      txbHeight(Named(new ReadOnlyBox, "txbHeight", "Image height")),
      txbXPos(Named(new ReadOnlyBox, "txbXPos", "X position")),
      txbYPos(Named(new ReadOnlyBox, "txbYPos", "Y position")),
      txbLum(Named(new ReadOnlyBox, "txbLum", "Luminance")),
      lblStatus(Named(PlainLabel(), "lblStatus", "Status")) {
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
  struct Row {
    const char* label;
    const char* caption;
    ReadOnlyBox* box;
  };
  const auto frame = [this](const char* name, const char* title, std::initializer_list<Row> rows) {
    auto* group = Named(new QGroupBox(title), name, title);
    auto* grid = new QGridLayout(group);
    int line = 0;
    for (const Row& row : rows) {
      grid->addWidget(Named(PlainLabel(row.caption), row.label), line, 0);
      grid->addWidget(row.box, line++, 1);
      row.box->setAlignment(Qt::AlignRight);
      row.box->setFixedWidth(fontMetrics().horizontalAdvance("0") * 10);
    }
    return group;
  };
  auto* side = new QVBoxLayout;
  side->addWidget(frame("frImage", "Image",
                        {{"lblWidth", "Image Width", txbWidth}, {"lblHeight", "Image Height", txbHeight}}));
  side->addWidget(frame("frPixel", "Pixel",
                        {{"lblXPos", "X Position", txbXPos},
                         {"lblYPos", "Y Position", txbYPos},
                         {"lblLum", "Luminance", txbLum}}));
  side->addStretch();

  auto* center = new QWidget;
  auto* grid = new QGridLayout(center);
  Combo1->setFixedWidth(PictureArea::kWidth);
  Combo1->setEnabled(false);
  WheelOnlyWithFocus(Combo1);
  grid->addWidget(Combo1, 0, 0, Qt::AlignLeft);
  grid->addWidget(area_, 1, 0);
  grid->addLayout(side, 1, 1);
  setCentralWidget(center);
  statusBar()->addWidget(lblStatus, 1);
  statusBar()->setSizeGripEnabled(false);
  statusBar()->setContentsMargins(kStatusMargin, 0, kStatusMargin, 0);
  layout()->setSizeConstraint(QLayout::SetFixedSize);
}

void frmExamine::Connect() {
  connect(Combo1, &QComboBox::currentIndexChanged, this, &frmExamine::Combo1_Click);
  connect(area_, &PictureArea::PixelHovered, this, [this](int x, int y) {
    if (!MarkerMode) ShowReadout(x, y);
  });
  connect(area_, &PictureArea::PixelPressed, this, &frmExamine::picMark_MouseDown);
  connect(area_, &PictureArea::ArrowPressed, this, &frmExamine::picMark_Arrow);
  connect(area_, &PictureArea::Scrolled, this, &frmExamine::ClearReadout);
  connect(area_, &PictureArea::MouseLeft, this, [this] {
    if (!MarkerMode) ClearReadout();
  });
  // Everything around the picture clears the read-out.
  setMouseTracking(true);
  installEventFilter(this);
  for (QWidget* widget : findChildren<QWidget*>()) {
    if (area_->isAncestorOf(widget)) continue;
    widget->setMouseTracking(true);
    widget->installEventFilter(this);
  }
}

bool frmExamine::eventFilter(QObject*, QEvent* event) {
  if (event->type() == QEvent::MouseMove && !MarkerMode) ClearReadout();
  return false;
}

void frmExamine::Open() {
  cv.ImageChanged = false;
  cv.DeconvCancelled = false;
  SuppressListClick = true;
  Combo1->clear();
  for (int slot = 0; slot < cv.ImageCount; ++slot) Combo1->addItem(ToQt(cv.SlotName[slot]));
  SuppressListClick = false;
  if (cv.ImageCount > 0) {
    SelectEntry(cv.CurrentSlot);
    ShowImage(cv.CurrentSlot);
  }
  Enter();
  area_->Picture()->setFocus();
}

void frmExamine::mnuFileSel_Click(int index) {
  switch (index) {
    case 0:
      return OpenFile();
    case 1:
      return SaveImage();
    case 2:
      return CloseFile();
    case 4:
      return SwitchToTool(Window::Align);
    case 5:
      return SwitchToTool(Window::Combine);
    case 6:
      return SwitchToTool(Window::Color);
    case 8:
      return PrintImage();
    case 10:
      return Exit();
  }
}

void frmExamine::mnuToolSel_Click(int index) {
  switch (index) {
    case 0:
      return desk.ShowModal(Dialog::Info);
    case 1:
      desk.ShowModal(Dialog::Histogram);
      return ReadShown();
    case 2:
      return desk.ShowModal(Dialog::Profile);
    case 10:
      return ReSizeImage(1);
    case 11:
      return ReSizeImage(-1);
    case 18:
      return SwitchToTool(Window::Scale);
    case 19:
      return SwitchToTool(Window::Filter);
    case 20:
      return SwitchToTool(Window::Mask);
    case 22:
      return desk.ShowModal(Dialog::Preferences);
    default:
      return ToggleView(index);
  }
}

void frmExamine::Combo1_Click(int index) {
  if (SuppressListClick || index == ListSlot || index < 0) return;
  if (Running()) return SelectEntry(ListSlot);
  ListSlot = index;
  ShowImage(index);
}

void frmExamine::SelectEntry(int slot) {
  SuppressListClick = true;
  Combo1->setCurrentIndex(slot);
  SuppressListClick = false;
  ListSlot = slot;
}

void frmExamine::Enter() {
  const bool open = cv.ImageCount > 0;
  const bool shown = open && area_->Picture()->HasPicture();
  Combo1->setEnabled(open);
  EnableItem("mnuFileSel", 1, shown);
  EnableItem("mnuFileSel", 2, open);
  EnableItem("mnuFileSel", 8, shown);
  for (const int index : kImageTools) EnableItem("mnuToolSel", index, shown);
  EnableItem("mnuToolSel", 2, shown && MarkerMode);
  EnableItem("mnuToolSel", 10, shown && Magnification < kMostMagnified);
  EnableItem("mnuToolSel", 11, shown && Magnification > 1);
}

void frmExamine::ShowReadout(int x, int y) {
  if (x < 0 || y < 0 || x >= cv.Width() || y >= cv.Height()) return;
  txbLum->setText(QString::number(cv.Display().At(x, y)));
  txbXPos->setText(QString::number(x + 1));
  txbYPos->setText(QString::number(y + 1));
  ShowStatus({x, y});
}

Mark frmExamine::Marker() const { return {RoundEven(cv.MarkX), RoundEven(cv.MarkY)}; }

void frmExamine::ClearReadout() {
  for (ReadOnlyBox* box : {txbLum, txbXPos, txbYPos}) box->clear();
  lblStatus->setText(hint_);
}

void frmExamine::ShowStatus(Mark pixel) {
  lblStatus->setText(ToQt(DescribeData(cv, cv.CurrentSlot, slotWidth_, slotHeight_, SlotPixel(pixel))));
}

void frmExamine::SetMarker(Mark wanted) {
  const Mark mark = ClampMark(wanted, cv.Width(), cv.Height());
  cv.MarkX = static_cast<float>(mark.x);
  cv.MarkY = static_cast<float>(mark.y);
  Profile(cv);
  area_->Picture()->Clear();
  area_->Picture()->Draw(MarkerCross(mark));
}

void frmExamine::PlaceMarker(Mark wanted) {
  SetMarker(wanted);
  MarkerMode = true;
  const Mark mark = Marker();
  area_->ShowPixel(mark.x, mark.y);
  ShowReadout(mark.x, mark.y);
  Enter();
}

void frmExamine::EndMarker() {
  MarkerMode = false;
  area_->Picture()->Clear();
  ClearReadout();
  Enter();
}

void frmExamine::picMark_MouseDown(int x, int y, Qt::MouseButton button) {
  if (Running() || !area_->Picture()->HasPicture()) return;
  if (button == Qt::LeftButton) return PlaceMarker({x, y});
  if (button == Qt::RightButton) return EndMarker();
}

void frmExamine::picMark_Arrow(int dx, int dy) {
  if (Running()) return;
  if (!MarkerMode) return area_->Pan(dx * kPanStep, -dy * kPanStep);
  PlaceMarker({Marker().x + dx, Marker().y + dy});
}

void frmExamine::CancelRun() { cv.DeconvCancelled = true; }

void frmExamine::OnUnload() {
  SaveDirectories(cv, os);
  if (!cv.KeepTempFiles) DeleteSlotBitmaps(cv);
  DeleteViewFiles(cv.AppDir);
}

}  // namespace corvane
