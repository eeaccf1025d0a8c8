#include "core/working_files.h"
#include "luminance/frmDeConv.h"
#include "platform/QtText.h"
#include "tests/windows/viewer_fixture.h"
#include "viewer/view_table.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;

class ViewerFiles : public ViewerFixture {
 protected:
  // Whether the window takes them.
  bool Drop(const QList<QUrl>& urls) {
    QMimeData data;
    data.setUrls(urls);
    QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.get(), &enter);
    QDropEvent drop({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.get(), &drop);
    QCoreApplication::processEvents();
    return enter.isAccepted();
  }
  const std::string sixteen = FitsImage(16, 3, 2, {0, 1000, 2000, 3000, 4000, 5000});
};

TEST_F(ViewerFiles, SavesTheDataFromMemoryWithSixteenBitsAndTakesTheNewName) {
  OpenFile("a.fit", sixteen);
  std::filesystem::remove(AppFile("0temp.bmp"));
  ChooseBits(16);
  SaveTo("b.fts");
  EXPECT_EQ(offered, 2);
  EXPECT_THAT(Reread("b.fts"), ElementsAre(0, 1000, 2000, 3000, 4000, 5000));
  EXPECT_THAT(List(), ElementsAre("b.fts"));
  EXPECT_EQ(cv.CurrentName, "b.fts");
  EXPECT_EQ(cv.SlotHeader[0].size(), 10u);
  EXPECT_EQ(os.saveRequests.at(0).title, "Save Image As...");
  ExpectPictureIsWhole();
}

TEST_F(ViewerFiles, SavesAViewAsItIsShown) {
  const std::tuple<const char*, QSize, std::vector<float>> cases[] = {
      {"mnuToolSel_6", {3, 2}, {32767, 31767, 30767, 29767, 28767, 27767}},
      {"mnuToolSel_13", {2, 3}, {2000, 5000, 1000, 4000, 0, 3000}},
      {"mnuToolSel_14", {3, 2}, {5000, 4000, 3000, 2000, 1000, 0}},
      {"mnuToolSel_15", {3, 2}, {2000, 1000, 0, 5000, 4000, 3000}},
      {"mnuToolSel_16", {3, 2}, {3000, 4000, 5000, 0, 1000, 2000}},
  };
  ChooseBits(16);
  for (const auto& [item, shownSize, rows] : cases) {
    SCOPED_TRACE(item);
    OpenFile("a.fit", sixteen);
    Choose(item);
    const std::vector<int> shown = ShownLevels();
    SaveTo("view.fit");
    EXPECT_THAT(Reread("view.fit"), ElementsAreArray(rows));
    EXPECT_EQ(size, shownSize);
    EXPECT_FALSE(Checked(item));
    EXPECT_EQ(ShownLevels(), shown);
    ExpectPictureIsWhole();
    EXPECT_THAT(WorkingFiles(), ElementsAre("0temp.bmp"));
    Choose("mnuFileSel_2");
  }
}

TEST_F(ViewerFiles, SavesAMagnifiedPictureAsItIsShown) {
  cv.MagMode = 0;
  ChooseBits(16);
  OpenFile("a.fit", sixteen);
  Choose("mnuToolSel_10");
  SaveTo("big.fit");
  EXPECT_THAT(Reread("big.fit"),
              ElementsAre(0, 0, 1000, 1000, 2000, 2000, 0, 0, 1000, 1000, 2000, 2000,  //
                          3000, 3000, 4000, 4000, 5000, 5000, 3000, 3000, 4000, 4000, 5000, 5000));
  EXPECT_EQ(cv.Width(), 6);
  ExpectPictureIsWhole();
  EXPECT_FALSE(Item("mnuToolSel_11").isEnabled());
}

TEST_F(ViewerFiles, OffersEightBitsOnlyForViewsThatExistInLevelsAlone) {
  for (const char* item : {"mnuToolSel_4", "mnuToolSel_5", "mnuToolSel_7"}) {
    OpenFile("a.fit", sixteen);
    Choose(item);
    const std::vector<int> levels = Pixels(cv.Display());
    ChooseBits(8);
    if (std::string(item) == "mnuToolSel_7")
      os.Expect("FITS Limitation",
                "A colored image can't be saved in FITS format, so the image will be grayscale.");
    SaveTo("levels.fit");
    EXPECT_EQ(offered, 1) << item;
    EXPECT_EQ(Pixels(cv.Display()), levels) << item;
    ExpectPictureIsWhole();  // a color picture would not be gray
    Choose("mnuFileSel_2");
  }
}

TEST_F(ViewerFiles, ChangesNothingWhenASaveIsRefusedOrFails) {
  OpenFile("a.fit", sixteen);
  Choose("mnuToolSel_13");
  const std::vector<int> shown = ShownLevels();
  const std::string slot = ReadFile(AppFile("0temp.bmp"));
  std::filesystem::create_directory(UserFile("folder.bmp"));
  std::filesystem::create_directory(UserFile("folder.fit"));
  ChooseBits(16);
  os.Expect("SAVE ERROR", "Unrecognized file extension! File save cancelled.");
  SaveTo("a.txt");
  for (const char* name : {"folder.bmp", "folder.fit"}) {
    os.Expect("DATA SAVE ERROR", testing::StartsWith("Error Number "));
    SaveTo(name);
  }
  os.FailSave(5);
  os.Expect("DATA SAVE ERROR", "Error Number 5");
  Choose("mnuFileSel_1");
  EXPECT_TRUE(Checked("mnuToolSel_13"));
  EXPECT_EQ(ShownLevels(), shown);
  EXPECT_EQ(ReadFile(AppFile("0temp.bmp")), slot);
  EXPECT_EQ(cv.SlotBytesPerPixel[0], 2);
  EXPECT_THAT(List(), ElementsAre("a.fit"));
  ExpectPictureIsWhole();
  SaveTo("later.fit");  // and a save still works
  EXPECT_THAT(Reread("later.fit"), ElementsAre(2000, 5000, 1000, 4000, 0, 3000));
}

TEST_F(ViewerFiles, SavesEveryViewSoThatItReopensAsItWasShown) {
  std::vector<std::string> items = {"mnuToolSel_10"};
  for (const ViewEntry& view : ViewTable()) items.push_back("mnuToolSel_" + std::to_string(view.menuIndex));
  desk.dialogs[Dialog::Deconvolution] = [this] {
    frmDeConv dialog(cv, os);
    Press(dialog, "cmdApply");
  };
  ChooseBits(8);
  for (const std::string& item : items)
    for (const int mode : {0, 1})
      for (const char* name : {"view.bmp", "view.fit"}) {
        if (mode == 1 && item != "mnuToolSel_10") continue;
        SCOPED_TRACE(item + " as " + name);
        cv.MagMode = mode;
        OpenSlope("a.fit", 7, 5);
        Choose(item.c_str());
        const std::vector<int> levels = Pixels(cv.Display());
        const QImage shown = Picture().Flattened();
        const bool color = item == "mnuToolSel_7";
        const bool asBitmap = std::string(name) == "view.bmp";
        if (color && !asBitmap) os.Expect("FITS Limitation", testing::_);
        SaveTo(name);
        if (!color || asBitmap) {
          EXPECT_EQ(Picture().Flattened(), shown);
        }
        os.ChooseToOpen(UserFile(name));
        Choose("mnuFileSel_0");
        EXPECT_EQ(Pixels(cv.Display()), levels);
        ExpectPictureIsWhole();
        Choose("mnuFileSel_2");
        Choose("mnuFileSel_2");
      }
}

// The committed picture has 8 bits, but the data are still those of a float image.
TEST_F(ViewerFiles, ScalesMagnifiedFloatDataIntoTheRange) {
  cv.MagMode = 0;
  ChooseBits(16);
  for (const bool twice : {false, true}) {
    OpenFile("a.fit", FitsImage(-32, 2, 2, {65536, 131072, 196608, 327680}));
    Choose("mnuToolSel_10");
    if (twice) SaveTo("first.fit");
    if (twice) Choose("mnuToolSel_10");
    SaveTo("big.fit");
    EXPECT_EQ(offered, twice ? 2 : -4);
    const std::vector<float> rows = Reread("big.fit");
    const int factor = twice ? 4 : 2;
    ASSERT_EQ(size, QSize(2 * factor, 2 * factor));
    EXPECT_EQ(rows.front(), 0);
    EXPECT_EQ(rows[static_cast<std::size_t>(factor)], 8192);  // a quarter of 32767
    EXPECT_EQ(rows[rows.size() - 2 * factor], 16384);
    EXPECT_EQ(rows.back(), 32767);
    Choose("mnuFileSel_2");
  }
}

TEST_F(ViewerFiles, PrintsThePictureShownOnItsPlace) {
  os.pageWidth = 100;
  os.pageHeight = 300;
  OpenSlope("a.fit", 200, 100);
  Choose("mnuFileSel_8");
  Choose("mnuToolSel_13");
  Choose("mnuFileSel_8");
  ASSERT_EQ(os.prints.size(), 2u);
  const auto printed = [&](std::size_t i) {
    const auto& picture = os.prints[i]->pictures.at(0);
    return std::tuple(picture.bitmap, picture.left, picture.top, picture.width, picture.height);
  };
  EXPECT_EQ(printed(0), std::tuple(AppFile("0temp.bmp"), 0, 125, 100, 50));
  EXPECT_EQ(printed(1), std::tuple(AppFile("dummy.bmp"), 0, 50, 100, 200));
  EXPECT_EQ(cv.PrintScale, 1);  // of the second: it fits
  EXPECT_TRUE(os.prints[1]->ended);
  os.printIsCancelled = true;
  Choose("mnuFileSel_8");
  os.printIsCancelled = false;
  os.printError = ENOSPC;
  os.Expect("PRINT ERROR", "The picture could not be printed. Error Number 28");
  Choose("mnuFileSel_8");
}

TEST_F(ViewerFiles, TakesNoDroppedFilesWhileItSaves) {
  OpenFile("a.fit", sixteen);
  desk.dialogs[Dialog::SaveOptions] = [this] {
    EXPECT_FALSE(Drop({QUrl::fromLocalFile(ToQt(UserFile("a.fit")))}));
    cv.BytesPerPixel = 1;
  };
  SaveTo("b.fit");
  EXPECT_THAT(List(), ElementsAre("b.fit"));
}

TEST_F(ViewerFiles, OpensDroppedFilesInOrder) {
  const auto url = [&](const char* name, std::string_view bytes) {
    return QUrl::fromLocalFile(ToQt(MakeUserFile(name, bytes)));
  };
  os.Expect("UNRECOGNISED FILE EXTENSION ", testing::_);
  EXPECT_TRUE(Drop({url("1.fit", sixteen), QUrl("http://example.org/2.fit"), url("notes.txt", "x"),
                    url("3 \xc3\xa9.fts", Slope(4, 4))}));
  EXPECT_THAT(List(), ElementsAre("1.fit", "3 \xc3\xa9.fts"));
  EXPECT_EQ(cv.CurrentSlot, 1);
  EXPECT_EQ(cv.DefaultDir, UserFile("x").parent_path());
  ExpectPictureIsWhole();

  QList<QUrl> many;
  for (int i = 0; i < 10; ++i) many << url((std::to_string(i) + "x.fit").c_str(), Slope(2, 2));
  os.Expect("FILE LIMIT", "Only 10 files may be open at once.");
  Drop(many);
  EXPECT_EQ(cv.ImageCount, 10);
}

}  // namespace
}  // namespace corvane
