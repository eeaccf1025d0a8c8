#pragma once

#include <sys/types.h>

#include <filesystem>
#include <initializer_list>

#include "base/files.h"

namespace corvane {

// The one way to write a file that a user names. Follows symbolic links, refuses anything but a regular file
// that may be written, writes a temporary beside the target, flushes it, keeps the mode bits, renames it over
// the target and flushes the directory. Temporaries left there by killed runs are removed. Returns 0 with the
// new file whole in its place, or an errno with the old file untouched and nothing left behind.
int SafeWrite(const std::filesystem::path& path, std::initializer_list<Bytes> parts);
// SafeWrite of another file's bytes.
int SafeCopy(const std::filesystem::path& source, const std::filesystem::path& target);

// A SafeWrite of content that comes in parts: they are collected in a temporary beside the target until
// `Commit` puts it in its place. Without `Commit` the old file stays.
class Replacement {
 public:
  explicit Replacement(const std::filesystem::path& path);
  ~Replacement();
  Replacement(const Replacement&) = delete;
  Replacement& operator=(const Replacement&) = delete;

  // The first fault so far, an errno; after one nothing more is written.
  int Error() const { return error_; }
  void Fail(int error) { error_ = error; }
  void Write(Bytes bytes);
  // For content that other code writes: the file it writes instead of the target.
  const std::filesystem::path& Temporary() const { return temporary_; }
  // Returns what SafeWrite does.
  int Commit();

 private:
  bool ExamineTarget();
  void OpenTemporary();
  void KeepMode();
  void Flush(int descriptor);
  void FlushDirectory() const;
  void Close();
  void Abandon();

  std::filesystem::path target_;
  std::filesystem::path temporary_;
  int descriptor_ = -1;
  int error_ = 0;
  bool exists_ = false;
  mode_t mode_ = 0;
};

// The file that a write to `path` changes: `path` itself, or what the symbolic links there finally lead to,
// which need not exist. `path` too where the links form a circle.
std::filesystem::path LinkTarget(const std::filesystem::path& path);

}  // namespace corvane
