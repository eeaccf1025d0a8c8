#include "core/working_files.h"

#include <sys/stat.h>

#include "base/files.h"
#include "tests/support/app_dir_fixture.h"
#include "tests/support/file_limit.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

Bytes AsBytes(std::string_view text) {
  return {reinterpret_cast<const unsigned char*>(text.data()), text.size()};
}

class WorkingFilesTest : public AppDirFixture {
 protected:
  std::filesystem::path path = AppFile("temp.bmp");
};

TEST_F(WorkingFilesTest, AWriteReplacesLongerAndShorterContents) {
  EXPECT_EQ(WriteInPlace(path, {AsBytes("head"), AsBytes(""), AsBytes("er, pixels")}), 0);
  EXPECT_EQ(ReadFile(path), "header, pixels");
  EXPECT_EQ(WriteInPlace(path, {AsBytes("ab")}), 0);
  EXPECT_EQ(ReadFile(path), "ab");
  const std::string large(3 << 20, 'x');
  EXPECT_EQ(WriteInPlace(path, {AsBytes("h"), AsBytes(large)}), 0);
  EXPECT_EQ(ReadFile(path), "h" + large);
  EXPECT_EQ(WriteInPlace(path, {}), 0);
  EXPECT_EQ(ReadFile(path), "");
}

TEST_F(WorkingFilesTest, OnlyRegularFilesAreWritten) {
  const auto precious = MakeUserFile("precious.txt", "precious");
  std::filesystem::create_symlink(precious, path);
  EXPECT_EQ(WriteInPlace(path, {AsBytes("lost")}), ELOOP);
  EXPECT_EQ(QuietCopy(AppFile(kGrayTemplate), path), ELOOP);
  EXPECT_EQ(ReadFile(precious), "precious");

  std::filesystem::create_directory(AppFile("dummy.bmp"));
  EXPECT_EQ(WriteInPlace(AppFile("dummy.bmp"), {AsBytes("lost")}), EISDIR);
  ASSERT_EQ(mkfifo(AppFile("expand.bmp").c_str(), 0600), 0);
  EXPECT_NE(WriteInPlace(AppFile("expand.bmp"), {AsBytes("lost")}), 0);
  EXPECT_EQ(WriteInPlace(AppFile("nowhere") / "temp.bmp", {AsBytes("lost")}), ENOENT);
}

TEST_F(WorkingFilesTest, AFullDiskLeavesWhatTheFileHeld) {
  const std::string large(100000, 'x');
  WriteFile(AppFile("0temp.bmp"), large);
  WriteFile(path, "old");
  {
    const FileSizeLimit limit(4096);
    EXPECT_EQ(WriteInPlace(path, {AsBytes(large)}), EFBIG);
    EXPECT_EQ(QuietCopy(AppFile("0temp.bmp"), path), EFBIG);
  }
  EXPECT_EQ(ReadFile(path), "old");
}

TEST_F(WorkingFilesTest, CopiesReplaceTheWholeTarget) {
  std::string content;
  for (int i = 0; i < 200001; ++i) content += static_cast<char>(i * 7 >> 3);
  WriteFile(AppFile("0temp.bmp"), content);
  WriteFile(path, content + content);
  EXPECT_EQ(QuietCopy(AppFile("0temp.bmp"), path), 0);
  EXPECT_EQ(ReadFile(path), content);
  EXPECT_EQ(QuietCopy(AppFile("0temp.bmp"), AppFile("0hold.bmp")), 0);
  EXPECT_EQ(ReadFile(AppFile("0hold.bmp")), content);
  EXPECT_EQ(QuietCopy(AppFile("1temp.bmp"), path), ENOENT);
  EXPECT_EQ(ReadFile(path), content);
}

TEST_F(WorkingFilesTest, EachCleanUpTakesItsOwnNames) {
  const auto fill = [this] {
    for (const char* name : {"0temp.bmp", "7temp.bmp", "9hold.bmp", "10temp.bmp", "temp.bmp", "dummy.bmp",
                             "expand.bmp", "hist1.bmp", "hist2.bmp", "f_color.bmp", "holiday.bmp"})
      WriteFile(AppFile(name), "x");
  };
  fill();
  DeleteLeftovers(cv.AppDir);
  EXPECT_THAT(WorkingFiles(), ElementsAre("10temp.bmp", "expand.bmp", "f_color.bmp", "holiday.bmp"));
  DeleteLeftovers(cv.AppDir);

  fill();
  DeleteViewFiles(cv.AppDir);
  EXPECT_THAT(WorkingFiles(), ElementsAre("0temp.bmp", "10temp.bmp", "7temp.bmp", "9hold.bmp", "hist1.bmp",
                                          "hist2.bmp", "holiday.bmp"));

  fill();
  cv.ImageCount = 7;
  DeleteSlotBitmaps(cv);
  EXPECT_TRUE(std::filesystem::exists(AppFile("7temp.bmp")));
  EXPECT_FALSE(std::filesystem::exists(AppFile("0temp.bmp")));
  EXPECT_TRUE(std::filesystem::exists(AppFile(kGrayTemplate)));
}

TEST_F(WorkingFilesTest, CleanUpTakesLinksNotWhatTheyPointToAndNoDirectories) {
  const auto precious = MakeUserFile("precious.txt", "precious");
  std::filesystem::create_symlink(precious, AppFile("3temp.bmp"));
  std::filesystem::create_directory(AppFile("4temp.bmp"));
  DeleteLeftovers(cv.AppDir);
  EXPECT_EQ(ReadFile(precious), "precious");
  EXPECT_THAT(WorkingFiles(), ElementsAre("4temp.bmp"));
}

TEST_F(WorkingFilesTest, ProgramFilesAreKnownByName) {
  for (const char* name : {"0temp.bmp", "9temp.bmp", "5hold.bmp", "temp.bmp", "dummy.bmp", "expand.bmp",
                           "hist1.bmp", "hist2.bmp", "f_color.bmp", "gr_8.bm_", "gr_24.bm_", "btgw_fc.bm_",
                           "royw_fc.bm_", "brw_fc.bm_", "cancel32.ico", "CORVANEIII.HLP"})
    EXPECT_TRUE(IsProgramFile(name)) << name;
  for (const char* name : {"", "10temp.bmp", "mytemp.bmp", "hold.bmp", "temp.fts", "m13.bmp"})
    EXPECT_FALSE(IsProgramFile(name)) << name;
  EXPECT_EQ(cv.SlotBitmap(3), cv.AppDir / "3temp.bmp");
  EXPECT_EQ(SlotHoldName(9), "9hold.bmp");
}

}  // namespace
}  // namespace corvane
