// Whether the code of a settings block is still what its settings made.
#pragma once

#include <string>
#include <string_view>

#include "documents/feature_settings.h"

namespace morva {

// The stored hash is the code's; blanks and line ends do not count. Characters that a program file
// could not hold, and that the room of the kind knows, count as if they stood there.
bool IsGeneratedCode(const FeatureSettings& record, std::u16string_view code);

// A kind whose code holds characters that are lost in a program file. The function puts them back
// into `code`, or leaves it as it is. Null takes it away; an unknown kind is passed over.
using CodeRestorer = void (*)(const FeatureSettings& record, std::u16string& code);
void SetCodeRestorer(int kind, CodeRestorer restorer);
void ResetCodeRestorers();

}  // namespace morva
