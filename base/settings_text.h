#pragma once

#include <string>
#include <string_view>

#include "platform/platform.h"

namespace corvane {

// The text of a settings file, sections of "key=value" lines as QSettings reads them, with these values in
// `section`. Every other line stays as it is.
std::string WithSettings(std::string_view file, const std::string& section, const Settings& values);

}  // namespace corvane
