#pragma once

#include <string>

namespace corvane {

// The user's settings: application "Corvane_2", section "Startup", every value a text. Whatever is wrong with
// the file, a value falls back and a save is given up; nothing waits for long.
std::string StoredSetting(const std::string& key, const std::string& fallback);
void StoreSetting(const std::string& key, const std::string& value);

// Removes the lock file that a killed run left beside the settings. Only for the one running program.
void RemoveStaleSettingsLock();

}  // namespace corvane
