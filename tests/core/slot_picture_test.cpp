#include "core/slot_picture.h"

#include "core/open_image.h"
#include "tests/support/app_dir_fixture.h"
#include "tests/support/file_makers.h"

namespace corvane {
namespace {

class SlotPicture : public AppDirFixture {
 protected:
  std::string OpenAndTake(const std::string& name, std::string_view bytes) {
    OpenUserImage(name, bytes);
    return ReadFile(AppFile("0temp.bmp"));
  }
};

TEST_F(SlotPicture, IsMadeAgainFromTheDataWhenItsFileIsGoneOrDamaged) {
  const std::string files[] = {FitsImage(16, 3, 2, {0, 100, 200, 300, 400, 1000}),
                               FitsImage(8, 3, 2, {0, 1, 2, 30, 40, 255})};
  for (const std::string& file : files)
    for (const char* damage : {"", "BM"}) {
      const std::string rendered = OpenAndTake("a.fit", file);
      std::filesystem::remove(AppFile("0temp.bmp"));
      if (*damage) WriteFile(AppFile("0temp.bmp"), damage);
      cv.ImageData = {};
      EXPECT_TRUE(LoadSlotPicture(cv, os, 0));
      EXPECT_EQ(ReadFile(AppFile("0temp.bmp")), rendered);
      EXPECT_EQ(cv.Width(), 3);
      CloseImage(cv, os);
    }
}

TEST_F(SlotPicture, IsNotReplacedByTheRenderingOfDataThatAToolHasLeftBehind) {
  OpenAndTake("a.fit", FitsImage(16, 3, 2, {0, 100, 200, 300, 400, 1000}));
  KeepPicture(cv, os, AppFile("0temp.bmp"));
  std::filesystem::remove(AppFile("0temp.bmp"));
  os.Expect("FILE OPEN ERROR", testing::HasSubstr("0temp.bmp"));
  EXPECT_FALSE(LoadSlotPicture(cv, os, 0));

  CloseImage(cv, os);
  OpenAndTake("a.bmp", BitmapBytes({24, 2, 2, false, [](int, int) { return kWhite; }, {}}));
  std::filesystem::remove(AppFile("0temp.bmp"));
  os.Expect("FILE OPEN ERROR", testing::HasSubstr("0temp.bmp"));
  EXPECT_FALSE(LoadSlotPicture(cv, os, 0));
}

}  // namespace
}  // namespace corvane
