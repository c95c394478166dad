#include "platform/common/changed_lines.h"

#include <algorithm>

#include "platform/limits.h"

namespace platform {

namespace {

// Two changes, one after the other, as one around both.
ChangedLines Both(const ChangedLines& first, const ChangedLines& then) {
  const int line = std::min(first.line, then.line);
  // Between the two, where both end.
  const int end = std::max(first.line + first.after, then.line + then.before);
  return {line, end - line - first.after + first.before, end - line - then.before + then.after};
}

}  // namespace

void NoteLines(LineJournal& journal, std::uint64_t revision, const ChangedLines& lines) {
  if (!journal.entries.empty() && journal.entries.back().revision + 1 != revision) {
    journal.entries.clear();
  }
  journal.entries.push_back({revision, lines});
  if (journal.entries.size() > kMaxKeptChanges) journal.entries.pop_front();
}

bool LinesSince(const LineJournal& journal, std::uint64_t since, std::uint64_t now,
                ChangedLines& lines) {
  lines = {};
  if (since == now) return true;
  if (since > now || journal.entries.empty() || journal.entries.back().revision != now ||
      journal.entries.front().revision > since + 1) {
    return false;
  }
  bool any = false;
  for (const LineJournal::Entry& entry : journal.entries) {
    if (entry.revision <= since) continue;
    lines = any ? Both(lines, entry.lines) : entry.lines;
    any = true;
  }
  return true;
}

}  // namespace platform
