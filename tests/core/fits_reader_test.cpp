#include "core/fits_reader.h"

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>
#include <tuple>

#include "formats/fits_file.h"
#include "tests/support/app_dir_fixture.h"
#include "tests/support/file_makers.h"
#include "tests/support/images.h"

namespace corvane {
namespace {

class FitsReader : public AppDirFixture {
 protected:
  // Both steps, as a caller takes them.
  void Read(const std::filesystem::path& path) {
    cv.LoadFailed = false;
    os.BusyCursor(true);
    ReadFitsHeader(cv, os, path);
    if (cv.HeaderOK) ReadFitsData(cv, os, path);
  }
  void Read(const std::string& bytes) { Read(MakeUserFile("image.fit", bytes)); }

  // A read image, so that a refusal has something to spoil.
  void ReadGoodImage() {
    Read(FitsImage(16, 2, 1, {11, 22}));
    ASSERT_TRUE(cv.HeaderOK);
  }
  void ExpectGoodImage() {
    EXPECT_EQ(Values(cv.ImageData.View()), (std::vector<float>{11, 22}));
    EXPECT_EQ(Described(), std::tuple(2, 1, 2, "5760", 2881));
  }
  std::tuple<float, float, int, std::string, float> Described() const {
    return {cv.ImageWidth, cv.ImageHeight, cv.BytesPerPixel, cv.FitsFileSize, cv.DataOffset};
  }
  // Nothing of the file gets into the store but, once the header is sound, its cards.
  void ExpectRefused(const std::string& bytes, const char* title, const char* text, bool headerOK) {
    ReadGoodImage();
    os.Expect(title, text);
    Read(bytes);
    EXPECT_EQ(cv.HeaderOK, headerOK);
    EXPECT_FALSE(os.busy);
    if (headerOK) {
      EXPECT_TRUE(cv.LoadFailed);
    } else {
      EXPECT_EQ(cv.HeaderCards.size(), 6u);
      EXPECT_EQ(cv.HeaderCount, 6);
    }
    ExpectGoodImage();
  }
  void ExpectHeaderRefused(const std::string& bytes, const char* title, const char* text) {
    ExpectRefused(bytes, title, text, false);
  }
  void ExpectDataRefused(const std::string& bytes, const char* title, const char* text) {
    ExpectRefused(bytes, title, text, true);
  }
};

TEST_F(FitsReader, ReadsEveryTypeIntoTheStore) {
  const std::tuple<int, std::vector<double>, std::vector<float>> cases[] = {
      {8, {0, 1, 255, 7, 8, 9}, {0, 1, 255, 7, 8, 9}},
      {16, {0, 1, 65535, -2, 32767, 9}, {0, 1, 65535, 65534, 32767, 9}},
      {32, {0, -1, 70000, 3, 4, -2147483648.0}, {0, -1, 70000, 3, 4, -2147483648.0f}},
      {-32, {1, -2.5, 1e30, 3, 4, 5}, {1, -2.5, 0x1.93e5p+99f, 3, 4, 5}},
  };
  for (const auto& [bitpix, raw, values] : cases) {
    SCOPED_TRACE(bitpix);
    Read(FitsImage(bitpix, 3, 2, raw));
    EXPECT_TRUE(cv.HeaderOK);
    EXPECT_FALSE(cv.LoadFailed);
    EXPECT_EQ(Described(), std::tuple(3, 2, bitpix / 8, "5760", 2881));
    EXPECT_EQ(Values(cv.ImageData.View()), values);
    EXPECT_EQ(cv.HeaderCount, 6);
    EXPECT_EQ(cv.HeaderCards.back(), RawCard("END"));
  }
}

TEST_F(FitsReader, ReadsImagesOfManyReadUnits) {
  std::vector<double> raw(700 * 301);
  for (std::size_t i = 0; i < raw.size(); ++i) raw[i] = static_cast<double>(i * 7 % 65536);
  for (const int bitpix : {8, 16, 32}) {
    Read(FitsImage(bitpix, 700, 301, raw));
    std::size_t wrong = 0;
    for (std::size_t i = 0; i < raw.size(); ++i) {
      const double value = bitpix == 8 ? static_cast<int>(raw[i]) % 256 : raw[i];
      wrong += cv.ImageData.View().values[i] != static_cast<float>(value);
    }
    EXPECT_EQ(wrong, 0u) << bitpix;
  }
}

TEST_F(FitsReader, FindsDataBehindHeadersOfEveryLength) {
  for (const auto& [total, start] : {std::pair{36, 2881}, {37, 5761}, {72, 5761}, {1000, 28 * 2880 + 1}}) {
    const std::vector<std::string> comments(static_cast<std::size_t>(total) - 6, RawCard("COMMENT"));
    Read(FitsImage(8, 2, 1, {5, 6}, comments));
    EXPECT_EQ(cv.HeaderCount, total);
    EXPECT_EQ(cv.DataOffset, static_cast<float>(start));
    EXPECT_EQ(Values(cv.ImageData.View()), (std::vector<float>{5, 6}));
    EXPECT_EQ(cv.FitsFileSize, std::to_string(start - 1 + 2880));
  }
}

TEST_F(FitsReader, RefusesHeadersWithoutEnd) {
  const char* title = "MISSING END CARD";
  const char* text = "No \"END\" card found in header within 1000 cards. Display cancelled.";
  const std::vector<std::string> comments(995, RawCard("COMMENT"));
  ExpectHeaderRefused(FitsImage(8, 1, 1, {1}, comments), title, text);
  ExpectHeaderRefused("", title, text);
  ExpectHeaderRefused("SIMPLE  = T", title, text);
  ExpectHeaderRefused(FitsImage(8, 1, 1, {1}).substr(0, 5 * 80 + 79), title, text);
}

TEST_F(FitsReader, RefusesFilesThatDoNotBeginWithSimple) {
  for (const char* card : {"XTENSION= 'IMAGE'", "simple  =                    T", " SIMPLE = T"}) {
    ExpectHeaderRefused(FitsBytes({RawCard(card)}, ""), "UNKNOWN FORMAT",
                        "Missing \"SIMPLE=T\" card in header. Display cancelled!");
  }
}

TEST_F(FitsReader, WarnsOfNonStandardFilesAndGoesOn) {
  const std::string standard = FitsImage(8, 2, 1, {5, 6});
  for (const char* card : {"SIMPLE  =                    F", "SIMPLE  =                    F / T", "SIMPLE",
                           "SIMPLE  =                    t"}) {
    os.Expect("UNKNOWN FORMAT", "File is not a standard FITS file and may not display properly!");
    Read(RawCard(card) + standard.substr(80));
    EXPECT_TRUE(cv.HeaderOK);
    EXPECT_EQ(cv.ImageData.View().Count(), 2u);
  }
  os.VerifyScript();
  Read(RawCard("SIMPLET") + standard.substr(80));
  Read(RawCard("SIMPLE  =                    T") + standard.substr(80));
}

TEST_F(FitsReader, RefusesAHeaderWithoutBitpixSilently) {
  ReadGoodImage();
  Read(FitsBytes({Card("SIMPLE", "T"), Card("NAXIS", 2), Card("NAXIS1", 1), Card("NAXIS2", 1)}, "1"));
  EXPECT_TRUE(cv.LoadFailed);
  ExpectGoodImage();
}

TEST_F(FitsReader, RefusesDataShorterThanPromised) {
  const char* text = "The file is shorter than its header promises. Display cancelled.";
  const std::string whole = FitsImage(16, 3, 2, {1, 2, 3, 4, 5, 6});
  ExpectDataRefused(whole.substr(0, 2880 + 11), "FILE ERROR", text);
  ExpectDataRefused(whole.substr(0, 2880), "FILE ERROR", text);
  ExpectDataRefused(whole.substr(0, 700), "FILE ERROR", text);
  ExpectDataRefused(FitsImage(-32, 20000, 20000, {1}), "FILE ERROR", text);
}

TEST_F(FitsReader, NeedsNoPaddingAtTheEnd) {
  Read(FitsImage(16, 3, 2, {1, 2, 3, 4, 5, 6}).substr(0, 2880 + 12));
  EXPECT_FALSE(cv.LoadFailed);
  EXPECT_EQ(Values(cv.ImageData.View()), (std::vector<float>{1, 2, 3, 4, 5, 6}));
  EXPECT_EQ(cv.FitsFileSize, "5760") << "the size of the whole blocks";
}

TEST_F(FitsReader, ReportsFilesThatCannotBeOpened) {
  // A pipe must not stop the program until somebody writes to it.
  ASSERT_EQ(mkfifo(UserFile("pipe.fit").c_str(), 0600), 0);
  const std::pair<std::filesystem::path, int> cases[] = {
      {UserFile("missing.fit"), ENOENT}, {cv.DefaultDir, EISDIR}, {UserFile("pipe.fit"), EINVAL}};
  for (const auto& [path, error] : cases) {
    os.Expect("FILE OPEN ERROR", "Error Number " + std::to_string(error));
    Read(path);
    EXPECT_FALSE(cv.HeaderOK);
  }

  // Gone between the two steps.
  ReadGoodImage();
  os.Expect("FILE OPEN ERROR", "Error Number " + std::to_string(ENOENT));
  ReadFitsData(cv, os, UserFile("missing.fit"));
  EXPECT_TRUE(cv.LoadFailed);
  ExpectGoodImage();
}

// While one lives, no more than 8 MB can be had.
class LittleMemory {
 public:
  LittleMemory() {
    getrlimit(RLIMIT_AS, &before_);
    rlim_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    rlimit little = before_;
    little.rlim_cur = pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE)) + (rlim_t{8} << 20);
    setrlimit(RLIMIT_AS, &little);
  }
  ~LittleMemory() { setrlimit(RLIMIT_AS, &before_); }

 private:
  rlimit before_{};
};

TEST_F(FitsReader, ReportsWantOfMemory) {
  // Larger than what is left and the block that is kept for the next image together.
  const std::string large = FitsImage(8, 4000, 3000, {}) + std::string(4000 * 3000, '\0');
  const std::filesystem::path path = MakeUserFile("large.fit", large);
  ReadGoodImage();
  ReadFitsHeader(cv, os, path);
  os.Expect("FILE OPEN ERROR", "Not enough memory for this image.");
  {
    const LittleMemory limit;
    ReadFitsData(cv, os, path);
  }
  EXPECT_TRUE(cv.LoadFailed);
  ExpectGoodImage();
}

TEST_F(FitsReader, SeesAFileThatIsCutWhileItIsRead) {
  const std::filesystem::path path =
      MakeUserFile("cut.fit", FitsImage(8, 1000, 1000, {}) + std::string(1000000, '\1'));
  const InputFile file(path);
  std::filesystem::resize_file(path, 500000);
  FitsLayout layout;
  layout.bytesPerPixel = 1;
  layout.width = layout.height = 1000;
  layout.start = 2880;
  FloatImage image(1000, 1000);
  EXPECT_FALSE(ReadPixels(file, layout, image.Edit().values));
}

}  // namespace
}  // namespace corvane
