// All edits together by chance: keys, clipboard, panels, drags, click tools, marks, the unit and
// Undo, beside a history that the test keeps. What an undo brings back is compared to the last
// bit, and what takes no step must leave no trace.

#include <map>
#include <string>

#include "cad/geometry/canvas_view.h"
#include "cad/model/cad_hooks.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "cad/tools/edits.h"
#include "cad/tools/geometry_tools.h"
#include "cad/tools/select_drag.h"
#include "edits_stage.h"
#include "support/program_maker.h"

namespace morva {
namespace {

constexpr std::size_t kMostSteps = 24;

struct Sequences : public cad_test::EditsStage {
  std::vector<Picture> history;          // the state before each step, oldest first
  std::map<std::u16string, int> logged;  // how often each line was written
  int refused = 0;
  int undone = 0;
  int takenBack = 0;

  void SetUp() override {
    EditsStage::SetUp();
    for (const int id : {kIdCadPolygonSides, kIdCadPolygonAngle}) {
      support::MakeText(id, platform::ControlKind::EditLine);
    }
  }

  void Record(const Picture& before, std::uint32_t steps) {
    for (std::uint32_t i = 0; i < steps; ++i) history.push_back(before);
    while (history.size() > kMostSteps) history.erase(history.begin());
  }
  // The line that an action wrote, and none from before it.
  static void Mark() { LogSketchOperation(u"-"); }
  std::u16string Line() {
    const std::u16string line = LastLine();
    ++logged[line];
    return line;
  }

  static platform::PointerEvent Pixel(const platform::Point& at, bool ctrl, bool alt) {
    platform::PointerEvent event;
    event.button = platform::PointerButton::Left;
    event.leftDown = true;
    event.ctrl = ctrl;
    event.alt = alt;
    event.x = at.x;
    event.y = at.y;
    return event;
  }
  // On a handle, on an edge, or anywhere.
  static platform::Point Target(reference::Dice& dice) {
    if (dice.Roll(8) == 0) {
      return {static_cast<int>(dice.Roll(1040)), static_cast<int>(dice.Roll(600))};
    }
    const auto count = static_cast<std::uint32_t>(sketch.objectCount);
    const SketchObject& object = sketch.objects[dice.Roll(count)];
    double xs[kOutlinePoints];
    double ys[kOutlinePoints];
    if (dice.Roll(2) == 0) {
      const int points = ObjectSnapPoints(object, xs, ys);
      const std::uint32_t i = dice.Roll(static_cast<std::uint32_t>(points));
      return ToCanvas(xs[i], ys[i]);
    }
    const int points = ObjectOutline(object, xs, ys);
    const std::uint32_t i = dice.Roll(static_cast<std::uint32_t>(points - 1));
    const double share = dice.Roll(100) * 0.01;
    return ToCanvas(xs[i] + share * (xs[i + 1] - xs[i]), ys[i] + share * (ys[i + 1] - ys[i]));
  }

  void UndoOnce() {
    const Picture before = Now(false);
    SketchUndo();
    ASSERT_EQ(Now(false), history.empty() ? before : history.back());
    if (history.empty()) return;
    history.pop_back();
    ++undone;
  }

  void Key(reference::Dice& dice) {
    static constexpr struct {
      int id;
      std::uint32_t steps;
    } kKeys[] = {{kIdCadApply, 2},      {kIdCadExtend, 2},       {kIdCadTrim, 2},
                 {kIdCadSplit, 1},      {kIdCadDuplicate, 1},    {kIdCadDelete, 1},
                 {kIdCadHide, 1},       {kIdCadLock, 1},         {kIdCadLock, 1},
                 {kIdCadCopy, 0},       {kIdCadCut, 1},          {kIdCadPaste, 1},
                 {kIdCadApplyScale, 1}, {kIdCadApplyRevolve, 1}, {kIdCadCreatePolygon, 1},
                 {kIdCadMm, 1},         {kIdCadInch, 1}};
    const auto& key = kKeys[dice.Roll(17)];
    const bool good = dice.Roll(4) != 0;
    platform::SetText(kIdCadAmount, good ? u"0.05" : u"");
    platform::SetText(kIdCadScaleFactor, good ? u"0.9" : u"0");
    platform::SetText(kIdCadPivotX, u"0.5");
    platform::SetText(kIdCadPivotY, u"0");
    platform::SetText(kIdCadRevolveAngle, u"30");
    platform::SetText(kIdCadRevolveCopies, good ? u"1" : u"-1");
    platform::SetText(kIdCadPolygonSides, good ? u"5" : u"2");
    platform::SetText(kIdCadPolygonRadius, u"1");
    platform::SetText(kIdCadPolygonX, u"0.5");
    platform::SetText(kIdCadPolygonY, u"-0.5");
    platform::SetText(kIdCadPolygonAngle, u"10");
    const Picture before = Now(false);
    const std::uint32_t turns = sketch.undoTurns;
    Mark();
    Command(key.id);
    headless::TakeBoxes();
    const std::uint32_t steps = sketch.undoTurns - turns;
    ASSERT_TRUE(steps == 0 || steps == key.steps) << key.id << " " << steps;
    if (steps == 0) {
      ASSERT_EQ(Now(false), before) << key.id;
      if (key.steps > 0) ++refused;
    }
    Line();
    Record(before, steps);
  }

  void DragSomething(reference::Dice& dice) {
    const platform::Point from = Target(dice);
    const bool ctrl = dice.Roll(6) == 0;
    const bool alt = dice.Roll(3) == 0;
    ASSERT_TRUE(SelectPress(Pixel(from, ctrl, alt)));
    const Picture before = Now(false);  // with what the press has selected
    const std::uint32_t turns = sketch.undoTurns;
    Mark();
    platform::Point to = from;
    for (std::uint32_t moves = dice.Roll(4); moves > 0; --moves) {
      to = {from.x + static_cast<int>(dice.Roll(160)) - 80,
            from.y + static_cast<int>(dice.Roll(160)) - 80};
      SelectMove(Pixel(to, ctrl, alt));
    }
    const std::uint32_t steps = sketch.undoTurns - turns;
    ASSERT_LE(steps, 1u);
    if (steps == 0) {
      ASSERT_EQ(Now(false), before);
    }
    const bool held = SelectDragging();
    switch (dice.Roll(4)) {
      case 0:
        SelectEscape();
        Record(before, steps);
        if (steps == 1) {
          ASSERT_EQ(Now(false), before);
          ASSERT_EQ(Line(), u"Undo");
          history.pop_back();
          ++takenBack;
        }
        return;
      case 1:
        SelectCaptureLost();
        break;
      default:
        SelectRelease(Pixel(to, ctrl, alt));
        break;
    }
    ASSERT_EQ(sketch.undoTurns - turns, steps) << "the release took a step of its own";
    const std::u16string line = Line();
    const bool told = line == u"Moved geometry" || line == u"Pulled geometry handle";
    ASSERT_EQ(told, held && steps == 1);
    if (steps == 0) {
      ASSERT_EQ(line, u"-");
    }
    Record(before, steps);
  }

  void UseTool(reference::Dice& dice) {
    constexpr int kTools[] = {kIdCadJoin, kIdCadTrimAt, kIdCadTrimAt, kIdCadTangent};
    Command(kTools[dice.Roll(4)]);
    for (std::uint32_t clicks = 1 + dice.Roll(3); clicks > 0; --clicks) {
      if (tools.geometryTool == kGeometryNone || sketch.objectCount < 1) break;
      const platform::PointerEvent event = Pixel(Target(dice), false, false);
      const Picture before = Now(false);
      const std::uint32_t turns = sketch.undoTurns;
      Mark();
      GeometryHover(event);
      ASSERT_EQ(Now(false), before);
      ASSERT_TRUE(GeometryPress(event));
      const std::uint32_t steps = sketch.undoTurns - turns;
      const std::u16string line = Line();
      ASSERT_LE(steps, 1u);
      ASSERT_EQ(line, steps == 1 ? u"Geometry tool completed" : u"No valid intersection / target");
      if (steps == 0) {
        ASSERT_EQ(Now(false), before);
        ++refused;
      }
      Record(before, steps);
      if (dice.Roll(4) == 0) UndoOnce();
    }
    tools.geometryTool = kGeometryNone;
  }

  void Provide(reference::Dice& dice) {
    while (sketch.objectCount < 5) {
      const double unit = sketch.metric ? 25.4 : 1;
      const auto type = static_cast<SketchType>(dice.Roll(6));
      const double x = (dice.Roll(600) * 0.01 - 3) * unit;
      const double y = (dice.Roll(400) * 0.01 - 2) * unit;
      const double size = (1 + dice.Roll(200) * 0.01) * unit;
      const bool hasSecond = type == kTypeRectangle || type == kTypeSlot;
      Add(type, x, y, size, hasSecond ? 0.5 * unit : 0, type == kTypeCircle ? 0 : dice.Roll(360));
    }
  }
};

TEST_F(Sequences, OfEditsAndUndosEndWhereTheUndoSays) {
  for (std::uint32_t seed = 1; seed <= 60; ++seed) {
    reference::Dice dice{seed * 2654435761u};
    ResetEdits();
    ResetSelectDrag();
    ResetSketch();
    history.clear();
    for (int step = 0; step < 120; ++step) {
      SCOPED_TRACE(testing::Message() << "seed " << seed << ", step " << step);
      Provide(dice);
      sketch.snapOn = dice.Roll(2) == 0;
      if (dice.Roll(3) == 0) {
        sketch.selected =
            static_cast<int>(dice.Roll(static_cast<std::uint32_t>(sketch.objectCount)));
      }
      RefreshSketchPanels();
      switch (dice.Roll(7)) {
        case 0:
        case 1:
          Key(dice);
          break;
        case 2:
        case 3:
          DragSomething(dice);
          break;
        case 4:
        case 5:
          UseTool(dice);
          break;
        default:
          UndoOnce();
          break;
      }
      if (HasFatalFailure()) return;
      ASSERT_EQ(sketch.undoDepth, static_cast<int>(history.size()));
      ASSERT_LE(sketch.objectCount, kMaxItems);
      for (int i = 0; i < sketch.objectCount; ++i) {
        ASSERT_TRUE(sketch.objects[i].size >= 0 && sketch.objects[i].size < kSketchLimit);
        ASSERT_TRUE(sketch.objects[i].size2 >= 0 && sketch.objects[i].size2 < kSketchLimit);
      }
    }
    while (!history.empty()) {
      UndoOnce();
      if (HasFatalFailure()) return;
    }
    EXPECT_EQ(sketch.undoDepth, 0);
  }
  // Each kind of edit came about, and often enough.
  for (const char16_t* line :
       {u"Edited geometry", u"Deleted geometry", u"Visibility changed", u"Lock changed",
        u"Cut part", u"Pasted part", u"Scaled geometry", u"Revolved geometry", u"Created polygon",
        u"Moved geometry", u"Pulled geometry handle", u"Geometry tool completed"}) {
    EXPECT_GT(logged[line], 15) << std::string(line, line + std::u16string(line).size());
  }
  EXPECT_GT(refused, 300);
  EXPECT_GT(undone, 600);
  EXPECT_GT(takenBack, 50);
}

}  // namespace
}  // namespace morva
