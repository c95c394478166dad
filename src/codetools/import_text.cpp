#include "codetools/import_text.h"

#include <algorithm>
#include <limits>

#include "codetools/validator.h"
#include "documents/block_text.h"
#include "documents/marker_lines.h"
#include "documents/stored_code.h"
#include "text/codetext.h"

namespace morva {

namespace {

constexpr std::size_t kNone = std::u16string_view::npos;
constexpr std::size_t kRoomPerBlock = 1024;

// Behind the integer that a marker bears: blanks and tabs, a sign, digits.
std::size_t PastNumber(std::u16string_view text, std::size_t at) {
  while (at < text.size() && (text[at] == u' ' || text[at] == u'\t')) ++at;
  if (at < text.size() && text[at] == u'-') ++at;
  while (at < text.size() && IsDigit(text[at])) ++at;
  return at;
}

// As the editor holds a text: CR LF for every line end, the first NUL ends it.
std::u16string EditorLines(std::u16string_view text) {
  text = text.substr(0, text.find(u'\0'));
  std::u16string lines;
  lines.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (!IsLineEnd(text[i])) {
      lines += text[i];
      continue;
    }
    if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') ++i;
    lines += u"\r\n";
  }
  return lines;
}

std::size_t LastFolded(std::u16string_view text, std::u16string_view wanted) {
  for (std::size_t at = text.size() < wanted.size() ? kNone : text.size() - wanted.size();
       at != kNone; at = at == 0 ? kNone : at - 1) {
    if (SameFolded(text.substr(at, wanted.size()), wanted)) return at;
  }
  return kNone;
}

std::u16string EndMarker(std::int64_t id) {
  return std::u16string(kEndMark) + IntegerText(id) + u")";
}

// The copy function with the block that it is asked for.
struct BlockCopy {
  StoredCodeCopy copy;
  void* context;
  const FeatureRecord& row;
  std::int32_t into;
};

// All behind the opening marker's id up to the closing marker, every number of stored code replaced
// wherever its marker stands. False where that code cannot be had.
bool AppendInside(std::u16string_view inside, const BlockCopy& block, std::u16string& text) {
  std::size_t at = 0;
  NumberedMarker marker;
  for (; FindNumberedMarker(inside, at, marker); at = marker.past) {
    const std::int32_t fresh = block.copy(block.context, marker.number, block.row, block.into);
    if (fresh < 1) return false;
    text += inside.substr(at, marker.numberAt - at);
    text += IntegerText(fresh);
  }
  text += inside.substr(at);
  return true;
}

// Between the id of the opening marker and the closing one. False: it has no markers.
bool InsideOf(std::u16string_view block, std::u16string_view& inside) {
  std::size_t opening = 0;
  if (block.starts_with(kTextMark)) opening = kTextMark.size();
  if (block.starts_with(kBeginMark)) opening = kBeginMark.size();
  if (opening == 0) return false;
  const std::size_t from = PastNumber(block, opening);
  const std::size_t to = LastFolded(block, kEndMark);
  if (to == kNone || to < from) return false;
  inside = block.substr(from, to - from);
  return true;
}

}  // namespace

void LoadImportSource(std::u16string_view text, ImportSource& source) {
  source.text = TaggedText(EditorLines(text));
  ScanProgramText(source.text);
  source.count = features.count;
  std::copy_n(features.rows, features.count, source.rows);
}

bool HasOtherUnits(const ImportSource& source, const bool (&chosen)[kMaxFeatures],
                   std::int32_t units, const DisabledCodeEntry* stored) {
  const std::u16string_view text = source.text;
  std::int32_t current = 0;
  std::size_t at = 0;
  for (int i = 0; i < source.count; ++i) {
    const FeatureRecord& row = source.rows[i];
    const auto end = static_cast<std::size_t>(row.end);
    const std::int32_t set = LastUnitsCode(text.substr(at, end - at));
    if (set != 0) current = set;
    at = end;
    if (!chosen[i]) continue;
    std::int32_t own = 0;
    std::int32_t number = 0;
    if (DisabledNumber(text, row, number)) {
      const DisabledCodeEntry* entry = FindDisabledCode(stored, number);
      if (entry) own = LastUnitsCode(entry->text);
    }
    if (own == 0) own = current;
    if (own != 0 && own != units) return true;
  }
  return false;
}

ImportBuild BuildImportText(const ImportSource& source, const bool (&chosen)[kMaxFeatures],
                            std::int32_t firstId, StoredCodeCopy copy, void* context,
                            std::u16string& text) {
  text.clear();
  std::u16string built;
  std::size_t blocks = 0;
  for (int i = 0; i < source.count; ++i) blocks += chosen[i] ? 1 : 0;
  built.reserve(source.text.size() + kRoomPerBlock * blocks + 16);
  std::int64_t id = firstId;
  for (int i = 0; i < source.count; ++i) {
    if (!chosen[i]) continue;
    const FeatureRecord& row = source.rows[i];
    const std::u16string_view block = std::u16string_view(source.text)
                                          .substr(static_cast<std::size_t>(row.start),
                                                  static_cast<std::size_t>(row.end - row.start));
    std::u16string_view inside;
    if (!InsideOf(block, inside)) return ImportBuild::Impossible;
    while (HoldsFolded(inside, EndMarker(id))) ++id;
    if (id < 1 || id > std::numeric_limits<std::int32_t>::max()) return ImportBuild::Impossible;
    built += row.settings.kind == kKindUserCode ? kTextMark : kBeginMark;
    built += IntegerText(id);
    const BlockCopy own{copy, context, row, static_cast<std::int32_t>(id)};
    if (!AppendInside(inside, own, built)) return ImportBuild::StoredCodeMissing;
    built += EndMarker(id);
    built += u"\r\n";
    ++id;
  }
  text.swap(built);
  return ImportBuild::Done;
}

}  // namespace morva
