#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QTest>
#include <cerrno>

#include "core/slot_picture.h"
#include "tests/support/failing_calls.h"
#include "tests/support/file_limit.h"
#include "tests/support/quiet_platform.h"
#include "tests/windows/tool_fixture.h"
#include "widgets/Thumbnail.h"

namespace corvane {
namespace {

using testing::_;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr char kStacker[] = "mnuConfSel_0";
constexpr char kPreserve[] = "mnuConfSel_1";
constexpr char kClose[] = "mnuFileSel_1";

class CombineWindow : public ToolFixture {
 protected:
  CombineWindow() : ToolFixture(Window::Combine) {}

  // Black pictures of 3 x 2, but for the pixel at the right end of the bottom line.
  static std::string Spot(int bits, double value) { return FitsImage(bits, 3, 2, {0, 0, 0, 0, 0, value}); }
  static int Unit(int bits) { return bits == 8 ? 10 : 1000; }
  // Images "0.fit", "1.fit" ... whose spots have 1, 2 ... units.
  void OpenSpots(int count, int bits) {
    for (int i = 0; i < count; ++i)
      OpenUserImage(std::to_string(i) + ".fit", Spot(bits, (i + 1) * Unit(bits)));
    Start();
  }
  void CloseAll() {
    for (cv.CurrentSlot = 0; cv.ImageCount > 0;) CloseImage(cv, os);
  }
  void ChooseImages(int first, int second) {
    Find<QComboBox>(*window, "Combo1").setCurrentIndex(first);
    Find<QComboBox>(*window, "Combo2").setCurrentIndex(second);
  }
  void Combine(int first, int second, const char* option = "Option1") {
    ChooseImages(first, second);
    Press(*window, option);
    Press(*window, "cmdCombine");
  }
  bool Pending() { return Find<QWidget>(*window, "cmdSave").isEnabled(); }
  void SaveTo(const std::string& name, int bits = 8) {
    ChooseBits(bits);
    os.ChooseToSave(UserFile(name));
    Press(*window, "cmdSave");
  }
  QLineEdit& Box(const char* name) { return Find<QLineEdit>(*window, name); }
  std::string Shown(const char* label) { return Find<QLabel>(*window, label).text().toStdString(); }
  QImage Picture(const char* name) { return Find<Thumbnail>(*window, name).Picture(); }
  std::string Names() {
    std::string names;
    for (int slot = 0; slot < cv.ImageCount; ++slot) names += cv.SlotName[slot] + ' ';
    return names;
  }
  // The level of a slot's spot in its picture.
  int Level(int slot) {
    ModCV other;
    EXPECT_FALSE(LoadDisplayBits(other, cv.SlotBitmap(slot))) << slot;
    return other.Display().At(2, 0);
  }
  std::string Locks() {
    return Enabled({"cmdCombine",   "cmdUndo",      "cmdSave",      "Option1",      "Option6",
                    "Combo1",       "Combo2",       "Text1",        "UpDown2",      "Toolbar1",
                    "mnuFileSel_0", kClose,         "mnuFileSel_3", "mnuFileSel_4", "mnuFileSel_5",
                    "mnuFileSel_7", "mnuToolSel_0", "mnuToolSel_1", kStacker,       kPreserve,
                    "mnuHelpSel_0"});
  }
};

constexpr char kFree[] =
    "cmdCombine Option1 Option6 Combo1 Combo2 Text1 UpDown2 Toolbar1 mnuFileSel_0 mnuFileSel_1 mnuFileSel_3 "
    "mnuFileSel_4 mnuFileSel_5 mnuFileSel_7 mnuToolSel_0 mnuToolSel_1 mnuConfSel_0 mnuConfSel_1 "
    "mnuHelpSel_0 ";
constexpr char kLocked[] = "cmdUndo cmdSave mnuFileSel_7 mnuHelpSel_0 ";

TEST_F(CombineWindow, OpensOnTheCurrentImageAndShowsWhatIsChosen) {
  Start();
  EXPECT_EQ(Locks(),
            "Option1 Option6 Text1 UpDown2 Toolbar1 mnuFileSel_0 mnuFileSel_3 mnuFileSel_4 mnuFileSel_5 "
            "mnuFileSel_7 mnuConfSel_0 mnuConfSel_1 mnuHelpSel_0 ");
  os.ChooseToOpen(MakeUserFile("first.fit", Spot(8, 200)));
  Choose("mnuFileSel_0");
  EXPECT_EQ(Shown("Label1") + Shown("Label2"), "Image #1: first.fitImage #2: first.fit");
  os.ChooseToOpen(MakeUserFile("second.fit", Spot(8, 100)));
  Choose("mnuFileSel_0");
  EXPECT_EQ(Shown("Label1") + Shown("Label2"), "Image #1: first.fitImage #2: second.fit");
  EXPECT_EQ(window->windowTitle(), " Corvane Image Combiner: Displayed Image = second.fit");
  EXPECT_EQ(LevelsOf(Picture("Image2")), (std::vector<int>{0, 0, 100, 0, 0, 0}));
  EXPECT_EQ(Locks(), kFree);

  Find<QComboBox>(*window, "Combo2").setCurrentIndex(0);
  EXPECT_EQ(cv.CurrentSlot, 0);
  Start();
  EXPECT_EQ(Shown("Label1") + Shown("Label2"), "Image #1: first.fitImage #2: first.fit");
  ChooseImages(0, 1);
  auto& list = Find<QComboBox>(*window, "Combo1");
  list.showPopup();
  QTest::keyClick(list.view(), Qt::Key_Return);
  EXPECT_EQ(cv.CurrentSlot, 0) << "the entry that was selected already";
  EXPECT_EQ(window->windowTitle(), " Corvane Image Combiner: Displayed Image = first.fit");
  desk.dialogs[Dialog::Histogram] = [this] { EXPECT_EQ(Pixels(cv.Display())[2], 200); };
  ChooseImages(0, 1);
  ChooseImages(1, 0);
  Choose("mnuToolSel_1");
  Choose(kClose);
  EXPECT_EQ(Names(), "second.fit ");
  EXPECT_EQ(Shown("Label1"), "Image #1: second.fit");
  Choose(kClose);
  EXPECT_EQ(window->windowTitle(), "Corvane Image Combiner");
  EXPECT_TRUE(Picture("Image1").isNull() && Picture("Image2").isNull());
}

TEST_F(CombineWindow, CombinesByEveryMethodAtBothPrecisions) {
  const struct {
    const char* option;
    int level;    // of 40 with 1.5 and 60 with 0.5
    float value;  // of 4000 and 6000
  } cases[] = {{"Option1", 90, 9000}, {"Option2", 30, 3000}, {"Option3", 45, 4500},
               {"Option4", 30, 3000}, {"Option5", 60, 6000}, {"Option6", 20, 2000}};
  for (const auto& c : cases)
    for (const int bits : {8, 16}) {
      SCOPED_TRACE(testing::Message() << c.option << ' ' << bits);
      CloseAll();
      OpenUserImage("a.fit", Spot(bits, 4 * Unit(bits)));
      OpenUserImage("b.fit", Spot(bits, 6 * Unit(bits)));
      Start();
      Box("Text1").setText("-1.5");
      Box("Text2").setText("0.5");
      QApplication::setActiveWindow(window.get());
      Find<QWidget>(*window, "cmdCombine").setFocus();
      Combine(0, 1, c.option);
      EXPECT_EQ(Box("Text1").text(), "1.5");
      EXPECT_EQ(Locks(), kLocked);
      QCoreApplication::processEvents();
      EXPECT_EQ(Box("Text1").selectedText() + Box("Text2").selectedText(), "") << "the focus went by";
      if (bits == 8) {
        EXPECT_EQ(LevelsOf(Picture("Image3")), (std::vector<int>{0, 0, c.level, 0, 0, 0}));
      }
      SaveTo("result.fts", bits);
      EXPECT_EQ(offered, bits / 8);
      EXPECT_EQ(ReadValues("result.fts").back(), bits == 8 ? static_cast<float>(c.level) : c.value);
      EXPECT_EQ(Locks(), kFree);
    }
}

TEST_F(CombineWindow, OffersSixteenBitsToImagesOfOneKind) {
  const std::tuple<int, int, int> cases[] = {
      {16, 16, 2}, {-32, -32, -4}, {16, -32, 1}, {16, 8, 1}, {8, 8, 1}};
  for (const auto& [bits1, bits2, expected] : cases) {
    CloseAll();
    OpenUserImage("a.fit", Spot(bits1, 200));
    OpenUserImage("b.fit", Spot(bits2, 200));
    Start();
    Combine(0, 1, "Option3");
    EXPECT_EQ(Shown("lblHint").find("16 bits") != std::string::npos, expected != 1);
    SaveTo("result.fts", 16);
    EXPECT_EQ(offered, expected) << bits1 << ' ' << bits2;
    // Floats are brought into their range one by one before they are combined.
    const std::vector<float> values = ReadValues("result.fts");
    EXPECT_EQ(values.back(), expected == -4  ? 32767
                             : expected == 2 ? 200
                             : bits2 == -32  ? 228
                                             : 200)
        << bits2;
  }
}

TEST_F(CombineWindow, RefusesWhatItCannotCombineAndKeepsEverything) {
  OpenSpots(2, 8);
  OpenUserImage("wide.fit", FitsImage(8, 4, 2, std::vector<double>(8, 1)));
  OpenUserImage("gone.bmp", GrayBitmap(8, 3, 2, [](int, int) { return 9; }));
  OpenUserImage("high.fit", FitsImage(8, 3, 3, std::vector<double>(9, 1)));
  Start();
  const auto expectUnchanged = [this](const std::string& before) {
    EXPECT_EQ(Locks(), kFree);
    EXPECT_EQ(LastingState(), before);
  };
  std::string before = LastingState();
  // One thing after the other.
  Box("Text1").setText("3");
  Box("Text2").setText("0");
  os.Expect("ENTRY ERROR", "The minimum multiplier is 0.05 !");
  os.Expect("ENTRY ERROR", "The maximum multiplier is 2 !");
  os.Expect("METHOD ERROR", "One of the Methods must be selected first.");
  ChooseImages(0, 1);
  for (int i = 0; i < 3; ++i) Press(*window, "cmdCombine");
  expectUnchanged(before);
  for (const Answer answer : {Answer::Cancel, Answer::No, Answer::Yes}) {
    os.Expect("SIZE ERROR",
              "The images can not be combined unless they are the same size!\nDo you want to switch to the "
              "size and "
              "alignment program?",
              answer);
    Combine(answer == Answer::No ? 4 : 2, 1);
    EXPECT_EQ(desk.replacedBy.size(), answer == Answer::Yes ? 1u : 0u);
    expectUnchanged(before);
  }
  const struct {
    const char *box, *typed, *message, *shown;
    int arrows;
  } entries[] = {{"1", "0.049", "The minimum multiplier is 0.05 !", "0.05", 1},
                 {"2", "-0.01", "The minimum multiplier is 0.05 !", "0.05", 1},
                 {"1", "0", "The minimum multiplier is 0.05 !", "0.05", 1},
                 {"1", "one", "The minimum multiplier is 0.05 !", "0.05", 1},
                 {"2", "1,5", "The minimum multiplier is 0.05 !", "0.05", 1},
                 {"2", "2.01", "The maximum multiplier is 2 !", "2", 40},
                 {"1", "-1e30", "The maximum multiplier is 2 !", "2", 40}};
  for (const auto& entry : entries) {
    SCOPED_TRACE(entry.typed);
    QLineEdit& box = Box((std::string("Text") + entry.box).c_str());
    box.setText(entry.typed);
    os.Expect("ENTRY ERROR", entry.message);
    Combine(0, 1);
    EXPECT_EQ(box.text(), entry.shown);
    EXPECT_EQ(Find<QSpinBox>(*window, (std::string("UpDown") + entry.box).c_str()).value(), entry.arrows);
    EXPECT_EQ(window->focusWidget(), &box);
    expectUnchanged(before);
  }
  std::filesystem::remove(AppFile("3temp.bmp"));
  before = LastingState();
  os.Expect("FILE OPEN ERROR", HasSubstr("3temp.bmp"));  // once for the list, once for the command
  os.Expect("FILE OPEN ERROR", HasSubstr("3temp.bmp"));
  Combine(0, 3);
  expectUnchanged(before);
  std::filesystem::remove(AppFile("0temp.bmp"));
  Combine(0, 1);
  EXPECT_TRUE(Pending()) << "a rendering is made again";
}

TEST_F(CombineWindow, AccumulatesOrPreserves) {
  const struct {
    const char* mode;
    int count, first, second;
    const char* names;
  } cases[] = {{kStacker, 5, 1, 3, "0.fit 2.fit 4.fit sum "},
               {kStacker, 5, 3, 1, "0.fit 2.fit 4.fit sum "},
               {kStacker, 3, 1, 1, "0.fit 2.fit sum "},
               {kStacker, 1, 0, 0, "sum "},
               {kStacker, 10, 0, 9, "1.fit 2.fit 3.fit 4.fit 5.fit 6.fit 7.fit 8.fit sum "},
               {kStacker, 10, 4, 4, "0.fit 1.fit 2.fit 3.fit 5.fit 6.fit 7.fit 8.fit 9.fit sum "},
               {kPreserve, 3, 0, 2, "0.fit 1.fit 2.fit sum "},
               {kPreserve, 9, 3, 3, "0.fit 1.fit 2.fit 3.fit 4.fit 5.fit 6.fit 7.fit 8.fit sum "}};
  for (const auto& c : cases)
    for (const auto& [name, bits] :
         {std::pair("sum.bmp", 8), std::pair("sum.fts", 8), std::pair("sum.fts", 16)}) {
      SCOPED_TRACE(testing::Message() << c.names << name << bits);
      CloseAll();
      OpenSpots(c.count, bits);
      if (c.mode == kPreserve) Choose(kPreserve);
      Combine(c.first, c.second);
      SaveTo(name, bits);
      std::string expected = c.names;
      EXPECT_EQ(Names(), expected.replace(expected.find("sum"), 3, name));
      EXPECT_EQ(os.saveRequests.back().title, c.mode == kPreserve ? "Save As" : "Save Combined Image As...");
      std::vector<std::string> files;
      for (int slot = 0; slot < cv.ImageCount; ++slot) {
        const bool isSum = slot == cv.ImageCount - 1;
        const int units = isSum ? c.first + c.second + 2 : cv.SlotName[slot][0] - '0' + 1;
        EXPECT_EQ(Level(slot), bits == 8 ? 10 * units : 255) << slot;
        if (bits == 16) {
          EXPECT_EQ(cv.SlotData[slot].View().At(2, 1), 1000 * units) << slot;
        }
        files.push_back(cv.SlotBitmap(slot).filename().string());
      }
      EXPECT_EQ(WorkingFiles(), files);
      EXPECT_EQ(cv.CurrentSlot, cv.ImageCount - 1);
      for (const char* list : {"Combo1", "Combo2"})
        EXPECT_EQ(Find<QComboBox>(*window, list).currentText(), QLatin1String(name));
      EXPECT_EQ(Shown("Label1") + Shown("Label2"), std::string("Image #1: ") + name + "Image #2: " + name);
      EXPECT_TRUE(Picture("Image3").isNull());
      EXPECT_EQ(Locks(), kFree);
      if (name == std::string("sum.fts")) {
        EXPECT_THAT(ReadFile(UserFile(name)), HasSubstr("'Original Files: " + std::to_string(c.first) +
                                                        ".fit,  " + std::to_string(c.second) + ".fit'"));
      }
    }
}

TEST_F(CombineWindow, SwitchesModesByEitherItemUnlessAResultIsPending) {
  OpenSpots(2, 8);
  const auto modes = [this] { return std::pair(Item(kStacker).isChecked(), Item(kPreserve).isChecked()); };
  EXPECT_EQ(modes(), std::pair(true, false));
  for (const char* item : {kStacker, kStacker, kPreserve, kPreserve, kPreserve}) {
    const auto before = modes();
    Choose(item);
    EXPECT_EQ(modes(), std::pair(before.second, before.first));
  }
  Combine(0, 1);
  Choose(kStacker);
  EXPECT_EQ(modes(), std::pair(false, true));
  Press(*window, "cmdUndo");
  EXPECT_EQ(Locks(), kFree);
  EXPECT_TRUE(Picture("Image3").isNull());
  EXPECT_THAT(WorkingFiles(), ElementsAre("0temp.bmp", "1temp.bmp"));
}

// Closing an input does not take the result's full precision away.
TEST_F(CombineWindow, PreservesWithTenOpenOnceOneIsClosed) {
  OpenSpots(10, 16);
  Choose(kPreserve);
  Combine(8, 2);
  os.Expect(
      "FILE LIMIT",
      "Only 10 files may be open at once.\nA file must be closed before the combined image can be saved.");
  Press(*window, "cmdSave");
  EXPECT_TRUE(os.saveRequests.empty());
  EXPECT_EQ(Locks(), std::string(kLocked).insert(std::string("cmdUndo cmdSave ").size(), "mnuFileSel_1 "));
  const QImage result = Picture("Image3");
  Choose(kClose);
  EXPECT_EQ(Locks(), kLocked);
  EXPECT_EQ(Picture("Image3"), result);
  SaveTo("sum.fts", 16);
  EXPECT_EQ(Names(), "0.fit 1.fit 3.fit 4.fit 5.fit 6.fit 7.fit 8.fit 9.fit sum.fts ");
  EXPECT_EQ(ReadValues("sum.fts").back(), 12000);
  EXPECT_THAT(ReadFile(UserFile("sum.fts")), HasSubstr("'Original Files: 8.fit,  2.fit'"));
}

TEST_F(CombineWindow, AFailedSaveKeepsTheResultAndItsInputs) {
  for (const char* mode : {kStacker, kPreserve})
    for (const int count : {3, mode == kStacker ? 10 : 9}) {
      CloseAll();
      OpenSpots(count, 16);
      if (mode == kPreserve) Choose(kPreserve);
      Combine(2, 0);
      const std::string before = LastingState();
      const QImage result = Picture("Image3");
      const auto expectKept = [&] {
        EXPECT_EQ(LastingState(), before);
        EXPECT_EQ(Locks(), kLocked);
        EXPECT_EQ(Picture("Image3"), result);
        EXPECT_EQ(cv.OriginalFiles, "");
        EXPECT_EQ(Shown("Label1"), "Image #1: 2.fit");
      };
      os.CancelSave();
      Press(*window, "cmdSave");
      expectKept();
      os.FailSave(5);
      os.Expect("DATA SAVE ERROR", "Error Number 5");
      Press(*window, "cmdSave");
      expectKept();
      os.Expect("SAVE ERROR", _);
      SaveTo("sum.txt");
      expectKept();
      for (const auto& [name, bits] :
           {std::pair("sum.bmp", 8), std::pair("sum.fts", 8), std::pair("sum.fts", 16)}) {
        SCOPED_TRACE(testing::Message() << mode << count << name << bits);
        WriteFile(UserFile(name), "old");
        const FileSizeLimit full(100);
        os.Expect("DATA SAVE ERROR", "Error Number " + std::to_string(EFBIG));
        SaveTo(name, bits);
        expectKept();
        EXPECT_EQ(ReadFile(UserFile(name)), "old");
      }
      SaveTo("sum.fts", 16);
      EXPECT_FALSE(Pending());
      EXPECT_EQ(ReadValues("sum.fts").back(), 4000);
    }
}

// Saves everything as one name and hears every message.
class WillingPlatform : public QuietPlatform {
 public:
  explicit WillingPlatform(std::filesystem::path target) : target_(std::move(target)) {}
  FileChoice SaveFile(const FileRequest&) override { return {FileChoice::Outcome::Chosen, target_, 0}; }

 private:
  std::filesystem::path target_;
};

TEST_F(CombineWindow, NoFailureOnTheWayMixesUpTheImages) {
  WillingPlatform willing(UserFile("sum.fts"));
  ChooseBits(8);
  for (const int count : {4, 10})
    for (const int times : {1, 1000}) {
      bool fired = true;
      for (int call = 1; fired; ++call) {
        SCOPED_TRACE(testing::Message() << count << " open, call " << call << ", " << times << " times");
        CloseAll();
        OpenSpots(count, 8);
        window = MakeWindow(Window::Combine, cv, willing, desk);
        window->Open();
        Combine(1, 2);
        willing.messages = 0;
        {
          const FailingCalls fault(call, times);
          Press(*window, "cmdSave");
          fired = fault.Seen() >= call;
        }
        EXPECT_TRUE(!Pending() || willing.messages > 0);
        if (Pending()) Press(*window, "cmdSave");
        EXPECT_FALSE(Pending());
        EXPECT_EQ(Names().find("sum.fts") == std::string::npos, false);
        for (int slot = 0; slot < cv.ImageCount; ++slot) {
          ASSERT_TRUE(LoadSlotPicture(cv, os, slot));
          const bool isSum = cv.SlotName[slot] == "sum.fts";
          EXPECT_EQ(cv.Display().At(2, 0), isSum ? 50 : 10 * (cv.SlotName[slot][0] - '0' + 1)) << Names();
        }
      }
    }
}

TEST_F(CombineWindow, AsksBeforeAResultIsLost) {
  OpenSpots(2, 8);
  Combine(0, 1);
  const char* question =
      "The combined image has not been saved and will be lost by exiting!\nDo you still want to quit?";
  os.Expect("UNSAVED FILES", question, Answer::No);
  Choose("mnuFileSel_7");
  EXPECT_TRUE(window->isVisible() && Pending());
  os.Expect("UNSAVED FILES", question, Answer::Yes);
  EXPECT_TRUE(window->close());
  EXPECT_THAT(WorkingFiles(), ElementsAre());
  EXPECT_EQ(os.settings["SaveDir"], cv.SaveDir.string());
  EXPECT_EQ(os.settings["DefaultDir"], cv.DefaultDir.string());
}

}  // namespace
}  // namespace corvane
