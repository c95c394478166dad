#include "codetools/go_to_line.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/palette.h"
#include "app/panels.h"
#include "app/router.h"
#include "app/wells.h"
#include "codetools/caret_place.h"
#include "documents/tab_table.h"
#include "forms/form.h"
#include "platform/control.h"
#include "platform/dialog.h"
#include "platform/editor.h"
#include "text/codetext.h"

namespace morva {

namespace {

using platform::FontRole;
using platform::Rect;

constexpr Rect kPlace{420, 200, 420 + 340, 200 + 184};
constexpr int kAccepted = 1;
constexpr std::size_t kLineDigits = 9;  // no text has so many lines

// clang-format off
constexpr FormRow kRows[] = {
    {.kind = RowKind::Words, .id = kIdLineNumber, .label = u"Line number", .filled = true,
     .limit = 24, .width = 140},
    {.kind = RowKind::Note, .id = kIdLineNote, .height = 52},
    {.kind = RowKind::Keys, .keys = {kIdLineGo, kIdLineCancel}, .shares = {110, 110}, .above = 1},
};
// clang-format on
constexpr FormLook kLook{.edge = 20,
                         .top = 14,
                         .gap = 10,
                         .keyGap = 10,
                         .tightGap = 10,
                         .inset = 1,
                         .fieldHeight = 28,
                         .keyHeight = 32,
                         .labelHeight = 22,
                         .keysAtEnd = true,
                         .labelFont = FontRole::Body,
                         .keyFont = FontRole::Body,
                         .labelColour = kBrightAccent};
constexpr Form kLineForm{.look = &kLook, .parent = kViewGoToLine, .rows = kRows};

int wanted = -1;  // line from 0

int LineCount() { return platform::EditorLineCount(ShownEditor()); }

// From 1 to the last line; 0 for any other text.
int LineIn(std::u16string_view text) {
  while (!text.empty() && text.front() == u' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == u' ') text.remove_suffix(1);
  if (text.empty() || text.size() > kLineDigits || !std::ranges::all_of(text, IsDigit)) return 0;
  const std::int32_t line = ParseInteger(text, 0);
  return line <= LineCount() ? line : 0;
}

void SayInBox(const std::u16string& words) { platform::SetText(kIdLineNote, words); }

void Accept() {
  const int line = LineIn(platform::TextOf(kIdLineNumber));
  if (line > 0) {
    wanted = line - 1;
    return platform::EndDialog(kViewGoToLine, kAccepted);
  }
  SayInBox(u"Type a whole number from 1 to " + IntegerText(LineCount()) + u".");
  platform::SetFocusTo(kIdLineNumber);
  platform::SelectAllText(kIdLineNumber);
}

void OnCommand(int id, int notification) {
  FormNotified(id, notification);
  if (notification != platform::kNotifyClick) return;
  if (id == kIdLineGo) Accept();
  if (id == kIdLineCancel) platform::EndDialog(kViewGoToLine, 0);
}

void PaintBox(platform::Canvas& canvas) {
  FillArea(canvas, platform::CanvasArea(canvas), kPanelBackground);
  PaintForms(canvas, kViewGoToLine);
  // The button that Enter presses.
  FrameWell(canvas, platform::PlaceOf(kIdLineGo), platform::FocusedId() == kIdLineGo, kAccent);
}

bool MakeBox() {
  platform::DialogSpec dialog;
  dialog.id = kViewGoToLine;
  dialog.className = u"MorvaGoToLine";
  dialog.title = u"Go to line";
  dialog.place = kPlace;
  dialog.background = kPanelBackground;
  dialog.defaultButton = kIdLineGo;
  dialog.cancelButton = kIdLineCancel;
  dialog.command = OnCommand;
  if (!platform::MakeDialog(dialog)) return false;
  PlaceForm(kLineForm, {0, 0, RectWidth(kPlace), RectHeight(kPlace) - kLook.top});
  platform::SetText(kIdLineNumber, IntegerText(CaretLine() + 1));
  SayInBox(u"1 to " + IntegerText(LineCount()) + u", counted as beside the program.");
  platform::SetFocusTo(kIdLineNumber);
  platform::SelectAllText(kIdLineNumber);
  return true;
}

}  // namespace

void GoToLine() {
  if (app.compareActive) Call(hooks.leaveCompare);
  if (platform::Exists(kViewGoToLine) || !MakeBox()) return;
  if (platform::RunDialog(kViewGoToLine) != kAccepted) return;
  const int editor = ShownEditor();
  // The text may have changed while the box stood open.
  const int line = std::clamp(wanted, 0, platform::EditorLineCount(editor) - 1);
  const int start = platform::EditorLineStart(editor, line);
  platform::SetEditorSelection(editor, {start, start});
  platform::ScrollToLine(editor, std::max(0, line - platform::VisibleLineCount(editor) / 2));
  platform::SetFocusTo(editor);
}

void RegisterGoToLine() {
  RegisterForm(kLineForm);
  Handlers handlers;
  handlers.id = kViewGoToLine;
  handlers.paint = PaintBox;
  RegisterHandlers(handlers);
  RegisterCommand(RouterStage::Click, kIdGoToLine, platform::kNotifyClick,
                  [](int, int) { GoToLine(); });
}

}  // namespace morva
