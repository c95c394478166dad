// What the workspace shows of the live sketch. Numbers are worked out by hand.

#include <gtest/gtest.h>

#include "cad/model/cad_hooks.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "cad/panel/operations_list.h"
#include "unit/cad/cad_stage.h"

namespace morva {
namespace {

using cad_test::CadStage;
using SketchPanels = CadStage;
using Lines = std::vector<std::u16string>;

TEST(SketchNumber, RoundsHalfUpOnTheMagnitudeWithFullDecimals) {
  EXPECT_EQ(SketchNumber(0.0625, 3), u"0.063");
  EXPECT_EQ(SketchNumber(-0.0625, 3), u"-0.063");
  EXPECT_EQ(SketchNumber(2.5, 0), u"3");
  EXPECT_EQ(SketchNumber(1.5, 4), u"1.5000");
  EXPECT_EQ(SketchNumber(999999.5, 6), u"999999.500000");
}

TEST(SketchNumber, KeepsTheMinusOfAValueThatShowsOnlyZeros) {
  EXPECT_EQ(SketchNumber(-0.0001, 3), u"-0.000");
  EXPECT_EQ(SketchNumber(-1e-12, 6), u"-0.000000");
  EXPECT_EQ(SketchNumber(-0.0, 3), u"0.000");
}

double Strict(std::u16string_view text) {
  double value = -77;
  EXPECT_TRUE(ReadStrictNumber(text, value)) << support::Narrow(text);
  return value;
}

bool Refused(std::u16string_view text) {
  double value = -77;
  const bool read = ReadStrictNumber(text, value);
  EXPECT_EQ(value, -77) << "a refused text must leave the value alone";
  return !read;
}

TEST(ReadStrictNumber, TakesASignDigitsAndOnePoint) {
  EXPECT_EQ(Strict(u"4"), 4);
  EXPECT_EQ(Strict(u"+4"), 4);
  EXPECT_EQ(Strict(u"-0.5"), -0.5);
  EXPECT_EQ(Strict(u"5."), 5);
  EXPECT_EQ(Strict(u".25"), 0.25);
  EXPECT_EQ(Strict(u"999999.75"), 999999.75);
}

TEST(ReadStrictNumber, RefusesEverythingElse) {
  for (const char16_t* text :
       {u"", u"-", u".", u"-.", u" 4", u"4 ", u"4in", u"1,5", u"1e3", u"1.2.3", u"--1", u"+-1",
        u"1-", u"nan", u"inf", u"\u0664", u"4\u00A0"}) {
    EXPECT_TRUE(Refused(text)) << support::Narrow(text);
  }
}

TEST(ReadStrictNumber, StopsBelowAMillionAndBelow79Characters) {
  EXPECT_TRUE(Refused(u"1000000"));
  EXPECT_TRUE(Refused(u"-1000000"));
  EXPECT_EQ(Strict(u"-999999"), -999999);
  EXPECT_EQ(Strict(std::u16string(77, u'0') + u"7"), 7);
  EXPECT_TRUE(Refused(std::u16string(78, u'0') + u"7"));
  EXPECT_TRUE(Refused(std::u16string(78, u'9')));
}

TEST_F(SketchPanels, AnEmptySketchShowsItsFaceAndTheSentenceOfNoSelection) {
  RefreshSketchPanels();
  EXPECT_EQ(Rows(kIdCadOperations), Lines{u"No geometry yet"});
  EXPECT_EQ(platform::SelectedRow(kIdCadOperations), -1);
  EXPECT_EQ(OperationObject(0), -1);
  EXPECT_EQ(TextOf(kIdCadStatus),
            u"No object selected. Choose a draw tool, then click-drag on the canvas.");
}

TEST_F(SketchPanels, EveryObjectHasALineAndAGroupOneOnItsFirstMember) {
  Add(kTypeLine, 0, 0, 1);
  Add(kTypeRectangle, 0, 0, 1, 1, 0, 7);
  Add(kTypeCircle, 0, 0, 1);
  Add(kTypeSlot, 0, 0, 2, 1, 0, 7);
  Add(kTypeWorkPoint, 0, 0, 0);
  const int axis = Add(kTypeWorkAxis, 0, 0, 1);
  sketch.locked[1] = 1;
  sketch.locked[axis] = 1;
  RefreshSketchPanels();
  EXPECT_EQ(Rows(kIdCadOperations), (Lines{u"1  Line", u"[locked] 2  Trimmed part", u"3  Circle",
                                           u"5  Work point", u"[locked] 6  Work axis"}));
  EXPECT_EQ(OperationObject(1), 1);
  EXPECT_EQ(OperationObject(3), 4);
}

TEST_F(SketchPanels, TheLineOfTheSelectionOrOfItsGroupIsSelected) {
  Add(kTypeRectangle, 0, 0, 1, 1, 0, 3);
  Add(kTypeCircle, 0, 0, 1);
  Add(kTypeSlot, 0, 0, 2, 1, 0, 3);
  sketch.selected = 2;
  RefreshSketchPanels();
  EXPECT_EQ(platform::SelectedRow(kIdCadOperations), 0);
  sketch.selected = 1;
  RefreshSketchPanels();
  EXPECT_EQ(platform::SelectedRow(kIdCadOperations), 1);
  sketch.selected = -1;
  RefreshSketchPanels();
  EXPECT_EQ(platform::SelectedRow(kIdCadOperations), -1);
}

TEST_F(SketchPanels, TheListShrinksAndGrowsWithTheSketch) {
  for (int i = 0; i < 5; ++i) Add(kTypeLine, i, 0, 1);
  RefreshSketchPanels();
  RemoveSketchObject(4);
  RemoveSketchObject(0);
  RefreshSketchPanels();
  EXPECT_EQ(Rows(kIdCadOperations), (Lines{u"1  Line", u"2  Line", u"3  Line"}));
  while (sketch.objectCount > 0) RemoveSketchObject(0);
  RefreshSketchPanels();
  EXPECT_EQ(Rows(kIdCadOperations), Lines{u"No geometry yet"});
  Add(kTypeCircle, 0, 0, 1);
  RefreshSketchPanels();
  EXPECT_EQ(Rows(kIdCadOperations), Lines{u"1  Circle"});
}

TEST_F(SketchPanels, SelectedGeometryFieldsHaveThreeDecimalsAndTheAngleFour) {
  Add(kTypeSlot, 1.2345, -0.0004, 2.0005, 0.0625, -12.34375);
  sketch.selected = 0;
  RefreshSketchPanels();
  EXPECT_EQ(TextOf(kIdCadX), u"1.235");
  EXPECT_EQ(TextOf(kIdCadY), u"-0.000");
  EXPECT_EQ(TextOf(kIdCadSize), u"2.001");
  EXPECT_EQ(TextOf(kIdCadSize2), u"0.063");
  EXPECT_EQ(TextOf(kIdCadAngle), u"-12.3438");
  EXPECT_EQ(TextOf(kIdCadStatus),
            u"Selected: Slot  \u2022  drag to move; use Dimension to resize.");
}

TEST_F(SketchPanels, WithoutASelectionTheFieldsAreEmpty) {
  Add(kTypeCircle, 1, 2, 3);
  sketch.selected = 0;
  RefreshSketchPanels();
  EXPECT_EQ(TextOf(kIdCadSize), u"3.000");
  sketch.selected = -1;
  RefreshSketchPanels();
  for (const int id : {kIdCadX, kIdCadY, kIdCadSize, kIdCadSize2, kIdCadAngle}) {
    EXPECT_EQ(TextOf(id), u"");
  }
}

TEST_F(SketchPanels, ChoosingALineSelectsItsObject) {
  Add(kTypeLine, 0, 0, 1);
  Add(kTypeCircle, 3, 4, 1);
  RefreshSketchPanels();
  tools.multiSelect[0] = 1;
  ASSERT_TRUE(headless::SelectRows(kIdCadOperations, {1}));
  EXPECT_EQ(sketch.selected, 1);
  EXPECT_FALSE(IsMultiSelected(0));
  EXPECT_TRUE(IsMultiSelected(1));
  EXPECT_EQ(TextOf(kIdCadX), u"3.000");
  EXPECT_EQ(sketch.undoDepth, 0);
}

TEST_F(SketchPanels, ChoosingTheEmptyFaceSelectsNothing) {
  RefreshSketchPanels();
  headless::SelectRows(kIdCadOperations, {0});
  EXPECT_EQ(sketch.selected, -1);
}

TEST_F(SketchPanels, AClickInTheFirst30PixelsHidesTheObjectAndItsGroup) {
  Add(kTypeLine, 0, 0, 1, 0, 0, 2);
  Add(kTypeCircle, 0, 0, 1);
  Add(kTypeLine, 0, 0, 1, 0, 0, 2);
  RefreshSketchPanels();
  EXPECT_TRUE(headless::ClickInRow(kIdCadOperations, 0, 30));
  EXPECT_EQ(sketch.hidden[0], 0);
  EXPECT_TRUE(headless::ClickInRow(kIdCadOperations, 0, 29));
  EXPECT_EQ(sketch.hidden[0], 1);
  EXPECT_EQ(sketch.hidden[1], 0);
  EXPECT_EQ(sketch.hidden[2], 1);
  EXPECT_EQ(sketch.undoDepth, 1);
  EXPECT_TRUE(headless::ClickInRow(kIdCadOperations, 0, 0));
  EXPECT_EQ(sketch.hidden[0] + sketch.hidden[2], 0);
  EXPECT_EQ(sketch.undoDepth, 2);
}

TEST_F(SketchPanels, AClickBesideALineHidesNothing) {
  RefreshSketchPanels();
  cad_test::OnListClick(kIdCadOperations, 0, 5, 5);
  cad_test::OnListClick(kIdCadOperations, -1, 5, 5);
  EXPECT_EQ(sketch.undoDepth, 0);
}

TEST_F(SketchPanels, SpaceHidesTheSelectedObjectAlone) {
  Add(kTypeLine, 0, 0, 1, 0, 0, 2);
  Add(kTypeLine, 0, 0, 1, 0, 0, 2);
  sketch.selected = 1;
  platform::KeyEvent space;
  space.key = platform::kKeySpace;
  EXPECT_TRUE(cad_test::OnKey(kIdCadOperations, space));
  EXPECT_EQ(sketch.hidden[0], 0);
  EXPECT_EQ(sketch.hidden[1], 1);
  EXPECT_EQ(sketch.undoDepth, 1);
  sketch.selected = -1;
  EXPECT_FALSE(cad_test::OnKey(kIdCadOperations, space));
  EXPECT_EQ(sketch.undoDepth, 1);
}

TEST_F(SketchPanels, TheStatusIsCutAt511UnitsAndLeftAloneForTheSameWords) {
  SetSketchStatus(std::u16string(600, u'a').c_str());
  EXPECT_EQ(TextOf(kIdCadStatus), std::u16string(511, u'a'));
  SetSketchStatus(u"Ready");
  // The field itself must not be written again for another spelling of the same words.
  platform::SetText(kIdCadStatus, u"untouched");
  SetSketchStatus(u"READY");
  EXPECT_EQ(TextOf(kIdCadStatus), u"untouched");
  SetSketchStatus(nullptr);
  EXPECT_EQ(TextOf(kIdCadStatus), u"");
}

TEST_F(SketchPanels, RecentOperationsKeepFortyLinesAndDropTheOldest) {
  for (int i = 1; i <= 42; ++i) {
    LogSketchOperation((u"Step " + support::Wide(std::to_string(i))).c_str());
    EXPECT_EQ(platform::SelectedRow(kIdCadRecent), platform::RowCount(kIdCadRecent) - 1);
  }
  const Lines rows = Rows(kIdCadRecent);
  ASSERT_EQ(rows.size(), 40u);
  EXPECT_EQ(rows.front(), u"Step 3");
  EXPECT_EQ(rows[20], u"Step 23");
  EXPECT_EQ(rows.back(), u"Step 42");
}

}  // namespace
}  // namespace morva
