// What the questions share: a fresh window, makers, and a record of all that is told.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "contract/hands.h"
#include "platform/control.h"
#include "platform/dialog.h"
#include "platform/editor.h"
#include "platform/events.h"
#include "platform/listing.h"
#include "platform/window.h"

namespace contract {

using Lines = std::vector<std::string>;

// What a question lets happen inside a notification.
struct Listening {
  std::function<void(int, int)> command;
  std::function<bool(int, const platform::KeyEvent&)> key;
  std::function<void(int, bool)> selection;
  std::function<void(int, bool)> focusChanged;
  std::function<void(int, int)> timer;
  std::function<void(std::uint32_t, std::uint64_t)> posted;
  std::function<bool(int, const platform::PointerEvent&)> pointer;
  std::function<bool(int, int)> contextMenu;
  std::function<void(int, int)> resized;
  std::function<bool()> closing;
  std::function<void(int, const platform::DrawState&, platform::Canvas&)> drawItem;
  std::function<void(int, platform::Canvas&)> paint;
  std::function<void(int, platform::ViewValue&)> viewValue;
};
inline Listening listening;

class Contract : public testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  // What was told since the last Forget, oldest first: those whose first word is among `kinds`,
  // which blanks part. "command 1 768", "key 1 A", "typed 1 a", "selection 1", "gained 1",
  // "lost 1", "timer 1 2", "posted 1 2", "pointer 1 press 3 4", "listclick 1 2", "value 1 2",
  // "menu 1 -1", "resized 3 4", "closing", "activated",
  // "destroyed".
  static Lines Told(std::string_view kinds);
  static void Forget();
  // Whether exactly this was told.
  static bool WasTold(const std::string& line);

  static void Make(int id, platform::ControlKind kind, const char16_t* text = u"",
                   int parent = platform::kMainWindow);
  static void MakeRows(int id, platform::ListKind kind, int rows,
                       int parent = platform::kMainWindow);
  static void MakeView(int id, const platform::Rect& place, bool takesFocus = false,
                       int parent = platform::kMainWindow);
  static void MakeEditor(int id, std::u16string_view text);
  // At half the height of a control, or of a row.
  static void Click(int id, const hands::Held& held = {});
  static void ClickRow(int id, int row, const hands::Held& held = {});
  // Pastes "|" over the selection or at the caret, which shows where it is; the text then.
  static std::u16string Marked(int id);
  static void Press(int key) { hands::Press({key, false, false, false}); }
  static void PressCtrl(int key) { hands::Press({key, true, false, false}); }
  static void PressShift(int key) { hands::Press({key, false, true, false}); }
  static void PressAlt(int key) { hands::Press({key, false, false, true}); }
};

}  // namespace contract
