// The driver's hands: which control a word means, the pointer, the code editor.

#include <algorithm>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "driver/drive_internal.h"
#include "driver/json_text.h"
#include "text/codetext.h"
#include "platform/control.h"
#include "platform/headless/headless.h"
#include "platform/window.h"

namespace drive {
namespace {

constexpr std::int64_t kMostPosition = 100000000;
constexpr std::int64_t kMostPixels = 100000;

std::vector<int> VisibleNamed(std::u16string_view name, bool labels) {
  std::vector<int> found;
  for (int id : headless::AllIds()) {
    headless::ControlInfo info;
    // The name first, because it alone tells nearly all apart.
    if (platform::AccessibleName(id) != name) continue;
    if (!headless::Describe(id, info) || !info.visible || info.behind) {
      continue;
    }
    if ((info.kind == u"label") == labels) found.push_back(id);
  }
  return found;
}

// Buttons and check boxes by their captions, where the accessible name is another.
std::vector<int> VisibleCaptioned(std::u16string_view caption) {
  std::vector<int> found;
  for (int id : headless::AllIds()) {
    headless::ControlInfo info;
    if (platform::TextOf(id) != caption) continue;
    if (!headless::Describe(id, info) || !info.visible || info.behind) {
      continue;
    }
    if (info.kind == u"button" || info.kind == u"check") found.push_back(id);
  }
  return found;
}

struct Held {
  bool left = false;
  bool middle = false;
  bool right = false;
};
Held held;

bool ReadButtonOrModifier(std::u16string_view word, platform::PointerEvent& event) {
  using platform::PointerButton;
  if (word == u"left") event.button = PointerButton::Left;
  if (word == u"middle") event.button = PointerButton::Middle;
  if (word == u"right") event.button = PointerButton::Right;
  if (word == u"ctrl") event.ctrl = true;
  if (word == u"shift") event.shift = true;
  if (word == u"alt") event.alt = true;
  return word == u"left" || word == u"middle" || word == u"right" || word == u"ctrl" ||
         word == u"shift" || word == u"alt";
}

bool ReadAction(std::u16string_view word, platform::PointerAction& action) {
  using platform::PointerAction;
  if (word == u"press") action = PointerAction::Press;
  if (word == u"move") action = PointerAction::Move;
  if (word == u"release") action = PointerAction::Release;
  if (word == u"double") action = PointerAction::DoubleClick;
  if (word == u"wheel") action = PointerAction::Wheel;
  return word == u"press" || word == u"move" || word == u"release" || word == u"double" ||
         word == u"wheel";
}

// The words behind X and Y: notches of the wheel, buttons and modifiers.
bool ReadRest(const Words& words, platform::PointerEvent& event) {
  std::size_t next = 4;
  if (event.action == platform::PointerAction::Wheel) {
    std::int64_t notches = 0;
    if (words.size() <= next || !ReadInteger(words[next++], -1000, 1000, notches)) return false;
    event.wheel = static_cast<int>(notches);
  }
  for (; next < words.size(); ++next) {
    if (!ReadButtonOrModifier(words[next].text, event)) return false;
  }
  return true;
}

void HoldButton(const platform::PointerEvent& event, bool down) {
  if (event.button == platform::PointerButton::Left) held.left = down;
  if (event.button == platform::PointerButton::Middle) held.middle = down;
  if (event.button == platform::PointerButton::Right) held.right = down;
}

std::string SendPointer(int view, platform::PointerEvent event) {
  using platform::PointerAction;
  const bool press = event.action == PointerAction::Press;
  const bool release = event.action == PointerAction::Release;
  const bool button = press || release || event.action == PointerAction::DoubleClick;
  if (button && event.button == platform::PointerButton::None) {
    event.button = platform::PointerButton::Left;
  }
  if (press) HoldButton(event, true);
  event.leftDown = held.left;
  event.middleDown = held.middle;
  event.rightDown = held.right;
  if (release) HoldButton(event, false);
  return headless::Pointer(view, event) ? Good() : Bad(u"this view is hidden or disabled");
}

}  // namespace

bool ReadControl(const Word& word, int& id, std::u16string& error) {
  if (!word.quoted) {
    std::int64_t number = 0;
    const bool known =
        ReadInteger(word, 1, 100000, number) && platform::Exists(static_cast<int>(number));
    id = static_cast<int>(number);
    error = u"no such control";
    return known;
  }
  std::vector<int> found = VisibleNamed(word.text, false);
  if (found.empty()) found = VisibleCaptioned(word.text);
  if (found.empty()) found = VisibleNamed(word.text, true);
  if (found.size() == 1) {
    id = found[0];
    return true;
  }
  error = found.empty() ? u"no visible control has this name" : u"several have this name:";
  for (int each : found) error += u" " + morva::IntegerText(each);
  return false;
}

std::string AnswerMouse(const Words& words) {
  constexpr char16_t kForm[] =
      u"expected: mouse VIEW press|move|release|double X Y [left|middle|right] [ctrl] [shift] "
      u"[alt], or mouse VIEW wheel X Y NOTCHES";
  platform::PointerEvent event;
  std::int64_t x = 0;
  std::int64_t y = 0;
  if (words.size() < 4 || !ReadAction(words[1].text, event.action) ||
      !ReadInteger(words[2], -kMostPixels, kMostPixels, x) ||
      !ReadInteger(words[3], -kMostPixels, kMostPixels, y) || !ReadRest(words, event)) {
    return Bad(kForm);
  }
  event.x = static_cast<int>(x);
  event.y = static_cast<int>(y);
  const int view = platform::ViewByClass(words[0].text);
  if (view == 0) return Bad(u"no such view");
  return SendPointer(view, event);
}

std::string AnswerEditor(const Words& words) {
  const int id = morva::app.commandWordsActive ? morva::kIdWordsEditor : morva::kIdEditor;
  const std::u16string_view what = words.empty() ? u"" : std::u16string_view(words[0].text);
  std::int64_t from = 0;
  std::int64_t to = 0;
  bool done = false;
  if (what == u"insert" && words.size() == 2 && words[1].quoted) {
    done = headless::EditorInsert(id, words[1].text);
  } else if (what == u"set" && words.size() == 2 && words[1].quoted) {
    done = headless::EditorSetAll(id, words[1].text);
  } else if (what == u"select" && words.size() == 3 &&
             ReadInteger(words[1], 0, kMostPosition, from) &&
             ReadInteger(words[2], 0, kMostPosition, to)) {
    done = headless::EditorSelect(id, static_cast<int>(from), static_cast<int>(to));
  } else if (what == u"undo" && words.size() == 1) {
    done = headless::EditorUndo(id);
  } else {
    return Bad(
        u"expected: editor insert \"text\", editor set \"text\", editor select A B or editor "
        u"undo");
  }
  return done ? Good() : Bad(u"the editor did not take it");
}

}  // namespace drive
