#include "platform/HelpViewer.h"

#include <QFile>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QKeySequence>
#include <QPushButton>
#include <QScrollBar>
#include <QShortcut>
#include <QSplitter>
#include <QTextBlock>
#include <QVBoxLayout>
#include <algorithm>

#include "platform/QtText.h"

namespace corvane {
namespace {

constexpr qint64 kLargestManual = 16 << 20;
const QString kSource = QStringLiteral("manual");
constexpr int kMargin = 12;
constexpr int kListWidth = 240;
constexpr int kPageWidth = 700;
constexpr int kLineLength = 88;  // in average characters
constexpr int kTopicHeading = 2;
constexpr int kAnchor = Qt::UserRole;
constexpr int kBlock = Qt::UserRole + 1;  // the number of the heading's text block

QPushButton* MakeButton(const char* name, const QString& text, const QString& description) {
  auto* button = new QPushButton(text);
  button->setObjectName(name);
  button->setAccessibleName(description);
  button->setToolTip(description);
  button->setAutoDefault(false);
  return button;
}

QString AnchorOf(const QTextBlock& block) {
  for (auto part = block.begin(); !part.atEnd(); ++part)
    if (const QStringList names = part.fragment().charFormat().anchorNames(); !names.isEmpty())
      return names[0];
  return {};
}

bool HasAnchor(const QTextDocument& document, const QString& anchor) {
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
    for (auto part = block.begin(); !part.atEnd(); ++part)
      if (part.fragment().charFormat().anchorNames().contains(anchor)) return true;
  return false;
}

}  // namespace

bool IsWholeManual(std::string_view bytes) {
  const std::size_t end = bytes.find_last_not_of(" \t\r\n");
  return end != bytes.npos && bytes.substr(0, end + 1).ends_with("</html>");
}

QVariant HelpViewer::Page::loadResource(int type, const QUrl&) {
  return type == QTextDocument::HtmlResource ? QVariant(html) : QVariant();
}

HelpViewer::Page::Page() { setLineWrapMode(QTextEdit::FixedPixelWidth); }

void HelpViewer::Page::resizeEvent(QResizeEvent* event) {
  QTextBrowser::resizeEvent(event);
  const int longest = kLineLength * fontMetrics().averageCharWidth() + 2 * kMargin;
  setLineWrapColumnOrWidth(std::min(viewport()->width(), longest));
}

HelpViewer::HelpViewer()
    : page_(new Page), lstTopics_(new QListWidget), txbFind_(new QLineEdit), lblFound_(new QLabel) {
  setObjectName("HelpViewer");
  setWindowTitle("Corvane Help");
  setAttribute(Qt::WA_QuitOnClose, false);
  page_->setObjectName("txbHelp");
  page_->setAccessibleName("Corvane manual");
  page_->document()->setDocumentMargin(kMargin);
  // Many dark color schemes leave links in the dark blue that suits a white page.
  if (page_->palette().color(QPalette::Base).lightness() < 128)
    page_->document()->setDefaultStyleSheet("a { color: #8ab4f8 }");
  lstTopics_->setObjectName("lstTopics");
  lstTopics_->setAccessibleName("Topics of the manual");
  lstTopics_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  lstTopics_->setSpacing(2);
  connect(lstTopics_, &QListWidget::itemClicked, this, &HelpViewer::ShowTopicOf);
  connect(lstTopics_, &QListWidget::itemActivated, this, &HelpViewer::ShowTopicOf);
  connect(page_->verticalScrollBar(), &QScrollBar::valueChanged, this, &HelpViewer::SelectTopicInSight);
  auto* both = new QSplitter;
  both->addWidget(lstTopics_);
  both->addWidget(page_);
  both->setStretchFactor(1, 1);
  both->setSizes({kListWidth, kPageWidth});
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(MakeBar());
  layout->addWidget(both, 1);
  resize(kListWidth + kPageWidth, 640);

  connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, txbFind_, [this] {
    txbFind_->setFocus();
    txbFind_->selectAll();
  });
  connect(new QShortcut(QKeySequence::FindNext, this), &QShortcut::activated, this, [this] { Find({}); });
  connect(new QShortcut(QKeySequence::FindPrevious, this), &QShortcut::activated, this,
          [this] { Find(QTextDocument::FindBackward); });
  connect(new QShortcut(QKeySequence(Qt::Key_Escape), this), &QShortcut::activated, this, &QWidget::close);
}

QWidget* HelpViewer::MakeBar() {
  auto* contents = MakeButton("cmdContents", "&Contents", "Contents of the manual");
  auto* back = MakeButton("cmdBack", "&Back", "Back to the page before");
  auto* forward = MakeButton("cmdForward", "&Forward", "Forward again");
  back->setEnabled(false);
  forward->setEnabled(false);
  back->setShortcut(QKeySequence::Back);
  forward->setShortcut(QKeySequence::Forward);
  connect(contents, &QPushButton::clicked, this, [this] { ShowTopic(""); });
  connect(back, &QPushButton::clicked, page_, &QTextBrowser::backward);
  connect(forward, &QPushButton::clicked, page_, &QTextBrowser::forward);
  connect(page_, &QTextBrowser::backwardAvailable, back, &QWidget::setEnabled);
  connect(page_, &QTextBrowser::forwardAvailable, forward, &QWidget::setEnabled);

  txbFind_->setObjectName("txbFind");
  txbFind_->setAccessibleName("Text to find in the manual");
  txbFind_->setPlaceholderText("Text to find");
  txbFind_->setClearButtonEnabled(true);
  auto* label = new QLabel("Fi&nd");
  label->setBuddy(txbFind_);
  lblFound_->setObjectName("lblFound");
  auto* next = MakeButton("cmdFind", "Find Ne&xt", "Find the text again further down");
  connect(txbFind_, &QLineEdit::returnPressed, this, [this] { Find({}); });
  connect(txbFind_, &QLineEdit::textEdited, lblFound_, &QLabel::clear);
  connect(next, &QPushButton::clicked, this, [this] { Find({}); });

  auto* bar = new QWidget;
  auto* row = new QHBoxLayout(bar);
  row->setContentsMargins(0, 0, 0, 0);
  for (QWidget* widget :
       {static_cast<QWidget*>(contents), static_cast<QWidget*>(back), static_cast<QWidget*>(forward)})
    row->addWidget(widget);
  row->addStretch();
  row->addWidget(lblFound_);
  row->addWidget(label);
  row->addWidget(txbFind_);
  row->addWidget(next);
  return bar;
}

bool HelpViewer::Load(const std::filesystem::path& file) {
  QFile manual(ToQt(file));
  if (!QFileInfo(manual).isFile() || !manual.open(QIODevice::ReadOnly)) return false;
  const QByteArray bytes = manual.read(std::min(manual.size(), kLargestManual));
  if (!IsWholeManual({bytes.constData(), static_cast<std::size_t>(bytes.size())})) return false;
  const QString html = QString::fromUtf8(bytes);
  if (html == page_->html) return true;
  page_->html = html;
  page_->clearHistory();
  page_->setSource(QUrl(kSource), QTextDocument::HtmlResource);
  page_->reload();
  ListTopics();
  return true;
}

void HelpViewer::ListTopics() {
  lstTopics_->clear();
  for (QTextBlock block = page_->document()->begin(); block.isValid(); block = block.next()) {
    if (block.blockFormat().headingLevel() != kTopicHeading) continue;
    auto* topic = new QListWidgetItem(block.text().section(':', 0, 0), lstTopics_);
    topic->setData(kAnchor, AnchorOf(block));
    topic->setData(kBlock, block.blockNumber());
  }
}

// Selects the last topic that begins at or above the top of what is visible; at the end of the manual the
// last one.
void HelpViewer::SelectTopicInSight() {
  const QScrollBar& bar = *page_->verticalScrollBar();
  const bool atEnd = bar.maximum() > 0 && bar.value() == bar.maximum();
  const int top = page_->cursorForPosition({kMargin, kMargin}).blockNumber();
  int row = lstTopics_->count() - 1;
  while (row >= 0 && !atEnd && lstTopics_->item(row)->data(kBlock).toInt() > top) --row;
  lstTopics_->setCurrentRow(row);
}

void HelpViewer::ShowTopicOf(QListWidgetItem* item) {
  page_->setSource(QUrl(kSource + '#' + item->data(kAnchor).toString()), QTextDocument::HtmlResource);
  lstTopics_->setCurrentItem(item);  // also where the end of the manual keeps it from the top
}

void HelpViewer::ShowTopic(const QString& topic) {
  const bool known = !topic.isEmpty() && HasAnchor(*page_->document(), topic);
  page_->setSource(QUrl(known ? kSource + '#' + topic : kSource), QTextDocument::HtmlResource);
  if (!known) page_->moveCursor(QTextCursor::Start);
  show();
  raise();
  activateWindow();
  page_->setFocus();
}

// Moves a text cursor that is out of sight to the edge of what is visible, where the search begins.
void HelpViewer::StartInSight(bool backward) {
  const QTextCursor top = page_->cursorForPosition({0, 0});
  const QTextCursor bottom = page_->cursorForPosition(page_->viewport()->rect().bottomRight());
  const QTextCursor now = page_->textCursor();
  if (now < top || bottom < now) page_->setTextCursor(backward ? bottom : top);
}

void HelpViewer::Find(QTextDocument::FindFlags flags) {
  const QString text = txbFind_->text();
  if (text.isEmpty()) return;
  StartInSight(flags & QTextDocument::FindBackward);
  bool found = page_->find(text, flags);
  if (!found) {
    const QTextCursor before = page_->textCursor();
    page_->moveCursor(flags & QTextDocument::FindBackward ? QTextCursor::End : QTextCursor::Start);
    found = page_->find(text, flags);
    if (!found) page_->setTextCursor(before);
  }
  lblFound_->setText(found ? "" : "Not found");
}

}  // namespace corvane
