// Help for the word at the caret or under the pointer: the token and what it means.
#pragma once

#include <string>
#include <string_view>

namespace morva {

struct Token {
  std::u16string text;  // upper case, at most 63 units; empty: no token there
  int start = 0;        // in the line
  int end = 0;
};

// The token around a place in a line: digits, letters, ".", "-", "+" and "#". Where the place
// is on none, the token left of it.
Token TokenInLine(std::u16string_view line, int place);
// The token at the shown editor's caret; start and end in editor positions.
Token TokenAtCaret();

// The token of an editor at a place in its client pixels; start and end in editor positions.
Token TokenAtPoint(int id, int x, int y);

// What is known of a token: the fixed help, else the code table's row, else the empty text.
std::u16string HelpForToken(std::u16string_view token);
// The help to the StatusLine, or its resting words where there is none. Nothing for an empty
// token. While the autosave is held, that is what stands there.
void ShowHoverHelp(std::u16string_view token);
// The same for a user who has asked for it: the help also while the autosave is held.
void ShowAskedHelp(std::u16string_view token);

}  // namespace morva
