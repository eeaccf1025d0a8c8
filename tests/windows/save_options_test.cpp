#include "app/frmFITS.h"
#include "tests/support/app_dir_fixture.h"
#include "tests/support/window_controls.h"

namespace corvane {
namespace {

class SaveOptions : public AppDirFixture {};

TEST_F(SaveOptions, OfferSixteenBitsExactlyWhereThePictureHasThem) {
  cv.OpenTitle = "~aligned.fit";  // the name says nothing about it
  for (const int code : {1, 2, 4, -4, 0}) {
    cv.BytesPerPixel = code;
    const frmFITS window(cv, os);
    EXPECT_TRUE(Find<QAbstractButton>(window, "Option1").isChecked()) << code;
    EXPECT_EQ(Find<QAbstractButton>(window, "Option2").isEnabled(), code != 1 && code != 0) << code;
    EXPECT_EQ(Find<QLineEdit>(window, "txbComment").text(), "");
  }
}

TEST_F(SaveOptions, LeaveTheChosenBitsInTheStore) {
  cv.BytesPerPixel = -4;
  const frmFITS window(cv, os);
  Press(window, "Option2");
  EXPECT_EQ(cv.BytesPerPixel, 2);
  Press(window, "Option1");
  EXPECT_EQ(cv.BytesPerPixel, 1);
  Press(window, "Option2");
  Press(window, "cmdClose");
  EXPECT_EQ(cv.BytesPerPixel, 2);
}

TEST_F(SaveOptions, FinishTheSaveHoweverTheyAreClosed) {
  enum class Way { Button, Return, Escape, Box };
  for (const Way way : {Way::Button, Way::Return, Way::Escape, Way::Box}) {
    cv.BytesPerPixel = 4;
    cv.FitsComment.clear();
    frmFITS window(cv, os);
    window.show();
    auto& txbComment = Find<QLineEdit>(window, "txbComment");
    txbComment.setText(QString::fromUtf8("first \u03b1 light"));
    if (way == Way::Button) Press(window, "cmdClose");
    if (way == Way::Return) QTest::keyClick(&txbComment, Qt::Key_Return);
    if (way == Way::Escape) QTest::keyClick(&window, Qt::Key_Escape);
    if (way == Way::Box) window.close();
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(cv.BytesPerPixel, 1);
    EXPECT_EQ(cv.FitsComment, "'first ? light'" + std::string(55, ' ')) << static_cast<int>(way);
  }
}

}  // namespace
}  // namespace corvane
