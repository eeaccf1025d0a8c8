#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QLockFile>
#include <QSettings>

#include "platform/QtText.h"
#include "platform/SettingsStore.h"
#include "tests/support/test_files.h"

namespace corvane {
namespace {

class Settings : public testing::Test {
 protected:
  Settings() { UseFolder(folder.Path()); }
  void UseFolder(const std::filesystem::path& path) {
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, ToQt(path));
    file = path / "Corvane" / "Corvane_2.conf";
    lock = path / "Corvane" / "Corvane_2.conf.lock";
  }
  void MakeFile(std::string_view bytes) const {
    std::filesystem::create_directories(file.parent_path());
    WriteFile(file, bytes);
  }

  TemporaryFolder folder;
  std::filesystem::path file;
  std::filesystem::path lock;
};

TEST_F(Settings, AreKeptAsTextInTheirSection) {
  EXPECT_EQ(StoredSetting("Raster", "5"), "5");
  const std::string directory = "/data/M 31, α; \"x\" = 50%";
  StoreSetting("Raster", "12");
  StoreSetting("SaveDir", directory);
  EXPECT_EQ(StoredSetting("Raster", "5"), "12");
  EXPECT_EQ(StoredSetting("SaveDir", ""), directory);
  EXPECT_NE(ReadFile(file).find("[Startup]\nRaster=12\n"), std::string::npos);
}

TEST_F(Settings, OfADamagedFileFallBackAndCanBeSavedAgain) {
  int number = 0;
  for (const std::string_view bytes :
       {std::string_view("\0\xff[[[%%%\n=\n[Startup", 18), std::string_view("[Startup\nRaster"),
        std::string_view("Raster=3\n"), std::string_view("[Startup]\nRaster\n")}) {
    SCOPED_TRACE(number);
    UseFolder(folder.Path() / std::to_string(++number));
    MakeFile(bytes);
    EXPECT_EQ(StoredSetting("Mag", "1"), "1");
    StoreSetting("Mag", "0");
    EXPECT_EQ(StoredSetting("Mag", "1"), "0");
  }
}

TEST_F(Settings, AreGivenUpWhereTheirFileCannotBeWritten) {
  WriteFile(folder.Path() / "plain", "a file where the folder should be");
  UseFolder(folder.Path() / "plain");
  StoreSetting("Mag", "0");
  EXPECT_EQ(StoredSetting("Raster", "5"), "5");

  UseFolder(folder.Path() / "other");
  std::filesystem::create_directories(file);
  StoreSetting("Raster", "7");
  EXPECT_EQ(StoredSetting("Raster", "5"), "5");
}

TEST_F(Settings, DoNotWaitLongForALockThatIsHeld) {
  MakeFile("[Startup]\nMag=1\n");
  QLockFile held(ToQt(lock));
  ASSERT_TRUE(held.tryLock());
  QElapsedTimer timer;
  timer.start();
  StoreSetting("Mag", "0");
  EXPECT_LT(timer.elapsed(), 3000);
  EXPECT_EQ(StoredSetting("Mag", ""), "1");
}

TEST_F(Settings, LoseTheLockThatAKilledRunLeft) {
  MakeFile("[Startup]\nMag=1\n");
  WriteFile(lock, "1\ncorvane\nsomewhere\n");  // the number now belongs to a process that is alive
  RemoveStaleSettingsLock();
  EXPECT_FALSE(std::filesystem::exists(lock));
  StoreSetting("Mag", "0");
  EXPECT_EQ(StoredSetting("Mag", ""), "0");
  RemoveStaleSettingsLock();
  EXPECT_EQ(StoredSetting("Mag", ""), "0");
}

}  // namespace
}  // namespace corvane
