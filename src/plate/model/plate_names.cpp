#include "plate/model/plate_names.h"

#include <cstdint>

#include "app/app_state.h"
#include "documents/tab_table.h"
#include "library/shapes.h"
#include "plate/model/plate.h"
#include "text/codetext.h"

namespace morva {

namespace {

bool IsBlank(char16_t c) { return c <= u' ' || c == 0x7F; }

constexpr std::uint32_t kNoDrawing = kMaxPlates;

// A drawing of this program but for `except` has the name.
bool IsNameIn(const ProgramTab& tab, std::uint32_t except, std::u16string_view name) {
  const PlateStore* store = tab.plateStore;
  for (std::uint32_t i = 0; store && i < store->count; ++i) {
    if (i != except && SameFolded(store->names[i], name)) return true;
  }
  return false;
}

// Another shape of the library, or another plate, has this name.
bool IsTaken(std::u16string_view name) {
  const bool saved = plate.savedShapeIndex >= 0;
  for (int i = 0; i < shapeLibrary.count; ++i) {
    const char16_t* other = shapeLibrary.shapes[i].name;
    if (saved && SameFolded(other, plate.savedName)) continue;
    if (SameFolded(other, name)) return true;
  }
  return IsNameOfOtherDrawing(name);
}

}  // namespace

bool IsNameOfOtherDrawing(std::u16string_view name) {
  if (name.empty()) return false;
  for (int i = 0; i < app.tabCount; ++i) {
    const bool live = &tabs[i] == ActiveTab() && tabs[i].plateStore;
    if (IsNameIn(tabs[i], live ? tabs[i].plateStore->active : kNoDrawing, name)) return true;
  }
  return false;
}

bool PlateLacksName() { return plate.unnamed || plate.name[0] == 0; }

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
  if (IsTaken(name)) return Naming::Taken;
  SetPlateName(name);
  return Naming::Named;
}

int LostShapeNamed(std::u16string_view typed) {
  const std::u16string name = CleanPlateName(typed);
  const bool lost = !plate.unnamed && plate.name[0] == 0;
  return lost && !IsNameOfOtherDrawing(name) ? FindShape(name) : -1;
}

void TakeLostShape(int libraryIndex) {
  SetPlateName(shapeLibrary.shapes[libraryIndex].name);
  SetPlateShapeIndex(libraryIndex);
}

}  // namespace morva
