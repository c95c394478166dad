#include "simulator/feature_lines.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "documents/feature_blocks.h"
#include "documents/tab_table.h"
#include "simulator/line_ends.h"

namespace morva {

FeatureLineIndex featureLines;

namespace {

// Counts forward from the last place asked for; features stand in text order, so the text is
// walked once.
class LineCounter {
 public:
  explicit LineCounter(std::u16string_view text) : text_(text) {}

  std::int32_t LineAt(std::size_t offset) {
    offset = std::min(offset, text_.size());
    if (offset < place_) {
      place_ = 0;
      line_ = 0;
    }
    // The last unit of all has nothing behind it and is counted by itself.
    const std::size_t safe = std::min(offset, text_.empty() ? 0 : text_.size() - 1);
    if (safe > place_) {
      line_ += CountLineEnds(text_.data() + place_, safe - place_);
      place_ = safe;
    }
    const bool lastUnit = offset > safe && (text_[safe] == u'\n' || text_[safe] == u'\r');
    return line_ + (lastUnit ? 1 : 0);
  }

 private:
  std::u16string_view text_;
  std::size_t place_ = 0;
  std::int32_t line_ = 0;
};

// The filter of the run under way, and the span of lines for which its last answer holds.
struct LineFilter {
  const ProgramTab* tab = nullptr;
  std::int32_t from = 0;
  std::int32_t to = -1;
  bool dropped = false;
};
LineFilter filter;

bool DropsRow(const ProgramTab& tab, int row) {
  if (tab.isolatedId != 0 && (row < 0 || featureLines.rows[row].id != tab.isolatedId)) return true;
  return row >= 0 && IdListHolds(tab.hiddenIds, featureLines.rows[row].id);
}

}  // namespace

void IndexFeatureLines(std::u16string_view text) { IndexFeatureLines(text, featureLines); }

void IndexFeatureLines(std::u16string_view text, FeatureLineIndex& out) {
  LineCounter counter(text);
  out.count = std::min(features.count, kMaxFeatureLines);
  for (std::int32_t i = 0; i < out.count; ++i) {
    const FeatureRecord& row = features.rows[i];
    const std::int32_t start = std::max(row.start, 0);
    out.rows[i].id = row.id;
    out.rows[i].firstLine = counter.LineAt(static_cast<std::size_t>(start));
    out.rows[i].lastLine = counter.LineAt(static_cast<std::size_t>(std::max(row.end - 1, start)));
  }
}

void RestoreFeatureLines(const FeatureLineIndex& from) { featureLines = from; }

void EmptyFeatureLines() { featureLines.count = 0; }

int FeatureRowOfLine(std::int32_t line) {
  for (std::int32_t i = 0; i < featureLines.count; ++i) {
    const FeatureLines& row = featureLines.rows[i];
    if (row.firstLine <= line && line <= row.lastLine) return i;
  }
  return -1;
}

bool StartLineFilter() {
  filter = LineFilter{};
  filter.tab = ActiveTab();
  if (!filter.tab) return false;
  if (filter.tab->isolatedId != 0) return true;
  for (const std::int32_t id : filter.tab->hiddenIds) {
    if (id != 0) return true;
  }
  return false;
}

bool LineIsDropped(std::int32_t line) {
  if (!filter.tab) return false;
  if (line >= filter.from && line <= filter.to) return filter.dropped;
  const int row = FeatureRowOfLine(line);
  // The answer holds up to the row's end, or until a row that is asked before it begins.
  std::int32_t to =
      row < 0 ? std::numeric_limits<std::int32_t>::max() : featureLines.rows[row].lastLine;
  const std::int32_t earlier = row < 0 ? featureLines.count : row;
  for (std::int32_t i = 0; i < earlier; ++i) {
    if (featureLines.rows[i].firstLine > line)
      to = std::min(to, featureLines.rows[i].firstLine - 1);
  }
  filter.from = line;
  filter.to = to;
  filter.dropped = DropsRow(*filter.tab, row);
  return filter.dropped;
}

}  // namespace morva
