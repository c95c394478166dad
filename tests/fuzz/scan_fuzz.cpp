// Any text gives a table in order: rows inside the text, one behind the other, every character
// that is not blank in one of them, and the same table from the same text.
#include <memory>

#include "documents/feature_blocks.h"
#include "fuzz/fuzz.h"

namespace {

using namespace morva;
using fuzz::Check;

bool Filler(char16_t c) { return c == u'\t' || c == u'\n' || c == u'\r' || c == u' ' || c == u'%'; }

bool AllFiller(std::u16string_view text) {
  for (const char16_t c : text) {
    if (!Filler(c)) return false;
  }
  return true;
}

void CheckRow(const FeatureRecord& row, std::u16string_view text, std::int32_t from) {
  Check(row.id >= 1, "ids are at least 1");
  Check(row.start >= from, "rows follow each other");
  Check(row.end > row.start, "no row is empty");
  Check(static_cast<std::size_t>(row.end) <= text.size(), "rows lie inside the text");
  bool ended = false;
  for (const char16_t c : row.name) ended = ended || c == 0;
  Check(ended, "names are terminated");
  if (row.needsMarkers) return;
  Check(text[static_cast<std::size_t>(row.start)] == u'(', "a marked block begins with its marker");
  Check(text[static_cast<std::size_t>(row.end) - 1] == u')', "and ends with one");
  if (row.settings.version == 0) return;
  const FeatureSettings& s = row.settings;
  Check(ValidateSettings(s, static_cast<std::size_t>(SettingsLength(s))), "settings are valid");
}

void CheckTable(std::u16string_view text) {
  Check(features.count >= 0 && features.count <= kMaxFeatures, "the table has 128 rows");
  const bool room = features.count < kMaxFeatures;
  std::int32_t from = 0;
  for (int i = 0; i < features.count; ++i) {
    const FeatureRecord& row = features.rows[i];
    CheckRow(row, text, from);
    if (room) {
      Check(AllFiller(text.substr(static_cast<std::size_t>(from),
                                  static_cast<std::size_t>(row.start - from))),
            "every character belongs to a row");
    }
    from = row.end;
  }
  if (room) Check(AllFiller(text.substr(static_cast<std::size_t>(from))), "to the text's end");
  for (int i = 0; i < features.count; ++i) {
    if (features.rows[i].needsMarkers)
      Check(features.rows[i].id < features.nextId, "given ids lie below the next free one");
  }
}

bool SameRow(const FeatureRecord& a, const FeatureRecord& b) {
  static unsigned char one[kSettingsBytes];
  static unsigned char other[kSettingsBytes];
  WriteSettings(a.settings, one);
  WriteSettings(b.settings, other);
  return a.id == b.id && a.start == b.start && a.end == b.end &&
         std::u16string_view(a.name) == b.name && a.needsMarkers == b.needsMarkers &&
         std::equal(one, one + kSettingsBytes, other);
}

// An index inside a CR LF comes back as the one behind it.
void CheckPositions(std::u16string_view text) {
  const std::size_t step = text.size() / 50 + 1;
  for (std::size_t i = 0; i <= text.size(); i += step) {
    const auto index = static_cast<std::int32_t>(i);
    const bool inPair = i > 0 && text[i - 1] == u'\r' && i < text.size() && text[i] == u'\n';
    Check(TextIndexOf(text, MapTextOffset(text, index)) == (inPair ? index + 1 : index),
          "positions map there and back");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::u16string whole = fuzz::TextOf(data, size);
  const std::u16string_view text = std::u16string_view(whole).substr(0, whole.find(u'\0'));
  ScanProgramText(whole);
  CheckTable(text);
  static const auto first = std::make_unique<FeatureTable>();
  first->count = features.count;
  for (int i = 0; i < features.count; ++i) first->rows[i] = features.rows[i];
  ScanProgramText(u"(MORVA TEXT 7)\r\nG0\r\n(MORVA END 7)\r\nM30");
  ScanProgramText(text);
  Check(features.count == first->count, "the same text gives as many rows");
  for (int i = 0; i < features.count; ++i) {
    Check(SameRow(features.rows[i], first->rows[i]), "the same text gives the same rows");
  }
  CheckPositions(text);
  return 0;
}
