#include "core/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace corvane {

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

}  // namespace corvane
