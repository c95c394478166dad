// Any settings file can be read and changed: a value that is set is found again, no other key
// changes, setting it a second time changes nothing, and every line goes on as it stood.
#include <algorithm>
#include <string>
#include <vector>

#include "fuzz/fuzz.h"
#include "platform/file.h"
#include "platform/profile.h"

namespace {

using fuzz::Check;

struct Name {
  const char16_t* section;
  const char16_t* key;
};
constexpr Name kNames[] = {
    {u"DNC", u"Port"}, {u"DNC", u"Baud"}, {u"Tool0", u"Name"}, {u"Simulator", u"GridColor"}};

std::u16string Find(const std::u16string& file, const Name& name) {
  std::u16string value;
  return platform::FindInProfile(file, name.section, name.key, value) ? value : u"\uFFFF none";
}

std::vector<std::u16string> LinesOf(const std::u16string& file) {
  std::vector<std::u16string> lines(1);
  for (const char16_t unit : file) {
    if (unit == u'\n') {
      lines.emplace_back();
    } else {
      lines.back() += unit;
    }
  }
  for (std::u16string& line : lines) {
    if (!line.empty() && line.back() == u'\r') line.pop_back();
  }
  return lines;
}

// At most one line of `before` is missing behind the change: the one that was set.
bool KeepsLines(const std::u16string& before, const std::u16string& after) {
  std::vector<std::u16string> old = LinesOf(before);
  std::vector<std::u16string> left = LinesOf(after);
  std::sort(old.begin(), old.end());
  std::sort(left.begin(), left.end());
  std::vector<std::u16string> missing;
  std::set_difference(old.begin(), old.end(), left.begin(), left.end(),
                      std::back_inserter(missing));
  return missing.size() <= 1;
}

void CheckChange(const std::u16string& file, const Name& name, const std::u16string& value) {
  const std::u16string after = platform::ChangeInProfile(file, name.section, name.key, value);
  const std::u16string line = value.substr(0, value.find_first_of(std::u16string(u"\r\n\0", 3)));
  Check(Find(after, name) == line, "a value is found as it was set");
  for (const Name& other : kNames) {
    if (&other != &name) Check(Find(after, other) == Find(file, other), "others stay");
  }
  Check(platform::ChangeInProfile(after, name.section, name.key, value) == after,
        "setting it again changes nothing");
  Check(KeepsLines(file, after), "lines go on as they stood");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  std::u16string file = platform::FromUtf8(bytes);
  // A mark at the start is read over and not written again.
  while (!file.empty() && file[0] == 0xFEFF) file.erase(0, 1);
  const std::u16string value = file.substr(0, size % 40);
  CheckChange(file, kNames[size % 4], value);
  CheckChange(file, kNames[size / 4 % 4], u"COM1");
  return 0;
}
