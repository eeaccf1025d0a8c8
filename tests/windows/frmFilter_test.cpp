#include "filters/filter_table.h"
#include "tests/windows/preview_fixture.h"

namespace corvane {
namespace {

using testing::ElementsAre;

class FilterWindow : public PreviewFixture {
 protected:
  FilterWindow() : PreviewFixture(Window::Filter) {}

  void Take(int filter, int radius = 1) {
    Find<QComboBox>(*window, "Combo1").setCurrentIndex(filter);
    Press(*window, ("Opt_" + std::to_string(radius - 1)).c_str());
  }
  std::string State() {
    return Enabled({"cmdApply", "cmdCancel", "cmdRedo", "cmdSave", "Combo1", "Opt_0", "Opt_1", "Opt_2"});
  }
  // What the filter makes of the levels in the slot's file.
  std::vector<int> Filtered(int filter, int radius) {
    ModCV slot;
    slot.AppDir = cv.AppDir;
    EXPECT_FALSE(LoadDisplayBits(slot, AppFile("0temp.bmp")));
    DisplayBitmap result(slot.Width(), slot.Height());
    std::memcpy(result.bits.data(), slot.DisplayBits.data(), slot.DisplayBits.size());
    NoProgress unseen;
    FilterTable()[filter].preview({slot.Display(), result.View(), radius, unseen});
    return Pixels(result.View());
  }
  int Count() const { return static_cast<int>(FilterTable().size()); }
};

TEST_F(FilterWindow, OffersARadiusWhereTheFilterHasOne) {
  OpenEveryLevel();
  EXPECT_EQ(Title(), "  Corvane Image Filter:  levels.fit");
  const auto& list = Find<QComboBox>(*window, "Combo1");
  std::vector<std::string> captions;
  for (int i = 0; i < list.count(); ++i) captions.push_back(list.itemText(i).toStdString());
  EXPECT_THAT(captions, ElementsAre("Equalization", "Median", "Average", "Gaussian Blur", "Sharpen",
                                    "Unsharp Mask", "Reduce Grain"));
  for (int filter = 0; filter < Count(); ++filter) {
    Find<QComboBox>(*window, "Combo1").setCurrentIndex(filter);
    const bool radius = filter != 0 && filter != 6;
    EXPECT_EQ(State(), radius ? "cmdApply Combo1 Opt_0 Opt_1 Opt_2 " : "cmdApply Combo1 ") << filter;
    EXPECT_TRUE(Find<QRadioButton>(*window, "Opt_0").isChecked());
  }
}

TEST_F(FilterWindow, AlwaysFiltersTheUnfilteredImage) {
  OpenEveryLevel();
  const std::vector<int> unfiltered = Pixels(cv.Display());
  for (int filter = 0; filter < Count(); ++filter) {
    for (int radius = 1; radius <= (FilterTable()[filter].usesRadius ? 3 : 1); ++radius) {
      SCOPED_TRACE(testing::Message() << filter << " radius " << radius);
      Find<QComboBox>(*window, "Combo1").setCurrentIndex(filter);
      if (FilterTable()[filter].usesRadius) Take(filter, radius);
      Press(*window, "cmdApply");
      const std::vector<int> filtered = Filtered(filter, radius);
      EXPECT_NE(filtered, unfiltered);
      EXPECT_EQ(Pixels(cv.Display()), filtered);
      EXPECT_EQ(FileLevels("temp.bmp"), filtered);
      EXPECT_EQ(ShownLevels(), filtered);
      EXPECT_EQ(State(), "cmdCancel cmdSave ");
      float counted = 0;
      for (const float count : cv.LumHist) counted += count;
      EXPECT_EQ(counted, kWidth * kHeight) << "padding is no pixel";
      Press(*window, "cmdCancel");
      EXPECT_EQ(Pixels(cv.Display()), unfiltered);
      EXPECT_TRUE(Find<QPushButton>(*window, "cmdRedo").isEnabled());
    }
  }
}

TEST_F(FilterWindow, AnotherFilterOrRadiusEndsRedo) {
  OpenEveryLevel();
  Take(4);
  for (const auto& change :
       std::vector<std::function<void()>>{[&] { Press(*window, "Opt_2"); }, [&] { Take(3); }}) {
    Press(*window, "cmdApply");
    Press(*window, "cmdCancel");
    Press(*window, "cmdRedo");
    EXPECT_EQ(State(), "cmdCancel cmdSave ");
    Press(*window, "cmdCancel");
    change();
    EXPECT_EQ(State(), "cmdApply Combo1 Opt_0 Opt_1 Opt_2 ");
  }
}

TEST_F(FilterWindow, ACancelledRunChangesNothingAtAnyRow) {
  OpenEveryLevel();
  const std::vector<int> unfiltered = Pixels(cv.Display());
  for (int filter = 0; filter < Count(); ++filter) {
    Take(filter);
    const int start = os.yields;
    Press(*window, "cmdApply");
    const int rows = os.yields - start;
    Press(*window, "cmdCancel");
    for (const int row : {1, rows / 2, rows}) {
      SCOPED_TRACE(testing::Message() << "filter " << filter << " row " << row);
      os.onYield = [&, first = os.yields] {
        if (os.yields - first == row) QTest::keyClick(window.get(), Qt::Key_Escape);
      };
      os.Expect("CANCEL CONFIRMATION", "Calculation cancelled !");
      Press(*window, "cmdApply");
      os.onYield = nullptr;
      EXPECT_EQ(Pixels(cv.Display()), unfiltered);
      EXPECT_EQ(ShownLevels(), unfiltered);
      EXPECT_EQ(FileLevels("temp.bmp"), unfiltered);
      EXPECT_FALSE(cv.ImageChanged);
    }
    Press(*window, "cmdApply");
    EXPECT_EQ(ShownLevels(), Filtered(filter, 1));
    Press(*window, "cmdCancel");
  }
}

TEST_F(FilterWindow, SavesTheFilterAppliedToTheData) {
  for (int filter = 0; filter < Count(); ++filter) {
    SCOPED_TRACE(filter);
    OpenWith("hundreds" + std::to_string(filter) + ".fit", FitsImage(16, 11, 10, Hundreds()));
    const int slot = cv.CurrentSlot;
    const FloatImage source = cv.SlotData[slot];
    Take(filter, 2);
    Press(*window, "cmdApply");
    SaveTo("filtered.fts", 16);
    EXPECT_EQ(offered, 2);
    FloatImage expected = source;
    NoProgress unseen;
    FilterTable()[filter].data({source.View(), expected.Edit(), 2, 1000, unseen});
    std::vector<float> stored;
    for (const float value : Values(expected.View()))
      stored.push_back(std::nearbyint(std::clamp(value, 0.0f, 65535.0f)));
    EXPECT_EQ(ReadValues("filtered.fts"), stored);
    EXPECT_EQ(Values(cv.SlotData[slot].View()), stored);
    EXPECT_EQ(Title(), "  Corvane Image Filter:  filtered.fts");
    EXPECT_EQ(ShownLevels(), FileLevels((std::to_string(slot) + "temp.bmp").c_str()));
    EXPECT_TRUE(Find<QPushButton>(*window, "cmdApply").isEnabled());
    window.reset();
  }
}

// A picture of 456 x 200 whose level tells the place.
class FilterMagnifier : public FilterWindow {
 protected:
  FilterMagnifier() {
    std::vector<double> levels;
    for (int y = 0; y < 200; ++y)
      for (int x = 0; x < 456; ++x) levels.push_back(Level(x, y));
    OpenWith("places.fit", FitsImage(8, 456, 200, levels));
  }
  static int Level(int x, int y) { return (x * 7 + y * 31) % 256; }
  QScrollBar& Bar(const char* name) { return Find<QScrollBar>(*window, name); }
  void Zoom(Qt::MouseButton button, Qt::KeyboardModifiers keys = Qt::ControlModifier) {
    QTest::mouseClick(&Find<QWidget>(*window, "picMag"), button, keys);
  }
  // The part of the image from (x, y), counted from the top left corner, is on screen `factor` times
  // enlarged.
  void ExpectShown(int x, int y, int factor) {
    const QImage image = Find<QWidget>(*window, "picMag").grab().toImage();
    for (const QPoint& place : {QPoint(0, 0), QPoint(5, 11), QPoint(image.width() - 1, image.height() - 1)})
      EXPECT_EQ(qGray(image.pixel(place)), Level(x + place.x() / factor, y + place.y() / factor))
          << place.x() << ',' << place.y();
  }
};

TEST_F(FilterMagnifier, ShowsThePlaceThatTheScrollBarsName) {
  EXPECT_EQ(Find<QWidget>(*window, "picMag").size(), QSize(229, 101));
  EXPECT_EQ(Bar("HScroll").maximum(), 343);
  EXPECT_EQ(Bar("VScroll").maximum(), 151);
  Bar("HScroll").setValue(100);
  Bar("VScroll").setValue(60);
  ExpectShown(100, 60, 2);
  for (int i = 0; i < 5; ++i) Zoom(Qt::LeftButton);
  EXPECT_EQ(Bar("HScroll").maximum(), 419) << "six times is the most";
  EXPECT_NEAR(Bar("HScroll").value(), 100 * 419 / 343, 1);
  ExpectShown(Bar("HScroll").value(), Bar("VScroll").value(), 6);
  for (int i = 0; i < 5; ++i) Zoom(Qt::RightButton);
  EXPECT_EQ(Bar("HScroll").maximum(), 343);
  EXPECT_NEAR(Bar("HScroll").value(), 100, 2);
}

TEST_F(FilterMagnifier, ZoomsByCtrlAlone) {
  for (const Qt::KeyboardModifiers keys :
       {Qt::KeyboardModifiers(Qt::NoModifier), Qt::KeyboardModifiers(Qt::ShiftModifier),
        Qt::ControlModifier | Qt::ShiftModifier})
    Zoom(Qt::LeftButton, keys);
  EXPECT_EQ(Bar("HScroll").maximum(), 343);
}

TEST_F(FilterMagnifier, FollowsThePreviewAndKeepsItsPlace) {
  Bar("HScroll").setValue(10);
  Bar("VScroll").setValue(0);
  Zoom(Qt::LeftButton);
  const int at = Bar("HScroll").value();
  const auto shown = [&] { return qGray(Find<QWidget>(*window, "picMag").grab().toImage().pixel(0, 0)); };
  const int before = shown();
  Take(2, 3);
  Press(*window, "cmdApply");
  EXPECT_EQ(shown(), FileLevels("temp.bmp")[static_cast<std::size_t>(199 * 456 + at)]);
  EXPECT_NE(shown(), before);
  Press(*window, "cmdCancel");
  EXPECT_EQ(shown(), before);
  Press(*window, "cmdRedo");
  EXPECT_NE(shown(), before);
  EXPECT_EQ(Bar("HScroll").value(), at);
}

}  // namespace
}  // namespace corvane
