#include "formats/bitmap_format.h"

#include <tuple>

#include "core/working_files.h"
#include "tests/support/app_dir_fixture.h"
#include "tests/support/file_limit.h"
#include "tests/support/file_makers.h"
#include "tests/support/images.h"

namespace corvane {
namespace {

using testing::ElementsAre;

class DisplayBitmapFile : public AppDirFixture {
 protected:
  std::filesystem::path grayTemplate = AppFile(kGrayTemplate);
  std::filesystem::path path = AppFile("0temp.bmp");
};

TEST(LongToBytes, SplitsLittleEndian) {
  EXPECT_THAT(LongToBytes(0), ElementsAre(0, 0, 0, 0));
  EXPECT_THAT(LongToBytes(1078), ElementsAre(54, 4, 0, 0));
  EXPECT_THAT(LongToBytes(305419896), ElementsAre(0x78, 0x56, 0x34, 0x12));
  EXPECT_THAT(LongToBytes(4294967295.0), ElementsAre(255, 255, 255, 255));
  EXPECT_THAT(LongToBytes(256.5), ElementsAre(0, 1, 0, 0));
  EXPECT_THAT(LongToBytes(257.5), ElementsAre(2, 1, 0, 0));
}

TEST_F(DisplayBitmapFile, IsTheTemplateWithItsSizesThenThePixels) {
  const DisplayBitmap picture = Noise(301, 5, 1);
  WriteFile(path, std::string(100000, 'x'));
  EXPECT_EQ(WriteDisplayBitmap(grayTemplate, path, picture.View()), std::nullopt);

  std::string expected = ReadFile(grayTemplate);
  SetField(expected, 2, 1078 + 304 * 5);
  SetField(expected, 18, 301);
  SetField(expected, 22, 5);
  SetField(expected, 34, 304 * 5);
  expected.append(picture.bits.begin(), picture.bits.end());
  EXPECT_EQ(ReadFile(path), expected);
  EXPECT_EQ(FieldAt(expected, 10), 1078u);
  EXPECT_EQ(FieldAt(expected, 28), 8u);
}

TEST_F(DisplayBitmapFile, KeepsThePaletteOfItsTemplate) {
  EXPECT_EQ(WriteDisplayBitmap(AppFile(kPalettes[1]), path, Noise(3, 2, 1).View()), std::nullopt);
  EXPECT_EQ(ReadFile(path).substr(54, 1024), ReadFile(AppFile(kPalettes[1])).substr(54, 1024));
  DisplayBitmap picture;
  EXPECT_EQ(ReadDisplayBitmap(path, picture), std::nullopt);
}

TEST_F(DisplayBitmapFile, ReadsBackWhatWasWrittenIntoTheSameMemoryWhereItFits) {
  DisplayBitmap read;
  for (const auto& [width, height] : {std::pair(1, 1), {5, 8}, {5, 8}, {8, 5}, {1000, 700}, {32767, 2}}) {
    const DisplayBitmap picture = Noise(width, height, 7);
    ASSERT_EQ(WriteDisplayBitmap(grayTemplate, path, picture.View()), std::nullopt);
    const bool fits = read.bits.size() == picture.bits.size();
    const unsigned char* memory = read.bits.data();
    ASSERT_EQ(ReadDisplayBitmap(path, read), std::nullopt);
    EXPECT_EQ(AllBytes(read.View()), AllBytes(picture.View())) << width;
    EXPECT_EQ(std::tuple(read.width, read.height, read.stride), std::tuple(width, height, picture.stride));
    EXPECT_TRUE(!fits || read.bits.data() == memory);
    int size[2] = {};
    EXPECT_EQ(ReadDisplaySize(path, size[0], size[1]), std::nullopt);
    EXPECT_THAT(size, ElementsAre(width, height));
  }
}

TEST_F(DisplayBitmapFile, WhatCannotBeOpenedIsNotCalledDamaged) {
  DisplayBitmap picture = Noise(7, 3, 1);
  ASSERT_EQ(WriteDisplayBitmap(grayTemplate, path, picture.View()), std::nullopt);
  const NoMoreFiles limit;
  int size = 0;
  for (const auto& refusal : {ReadDisplayBitmap(path, picture), ReadDisplaySize(path, size, size),
                              WriteDisplayBitmap(grayTemplate, path, picture.View())}) {
    ASSERT_TRUE(refusal);
    EXPECT_THAT(refusal->text, testing::EndsWith("can't be read. Error Number " + std::to_string(EMFILE)));
  }
}

TEST_F(DisplayBitmapFile, ADamagedFileIsRefusedByNameAndThePictureKept) {
  ASSERT_EQ(WriteDisplayBitmap(grayTemplate, path, Noise(7, 3, 1).View()), std::nullopt);
  DisplayBitmap picture;
  ASSERT_EQ(ReadDisplayBitmap(path, picture), std::nullopt);
  const std::string sound = ReadFile(path);
  const auto field = [](std::size_t offset, std::uint32_t value, int size = 4) {
    return [=](std::string& bytes) { SetField(bytes, offset, value, size); };
  };
  const std::pair<const char*, std::function<void(std::string&)>> damages[] = {
      {"empty", [](std::string& bytes) { bytes.clear(); }},
      {"cut in the header", [](std::string& bytes) { bytes.resize(53); }},
      {"cut in the palette", [](std::string& bytes) { bytes.resize(600); }},
      {"one byte short", [](std::string& bytes) { bytes.pop_back(); }},
      {"no signature", field(0, 'M', 1)},
      {"another offset", field(10, 54)},
      {"another header", field(14, 12)},
      {"no width", field(18, 0)},
      {"no height", field(22, 0)},
      {"a row more than the file has", field(22, 4)},
      {"rows from the top", field(22, static_cast<std::uint32_t>(-3))},
      {"sizes whose product overflows",
       [](std::string& bytes) {
         SetField(bytes, 18, 0x80000000u);
         SetField(bytes, 22, 0x80000000u);
         SetField(bytes, 2, 1078);
       }},
      {"a width that rounds up to nothing", field(18, 0xFFFFFFFFu)},
      {"a size field that disagrees", field(2, 1078)},
      {"color pixels", field(28, 24, 2)},
      {"compression", field(30, 1)},
  };
  const auto before = AllBytes(picture.View());
  const Refusal refusal{"FILE OPEN ERROR", "The file \"0temp.bmp\" is missing or damaged."};
  for (const auto& [what, damage] : damages) {
    SCOPED_TRACE(what);
    std::string bytes = sound;
    damage(bytes);
    WriteFile(path, bytes);
    int width = 5;
    EXPECT_EQ(ReadDisplaySize(path, width, width), refusal);
    EXPECT_EQ(ReadDisplayBitmap(path, picture), refusal);
    EXPECT_EQ(std::tuple(width, picture.width, picture.height), std::tuple(5, 7, 3));
    EXPECT_EQ(AllBytes(picture.View()), before);
  }
  std::filesystem::remove(path);
  EXPECT_EQ(ReadDisplayBitmap(path, picture), refusal);
  std::filesystem::create_directory(path);
  EXPECT_EQ(ReadDisplayBitmap(path, picture), refusal);
}

TEST_F(DisplayBitmapFile, AColorBitmapIsItsTemplateWithItsSizesThenThePixels) {
  std::string pixels(16 * 3, '\0');
  for (std::size_t i = 0; i < pixels.size(); ++i) pixels[i] = static_cast<char>(i * 37);
  const Bytes bytes(reinterpret_cast<const unsigned char*>(pixels.data()), pixels.size());
  EXPECT_EQ(WriteColorBitmap(AppFile(kColorTemplate), path, 5, 3, bytes), std::nullopt);
  std::string expected = ReadFile(AppFile(kColorTemplate));
  const std::pair<std::size_t, std::uint32_t> fields[] = {{2, 54 + 48}, {10, 54}, {18, 5}, {22, 3},
                                                          {28, 24},     {34, 48}, {46, 0}, {50, 0}};
  for (const auto& [offset, value] : fields) SetField(expected, offset, value);
  EXPECT_EQ(ReadFile(path), expected + pixels);

  const Refusal refusal{"FILE OPEN ERROR", "The file \"gr_8.bm_\" is missing or damaged."};
  EXPECT_EQ(WriteColorBitmap(grayTemplate, path, 5, 3, bytes), refusal);
}

TEST_F(DisplayBitmapFile, AMissingOrWrongTemplateIsNamedAndNothingWritten) {
  const DisplayBitmap picture = Noise(4, 4, 1);
  const Refusal refusal{"FILE OPEN ERROR", "The file \"gr_8.bm_\" is missing or damaged."};
  const std::string sound = ReadFile(grayTemplate);
  for (const std::string& bytes :
       {std::string(), sound.substr(0, 1077), "XX" + sound.substr(2), std::string(1078, '\0')}) {
    WriteFile(grayTemplate, bytes);
    EXPECT_EQ(WriteDisplayBitmap(grayTemplate, path, picture.View()), refusal);
  }
  std::filesystem::remove(grayTemplate);
  EXPECT_EQ(WriteDisplayBitmap(grayTemplate, path, picture.View()), refusal);
  EXPECT_FALSE(std::filesystem::exists(path));
}

}  // namespace
}  // namespace corvane
