#include "core/open_image.h"

#include <algorithm>
#include <tuple>

#include "core/slot_picture.h"
#include "core/working_files.h"
#include "tests/support/app_dir_fixture.h"
#include "tests/support/failing_calls.h"
#include "tests/support/file_limit.h"
#include "tests/support/file_makers.h"
#include "tests/support/images.h"
#include "tests/support/quiet_platform.h"

namespace corvane {
namespace {

TEST(KindOf, KnowsExtensionsInOneCaseOnly) {
  for (const char* name : {"a.bmp", "A.BMP"}) EXPECT_EQ(KindOf(name), ImageKind::Bitmap) << name;
  for (const char* name :
       {"a.fit", "a.FIT", "a.fts", "a.FTS", "a.ftz", "a.FTZ", "a.fits", "a.FITS", "x.bmp.fit"})
    EXPECT_EQ(KindOf(name), ImageKind::Fits) << name;
  for (const char* name : {"", "a", "a.Fit", "a.Bmp", "a.fitS", "a.bmp ", "a.fit.gz", "benefits", "a.png"})
    EXPECT_EQ(KindOf(name), ImageKind::Unknown) << name;
}

class Opening : public AppDirFixture {
 protected:
  std::filesystem::path MakeFits(const std::string& name, int value) {
    return MakeUserFile(name, FitsImage(16, 2, 1, {static_cast<double>(value), 0}));
  }
  std::filesystem::path MakeBitmap(const std::string& name, int level) {
    return MakeUserFile(name, GrayBitmap(8, 2, 1, [level](int, int) { return level; }));
  }
  std::optional<int> Open(const std::filesystem::path& path) { return OpenImageFile(cv, os, path); }
  void OpenThree() {
    Open(MakeFits("a.fts", 101));
    Open(MakeBitmap("b.bmp", 102));
    Open(MakeFits("c.fit", 103));
    ASSERT_EQ(cv.ImageCount, 3);
  }
  int FirstLevel(int slot) { return static_cast<unsigned char>(ReadFile(cv.SlotBitmap(slot))[1078]); }
};

TEST_F(Opening, AsksAsTheViewerDoes) {
  cv.FileTypeSetting = 1;
  const FileRequest request = OpenRequest(cv, "File to View");
  EXPECT_EQ(request.title, "File to View");
  EXPECT_EQ(request.filter,
            "Bitmaps (*.bmp)|*.bmp| FITS ( *.fit )( *.fts )( *.ftz )|*.fit;*.fts;*.ftz;*.fits|");
  EXPECT_EQ(request.filterIndex, 1);
  EXPECT_EQ(request.directory, UserFile("").parent_path());
}

TEST_F(Opening, FillsTheNextSlot) {
  std::filesystem::create_directory(UserFile("night"));
  os.ChooseToOpen(MakeFits("night/a.fits", 200));
  ExpectHourglass([&] { EXPECT_EQ(OpenImage(cv, os, OpenRequest(cv, "File to View")), 0); });
  EXPECT_EQ(cv.DefaultDir, UserFile("night"));
  const auto bitmap = MakeBitmap("b.bmp", 77);
  ExpectHourglass([&] { EXPECT_EQ(Open(bitmap), 1); });
  EXPECT_EQ(cv.ImageCount, 2);
  EXPECT_EQ(cv.CurrentSlot, 1);
  EXPECT_EQ(cv.OpenTitle, "b.bmp");
  EXPECT_EQ(cv.DefaultDir, UserFile("").parent_path());
  const auto slot = [this](int i) {
    return std::tuple(cv.SlotName[i], cv.SlotBytesPerPixel[i], cv.SlotFileSize[i], cv.SlotHeader[i].size(),
                      Values(cv.SlotData[i].View()), FirstLevel(i));
  };
  EXPECT_EQ(slot(0), std::tuple("a.fits", 2, "5760", 6u, std::vector<float>{200, 0}, 200));
  EXPECT_EQ(slot(1), std::tuple("b.bmp", 1, "0", 0u, std::vector<float>{}, 77));
  EXPECT_FALSE(os.busy);
}

TEST_F(Opening, RefusesTheEleventhBeforeAnyDialog) {
  for (int i = 0; i < kSlots; ++i) Open(MakeBitmap("b.bmp", i));
  const std::string before = LastingState();
  for (int way = 0; way < 2; ++way) {
    os.Expect("FILE LIMIT", "Only 10 files may be open at once.");
    EXPECT_EQ(way == 0 ? OpenImage(cv, os, OpenRequest(cv, "")) : Open(MakeBitmap("b.bmp", 5)), std::nullopt);
  }
  EXPECT_EQ(LastingState(), before);
}

TEST_F(Opening, CancelIsSilentAndADialogThatFailedIsReported) {
  os.CancelOpen();
  EXPECT_EQ(OpenImage(cv, os, OpenRequest(cv, "")), std::nullopt);
  os.FailOpen(13);
  os.Expect("FILE OPEN ERROR", "Error Number 13");
  EXPECT_EQ(OpenImage(cv, os, OpenRequest(cv, "")), std::nullopt);
  EXPECT_EQ(cv.ImageCount, 0);
}

TEST_F(Opening, ARefusedFileLeavesTheSlotsAsTheyWere) {
  OpenThree();
  const std::string before = LastingState();
  const std::tuple<const char*, std::string, std::string, testing::Matcher<const std::string&>> cases[] = {
      {"image.Fit", FitsImage(8, 1, 1, {0}), "UNRECOGNISED FILE EXTENSION ",
       "File extension must be '.bmp', '.fit', '.fts' or '.ftz'."},
      {"bad.fts", std::string(2880, 'x'), "MISSING END CARD", testing::HasSubstr("END")},
      {"deep.fts", FitsImage(-64, 1, 1, {0}), "PROGRAM LIMIT", testing::HasSubstr("-64")},
      {"bad.bmp", std::string(100, 'x'), "FILE TYPE ERROR",
       "The file selected is not a proper Windows image bitmap."},
  };
  for (const auto& [name, bytes, title, text] : cases) {
    SCOPED_TRACE(name);
    os.Expect(title, text);
    if (title == "FILE TYPE ERROR") {
      // One message for each fault.
      os.Expect("FILE OPEN ERROR", testing::_);
      os.Expect("FILE OPEN ERROR", testing::_);
    }
    EXPECT_EQ(Open(MakeUserFile(name, bytes)), std::nullopt);
    os.VerifyScript();
    EXPECT_EQ(LastingState(), before);
    EXPECT_FALSE(os.busy);
    EXPECT_EQ(Open(MakeFits("good.fts", 9)), 3) << "the next one is none the worse for it";
    CloseImage(cv, os);
  }
}

TEST_F(Opening, AMissingTemplateOrAFullDiskLeavesNoSlotAndNoHalfAFile) {
  OpenThree();
  const std::string before = LastingState();
  std::filesystem::remove(AppFile(kGrayTemplate));
  for (const auto& path : {MakeFits("d.fts", 9), MakeBitmap("d.bmp", 9)}) {
    os.Expect("FILE OPEN ERROR", testing::HasSubstr(kGrayTemplate));
    EXPECT_EQ(Open(path), std::nullopt);
    EXPECT_EQ(LastingState(), before);
  }
  std::filesystem::copy_file(AssetFolder() / kGrayTemplate, AppFile(kGrayTemplate));
  for (const auto& path : {MakeFits("d.fts", 9), MakeBitmap("d.bmp", 9)}) {
    const FileSizeLimit disk(500);
    os.Expect("FILE OPEN ERROR", "The file \"3temp.bmp\" can't be written. Error Number 27");
    EXPECT_EQ(Open(path), std::nullopt);
  }
  EXPECT_EQ(LastingState(), before);
}

TEST_F(Opening, ClosingMovesTheLaterSlotsDown) {
  Open(MakeBitmap("b.bmp", 102));
  Open(MakeFits("c.fit", 103));
  const std::string withoutTheFirst = LastingState();
  CloseImage(cv, os);
  CloseImage(cv, os);
  EXPECT_EQ(WorkingFiles(), std::vector<std::string>{});
  const std::string empty = LastingState();

  OpenThree();
  cv.CurrentSlot = 0;
  CloseImage(cv, os);
  EXPECT_EQ(LastingState(), withoutTheFirst);
  EXPECT_EQ(cv.CurrentSlot, 1);
  EXPECT_EQ(cv.CurrentName, "c.fit");
  for (int times = 0; times < 3; ++times) CloseImage(cv, os);
  EXPECT_EQ(LastingState(), empty);
}

TEST_F(Opening, ClosingNeverShowsOnePictureUnderAnotherName) {
  OpenThree();
  std::filesystem::remove(cv.SlotBitmap(1));
  cv.CurrentSlot = 0;
  CloseImage(cv, os);
  EXPECT_EQ(WorkingFiles(), std::vector<std::string>{"1temp.bmp"});
  EXPECT_EQ(FirstLevel(1), 103);
}

// Names what was said.
class HeardPlatform : public QuietPlatform {
 public:
  std::string heard;

 protected:
  Answer DoMessage(const std::string& text, const std::string& title, Buttons buttons) override {
    heard += title + ": " + text + "\n";
    return QuietPlatform::DoMessage(text, title, buttons);
  }
};

class ClosingUnderFaults : public Opening {
 protected:
  // Ten images whose names, pictures and data are told by their number; every second is a bitmap.
  void OpenTen() {
    cv.ImageCount = 0;
    for (int i = 0; i < kSlots; ++i)
      Open(i % 2 == 0 ? MakeFits(std::to_string(i) + ".fts", i) : MakeBitmap(std::to_string(i) + ".bmp", i));
    ASSERT_EQ(cv.ImageCount, kSlots);
  }
  // Every slot has the data and, unless its loss was told, the picture that its name tells.
  void ExpectAgreement(const std::string& heard) {
    for (int slot = 0; slot < cv.ImageCount; ++slot) {
      const std::string& name = cv.SlotName[slot];
      const int number = name.at(0) - '0';
      EXPECT_EQ(cv.SlotData[slot].Empty(), number % 2 == 1) << name;
      if (heard.find("\"" + name + "\" is lost") != std::string::npos) continue;
      ASSERT_TRUE(LoadSlotPicture(cv, os, slot)) << name;
      EXPECT_EQ(cv.DisplayBits[0], number) << name;
    }
    for (int slot = cv.ImageCount; slot < kSlots; ++slot) EXPECT_EQ(cv.SlotName[slot], "");
  }
};

TEST_F(ClosingUnderFaults, EverySlotKeepsItsPictureOrItsLossIsTold) {
  for (const int closed : {0, 5, 9})
    for (const int times : {1, 1000}) {
      bool fired = true;
      for (int call = 1; fired; ++call) {
        SCOPED_TRACE(testing::Message()
                     << "slot " << closed << ", call " << call << ", " << times << " times");
        OpenTen();
        cv.CurrentSlot = closed;
        HeardPlatform quiet;
        bool isClosed = false;
        {
          const FailingCalls fault(call, times);
          isClosed = CloseImage(cv, quiet);
          fired = fault.Seen() >= call;
        }
        EXPECT_EQ(cv.ImageCount, isClosed ? 9 : 10);
        EXPECT_EQ(quiet.messages, isClosed ? 0 : 1);
        const std::string name = std::to_string(closed) + (closed % 2 ? ".bmp" : ".fts");
        EXPECT_EQ(std::count(cv.SlotName.begin(), cv.SlotName.end(), name), isClosed ? 0 : 1);
        EXPECT_TRUE(isClosed || times > 1 || cv.SlotName[closed] == name) << "nothing has moved";
        ExpectAgreement(quiet.heard);
      }
    }
}

TEST_F(Opening, SlotsOutsideTheStoreDoNothing) {
  Open(MakeFits("a.fts", 7));
  const std::string before = LastingState();
  for (const int slot : {-1, kSlots}) {
    StoreSlot(cv, slot);
    EXPECT_EQ(HeaderText(cv, slot), "");
    cv.CurrentSlot = slot;
    LoadSlotData(cv);
  }
  EXPECT_EQ(LastingState(), before);
}

TEST_F(Opening, SlotDataAreSharedUntilTheWorkingCopyIsEdited) {
  Open(MakeFits("a.fts", 7));
  cv.ImageData = {};
  LoadSlotData(cv);
  EXPECT_EQ(cv.ImageMin, 0);
  EXPECT_EQ(cv.ImageMax, 7);
  EXPECT_EQ(cv.ImageData.View().values, cv.SlotData[0].View().values);
  cv.ImageData.Edit().At(0, 0) = 99;
  EXPECT_EQ(cv.SlotData[0].View().At(0, 0), 7);
  cv.SlotHeader[0] = {"A", "END"};
  EXPECT_EQ(HeaderText(cv, 0), "A\r\nEND\r\n");
}

}  // namespace
}  // namespace corvane
