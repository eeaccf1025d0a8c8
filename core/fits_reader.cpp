#include "core/fits_reader.h"

#include <algorithm>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "core/bitmap_file.h"

namespace corvane {
namespace {

constexpr std::size_t kReadUnit = std::size_t{256} << 10;  // bytes: stays in the cache until it is decoded

Refusal OpenError(int error) { return {"FILE OPEN ERROR", "Error Number " + std::to_string(error)}; }

Refusal ShortFile() {
  return {"FILE ERROR", "The file is shorter than its header promises. Display cancelled."};
}

std::optional<Refusal> ReadCards(const std::filesystem::path& path, std::vector<std::string>& cards) {
  const InputFile file(path);
  if (file.Error() != 0) return OpenError(file.Error());
  std::string raw(static_cast<std::size_t>(std::min<std::int64_t>(file.Size(), kMaxCards * kCardSize)), '\0');
  raw.resize(file.ReadAt(0, raw.data(), raw.size()));
  cards = SplitCards(raw);
  if (cards.empty()) {
    return Refusal{"MISSING END CARD",
                   "No \"END\" card found in header within 1000 cards. Display cancelled."};
  }
  if (!cards[0].starts_with("SIMPLE")) {
    return Refusal{"UNKNOWN FORMAT", "Missing \"SIMPLE=T\" card in header. Display cancelled!"};
  }
  return std::nullopt;
}

std::optional<Refusal> ReadImage(const std::filesystem::path& path, const FitsLayout& layout,
                                 FloatImage& image) {
  const InputFile file(path);
  if (file.Error() != 0) return OpenError(file.Error());
  if (file.Size() < layout.start + layout.DataBytes()) return ShortFile();
  try {
    image = FloatImage(layout.width, layout.height);
    // The file may have been cut since its length was taken.
    if (!ReadPixels(file, layout, image.Edit().values)) return ShortFile();
  } catch (const std::bad_alloc&) {
    return NotEnoughMemory();
  }
  return std::nullopt;
}

void Refuse(ModCV& cv, Platform& os, const Refusal& refusal) {
  if (!refusal.text.empty()) os.Message(refusal.text, refusal.title);
  cv.LoadFailed = true;
}

}  // namespace

bool ReadPixels(const InputFile& file, const FitsLayout& layout, float* values) {
  const std::size_t pixelBytes = static_cast<std::size_t>(layout.RowBytes() / layout.width);
  const std::size_t count = static_cast<std::size_t>(layout.DataBytes()) / pixelBytes;
  const std::size_t unit = std::min(kReadUnit / pixelBytes, count);
  ByteBuffer raw(unit * pixelBytes);
  std::int64_t offset = layout.start;
  for (std::size_t done = 0; done < count;) {
    const std::size_t pixels = std::min(unit, count - done);
    const std::size_t bytes = pixels * pixelBytes;
    if (file.ReadAt(offset, raw.data(), bytes) != bytes) return false;
    DecodePixels(layout, raw.data(), values + done, pixels);
    done += pixels;
    offset += static_cast<std::int64_t>(bytes);
  }
  return true;
}

void ReadFitsHeader(ModCV& cv, Platform& os, const std::filesystem::path& path) {
  cv.HeaderOK = false;
  std::vector<std::string> cards;
  if (const auto refusal = ReadCards(path, cards)) {
    os.Message(refusal->text, refusal->title);
    return;
  }
  if (cards[0].substr(5, 25).find('T') == std::string::npos) {
    os.Message("File is not a standard FITS file and may not display properly!", "UNKNOWN FORMAT");
  }
  cv.HeaderCount = static_cast<int>(cards.size());
  cv.HeaderCards = std::move(cards);
  cv.HeaderOK = true;
}

void ReadFitsData(ModCV& cv, Platform& os, const std::filesystem::path& path) {
  FitsLayout layout;
  if (const auto refusal = ReadLayout(cv.HeaderCards, layout)) return Refuse(cv, os, *refusal);
  FloatImage image;
  if (const auto refusal = ReadImage(path, layout, image)) return Refuse(cv, os, *refusal);
  cv.BytesPerPixel = layout.bytesPerPixel;
  cv.ImageWidth = static_cast<float>(layout.width);
  cv.ImageHeight = static_cast<float>(layout.height);
  cv.DataOffset = static_cast<float>(layout.start + 1);
  cv.ImageData = std::move(image);
  const std::int64_t dataBytes = layout.DataBytes();
  cv.FitsFileSize = std::to_string(layout.start + dataBytes + BlockPadding(dataBytes));
}

}  // namespace corvane
