// Undo of the live sketch, against a plain history that keeps every state ever pushed.

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <vector>

#include "cad/model/cad_hooks.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "unit/cad/cad_stage.h"

namespace morva {
namespace {

using SketchUndoSteps = cad_test::CadStage;

constexpr double kToMm = 25.4;
constexpr double kToInch = 0.03937007874015748;

// What one step holds, in containers of its own.
struct State {
  std::vector<SketchObject> objects;
  std::vector<int> hidden;
  std::vector<int> locked;
  int selected = -1;
  bool metric = false;
};

bool Same(const SketchObject& a, const SketchObject& b) {
  return a.type == b.type && a.group == b.group && a.x == b.x && a.y == b.y && a.size == b.size &&
         a.size2 == b.size2 && a.angle == b.angle;
}

struct Reference {
  State now;
  double thickness = 0;
  std::vector<State> history;  // all of it; only the last `reachable` can come back
  int reachable = 0;

  void Push() {
    history.push_back(now);
    if (reachable < 24) ++reachable;
  }
  void Switch(bool metric) {
    if (metric == now.metric) return;
    const double factor = metric ? kToMm : kToInch;
    thickness *= factor;
    for (SketchObject& object : now.objects) {
      object.x *= factor;
      object.y *= factor;
      object.size *= factor;
      object.size2 *= factor;
    }
    now.metric = metric;
  }
  void Undo() {
    if (reachable == 0) return;
    Switch(history.back().metric);
    now = history.back();
    history.pop_back();
    --reachable;
  }
};

::testing::AssertionResult Agrees(const Reference& wanted) {
  const State& now = wanted.now;
  if (sketch.objectCount != static_cast<int>(now.objects.size())) {
    return ::testing::AssertionFailure() << "count " << sketch.objectCount;
  }
  for (int i = 0; i < sketch.objectCount; ++i) {
    const auto at = static_cast<std::size_t>(i);
    if (!Same(sketch.objects[i], now.objects[at]) || sketch.hidden[i] != now.hidden[at] ||
        sketch.locked[i] != now.locked[at]) {
      return ::testing::AssertionFailure() << "object " << i;
    }
  }
  if (sketch.selected != now.selected) return ::testing::AssertionFailure() << "selection";
  if (sketch.metric != now.metric) return ::testing::AssertionFailure() << "unit";
  if (sketch.thickness != wanted.thickness) return ::testing::AssertionFailure() << "thickness";
  if (sketch.undoDepth != wanted.reachable) return ::testing::AssertionFailure() << "depth";
  return ::testing::AssertionSuccess();
}

TEST_F(SketchUndoSteps, AnyMixOfEditsUnitSwitchesAndUndosEndsWhereThePlainHistoryDoes) {
  for (unsigned seed = 1; seed <= 40; ++seed) {
    ResetSketch();
    Reference reference;
    std::mt19937 random(seed);
    const auto below = [&random](int n) {
      return static_cast<int>(random() % static_cast<unsigned>(n));
    };
    for (int step = 0; step < 150; ++step) {
      const int what = below(10);
      const int count = sketch.objectCount;
      const int index = count > 0 ? below(count) : 0;
      const auto at = static_cast<std::size_t>(index);
      State& now = reference.now;
      if (what < 3 && count < kMaxItems) {
        const SketchObject object{below(6),           below(3),        below(100) * 0.37,
                                  below(100) * -0.11, below(50) * 0.1, below(9) * 0.3,
                                  below(360) * 1.0};
        PushSketchUndo();
        reference.Push();
        sketch.selected = AppendSketchObject(object);
        now.objects.push_back(object);
        now.hidden.push_back(0);
        now.locked.push_back(0);
        now.selected = count;
      } else if (what == 3 && count > 0) {
        PushSketchUndo();
        reference.Push();
        RemoveSketchObject(index);
        now.objects.erase(now.objects.begin() + index);
        now.hidden.erase(now.hidden.begin() + index);
        now.locked.erase(now.locked.begin() + index);
        sketch.selected = now.selected = sketch.objectCount - 1;
      } else if (what == 4 && count > 0) {
        PushSketchUndo();
        reference.Push();
        sketch.objects[index].x += 1.25;
        sketch.locked[index] ^= 1;
        now.objects[at].x += 1.25;
        now.locked[at] ^= 1;
      } else if (what == 5 && count > 0) {
        PushSketchUndo();
        reference.Push();
        sketch.hidden[index] = 1;
        now.hidden[at] = 1;
      } else if (what == 6) {
        SwitchSketchUnits(!sketch.metric);
        reference.Switch(!now.metric);
      } else if (what == 7) {
        // The key is a step of its own, where it changes the unit.
        const bool metric = below(2) == 1;
        headless::Click(metric ? kIdCadMm : kIdCadInch);
        if (metric != now.metric) reference.Push();
        reference.Switch(metric);
      } else if (what == 8) {
        sketch.thickness = reference.thickness = below(20) * 0.1;
      } else {
        for (int times = 1 + below(4); times > 0; --times) {
          SketchUndo();
          reference.Undo();
        }
      }
      ASSERT_TRUE(Agrees(reference)) << "seed " << seed << " step " << step;
    }
    for (int i = 0; i < 30; ++i) {
      SketchUndo();
      reference.Undo();
      ASSERT_TRUE(Agrees(reference)) << "seed " << seed << " undo " << i;
    }
  }
}

TEST_F(SketchUndoSteps, OneMorePushThan24LosesTheOldestState) {
  for (int i = 0; i < 25; ++i) {
    PushSketchUndo();
    Add(kTypeLine, i, 0, 1);
  }
  EXPECT_EQ(sketch.undoDepth, 24);
  for (int i = 0; i < 40; ++i) SketchUndo();
  EXPECT_EQ(sketch.objectCount, 1);
  EXPECT_EQ(sketch.undoDepth, 0);
}

TEST_F(SketchUndoSteps, UndoDoesNotBringBackAnEarlierThickness) {
  sketch.thickness = 0.5;
  PushSketchUndo();
  sketch.thickness = 2;
  SketchUndo();
  EXPECT_EQ(sketch.thickness, 2);
}

TEST_F(SketchUndoSteps, ADryRunPushesNothing) {
  sketch.trimPreviewing = true;
  PushSketchUndo();
  EXPECT_EQ(sketch.undoDepth, 0);
  EXPECT_FALSE(app.editorDirty);
}

TEST_F(SketchUndoSteps, WithoutAStepOnlyTheMarksGo) {
  Add(kTypeLine, 0, 0, 1);
  tools.multiSelect[0] = 1;
  SetSketchStatus(u"before");
  SketchUndo();
  EXPECT_EQ(tools.multiSelect[0], 0);
  EXPECT_EQ(sketch.objectCount, 1);
  EXPECT_EQ(platform::RowCount(kIdCadRecent), 0);
  EXPECT_EQ(TextOf(kIdCadStatus), u"before");
  EXPECT_FALSE(app.editorDirty);
}

TEST_F(SketchUndoSteps, UndoIsLoggedAndMarksTheProgramModified) {
  OpenTab(u"", u"G1\r\n", u"Job.NC");
  SwitchTab(0);
  PushSketchUndo();
  EXPECT_TRUE(tabs[0].dirty);
  app.editorDirty = false;
  tabs[0].dirty = false;
  headless::Click(kIdCadUndo);
  EXPECT_TRUE(tabs[0].dirty);
  EXPECT_EQ(Rows(kIdCadRecent), std::vector<std::u16string>{u"Undo"});
}

TEST_F(SketchUndoSteps, ALockedSelectionIsToldAndMayNotBeEdited) {
  Add(kTypeLine, 0, 0, 1);
  EXPECT_FALSE(MayEditSelection());
  sketch.selected = 0;
  EXPECT_TRUE(MayEditSelection());
  sketch.selected = 1;
  EXPECT_FALSE(MayEditSelection());
  EXPECT_EQ(SketchStatus(), u"");
  sketch.selected = 0;
  sketch.locked[0] = 1;
  EXPECT_FALSE(MayEditSelection());
  EXPECT_EQ(SketchStatus(), u"This object is locked. Right-click it in Operations to unlock.");
}

TEST_F(SketchUndoSteps, RemovingMovesTheFlagsAndMarksWithTheirObjects) {
  for (int i = 0; i < 4; ++i) Add(kTypeLine, i, 0, 1);
  sketch.hidden[2] = 1;
  sketch.locked[3] = 1;
  tools.multiSelect[3] = 1;
  RemoveSketchObject(1);
  EXPECT_EQ(sketch.objects[1].x, 2);
  EXPECT_EQ(sketch.hidden[1], 1);
  EXPECT_EQ(sketch.locked[2], 1);
  EXPECT_EQ(tools.multiSelect[2], 1);
  EXPECT_EQ(sketch.hidden[2] + sketch.hidden[3] + sketch.locked[3], 0);
  RemoveSketchObject(3);
  RemoveSketchObject(-1);
  EXPECT_EQ(sketch.objectCount, 3);
}

TEST_F(SketchUndoSteps, AFreshGroupIsOneAboveTheLargestAndAtLeastOne) {
  EXPECT_EQ(NextSketchGroup(), 1);
  Add(kTypeLine, 0, 0, 1, 0, 0, 5);
  Add(kTypeLine, 0, 0, 1, 0, 0, 2);
  EXPECT_EQ(NextSketchGroup(), 6);
}

TEST_F(SketchUndoSteps, WithTheLargestGroupInUseTheLeastFreeOneIsTaken) {
  Add(kTypeLine, 0, 0, 1, 0, 0, 2147483647);  // as a file may hold it
  EXPECT_EQ(NextSketchGroup(), 1);
  Add(kTypeLine, 0, 0, 1, 0, 0, 1);
  Add(kTypeLine, 0, 0, 1, 0, 0, 3);
  EXPECT_EQ(NextSketchGroup(), 2);
}

}  // namespace
}  // namespace morva
