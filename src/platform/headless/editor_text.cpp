#include "platform/headless/editor_text.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace headless {

int PositionOfIndex(const EditorText& t, std::size_t index) {
  const auto after = std::upper_bound(t.starts.begin(), t.starts.end(), index);
  const auto line = static_cast<std::size_t>(after - t.starts.begin()) - 1;
  return static_cast<int>(index - line);
}

int LineStartPosition(const EditorText& t, int line) {
  const auto l = static_cast<std::size_t>(line);
  return static_cast<int>(t.starts[l] - l);
}

int TextLengthInPositions(const EditorText& t) {
  return static_cast<int>(t.text.size() - (t.starts.size() - 1));
}

int LineOfPosition(const EditorText& t, int position) {
  int low = 0;
  int high = static_cast<int>(t.starts.size()) - 1;
  while (low < high) {
    const int middle = low + (high - low + 1) / 2;
    if (LineStartPosition(t, middle) <= position) {
      low = middle;
    } else {
      high = middle - 1;
    }
  }
  return low;
}

int LineLengthOf(const EditorText& t, int line) {
  const auto l = static_cast<std::size_t>(line);
  const std::size_t end = l + 1 < t.starts.size() ? t.starts[l + 1] - 2 : t.text.size();
  return static_cast<int>(end - t.starts[l]);
}

std::size_t IndexOfPosition(const EditorText& t, int position) {
  return static_cast<std::size_t>(position) + static_cast<std::size_t>(LineOfPosition(t, position));
}

namespace {

std::vector<std::size_t> StartsIn(std::u16string_view text, std::size_t at) {
  std::vector<std::size_t> starts;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == u'\n') starts.push_back(at + i + 1);
  }
  return starts;
}

// Puts `inserted` in the place of `removed` units at `at`; no history.
void Splice(EditorText& t, std::size_t at, std::size_t removed, std::u16string_view inserted) {
  using Offset = std::ptrdiff_t;
  const auto first = std::upper_bound(t.starts.begin(), t.starts.end(), at) - t.starts.begin();
  const auto last =
      std::upper_bound(t.starts.begin(), t.starts.end(), at + removed) - t.starts.begin();
  t.text.replace(at, removed, inserted);
  for (auto i = last; i < static_cast<Offset>(t.starts.size()); ++i) {
    auto& start = t.starts[static_cast<std::size_t>(i)];
    start = start - removed + inserted.size();
  }
  const std::vector<std::size_t> added = StartsIn(inserted, at);
  const Offset gone = last - first;
  const Offset come = static_cast<Offset>(added.size());
  const Offset kept = std::min(gone, come);
  std::copy_n(added.begin(), kept, t.starts.begin() + first);
  if (come > kept) {
    t.starts.insert(t.starts.begin() + first + kept, added.begin() + kept, added.end());
    t.runs.insert(t.runs.begin() + first + kept, static_cast<std::size_t>(come - kept), {});
  } else if (gone > kept) {
    t.starts.erase(t.starts.begin() + first + kept, t.starts.begin() + last);
    t.runs.erase(t.runs.begin() + first + kept, t.runs.begin() + last);
  }
  for (Offset i = first - 1; i < first + come; ++i) t.runs[static_cast<std::size_t>(i)].clear();
  ++t.revision;
  platform::NoteLines(
      t.journal, t.revision,
      {static_cast<int>(first - 1), static_cast<int>(gone + 1), static_cast<int>(come + 1)});
}

bool Extends(const EditorText& t, std::size_t at, std::size_t removed,
             std::u16string_view inserted) {
  if (t.undo.empty() || removed != 0 || inserted.find(u'\n') != inserted.npos) return false;
  const TextChange& last = t.undo.back();
  return last.typing && last.at + last.inserted.size() == at;
}

}  // namespace

void SetWholeText(EditorText& t, std::u16string_view text) {
  t.text = WithCrLf(text);
  t.starts.assign(1, 0);
  const std::vector<std::size_t> more = StartsIn(t.text, 0);
  t.starts.insert(t.starts.end(), more.begin(), more.end());
  t.runs.assign(t.starts.size(), {});
  t.undo.clear();
  t.redo.clear();
  ++t.revision;
}

int ReplacePositions(EditorText& t, int from, int to, std::u16string_view text, HistoryUse use) {
  const std::u16string inserted = WithCrLf(text);
  const std::size_t at = IndexOfPosition(t, from);
  const std::size_t removed = IndexOfPosition(t, to) - at;
  if (use == HistoryUse::Empty || t.frozen > 0) {
    EmptyHistory(t);
  } else if (use == HistoryUse::Typing && Extends(t, at, removed, inserted)) {
    t.undo.back().inserted += inserted;
    t.redo.clear();
  } else {
    const bool typing = use == HistoryUse::Typing && inserted.find(u'\n') == inserted.npos;
    t.undo.push_back({at, t.text.substr(at, removed), inserted, typing});
    t.redo.clear();
  }
  Splice(t, at, removed, inserted);
  return PositionOfIndex(t, at + inserted.size());
}

void EmptyHistory(EditorText& t) {
  t.undo.clear();
  t.redo.clear();
}

void EndTypingRun(EditorText& t) {
  if (!t.undo.empty()) t.undo.back().typing = false;
}

bool UndoStep(EditorText& t, int& caret) {
  if (t.undo.empty()) return false;
  TextChange change = std::move(t.undo.back());
  t.undo.pop_back();
  change.typing = false;
  Splice(t, change.at, change.inserted.size(), change.removed);
  caret = PositionOfIndex(t, change.at + change.removed.size());
  t.redo.push_back(std::move(change));
  return true;
}

bool RedoStep(EditorText& t, int& caret) {
  if (t.redo.empty()) return false;
  TextChange change = std::move(t.redo.back());
  t.redo.pop_back();
  Splice(t, change.at, change.removed.size(), change.inserted);
  caret = PositionOfIndex(t, change.at + change.inserted.size());
  t.undo.push_back(std::move(change));
  return true;
}

}  // namespace headless
