#include "base/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <vector>

namespace corvane {
namespace {

// A working file written from its start over whatever it holds, then cut to size. What it held survives a
// full disk; after any other failed write it is empty, so that nobody takes half a picture for a whole one.
class InPlaceFile {
 public:
  InPlaceFile(const std::filesystem::path& path, std::int64_t size) : size_(size) {
    // A name that has become a link is not followed, and a pipe cannot stop the program.
    descriptor_ = open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0666);
    if (descriptor_ < 0) {
      error_ = errno;
      return;
    }
    struct stat status {};
    if (fstat(descriptor_, &status) != 0) {
      error_ = errno;
    } else if (!S_ISREG(status.st_mode)) {
      error_ = EINVAL;
    } else if (status.st_size < size) {
      Reserve(status.st_size);
    }
  }
  ~InPlaceFile() {
    if (descriptor_ >= 0) close(descriptor_);
  }
  InPlaceFile(const InPlaceFile&) = delete;
  InPlaceFile& operator=(const InPlaceFile&) = delete;

  int Error() const { return error_; }

  void Write(std::span<iovec> parts) {
    while (error_ == 0 && !parts.empty()) {
      const ssize_t written = writev(descriptor_, parts.data(), static_cast<int>(parts.size()));
      if (written < 0 && errno == EINTR) continue;
      if (written < 0) return Fail(errno);
      parts = Rest(parts, static_cast<std::size_t>(written));
    }
  }

  // Cuts to size and closes. Returns 0 or the errno of the first fault.
  int Finish() {
    if (error_ == 0 && ftruncate(descriptor_, size_) != 0) Fail(errno);
    if (descriptor_ >= 0 && close(descriptor_) != 0 && error_ == 0) error_ = errno;
    descriptor_ = -1;
    return error_;
  }

  void Fail(int error) {
    error_ = error;
    if (ftruncate(descriptor_, 0) != 0) error_ = error;
  }

 private:
  // Takes the disk space before the first byte is overwritten.
  void Reserve(std::int64_t oldSize) {
    int result = 0;
    do {
      result = fallocate(descriptor_, 0, 0, size_);
    } while (result != 0 && errno == EINTR);
    if (result == 0 || errno == EOPNOTSUPP || errno == ENOSYS) return;
    error_ = errno;
    if (ftruncate(descriptor_, oldSize) != 0) return;
  }

  static std::span<iovec> Rest(std::span<iovec> parts, std::size_t written) {
    while (!parts.empty() && written >= parts.front().iov_len) {
      written -= parts.front().iov_len;
      parts = parts.subspan(1);
    }
    if (!parts.empty()) {
      parts.front().iov_base = static_cast<char*>(parts.front().iov_base) + written;
      parts.front().iov_len -= written;
    }
    return parts;
  }

  int descriptor_ = -1;
  int error_ = 0;
  std::int64_t size_ = 0;
};

}  // namespace

InputFile::InputFile(const std::filesystem::path& path) {
  // Non-blocking, so that a pipe of this name cannot stop the program before it is seen to be no regular
  // file.
  descriptor_ = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (descriptor_ < 0) {
    error_ = errno;
    return;
  }
  struct stat status {};
  if (fstat(descriptor_, &status) != 0) {
    error_ = errno;
  } else if (S_ISDIR(status.st_mode)) {
    error_ = EISDIR;
  } else if (!S_ISREG(status.st_mode)) {
    error_ = EINVAL;
  } else {
    size_ = status.st_size;
  }
}

InputFile::~InputFile() {
  if (descriptor_ >= 0) close(descriptor_);
}

std::size_t InputFile::ReadAt(std::int64_t offset, void* target, std::size_t count) const {
  std::size_t done = 0;
  while (error_ == 0 && done < count) {
    const ssize_t got = pread(descriptor_, static_cast<char*>(target) + done, count - done,
                              offset + static_cast<std::int64_t>(done));
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) break;
    done += static_cast<std::size_t>(got);
  }
  return done;
}

int WriteInPlace(const std::filesystem::path& path, std::initializer_list<Bytes> parts) {
  std::vector<iovec> pieces;
  std::int64_t size = 0;
  for (const Bytes& part : parts) {
    pieces.push_back({const_cast<unsigned char*>(part.data()), part.size()});
    size += static_cast<std::int64_t>(part.size());
  }
  InPlaceFile target(path, size);
  target.Write(pieces);
  return target.Finish();
}

void QuietDelete(const std::filesystem::path& path) { unlink(path.c_str()); }

int QuietRename(const std::filesystem::path& from, const std::filesystem::path& to) {
  return std::rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
}

int QuietCopy(const std::filesystem::path& from, const std::filesystem::path& to) {
  const InputFile source(from);
  if (source.Error() != 0) return source.Error();
  InPlaceFile target(to, source.Size());
  std::array<unsigned char, 65536> block;
  for (std::int64_t done = 0; target.Error() == 0 && done < source.Size();) {
    const std::size_t want = std::min<std::int64_t>(block.size(), source.Size() - done);
    if (source.ReadAt(done, block.data(), want) != want) {
      target.Fail(EIO);
      break;
    }
    iovec piece{block.data(), want};
    target.Write({&piece, 1});
    done += static_cast<std::int64_t>(want);
  }
  return target.Finish();
}

}  // namespace corvane
