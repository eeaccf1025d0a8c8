#pragma once

#include "core/modcv.h"
#include "platform/platform.h"

namespace corvane {

// Start values, settings with their defaults, clean-up of AppDir. `cv.AppDir` is set by the caller.
void StartUp(ModCV& cv, Platform& os);

// The settings that the preferences keep, and the directories.
void SavePreferences(const ModCV& cv, Platform& os);
void SaveDirectories(const ModCV& cv, Platform& os);

}  // namespace corvane
