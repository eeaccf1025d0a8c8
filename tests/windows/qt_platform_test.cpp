#include "core/working_files.h"
#include "platform/QtPlatform.h"
#include "tests/support/app_dir_fixture.h"
#include "tests/support/window_controls.h"

namespace corvane {
namespace {

TEST(QtPlatform, ShowsMessagesAsPlainTextWithoutTheBusyCursor) {
  QtPlatform os;
  os.BusyCursor(true);
  os.BusyCursor(true);
  ASSERT_TRUE(QApplication::overrideCursor());
  WhenShown<QMessageBox>([](QMessageBox& box) {
    EXPECT_FALSE(QApplication::overrideCursor());
    EXPECT_EQ(box.windowTitle(), "UNRECOGNISED FILE EXTENSION ");
    EXPECT_EQ(box.text(), "<b>a</b>.xyz");
    EXPECT_EQ(box.textFormat(), Qt::PlainText);
    EXPECT_EQ(box.icon(), QMessageBox::NoIcon);
    box.button(QMessageBox::Ok)->click();
  });
  EXPECT_EQ(os.Message("<b>a</b>.xyz", "UNRECOGNISED FILE EXTENSION "), Answer::Ok);
  os.BusyCursor(false);
  EXPECT_FALSE(QApplication::overrideCursor());
}

TEST(QtPlatform, TakesTheAnswerPressedAndNoneAsTheOneThatDoesLeast) {
  struct Case {
    Buttons buttons;
    QMessageBox::StandardButton pressed;
    Answer answer;
  };
  QtPlatform os;
  for (const Case& one : {Case{Buttons::YesNo, QMessageBox::Yes, Answer::Yes},
                          Case{Buttons::YesNo, QMessageBox::No, Answer::No},
                          Case{Buttons::YesNo, QMessageBox::NoButton, Answer::No},
                          Case{Buttons::YesNoCancel, QMessageBox::Yes, Answer::Yes},
                          Case{Buttons::YesNoCancel, QMessageBox::No, Answer::No},
                          Case{Buttons::YesNoCancel, QMessageBox::Cancel, Answer::Cancel},
                          Case{Buttons::YesNoCancel, QMessageBox::NoButton, Answer::Cancel},
                          Case{Buttons::Ok, QMessageBox::NoButton, Answer::Ok}}) {
    WhenShown<QMessageBox>([one](QMessageBox& box) {
      if (one.pressed == QMessageBox::NoButton) {
        box.done(QMessageBox::NoButton);
      } else {
        box.button(one.pressed)->click();
      }
    });
    EXPECT_EQ(os.Message("Save?", "SAVE", one.buttons), one.answer);
  }
}

TEST(QtPlatform, NeverYieldsInsideAYield) {
  QtPlatform os;
  int depth = 0;
  int deepest = 0;
  int events = 0;
  const auto work = [&] {
    deepest = std::max(deepest, ++depth);
    QElapsedTimer inside;
    inside.start();
    while (inside.elapsed() < 25) os.Yield();
    --depth;
    ++events;
  };
  // A timer is not delivered while its own handler runs, so it takes two to nest.
  QTimer timers[2];
  for (QTimer& timer : timers) {
    QObject::connect(&timer, &QTimer::timeout, work);
    timer.start(0);
  }
  QElapsedTimer waited;
  waited.start();
  while (events < 3 && waited.elapsed() < 5000) os.Yield();
  EXPECT_GE(events, 3);
  EXPECT_EQ(deepest, 1);
}

TEST(QtPlatform, YieldsSeldomHoweverOftenItIsCalled) {
  QtPlatform os;
  int events = 0;
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, [&] { ++events; });
  timer.start(0);
  QElapsedTimer waited;
  waited.start();
  int calls = 0;
  for (; waited.elapsed() < 100; ++calls) os.Yield();
  EXPECT_GE(events, 1);
  EXPECT_LE(events, 11);
  EXPECT_GT(calls, events);
}

class Help : public AppDirFixture {
 protected:
  Help() {
    std::string filler;
    for (int i = 0; i < 200; ++i) filler += "<p>line</p>";
    manual = MakeUserFile("manual.html", "<html><body><h1><a name=\"start\"></a>Contents</h1>" + filler +
                                             "<h2><a name=\"frmPref\"></a>Preferences é</h2>" + filler +
                                             "<h2><a name=\"frmInfo\"></a>Information</h2>" + filler +
                                             "</body></html>");
  }
  static QWidget* Viewer() {
    for (QWidget* window : QApplication::topLevelWidgets())
      if (window->objectName() == "HelpViewer" && window->isVisible()) return window;
    return nullptr;
  }
  // The first line that the window shows.
  static std::string TopLine() {
    const auto& page = Find<QTextBrowser>(*Viewer(), "txbHelp");
    return page.cursorForPosition(QPoint(20, 20)).block().text().toStdString();
  }
  std::filesystem::path manual;
  QtPlatform platform;
};

TEST_F(Help, OpensAtItsContentsAtATopicAndGoesBack) {
  platform.OpenHelp(manual, "");
  ASSERT_TRUE(Viewer());
  EXPECT_FALSE(Viewer()->testAttribute(Qt::WA_QuitOnClose));
  EXPECT_EQ(TopLine(), "Contents");
  platform.OpenHelp(manual, "frmPref");
  EXPECT_EQ(TopLine(), "Preferences é");
  Press(*Viewer(), "cmdBack");
  EXPECT_EQ(TopLine(), "Contents");
  Press(*Viewer(), "cmdForward");
  EXPECT_EQ(TopLine(), "Preferences é");
  platform.OpenHelp(manual, "nosuchtopic");
  EXPECT_EQ(TopLine(), "Contents");
  platform.OpenHelp(manual, "frmPref");
  Press(*Viewer(), "cmdContents");
  EXPECT_EQ(TopLine(), "Contents");
}

TEST_F(Help, FindsTextRoundTheEndAndSaysWhenThereIsNone) {
  platform.OpenHelp(manual, "");
  ASSERT_TRUE(Viewer());
  const auto& page = Find<QTextBrowser>(*Viewer(), "txbHelp");
  const auto& lblFound = Find<QLabel>(*Viewer(), "lblFound");
  Find<QLineEdit>(*Viewer(), "txbFind").setText("preferences");
  for (int i = 0; i < 2; ++i) {
    Press(*Viewer(), "cmdFind");
    EXPECT_EQ(page.textCursor().selectedText(), "Preferences");
    EXPECT_EQ(lblFound.text(), "");
  }
  Find<QLineEdit>(*Viewer(), "txbFind").setText("nebulosity");
  Press(*Viewer(), "cmdFind");
  EXPECT_EQ(lblFound.text(), "Not found");
}

TEST_F(Help, ListsItsTopicsBesideThePageAndFollowsIt) {
  platform.OpenHelp(manual, "");
  ASSERT_TRUE(Viewer());
  auto& topics = Find<QListWidget>(*Viewer(), "lstTopics");
  ASSERT_EQ(topics.count(), 2);
  EXPECT_EQ(topics.item(0)->text(), "Preferences é");
  EXPECT_EQ(topics.currentRow(), -1);
  platform.OpenHelp(manual, "frmInfo");
  EXPECT_EQ(topics.currentRow(), 1);
  Q_EMIT topics.itemClicked(topics.item(0));
  EXPECT_EQ(TopLine(), "Preferences é");
  EXPECT_EQ(topics.currentRow(), 0);
  const auto& page = Find<QTextBrowser>(*Viewer(), "txbHelp");
  page.verticalScrollBar()->setValue(page.verticalScrollBar()->maximum());
  EXPECT_EQ(topics.currentRow(), 1);
}

TEST_F(Help, FindsFromTheVisiblePlaceOn) {
  platform.OpenHelp(manual, "frmInfo");
  const auto& page = Find<QTextBrowser>(*Viewer(), "txbHelp");
  Find<QLineEdit>(*Viewer(), "txbFind").setText("line");
  Press(*Viewer(), "cmdFind");
  EXPECT_EQ(page.textCursor().blockNumber(), 403);  // the first one below the third heading
  EXPECT_EQ(TopLine(), "Information");
  page.verticalScrollBar()->setValue(0);
  Press(*Viewer(), "cmdFind");
  EXPECT_LT(page.textCursor().blockNumber(), 40);
}

// The manual as it ships.
TEST_F(Help, HasATopicForEveryLinkEveryPictureAndShortLines) {
  platform.OpenHelp(AppFile(kHelpFile), "");
  ASSERT_TRUE(Viewer());
  auto& page = Find<QTextBrowser>(*Viewer(), "txbHelp");
  QSet<QString> anchors;
  QStringList links;
  int pictures = 0;
  for (QTextBlock block = page.document()->begin(); block.isValid(); block = block.next()) {
    for (int i = 0; i < block.layout()->lineCount(); ++i)
      EXPECT_LE(block.layout()->lineAt(i).textLength(), 91) << block.text().toStdString();
    for (auto part = block.begin(); !part.atEnd(); ++part) {
      const QTextCharFormat format = part.fragment().charFormat();
      for (const QString& name : format.anchorNames()) anchors.insert(name);
      if (!format.anchorHref().isEmpty()) links << format.anchorHref();
      if (!format.isImageFormat()) continue;
      ++pictures;
      const QVariant bytes =
          page.document()->resource(QTextDocument::ImageResource, QUrl(format.toImageFormat().name()));
      EXPECT_FALSE(QImage::fromData(bytes.toByteArray()).isNull() && bytes.value<QImage>().isNull());
    }
  }
  EXPECT_GE(pictures, 15);
  for (const QString& link : links) EXPECT_TRUE(anchors.contains(link.mid(1))) << link.toStdString();
  for (const char* window :
       {"frmExamine", "frmScale", "frmMask", "frmFilter", "frmDeConv", "frmInfo", "FTS_Hist", "frmProfile",
        "frmPref", "frmFITS", "frmPower", "frmAutoAdjust", "frmAbout"})
    EXPECT_TRUE(anchors.contains(window)) << window;
}

TEST_F(Help, NamesAFileThatIsMissingOrWasCut) {
  const std::string whole = ReadFile(manual);
  MakeUserFile("cut.HLP", whole.substr(0, whole.size() / 2));
  MakeUserFile("empty.HLP", "");
  for (const char* name : {"absent.HLP", "cut.HLP", "empty.HLP"}) {
    QString title, text;
    WhenShown<QMessageBox>([&](QMessageBox& box) {
      title = box.windowTitle();
      text = box.text();
      box.accept();
    });
    platform.OpenHelp(UserFile(name), "");
    EXPECT_EQ(title, "HELP ERROR");
    EXPECT_TRUE(text.contains(name));
    EXPECT_FALSE(Viewer());
  }
}

}  // namespace
}  // namespace corvane
