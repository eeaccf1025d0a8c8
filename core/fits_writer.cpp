#include "core/fits_writer.h"

#include <algorithm>
#include <cstring>

#include "core/fits_format.h"
#include "core/render.h"
#include "core/safe_write.h"
#include "core/sixteen_kernels.h"
#include "core/text.h"

namespace corvane {
namespace {

constexpr int kHeaderCards = 36;
constexpr std::size_t kNameSize = 52;         // characters of a name in the card of the original files
constexpr std::size_t kCommentSize = 68;      // characters of a comment between its quotes
constexpr std::size_t kEncodedBlock = 32768;  // pixels; decoded again while they are in the cache
constexpr float kHighest = 32767.0f;

std::string Padded(std::string text, std::size_t size) {
  text.resize(size, ' ');
  return text;
}

// A keyword and a value that ends in column 30.
std::string ValueCard(const std::string& keyword, const std::string& value) {
  return Padded(Padded(keyword, 8) + "=" + std::string(21 - value.size(), ' ') + value, kCardSize);
}

// Printable text between quotes, its own quotes doubled, cut to `size` characters; a doubled quote is never
// cut in two.
std::string Quoted(const std::string& text, std::size_t size) {
  std::string inner;
  for (const char c : PrintableAscii(text)) {
    const std::string piece(c == '\'' ? 2 : 1, c);
    if (inner.size() + piece.size() > size) break;
    inner += piece;
  }
  return "'" + inner + "'";
}

std::string OriginCard(const WrittenHeader& header) {
  const bool several = !header.originalFiles.empty();
  const std::string label = several ? "Original Files: " : "Original File = ";
  const std::string& names = several ? header.originalFiles : header.source;
  return Padded("COMMENT = " + Quoted(label + names, label.size() + kNameSize), kCardSize);
}

// Sizes FitsOutBuf for `bytes` of data and zeroes the padding.
void SizeOutput(ModCV& cv, std::size_t bytes) {
  const auto padding = static_cast<std::size_t>(BlockPadding(static_cast<std::int64_t>(bytes)));
  cv.FitsOutBuf.Resize(bytes + padding);
  std::memset(cv.FitsOutBuf.data() + bytes, 0, padding);
  cv.FitsFileSize = std::to_string(bytes + padding + kBlockSize);
}

// The display rows, upside down and without their padding.
void EncodeEightBit(ModCV& cv) {
  const ConstGrayView picture = cv.Display();
  const auto width = static_cast<std::size_t>(picture.width);
  SizeOutput(cv, width * static_cast<std::size_t>(picture.height));
  for (int y = 0; y < picture.height; ++y) {
    std::memcpy(cv.FitsOutBuf.data() + static_cast<std::size_t>(y) * width,
                picture.Row(picture.height - 1 - y), width);
  }
}

// The values of ImageData become (value - offset) * factor / divisor. The array is not edited in place: it
// is shared with the slot, and copying it first would cost another pass.
void Fit(ModCV& cv, float offset, float factor, float divisor) {
  const ConstFloatView from = cv.ImageData.View();
  FloatImage fitted(from.width, from.height);
  ChosenSixteenKernels().fit(from.values, offset, factor, divisor, fitted.Overwrite().values, from.Count());
  cv.ImageData = fitted;
}

void FitFloats(ModCV& cv) {
  const float range = cv.ImageMax - cv.ImageMin;
  const float factor = cv.ImageMax > cv.ImageMin ? kHighest / range : 1.0f;
  Fit(cv, cv.ImageMin, factor, 1.0f);
  cv.ImageMax = range * factor;
  cv.ImageMin = 0.0f;
}

void FitIntegers(ModCV& cv) {
  if (cv.ImageMin >= 0.0f) {
    if (cv.ImageMax <= kHighest) return;
    const float factor = kHighest / cv.ImageMax;
    Fit(cv, 0.0f, factor, 1.0f);
    cv.ImageMax *= factor;
    cv.ImageMin *= factor;
    return;
  }
  const float range = cv.ImageMax - cv.ImageMin;
  if (range <= kHighest) {
    Fit(cv, cv.ImageMin, 1.0f, 1.0f);
    cv.ImageMax = range;
  } else {
    Fit(cv, cv.ImageMin, kHighest, range);
    cv.ImageMax = kHighest;
  }
  cv.ImageMin = 0.0f;
}

void FitByCode(ModCV& cv, int code) {
  if (code == -4) FitFloats(cv);
  if (code == 2 || code == 4) FitIntegers(cv);
}

}  // namespace

std::vector<std::string> WrittenCards(const WrittenHeader& header) {
  std::vector<std::string> cards = {
      ValueCard("SIMPLE", "T"),
      ValueCard("BITPIX", std::to_string(header.bitsPerPixel)),
      ValueCard("NAXIS", "2"),
      ValueCard("NAXIS1", std::to_string(header.width)),
      ValueCard("NAXIS2", std::to_string(header.height)),
      ValueCard("BSCALE", "1.0"),
      ValueCard("BZERO", "0.0"),
      OriginCard(header),
      Padded("COMMENT = " + header.comment, kCardSize),
      Padded("END", kCardSize),
  };
  cards.resize(kHeaderCards, std::string(kCardSize, ' '));
  return cards;
}

std::string CommentValue(const std::string& typed) {
  return Padded(Quoted(typed.empty() ? "..." : typed, kCommentSize), kCommentSize + 2);
}

void EncodeSixteen(const float* values, unsigned char* raw, std::size_t count) {
  ChosenSixteenKernels().encode(values, raw, count);
}

void BuildFitsHeader(ModCV& cv) {
  const bool eight = cv.BytesPerPixel == 1;
  cv.HeaderCards = WrittenCards({.bitsPerPixel = eight ? 8 : 16,
                                 .width = cv.Width(),
                                 .height = cv.Height(),
                                 .source = cv.SlotName[cv.CurrentSlot],
                                 .originalFiles = cv.OriginalFiles,
                                 .comment = cv.FitsComment});
  cv.HeaderCount = kHeaderCards;
  if (eight) EncodeEightBit(cv);
}

void PrepareSixteenBit(ModCV& cv, int code) {
  LoadSlotData(cv);
  cv.BytesPerPixel = code;
  FitByCode(cv, code);
}

void FitRange(ModCV& cv, int code) {
  const ValueRange range = FindRange(cv.ImageData.View());
  cv.ImageMin = range.min;
  cv.ImageMax = range.max;
  FitByCode(cv, code);
}

void EncodeSixteenBit(ModCV& cv) {
  // Where a slot shares the array, `values` stays the slot's; otherwise both are one, block after block.
  const ConstFloatView values = cv.ImageData.View();
  float* target = cv.ImageData.Overwrite().values;
  SizeOutput(cv, 2 * values.Count());
  const FitsLayout written{.bytesPerPixel = 2, .width = values.width, .height = values.height};
  for (std::size_t first = 0; first < values.Count(); first += kEncodedBlock) {
    const std::size_t count = std::min(kEncodedBlock, values.Count() - first);
    unsigned char* raw = cv.FitsOutBuf.data() + 2 * first;
    EncodeSixteen(values.values + first, raw, count);
    DecodePixels(written, raw, target + first, count);
  }
  cv.ImageWidth = static_cast<float>(values.width);
  cv.ImageHeight = static_cast<float>(values.height);
}

bool SixteenBitSave(ModCV& cv, int code, const std::function<bool()>& operation) {
  PrepareSixteenBit(cv, code);
  if (!operation()) return false;
  EncodeSixteenBit(cv);
  return true;
}

int WriteFits(const ModCV& cv, const std::filesystem::path& path) {
  std::string header;
  for (const std::string& card : cv.HeaderCards) header += card;
  const Bytes text{reinterpret_cast<const unsigned char*>(header.data()), header.size()};
  return SafeWrite(path, {text, {cv.FitsOutBuf.data(), cv.FitsOutBuf.size()}});
}

}  // namespace corvane
