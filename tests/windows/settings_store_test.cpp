#include <sys/stat.h>

#include "platform/QtText.h"
#include "platform/SettingsStore.h"
#include "tests/support/file_limit.h"
#include "tests/support/test_files.h"

namespace corvane {
namespace {

class SettingsFile : public testing::Test {
 protected:
  SettingsFile() { UseFolder(folder.Path()); }
  ~SettingsFile() override { qunsetenv("XDG_CONFIG_HOME"); }
  void UseFolder(const std::filesystem::path& path) {
    qputenv("XDG_CONFIG_HOME", path.c_str());
    file = path / "Corvane" / "Corvane_2.conf";
  }
  void MakeFile(std::string_view bytes) const {
    std::filesystem::create_directories(file.parent_path());
    WriteFile(file, bytes);
  }

  TemporaryFolder folder;
  std::filesystem::path file;
};

TEST_F(SettingsFile, KeepsTextsInItsSection) {
  EXPECT_EQ(StoredSetting("Raster", "5"), "5");
  EXPECT_EQ(StoreSettings({{"Raster", "12"}}), 0);
  EXPECT_EQ(ReadFile(file), "[Startup]\nRaster=12\n");
  EXPECT_EQ(StoredSetting("Raster", "5"), "12");
  for (const char* directory : {"/data/M 31, α; \"x\" = 50%", "/a\nb\tc",
                                "\\x41 \x01"
                                "b",
                                " [x] ", ""}) {
    EXPECT_EQ(StoreSettings({{"DefaultDir", directory}, {"SaveDir", "/plain"}}), 0);
    EXPECT_EQ(StoredSetting("DefaultDir", "none"), directory);
    EXPECT_EQ(StoredSetting("SaveDir", ""), "/plain");
    EXPECT_EQ(StoredSetting("Raster", "5"), "12");
  }
}

TEST_F(SettingsFile, KeepsWhatElseIsInIt) {
  MakeFile("[General]\nMag=7\n\n[Startup]\nMag=1\n; note\n\n[Other]\nMag=@ByteArray(x)\n");
  EXPECT_EQ(StoreSettings({{"Mag", "0"}, {"PColor", "2"}}), 0);
  EXPECT_EQ(ReadFile(file),
            "[General]\nMag=7\n\n[Startup]\n; note\nMag=0\nPColor=2\n\n[Other]\nMag=@ByteArray(x)\n");
}

TEST_F(SettingsFile, ThatIsDamagedFallsBackAndCanBeSavedAgain) {
  int number = 0;
  for (const std::string_view bytes :
       {std::string_view("\0\xff[[[%%%\n=\n[Startup", 18), std::string_view("[Startup\nRaster"),
        std::string_view("Raster=3\n"), std::string_view("[Startup]\nRaster\n")}) {
    SCOPED_TRACE(number);
    UseFolder(folder.Path() / std::to_string(++number));
    MakeFile(bytes);
    EXPECT_EQ(StoredSetting("Mag", "1"), "1");
    EXPECT_EQ(StoreSettings({{"Mag", "0"}}), 0);
    EXPECT_EQ(StoredSetting("Mag", "1"), "0");
  }
}

TEST_F(SettingsFile, ThatCannotBeWrittenIsLeftAloneAndTheReasonGiven) {
  WriteFile(folder.Path() / "plain", "a file where the folder should be");
  UseFolder(folder.Path() / "plain");
  EXPECT_EQ(StoreSettings({{"Mag", "0"}}), ENOTDIR);
  EXPECT_EQ(StoredSetting("Raster", "5"), "5");

  UseFolder(folder.Path() / "folder");
  std::filesystem::create_directories(file);
  EXPECT_NE(StoreSettings({{"Raster", "7"}}), 0);
  EXPECT_EQ(StoredSetting("Raster", "5"), "5");

  UseFolder(folder.Path() / "full");
  const std::string before = "[Startup]\nDefaultDir=/old\n";
  MakeFile(before);
  {
    const FileSizeLimit limit(40);
    EXPECT_EQ(StoreSettings({{"DefaultDir", "/new"}, {"SaveDir", "/also/new/and/longer"}}), EFBIG);
  }
  EXPECT_EQ(ReadFile(file), before);
  EXPECT_EQ(StoredSetting("DefaultDir", ""), "/old");
}

TEST_F(SettingsFile, ThatIsAPipeStopsNobody) {
  std::filesystem::create_directories(file.parent_path());
  ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
  EXPECT_EQ(StoredSetting("Mag", "1"), "1");
  EXPECT_EQ(StoreSettings({{"Mag", "0"}}), EINVAL);
  EXPECT_TRUE(std::filesystem::is_fifo(file));
}

}  // namespace
}  // namespace corvane
