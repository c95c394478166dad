// A sketch with its controls and a canvas of 1040 by 600 pixels: at zoom 1 an inch is 100
// pixels and the origin lies at 520, 300. Snapping is off, so that positions are exact.
#pragma once

#include <cstring>
#include <string>
#include <vector>

#include "app/command_ids.h"
#include "cad/model/sketch.h"
#include "cad/tools/geometry_tools.h"
#include "cad/tools/select_drag.h"
#include "cad_stage.h"
#include "library/outline.h"

namespace cad_test {

struct EditsStage : public CadStage {
  void SetUp() override {
    CadStage::SetUp();
    platform::ViewSpec spec;
    spec.id = morva::kViewCadCanvas;
    spec.className = u"MorvaCustomShapeCanvas";
    spec.accessibleName = u"Sketch";
    spec.takesFocus = true;
    platform::MakeView(spec);
    platform::SetPlace(morva::kViewCadCanvas, {0, 0, 1040, 600});
    for (const int id : {morva::kIdCadScaleFactor, morva::kIdCadRevolveCopies}) {
      support::MakeText(id, platform::ControlKind::EditLine);
    }
    morva::sketch.snapOn = false;
  }

  static platform::PointerEvent At(double x, double y, bool ctrl = false) {
    platform::PointerEvent event;
    event.button = platform::PointerButton::Left;
    event.leftDown = true;
    event.ctrl = ctrl;
    event.x = 520 + static_cast<int>(x * 100 + (x < 0 ? -0.5 : 0.5));
    event.y = 300 - static_cast<int>(y * 100 + (y < 0 ? -0.5 : 0.5));
    return event;
  }
  static void Press(double x, double y, bool ctrl = false) {
    platform::PointerEvent event = At(x, y, ctrl);
    event.action = platform::PointerAction::Press;
    EXPECT_TRUE(morva::SelectPress(event));
  }
  static bool Move(double x, double y) {
    platform::PointerEvent event = At(x, y);
    event.action = platform::PointerAction::Move;
    return morva::SelectMove(event);
  }
  static bool Release(double x, double y) {
    platform::PointerEvent event = At(x, y);
    event.action = platform::PointerAction::Release;
    return morva::SelectRelease(event);
  }
  // A press, two moves and a release.
  static void Drag(double fromX, double fromY, double toX, double toY, bool ctrl = false) {
    Press(fromX, fromY, ctrl);
    Move((fromX + toX) / 2, (fromY + toY) / 2);
    Move(toX, toY);
    Release(toX, toY);
  }
  static void Click(double x, double y, bool ctrl = false) {
    Press(x, y, ctrl);
    Release(x, y);
  }
  static void ToolClick(double x, double y) {
    platform::PointerEvent event = At(x, y);
    event.action = platform::PointerAction::Press;
    EXPECT_TRUE(morva::GeometryPress(event));
  }
  static void Command(int id) { morva::RouteCommand(id, platform::kNotifyClick); }
  static std::vector<std::u16string> Recent() { return Rows(morva::kIdCadRecent); }
  static std::u16string LastLine() {
    const std::vector<std::u16string> lines = Recent();
    return lines.empty() ? u"" : lines.back();
  }

  // All of the sketch that an edit could change, field by field.
  struct Picture {
    std::vector<double> numbers;
    bool operator==(const Picture& other) const { return numbers == other.numbers; }
  };
  static Picture Now(bool withUndo = true) {
    Picture picture;
    std::vector<double>& n = picture.numbers;
    const morva::LiveSketch& s = morva::sketch;
    n = {static_cast<double>(s.objectCount), static_cast<double>(s.selected), s.metric ? 1.0 : 0.0};
    if (withUndo) n.push_back(s.undoDepth);
    for (int i = 0; i < s.objectCount; ++i) {
      const morva::SketchObject& o = s.objects[i];
      for (const double value :
           {static_cast<double>(o.type), static_cast<double>(o.group), o.x, o.y, o.size, o.size2,
            o.angle, static_cast<double>(s.hidden[i]), static_cast<double>(s.locked[i])}) {
        n.push_back(value);
      }
    }
    return picture;
  }
  static const morva::SketchObject& Object(int index) { return morva::sketch.objects[index]; }
  static void ExpectLine(int index, double ax, double ay, double bx, double by,
                         double near = 1e-6) {
    const morva::SketchObject& line = morva::sketch.objects[index];
    double ex = 0;
    double ey = 0;
    morva::LineEndPoint(line, ex, ey);
    EXPECT_EQ(line.type, morva::kTypeLine) << index;
    EXPECT_NEAR(line.x, ax, near) << index;
    EXPECT_NEAR(line.y, ay, near) << index;
    EXPECT_NEAR(ex, bx, near) << index;
    EXPECT_NEAR(ey, by, near) << index;
  }
};

}  // namespace cad_test
