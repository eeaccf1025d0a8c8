#include "viewer/frmInfo.h"

#include <QFontDatabase>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QScrollBar>
#include <QShortcut>
#include <QVBoxLayout>
#include <memory>

#include "base/text.h"
#include "core/open_image.h"
#include "formats/bitmap_format.h"
#include "platform/QtText.h"
#include "widgets/NameLabel.h"
#include "widgets/controls.h"

namespace corvane {
namespace {

constexpr int kCardColumns = 80;
constexpr int kShownLines = 22;

std::string DisplayBitmapSize(const ModCV& cv) {
  return std::to_string(kBitmapHeaderSize + static_cast<std::int64_t>(cv.RowStride) * cv.Height());
}

QPushButton* Button(const char* name, const char* text, const char* spokenName) {
  auto* button = Named(new QPushButton(QLatin1String(text)), name, QLatin1String(spokenName));
  button->setAutoDefault(false);
  return button;
}

}  // namespace

frmInfo::frmInfo(ModCV& store, Platform& platform)
    : cv(store),
      os(platform),
      Label2(Named(new NameLabel(ToQt(cv.CurrentName)), "Label2")),
      Label4(Named(PlainLabel(), "Label4")),
      Label6(Named(PlainLabel(), "Label6")),
      Label7(Named(PlainLabel("TEXT HEADER"), "Label7")),
      RichTextBox1(Named(new QTextEdit, "RichTextBox1", "Text header")),
      txbFind(Named(new QLineEdit, "txbFind", "Find in the header")),
      lblFound(Named(PlainLabel(), "lblFound")),
      cmdPrint(Button("cmdPrint", "&Print Header", "Print header")) {
  setObjectName("frmInfo");
  setWindowTitle("File Information");
  LayOut();
  ShowImage();
  connect(cmdPrint, &QPushButton::clicked, this, &frmInfo::cmdPrint_Click);
  const auto* find = new QShortcut(QKeySequence::Find, this);
  connect(find, &QShortcut::activated, txbFind, [this] {
    txbFind->setFocus();
    txbFind->selectAll();
  });
  const auto* again = new QShortcut(QKeySequence::FindNext, this);
  connect(again, &QShortcut::activated, this, &frmInfo::FindNext);
  connect(txbFind, &QLineEdit::textEdited, lblFound, &QLabel::clear);
  txbFind->installEventFilter(this);
}

void frmInfo::LayOut() {
  auto* values = new QGridLayout;
  const std::pair<const char*, QLabel*> rows[] = {
      {"File Name", Label2}, {"File Size", Label4}, {"Pixels", Label6}};
  int line = 0;
  for (const auto& [caption, value] : rows) {
    auto* label = Named(PlainLabel(caption), "");
    label->setObjectName("Label" + QString::number(2 * line + 1));
    value->setAccessibleName(caption);
    values->addWidget(label, line, 0);
    values->addWidget(value, line++, 1);
  }
  values->setColumnStretch(1, 1);
  values->setHorizontalSpacing(16);
  for (QLabel* label : {Label4, Label6}) label->setTextInteractionFlags(Qt::TextSelectableByMouse);

  RichTextBox1->setReadOnly(true);
  RichTextBox1->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  RichTextBox1->setAcceptRichText(false);
  RichTextBox1->setTabChangesFocus(true);
  RichTextBox1->setLineWrapMode(QTextEdit::NoWrap);
  RichTextBox1->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  const QFontMetrics metrics(RichTextBox1->font());
  const int margin = 2 * (RichTextBox1->frameWidth() + qRound(RichTextBox1->document()->documentMargin()));
  RichTextBox1->setMinimumSize(metrics.horizontalAdvance(QString(kCardColumns, 'M')) + margin +
                                   RichTextBox1->verticalScrollBar()->sizeHint().width(),
                               metrics.lineSpacing() * kShownLines + margin);

  auto* cmdOK = Button("cmdOK", "&Close", "Close");
  cmdOK->setDefault(true);
  connect(cmdOK, &QPushButton::clicked, this, &QDialog::accept);
  txbFind->setPlaceholderText("Find (Ctrl+F)");
  txbFind->setMaximumWidth(metrics.averageCharWidth() * 26);
  auto* bottom = new QHBoxLayout;
  bottom->addWidget(txbFind);
  bottom->addWidget(lblFound, 1);
  bottom->addWidget(cmdPrint);
  bottom->addWidget(cmdOK);

  auto* layout = new QVBoxLayout(this);
  layout->addLayout(values);
  layout->addSpacing(6);
  layout->addWidget(Label7);
  layout->addWidget(RichTextBox1, 1);
  layout->addLayout(bottom);
  RichTextBox1->setFocus();
}

void frmInfo::ShowImage() {
  const bool bitmap = KindOf(cv.CurrentName) == ImageKind::Bitmap;
  Label4->setText(ToQt(bitmap ? DisplayBitmapSize(cv) : cv.SlotFileSize[cv.CurrentSlot]));
  Label6->setText(ToQt(ShortestDecimal(cv.ImageWidth) + "  X  " + ShortestDecimal(cv.ImageHeight)));
  Label7->setEnabled(!bitmap);
  cmdPrint->setEnabled(!bitmap);
  txbFind->setEnabled(!bitmap);
  RichTextBox1->setPlainText(bitmap ? QString("There is no text header for a Windows bitmap.")
                                    : ToQt(HeaderText(cv, cv.CurrentSlot)));
}

bool frmInfo::eventFilter(QObject*, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return false;
  const int key = static_cast<QKeyEvent*>(event)->key();
  if (key != Qt::Key_Return && key != Qt::Key_Enter) return false;
  FindNext();
  return true;  // the default button closes the window
}

void frmInfo::FindNext() {
  const QString wanted = txbFind->text();
  if (wanted.isEmpty()) return;
  bool found = RichTextBox1->find(wanted);
  if (!found) {
    const QTextCursor kept = RichTextBox1->textCursor();
    RichTextBox1->moveCursor(QTextCursor::Start);
    found = RichTextBox1->find(wanted);
    if (!found) RichTextBox1->setTextCursor(kept);
  }
  lblFound->setText(found ? "" : "Not found");
}

void frmInfo::cmdPrint_Click() {
  const std::string& name = cv.SlotName[cv.CurrentSlot];
  const std::unique_ptr<PrintJob> job = os.Print(name);
  if (!job) return;
  job->Text("FILE HEADER:  " + name + "\n" + std::string(kCardColumns, ' ') + "\n" +
            RichTextBox1->toPlainText().toStdString());
  if (const int error = job->End())
    os.Message("The header could not be printed. Error Number " + std::to_string(error), "PRINT ERROR");
}

}  // namespace corvane
