#include "codetools/editor_keys.h"

#include <string>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/outlets.h"
#include "app/palette.h"
#include "app/panels.h"
#include "app/router.h"
#include "codetools/caret_place.h"
#include "codetools/check_panel.h"
#include "codetools/codetools_commands.h"
#include "codetools/colours.h"
#include "codetools/completion_popup.h"
#include "codetools/editor_help.h"
#include "codetools/find_marks.h"
#include "codetools/find_pane.h"
#include "codetools/go_to_line.h"
#include "codetools/import_panel.h"
#include "codetools/index_panel.h"
#include "codetools/preflight_log.h"
#include "codetools/renumber.h"
#include "codetools/review.h"
#include "codetools/validator.h"
#include "codetools/words_view.h"
#include "documents/program_tabs.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "text/codetext.h"

namespace morva {

namespace {

constexpr int kRightMargin = 8;

void Validate(int, int) { ValidateProgram(); }
void Renumber(int, int) { RenumberProgram(); }

void EditorScrolled(int, int) {
  platform::Repaint(kViewGutter);
  FollowCompletionScroll();
  RefreshFindMarks();
}

// The text is as the move or the key left it.
void FollowEdit() {
  ShowCaretPlace();
  RefreshFindMarks();
}

std::u16string lastHovered;

// The help for the token under the pointer, once for each token that it comes upon and for as long
// as it is there.
bool EditorPointer(int id, const platform::PointerEvent& event) {
  if (event.action != platform::PointerAction::Move) return false;
  const Token token = TokenAtPoint(id, event.x, event.y);
  if (token.text == lastHovered) return false;
  lastHovered = token.text;
  if (const std::u16string help = HelpForToken(token.text); !help.empty()) {
    ShowHelpLine(id, help);
  } else if (HelpShownFor() == id) {
    HideHelp();
  }
  return false;
}

// The pointer and the keys of one of the two editors. Completion has registered before and sees
// a key first.
template <int id>
void ListenToEditor() {
  Handlers handlers;
  handlers.id = id;
  handlers.pointer = [](const platform::PointerEvent& event) { return EditorPointer(id, event); };
  handlers.key = [](const platform::KeyEvent& key) { return EditorKey(id, key); };
  handlers.selection = [](bool) { FollowEdit(); };
  handlers.typed = [](char16_t) { FollowEdit(); };
  RegisterHandlers(handlers);
}

}  // namespace

bool EditorKey(int id, const platform::KeyEvent& key) {
  if (id != kIdEditor && id != kIdWordsEditor) return false;
  return RouteChord(kEditorChords, key) || ProgramKey(key);
}

void PaintGutter(platform::Canvas& canvas) {
  const platform::Rect area = platform::CanvasArea(canvas);
  platform::FillArea(canvas, area, kPanelBackground);
  const int editor = ShownEditor();
  const int lines = platform::EditorLineCount(editor);
  const int current = CaretLine();
  int line = platform::FirstVisibleLine(editor);
  for (int top = area.top + platform::kEditorTop;
       top + platform::kEditorLineHeight <= area.bottom && line < lines;
       top += platform::kEditorLineHeight, ++line) {
    const platform::Rect row{area.left, top, area.right - kRightMargin,
                             top + platform::kEditorLineHeight};
    platform::PaintText(canvas, row, IntegerText(line + 1), platform::FontRole::Small,
                        line == current ? kMainText : kDimText,
                        platform::kAlignRight | platform::kAlignMiddle);
  }
}

void RegisterCodeToolCommands() {
  AddCommands(CodeToolCommands());
  hooks.colourEditor = [] {
    ColourCodeEditor();
    if (app.commandWordsActive) {
      ColourWordsView();
      platform::HideToolTips();
    }
    CompletionAfterRefresh();
  };
  RegisterWordsView();
  RegisterFindPane();
  RegisterReview();
  RegisterIndexPanel();
  RegisterCompletion();
  RegisterImportPanel();
  RegisterGoToLine();
  RegisterTimer(kTimerText, FollowEdit);
  RegisterCheckPanel();
  lastHovered.clear();
  ResetPreflightLog();
  hooks.lastUnitsCode = LastUnitsCode;
  hooks.programLeft = MarkReport;
  ListenToEditor<kIdEditor>();
  ListenToEditor<kIdWordsEditor>();
  Handlers gutter;
  gutter.id = kViewGutter;
  gutter.paint = PaintGutter;
  RegisterHandlers(gutter);
  using platform::kNotifyClick;
  RegisterCommand(RouterStage::Notified, kIdOutputLog, platform::kNotifyListDouble,
                  [](int, int) { FollowReportLine(); });
  RegisterCommand(RouterStage::Click, kIdValidate, kNotifyClick, Validate);
  RegisterCommand(RouterStage::Click, kIdRenumber, kNotifyClick, Renumber);
  RegisterCommand(RouterStage::Click, kIdPreflight, kNotifyClick, Validate);
  RegisterCommand(RouterStage::Click, kIdValidateSecond, kNotifyClick, Validate);
  for (const int id : {kIdEditor, kIdWordsEditor}) {
    RegisterCommand(RouterStage::Notified, id, platform::kNotifyHScroll, EditorScrolled);
    RegisterCommand(RouterStage::Notified, id, platform::kNotifyVScroll, EditorScrolled);
  }
}

}  // namespace morva
