// A canvas of 1040 by 600 pixels in a workspace of 1300 by 800, with the controls that the draw
// tools and the dimensions use. At zoom 1 an inch is 100 pixels, a millimetre 4, and the origin
// lies at 520, 300. Clicks are given in drawing units.
#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "app/command_ids.h"
#include "app/panels.h"
#include "cad/model/cad_form.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "cad/panel/cad_room.h"
#include "cad/tools/dimension_paint.h"
#include "cad/tools/dimensions.h"
#include "cad/tools/draw_tools.h"
#include "cad/tools/size_boxes.h"
#include "documents/program_tabs.h"
#include "library/shapes.h"
#include "platform/headless/headless.h"
#include "support/stage.h"

namespace morva {

class DrawStage : public support::Stage {
 protected:
  static constexpr int kCanvasLeft = 100;
  static constexpr int kCanvasTop = 50;

  DrawStage() {
    ClearPanels();
    ResetDocuments();
    ResetCad();
    static platform::Events events;
    events = platform::Events();
    events.command = [](int id, int notification) { RouteCommand(id, notification); };
    events.paint = [](int, platform::Canvas& canvas) { PaintDimensions(canvas); };
    events.key = [](int id, const platform::KeyEvent& key) {
      for (int n = 0; const Handlers* handlers = HandlersOf(id, n); ++n) {
        if (handlers->key && handlers->key(key)) return true;
      }
      return false;
    };
    events.timer = [](int window, int timer) {
      if (window == platform::kMainWindow) RouteTimer(timer);
    };
    platform::ListenTo(&events);
    MakeControls();
    ResetShapeLibrary();
    RegisterCad();
    sketch.snapOn = false;  // most tests want the very place that they name
  }
  ~DrawStage() override {
    ClearPanels();
    ResetCad();
    ResetDocuments();
  }

  static void MakeControls() {
    MakeView(kViewCad, u"MorvaCustomShapeWnd", {50, 0, 1350, 800});
    MakeView(kViewCadCanvas, u"MorvaCustomShapeCanvas",
             {kCanvasLeft, kCanvasTop, kCanvasLeft + 1040, kCanvasTop + 600});
    support::MakeText(kIdCadStatus, platform::ControlKind::Label);
    support::MakeText(kIdCadSizeCaption, platform::ControlKind::Label);
    for (const int id :
         {kIdCadSizeBox1, kIdCadSizeBox2, kIdCadPolygonSides, kIdCadPolygonRadius, kIdCadPolygonX,
          kIdCadPolygonY, kIdCadPolygonAngle, kIdCadDimensionValue}) {
      support::MakeText(id, platform::ControlKind::EditLine);
    }
    platform::SetText(kIdCadPolygonSides, u"6");
    platform::SetText(kIdCadPolygonRadius, u"1");
    for (const int id : {kIdCadPolygonX, kIdCadPolygonY, kIdCadPolygonAngle}) {
      platform::SetText(id, u"0");
    }
    for (const int id :
         {kIdCadSelect, kIdCadLine, kIdCadRectangle, kIdCadCircle, kIdCadSlot, kIdCadDimension,
          kIdCadPolygon, kIdCadWorkAxis, kIdCadPoint, kIdCadCancel, kIdCadSnap, kIdCadCreatePolygon,
          kIdCadCreateTyped, kIdCadApplyDimension}) {
      support::MakeButton(id, u"");
      platform::SetPlace(id, {4 * (id % 100), 700, 4 * (id % 100) + 80, 730});
    }
    for (const int id : {kIdCadSizeBox1, kIdCadSizeBox2, kIdCadSizeCaption, kIdCadCreateTyped}) {
      platform::SetVisible(id, false);
    }
    for (const int id : {kIdCadOperations, kIdCadRecent, kIdCadDimensionPart}) {
      platform::ListSpec list;
      list.id = id;
      platform::MakeList(list);
      platform::SetPlace(id, {0, 0, 200, 400});
    }
    for (const char16_t* part : kDimensionParts) platform::AddRow(kIdCadDimensionPart, part);
  }
  static void MakeView(int id, const char16_t* className, const platform::Rect& place) {
    platform::ViewSpec spec;
    spec.id = id;
    spec.className = className;
    spec.takesFocus = true;
    platform::MakeView(spec);
    platform::SetPlace(id, place);
    platform::SetVisible(id, true);
  }

  static int PixelX(double x) { return 520 + static_cast<int>(std::lround(x * PerUnit())); }
  static int PixelY(double y) { return 300 - static_cast<int>(std::lround(y * PerUnit())); }
  static double PerUnit() { return sketch.metric ? 4 : 100; }

  static platform::PointerEvent At(platform::PointerAction action, double x, double y,
                                   bool alt = false) {
    platform::PointerEvent event;
    event.action = action;
    event.x = PixelX(x);
    event.y = PixelY(y);
    event.alt = alt;
    return event;
  }
  // As the canvas offers a press: dimensions first.
  static bool Press(double x, double y, bool alt = false) {
    platform::PointerEvent event = At(platform::PointerAction::Press, x, y, alt);
    event.button = platform::PointerButton::Left;
    return DimensionPress(event) || DrawToolPress(event);
  }
  static bool Release(double x, double y, bool alt = false) {
    platform::PointerEvent event = At(platform::PointerAction::Release, x, y, alt);
    event.button = platform::PointerButton::Left;
    return DrawToolRelease(event);
  }
  static bool Move(double x, double y, bool leftDown = false, bool alt = false) {
    platform::PointerEvent event = At(platform::PointerAction::Move, x, y, alt);
    event.leftDown = leftDown;
    return DrawToolMove(event);
  }
  static void Click(double x, double y, bool alt = false) {
    Press(x, y, alt);
    Release(x, y, alt);
  }
  static void Drag(double x0, double y0, double x1, double y1) {
    Press(x0, y0);
    Move(x1, y1, true);
    Release(x1, y1);
  }
  static bool Key(int key) {
    platform::KeyEvent event;
    event.key = key;
    return DrawToolKey(event);
  }
  static bool BoxKey(int key) {
    platform::KeyEvent event;
    event.key = key;
    return SizeBoxKey(event);
  }
  static void Type(int id, std::u16string_view text) { platform::SetText(id, text); }

  static int Put(SketchType type, double x, double y, double size, double size2 = 0,
                 double angle = 0, int group = 0) {
    return AppendSketchObject({type, group, x, y, size, size2, angle});
  }
  static void Fill(int count) {
    while (sketch.objectCount < count) Put(kTypeWorkPoint, 40, 40, 0);
  }
  static const SketchObject& Last() { return sketch.objects[sketch.objectCount - 1]; }
  static void ExpectObject(const SketchObject& object, SketchType type, double x, double y,
                           double size, double size2, double angle) {
    EXPECT_EQ(object.type, type);
    EXPECT_NEAR(object.x, x, 1e-9);
    EXPECT_NEAR(object.y, y, 1e-9);
    EXPECT_NEAR(object.size, size, 1e-9);
    EXPECT_NEAR(object.size2, size2, 1e-9);
    EXPECT_NEAR(object.angle, angle, 1e-6);
    EXPECT_EQ(object.group, 0);
  }
  static const std::u16string& Status() { return SketchStatus(); }
  static std::u16string LastLogged() {
    const int count = platform::RowCount(kIdCadRecent);
    return count > 0 ? platform::RowText(kIdCadRecent, count - 1) : std::u16string();
  }
  static std::vector<headless::DrawCall> Paint() { return headless::PaintOf(kViewCadCanvas); }
};

}  // namespace morva
