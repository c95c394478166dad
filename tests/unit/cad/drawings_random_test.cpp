// Drawings of several programs by chance, against plain lists that copy everything.

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "cad/model/drawings.h"
#include "cad/model/sketch.h"
#include "cad/panel/drawing_tabs.h"
#include "unit/cad/cad_stage.h"

namespace morva {
namespace {

struct PlainDrawing {
  std::vector<SketchObject> objects;
  std::vector<int> hidden;
  std::vector<int> locked;
  bool metric = false;
  double thickness = 0;
  std::u16string name = u"Drawing 1";
};

struct PlainProgram {
  std::vector<PlainDrawing> drawings{PlainDrawing()};
  std::size_t active = 0;
  PlainDrawing& Live() { return drawings[active]; }
};

struct RandomDrawings : cad_test::CadStage {
  void SetUp() override {
    CadStage::SetUp();
    liveModels.cadWindowExists = [] { return true; };
    platform::SetVisible(kIdCadDrawingName, false);
  }
  static ::testing::AssertionResult Agrees(const PlainProgram& program) {
    const PlainDrawing& live = program.drawings[program.active];
    if (sketch.objectCount != static_cast<int>(live.objects.size())) {
      return ::testing::AssertionFailure() << "count";
    }
    for (int i = 0; i < sketch.objectCount; ++i) {
      const auto at = static_cast<std::size_t>(i);
      const SketchObject& a = sketch.objects[i];
      const SketchObject& b = live.objects[at];
      if (a.type != b.type || a.group != b.group || a.x != b.x || a.y != b.y || a.size != b.size ||
          a.size2 != b.size2 || a.angle != b.angle || sketch.hidden[i] != live.hidden[at] ||
          sketch.locked[i] != live.locked[at]) {
        return ::testing::AssertionFailure() << "object " << i;
      }
    }
    if (sketch.metric != live.metric) return ::testing::AssertionFailure() << "unit";
    if (sketch.thickness != live.thickness) return ::testing::AssertionFailure() << "thickness";
    for (std::size_t i = 0; i < program.drawings.size(); ++i) {
      const int key = kIdDrawingFirst + static_cast<int>(i);
      if (TextOf(key) != program.drawings[i].name || !platform::IsVisible(key) ||
          platform::IsChecked(key) != (i == program.active)) {
        return ::testing::AssertionFailure() << "key " << i;
      }
    }
    if (program.drawings.size() < 8 &&
        platform::IsVisible(kIdDrawingFirst + static_cast<int>(program.drawings.size()))) {
      return ::testing::AssertionFailure() << "a key too many";
    }
    return ::testing::AssertionSuccess();
  }
};

TEST_F(RandomDrawings, NothingIsLostOrMixedByAnyOrderOfSwitches) {
  constexpr int kPrograms = 3;
  std::vector<PlainProgram> programs(kPrograms);
  for (int i = 0; i < kPrograms; ++i) OpenTab(u"", u"G1\r\n", u"Job.NC");
  SwitchTab(0);
  LoadSketchForProgram();
  std::size_t current = 0;
  std::mt19937 random(5);
  const auto below = [&random](int n) {
    return static_cast<int>(random() % static_cast<unsigned>(n));
  };
  for (int step = 0; step < 2000; ++step) {
    PlainProgram& program = programs[current];
    PlainDrawing& live = program.Live();
    const int what = below(12);
    const int index = sketch.objectCount > 0 ? below(sketch.objectCount) : 0;
    const auto at = static_cast<std::size_t>(index);
    if (what < 4 && sketch.objectCount < kMaxItems) {
      const SketchObject object{below(6),       below(4),       below(90) * 0.1, below(90) * -0.3,
                                below(9) * 1.1, below(9) * 0.7, below(360) * 0.5};
      PushSketchUndo();
      AppendSketchObject(object);
      live.objects.push_back(object);
      live.hidden.push_back(0);
      live.locked.push_back(0);
    } else if (what == 4 && sketch.objectCount > 0) {
      live.hidden[at] = sketch.hidden[index] = 1;
    } else if (what == 5 && sketch.objectCount > 0) {
      live.locked[at] = sketch.locked[index] = 1;
    } else if (what == 6) {
      sketch.thickness = live.thickness = below(10) * 0.3;
    } else if (what == 7) {
      SetUnits(below(2) == 1);  // the application's unit is that of new drawings only
    } else if (what == 8) {
      const std::size_t before = program.drawings.size();
      headless::Click(kIdDrawingAdd);
      if (before < 8) {
        PlainDrawing drawing;
        drawing.metric = UnitsMetric();
        drawing.name = u"Drawing " + support::Wide(std::to_string(before + 1));
        program.drawings.push_back(drawing);
        program.active = before;
      }
    } else if (what == 9) {
      const int target = below(8);
      SelectDrawingTab(target);
      if (target < static_cast<int>(program.drawings.size())) {
        program.active = static_cast<std::size_t>(target);
      }
    } else if (what == 10) {
      live.name = u"N" + support::Wide(std::to_string(step));
      headless::Click(kIdDrawingRename);
      platform::SetText(kIdCadDrawingName, live.name);
      headless::Click(kIdDrawingRename);
    } else {
      current = static_cast<std::size_t>(below(kPrograms));
      // A program's first drawing starts in the unit of the application.
      const bool fresh = !tabs[current].cadSettings && static_cast<int>(current) != app.activeTab;
      SwitchTab(static_cast<int>(current));
      if (fresh) programs[current].Live().metric = UnitsMetric();
    }
    ASSERT_TRUE(Agrees(programs[current])) << "step " << step << " what " << what;
  }
}

}  // namespace
}  // namespace morva
