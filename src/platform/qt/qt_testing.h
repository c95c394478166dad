// The way of widget tests from an id to the real widget. Nothing else includes it.
#pragma once

class QString;
class QWidget;

namespace platform {

// The widget behind an id, or null.
QWidget* WidgetOf(int id);
// What ExecutablePath answers from now on, so that a test has its own settings and data.
void SetExecutablePathForTests(const QString& path);

}  // namespace platform
