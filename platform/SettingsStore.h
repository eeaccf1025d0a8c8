#pragma once

#include <string>

#include "platform/platform.h"

namespace corvane {

// The user's settings: application "Corvane_2", section "Startup", every value a text.

// A value that cannot be read, for whatever reason, is `fallback`; reading never blocks.
std::string StoredSetting(const std::string& key, const std::string& fallback);

// Replaces the file by one with these values and all else that it held. Returns 0, or an errno with the old
// file untouched.
int StoreSettings(const Settings& values);

}  // namespace corvane
