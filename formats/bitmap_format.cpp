#include "formats/bitmap_format.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <initializer_list>
#include <new>
#include <utility>

namespace corvane {
namespace {

std::uint16_t TwoBytes(const unsigned char* bytes) {
  return static_cast<std::uint16_t>(bytes[0] | bytes[1] << 8);
}

std::uint32_t FourBytes(const unsigned char* bytes) {
  return TwoBytes(bytes) | static_cast<std::uint32_t>(TwoBytes(bytes + 2)) << 16;
}

// The fields of a header for pixels of `bitCount` bits behind `size` bytes.
bool HasForm(const BitmapFields& fields, std::size_t size, int bitCount) {
  return fields.IsUncompressed() && fields.dataOffset == size && fields.bitCount == bitCount;
}

bool IsTemplate(std::span<const unsigned char> bytes, std::size_t size, int bitCount) {
  if (bytes.size() != size) return false;
  const BitmapFields fields = ParseBitmapFields(bytes.first<kBitmapFieldsSize>());
  return HasForm(fields, size, bitCount) && fields.planes == 1;
}

std::optional<PixelLayout> ReadDisplayLayout(const InputFile& file) {
  std::array<unsigned char, kBitmapFieldsSize> bytes{};
  if (file.ReadAt(0, bytes.data(), bytes.size()) != bytes.size()) return std::nullopt;
  const BitmapFields fields = ParseBitmapFields(bytes);
  if (!HasForm(fields, kBitmapHeaderSize, 8)) return std::nullopt;
  auto layout = LayoutOf(fields, file.Size());
  if (!layout || layout->topDown || !FitsBitmapFile(layout->width, layout->height)) return std::nullopt;
  if (fields.fileSize != kBitmapHeaderSize + layout->Size()) return std::nullopt;
  return layout;
}

// The header of `templateFile`, which must be sound.
template <std::size_t kSize>
std::optional<Refusal> ReadTemplate(const std::filesystem::path& path,
                                    std::array<unsigned char, kSize>& header, int bitCount) {
  const InputFile file(path);
  const bool whole = file.ReadAt(0, header.data(), kSize) == kSize;
  if (!whole || !IsTemplate(header, kSize, bitCount)) return Damaged(path, file.Error());
  return std::nullopt;
}

struct LongField {
  std::size_t offset;
  double value;
};

// `header` with its fields set, then the pixels.
std::optional<Refusal> Write(const std::filesystem::path& target, std::span<unsigned char> header,
                             std::initializer_list<LongField> fields, Bytes pixels) {
  for (const auto& [offset, value] : fields) {
    const auto bytes = LongToBytes(value);
    std::copy(bytes.begin(), bytes.end(), header.subspan(offset).begin());
  }
  const int error = WriteInPlace(target, {header, pixels});
  if (error == 0) return std::nullopt;
  return Refusal{"FILE OPEN ERROR", "The file \"" + target.filename().string() +
                                        "\" can't be written. Error Number " + std::to_string(error)};
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
  fields.planes = TwoBytes(&bytes[26]);
  fields.bitCount = TwoBytes(&bytes[28]);
  fields.compression = FourBytes(&bytes[30]);
  return fields;
}

std::optional<PixelLayout> LayoutOf(const BitmapFields& fields, std::int64_t fileSize) {
  constexpr std::int64_t kNegative = std::int64_t{1} << 31;
  const bool topDown = fields.height >= kNegative;
  const std::int64_t width = fields.width;
  const std::int64_t height = topDown ? 2 * kNegative - fields.height : fields.height;
  const int bits = fields.bitCount;
  if (width < 1 || width >= kNegative || height < 1 || height >= kNegative) return std::nullopt;
  if ((bits != 8 && bits != 24 && bits != 32) || fields.dataOffset < kBitmapFieldsSize) return std::nullopt;
  const std::int64_t stride = (width * (bits / 8) + 3) / 4 * 4;
  if (stride > (fileSize - fields.dataOffset) / height) return std::nullopt;
  return PixelLayout{.width = static_cast<int>(width),
                     .height = static_cast<int>(height),
                     .bytesPerPixel = bits / 8,
                     .offset = fields.dataOffset,
                     .stride = stride,
                     .topDown = topDown};
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

bool IsDisplayTemplate(std::span<const unsigned char> bytes) {
  return IsTemplate(bytes, kBitmapHeaderSize, 8);
}

bool IsColorTemplate(std::span<const unsigned char> bytes) {
  return IsTemplate(bytes, kBitmapFieldsSize, 24);
}

Refusal Damaged(const std::filesystem::path& path, int error) {
  const bool isNoFile = error == ENOENT || error == EISDIR || error == EINVAL;
  const std::string fault = error == 0 || isNoFile ? "is missing or damaged."
                                                   : "can't be read. Error Number " + std::to_string(error);
  return {"FILE OPEN ERROR", "The file \"" + path.filename().string() + "\" " + fault};
}

std::optional<Refusal> ReadDisplaySize(const std::filesystem::path& path, int& width, int& height) {
  const InputFile file(path);
  const auto layout = ReadDisplayLayout(file);
  if (!layout) return Damaged(path, file.Error());
  width = layout->width;
  height = layout->height;
  return std::nullopt;
}

std::optional<Refusal> ReadDisplayBitmap(const std::filesystem::path& path, DisplayBitmap& picture) try {
  const InputFile file(path);
  const auto layout = ReadDisplayLayout(file);
  if (!layout) return Damaged(path, file.Error());
  const auto size = static_cast<std::size_t>(layout->Size());
  ByteBuffer fresh;
  const bool fits = picture.bits.size() == size;
  if (!fits) fresh.Resize(size);
  ByteBuffer& bits = fits ? picture.bits : fresh;
  if (file.ReadAt(layout->offset, bits.data(), size) != size) return Damaged(path);
  if (!fits) picture.bits.Swap(fresh);
  picture.width = layout->width;
  picture.height = layout->height;
  picture.stride = static_cast<int>(layout->stride);
  return std::nullopt;
} catch (const std::bad_alloc&) {
  return NotEnoughMemory();
}

std::optional<Refusal> WriteDisplayBitmap(const std::filesystem::path& templateFile,
                                          const std::filesystem::path& target, ConstGrayView pixels) {
  std::array<unsigned char, kBitmapHeaderSize> header{};
  if (auto refusal = ReadTemplate(templateFile, header, 8)) return refusal;
  const auto size = static_cast<double>(pixels.Size());
  return Write(target, header,
               {{2, size + kBitmapHeaderSize},
                {18, static_cast<double>(pixels.width)},
                {22, static_cast<double>(pixels.height)},
                {34, size}},
               {pixels.bits, pixels.Size()});
}

std::optional<Refusal> WriteColorBitmap(const std::filesystem::path& templateFile,
                                        const std::filesystem::path& target, int width, int height,
                                        Bytes pixels) {
  std::array<unsigned char, kBitmapFieldsSize> header{};
  if (auto refusal = ReadTemplate(templateFile, header, 24)) return refusal;
  const auto size = static_cast<double>(pixels.size());
  return Write(target, header,
               {{2, size + kBitmapFieldsSize},
                {18, static_cast<double>(width)},
                {22, static_cast<double>(height)},
                {28, 24},
                {34, size},
                {46, 0},
                {50, 0}},
               pixels);
}

}  // namespace corvane
