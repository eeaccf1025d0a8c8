#include "core/startup.h"

#include <gtest/gtest.h>

#include "tests/support/app_dir_fixture.h"

namespace corvane {
namespace {

using StartingUp = AppDirFixture;

TEST_F(StartingUp, WithoutSettingsEverythingHasItsDefault) {
  cv.ImageCount = 3;
  cv.OriginalFiles = "left over";
  StartUp(cv, os);
  EXPECT_EQ(cv.ImageCount, 0);
  EXPECT_EQ(cv.OriginalFiles, "");
  EXPECT_EQ(cv.SlotFileSize[9], "0");
  EXPECT_EQ(cv.MagMode, 1);
  EXPECT_EQ(cv.RasterCycles, 5);
  EXPECT_EQ(cv.FileTypeSetting, 2);
  EXPECT_EQ(cv.PColorSetting, 0);
  EXPECT_EQ(cv.DefaultDir, os.documentsDir);
  EXPECT_EQ(cv.SaveDir, os.documentsDir);
  EXPECT_EQ(cv.AutoRadius, 5);
  EXPECT_EQ(cv.AutoThreshold, 10);
  EXPECT_EQ(cv.DeconvRadius, 3.0f);
  EXPECT_TRUE(cv.DeconvStandard);
  EXPECT_TRUE(cv.KeepTempFiles);
  EXPECT_EQ(cv.AppDir, folder.Path() / "app");
}

TEST_F(StartingUp, TakesNumbersInTheirRangeAndNothingElse) {
  struct Case {
    const char* key;
    int ModCV::*field;
    std::vector<std::pair<std::string, int>> values;
  };
  const Case cases[] = {
      {"Mag", &ModCV::MagMode, {{"0", 0}, {"1", 1}, {"2", 1}, {"-1", 1}, {"", 1}}},
      {"Raster",
       &ModCV::RasterCycles,
       {{"1", 1}, {"128", 128}, {"0", 5}, {"129", 5}, {"five", 5}, {"1e99", 5}}},
      {"FileType", &ModCV::FileTypeSetting, {{"1", 1}, {"2", 2}, {"3", 2}, {"0", 2}, {"1.5", 2}}},
      {"PColor", &ModCV::PColorSetting, {{"0", 0}, {"2", 2}, {" 1 ", 1}, {"3", 0}, {"nan", 0}}},
  };
  for (const Case& c : cases) {
    for (const auto& [stored, value] : c.values) {
      os.settings[c.key] = stored;
      StartUp(cv, os);
      EXPECT_EQ(cv.*c.field, value) << c.key << " stored as '" << stored << "'";
    }
  }
}

TEST_F(StartingUp, DirectoriesThatAreGoneFallBackToTheDocuments) {
  const auto night = folder.Path() / "night";
  std::filesystem::create_directory(night);
  MakeUserFile("file", "");
  os.settings["DefaultDir"] = night.string();
  for (const std::string& gone : {(folder.Path() / "gone").string(), UserFile("file").string(), std::string(),
                                  std::string("."), std::string("C:\\My Documents")}) {
    os.settings["SaveDir"] = gone;
    StartUp(cv, os);
    EXPECT_EQ(cv.DefaultDir, night);
    EXPECT_EQ(cv.SaveDir, os.documentsDir) << gone;
  }
}

TEST_F(StartingUp, RemovesWhatAnEarlierRunLeftAndNothingElse) {
  for (const char* name : {"0temp.bmp", "7temp.bmp", "9hold.bmp", "temp.bmp", "dummy.bmp", "hist1.bmp",
                           "hist2.bmp", "10temp.bmp", "mytemp.bmp"})
    WriteFile(AppFile(name), "x");
  WriteFile(UserFile("precious"), "x");
  std::filesystem::create_symlink(UserFile("precious"), AppFile("3temp.bmp"));
  std::filesystem::create_directory(AppFile("4temp.bmp"));
  StartUp(cv, os);
  EXPECT_EQ(WorkingFiles(), (std::vector<std::string>{"10temp.bmp", "4temp.bmp", "mytemp.bmp"}));
  EXPECT_EQ(ReadFile(UserFile("precious")), "x");
}

TEST_F(StartingUp, SettingsSurviveARestart) {
  StartUp(cv, os);
  cv.MagMode = 0;
  cv.RasterCycles = 77;
  cv.FileTypeSetting = 1;
  cv.PColorSetting = 2;
  cv.DefaultDir = cv.AppDir;
  cv.SaveDir = folder.Path();
  StartUp(cv, os);  // nothing was saved
  EXPECT_EQ(cv.RasterCycles, 5);

  cv.RasterCycles = 77;
  cv.FileTypeSetting = 1;
  SavePreferences(cv, os);
  EXPECT_EQ(os.settings.count("SaveDir"), 0u);
  cv.DefaultDir = cv.AppDir;
  SaveDirectories(cv, os);
  StartUp(cv, os);
  EXPECT_EQ(cv.RasterCycles, 77);
  EXPECT_EQ(cv.FileTypeSetting, 1);
  EXPECT_EQ(cv.DefaultDir, cv.AppDir);
  EXPECT_EQ(cv.SaveDir, os.documentsDir);
}

}  // namespace
}  // namespace corvane
