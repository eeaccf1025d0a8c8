#pragma once

#include "platform/platform.h"

namespace corvane {

// The file dialogs of Qt's own making. A directory that is gone is replaced by `fallback`.
FileChoice ShowOpenDialog(const FileRequest& request, const std::filesystem::path& fallback);
// A name without an extension gets the first one of the chosen filter, the request's default where the filter
// has it too; then the question about an existing file is asked.
FileChoice ShowSaveDialog(const FileRequest& request, const std::filesystem::path& fallback);

}  // namespace corvane
