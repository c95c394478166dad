// A CAD canvas of 1040 by 600 pixels on its own: at zoom 1 an inch is 100 pixels, a millimetre
// 4, and the origin lies at 520, 300.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "app/command_ids.h"
#include "app/panels.h"
#include "cad/canvas/canvas.h"
#include "cad/canvas/canvas_model.h"
#include "cad/canvas/canvas_paint.h"
#include "cad/canvas/canvas_pointer.h"
#include "cad/model/cad_form.h"
#include "cad/model/sketch.h"
#include "cad/tools/draw_tools.h"
#include "cad/tools/select_drag.h"
#include "platform/headless/headless.h"
#include "support/stage.h"

namespace morva {

struct Line {
  double x0, y0, x1, y1;
};

class CanvasTest : public support::Stage {
 protected:
  CanvasTest() {
    ClearPanels();
    ResetSketch();
    ResetCanvas();
    ResetDrawTools();
    ResetSelectDrag();
    static platform::Events events;
    events = platform::Events();
    events.paint = [](int, platform::Canvas& canvas) { PaintCanvas(canvas); };
    events.pointer = [](int, const platform::PointerEvent& event) { return CanvasPointer(event); };
    events.key = [](int, const platform::KeyEvent& key) { return CanvasKey(key); };
    events.timer = [](int window, int timer) {
      if (window == kViewCadCanvas) CanvasTimer(timer);
    };
    events.command = [](int id, int notification) { RouteCommand(id, notification); };
    platform::ListenTo(&events);
    platform::ViewSpec spec;
    spec.id = kViewCadCanvas;
    spec.className = u"MorvaCustomShapeCanvas";
    spec.accessibleName = u"Sketch";
    spec.takesFocus = true;
    platform::MakeView(spec);
    Size(1040, 600);
    platform::SetVisible(kViewCadCanvas, true);
    RegisterForm(kCadForm);
    RegisterCanvas();
  }
  ~CanvasTest() override {
    ClearPanels();
    ResetSketch();
    ResetCanvas();
    ResetDrawTools();
    ResetSelectDrag();
  }

  static void Size(int width, int height) {
    platform::SetPlace(kViewCadCanvas, {100, 50, 100 + width, 50 + height});
  }

  static SketchObject& Put(SketchType type, double x, double y, double size, double size2 = 0,
                           double angle = 0) {
    SketchObject object;
    object.type = type;
    object.x = x;
    object.y = y;
    object.size = size;
    object.size2 = size2;
    object.angle = angle;
    return sketch.objects[AppendSketchObject(object)];
  }

  static platform::PointerEvent At(platform::PointerAction action, int x, int y,
                                   platform::PointerButton button = platform::PointerButton::None) {
    platform::PointerEvent event;
    event.action = action;
    event.button = button;
    event.x = x;
    event.y = y;
    return event;
  }
  static bool Tell(const platform::PointerEvent& event) {
    return headless::Pointer(kViewCadCanvas, event);
  }
  static bool Press(int x, int y, platform::PointerButton button = platform::PointerButton::Left) {
    return Tell(At(platform::PointerAction::Press, x, y, button));
  }
  static bool Release(int x, int y,
                      platform::PointerButton button = platform::PointerButton::Left) {
    return Tell(At(platform::PointerAction::Release, x, y, button));
  }
  static bool Hover(int x, int y) { return Tell(At(platform::PointerAction::Move, x, y)); }
  static bool DragTo(int x, int y, platform::PointerButton button = platform::PointerButton::Left) {
    platform::PointerEvent event = At(platform::PointerAction::Move, x, y);
    event.leftDown = button == platform::PointerButton::Left;
    event.middleDown = button == platform::PointerButton::Middle;
    return Tell(event);
  }
  static bool Wheel(int x, int y, int notches) {
    platform::PointerEvent event = At(platform::PointerAction::Wheel, x, y);
    event.wheel = notches;
    return Tell(event);
  }
  static bool Key(int key) {
    headless::Focus(kViewCadCanvas);
    platform::KeyEvent event;
    event.key = key;
    return headless::PressKey(event);
  }

  static std::vector<headless::DrawCall> Paint() { return headless::PaintOf(kViewCadCanvas); }
  static std::vector<headless::DrawCall> Calls(std::string_view name) {
    std::vector<headless::DrawCall> found;
    for (headless::DrawCall& call : Paint()) {
      if (call.name == name) found.push_back(std::move(call));
    }
    return found;
  }
  // The calls of this name whose first colour is this.
  static std::vector<headless::DrawCall> In(std::string_view name, platform::Colour colour) {
    std::vector<headless::DrawCall> found;
    for (headless::DrawCall& call : Calls(name)) {
      if (!call.colours.empty() && call.colours[0] == colour) found.push_back(std::move(call));
    }
    return found;
  }
  // All segments of this colour, in order.
  static std::vector<Line> Lines(platform::Colour colour) {
    std::vector<Line> lines;
    for (const headless::DrawCall& call : In("PaintSegments", colour)) {
      const std::vector<double>& n = call.numbers;
      for (std::size_t i = 0; i + 3 < n.size() - 3; i += 4) {
        lines.push_back({n[i], n[i + 1], n[i + 2], n[i + 3]});
      }
    }
    return lines;
  }
  static void ExpectLine(const Line& line, double x0, double y0, double x1, double y1) {
    EXPECT_NEAR(line.x0, x0, 1e-3);
    EXPECT_NEAR(line.y0, y0, 1e-3);
    EXPECT_NEAR(line.x1, x1, 1e-3);
    EXPECT_NEAR(line.y1, y1, 1e-3);
  }
  static bool Shows(std::u16string_view text) {
    for (const headless::DrawCall& call : Calls("PaintText")) {
      if (call.text == text) return true;
    }
    return false;
  }
};

}  // namespace morva
