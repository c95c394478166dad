// The caret of edit lines, multi-line edits and logs under the user's keys.

#include <algorithm>

#include "platform/headless/headless_internal.h"

namespace headless {
namespace {

int LineStart(const std::u16string& text, int at) {
  if (at == 0) return 0;
  const std::size_t end = text.rfind(u'\n', static_cast<std::size_t>(at) - 1);
  return end == text.npos ? 0 : static_cast<int>(end) + 1;
}

int LineEnd(const std::u16string& text, int at) {
  const std::size_t end = text.find(u"\r\n", static_cast<std::size_t>(at));
  return static_cast<int>(end == text.npos ? text.size() : end);
}

// In the line above or below, as far right as the text allows; where there is none it stays.
int InNextLine(const std::u16string& text, int at, int column, bool below) {
  const int start = LineStart(text, at);
  const int end = LineEnd(text, at);
  if (below ? end == static_cast<int>(text.size()) : start == 0) return at;
  const int next = below ? end + 2 : LineStart(text, start - 2);
  return std::min(next + column, LineEnd(text, next));
}

int CaretAfter(Item& item, const platform::KeyEvent& key) {
  const std::u16string& text = item.text;
  EditState& edit = item.edit;
  const int length = static_cast<int>(text.size());
  const bool lines = item.kind != Kind::Edit;
  const bool leaves = !key.shift && edit.anchor != edit.caret;
  switch (key.key) {
    case platform::kKeyLeft:
      if (leaves) return std::min(edit.anchor, edit.caret);
      return StepInText(text, edit.caret, false);
    case platform::kKeyRight:
      if (leaves) return std::max(edit.anchor, edit.caret);
      return StepInText(text, edit.caret, true);
    case platform::kKeyHome:
      return lines && !key.ctrl ? LineStart(text, edit.caret) : 0;
    case platform::kKeyEnd:
      return lines && !key.ctrl ? LineEnd(text, edit.caret) : length;
    case platform::kKeyUp:
    case platform::kKeyDown:
      if (edit.column < 0) edit.column = edit.caret - LineStart(text, edit.caret);
      return InNextLine(text, edit.caret, edit.column, key.key == platform::kKeyDown);
    default:
      return edit.caret;
  }
}

}  // namespace

int StepInText(const std::u16string& text, int at, bool forward) {
  const int length = static_cast<int>(text.size());
  const int next = std::clamp(at + (forward ? 1 : -1), 0, length);
  const bool inside = next > 0 && next < length && text[static_cast<std::size_t>(next)] == u'\n' &&
                      text[static_cast<std::size_t>(next) - 1] == u'\r';
  return inside ? next + (forward ? 1 : -1) : next;
}

void MoveEditCaret(Item& item, const platform::KeyEvent& key) {
  EditState& edit = item.edit;
  const bool vertical = key.key == platform::kKeyUp || key.key == platform::kKeyDown;
  if (vertical && item.kind == Kind::Edit) return;
  edit.caret = CaretAfter(item, key);
  if (!vertical) edit.column = -1;
  if (!key.shift) edit.anchor = edit.caret;
  edit.run = EditRun::None;
}

}  // namespace headless
