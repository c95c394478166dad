// Popup menus of commands.
#include <vector>

#include "app/commands.h"
#include "platform/menu.h"

namespace morva {

std::u16string MenuText(int id, bool on, MenuStyle style) {
  const Command* row = CommandOf(id);
  if (!row) return {};
  const bool items = style == MenuStyle::Items;
  std::u16string words = items && row->menuWords[0] ? row->menuWords : WordsOf(id, on);
  const std::u16string chord = ChordWords(row->chord);
  return chord.empty() || chord == words ? words : words + (items ? u"\t" : u"        ") + chord;
}

int ShowCommandMenu(std::span<const MenuRow> rows, int x, int y, MenuStyle style) {
  std::vector<std::u16string> texts;
  for (const MenuRow& row : rows) {
    texts.push_back(row.words[0] ? row.words : MenuText(row.id, row.on, style));
  }
  std::vector<platform::MenuItem> items;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    items.push_back({rows[i].id, texts[i].c_str(), rows[i].checked, rows[i].enabled});
  }
  return platform::ShowPopup(items.data(), static_cast<int>(items.size()), x, y);
}

}  // namespace morva
