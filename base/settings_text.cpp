#include "base/settings_text.h"

#include <cctype>
#include <vector>

namespace corvane {
namespace {

std::vector<std::string_view> LinesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == text.npos ? text.size() : end + 1);
    if (line.ends_with('\r')) line.remove_suffix(1);
    lines.push_back(line);
  }
  return lines;
}

std::string_view Trimmed(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
  return text;
}

// Unquoted where no character has a meaning for a reader of the file, else quoted.
std::string Written(const std::string& value) {
  constexpr char kHexadecimal[] = "0123456789abcdef";
  bool plain = true;
  bool afterNumber = false;
  std::string inner;
  for (const char c : value) {
    const auto byte = static_cast<unsigned char>(c);
    plain = plain && ((byte < 0x80 && std::isalnum(byte)) || c == '/' || c == '.' || c == '-' || c == '_');
    if (byte < ' ' || (afterNumber && std::isxdigit(byte))) {
      // A hexadecimal digit after \x.. would be read as part of that number.
      inner += {'\\', 'x', kHexadecimal[byte >> 4], kHexadecimal[byte & 15]};
      afterNumber = true;
      continue;
    }
    if (c == '"' || c == '\\') inner += '\\';
    inner += c;
    afterNumber = false;
  }
  return plain && !value.empty() ? value : '"' + inner + '"';
}

}  // namespace

std::string WithSettings(std::string_view file, const std::string& section, const Settings& values) {
  const std::string header = '[' + section + ']';
  std::string before, own, after;
  std::string* part = &before;
  for (const std::string_view line : LinesOf(file)) {
    const std::string_view text = Trimmed(line);
    if (text.starts_with('[')) part = text == header ? &own : own.empty() ? &before : &after;
    if (part == &own && values.contains(std::string(Trimmed(text.substr(0, text.find('=')))))) continue;
    if (part == &own && (text.empty() || (text == header && !own.empty()))) continue;
    part->append(line) += '\n';
  }
  if (own.empty()) {
    if (!before.empty()) before += '\n';
    own = header + '\n';
  }
  for (const auto& [key, value] : values) own += key + '=' + Written(value) + '\n';
  if (!after.empty()) after.insert(0, 1, '\n');
  return before + own + after;
}

}  // namespace corvane
