// One run of the tagger leaves nothing to tag, changes no line of the program but by its
// markers, and can be taken back step by step.
#include "app/app_state.h"
#include "app/command_ids.h"
#include "documents/feature_blocks.h"
#include "fuzz/fuzz.h"
#include "platform/editor.h"
#include "platform/headless/headless.h"

namespace {

using namespace morva;
using fuzz::Check;

void MakeEditorOnce() {
  static bool made = false;
  if (made) return;
  headless::Reset(u"/nonexistent-home");
  platform::EditorSpec editor;
  editor.id = kIdEditor;
  editor.accessibleName = u"Program";
  made = platform::MakeEditor(editor);
  Check(made, "there is an editor");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  MakeEditorOnce();
  ResetAppState();
  std::u16string text = fuzz::TextOf(data, size < 16384 ? size : 16384);
  text = text.substr(0, text.find(u'\0'));
  platform::SetEditorText(kIdEditor, text);
  const std::u16string before(platform::EditorText(kIdEditor));
  const int caret = static_cast<int>(size * 7 % (text.size() + 1));
  platform::SetEditorSelection(kIdEditor, {caret, caret});
  AutoTagBlocks();
  const std::u16string after(platform::EditorText(kIdEditor));
  const int moved = platform::EditorSelection(kIdEditor).to;
  const auto from = static_cast<std::size_t>(TextIndexOf(before, caret));
  const auto to = static_cast<std::size_t>(TextIndexOf(after, moved));
  if (from > 0 && before[from - 1] > u' ' && before[from - 1] != u'%')
    Check(to > 0 && after[to - 1] == before[from - 1], "the caret stays behind its character");
  ScanProgramText(after);
  for (int i = 0; i < features.count; ++i)
    Check(!features.rows[i].needsMarkers, "nothing is left to tag");
  while (platform::CanUndoEditor(kIdEditor)) platform::UndoEditor(kIdEditor);
  Check(platform::EditorText(kIdEditor) == before, "the markers can be taken out again");
  return 0;
}
