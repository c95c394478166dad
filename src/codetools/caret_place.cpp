#include "codetools/caret_place.h"

#include <string>

#include "app/command_ids.h"
#include "app/surfaces.h"
#include "documents/tab_table.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "platform/window.h"
#include "text/codetext.h"

namespace morva {

namespace {

int shownLine = -1;

}  // namespace

int CaretLine() {
  const int editor = ShownEditor();
  return platform::EditorLineOf(editor, platform::EditorSelection(editor).to);
}

void ShowCaretPlace() {
  const int editor = ShownEditor();
  const platform::EditorRange range = platform::EditorSelection(editor);
  const int line = platform::EditorLineOf(editor, range.to);
  const int column = range.to - platform::EditorLineStart(editor, line);
  std::u16string words = u"Line " + IntegerText(line + 1) + u"   Column " + IntegerText(column + 1);
  if (range.to > range.from) words += u"   (" + IntegerText(range.to - range.from) + u" selected)";
  if (platform::TextOf(kIdCaretPlace) != words) platform::SetText(kIdCaretPlace, words);
  if (line == shownLine) return;
  shownLine = line;
  platform::Repaint(kViewGutter);
}

void ResetCaretPlace() { shownLine = -1; }

}  // namespace morva
