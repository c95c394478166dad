#include "codetools/find_marks.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/limits.h"
#include "app/palette.h"
#include "codetools/find_match.h"
#include "codetools/find_work.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "platform/window.h"

namespace morva {

namespace {

bool shown = false;  // marks stand in the editor

struct Search {
  std::u16string find;
  bool matchCase = false;
  bool wholeToken = false;
};

bool IsFindUp() {
  return app.mode == kModeFind && app.surface == kSurfaceCode && !app.compareActive &&
         !app.commandWordsActive;
}

void MarkLine(int line, const Search& search, std::vector<platform::LineMark>& marks) {
  const std::u16string whole = platform::EditorLineText(kIdEditor, line);
  // One unit more tells whether a token ends where the part does.
  const std::u16string_view text = std::u16string_view(whole).substr(0, kMaxMarkedLine + 1);
  std::size_t at = 0;
  while (marks.size() < kMaxFindMarks) {
    at = FindMatch(text, at, search.find, search.matchCase, search.wholeToken);
    if (at == text.npos || at + search.find.size() > kMaxMarkedLine) return;
    const int length = static_cast<int>(search.find.size());
    marks.push_back({line, static_cast<int>(at), length});
    at += search.find.size();
  }
}

void Show(const std::vector<platform::LineMark>& marks) {
  if (marks.empty() && !shown) return;
  shown = !marks.empty();
  platform::SetLineMarks(kIdEditor, marks.data(), static_cast<int>(marks.size()), kHitGround,
                         kHitFrame);
}

}  // namespace

void RefreshFindMarks() {
  std::vector<platform::LineMark> marks;
  const Search search{IsFindUp() ? FindField() : std::u16string(),
                      platform::IsChecked(kIdMatchCase), platform::IsChecked(kIdWholeToken)};
  if (search.find.empty()) return Show(marks);
  const int first = platform::FirstVisibleLine(kIdEditor);
  // A line at the lower edge is seen in part.
  const int behind = std::min(first + platform::VisibleLineCount(kIdEditor) + 2,
                              platform::EditorLineCount(kIdEditor));
  for (int line = first; line < behind; ++line) MarkLine(line, search, marks);
  Show(marks);
}

void ResetFindMarks() { shown = false; }

}  // namespace morva
