#pragma once

#include <algorithm>

#include "core/slot_picture.h"
#include "tests/support/file_limit.h"
#include "tests/windows/tool_fixture.h"
#include "widgets/Thumbnail.h"

namespace corvane {

// A window that changes levels, on a fresh store with one image; the user is the test.
class PreviewFixture : public ToolFixture {
 protected:
  using ToolFixture::ToolFixture;
  static constexpr int kWidth = 13;  // rows are padded
  static constexpr int kHeight = 20;

  // Opens a file as the viewer does, then the tool on it.
  void OpenWith(const std::string& name, std::string_view bytes) {
    OpenUserImage(name, bytes);
    Start();
  }
  // Every level once and four more, in the file's order.
  static std::vector<double> EveryLevel() {
    std::vector<double> levels;
    for (int i = 0; i < kWidth * kHeight; ++i) levels.push_back(i % 256);
    return levels;
  }
  void OpenEveryLevel() { OpenWith("levels.fit", FitsImage(8, kWidth, kHeight, EveryLevel())); }
  // Ten values of each hundred from 0 to 1000.
  static std::vector<double> Hundreds() {
    std::vector<double> values;
    for (int i = 0; i < 110; ++i) values.push_back(i % 11 * 100);
    return values;
  }
  void OpenHundreds() { OpenWith("hundreds.fit", FitsImage(16, 11, 10, Hundreds())); }

  QSlider& Slider(const char* name) { return Find<QSlider>(*window, name); }
  std::string LabelText(const char* name) { return Find<QLabel>(*window, name).text().toStdString(); }
  std::string Title() { return window->windowTitle().toStdString(); }
  Thumbnail& Preview() { return Find<Thumbnail>(*window, "Image1"); }

  // The picture of a display bitmap, in stored order without padding.
  std::vector<int> FileLevels(const char* name) {
    ModCV other;
    other.AppDir = cv.AppDir;
    EXPECT_FALSE(LoadDisplayBits(other, AppFile(name))) << name;
    return Pixels(other.Display());
  }
  std::vector<int> ShownLevels() { return LevelsOf(Preview().Picture()); }
  // What the preview, the store and the working file show of level `level` of EveryLevel().
  int LevelNow(int level) {
    const int x = level % kWidth;
    const int y = kHeight - 1 - level / kWidth;
    const int shown = ShownLevels()[static_cast<std::size_t>(y * kWidth + x)];
    EXPECT_EQ(shown, cv.Display().At(x, y));
    return shown;
  }
  bool HasMarker(const char* picture, int level) {
    PictureBox& box = Picture(picture);
    const auto isRed = [&](double y) { return box.Point(level, y) == QColor(255, 0, 0); };
    return isRed(0) && isRed(12);
  }

  void SaveTo(const std::string& name, int bits = 8) {
    ChooseBits(bits);
    os.ChooseToSave(UserFile(name));
    Choose("mnuFileSel_0");
  }
};

}  // namespace corvane
