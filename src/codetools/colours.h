// Token colours of program text and of the command words view.
//
// Colours go on as layout formats: no undo step, no caret move. A comment carries its colour
// over line ends here, unlike in the toolpath, so that an open parenthesis can be seen.
#pragma once

#include <string_view>

#include "platform/editor.h"

namespace morva {

// The coloured stretches of one line in order, `inComment` carried from line to line. How many
// were written; what does not fit in `capacity` is left in the base colour.
int ColourLine(std::u16string_view line, bool& inComment, platform::ColourRun* runs, int capacity);
// The same for a line of the command words view: one colour for the line by what it says, the
// axis words in their own.
int ColourWordsLine(std::u16string_view line, platform::ColourRun* runs, int capacity);
// Colour and weight of a word by its letter, upper case; false for letters that open no word.
bool TokenColour(char16_t letter, platform::Colour& colour, bool& bold);

// Recolours a whole editor from its text.
void ColourCodeEditor();
void ColourWordsView();
// Lines of `text` onto the editor with this id, from a comment state of none.
void ColourPane(int id, std::u16string_view text);
// The same for command words, of a program of `codeUnits` units: its length counts, so that it
// bears colours in both forms or in neither.
void ColourWordsPane(int id, std::u16string_view words, std::size_t codeUnits);

}  // namespace morva
