#include "base/safe_write.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <string>

#include "base/pixel_buffer.h"

namespace corvane {
namespace {

constexpr int kMostLinks = 40;
constexpr std::size_t kCopyBlock = std::size_t{1} << 20;

std::filesystem::path DirectoryOf(const std::filesystem::path& path) {
  return path.has_parent_path() ? path.parent_path() : std::filesystem::path(".");
}

std::string TemporaryName(long process, int attempt) {
  return ".corvane-" + std::to_string(process) + "-" + std::to_string(attempt) + ".tmp";
}

// Whether `name` is that of a temporary whose process has ended.
bool IsDeadTemporary(const std::string& name) {
  long process = 0;
  int attempt = 0;
  if (std::sscanf(name.c_str(), ".corvane-%9ld-%9d", &process, &attempt) != 2) return false;
  return name == TemporaryName(process, attempt) && process > 0 &&
         kill(static_cast<pid_t>(process), 0) != 0 && errno == ESRCH;
}

void RemoveDeadTemporaries(const std::filesystem::path& directory) {
  std::error_code error;
  for (std::filesystem::directory_iterator entry(directory, error), end; !error && entry != end;
       entry.increment(error)) {
    if (IsDeadTemporary(entry->path().filename().string())) unlink(entry->path().c_str());
  }
}

}  // namespace

Replacement::Replacement(const std::filesystem::path& path) : target_(LinkTarget(path)) {
  if (ExamineTarget()) OpenTemporary();
}

Replacement::~Replacement() { Abandon(); }

void Replacement::Write(Bytes bytes) {
  while (error_ == 0 && !bytes.empty()) {
    const ssize_t written = write(descriptor_, bytes.data(), bytes.size());
    if (written > 0) {
      bytes = bytes.subspan(static_cast<std::size_t>(written));
    } else if (written == 0) {
      error_ = EIO;  // never for a regular file; without this the loop would not end
    } else if (errno != EINTR) {
      error_ = errno;
    }
  }
}

int Replacement::Commit() {
  if (error_ == 0) Flush(descriptor_);
  Close();
  if (error_ == 0 && std::rename(temporary_.c_str(), target_.c_str()) != 0) error_ = errno;
  if (error_ != 0) {
    Abandon();
    return error_;
  }
  temporary_.clear();
  FlushDirectory();
  return 0;
}

// False where the target is no file that may be replaced.
bool Replacement::ExamineTarget() {
  struct stat status {};
  if (stat(target_.c_str(), &status) != 0) {
    if (errno != ENOENT) error_ = errno;
    return error_ == 0;
  }
  if (S_ISDIR(status.st_mode)) {
    error_ = EISDIR;
  } else if (!S_ISREG(status.st_mode)) {
    error_ = EINVAL;
  } else if (faccessat(AT_FDCWD, target_.c_str(), W_OK, AT_EACCESS) != 0) {
    error_ = errno;  // a rename would replace a write-protected file all the same
  }
  exists_ = true;
  mode_ = status.st_mode & 07777;
  return error_ == 0;
}

void Replacement::OpenTemporary() {
  RemoveDeadTemporaries(DirectoryOf(target_));
  const mode_t mode = exists_ ? mode_ & 0777 : 0666;
  for (int attempt = 0; descriptor_ < 0; ++attempt) {
    temporary_ = DirectoryOf(target_) / TemporaryName(getpid(), attempt);
    descriptor_ = open(temporary_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, mode);
    if (descriptor_ >= 0 || errno == EINTR || errno == EEXIST) continue;
    error_ = errno;
    temporary_.clear();
    return;
  }
  KeepMode();
}

// Only where the umask or the file system gave other bits, since some file systems allow no change at all.
void Replacement::KeepMode() {
  struct stat status {};
  if (!exists_) return;
  if (fstat(descriptor_, &status) != 0 ||
      ((status.st_mode & 07777) != mode_ && fchmod(descriptor_, mode_) != 0)) {
    error_ = errno;
  }
}

void Replacement::Flush(int descriptor) {
  while (fsync(descriptor) != 0) {
    if (errno == EINTR) continue;
    error_ = errno;
    return;
  }
}

// Errors are ignored: the new file is in its place, only its name might not survive a power cut.
void Replacement::FlushDirectory() const {
  const int directory = open(DirectoryOf(target_).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (directory < 0) return;
  while (fsync(directory) != 0 && errno == EINTR) continue;
  close(directory);
}

// The descriptor is closed whatever close returns; an interrupted close loses nothing, the data are flushed.
void Replacement::Close() {
  if (descriptor_ < 0) return;
  if (close(descriptor_) != 0 && errno != EINTR && error_ == 0) error_ = errno;
  descriptor_ = -1;
}

void Replacement::Abandon() {
  Close();
  if (!temporary_.empty()) unlink(temporary_.c_str());
  temporary_.clear();
}

std::filesystem::path LinkTarget(const std::filesystem::path& path) {
  std::filesystem::path target = path;
  std::error_code error;
  for (int links = 0; links < kMostLinks; ++links) {
    const std::filesystem::path next = std::filesystem::read_symlink(target, error);
    if (error) return target;
    target = next.is_absolute() ? next : DirectoryOf(target) / next;
  }
  return path;
}

int SafeWrite(const std::filesystem::path& path, std::initializer_list<Bytes> parts) {
  Replacement file(path);
  for (const Bytes& part : parts) file.Write(part);
  return file.Commit();
}

int SafeCopy(const std::filesystem::path& source, const std::filesystem::path& target) {
  const InputFile input(source);
  if (input.Error() != 0) return input.Error();
  Replacement file(target);
  ByteBuffer block(
      static_cast<std::size_t>(std::min<std::int64_t>(input.Size(), static_cast<std::int64_t>(kCopyBlock))));
  for (std::int64_t done = 0; file.Error() == 0 && done < input.Size();) {
    const auto want = static_cast<std::size_t>(
        std::min<std::int64_t>(input.Size() - done, static_cast<std::int64_t>(block.size())));
    if (input.ReadAt(done, block.data(), want) != want) file.Fail(EIO);
    file.Write({block.data(), want});
    done += static_cast<std::int64_t>(want);
  }
  return file.Commit();
}

}  // namespace corvane
