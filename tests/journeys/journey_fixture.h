#pragma once

#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>
#include <numeric>

#include "app/ApplicationDesk.h"
#include "tests/support/app_dir_fixture.h"
#include "tests/support/file_makers.h"
#include "tests/support/images.h"
#include "tests/support/window_controls.h"
#include "widgets/PictureBox.h"

namespace corvane {

// The program as it runs, on its real desk, from the viewer on; the user is the test.
class JourneyFixture : public AppDirFixture {
 protected:
  JourneyFixture() { program.Replace(Window::Examine); }

  ToolWindow& Shown() { return *program.Shown(); }
  std::string ShownName() { return Shown().objectName().toStdString(); }
  void Choose(const char* item) {
    auto* action = Shown().findChild<QAction*>(QLatin1String(item));
    ASSERT_TRUE(action && action->isEnabled()) << item;
    action->trigger();
  }
  void Press(const char* button) { corvane::Press(Shown(), button); }
  void Select(const char* list, int index) { Find<QComboBox>(Shown(), list).setCurrentIndex(index); }
  std::vector<std::string> Names(const char* list) {
    const auto& box = Find<QComboBox>(Shown(), list);
    std::vector<std::string> names;
    for (int i = 0; i < box.count(); ++i) names.push_back(box.itemText(i).toStdString());
    return names;
  }
  std::string Box(const char* name) { return Find<QLineEdit>(Shown(), name).text().toStdString(); }

  void OpenFile(const std::string& name, std::string_view bytes) {
    os.ChooseToOpen(MakeUserFile(name, bytes));
    Choose("mnuFileSel_0");
  }
  // What the user does in the next save dialog and in the options after it.
  void ChooseSixteenBits(const std::string& name, const char* comment) {
    os.ChooseToSave(UserFile(name));
    WhenShown<QDialog>([comment](QDialog& options) {
      Find<QRadioButton>(options, "Option2").setChecked(true);
      Find<QLineEdit>(options, "txbComment").setText(comment);
      corvane::Press(options, "cmdClose");
    });
  }

  // A frame as cameras write it, values 0..32767 from the top row on.
  static std::string CameraFile(int width, int height, const std::vector<double>& values) {
    std::vector<double> raw(values);
    for (double& value : raw) value -= 32768;
    return FitsImage(16, width, height, raw, {Card("BSCALE", 1), Card("BZERO", 32768)});
  }
  // A file of 16 bits as the program writes it.
  static std::string SavedFile(int width, int height, const std::vector<double>& values,
                               const std::string& source, const std::string& comment) {
    return FitsBytes({Card("SIMPLE", "T"), Card("BITPIX", 16), Card("NAXIS", 2), Card("NAXIS1", width),
                      Card("NAXIS2", height), Card("BSCALE", "1.0"), Card("BZERO", "0.0"),
                      RawCard("COMMENT = '" + source + "'"), RawCard("COMMENT = '" + comment + "'")},
                     FitsPixels(16, values));
  }
  // The display bitmap of values from the top row on: the darkest is level 0, the brightest 255.
  std::string DisplayFile(int width, int height, const std::vector<double>& values) {
    const auto [low, high] = std::minmax_element(values.begin(), values.end());
    const float scale = 255.0f / static_cast<float>(*high - *low);
    const std::size_t stride = static_cast<std::size_t>(width + 3) / 4 * 4;
    std::string pixels(stride * static_cast<std::size_t>(height), '\0');
    for (int y = 0; y < height; ++y)
      for (int x = 0; x < width; ++x) {
        const auto value = static_cast<float>(values[static_cast<std::size_t>(y * width + x)] - *low);
        pixels[stride * static_cast<std::size_t>(height - 1 - y) + static_cast<std::size_t>(x)] =
            static_cast<char>(std::nearbyint(value * scale));
      }
    std::string bytes = ReadFile(AppFile("gr_8.bm_")).substr(0, 1078) + pixels;
    SetField(bytes, 2, static_cast<std::uint32_t>(bytes.size()));
    SetField(bytes, 18, static_cast<std::uint32_t>(width));
    SetField(bytes, 22, static_cast<std::uint32_t>(height));
    SetField(bytes, 34, static_cast<std::uint32_t>(pixels.size()));
    return bytes;
  }

  ApplicationDesk program{cv, os};
};

}  // namespace corvane
