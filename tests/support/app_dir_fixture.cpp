#include "tests/support/app_dir_fixture.h"

#include <algorithm>

#include "core/open_image.h"
#include "core/working_files.h"
#include "tests/support/images.h"

namespace corvane {

namespace {

std::vector<std::string> ShippedFiles() {
  std::vector<std::string> names{kGrayTemplate, kColorTemplate, kHelpFile, "cancel32.ico"};
  names.insert(names.end(), std::begin(kPalettes), std::end(kPalettes));
  return names;
}

}  // namespace

AppDirFixture::AppDirFixture() {
  cv.AppDir = folder.Path() / "app";
  cv.DefaultDir = cv.SaveDir = os.documentsDir = folder.Path() / "user";
  cv.SlotFileSize.fill("0");  // as the start of the program leaves them
  std::filesystem::create_directory(cv.AppDir);
  std::filesystem::create_directory(cv.DefaultDir);
  for (const std::string& name : ShippedFiles())
    std::filesystem::copy_file(AssetFolder() / name, cv.AppDir / name);
}

std::filesystem::path AppDirFixture::MakeUserFile(const std::string& name, std::string_view bytes) const {
  WriteFile(UserFile(name), bytes);
  return UserFile(name);
}

int AppDirFixture::OpenUserImage(const std::string& name, std::string_view bytes) {
  const std::optional<int> slot = OpenImageFile(cv, os, MakeUserFile(name, bytes));
  EXPECT_TRUE(slot) << name;
  return slot.value_or(0);
}

std::vector<std::string> AppDirFixture::WorkingFiles() const {
  const std::vector<std::string> shipped = ShippedFiles();
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(cv.AppDir)) {
    const std::string name = entry.path().filename().string();
    if (std::find(shipped.begin(), shipped.end(), name) == shipped.end()) names.push_back(name);
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::string AppDirFixture::LastingState() const {
  std::string text = std::to_string(cv.ImageCount);
  for (int slot = 0; slot < kSlots; ++slot) {
    text += "|" + std::to_string(static_cast<int>(cv.SlotRendering[slot])) + cv.SlotName[slot] +
            std::to_string(cv.SlotBytesPerPixel[slot]) + cv.SlotFileSize[slot] + HeaderText(cv, slot) +
            testing::PrintToString(Values(cv.SlotData[slot].View()));
  }
  for (const std::string& name : WorkingFiles()) text += name + ReadFile(AppFile(name));
  return text;
}

void AppDirFixture::ExpectHourglass(const std::function<void()>& command) {
  const auto work = [this] {
    std::string state(cv.DisplayBits.begin(), cv.DisplayBits.end());
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.Path()))
      if (entry.is_regular_file()) state += entry.path().string() + ReadFile(entry.path());
    return state;
  };
  const std::string before = work();
  std::string idle = before;
  os.onBusy = [&](bool on) {
    if (on)
      EXPECT_TRUE(work() == idle) << "work before the hourglass";
    else
      idle = work();
  };
  command();
  os.onBusy = nullptr;
  EXPECT_FALSE(os.busy);
  EXPECT_TRUE(work() == idle) << "work after the hourglass";
  EXPECT_FALSE(idle == before) << "no hourglass";
}

}  // namespace corvane
