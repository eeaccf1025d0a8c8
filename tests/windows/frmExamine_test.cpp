#include "viewer/frmExamine.h"

#include "tests/support/file_limit.h"
#include "tests/windows/viewer_fixture.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class Viewer : public ViewerFixture {};

TEST_F(Viewer, StartsEmptyWithNothingToSaveOrClose) {
  EXPECT_EQ(window->windowTitle(), "Corvane Image Processor");
  for (const char* item : {"mnuFileSel_1", "mnuFileSel_2", "mnuFileSel_8", "mnuToolSel_0", "mnuToolSel_4",
                           "mnuToolSel_10", "mnuToolSel_11", "mnuToolSel_18"})
    EXPECT_FALSE(Item(item).isEnabled()) << item;
  EXPECT_TRUE(Item("mnuFileSel_0").isEnabled());
  EXPECT_EQ(Picture().cursor().shape(), Qt::ArrowCursor);
  EXPECT_EQ(window->focusWidget(), &Picture());
  Hover(3, 3);
  Click(3, 3);
  EXPECT_EQ(Readout(), "  ");
  auto& text = *Find<QWidget>(*window, "Picture1").findChild<QLabel*>();
  EXPECT_TRUE(text.isVisible());
  OpenSlope("small.fit", 5, 2);
  EXPECT_FALSE(text.isVisible());
}

TEST_F(Viewer, HasAButtonForEachKeyThatIsItsMenuItem) {
  std::string buttons;
  for (const auto* button : Find<QToolBar>(*window, "Toolbar1").findChildren<QToolButton*>()) {
    if (!button->defaultAction()) continue;
    buttons += (button->toolTip() + ": " + button->defaultAction()->objectName() + "; ").toStdString();
    EXPECT_FALSE(button->icon().isNull()) << buttons;
    EXPECT_TRUE(button->parentWidget()->rect().contains(button->geometry())) << buttons;
  }
  EXPECT_EQ(buttons,
            "Open File: mnuFileSel_0; Save Image: mnuFileSel_1; Close File: mnuFileSel_2; "
            "Image Information: mnuToolSel_0; Histogram: mnuToolSel_1; XY Profile: mnuToolSel_2; "
            "Raster Intensity: mnuToolSel_4; Edge Detection: mnuToolSel_5; Negative Image: mnuToolSel_6; "
            "Pseudo-Color: mnuToolSel_7; Deconvolution: mnuToolSel_8; Increase Magnification: mnuToolSel_10; "
            "Reduce Magnification: mnuToolSel_11; Rotate 90: mnuToolSel_13; Rotate 180: mnuToolSel_14; "
            "Flip Vertical: mnuToolSel_15; Flip Horizontal: mnuToolSel_16; Luminance Scaling: mnuToolSel_18; "
            "Image Filters: mnuToolSel_19; Image Mask: mnuToolSel_20; Align Images: mnuFileSel_4; "
            "Combine Images: mnuFileSel_5; Color Composite: mnuFileSel_6; ");
}

TEST_F(Viewer, OpensFilesOfBothKindsAndShowsThem) {
  OpenFile("m31.fit", FitsImage(16, 5, 2, {0, 100, 200, 300, 400, 500, 600, 700, 800, 1000}));
  ExpectPictureIsWhole();
  EXPECT_EQ(cv.SlotBytesPerPixel[0], 2);
  OpenFile("moon.bmp", GrayBitmap(24, 3, 2, [](int x, int y) { return 10 * x + 100 * y; }));
  ExpectPictureIsWhole();
  EXPECT_EQ(ShownLevels(), (std::vector<int>{100, 110, 120, 0, 10, 20}));
  EXPECT_THAT(List(), ElementsAre("m31.fit", "moon.bmp"));
  EXPECT_EQ(Find<QComboBox>(*window, "Combo1").currentIndex(), 1);
  EXPECT_EQ(Picture().cursor().shape(), Qt::CrossCursor);
  for (const char* item : {"mnuFileSel_1", "mnuFileSel_2", "mnuFileSel_8"})
    EXPECT_TRUE(Item(item).isEnabled()) << item;
  EXPECT_EQ(os.openRequests.at(0).title, "File to View");
  EXPECT_FALSE(os.busy);
}

TEST_F(Viewer, KeepsTheImageShownWhenAFileIsRefusedAndTheViewWhenADialogIsCancelled) {
  OpenSlope("good.fit", 7, 3);
  const std::vector<int> before = ShownLevels();
  const std::string damaged = Slope(40, 200).substr(0, 5000);
  os.Expect("FILE ERROR", HasSubstr("Display cancelled."));
  OpenFile("cut.fit", damaged);
  os.Expect("UNRECOGNISED FILE EXTENSION ", "File extension must be '.bmp', '.fit', '.fts' or '.ftz'.");
  OpenFile("image.Fit", Slope(2, 2));
  os.ChooseToOpen(MakeUserFile("large.fit", Slope(60, 50)));
  os.Expect("FILE OPEN ERROR", HasSubstr("can't be written"));
  {
    const FileSizeLimit full(2000);
    Choose("mnuFileSel_0");
  }
  EXPECT_THAT(List(), ElementsAre("good.fit"));
  EXPECT_EQ(ShownLevels(), before);
  ExpectPictureIsWhole();
  EXPECT_EQ(cv.CurrentName, "good.fit");

  Choose("mnuToolSel_6");
  const std::vector<int> negative = ShownLevels();
  os.CancelOpen();
  Choose("mnuFileSel_0");
  os.CancelSave();
  Choose("mnuFileSel_1");
  EXPECT_TRUE(Checked("mnuToolSel_6"));
  EXPECT_EQ(ShownLevels(), negative);
}

TEST_F(Viewer, ReadsOutEveryPixelAtOddWidths) {
  for (const int width : {1, 3, 4, 5}) {
    const std::string name = std::to_string(width) + ".fit";
    OpenSlope(name, width, 3);
    for (int y = 0; y < 3; ++y)
      for (int x = 0; x < width; ++x) {
        Hover(x, y);
        const int level = ((2 - y) * width + x) * 7 % 251;
        EXPECT_EQ(Readout(),
                  std::to_string(x + 1) + " " + std::to_string(y + 1) + " " + std::to_string(level));
        EXPECT_EQ(Status(), "Value " + std::to_string(level) + ", FITS row " + std::to_string(3 - y));
      }
    Mouse(Picture(), QEvent::MouseMove, {width, 0});  // just outside
    EXPECT_EQ(Readout(), "  ");
  }
}

TEST_F(Viewer, ClearsTheReadoutBesideThePicture) {
  OpenSlope("a.fit", 700, 500);
  for (const char* place : {"Picture1", "frImage", "frPixel", "frmExamine"}) {
    Hover(1, 499);
    EXPECT_EQ(Box("txbXPos"), "2");
    QWidget& widget = std::string(place) == "frmExamine" ? *window : Find<QWidget>(*window, place);
    EXPECT_TRUE(widget.hasMouseTracking()) << place;
    Mouse(widget, QEvent::MouseMove, {1, 1});
    EXPECT_EQ(Readout(), "  ") << place;
  }
  for (const char* bar : {"hsbHor", "vsbVert"}) {
    Hover(1, 499);
    Bar(bar).setValue(5);
    EXPECT_EQ(Readout(), "  ") << bar;
  }
  QEvent leave(QEvent::Leave);
  Hover(1, 499);
  QApplication::sendEvent(&Picture(), &leave);
  EXPECT_EQ(Readout(), "  ");
}

TEST_F(Viewer, MarksPixelsByMouseAndArrowKeysInsideThePicture) {
  OpenSlope("a.fit", 20, 10);
  auto& list = Find<QComboBox>(*window, "Combo1");
  list.setFocus();
  EXPECT_FALSE(Item("mnuToolSel_2").isEnabled());
  Click(4, 6);
  EXPECT_TRUE(Item("mnuToolSel_2").isEnabled());
  EXPECT_EQ(window->focusWidget(), &Picture());
  EXPECT_EQ(Readout().substr(0, 4), "5 7 ");
  const auto isMarked = [&](int x, int y) { return Picture().Point(x, y) == QColor(0, 255, 0); };
  for (int distance = 1; distance <= 4; ++distance)  // the arms of the cross
    for (const int step : {-distance, distance})
      EXPECT_EQ(std::tuple(isMarked(4 + step, 6), isMarked(4, 6 + step), isMarked(4 + step, 6 + step)),
                std::tuple(distance < 4, distance < 4, false))
          << step;
  EXPECT_EQ(cv.XProfile.size(), 20u);
  EXPECT_EQ(cv.YProfile.size(), 10u);
  Hover(0, 0);  // the marker holds the read-out
  Mouse(Find<QWidget>(*window, "frImage"), QEvent::MouseMove, {1, 1});
  EXPECT_EQ(Readout().substr(0, 4), "5 7 ");

  for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Up, Qt::Key_Right, Qt::Key_Down})
    QTest::keyClick(&Picture(), key);
  EXPECT_EQ(cv.MarkX, 5);
  EXPECT_EQ(cv.MarkY, 7);
  EXPECT_FALSE(isMarked(4, 3)) << "the cross has moved";
  const auto press = [&](Qt::Key first, Qt::Key second, int times) {
    for (int i = 0; i < times; ++i)
      for (const Qt::Key key : {first, second}) QTest::keyClick(&Picture(), key);
    return Readout();
  };
  EXPECT_THAT(press(Qt::Key_Right, Qt::Key_Up, 30), StartsWith("20 10 "));
  EXPECT_THAT(press(Qt::Key_Left, Qt::Key_Down, 30), StartsWith("1 1 "));
  Mouse(Picture(), QEvent::MouseButtonPress, {500, -80}, Qt::LeftButton, Qt::LeftButton);
  EXPECT_EQ(Readout().substr(0, 6), "20 10 ");

  // The second of two quick presses comes as a double click.
  Mouse(Picture(), QEvent::MouseButtonDblClick, At(8, 3), Qt::LeftButton, Qt::LeftButton);
  EXPECT_EQ(Readout().substr(0, 4), "9 4 ");
  // The list has no use for these keys.
  list.setFocus();
  for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Left, Qt::Key_Right}) QTest::keyClick(&list, key);
  EXPECT_EQ(Readout().substr(0, 4), "8 4 ");

  Click(3, 3, Qt::RightButton);
  EXPECT_FALSE(Item("mnuToolSel_2").isEnabled());
  EXPECT_EQ(Readout(), "  ");
  EXPECT_NE(Picture().Point(7, 3), QColor(0, 255, 0));
  Hover(2, 2);
  EXPECT_EQ(Readout().substr(0, 4), "3 3 ");
}

TEST_F(Viewer, KeepsTheMarkerInsideASmallerPictureAndInSight) {
  OpenSlope("small.fit", 8, 6);
  OpenSlope("large.fit", 900, 700);
  Click(610, 699);
  QTest::keyClick(&Picture(), Qt::Key_Right);
  EXPECT_EQ(Bar("hsbHor").value(), 1);
  EXPECT_EQ(Readout().substr(0, 8), "612 700 ");
  Find<QComboBox>(*window, "Combo1").setCurrentIndex(0);
  EXPECT_EQ(cv.MarkX, 7);
  EXPECT_EQ(cv.MarkY, 5);
  EXPECT_EQ(Picture().Point(7, 5), QColor(0, 255, 0));
}

TEST_F(Viewer, KeepsThePlaceInPicturesOfOneSize) {
  OpenSlope("other.fit", 700, 700);
  OpenSlope("b.fit", 800, 800);
  OpenSlope("a.fit", 800, 800);
  const auto moves = [&](auto command) {
    Bar("hsbHor").setValue(40);
    Bar("vsbVert").setValue(9);
    command();
    return Picture().pos() != QPoint(-40, -9) || Bar("hsbHor").value() != 40;
  };
  EXPECT_FALSE(moves([&] { Find<QComboBox>(*window, "Combo1").setCurrentIndex(1); }));
  for (const char* view : {"mnuToolSel_6", "mnuToolSel_14"}) {
    EXPECT_FALSE(moves([&] { Choose(view); }));
    EXPECT_FALSE(moves([&] { Choose(view); }));
  }
  for (const char* way : {"there", "back"}) {
    EXPECT_TRUE(moves([&] { Choose("mnuToolSel_13"); })) << way;
    EXPECT_EQ(Picture().pos(), QPoint(0, 0)) << way;
  }
  EXPECT_TRUE(moves([&] { Find<QComboBox>(*window, "Combo1").setCurrentIndex(0); }));
  EXPECT_EQ(Picture().pos(), QPoint(0, 0));
}

TEST_F(Viewer, KeepsThePixelInTheMiddleWhenMagnified) {
  constexpr char kMagnify[] = "mnuToolSel_10";
  constexpr char kDeMagnify[] = "mnuToolSel_11";
  const int inMiddle = 611 / 2;
  OpenSlope("a.fit", 900, 900);
  Bar("hsbHor").setValue(450 - inMiddle);
  Bar("vsbVert").setValue(300 - 406 / 2);
  Choose(kMagnify);
  Choose(kMagnify);
  EXPECT_NEAR(inMiddle - Picture().x(), 3 * 450, 3);
  EXPECT_NEAR(406 / 2 - Picture().y(), 3 * 300, 3);
  Choose(kDeMagnify);
  Choose(kDeMagnify);
  EXPECT_EQ(Picture().pos(), QPoint(inMiddle - 450, 406 / 2 - 300));

  Click(700, 800);  // not in the middle: the marked pixel goes there
  for (const int factor : {2, 3}) {
    Choose(kMagnify);
    EXPECT_EQ(QPoint(cv.MarkX, cv.MarkY), QPoint(700, 800) * factor);
    EXPECT_EQ(Picture().Point(cv.MarkX, cv.MarkY), QColor(0, 255, 0));
    EXPECT_NEAR(inMiddle - Picture().x(), 700 * factor, factor);
  }
  Choose("mnuToolSel_6");
  EXPECT_EQ(QPoint(cv.MarkX, cv.MarkY), QPoint(700, 800));
  Choose(kMagnify);
  SaveTo("magnified.bmp");
  EXPECT_EQ(QPoint(cv.MarkX, cv.MarkY), QPoint(1400, 1600)) << "the picture is the same";
  OpenSlope("small.fit", 8, 6);
  Click(7, 5);
  Choose(kMagnify);
  EXPECT_EQ(QPoint(cv.MarkX, cv.MarkY), QPoint(14, 10));
  EXPECT_EQ(Readout(), "  ");
  EXPECT_EQ(Picture().pos(), QPoint(0, 0));
}

TEST_F(Viewer, DescribesTheMarkedPixelWhileThePointerIsNotFree) {
  const std::string keys = " Arrow keys move the mark, a right click frees the pointer.";
  OpenFile("b.bmp", GrayBitmap(8, 9, 4, [](int x, int y) { return x + 10 * y; }));
  OpenFile("a.fit", FitsImage(16, 3, 2, {0, 1000, 2000, 3000, 4000, 5000}));
  Click(1, 0);
  EXPECT_EQ(Status(), "Marked at 2, 1. Value 4000, FITS row 2." + keys);
  QTest::keyClick(&Picture(), Qt::Key_Up);
  Hover(-1, 0);
  EXPECT_EQ(Status(), "Marked at 2, 2. Value 1000, FITS row 1." + keys);
  Find<QComboBox>(*window, "Combo1").setCurrentIndex(0);
  EXPECT_EQ(Readout(), "  ");
  EXPECT_EQ(Status(), "Marked at 2, 2. Level " + std::to_string(cv.Display().At(1, 1)) + "." + keys);
  Choose("mnuToolSel_13");
  Click(0, 8);
  Choose("mnuToolSel_13");
  EXPECT_THAT(Status(), StartsWith("Marked at 1, 4. ")) << "the nearest pixel of the picture";
  Click(0, 0, Qt::RightButton);
  EXPECT_EQ(Status(), "");
}

TEST_F(Viewer, GivesThePictureWhatTheWindowGains) {
  OpenSlope("a.fit", 700, 500);
  auto& view = Find<QWidget>(*window, "Picture1");
  EXPECT_EQ(view.size(), QSize(611, 406));
  Bar("hsbHor").setValue(80);
  window->resize(window->size() + QSize(60, 200));
  QCoreApplication::processEvents();
  EXPECT_EQ(view.size(), QSize(671, 606));
  EXPECT_EQ(Bar("hsbHor").maximum(), 29);
  EXPECT_EQ(Picture().pos(), QPoint(-29, 0));
  EXPECT_FALSE(Bar("vsbVert").isVisible());
  window->resize(1, 1);
  QCoreApplication::processEvents();
  EXPECT_EQ(view.size(), QSize(611, 406));
  EXPECT_EQ(Bar("vsbVert").maximum(), 94);
}

TEST_F(Viewer, ScrollsPicturesThatAreLargerThanTheViewport) {
  const auto ranges = [&](int width, int height) {
    OpenSlope(std::to_string(width) + "x" + std::to_string(height) + ".fit", width, height);
    return std::array{Bar("hsbHor").isVisible() ? Bar("hsbHor").maximum() : -1,
                      Bar("vsbVert").isVisible() ? Bar("vsbVert").maximum() : -1};
  };
  EXPECT_THAT(ranges(611, 406), ElementsAre(-1, -1));
  EXPECT_THAT(ranges(612, 406), ElementsAre(1, -1));
  EXPECT_THAT(ranges(100, 500), ElementsAre(-1, 94));
  EXPECT_THAT(ranges(700, 500), ElementsAre(89, 94));
  EXPECT_EQ(Bar("hsbHor").pageStep(), 611);
  EXPECT_EQ(Bar("vsbVert").pageStep(), 406);

  Bar("hsbHor").setValue(40);
  Bar("vsbVert").setValue(9);
  EXPECT_EQ(Picture().pos(), QPoint(-40, -9));
  const auto wheel = [&](int notches, Qt::KeyboardModifiers modifiers) {
    QWheelEvent event({300, 200}, Picture().mapToGlobal(QPointF(300, 200)), {}, {0, 120 * notches},
                      Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&Picture(), &event);
  };
  wheel(-1, Qt::NoModifier);
  EXPECT_EQ(Picture().x(), -40);
  EXPECT_LT(Picture().y(), -9);
  wheel(5, Qt::NoModifier);
  EXPECT_EQ(Picture().y(), 0);
  wheel(5, Qt::ShiftModifier);
  EXPECT_EQ(Picture().pos(), QPoint(0, 0));

  const std::pair<Qt::Key, QPoint> keys[] = {
      {Qt::Key_Right, {-24, 0}}, {Qt::Key_Down, {-24, -24}}, {Qt::Key_Left, {0, -24}}, {Qt::Key_Up, {0, 0}}};
  for (const auto& [key, place] : keys) {
    QTest::keyClick(&Picture(), key);
    EXPECT_EQ(Picture().pos(), place);
  }

  const QPoint grip(300, 200);
  Mouse(Picture(), QEvent::MouseButtonPress, grip, Qt::MiddleButton, Qt::MiddleButton);
  for (int i = 0; i < 2; ++i)  // the picture follows, so the pointer is over the same pixel again
    Mouse(Picture(), QEvent::MouseMove, grip - QPoint(30, 20), Qt::NoButton, Qt::MiddleButton);
  Mouse(Picture(), QEvent::MouseButtonRelease, grip, Qt::MiddleButton);
  EXPECT_EQ(Picture().pos(), QPoint(-60, -40));
  Hover(50, 450);  // the drag is over
  EXPECT_EQ(Picture().pos(), QPoint(-60, -40));
  EXPECT_EQ(Readout().substr(0, 7), "51 451 ");
  ranges(720, 500);
  EXPECT_EQ(Picture().pos(), QPoint(0, 0));
  EXPECT_EQ(std::pair(Bar("hsbHor").value(), Bar("vsbVert").value()), std::pair(0, 0));
}

TEST_F(Viewer, ClosesTheMiddleImageAndShowsTheLast) {
  int width = 5;
  for (const char* name : {"a.fit", "b.fit", "c.fit"}) OpenSlope(name, width++, 3);
  Find<QComboBox>(*window, "Combo1").setCurrentIndex(1);
  Choose("mnuFileSel_2");
  EXPECT_THAT(List(), ElementsAre("a.fit", "c.fit"));
  EXPECT_EQ(Find<QComboBox>(*window, "Combo1").currentIndex(), 1);
  EXPECT_EQ(cv.CurrentName, "c.fit");
  EXPECT_EQ(cv.Width(), 7);
  ExpectPictureIsWhole();
  EXPECT_THAT(WorkingFiles(), ElementsAre("0temp.bmp", "1temp.bmp"));

  Click(1, 1);
  Choose("mnuFileSel_2");
  Choose("mnuFileSel_2");
  EXPECT_THAT(List(), IsEmpty());
  EXPECT_THAT(WorkingFiles(), IsEmpty());
  EXPECT_FALSE(Item("mnuFileSel_1").isEnabled());
  EXPECT_FALSE(Item("mnuToolSel_2").isEnabled());
  EXPECT_EQ(Picture().cursor().shape(), Qt::ArrowCursor);
  EXPECT_EQ(Readout() + Box("txbWidth") + Box("txbHeight"), "  ");
  EXPECT_FALSE(Picture().HasPicture());
  OpenSlope("d.fit", 4, 4);
  ExpectPictureIsWhole();
}

TEST_F(Viewer, RebuildsListAndPictureFromTheStoreWhenAToolReturns) {
  OpenSlope("a.fit", 5, 3);
  OpenSlope("b.fit", 6, 4);
  Find<QComboBox>(*window, "Combo1").setCurrentIndex(0);
  cv.SlotName[1] = "~b.fit";
  cv.ImageChanged = cv.DeconvCancelled = true;
  Start();
  EXPECT_THAT(List(), ElementsAre("a.fit", "~b.fit"));
  EXPECT_EQ(Find<QComboBox>(*window, "Combo1").currentIndex(), 0);
  ExpectPictureIsWhole();
  EXPECT_TRUE(Item("mnuFileSel_1").isEnabled());
  EXPECT_EQ(Picture().cursor().shape(), Qt::CrossCursor);
  EXPECT_FALSE(cv.ImageChanged || cv.DeconvCancelled);
}

TEST_F(Viewer, LeavesTheSlotsToTheNextWindowAndTakesThemAlongAtExit) {
  for (const bool byBox : {false, true}) {
    cv.KeepTempFiles = true;
    OpenSlope("a.fit", 5, 3);
    for (const char* name : {"temp.bmp", "dummy.bmp", "expand.bmp", "f_color.bmp"})
      WriteFile(AppFile(name), "x");
    cv.SaveDir = "/data/out";
    window->Unload();
    EXPECT_THAT(WorkingFiles(), ElementsAre("0temp.bmp"));
    EXPECT_EQ(os.settings["SaveDir"], "/data/out");
    EXPECT_EQ(os.settings["DefaultDir"], (folder.Path() / "user").string());
    Start();
    byBox ? static_cast<void>(window->close()) : Choose("mnuFileSel_10");
    EXPECT_FALSE(window->isVisible());
    EXPECT_THAT(WorkingFiles(), IsEmpty());
    cv.ImageCount = 0;
    Start();
  }
}

TEST_F(Viewer, SurvivesTheLossOfAWorkingFile) {
  OpenFile("sky.fit", FitsImage(16, 5, 2, {0, 100, 200, 300, 400, 500, 600, 700, 800, 1000}));
  const std::vector<int> sky = ShownLevels();
  OpenFile("moon.bmp", GrayBitmap(8, 4, 4, [](int x, int) { return x; }));
  for (const char* name : {"0temp.bmp", "1temp.bmp"}) std::filesystem::remove(AppFile(name));
  Find<QComboBox>(*window, "Combo1").setCurrentIndex(0);
  EXPECT_EQ(ShownLevels(), sky);
  os.Expect("FILE OPEN ERROR", HasSubstr("1temp.bmp"));
  Find<QComboBox>(*window, "Combo1").setCurrentIndex(1);
  EXPECT_FALSE(Item("mnuFileSel_1").isEnabled());
  Hover(0, 0);
  Click(0, 0);
  Choose("mnuFileSel_2");
  EXPECT_EQ(ShownLevels(), sky);
  ExpectPictureIsWhole();
}

TEST_F(Viewer, ShowsNumbersTheSameWhateverTheLocale) {
  QLocale::setDefault(QLocale(QLocale::German));
  OpenFile("a.fit", FitsImage(-32, 1200, 1, std::vector<double>(1200, 1234.5)));
  Hover(1100, 0);
  EXPECT_EQ(Readout(), "1101 1 0");
  EXPECT_EQ(Box("txbWidth"), "1200");
  EXPECT_EQ(Status(), "Value 1234.5, FITS row 1");
  QLocale::setDefault(QLocale::c());
}

TEST_F(Viewer, HintsAtLuminanceScalingWhereNearlyAllIsDark) {
  std::vector<double> levels(100, 3);
  levels[7] = 60000;
  OpenFile("faint.fit", FitsImage(32, 10, 10, levels));
  EXPECT_THAT(Status(), HasSubstr("Luminance Scaling, Logarithmic Scale, brings out faint detail"));
  Hover(0, 0);
  EXPECT_EQ(Status(), "Value 3, FITS row 10");
  Hover(-1, 0);
  Choose("mnuToolSel_6");
  EXPECT_EQ(Status(), "") << "its negative is bright";
  Choose("mnuToolSel_6");
  EXPECT_THAT(Status(), HasSubstr("Luminance Scaling"));
  OpenSlope("bright.fit", 10, 10);
  EXPECT_EQ(Status(), "");
  for (const char* hint : {"Luminance Scaling", ""}) {
    Choose("mnuFileSel_2");
    EXPECT_THAT(Status(), hint[0] ? testing::Matcher<std::string>(HasSubstr(hint)) : "");
  }
}

TEST_F(Viewer, ReadsThePictureAgainAfterADialogThatReadsPictures) {
  OpenSlope("a.fit", 9, 4);
  desk.dialogs[Dialog::Histogram] = [this] { cv.DisplayBits[0] ^= 0xff; };
  Choose("mnuToolSel_1");
  ExpectPictureIsWhole();
}

TEST_F(Viewer, ShowsTheHourglassForWhatTakesLong) {
  OpenSlope("a.fit", 9, 4);
  for (const char* item : {"mnuToolSel_10", "mnuToolSel_13"}) {
    SCOPED_TRACE(item);
    ExpectHourglass([&] { Choose(item); });
  }
}

TEST_F(Viewer, LetsShortcutsWorkFromEveryFocus) {
  ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
  OpenSlope("a.fit", 4, 4);
  for (const char* name : {"picMark", "Combo1", "txbLum"}) {
    auto& control = Find<QWidget>(*window, name);
    control.setFocus();
    os.CancelSave();
    QTest::keyClick(&control, Qt::Key_S, Qt::ControlModifier);
    os.VerifyScript();
    desk.dialogs[Dialog::Preferences] = [] {};
    desk.shown.clear();
    QTest::keyClick(&control, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(desk.shown.size(), 1u) << name;
    QTest::keyClick(&control, Qt::Key_F1);
    EXPECT_EQ(os.helpCalls.back().second, "frmExamine");
  }
  EXPECT_EQ(Find<QLineEdit>(*window, "txbLum").focusPolicy(), Qt::NoFocus);
}

}  // namespace
}  // namespace corvane
