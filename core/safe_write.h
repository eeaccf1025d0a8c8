#pragma once

#include <filesystem>
#include <initializer_list>

#include "core/files.h"

namespace corvane {

// The one way to write a file that a user names: follows a symbolic link, refuses what is no regular file,
// writes a temporary beside the target, flushes it, keeps the mode bits, renames it over the target and
// flushes the directory. Returns 0, or an errno with the old file untouched and nothing left behind.
int SafeWrite(const std::filesystem::path& path, std::initializer_list<Bytes> parts);
// SafeWrite of another file's bytes.
int SafeCopy(const std::filesystem::path& source, const std::filesystem::path& target);

}  // namespace corvane
