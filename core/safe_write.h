#pragma once

#include <filesystem>
#include <initializer_list>

#include "core/files.h"

namespace corvane {

// The one way to write a file that a user names: follows symbolic links, refuses what is no regular file or
// may not be written, writes a temporary beside the target, flushes it, keeps the mode bits, renames it over
// the target and flushes the directory. Returns 0, or an errno with the old file untouched and nothing left
// behind. Only where flushing the directory is what failed does the new file, whole, stand already.
int SafeWrite(const std::filesystem::path& path, std::initializer_list<Bytes> parts);
// SafeWrite of another file's bytes.
int SafeCopy(const std::filesystem::path& source, const std::filesystem::path& target);

// The file that writing to `path` writes: `path` itself, or what the symbolic link there leads to in the end,
// which need not exist. `path` too where the links go in a circle.
std::filesystem::path LinkTarget(const std::filesystem::path& path);

}  // namespace corvane
