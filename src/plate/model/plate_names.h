// Names of plates: a plate has one before anything of it is saved or inserted.
#pragma once

#include <string>
#include <string_view>

namespace morva {

inline constexpr char16_t kNameThisPlate[] = u"Name this plate · automatic saving";
inline constexpr char16_t kCreateNamedPlate[] =
    u"Create a named plate to begin. Your changes will save automatically.";
inline constexpr char16_t kEnterPlateName[] = u"Enter a name beside Save shape.";
inline constexpr char16_t kStartNamedPlate[] = u"Start a named plate before inserting code.";
inline constexpr char16_t kNameTaken[] =
    u"That name already exists. Choose another name or open the saved shape.";
inline constexpr char16_t kPlateNameTitle[] = u"Plate name";  // of that box, and the caption

// The plate has no name, or one that is not known any more.
bool PlateLacksName();

// Another plate of an open program has this name, whatever the case of its letters. Two would be
// saved over each other.
bool IsNameOfOtherDrawing(std::u16string_view name);

// Without blanks and control characters at both ends, as the library keeps it.
std::u16string CleanPlateName(std::u16string_view typed);

enum class Naming {
  Named,  // the plate has the name
  Empty,  // nothing is left of what was typed, and nothing changed
  Taken,  // another saved shape, or another plate of an open program, has it, whatever the case of
          // its letters; nothing changed
};
// Names the live plate.
Naming GivePlateName(std::u16string_view typed);
// The saved shape that may be the live plate's own, as it bears the name that was typed and the
// plate's name is not known any more; -1: none, or another plate has that name.
int LostShapeNamed(std::u16string_view typed);
// It is: the plate has its name from now on, and is saved in its place.
void TakeLostShape(int libraryIndex);

}  // namespace morva
