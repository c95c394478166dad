// Files of programs in the dialogs that ask for one: their patterns and their end.
#pragma once

#include "platform/pick_file.h"

namespace morva {

inline constexpr char16_t kProgramEnd[] = u".NC";  // of a new program's name
inline constexpr char16_t kProgramPatterns[] = u"*.NC;*.TAP;*.GCODE";
inline constexpr char16_t kAllPatterns[] = u"*.*";

inline constexpr platform::FileFilter kTextFiles{u"Text (*.TXT)", u"*.TXT"};
inline constexpr platform::FileFilter kAllFiles{u"All files (*.*)", kAllPatterns};

}  // namespace morva
