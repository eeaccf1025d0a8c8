#pragma once

#include <QAction>
#include <memory>

#include "app/Factory.h"
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

  std::unique_ptr<ToolWindow> window;
  int offered = 0;  // to the save options: the code of the bits

 private:
  Window tool_;
};

}  // namespace corvane
