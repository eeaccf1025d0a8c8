#include "tests/support/app_dir_fixture.h"
#include "tests/support/file_makers.h"
#include "tests/support/window_controls.h"
#include "viewer/frmInfo.h"

namespace corvane {
namespace {

class ImageInformation : public AppDirFixture {
 protected:
  void Open(const std::string& name, std::string_view bytes) {
    cv.CurrentName = cv.SlotName[OpenUserImage(name, bytes)];
  }
  static std::string Text(const QWidget& window, const char* label) {
    return Find<QLabel>(window, label).text().toStdString();
  }
  static QStringList Lines(const QWidget& window) {
    return Find<QTextEdit>(window, "RichTextBox1").toPlainText().split('\n', Qt::SkipEmptyParts);
  }
  const std::string fits = FitsImage(16, 3, 2, {1, 2, 3, 4, 5, 6}, {RawCard("OBJECT  = 'M 13'")});
};

TEST_F(ImageInformation, ShowsTheCardsOfAFitsImage) {
  Open("~m13.fit", fits);  // a changed picture keeps the header of its file
  const frmInfo window(cv, os);
  EXPECT_EQ(Text(window, "Label2"), "~m13.fit");
  EXPECT_EQ(Text(window, "Label4"), "5760");
  EXPECT_EQ(Text(window, "Label6"), "3  X  2");
  EXPECT_TRUE(Find<QLabel>(window, "Label7").isEnabled());
  EXPECT_TRUE(Find<QAbstractButton>(window, "cmdPrint").isEnabled());
  EXPECT_TRUE(Find<QTextEdit>(window, "RichTextBox1").isReadOnly());
  const QStringList lines = Lines(window);
  ASSERT_EQ(lines.size(), 7);
  EXPECT_EQ(lines[1].toStdString(), Card("BITPIX", 16));
  EXPECT_EQ(lines[5].toStdString(), RawCard("OBJECT  = 'M 13'"));
  EXPECT_EQ(lines[6].trimmed(), "END");
}

TEST_F(ImageInformation, HasNoHeaderForABitmap) {
  // 24 bits in the file; 8 bits, in rows of 8 bytes, as a display bitmap
  const BitmapSpec spec{.width = 5, .height = 3, .pixel = [](int, int) { return kRed; }, .palette = {}};
  for (const char* name : {"sky.bmp", "SKY.BMP"}) {
    Open(name, BitmapBytes(spec));
    const frmInfo window(cv, os);
    EXPECT_EQ(Text(window, "Label4"), std::to_string(1078 + 3 * 8));
    EXPECT_EQ(Text(window, "Label6"), "5  X  3");
    EXPECT_EQ(Lines(window), QStringList("There is no text header for a Windows bitmap."));
    EXPECT_FALSE(Find<QLabel>(window, "Label7").isEnabled());
    EXPECT_FALSE(Find<QAbstractButton>(window, "cmdPrint").isEnabled());
  }
}

TEST_F(ImageInformation, KeepsOneCardToALineWhateverBytesTheCardsHold) {
  std::string broken = RawCard("COMMENT <b>bold</b> line");
  broken[30] = '\n';
  broken[40] = '\0';
  broken[50] = '\x1b';
  broken[60] = '\xe9';
  const std::string name = std::string(90, 'n').append("<i>.fit");
  Open(name, FitsImage(8, 2, 1, {1, 2}, {broken}));
  const frmInfo window(cv, os);
  EXPECT_EQ(Text(window, "Label2"), name);
  EXPECT_LT(window.sizeHint().width(), 1000);
  const QStringList lines = Lines(window);
  ASSERT_EQ(lines.size(), 7);
  EXPECT_TRUE(lines[5].startsWith("COMMENT <b>bold</b>"));
  EXPECT_EQ(lines[5].size(), 80);
}

TEST_F(ImageInformation, PrintsTheHeaderBelowItsName) {
  Open("m13.fit", fits);
  const frmInfo window(cv, os);
  const QString before = Find<QTextEdit>(window, "RichTextBox1").toPlainText();
  os.printIsCancelled = true;
  Press(window, "cmdPrint");
  EXPECT_TRUE(os.prints.empty());
  os.printIsCancelled = false;
  Press(window, "cmdPrint");
  ASSERT_EQ(os.prints.size(), 1u);
  EXPECT_TRUE(os.prints[0]->ended);
  ASSERT_EQ(os.prints[0]->texts.size(), 1u);
  const QString printed = QString::fromStdString(os.prints[0]->texts[0]);
  EXPECT_EQ(printed, "FILE HEADER:  m13.fit\n" + QString(80, ' ') + '\n' + before);
  EXPECT_EQ(Find<QTextEdit>(window, "RichTextBox1").toPlainText(), before);
  os.printError = ENOSPC;
  os.Expect("PRINT ERROR", "The header could not be printed. Error Number 28");
  Press(window, "cmdPrint");
}

TEST_F(ImageInformation, FindsAKeywordByKeyboardAndStaysOpen) {
  Open("m13.fit", fits);
  frmInfo window(cv, os);
  window.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  const auto found = [&] { return Find<QTextEdit>(window, "RichTextBox1").textCursor(); };
  auto& box = Find<QLineEdit>(window, "txbFind");
  QTest::keyClick(&window, Qt::Key_F, Qt::ControlModifier);
  EXPECT_TRUE(box.hasFocus());
  QTest::keyClicks(&box, "naxis");
  QTest::keyClick(&box, Qt::Key_Return);
  EXPECT_EQ(found().selectedText(), "NAXIS");
  EXPECT_EQ(found().blockNumber(), 2);
  QTest::keyClick(&window, Qt::Key_F3);
  EXPECT_EQ(found().blockNumber(), 3);
  QTest::keyClick(&box, Qt::Key_Return);
  QTest::keyClick(&box, Qt::Key_Return);
  EXPECT_EQ(found().blockNumber(), 2);  // from the start again
  QTest::keyClicks(&box, "x");
  QTest::keyClick(&box, Qt::Key_Return);
  EXPECT_EQ(Text(window, "lblFound"), "Not found");
  EXPECT_EQ(found().blockNumber(), 2);
  EXPECT_TRUE(window.isVisible());
  Press(window, "cmdOK");
  EXPECT_FALSE(window.isVisible());
}

}  // namespace
}  // namespace corvane
