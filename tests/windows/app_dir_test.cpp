#include "app/AppDir.h"
#include "core/working_files.h"
#include "tests/support/app_dir_fixture.h"

namespace corvane {
namespace {

// The fixture's AppDir stands for the folder of the program; `Data()` is where the user's own would be.
class AppDirTest : public AppDirFixture {
 protected:
  std::filesystem::path Data() const { return folder.Path() / "share" / "data"; }
  static void ExpectShippedFiles(const std::filesystem::path& where) {
    for (const char* name :
         {kGrayTemplate, kColorTemplate, kPalettes[0], kPalettes[1], kPalettes[2], kHelpFile, "cancel32.ico"})
      EXPECT_TRUE(ReadFile(where / name) == ReadFile(AssetFolder() / name)) << name;
  }
};

TEST_F(AppDirTest, IsTheFolderOfTheProgramWhateverIsInstalledBesideIt) {
  std::filesystem::create_directories(folder.Path() / "share");
  std::filesystem::copy(cv.AppDir, folder.Path() / "share" / "corvane");
  const AppDir appDir(cv.AppDir, Data());
  EXPECT_EQ(appDir.GetState(), AppDir::State::Ready);
  EXPECT_EQ(appDir.Path(), cv.AppDir);
  EXPECT_FALSE(std::filesystem::exists(Data()));
}

TEST_F(AppDirTest, IsTheUsersOwnFolderWhereTheProgramsCannotBeWritten) {
  for (const char* unwritable : {"/proc/self", "/nowhere"}) {
    const AppDir appDir(unwritable, Data());
    EXPECT_EQ(appDir.GetState(), AppDir::State::Ready);
    EXPECT_EQ(appDir.Path(), Data());
    ExpectShippedFiles(Data());
  }
}

TEST_F(AppDirTest, OfAnInstalledCopyIsTheUsersOwnFolderAndFollowsTheInstalledFiles) {
  const std::filesystem::path prefix = folder.Path() / "usr";
  const std::filesystem::path shared = prefix / "share" / "corvane";
  std::filesystem::create_directories(prefix / "bin");
  std::filesystem::create_directories(prefix / "share");
  std::filesystem::copy(cv.AppDir, shared);
  std::filesystem::create_directory(shared / "samples");
  for (const char* manual : {"<html>the packager's manual</html>\n", "<html>the update's</html>\n"}) {
    WriteFile(shared / kHelpFile, manual);
    std::string palette = ReadFile(shared / kPalettes[0]);
    palette[54 + 4 * 7] = manual[7];
    WriteFile(shared / kPalettes[0], palette);
    const AppDir appDir(prefix / "bin", Data());
    EXPECT_EQ(appDir.Path(), Data());
    EXPECT_EQ(appDir.Samples(), shared / "samples");
    EXPECT_EQ(ReadFile(Data() / kHelpFile), manual);
    EXPECT_EQ(ReadFile(Data() / kPalettes[0]), palette);
    EXPECT_TRUE(std::filesystem::is_empty(prefix / "bin"));
  }
}

TEST_F(AppDirTest, FindsTheSamplesBesideTheProgram) {
  EXPECT_EQ(AppDir(cv.AppDir, Data()).Samples(), "");
  std::filesystem::create_directory(AppFile("samples"));
  EXPECT_EQ(AppDir(cv.AppDir, Data()).Samples(), AppFile("samples"));
}

TEST_F(AppDirTest, ThatCannotBeWrittenAnywhereIsNamed) {
  const AppDir appDir("/nowhere", "/proc/self/nowhere");
  EXPECT_EQ(appDir.GetState(), AppDir::State::NotWritable);
  os.Expect("CORVANE", "Can't write to the folder /proc/self/nowhere.");
  EXPECT_FALSE(appDir.MayStart(os));
}

TEST_F(AppDirTest, GetsItsMissingAndDamagedFilesBack) {
  const auto spoil = [this](const char* name, std::size_t at) {
    std::string bytes = ReadFile(AppFile(name));
    bytes[at] = static_cast<char>(bytes[at] ^ 0x41);
    WriteFile(AppFile(name), bytes);
  };
  spoil(kGrayTemplate, 54 + 4 * 100);  // one gray level
  spoil(kColorTemplate, 28);           // bits per pixel
  spoil(kPalettes[0], 10);             // data offset
  WriteFile(AppFile(kPalettes[1]), ReadFile(AppFile(kPalettes[1])) + "x");
  WriteFile(AppFile(kPalettes[2]), "");
  std::filesystem::remove(AppFile(kHelpFile));
  WriteFile(AppFile("cancel32.ico"), "BM");
  { const AppDir appDir(cv.AppDir, Data()); }
  ExpectShippedFiles(cv.AppDir);
  const std::string manual = ReadFile(AppFile(kHelpFile));
  WriteFile(AppFile(kHelpFile), manual.substr(0, manual.size() / 2));
  const AppDir appDir(cv.AppDir, Data());
  EXPECT_EQ(ReadFile(AppFile(kHelpFile)), manual);
}

TEST_F(AppDirTest, KeepsAnIntactPaletteOfTheUsersOwn) {
  std::string palette = ReadFile(AppFile(kPalettes[0]));
  palette[54 + 4 * 7] = '\x55';
  WriteFile(AppFile(kPalettes[0]), palette);
  const AppDir appDir(cv.AppDir, Data());
  EXPECT_EQ(ReadFile(AppFile(kPalettes[0])), palette);
}

TEST_F(AppDirTest, BelongsToOneProgramAtATime) {
  {
    const AppDir first(cv.AppDir, Data());
    ASSERT_EQ(first.GetState(), AppDir::State::Ready);
    WriteFile(AppFile("0temp.bmp"), "picture of the first");
    WriteFile(AppFile(kGrayTemplate), "damaged");
    const AppDir second(cv.AppDir, Data());
    EXPECT_EQ(second.GetState(), AppDir::State::AlreadyRunning);
    os.Expect("CORVANE", "Corvane is already running.");
    EXPECT_FALSE(second.MayStart(os));
    EXPECT_TRUE(first.MayStart(os));
    EXPECT_EQ(ReadFile(AppFile("0temp.bmp")), "picture of the first");
    EXPECT_EQ(ReadFile(AppFile(kGrayTemplate)), "damaged");
    EXPECT_FALSE(std::filesystem::exists(Data()));
  }
  const AppDir next(cv.AppDir, Data());
  EXPECT_EQ(next.GetState(), AppDir::State::Ready);
}

TEST_F(AppDirTest, FollowsNoLinkInPlaceOfItsLock) {
  WriteFile(UserFile("precious"), "kept");
  std::filesystem::create_symlink(UserFile("precious"), AppFile("corvane.lock"));
  const AppDir appDir(cv.AppDir, Data());
  EXPECT_EQ(appDir.Path(), Data());
  EXPECT_EQ(ReadFile(UserFile("precious")), "kept");
}

}  // namespace
}  // namespace corvane
