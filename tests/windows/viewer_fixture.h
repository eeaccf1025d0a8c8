#pragma once

#include "core/fits_reader.h"
#include "tests/windows/tool_fixture.h"

namespace corvane {

// The viewer, or the aligner: a list of open images and a picture to mark.
class ViewerFixture : public ToolFixture {
 protected:
  explicit ViewerFixture(Window tool = Window::Examine) : ToolFixture(tool) { Start(); }

  bool Checked(const char* item) { return Item(item).isChecked(); }
  std::string Box(const char* name) { return Find<QLineEdit>(*window, name).text().toStdString(); }
  // X, Y and luminance as the boxes show them.
  std::string Readout() { return Box("txbXPos") + " " + Box("txbYPos") + " " + Box("txbLum"); }
  std::string Status() { return Find<QLabel>(*window, "lblStatus").text().toStdString(); }
  PictureBox& Picture() { return ToolFixture::Picture("picMark"); }
  QScrollBar& Bar(const char* name) { return Find<QScrollBar>(*window, name); }
  std::vector<std::string> List() {
    const auto& list = Find<QComboBox>(*window, "Combo1");
    std::vector<std::string> names;
    for (int i = 0; i < list.count(); ++i) names.push_back(list.itemText(i).toStdString());
    return names;
  }

  void OpenFile(const std::string& name, std::string_view bytes) {
    os.ChooseToOpen(MakeUserFile(name, bytes));
    Choose("mnuFileSel_0");
  }
  // A picture of these levels, the top row first, as an 8-bit FITS file.
  void OpenLevels(const std::string& name, int width, int height, const std::vector<double>& levels) {
    OpenFile(name, FitsImage(8, width, height, levels));
  }
  // Levels that tell every pixel from its neighbors.
  void OpenSlope(const std::string& name, int width, int height) { OpenFile(name, Slope(width, height)); }
  static std::string Slope(int width, int height) {
    std::vector<double> levels;
    for (int i = 0; i < width * height; ++i) levels.push_back(i * 7 % 251);
    return FitsImage(8, width, height, levels);
  }
  void SaveTo(const std::string& name) {
    os.ChooseToSave(UserFile(name));
    Choose("mnuFileSel_1");
  }

  // The data of a saved file, as a reader sees them.
  std::vector<float> Reread(const std::string& name) {
    ModCV reader;
    ReadFitsHeader(reader, os, UserFile(name));
    ReadFitsData(reader, os, UserFile(name));
    EXPECT_FALSE(reader.LoadFailed);
    size = QSize(reader.ImageData.Width(), reader.ImageData.Height());
    return Values(reader.ImageData.View());
  }

  void Mouse(QWidget& widget, QEvent::Type type, QPoint place, Qt::MouseButton button = Qt::NoButton,
             Qt::MouseButtons held = Qt::NoButton) {
    QMouseEvent event(type, QPointF(place), QPointF(widget.mapToGlobal(place)), button, held, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
  }
  // Image pixels: y from the bottom row.
  QPoint At(int x, int y) { return {x, Picture().height() - 1 - y}; }
  void Hover(int x, int y) { Mouse(Picture(), QEvent::MouseMove, At(x, y)); }
  void Click(int x, int y, Qt::MouseButton button = Qt::LeftButton) {
    Mouse(Picture(), QEvent::MouseButtonPress, At(x, y), button, button);
    Mouse(Picture(), QEvent::MouseButtonRelease, At(x, y), button);
  }
  std::vector<int> ShownLevels() { return LevelsOf(Picture().Flattened()); }
  // The screen, the store and the read-out agree on the picture.
  void ExpectPictureIsWhole() {
    EXPECT_EQ(Picture().size(), QSize(cv.Width(), cv.Height()));
    EXPECT_EQ(Box("txbWidth"), std::to_string(cv.Width()));
    EXPECT_EQ(Box("txbHeight"), std::to_string(cv.Height()));
    EXPECT_EQ(ShownLevels(), Pixels(cv.Display()));
  }

  QSize size;  // of the file read last
};

}  // namespace corvane
