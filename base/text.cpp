#include "base/text.h"

#include <algorithm>
#include <charconv>
#include <climits>
#include <cmath>

namespace corvane {
namespace {

// Room for any double with a few decimals.
constexpr std::size_t kLongestNumber = 400;

template <class Number, class... Style>
std::string ToText(Number value, Style... style) {
  char text[kLongestNumber];
  return {text, std::to_chars(text, text + sizeof text, value, style...).ptr};
}

std::string_view WithoutBlanks(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string UpperExponent(std::string text) {
  std::replace(text.begin(), text.end(), 'e', 'E');
  return text;
}

// "-0.00" says nothing that "0.00" does not.
std::string WithoutNegativeZero(std::string text) {
  if (text.starts_with('-') && text.find_first_not_of("-0.") == std::string::npos) text.erase(0, 1);
  return text;
}

}  // namespace

std::string ShortestDecimal(float value) {
  const float magnitude = std::fabs(value);
  if (magnitude == 0.0f) return "0";
  if (magnitude >= 1e-5f && magnitude < 1e15f) return ToText(value, std::chars_format::fixed);
  return UpperExponent(ToText(value, std::chars_format::scientific));
}

std::optional<double> ParseNumber(std::string_view text) {
  std::string number(WithoutBlanks(text));
  if (number.starts_with('+')) {
    number.erase(0, 1);
    if (number.starts_with('-')) return std::nullopt;
  }
  // Refuses names ("inf", "nan") and hexadecimal numbers, which have other characters.
  if (number.find_first_not_of("+-.0123456789eEdD") != std::string::npos) return std::nullopt;
  std::replace_if(
      number.begin(), number.end(), [](char c) { return c == 'd' || c == 'D'; }, 'E');
  double value = 0;
  const char* end = number.data() + number.size();
  const auto [stop, error] = std::from_chars(number.data(), end, value);
  if (error != std::errc() || stop != end || !std::isfinite(value)) return std::nullopt;
  return value;
}

std::optional<int> ParseWhole(std::string_view text) {
  const std::optional<double> value = ParseNumber(text);
  if (!value || *value != std::trunc(*value) || *value < INT_MIN || *value > INT_MAX) return std::nullopt;
  return static_cast<int>(*value);
}

std::string FixedDecimals(double value, int decimals) {
  return WithoutNegativeZero(ToText(value, std::chars_format::fixed, decimals));
}

std::string Grouped(double value) {
  std::string text = FixedDecimals(value, 0);
  if (!std::isfinite(value)) return text;
  const std::size_t firstDigit = text.starts_with('-') ? 1 : 0;
  for (std::size_t at = text.size(); at > firstDigit + 3;) text.insert(at -= 3, 1, ',');
  return text;
}

std::string Scientific(double value) {
  return UpperExponent(ToText(value, std::chars_format::scientific, 3));
}

std::string PrintableAscii(std::string_view text) {
  std::string printable;
  char previous = ' ';
  for (const char c : text) {
    const bool continues = (c & 0xC0) == 0x80 && (previous & 0x80) != 0;
    if (!continues) printable += c < ' ' || c > '~' ? '?' : c;
    previous = c;
  }
  return printable;
}

}  // namespace corvane
