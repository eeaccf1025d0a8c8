#include "core/fits_writer.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "base/safe_write.h"
#include "formats/fits_cards.h"
#include "formats/fits_pixels.h"
#include "formats/sixteen_bit.h"
#include "formats/sixteen_range.h"

namespace corvane {
namespace {

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

}  // namespace

void BuildFitsHeader(ModCV& cv, const std::string& source) {
  const bool eight = cv.BytesPerPixel == 1;
  cv.HeaderCards = WrittenCards({.bitsPerPixel = eight ? 8 : 16,
                                 .width = cv.Width(),
                                 .height = cv.Height(),
                                 .source = source,
                                 .originalFiles = cv.OriginalFiles,
                                 .comment = cv.FitsComment});
  cv.HeaderCount = static_cast<int>(cv.HeaderCards.size());
  if (eight) EncodeEightBit(cv);
}

void PrepareSixteenBit(ModCV& cv, int slot, int precision) {
  RangedImage ranged = IntoSixteenBitRange(cv.SlotData[slot], precision);
  cv.ImageData = std::move(ranged.values);
  cv.ImageMin = ranged.range.min;
  cv.ImageMax = ranged.range.max;
  cv.BytesPerPixel = precision;
}

void EncodeSixteenBit(ModCV& cv) {
  const ConstFloatView values = cv.ImageData.View();
  SizeOutput(cv, 2 * values.Count());
  EncodeSixteen(values.values, cv.FitsOutBuf.data(), values.Count());
  cv.ImageWidth = static_cast<float>(values.width);
  cv.ImageHeight = static_cast<float>(values.height);
}

void TakeWrittenData(ModCV& cv, int slot) {
  const FitsLayout written{.bytesPerPixel = cv.BytesPerPixel, .width = cv.Width(), .height = cv.Height()};
  FloatImage& data = cv.ImageData;
  if (data.Width() != written.width || data.Height() != written.height)
    data = FloatImage(written.width, written.height);
  if (data.SharesOnlyWith(cv.SlotData[slot])) cv.SlotData[slot] = {};
  DecodePixels(written, cv.FitsOutBuf.data(), data.Overwrite().values, data.Count());
}

int WriteFits(const ModCV& cv, const std::filesystem::path& path) {
  std::string header;
  for (const std::string& card : cv.HeaderCards) header += card;
  const Bytes text{reinterpret_cast<const unsigned char*>(header.data()), header.size()};
  return SafeWrite(path, {text, {cv.FitsOutBuf.data(), cv.FitsOutBuf.size()}});
}

}  // namespace corvane
