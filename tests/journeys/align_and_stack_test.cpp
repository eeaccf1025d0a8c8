#include <QTest>

#include "tests/journeys/journey_fixture.h"

namespace corvane {
namespace {

using testing::ElementsAre;

constexpr int kWidth = 41;  // rows are padded
constexpr int kHeight = 30;
constexpr int kStarX = 20;  // in the first frame, from the top left corner
constexpr int kStarY = 12;
constexpr int kFrames = 3;
constexpr int kShifts[kFrames][2] = {{0, 0}, {2, -1}, {-3, 4}};

class StackingJourney : public JourneyFixture {
 protected:
  // The same star on a sky of other noise, shifted to the right and down.
  static std::vector<double> Frame(int frame) {
    Random random(static_cast<std::uint64_t>(frame) + 1);
    std::vector<double> values;
    for (int y = 0; y < kHeight; ++y)
      for (int x = 0; x < kWidth; ++x) {
        const int away = std::abs(x - kStarX - kShifts[frame][0]) + std::abs(y - kStarY - kShifts[frame][1]);
        values.push_back(1000 + random.Below(300) + (away == 0 ? 30000 : away == 1 ? 15000 : 0));
      }
    return values;
  }
  // The part of a frame that all frames have, by the place of its star.
  static constexpr int kLeft = kStarX - 3, kAbove = kStarY - 1;  // of the star in every crop
  static constexpr int kCropWidth = kLeft + kWidth - kStarX - 2;
  static constexpr int kCropHeight = kAbove + kHeight - kStarY - 4;
  static std::vector<double> Cropped(int frame) {
    const std::vector<double> values = Frame(frame);
    std::vector<double> crop;
    for (int y = 0; y < kCropHeight; ++y)
      for (int x = 0; x < kCropWidth; ++x)
        crop.push_back(values[(y + kShifts[frame][1] + kStarY - kAbove) * kWidth + x + kShifts[frame][0] +
                              kStarX - kLeft]);
    return crop;
  }
  static std::string Name(int frame, const char* rest) { return "f" + std::to_string(frame) + rest; }
  // The frame with twice the weight of the other one.
  static std::vector<double> Average(const std::vector<double>& twice, const std::vector<double>& once) {
    std::vector<double> average;
    for (std::size_t i = 0; i < once.size(); ++i)
      average.push_back(std::nearbyint((2 * twice[i] + once[i]) / 3));
    return average;
  }

  void MarkStars() {
    WhenShown<QDialog>([](QDialog& dialog) { corvane::Press(dialog, "cmdApply"); });
    Choose("mnuModeSel_3");
    for (int frame = 0; frame < kFrames; ++frame) {
      Select("Combo1", frame);
      // One pixel beside the star.
      QTest::mouseClick(&Find<PictureBox>(Shown(), "picMark"), Qt::LeftButton, Qt::NoModifier,
                        {kStarX + kShifts[frame][0] + 1, kStarY + kShifts[frame][1]});
      EXPECT_EQ(Box("txbXX") + ' ' + Box("txbYY"), std::to_string(kStarX + kShifts[frame][0] + 1) + ' ' +
                                                       std::to_string(kHeight - kStarY - kShifts[frame][1]));
    }
  }
};

TEST_F(StackingJourney, AlignsThreeFramesAndStacksThem) {
  for (int frame = 0; frame < kFrames; ++frame)
    OpenFile(Name(frame, ".fit"), CameraFile(kWidth, kHeight, Frame(frame)));
  Choose("mnuFileSel_4");
  ASSERT_EQ(ShownName(), "frmAlign");
  MarkStars();
  Press("cmdAlign");
  EXPECT_THAT(Names("Combo1"), ElementsAre("~f0.fit", "~f1.fit", "~f2.fit"));
  for (int frame = 0; frame < kFrames; ++frame) ChooseSixteenBits(Name(frame, "a.fts"), "aligned");
  Press("cmdSave");
  for (int frame = 0; frame < kFrames; ++frame) {
    EXPECT_EQ(ReadFile(UserFile(Name(frame, "a.fts"))),
              SavedFile(kCropWidth, kCropHeight, Cropped(frame), "Original File = ~" + Name(frame, ".fit"),
                        "aligned"))
        << frame;
    EXPECT_EQ(ReadFile(cv.SlotBitmap(frame)), DisplayFile(kCropWidth, kCropHeight, Cropped(frame)));
  }

  Choose("mnuFileSel_4");
  ASSERT_EQ(ShownName(), "frmCombine");
  Select("Combo1", 0);
  Select("Combo2", 1);
  Press("Option3");
  Find<QLineEdit>(Shown(), "Text1").setText("1.6");
  Find<QLineEdit>(Shown(), "Text2").setText("0.8");
  Press("cmdCombine");
  ChooseSixteenBits("two.fts", "");
  Press("cmdSave");
  EXPECT_THAT(Names("Combo1"), ElementsAre("f2a.fts", "two.fts"));
  Select("Combo1", 1);
  Select("Combo2", 0);
  Press("cmdCombine");
  ChooseSixteenBits("three.fts", "stacked");
  Press("cmdSave");
  const std::vector<double> stack = Average(Average(Cropped(0), Cropped(1)), Cropped(2));
  EXPECT_EQ(ReadFile(UserFile("three.fts")),
            SavedFile(kCropWidth, kCropHeight, stack, "Original Files: two.fts,  f2a.fts", "stacked"));
  EXPECT_THAT(Names("Combo1"), ElementsAre("three.fts"));

  Choose("mnuFileSel_3");
  ASSERT_EQ(ShownName(), "frmExamine");
  EXPECT_THAT(Names("Combo1"), ElementsAre("three.fts"));
  EXPECT_EQ(ReadFile(AppFile("0temp.bmp")), DisplayFile(kCropWidth, kCropHeight, stack));
  EXPECT_THAT(WorkingFiles(), ElementsAre("0temp.bmp"));
}

}  // namespace
}  // namespace corvane
