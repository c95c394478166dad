// The seven ready templates of the macro builder. Texts of fields are copied as typed, unchecked;
// only the rows of holes read numbers, and read half of a text as one.
#pragma once

#include <span>
#include <string>

namespace morva {

struct CodeWriter;

inline constexpr int kMacroTemplates = 7;
inline constexpr int kMacroFields = 6;

struct MacroField {
  const char16_t* label = u"";  // empty: the field is not used
  const char16_t* start = u"";
};

struct MacroTemplate {
  const char16_t* name = u"";
  MacroField fields[kMacroFields];
};
// Whether a kind is a row of holes, whose first fields are computed with: X, Y, count, spacing.
bool IsHoleRow(int kind);
inline constexpr int kHoleRowPlaces = 4;
inline constexpr int kHoleRowCount = 2;
// By kind, in the order of the builder's list.
std::span<const MacroTemplate> MacroTemplates();

// The text of a kind, from the texts of its fields. `metric` counts for the new program alone.
// Another kind writes nothing.
void WriteMacro(int kind, std::span<const std::u16string, kMacroFields> texts, bool metric,
                CodeWriter& out);

}  // namespace morva
