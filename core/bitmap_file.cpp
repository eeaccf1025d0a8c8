#include "core/bitmap_file.h"

#include <algorithm>
#include <cmath>
#include <new>

#include "core/files.h"

namespace corvane {
namespace {

using Header = std::array<unsigned char, kBitmapHeaderSize>;

std::uint32_t FourBytes(const unsigned char* bytes) {
  return bytes[0] | bytes[1] << 8 | bytes[2] << 16 | static_cast<std::uint32_t>(bytes[3]) << 24;
}

void PutLong(Header& header, int offset, double value) {
  const auto bytes = LongToBytes(value);
  std::copy(bytes.begin(), bytes.end(), header.begin() + offset);
}

// The header of a display bitmap or of a template for one.
bool HasDisplayForm(const BitmapFields& fields) {
  return fields.isBitmap && fields.dataOffset == kBitmapHeaderSize && fields.headerSize == 40 &&
         fields.bitCount == 8 && fields.compression == 0;
}

Refusal Damaged(const std::filesystem::path& path) {
  return {"FILE OPEN ERROR", "The file \"" + path.filename().string() + "\" is missing or damaged."};
}

// The fields of a sound display bitmap, or nothing.
std::optional<BitmapFields> ReadSoundFields(const InputFile& file) {
  std::array<unsigned char, kBitmapFieldsSize> bytes{};
  if (file.ReadAt(0, bytes.data(), bytes.size()) != bytes.size()) return std::nullopt;
  const BitmapFields fields = ParseBitmapFields(bytes);
  if (!HasDisplayForm(fields)) return std::nullopt;
  // The sum of a display bitmap's bytes fits 31 bits, so no size that follows can overflow an int.
  constexpr std::int64_t kMost = INT32_MAX;
  const std::int64_t stride = (static_cast<std::int64_t>(fields.width) + 3) / 4 * 4;
  const std::int64_t height = fields.height;
  if (stride < 1 || height < 1 || stride > kMost || height > (kMost - kBitmapHeaderSize) / stride)
    return std::nullopt;
  const std::int64_t size = kBitmapHeaderSize + stride * height;
  if (fields.fileSize != size || file.Size() < size) return std::nullopt;
  return fields;
}

}  // namespace

BitmapFields ParseBitmapFields(std::span<const unsigned char, kBitmapFieldsSize> bytes) {
  BitmapFields fields;
  fields.isBitmap = bytes[0] == 'B' && bytes[1] == 'M';
  fields.fileSize = FourBytes(&bytes[2]);
  fields.dataOffset = FourBytes(&bytes[10]);
  fields.headerSize = FourBytes(&bytes[14]);
  fields.width = FourBytes(&bytes[18]);
  fields.height = FourBytes(&bytes[22]);
  fields.bitCount = static_cast<std::uint16_t>(bytes[28] | bytes[29] << 8);
  fields.compression = FourBytes(&bytes[30]);
  return fields;
}

std::array<std::uint8_t, 4> LongToBytes(double value) {
  std::array<std::uint8_t, 4> bytes{};
  double unit = 16777216;
  for (int i = 3; i > 0; --i, unit /= 256) {
    bytes[i] = static_cast<std::uint8_t>(std::clamp(std::floor(value / unit), 0.0, 255.0));
    value -= bytes[i] * unit;
  }
  bytes[0] = static_cast<std::uint8_t>(std::clamp(std::nearbyint(value), 0.0, 255.0));
  return bytes;
}

std::optional<Refusal> ReadBitmapHeader(ModCV& cv, const std::filesystem::path& path) {
  const auto fields = ReadSoundFields(InputFile(path));
  if (!fields) return Damaged(path);
  DescribeDisplayBitmap(cv, static_cast<int>(fields->width), static_cast<int>(fields->height));
  return std::nullopt;
}

std::optional<Refusal> LoadDisplayBits(ModCV& cv, const std::filesystem::path& path) try {
  const InputFile file(path);
  const auto fields = ReadSoundFields(file);
  if (!fields) return Damaged(path);
  const int width = static_cast<int>(fields->width);
  const int height = static_cast<int>(fields->height);
  const std::size_t count = static_cast<std::size_t>(RowStrideFor(width)) * height;
  ByteBuffer fresh;
  ByteBuffer& bits = cv.DisplayBits.size() == count ? cv.DisplayBits : fresh;
  ReplaceSize(bits, count);
  if (file.ReadAt(kBitmapHeaderSize, bits.data(), count) != count) return Damaged(path);
  if (&bits == &fresh) cv.DisplayBits.Swap(fresh);
  DescribeDisplayBitmap(cv, width, height);
  return std::nullopt;
} catch (const std::bad_alloc&) {
  return NotEnoughMemory();
}

std::optional<Refusal> WriteDisplayBitmap(const std::filesystem::path& templateFile,
                                          const std::filesystem::path& target, ConstGrayView pixels) {
  Header header;
  const InputFile source(templateFile);
  if (source.ReadAt(0, header.data(), header.size()) != header.size() ||
      !HasDisplayForm(ParseBitmapFields(std::span(header).first<kBitmapFieldsSize>()))) {
    return Damaged(templateFile);
  }
  PutLong(header, 2, static_cast<double>(pixels.Size() + header.size()));
  PutLong(header, 18, pixels.width);
  PutLong(header, 22, pixels.height);
  PutLong(header, 34, static_cast<double>(pixels.Size()));
  const int error = WriteInPlace(target, {header, {pixels.bits, pixels.Size()}});
  if (error == 0) return std::nullopt;
  return Refusal{"FILE OPEN ERROR", "The file \"" + target.filename().string() +
                                        "\" can't be written. Error Number " + std::to_string(error)};
}

void DescribeDisplayBitmap(ModCV& cv, int width, int height) {
  cv.RowStride = RowStrideFor(width);
  const double bytes = static_cast<double>(cv.RowStride) * height;
  cv.ImageWidth = static_cast<float>(width);
  cv.ImageHeight = static_cast<float>(height);
  cv.ImageAspect = height > 0 ? cv.ImageWidth / cv.ImageHeight : 1.0f;
  cv.BitmapDataSize = static_cast<float>(bytes);
  cv.BitmapFileSize = static_cast<float>(bytes + kBitmapHeaderSize);
  cv.DataOffset = kBitmapHeaderSize;
}

Refusal NotEnoughMemory() { return {"FILE OPEN ERROR", "Not enough memory for this image."}; }

}  // namespace corvane
