#include "documents/new_feature.h"

#include <cstdint>
#include <string>
#include <string_view>

#include "app/app_state.h"
#include "app/change_guard.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/mode_table.h"
#include "app/outlets.h"
#include "documents/block_text.h"
#include "documents/edit_link.h"
#include "documents/feature_blocks.h"
#include "documents/feature_marks.h"
#include "documents/feature_operations.h"
#include "documents/insertion.h"
#include "documents/marker_lines.h"
#include "documents/program_changed.h"
#include "documents/tab_table.h"
#include "documents/text_room.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "text/codetext.h"

namespace morva {

namespace {

std::u16string_view CodeText() { return platform::EditorText(kIdEditor); }

// Where the block goes, as a text index, after foreign text got its markers. The table stands.
std::int32_t SettledPlace(std::int32_t selectedId) {
  AutoTagBlocks();
  const std::u16string_view text = CodeText();
  ScanEditorText();
  int row = selectedId != 0 ? FindFeature(selectedId) : -1;
  const std::int32_t caret = TextIndexOf(text, platform::EditorSelection(kIdEditor).to);
  if (row < 0) row = FeatureAround(caret);
  return row < 0 ? caret : features.rows[row].end;
}

void RenderWords() {
  if (app.commandWordsActive) Call(hooks.wordsFromEditor);
}

Destination AskForPlace(std::int32_t selectedId) {
  if (app.commandWordsActive) Call(hooks.editorFromWords);  // the caret, too
  const std::int32_t at = SettledPlace(selectedId);
  RenderWords();
  // A block beyond those of the list could be neither seen nor selected.
  if (!HasRowFor(1, u"New user code")) return Destination::Cancelled;
  return AskIfNeverRun(at, 1);
}

bool Put(const std::u16string& block, std::int32_t id, std::int32_t at, Destination destination) {
  if (destination == Destination::Split) return InsertAtSplit(block, id);
  if (!HasRoomFor(block.size() + 4)) {
    TellNoRoom(u"Insert");
    return false;
  }
  const int position = MapTextOffset(CodeText(), at);
  const InsertingText own;
  platform::ReplaceRange(kIdEditor, {position, position}, u"\r\n" + block + u"\r\n");
  return true;
}

// Into the empty line before the block's END.
void PutCaretInside(std::int32_t id) {
  const std::u16string_view text = CodeText();
  ScanEditorText();
  std::int32_t from = 0;
  std::int32_t end = 0;
  const int row = FindFeature(id);
  if (row < 0 || !UserCodeSpan(text, features.rows[row], from, end)) return;
  const int caret = MapTextOffset(text, end) - 1;
  platform::SetEditorSelection(kIdEditor, {caret, caret});
  platform::ScrollCaretIntoView(kIdEditor);
}

// The new block's number, 0 where the program has no room for it.
std::int32_t PutBlock(std::int32_t selectedId, Destination destination) {
  const std::int32_t at = SettledPlace(selectedId);
  const std::int32_t id = NextTableId();
  CopyFeatureMarks(0, id);
  const std::u16string number = IntegerText(id);
  std::u16string block(kTextMark);
  block.append(number).append(u")\r\n").append(kNameMark).append(u"User code)\r\n\r\n");
  block.append(kEndMark).append(number).append(u")");
  const bool put = Put(block, id, at, destination);
  if (put) PutCaretInside(id);
  RenderWords();
  return put ? id : 0;
}

}  // namespace

void NewUserFeature() {
  const std::int32_t selected = SelectedFeatureId();
  const Destination destination = AskForPlace(selected);
  if (destination == Destination::Cancelled) return;
  const std::int32_t id = PutBlock(selected, destination);
  if (id == 0) return;
  DropEditLink();
  ProgramChanged({.autosave = true, .refreshMs = kChangeRefreshMs});
  platform::Repaint(kViewGutter);
  Call(hooks.setMode, static_cast<int>(kModeHome));
  ShowFeaturesInSidebar(true);
  Call(hooks.layout);
  RefreshFeatureList();
  SelectFeatureRow(id);
  UpdateFeatureCaptions();
  platform::SetFocusTo(ShownEditor());
  ShowStatus(u"New user-code feature reserved here. Paste or type at the cursor.");
}

}  // namespace morva
