// What the form of a tool says, and the way from there to a record and back.
//
// Pure functions of texts: the form is in the unit that the user works in, the record in inches.
#pragma once

#include <span>
#include <string>

#include "library/tools.h"
#include "platform/message.h"

namespace morva {

// In the order of the form.
enum class ToolField {
  Number,
  Name,
  Type,  // a list
  Diameter,
  Flutes,
  GaugeLength,
  Stickout,
  HOffset,
  DOffset,
  MaxRpm,
  Feed,
  Plunge,
  Coolant,  // a list
  Notes,
};
inline constexpr int kToolFields = 14;

struct ToolTexts {
  std::u16string texts[kToolFields];  // those of the two lists stay empty
  int typeRow = 0;                    // of ToolTypes; -1: none is selected
  int coolantRow = 1;                 // -1: none is selected
  std::u16string& operator[](ToolField field) { return texts[static_cast<int>(field)]; }
  const std::u16string& operator[](ToolField field) const { return texts[static_cast<int>(field)]; }
};

const char16_t* ToolFieldLabel(ToolField field);
// The three rows of the coolant's list, by Coolant.
std::span<const char16_t* const> CoolantRows();

// What the form of a new tool starts with.
ToolTexts NewToolTexts(bool metric);
ToolTexts TextsOfTool(const ToolRecord& tool, bool metric);

// Why a tool is not stored: the box, and the field that it is about. Without words all is well.
struct ToolRefusal {
  const char16_t* title = u"";
  const char16_t* words = u"";
  platform::BoxIcon icon = platform::BoxIcon::None;
  ToolField field = ToolField::Number;
};
// The first of the checks that fails. `isNew`: the tool takes a further place in the table. A
// length or feed that the settings file would hold as 0 fails as 0 does.
ToolRefusal CheckTool(const ToolTexts& texts, bool isNew, bool metric);
// The record of texts that pass. Texts that do not are read by their fallbacks. A length or feed
// that still shows that of `before`, the record under edit, stays to the last digit.
ToolRecord ToolOfTexts(const ToolTexts& texts, bool metric, const ToolRecord* before = nullptr);
// Number fields of which only a part, or nothing, of the typed text was read, with what is kept of
// them: "Diameter 1.000, Max RPM 1". Empty fields are not named; empty: there is none.
std::u16string PartlyRead(const ToolTexts& typed, const ToolTexts& kept);

}  // namespace morva
