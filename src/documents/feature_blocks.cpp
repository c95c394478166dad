#include "documents/feature_blocks.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

#include "app/command_ids.h"
#include "documents/block_labels.h"
#include "documents/marker_lines.h"
#include "documents/text_mark.h"
#include "platform/editor.h"
#include "text/codetext.h"
#include "text/line_ends.h"

namespace morva {

FeatureTable features;

namespace {

using std::size_t;
constexpr size_t kNone = std::u16string_view::npos;
constexpr std::int32_t kHighestCountedId = 1999999999;  // ids above do not move the next free id

// What older generators put above their code. The first four are whole labels.
constexpr std::u16string_view kLegacyLabels[] = {
    kCircularLabel,          kSketchLabel, kPlateLabel, kRectangularLabel, u"(MACRO:",
    u"(SAVED CUSTOM SHAPE:", u"(SHAPE:",   u"(WIZARD:",
};

// First `wanted` at or behind `from`, npos for none. Whole programs pass through here several
// times an operation, so four units are looked at together.
size_t FindUnit(std::u16string_view text, char16_t wanted, size_t from) {
  constexpr std::uint64_t kOnes = 0x0001000100010001u;
  const std::uint64_t pattern = kOnes * wanted;
  const size_t size = text.size();
  size_t at = from;
  for (; at + 4 <= size; at += 4) {
    std::uint64_t units;
    std::memcpy(&units, text.data() + at, sizeof units);
    units ^= pattern;
    if ((units - kOnes) & ~units & (kOnes << 15)) break;
  }
  for (; at < size; ++at) {
    if (text[at] == wanted) return at;
  }
  return kNone;
}

// First "(" or NUL at or behind `from`, npos for none. Sixteen units at once: this is the one walk
// of a scan through the whole text.
size_t FindCommentOrNul(std::u16string_view text, size_t from) {
  constexpr std::uint64_t kOnes = 0x0001000100010001u;
  constexpr std::uint64_t kPattern = kOnes * u'(';
  constexpr int kWords = 4;
  constexpr size_t kStride = 4 * kWords;
  const size_t size = text.size();
  size_t at = from;
  for (; at + kStride <= size; at += kStride) {
    std::uint64_t words[kWords];
    std::memcpy(words, text.data() + at, sizeof words);
    std::uint64_t found = 0;
    for (const std::uint64_t units : words) {
      const std::uint64_t other = units ^ kPattern;
      found |= ((units - kOnes) & ~units) | ((other - kOnes) & ~other);
    }
    if (found & (kOnes << 15)) break;
  }
  for (; at < size; ++at) {
    if (text[at] == u'(' || text[at] == 0) return at;
  }
  return kNone;
}

bool StartsFolded(std::u16string_view text, size_t at, std::u16string_view marker) {
  return text.size() - at >= marker.size() && SameFolded(text.substr(at, marker.size()), marker);
}

std::int32_t IdAfter(std::u16string_view text, size_t at, std::u16string_view marker) {
  return ParseInteger(text.substr(at + marker.size()), 0);
}

// Where markers stand in the whole text, gathered in one pass, so that no block searches the
// text for its END again.
struct EndPlace {
  std::int32_t id;
  std::int32_t start;
  std::int32_t end;  // just past the ")"
};
struct MarkerPlaces {
  std::vector<EndPlace> ends;          // any case, by id, then by place
  std::vector<std::int32_t> begins;    // any case, by place
  std::vector<std::int32_t> disabled;  // any case, by place
  std::vector<std::int32_t> openings;  // lines that may begin a block, by place
  std::int32_t nextId = 1;             // beyond every number behind an exact marker
};
MarkerPlaces places;

// The text of the code editor that the table is of; null: it is of another text.
struct ScannedText {
  const char16_t* text = nullptr;
  size_t size = 0;
  std::uint64_t revision = 0;
  TextMark mark = {};
  bool operator==(const ScannedText&) const = default;
};
ScannedText scanned;

// The tables of open programs that left the stage, one a program, as they were scanned last.
struct KeptRows {
  TextMark mark;
  size_t size = 0;  // of the text
  std::int32_t nextId = 0;
  std::vector<FeatureRecord> rows;
};
std::vector<KeptRows> keptRows;

// Before another program is scanned.
void KeepRows() {
  auto kept = std::ranges::find(keptRows, scanned.mark.serial,
                                [](const KeptRows& each) { return each.mark.serial; });
  if (kept == keptRows.end()) kept = keptRows.emplace(kept);
  if (kept->mark == scanned.mark) return;
  kept->mark = scanned.mark;
  kept->size = scanned.size;
  kept->nextId = features.nextId;
  kept->rows.assign(features.rows, features.rows + features.count);
}

// False: no rows of that text are kept.
bool TakeKeptRows(const ScannedText& of) {
  const auto kept = std::ranges::find(keptRows, of.mark, &KeptRows::mark);
  if (!of.mark.Known() || kept == keptRows.end() || kept->size != of.size) return false;
  std::ranges::copy(kept->rows, features.rows);
  features.count = static_cast<std::int32_t>(kept->rows.size());
  features.nextId = kept->nextId;
  return true;
}

void CountId(std::int32_t& nextId, std::int32_t id) {
  if (id <= kHighestCountedId && id >= nextId) nextId = id + 1;
}

// An END counts for a block when it is written as we write it: no blank, no leading zero.
void NoteEnd(std::u16string_view text, size_t at) {
  size_t digit = at + kEndMark.size();
  std::int64_t id = 0;
  if (digit >= text.size() || text[digit] < u'1') return;
  for (; digit < text.size() && text[digit] >= u'0' && text[digit] <= u'9'; ++digit) {
    id = id * 10 + (text[digit] - u'0');
    if (id > INT32_MAX) return;
  }
  if (digit >= text.size() || text[digit] != u')' || id == 0) return;
  places.ends.push_back({static_cast<std::int32_t>(id), static_cast<std::int32_t>(at),
                         static_cast<std::int32_t>(digit + 1)});
}

bool HasLegacyLabel(std::u16string_view text, size_t at) {
  return std::any_of(std::begin(kLegacyLabels), std::end(kLegacyLabels),
                     [&](std::u16string_view label) { return StartsAt(text, at, label); });
}

void NoteMarker(std::u16string_view text, size_t at) {
  for (const std::u16string_view mark : {kBeginMark, kTextMark, kEndMark}) {
    if (StartsAt(text, at, mark)) CountId(places.nextId, IdAfter(text, at, mark));
  }
  const auto place = static_cast<std::int32_t>(at);
  if (StartsFolded(text, at, kBeginMark)) places.begins.push_back(place);
  if (StartsFolded(text, at, kDisabledMark)) places.disabled.push_back(place);
  if (StartsFolded(text, at, kEndMark)) NoteEnd(text, at);
}

// The text up to its first NUL, whose markers are gathered.
std::u16string_view GatherMarkers(std::u16string_view whole) {
  places.ends.clear();
  places.begins.clear();
  places.disabled.clear();
  places.openings.clear();
  places.nextId = 1;
  size_t at = FindCommentOrNul(whole, 0);
  // No marker holds a NUL, so that what stands behind one is never taken for a part of a marker.
  for (; at != kNone && whole[at] != 0; at = FindCommentOrNul(whole, at + 1)) {
    const bool marker = StartsFolded(whole, at, kMarkerHead);
    if (marker) NoteMarker(whole, at);
    const bool lineStart = at == 0 || IsLineEnd(whole[at - 1]);
    if (lineStart && (marker || HasLegacyLabel(whole, at))) {
      places.openings.push_back(static_cast<std::int32_t>(at));
    }
  }
  std::sort(places.ends.begin(), places.ends.end(), [](const EndPlace& a, const EndPlace& b) {
    return a.id != b.id ? a.id < b.id : a.start < b.start;
  });
  return whole.substr(0, at);
}

// The first END with this id at or behind `from`, null for none.
const EndPlace* EndOf(std::int32_t id, size_t from) {
  const auto found = std::lower_bound(
      places.ends.begin(), places.ends.end(), from, [id](const EndPlace& e, size_t start) {
        return e.id != id ? e.id < id : static_cast<size_t>(e.start) < start;
      });
  return found != places.ends.end() && found->id == id ? &*found : nullptr;
}

bool BeginBetween(size_t from, size_t to) {
  const auto found =
      std::lower_bound(places.begins.begin(), places.begins.end(), static_cast<std::int32_t>(from));
  return found != places.begins.end() && static_cast<size_t>(*found) < to;
}

std::u16string_view NameAt(std::u16string_view text, size_t line) {
  const std::u16string_view rest = text.substr(line + kNameMark.size());
  size_t length = 0;
  while (length < rest.size() && length < kFeatureNameUnits - 1 && !IsLineEnd(rest[length]) &&
         rest[length] != u')') {
    ++length;
  }
  return rest.substr(0, length);
}

FeatureRecord& FillRow(FeatureRecord& row, std::int32_t id, size_t start, size_t end,
                       std::u16string_view name) {
  row.id = id;
  row.start = static_cast<std::int32_t>(start);
  row.end = static_cast<std::int32_t>(end);
  CopyBounded(row.name, kFeatureNameUnits, name);
  row.needsMarkers = false;
  return row;
}

// The three tests at a line start: each appends a row and answers where the scan goes on, or
// npos where the line is no such start.

size_t TakeUserBlock(std::u16string_view text, size_t line) {
  if (!StartsAt(text, line, kTextMark)) return kNone;
  const std::int32_t id = IdAfter(text, line, kTextMark);
  const EndPlace* end = id >= 1 ? EndOf(id, line) : nullptr;
  if (!end) return kNone;
  const size_t next = SkipLineEnds(text, LineEndFrom(text, line));
  const bool named = StartsAt(text, next, kNameMark);
  FeatureRecord& row = features.rows[features.count++];
  FillRow(row, id, line, static_cast<size_t>(end->end),
          named ? NameAt(text, next) : std::u16string_view());
  ReadSettings(nullptr, 0, row.settings);
  row.settings.kind = kKindUserCode;
  return static_cast<size_t>(end->end);
}

int HexDigit(char16_t c) {
  if (c >= u'0' && c <= u'9') return c - u'0';
  if (c >= u'A' && c <= u'F') return c - u'A' + 10;
  if (c >= u'a' && c <= u'f') return c - u'a' + 10;
  return -1;
}

struct DataBytes {
  unsigned char bytes[kSettingsBytes];
  size_t count = 0;
};

// One DATA line into `data`; `at` goes from its first digit past its ")". False: bad data.
bool DecodeDataLine(std::u16string_view text, size_t& at, DataBytes& data) {
  while (at < text.size() && !IsLineEnd(text[at]) && text[at] != u')') {
    const int high = HexDigit(text[at]);
    const int low = at + 1 < text.size() ? HexDigit(text[at + 1]) : -1;
    if (high < 0 || low < 0 || data.count == sizeof data.bytes) return false;
    data.bytes[data.count++] = static_cast<unsigned char>(high << 4 | low);
    at += 2;
  }
  if (at >= text.size() || text[at] != u')') return false;
  ++at;
  return true;
}

size_t TakeSettingsBlock(std::u16string_view text, size_t line) {
  if (!StartsAt(text, line, kBeginMark)) return kNone;
  const std::int32_t id = IdAfter(text, line, kBeginMark);
  if (id < 1) return kNone;
  size_t at = SkipLineEnds(text, LineEndFrom(text, line));
  std::u16string_view name;
  if (StartsAt(text, at, kNameMark)) {
    name = NameAt(text, at);
    at = SkipLineEnds(text, LineEndFrom(text, at));
  }
  static DataBytes data;
  data.count = 0;
  while (StartsAt(text, at, kDataMark)) {
    at += kDataMark.size();
    if (!DecodeDataLine(text, at, data)) return kNone;
    at = SkipLineEnds(text, at);
  }
  if (!StartsAt(text, at, kCodeMark)) return kNone;
  const size_t code = at + kCodeMark.size();
  const EndPlace* end = EndOf(id, code);
  if (!end || BeginBetween(code, static_cast<size_t>(end->start))) return kNone;
  // The record is read into the next free row; the row counts only once it is valid.
  FeatureRecord& row = features.rows[features.count];
  ReadSettings(data.bytes, data.count, row.settings);
  if (!ValidateSettings(row.settings, data.count)) return kNone;
  DropOldTags(row.settings);
  FillRow(row, id, line, static_cast<size_t>(end->end), name);
  ++features.count;
  return static_cast<size_t>(end->end);
}

bool StopsLegacyBlock(std::u16string_view text, size_t line) {
  return line >= text.size() || IsLineEnd(text[line]) || text[line] == u'%' ||
         StartsAt(text, line, kMarkerHead) || StartsAt(text, line, u"M30");
}

size_t TakeLegacyBlock(std::u16string_view text, size_t line) {
  if (!HasLegacyLabel(text, line)) return kNone;
  size_t end = LineEndFrom(text, line);
  char16_t name[kFeatureNameUnits] = {};
  CopyBounded(name, 75, text.substr(line, end - line));
  AppendBounded(name, kFeatureNameUnits, u" [text]");
  // Blank lines straight behind the label do not stop the block; later ones do.
  size_t next = SkipLineEnds(text, end);
  while (!StopsLegacyBlock(text, next)) {
    end = LineEndFrom(text, next);
    next = end;
    if (next < text.size()) next += StartsAt(text, next, u"\r\n") ? 2 : 1;
  }
  FeatureRecord& row = features.rows[features.count++];
  // The number is temporary and says only that one is still to be given.
  FillRow(row, -features.count, line, end, name).needsMarkers = true;
  ReadSettings(nullptr, 0, row.settings);
  return next;
}

void TakeMarkedBlocks(std::u16string_view text) {
  size_t line = 0;
  while (line < text.size() && features.count < kMaxFeatures) {
    size_t next = kNone;
    if (text[line] == u'(') {
      next = TakeUserBlock(text, line);
      if (next == kNone) next = TakeSettingsBlock(text, line);
      if (next == kNone) next = TakeLegacyBlock(text, line);
    }
    if (next != kNone) {
      line = next;
      continue;
    }
    const auto opening = std::upper_bound(places.openings.begin(), places.openings.end(),
                                          static_cast<std::int32_t>(line));
    if (opening == places.openings.end()) return;
    line = static_cast<size_t>(*opening);
  }
}

// The next free number that no END in the text has. One in lower case, or above the highest
// counted number, does not move the next free id, but it would close the block at the wrong
// place, and what is left behind would be wrapped again at every tick.
std::int32_t TakeFreeId() {
  while (EndOf(features.nextId, 0)) ++features.nextId;
  return features.nextId++;
}

struct Gap {
  size_t start;
  size_t end;
  std::int32_t id;
};

bool IsGapFiller(char16_t c) { return c == u'\t' || IsLineEnd(c) || c == u' ' || c == u'%'; }

// Narrows the stretch to what is neither blank nor percent at its ends. False: nothing left.
bool TrimGap(std::u16string_view text, Gap& gap) {
  while (gap.start < gap.end && IsGapFiller(text[gap.start])) ++gap.start;
  while (gap.start < gap.end && IsGapFiller(text[gap.end - 1])) --gap.end;
  return gap.start < gap.end;
}

// Foreign text between the rows becomes rows of its own, in order, while the table has room.
void FillGaps(std::u16string_view text) {
  Gap gaps[kMaxFeatures];
  const int marked = features.count;
  int count = 0;
  size_t from = 0;
  for (int i = 0; i <= marked && marked + count < kMaxFeatures; ++i) {
    const bool last = i == marked;
    Gap gap{from, last ? text.size() : static_cast<size_t>(features.rows[i].start), 0};
    if (!last) from = static_cast<size_t>(features.rows[i].end);
    if (!TrimGap(text, gap)) continue;
    gap.id = TakeFreeId();
    gaps[count++] = gap;
  }
  // Merged from the back: each row moves at most once and nothing is sorted by whole records.
  int row = marked - 1;
  int gap = count - 1;
  for (int to = marked + count - 1; gap >= 0; --to) {
    if (row >= 0 && static_cast<size_t>(features.rows[row].start) > gaps[gap].start) {
      features.rows[to] = features.rows[row--];
      continue;
    }
    FeatureRecord& filled = features.rows[to];
    FillRow(filled, gaps[gap].id, gaps[gap].start, gaps[gap].end, {}).needsMarkers = true;
    ReadSettings(nullptr, 0, filled.settings);
    filled.settings.kind = kKindUserCode;
    --gap;
  }
  features.count = marked + count;
}

void NoteDisabled(FeatureRecord& row) {
  const auto first = std::ranges::lower_bound(places.disabled, row.start);
  row.holdsDisabled = first != places.disabled.end() &&
                      *first + static_cast<std::int32_t>(kDisabledMark.size()) <= row.end;
}

}  // namespace

void ResetFeatures() {
  scanned = {};
  keptRows.clear();
  features.count = 0;
  features.nextId = 1;
}

void ScanProgramText(std::u16string_view whole) {
  scanned = {};
  features.count = 0;
  const std::u16string_view text = GatherMarkers(whole);
  TakeMarkedBlocks(text);
  features.nextId = places.nextId;
  for (int i = 0; i < features.count; ++i) CountId(features.nextId, features.rows[i].id);
  FillGaps(text);
  for (int i = 0; i < features.count; ++i) {
    if (features.rows[i].id < 0) features.rows[i].id = TakeFreeId();
    NoteDisabled(features.rows[i]);
  }
}

void ScanEditorText() {
  const std::u16string_view text = platform::EditorText(kIdEditor);
  const ScannedText now{text.data(), text.size(), platform::EditorRevision(kIdEditor),
                        EditorTextMark()};
  if (now.text && now == scanned) return;
  if (scanned.mark.Known() && scanned.mark.serial != now.mark.serial) KeepRows();
  if (!TakeKeptRows(now)) ScanProgramText(text);
  scanned = now;
}

void ForgetTableOf(std::uint64_t serial) {
  std::erase_if(keptRows, [serial](const KeptRows& each) { return each.mark.serial == serial; });
  if (scanned.mark.serial == serial) scanned = {};
}

int KeptTableCount() { return static_cast<int>(keptRows.size()); }

std::vector<FeatureRecord> BlocksOf(std::u16string_view text) {
  std::vector<FeatureRecord> kept(features.rows, features.rows + features.count);
  const std::int32_t nextId = features.nextId;
  const ScannedText before = scanned;
  ScanProgramText(text);
  std::vector<FeatureRecord> blocks(features.rows, features.rows + features.count);
  std::ranges::copy(kept, features.rows);
  features.count = static_cast<std::int32_t>(kept.size());
  features.nextId = nextId;
  scanned = before;
  return blocks;
}

std::uint32_t CodeHash(std::u16string_view code) {
  std::uint32_t hash = 2166136261u;
  for (const char16_t c : code) {
    if (c == u'\t' || IsLineEnd(c) || c == u' ') continue;
    hash = (hash ^ c) * 16777619u;
  }
  return hash;
}

int FindFeature(std::int32_t id) {
  for (int i = 0; i < features.count; ++i) {
    if (features.rows[i].id == id) return i;
  }
  return -1;
}

int CountFeatures(std::int32_t id) {
  int count = 0;
  for (int i = 0; i < features.count; ++i) count += features.rows[i].id == id ? 1 : 0;
  return count;
}

int FeatureAround(std::int32_t index) {
  for (int i = 0; i < features.count; ++i) {
    if (features.rows[i].start <= index && index < features.rows[i].end) return i;
  }
  return -1;
}

std::int32_t NextTableId() {
  std::int32_t largest = 0;
  for (int i = 0; i < features.count; ++i) largest = std::max(largest, features.rows[i].id);
  // Behind the largest number of all there is none; the scan's own is free as well.
  return largest < INT32_MAX ? largest + 1 : features.nextId;
}

int AdvanceOffset(OffsetMap& map, std::int32_t index) {
  const auto to = static_cast<size_t>(index);
  const std::u16string_view before = map.text.substr(0, std::min(to, map.text.size()));
  const auto from = static_cast<size_t>(map.index);
  if (from >= before.size()) return map.position;
  const size_t pairs = CountPairs(before, from, before.size());
  map.position += static_cast<int>(before.size() - from - pairs);
  map.index = static_cast<std::int32_t>(before.size());
  return map.position;
}

int MapTextOffset(std::u16string_view text, std::int32_t index) {
  OffsetMap map{text};
  return AdvanceOffset(map, index);
}

std::int32_t TextIndexOf(std::u16string_view text, int position) {
  // Between two line ends both ways of counting run alike, so only CR LF pairs are looked for.
  auto index = static_cast<size_t>(std::max(position, 0));
  for (size_t at = FindUnit(text, u'\n', 0); at != kNone && at <= index;
       at = FindUnit(text, u'\n', at + 1)) {
    if (at > 0 && text[at - 1] == u'\r') ++index;
  }
  return static_cast<std::int32_t>(std::min(index, text.size()));
}

std::u16string SettingsBlockText(std::int32_t id, std::u16string_view name,
                                 const FeatureSettings& settings, std::u16string_view body) {
  constexpr int kBytesOnLine = 24;
  constexpr char16_t kDigits[] = u"0123456789ABCDEF";
  static unsigned char bytes[kSettingsBytes];
  WriteSettings(settings, bytes);
  const int length = std::min(SettingsLength(settings), kSettingsBytes);
  std::u16string block(kBeginMark);
  block += IntegerText(id);
  block += u")\r\n";
  if (!name.empty()) {
    block += kNameMark;
    block += name;
    block += u")\r\n";
  }
  for (int at = 0; at < length; at += kBytesOnLine) {
    block += kDataMark;
    for (int i = at; i < std::min(at + kBytesOnLine, length); ++i) {
      block += kDigits[bytes[i] >> 4];
      block += kDigits[bytes[i] & 15];
    }
    block += u")\r\n";
  }
  block += kCodeMark;
  block += u"\r\n";
  block += body;
  block += u"\r\n";
  block += kEndMark;
  block += IntegerText(id);
  block += u')';
  return block;
}

}  // namespace morva
