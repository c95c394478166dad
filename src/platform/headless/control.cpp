// Push buttons, check boxes, labels, edit lines, multi-line edits and logs.

#include "platform/control.h"

#include <algorithm>
#include <utility>

#include "platform/common/line_ends.h"
#include "platform/headless/headless_internal.h"

namespace headless {
namespace {

constexpr int kMostUnits = 32767;  // of an edit line without a limit of its own

std::u16string clipboard;

void ResetClipboard() { clipboard.clear(); }
ResetHook hook(1, ResetClipboard);

Kind KindOf(platform::ControlKind kind) {
  switch (kind) {
    case platform::ControlKind::PushButton:
      return Kind::Button;
    case platform::ControlKind::CheckBox:
      return Kind::Check;
    case platform::ControlKind::Label:
      return Kind::Label;
    case platform::ControlKind::EditLine:
      return Kind::Edit;
    case platform::ControlKind::MultiEdit:
      return Kind::MultiEdit;
    case platform::ControlKind::Log:
      return Kind::Log;
  }
  return Kind::Label;
}

bool IsPlainText(const Item& item) { return IsTextItem(item) && item.kind != Kind::Editor; }

bool HasCaption(const Item& item) {
  return item.kind == Kind::Button || item.kind == Kind::Check || item.kind == Kind::Label;
}

// What a control of this kind can hold of the text.
std::u16string Fitting(const Item& item, std::u16string_view text) {
  if (item.kind == Kind::MultiEdit || item.kind == Kind::Log) return WithCrLf(text);
  if (item.kind == Kind::Edit) return platform::WithoutLineEnds(text);
  return std::u16string(text);
}

void PlaceText(Item& item, std::u16string text) {
  item.text = std::move(text);
  item.edit = EditState();
}

bool SwapStep(Item& item, std::vector<EditState::Step>& from, std::vector<EditState::Step>& to) {
  if (from.empty()) return false;
  to.push_back({item.text, item.edit.caret});
  item.text = std::move(from.back().text);
  item.edit.anchor = item.edit.caret =
      std::min(from.back().caret, static_cast<int>(item.text.size()));
  item.edit.run = EditRun::None;
  from.pop_back();
  return true;
}

struct Selected {
  int from;
  int to;
};
Selected SelectionOf(const Item& item) {
  return {std::min(item.edit.anchor, item.edit.caret), std::max(item.edit.anchor, item.edit.caret)};
}

std::u16string SelectedText(const Item& item) {
  const Selected s = SelectionOf(item);
  return item.text.substr(static_cast<std::size_t>(s.from),
                          static_cast<std::size_t>(s.to - s.from));
}

// True when the text changed.
bool RunEditStep(Item& item, platform::EditAction action) {
  using platform::EditAction;
  const Selected s = SelectionOf(item);
  const bool readOnly = item.readOnly;
  switch (action) {
    case EditAction::SelectAll:
      item.edit.anchor = 0;
      item.edit.caret = static_cast<int>(item.text.size());
      item.edit.run = EditRun::None;
      return false;
    case EditAction::Copy:
      if (s.from != s.to) clipboard = SelectedText(item);
      return false;
    case EditAction::Undo:
      return !readOnly && SwapStep(item, item.edit.undo, item.edit.redo);
    case EditAction::Redo:
      return !readOnly && SwapStep(item, item.edit.redo, item.edit.undo);
    case EditAction::Cut:
      if (readOnly || s.from == s.to) return false;
      clipboard = SelectedText(item);
      return ReplaceInEdit(item, s.from, s.to, u"", EditRun::None);
    case EditAction::Paste:
      if (readOnly || clipboard.empty()) return false;
      return ReplaceInEdit(item, s.from, s.to, clipboard, EditRun::None);
    case EditAction::Delete: {
      if (readOnly) return false;
      if (s.from != s.to) return ReplaceInEdit(item, s.from, s.to, u"", EditRun::None);
      return ReplaceInEdit(item, s.from, StepInText(item.text, s.to, true), u"", EditRun::Delete);
    }
  }
  return false;
}

}  // namespace

std::u16string& Clipboard() { return clipboard; }
void SetClipboard(std::u16string_view text) { clipboard = text; }
std::u16string ClipboardText() { return clipboard; }

bool ReplaceInEdit(Item& item, int from, int to, std::u16string_view text, EditRun run) {
  const auto at = static_cast<std::size_t>(from);
  const auto count = static_cast<std::size_t>(to - from);
  std::u16string fitting = Fitting(item, text);
  const int ownLimit = item.kind == Kind::Edit ? kMostUnits : 0;
  if (const int limit = item.limit > 0 ? item.limit : ownLimit) {
    const int kept = static_cast<int>(item.text.size() - count);
    fitting.resize(platform::FittingUnits(fitting, limit - kept).size());
  }
  if (fitting.empty() && (count == 0 || !text.empty())) return false;
  EditState& edit = item.edit;
  const bool goesOn = run != EditRun::None && run == edit.run && edit.anchor == edit.caret;
  if (!goesOn) edit.undo.push_back({item.text, edit.caret});
  edit.redo.clear();
  item.text.replace(at, count, fitting);
  edit.anchor = edit.caret = from + static_cast<int>(fitting.size());
  edit.column = -1;
  edit.run = run;
  return true;
}

void EditKeyAction(int id, platform::EditAction action) {
  Item* item = Find(id);
  if (!item || !IsPlainText(*item)) return;
  if (RunEditStep(*item, action)) SendCommand(id, platform::kNotifyEditChange);
}

bool EraseBeforeCaret(int id) {
  Item* item = Find(id);
  if (!item || !IsPlainText(*item) || item->readOnly) return false;
  Selected s = SelectionOf(*item);
  const EditRun run = s.from == s.to ? EditRun::Backspace : EditRun::None;
  if (s.from == s.to) s.from = StepInText(item->text, s.from, false);
  if (!ReplaceInEdit(*item, s.from, s.to, u"", run)) return false;
  SendCommand(id, platform::kNotifyEditChange);
  return true;
}

bool TypeInto(int id, std::u16string_view text) {
  const Item* item = Find(id);
  if (!item || !CanBeUsed(id) || !IsTextItem(*item) || item->readOnly) return false;
  if (item->kind == Kind::Editor) return EditorSetAll(id, text);
  platform::SetFocusTo(id);
  Item* edit = Find(id);
  if (!edit) return true;
  const int length = static_cast<int>(edit->text.size());
  if (ReplaceInEdit(*edit, 0, length, text, EditRun::None)) {
    SendCommand(id, platform::kNotifyEditChange);
  }
  return true;
}

namespace {
int clickPlace = -1;
int nextPlace = -1;
}  // namespace

int ClickPlace() { return clickPlace; }

bool ClickAt(int id, int x) {
  nextPlace = x;
  const bool clicked = Click(id);
  nextPlace = -1;
  return clicked;
}

bool Click(int id) {
  Item* item = Find(id);
  if (!item || !CanBeUsed(id)) return false;
  if (item->kind != Kind::Button && item->kind != Kind::Check) return false;
  platform::SetFocusTo(id);
  item = Find(id);
  if (!item) return true;
  if (item->kind == Kind::Check) item->checked = !item->checked;
  const int before = std::exchange(clickPlace, std::exchange(nextPlace, -1));
  SendCommand(id, platform::kNotifyClick);
  clickPlace = before;
  return true;
}

}  // namespace headless

namespace platform {

using headless::Find;
using headless::Item;

bool MakeControl(const ControlSpec& spec) {
  Item* item = headless::NewItem(spec.id, headless::KindOf(spec.kind), spec.parent, spec.hidden);
  if (!item) return false;
  headless::PlaceText(*item, headless::Fitting(*item, spec.text));
  item->name = spec.accessibleName;
  item->font = spec.font;
  item->readOnly = spec.readOnly || spec.kind == ControlKind::Log;
  return true;
}

void SetText(int id, std::u16string_view text) {
  Item* item = Find(id);
  if (item && (headless::HasCaption(*item) || headless::IsPlainText(*item))) {
    headless::PlaceText(*item, headless::Fitting(*item, text));
    item->lineColours.clear();
    item->showsTop = true;
  }
}

std::u16string TextOf(int id) {
  const Item* item = Find(id);
  if (!item) return {};
  return item->editor ? item->editor->text.text : item->text;
}

void AppendText(int id, std::u16string_view text) {
  Item* item = Find(id);
  if (!item || (item->kind != headless::Kind::Log && item->kind != headless::Kind::MultiEdit)) {
    return;
  }
  item->text += WithCrLf(text);
  item->showsTop = false;
  item->edit.undo.clear();
  item->edit.redo.clear();
  item->edit.run = headless::EditRun::None;
}

void ScrollToTop(int id) {
  if (Item* item = Find(id)) item->showsTop = true;
}

void SetLogLineColour(int id, int line, Colour colour) {
  Item* item = Find(id);
  const bool exists = item && item->kind == headless::Kind::Log && line >= 0 &&
                      line <= std::count(item->text.begin(), item->text.end(), u'\n');
  if (exists) item->lineColours[line] = colour;
}

int LogCaretLine(int id) {
  const Item* item = Find(id);
  if (!item || item->kind != headless::Kind::Log) return -1;
  const auto caret = item->text.begin() + item->edit.caret;
  return static_cast<int>(std::count(item->text.begin(), caret, u'\n'));
}

void SetTextLimit(int id, int units) {
  if (Item* item = Find(id)) item->limit = units;
}

void SelectAllText(int id) { RunEditAction(id, EditAction::SelectAll); }

int ClickedAt() { return headless::ClickPlace(); }

void SetChecked(int id, bool checked) {
  Item* item = Find(id);
  const bool stateful =
      item && (item->kind == headless::Kind::Button || item->kind == headless::Kind::Check);
  if (stateful) item->checked = checked;
}

bool IsChecked(int id) {
  const Item* item = Find(id);
  return item && item->checked;
}

void SetAccessibleName(int id, std::u16string_view name) {
  if (Item* item = Find(id)) item->name = name;
}

std::u16string AccessibleName(int id) {
  const Item* item = Find(id);
  if (!item) return {};
  return item->name.empty() && headless::HasCaption(*item) ? item->text : item->name;
}

void SetToolTip(int id, std::u16string_view text) {
  if (Item* item = Find(id)) item->tip = text;
}

// No tip is ever shown here.
void HideToolTips() {}

void SetColours(int id, const ControlColours& colours) {
  if (Item* item = Find(id)) item->colours = colours;
}

bool IsTextControl(int id) {
  const Item* item = Find(id);
  return item && headless::IsTextItem(*item);
}

}  // namespace platform

namespace headless {

bool DoubleClickLogLine(int id, int line) {
  Item* item = Find(id);
  if (!item || item->kind != Kind::Log || !CanBeUsed(id)) return false;
  std::size_t at = 0;
  for (int i = 0; i < line; ++i) {
    at = item->text.find(u'\n', at);
    if (at == std::u16string::npos) return false;
    ++at;
  }
  platform::SetFocusTo(id);
  item->edit.anchor = item->edit.caret = static_cast<int>(at);
  SendCommand(id, platform::kNotifyListDouble);
  return true;
}

bool ShowsTop(int id) {
  const Item* item = Find(id);
  return item && item->showsTop;
}

bool LogLineColour(int id, int line, platform::Colour& colour) {
  const Item* item = Find(id);
  const auto found =
      item ? item->lineColours.find(line) : std::map<int, platform::Colour>::const_iterator();
  if (!item || found == item->lineColours.end()) return false;
  colour = found->second;
  return true;
}

std::u16string ToolTipOf(int id) {
  const Item* item = Find(id);
  return item ? item->tip : std::u16string();
}

}  // namespace headless
