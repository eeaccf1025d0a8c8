#pragma once

#include "core/modcv.h"
#include "platform/platform.h"

namespace corvane {

// Start values, settings with their defaults, clean-up of AppDir. The caller has set `cv.AppDir`, and
// `cv.DefaultDir` where a user who never opened a file finds something to open.
void StartUp(ModCV& cv, Platform& os);

// Saves the settings that the preferences keep; false after a message.
bool SavePreferences(const ModCV& cv, Platform& os);
// Saves the directories; what keeps them from being saved is no concern at the program's end.
void SaveDirectories(const ModCV& cv, Platform& os);

}  // namespace corvane
