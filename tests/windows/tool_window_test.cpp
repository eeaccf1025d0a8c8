#include <QMenuBar>
#include <QPushButton>
#include <QTest>

#include "tests/support/app_dir_fixture.h"
#include "widgets/ToolIcons.h"
#include "widgets/ToolWindow.h"

namespace corvane {
namespace {

constexpr MenuItem kMenu[] = {{"&Run"}, {.text = "Check", .check = true}};
constexpr ToolKey kKeys[] = {{"open", "Run it", "mnuFileSel", 0}, {"mask", "Check", "mnuFileSel", 1}};

class SmallTool : public ToolWindow {
 public:
  SmallTool(ModCV& store, Platform& platform, Desk& windows)
      : ToolWindow("frmSmall", store, platform, windows), button(new QPushButton(this)) {
    AddMenu("mnuFileSel", "&File", kMenu, [this](int index) {
      chosen.push_back(index);
      if (index != 0) return;
      const Run run(*this);
      if (whileRunning) whileRunning();
    });
    AddHelpMenu();
    AddToolbar(kKeys);
    OnClick(button, [this] { chosen.push_back(-1); });
  }
  void Open() override {}
  void CancelRun() override { ++cancels; }
  bool MayExit() override { return mayExit; }
  QAction& At(int index) { return *Item("mnuFileSel", index); }

  QPushButton* button;
  std::vector<int> chosen;
  std::function<void()> whileRunning;
  int cancels = 0;
  bool mayExit = true;
};

class ToolWindowTest : public AppDirFixture {
 protected:
  SmallTool window{cv, os, desk};
};

TEST_F(ToolWindowTest, LeavesCheckMarksToTheHandler) {
  window.At(1).trigger();
  EXPECT_EQ(window.chosen, std::vector{1});
  EXPECT_FALSE(window.At(1).isChecked());
}

TEST_F(ToolWindowTest, IgnoresCommandsDuringARunAndClosesAfterIt) {
  window.show();
  window.whileRunning = [&] {
    window.At(0).trigger();
    window.At(1).trigger();
    window.button->click();
    EXPECT_FALSE(window.At(1).isChecked());
    EXPECT_FALSE(window.close());
    EXPECT_TRUE(window.isVisible());
  };
  window.At(0).trigger();
  EXPECT_EQ(window.chosen, std::vector{0});
  EXPECT_EQ(window.cancels, 1);
  EXPECT_TRUE(window.isVisible());
  QCoreApplication::processEvents();
  EXPECT_FALSE(window.isVisible());
}

TEST_F(ToolWindowTest, UnloadsOnceAndAsksBeforeTheProgramEnds) {
  window.show();
  window.mayExit = false;
  EXPECT_FALSE(window.close());
  EXPECT_TRUE(cv.KeepTempFiles);
  EXPECT_TRUE(os.settings.empty());
  window.mayExit = true;
  cv.ImageCount = 1;
  WriteFile(AppFile("0temp.bmp"), "x");
  EXPECT_TRUE(window.close());
  EXPECT_FALSE(cv.KeepTempFiles);
  EXPECT_TRUE(WorkingFiles().empty());
  EXPECT_EQ(os.settings.count("SaveDir"), 1u);
  os.settings.clear();
  window.Unload();
  EXPECT_TRUE(os.settings.empty());
}

TEST(ToolIcons, AreSharpAndVisibleOnEveryPalette) {
  EXPECT_TRUE(ToolIcon("nothing").isNull());
  const QPalette before = QGuiApplication::palette();
  for (const QColor& ink : {QColor(0, 0, 0), QColor(255, 255, 255)}) {
    QPalette palette = before;
    palette.setColor(QPalette::ButtonText, ink);
    QGuiApplication::setPalette(palette);
    for (const std::string_view key : ToolIconKeys())
      for (const int size : {16, 24, 48, 96}) {
        const QImage image = ToolIcon(key).pixmap(size, size).toImage();
        ASSERT_EQ(image.width(), size) << key;
        int inked = 0;
        for (int y = 0; y < size; ++y)
          for (int x = 0; x < size; ++x) inked += image.pixelColor(x, y).alpha() > 128;
        EXPECT_GT(inked, size * size / 20) << key << ' ' << size;
      }
  }
  QGuiApplication::setPalette(before);
}

}  // namespace
}  // namespace corvane
