#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "platform/platform.h"

namespace corvane {

// The program's own folder: its shipped files and every working file. Locked for this run; the lock goes with
// the process, however it ends.
class AppDir {
 public:
  enum class State { Ready, AlreadyRunning, NotWritable };

  // Takes `program`, the folder of the program. Where that can't be written or belongs to an installed copy
  // it takes `data`, the user's own folder, makes it and copies the installed files to it, again after an
  // update. Where neither can be taken no file is touched.
  AppDir(const std::filesystem::path& program, const std::filesystem::path& data);
  ~AppDir();
  AppDir(const AppDir&) = delete;
  AppDir& operator=(const AppDir&) = delete;

  State GetState() const { return state_; }
  // Says why the program can't start; true when it can.
  bool MayStart(Platform& os) const;
  // Makes the folder and its shipped files again where they have vanished.
  void Refill();
  // The folder taken, or the last one tried.
  const std::filesystem::path& Path() const { return path_; }
  // The folder of the sample pictures; empty where there is none.
  const std::filesystem::path& Samples() const { return samples_; }

 private:
  bool Take(const std::filesystem::path& folder);

  std::filesystem::path path_;
  std::filesystem::path installed_;
  bool usersOwn_ = false;
  std::filesystem::path samples_;
  State state_ = State::NotWritable;
  int lock_ = -1;
};

// True when `bytes` are what a shipped file of this name must hold: length and fields.
bool IsIntact(const std::string& name, const std::string& bytes);

}  // namespace corvane
