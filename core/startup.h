#pragma once

#include "core/modcv.h"
#include "platform/platform.h"

namespace corvane {

// Sets start values, reads the settings or their defaults, cleans AppDir up. The caller has set `cv.AppDir`,
// and `cv.DefaultDir` where a user who never opened a file finds something to open.
void StartUp(ModCV& cv, Platform& os);

// Saves the settings that the preferences keep; false after a message.
bool SavePreferences(const ModCV& cv, Platform& os);
// Saves the directories. Failures are ignored: the program is about to end.
void SaveDirectories(const ModCV& cv, Platform& os);

}  // namespace corvane
