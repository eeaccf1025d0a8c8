#include "core/startup.h"

#include <utility>

#include "base/text.h"
#include "core/working_files.h"

namespace corvane {
namespace {

struct NumberSetting {
  const char* key;
  int ModCV::*field;
  int fallback;
  int lowest;
  int highest;
};
constexpr NumberSetting kNumbers[] = {
    {"Mag", &ModCV::MagMode, 1, 0, 1},
    {"Raster", &ModCV::RasterCycles, 5, 1, 128},
    {"FileType", &ModCV::FileTypeSetting, 2, 1, 2},
    {"PColor", &ModCV::PColorSetting, 0, 0, 2},
};

struct DirectorySetting {
  const char* key;
  std::filesystem::path ModCV::*field;
};
constexpr DirectorySetting kDirectories[] = {
    {"DefaultDir", &ModCV::DefaultDir},
    {"SaveDir", &ModCV::SaveDir},
};

int ReadNumber(const NumberSetting& setting, Platform& os) {
  const std::optional<int> value = ParseWhole(os.Setting(setting.key, std::to_string(setting.fallback)));
  const bool valid = value && *value >= setting.lowest && *value <= setting.highest;
  return valid ? *value : setting.fallback;
}

std::filesystem::path ReadDirectory(const DirectorySetting& setting, const std::filesystem::path& first,
                                    Platform& os) {
  const std::filesystem::path stored = os.Setting(setting.key, first.string());
  std::error_code error;
  return stored.is_absolute() && std::filesystem::is_directory(stored, error) ? stored : os.DocumentsDir();
}

}  // namespace

void StartUp(ModCV& cv, Platform& os) {
  ModCV fresh;
  fresh.AppDir = std::move(cv.AppDir);
  fresh.RefillAppDir = std::move(cv.RefillAppDir);
  fresh.DefaultDir = std::move(cv.DefaultDir);
  fresh.SlotFileSize.fill("0");
  cv = std::move(fresh);
  for (const NumberSetting& setting : kNumbers) cv.*setting.field = ReadNumber(setting, os);
  for (const DirectorySetting& setting : kDirectories)
    cv.*setting.field = ReadDirectory(setting, cv.*setting.field, os);
  DeleteLeftovers(cv.AppDir);
}

bool SavePreferences(const ModCV& cv, Platform& os) {
  Settings values;
  for (const NumberSetting& setting : kNumbers) values[setting.key] = std::to_string(cv.*setting.field);
  const int error = os.SaveSettings(values);
  if (error != 0) os.Message("Error Number " + std::to_string(error), "DATA SAVE ERROR");
  return error == 0;
}

void SaveDirectories(const ModCV& cv, Platform& os) {
  Settings values;
  for (const DirectorySetting& setting : kDirectories) values[setting.key] = (cv.*setting.field).string();
  os.SaveSettings(values);
}

}  // namespace corvane
