#include "simulator/program_finder.h"

#include <algorithm>
#include <cstddef>
#include <deque>
#include <string>
#include <utility>

#include "app/app_state.h"
#include "app/limits.h"
#include "app/outlets.h"
#include "documents/file_kinds.h"
#include "documents/file_text.h"
#include "documents/tab_table.h"
#include "platform/file.h"
#include "text/codetext.h"

namespace morva {

namespace {

// What was looked for in a folder. A deque keeps its texts in place while it grows.
struct Sought {
  std::u16string folder;
  std::int32_t number = 0;
  bool found = false;
  std::u16string text;
};
std::deque<Sought> sought;

// Tried in small letters too.
constexpr std::u16string_view kExtensions[] = {kProgramEnd, u".TXT", u".TAP", u""};
constexpr std::size_t kLeastDigits[] = {1, 4, 5};  // of the number in a file's name

std::u16string FolderOfProgram() {
  const ProgramTab* tab = ActiveTab();
  const std::u16string_view path = tab ? tab->path : u"";
  return std::u16string(path.substr(0, path.size() - BareFileName(path).size()));
}

std::u16string_view ExtensionOfProgram() {
  const ProgramTab* tab = ActiveTab();
  const std::u16string_view name = tab ? BareFileName(tab->path) : u"";
  const std::size_t dot = name.rfind(u'.');
  return dot == name.npos ? std::u16string_view() : name.substr(dot);
}

std::u16string WithZeros(std::int32_t number, std::size_t digits) {
  std::u16string text = IntegerText(number);
  if (text.size() < digits) text.insert(0, digits - text.size(), u'0');
  return text;
}

bool ReadProgram(const std::u16string& path, std::u16string& text) {
  if (!platform::FileExists(path)) return false;
  std::string bytes;
  return ReadWholeFile(path, bytes) && TakeProgram(bytes, text);
}

std::u16string InSmallLetters(std::u16string_view text) {
  std::u16string small(text);
  for (char16_t& c : small) {
    if (c >= u'A' && c <= u'Z') c = static_cast<char16_t>(c - u'A' + u'a');
  }
  return small;
}

bool ReadNamed(const std::u16string& stem, std::u16string& text) {
  if (ReadProgram(stem + std::u16string(ExtensionOfProgram()), text)) return true;
  return std::any_of(std::begin(kExtensions), std::end(kExtensions), [&](auto extension) {
    return ReadProgram(stem + std::u16string(extension), text) ||
           ReadProgram(stem + InSmallLetters(extension), text);
  });
}

bool ReadBeside(const std::u16string& folder, std::int32_t number, std::u16string& text) {
  for (const std::size_t digits : kLeastDigits) {
    const std::u16string name = WithZeros(number, digits);
    for (const char16_t* letter : {u"O", u"o", u""}) {
      if (ReadNamed(folder + letter + name, text)) return true;
    }
  }
  return false;
}

// Behind "%", blanks and comments; a "%" that a caller meets would end its run.
std::size_t FirstCode(std::u16string_view text) {
  bool comment = false;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const char16_t c = text[at];
    if (c == 0) return text.size();
    if (c == u'(') comment = true;
    if (!comment && c == u';') at = std::min(text.find(u'\n', at), text.size() - 1);
    if (!comment && c > u' ' && c != u'%' && c != u';') return at;
    if (c == u')') comment = false;
  }
  return text.size();
}

bool FindInTabs(std::int32_t number, std::u16string_view& text) {
  for (int i = 0; i < app.tabCount; ++i) {
    if (i == app.activeTab || NumberOfProgram(tabs[i].text) != number) continue;
    text = tabs[i].text;
    return true;
  }
  return false;
}

}  // namespace

std::int32_t FindProgramBeside(std::int32_t number, std::u16string_view& text) {
  if (FindInTabs(number, text)) {
    text.remove_prefix(FirstCode(text));
    return 1;
  }
  const std::u16string folder = FolderOfProgram();
  if (folder.empty()) return 0;
  const auto known = std::find_if(sought.begin(), sought.end(), [&](const Sought& row) {
    return row.number == number && row.folder == folder;
  });
  if (known == sought.end()) {
    if (sought.size() == kMaxProgramsSought) return 0;
    Sought row{folder, number, false, {}};
    row.found = ReadBeside(folder, number, row.text);
    sought.push_back(std::move(row));
  }
  const Sought& row = known == sought.end() ? sought.back() : *known;
  if (!row.found) return 0;
  text = row.text;
  text.remove_prefix(FirstCode(text));
  return 1;
}

void ForgetFoundPrograms() { sought.clear(); }

std::int32_t NumberOfProgram(std::u16string_view text) {
  constexpr std::int32_t kNone = -1;
  const std::u16string_view code = text.substr(FirstCode(text));
  if (code.size() < 2 || FoldUpper(code[0]) != u'O' || !IsDigit(code[1])) return kNone;
  return ParseInteger(code.substr(1, 6), kNone);
}

}  // namespace morva
