// A toolpath view of 670 by 720 pixels on its own: a usable area of 600 by 600, the middle of
// the picture at 335, 329.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "library/units.h"
#include "platform/headless/headless.h"
#include "simulator/motion_path.h"
#include "simulator/shown_path.h"
#include "simulator/toolpath.h"
#include "simulator/view.h"
#include "simulator/view_parts.h"
#include "support/stage.h"

namespace morva {

inline constexpr platform::Rect kClient{0, 0, 670, 720};

class ViewTest : public support::Stage {
 protected:
  ViewTest() {
    ResetSimulator();
    ResetView();
    ResetUnits();
    static platform::Events events;
    events = platform::Events();
    events.paint = [](int, platform::Canvas& canvas) { PaintToolpathView(canvas); };
    events.pointer = [](int, const platform::PointerEvent& event) {
      return ToolpathPointer(event);
    };
    events.key = [](int, const platform::KeyEvent& key) { return ToolpathKey(key); };
    events.timer = [](int window, int timer) {
      if (window == kViewToolpath) ViewTimer(timer);
    };
    platform::ListenTo(&events);
    platform::ViewSpec spec;
    spec.id = kViewToolpath;
    spec.className = u"HaasSimView";
    spec.accessibleName = u"Toolpath";
    spec.takesFocus = true;
    platform::MakeView(spec);
    platform::SetPlace(kViewToolpath, {700, 100, 700 + 670, 100 + 720});
    platform::SetVisible(kViewToolpath, true);
  }
  ~ViewTest() override {
    ResetSimulator();
    ResetView();
    ResetUnits();
  }

  // A feed to a point of the main path; the first one is where the path starts.
  static MotionPoint& Feed(double x, double y, double z) {
    MotionPoint& point = path.points[path.count];
    point = MotionPoint();
    point.x = x;
    point.y = y;
    point.z = z;
    point.sourceLine = path.count;
    ++path.count;
    ++path.generation;
    playback.playHead = path.count;
    return point;
  }
  static MotionPoint& RapidTo(double x, double y, double z) {
    MotionPoint& point = Feed(x, y, z);
    point.rapid = true;
    return point;
  }
  // Four by two at Z 0: in plan a unit is 0.86 x 600 / 4 = 129 pixels, the lower left corner
  // at 335 - 2 x 129 = 77, 329 + 129 = 458.
  static void FlatPart() {
    Feed(0, 0, 0);
    Feed(4, 0, 0);
    Feed(4, 2, 0);
    Feed(0, 2, 0);
    SetViewTop();
  }

  static platform::PointF At(double x, double y, double z) {
    return Project(ProjectionFor(kClient), x, y, z);
  }

  static bool Mouse(platform::PointerAction action, int x, int y,
                    platform::PointerButton button = platform::PointerButton::None,
                    bool shift = false) {
    platform::PointerEvent event;
    event.action = action;
    event.button = button;
    event.shift = shift;
    event.x = x;
    event.y = y;
    return headless::Pointer(kViewToolpath, event);
  }
  static void Hover(int x, int y) { Mouse(platform::PointerAction::Move, x, y); }
  static void Press(int x, int y, platform::PointerButton button = platform::PointerButton::Left) {
    Mouse(platform::PointerAction::Press, x, y, button);
  }
  static void DragTo(int x, int y) {
    platform::PointerEvent event;
    event.leftDown = true;
    event.x = x;
    event.y = y;
    headless::Pointer(kViewToolpath, event);
  }
  static void Release(int x, int y,
                      platform::PointerButton button = platform::PointerButton::Left) {
    Mouse(platform::PointerAction::Release, x, y, button);
  }
  static void Wheel(int notches) {
    platform::PointerEvent event;
    event.action = platform::PointerAction::Wheel;
    event.wheel = notches;
    headless::Pointer(kViewToolpath, event);
  }
  static bool Key(int key, bool ctrl = false, bool shift = false) {
    headless::Focus(kViewToolpath);
    platform::KeyEvent event;
    event.key = key;
    event.ctrl = ctrl;
    event.shift = shift;
    return headless::PressKey(event);
  }

  static std::vector<headless::DrawCall> Paint() { return headless::PaintOf(kViewToolpath); }
  // The drawing calls of one name and colour.
  static std::vector<headless::DrawCall> Calls(std::string_view name, platform::Colour colour) {
    std::vector<headless::DrawCall> found;
    for (const headless::DrawCall& call : Paint()) {
      if (call.name == name && call.colours.size() == 1 && call.colours[0] == colour) {
        found.push_back(call);
      }
    }
    return found;
  }
  static std::vector<std::u16string> Texts() {
    std::vector<std::u16string> texts;
    for (const headless::DrawCall& call : Paint()) {
      if (call.name == "PaintText") texts.push_back(call.text);
    }
    return texts;
  }
  static bool Shows(std::u16string_view text) {
    for (const std::u16string& shown : Texts()) {
      if (shown == text) return true;
    }
    return false;
  }
};

inline void ExpectPlace(const platform::PointF& place, double x, double y) {
  // The sine series is good to 6e-8, which a thousand pixels make 1e-4 at most.
  EXPECT_NEAR(place.x, x, 2e-4);
  EXPECT_NEAR(place.y, y, 2e-4);
}

}  // namespace morva
