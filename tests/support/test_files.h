#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace corvane {

// A file's bytes. A missing file fails the test and reads as "".
std::string ReadFile(const std::filesystem::path& path);
void WriteFile(const std::filesystem::path& path, std::string_view bytes);

// A folder that exists as long as the object.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  const std::filesystem::path& Path() const { return path_; }

 private:
  std::filesystem::path path_;
};

// The folder with the files that ship with the program.
std::filesystem::path AssetFolder();

}  // namespace corvane
