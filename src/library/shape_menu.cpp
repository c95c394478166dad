#include "library/shape_menu.h"

#include <array>
#include <cstddef>
#include <span>

#include "app/command_ids.h"
#include "app/commands.h"
#include "library/shapes.h"
#include "platform/window.h"

namespace morva {

int PickSavedShape(int key, int chosen) {
  constexpr MenuRow kNone{
      .id = kIdCustomShapeFirst, .enabled = false, .words = u"No saved shapes yet"};
  std::array<MenuRow, kMaxShapes> rows;
  std::size_t count = 0;
  for (int i = 0; i < shapeLibrary.count; ++i) {
    rows[count++] = {.id = kIdCustomShapeFirst + i,
                     .checked = chosen == i,
                     .words = shapeLibrary.shapes[i].name};
  }
  if (count == 0) rows[count++] = kNone;
  const platform::Rect place = platform::PlaceInMainWindow(key);
  const int picked = ShowCommandMenu(std::span(rows).first(count), place.left, place.bottom);
  const int index = picked - kIdCustomShapeFirst;
  return index >= 0 && index < shapeLibrary.count ? index : -1;
}

}  // namespace morva
