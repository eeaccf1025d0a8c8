#include "luminance/frmDeConv.h"

#include "luminance/frmSave16.h"
#include "tests/support/app_dir_fixture.h"
#include "tests/support/images.h"
#include "tests/support/window_controls.h"

namespace corvane {
namespace {

using testing::ElementsAreArray;

enum class Way { Button, Escape, Box };
constexpr Way kWays[] = {Way::Button, Way::Escape, Way::Box};

void Leave(QWidget& dialog, Way way) {
  if (way == Way::Button) Press(dialog, "cmdCancel");
  if (way == Way::Escape) QTest::keyClick(&dialog, Qt::Key_Escape);
  if (way == Way::Box) dialog.close();
}

std::string Text(const QWidget& dialog, const char* label) {
  return Find<QLabel>(dialog, label).text().toStdString();
}

struct Counted : IterationWatch {
  bool Row(int, int) override { return ++calls, true; }
  bool Iteration(int iteration, float error) override {
    iterations = iteration;
    lastError = error;
    return ++calls, true;
  }
  int calls = 0;
  int iterations = 0;
  float lastError = 0;
};

class Deconvolution : public AppDirFixture {
 protected:
  Deconvolution() { Load(Noise(13, 18, 4)); }

  void Load(DisplayBitmap picture) {
    source = Copy(picture.View());
    cv.DisplayBits = std::move(picture.bits);
    DescribeDisplayBitmap(cv, picture.width, picture.height);
  }
  std::vector<int> Restored(float radius, Restoration mode) {
    DisplayBitmap result = Copy(source.View());
    counted = {};
    DeconvolveDisplay(result.View(), radius, mode, counted);
    return Pixels(result.View());
  }
  static void Type(const QWidget& dialog, const char* radius) {
    Find<QLineEdit>(dialog, "txbRad").setText(radius);
  }

  DisplayBitmap source{1, 1};
  Counted counted;
};

TEST_F(Deconvolution, ShowsTheSettingsInForceAndTakesTheModeAtOnce) {
  cv.DeconvRadius = 2.5f;
  cv.DeconvStandard = false;
  frmDeConv dialog(cv, os);
  dialog.show();
  EXPECT_EQ(dialog.windowTitle(), "Deconvolution");
  EXPECT_EQ(Text(dialog, "Label1"), "Radius (HWHM) of PSF In Pixels");
  auto& UpDown1 = Find<QSpinBox>(dialog, "UpDown1");
  auto& txbRad = Find<QLineEdit>(dialog, "txbRad");
  EXPECT_EQ(txbRad.text(), "2.5");
  EXPECT_EQ(UpDown1.value(), 25);
  UpDown1.stepUp();
  EXPECT_EQ(txbRad.text(), "2.6");
  UpDown1.setValue(500);
  EXPECT_EQ(txbRad.text(), "20");
  UpDown1.setValue(0);
  EXPECT_EQ(txbRad.text(), "0.5");
  Type(dialog, "7.24");
  EXPECT_EQ(UpDown1.value(), 72);
  EXPECT_EQ(txbRad.text(), "7.24");
  QTest::keyClick(&txbRad, Qt::Key_Up);
  EXPECT_EQ(txbRad.text(), "7.3");
  EXPECT_EQ(cv.DeconvRadius, 2.5f);

  EXPECT_TRUE(Find<QRadioButton>(dialog, "Option2").isChecked());
  EXPECT_FALSE(Find<QWidget>(dialog, "Frame1").isVisible());
  Press(dialog, "Option1");
  EXPECT_TRUE(cv.DeconvStandard);
  Press(dialog, "Option2");
  EXPECT_FALSE(cv.DeconvStandard);
}

TEST_F(Deconvolution, RefusesARadiusOutsideItsLimits) {
  struct Case {
    const char *typed, *title, *message, *box;
    float radius;
  };
  const char* const low = "The minimum radius is 0.5 pixel.";
  const char* const high = "The maximum radius is 20 pixels.";
  const Case cases[] = {
      {"abc", "INPUT ERROR", "Non-Numeric Input!", "abc", 3},
      {"", "INPUT ERROR", "Non-Numeric Input!", "", 3},
      {"1,5", "INPUT ERROR", "Non-Numeric Input!", "1,5", 3},
      {"0.49", "RADIUS ERROR", low, "0.5", 0.5f},
      {"-0.3", "RADIUS ERROR", low, "0.5", 0.5f},
      {"20.01", "RADIUS ERROR", high, "20", 20},
      {"-1e300", "RADIUS ERROR", high, "20", 20},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.typed);
    cv.DeconvRadius = 3;
    frmDeConv dialog(cv, os);
    dialog.show();
    Type(dialog, c.typed);
    Find<QWidget>(dialog, "cmdApply").setFocus();
    os.Expect(c.title, c.message);
    Press(dialog, "cmdApply");
    os.VerifyScript();
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(Find<QLineEdit>(dialog, "txbRad").text(), c.box);
    EXPECT_EQ(Find<QLineEdit>(dialog, "txbRad").selectedText(), c.box);
    EXPECT_EQ(Find<QSpinBox>(dialog, "UpDown1").value(), static_cast<int>(10 * c.radius));
    EXPECT_EQ(dialog.focusWidget()->objectName(), "txbRad");
    EXPECT_EQ(cv.DeconvRadius, c.radius);
    EXPECT_EQ(os.yields, 0);
    EXPECT_FALSE(cv.DeconvCancelled);
  }
  EXPECT_EQ(Pixels(cv.Display()), Pixels(source.View()));
}

TEST_F(Deconvolution, RunsBothModesWithTheTypedRadius) {
  const std::pair<const char*, float> radii[] = {{"0.5", 0.5f}, {" 20 ", 20.0f}, {"-3", 3.0f}};
  for (const auto& [typed, radius] : radii) {
    for (const bool standard : {true, false}) {
      SCOPED_TRACE(typed);
      Load(Copy(source.View()));
      cv.DeconvStandard = standard;
      const std::vector<int> wanted =
          Restored(radius, standard ? Restoration::Standard : Restoration::DeepSky);
      frmDeConv dialog(cv, os);
      dialog.show();
      Type(dialog, typed);
      os.yields = 0;
      Press(dialog, "cmdApply");
      EXPECT_EQ(Pixels(cv.Display()), wanted);
      EXPECT_EQ(os.yields, counted.calls);
      EXPECT_FALSE(dialog.isVisible());
      EXPECT_EQ(dialog.result(), QDialog::Accepted);
      EXPECT_FALSE(cv.DeconvCancelled);
      EXPECT_EQ(cv.DeconvRadius, radius);
      EXPECT_EQ(Find<QLineEdit>(dialog, "txbRad").text(), QString::number(radius));
      EXPECT_EQ(Text(dialog, "lblIteration"), std::to_string(counted.iterations));
      EXPECT_EQ(Text(dialog, "lblError"), QString::number(counted.lastError, 'f', 2).toStdString() + " %");
    }
  }
}

TEST_F(Deconvolution, ShowsHowFarItIs) {
  frmDeConv dialog(cv, os);
  dialog.show();
  std::vector<int> percents;
  os.onYield = [&] {
    EXPECT_TRUE(Find<QWidget>(dialog, "Frame1").isVisible());
    EXPECT_EQ(dialog.cursor().shape(), Qt::BusyCursor);
    EXPECT_FALSE(os.busy);  // its cursor would lie over Cancel
    if (os.yields <= 18) percents.push_back(Find<QProgressBar>(dialog, "ProgressBar1").value());
    if (os.yields == 18) {
      EXPECT_EQ(Text(dialog, "lblIteration"), "");
    }
    if (os.yields == 19) {
      EXPECT_EQ(Text(dialog, "lblIteration"), "1");
      EXPECT_EQ(Text(dialog, "lblError"), "100.00 %");
    }
  };
  Press(dialog, "cmdApply");
  EXPECT_THAT(percents,
              ElementsAreArray({0, 6, 11, 17, 22, 28, 33, 39, 44, 50, 56, 61, 67, 72, 78, 83, 89, 94}));
  EXPECT_NE(dialog.cursor().shape(), Qt::BusyCursor);
}

TEST_F(Deconvolution, StopsAtTheNextRowWhenItIsCancelled) {
  for (const Way way : kWays) {
    for (const int row : {0, 1, 10, 19, 30}) {  // 0 = without a run; the 19th is the end of an iteration
      SCOPED_TRACE(testing::Message() << static_cast<int>(way) << " at " << row);
      cv.DeconvCancelled = false;
      frmDeConv dialog(cv, os);
      dialog.show();
      os.yields = 0;
      os.onYield = [&] {
        if (os.yields != row) return;
        Leave(dialog, way);
        EXPECT_TRUE(dialog.isVisible());
      };
      row == 0 ? Leave(dialog, way) : Press(dialog, "cmdApply");
      EXPECT_EQ(os.yields, row);
      EXPECT_FALSE(dialog.isVisible());
      EXPECT_TRUE(cv.DeconvCancelled);
      EXPECT_EQ(AllBytes(cv.Display()), AllBytes(source.View()));
      EXPECT_NE(dialog.cursor().shape(), Qt::BusyCursor);
    }
  }
}

TEST_F(Deconvolution, LetsNothingButCancelActDuringARun) {
  const std::vector<int> wanted = Restored(3, Restoration::Standard);
  frmDeConv dialog(cv, os);
  dialog.show();
  os.onYield = [&] {
    for (const char* button : {"cmdApply", "Option2"}) Press(dialog, button);
    for (const char* control : {"txbRad", "UpDown1", "Option2"})
      EXPECT_FALSE(Find<QWidget>(dialog, control).isEnabled()) << control;
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Up}) {
      QTest::keyClick(&dialog, key);
      QTest::keyClick(dialog.focusWidget(), key);
    }
    EXPECT_FALSE(cv.DeconvCancelled);
  };
  Press(dialog, "cmdApply");
  EXPECT_EQ(os.yields, counted.calls);
  EXPECT_EQ(Pixels(cv.Display()), wanted);
  EXPECT_TRUE(cv.DeconvStandard);
}

TEST_F(Deconvolution, OfASaveStaysOnScreenUntilItEnds) {
  frmSave16 progress(os, nullptr);
  EXPECT_TRUE(progress.isVisible());
  EXPECT_EQ(progress.windowTitle(), "Saving...");
  EXPECT_EQ(Text(progress, "Label3"), "Iteration");
  EXPECT_EQ(Text(progress, "Label4"), "RMS Error");
  FloatImage data = NoiseFloats(13, 18, 2);
  os.yields = 0;
  os.onYield = [&] {
    for (const Way way : {Way::Escape, Way::Box}) Leave(progress, way);
    EXPECT_TRUE(progress.isVisible());
    if (os.yields == 10) {
      EXPECT_EQ(Find<QProgressBar>(progress, "ProgressBar1").value(), 50);
    }
    if (os.yields == 19) {
      EXPECT_EQ(Text(progress, "lblIteration"), "1");
      EXPECT_EQ(Text(progress, "lblError"), "100.000 %");
    }
  };
  EXPECT_TRUE(Deconv16(data.Edit(), 3, Restoration::Standard, progress));
  EXPECT_GE(os.yields, 2 * 19);
}

}  // namespace
}  // namespace corvane
