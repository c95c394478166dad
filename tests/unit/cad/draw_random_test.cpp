// Random presses, moves, releases and keys over random sketches: what must hold always holds.

#include "cad/geometry/canvas_view.h"
#include "cad/model/sketch.h"
#include "cad/model/tool_state.h"
#include "cad/panel/cad_room.h"
#include "cad/tools/dimensions.h"
#include "cad/tools/draw_tools.h"
#include "cad/tools/size_boxes.h"
#include "cad/tools/tool_change.h"
#include "support/program_maker.h"
#include "unit/cad/draw_stage.h"

namespace morva {
namespace {

using platform::PointerAction;
using platform::PointerButton;
using platform::PointerEvent;

class RandomDrawing : public DrawStage {
 protected:
  explicit RandomDrawing() { sketch.snapOn = true; }

  static void RandomSketch(reference::Dice& dice) {
    const std::uint32_t most = dice.Roll(3) == 0 ? 97 : 20;
    for (std::uint32_t n = dice.Roll(most); n > 0; --n) {
      const SketchType type = static_cast<SketchType>(dice.Roll(6));
      const bool tiny = dice.Roll(10) == 0;
      const double size = tiny ? 0 : 0.01 + dice.Roll(3000) / 1000.0;
      const double size2 = size * dice.Roll(101) / 100;
      const int index = Put(type, dice.Roll(8000) / 1000.0 - 4, dice.Roll(6000) / 1000.0 - 3, size,
                            size2, dice.Roll(720) - 360.0, static_cast<int>(dice.Roll(4)));
      sketch.hidden[index] = dice.Roll(8) == 0;
      sketch.locked[index] = dice.Roll(8) == 0;
    }
    sketch.selected =
        static_cast<int>(dice.Roll(static_cast<std::uint32_t>(sketch.objectCount + 1))) - 1;
  }

  static PointerEvent RandomEvent(reference::Dice& dice) {
    PointerEvent event;
    event.alt = dice.Roll(4) == 0;
    event.leftDown = dice.Roll(2) == 0;
    event.button = dice.Roll(8) == 0 ? PointerButton::Right : PointerButton::Left;
    // Often the same few places, so that points coincide and lie in line.
    event.x = dice.Roll(3) == 0 ? static_cast<int>(dice.Roll(1040))
                                : 420 + 50 * static_cast<int>(dice.Roll(5));
    event.y = dice.Roll(3) == 0 ? static_cast<int>(dice.Roll(600))
                                : 200 + 50 * static_cast<int>(dice.Roll(5));
    if (dice.Roll(40) == 0) event.x = -2000000000;
    return event;
  }

  static void TypeSomething(reference::Dice& dice) {
    static constexpr const char16_t* kTexts[] = {u"1",  u"2.5", u"",   u"-1",      u"0",
                                                 u"64", u"3",   u"1e", u"999999.9"};
    static constexpr int kFields[] = {kIdCadSizeBox1,      kIdCadSizeBox2, kIdCadPolygonSides,
                                      kIdCadPolygonRadius, kIdCadPolygonX, kIdCadPolygonAngle,
                                      kIdCadDimensionValue};
    platform::SetText(kFields[dice.Roll(7)], kTexts[dice.Roll(9)]);
  }

  static void Step(reference::Dice& dice) {
    static constexpr int kMethods[] = {
        kIdMethodLine,           kIdMethodLineTangent, kIdMethodCircleRadius,
        kIdMethodCircleDiameter, kIdMethodCircleThree, kIdMethodCircleOnLine,
        kIdMethodCircleOnCircle, kIdMethodRectangle,   kIdMethodRectangleCentre,
        kIdMethodRectangleThree, kIdMethodSlotDrag,    kIdMethodSlotPoints,
        kIdMethodDimension,      kIdMethodMeasure,     kIdMethodPolygon};
    static constexpr int kKeys[] = {platform::kKeyTab, platform::kKeyEnter, platform::kKeyEscape};
    const PointerEvent event = RandomEvent(dice);
    platform::KeyEvent key;
    key.key = kKeys[dice.Roll(3)];
    switch (dice.Roll(24)) {
      case 0:
        return StartMethod(kMethods[dice.Roll(15)]);
      case 1:
        return StartDragTool(static_cast<int>(dice.Roll(9)) - 1);
      case 2:
        return dice.Roll(4) == 0 ? CancelTools() : SketchUndo();
      case 3:
        DrawToolKey(key);
        return;
      case 4:
        SizeBoxKey(key);
        return;
      case 5:
        TypeSomething(dice);
        return;
      case 6:
        RouteCommand(dice.Roll(2) == 0 ? kIdCadApplyDimension : kIdCadCreateTyped, 0);
        return;
      case 7:
        if (dice.Roll(3) == 0) RouteCommand(kIdCadCreatePolygon, 0);
        return;
      case 8:
        return DrawToolCaptureLost();
      case 9:
        Paint();
        return;
      case 10:
        canvasView.zoom = dice.Roll(10) == 0 ? 0.1 : 0.5 + dice.Roll(8);
        canvasView.panX = dice.Roll(20) == 0 ? -4e7 : 0;
        return;
      case 11:
        if (dice.Roll(4) == 0) RemoveSketchObject(static_cast<int>(dice.Roll(96)));
        sketch.selected = sketch.objectCount - 1;
        return;
      case 12:
      case 13:
      case 14:
      case 15:
      case 16:
        if (!DimensionPress(event)) DrawToolPress(event);
        return;
      case 17:
      case 18:
        DrawToolRelease(event);
        return;
      default:
        DrawToolMove(event);
        return;
    }
  }

  static bool Sound(const SketchObject& o) {
    for (const double value : {o.x, o.y, o.size, o.size2}) {
      if (!(value > -kSketchLimit && value < kSketchLimit)) return false;
    }
    return std::isfinite(o.angle) && o.type >= kTypeLine && o.type <= kTypeWorkAxis &&
           o.size >= 0 && o.size2 >= 0;
  }

  static void ExpectInvariants() {
    ASSERT_GE(sketch.objectCount, 0);
    ASSERT_LE(sketch.objectCount, 96);
    ASSERT_GE(sketch.selected, -1);
    ASSERT_LT(sketch.selected, sketch.objectCount);
    ASSERT_GE(sketch.undoDepth, 0);
    ASSERT_LE(sketch.undoDepth, 24);
    for (int i = 0; i < sketch.objectCount; ++i) ASSERT_TRUE(Sound(sketch.objects[i])) << i;
    ASSERT_GE(tools.constructionClicks, 0);
    ASSERT_LT(tools.constructionClicks, 3);
    if (tools.previewValid) {
      ASSERT_NE(tools.constructionMethod, 0);
      ASSERT_TRUE(Sound(tools.previewObject));
    }
    if (tools.sizePanelShown) {
      ASSERT_TRUE(tools.previewValid);
    }
    ASSERT_EQ(tools.sizePanelShown, platform::IsVisible(kIdCadSizeBox1));
    ASSERT_FALSE(tools.dragActive && tools.dragTool == 0);
    ASSERT_FALSE(tools.constructionMethod != 0 && tools.dragTool != 0);
    ASSERT_FALSE(tools.measureMode && !tools.dimensionMode);
  }
};

TEST_F(RandomDrawing, KeepsTheSketchSound) {
  int made = 0;
  for (std::uint32_t seed = 1; seed <= 150; ++seed) {
    SCOPED_TRACE(seed);
    reference::Dice dice{seed * 2654435761u};
    CancelTools();
    ResetCad();
    sketch.snapOn = dice.Roll(4) != 0;
    sketch.metric = dice.Roll(3) == 0;
    RandomSketch(dice);
    for (int i = 0; i < 300; ++i) {
      const int before = sketch.undoDepth;
      Step(dice);
      made += sketch.undoDepth > before;
      ExpectInvariants();
      if (HasFatalFailure()) return;
    }
  }
  EXPECT_GT(made, 1000);
}

TEST_F(RandomDrawing, AnUndoGivesBackExactlyWhatWas) {
  int undone = 0;
  for (std::uint32_t seed = 1; seed <= 60; ++seed) {
    SCOPED_TRACE(seed);
    reference::Dice dice{seed * 40503u + 7};
    CancelTools();
    ResetCad();
    RandomSketch(dice);
    for (int i = 0; i < 200; ++i) {
      if (sketch.undoDepth >= 24) break;
      const LiveSketch before = sketch;
      Step(dice);
      if (sketch.undoDepth != before.undoDepth + 1) continue;
      const LiveSketch after = sketch;
      const ToolState hand = tools;
      SketchUndo();
      ++undone;
      ASSERT_EQ(sketch.objectCount, before.objectCount);
      ASSERT_EQ(sketch.selected, before.selected);
      for (int k = 0; k < sketch.objectCount; ++k) {
        ASSERT_EQ(sketch.objects[k].type, before.objects[k].type);
        ASSERT_EQ(sketch.objects[k].group, before.objects[k].group);
        ASSERT_EQ(sketch.objects[k].x, before.objects[k].x);
        ASSERT_EQ(sketch.objects[k].y, before.objects[k].y);
        ASSERT_EQ(sketch.objects[k].size, before.objects[k].size);
        ASSERT_EQ(sketch.objects[k].size2, before.objects[k].size2);
        ASSERT_EQ(sketch.objects[k].angle, before.objects[k].angle);
        ASSERT_EQ(sketch.hidden[k], before.hidden[k]);
        ASSERT_EQ(sketch.locked[k], before.locked[k]);
      }
      sketch = after;
      tools = hand;
    }
  }
  EXPECT_GT(undone, 300);
}

}  // namespace
}  // namespace morva
