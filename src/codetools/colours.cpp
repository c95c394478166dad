#include "codetools/colours.h"

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/limits.h"
#include "app/palette.h"
#include "platform/window.h"
#include "text/codetext.h"

namespace morva {

namespace {

using platform::Colour;
using platform::ColourRun;

struct Token {
  Colour colour;
  bool bold;
};

// By letter from A; a colour of 0 opens no word.
constexpr Token kTokens[26] = {
    {0, false},               // A
    {0, false},               // B
    {0, false},               // C
    {kCodeTool, true},        // D
    {0, false},               // E
    {kCodeFeed, true},        // F
    {kCodeG, true},           // G
    {kCodeTool, true},        // H
    {kCodeArc, false},        // I
    {kCodeArc, false},        // J
    {kCodeArc, false},        // K
    {kCodeParameter, false},  // L
    {kCodeM, true},           // M
    {kCodeNumber, false},     // N
    {kCodeProgram, true},     // O
    {kCodeParameter, false},  // P
    {kCodeParameter, false},  // Q
    {kCodeArc, false},        // R
    {kCodeSpindle, true},     // S
    {kCodeTool, true},        // T
    {0, false},               // U
    {0, false},               // V
    {0, false},               // W
    {kCodeX, true},           // X
    {kCodeY, true},           // Y
    {kCodeZ, true},           // Z
};

bool OpensNumber(char16_t c) {
  return IsDigit(c) || c == u'.' || c == u'+' || c == u'-' || c == u'#' || c == u'[';
}

bool GoesOn(char16_t c) {
  return IsDigit(c) || c == u'.' || c == u'+' || c == u'-' || c == u'*' || c == u'/' || c == u'#';
}

struct RunList {
  ColourRun* runs;
  int capacity;
  int count = 0;
};

void AddRun(RunList& list, std::size_t from, std::size_t to, Colour colour, bool bold) {
  if (list.count >= list.capacity || to <= from) return;
  ColourRun& run = list.runs[list.count++];
  run.from = static_cast<int>(from);
  run.length = static_cast<int>(to - from);
  run.colour = colour;
  run.bold = bold;
}

// Behind the word that begins at `at`: brackets count by depth, and inside them everything
// belongs to the word.
std::size_t WordEnd(std::u16string_view line, std::size_t at) {
  int depth = 0;
  std::size_t i = at + 1;
  for (; i < line.size(); ++i) {
    const char16_t c = line[i];
    if (c == u'[') {
      ++depth;
    } else if (c == u']' && depth > 0) {
      --depth;
    } else if (depth == 0 && !GoesOn(c)) {
      break;
    }
  }
  return i;
}

ColourRun lineRuns[kMaxLineRuns];

// Calls `colour` with each line of the text, at most `most` units of it, and puts what it gives
// on the editor.
template <typename Colouring>
void ColourLines(int id, std::u16string_view text, std::size_t most, Colouring colour) {
  platform::HoldEditorRedraw(id, true);
  int line = 0;
  std::size_t at = 0;
  while (at <= text.size()) {
    std::size_t end = text.find(u'\r', at);
    if (end == std::u16string_view::npos) end = text.size();
    const std::u16string_view whole = text.substr(at, end - at);
    platform::SetLineRuns(id, line++, lineRuns, colour(whole.substr(0, most)));
    at = end + 2;
  }
  platform::HoldEditorRedraw(id, false);
}

void ClearLines(int id) {
  platform::HoldEditorRedraw(id, true);
  platform::ClearLineRuns(id);
  platform::HoldEditorRedraw(id, false);
}

void ColourCode(int id, std::u16string_view text) {
  if (text.size() > static_cast<std::size_t>(kMaxColouredUnits)) {
    ClearLines(id);
    return;
  }
  bool inComment = false;
  ColourLines(id, text, kMaxColouredLine, [&inComment](std::u16string_view line) {
    return ColourLine(line, inComment, lineRuns, kMaxLineRuns);
  });
}

Colour WordsLineColour(std::u16string_view line) {
  if (!line.empty() && line[0] == u'(') return kWordsComment;
  if (HoldsFolded(line, u"RAPID")) return kWordsRapid;
  if (HoldsFolded(line, u"LINEAR") || HoldsFolded(line, u"CIRCULAR")) return kWordsCut;
  return kWordsPlain;
}

}  // namespace

bool TokenColour(char16_t letter, Colour& colour, bool& bold) {
  const char16_t folded = FoldUpper(letter);
  if (folded < u'A' || folded > u'Z' || kTokens[folded - u'A'].colour == 0) return false;
  colour = kTokens[folded - u'A'].colour;
  bold = kTokens[folded - u'A'].bold;
  return true;
}

int ColourLine(std::u16string_view line, bool& inComment, ColourRun* runs, int capacity) {
  RunList list{runs, capacity};
  std::size_t i = 0;
  while (i < line.size()) {
    const char16_t c = line[i];
    if (c == u'(') inComment = true;
    if (inComment) {
      const std::size_t close = line.find(u')', i);
      const bool closed = close != std::u16string_view::npos;
      const std::size_t end = closed ? close + 1 : line.size();
      AddRun(list, i, end, kCodeComment, false);
      if (closed) inComment = false;
      i = end;
      continue;
    }
    Colour colour = 0;
    bool bold = false;
    if (c == u'%') {
      AddRun(list, i, i + 1, kCodePercent, true);
    } else if (i + 1 < line.size() && OpensNumber(line[i + 1]) && TokenColour(c, colour, bold)) {
      const std::size_t end = WordEnd(line, i);
      AddRun(list, i, end, colour, bold);
      i = end;
      continue;
    }
    ++i;
  }
  return list.count;
}

int ColourWordsLine(std::u16string_view line, ColourRun* runs, int capacity) {
  RunList list{runs, capacity};
  const Colour base = WordsLineColour(line);
  std::size_t plainFrom = 0;
  for (std::size_t i = 0; i < line.size();) {
    const char16_t folded = FoldUpper(line[i]);
    const bool axis = folded >= u'X' && folded <= u'Z';
    if (!axis || i + 1 >= line.size() || !OpensNumber(line[i + 1])) {
      ++i;
      continue;
    }
    const std::size_t end = WordEnd(line, i);
    Colour colour = 0;
    bool bold = false;
    TokenColour(folded, colour, bold);
    AddRun(list, plainFrom, i, base, false);
    AddRun(list, i, end, colour, bold);
    i = end;
    plainFrom = end;
  }
  AddRun(list, plainFrom, line.size(), base, false);
  return list.count;
}

void ColourCodeEditor() {
  if (app.suppressChange || !platform::Exists(kIdEditor)) return;
  ColourCode(kIdEditor, platform::EditorText(kIdEditor));
  platform::Repaint(kIdEditor);
  platform::Repaint(kViewGutter);
}

void ColourWordsView() {
  if (!platform::Exists(kIdWordsEditor)) return;
  ColourWordsPane(kIdWordsEditor, platform::EditorText(kIdWordsEditor),
                  platform::EditorText(kIdEditor).size());
  platform::Repaint(kIdWordsEditor);
}

void ColourPane(int id, std::u16string_view text) { ColourCode(id, text); }

void ColourWordsPane(int id, std::u16string_view words, std::size_t codeUnits) {
  if (codeUnits > static_cast<std::size_t>(kMaxColouredUnits)) {
    ClearLines(id);
    return;
  }
  ColourLines(id, words, kMaxWordsLine, [](std::u16string_view line) {
    return ColourWordsLine(line, lineRuns, kMaxLineRuns);
  });
}

}  // namespace morva
