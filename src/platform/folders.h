// Folders: who may write in them, and which one the system gives to settings.
#pragma once

#include <string>
#include <string_view>

namespace platform {

// In a user's home, for the settings of all programs, where the system names no other.
inline constexpr std::u16string_view kSettingsFolder = u".config";

// A folder stands there and this user may make files in it.
bool MayMakeFilesIn(std::u16string_view folder);
// The folder that holds the user's settings of all programs; it need not exist yet. False: the
// system names none.
bool ConfigurationFolder(std::u16string& path);

}  // namespace platform
