#include "app/tab_row.h"

#include "platform/control.h"
#include "platform/window.h"

namespace morva {

void ShowTabRow(int firstId, int most, std::span<const std::u16string> names, int active) {
  const int count = static_cast<int>(names.size());
  // No form: there are as many tabs as the program has drawings or plates.
  for (int i = 0; i < most; ++i) {
    const int id = firstId + i;
    std::u16string_view name;
    if (i < count) name = names[static_cast<std::size_t>(i)];
    platform::SetText(id, name);
    platform::SetChecked(id, i == active);
    platform::SetVisible(id, i < count);
    platform::Repaint(id);
  }
}

}  // namespace morva
