#pragma once

#include <string>

#include "platform/platform.h"

namespace corvane {

// The user's settings: application "Corvane_2", section "Startup", every value a text.

// Whatever is wrong with the file, a value falls back; nothing waits.
std::string StoredSetting(const std::string& key, const std::string& fallback);

// Replaces the file by one with these values; all else in it stays. 0, or an errno with the old file
// untouched.
int StoreSettings(const Settings& values);

}  // namespace corvane
