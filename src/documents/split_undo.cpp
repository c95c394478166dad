#include "documents/split_undo.h"

#include <cstdint>

#include "app/command_ids.h"
#include "documents/tab_table.h"
#include "text/text_hash.h"

namespace morva {

namespace {

struct SplitTrace {
  std::uint64_t serial = 0;  // of the program, 0: there is none
  int length = 0;            // of the text before
  TextDigest hash = {};
  platform::EditorRange range;
};
SplitTrace last;

bool StandsAsBefore() {
  return platform::EditorLength(kIdEditor) == last.length &&
         DigestOf(platform::EditorText(kIdEditor)) == last.hash;
}

}  // namespace

void NoteSplit(std::u16string_view text, platform::EditorRange range) {
  last = {ActiveSerial(), platform::EditorLength(kIdEditor), DigestOf(text), range};
}

void ReturnBehindUndo() {
  if (last.serial == 0 || last.serial != ActiveSerial()) return;
  const platform::EditorRange caret = platform::EditorSelection(kIdEditor);
  const bool leftThere = caret.from == caret.to && caret.to == last.range.to;
  if (!leftThere || !StandsAsBefore()) return;
  platform::SetEditorSelection(kIdEditor, {last.range.from, last.range.from});
  platform::ScrollCaretIntoView(kIdEditor);
  last = {};
}

void ResetSplitUndo() { last = {}; }

}  // namespace morva
