#include "formats/bitmap_file.h"

#include <algorithm>
#include <numeric>

namespace corvane {
namespace {

constexpr std::int64_t kBlock = 256 * 1024;  // stays in the cache between reading and converting
constexpr int kChannels = 3;
using Sums = std::array<std::int64_t, kChannels>;

// A pixel that stands in the file as blue, green and red.
std::uint32_t Rgb(const unsigned char* bytes) {
  return 0xff000000u | std::uint32_t{bytes[2]} << 16 | std::uint32_t{bytes[1]} << 8 | bytes[0];
}

// The pixels begin .. end - 1 of the long side that pixel `place` of the short side covers.
int Edge(int place, int longSide, int shortSide) {
  return static_cast<int>(static_cast<std::int64_t>(place) * longSide / shortSide);
}

void AddRow(const std::uint32_t* row, int width, std::vector<Sums>& columns) {
  const int count = static_cast<int>(columns.size());
  for (int column = 0; column < count; ++column) {
    const int end = Edge(column + 1, width, count);
    std::uint32_t red = 0;
    std::uint32_t green = 0;
    std::uint32_t blue = 0;
    for (int x = Edge(column, width, count); x < end; ++x) {
      red += row[x] >> 16 & 0xff;
      green += row[x] >> 8 & 0xff;
      blue += row[x] & 0xff;
    }
    Sums& sums = columns[static_cast<std::size_t>(column)];
    sums[0] += red;
    sums[1] += green;
    sums[2] += blue;
  }
}

std::uint32_t Mean(const Sums& sums, std::int64_t count) {
  std::uint32_t pixel = 0xff;
  for (const std::int64_t sum : sums)
    pixel = pixel << 8 | static_cast<std::uint32_t>((sum + count / 2) / count);
  return pixel;
}

}  // namespace

BitmapFile::BitmapFile(const std::filesystem::path& path) : file_(path) {
  if (file_.Error() != 0 || !ReadHeader()) layout_ = {};
}

bool BitmapFile::ReadHeader() {
  std::array<unsigned char, kBitmapHeaderSize> header{};
  const std::size_t read = file_.ReadAt(0, header.data(), header.size());
  if (read < kBitmapFieldsSize) return false;
  const BitmapFields fields = ParseBitmapFields(std::span(header).first<kBitmapFieldsSize>());
  const auto layout = LayoutOf(fields, file_.Size());
  if (!fields.IsUncompressed() || !layout || layout->topDown || layout->bytesPerPixel == 4) return false;
  if (layout->bytesPerPixel == 1) {
    if (layout->offset < kBitmapHeaderSize) return false;
    for (std::size_t i = 0; i < palette_.size(); ++i) palette_[i] = Rgb(&header[kBitmapFieldsSize + 4 * i]);
  }
  isGray_ = layout->bytesPerPixel == 1;
  for (std::uint32_t i = 0; i < palette_.size(); ++i) isGray_ &= palette_[i] == (0xff000000u | i * 0x10101u);
  layout_ = *layout;
  block_.resize(static_cast<std::size_t>(std::max(layout_.stride, std::min(kBlock, layout_.Size()))));
  return true;
}

template <class TakeRow>
bool BitmapFile::ReadRows(const PixelRect& part, TakeRow takeRow) const {
  const std::int64_t skipped = std::int64_t{part.x} * layout_.bytesPerPixel;
  const std::int64_t wanted = std::int64_t{part.width} * layout_.bytesPerPixel;
  // Wide parts are read in blocks of whole rows, narrow ones row by row.
  const bool wholeRows = 4 * wanted >= layout_.stride;
  const auto blockRows = static_cast<std::int64_t>(block_.size()) / layout_.stride;
  const int rowsPerRead = wholeRows ? static_cast<int>(std::min<std::int64_t>(blockRows, part.height)) : 1;
  const int bottom = layout_.height - part.y - part.height;
  for (int first = 0; first < part.height; first += rowsPerRead) {
    const int rows = std::min(rowsPerRead, part.height - first);
    const auto bytes = static_cast<std::size_t>(wholeRows ? rows * layout_.stride : wanted);
    const std::int64_t row = layout_.offset + (bottom + first) * layout_.stride;
    if (file_.ReadAt(wholeRows ? row : row + skipped, block_.data(), bytes) != bytes) return false;
    for (int i = 0; i < rows; ++i) {
      takeRow(part.height - 1 - first - i, block_.data() + (wholeRows ? i * layout_.stride + skipped : 0));
    }
  }
  return true;
}

bool BitmapFile::Read(const PixelRect& part, std::uint32_t* pixels) const {
  const auto width = static_cast<std::size_t>(part.width);
  return ReadRows(part, [&](int line, const unsigned char* source) {
    ConvertRow(source, pixels + static_cast<std::size_t>(line) * width, part.width);
  });
}

bool BitmapFile::AddLevels(int top, int rows, std::vector<std::uint32_t>& sums) const {
  return ReadRows({0, top, layout_.width, rows}, [&](int, const unsigned char* source) {
    for (std::size_t x = 0; x < sums.size(); ++x) sums[x] += source[x];
  });
}

void BitmapFile::ConvertRow(const unsigned char* source, std::uint32_t* pixels, int width) const {
  if (layout_.bytesPerPixel == 1) {
    for (int x = 0; x < width; ++x) pixels[x] = palette_[source[x]];
  } else {
    for (int x = 0; x < width; ++x) pixels[x] = Rgb(source + 3 * static_cast<std::ptrdiff_t>(x));
  }
}

namespace {

// A band of rows of the full picture, summed over the columns of the reduced one.
struct Band {
  const BitmapFile& picture;
  std::vector<Sums> columns;
  std::vector<std::uint32_t> memory{};  // whole lines, or the sum of all lines

  bool AddColors(int top, int rows) {
    const int width = picture.Width();
    memory.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(rows));
    if (!picture.Read({0, top, width, rows}, memory.data())) return false;
    std::fill(columns.begin(), columns.end(), Sums{});
    for (int row = 0; row < rows; ++row)
      AddRow(memory.data() + static_cast<std::ptrdiff_t>(row) * width, width, columns);
    return true;
  }
  // Gray levels are summed line upon line first, which vectors do.
  bool AddGray(int top, int rows) {
    memory.assign(static_cast<std::size_t>(picture.Width()), 0);
    if (!picture.AddLevels(top, rows, memory)) return false;
    const int count = static_cast<int>(columns.size());
    for (int column = 0; column < count; ++column) {
      const auto begin = memory.begin() + Edge(column, picture.Width(), count);
      const auto end = memory.begin() + Edge(column + 1, picture.Width(), count);
      columns[static_cast<std::size_t>(column)].fill(std::accumulate(begin, end, std::int64_t{0}));
    }
    return true;
  }
};

}  // namespace

bool ReadReduced(const BitmapFile& picture, int width, int height, std::uint32_t* pixels) {
  const int fullWidth = picture.Width();
  const int fullHeight = picture.Height();
  if (width == fullWidth && height == fullHeight) return picture.Read({0, 0, width, height}, pixels);
  Band band{picture, std::vector<Sums>(static_cast<std::size_t>(width))};
  for (int y = 0; y < height; ++y) {
    const int top = Edge(y, fullHeight, height);
    const int rows = Edge(y + 1, fullHeight, height) - top;
    if (!(picture.IsGray() ? band.AddGray(top, rows) : band.AddColors(top, rows))) return false;
    for (int x = 0; x < width; ++x) {
      const int covered = Edge(x + 1, fullWidth, width) - Edge(x, fullWidth, width);
      *pixels++ = Mean(band.columns[static_cast<std::size_t>(x)], static_cast<std::int64_t>(covered) * rows);
    }
  }
  return true;
}

}  // namespace corvane
