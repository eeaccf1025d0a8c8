#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <initializer_list>
#include <span>

namespace corvane {

// A file read at positions. Regular files only.
class InputFile {
 public:
  // `Error()` is an errno, 0 when the file is open.
  explicit InputFile(const std::filesystem::path& path);
  ~InputFile();
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;
  int Error() const { return error_; }
  std::int64_t Size() const { return size_; }
  // Reads `count` bytes at `offset`; the number read is smaller only at the end of the file or on an error.
  std::size_t ReadAt(std::int64_t offset, void* target, std::size_t count) const;

 private:
  int descriptor_ = -1;
  int error_ = 0;
  std::int64_t size_ = 0;
};

using Bytes = std::span<const unsigned char>;

// For working files: writes over what is there in one call, then cuts to size. Regular files only, links are
// not followed. Returns 0 or an errno; on a full disk the file keeps what it held, after another failed write
// it is empty.
int WriteInPlace(const std::filesystem::path& path, std::initializer_list<Bytes> parts);

// For working files: a missing file is no error. A link is removed itself; a directory stays.
void QuietDelete(const std::filesystem::path& path);
// Renames over an existing target; 0 or an errno.
int QuietRename(const std::filesystem::path& from, const std::filesystem::path& to);
// Copies in place over an existing target; 0 or an errno.
int QuietCopy(const std::filesystem::path& from, const std::filesystem::path& to);

}  // namespace corvane
