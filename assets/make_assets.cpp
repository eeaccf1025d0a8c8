// Writes the shipped templates, palettes and the pointer into a folder: make_assets FOLDER.

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

namespace {

struct Rgb {
  double red, green, blue;
};
using Palette = std::array<Rgb, 256>;

void Append(std::string& bytes, std::uint32_t value, int size) {
  for (int i = 0; i < size; ++i) bytes += static_cast<char>(value >> (8 * i));
}

// File header and information header of an empty bitmap.
std::string BitmapHeader(int bits, std::uint32_t colors) {
  const std::uint32_t offset = 54 + 4 * colors;
  std::string bytes = "BM";
  for (const std::uint32_t field : {offset, 0u, offset, 40u, 0u, 0u}) Append(bytes, field, 4);
  Append(bytes, 1, 2);
  Append(bytes, static_cast<std::uint32_t>(bits), 2);
  for (const std::uint32_t field : {0u, 0u, 2835u, 2835u, colors, 0u}) Append(bytes, field, 4);
  return bytes;
}

std::string PaletteTemplate(const Palette& palette) {
  std::string bytes = BitmapHeader(8, 256);
  for (const Rgb& color : palette)
    for (const double part : {color.blue, color.green, color.red, 0.0})
      bytes += static_cast<char>(static_cast<unsigned char>(std::lround(part)));
  return bytes;
}

Palette GrayRamp() {
  Palette palette{};
  for (int i = 0; i < 256; ++i) palette[i] = {1.0 * i, 1.0 * i, 1.0 * i};
  return palette;
}

// CIE L* of an sRGB color, 0..100.
double Lightness(const Rgb& color) {
  const auto linear = [](double part) {
    part /= 255;
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  const double y = 0.2126 * linear(color.red) + 0.7152 * linear(color.green) + 0.0722 * linear(color.blue);
  return y > 216.0 / 24389 ? 116 * std::cbrt(y) - 16 : y * 24389 / 27;
}

Rgb Mix(const Rgb& a, const Rgb& b, double t) {
  return {a.red + (b.red - a.red) * t, a.green + (b.green - a.green) * t, a.blue + (b.blue - a.blue) * t};
}

// The colors along the line through `stops`, spaced so that lightness rises by equal steps. Lightness must
// rise along the line.
Palette EvenLightness(const std::vector<Rgb>& stops) {
  Palette palette{};
  const double first = Lightness(stops.front());
  const double step = (Lightness(stops.back()) - first) / 255;
  std::size_t leg = 0;
  for (int i = 0; i < 256; ++i) {
    const double wanted = first + step * i;
    while (leg + 2 < stops.size() && Lightness(stops[leg + 1]) < wanted) ++leg;
    double low = 0, high = 1;
    for (int halving = 0; halving < 40; ++halving) {
      const double middle = (low + high) / 2;
      (Lightness(Mix(stops[leg], stops[leg + 1], middle)) < wanted ? low : high) = middle;
    }
    palette[i] = Mix(stops[leg], stops[leg + 1], high);
  }
  return palette;
}

// An arrow with a red "no entry" sign; the hot spot is the arrow's tip, the top left corner.
constexpr int kPointerSize = 32;
constexpr const char* kPointer[kPointerSize] = {
    "#                               ", "##                              ",
    "#.#                             ", "#..#                            ",
    "#...#                           ", "#....#                          ",
    "#.....#                         ", "#......#                        ",
    "#.......#                       ", "#........#                      ",
    "#.........#                     ", "#..........#                    ",
    "#......#####                    ", "#...#..#        rrrrrrr         ",
    "#..##..#      rrrrrrrrrrr       ", "#.#  #..#    rrrr.....rrrr      ",
    "##   #..#   rrr.........rrr     ", "#     #..#  rrrr.........rrr    ",
    "      #..# rrrrrr.........rr    ", "       ##  rr..rrr........rrr   ",
    "           rr...rrr........rr   ", "           rr....rrr.......rr   ",
    "           rr.....rrr......rr   ", "           rr......rrr.....rr   ",
    "           rr.......rrr....rr   ", "           rrr.......rrr..rrr   ",
    "            rr........rrrrrr    ", "            rrr........rrrrr    ",
    "             rrrr.....rrrr      ", "              rrrrrrrrrrr       ",
    "                rrrrrrr         ", "                                ",
};

std::string Pointer() {
  const std::uint32_t pixels = kPointerSize * kPointerSize * 4;
  const std::uint32_t mask = kPointerSize * kPointerSize / 8;
  std::string bytes;
  for (const std::uint32_t field : {0u, 1u, 1u}) Append(bytes, field, 2);  // an icon file with one picture
  for (const std::uint32_t field : {unsigned{kPointerSize}, unsigned{kPointerSize}, 0u, 0u})
    Append(bytes, field, 1);
  Append(bytes, 1, 2);
  Append(bytes, 32, 2);
  Append(bytes, 40 + pixels + mask, 4);
  Append(bytes, 22, 4);
  // The height counts the picture and its mask.
  for (const std::uint32_t field : {40u, unsigned{kPointerSize}, 2u * kPointerSize}) Append(bytes, field, 4);
  Append(bytes, 1, 2);
  Append(bytes, 32, 2);
  for (const std::uint32_t field : {0u, pixels + mask, 0u, 0u, 0u, 0u}) Append(bytes, field, 4);
  for (int y = kPointerSize - 1; y >= 0; --y)
    for (int x = 0; x < kPointerSize; ++x) {
      const char mark = kPointer[y][x];
      Append(bytes, mark == '.' ? 0xFFFFFFFF : mark == '#' ? 0xFF000000 : mark == 'r' ? 0xFFD01818 : 0, 4);
    }
  for (int y = kPointerSize - 1; y >= 0; --y)
    for (int x = 0; x < kPointerSize; x += 8) {
      unsigned transparent = 0;
      for (int bit = 0; bit < 8; ++bit) transparent = transparent << 1 | (kPointer[y][x + bit] == ' ');
      Append(bytes, transparent, 1);
    }
  return bytes;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return EXIT_FAILURE;
  const std::string folder = std::string(argv[1]) + "/";
  const auto write = [&](const char* name, const std::string& bytes) {
    std::ofstream file(folder + name, std::ios::binary | std::ios::trunc);
    file << bytes;
    file.close();
    if (file) return true;
    std::cerr << "cannot write " << folder << name << '\n';
    return false;
  };
  const std::vector<Rgb> blueTurquoise{
      {0, 0, 0}, {0, 0, 176}, {0, 140, 190}, {70, 220, 110}, {255, 255, 255}};
  const std::vector<Rgb> redYellow{{0, 0, 0}, {180, 0, 0}, {245, 125, 0}, {255, 230, 50}, {255, 255, 255}};
  const std::vector<Rgb> blueRed{{0, 0, 0},      {0, 0, 170},   {60, 5, 172},
                                 {120, 20, 150}, {225, 30, 50}, {255, 255, 255}};
  const bool written =
      write("gr_8.bm_", PaletteTemplate(GrayRamp())) && write("gr_24.bm_", BitmapHeader(24, 0)) &&
      write("btgw_fc.bm_", PaletteTemplate(EvenLightness(blueTurquoise))) &&
      write("royw_fc.bm_", PaletteTemplate(EvenLightness(redYellow))) &&
      write("brw_fc.bm_", PaletteTemplate(EvenLightness(blueRed))) && write("cancel32.ico", Pointer());
  return written ? EXIT_SUCCESS : EXIT_FAILURE;
}
