#include "contract/contract.h"

#include <algorithm>
#include <sstream>

#include "platform/canvas.h"

namespace contract {

namespace {

using platform::PointerAction;

Lines told;
platform::Events events;

void Tell(const char* word, std::initializer_list<long long> numbers) {
  std::string line = word;
  for (const long long each : numbers) line += " " + std::to_string(each);
  told.push_back(line);
}

// Printable characters as themselves, everything else as a number.
std::string CharacterWord(int c) {
  return c > ' ' && c < 0x7F ? std::string(1, static_cast<char>(c)) : std::to_string(c);
}

const char* ActionWord(PointerAction action) {
  constexpr const char* kWords[] = {"press", "release", "move", "double", "wheel", "leave", "lost"};
  return kWords[static_cast<int>(action)];
}

void HearCommand(int id, int notification) {
  Tell("command", {id, notification});
  if (listening.command) listening.command(id, notification);
}

void HearSelection(int id, bool byUser) {
  Tell("selection", {id});
  if (listening.selection) listening.selection(id, byUser);
}

bool HearKey(int id, const platform::KeyEvent& key) {
  std::string line = "key " + std::to_string(id) + " ";
  if (key.ctrl) line += "ctrl+";
  if (key.shift) line += "shift+";
  if (key.alt) line += "alt+";
  told.push_back(line + CharacterWord(key.key));
  return listening.key && listening.key(id, key);
}

void HearTyped(int id, char16_t character) {
  told.push_back("typed " + std::to_string(id) + " " + CharacterWord(character));
}

void HearTimer(int window, int timer) {
  Tell("timer", {window, timer});
  if (listening.timer) listening.timer(window, timer);
}

void HearPosted(std::uint32_t message, std::uint64_t first, std::uint64_t) {
  Tell("posted", {message, static_cast<long long>(first)});
  if (listening.posted) listening.posted(message, first);
}

bool HearPointer(int view, const platform::PointerEvent& event) {
  told.push_back("pointer " + std::to_string(view) + " " + ActionWord(event.action));
  if (event.action == PointerAction::Wheel) {
    told.back() += " " + std::to_string(event.wheel);
  } else if (event.action != PointerAction::Leave && event.action != PointerAction::Lost) {
    told.back() += " " + std::to_string(event.x) + " " + std::to_string(event.y);
  }
  return !listening.pointer || listening.pointer(view, event);
}

bool HearContextMenu(int id, int row, int, int) {
  Tell("menu", {id, row});
  return !listening.contextMenu || listening.contextMenu(id, row);
}

void HearListClick(int id, int row, int, int) { Tell("listclick", {id, row}); }

void HearViewValue(int view, platform::ViewValue& value) {
  if (listening.viewValue) listening.viewValue(view, value);
}

void HearChosenValue(int view, int step) { Tell("value", {view, step}); }

void HearFocus(int id, bool gained) {
  Tell(gained ? "gained" : "lost", {id});
  if (listening.focusChanged) listening.focusChanged(id, gained);
}

void HearResized(int width, int height) {
  Tell("resized", {width, height});
  if (listening.resized) listening.resized(width, height);
}

bool HearClosing() {
  Tell("closing", {});
  return !listening.closing || listening.closing();
}

void HearPaint(int view, platform::Canvas& canvas) {
  platform::FillArea(canvas, platform::CanvasArea(canvas), 0);
  if (listening.paint) listening.paint(view, canvas);
}

void HearDrawItem(int id, const platform::DrawState& state, platform::Canvas& canvas) {
  platform::FillArea(canvas, state.area, 0);
  if (listening.drawItem) listening.drawItem(id, state, canvas);
}

void Listen() {
  events = platform::Events();
  events.command = HearCommand;
  events.selection = HearSelection;
  events.key = HearKey;
  events.typed = HearTyped;
  events.timer = HearTimer;
  events.posted = HearPosted;
  events.pointer = HearPointer;
  events.contextMenu = HearContextMenu;
  events.listClick = HearListClick;
  events.viewValue = HearViewValue;
  events.chooseValue = HearChosenValue;
  events.focusChanged = HearFocus;
  events.resized = HearResized;
  events.closing = HearClosing;
  events.activated = [] { Tell("activated", {}); };
  events.destroyed = [] { Tell("destroyed", {}); };
  events.paint = HearPaint;
  events.drawItem = HearDrawItem;
  platform::ListenTo(&events);
}

}  // namespace

void Contract::SetUp() {
  listening = Listening();
  hands::Open();
  Listen();
  Forget();
}

void Contract::TearDown() {
  platform::ListenTo(nullptr);
  listening = Listening();
  hands::Close();
}

Lines Contract::Told(std::string_view kinds) {
  hands::Settle();
  Lines wanted;
  for (const std::string& line : told) {
    std::istringstream words{std::string(kinds)};
    const std::string first = line.substr(0, line.find(' '));
    for (std::string kind; words >> kind;) {
      if (kind == first) wanted.push_back(line);
    }
  }
  return wanted;
}

bool Contract::WasTold(const std::string& line) {
  hands::Settle();
  return std::find(told.begin(), told.end(), line) != told.end();
}

void Contract::Forget() {
  hands::Settle();
  told.clear();
}

void Contract::Make(int id, platform::ControlKind kind, const char16_t* text, int parent) {
  platform::ControlSpec spec;
  spec.id = id;
  spec.kind = kind;
  spec.text = text;
  spec.parent = parent;
  ASSERT_TRUE(platform::MakeControl(spec));
  // Beside each other, so that every control can be pointed at.
  const int left = 20 + id % 5 * 230;
  const int top = 20 + id / 5 % 5 * 150;
  platform::SetPlace(id, {left, top, left + 220, top + 120});
}

void Contract::MakeRows(int id, platform::ListKind kind, int rows, int parent) {
  platform::ListSpec spec;
  spec.id = id;
  spec.kind = kind;
  spec.parent = parent;
  ASSERT_TRUE(platform::MakeList(spec));
  // Five rows of 24 pixels are in view.
  platform::SetPlace(id, {600, 400, 800, 520});
  for (int row = 0; row < rows; ++row) {
    platform::AddRow(id, u"row " + std::u16string(1, static_cast<char16_t>(u'a' + row)), row * 10);
  }
}

void Contract::MakeView(int id, const platform::Rect& place, bool takesFocus, int parent) {
  platform::ViewSpec spec;
  spec.id = id;
  spec.takesFocus = takesFocus;
  spec.parent = parent;
  ASSERT_TRUE(platform::MakeView(spec));
  platform::SetPlace(id, place);
}

void Contract::MakeEditor(int id, std::u16string_view text) {
  platform::EditorSpec spec;
  spec.id = id;
  ASSERT_TRUE(platform::MakeEditor(spec));
  // Five whole lines are in view, on either platform.
  platform::SetPlace(id, {20, 20, 420, 130});
  platform::SetEditorText(id, text);
  platform::SetFocusTo(id);
  Forget();
}

void Contract::Click(int id, const hands::Held& held) {
  // Near the left edge: a check box is as wide as its words.
  hands::ClickAt(id, 10, platform::ClientArea(id).bottom / 2, held);
}

void Contract::ClickRow(int id, int row, const hands::Held& held) {
  const platform::Rect place = platform::RowPlace(id, row);
  ASSERT_GT(platform::RectHeight(place), 0) << "row " << row << " is not in view";
  hands::ClickAt(id, place.left + 20, (place.top + place.bottom) / 2, held);
}

std::u16string Contract::Marked(int id) {
  hands::CopyElsewhere(u"|");
  platform::RunEditAction(id, platform::EditAction::Paste);
  return platform::TextOf(id);
}

}  // namespace contract
