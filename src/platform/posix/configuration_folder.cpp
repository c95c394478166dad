#include "platform/posix/configuration_folder.h"

#include <string_view>

#include "platform/file.h"
#include "platform/folders.h"

namespace platform {
namespace {

// A relative path would mean another folder with every place that the program is started from,
// and one that is no UTF-8 would come back as another name.
bool AbsolutePath(const char* bytes, std::u16string& path) {
  if (bytes == nullptr || bytes[0] != '/') return false;
  std::u16string text = FromUtf8(bytes);
  if (ToUtf8(text) != std::string_view(bytes)) return false;
  while (text.size() > 1 && text.back() == u'/') text.pop_back();
  path = text;
  return true;
}

}  // namespace

bool ConfigurationFolderFrom(const char* configHome, const char* home, std::u16string& path) {
  if (AbsolutePath(configHome, path)) return true;
  if (!AbsolutePath(home, path)) return false;
  if (path.back() != u'/') path += u'/';
  path += kSettingsFolder;
  return true;
}

}  // namespace platform
