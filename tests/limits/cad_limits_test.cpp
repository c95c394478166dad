// The CAD workspace's tables, full and one beyond.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "app/command_ids.h"
#include "app/limits.h"
#include "cad/geometry/trim_cuts.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "cad/panel/cad_room.h"
#include "cad/tools/polygon.h"
#include "cad/tools/scale_revolve.h"
#include "cad/tools/trim.h"
#include "library/shapes.h"
#include "support/stage.h"
#include "support/workbench.h"

namespace morva {
namespace {

TEST(SketchLimits, TwentyFourUndoStepsAreKeptAndTheOldestStateIsLost) {
  ResetSketch();
  for (int i = 0; i <= kMaxSketchUndo; ++i) {
    sketch.thickness = i;
    PushSketchUndo();
    SketchObject line;
    line.size = i + 1.0;
    ASSERT_EQ(AppendSketchObject(line), i);
  }
  EXPECT_EQ(sketch.undoDepth, 24);
  for (int i = 0; i < kMaxSketchUndo; ++i) SketchUndo();
  // The empty sketch of the very first step cannot be reached any more.
  EXPECT_EQ(sketch.objectCount, 1);
  SketchUndo();
  EXPECT_EQ(sketch.objectCount, 1);
  ResetSketch();
}

TEST(SketchLimits, NinetySevenObjectsAreOneTooMany) {
  ResetSketch();
  SketchObject line;
  for (int i = 0; i < kMaxItems; ++i) ASSERT_EQ(AppendSketchObject(line), i);
  EXPECT_EQ(AppendSketchObject(line), -1);
  EXPECT_EQ(sketch.objectCount, kMaxItems);
  RemoveSketchObject(3);
  EXPECT_EQ(AppendSketchObject(line), kMaxItems - 1);
  ResetSketch();
}

TEST(ShapeLimits, TwentyFourShapesOf64ObjectsAndNamesOf71Units) {
  static_assert(kMaxShapes == 24 && kMaxShapeObjects == 64 && kShapeNameUnits == 72);
  ResetShapeLibrary();
  for (int i = 0; i < kMaxShapes; ++i) ASSERT_EQ(AppendShape(std::u16string(72, u'n')), i);
  EXPECT_EQ(AppendShape(u"one more"), -1);
  EXPECT_EQ(shapeLibrary.count, 24);
  EXPECT_EQ(std::u16string(shapeLibrary.shapes[0].name), std::u16string(71, u'n'));
  --shapeLibrary.count;
  EXPECT_EQ(AppendShape(u"again"), 23);
  ResetShapeLibrary();
}

using SketchLists = support::Stage;

TEST_F(SketchLists, FortyRecentOperationsAreKeptAndTheOldestGoes) {
  static_assert(kMaxRecentOperations == 40);
  platform::ListSpec list;
  list.id = kIdCadRecent;
  platform::MakeList(list);
  for (int i = 0; i < kMaxRecentOperations; ++i) LogSketchOperation(i == 0 ? u"first" : u"next");
  EXPECT_EQ(platform::RowText(kIdCadRecent, 0), u"first");
  LogSketchOperation(u"last");
  EXPECT_EQ(platform::RowCount(kIdCadRecent), 40);
  EXPECT_EQ(platform::RowText(kIdCadRecent, 0), u"next");
  EXPECT_EQ(platform::RowText(kIdCadRecent, 39), u"last");
}

// Squares on a corner, each with two corners on the line, where two edges meet: four places a
// square. With the two ends the list is full after 48 of them.
TEST(SketchLimits, PlacesWhereALineIsCut) {
  static_assert(kMaxCuts == 194);
  ResetSketch();
  AppendSketchObject({kTypeLine, 0, 0, 0, 10, 0, 0});
  const double side = 0.02 * std::sqrt(2.0);
  CutList cuts;
  for (int squares = 1; squares <= 95; ++squares) {
    ASSERT_NE(AppendSketchObject({kTypeRectangle, 0, 0.1 * squares, 0, side, side, 45}), -1);
    CutsOfSegment(0, 0, 0, 10, 0, cuts);
    EXPECT_EQ(cuts.count, std::min(4 * squares + 2, 194));
  }
  // The section from the right corner of the 48th square on, whatever lies behind.
  ASSERT_TRUE(TrimObject(0, 9.9, 0));
  EXPECT_NEAR(sketch.objects[0].size, 4.82, 1e-6);
  ResetSketch();
}

// The longest preview is that of a circle that is cut in two places next to each other.
TEST(SketchLimits, LinesOfATrimsPreview) {
  static_assert(kMaxPreviewSegments == 200);
  ResetSketch();
  AppendSketchObject({kTypeCircle, 0, 0, 0, 2, 0, 0});
  AppendSketchObject({kTypeLine, 0, 0, 0, 2, 0, 90});
  AppendSketchObject({kTypeLine, 0, 0.001, 0, 2, 0, 90});
  sketch.trimPreviewing = true;
  EXPECT_TRUE(TrimObject(0, 0, -1));
  sketch.trimPreviewing = false;
  EXPECT_GT(tools.previewSegmentCount, 30);
  EXPECT_LT(tools.previewSegmentCount, kMaxPreviewSegments);
  ResetCad();
}

using support::Workbench;

struct CadLimits : Workbench {
  void SetUp() override {
    Workbench::SetUp();
    ASSERT_TRUE(headless::Click(kIdSurfaceCad));
    AppendSketchObject({kTypeCircle, 0, 0, 0, 1, 0, 0});
    sketch.selected = 0;
  }
};

TEST_F(CadLimits, SidesOfAPolygon) {
  static_assert(kMaxPolygonSides == 64);
  for (const int sides : {63, 64, 65, 64}) {
    ResetSketch();
    EXPECT_EQ(MakePolygon(sides, 1, 0, 0, 0), sides <= 64);
    EXPECT_EQ(sketch.objectCount, sides <= 64 ? sides : 0);
  }
  CreatePolygon(65, 1, 0, 0, 0);
  EXPECT_EQ(SketchStatus(), u"Use 3-64 sides, positive radius, and enough room in the sketch.");
}

TEST_F(CadLimits, CopiesOfARevolve) {
  static_assert(kMaxRevolveCopies == 95 && kMaxRevolveCopies == kMaxItems - 1);
  SetRevolvePivot(5, 5);
  EXPECT_FALSE(Revolve(1, 96));
  EXPECT_EQ(SketchStatus(), u"Select unlocked geometry; copies must fit the sketch.");
  EXPECT_EQ(sketch.objectCount, 1);
  EXPECT_TRUE(Revolve(1, 95));
  EXPECT_EQ(sketch.objectCount, 96);
}

// The sketch is full before the number is, so that the angles tell which one counted.
TEST_F(CadLimits, QuantityOfTheQuickCircle) {
  static_assert(kMaxQuickQuantity == 120 && kMaxQuickQuantity > kMaxItems);
  headless::Click(kIdCadCircularPanel);
  headless::TypeInto(kIdCadQuantity, u"121");
  headless::Click(kIdCadQuickCircular);
  EXPECT_EQ(sketch.objectCount, 96);
  EXPECT_EQ(SketchStatus().rfind(u"Circular pattern created: 96 total", 0), 0u);
}

TEST_F(CadLimits, ColumnsAndRowsOfTheQuickGrid) {
  static_assert(kMaxQuickLines == 20);
  for (const bool columns : {true, false}) {
    for (const char16_t* typed : {u"20", u"21"}) {
      ResetSketch();
      AppendSketchObject({kTypeCircle, 0, 0, 0, 1, 0, 0});
      sketch.selected = 0;
      headless::Click(kIdCadGridPanel);
      headless::TypeInto(kIdCadColumns, columns ? typed : u"1");
      headless::TypeInto(kIdCadRows, columns ? u"1" : typed);
      headless::Click(kIdCadQuickGrid);
      EXPECT_EQ(sketch.objectCount, 20);
    }
  }
}

// What the workspace makes when it first shows, but for its labels: none is left out of the order.
TEST_F(Workbench, ControlsThatTabReachesInTheCad) {
  static_assert(kMaxTabStops == 160);
  const std::vector<int> before = headless::AllIds();
  ASSERT_TRUE(headless::Click(kIdSurfaceCad));
  int stops = 0;
  for (const int id : headless::AllIds()) {
    headless::ControlInfo info;
    if (std::find(before.begin(), before.end(), id) != before.end()) continue;
    if (headless::Describe(id, info) && info.kind != u"label") ++stops;
  }
  EXPECT_GT(stops, 80);
  EXPECT_LT(stops, kMaxTabStops);
}

}  // namespace
}  // namespace morva
