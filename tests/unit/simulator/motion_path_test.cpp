#include "simulator/motion_path.h"

#include <cstdint>
#include <string>

#include "app/command_ids.h"
#include "library/units.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "platform/window.h"
#include "simulator/feature_lines.h"
#include "simulator/motion_run.h"
#include "simulator/shown_path.h"
#include "simulator/stock_envelope.h"
#include "simulator/toolpath.h"
#include "unit/simulator/simulator_fixture.h"

namespace morva {
namespace {

using MotionTable = SimulatorTest;

TEST_F(MotionTable, FillsSilentlyAndTellsTheLine) {
  ExtractToolpath(Moves(40000), false);
  EXPECT_EQ(path.count, 32768);
  // The origin takes the first place, so line n is point n + 1 and line 32767 finds it full.
  EXPECT_EQ(LastPoint().sourceLine, 32766);
  EXPECT_EQ(pathFullAtLine, 32767);
  ExtractToolpath(u"X1", false);
  EXPECT_EQ(path.count, 2);
  EXPECT_EQ(pathFullAtLine, -1);
}

TEST_F(MotionTable, ExactlyFullTellsNothing) {
  ExtractToolpath(Moves(32767), false);
  EXPECT_EQ(path.count, 32768);
  EXPECT_EQ(pathFullAtLine, -1);
  // The table is asked before the last point is: a double finds it full too.
  ExtractToolpath(Moves(32767) + u"X1\r\n", false);
  EXPECT_EQ(LastPoint().x, 1);
  EXPECT_EQ(path.count, 32768);
  EXPECT_EQ(pathFullAtLine, 32767);
}

TEST_F(MotionTable, AnArcMayFillItHalfWay) {
  ExtractToolpath(Moves(32700) + u"G91 G2 I1\r\nX1\r\n", false);
  EXPECT_EQ(path.count, 32768);
  EXPECT_EQ(LastPoint().sourceLine, 32700);
  EXPECT_EQ(pathFullAtLine, 32700);
}

TEST_F(MotionTable, DropsADoubleWithinAMillionth) {
  ExtractToolpath(u"G1 X1\r\nX1.0000009\r\nX1.000001 Y-.0000009\r\nX1.0000021", false);
  ASSERT_EQ(path.count, 3);
  EXPECT_EQ(path.points[1].sourceLine, 0);
  EXPECT_EQ(path.points[2].sourceLine, 3);
}

TEST_F(MotionTable, TheBoundOfADoubleIsIncluded) {
  path.count = 0;
  AddMotionPoint(0, 0, 0, false, 0);
  AddMotionPoint(1e-6, -1e-6, 1e-6, false, 1);
  EXPECT_EQ(path.count, 1);
  AddMotionPoint(1.0000001e-6, 0, 0, false, 2);
  EXPECT_EQ(path.count, 2);
}

TEST_F(MotionTable, ADoubleLeavesTheJumpPending) {
  ExtractToolpath(u"G1 X1\r\nG4 P1\r\nX1\r\nX2\r\nX3", false);
  ASSERT_EQ(path.count, 4);
  EXPECT_FALSE(path.points[1].jump);
  EXPECT_TRUE(path.points[2].jump);
  EXPECT_FALSE(path.points[3].jump);
}

TEST_F(MotionTable, EachRunRaisesTheGeneration) {
  const std::uint32_t before = pathGeneration;
  ExtractToolpath(u"", false);
  ExtractToolpath(u"", false);
  EXPECT_EQ(pathGeneration, before + 2);
}

TEST_F(MotionTable, ARunPutsTheHeadAtTheEndAndClearsThePicks) {
  playback.playing = true;
  playback.headInUse = true;
  playback.segmentFraction = 0.5;
  measure.a = 1;
  measure.b = 2;
  ExtractToolpath(u"X1\r\nX2", false);
  EXPECT_EQ(playback.playHead, 3);
  EXPECT_FALSE(playback.playing);
  EXPECT_FALSE(playback.headInUse);
  EXPECT_EQ(playback.segmentFraction, 0);
  EXPECT_EQ(measure.a, -1);
  EXPECT_EQ(measure.b, -1);
}

TEST_F(MotionTable, BoundsHoldOriginAndRapids) {
  EXPECT_EQ(Bounds().maxX, 0);
  ExtractToolpath(u"G0 X5 Y-2\r\nG1 Z-1\r\nX3 Z.5", false);
  EXPECT_EQ(Bounds().minX, 0);
  EXPECT_EQ(Bounds().maxX, 5);
  EXPECT_EQ(Bounds().minY, -2);
  EXPECT_EQ(Bounds().maxY, 0);
  EXPECT_EQ(Bounds().minZ, -1);
  EXPECT_EQ(Bounds().maxZ, 0.5);
  ExtractToolpath(u"X1", false);
  EXPECT_EQ(Bounds().maxX, 1);
}

TEST_F(MotionTable, BoundsFallBackToTheGhosts) {
  ghostPath.points[0] = MotionPoint{};
  ghostPath.points[0].x = 4;
  ghostPath.count = 1;
  EXPECT_EQ(Bounds().minX, 4);
  EXPECT_EQ(Bounds().maxX, 4);
}

using FeatureLineTest = SimulatorTest;

TEST_F(FeatureLineTest, CountsLineEndsOfEveryKindBeforeTheOffsets) {
  const std::u16string text = u"a\r\nb\nc\rd\n\re";
  // Offsets: a 0, b 3, c 5, d 7, e 10; lines 0, 1, 2, 3, 5.
  AddFeature(1, 0, 4);
  AddFeature(2, 5, 8);
  AddFeature(3, 10, 11);
  IndexFeatureLines(text);
  ASSERT_EQ(featureLines.count, 3);
  EXPECT_EQ(featureLines.rows[0].firstLine, 0);
  EXPECT_EQ(featureLines.rows[0].lastLine, 1);
  EXPECT_EQ(featureLines.rows[1].firstLine, 2);
  EXPECT_EQ(featureLines.rows[1].lastLine, 3);
  EXPECT_EQ(featureLines.rows[2].firstLine, 5);
  EXPECT_EQ(featureLines.rows[2].lastLine, 5);
  EXPECT_EQ(FeatureRowOfLine(4), -1);
  EXPECT_EQ(FeatureRowOfLine(5), 2);
}

TEST_F(FeatureLineTest, TheLastLineIsThatOfTheLastCharacter) {
  // The block ends with its line end, so `end` itself lies on the next line.
  AddFeature(1, 0, 4);
  IndexFeatureLines(u"X1\r\nX2");
  EXPECT_EQ(featureLines.rows[0].lastLine, 0);
}

TEST_F(FeatureLineTest, LongTextsCountAsShortOnes) {
  // Past many blocks of lanes, with ends of every kind at every place within a lane.
  std::u16string text;
  std::size_t plain = 0;
  const char16_t* const ends[] = {u"\r\n", u"\n", u"\r", u"\n\r", u"\r\r\n"};
  const std::size_t counts[] = {1, 1, 1, 2, 2};
  for (std::size_t i = 0; i < 60000; ++i) {
    text.append(i % 7, u'x');
    text += ends[i % 5];
    text += u'y';
    plain += counts[i % 5];
  }
  AddFeature(1, text.size() - 1, text.size());
  IndexFeatureLines(text);
  EXPECT_EQ(featureLines.rows[0].firstLine, static_cast<std::int32_t>(plain));
}

struct ThreeBlocks {
  std::u16string text;
  ThreeBlocks() {
    const char16_t* const parts[] = {u"G1 X1\r\n", u"X2\r\nX3\r\n", u"X4\r\n"};
    for (int i = 0; i < 3; ++i) {
      const std::size_t start = text.size();
      text += parts[i];
      FeatureRecord& row = features.rows[features.count++];
      row = FeatureRecord{};
      row.id = i + 1;
      row.start = static_cast<std::int32_t>(start);
      row.end = static_cast<std::int32_t>(text.size());
    }
    text += u"X5\r\n";
  }
};

using FeatureFilter = SimulatorTest;

TEST_F(FeatureFilter, AHiddenFeatureLeavesAGap) {
  const ThreeBlocks program;
  ProgramTab& tab = OneTab();
  tab.hiddenIds[100] = 2;
  ExtractToolpath(program.text, false);
  // The origin shares line 0 with the first block.
  ASSERT_EQ(path.count, 4);
  ExpectAt(path.points[1], 1, 0, 0);
  EXPECT_FALSE(path.points[1].jump);
  ExpectAt(path.points[2], 4, 0, 0);
  EXPECT_TRUE(path.points[2].jump);
  ExpectAt(path.points[3], 5, 0, 0);
  EXPECT_FALSE(path.points[3].jump);
}

TEST_F(FeatureFilter, HidingTheFirstBlockDropsTheOriginToo) {
  const ThreeBlocks program;
  OneTab().hiddenIds[0] = 1;
  ExtractToolpath(program.text, false);
  ASSERT_EQ(path.count, 4);
  ExpectAt(path.points[0], 2, 0, 0);
  EXPECT_TRUE(path.points[0].jump);
  EXPECT_FALSE(path.points[0].rapid);
}

TEST_F(FeatureFilter, IsolatingKeepsOneFeature) {
  const ThreeBlocks program;
  OneTab().isolatedId = 2;
  ExtractToolpath(program.text, false);
  ASSERT_EQ(path.count, 2);
  ExpectAt(path.points[0], 2, 0, 0);
  EXPECT_TRUE(path.points[0].jump);
  ExpectAt(path.points[1], 3, 0, 0);
  EXPECT_FALSE(path.points[1].jump);
  // Hidden as well, nothing is left.
  tabs[0].hiddenIds[0] = 2;
  ExtractToolpath(program.text, false);
  EXPECT_EQ(path.count, 0);
}

TEST_F(FeatureFilter, AnIsolatedIdThatIsGoneLeavesNothing) {
  const ThreeBlocks program;
  OneTab().isolatedId = 77;
  ExtractToolpath(program.text, false);
  EXPECT_EQ(path.count, 0);
  EXPECT_EQ(playback.playHead, 0);
}

TEST_F(FeatureFilter, WithoutAnActiveTabNothingIsFiltered) {
  const ThreeBlocks program;
  tabs[0].isolatedId = 2;
  ExtractToolpath(program.text, false);
  EXPECT_EQ(path.count, 6);
}

TEST_F(FeatureFilter, DroppedPointsTakeNoRoom) {
  ResetFeatures();
  const std::u16string hidden = Moves(40000);
  AddFeature(1, 0, hidden.size());
  OneTab().hiddenIds[0] = 1;
  ExtractToolpath(hidden + u"X7\r\nX8\r\n", false);
  ASSERT_EQ(path.count, 2);
  EXPECT_EQ(pathFullAtLine, -1);
  EXPECT_EQ(path.points[0].x, 7);
  // Behind a full table a dropped point does not find it full either.
  ResetFeatures();
  const std::u16string shown = Moves(32767);
  AddFeature(1, shown.size(), shown.size() + 4);
  ExtractToolpath(shown + u"X9\r\n", false);
  EXPECT_EQ(path.count, 32768);
  EXPECT_EQ(pathFullAtLine, -1);
}

TEST_F(FeatureFilter, AHiddenArcStillMovesTheTool) {
  const std::u16string arc = u"G2 X1 Y0 I.5\r\n";
  AddFeature(1, 0, arc.size());
  OneTab().hiddenIds[0] = 1;
  ExtractToolpath(arc + u"G91 G1 Y1\r\n", false);
  ASSERT_EQ(path.count, 1);
  ExpectAt(path.points[0], 1, 1, 0);
  EXPECT_TRUE(path.points[0].jump);
}

TEST_F(FeatureFilter, TheFirstRowThatHoldsALineDecides) {
  const std::u16string text = u"X1\r\nX2\r\nX3\r\nX4\r\n";
  AddFeature(5, 4, 8);   // line 1
  AddFeature(6, 0, 16);  // lines 0 to 3
  OneTab().hiddenIds[0] = 5;
  ExtractToolpath(text, false);
  ASSERT_EQ(path.count, 4);
  EXPECT_EQ(path.points[1].x, 1);
  EXPECT_EQ(path.points[2].x, 3);
  EXPECT_TRUE(path.points[2].jump);
  EXPECT_EQ(path.points[3].x, 4);
}

// Drawings and plates as blocks, in the units of their own flag.
FeatureRecord& Block(FeatureKind kind, bool metric) {
  FeatureRecord& row = features.rows[features.count++];
  row = FeatureRecord{};
  row.id = features.count;
  row.settings.kind = kind;
  row.settings.metric = metric ? 1 : 0;
  return row;
}

void AddItem(FeatureRecord& row, std::int32_t type, double p0, double p1, double p2, double p3,
             double p4) {
  row.settings.items[row.settings.itemCount++] = {type, 0, p0, p1, p2, p3, p4};
}

using Envelope = SimulatorTest;

TEST_F(Envelope, NoUsableFeatureShowsNone) {
  Block(kKindUserCode, false);
  Block(kKindSketch, false).settings.values[15] = 1;  // no items
  FindStockEnvelope();
  EXPECT_FALSE(stockEnvelope.shown);
}

TEST_F(Envelope, ADrawingsBoxIsThatOfItsItems) {
  FeatureRecord& row = Block(kKindSketch, false);
  row.settings.values[15] = 0.75;
  AddItem(row, 1, 1, 2, 4, 2, 0);    // X -1 to 3, Y 1 to 3
  AddItem(row, 2, 5, 2, 2, 0, 0);    // circle about (5, 2), radius 1
  AddItem(row, 4, 90, 90, 0, 0, 0);  // a work point is no stock
  FindStockEnvelope();
  ASSERT_TRUE(stockEnvelope.shown);
  // The series is good to 6e-8.
  EXPECT_NEAR(stockEnvelope.minX, -1, 1e-6);
  EXPECT_NEAR(stockEnvelope.maxX, 6, 1e-6);
  EXPECT_NEAR(stockEnvelope.minY, 1, 1e-6);
  EXPECT_NEAR(stockEnvelope.maxY, 3, 1e-6);
  EXPECT_EQ(stockEnvelope.top, 0);
  EXPECT_EQ(stockEnvelope.thickness, 0.75);
  EXPECT_EQ(stockEnvelope.bottom, -0.75);
}

TEST_F(Envelope, ItemsAreTurnedByTheirAngle) {
  FeatureRecord& row = Block(kKindSketch, false);
  row.settings.values[15] = 1;
  AddItem(row, 1, 0, 0, 4, 2, 90);   // a rectangle on end: X -1 to 1, Y -2 to 2
  AddItem(row, 3, 3, 0, 4, 1, 90);   // a slot on end: X 2.5 to 3.5, Y -2 to 2
  AddItem(row, 0, 3, 2, 5, 0, 180);  // a line from (3, 2) to (-2, 2)
  FindStockEnvelope();
  ASSERT_TRUE(stockEnvelope.shown);
  EXPECT_NEAR(stockEnvelope.minX, -2, 1e-6);
  EXPECT_NEAR(stockEnvelope.maxX, 3.5, 1e-6);
  EXPECT_NEAR(stockEnvelope.minY, -2, 1e-6);
  EXPECT_NEAR(stockEnvelope.maxY, 2, 1e-6);
}

TEST_F(Envelope, ADrawingNeedsThicknessAndExtent) {
  FeatureRecord& row = Block(kKindSketch, false);
  AddItem(row, 1, 0, 0, 4, 2, 0);
  FindStockEnvelope();
  EXPECT_FALSE(stockEnvelope.shown);
  row.settings.values[15] = 1;
  FindStockEnvelope();
  EXPECT_TRUE(stockEnvelope.shown);
  // A level line has no extent in Y.
  row.settings.items[0] = {0, 0, 0, 0, 4, 0, 0};
  FindStockEnvelope();
  EXPECT_FALSE(stockEnvelope.shown);
}

TEST_F(Envelope, APlateIsCentredAndDeepByItsThickness) {
  FeatureRecord& row = Block(kKindPlate, false);
  row.settings.values[0] = -8;
  row.settings.values[1] = 6;
  row.settings.values[10] = -0.1;
  row.settings.values[13] = 0.5;
  FindStockEnvelope();
  ASSERT_TRUE(stockEnvelope.shown);
  EXPECT_EQ(stockEnvelope.minX, -4);
  EXPECT_EQ(stockEnvelope.maxX, 4);
  EXPECT_EQ(stockEnvelope.minY, -3);
  EXPECT_EQ(stockEnvelope.maxY, 3);
  EXPECT_EQ(stockEnvelope.bottom, -0.5);
  EXPECT_EQ(stockEnvelope.thickness, 0);
  row.settings.values[13] = 0;
  FindStockEnvelope();
  EXPECT_EQ(stockEnvelope.bottom, -0.1);
  // A round plate uses its first dimension for both.
  row.settings.a = 1;
  row.settings.values[1] = 0;
  FindStockEnvelope();
  ASSERT_TRUE(stockEnvelope.shown);
  EXPECT_EQ(stockEnvelope.maxY, 4);
}

// What stands for sure: corners that a drawing has a point in, and a thickness that was said.
TEST_F(Envelope, TellsWhetherItsCornersAndItsDepthAreSure) {
  FeatureRecord& row = Block(kKindSketch, false);
  row.settings.values[15] = 1;
  AddItem(row, 2, 0, 0, 4, 0, 0);  // a circle
  EXPECT_TRUE(StockOfFeatures().rounded);
  EXPECT_TRUE(StockOfFeatures().depthSaid);
  AddItem(row, 1, 0, 0, 4, 4, 0);  // the square about it
  EXPECT_FALSE(StockOfFeatures().rounded);
  row.settings.items[1].p3 = 2;  // of half its height
  EXPECT_TRUE(StockOfFeatures().rounded);
  row = FeatureRecord{};
  row.settings.kind = kKindPlate;
  row.settings.values[0] = 8;
  row.settings.values[1] = 6;
  row.settings.values[10] = -0.1;
  EXPECT_FALSE(StockOfFeatures().rounded);
  EXPECT_FALSE(StockOfFeatures().depthSaid);
  row.settings.values[13] = 0.5;
  EXPECT_TRUE(StockOfFeatures().depthSaid);
  row.settings.a = 1;
  EXPECT_TRUE(StockOfFeatures().rounded);
}

// The stock of a skim is not drawn, and measures of the check begin at its surface.
TEST_F(Envelope, ASkimTellsItsEdgesItsSurfaceAndItsOffset) {
  FeatureRecord& row = Block(kKindSkim, false);
  row.settings.b = 55;
  const double edges[] = {-1, 2, 4, 8};
  std::copy(std::begin(edges), std::end(edges), row.settings.values);
  row.settings.values[9] = 0.25;
  row.settings.items[0] = {4, 0, 0, 0, 0.5, 0, 0};  // half an inch thick, zigzag
  row.settings.itemCount = 1;
  FindStockEnvelope();
  EXPECT_FALSE(stockEnvelope.shown);
  std::int32_t workOffset = 0;
  EXPECT_EQ(StockOfSkim(workOffset),
            (StockEnvelope{true, -1, 4, 2, 8, 0.25, -0.25, 0.5, false, false}));
  EXPECT_EQ(workOffset, 55);
  // A spiral covers a circle: of the corners nobody knows.
  row.settings.items[0].p3 = 3;
  EXPECT_TRUE(StockOfSkim(workOffset).rounded);
  // In the unit of the view.
  SetUnits(true);
  EXPECT_EQ(StockOfSkim(workOffset).maxY, 8 * 25.4);
  EXPECT_EQ(StockOfSkim(workOffset).top, 0.25 * 25.4);
  EXPECT_EQ(StockOfSkim(workOffset).bottom, -0.25 * 25.4);
  SetUnits(false);
  // Of an older record nobody knows the thickness, and nothing is measured against it.
  row.settings.itemCount = 0;
  EXPECT_LT(StockOfSkim(workOffset).bottom, 0.25);
  row.settings.values[2] = -1;
  EXPECT_FALSE(StockOfSkim(workOffset).shown);
  EXPECT_EQ(workOffset, 0);
  row.settings.values[2] = 4;
  row.id = 9;
  OneTab().hiddenIds[3] = 9;
  EXPECT_FALSE(StockOfSkim(workOffset).shown);
}

TEST_F(Envelope, FirstUsableFeatureThatIsNotHiddenWins) {
  for (int i = 0; i < 2; ++i) {
    FeatureRecord& row = Block(kKindPlate, false);
    row.settings.values[0] = 2.0 * (i + 1);
    row.settings.values[1] = 2;
  }
  FindStockEnvelope();
  EXPECT_EQ(stockEnvelope.maxX, 1);
  OneTab().hiddenIds[3] = 1;
  FindStockEnvelope();
  EXPECT_EQ(stockEnvelope.maxX, 2);
}

TEST_F(Envelope, ScalesToTheDisplayUnit) {
  FeatureRecord& row = Block(kKindPlate, true);
  row.settings.values[0] = 50.8;
  row.settings.values[1] = 254;
  row.settings.values[13] = 25.4;
  FindStockEnvelope();
  EXPECT_NEAR(stockEnvelope.maxX, 1, 1e-12);
  EXPECT_NEAR(stockEnvelope.maxY, 5, 1e-12);
  EXPECT_NEAR(stockEnvelope.bottom, -1, 1e-12);
  app.unitsMetric = true;
  FindStockEnvelope();
  EXPECT_EQ(stockEnvelope.maxX, 25.4);
  row.settings.metric = 0;
  FindStockEnvelope();
  EXPECT_NEAR(stockEnvelope.maxX, 25.4 * 25.4, 1e-9);
}

// The whole road from the editor, with the real scanner of blocks.
class Rebuild : public SimulatorTest {
 protected:
  Rebuild() { support::MakeButton(kIdPlay, u"PLAY"); }
  static void MakeProgram(std::u16string_view text) { platform::SetEditorText(kIdEditor, text); }
};

TEST_F(Rebuild, WithoutAnEditorKeepsThePath) {
  platform::Destroy(kIdEditor);
  ExtractToolpath(u"X1\r\nX2", false);
  playback.playHead = 1;
  playback.headInUse = true;
  platform::SetText(kIdPlay, u"Pause");
  RebuildToolpath();
  EXPECT_EQ(path.count, 3);
  EXPECT_EQ(playback.playHead, 1);
  EXPECT_FALSE(playback.headInUse);
  EXPECT_EQ(platform::TextOf(kIdPlay), u"PLAY");
}

TEST_F(Rebuild, ReadsTheEditor) {
  MakeProgram(u"G1 X1\nX2");
  OneTab();
  RebuildToolpath();
  ASSERT_EQ(path.count, 3);
  EXPECT_EQ(path.points[2].sourceLine, 1);
  EXPECT_EQ(featureLines.count, 1);
}

TEST_F(Rebuild, DisplayUnitsComeFromTheUnitKey) {
  MakeProgram(u"G20 G1 X1");
  OneTab();
  app.unitsMetric = true;
  RebuildToolpath();
  EXPECT_EQ(LastPoint().x, 25.4);
}

TEST_F(Rebuild, StoredCodeOfExcludedBlocksBecomesGhosts) {
  ProgramTab& tab = OneTab();
  ASSERT_EQ(AddDisabledCode(tab.disabledCode, u"G21 G1 X25.4 T3\r\nG91 X25.4\r\n"), 1);
  ASSERT_EQ(AddDisabledCode(tab.disabledCode, u"G1 Y5\r\n"), 2);
  MakeProgram(
      u"(MORVA TEXT 1)\r\n(morva disabled 2)\r\n(MORVA END 1)\r\n"
      u"(MORVA TEXT 2)\r\nG91 G1 X9\r\n(MORVA END 2)\r\n"
      u"(MORVA TEXT 3)\r\n(MORVA DISABLED 1)\r\n(MORVA END 3)\r\n");
  RebuildToolpath();
  // In list order; each block from the origin, in absolute mode, with tool 0.
  ASSERT_EQ(ghostPath.count, 5);
  ExpectAt(ghostPath.points[0], 0, 0, 0);
  EXPECT_TRUE(ghostPath.points[0].jump);
  ExpectAt(ghostPath.points[1], 0, 5, 0);
  EXPECT_FALSE(ghostPath.points[1].jump);
  ExpectAt(ghostPath.points[2], 0, 0, 0);
  EXPECT_TRUE(ghostPath.points[2].jump);
  EXPECT_EQ(ghostPath.points[2].tool, 0);
  EXPECT_NEAR(ghostPath.points[3].x, 1, 1e-12);
  EXPECT_EQ(ghostPath.points[3].tool, 3);
  EXPECT_NEAR(ghostPath.points[4].x, 2, 1e-12);
  ASSERT_EQ(path.count, 2);
  ExpectAt(path.points[1], 9, 0, 0);

  // Hiding takes a ghost away, isolating does not.
  tab.hiddenIds[0] = 1;
  tab.isolatedId = 2;
  RebuildToolpath();
  EXPECT_EQ(ghostPath.count, 3);
  EXPECT_EQ(path.count, 1);
}

TEST_F(Rebuild, ANumberThatIsNotStoredGivesNoGhost) {
  ProgramTab& tab = OneTab();
  AddDisabledCode(tab.disabledCode, u"G1 X1");
  MakeProgram(u"(MORVA TEXT 1)\r\n(MORVA DISABLED 9)\r\n(MORVA END 1)\r\n");
  RebuildToolpath();
  EXPECT_EQ(ghostPath.count, 0);
}

TEST_F(Rebuild, GhostsFillTheirTableSilently) {
  ProgramTab& tab = OneTab();
  AddDisabledCode(tab.disabledCode, Moves(20000));
  AddDisabledCode(tab.disabledCode, Moves(20000));
  MakeProgram(
      u"(MORVA TEXT 1)\r\n(MORVA DISABLED 1)\r\n(MORVA END 1)\r\n"
      u"(MORVA TEXT 2)\r\n(MORVA DISABLED 2)\r\n(MORVA END 2)\r\nX1\r\n");
  RebuildToolpath();
  EXPECT_EQ(ghostPath.count, 32768);
  EXPECT_TRUE(ghostPath.points[20001].jump);
  EXPECT_EQ(path.count, 2);
  EXPECT_EQ(pathFullAtLine, -1);
  FreeDisabledCode(tab.disabledCode);
  RebuildToolpath();
  EXPECT_EQ(ghostPath.count, 0);
}

}  // namespace
}  // namespace morva
