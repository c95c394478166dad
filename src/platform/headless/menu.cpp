// Popup menus, answered from the queue of picks.

#include "platform/menu.h"

#include <deque>
#include <utility>

#include "platform/headless/headless_internal.h"

namespace headless {
namespace {

std::deque<int> picks;
std::vector<MenuRecord> records;

void ResetMenus() {
  picks.clear();
  records.clear();
}
ResetHook hook(1, ResetMenus);

}  // namespace

void QueuePick(int itemId) { picks.push_back(itemId); }
void ClearPicks() { picks.clear(); }
std::vector<MenuRecord> TakeMenus() { return std::exchange(records, {}); }

}  // namespace headless

namespace platform {

int ShowPopup(const MenuItem* items, int count, int, int) {
  if (headless::FaultFor("popup")) return -1;
  if (count <= 0) return 0;
  const headless::Asking asking;
  headless::HappenMeanwhile();
  int wanted = 0;
  if (!headless::picks.empty()) {
    wanted = headless::picks.front();
    headless::picks.pop_front();
  }
  headless::MenuRecord record;
  for (int i = 0; i < count; ++i) {
    record.items.push_back({items[i].id, items[i].text, items[i].checked, items[i].enabled});
    // An item that is not there or is dimmed cannot be picked: the menu is left.
    if (wanted != 0 && items[i].id == wanted && items[i].enabled) record.picked = wanted;
  }
  headless::records.push_back(record);
  return record.picked;
}

}  // namespace platform
