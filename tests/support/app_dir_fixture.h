#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "core/modcv.h"
#include "tests/support/fake_desk.h"
#include "tests/support/scripted_platform.h"
#include "tests/support/test_files.h"

namespace corvane {

// A fresh store with an AppDir of its own that holds the shipped files. Everything is removed afterwards.
class AppDirFixture : public testing::Test {
 protected:
  AppDirFixture();

  // A path in the user's folder, where DefaultDir, SaveDir and the documents directory point at first.
  std::filesystem::path UserFile(const std::string& name) const { return folder.Path() / "user" / name; }
  // Writes a file there.
  std::filesystem::path MakeUserFile(const std::string& name, std::string_view bytes) const;
  // Opens an image from there; the slot it fills.
  int OpenUserImage(const std::string& name, std::string_view bytes);
  std::filesystem::path AppFile(const std::string& name) const { return cv.AppDir / name; }
  // Names in AppDir that are not shipped, sorted.
  std::vector<std::string> WorkingFiles() const;
  // All that lasts of the store and of the working files, for comparing before and after.
  std::string LastingState() const;
  // Runs a command that must change the files or the picture, and that only while the cursor is busy.
  void ExpectHourglass(const std::function<void()>& command);

  TemporaryFolder folder;  // first: it outlives the store
  ModCV cv;
  ScriptedPlatform os;
  FakeDesk desk;
};

}  // namespace corvane
