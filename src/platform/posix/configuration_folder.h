// Where the environment of a user puts the settings of programs.
#pragma once

#include <string>

namespace platform {

// `configHome` and `home` are the values of XDG_CONFIG_HOME and HOME, null where a variable is not
// set. The first serves where it is an absolute path, else ".config" in the second. False: neither
// is an absolute path in UTF-8; `path` is as it was.
bool ConfigurationFolderFrom(const char* configHome, const char* home, std::u16string& path);

}  // namespace platform
