// What the sources of the driver share.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "builders/common/builder_field.h"
#include "driver/json_text.h"
#include "driver/line_words.h"
#include "library/sketch_object.h"

namespace drive {

using Words = std::vector<Word>;  // the line's words behind the command

// The control that a word names: a decimal id, or the accessible name of a visible one.
// False: `error` says why.
bool ReadControl(const Word& word, int& id, std::u16string& error);

std::string AnswerGet(const Words& words);
std::string AnswerCall(const Words& words);
// An object of a drawing, still open for what belongs to it.
Json ObjectJson(const morva::SketchObject& object);
std::string GetSkim(const Words& words);
// What a builder's form would read in its fields, as typed.
morva::FormValues ReadTyped(std::span<const morva::BuilderField> fields,
                            std::span<const Word> texts, bool metric);
// What the builder would refuse, with the title and the words of its box.
std::string Refused(std::u16string_view title, std::u16string_view words);
// Of shapes, patterns and spirals; `words` begin with the function's name.
std::string CallShapeText(const Words& words);
std::string CallCircularText(const Words& words);
std::string CallRectangularText(const Words& words);
std::string CallCircleSegments(const Words& words);
std::string CallSpiralPoints(const Words& words);
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
