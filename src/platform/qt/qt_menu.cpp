// Popup menus by item ids.

#include <QAction>
#include <QMenu>

#include "platform/menu.h"
#include "platform/qt/qt_internal.h"

namespace platform {

int ShowPopup(const MenuItem* items, int count, int x, int y) {
  // The toolkit would show an empty frame and wait.
  if (count <= 0) return 0;
  QWidget* main = MainWidget();
  QMenu menu(main);
  menu.setFont(FontOf(FontRole::Body));
  menu.setAccessibleName(QStringLiteral("Menu"));
  for (int i = 0; i < count; ++i) {
    const MenuItem& item = items[i];
    if (item.id == 0) {
      menu.addSeparator();
      continue;
    }
    // What follows a tab is set at the right edge by the toolkit; "&" is a plain character.
    QString caption = Text(item.text);
    caption.replace(u'&', QStringLiteral("&&"));
    QAction* action = menu.addAction(caption);
    action->setData(item.id);
    action->setEnabled(item.enabled);
    if (item.checked) {
      action->setCheckable(true);
      action->setChecked(true);
    }
  }
  const QPoint place = main != nullptr ? main->mapToGlobal(QPoint(x, y)) : QPoint(x, y);
  // Assistive technology triggers an item and leaves the menu open.
  const QAction* chosen = nullptr;
  QObject::connect(&menu, &QMenu::triggered, &menu, [&menu, &chosen](const QAction* action) {
    chosen = action;
    menu.close();
  });
  const Asking asking;
  menu.exec(place);
  return chosen != nullptr ? chosen->data().toInt() : 0;
}

}  // namespace platform
