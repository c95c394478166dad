// The settings file: read by line, changed as a list of sections, written back once. A change
// touches each line at most once, however many keys it sets.
//
// Everything here works on the bytes of the file, so that a line which nobody asked to change
// goes back exactly as it was, whatever it holds. Names compare without the case of A to Z.

#include "platform/profile.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <utility>
#include <vector>

#include "platform/atomic_file.h"
#include "platform/file.h"
#include "platform/folders.h"
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
  // Most lines are none, and all lines pass here.
  const std::size_t first = line.find_first_not_of(" \t\r");
  if (first == line.npos || line[first] != '[') return false;
  line = Trimmed(WithoutLineEnd(line));
  const std::size_t close = line.find(']');
  if (close == line.npos) return false;
  name = Trimmed(line.substr(1, close - 1));
  return true;
}

bool IsComment(std::string_view line) {
  line = Trimmed(line);
  return !line.empty() && (line.front() == ';' || line.front() == '#');
}

// Whether the line sets a key, and which one.
bool ReadKey(std::string_view line, std::string_view& key) {
  line = WithoutLineEnd(line);
  const std::size_t equals = line.find('=');
  if (equals == line.npos || IsComment(line)) return false;
  key = Trimmed(line.substr(0, equals));
  return true;
}

// Whether the line sets `key`, and its value without outer blanks and one pair of quotes.
bool ReadEntry(std::string_view line, std::string_view key, std::string_view& value) {
  std::string_view own;
  if (!ReadKey(line, own) || !SameName(own, key)) return false;
  line = WithoutLineEnd(line);
  value = Trimmed(line.substr(line.find('=') + 1));
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

// A section as it stands: the header line and the lines up to the next header. What precedes the
// first header is a section without a header. It remains one piece of the file until somebody asks
// for one of its keys; then it is cut into lines, and a table of hashes leads from keys to lines.
struct Section {
  std::string_view name;
  std::string_view whole;
  bool cut = false;
  std::vector<std::string_view> lines;
  std::vector<std::uint32_t> slots;  // by hash: a row above 0, 0 for none; a power of two
  std::uint32_t keys = 0;            // slots in use
};

// A file in sections. Its text and what is written stay where they are until it goes, because
// sections hold views of them.
struct Sections {
  std::vector<Section> list;
  std::deque<std::string> written;
  // The sections of the name that was asked for last.
  std::string lastName;
  std::vector<std::size_t> last;
  bool lastKnown = false;
};

std::uint32_t HashOf(std::string_view name) {
  std::uint32_t hash = 2166136261u;
  for (const char c : name) hash = (hash ^ static_cast<unsigned char>(Folded(c))) * 16777619u;
  return hash;
}

// The slot that leads to the first line with this key, or the empty one where it would stand.
std::size_t SlotOf(const Section& section, std::string_view key) {
  const std::size_t mask = section.slots.size() - 1;
  std::size_t slot = HashOf(key) & mask;
  while (section.slots[slot] != 0) {
    std::string_view other;
    ReadKey(section.lines[section.slots[slot]], other);
    if (SameName(other, key)) break;
    slot = (slot + 1) & mask;
  }
  return slot;
}

// The first line with a key counts; the header in row 0 is no entry.
void TakeRow(Section& section, std::size_t row) {
  std::string_view key;
  if (row == 0 || !ReadKey(section.lines[row], key)) return;
  const std::size_t slot = SlotOf(section, key);
  if (section.slots[slot] != 0) return;
  section.slots[slot] = static_cast<std::uint32_t>(row);
  ++section.keys;
}

void FillSlots(Section& section) {
  std::size_t size = 16;
  while (size < 4 * section.lines.size()) size *= 2;
  section.slots.assign(size, 0);
  section.keys = 0;
  for (std::size_t row = 1; row < section.lines.size(); ++row) TakeRow(section, row);
}

void CutIntoLines(Section& section) {
  if (section.cut) return;
  section.cut = true;
  std::string_view rest = section.whole;
  while (!rest.empty()) section.lines.push_back(TakeLine(rest));
  FillSlots(section);
}

// The row of the key, 0 for none.
std::size_t RowOfKey(Section& section, std::string_view key) {
  CutIntoLines(section);
  return section.slots[SlotOf(section, key)];
}

// Where the next header line at or behind `at` begins, and the name in it; the end of the text for
// none. Looks at brackets alone: most lines of a full library hold none, and all are read at a
// save.
std::size_t HeaderFrom(std::string_view text, std::size_t at, std::string_view& name) {
  for (at = text.find('[', at); at != text.npos; at = text.find('[', at + 1)) {
    std::size_t begin = at;
    while (begin > 0 && IsBlank(text[begin - 1])) --begin;
    if (begin > 0 && text[begin - 1] != '\n') continue;
    std::string_view rest = text.substr(begin);
    if (ReadHeader(TakeLine(rest), name)) return begin;
  }
  return text.size();
}

Sections Parse(std::string_view file) {
  Sections sections;
  const std::string_view text = WithoutMark(file);
  std::string_view name;  // of what precedes the first header: none
  for (std::size_t begin = 0;;) {
    Section& section = sections.list.emplace_back();
    section.name = name;
    // Behind the section's own bracket; the one of the first part is its own begin.
    const std::size_t from = sections.list.size() == 1 ? 0 : text.find('[', begin) + 1;
    const std::size_t end = HeaderFrom(text, from, name);
    section.whole = text.substr(begin, end - begin);
    if (end == text.size()) return sections;
    begin = end;
  }
}

void Write(const Sections& sections, std::string& file) {
  file.clear();
  std::size_t bytes = 0;
  for (const Section& section : sections.list) {
    bytes += section.whole.size();
    for (const std::string_view line : section.lines) bytes += line.size();
  }
  file.reserve(bytes);
  const auto put = [&file](std::string_view text) {
    if (!file.empty() && file.back() != '\n' && !text.empty()) file += "\r\n";
    file += text;
  };
  for (const Section& section : sections.list) {
    if (!section.cut) put(section.whole);
    for (const std::string_view line : section.lines) put(line);
  }
}

// Whether the section holds these bytes, and no others.
bool Holds(const Section& section, std::string_view bytes) {
  if (!section.cut) return section.whole == bytes;
  for (const std::string_view line : section.lines) {
    if (!bytes.starts_with(line)) return false;
    bytes.remove_prefix(line.size());
  }
  return bytes.empty();
}

bool EndsValue(char c) { return c == '\r' || c == '\n' || c == '\0'; }

// A line end would begin a line of its own, so that a value ends there. Blanks and quotes at
// the outside are taken off again on reading and go inside a further pair of quotes.
std::string EntryLine(std::string_view key, std::string_view value) {
  // One pass: a search for any of three takes as long as all the rest of a save.
  value = value.substr(
      0, static_cast<std::size_t>(std::ranges::find_if(value, EndsValue) - value.begin()));
  const bool blanks = value != Trimmed(value);
  const bool quotes = value.size() >= 2 && value.front() == '"' && value.back() == '"';
  std::string line;
  line.reserve(key.size() + value.size() + 5);
  line += key;
  line += '=';
  if (blanks || quotes) line += '"';
  line += value;
  if (blanks || quotes) line += '"';
  line += "\r\n";
  return line;
}

std::string_view Keep(Sections& sections, std::string text) {
  return sections.written.emplace_back(std::move(text));
}

// Behind the last line of the section that is not blank. No key moves: only blank lines do.
void InsertEntry(Section& section, std::string_view line) {
  std::size_t at = section.lines.size();
  while (at > 1 && Trimmed(WithoutLineEnd(section.lines[at - 1])).empty()) --at;
  section.lines.insert(section.lines.begin() + static_cast<std::ptrdiff_t>(at), line);
  if (2 * (section.keys + 1) > section.slots.size()) {
    FillSlots(section);
  } else {
    TakeRow(section, at);
  }
}

// The sections of this name in their order, a file may have several.
const std::vector<std::size_t>& SectionsNamed(Sections& sections, std::string_view name) {
  if (sections.lastKnown && sections.lastName == name) return sections.last;
  sections.lastKnown = true;
  sections.lastName = name;
  sections.last.clear();
  for (std::size_t i = 1; i < sections.list.size(); ++i) {
    if (SameName(sections.list[i].name, name)) sections.last.push_back(i);
  }
  return sections.last;
}

void AddSection(Sections& sections, std::string_view name) {
  const std::string_view line = Keep(sections, "[" + std::string(name) + "]\r\n");
  Section& section = sections.list.emplace_back();
  section.name = line.substr(1, name.size());
  section.whole = line;
  sections.lastKnown = false;
}

void ChangeEntry(Sections& sections, std::string_view name, std::string_view key,
                 std::string_view value) {
  for (const std::size_t i : SectionsNamed(sections, name)) {
    Section& section = sections.list[i];
    const std::size_t row = RowOfKey(section, key);
    if (row == 0) continue;
    section.lines[row] = Keep(sections, EntryLine(key, value));
    return;
  }
  const std::vector<std::size_t>& named = SectionsNamed(sections, name);
  const std::size_t first = named.empty() ? sections.list.size() : named.front();
  if (named.empty()) AddSection(sections, name);
  Section& section = sections.list[first];
  CutIntoLines(section);
  // The line that ended the file may have had no line end.
  if (section.lines.back().back() != '\n') {
    section.lines.back() = Keep(sections, std::string(section.lines.back()) + "\r\n");
  }
  InsertEntry(section, Keep(sections, EntryLine(key, value)));
}

// The change under way. Reading looks into it, so that what was set can be read at once.
struct Change {
  int depth = 0;
  std::u16string path;  // of the file at the begin
  bool readable = false;
  bool touched = false;  // something was set or erased
  std::vector<ProfileTold> told;
  std::string before;
  Sections sections;
};

Change change;

// The memory of the texts before and behind the last change. Full libraries make a file of several
// hundred kilobytes, for which the system would hand out and clear new pages at each save.
struct Spare {
  std::string before;
  std::string after;
};

Spare spare;

void KeepSpare(std::string& to, std::string& text) {
  if (text.capacity() <= kMaxSpareProfile) to.swap(text);
}

// Changes that the writer has and has not answered for. Reading sees the last of them.
struct Handed {
  std::shared_ptr<const std::string> bytes;  // null: the writer has none
  bool lastSaved = false;                    // the newest change, where its text is not there
  std::uint32_t last = 0;                    // number of the newest change
  std::vector<std::pair<std::uint32_t, ProfileTold>> told;
};

Handed handed;
ProfileWriter writer = nullptr;

void ExpectAnswer(std::uint32_t number, const std::vector<ProfileTold>& told) {
  for (const ProfileTold each : told) handed.told.emplace_back(number, each);
}

void HandOver(std::u16string path, std::string bytes, const std::vector<ProfileTold>& told) {
  const auto shared = std::make_shared<const std::string>(std::move(bytes));
  handed.bytes = shared;
  const std::uint32_t number = ++handed.last;
  ExpectAnswer(number, told);
  writer(std::move(path), shared, number);
}

// As FindEntry, in the sections of the change under way.
bool FindChanged(std::string_view section, std::string_view key, std::string_view& value) {
  for (const std::size_t i : SectionsNamed(change.sections, section)) {
    Section& each = change.sections.list[i];
    const std::size_t row = RowOfKey(each, key);
    if (row != 0) return ReadEntry(each.lines[row], key, value);
  }
  return false;
}

constexpr std::u16string_view kFileName = u"MORVA.ini";
constexpr std::u16string_view kFolderName = u"MORVA";

// With its separator; empty where the path names none.
std::u16string FolderOf(std::u16string_view path) {
  const std::size_t slash = path.find_last_of(u"/\\");
  return std::u16string(path.substr(0, slash == path.npos ? 0 : slash + 1));
}

std::u16string PathBesideExecutable() {
  std::u16string path = FolderOf(ExecutablePath());
  if (!path.empty()) path += kFileName;
  return path;
}

// The file beside the executable may be a link to a folder that can be written.
bool MayWriteBesideExecutable(std::u16string_view path) {
  if (path.empty()) return false;
  return MayMakeFilesIn(FolderOf(path)) || MayMakeFilesIn(FolderOf(LinkTarget(path)));
}

// Empty where the system names no folder for settings.
std::u16string PathInConfiguration() {
  std::u16string path;
  if (!ConfigurationFolder(path)) return std::u16string();
  path += PathSeparator();
  path += kFolderName;
  path += PathSeparator();
  path += kFileName;
  return path;
}

// The folder of the file can be written, or the one that it will be made in.
bool MayWriteInConfiguration(std::u16string_view path) {
  std::u16string folder = FolderOf(path);
  while (folder.size() > 1) {
    // Without its separator, so that a file in the way is seen.
    folder.pop_back();
    if (FileExists(folder)) break;
    folder = FolderOf(folder);
  }
  return MayMakeFilesIn(folder);
}

// Makes the folder of settings in the user's configuration, and those above it. What fails is seen
// when the file is written.
void MakeFoldersInConfiguration() {
  const std::u16string folder = FolderOf(PathInConfiguration());
  for (std::size_t at = 1; at < folder.size(); ++at) {
    if (folder[at] != PathSeparator()) continue;
    const std::u16string part = folder.substr(0, at);
    if (MakeFolder(part) == FolderAnswer::Made) FlushFolderOf(part);
  }
}

// What the settings at `path` begin with: their own file, or the one beside the executable while
// there is none.
std::u16string PathToRead(const std::u16string& path) {
  return FileExists(path) ? path : PathBesideExecutable();
}

// False: there is a file and it cannot be read, so that it must not be replaced. What `bytes` held
// is gone, its memory stays.
bool LoadProfile(const std::u16string& path, std::string& bytes) {
  if (path.empty()) {
    bytes.clear();
    return false;
  }
  if (handed.bytes) {
    bytes = *handed.bytes;
    return true;
  }
  const std::u16string from = PathToRead(path);
  return ReadBytes(from, kMaxProfileBytes, bytes) == ReadAnswer::Read || !FileExists(from);
}

}  // namespace

std::u16string ProfilePath() {
  const std::u16string beside = PathBesideExecutable();
  if (MayWriteBesideExecutable(beside)) return beside;
  const std::u16string own = PathInConfiguration();
  return own.empty() ? beside : own;
}

ProfilePlace WhereProfileIsKept() {
  if (MayWriteBesideExecutable(PathBesideExecutable())) return ProfilePlace::BesideExecutable;
  const std::u16string own = PathInConfiguration();
  return MayWriteInConfiguration(own) ? ProfilePlace::Configuration : ProfilePlace::Nowhere;
}

std::u16string ReadProfile(std::u16string_view section, std::u16string_view key,
                           std::u16string_view fallback) {
  std::string bytes;
  std::string_view value;
  const bool found = change.depth > 0 ? FindChanged(ToUtf8(section), ToUtf8(key), value)
                                      : LoadProfile(ProfilePath(), bytes) &&
                                            FindEntry(bytes, ToUtf8(section), ToUtf8(key), value);
  return found ? FromUtf8(value) : std::u16string(fallback);
}

void BeginProfileChange() {
  if (change.depth++ > 0) return;
  change.path = ProfilePath();
  change.before.swap(spare.before);
  change.readable = LoadProfile(change.path, change.before);
  change.sections = Parse(change.before);
}

void WriteProfile(std::u16string_view section, std::u16string_view key, std::u16string_view value) {
  BeginProfileChange();
  change.touched = true;
  ChangeEntry(change.sections, ToUtf8(section), ToUtf8(key), ToUtf8(value));
  EndProfileChange();
}

std::string ProfileSection(std::u16string_view section) {
  BeginProfileChange();
  const std::vector<std::size_t>& named = SectionsNamed(change.sections, ToUtf8(section));
  std::string bytes;
  if (named.size() == 1) {
    const Section& only = change.sections.list[named.front()];
    if (!only.cut) bytes = only.whole;
    for (const std::string_view line : only.lines) bytes += line;
  }
  EndProfileChange();
  return bytes;
}

bool ProfileSectionIs(std::u16string_view section, std::string_view bytes) {
  BeginProfileChange();
  const std::vector<std::size_t>& named = SectionsNamed(change.sections, ToUtf8(section));
  const bool same =
      !bytes.empty() && named.size() == 1 && Holds(change.sections.list[named.front()], bytes);
  EndProfileChange();
  return same;
}

void EraseProfileSection(std::u16string_view section) {
  BeginProfileChange();
  change.touched = true;
  const std::string name = ToUtf8(section);
  std::vector<Section>& list = change.sections.list;
  for (std::size_t i = list.size(); i-- > 1;) {
    if (SameName(list[i].name, name)) list.erase(list.begin() + static_cast<std::ptrdiff_t>(i));
  }
  change.sections.lastKnown = false;
  EndProfileChange();
}

bool EndProfileChange(ProfileTold told) {
  if (change.depth == 0) return false;
  if (told) change.told.push_back(told);
  if (--change.depth > 0) return true;
  std::string after;
  after.swap(spare.after);
  if (change.touched) Write(change.sections, after);
  // The sections look into the text of the change, which moves with it.
  Change ended = std::exchange(change, Change());
  const bool same = !ended.touched || after == ended.before;
  bool saved = ended.readable;
  KeepSpare(spare.before, ended.before);
  if (saved && same && handed.bytes) {
    ExpectAnswer(handed.last, ended.told);
    return true;
  }
  if (saved && !same && ended.path != PathBesideExecutable()) MakeFoldersInConfiguration();
  if (saved && !same && writer) {
    HandOver(ended.path, std::move(after), ended.told);
    return handed.bytes || handed.lastSaved;
  }
  if (saved && !same) saved = WriteFileAtomic(ended.path, after, Lasting::File);
  KeepSpare(spare.after, after);
  for (const ProfileTold each : ended.told) each(saved);
  return saved;
}

void SetProfileWriter(ProfileWriter to) {
  writer = to;
  handed = Handed();
}

void ProfileWritten(std::uint32_t number, bool written) {
  if (number == handed.last) {
    handed.bytes.reset();
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
  const std::string bytes = ToUtf8(file);
  Sections sections = Parse(bytes);
  ChangeEntry(sections, ToUtf8(section), ToUtf8(key), ToUtf8(value));
  std::string after;
  Write(sections, after);
  return FromUtf8(after);
}

}  // namespace platform
