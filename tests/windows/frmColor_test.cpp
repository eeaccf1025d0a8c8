#include <QCloseEvent>
#include <QComboBox>
#include <QLineEdit>
#include <QSpinBox>
#include <QTest>
#include <sstream>

#include "base/numeric.h"
#include "core/slot_picture.h"
#include "tests/support/file_limit.h"
#include "tests/windows/tool_fixture.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::StartsWith;

constexpr char kOpen[] = "mnuFileSel_0";
constexpr char kClose[] = "mnuFileSel_1";
constexpr char kPrint[] = "mnuFileSel_7";
constexpr char kExit[] = "mnuFileSel_9";
constexpr char kTitle[] = "  Corvane RGB Composite:  Displayed Image =  ";

class ColorWindow : public ToolFixture {
 protected:
  ColorWindow() : ToolFixture(Window::Color) {}

  static std::string Field(int width, int height, int seed) {
    Random random(seed);
    std::vector<double> levels;
    for (int i = 0; i < width * height; ++i) levels.push_back(random.Below(256));
    return FitsImage(8, width, height, levels);
  }
  void OpenThree(int width = 5, int height = 3) {
    for (const char* name : {"r.fit", "g.fit", "b.fit"}) OpenUserImage(name, Field(width, height, name[0]));
    Start();
    ChooseSources(0, 1, 2);
  }
  QComboBox& List(const char* name) { return Find<QComboBox>(*window, name); }
  QLineEdit& Box(const char* name) { return Find<QLineEdit>(*window, name); }
  void ChooseSources(int red, int green, int blue) {
    List("ComboR").setCurrentIndex(red);
    List("ComboG").setCurrentIndex(green);
    List("ComboB").setCurrentIndex(blue);
  }
  std::vector<int> Sources() {
    return {List("ComboR").currentIndex(), List("ComboG").currentIndex(), List("ComboB").currentIndex()};
  }
  void SetMultipliers(const char* red, const char* green, const char* blue) {
    Box("txbRed").setText(red);
    Box("txbGreen").setText(green);
    Box("txbBlue").setText(blue);
  }
  std::string Multipliers() {
    return (Box("txbRed").text() + ' ' + Box("txbGreen").text() + ' ' + Box("txbBlue").text()).toStdString();
  }
  void Combine() { Press(*window, "cmdCombine"); }
  void SaveTo(const std::string& name) {
    os.ChooseToSave(UserFile(name));
    Press(*window, "cmdSave");
  }
  std::string Title() { return window->windowTitle().toStdString(); }
  std::string Enabled() {
    std::ostringstream enabled;
    for (const char* name : {"cmdCombine", "cmdCancel", "cmdSave", "ComboR", "ComboG", "ComboB", "Toolbar1"})
      if (Find<QWidget>(*window, name).isEnabled()) enabled << name << ' ';
    for (const char* name : {kOpen, kClose, "mnuFileSel_3", "mnuFileSel_4", "mnuFileSel_5", kPrint, kExit,
                             "mnuToolSel_0", "mnuToolSel_1", "mnuHelpSel_0"})
      if (Item(name).isEnabled()) enabled << name << ' ';
    return enabled.str();
  }
  const std::string kNoComposite =
      "cmdCombine ComboR ComboG ComboB Toolbar1 mnuFileSel_0 mnuFileSel_1 mnuFileSel_3 mnuFileSel_4 "
      "mnuFileSel_5 mnuFileSel_7 "
      "mnuFileSel_9 mnuToolSel_0 mnuToolSel_1 mnuHelpSel_0 ";
  const std::string kComposite = "cmdCancel cmdSave mnuFileSel_7 mnuFileSel_9 mnuHelpSel_0 ";
  // All that a command which does nothing must leave alone; short, as nobody reads it.
  std::size_t Everything() {
    return std::hash<std::string>()(LastingState() + Title() + Enabled() + Multipliers() +
                                    testing::PrintToString(Sources()) + cv.CurrentName +
                                    testing::PrintToString(Pixels(cv.Display())) +
                                    testing::PrintToString(Colors(Picture("picColor").Flattened())));
  }

  // Blue, green and red of the pixels, bottom row first.
  static std::vector<int> Colors(const QImage& image) {
    std::vector<int> colors;
    for (int y = image.height() - 1; y >= 0; --y)
      for (int x = 0; x < image.width(); ++x) {
        const QRgb pixel = image.pixel(x, y);
        colors.insert(colors.end(), {qBlue(pixel), qGreen(pixel), qRed(pixel)});
      }
    return colors;
  }
  // The composite of the slots' files, as they were before the window had anything to do with them.
  std::vector<int> ExpectedColors(std::vector<int> slots, std::vector<float> multipliers) {
    ModCV other;
    other.AppDir = cv.AppDir;
    std::vector<std::vector<int>> planes;
    for (const int slot : slots) {
      EXPECT_FALSE(LoadDisplayBits(other, cv.SlotBitmap(slot)));
      planes.push_back(Pixels(other.Display()));
    }
    std::vector<int> colors;
    for (std::size_t i = 0; i < planes[0].size(); ++i)
      for (const std::size_t color : {2, 1, 0})
        colors.push_back(ToByte(static_cast<float>(planes[color][i]) * multipliers[color]));
    return colors;
  }
};

TEST_F(ColorWindow, OpensWithTheCurrentImageAsEverySource) {
  Start();
  EXPECT_EQ(Title(), "  Corvane RGB Composite");
  EXPECT_EQ(Enabled(),
            "Toolbar1 mnuFileSel_0 mnuFileSel_3 mnuFileSel_4 mnuFileSel_5 mnuFileSel_9 mnuHelpSel_0 ");
  Choose(kClose);
  OpenUserImage("a.fit", Field(5, 4, 1));
  OpenUserImage("b.fit", Field(5, 4, 2));
  cv.CurrentSlot = 0;
  Start();
  EXPECT_EQ(Title(), kTitle + std::string("a.fit"));
  EXPECT_EQ(Enabled(), kNoComposite);
  EXPECT_THAT(Sources(), ElementsAre(0, 0, 0));
  EXPECT_EQ(Multipliers(), "1.0 1.0 1.0");
  EXPECT_EQ(LevelsOf(Picture("picColor").Flattened()), Pixels(cv.Display()));
  List("ComboG").setCurrentIndex(1);
  EXPECT_THAT(Sources(), ElementsAre(0, 1, 0));
  EXPECT_EQ(cv.CurrentSlot, 1);
  EXPECT_EQ(cv.CurrentName, "b.fit");
  EXPECT_EQ(Title(), kTitle + std::string("b.fit"));
  EXPECT_EQ(LevelsOf(Picture("picColor").Flattened()), Pixels(cv.Display()));
}

TEST_F(ColorWindow, WritesAndShowsTheCompositeAndSavesExactlyIt) {
  for (int width = 4; width <= 7; ++width) {
    SCOPED_TRACE(width);
    OpenThree(width, 3);
    SetMultipliers("1.35", "0.05", "2");
    Combine();
    const std::vector<int> colors = ExpectedColors({0, 1, 2}, {1.35f, 0.05f, 2});
    EXPECT_EQ(Colors(Picture("picColor").Flattened()), colors);
    EXPECT_EQ(Title(), kTitle + std::string("Color Composite"));
    EXPECT_EQ(Enabled(), kComposite);

    const std::string file = ReadFile(AppFile("temp.bmp"));
    const std::uint32_t stride = width == 4 ? 12 : width == 5 ? 16 : width == 6 ? 20 : 24;
    ASSERT_EQ(file.size(), 54 + 3 * stride);
    const std::pair<int, std::uint32_t> fields[] = {
        {2, 54 + 3 * stride}, {10, 54}, {18, width}, {22, 3}, {28, 24}, {30, 0},
        {34, 3 * stride},     {46, 0},  {50, 0}};
    for (const auto& [offset, value] : fields) EXPECT_EQ(FieldAt(file, offset), value) << offset;
    std::string pixels(3 * stride, '\0');
    for (int i = 0; i < 9 * width; ++i)
      pixels[i / (3 * width) * stride + i % (3 * width)] = static_cast<char>(colors[i]);
    EXPECT_EQ(file.substr(54), pixels);

    SaveTo("color.bmp");
    EXPECT_EQ(ReadFile(UserFile("color.bmp")), file);
    EXPECT_EQ(Title(), kTitle + std::string("r.fit"));
    EXPECT_EQ(Enabled(), kNoComposite);
    EXPECT_THAT(WorkingFiles(), ElementsAre("0temp.bmp", "1temp.bmp", "2temp.bmp"));
    EXPECT_EQ(LevelsOf(Picture("picColor").Flattened()), Pixels(cv.Display()));
    for (int i = 0; i < 3; ++i) Choose(kClose);
  }
  EXPECT_EQ(os.saveRequests.at(0).title, "Save Color Composite Image As...");
  EXPECT_EQ(os.saveRequests.at(0).filter, "bmp File (*.bmp)|*.bmp|");
  EXPECT_EQ(os.saveRequests.at(0).defaultExtension, "bmp");
}

TEST_F(ColorWindow, UndoShowsTheRedImageAgain) {
  OpenThree();
  List("ComboR").setCurrentIndex(1);
  List("ComboG").setCurrentIndex(0);
  const std::string before = LastingState();
  Combine();
  Press(*window, "cmdCancel");
  EXPECT_EQ(Title(), kTitle + std::string("g.fit"));
  EXPECT_EQ(cv.CurrentSlot, 1);
  EXPECT_EQ(Enabled(), kNoComposite);
  EXPECT_EQ(LastingState(), before);
  EXPECT_THAT(Sources(), ElementsAre(1, 0, 2));
}

TEST_F(ColorWindow, AsksBeforeItTakesAnImageTwice) {
  OpenThree();
  const char* question =
      "The three selected images are not all different!\n"
      "Do you want to proceed with the color composite anyway?";
  const int cases[][3] = {{1, 1, 1}, {0, 0, 2}, {0, 1, 0}, {2, 1, 1}};
  for (const auto& [red, green, blue] : cases) {
    SCOPED_TRACE(testing::Message() << red << green << blue);
    ChooseSources(red, green, blue);
    const std::size_t before = Everything();
    for (const Answer answer : {Answer::No, Answer::Cancel}) {
      os.Expect("???", question, answer);
      Combine();
      EXPECT_EQ(Everything(), before);
    }
    os.Expect("???", question, Answer::Yes);
    Combine();
    EXPECT_EQ(Colors(Picture("picColor").Flattened()), ExpectedColors({red, green, blue}, {1, 1, 1}));
    Press(*window, "cmdCancel");
  }
}

TEST_F(ColorWindow, OffersTheAlignerForImagesOfDifferentSizes) {
  OpenThree(6, 3);
  OpenUserImage("wide.fit", Field(7, 3, 1));  // rows of as many bytes
  OpenUserImage("high.fit", Field(6, 4, 1));
  const char* question =
      "The images can not be combined unless they are the same size!\n"
      "Do you want to switch to the size and alignment program?";
  cv.CurrentSlot = 0;
  Start();
  for (const int odd : {3, 4})
    for (int color = 0; color < 3; ++color) {
      int sources[] = {0, 1, 2};
      sources[color] = odd;
      ChooseSources(sources[0], sources[1], sources[2]);
      const std::size_t before = Everything();
      os.Expect("SIZE ERROR", question, color == 1 ? Answer::No : Answer::Cancel);
      Combine();
      EXPECT_EQ(Everything(), before) << odd << color;
    }
  EXPECT_TRUE(desk.replacedBy.empty());
  os.Expect("SIZE ERROR", question, Answer::Yes);
  Combine();
  EXPECT_THAT(desk.replacedBy, ElementsAre(Window::Align));
}

TEST_F(ColorWindow, RefusesMultipliersBeyondTheLimits) {
  OpenThree();
  const struct {
    const char *red, *green, *blue, *shown;
    bool isSmall;
  } cases[] = {
      {"0.04", "1", "1", "0.05 1 1", true},  {"1", "2.01", "1", "1 2 1", false},
      {"1", "1", "one", "1 1 0.05", true},   {"-1", "1", "1", "0.05 1 1", true},
      {"1", "0", "1", "1 0.05 1", true},     {"1", "", "1", "1 0.05 1", true},
      {"1", "1", "0,5", "1 1 0.05", true},   {"1e99", "1", "1", "2 1 1", false},
      {"9", "0", "text", "2 0 text", false},  // red is looked at first,
      {"1", "0", "9", "1 0 2", false},        // then blue
      {"nan", "1", "1", "0.05 1 1", true},   {"inf", "1", "1", "0.05 1 1", true},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.shown);
    SetMultipliers(c.red, c.green, c.blue);
    const std::string before = LastingState();
    os.Expect("SCALE FACTOR ERROR",
              c.isSmall ? "The minimum scale factor is 0.05 !" : "The maximum scale factor is 2 !");
    Combine();
    EXPECT_EQ(Multipliers(), c.shown);
    EXPECT_EQ(LastingState(), before);
    EXPECT_EQ(Enabled(), kNoComposite);
  }
  Find<QSpinBox>(*window, "udRed").setValue(40);
  Find<QSpinBox>(*window, "udGreen").setValue(1);
  Find<QSpinBox>(*window, "udBlue").setValue(21);
  EXPECT_EQ(Multipliers(), "2 0.05 1.05");
  Combine();
  EXPECT_EQ(Enabled(), kComposite);
}

TEST_F(ColorWindow, OpensAndClosesImagesAndKeepsTheListsInStep) {
  OpenThree();
  ChooseSources(2, 1, 0);
  cv.DefaultDir = UserFile("");
  os.ChooseToOpen(MakeUserFile("d.fit", Field(5, 3, 9)));
  Choose(kOpen);
  EXPECT_THAT(Sources(), ElementsAre(3, 3, 3));
  EXPECT_EQ(Title(), kTitle + std::string("d.fit"));
  EXPECT_EQ(os.openRequests.at(0).title, "File to View");

  const std::size_t before = Everything();
  os.ChooseToOpen(MakeUserFile("broken.fit", "no header"));
  os.Expect("MISSING END CARD", testing::_);
  Choose(kOpen);
  os.CancelOpen();
  Choose(kOpen);
  os.FailOpen(5);
  os.Expect("FILE OPEN ERROR", "Error Number 5");
  Choose(kOpen);
  os.ChooseToOpen(MakeUserFile("notes.txt", ""));
  os.Expect("UNRECOGNISED FILE EXTENSION ", testing::_);
  Choose(kOpen);
  EXPECT_EQ(Everything(), before);

  ChooseSources(2, 0, 1);  // shows the blue image last
  Choose(kClose);
  EXPECT_THAT(Sources(), ElementsAre(1, 0, 2)) << "the image left over is blue";
  EXPECT_EQ(List("ComboR").currentText(), "b.fit");
  EXPECT_EQ(Title(), kTitle + std::string("d.fit"));
  Combine();
  EXPECT_EQ(Colors(Picture("picColor").Flattened()), ExpectedColors({1, 0, 2}, {1, 1, 1}));
  Press(*window, "cmdCancel");
  for (int i = 0; i < 3; ++i) Choose(kClose);
  EXPECT_EQ(Enabled(),
            "Toolbar1 mnuFileSel_0 mnuFileSel_3 mnuFileSel_4 mnuFileSel_5 mnuFileSel_9 mnuHelpSel_0 ");
  EXPECT_TRUE(WorkingFiles().empty());

  for (int i = 0; i < 10; ++i) {
    os.ChooseToOpen(MakeUserFile(std::to_string(i) + ".fit", Field(2, 2, i)));
    Choose(kOpen);
  }
  os.Expect("FILE LIMIT", "Only 10 files may be open at once.");
  Choose(kOpen);
  EXPECT_EQ(List("ComboB").count(), 10);
}

TEST_F(ColorWindow, KeepsTheCompositeWhenASaveFails) {
  OpenThree();
  Combine();
  const std::size_t before = Everything();
  MakeUserFile("old.bmp", "an old file");
  os.CancelSave();
  Press(*window, "cmdSave");
  os.FailSave(13);
  os.Expect("DATA SAVE ERROR", "Error Number 13");
  Press(*window, "cmdSave");
  os.Expect("SAVE ERROR", StartsWith("This name is used by the program itself."));
  os.ChooseToSave(AppFile("0temp.bmp"));
  Press(*window, "cmdSave");
  {
    const FileSizeLimit full(60);
    os.Expect("DATA SAVE ERROR", "Error Number 27");
    SaveTo("old.bmp");
  }
  {
    const FileSizeLimit full(0);
    os.Expect("DATA SAVE ERROR", "Error Number 27");
    SaveTo("new.bmp");
  }
  EXPECT_EQ(Everything(), before);
  EXPECT_EQ(ReadFile(UserFile("old.bmp")), "an old file");
  EXPECT_FALSE(std::filesystem::exists(UserFile("new.bmp")));
  const std::string composite = ReadFile(AppFile("temp.bmp"));
  SaveTo("old.bmp");
  EXPECT_EQ(ReadFile(UserFile("old.bmp")), composite);
}

TEST_F(ColorWindow, ChangesNothingWhenTheCompositeCannotBeMade) {
  OpenUserImage("r.bmp", GrayBitmap(8, 5, 3, [](int x, int) { return x; }));
  OpenUserImage("g.fit", FitsImage(16, 5, 3, std::vector<double>(15, 300)));
  OpenUserImage("b.fit", Field(5, 3, 4));
  Start();
  ChooseSources(0, 1, 2);
  const std::size_t before = Everything();
  {
    const FileSizeLimit full(60);
    os.Expect("FILE OPEN ERROR", testing::HasSubstr("temp.bmp"));
    Combine();
  }
  EXPECT_EQ(Everything(), before);
  std::filesystem::remove(AppFile("1temp.bmp"));  // can be rendered again
  Combine();
  EXPECT_EQ(Enabled(), kComposite);
  Press(*window, "cmdCancel");
  List("ComboG").setCurrentIndex(2);
  List("ComboG").setCurrentIndex(1);
  EXPECT_EQ(Everything(), before);
  std::filesystem::remove(AppFile("0temp.bmp"));  // is lost
  os.Expect("FILE OPEN ERROR", "The file \"0temp.bmp\" is missing or damaged.");
  Combine();
  EXPECT_EQ(Enabled(), kNoComposite);
  EXPECT_EQ(Title(), kTitle + std::string("g.fit"));
}

TEST_F(ColorWindow, AsksBeforeAnUnsavedCompositeIsLost) {
  const char* question =
      "The colored image has not been saved and will be lost by exiting!\n"
      "Do you still want to quit?";
  OpenThree();
  Combine();
  const std::size_t before = Everything();
  os.Expect("UNSAVED FILE", question, Answer::No);
  Choose(kExit);
  os.Expect("UNSAVED FILE", question, Answer::No);
  EXPECT_FALSE(window->close());
  EXPECT_EQ(Everything(), before);
  EXPECT_TRUE(window->isVisible());
  os.Expect("UNSAVED FILE", question, Answer::Yes);
  Choose(kExit);
  EXPECT_FALSE(window->isVisible());
  EXPECT_TRUE(WorkingFiles().empty());
  EXPECT_EQ(os.settings["SaveDir"], cv.SaveDir.string());
  EXPECT_EQ(os.settings["DefaultDir"], cv.DefaultDir.string());

  cv.KeepTempFiles = true;
  cv.ImageCount = 0;
  OpenThree();
  Combine();
  window->Unload();
  EXPECT_THAT(WorkingFiles(), ElementsAre("0temp.bmp", "1temp.bmp", "2temp.bmp"));
}

TEST_F(ColorWindow, PrintsWhatItShows) {
  os.pageWidth = os.pageHeight = 100;
  OpenThree(200, 100);
  Choose(kPrint);
  Combine();
  Choose(kPrint);
  ASSERT_EQ(os.prints.size(), 2u);
  EXPECT_EQ(os.prints[0]->pictures.at(0).bitmap, AppFile("1temp.bmp"));
  EXPECT_EQ(os.prints[1]->pictures.at(0).bitmap, AppFile("temp.bmp"));
  EXPECT_EQ(os.prints[1]->pictures.at(0).top, 25);
  EXPECT_EQ(os.prints[1]->pictures.at(0).width, 100);
}

}  // namespace
}  // namespace corvane
