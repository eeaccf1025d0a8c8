// Writes the sample pictures into a folder: make_samples FOLDER.

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "samples/sky.h"

namespace {

struct Offset {
  int left, top;
};
// The telescope drifted between the frames.
constexpr std::array<Offset, 5> kDrift{{{0, 0}, {7, -4}, {-5, 6}, {11, 3}, {-8, -9}}};

std::string Filled(std::string text, std::size_t unit, char filler) {
  text.resize((text.size() + unit - 1) / unit * unit, filler);
  return text;
}

std::string Quoted(const std::string& text) {
  std::string quoted = "'";
  return quoted.append(Filled(text, 8, ' ')).append("'");
}

std::string Card(const std::string& keyword, const std::string& value, const std::string& comment) {
  std::string card = Filled(keyword, 8, ' ') + "= ";
  if (value.front() != '\'') card.append(20 - value.size(), ' ');
  return Filled(card + value + " / " + comment, 80, ' ');
}

void AppendBigEndian(std::string& bytes, std::uint32_t value, int size) {
  for (int shift = 8 * (size - 1); shift >= 0; shift -= 8) bytes += static_cast<char>(value >> shift);
}

// `zero` is subtracted from the values before they are stored.
std::string Fits(const Plane& plane, int bitpix, double zero, const std::string& object) {
  std::string bytes = Card("SIMPLE", "T", "conforms to the FITS standard") +
                      Card("BITPIX", std::to_string(bitpix), "bits of a sample") +
                      Card("NAXIS", "2", "number of axes") +
                      Card("NAXIS1", std::to_string(plane.width), "columns") +
                      Card("NAXIS2", std::to_string(plane.height), "rows") +
                      Card("BSCALE", "1.0", "value = sample * BSCALE + BZERO") +
                      Card("BZERO", std::to_string(static_cast<int>(zero)) + ".0", "") +
                      Card("OBJECT", Quoted(object), "an invented field") +
                      Filled("COMMENT A computed picture; no telescope was pointed at the sky.", 80, ' ') +
                      Filled("END", 80, ' ');
  bytes = Filled(bytes, 2880, ' ');
  for (const double value : plane.values) {
    if (bitpix == -32)
      AppendBigEndian(bytes, std::bit_cast<std::uint32_t>(static_cast<float>(value)), 4);
    else
      AppendBigEndian(bytes, static_cast<std::uint32_t>(static_cast<std::int64_t>(value - zero)), bitpix / 8);
  }
  return Filled(bytes, 2880, '\0');
}

void AppendLittleEndian(std::string& bytes, std::uint32_t value, int size) {
  for (int i = 0; i < size; ++i) bytes += static_cast<char>(value >> (8 * i));
}

// Planes of levels 0..255: one for 8 bits, else red, green and blue.
std::string Bitmap(const std::vector<Plane>& planes, int bits, bool topDown) {
  const int width = planes[0].width;
  const int height = planes[0].height;
  const std::uint32_t colors = bits == 8 ? 256 : 0;
  const std::uint32_t offset = 54 + 4 * colors;
  const auto stride = static_cast<std::uint32_t>((width * bits / 8 + 3) / 4 * 4);
  const std::uint32_t size = stride * static_cast<std::uint32_t>(height);
  std::string bytes = "BM";
  for (const std::uint32_t field : {offset + size, 0u, offset, 40u, static_cast<std::uint32_t>(width),
                                    static_cast<std::uint32_t>(topDown ? -height : height)})
    AppendLittleEndian(bytes, field, 4);
  AppendLittleEndian(bytes, 1, 2);
  AppendLittleEndian(bytes, static_cast<std::uint32_t>(bits), 2);
  for (const std::uint32_t field : {0u, size, 2835u, 2835u, colors, 0u}) AppendLittleEndian(bytes, field, 4);
  for (std::uint32_t i = 0; i < colors; ++i) AppendLittleEndian(bytes, i * 0x010101u, 4);
  for (int row = 0; row < height; ++row) {
    const int y = topDown ? row : height - 1 - row;
    const std::size_t rowEnd = bytes.size() + stride;
    for (int x = 0; x < width; ++x) {
      for (auto plane = planes.rbegin(); plane != planes.rend(); ++plane)
        bytes += static_cast<char>(static_cast<unsigned char>(plane->At(x, y)));
      if (bits == 32) bytes += '\0';
    }
    bytes.resize(rowEnd, '\0');
  }
  return bytes;
}

// Levels that bring out faint light: 255 * v / (v + softness) above the sky.
Plane Levels(const Plane& counts, double sky, double softness) {
  Plane levels = counts;
  for (double& value : levels.values) {
    const double light = std::max(value - sky, 0.0);
    value = std::floor(270 * light / (light + softness));
    value = std::min(value, 255.0);
  }
  return levels;
}

Plane LeftPart(const Plane& plane, int width) {
  Plane part(width, plane.height);
  for (int y = 0; y < plane.height; ++y)
    for (int x = 0; x < width; ++x) part.At(x, y) = plane.At(x, y);
  return part;
}

// The frames laid over each other, star on star, divided by the sensitivity; blank where one has no pixel.
Plane Stack(const std::vector<Plane>& frames, const Plane& sensitivity) {
  Plane stack(kFrameWidth, kFrameHeight);
  for (int y = 0; y < stack.height; ++y)
    for (int x = 0; x < stack.width; ++x)
      for (std::size_t i = 0; i < frames.size(); ++i) {
        const int fromX = x - kDrift[i].left;
        const int fromY = y - kDrift[i].top;
        const bool inside = fromX >= 0 && fromY >= 0 && fromX < kFrameWidth && fromY < kFrameHeight;
        stack.At(x, y) += inside ? frames[i].At(fromX, fromY) / sensitivity.At(fromX, fromY)
                                 : std::numeric_limits<double>::quiet_NaN();
      }
  return stack;
}

class Writer {
 public:
  explicit Writer(std::string folder) : folder_(std::move(folder)) {}
  void Write(const std::string& name, const std::string& bytes) {
    std::ofstream file(folder_ + "/" + name, std::ios::binary | std::ios::trunc);
    file << bytes;
    file.close();
    if (file) return;
    std::cerr << "cannot write " << folder_ << '/' << name << '\n';
    failed = true;
  }
  bool failed = false;

 private:
  std::string folder_;
};

void WriteFrames(Writer& out, const std::vector<Plane>& frames, const Plane& sensitivity) {
  for (std::size_t i = 0; i < frames.size(); ++i)
    out.Write("field_" + std::to_string(i + 1) + ".fit", Fits(frames[i], 16, 32768, "Sample field"));
  out.Write("flat.fit", Fits(RecordFlat(sensitivity, 900), 16, 32768, "Flat field"));
}

void WriteEverySampleType(Writer& out, const std::vector<Plane>& frames, const Plane& sensitivity) {
  out.Write("bits_8.fit", Fits(Levels(frames[0], 700, 2500), 8, 0, "Sample field"));
  Plane half = frames[0];
  for (double& value : half.values) value = std::floor(value / 2);
  out.Write("bits_16.fit", Fits(half, 16, 0, "Sample field"));
  Plane stack = Stack(frames, sensitivity);
  Plane mean = stack;
  for (double& value : mean.values) value = value / 5 - 700;
  out.Write("float_32.fit", Fits(mean, -32, 0, "Mean of the sample field"));
  for (double& value : stack.values) value = std::isnan(value) ? 0 : std::floor(value);
  out.Write("bits_32.fit", Fits(stack, 32, 0, "Sum of the sample field"));
}

void WriteColors(Writer& out, const std::vector<Spot>& sky, const Plane& sensitivity) {
  std::vector<Plane> colors;
  for (const Light light : {Light::Red, Light::Green, Light::Blue})
    colors.push_back(Record(Expose(sky, light, 0, 0), sensitivity, 500 + static_cast<std::uint64_t>(light)));
  out.Write("red.fit", Fits(colors[0], 16, 32768, "Sample field, red"));
  out.Write("green.fit", Fits(colors[1], 16, 32768, "Sample field, green"));
  out.Write("blue.fit", Fits(colors[2], 16, 32768, "Sample field, blue"));
  for (Plane& plane : colors) plane = Levels(plane, 650, 900);
  out.Write("color_32_top_down.bmp", Bitmap(colors, 32, true));
  for (Plane& plane : colors) plane = LeftPart(plane, 597);
  out.Write("color_24.bmp", Bitmap(colors, 24, false));
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return EXIT_FAILURE;
  Writer out(argv[1]);
  const std::vector<Spot> sky = MakeSky();
  const Plane sensitivity = Sensitivity();
  std::vector<Plane> frames;
  for (const Offset& drift : kDrift)
    frames.push_back(
        Record(Expose(sky, Light::White, drift.left, drift.top), sensitivity, 100 + frames.size()));
  WriteFrames(out, frames, sensitivity);
  WriteEverySampleType(out, frames, sensitivity);
  WriteColors(out, sky, sensitivity);
  out.Write("gray_8.bmp", Bitmap({LeftPart(Levels(frames[0], 650, 900), 597)}, 8, false));
  return out.failed ? EXIT_FAILURE : EXIT_SUCCESS;
}
