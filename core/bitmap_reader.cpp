#include "core/bitmap_reader.h"

#include <algorithm>
#include <array>
#include <new>

#include "core/bitmap_file.h"
#include "core/files.h"
#include "core/gray_kernels.h"
#include "core/working_files.h"

namespace corvane {
namespace {

constexpr char kTitle[] = "FILE OPEN ERROR";
constexpr char kDamaged[] = "The bitmap file is damaged or incomplete. Can't open file.";
constexpr std::int64_t kMostPixels = 32767;  // in a row, and in a column

// Where the pixels of an uncompressed file lie.
struct PixelLayout {
  int width = 0;
  int height = 0;
  int bytesPerPixel = 0;
  std::int64_t offset = 0;
  int stride = 0;  // bytes from one file row to the next
  bool topDown = false;

  std::size_t Size() const { return static_cast<std::size_t>(stride) * height; }
  // The display row, counted from the bottom, of a file row.
  int DisplayRow(int fileRow) const { return topDown ? height - 1 - fileRow : fileRow; }
};

void Refuse(ModCV& cv, Platform& os, const std::string& text) {
  os.Message(text, kTitle);
  cv.LoadFailed = true;
  cv.OpenTitle.clear();
}

// A file of the older kind, complete with its header of 12 bytes, may be shorter than the fields read here.
bool IsOlderKind(const BitmapFields& fields, std::int64_t size) {
  return fields.isBitmap && fields.headerSize == 12 && size >= 26;
}

// The fields, or nothing after a message.
std::optional<BitmapFields> ReadFields(ModCV& cv, Platform& os, const InputFile& file) {
  if (file.Error() != 0) {
    Refuse(cv, os, "Error Number " + std::to_string(file.Error()));
    return std::nullopt;
  }
  std::array<unsigned char, kBitmapFieldsSize> bytes{};
  const std::size_t got = file.ReadAt(0, bytes.data(), bytes.size());
  BitmapFields fields = ParseBitmapFields(bytes);
  if (got == bytes.size()) return fields;
  if (!IsOlderKind(fields, file.Size())) {
    Refuse(cv, os, kDamaged);
    return std::nullopt;
  }
  fields.compression = 0;  // a field it does not have
  return fields;
}

// Why the picture cannot be shown, or nothing and its layout.
std::optional<std::string> FindLayout(const BitmapFields& fields, std::int64_t fileSize,
                                      PixelLayout& layout) {
  constexpr std::int64_t kNegative = std::int64_t{1} << 31;
  const std::int64_t width = fields.width;
  layout.topDown = fields.height >= kNegative;
  const std::int64_t height = layout.topDown ? 2 * kNegative - fields.height : fields.height;
  if (width > kMostPixels) return "Image width exceeds bitmap limit.";
  if (height > kMostPixels) return "Image height exceeds bitmap limit.";
  if (fields.bitCount != 8 && fields.bitCount != 24 && fields.bitCount != 32)
    return "Unrecognized bitmap format. Cant open file.";
  layout.width = static_cast<int>(width);
  layout.height = static_cast<int>(height);
  layout.bytesPerPixel = fields.bitCount / 8;
  layout.offset = fields.dataOffset;
  layout.stride = RowStrideFor(layout.width * layout.bytesPerPixel);
  if (width == 0 || height == 0 || layout.offset < kBitmapFieldsSize) return kDamaged;
  if (static_cast<std::int64_t>(layout.Size()) > fileSize - layout.offset) return kDamaged;
  return std::nullopt;
}

// Rows of gray levels as they stand in the file, padding included. False when the file cannot be read.
bool ReadBitmap8(const InputFile& file, const PixelLayout& layout, GrayView levels) {
  if (file.ReadAt(layout.offset, levels.bits, levels.Size()) != levels.Size()) return false;
  if (!layout.topDown) return true;
  for (int y = 0; y < levels.height / 2; ++y)
    std::swap_ranges(levels.Row(y), levels.Row(y) + levels.stride, levels.Row(levels.height - 1 - y));
  return true;
}

// Gray levels of 24- and 32-bit pixels. The file is read some rows at a time: its colours are never all in
// memory.
bool ReadBitmap24(const InputFile& file, const PixelLayout& layout, GrayView levels) {
  constexpr int kBlockBytes = 256 * 1024;
  const int rows = std::clamp(kBlockBytes / layout.stride, 1, layout.height);
  ByteBuffer colors(static_cast<std::size_t>(rows) * layout.stride);
  for (int first = 0; first < layout.height; first += rows) {
    const int count = std::min(rows, layout.height - first);
    const std::size_t bytes = static_cast<std::size_t>(count) * layout.stride;
    const std::int64_t offset = layout.offset + static_cast<std::int64_t>(first) * layout.stride;
    if (file.ReadAt(offset, colors.data(), bytes) != bytes) return false;
    for (int i = 0; i < count; ++i) {
      std::uint8_t* row = levels.Row(layout.DisplayRow(first + i));
      GrayFromColor(colors.data() + static_cast<std::size_t>(i) * layout.stride, layout.bytesPerPixel, row,
                    layout.width);
      std::fill(row + layout.width, row + levels.stride, std::uint8_t{0});
    }
  }
  return true;
}

}  // namespace

bool CheckBitmap(ModCV& cv, Platform& os, const std::filesystem::path& path) {
  const auto fields = ReadFields(cv, os, InputFile(path));
  if (!fields) return false;
  bool sound = true;
  if (!fields->isBitmap) {
    os.Message("The file selected is not a proper Windows image bitmap.", "FILE TYPE ERROR");
    sound = false;
  }
  if (fields->headerSize != 40) {
    Refuse(cv, os, "Unsupported bitmap format. Can't open file.");
    sound = false;
  }
  if (fields->compression != 0) {
    Refuse(cv, os, "Compressed bitmap formats are not supported. Can't open file.");
    sound = false;
  }
  return sound;
}

void ReadBitmap(ModCV& cv, Platform& os, const std::filesystem::path& path) try {
  const InputFile file(path);
  const auto fields = ReadFields(cv, os, file);
  if (!fields) return;
  PixelLayout layout;
  if (const auto fault = FindLayout(*fields, file.Size(), layout)) return Refuse(cv, os, *fault);

  const int stride = RowStrideFor(layout.width);
  ByteBuffer bits(static_cast<std::size_t>(stride) * layout.height);
  const GrayView levels{bits.data(), layout.width, layout.height, stride};
  const bool read =
      layout.bytesPerPixel == 1 ? ReadBitmap8(file, layout, levels) : ReadBitmap24(file, layout, levels);
  if (!read) return Refuse(cv, os, kDamaged);
  if (const auto refusal =
          WriteDisplayBitmap(cv.AppDir / kGrayTemplate, cv.SlotBitmap(cv.ImageCount), levels)) {
    return Refuse(cv, os, refusal->text);
  }
  cv.DisplayBits = std::move(bits);
  DescribeDisplayBitmap(cv, layout.width, layout.height);
  cv.BitCount = fields->bitCount;
  cv.HeaderSize = static_cast<float>(fields->headerSize);
  cv.BytesPerPixel = 1;
  if (cv.ImageCount < kSlots) cv.SlotBytesPerPixel[cv.ImageCount] = 1;
} catch (const std::bad_alloc&) {
  Refuse(cv, os, NotEnoughMemory().text);
}

void GrayFromColor(const unsigned char* pixels, int bytesPerPixel, unsigned char* gray, int width) {
  const GrayKernels& kernels = ChosenGrayKernels();
  (bytesPerPixel == 3 ? kernels.fromThreeBytes : kernels.fromFourBytes)(pixels, gray, width);
}

}  // namespace corvane
