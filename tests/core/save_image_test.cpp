#include "core/save_image.h"

#include <cerrno>
#include <tuple>

#include "core/fits_writer.h"
#include "core/slot_picture.h"
#include "core/working_files.h"
#include "formats/bitmap_format.h"
#include "formats/fits_cards.h"
#include "formats/sixteen_range.h"
#include "tests/support/app_dir_fixture.h"
#include "tests/support/file_limit.h"
#include "tests/support/file_makers.h"
#include "tests/support/images.h"

namespace corvane {
namespace {

// Levels of a picture without padding, in stored order.
std::vector<int> PictureLevels(const std::filesystem::path& path) {
  ModCV cv;
  EXPECT_EQ(LoadDisplayBits(cv, path), std::nullopt) << path;
  return Pixels(cv.Display());
}

class Saving : public AppDirFixture {
 protected:
  // Two images: slot 0 in 8 bits, slot 1 (the current one) in 16, 3 x 2 pixels.
  Saving() {
    OpenUserImage("plain.fts", FitsImage(8, 2, 1, {7, 8}));
    OpenUserImage("m42.fit", FitsImage(16, 3, 2, {0, 1000, 2000, 3000, 4000, 5000}));
    Answer(2, "deep field");
  }
  // What the user does in the save-options dialog.
  void Answer(int bytesPerPixel, const std::string& comment) {
    desk.dialogs[Dialog::SaveOptions] = [this, bytesPerPixel, comment] {
      offered = cv.BytesPerPixel;
      cv.BytesPerPixel = bytesPerPixel;
      cv.FitsComment = CommentValue(comment);
    };
  }
  std::function<void()> Negative() {
    return [this] {
      for (float& v : std::span(cv.ImageData.Edit().values, cv.ImageData.Count())) v = 32767.0f - v;
    };
  }
  // A picture in AppDir, also as the working picture.
  std::filesystem::path Show(const char* name, const DisplayBitmap& picture) {
    EXPECT_EQ(WriteDisplayBitmap(AppFile(kGrayTemplate), AppFile(name), picture.View()), std::nullopt);
    EXPECT_EQ(LoadDisplayBits(cv, AppFile(name)), std::nullopt);
    return AppFile(name);
  }
  ImageSave Of(const std::filesystem::path& path, const std::filesystem::path& picture, int precision = 2) {
    return {.path = path, .slot = 1, .picture = picture, .precision = precision};
  }
  bool Save(const ImageSave& save) { return SaveFits(cv, os, desk, save, Negative()); }
  // Everything that lasts, and the working state that a save passes through.
  std::string State() {
    return LastingState() + cv.CurrentName + cv.FitsFileSize + cv.FitsComment + cv.OpenTitle +
           testing::PrintToString(std::tuple(cv.CurrentSlot, cv.HeaderCount, cv.HeaderCards.size(),
                                             cv.BytesPerPixel, cv.ImageWidth, cv.ImageHeight, cv.RowStride,
                                             cv.ImageMin, cv.ImageMax, cv.DisplayScale)) +
           testing::PrintToString(Values(cv.ImageData.View())) + testing::PrintToString(Pixels(cv.Display()));
  }

  int offered = 0;
};

TEST_F(Saving, AsksForAFileOfAKnownKind) {
  cv.SaveDir = UserFile("saved");
  const FileRequest request = SaveRequest(cv, "Save Image As...");
  EXPECT_EQ(request.filter,
            "Bitmap File (*.bmp)|*.bmp|FITS File ( *.fts,*.FTS,*.fit,*.FIT)|*.fts;*.FTS;*.fit;*.FIT;*.fits|");
  EXPECT_EQ(request.defaultExtension, "fts");
  EXPECT_EQ(request.directory, cv.SaveDir);
  EXPECT_EQ(request.filterIndex, 2);

  const auto night = folder.Path() / "night";
  os.ChooseToSave(night / "a.fits");
  const auto target = AskSaveFile(cv, os, request);
  ASSERT_TRUE(target);
  EXPECT_EQ(target->kind, ImageKind::Fits);
  EXPECT_EQ(target->path, night / "a.fits");
  EXPECT_EQ(cv.SaveDir, night);

  os.CancelSave();
  EXPECT_FALSE(AskSaveFile(cv, os, request));
  os.FailSave(5);
  os.Expect("DATA SAVE ERROR", "Error Number 5");
  EXPECT_FALSE(AskSaveFile(cv, os, request));
  os.ChooseToSave(night / "a.Fit");
  os.Expect("SAVE ERROR", "Unrecognized file extension! File save cancelled.");
  EXPECT_FALSE(AskSaveFile(cv, os, request));
}

TEST_F(Saving, RefusesTheProgramsOwnFilesByWhateverWay) {
  std::filesystem::create_directory_symlink(cv.AppDir, UserFile("door"));
  std::filesystem::create_symlink(AppFile("dummy.bmp"), UserFile("harmless.bmp"));
  const std::filesystem::path own[] = {
      AppFile("0temp.bmp"),          AppFile("9temp.bmp"),         AppFile("temp.bmp"),
      cv.AppDir / "." / "hist1.bmp", UserFile("../app/1hold.bmp"), UserFile("door/0temp.bmp"),
      UserFile("harmless.bmp"),
  };
  const auto directory = cv.SaveDir;
  for (const auto& path : own) {
    SCOPED_TRACE(path);
    os.ChooseToSave(path);
    os.Expect("SAVE ERROR", "This name is used by the program itself. Please choose another.");
    EXPECT_FALSE(AskSaveFile(cv, os, SaveRequest(cv, "")));
    os.VerifyScript();
    EXPECT_EQ(cv.SaveDir, directory);
  }
  for (const auto& path : {AppFile("mine.bmp"), UserFile("0temp.bmp")}) {
    os.ChooseToSave(path);
    EXPECT_TRUE(AskSaveFile(cv, os, SaveRequest(cv, ""))) << path;
  }
}

TEST_F(Saving, PrecisionIsTheSlotsWhereItsDataFitThePicture) {
  EXPECT_EQ(SlotPrecision(cv, 1, 3, 2), 2);
  EXPECT_EQ(SlotPrecision(cv, 1, 2, 3), 1);
  EXPECT_EQ(SlotPrecision(cv, 0, 2, 1), 1);
  cv.SlotBytesPerPixel[1] = 1;
  EXPECT_EQ(SlotPrecision(cv, 1, 3, 2), 1);
  EXPECT_EQ(SlotPrecision(cv, 5, 0, 0), 1);
}

TEST_F(Saving, SixteenBitsOfAViewBecomeTheSlot) {
  const auto view = Show(kDummyBitmap, Uniform(3, 2, 9));
  ASSERT_TRUE(Save(Of(UserFile("neg.fts"), view)));
  EXPECT_EQ(offered, 2);

  const std::vector<float> values = {32767, 31767, 30767, 29767, 28767, 27767};
  std::string expected;
  for (const std::string& card : WrittenCards({.bitsPerPixel = 16,
                                 .width = 3,
                                 .height = 2,
                                 .source = "m42.fit",
                                 .comment = CommentValue("deep field")}))
    expected += card;
  expected += FitsPixels(16, {values.begin(), values.end()});
  expected.resize(5760);
  EXPECT_TRUE(ReadFile(UserFile("neg.fts")) == expected);

  EXPECT_EQ(std::tuple(cv.SlotName[1], cv.CurrentName, cv.OpenTitle, cv.SlotBytesPerPixel[1],
                       cv.SlotFileSize[1], cv.ImageCount),
            std::tuple("neg.fts", "neg.fts", "neg.fts", 2, "5760", 2));
  ASSERT_EQ(cv.SlotHeader[1].size(), 10u);
  EXPECT_TRUE(cv.SlotHeader[1][9].starts_with("END "));
  EXPECT_EQ(Values(cv.SlotData[1].View()), values);
  EXPECT_EQ(PictureLevels(cv.SlotBitmap(1)), (std::vector<int>{102, 51, 0, 255, 204, 153}));
  EXPECT_EQ(cv.LumHist[102], 1);
  EXPECT_EQ(WorkingFiles(), (std::vector<std::string>{"0temp.bmp", "1temp.bmp"}));
  EXPECT_FALSE(os.busy);
}

TEST_F(Saving, EightBitsAreThePictureShownAndItsBytesTheData) {
  const auto view = Show(kDummyBitmap, Levels(5, 1, {1, 2, 3, 4, 255}));
  ASSERT_TRUE(Save(Of(UserFile("eight.FIT"), view, 1)));  // the precision wins over an answer of 16 bits
  EXPECT_EQ(offered, 1);
  const std::string file = ReadFile(UserFile("eight.FIT"));
  EXPECT_EQ(file.substr(80, 30), "BITPIX  =                    8");
  EXPECT_EQ(file.substr(2880, 6), (std::string{1, 2, 3, 4, '\xFF', 0}));
  EXPECT_EQ(file.size(), 5760u);
  EXPECT_EQ(cv.SlotBytesPerPixel[1], 1);
  EXPECT_EQ(Values(cv.SlotData[1].View()), (std::vector<float>{1, 2, 3, 4, 255}));
  EXPECT_EQ(PictureLevels(cv.SlotBitmap(1)), (std::vector<int>{1, 2, 3, 4, 255}));
}

TEST_F(Saving, WhatWasWrittenIsWhatIsReadBack) {
  for (const int bytes : {1, 2}) {
    SCOPED_TRACE(bytes);
    cv.CurrentSlot = 1;
    Answer(bytes, "there and back");
    ASSERT_EQ(LoadDisplayBits(cv, cv.SlotBitmap(1)), std::nullopt);
    cv.SlotBytesPerPixel[1] = 2;
    ExpectHourglass([&] { EXPECT_TRUE(Save(Of(UserFile("a.fts"), cv.SlotBitmap(1)))); });
    const auto slot = OpenImageFile(cv, os, UserFile("a.fts"));
    ASSERT_TRUE(slot);
    EXPECT_EQ(Values(cv.SlotData[*slot].View()), Values(cv.SlotData[1].View()));
    EXPECT_EQ(cv.SlotHeader[*slot], cv.SlotHeader[1]);
    EXPECT_EQ(cv.SlotFileSize[*slot], cv.SlotFileSize[1]);
    EXPECT_EQ(cv.SlotBytesPerPixel[*slot], cv.SlotBytesPerPixel[1]);
    EXPECT_EQ(std::to_string(std::filesystem::file_size(UserFile("a.fts"))), cv.SlotFileSize[1]);
  }
}

TEST_F(Saving, DataThatAreReadyBecomeANewImageThatNamesItsSourcesOnce) {
  const auto result = Show(kTempBitmap, Uniform(3, 2, 50));
  ImageSave save = Of(UserFile("sum.fts"), result);
  save.slot = cv.ImageCount;
  cv.OriginalFiles = "m42.fit,  plain.fts";
  ASSERT_TRUE(SaveFitsData(cv, os, desk, save, [] { return Floats(3, 2, {0, 1, 2, 3, 4, 65536}); }));
  EXPECT_EQ(std::tuple(cv.ImageCount, cv.CurrentSlot, cv.SlotName[1], cv.SlotName[2]),
            std::tuple(3, 2, "m42.fit", "sum.fts"));
  EXPECT_EQ(cv.SlotHeader[2][7].substr(0, 48), "COMMENT = 'Original Files: m42.fit,  plain.fts' ");
  EXPECT_EQ(cv.OriginalFiles, "");
  EXPECT_EQ(Values(cv.SlotData[2].View()), (std::vector<float>{0, 1, 2, 3, 4, 65535})) << "not ranged";
  EXPECT_EQ(PictureLevels(cv.SlotBitmap(2)), (std::vector<int>{0, 0, 255, 0, 0, 0}));
  EXPECT_FALSE(std::filesystem::exists(result));

  Answer(1, "");
  const auto cropped = Show(kTempBitmap, Levels(2, 1, {3, 4}));
  save = {.path = UserFile("cut.fts"), .slot = 0, .picture = cropped, .precision = 2, .source = "other.fit"};
  ASSERT_TRUE(SaveFitsData(cv, os, desk, save, []() -> FloatImage { throw std::bad_alloc(); }));
  EXPECT_EQ(Values(cv.SlotData[0].View()), (std::vector<float>{3, 4}));
  EXPECT_EQ(cv.SlotHeader[0][7].substr(0, 39), "COMMENT = 'Original File = other.fit'  ");
}

TEST_F(Saving, DataOfAnotherSizeAreRangedByTheirSlotsRule) {
  cv.SlotBytesPerPixel[1] = -4;
  ImageSave save = Of(UserFile("cut.fts"), Show(kTempBitmap, Uniform(2, 1, 50)), -4);
  ASSERT_TRUE(SaveFitsData(cv, os, desk, save, [] {
    return IntoSixteenBitRange(Floats(2, 1, {-1, 1}), -4).values;
  }));
  EXPECT_EQ(Values(cv.SlotData[1].View()), (std::vector<float>{0, 32767}));
  EXPECT_EQ(std::pair(cv.Width(), cv.Height()), std::pair(2, 1));
}

TEST_F(Saving, ABitmapIsACopyAndTheSlotKeepsNoData) {
  const auto view = Show(kDummyBitmap, Levels(3, 2, {1, 2, 3, 4, 5, 6}));
  const std::string picture = ReadFile(view);
  ExpectHourglass([&] { EXPECT_TRUE(SaveBitmap(cv, os, Of(UserFile("a.bmp"), view))); });
  EXPECT_TRUE(ReadFile(UserFile("a.bmp")) == picture);
  EXPECT_TRUE(ReadFile(cv.SlotBitmap(1)) == picture);
  EXPECT_EQ(std::tuple(cv.SlotName[1], cv.SlotBytesPerPixel[1], cv.SlotFileSize[1]),
            std::tuple("a.bmp", 1, "0"));
  EXPECT_TRUE(cv.SlotHeader[1].empty() && cv.SlotData[1].Empty());
}

TEST_F(Saving, AFailedWriteChangesNothing) {
  const auto view = Show(kDummyBitmap, Noise(60, 50, 1));
  const auto wide = [] { return NoiseFloats(60, 50, 2); };
  MakeUserFile("old.fts", "old");
  std::filesystem::create_directory(UserFile("folder.fts"));
  const std::string before = State();
  const std::pair<std::filesystem::path, int> cases[] = {{UserFile("old.fts"), EFBIG},
                                                         {UserFile("new.fts"), EFBIG},
                                                         {UserFile("folder.fts"), EISDIR},
                                                         {UserFile("vanished/a.fts"), ENOENT}};
  const FileSizeLimit disk(4000);
  for (const auto& [path, error] : cases) {
    for (const int way : {0, 1, 2}) {
      SCOPED_TRACE(path.string() + " way " + std::to_string(way));
      os.Expect("DATA SAVE ERROR", "Error Number " + std::to_string(error));
      Answer(way, "comment");
      cv.OriginalFiles = "a, b";
      EXPECT_FALSE(way == 0 ? SaveBitmap(cv, os, Of(path, view))
                            : SaveFitsData(cv, os, desk, Of(path, view), wide));
      os.VerifyScript();
      EXPECT_TRUE(State() == before);
      EXPECT_EQ(cv.OriginalFiles, "");
      EXPECT_FALSE(os.busy);
    }
  }
  EXPECT_EQ(ReadFile(UserFile("old.fts")), "old");
  EXPECT_FALSE(std::filesystem::exists(UserFile("new.fts")));
  EXPECT_TRUE(std::filesystem::is_empty(UserFile("folder.fts")));
}

TEST_F(Saving, WantOfMemoryChangesNothing) {
  ASSERT_EQ(LoadDisplayBits(cv, cv.SlotBitmap(1)), std::nullopt);
  const std::string before = State();
  for (int way = 0; way < 2; ++way) {
    os.Expect("DATA SAVE ERROR", "Not enough memory for this image.");
    const ImageSave save = Of(UserFile("a.fts"), cv.SlotBitmap(1));
    EXPECT_FALSE(way == 0 ? SaveFits(cv, os, desk, save, [] { throw std::bad_alloc(); })
                          : SaveFitsData(cv, os, desk, save, []() -> FloatImage { throw std::bad_alloc(); }));
    EXPECT_TRUE(State() == before);
    EXPECT_FALSE(os.busy);
  }
  EXPECT_FALSE(std::filesystem::exists(UserFile("a.fts")));
}

TEST_F(Saving, ADamagedPictureIsNotCopiedOut) {
  const std::string before = State();
  WriteFile(AppFile(kDummyBitmap), "not a picture");
  os.Expect("FILE OPEN ERROR", testing::HasSubstr(kDummyBitmap));
  EXPECT_FALSE(SaveBitmap(cv, os, Of(UserFile("a.bmp"), AppFile(kDummyBitmap))));
  EXPECT_FALSE(std::filesystem::exists(UserFile("a.bmp")));
  std::filesystem::remove(AppFile(kDummyBitmap));
  EXPECT_TRUE(State() == before);
}

TEST_F(Saving, WhatFailsAfterTheFileIsSafeSaysSo) {
  // At 8 bits the slot stays as it was.
  const ImageSave save = Of(UserFile("a.bmp"), AppFile(kDummyBitmap));
  std::filesystem::copy_file(cv.SlotBitmap(1), save.picture);
  ASSERT_TRUE(WriteBitmapFile(cv, os, save));
  std::filesystem::rename(cv.SlotBitmap(1), AppFile("away"));
  std::filesystem::create_directory(cv.SlotBitmap(1));
  os.Expect("FILE OPEN ERROR",
            "\"a.bmp\" is saved, but not shown. The file \"1temp.bmp\" can't be written. Error Number 21");
  EXPECT_FALSE(CommitSave(cv, os, save));
  std::filesystem::remove(cv.SlotBitmap(1));
  std::filesystem::rename(AppFile("away"), cv.SlotBitmap(1));
  EXPECT_EQ(std::tuple(cv.SlotName[1], cv.SlotBytesPerPixel[1], cv.SlotData[1].View().At(2, 1)),
            std::tuple("m42.fit", 2, 5000));
  EXPECT_EQ(std::filesystem::file_size(save.path), std::filesystem::file_size(cv.SlotBitmap(1)));

  // At 16 bits it has the data, whose picture is made later; the old one is not shown as theirs.
  ASSERT_EQ(LoadDisplayBits(cv, cv.SlotBitmap(1)), std::nullopt);
  std::filesystem::rename(AppFile(kGrayTemplate), AppFile("away"));
  os.Expect("FILE OPEN ERROR",
            "\"neg.fts\" is saved, but not shown. The file \"gr_8.bm_\" is missing or damaged.");
  EXPECT_TRUE(Save(Of(UserFile("neg.fts"), cv.SlotBitmap(1))));
  EXPECT_EQ(std::pair(cv.SlotName[1], cv.SlotData[1].View().At(0, 0)),
            std::pair(std::string("neg.fts"), 32767.0f));
  std::filesystem::rename(AppFile("away"), AppFile(kGrayTemplate));
  EXPECT_TRUE(LoadSlotPicture(cv, os, 1));
  EXPECT_EQ(PictureLevels(cv.SlotBitmap(1)), (std::vector<int>{102, 51, 0, 255, 204, 153}));
}

TEST_F(Saving, WorksAfterTheWorkingFolderHasVanished) {
  OpenUserImage("gray.bmp", GrayBitmap(8, 3, 1, [](int x, int) { return x; }));
  cv.RefillAppDir = [this] {
    std::filesystem::create_directory(cv.AppDir);
    std::filesystem::copy_file(AssetFolder() / kGrayTemplate, AppFile(kGrayTemplate));
  };
  for (const int slot : {2, 1, 0})  // the picture of a bitmap is lost with the folder unless it is shown
    for (const char* name : {"a.bmp", "a.fts"}) {
      SCOPED_TRACE(std::to_string(slot) + name);
      cv.CurrentSlot = slot;
      ASSERT_TRUE(LoadSlotPicture(cv, os, slot));
      const auto levels = Pixels(cv.Display());
      std::filesystem::remove_all(cv.AppDir);
      const std::filesystem::path path = UserFile(std::to_string(slot) + name);
      const ImageSave save{.path = path, .slot = slot, .picture = cv.SlotBitmap(slot)};
      ASSERT_TRUE(name[2] == 'b' ? SaveBitmap(cv, os, save) : SaveFits(cv, os, desk, save, {}));
      ASSERT_TRUE(LoadSlotPicture(cv, os, slot));
      EXPECT_EQ(Pixels(cv.Display()), levels);
      EXPECT_GT(std::filesystem::file_size(path), 1078u);
    }
}

}  // namespace
}  // namespace corvane
