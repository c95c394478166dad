#include "library/macros.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

#include "app/outlets.h"
#include "app/profile_keys.h"
#include "documents/marker_lines.h"
#include "library/file_marks.h"
#include "library/kept_text.h"
#include "library/saved_section.h"
#include "platform/file.h"
#include "platform/profile.h"
#include "platform/same_units.h"
#include "text/codetext.h"

namespace morva {

MacroLibrary macroLibrary;

namespace {

FileMarks marks;
SavedSection<MacroRecord> saved[kMaxMacros];
constexpr char16_t kTable[] = u"CustomMacros";
constexpr char16_t kRename[] = u"Rename Macro";

std::u16string SectionOf(int index) { return u"CustomMacro" + IntegerText(index); }

bool IsMacro(int index) { return index >= 0 && index < macroLibrary.count; }

void SetName(MacroRecord& macro, std::u16string_view name) {
  CopyBounded(macro.name, kMacroNameUnits, KeptText(name, kMacroNameUnits));
}

void SetText(MacroRecord& macro, std::u16string code, std::u16string longLine = {}) {
  static std::uint64_t lastText = 0;
  macro.code = std::move(code);
  macro.longLine = std::move(longLine);
  macro.text = ++lastText;
}

void LoadMacro(int index, MacroRecord& macro) {
  const std::u16string section = SectionOf(index);
  SetName(macro, platform::ReadProfile(section, u"Name", u"Custom Macro"));
  std::u16string line = platform::ReadProfile(section, u"Code", u"");
  std::u16string code = UnescapedMacro(std::u16string_view(line).substr(0, kMacroKeyUnits - 1));
  SetText(macro, std::move(code), line.size() >= kMacroKeyUnits ? std::move(line) : u"");
}

void TellLong() {
  for (int i = 0; i < macroLibrary.count; ++i) {
    const MacroRecord& macro = macroLibrary.macros[i];
    if (macro.longLine.empty()) continue;
    AppendOutput(u"Macro \"" + std::u16string(macro.name) +
                 u"\" is longer in MORVA.ini than the library reads. Its end is left out here and "
                 u"stays in the file.");
  }
}

// As UTF-8, in which the file keeps it.
std::string StateOf(const MacroRecord& macro) {
  return platform::ToUtf8(macro.name) + '\0' +
         platform::ToUtf8(macro.longLine.empty() ? macro.code : macro.longLine);
}

std::string StateOf(const MacroLibrary& library) {
  std::string states;
  for (int i = 0; i < library.count; ++i) AddState(states, HashBytes(StateOf(library.macros[i])));
  return states;
}

void WriteMacro(const std::u16string& section, const MacroRecord& macro) {
  platform::WriteProfile(section, u"Name", macro.name);
  platform::WriteProfile(section, u"Code",
                         macro.longLine.empty() ? EscapedMacro(macro.code) : macro.longLine);
}

constexpr RecordWriter<MacroRecord> kWriter{WriteMacro, StateOf};

// False: the file has no such library, or cannot be read.
bool ReadMacros(MacroLibrary& library) {
  library = MacroLibrary();
  platform::BeginProfileChange();  // one reading of the file for all keys
  const bool there = !platform::ReadProfile(kTable, u"Count", u"").empty();
  library.count = std::clamp(ProfileReadInteger(kTable, u"Count", 0), 0, kMaxMacros);
  for (int i = 0; i < library.count; ++i) LoadMacro(i, library.macros[i]);
  platform::EndProfileChange();
  return there;
}

// The name with an end that tells it from others, as long as a name may be.
std::u16string NameWithEnd(std::u16string_view name, std::u16string_view end) {
  return KeptText(name, kMacroNameUnits - static_cast<int>(end.size())) + std::u16string(end);
}

std::u16string NameOfCopy(std::u16string_view name) {
  std::u16string copy = NameWithEnd(name, u" Copy");
  for (int i = 2; i <= kMaxMacroCopies && FindMacro(copy) >= 0; ++i) {
    copy = NameWithEnd(name, u" Copy " + IntegerText(i));
  }
  return copy;
}

}  // namespace

bool MacroRecord::operator==(const MacroRecord& other) const {
  return std::ranges::equal(name, other.name) &&
         (text == other.text ||
          (platform::SameUnits(code, other.code) && platform::SameUnits(longLine, other.longLine)));
}

void LoadMacroLibrary() {
  ReadMacros(macroLibrary);
  ReadState(marks, StateOf(macroLibrary));
  TellLong();
}

bool FollowMacroFile() {
  MacroLibrary now;
  if (!ReadMacros(now)) return false;
  const std::string state = StateOf(now);
  if (KnowsState(marks, state)) return false;
  macroLibrary = std::move(now);
  ReadState(marks, state);
  TellReadAgain(u"macro library");
  TellLong();
  return true;
}

bool SaveMacroLibrary(void (*told)(bool saved)) {
  platform::BeginProfileChange();
  platform::WriteProfile(kTable, u"Count", IntegerText(macroLibrary.count));
  std::string states;
  for (int i = 0; i < macroLibrary.count; ++i) {
    AddState(states, SaveSection(saved[i], SectionOf(i), macroLibrary.macros[i], kWriter));
  }
  HandedState(marks, states);
  return EndLibraryChange(told, [](bool written) { WrittenState(marks, written); });
}

void ResetMacroLibrary() {
  macroLibrary = MacroLibrary();
  marks = FileMarks();
  std::ranges::fill(saved, SavedSection<MacroRecord>());
}

std::u16string EscapedMacro(std::u16string_view code) {
  std::u16string line;
  line.resize(2 * code.size());
  char16_t* to = line.data();
  for (const char16_t c : code) {
    const char16_t escape = c == u'\\' ? u'\\' : c == u'\r' ? u'r' : c == u'\n' ? u'n' : u'\0';
    if (escape) *to++ = u'\\';
    *to++ = escape ? escape : c;
  }
  line.resize(static_cast<std::size_t>(to - line.data()));
  return line;
}

std::u16string UnescapedMacro(std::u16string_view line) {
  std::u16string code;
  code.reserve(line.size());
  for (std::size_t i = 0; i < line.size(); ++i) {
    const char16_t next = line[i] == u'\\' && i + 1 < line.size() ? line[i + 1] : u'\0';
    const bool escape = next == u'\\' || next == u'n' || next == u'r';
    if (escape) ++i;
    code += next == u'n' ? u'\n' : next == u'r' ? u'\r' : line[i];
  }
  return code;
}

int FindMacro(std::u16string_view name, int except) {
  const std::u16string kept = KeptText(name, kMacroNameUnits);
  for (int i = 0; i < macroLibrary.count; ++i) {
    if (i != except && SameFolded(macroLibrary.macros[i].name, kept)) return i;
  }
  return -1;
}

int FindSameMacro(const MacroRecord& macro) {
  const int index = FindMacro(macro.name);
  return index >= 0 && macroLibrary.macros[index].code == macro.code ? index : -1;
}

int PutMacro(std::u16string_view name, std::u16string_view code) {
  int index = FindMacro(name);
  if (index < 0) {
    if (macroLibrary.count >= kMaxMacros) return -1;
    index = macroLibrary.count++;
  }
  SetName(macroLibrary.macros[index], name);
  std::u16string kept(code);
  std::erase(kept, u'\0');
  SetText(macroLibrary.macros[index], std::move(kept));
  return index;
}

int DuplicateMacro(int index) {
  if (!IsMacro(index) || macroLibrary.count >= kMaxMacros) return -1;
  const std::u16string name = NameOfCopy(macroLibrary.macros[index].name);
  MacroRecord& copy = macroLibrary.macros[macroLibrary.count];
  copy = macroLibrary.macros[index];
  SetName(copy, name);
  return macroLibrary.count++;
}

bool RenameMacro(int index, std::u16string_view name) {
  if (!IsMacro(index)) return false;
  SetName(macroLibrary.macros[index], name);
  return true;
}

bool RemoveMacro(int index) {
  if (!IsMacro(index)) return false;
  for (int i = index; i + 1 < macroLibrary.count; ++i) {
    macroLibrary.macros[i] = std::move(macroLibrary.macros[i + 1]);
  }
  macroLibrary.macros[--macroLibrary.count] = MacroRecord();
  return true;
}

std::u16string MacroToInsert(std::u16string_view code, bool& lacksCode) {
  std::u16string text;
  lacksCode = false;
  for (std::size_t at = 0; at < code.size();) {
    const std::size_t next = PastLineEnd(code, LineEndFrom(code, at));
    if (!StartsAt(code, at, kMarkerHead)) text += code.substr(at, next - at);
    lacksCode = lacksCode || StartsAt(code, at, kDisabledMark);
    at = next;
  }
  return text;
}

bool IsBlankCode(std::u16string_view code) { return code.find_first_not_of(u"\r\n") == code.npos; }

MacroRefusal CheckMacro(std::u16string_view name, std::u16string_view code) {
  if (IsBlankCode(code)) {
    return {kSaveMacroTitle, u"The active program is blank.", platform::BoxIcon::Information};
  }
  if (code.size() > kMaxMacroCode) {
    return {u"Custom Macros",
            u"This program is too large for the custom macro library in this build."};
  }
  return FindMacro(name) < 0 ? CheckMacroRoom() : MacroRefusal();
}

MacroRefusal CheckMacroRoom() {
  if (macroLibrary.count < kMaxMacros) return {};
  return {u"Custom Macros", u"The custom macro library is full."};
}

MacroRefusal CheckMacroName(int index, std::u16string_view name) {
  if (name.empty()) {
    return {kRename, u"Enter the new macro name in the name box first.",
            platform::BoxIcon::Information};
  }
  if (FindMacro(name, index) >= 0)
    return {kRename, u"Another custom macro already uses that name."};
  return {};
}

}  // namespace morva
