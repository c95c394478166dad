// A window of the toolkit's own with nothing of the application in it, anew for each test.
#pragma once

#include <QApplication>
#include <QContextMenuEvent>
#include <QElapsedTimer>
#include <QTest>
#include <QWidget>
#include <functional>
#include <string>
#include <vector>

#include "platform/canvas.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "platform/events.h"
#include "platform/listing.h"
#include "platform/qt/qt_testing.h"
#include "platform/window.h"

namespace stand {

struct Command {
  int id = 0;
  int notification = 0;
};

// What the platform told since the last Open.
struct Told {
  std::vector<Command> commands;
  std::vector<int> keys;
  std::u16string typed;
  int typedNothing = 0;
  int selections = 0;
  std::vector<int> clickedRows;
  std::vector<int> menus;  // ids asked for a context menu
  std::vector<platform::PointerEvent> pointers;
  std::vector<platform::DrawState> drawn;
};
inline Told told;
inline platform::Events events;

// A shown main window of 1200 by 800; every event is kept in `told`.
void Open();
// Waits until `state` holds; false after five seconds.
bool Until(const std::function<bool()>& state);
int Count(int id, int notification);

}  // namespace stand
