#include "documents/file_names.h"

#include "app/app_state.h"
#include "platform/file.h"

namespace morva {

namespace {
// With three bytes for each there is room behind them for numbers and the ends of companions.
constexpr std::size_t kShortTitleUnits = 60;
}  // namespace

std::u16string CleanedTitle(std::u16string_view title) {
  std::u16string name(title);
  for (char16_t& unit : name) {
    if (std::u16string_view(u"\"*/:<>?\\|").find(unit) != std::u16string_view::npos) unit = u'_';
  }
  return name;
}

std::u16string ShortTitle(std::u16string_view title) {
  std::u16string name = CleanedTitle(title.substr(0, kShortTitleUnits));
  // No half of a pair may stand at the end.
  if (!name.empty() && name.back() >= 0xD800 && name.back() <= 0xDBFF) name.pop_back();
  return name;
}

std::u16string PathInData(std::u16string_view folder, std::u16string_view name) {
  std::u16string path = app.dataDir;
  path += platform::PathSeparator();
  path += folder;
  path += platform::PathSeparator();
  path += name;
  return path;
}

}  // namespace morva
