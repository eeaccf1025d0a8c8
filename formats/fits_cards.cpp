#include "formats/fits_cards.h"

#include "base/text.h"
#include "formats/fits_format.h"

namespace corvane {
namespace {

constexpr int kHeaderCards = kBlockSize / kCardSize;
constexpr std::size_t kNameSize = 52;     // characters of a name in the card of the original files
constexpr std::size_t kCommentSize = 68;  // characters of a comment between its quotes

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

}  // namespace corvane
