#include "core/bitmap_reader.h"

#include <algorithm>
#include <cmath>
#include <tuple>

#include "core/working_files.h"
#include "formats/gray_pixels.h"
#include "tests/support/app_dir_fixture.h"
#include "tests/support/file_makers.h"
#include "tests/support/images.h"
#include "tests/support/instruction_sets.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kDamaged[] = "The bitmap file is damaged or incomplete. Can't open file.";
constexpr char kUnsupported[] = "Unsupported bitmap format. Can't open file.";
constexpr char kCompressed[] = "Compressed bitmap formats are not supported. Can't open file.";
constexpr char kUnrecognized[] = "Unrecognized bitmap format. Cant open file.";

Color NoiseColor(int x, int y) {
  Random random(static_cast<std::uint64_t>(y) * 100003 + static_cast<std::uint64_t>(x));
  const auto part = [&] { return static_cast<std::uint8_t>(random.Below(256)); };
  return {part(), part(), part()};
}

int MeanLevel(Color color) {
  return static_cast<int>(std::nearbyint((color.red + color.green + color.blue) / 3.0));
}

class BitmapReader : public AppDirFixture {
 protected:
  static BitmapSpec Spec(int bits, int width, int height) {
    return {bits, width, height, false, NoiseColor, {}};
  }

  void Open(const std::string& bytes) {
    const auto path = MakeUserFile("picture.bmp", bytes);
    cv.LoadFailed = false;
    cv.OpenTitle = "picture.bmp";
    if (CheckBitmap(cv, os, path)) ReadBitmap(cv, os, path);
  }

  // Opens what must be refused with these texts, the last of which stops the open.
  void OpenRefused(const std::string& bytes, std::initializer_list<const char*> texts) {
    for (const char* text : texts) os.Expect("FILE OPEN ERROR", std::string(text));
    Open(bytes);
    os.VerifyScript();
    EXPECT_TRUE(cv.LoadFailed);
    EXPECT_EQ(cv.OpenTitle, "");
    EXPECT_THAT(WorkingFiles(), IsEmpty());
    EXPECT_TRUE(cv.DisplayBits.empty());
    EXPECT_EQ(cv.ImageWidth, 0);
    EXPECT_EQ(cv.SlotBytesPerPixel[0], 0);
  }
};

TEST_F(BitmapReader, EveryFormatShowsUprightInGrayWithZeroPadding) {
  std::vector<std::pair<int, int>> sizes = {{70, 3}, {1, 32767}, {32767, 7}};  // two rows of these at a time
  for (int width = 1; width <= 9; ++width) sizes.emplace_back(width, 1 + width % 4);
  for (const int bits : {8, 24, 32})
    for (const bool topDown : {false, true})
      for (const auto& [width, height] : sizes) {
        BitmapSpec spec = Spec(bits, width, height);
        spec.topDown = topDown;
        Open(BitmapBytes(spec));
        ASSERT_FALSE(cv.LoadFailed);
        DisplayBitmap expected(width, height);
        for (int y = 0; y < height; ++y)
          for (int x = 0; x < width; ++x) {
            const Color color = NoiseColor(x, y);
            expected.View().At(x, height - 1 - y) =
                static_cast<std::uint8_t>(bits == 8 ? color.red : MeanLevel(color));
          }
        ASSERT_EQ(AllBytes(cv.Display()), AllBytes(expected.View()))
            << bits << " bits, width " << width << (topDown ? ", from the top" : "");
      }
}

TEST_F(BitmapReader, LeavesTheStoreAndTheSlotBitmapDescribingThePicture) {
  cv.ImageCount = 4;
  Open(BitmapBytes(Spec(24, 3, 2)));
  EXPECT_THAT(WorkingFiles(), ElementsAre("4temp.bmp"));
  const std::string file = ReadFile(AppFile("4temp.bmp"));
  EXPECT_EQ(file.substr(0, 2), "BM");
  for (const auto& [offset, value] :
       {std::pair(2, 1078 + 8), {10, 1078}, {14, 40}, {18, 3}, {22, 2}, {28, 8}, {34, 8}})
    EXPECT_EQ(FieldAt(file, static_cast<std::size_t>(offset)), static_cast<std::uint32_t>(value)) << offset;
  EXPECT_EQ(file.substr(1078), std::string(cv.DisplayBits.begin(), cv.DisplayBits.end()));
  EXPECT_EQ(std::tuple(cv.ImageWidth, cv.ImageHeight, cv.RowStride, cv.BitmapDataSize, cv.BitmapFileSize,
                       cv.DataOffset, cv.BitCount, cv.BytesPerPixel, cv.SlotBytesPerPixel[4]),
            std::tuple(3, 2, 4, 8, 1086, 1078, 24, 1, 1));
  EXPECT_EQ(cv.OpenTitle, "picture.bmp");
}

TEST_F(BitmapReader, EightBitBytesAreTakenAsTheyStand) {
  BitmapSpec spec = Spec(8, 5, 3);
  spec.palette = {{9, 9, 9}, {1, 2, 3}};  // not applied, and it makes the data offset 62
  std::string bytes = BitmapBytes(spec);
  for (const std::size_t padding : {5u, 6u, 7u}) bytes[62 + padding] = static_cast<char>(170);
  Open(bytes);
  EXPECT_EQ(std::string(cv.DisplayBits.begin(), cv.DisplayBits.end()), bytes.substr(62));
}

TEST_F(BitmapReader, TheMeanIsRoundedForEverySumAndLength) {
  std::vector<unsigned char> three;
  std::vector<unsigned char> four;
  std::vector<int> expected;
  const auto add = [&](int blue, int green, int red) {
    for (const int part : {blue, green, red}) {
      three.push_back(static_cast<unsigned char>(part));
      four.push_back(static_cast<unsigned char>(part));
    }
    four.push_back(static_cast<unsigned char>(expected.size() * 37));  // ignored
    expected.push_back(static_cast<int>(std::nearbyint((blue + green + red) / 3.0)));
  };
  for (int sum = 0; sum <= 765; ++sum) {
    const int blue = std::min(sum, 255);
    const int green = std::min(sum - blue, 255);
    add(blue, green, sum - blue - green);
    add(sum - blue - green, green, blue);
  }
  const int width = static_cast<int>(expected.size());
  OnEveryInstructionSet([&] {
    std::vector<unsigned char> gray(expected.size());
    GrayFromColor(three.data(), 3, gray.data(), width);
    EXPECT_EQ(std::vector<int>(gray.begin(), gray.end()), expected);
    std::fill(gray.begin(), gray.end(), 77);
    GrayFromColor(four.data(), 4, gray.data(), width);
    EXPECT_EQ(std::vector<int>(gray.begin(), gray.end()), expected);
    // Every length, and not a byte beyond it.
    for (std::size_t length = 0; length < 150; ++length)
      for (const int bytes : {3, 4}) {
        std::vector<unsigned char> row(160, 77);
        GrayFromColor(bytes == 3 ? three.data() : four.data(), bytes, row.data(), static_cast<int>(length));
        ASSERT_TRUE(
            std::equal(row.begin(), row.begin() + static_cast<std::ptrdiff_t>(length), expected.begin()));
        ASSERT_EQ(std::count(row.begin() + static_cast<std::ptrdiff_t>(length), row.end(), 77),
                  static_cast<std::ptrdiff_t>(row.size() - length));
      }
  });
}

TEST_F(BitmapReader, RowsAreCountedFromTheDataOffsetWhateverTheSizeFieldsSay) {
  for (const int bits : {8, 24, 32}) {
    BitmapSpec spec = Spec(bits, 6, 3);
    std::string bytes = BitmapBytes(spec);
    Open(bytes);
    const auto expected = AllBytes(cv.Display());
    const std::uint32_t offset = FieldAt(bytes, 10);
    bytes.insert(offset, "a gap");
    bytes += "a tail";
    SetField(bytes, 10, offset + 5);
    for (const std::uint32_t size : {0u, 54u, 100000u, 0xFFFFFFFFu}) {
      SetField(bytes, 2, size);
      SetField(bytes, 34, size);
      Open(bytes);
      EXPECT_FALSE(cv.LoadFailed);
      EXPECT_EQ(AllBytes(cv.Display()), expected);
    }
  }
}

TEST_F(BitmapReader, SaysWhatIsWrongWithAHeader) {
  const std::string sound = BitmapBytes(Spec(24, 4, 4));
  const std::tuple<std::size_t, int, std::vector<std::uint32_t>, const char*> cases[] = {
      {14, 4, {12, 108}, kUnsupported},
      {30, 4, {1, 0x01000000}, kCompressed},
      {28, 2, {0, 1, 4, 16, 25, 48, 0x1800}, kUnrecognized},
      {18, 4, {32768, 0xFFFFFFFC}, "Image width exceeds bitmap limit."},
      {22, 4, {32768, 0xFFFF8000, 0x80000000}, "Image height exceeds bitmap limit."},
  };
  for (const auto& [offset, size, values, text] : cases)
    for (const std::uint32_t value : values) {
      std::string bytes = sound;
      SetField(bytes, offset, value, size);
      OpenRefused(bytes, {text});
    }
  std::string several = sound;
  SetField(several, 14, 64);
  SetField(several, 30, 2);
  OpenRefused(several, {kUnsupported, kCompressed});
}

TEST_F(BitmapReader, RefusesWhatIsDamagedOrIncomplete) {
  for (const int bits : {8, 24, 32})
    for (const bool topDown : {false, true}) {
      BitmapSpec spec = Spec(bits, 5, 4);
      spec.topDown = topDown;
      const std::string sound = BitmapBytes(spec);
      for (const std::size_t length : {sound.size() - 1, sound.size() - 8, std::size_t{54}, std::size_t{53},
                                       std::size_t{18}, std::size_t{1}, std::size_t{0}})
        OpenRefused(sound.substr(0, length), {kDamaged});
      for (const auto& [offset, value] :
           {std::pair(18u, 0u), {22u, 0u}, {10u, 0xFFFFFFF0u}, {10u, 0u}, {10u, 53u}}) {
        std::string bytes = sound;
        SetField(bytes, offset, value);
        OpenRefused(bytes, {kDamaged});
      }
    }
}

TEST_F(BitmapReader, AFileThatIsNoBitmapIsRefusedByTheCheckAlone) {
  std::string bytes = BitmapBytes(Spec(24, 4, 4));
  bytes[1] = 'm';
  os.Expect("FILE TYPE ERROR", std::string("The file selected is not a proper Windows image bitmap."));
  Open(bytes);
  EXPECT_FALSE(cv.LoadFailed);
  EXPECT_EQ(cv.OpenTitle, "picture.bmp");
  EXPECT_THAT(WorkingFiles(), IsEmpty());
}

TEST_F(BitmapReader, ASmallFileOfTheOlderKindIsNamedAsSuch) {
  std::string bytes("BM\x2A\0\0\0\0\0\0\0\x1A\0\0\0\x0C\0\0\0\x02\0\x02\0\x01\0\x18\0", 26);
  OpenRefused(bytes + std::string(16, '\x40'), {kUnsupported});
  OpenRefused(bytes.substr(0, 25), {kDamaged});
}

TEST_F(BitmapReader, AFailedOpenKeepsThePictureBefore) {
  Open(BitmapBytes(Spec(8, 6, 6)));
  cv.ImageCount = 1;
  const auto bits = AllBytes(cv.Display());
  const std::string file = ReadFile(AppFile("0temp.bmp"));

  std::filesystem::remove(AppFile(kGrayTemplate));
  os.Expect("FILE OPEN ERROR", std::string("The file \"gr_8.bm_\" is missing or damaged."));
  Open(BitmapBytes(Spec(24, 9, 9)));
  os.VerifyScript();
  EXPECT_TRUE(cv.LoadFailed);
  EXPECT_EQ(cv.Width(), 6);
  EXPECT_EQ(AllBytes(cv.Display()), bits);
  EXPECT_EQ(cv.SlotBytesPerPixel[1], 0);
  EXPECT_EQ(ReadFile(AppFile("0temp.bmp")), file);
  EXPECT_THAT(WorkingFiles(), ElementsAre("0temp.bmp"));

  os.Expect("FILE OPEN ERROR", "Error Number " + std::to_string(ENOENT));
  EXPECT_FALSE(CheckBitmap(cv, os, UserFile("absent.bmp")));
}

}  // namespace
}  // namespace corvane
