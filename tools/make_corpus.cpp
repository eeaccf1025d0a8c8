// Writes sound and damaged files of one kind into a folder: make_corpus fits|bitmap|working_bitmap FOLDER.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/support/file_makers.h"
#include "tests/support/images.h"

namespace corvane {
namespace {

std::vector<std::string> FitsSeeds() {
  std::vector<std::string> seeds;
  Random random(1);
  for (const int bitpix : {8, 16, 32, -32, -64}) {
    std::vector<double> raw(7 * 5);
    for (double& value : raw) value = random.Below(256);
    seeds.push_back(FitsImage(bitpix, 7, 5, raw));
    seeds.push_back(FitsImage(bitpix, 7, 5, raw, {Card("BSCALE", "1.5E0"), Card("BZERO", "32768")}));
  }
  const std::vector<double> blanks{std::numeric_limits<double>::quiet_NaN(), 3.0e38, -3.0e38, 0};
  seeds.push_back(FitsImage(-32, 2, 2, blanks, {Card("BSCALE", "1D38")}));
  seeds.push_back(FitsImage(8, 1, 1, {255}, {Card("ENDTIME", "'12:00'"), RawCard("COMMENT END")}));
  return seeds;
}

std::string PictureOf(int bits, int width, int height, bool topDown) {
  Random random(static_cast<std::uint64_t>(bits * width));
  BitmapSpec spec{bits, width, height, topDown, {}, {}};
  spec.pixel = [&](int, int) {
    const auto level = static_cast<std::uint8_t>(random.Below(256));
    return Color{level, static_cast<std::uint8_t>(255 - level), level};
  };
  return BitmapBytes(spec);
}

std::vector<std::string> BitmapSeeds() {
  std::vector<std::string> seeds;
  for (const int bits : {8, 24, 32})
    for (const bool topDown : {false, true}) seeds.push_back(PictureOf(bits, 5, 3, topDown));
  return seeds;
}

std::vector<std::string> WorkingBitmapSeeds() {
  return {PictureOf(8, 5, 3, false), PictureOf(8, 1, 1, false), PictureOf(8, 8, 2, false)};
}

class Corpus {
 public:
  explicit Corpus(std::filesystem::path folder) : folder_(std::move(folder)) {}
  void Add(const std::string& bytes) {
    std::ofstream file(folder_ / std::to_string(10000 + count_++), std::ios::binary);
    file << bytes;
  }

 private:
  std::filesystem::path folder_;
  int count_ = 0;
};

void AddTruncations(Corpus& corpus, const std::string& seed) {
  const std::size_t size = seed.size();
  for (const std::size_t length :
       {std::size_t{0}, std::size_t{1}, std::size_t{53}, std::size_t{54}, std::size_t{80}, std::size_t{1077},
        std::size_t{1078}, std::size_t{2880}, std::size_t{2881}, size / 2, size - 1})
    if (length < size) corpus.Add(seed.substr(0, length));
  corpus.Add(seed + seed);
}

// A few bytes of the first `reach` replaced, ten times.
void AddNoise(Corpus& corpus, const std::string& seed, std::size_t reach, Random& random) {
  for (int i = 0; i < 10; ++i) {
    std::string bytes = seed;
    for (int spot = 0; spot < 4; ++spot)
      bytes[random.Next() % std::min(reach, bytes.size())] = static_cast<char>(random.Next());
    corpus.Add(bytes);
  }
}

void AddSpoiledCards(Corpus& corpus, const std::string& seed) {
  constexpr std::string_view kValues[] = {
      "0",     "-1",  "1.5", "2147483647", "4294967297", "99999999999999999999",
      "1E400", "NaN", "INF", "0x10",       "1,5",        "",
      "'7'",   "T",   "-32", "+3",         "1D1",        "46341"};
  for (std::size_t card = 0; seed.compare(card, 4, "END ") != 0; card += 80)
    for (const std::string_view value : kValues) {
      std::string bytes = seed;
      bytes.replace(card, 80, Card(seed.substr(card, 8), value));
      corpus.Add(bytes);
    }
  for (std::size_t card = 0; seed.compare(card, 4, "END ") != 0; card += 80) {
    std::string bytes = seed;
    corpus.Add(bytes.replace(card, 80, RawCard("COMMENT")));
  }
}

void AddSpoiledFields(Corpus& corpus, const std::string& seed) {
  for (const std::size_t offset : {0, 2, 6, 10, 14, 18, 22, 26, 28, 30, 34, 46, 50})
    for (const std::uint32_t value : {0u, 1u, 4u, 53u, 55u, 1077u, 1079u, 65535u, 65536u, 0x7FFFFFFFu,
                                      0x80000000u, 0x80000001u, 0xFFFFFFFBu, 0xFFFFFFFFu}) {
      std::string bytes = seed;
      SetField(bytes, offset, value);
      corpus.Add(bytes);
    }
}

int Run(const std::string& kind, const std::filesystem::path& folder) {
  Corpus corpus(folder);
  Random random(7);
  const bool isFits = kind == "fits";
  for (const std::string& seed : isFits             ? FitsSeeds()
                                 : kind == "bitmap" ? BitmapSeeds()
                                                    : WorkingBitmapSeeds()) {
    corpus.Add(seed);
    AddTruncations(corpus, seed);
    AddNoise(corpus, seed, isFits ? 480 : 60, random);
    AddNoise(corpus, seed, seed.size(), random);
    if (isFits)
      AddSpoiledCards(corpus, seed);
    else
      AddSpoiledFields(corpus, seed);
  }
  return EXIT_SUCCESS;
}

}  // namespace
}  // namespace corvane

int main(int argc, char** argv) { return argc == 3 ? corvane::Run(argv[1], argv[2]) : EXIT_FAILURE; }
