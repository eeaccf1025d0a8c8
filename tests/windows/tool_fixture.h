#pragma once

#include <sstream>

#include "app/Factory.h"
#include "core/open_image.h"
#include "formats/fits_cards.h"
#include "tests/support/app_dir_fixture.h"
#include "tests/support/file_makers.h"
#include "tests/support/images.h"
#include "tests/support/window_controls.h"
#include "widgets/PictureBox.h"

namespace corvane {

// A main window on a fresh store; the user is the test.
class ToolFixture : public AppDirFixture {
 protected:
  explicit ToolFixture(Window tool) : tool_(tool) {}

  // The window as the program shows it, at the start and on the way back from another.
  void Start() {
    window.reset();
    window = MakeWindow(tool_, cv, os, desk);
    window->Open();
    window->show();
  }

  QAction& Item(const char* name) { return *window->findChild<QAction*>(QLatin1String(name)); }
  void Choose(const char* item) { Item(item).trigger(); }
  PictureBox& Picture(const char* name) { return Find<PictureBox>(*window, name); }

  // Those of the controls and menu items that are enabled.
  std::string Enabled(const std::vector<const char*>& names) {
    std::ostringstream enabled;
    for (const char* name : names) {
      const auto* action = window->findChild<QAction*>(QLatin1String(name));
      if (action ? action->isEnabled() : Find<QWidget>(*window, name).isEnabled()) enabled << name << ' ';
    }
    return enabled.str();
  }

  // The gray levels of a picture on screen, in the order of DisplayBits without padding.
  static std::vector<int> LevelsOf(const QImage& image) {
    std::vector<int> levels;
    for (int y = image.height() - 1; y >= 0; --y)
      for (int x = 0; x < image.width(); ++x) levels.push_back(qGray(image.pixel(x, y)));
    return levels;
  }

  // The save-options dialog: what it is offered, and the bits the user takes.
  void ChooseBits(int bits) {
    desk.dialogs[Dialog::SaveOptions] = [this, bits] {
      offered = cv.BytesPerPixel;
      cv.BytesPerPixel = bits / 8;
      cv.FitsComment = CommentValue("");
    };
  }

  // The values of a file, as it opens.
  std::vector<float> ReadValues(const std::string& name) {
    ModCV other;
    other.AppDir = UserFile("reader");
    std::filesystem::create_directory(other.AppDir);
    std::filesystem::copy_file(AppFile("gr_8.bm_"), other.AppDir / "gr_8.bm_",
                               std::filesystem::copy_options::overwrite_existing);
    EXPECT_TRUE(OpenImageFile(other, os, UserFile(name))) << name;
    return Values(other.SlotData[0].View());
  }

  std::unique_ptr<ToolWindow> window;
  int offered = 0;  // to the save options: the code of the bits

 private:
  Window tool_;
};

}  // namespace corvane
