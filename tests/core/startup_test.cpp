#include "core/startup.h"

#include <tuple>

#include "tests/support/app_dir_fixture.h"

namespace corvane {
namespace {

using StartingUp = AppDirFixture;

TEST_F(StartingUp, WithoutSettingsEverythingHasItsDefault) {
  cv.ImageCount = 3;
  cv.OriginalFiles = "left over";
  StartUp(cv, os);
  EXPECT_EQ(std::tuple(cv.ImageCount, cv.OriginalFiles, cv.SlotFileSize[9]), std::tuple(0, "", "0"));
  EXPECT_EQ(std::tuple(cv.MagMode, cv.RasterCycles, cv.FileTypeSetting, cv.PColorSetting),
            std::tuple(1, 5, 2, 0));
  EXPECT_EQ(std::tuple(cv.DefaultDir, cv.SaveDir), std::tuple(os.documentsDir, os.documentsDir));
  EXPECT_EQ(std::tuple(cv.AutoRadius, cv.AutoThreshold, cv.DeconvRadius, cv.DeconvStandard, cv.KeepTempFiles),
            std::tuple(5, 10, 3.0f, true, true));
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

TEST_F(StartingUp, TheFirstOpenDialogStartsWhereTheSamplesAre) {
  const auto samples = folder.Path() / "samples";
  std::filesystem::create_directory(samples);
  for (const auto& [stored, directory] :
       {std::pair(std::string(), samples), {AppFile("").string(), cv.AppDir}, {"/gone", os.documentsDir}}) {
    if (!stored.empty()) os.settings["DefaultDir"] = stored;
    cv.DefaultDir = samples;
    StartUp(cv, os);
    EXPECT_TRUE(std::filesystem::equivalent(cv.DefaultDir, directory)) << stored;
    EXPECT_EQ(cv.SaveDir, os.documentsDir);
  }
}

TEST_F(StartingUp, SettingsSurviveARestartOnceTheyAreSaved) {
  for (const bool saved : {false, true}) {
    StartUp(cv, os);
    cv.RasterCycles = 77;
    cv.FileTypeSetting = 1;
    cv.DefaultDir = cv.AppDir;
    if (saved) {
      EXPECT_TRUE(SavePreferences(cv, os));
      EXPECT_EQ(os.settings.count("SaveDir"), 0u);
      SaveDirectories(cv, os);
    }
    cv.DefaultDir.clear();
    StartUp(cv, os);
    EXPECT_EQ(std::tuple(cv.RasterCycles, cv.FileTypeSetting, cv.DefaultDir, cv.SaveDir),
              saved ? std::tuple(77, 1, cv.AppDir, os.documentsDir)
                    : std::tuple(5, 2, os.documentsDir, os.documentsDir));
  }
}

}  // namespace
}  // namespace corvane
