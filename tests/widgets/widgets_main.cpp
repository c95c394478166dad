// The widget tests' own main: the toolkit's application stands before the first test.

#include <gtest/gtest.h>

#include "platform/process.h"
#include "widgets/stand.h"

namespace stand {

namespace {

bool KeepKey(int, const platform::KeyEvent& key) {
  told.keys.push_back(key.key);
  return false;
}

void KeepTyped(int, char16_t character) {
  if (character == 0) {
    ++told.typedNothing;
  } else {
    told.typed.push_back(character);
  }
}

void PaintBlack(int, platform::Canvas& canvas) {
  platform::FillArea(canvas, platform::CanvasArea(canvas), 0);
}

void Listen() {
  events = platform::Events();
  events.command = [](int id, int code) { told.commands.push_back({id, code}); };
  events.key = KeepKey;
  events.typed = KeepTyped;
  events.selection = [](int, bool) { ++told.selections; };
  events.listClick = [](int, int row, int, int) { told.clickedRows.push_back(row); };
  events.contextMenu = [](int id, int, int, int) {
    told.menus.push_back(id);
    return true;
  };
  events.pointer = [](int, const platform::PointerEvent& event) {
    told.pointers.push_back(event);
    return true;
  };
  events.paint = PaintBlack;
  events.drawItem = [](int, const platform::DrawState& state, platform::Canvas& canvas) {
    told.drawn.push_back(state);
    platform::FillArea(canvas, state.area, 0x102030);
  };
  platform::ListenTo(&events);
}

}  // namespace

void Open() {
  platform::ListenTo(nullptr);
  platform::Destroy(platform::kMainWindow);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  platform::MainWindowSpec spec;
  spec.className = u"StandWindow";
  spec.title = u"stand";
  spec.place = {0, 0, 1200, 800};
  spec.minimumWidth = 400;
  spec.minimumHeight = 300;
  platform::MakeMainWindow(spec);
  Listen();
  platform::ShowMainWindow();
  (void)QTest::qWaitForWindowExposed(platform::WidgetOf(platform::kMainWindow));
  QApplication::setActiveWindow(platform::WidgetOf(platform::kMainWindow));
  told = Told();
}

bool Until(const std::function<bool()>& state) {
  QElapsedTimer clock;
  clock.start();
  while (!state()) {
    if (clock.elapsed() > 5000) return false;
    QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
  }
  return true;
}

int Count(int id, int notification) {
  int count = 0;
  for (const Command& each : told.commands) {
    if (each.id == id && each.notification == notification) ++count;
  }
  return count;
}

}  // namespace stand

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  testing::InitGoogleTest(&argc, argv);
  platform::BeginProcess(argc, argv);
  const int failed = RUN_ALL_TESTS();
  platform::EndProcess();
  return failed;
}
