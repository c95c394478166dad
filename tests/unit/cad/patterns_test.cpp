// Sketch patterns in the whole workspace: fields are typed and keys clicked as the user does.
// Expected places are worked out by hand or with the library's sine.

#include <cmath>
#include <vector>

#include "cad/geometry/canvas_view.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "cad/panel/pattern_form.h"
#include "cad/panel/workspace.h"
#include "cad/tools/edit_parts.h"
#include "cad/tools/pattern_direction.h"
#include "documents/insertion.h"
#include "library/outline.h"
#include "library/shapes.h"
#include "platform/listing.h"
#include "platform/window.h"
#include "shell/modes.h"
#include "support/workbench.h"
#include "text/codetext.h"

namespace morva {
namespace {

constexpr char16_t kBadShape[] = u"Choose valid shape dimensions or select unlocked geometry.";
constexpr char16_t kBadNumbers[] = u"Pattern fields require finite numeric values.";
constexpr char16_t kBadCounts[] = u"Use positive whole-number pattern quantities.";
constexpr char16_t kTooMany[] =
    u"Pattern exceeds the sketch's 96 geometry objects. Reduce the count; no partial pattern was "
    u"created.";
constexpr char16_t kBadCut[] =
    u"Use positive feed and pattern diameter; Safe Z must be above cut Z.";
constexpr char16_t kBadDirections[] = u"Enter numeric direction angles.";
constexpr char16_t kTooFar[] = u"Pattern extent exceeds the sketch coordinate limit.";
constexpr char16_t kLocked[] = u"This object is locked. Right-click it in Operations to unlock.";
constexpr char16_t kMade[] =
    u"Pattern is editable sketch geometry. Generate uses the pattern cutting settings.";

double Degrees(double a) { return a * 3.14159265358979323846 / 180; }

class Patterns : public support::Workbench {
 protected:
  void SetUp() override {
    Workbench::SetUp();
    ASSERT_TRUE(headless::Click(kIdSurfaceCad));
  }
  static void Add(int type, double x, double y, double size = 0, double size2 = 0, double angle = 0,
                  int group = 0) {
    AppendSketchObject({type, group, x, y, size, size2, angle});
  }
  static void Fill(int count) {
    while (sketch.objectCount < count) Add(kTypeCircle, 9, 9, 0.5);
  }
  static const SketchObject& Object(int i) { return sketch.objects[i]; }
  static void Type(int id, const char16_t* text) {
    ASSERT_TRUE(headless::TypeInto(id, text)) << id;
  }
  static std::vector<std::u16string> Recent() {
    std::vector<std::u16string> lines;
    for (int i = 0; i < platform::RowCount(kIdCadRecent); ++i) {
      lines.push_back(platform::RowText(kIdCadRecent, i));
    }
    return lines;
  }
  static void ExpectAt(int i, double x, double y) {
    EXPECT_NEAR(Object(i).x, x, 1e-5) << i;
    EXPECT_NEAR(Object(i).y, y, 1e-5) << i;
  }
  // A refused creation: its words, and nothing else.
  static void ExpectRefused(const char16_t* words) {
    const int count = sketch.objectCount;
    const int depth = sketch.undoDepth;
    const SketchObject selected = sketch.selected >= 0 ? Object(sketch.selected) : SketchObject();
    SetSketchStatus(u"");
    headless::Click(kIdCadCreatePattern);
    EXPECT_EQ(SketchStatus(), words);
    EXPECT_EQ(sketch.objectCount, count);
    EXPECT_EQ(sketch.undoDepth, depth);
    if (sketch.selected >= 0) {
      EXPECT_EQ(Object(sketch.selected).x, selected.x);
      EXPECT_EQ(Object(sketch.selected).angle, selected.angle);
    }
    EXPECT_TRUE(Recent().empty());
  }
  static void Circular() { ASSERT_TRUE(headless::Click(kIdCadCircularPanel)); }
  static void Rectangular() { ASSERT_TRUE(headless::Click(kIdCadGridPanel)); }
};

// The panel has fields of two patterns; a note above each says which keys take them. The first one
// is in sight when the panel comes up.
TEST_F(Patterns, SayWhichKeysTakeWhichFields) {
  const auto noteAt = [](std::u16string_view words) {
    for (int id = kIdCadLabelFirst; id <= kIdCadLabelLast; ++id) {
      if (platform::Exists(id) && platform::IsVisible(id) && platform::TextOf(id) == words) {
        return platform::PlaceOf(id);
      }
    }
    return platform::Rect{};
  };
  constexpr std::u16string_view kAbove =
      u"Apply repeats the selected object by these fields. INSERT and CREATE take those of SKETCH "
      u"PATTERN, further down.";
  constexpr std::u16string_view kBelow =
      u"The picture, INSERT and CREATE take the fields below, none from above.";
  struct {
    int panel, quickField, quickKey, firstBelow, mode;
  } const kinds[] = {
      {kIdCadCircularPanel, kIdCadQuantity, kIdCadQuickCircular, kIdCircularItem, kModeCircular},
      {kIdCadGridPanel, kIdCadColumns, kIdCadQuickGrid, kIdRectItem, kModeRectangular},
  };
  for (const auto& kind : kinds) {
    ASSERT_TRUE(headless::Click(kind.panel));
    const platform::Rect above = noteAt(kAbove);
    const platform::Rect below = noteAt(kBelow);
    ASSERT_GT(above.bottom, above.top);
    ASSERT_GT(below.bottom, below.top);
    EXPECT_LE(above.bottom, platform::PlaceOf(kind.quickField).top);
    EXPECT_LT(above.top, 60);
    EXPECT_GE(below.top, platform::PlaceOf(kind.quickKey).bottom);
    EXPECT_LE(below.bottom, platform::PlaceOf(kind.firstBelow).top);
  }
  // Without the drawing's part there is one set of fields, and nothing to tell apart.
  for (const auto& kind : kinds) {
    SetMode(kind.mode);
    EXPECT_FALSE(platform::IsVisible(kind.quickKey));
    EXPECT_EQ(noteAt(kAbove).bottom, 0);
    EXPECT_EQ(noteAt(kBelow).bottom, 0);
  }
}

// The quick circular pattern.

TEST_F(Patterns, QuickCircleStartsWithSixAroundTheOrigin) {
  Add(kTypeSlot, 5, 5, 2, 1, 30, 7);
  sketch.selected = 0;
  Circular();
  ASSERT_TRUE(headless::Click(kIdCadQuickCircular));
  ASSERT_EQ(sketch.objectCount, 6);
  for (int i = 0; i < 6; ++i) {
    ExpectAt(i, 2 * std::cos(Degrees(60 * i)), 2 * std::sin(Degrees(60 * i)));
    EXPECT_EQ(Object(i).type, kTypeSlot);
    EXPECT_EQ(Object(i).group, 7);
    EXPECT_EQ(Object(i).size, 2);
    EXPECT_EQ(Object(i).size2, 1);
    EXPECT_EQ(Object(i).angle, 30);
  }
  EXPECT_EQ(SketchStatus(),
            u"Circular pattern created: 6 total instances. Selected source became the first "
            u"pattern instance.");
  EXPECT_EQ(Recent(), std::vector<std::u16string>{u"Circular pattern"});
  EXPECT_EQ(sketch.undoDepth, 1);
  SketchUndo();
  EXPECT_EQ(sketch.objectCount, 1);
  EXPECT_EQ(Object(0).x, 5);
}

TEST_F(Patterns, QuickCircleTurnsItsItemsByTheOrientation) {
  const double wanted[3][2] = {{30 + 5, 30 + 5}, {10 + 5, 190 + 5}, {100 + 5, 280 + 5}};
  for (int orientation = 0; orientation < 3; ++orientation) {
    ResetSketch();
    Add(kTypeRectangle, 5, 5, 2, 1, 30);
    sketch.selected = 0;
    Circular();
    Type(kIdCadQuantity, u"2");
    Type(kIdCadCircularX, u"1");
    Type(kIdCadCircularY, u"-1");
    Type(kIdCadCircularDiameter, u"6");
    Type(kIdCadCircularStart, u"10");
    Type(kIdCadCircularRotation, u"5");
    headless::SelectRows(kIdCadCircularOrientation, {orientation});
    headless::Click(kIdCadQuickCircular);
    ASSERT_EQ(sketch.objectCount, 2);
    ExpectAt(0, 1 + 3 * std::cos(Degrees(10)), -1 + 3 * std::sin(Degrees(10)));
    ExpectAt(1, 1 - 3 * std::cos(Degrees(10)), -1 - 3 * std::sin(Degrees(10)));
    EXPECT_EQ(Object(0).angle, wanted[orientation][0]);
    EXPECT_EQ(Object(1).angle, wanted[orientation][1]);
  }
}

TEST_F(Patterns, QuickPatternsRefuseLengthsAndAnglesThatAreNoNumbers) {
  const auto refused = [](int field, int key) {
    const std::u16string text = platform::TextOf(field);
    Type(field, u"0,75");
    headless::Click(key);
    EXPECT_EQ(sketch.objectCount, 1) << field;
    EXPECT_NE(SketchStatus().find(u" holds no usable number."), std::u16string::npos) << field;
    Type(field, text.c_str());
  };
  Add(kTypeCircle, 0, 0, 1);
  sketch.selected = 0;
  Circular();
  for (const int field : {kIdCadCircularX, kIdCadCircularY, kIdCadCircularDiameter,
                          kIdCadCircularStart, kIdCadCircularRotation}) {
    refused(field, kIdCadQuickCircular);
  }
  Rectangular();
  for (const int field : {kIdCadSpacingX, kIdCadSpacingY, kIdCadGridRotation}) {
    refused(field, kIdCadQuickGrid);
  }
}

TEST_F(Patterns, QuickCircleReadsItsCountAsAnIntegerWithinItsBounds) {
  const struct {
    const char16_t* text;
    int count;
  } kCases[] = {{u"", 6}, {u"4", 4}, {u"4.0", 4}, {u"0", 1}, {u"-3", 1}, {u"500", 96}};
  for (const auto& each : kCases) {
    ResetSketch();
    Add(kTypeCircle, 0, 0, 1);
    sketch.selected = 0;
    Circular();
    Type(kIdCadQuantity, each.text);
    headless::Click(kIdCadQuickCircular);
    EXPECT_EQ(sketch.objectCount, each.count) << each.count;
  }
}

TEST_F(Patterns, QuickPatternsRefuseCountsThatAreNoWholeNumbers) {
  const struct {
    int panel, field, key;
  } kCounts[] = {{kIdCadCircularPanel, kIdCadQuantity, kIdCadQuickCircular},
                 {kIdCadGridPanel, kIdCadColumns, kIdCadQuickGrid},
                 {kIdCadGridPanel, kIdCadRows, kIdCadQuickGrid}};
  Add(kTypeCircle, 5, 5, 1);
  sketch.selected = 0;
  for (const auto& each : kCounts) {
    ASSERT_TRUE(headless::Click(each.panel));
    const std::u16string shown = platform::TextOf(each.field);
    for (const char16_t* text : {u"0,75", u"3/8", u"2.9", u"1e1", u"4 mm", u"abc", u"--1"}) {
      Type(each.field, text);
      SetSketchStatus(u"");
      headless::Click(each.key);
      EXPECT_EQ(sketch.objectCount, 1) << each.field;
      EXPECT_EQ(Object(0).x, 5) << each.field;
      EXPECT_EQ(sketch.undoDepth, 0) << each.field;
      EXPECT_NE(SketchStatus().find(u" holds no usable number. Write a whole number, such as 12. "
                                    u"Nothing was changed."),
                std::u16string::npos)
          << each.field;
      EXPECT_EQ(platform::TextOf(each.field), text);
    }
    Type(each.field, shown.c_str());
  }
}

TEST_F(Patterns, QuickCircleStopsSilentlyWhereTheSketchIsFull) {
  Fill(94);
  sketch.selected = 10;
  Circular();
  Type(kIdCadQuantity, u"6");
  headless::Click(kIdCadQuickCircular);
  EXPECT_EQ(sketch.objectCount, 96);
  EXPECT_EQ(SketchStatus(),
            u"Circular pattern created: 3 total instances. Selected source became the first "
            u"pattern instance.");
  // Three items stand 120 degrees apart: the limit comes before the angles.
  ExpectAt(10, 2, 0);
  ExpectAt(94, 2 * std::cos(Degrees(120)), 2 * std::sin(Degrees(120)));
  ExpectAt(95, 2 * std::cos(Degrees(240)), 2 * std::sin(Degrees(240)));
  headless::Click(kIdCadQuickCircular);
  EXPECT_EQ(sketch.objectCount, 96);
  EXPECT_EQ(SketchStatus().rfind(u"Circular pattern created: 1 total", 0), 0u);
}

TEST_F(Patterns, QuickCircleTakesAFallbackForADiameterOfNothing) {
  for (const bool metric : {false, true}) {
    for (const char16_t* text : {u"", u"0", u"-0.0000005"}) {
      ResetSketch();
      sketch.metric = metric;
      Add(kTypeCircle, 5, 5, 1);
      sketch.selected = 0;
      Circular();
      Type(kIdCadCircularDiameter, text);
      headless::Click(kIdCadQuickCircular);
      ExpectAt(0, metric ? 50 : 2, 0);
    }
  }
}

TEST_F(Patterns, QuickPatternsNeedAnUnlockedSelection) {
  Add(kTypeCircle, 5, 5, 1);
  for (const int id : {kIdCadQuickCircular, kIdCadQuickGrid}) {
    sketch.selected = -1;
    id == kIdCadQuickCircular ? Circular() : Rectangular();
    headless::Click(id);
    sketch.selected = 0;
    sketch.locked[0] = 1;
    headless::Click(id);
    EXPECT_EQ(SketchStatus(), kLocked);
    EXPECT_EQ(sketch.objectCount, 1);
    EXPECT_EQ(sketch.undoDepth, 0);
    sketch.locked[0] = 0;
  }
  EXPECT_TRUE(Recent().empty());
}

TEST_F(Patterns, QuickPatternsRefusePlacesBeyondTheSketch) {
  Add(kTypeCircle, 5, 5, 1);
  sketch.selected = 0;
  Circular();
  Type(kIdCadCircularX, u"999999");
  headless::Click(kIdCadQuickCircular);
  Rectangular();
  Type(kIdCadSpacingX, u"600000");
  headless::Click(kIdCadQuickGrid);
  EXPECT_EQ(sketch.objectCount, 1);
  EXPECT_EQ(Object(0).x, 5);
  EXPECT_EQ(sketch.undoDepth, 0);
  EXPECT_EQ(SketchStatus(), u"Geometry exceeds the sketch coordinate limit.");
}

// The quick grid.

TEST_F(Patterns, QuickGridKeepsTheSourceAndTurnsOnlyTheObjects) {
  Add(kTypeRectangle, 1, 2, 0.5, 0.25, 10, 3);
  sketch.selected = 0;
  Rectangular();
  Type(kIdCadGridRotation, u"15");
  Type(kIdCadSpacingX, u"1.5");
  Type(kIdCadSpacingY, u"-2");
  ASSERT_TRUE(headless::Click(kIdCadQuickGrid));
  ASSERT_EQ(sketch.objectCount, 6);
  const double places[][2] = {{1, 2}, {2.5, 2}, {4, 2}, {1, 0}, {2.5, 0}, {4, 0}};
  for (int i = 0; i < 6; ++i) {
    EXPECT_EQ(Object(i).x, places[i][0]) << i;
    EXPECT_EQ(Object(i).y, places[i][1]) << i;
    EXPECT_EQ(Object(i).angle, 25) << i;
    EXPECT_EQ(Object(i).group, 3) << i;
  }
  EXPECT_EQ(SketchStatus(),
            u"Rectangular pattern created: 6 total instances including the selected source.");
  EXPECT_EQ(Recent(), std::vector<std::u16string>{u"Rectangular pattern"});
  EXPECT_EQ(sketch.undoDepth, 1);
}

TEST_F(Patterns, QuickGridHoldsItsCountsWithinTwentyAndStopsWhenFull) {
  Add(kTypeCircle, 0, 0, 1);
  sketch.selected = 0;
  Rectangular();
  Type(kIdCadColumns, u"99");
  Type(kIdCadRows, u"0");
  headless::Click(kIdCadQuickGrid);
  EXPECT_EQ(sketch.objectCount, 20);
  Type(kIdCadRows, u"20");
  headless::Click(kIdCadQuickGrid);
  EXPECT_EQ(sketch.objectCount, 96);
  EXPECT_EQ(SketchStatus(),
            u"Rectangular pattern created: 77 total instances including the selected source.");
}

TEST_F(Patterns, QuickGridHasFallbacksByUnit) {
  Add(kTypeCircle, 0, 0, 1);
  sketch.selected = 0;
  sketch.metric = true;
  Rectangular();
  for (const int id : {kIdCadColumns, kIdCadRows, kIdCadSpacingX, kIdCadSpacingY}) Type(id, u"");
  headless::Click(kIdCadQuickGrid);
  ASSERT_EQ(sketch.objectCount, 6);
  EXPECT_EQ(Object(5).x, 2 * 25.4);
  EXPECT_EQ(Object(5).y, 25.4);
}

// The full form: the shape library as its source.

TEST_F(Patterns, FormStartsWithACircleAroundTheOriginTurnedRadially) {
  Circular();
  EXPECT_EQ(platform::TextOf(kIdCadPatternSource), u"Source: shape library");
  EXPECT_EQ(platform::TextOf(kIdCadCreatePattern), u"CREATE SKETCH PATTERN");
  ASSERT_TRUE(headless::Click(kIdCadCreatePattern));
  ASSERT_EQ(sketch.objectCount, 6);
  for (int i = 0; i < 6; ++i) {
    ExpectAt(i, 2 * std::cos(Degrees(60 * i)), 2 * std::sin(Degrees(60 * i)));
    EXPECT_EQ(Object(i).type, kTypeCircle);
    EXPECT_EQ(Object(i).size, 0.5);
    EXPECT_EQ(Object(i).size2, 0);
    EXPECT_EQ(Object(i).angle, 60 * i);
  }
  EXPECT_EQ(sketch.selected, 0);
  EXPECT_EQ(SketchStatus(), kMade);
  EXPECT_EQ(Recent(), std::vector<std::u16string>{u"Created circular pattern"});
  EXPECT_EQ(sketch.undoDepth, 1);
}

TEST_F(Patterns, FormBringsItsCuttingDataToTheDrawing) {
  Circular();
  Type(kIdCadCircDepth, u"-0.12345");
  Type(kIdCadCircFeed, u"7.5");
  Type(kIdCadCircSafeZ, u"0.25");
  headless::Click(kIdCadCreatePattern);
  EXPECT_EQ(platform::TextOf(kIdCadDepth), u"-0.1235");
  EXPECT_EQ(platform::TextOf(kIdCadFeed), u"7.5000");
  EXPECT_EQ(platform::TextOf(kIdCadSafeZ), u"0.2500");
}

TEST_F(Patterns, FormMakesEachShapeOfItsList) {
  const struct {
    int row, objects, type;
    double size, size2;
  } kCases[] = {{0, 1, kTypeCircle, 2, 0},
                {1, 1, kTypeRectangle, 2, 2},
                {2, 1, kTypeRectangle, 2, 1},
                {3, 3, kTypeLine, std::sqrt(2.0), 0},
                {4, 4, kTypeLine, std::sqrt(1.25), 0},
                {5, 1, kTypeSlot, 2, 1}};
  for (const auto& each : kCases) {
    ResetSketch();
    Circular();
    headless::SelectRows(kIdCircularItem, {each.row});
    Type(kIdCadCircSize, u"2");
    Type(kIdCadCircWidth, u"1");
    Type(kIdCadCircQuantity, u"1");
    headless::Click(kIdCadCreatePattern);
    ASSERT_EQ(sketch.objectCount, each.objects) << each.row;
    EXPECT_EQ(Object(0).type, each.type);
    EXPECT_NEAR(Object(0).size, each.size, 1e-12);
    EXPECT_EQ(Object(0).size2, each.size2);
  }
}

// The triangle of a width of 2 and a height of 1 about (2, 0), turned by a quarter: its top
// (0, 0.5) lies at (1.5, 0), its right foot (1, -0.5) at (2.5, 1), its left one at (2.5, -1).
TEST_F(Patterns, FormTurnsTheLinesOfATriangleWithTheItem) {
  Circular();
  headless::SelectRows(kIdCircularItem, {3});
  headless::SelectRows(kIdCircularOrientation, {0});
  Type(kIdCadCircSize, u"2");
  Type(kIdCadCircWidth, u"1");
  Type(kIdCadCircQuantity, u"1");
  Type(kIdCadCircRotation, u"90");
  headless::Click(kIdCadCreatePattern);
  ASSERT_EQ(sketch.objectCount, 3);
  const double corners[][2] = {{1.5, 0}, {2.5, 1}, {2.5, -1}, {1.5, 0}};
  for (int i = 0; i < 3; ++i) {
    ExpectAt(i, corners[i][0], corners[i][1]);
    double x = 0;
    double y = 0;
    LineEndPoint(Object(i), x, y);
    EXPECT_NEAR(x, corners[i + 1][0], 1e-6) << i;
    EXPECT_NEAR(y, corners[i + 1][1], 1e-6) << i;
  }
}

// A row behind the six is no shape of the form.
TEST_F(Patterns, FormOffersTheSixShapesAndMakesNoOther) {
  constexpr const char16_t* kRows[] = {u"Circle",   u"Square",  u"Rectangle",
                                       u"Triangle", u"Diamond", u"Slot"};
  for (const int id : {kIdCircularItem, kIdRectItem}) {
    id == kIdCircularItem ? Circular() : Rectangular();
    ASSERT_EQ(platform::RowCount(id), 6);
    for (int i = 0; i < 6; ++i) EXPECT_EQ(platform::RowText(id, i), kRows[i]);
    platform::AddRow(id, u"CUSTOM: Bracket", 1000);
    headless::SelectRows(id, {6});
    ExpectRefused(kBadShape);
  }
}

TEST_F(Patterns, FormOffersSavedShapesAndAppendsTheirObjectsInEveryPlace) {
  SavedShape shape;
  CopyBounded(shape.name, kShapeNameUnits, u"Ear");
  shape.count = 2;
  shape.objects[0] = {kTypeCircle, 7, 0.25, 0, 0.5, 0, 0};
  shape.objects[1] = {kTypeLine, 7, -0.5, 0, 1, 0, 0};
  ASSERT_EQ(PutShape(shape), 0);
  for (const bool metric : {false, true}) {
    ResetSketch();
    sketch.metric = metric;
    Circular();
    RefreshShapeLists();
    ASSERT_EQ(platform::RowCount(kIdCircularItem), 7);
    EXPECT_EQ(platform::RowText(kIdCircularItem, 6), u"CUSTOM: Ear");
    headless::SelectRows(kIdCircularItem, {6});
    headless::SelectRows(kIdCircularOrientation, {1});
    Type(kIdCadCircQuantity, u"4");
    Type(kIdCadCircDiameter, u"4");
    headless::Click(kIdCadCreatePattern);
    ASSERT_EQ(sketch.objectCount, 8);
    const double unit = metric ? 25.4 : 1;
    // The second place lies at (0, 2), turned by 90 degrees.
    EXPECT_NEAR(Object(2).x, 0, 1e-6);
    EXPECT_NEAR(Object(2).y, 2 + 0.25 * unit, 1e-6);
    EXPECT_NEAR(Object(2).size, 0.5 * unit, 1e-12);
    EXPECT_NEAR(Object(3).y, 2 - 0.5 * unit, 1e-6);
    EXPECT_EQ(Object(3).angle, 90);
    // Each is a part of its own.
    for (int i = 0; i < 8; ++i) EXPECT_EQ(Object(i).group, 1 + i / 2);
    // Counted against 96: 44 more do, 45 do not.
    Type(kIdCadCircQuantity, u"45");
    headless::Click(kIdCadCreatePattern);
    EXPECT_EQ(sketch.objectCount, 8);
    Type(kIdCadCircQuantity, u"44");
    headless::Click(kIdCadCreatePattern);
    EXPECT_EQ(sketch.objectCount, 96);
  }
  Rectangular();
  RefreshShapeLists();
  EXPECT_EQ(platform::RowText(kIdRectItem, 6), u"CUSTOM: Ear");
}

TEST_F(Patterns, FormTakesTheWidthForAHeightOfNothing) {
  Circular();
  headless::SelectRows(kIdCircularItem, {2});
  Type(kIdCadCircSize, u"2");
  Type(kIdCadCircWidth, u"0");
  headless::Click(kIdCadCreatePattern);
  ASSERT_EQ(sketch.objectCount, 6);
  EXPECT_EQ(Object(0).size2, 2);
}

TEST_F(Patterns, FormTurnsItemsByRotationAngleAndNinety) {
  const double wanted[3] = {20, 20 + 100, 20 + 100 + 90};
  for (int orientation = 0; orientation < 3; ++orientation) {
    ResetSketch();
    Circular();
    headless::SelectRows(kIdCircularOrientation, {orientation});
    Type(kIdCadCircQuantity, u"4");
    Type(kIdCadCircStart, u"10");
    Type(kIdCadCircRotation, u"20");
    headless::Click(kIdCadCreatePattern);
    ASSERT_EQ(sketch.objectCount, 4);
    EXPECT_EQ(Object(1).angle, wanted[orientation]);
  }
}

TEST_F(Patterns, FormRefusesShapesOfBadSize) {
  Circular();
  for (const char16_t* size : {u"0", u"-1", u"1000000"}) {
    Type(kIdCadCircSize, size);
    ExpectRefused(kBadShape);
  }
  Type(kIdCadCircSize, u"1");
  Type(kIdCadCircWidth, u"1000000");
  ExpectRefused(kBadShape);
  Type(kIdCadCircWidth, u"-1");
  headless::SelectRows(kIdCircularItem, {2});
  ExpectRefused(kBadShape);
}

TEST_F(Patterns, FormRefusesEveryFieldThatIsNoStrictNumber) {
  Circular();
  for (const int id : {kIdCadCircSize, kIdCadCircWidth, kIdCadCircX, kIdCadCircY,
                       kIdCadCircDiameter, kIdCadCircQuantity, kIdCadCircStart, kIdCadCircRotation,
                       kIdCadCircDepth, kIdCadCircFeed, kIdCadCircSafeZ}) {
    const std::u16string kept = platform::TextOf(id);
    for (const char16_t* text : {u"", u"1in", u" 1", u"1.2.3"}) {
      Type(id, text);
      ExpectRefused(kBadNumbers);
    }
    Type(id, kept.c_str());
  }
  Rectangular();
  for (const int id : {kIdCadRectSize, kIdCadRectWidth, kIdCadRectRotation, kIdCadRectX,
                       kIdCadRectY, kIdCadRectColumns, kIdCadRectRows, kIdCadRectSpacingX,
                       kIdCadRectSpacingY, kIdCadRectDepth, kIdCadRectFeed, kIdCadRectSafeZ}) {
    const std::u16string kept = platform::TextOf(id);
    Type(id, u"1,5");
    ExpectRefused(kBadNumbers);
    Type(id, kept.c_str());
  }
}

TEST_F(Patterns, FormRefusesCountsThatAreNotWholeAndAboveZero) {
  Circular();
  for (const char16_t* count : {u"0", u"-2", u"2.5"}) {
    Type(kIdCadCircQuantity, count);
    ExpectRefused(kBadCounts);
  }
  Rectangular();
  Type(kIdCadRectRows, u"1.01");
  ExpectRefused(kBadCounts);
  Type(kIdCadRectRows, u"2.0");
  EXPECT_TRUE(headless::Click(kIdCadCreatePattern));
  EXPECT_EQ(sketch.objectCount, 6);
}

TEST_F(Patterns, FormRefusesWhatDoesNotFitWhole) {
  Fill(94);
  Circular();
  sketch.selected = -1;
  ExpectRefused(kTooMany);  // six, where the quick pattern gives three
  Type(kIdCadCircQuantity, u"2");
  headless::Click(kIdCadCreatePattern);
  EXPECT_EQ(sketch.objectCount, 96);
}

TEST_F(Patterns, FormCountsEveryLineOfAShapeAndEveryCountByItself) {
  Circular();
  headless::SelectRows(kIdCircularItem, {4});
  Type(kIdCadCircQuantity, u"25");
  ExpectRefused(kTooMany);
  Type(kIdCadCircQuantity, u"24");
  headless::Click(kIdCadCreatePattern);
  EXPECT_EQ(sketch.objectCount, 96);
  ResetSketch();
  for (int i = platform::RowCount(kIdCadRecent); i > 0; --i) platform::ClearRows(kIdCadRecent);
  Rectangular();
  Type(kIdCadRectColumns, u"97");
  Type(kIdCadRectRows, u"1");
  ExpectRefused(kTooMany);
  Type(kIdCadRectColumns, u"999999");
  Type(kIdCadRectRows, u"999999");
  ExpectRefused(kTooMany);
}

TEST_F(Patterns, FormRefusesBadCuttingData) {
  Circular();
  Type(kIdCadCircFeed, u"0");
  ExpectRefused(kBadCut);
  Type(kIdCadCircFeed, u"10");
  Type(kIdCadCircSafeZ, u"-0.1");
  ExpectRefused(kBadCut);
  Type(kIdCadCircSafeZ, u"0.5");
  Type(kIdCadCircDiameter, u"0");
  ExpectRefused(kBadCut);
}

TEST_F(Patterns, FormLooksAtShapeNumbersCountsLimitsAndDirectionsInThatOrder) {
  Fill(95);
  Rectangular();
  sketch.selected = -1;
  Type(kIdCadRectSize, u"0");
  Type(kIdCadRectX, u"x");
  Type(kIdCadRectRows, u"0");
  Type(kIdCadRectFeed, u"0");
  Type(kIdCadDirection1, u"x");
  ExpectRefused(kBadShape);
  Type(kIdCadRectSize, u"1");
  ExpectRefused(kBadNumbers);
  Type(kIdCadRectX, u"999999");
  ExpectRefused(kBadCounts);
  Type(kIdCadRectRows, u"1");
  ExpectRefused(kTooMany);
  Type(kIdCadRectColumns, u"1");
  ExpectRefused(kBadCut);
  Type(kIdCadRectFeed, u"10");
  ExpectRefused(kBadDirections);
  Type(kIdCadDirection1, u"0");
  EXPECT_TRUE(headless::Click(kIdCadCreatePattern));
  EXPECT_EQ(sketch.objectCount, 96);
}

TEST_F(Patterns, FormRefusesPlacesBeyondTheSketch) {
  Rectangular();
  Type(kIdCadRectX, u"999999.5");
  ExpectRefused(kTooFar);
  Type(kIdCadRectX, u"0");
  Type(kIdCadRectSpacingY, u"-999999");
  Type(kIdCadRectY, u"-1");
  ExpectRefused(kTooFar);
}

TEST_F(Patterns, FormMarksNothingButWhatItMade) {
  Add(kTypeLine, -4, 2, 1);
  Circular();
  SelectSketchObject(0);
  ASSERT_TRUE(headless::Click(kIdCadCreatePattern));
  ASSERT_EQ(sketch.objectCount, 7);
  EXPECT_EQ(sketch.selected, 1);
  ASSERT_TRUE(headless::Click(kIdCadDelete));
  EXPECT_EQ(sketch.objectCount, 6);
  EXPECT_EQ(Object(0).type, kTypeLine);
}

TEST_F(Patterns, FormGridHasExactPlacesAtQuarterTurns) {
  Rectangular();
  Type(kIdCadRectX, u"0.1");
  Type(kIdCadRectY, u"0.2");
  Type(kIdCadRectSpacingX, u"1.5");
  Type(kIdCadRectSpacingY, u"2.5");
  Type(kIdCadDirection1, u"90");
  Type(kIdCadDirection2, u"180");
  Type(kIdCadRectRotation, u"30");
  headless::Click(kIdCadCreatePattern);
  ASSERT_EQ(sketch.objectCount, 6);
  EXPECT_DOUBLE_EQ(Object(0).x, 0.1);
  EXPECT_DOUBLE_EQ(Object(0).y, 0.2);
  for (int n = 0; n < 6; ++n) {
    EXPECT_EQ(Object(n).x, Object(0).x - n / 3 * 2.5) << n;  // the columns add exact zeros
    EXPECT_EQ(Object(n).y, Object(0).y + n % 3 * 1.5) << n;
    EXPECT_EQ(Object(n).angle, 30) << n;
  }
  EXPECT_EQ(Recent(), std::vector<std::u16string>{u"Created rectangular pattern"});
}

TEST_F(Patterns, FormGridTakesZeroAndNinetyForEmptyDirections) {
  Rectangular();
  Type(kIdCadDirection1, u"");
  Type(kIdCadDirection2, u"");
  headless::Click(kIdCadCreatePattern);
  ASSERT_EQ(sketch.objectCount, 6);
  EXPECT_EQ(Object(1).x, 1);
  EXPECT_EQ(Object(1).y, 0);
  EXPECT_EQ(Object(3).x, 0);
  EXPECT_EQ(Object(3).y, 1);
}

TEST_F(Patterns, FormGridRunsAlongSlantedDirections) {
  Rectangular();
  Type(kIdCadDirection1, u"30");
  Type(kIdCadDirection2, u"100");
  Type(kIdCadRectSpacingX, u"2");
  Type(kIdCadRectSpacingY, u"3");
  headless::Click(kIdCadCreatePattern);
  ASSERT_EQ(sketch.objectCount, 6);
  ExpectAt(4, 2 * std::cos(Degrees(30)) + 3 * std::cos(Degrees(100)),
           2 * std::sin(Degrees(30)) + 3 * std::sin(Degrees(100)));
}

// There the directions are out of sight: what was typed before must neither turn nor refuse.
TEST_F(Patterns, FormAloneRunsAlongTheAxes) {
  for (const char16_t* typed : {u"30", u"abc"}) {
    Rectangular();
    Type(kIdCadDirection1, typed);
    OpenPatternPanel(kPanelRectangular, true);
    const int before = sketch.objectCount;
    EXPECT_TRUE(ApplySketchPattern(true));
    ASSERT_EQ(sketch.objectCount, before + 6);
    EXPECT_EQ(Object(before + 1).y, Object(before).y);
    EXPECT_EQ(Object(before + 3).x, Object(before).x);
  }
}

// The full form: the selected object as its source.

TEST_F(Patterns, FormRepeatsTheSelectedObjectAloneWithItsGroup) {
  Add(kTypeSlot, 5, 5, 2, 1.23456, 15, 4);
  Add(kTypeLine, 5, 5, 2, 0, 0, 4);
  sketch.selected = 0;
  Circular();
  headless::Click(kIdCadPatternSource);
  EXPECT_EQ(platform::TextOf(kIdCadPatternSource), u"Source: selected geometry");
  EXPECT_EQ(platform::TextOf(kIdCadCircSize), u"2.000");
  EXPECT_EQ(platform::TextOf(kIdCadCircWidth), u"1.23456");
  Type(kIdCadCircQuantity, u"3");
  headless::SelectRows(kIdCircularOrientation, {0});
  headless::Click(kIdCadCreatePattern);
  ASSERT_EQ(sketch.objectCount, 4);
  ExpectAt(0, 2, 0);
  EXPECT_EQ(Object(1).type, kTypeLine);
  EXPECT_EQ(Object(1).x, 5);
  for (const int i : {0, 2, 3}) {
    EXPECT_EQ(Object(i).type, kTypeSlot);
    EXPECT_EQ(Object(i).group, 4);
    EXPECT_EQ(Object(i).angle, 15);
    EXPECT_NEAR(Object(i).size2, 1.23456, 1e-15);
  }
  EXPECT_EQ(sketch.selected, 0);
}

TEST_F(Patterns, FormOfTheSelectionIsOneStepOfUndoAndShowsItsCopies) {
  Add(kTypeRectangle, 5, 5, 2, 1, 15);
  Add(kTypeCircle, 1, 1, 1);
  sketch.selected = 0;
  sketch.hidden[0] = 1;
  Rectangular();
  headless::Click(kIdCadPatternSource);
  Type(kIdCadRectRotation, u"30");
  headless::Click(kIdCadCreatePattern);
  ASSERT_EQ(sketch.objectCount, 7);
  ExpectAt(0, 0, 0);
  EXPECT_EQ(Object(0).angle, 45);
  EXPECT_EQ(Object(6).angle, 45);
  for (int i = 2; i < 7; ++i) EXPECT_EQ(sketch.hidden[i] + sketch.locked[i], 0) << i;
  EXPECT_EQ(sketch.undoDepth, 1);
  headless::Click(kIdCadUndo);
  ASSERT_EQ(sketch.objectCount, 2);
  ExpectAt(0, 5, 5);
  EXPECT_EQ(Object(0).angle, 15);
  EXPECT_EQ(sketch.selected, 0);
  EXPECT_EQ(sketch.undoDepth, 0);
}

TEST_F(Patterns, FormLetsTheSelectedObjectFillAFullSketch) {
  Fill(96);
  sketch.selected = 3;
  Circular();
  headless::Click(kIdCadPatternSource);
  Type(kIdCadCircQuantity, u"2");
  ExpectRefused(kTooMany);
  Type(kIdCadCircQuantity, u"1");
  headless::Click(kIdCadCreatePattern);
  EXPECT_EQ(sketch.objectCount, 96);
  ExpectAt(3, 2, 0);
}

TEST_F(Patterns, FormRefusesSelectionsThatCannotBeASource) {
  Circular();
  headless::Click(kIdCadPatternSource);
  ExpectRefused(kBadShape);  // nothing is selected
  Add(kTypeWorkPoint, 1, 1);
  Add(kTypeSlot, 1, 1, 1, 0.5);
  Add(kTypeRectangle, 1, 1, 1, 0.5);
  sketch.selected = 0;
  ExpectRefused(kBadShape);
  sketch.selected = 1;
  Type(kIdCadCircSize, u"1");
  Type(kIdCadCircWidth, u"1.5");
  ExpectRefused(kBadShape);
  sketch.selected = 2;
  Type(kIdCadCircWidth, u"0");
  ExpectRefused(kBadShape);
  Type(kIdCadCircWidth, u"1");
  Type(kIdCadCircSize, u"0");
  ExpectRefused(kBadShape);
  Type(kIdCadCircSize, u"1");
  sketch.locked[2] = 1;
  ExpectRefused(kLocked);
  sketch.locked[2] = 0;
  EXPECT_TRUE(headless::Click(kIdCadCreatePattern));
  EXPECT_EQ(sketch.objectCount, 8);
}

// The sizes come from the selection when it becomes the source, not when it ceases to be.
TEST_F(Patterns, FormKeepsItsSizesWhenTheSourceGoesBackToTheLibrary) {
  Add(kTypeSlot, 5, 5, 2, 1.5);
  sketch.selected = 0;
  Circular();
  headless::Click(kIdCadPatternSource);
  ASSERT_EQ(platform::TextOf(kIdCadCircSize), u"2.000");
  Type(kIdCadCircSize, u"3");
  Type(kIdCadCircWidth, u"0.75");
  headless::Click(kIdCadPatternSource);
  EXPECT_FALSE(PatternSourceIsSelection(1));
  EXPECT_EQ(platform::TextOf(kIdCadCircSize), u"3");
  EXPECT_EQ(platform::TextOf(kIdCadCircWidth), u"0.75");
}

TEST_F(Patterns, FormRemembersTheSourceOfEachKindAndKeepsItWhileABlockIsOpen) {
  Circular();
  headless::Click(kIdCadPatternSource);
  EXPECT_TRUE(PatternSourceIsSelection(1));
  EXPECT_FALSE(PatternSourceIsSelection(2));
  Rectangular();
  EXPECT_EQ(platform::TextOf(kIdCadPatternSource), u"Source: shape library");
  Circular();
  EXPECT_EQ(platform::TextOf(kIdCadPatternSource), u"Source: selected geometry");
  editLink.kind = kKindCircular;
  RefreshCadKeys();
  EXPECT_FALSE(platform::IsEnabled(kIdCadPatternSource));
  EXPECT_EQ(platform::TextOf(kIdCadCreatePattern), u"UPDATE PATTERN FEATURE");
  DropEditLink();
  EXPECT_TRUE(platform::IsEnabled(kIdCadPatternSource));
  EXPECT_EQ(platform::TextOf(kIdCadCreatePattern), u"CREATE SKETCH PATTERN");
}

TEST_F(Patterns, FormFollowsTheSketchsUnit) {
  Circular();
  headless::Click(kIdCadMm);
  EXPECT_EQ(platform::TextOf(kIdCadCircDiameter), u"101.600");
  EXPECT_EQ(platform::TextOf(kIdCadCircFeed), u"254.00");
  EXPECT_EQ(platform::TextOf(kIdCadCircQuantity), u"6");
  EXPECT_EQ(platform::TextOf(kIdCadRectSpacingX), u"25.400");
}

TEST_F(Patterns, EnterInAFieldOfTheFormCreatesThePattern) {
  Circular();
  ASSERT_TRUE(headless::Focus(kIdCadCircDiameter));
  headless::PressKey({platform::kKeyEnter});
  EXPECT_EQ(sketch.objectCount, 6);
}

// Direction picks.

TEST_F(Patterns, ReverseAddsHalfATurnToTheFieldOrItsBase) {
  Rectangular();
  headless::Click(kIdReverseDirection1);
  EXPECT_EQ(platform::TextOf(kIdCadDirection1), u"180.000");
  headless::Click(kIdReverseDirection1);
  EXPECT_EQ(platform::TextOf(kIdCadDirection1), u"360.000");
  Type(kIdCadDirection1, u"");
  Type(kIdCadDirection2, u"");
  headless::Click(kIdReverseDirection1);
  headless::Click(kIdReverseDirection2);
  EXPECT_EQ(platform::TextOf(kIdCadDirection1), u"180.000");
  EXPECT_EQ(platform::TextOf(kIdCadDirection2), u"270.000");
}

TEST_F(Patterns, PickTakesTheDirectionOfWhatIsClicked) {
  Add(kTypeLine, -2, -1, 1, 0, 33);
  Add(kTypeWorkAxis, -2, 1, 1, 0, -20);
  Add(kTypeCircle, 1.5, 1, 1);
  Add(kTypeRectangle, 1.5, -1, 1, 0.5, 10);
  const double cosine = std::cos(Degrees(10));
  const double sine = std::sin(Degrees(10));
  const struct {
    double x, y;
    const char16_t* text;
  } kClicks[] = {
      {-2 + 0.5 * std::cos(Degrees(33)), -1 + 0.5 * std::sin(Degrees(33)), u"33.000"},
      {-2 + 0.5 * std::cos(Degrees(20)), 1 - 0.5 * std::sin(Degrees(20)), u"-20.000"},
      {1.5 + 0.5, 1, u"90.000"},
      {1.5, 1.5, u"180.000"},
      {1.5 + 0.5 * cosine, -1 + 0.5 * sine, u"100.000"},   // at the end of its width
      {1.5 - 0.25 * sine, -1 + 0.25 * cosine, u"10.000"},  // on its long side
  };
  Rectangular();
  for (const auto& each : kClicks) {
    for (const bool first : {true, false}) {
      headless::Click(first ? kIdPickDirection1 : kIdPickDirection2);
      EXPECT_EQ(tools.geometryTool, first ? kGeometryDirection1 : kGeometryDirection2);
      EXPECT_EQ(SketchStatus(),
                u"Pick a line, work axis, rectangle edge or circle tangent for this pattern "
                u"direction.");
      ASSERT_TRUE(PatternDirectionClick(each.x, each.y)) << each.x;
      EXPECT_EQ(platform::TextOf(first ? kIdCadDirection1 : kIdCadDirection2), each.text);
      EXPECT_EQ(tools.geometryTool, kGeometryNone);
      EXPECT_EQ(tools.panelMode, kPanelRectangular);
    }
  }
}

// An upright box: its ends of the width are the long sides, and run upright.
TEST_F(Patterns, PickTakesTheSideOfATallRectangleThatIsClicked) {
  Add(kTypeRectangle, 0, 0, 1, 3, 0);
  const struct {
    double x, y;
    const char16_t* text;
  } kClicks[] = {{0.5, 0.4, u"90.000"}, {-0.5, 1, u"90.000"}, {0.2, 1.5, u"0.000"}};
  Rectangular();
  for (const auto& each : kClicks) {
    headless::Click(kIdPickDirection1);
    ASSERT_TRUE(PatternDirectionClick(each.x, each.y));
    EXPECT_EQ(platform::TextOf(kIdCadDirection1), each.text) << each.x;
  }
}

TEST_F(Patterns, PickWaitsUntilSomethingWithADirectionIsClicked) {
  Add(kTypeWorkPoint, 0, 0);
  Add(kTypeSlot, 2, 0, 1, 0.5);
  Rectangular();
  headless::Click(kIdPickDirection1);
  EXPECT_FALSE(PatternDirectionClick(-3, 2));
  EXPECT_FALSE(PatternDirectionClick(0, 0));
  EXPECT_FALSE(PatternDirectionClick(2, 0));
  EXPECT_EQ(tools.geometryTool, kGeometryDirection1);
  EXPECT_EQ(platform::TextOf(kIdCadDirection1), u"0");
}

TEST_F(Patterns, PickIsMadeByAClickOnTheCanvas) {
  Add(kTypeLine, -1, 0, 2, 0, 0);
  Rectangular();
  headless::Click(kIdCadPan);  // which is given up: the click would move the drawing
  headless::Click(kIdPickDirection2);
  EXPECT_EQ(platform::FocusedId(), kViewCadCanvas);  // so that Escape ends the pick
  const platform::Point at = ToCanvas(0, 0);
  platform::PointerEvent press;
  press.action = platform::PointerAction::Press;
  press.button = platform::PointerButton::Left;
  press.x = at.x;
  press.y = at.y;
  headless::Pointer(kViewCadCanvas, press);
  EXPECT_EQ(platform::TextOf(kIdCadDirection2), u"0.000");
  EXPECT_EQ(tools.geometryTool, kGeometryNone);
}

}  // namespace
}  // namespace morva
