// What the sources of the driver share.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "driver/line_words.h"

namespace drive {

using Words = std::vector<Word>;  // the line's words behind the command

// The control that a word names: a decimal id, or the accessible name of a visible one.
// False: `error` says why.
bool ReadControl(const Word& word, int& id, std::u16string& error);

std::string AnswerGet(const Words& words);
std::string AnswerCall(const Words& words);
std::string AnswerMouse(const Words& words);
std::string AnswerEditor(const Words& words);

// A path that a line names, allowed and made absolute; empty when it is not allowed.
std::u16string AllowedPath(std::u16string_view path);

// Bytes travel as units up to 255. False: a unit beyond.
bool ToBytes(std::u16string_view text, std::string& bytes);
std::u16string FromBytes(std::string_view bytes);

// Lines given to the DNC log since the start.
std::u16string_view DncLog();

}  // namespace drive
