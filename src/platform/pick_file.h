// The system's dialogs for a file to open and a name to save under.
#pragma once

#include <string>

namespace platform {

struct FileFilter {
  const char16_t* words = u"";
  const char16_t* patterns = u"";  // parted by ";", for example "*.NC;*.TAP"
};

struct PickFileSpec {
  const char16_t* title = u"";
  const FileFilter* filters = nullptr;
  int filterCount = 0;
  const char16_t* initialName = u"";
  // Where the dialog begins, unless the name has a folder of its own. Empty, or not there: as the
  // system has it.
  const char16_t* folder = u"";
  const char16_t* defaultExtension = u"";  // added to a name without one, save only
  int capacity = 520;  // units with the terminator; a longer path is refused as a cancel
};

// Names are shown whole. The file must exist. False: cancelled, `path` untouched.
bool PickFileToOpen(const PickFileSpec& spec, std::u16string& path);
// Asks before an existing file is taken.
bool PickFileToSave(const PickFileSpec& spec, std::u16string& path);

}  // namespace platform
