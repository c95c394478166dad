// What changed inside a line: the characters that the other form of it does not have.
#pragma once

#include <string_view>
#include <vector>

namespace morva {

// Whether each unit of `line` is one that `other` does not have at its place. A number counts as
// one, so that X1.5 beside X1.25 differs in the whole of it; anything else goes by the character.
// With `ignoreBlanks` blanks and tabs never count.
std::vector<bool> ChangedUnits(std::u16string_view line, std::u16string_view other,
                               bool ignoreBlanks);

}  // namespace morva
