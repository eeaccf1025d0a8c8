#include "tests/journeys/journey_fixture.h"
#include "widgets/Thumbnail.h"

namespace corvane {
namespace {

using testing::ElementsAre;

constexpr int kWidth = 41;  // rows are padded
constexpr int kHeight = 30;

class Journey : public JourneyFixture {
 protected:
  // A noisy sky with one star.
  static std::vector<double> StarField() {
    Random random(7);
    std::vector<double> values;
    for (int y = 0; y < kHeight; ++y)
      for (int x = 0; x < kWidth; ++x)
        values.push_back(1000 + random.Below(400) + (x == 20 && y == 14 ? 30000 : 0));
    return values;
  }
};

TEST_F(Journey, OpensAFitsFileToTheScreen) {
  OpenFile("star.fit", CameraFile(kWidth, kHeight, StarField()));
  const std::string display = DisplayFile(kWidth, kHeight, StarField());
  EXPECT_EQ(ReadFile(AppFile("0temp.bmp")), display);
  const QImage screen = Find<PictureBox>(Shown(), "picMark").Flattened();
  ASSERT_EQ(screen.size(), QSize(kWidth, kHeight));
  for (int y = 0; y < kHeight; ++y)
    for (int x = 0; x < kWidth; ++x)
      ASSERT_EQ(qGray(screen.pixel(x, y)),
                static_cast<unsigned char>(display[1078 + 44 * (kHeight - 1 - y) + x]))
          << x << ' ' << y;
  EXPECT_THAT(Names("Combo1"), ElementsAre("star.fit"));
  EXPECT_EQ(Box("txbWidth") + ' ' + Box("txbHeight"), "41 30");

  const std::string before = LastingState();
  os.Expect("UNKNOWN FORMAT", testing::_);
  OpenFile("broken.fit", CameraFile(kWidth, kHeight, StarField()).substr(80));
  EXPECT_EQ(LastingState(), before);
  EXPECT_THAT(Names("Combo1"), ElementsAre("star.fit"));
}

// By its definition, where the whole kernel is inside the picture; 0 elsewhere.
std::vector<double> Blurred(const std::vector<double>& values, int radius, int reach) {
  std::vector<double> weights;
  for (int j = -reach; j <= reach; ++j) weights.push_back(std::exp2(-double(j * j) / (radius * radius)));
  const double sum = std::accumulate(weights.begin(), weights.end(), 0.0);
  std::vector<double> blurred(values.size());
  for (int y = reach; y < kHeight - reach; ++y)
    for (int x = reach; x < kWidth - reach; ++x)
      for (int i = -reach; i <= reach; ++i)
        for (int j = -reach; j <= reach; ++j)
          blurred[y * kWidth + x] +=
              values[(y + i) * kWidth + x + j] * weights[reach + i] * weights[reach + j] / (sum * sum);
  return blurred;
}

TEST_F(Journey, BlursAnImageAndSavesItAtFullPrecision) {
  OpenFile("star.fit", CameraFile(kWidth, kHeight, StarField()));
  Choose("mnuToolSel_19");
  ASSERT_EQ(ShownName(), "frmFilter");
  Select("Combo1", 3);
  Press("Opt_1");
  const std::vector<double> levels = [&] {
    std::vector<double> all;
    for (int y = kHeight - 1; y >= 0; --y)
      for (int x = 0; x < kWidth; ++x) all.push_back(cv.Display().At(x, y));
    return all;
  }();
  Press("cmdApply");
  const QImage preview = Find<Thumbnail>(Shown(), "Image1").Picture();
  const std::vector<double> blurredLevels = Blurred(levels, 2, 6);
  for (int y = 6; y < kHeight - 6; ++y)
    for (int x = 6; x < kWidth - 6; ++x)
      ASSERT_NEAR(qGray(preview.pixel(x, y)), blurredLevels[y * kWidth + x], 0.51) << x << ' ' << y;

  ChooseSixteenBits("soft.fts", "blurred");
  Press("cmdSave");
  const std::string file = ReadFile(UserFile("soft.fts"));
  ASSERT_EQ(file.size(), 2880u * 2);
  std::vector<double> written;
  for (int i = 0; i < kWidth * kHeight; ++i) {
    const auto byte = [&](int at) { return static_cast<unsigned char>(file[2880 + at]); };
    written.push_back(256 * byte(2 * i) + byte(2 * i + 1));
  }
  EXPECT_EQ(file, SavedFile(kWidth, kHeight, written, "Original File = star.fit", "blurred"));
  const std::vector<double> blurred = Blurred(StarField(), 2, 6);
  for (int y = 6; y < kHeight - 6; ++y)
    for (int x = 6; x < kWidth - 6; ++x)
      ASSERT_NEAR(written[y * kWidth + x], blurred[y * kWidth + x], 0.51) << x << ' ' << y;

  EXPECT_EQ(ReadFile(AppFile("0temp.bmp")), DisplayFile(kWidth, kHeight, written));
  Choose("mnuFileSel_2");
  ASSERT_EQ(ShownName(), "frmExamine");
  EXPECT_THAT(Names("Combo1"), ElementsAre("soft.fts"));
  EXPECT_THAT(WorkingFiles(), ElementsAre("0temp.bmp"));
}

}  // namespace
}  // namespace corvane
