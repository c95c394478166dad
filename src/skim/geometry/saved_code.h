// The one line of a skim's code that a program file cannot hold as it is written.
#pragma once

#include <string>
#include <string_view>

#include "documents/feature_settings.h"

namespace morva {

inline constexpr std::u16string_view kSkimStrategyHead = u"(STRATEGY: ";

// Puts the name of the record's strategy back where `code` says it with "?" for the characters that
// a file lacks. Anything else stays as it is.
void RestoreSkimCode(const FeatureSettings& record, std::u16string& code);
// So that a skim is known as generated in a program that was saved, and nobody is asked about that
// line before.
void RegisterSkimCode();

}  // namespace morva
