// The settings file: read by line, changed as a list of sections, written back once.
//
// Everything here works on the bytes of the file, so that a line which nobody asked to change
// goes back exactly as it was, whatever it holds. Names compare without the case of A to Z.

#include "platform/profile.h"

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "platform/atomic_file.h"
#include "platform/file.h"
#include "platform/limits.h"

namespace platform {
namespace {

constexpr std::string_view kMark = "\xEF\xBB\xBF";

char Folded(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

bool SameName(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (Folded(a[i]) != Folded(b[i])) return false;
  }
  return true;
}

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r'; }

std::string_view Trimmed(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

// The next line with its line end, taken off the front of `rest`.
std::string_view TakeLine(std::string_view& rest) {
  const std::size_t end = rest.find('\n');
  const std::string_view line = rest.substr(0, end == rest.npos ? rest.size() : end + 1);
  rest.remove_prefix(line.size());
  return line;
}

std::string_view WithoutLineEnd(std::string_view line) {
  if (!line.empty() && line.back() == '\n') line.remove_suffix(1);
  return line;
}

// Whether the line is a header, and the name in it.
bool ReadHeader(std::string_view line, std::string_view& name) {
  line = Trimmed(WithoutLineEnd(line));
  if (line.empty() || line.front() != '[') return false;
  const std::size_t close = line.find(']');
  if (close == line.npos) return false;
  name = Trimmed(line.substr(1, close - 1));
  return true;
}

bool IsComment(std::string_view line) {
  line = Trimmed(line);
  return !line.empty() && (line.front() == ';' || line.front() == '#');
}

// Whether the line sets `key`, and its value without outer blanks and one pair of quotes.
bool ReadEntry(std::string_view line, std::string_view key, std::string_view& value) {
  line = WithoutLineEnd(line);
  const std::size_t equals = line.find('=');
  if (equals == line.npos || IsComment(line)) return false;
  if (!SameName(Trimmed(line.substr(0, equals)), key)) return false;
  value = Trimmed(line.substr(equals + 1));
  if (value.size() >= 2 && value.front() == '"' && value.back() == '"') {
    value.remove_prefix(1);
    value.remove_suffix(1);
  }
  return true;
}

std::string_view WithoutMark(std::string_view file) {
  return file.substr(0, kMark.size()) == kMark ? file.substr(kMark.size()) : file;
}

bool FindEntry(std::string_view file, std::string_view section, std::string_view key,
               std::string_view& value) {
  bool inside = false;
  std::string_view rest = WithoutMark(file);
  while (!rest.empty()) {
    const std::string_view line = TakeLine(rest);
    std::string_view name;
    if (ReadHeader(line, name)) {
      inside = SameName(name, section);
    } else if (inside && ReadEntry(line, key, value)) {
      return true;
    }
  }
  return false;
}

// A section as it stands: the header line and the lines up to the next header. What precedes
// the first header is a section without a header.
struct Section {
  std::string name;
  std::vector<std::string> lines;
};

std::vector<Section> Parse(std::string_view file) {
  std::vector<Section> sections(1);
  std::string_view rest = WithoutMark(file);
  while (!rest.empty()) {
    const std::string_view line = TakeLine(rest);
    std::string_view name;
    if (ReadHeader(line, name)) {
      sections.emplace_back();
      sections.back().name = name;
    }
    sections.back().lines.emplace_back(line);
  }
  return sections;
}

std::string Written(const std::vector<Section>& sections) {
  std::string file;
  for (const Section& section : sections) {
    for (const std::string& line : section.lines) {
      if (!file.empty() && file.back() != '\n') file += "\r\n";
      file += line;
    }
  }
  return file;
}

// A line end would begin a line of its own, so that a value ends there. Blanks and quotes at
// the outside are taken off again on reading and go inside a further pair of quotes.
std::string EntryLine(std::string_view key, std::string_view value) {
  value = value.substr(0, value.find_first_of(std::string_view("\r\n\0", 3)));
  const bool blanks = value != Trimmed(value);
  const bool quotes = value.size() >= 2 && value.front() == '"' && value.back() == '"';
  std::string line(key);
  line += '=';
  if (blanks || quotes) line += '"';
  line += value;
  if (blanks || quotes) line += '"';
  line += "\r\n";
  return line;
}

// Behind the last line of the section that is not blank.
void InsertEntry(Section& section, std::string line) {
  std::size_t at = section.lines.size();
  while (at > 1 && Trimmed(WithoutLineEnd(section.lines[at - 1])).empty()) --at;
  section.lines.insert(section.lines.begin() + static_cast<std::ptrdiff_t>(at), std::move(line));
}

void ChangeEntry(std::vector<Section>& sections, std::string_view name, std::string_view key,
                 std::string_view value) {
  Section* first = nullptr;
  for (std::size_t i = 1; i < sections.size(); ++i) {
    if (!SameName(sections[i].name, name)) continue;
    if (!first) first = &sections[i];
    for (std::size_t row = 1; row < sections[i].lines.size(); ++row) {
      std::string_view old;
      if (!ReadEntry(sections[i].lines[row], key, old)) continue;
      sections[i].lines[row] = EntryLine(key, value);
      return;
    }
  }
  if (!first) {
    sections.emplace_back();
    first = &sections.back();
    first->name = name;
    first->lines.push_back("[" + std::string(name) + "]\r\n");
  }
  // The line that ended the file may have had no line end.
  if (first->lines.back().back() != '\n') first->lines.back() += "\r\n";
  InsertEntry(*first, EntryLine(key, value));
}

// The change under way. Reading looks into it, so that what was set can be read at once.
struct Change {
  int depth = 0;
  bool readable = false;
  bool touched = false;  // something was set or erased
  std::vector<ProfileTold> told;
  std::string before;
  std::vector<Section> sections;
};

Change change;

// Changes that the writer has and has not answered for. Reading sees the last of them.
struct Handed {
  std::string bytes;
  bool there = false;
  bool lastSaved = false;  // the newest change, where it is not there
  std::uint32_t last = 0;  // number of the newest change
  std::vector<std::pair<std::uint32_t, ProfileTold>> told;
};

Handed handed;
ProfileWriter writer = nullptr;

void ExpectAnswer(std::uint32_t number, const std::vector<ProfileTold>& told) {
  for (const ProfileTold each : told) handed.told.emplace_back(number, each);
}

void HandOver(std::string bytes, const std::vector<ProfileTold>& told) {
  handed.bytes = bytes;
  handed.there = true;
  const std::uint32_t number = ++handed.last;
  ExpectAnswer(number, told);
  writer(ProfilePath(), std::move(bytes), number);
}

// As FindEntry, in the sections of the change under way.
bool FindChanged(std::string_view section, std::string_view key, std::string_view& value) {
  for (std::size_t i = 1; i < change.sections.size(); ++i) {
    const Section& each = change.sections[i];
    if (!SameName(each.name, section)) continue;
    for (std::size_t row = 1; row < each.lines.size(); ++row) {
      if (ReadEntry(each.lines[row], key, value)) return true;
    }
  }
  return false;
}

// False: there is a file and it cannot be read, so that it must not be replaced.
bool LoadProfile(std::string& bytes) {
  const std::u16string path = ProfilePath();
  if (path.empty()) return false;
  if (handed.there) {
    bytes = handed.bytes;
    return true;
  }
  return ReadBytes(path, kMaxProfileBytes, bytes) == ReadAnswer::Read || !FileExists(path);
}

}  // namespace

std::u16string ProfilePath() {
  const std::u16string executable = ExecutablePath();
  const std::size_t slash = executable.find_last_of(u"/\\");
  if (slash == executable.npos) return std::u16string();
  return executable.substr(0, slash + 1) + u"MORVA.ini";
}

std::u16string ReadProfile(std::u16string_view section, std::u16string_view key,
                           std::u16string_view fallback) {
  std::string bytes;
  std::string_view value;
  const bool found = change.depth > 0 ? FindChanged(ToUtf8(section), ToUtf8(key), value)
                                      : LoadProfile(bytes) &&
                                            FindEntry(bytes, ToUtf8(section), ToUtf8(key), value);
  return found ? FromUtf8(value) : std::u16string(fallback);
}

void BeginProfileChange() {
  if (change.depth++ > 0) return;
  change.readable = LoadProfile(change.before);
  change.sections = Parse(change.before);
}

void WriteProfile(std::u16string_view section, std::u16string_view key, std::u16string_view value) {
  BeginProfileChange();
  change.touched = true;
  ChangeEntry(change.sections, ToUtf8(section), ToUtf8(key), ToUtf8(value));
  EndProfileChange();
}

void EraseProfileSection(std::u16string_view section) {
  BeginProfileChange();
  change.touched = true;
  const std::string name = ToUtf8(section);
  for (std::size_t i = change.sections.size(); i-- > 1;) {
    if (!SameName(change.sections[i].name, name)) continue;
    change.sections.erase(change.sections.begin() + static_cast<std::ptrdiff_t>(i));
  }
  EndProfileChange();
}

bool EndProfileChange(ProfileTold told) {
  if (change.depth == 0) return false;
  if (told) change.told.push_back(told);
  if (--change.depth > 0) return true;
  const Change ended = std::exchange(change, Change());
  const std::string after = ended.touched ? Written(ended.sections) : ended.before;
  const bool same = after == ended.before;
  bool saved = ended.readable;
  if (saved && same && handed.there) {
    ExpectAnswer(handed.last, ended.told);
    return true;
  }
  if (saved && !same && writer) {
    HandOver(after, ended.told);
    return handed.there || handed.lastSaved;
  }
  if (saved && !same) saved = WriteFileAtomic(ProfilePath(), after);
  for (const ProfileTold each : ended.told) each(saved);
  return saved;
}

void SetProfileWriter(ProfileWriter to) {
  writer = to;
  handed = Handed();
}

void ProfileWritten(std::uint32_t number, bool written) {
  if (number == handed.last) {
    handed.there = false;
    handed.lastSaved = written;
  }
  std::vector<std::pair<std::uint32_t, ProfileTold>> waiting;
  for (const auto& [of, told] : std::exchange(handed.told, {})) {
    if (of <= number) {
      told(written);
    } else {
      waiting.emplace_back(of, told);
    }
  }
  handed.told.insert(handed.told.begin(), waiting.begin(), waiting.end());
}

bool FindInProfile(std::u16string_view file, std::u16string_view section, std::u16string_view key,
                   std::u16string& value) {
  const std::string bytes = ToUtf8(file);
  std::string_view found;
  if (!FindEntry(bytes, ToUtf8(section), ToUtf8(key), found)) return false;
  value = FromUtf8(found);
  return true;
}

std::u16string ChangeInProfile(std::u16string_view file, std::u16string_view section,
                               std::u16string_view key, std::u16string_view value) {
  std::vector<Section> sections = Parse(ToUtf8(file));
  ChangeEntry(sections, ToUtf8(section), ToUtf8(key), ToUtf8(value));
  return FromUtf8(Written(sections));
}

}  // namespace platform
