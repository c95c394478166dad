// The user's hands on the headless platform: time is virtual, the pointer goes where a window
// system would send it.

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>

#include "contract/hands.h"
#include "platform/file.h"
#include "platform/headless/headless.h"
#include "platform/window.h"

namespace hands {

namespace {

std::filesystem::path home;
std::function<void()> whileBoxStands;

void Mouse(platform::PointerAction action, int id, int x, int y, const Held& held, int wheel = 0) {
  const platform::Rect place = platform::PlaceInMainWindow(id);
  platform::PointerEvent event;
  event.action = action;
  event.x = place.left + x;
  event.y = place.top + y;
  event.ctrl = held.ctrl;
  event.shift = held.shift;
  event.wheel = wheel;
  const bool button = action != platform::PointerAction::Move && wheel == 0;
  if (button) event.button = held.button;
  headless::Mouse(event);
}

}  // namespace

void Open() {
  headless::Reset(platform::FromUtf8(home.string()));
  platform::MainWindowSpec spec;
  spec.className = u"ContractWindow";
  spec.title = u"contract";
  spec.place = {0, 0, kWidth, kHeight};
  spec.minimumWidth = kLeastWidth;
  spec.minimumHeight = kLeastHeight;
  platform::MakeMainWindow(spec);
  platform::ShowMainWindow();
}

void Close() { headless::Reset(platform::FromUtf8(home.string())); }

void Settle() { headless::Advance(0); }
void Pass(int milliseconds) { headless::Advance(milliseconds); }

bool Until(const std::function<bool()>& state) {
  constexpr int kDeadline = 10000;
  for (int waited = 0; waited < kDeadline; ++waited) {
    if (state()) return true;
    headless::Advance(1);
  }
  return state();
}

void Press(const platform::KeyEvent& key) {
  headless::PressKey(key);
  Settle();
}

void Type(std::u16string_view text) {
  headless::TypeText(text);
  Settle();
}

void ClickAt(int id, int x, int y, const Held& held) {
  Mouse(platform::PointerAction::Press, id, x, y, held);
  ReleaseAt(id, x, y, held);
}

void DoubleClickAt(int id, int x, int y) {
  ClickAt(id, x, y);
  if (!platform::Exists(id)) return;
  Mouse(platform::PointerAction::DoubleClick, id, x, y, {});
  ReleaseAt(id, x, y);
}

void PressAt(int id, int x, int y, const Held& held) {
  Mouse(platform::PointerAction::Press, id, x, y, held);
  Settle();
}

void MoveTo(int id, int x, int y) {
  Mouse(platform::PointerAction::Move, id, x, y, {});
  Settle();
}

void ReleaseAt(int id, int x, int y, const Held& held) {
  Mouse(platform::PointerAction::Release, id, x, y, held);
  Settle();
}

void WheelAt(int id, int x, int y, int notches) {
  const int step = notches > 0 ? 1 : -1;
  for (int i = 0; i != notches; i += step) {
    Mouse(platform::PointerAction::Wheel, id, x, y, {}, step);
  }
  Settle();
}

void PointTo(int id, int x, int y) {
  const platform::Rect place = platform::PlaceInMainWindow(id);
  headless::MovePointerOver(headless::IdAt(place.left + x, place.top + y));
}

void PointAway() { headless::MovePointerOver(0); }

void ChooseInCombo(int id, int row) {
  headless::SelectRows(id, {row});
  Settle();
}

void Assist(int id, bool) {
  headless::Click(id);
  Settle();
}

void AssistRow(int id, int row, bool turn) {
  const platform::Rect place = platform::RowPlace(id, row);
  if (platform::RectHeight(place) == 0) return ChooseInCombo(id, row);
  Held held;
  held.ctrl = turn;
  ClickAt(id, (place.left + place.right) / 2, (place.top + place.bottom) / 2, held);
}

void AssistValue(int view, int step) {
  headless::ChooseValue(view, step);
  Settle();
}

platform::ViewValue ValueRead(int view) { return headless::ValueOfView(view); }

void CopyElsewhere(std::u16string_view text) { headless::SetClipboard(text); }

std::u16string PasteElsewhere() {
  std::u16string text = headless::ClipboardText();
  std::erase(text, u'\r');
  return text;
}

void ResizeWindow(int width, int height) {
  headless::Resize(width, height);
  Settle();
}

void PressCloseKey() {
  headless::CloseKey();
  Settle();
}

void ComeToFront() {
  headless::ComeToFront();
  Settle();
}

void AnswerBox(platform::BoxAnswer answer, const std::function<void()>& meanwhile) {
  headless::QueueAnswer(answer);
  whileBoxStands = meanwhile;
  if (meanwhile) headless::WhileOpen([] { whileBoxStands(); });
}

// A box without an answer is left in the same way.
void EscapeFromBox() {}

void PickFromMenu(int itemId) { headless::QueuePick(itemId); }

void AnswerPrinter(const platform::PrinterFigures& figures) { headless::QueuePrinter(figures); }
void CancelPrinter() { headless::QueuePrinterCancel(); }

void InDialog(int, const std::function<void()>& act) { headless::InDialog(act); }

std::u16string TipOver(int id) {
  const platform::Rect area = platform::ClientArea(id);
  PointTo(id, area.right / 2, area.bottom / 2);
  return headless::ToolTipOf(platform::IdUnderPointer());
}

void Paint(int id) { headless::PaintOf(id); }

}  // namespace hands

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  char name[] = "/tmp/morva-contract-XXXXXX";
  if (mkdtemp(name) == nullptr) return 1;
  hands::home = name;
  const int failed = RUN_ALL_TESTS();
  std::filesystem::remove_all(hands::home);
  return failed;
}
