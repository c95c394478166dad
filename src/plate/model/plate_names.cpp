#include "plate/model/plate_names.h"

#include "library/shapes.h"
#include "plate/model/plate.h"
#include "text/codetext.h"

namespace morva {

namespace {

bool IsBlank(char16_t c) { return c <= u' ' || c == 0x7F; }

}  // namespace

std::u16string CleanPlateName(std::u16string_view typed) {
  while (!typed.empty() && IsBlank(typed.front())) typed.remove_prefix(1);
  while (!typed.empty() && IsBlank(typed.back())) typed.remove_suffix(1);
  std::u16string name = KeptShapeName(typed);
  // A long name may have been cut behind a blank, which the settings file would not give back.
  while (!name.empty() && IsBlank(name.back())) name.pop_back();
  return name;
}

Naming GivePlateName(std::u16string_view typed) {
  const std::u16string name = CleanPlateName(typed);
  if (name.empty()) return Naming::Empty;
  for (int i = 0; i < shapeLibrary.count; ++i) {
    if (i == plate.savedShapeIndex) continue;
    if (SameFolded(shapeLibrary.shapes[i].name, name)) return Naming::Taken;
  }
  SetPlateName(name);
  return Naming::Named;
}

}  // namespace morva
