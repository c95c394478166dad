// What the unit keys of the main window and of the builders' forms say about themselves.
#pragma once

#include <span>

#include "app/commands.h"

namespace morva {

std::span<const Command> UnitCommands();

// What a further pair of keys says; the name tells it from the others.
inline constexpr char16_t kUnitHint[] =
    u"Working units: converts builder inputs; existing G-code is not rewritten.";
bool IsInch(int id);
bool IsMm(int id);
constexpr Command InchKey(int id, const char16_t* name = u"") {
  return {.id = id,
          .words = u"INCH",
          .help = u"Working units: inch",
          .name = name,
          .wordsOn = u"INCH *",
          .hintWords = kUnitHint,
          .on = IsInch,
          .told = kToldChecked | kToldInTip | kToldInWords};
}
constexpr Command MmKey(int id, const char16_t* name = u"") {
  return {.id = id,
          .words = u"MM",
          .help = u"Working units: millimeter",
          .name = name,
          .wordsOn = u"MM *",
          .hintWords = kUnitHint,
          .on = IsMm,
          .told = kToldChecked | kToldInTip | kToldInWords};
}

}  // namespace morva
