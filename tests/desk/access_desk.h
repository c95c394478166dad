// What assistive technology is told of the real window, and its hands on it. For desk tests.
#pragma once

#include <QAccessible>
#include <QMenu>
#include <QMetaEnum>
#include <functional>
#include <vector>

#include "app/command_ids.h"
#include "desk/at_desk.h"
#include "platform/control.h"
#include "platform/window.h"

namespace assist {

inline QAccessibleInterface* Of(QWidget* widget) {
  return QAccessible::queryAccessibleInterface(widget);
}
inline QAccessibleInterface* Of(int id) { return Of(desk::WidgetOf(id)); }

// "CheckBox 'MM'".
inline std::string Words(QAccessibleInterface* speaks) {
  const char* role = QMetaEnum::fromType<QAccessible::Role>().valueToKey(speaks->role());
  return std::string(role ? role : "?") + " '" + speaks->text(QAccessible::Name).toStdString() +
         "'";
}

inline QStringList Actions(QAccessibleInterface* speaks) {
  QAccessibleActionInterface* acts = speaks->actionInterface();
  return acts ? acts->actionNames() : QStringList();
}
inline QString Press() { return QAccessibleActionInterface::pressAction(); }
inline QString Toggle() { return QAccessibleActionInterface::toggleAction(); }
inline QString SetFocus() { return QAccessibleActionInterface::setFocusAction(); }

// Does it and lets the loop work off what it asked for.
inline void Do(QAccessibleInterface* speaks, const QString& action) {
  ASSERT_TRUE(speaks && speaks->actionInterface()) << action.toStdString();
  speaks->actionInterface()->doAction(action);
  QCoreApplication::processEvents();
}
inline void Do(int id, const QString& action) { Do(Of(id), action); }

// All below that can be seen, with those that it lies in first.
inline void Walk(QAccessibleInterface* from,
                 const std::function<void(QAccessibleInterface*)>& visit) {
  if (!from || !from->isValid() || from->state().invisible) return;
  visit(from);
  for (int i = 0; i < from->childCount(); ++i) Walk(from->child(i), visit);
}

}  // namespace assist
