#include "tests/support/test_files.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

namespace corvane {

std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) {
    ADD_FAILURE() << "no file " << path;
    return "";
  }
  return {std::istreambuf_iterator<char>(file), {}};
}

void WriteFile(const std::filesystem::path& path, std::string_view bytes) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  file.close();
  if (!file) ADD_FAILURE() << "cannot write " << path;
}

TemporaryFolder::TemporaryFolder() {
  std::string name = (std::filesystem::temp_directory_path() / "corvane-test-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
  path_ = name;
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  // A test may have taken the right to write away.
  std::filesystem::permissions(path_, std::filesystem::perms::owner_all, ignored);
  std::filesystem::remove_all(path_, ignored);
}

std::filesystem::path AssetFolder() { return CORVANE_ASSET_FOLDER; }

}  // namespace corvane
