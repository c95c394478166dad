// What the tests and the driver can see of a placed thing.

#include "platform/headless/headless_internal.h"

namespace headless {
namespace {

const char16_t* KindWord(Kind kind) {
  constexpr const char16_t* kWords[] = {u"button",    u"check",  u"label", u"edit",
                                        u"multiedit", u"log",    u"list",  u"multilist",
                                        u"combo",     u"editor", u"view"};
  return kWords[static_cast<int>(kind)];
}

}  // namespace

bool Describe(int id, ControlInfo& info) {
  const Item* item = Find(id);
  if (!item) return false;
  info.id = id;
  info.kind = KindWord(item->kind);
  info.text = platform::TextOf(id);
  if (item->kind == Kind::Combo) info.text = platform::RowText(id, item->list.current);
  info.name = platform::AccessibleName(id);
  info.visible = platform::IsVisible(id);
  info.enabled = platform::IsEnabled(id);
  info.checked = item->checked;
  info.behind = IsBehindDialog(id);
  info.place = platform::PlaceInMainWindow(id);
  info.colours = item->colours;
  return true;
}

}  // namespace headless
