#include "align/frmCombine.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QRadioButton>
#include <QShortcut>
#include <QVBoxLayout>

#include "align/combine.h"
#include "core/accepted.h"
#include "core/slot_picture.h"
#include "core/startup.h"
#include "core/working_files.h"
#include "platform/QtText.h"
#include "platform/busy.h"
#include "widgets/controls.h"

namespace corvane {
namespace {

// Rows of the menus that have work of their own.
enum FileItem { kOpen, kClose, kExit = 7 };

constexpr MenuItem kFileMenu[] = {
    {"&Open File", "Ctrl+O"},
    {"&Close File"},
    {"-"},
    {.text = "&Image Processor", .shortcut = "Ctrl+I", .opens = Window::Examine},
    {.text = "&Align Images", .shortcut = "Ctrl+A", .opens = Window::Align},
    {.text = "&RGB Composite", .shortcut = "Ctrl+R", .opens = Window::Color},
    {"-"},
    {"E&xit"},
};

constexpr MenuItem kToolMenu[] = {
    {.text = "&Image Information", .opens = Dialog::Info},
    {.text = "&Histogram", .opens = Dialog::Histogram},
};

constexpr MenuItem kModeMenu[] = {
    {.text = "&Stacker", .check = true},
    {.text = "Combine and &Preserve", .check = true},
};

constexpr ToolKey kToolbar[] = {
    {"open", "Open File", "mnuFileSel", kOpen},
    {"close", "Close File", "mnuFileSel", kClose},
    {"-"},
    {.key = "info", .tip = "Image Information", .opens = Dialog::Info},
    {.key = "hist", .tip = "Histogram", .opens = Dialog::Histogram},
    {"-"},
    {"stack", "Stack Mode", "mnuConfSel", 0},
    {"preserve", "Preserve Mode", "mnuConfSel", 1},
    {"-"},
    {.key = "corvane", .tip = "Image Processor", .opens = Window::Examine},
    {.key = "align", .tip = "Image Aligner", .opens = Window::Align},
    {.key = "color", .tip = "RGB Composite", .opens = Window::Color},
};

constexpr char kTitle[] = "Corvane Image Combiner";
constexpr QSize kThumbnail(300, 225);

QPushButton* Button(const char* name, const char* text) {
  auto* button = Named(new QPushButton(QLatin1String(text)), name);
  button->setAccessibleName(button->text().remove('&'));
  return button;
}

}  // namespace

frmCombine::Input::Input(const InputNames& names)
    : title(names.title),
      list(new ImageList(names.list, title)),
      thumbnail(Named(new Thumbnail(kThumbnail, FitByAspect), names.thumbnail, title)),
      label(Named(new NameLabel(title + ": "), names.label)),
      multiplier(new MultiplierBox(names.box, names.arrows, QLatin1String(names.multiplier))) {}

frmCombine::frmCombine(ModCV& store, Platform& platform, Desk& windows)
    : ToolWindow("frmCombine", store, platform, windows),
      first_({"Image #1", "Combo1", "Image1", "Label1", "Text1", "UpDown1", "Multiplier #1"}),
      second_({"Image #2", "Combo2", "Image2", "Label2", "Text2", "UpDown2", "Multiplier #2"}),
      Image3(Named(new Thumbnail(kThumbnail, FitByAspect), "Image3", "Combined Image")),
      lblHint(Named(PlainLabel(), "lblHint")),
      methods_(new QButtonGroup(this)),
      cmdCombine(Button("cmdCombine", "&Combine Images")),
      cmdUndo(Button("cmdUndo", "&Undo")),
      cmdSave(Button("cmdSave", "&Save")) {
  setWindowTitle(kTitle);
  AddMenu("mnuFileSel", "&File", kFileMenu, [this](int index) { mnuFileSel_Click(index); });
  AddMenu("mnuToolSel", "&Tools", kToolMenu);
  // An exclusive pair: whichever is chosen, the other mode follows.
  AddMenu("mnuConfSel", "&Mode", kModeMenu,
          [this](int) { SelectMode(ComboMode == kStacker ? kPreserve : kStacker); });
  AddHelpMenu();
  AddToolbar(kToolbar);
  LayOut();
  for (Input* input : {&first_, &second_}) {
    connect(input->list, &ImageList::Chosen, this, [this, input](int slot) { Show(*input, slot); });
    // The entry that is selected already makes its image the current one again.
    connect(input->list, &QComboBox::activated, this, [this, input](int slot) {
      if (slot != cv.CurrentSlot) Show(*input, slot);
    });
  }
  cmdSave->setToolTip("Save to a file");
  OnClick(cmdCombine, [this] { cmdCombine_Click(); });
  OnClick(cmdUndo, [this] { cmdUndo_Click(); });
  OnClick(cmdSave, [this] { cmdSave_Click(); });
  connect(new QShortcut(QKeySequence::Save, this), &QShortcut::activated, cmdSave, &QPushButton::click);
}

QWidget* frmCombine::Column(const Input& input, QWidget* multiplierLabel) {
  auto* column = new QWidget;
  auto* layout = new QVBoxLayout(column);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* multiplier = new QHBoxLayout;
  multiplier->addWidget(multiplierLabel);
  multiplier->addWidget(input.multiplier);
  multiplier->addStretch();
  auto* caption = PlainLabel(input.title);
  caption->setBuddy(input.list);
  input.list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  layout->addWidget(caption);
  layout->addWidget(input.list);
  layout->addWidget(input.thumbnail->InFrame());
  layout->addWidget(input.label);
  layout->addLayout(multiplier);
  return column;
}

QWidget* frmCombine::ResultColumn() {
  auto* column = new QWidget;
  auto* layout = new QVBoxLayout(column);
  layout->setContentsMargins(0, 0, 0, 0);
  lblHint->setWordWrap(true);
  lblHint->setAlignment(Qt::AlignTop | Qt::AlignLeft);
  layout->addStretch();
  layout->addWidget(PlainLabel("Combined Image"));
  layout->addWidget(Image3->InFrame());
  layout->addWidget(lblHint);
  lblHint->setFixedHeight(first_.label->sizeHint().height() + first_.multiplier->sizeHint().height() +
                          layout->spacing());
  return column;
}

QWidget* frmCombine::Methods() {
  auto* frame = Named(new QGroupBox("Combine Images Method"), "frFunction", "Combine Images Method");
  auto* grid = new QGridLayout(frame);
  int row = 0;
  for (const CombineMethod& method : CombineMethods()) {
    auto* option = new QRadioButton(QLatin1String(method.caption));
    option->setObjectName("Option" + QString::number(row + 1));
    option->setAccessibleName(option->text().remove('&'));
    methods_->addButton(option, row);
    grid->addWidget(option, row % 2, row / 2);
    ++row;
  }
  return frame;
}

QWidget* frmCombine::Buttons() {
  auto* frame = Named(new QGroupBox, "frArith", "Combine, undo and save");
  auto* row = new QHBoxLayout(frame);
  for (QPushButton* button : {cmdCombine, cmdUndo, cmdSave}) row->addWidget(button);
  return frame;
}

void frmCombine::LayOut() {
  auto* center = new QWidget;
  auto* grid = new QGridLayout(center);
  grid->setHorizontalSpacing(16);
  grid->setVerticalSpacing(12);
  grid->addWidget(Column(first_, PlainLabel("Multiplier #1")), 0, 0);
  grid->addWidget(Column(second_, PlainLabel("Multiplier #2")), 0, 1);
  grid->addWidget(ResultColumn(), 0, 2);
  grid->addWidget(Methods(), 1, 0, 1, 2);
  grid->addWidget(Buttons(), 1, 2);
  setCentralWidget(center);
  layout()->setSizeConstraint(QLayout::SetFixedSize);
  first_.list->setFocus();
}

void frmCombine::Open() {
  cv.OriginalFiles.clear();
  SelectMode(kStacker);
  ListImages();
}

void frmCombine::mnuFileSel_Click(int index) {
  switch (index) {
    case kOpen:
      return OpenFile();
    case kClose:
      return ImageCloser();
    case kExit:
      return Exit();
  }
}

void frmCombine::OpenFile() {
  const std::optional<int> slot = OpenImage(cv, os, OpenRequest(cv, "File to Combine"));
  if (!slot) return;
  if (*slot == 0) return ListImages();
  for (const Input* input : {&first_, &second_}) input->list->Insert(*slot, cv.SlotName[*slot]);
  Show(second_, *slot);
  Enter();
}

void frmCombine::ImageCloser() {
  if (cv.ImageCount == 0) return;
  CloseImage(cv, os);
  ListImages();
}

bool frmCombine::RoomForResult() {
  if (cv.ImageCount < kSlots) return true;
  os.Message(
      "Only 10 files may be open at once.\n"
      "A file must be closed before the combined image can be saved.",
      "FILE LIMIT");
  EnableItem("mnuFileSel", kClose, true);
  return false;
}

void frmCombine::SelectMode(Mode mode) {
  ComboMode = mode;
  Item("mnuConfSel", kStacker)->setChecked(mode == kStacker);
  Item("mnuConfSel", kPreserve)->setChecked(mode == kPreserve);
}

void frmCombine::Enter() {
  const bool pending = result_.has_value();
  const bool open = cv.ImageCount > 0;
  cmdCombine->setEnabled(open && !pending);
  cmdUndo->setEnabled(pending);
  cmdSave->setEnabled(pending);
  for (QAbstractButton* option : methods_->buttons()) option->setEnabled(!pending);
  for (const Input* input : {&first_, &second_}) {
    input->list->setEnabled(open && !pending);
    input->multiplier->setEnabled(!pending);
  }
  EnableItem("mnuFileSel", kOpen, !pending);
  EnableItem("mnuFileSel", kClose, open && !pending);
  for (const Window window : {Window::Examine, Window::Align, Window::Color}) EnableItem(window, !pending);
  for (const Dialog dialog : {Dialog::Info, Dialog::Histogram}) EnableItem(dialog, open && !pending);
  for (const Mode mode : {kStacker, kPreserve}) EnableItem("mnuConfSel", mode, !pending);
  Toolbar1->setEnabled(!pending);
  lblHint->setText(!pending ? ""
                   : result_->precision == 1
                       ? "8 bits only: the images have no data of one kind beyond 8 bits."
                       : "The preview has 256 levels; saving as FITS with 16 bits combines "
                         "the full data.");
}

void frmCombine::Show(Input& input, int slot) {
  const Busy busy(os);
  cv.CurrentSlot = slot;
  cv.CurrentName = cv.SlotName[slot];
  input.label->ShowName(input.title + ": " + ToQt(cv.CurrentName));
  setWindowTitle(QString(" %1: Displayed Image = %2").arg(kTitle, ToQt(cv.CurrentName)));
  input.list->Select(slot);
  input.thumbnail->ShowNothing();
  if (LoadSlotPicture(cv, os, slot) && !input.thumbnail->LoadFile(cv.SlotBitmap(slot)))
    Refuse(os, NotEnoughMemory());
}

void frmCombine::ListImages() {
  for (Input* input : {&first_, &second_}) {
    input->list->Fill(cv);
    if (cv.ImageCount > 0) {
      Show(*input, cv.CurrentSlot);
    } else {
      input->label->ShowName(input->title + ": ");
      input->thumbnail->ShowNothing();
      setWindowTitle(kTitle);
    }
  }
  Enter();
}

void frmCombine::ShowModal(Dialog dialog) {
  // These show the working picture.
  const bool showsImage = dialog == Dialog::Info || dialog == Dialog::Histogram;
  if (!showsImage || LoadSlotPicture(cv, os, cv.CurrentSlot)) ToolWindow::ShowModal(dialog);
}

bool frmCombine::MayExit() {
  return !result_ || os.Message(
                         "The combined image has not been saved and will be lost by exiting!\n"
                         "Do you still want to quit?",
                         "UNSAVED FILES", Buttons::YesNo) == Answer::Yes;
}

void frmCombine::OnUnload() {
  SaveDirectories(cv, os);
  if (!cv.KeepTempFiles) DeleteSlotBitmaps(cv);
  DeleteViewFiles(cv.AppDir);
}

}  // namespace corvane
