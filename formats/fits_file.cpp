#include "formats/fits_file.h"

#include <algorithm>
#include <new>
#include <utility>

#include "formats/fits_pixels.h"

namespace corvane {
namespace {

constexpr std::size_t kReadUnit = std::size_t{256} << 10;  // bytes: stays in the cache until it is decoded

Refusal OpenError(int error) { return {"FILE OPEN ERROR", "Error Number " + std::to_string(error)}; }

Refusal ShortFile() {
  return {"FILE ERROR", "The file is shorter than its header promises. Display cancelled."};
}

}  // namespace

std::optional<Refusal> ReadFitsCards(const std::filesystem::path& path, std::vector<std::string>& cards) {
  const InputFile file(path);
  if (file.Error() != 0) return OpenError(file.Error());
  std::string raw(static_cast<std::size_t>(std::min<std::int64_t>(file.Size(), kMaxCards * kCardSize)), '\0');
  raw.resize(file.ReadAt(0, raw.data(), raw.size()));
  std::vector<std::string> found = SplitCards(raw);
  if (found.empty()) {
    return Refusal{"MISSING END CARD",
                   "No \"END\" card found in header within 1000 cards. Display cancelled."};
  }
  if (!found[0].starts_with("SIMPLE")) {
    return Refusal{"UNKNOWN FORMAT", "Missing \"SIMPLE=T\" card in header. Display cancelled!"};
  }
  cards = std::move(found);
  return std::nullopt;
}

std::optional<Refusal> ReadFitsValues(const std::filesystem::path& path, const FitsLayout& layout,
                                      FloatImage& values) try {
  const InputFile file(path);
  if (file.Error() != 0) return OpenError(file.Error());
  if (file.Size() < layout.start + layout.DataBytes()) return ShortFile();
  FloatImage image(layout.width, layout.height);
  // The file may have been cut since its length was taken.
  if (!ReadPixels(file, layout, image.Edit().values)) return ShortFile();
  values = std::move(image);
  return std::nullopt;
} catch (const std::bad_alloc&) {
  return NotEnoughMemory();
}

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

}  // namespace corvane
