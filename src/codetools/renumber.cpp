#include "codetools/renumber.h"

#include <algorithm>

#include "app/app_state.h"
#include "app/change_guard.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/outlets.h"
#include "codetools/validator.h"
#include "documents/program_changed.h"
#include "documents/tab_table.h"
#include "documents/text_room.h"
#include "platform/editor.h"
#include "platform/window.h"
#include "text/codetext.h"

namespace morva {

namespace {

constexpr int kRefreshMs = 50;

bool IsBlank(char16_t c) { return c == u' ' || c == u'\t'; }

// The line as it goes out, without its line end; raises the counter where a number is used.
void AddLine(std::u16string& out, std::u16string_view line, std::int64_t& counter) {
  std::size_t first = 0;
  while (first < line.size() && IsBlank(line[first])) ++first;
  const char16_t c = first < line.size() ? FoldUpper(line[first]) : u'\0';
  if (first == line.size() || c == u'%' || c == u'(' || c == u'O') {
    out += line;
    return;
  }
  if (c == u'N') {
    ++first;
    while (first < line.size() && IsDigit(line[first])) ++first;
    while (first < line.size() && IsBlank(line[first])) ++first;
  }
  out += u'N';
  out += IntegerText(counter);
  out += u' ';
  out += line.substr(first);
  counter += 10;
}

// The line without its comments; one that is not closed reaches to its end.
std::u16string CodeOfLine(std::u16string_view line) {
  std::u16string code;
  bool comment = false;
  for (const char16_t c : line.substr(0, line.find(u';'))) {
    if (c == u'(') comment = true;
    if (!comment) code += c;
    if (c == u')') comment = false;
  }
  return code;
}

// Where the user is: a line keeps its index, and what stands behind the caret stays behind it.
struct Place {
  int line = 0;
  int behind = 0;  // units of the line behind the caret
  int top = 0;     // first visible line
};

Place ShownPlace() {
  const int id = ShownEditor();
  const int caret = platform::EditorSelection(id).to;
  Place place;
  place.line = platform::EditorLineOf(id, caret);
  place.behind = platform::EditorLineStart(id, place.line) +
                 platform::EditorLineLength(id, place.line) - caret;
  place.top = platform::FirstVisibleLine(id);
  return place;
}

void ReturnTo(const Place& place) {
  const int line = std::min(place.line, platform::EditorLineCount(kIdEditor) - 1);
  const int length = platform::EditorLineLength(kIdEditor, line);
  const int column = std::max(0, length - place.behind);
  const int position = platform::EditorLineStart(kIdEditor, line) + column;
  platform::SetEditorSelection(kIdEditor, {position, position});
  platform::ScrollToLine(kIdEditor, place.top);
}

}  // namespace

std::u16string RenumberedText(std::u16string_view text) {
  const std::size_t bound = text.size() * 8 + 4096;
  std::u16string out;
  out.reserve(text.size() + text.size() / 2 + 64);
  std::int64_t counter = 10;
  std::size_t start = 0;
  while (start < text.size() && out.size() < bound) {
    std::size_t end = text.find_first_of(u"\r\n", start);
    if (end == std::u16string_view::npos) end = text.size();
    AddLine(out, text.substr(start, end - start), counter);
    out += u"\r\n";
    start = end;
    if (start < text.size()) {
      const bool pair = text[start] == u'\r' && start + 1 < text.size() && text[start + 1] == u'\n';
      start += pair ? 2 : 1;
    }
  }
  if (out.size() > bound) out.resize(bound);
  return out;
}

int CountLineJumps(std::u16string_view text) {
  int jumps = 0;
  while (!text.empty()) {
    const std::u16string_view line = text.substr(0, text.find_first_of(u"\r\n"));
    text.remove_prefix(std::min(text.size(), line.size() + 1));
    const std::u16string code = CodeOfLine(line);
    const bool local = (FindCodeWord(code, u'M', 97) || FindCodeWord(code, u'M', 99)) &&
                       code.find_first_of(u"Pp") != code.npos;
    jumps += local || HoldsFolded(code, u"GOTO") ? 1 : 0;
  }
  return jumps;
}

void RenumberProgram() {
  if (!platform::Exists(kIdEditor)) return;
  const std::u16string renumbered = RenumberedText(platform::EditorText(kIdEditor));
  // A last line without its end is no change of the numbers.
  const std::u16string_view text = platform::EditorText(kIdEditor);
  if (renumbered == text || renumbered == std::u16string(text) + u"\r\n") {
    AppendOutput(u"Program is numbered N10, N20, N30... already.");
    return;
  }
  if (!FitsAsProgram(renumbered)) return TellNoRoom(u"Renumber");
  const Place place = ShownPlace();
  // All that follows a change is done below, once the caret is back in its place.
  {
    const SuppressChanges suppressed;
    platform::SetEditorSelection(kIdEditor, {0, platform::EditorLength(kIdEditor)});
    platform::ReplaceSelection(kIdEditor, renumbered, true);
    ReturnTo(place);
  }
  if (app.commandWordsActive) Call(hooks.wordsFromEditor);
  platform::Repaint(kViewGutter);
  ProgramChanged({.autosave = true,
                  .refreshMs = kRefreshMs,
                  .rebuildPath = true,
                  .logged = u"Program renumbered N10, N20, N30..."});
  // What a jump names may be a computed number, so that it is left to the programmer.
  if (const int jumps = CountLineJumps(renumbered); jumps > 0) {
    AppendOutput(
        u"WARNING: Lines that jump to a line number (M97 P, M99 P, GOTO) were not "
        u"changed: " +
        IntegerText(jumps) + u". Check their targets before this program runs.");
  }
}

}  // namespace morva
