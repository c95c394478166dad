#include <cmath>
#include <cstring>
#include <string>
#include <vector>

#include "simulator/motion_path.h"
#include "simulator/toolpath.h"
#include "support/program_maker.h"
#include "support/reference_path.h"
#include "text/codetext.h"
#include "unit/simulator/simulator_fixture.h"

namespace morva {
namespace {

using MotionScan = SimulatorTest;

// The value that a word of the text ends up with, as the X of one incremental-free move.
double ScannedX(const std::u16string& number) {
  ExtractToolpath(u"G0 Z9\r\nG1 X" + number, false);
  return LastPoint().x;
}

bool SameBits(double a, double b) { return std::memcmp(&a, &b, sizeof a) == 0; }

TEST_F(MotionScan, EmptyTextIsTheOrigin) {
  ExtractToolpath(u"", false);
  ASSERT_EQ(path.count, 1);
  ExpectAt(path.points[0], 0, 0, 0);
  EXPECT_TRUE(path.points[0].rapid);
  EXPECT_FALSE(path.points[0].jump);
  EXPECT_EQ(path.points[0].sourceLine, 0);
  EXPECT_EQ(path.points[0].tool, 0);
}

TEST_F(MotionScan, StartsAsRapid) {
  ExtractToolpath(u"X1", false);
  ASSERT_EQ(path.count, 2);
  ExpectAt(path.points[1], 1, 0, 0);
  EXPECT_TRUE(path.points[1].rapid);
}

TEST_F(MotionScan, WordsRuleTheWholeLineInAnyOrder) {
  for (const char16_t* text : {u"G1 X1", u"X1 G1", u"G0 X1 G01.0"}) {
    ExtractToolpath(text, false);
    ASSERT_EQ(path.count, 2);
    ExpectAt(path.points[1], 1, 0, 0);
    EXPECT_FALSE(path.points[1].rapid);
  }
}

TEST_F(MotionScan, LastWordOfAKindWins) {
  ExtractToolpath(u"G1 X1 X2 X3", false);
  ASSERT_EQ(path.count, 2);
  ExpectAt(path.points[1], 3, 0, 0);
}

TEST_F(MotionScan, IncrementalAddsUpUntilAbsolute) {
  ExtractToolpath(u"G91 G1 X1\r\nX1\r\nG90 X1\r\n", false);
  ASSERT_EQ(path.count, 4);
  EXPECT_DOUBLE_EQ(path.points[1].x, 1);
  EXPECT_DOUBLE_EQ(path.points[2].x, 2);
  EXPECT_DOUBLE_EQ(path.points[3].x, 1);
}

TEST_F(MotionScan, UnitsScaleToTheDisplay) {
  ExtractToolpath(u"G21 G1 X254 Y25.4", false);
  EXPECT_EQ(LastPoint().x, 254 * 0.03937007874015748);
  ExtractToolpath(u"G20 G1 X2", true);
  EXPECT_EQ(LastPoint().x, 2 * 25.4);
  // A unit word behind the axis word rules it all the same; a second one takes it back.
  ExtractToolpath(u"G1 X2 G20", true);
  EXPECT_EQ(LastPoint().x, 2 * 25.4);
  ExtractToolpath(u"G20 G1 X2 G21", true);
  EXPECT_EQ(LastPoint().x, 2);
}

TEST_F(MotionScan, WithoutAUnitWordTheProgramIsInDisplayUnits) {
  for (bool metric : {false, true}) {
    ExtractToolpath(u"G1 X3", metric);
    EXPECT_EQ(LastPoint().x, 3);
  }
}

TEST_F(MotionScan, OpenCommentHidesOnlyItsLine) {
  ExtractToolpath(u"(G1 X5\r\nX1", false);
  ASSERT_EQ(path.count, 2);
  ExpectAt(path.points[1], 1, 0, 0);
  EXPECT_EQ(path.points[1].sourceLine, 1);
}

TEST_F(MotionScan, FirstClosingParenthesisEndsAComment) {
  ExtractToolpath(u"(a (b) X1 ) Y2", false);
  ASSERT_EQ(path.count, 2);
  ExpectAt(path.points[1], 1, 2, 0);
}

TEST_F(MotionScan, SemicolonEndsTheLineButNotInsideAComment) {
  ExtractToolpath(u"G1 X1 ; Y2", false);
  ExpectAt(LastPoint(), 1, 0, 0);
  ExtractToolpath(u"G1 X1 (;) Y2", false);
  ExpectAt(LastPoint(), 1, 2, 0);
}

TEST_F(MotionScan, BlankBehindTheLetterMakesNoWord) {
  ExtractToolpath(u"G 1 X 5 Y1", false);
  ASSERT_EQ(path.count, 2);
  ExpectAt(path.points[1], 0, 1, 0);
  EXPECT_TRUE(path.points[1].rapid);
}

TEST_F(MotionScan, ALoneSignOrPointIsZero) {
  ExtractToolpath(u"G1 X1 Y1\r\nX-\r\nY.\r\n", false);
  ASSERT_EQ(path.count, 4);
  ExpectAt(path.points[2], 0, 1, 0);
  ExpectAt(path.points[3], 0, 0, 0);
  // "G-" is G0.
  ExtractToolpath(u"G1 X1\r\nG- X2", false);
  EXPECT_TRUE(LastPoint().rapid);
}

TEST_F(MotionScan, LettersInsideOtherWordsCount) {
  ExtractToolpath(u"LT10 FIX5", false);
  ASSERT_EQ(path.count, 2);
  ExpectAt(path.points[1], 5, 0, 0);
  EXPECT_EQ(path.points[1].tool, 10);
}

TEST_F(MotionScan, LowerCaseIsTheSame) {
  ExtractToolpath(u"g1 x1 y2 z-3 t4", false);
  ExpectAt(LastPoint(), 1, 2, -3);
  EXPECT_FALSE(LastPoint().rapid);
  EXPECT_EQ(LastPoint().tool, 4);
}

TEST_F(MotionScan, ToolTakesEffectOnItsOwnLineAndIsCut) {
  ExtractToolpath(u"X1\r\nX2 T3.9\r\nX3\r\nT-2.5 X4\r\nT99999999999 X5", false);
  ASSERT_EQ(path.count, 6);
  EXPECT_EQ(path.points[1].tool, 0);
  EXPECT_EQ(path.points[2].tool, 3);
  EXPECT_EQ(path.points[3].tool, 3);
  EXPECT_EQ(path.points[4].tool, -2);
  EXPECT_EQ(path.points[5].tool, 2147483647);
}

TEST_F(MotionScan, RadiusDefeatsTheArc) {
  for (const char16_t* text : {u"G2 X1 Y0 R.5", u"G2 X1 Y0 I.5 R.5", u"G2 X1 Y0 I.5 R0",
                               u"G2 X1 Y0", u"G18 G2 X1 Y0 I.5", u"G2 X1 Y0 I.5 G19"}) {
    ExtractToolpath(text, false);
    ASSERT_EQ(path.count, 2);
    ExpectAt(path.points[1], 1, 0, 0);
    EXPECT_TRUE(path.points[1].jump);
    EXPECT_FALSE(path.points[1].rapid);
  }
}

TEST_F(MotionScan, CentreWordsWithoutAnArcAreNoPoint) {
  ExtractToolpath(u"G2 I1 R1\r\nG1 I1\r\nG2 K1\r\nG2 R1", false);
  EXPECT_EQ(path.count, 1);
}

TEST_F(MotionScan, HalfCircleHas181Points) {
  ExtractToolpath(u"G2 X1. Y0 I.5 J0", false);
  ASSERT_EQ(path.count, 181);
  // Clockwise from (0, 0) about (0.5, 0): the top is the 90th of 180 chords.
  EXPECT_NEAR(path.points[90].x, 0.5, 1e-12);
  EXPECT_NEAR(path.points[90].y, 0.5, 1e-12);
  EXPECT_EQ(path.points[180].x, 1.0);
  EXPECT_EQ(path.points[180].y, 0.0);
  for (int i = 1; i <= 180; ++i) {
    EXPECT_FALSE(path.points[i].rapid);
    EXPECT_FALSE(path.points[i].jump);
    EXPECT_EQ(path.points[i].sourceLine, 0);
  }
  ExtractToolpath(u"G3 X1. Y0 I.5 J0", false);
  ASSERT_EQ(path.count, 181);
  EXPECT_NEAR(path.points[90].y, -0.5, 1e-12);
}

TEST_F(MotionScan, ArcWithoutATargetIsAWholeTurn) {
  ExtractToolpath(u"G2 I1.", false);
  ASSERT_EQ(path.count, 361);
  // A quarter turn clockwise from the left end of the circle about (1, 0).
  EXPECT_NEAR(path.points[90].x, 1.0, 1e-12);
  EXPECT_NEAR(path.points[90].y, 1.0, 1e-12);
  ExpectAt(path.points[360], 0, 0, 0);
  ExtractToolpath(u"G3 X0 Y0 J-1", false);
  ASSERT_EQ(path.count, 361);
  EXPECT_NEAR(path.points[90].x, -1.0, 1e-12);
  EXPECT_NEAR(path.points[90].y, -1.0, 1e-12);
}

TEST_F(MotionScan, HelixRisesEvenly) {
  ExtractToolpath(u"G1 Z-1\r\nG3 X0 Y2 Z1 J1", false);
  // The origin, the plunge, 180 chords.
  ASSERT_EQ(path.count, 182);
  EXPECT_NEAR(path.points[1 + 45].z, -0.5, 1e-12);
  EXPECT_NEAR(path.points[1 + 90].x, 1.0, 1e-12);
  EXPECT_NEAR(path.points[1 + 90].z, 0.0, 1e-12);
  ExpectAt(path.points[181], 0, 2, 1);
}

TEST_F(MotionScan, CentreIsRelativeInBothModesAndScaled) {
  ExtractToolpath(u"G1 X10 Y0\r\nG90 G3 X8 Y0 I-1", false);
  EXPECT_EQ(path.count, 2 + 180);
  ExtractToolpath(u"G20 G3 X2 Y0 I1", true);
  ASSERT_EQ(path.count, 181);
  EXPECT_NEAR(path.points[90].x, 25.4, 1e-12);
  EXPECT_NEAR(path.points[90].y, -25.4, 1e-12);
}

TEST_F(MotionScan, BadArcOnlyArrives) {
  // From (0, 0) about (0.5, 0) to (1.01, 0): the radii differ by 0.01, 0.0006 are allowed.
  for (const char16_t* text : {u"G2 X1.01 Y0 I.5", u"G2 X1 Y1 I0 J0"}) {
    ExtractToolpath(text, false);
    ASSERT_EQ(path.count, 2);
    EXPECT_TRUE(path.points[1].jump);
    EXPECT_FALSE(path.points[1].rapid);
  }
  // 0.0005 apart passes, and the last point is the target itself.
  ExtractToolpath(u"G2 X1.0005 Y0 I.5", false);
  EXPECT_EQ(path.count, 181);
  EXPECT_DOUBLE_EQ(LastPoint().x, ParseDecimal(u"1.0005", 0));
}

TEST_F(MotionScan, AnArcAtTheVeryLimitOfItsRadiiIsBad) {
  // The radii are 62.4 and 62.4625; 62.4 x 0.001 + 0.0001 is 0.0625, which doubles hold.
  ExtractToolpath(u"G2 X124.8625 Y0 I62.4", false);
  ASSERT_EQ(path.count, 2);
  EXPECT_TRUE(path.points[1].jump);
  ExtractToolpath(u"G2 X124.8624 Y0 I62.4", false);
  EXPECT_EQ(path.count, 181);
}

TEST_F(MotionScan, CannedCycleArrivesAndKeepsZ) {
  ExtractToolpath(u"G83 X1 Y1 Z-1 Q.1 R.1 F5\r\nX2\r\nG80\r\nX3", false);
  ASSERT_EQ(path.count, 4);
  ExpectAt(path.points[1], 1, 1, -1);
  EXPECT_TRUE(path.points[1].jump);
  EXPECT_FALSE(path.points[1].rapid);
  ExpectAt(path.points[2], 2, 1, -1);
  EXPECT_TRUE(path.points[2].jump);
  // After the cycle the motion is rapid, whatever stood before it.
  ExpectAt(path.points[3], 3, 1, -1);
  EXPECT_TRUE(path.points[3].rapid);
  EXPECT_FALSE(path.points[3].jump);
}

TEST_F(MotionScan, CyclesRunFrom81To89) {
  for (const char16_t* text : {u"G1 G81.5 X1", u"G1 G87 X1", u"G1 G88.9 X1", u"G1 G89 X1"}) {
    ExtractToolpath(text, false);
    EXPECT_TRUE(LastPoint().jump);
  }
  for (const char16_t* text : {u"G1 G89.5 X1", u"G1 G80.5 X1", u"G1 G73 X1", u"G1 G76 X1"}) {
    ExtractToolpath(text, false);
    EXPECT_FALSE(LastPoint().jump);
    EXPECT_FALSE(LastPoint().rapid);
  }
}

TEST_F(MotionScan, NonMotionLinesLeaveThePositionAndBreakTheLine) {
  for (const char16_t* code : {u"G4 P1", u"G10", u"G28", u"G30", u"G53", u"G92"}) {
    ExtractToolpath(u"G1 X1\r\n" + std::u16string(code) + u" X5 Z0\r\nY1", false);
    ASSERT_EQ(path.count, 3);
    ExpectAt(path.points[2], 1, 1, 0);
    EXPECT_TRUE(path.points[2].jump);
    EXPECT_FALSE(path.points[2].rapid);
  }
}

TEST_F(MotionScan, NonMotionLinesStillActOnModesUnitsAndTool) {
  ExtractToolpath(u"G1 X1\r\nG91 G28 Z0 T7\r\nX1", false);
  ASSERT_EQ(path.count, 3);
  ExpectAt(path.points[2], 2, 0, 0);
  EXPECT_EQ(path.points[2].tool, 7);
}

TEST_F(MotionScan, CodesItDoesNotKnowMove) {
  for (const char16_t* code : {u"G52", u"G65", u"G68", u"G43", u"G54", u"G13"}) {
    ExtractToolpath(std::u16string(code) + u" X1", false);
    ExpectAt(LastPoint(), 1, 0, 0);
  }
}

TEST_F(MotionScan, NothingEndsTheProgram) {
  ExtractToolpath(u"%\r\nX1\r\nM30\r\n/X2\r\nM99\r\n%\r\nX3", false);
  ASSERT_EQ(path.count, 4);
  EXPECT_EQ(path.points[2].sourceLine, 3);
  ExpectAt(path.points[3], 3, 0, 0);
}

TEST_F(MotionScan, LinesEndAtReturnFeedOrBoth) {
  ExtractToolpath(u"X1\rX2\nX3\r\nX4\n\rX5", false);
  ASSERT_EQ(path.count, 6);
  const std::vector<int> lines = {0, 0, 1, 2, 3, 5};
  for (int i = 0; i < 6; ++i) EXPECT_EQ(path.points[i].sourceLine, lines[static_cast<size_t>(i)]);
}

TEST_F(MotionScan, TheFirstNulEndsTheText) {
  const std::u16string text = std::u16string(u"X1\r\nY1") + u'\0' + u"2\r\nX3\r\n";
  ExtractToolpath(text, false);
  ASSERT_EQ(path.count, 3);
  ExpectAt(path.points[2], 1, 1, 0);
  const std::u16string inComment = std::u16string(u"X1 (a") + u'\0' + u")\r\nX3\r\n";
  ExtractToolpath(inComment, false);
  EXPECT_EQ(path.count, 2);
}

TEST_F(MotionScan, ForeignCharactersAreSteppedOver) {
  ExtractToolpath(u"\u00DCX1\u0158 Y\u0661 \u2014Z2\uFF11", false);
  ExpectAt(LastPoint(), 1, 0, 2);
}

TEST_F(MotionScan, NumbersKeepTheParsersLastBits) {
  // 0.3 is 3 times 0.1; 0.375 is 0.3 + 7 times 0.1 * 0.1 and so on.
  EXPECT_EQ(ScannedX(u".3"), 3 * 0.1);
  EXPECT_EQ(ScannedX(u"0.375"), 0.37500000000000006);
  EXPECT_EQ(ScannedX(u"5.15"), (5 + 1 * 0.1) + 5 * (0.1 * 0.1));
  EXPECT_EQ(ScannedX(u"+12.50"), 12 + 5 * 0.1);
  EXPECT_EQ(ScannedX(u"-.5"), -(5 * 0.1));
  EXPECT_EQ(ScannedX(u"1.2.3"), 1 + 2 * 0.1);
  EXPECT_EQ(ScannedX(u"7.."), 7);
}

TEST_F(MotionScan, AWordsNumberIsCutAt62Units) {
  // 61 zeros and one 4 are 62 units; the next digit is outside the word.
  EXPECT_EQ(ScannedX(std::u16string(61, u'0') + u"49"), 4);
  EXPECT_EQ(ScannedX(u"-" + std::u16string(60, u'0') + u"49"), -4);
  EXPECT_EQ(ScannedX(std::u16string(60, u'0') + u"4.9"), 4);
  const std::u16string places = u"." + std::u16string(61, u'1');
  EXPECT_TRUE(SameBits(ScannedX(places + u"9"), ParseDecimal(places, 0)));
  EXPECT_TRUE(SameBits(ScannedX(places + u"X"), ParseDecimal(places, 0)));
}

TEST_F(MotionScan, EveryWordEqualsTheParserToTheLastBit) {
  reference::Dice dice{7};
  for (int round = 0; round < 20000; ++round) {
    std::u16string number;
    if (dice.Roll(2)) number += dice.Roll(2) ? u'-' : u'+';
    reference::AppendDigits(number, dice, dice.Roll(4) == 0 ? 30 : 5);
    if (dice.Roll(4)) {
      number += u'.';
      reference::AppendDigits(number, dice, dice.Roll(4) == 0 ? 45 : 6);
    }
    if (number.empty()) continue;
    const double parsed = ParseDecimal(number.substr(0, 62), 0.0);
    ExtractToolpath(u"G1 Y9 X" + number, false);
    ASSERT_EQ(path.count, 2);
    ASSERT_TRUE(SameBits(LastPoint().x, parsed)) << round;
  }
}

void ExpectSamePath(const reference::Path& wanted, const std::string& what) {
  ASSERT_EQ(static_cast<std::size_t>(path.count), wanted.points.size()) << what;
  EXPECT_EQ(pathFullAtLine, wanted.fullAtLine) << what;
  for (std::int32_t i = 0; i < path.count; ++i) {
    const MotionPoint& p = path.points[i];
    const reference::Point& q = wanted.points[static_cast<std::size_t>(i)];
    // Chords may differ in the last bits of square root and sine.
    const double near = 1e-9 * (1 + std::fabs(q.x) + std::fabs(q.y) + std::fabs(q.z));
    ASSERT_NEAR(p.x, q.x, near) << what << ", point " << i;
    ASSERT_NEAR(p.y, q.y, near) << what << ", point " << i;
    ASSERT_NEAR(p.z, q.z, near) << what << ", point " << i;
    ASSERT_EQ(p.rapid, q.rapid) << what << ", point " << i;
    ASSERT_EQ(p.jump, q.jump) << what << ", point " << i;
    ASSERT_EQ(p.sourceLine, q.sourceLine) << what << ", point " << i;
    ASSERT_EQ(p.tool, q.tool) << what << ", point " << i;
  }
}

TEST_F(MotionScan, AgreesWithAPlainInterpreterOnRandomPrograms) {
  for (std::uint32_t seed = 0; seed < 3000; ++seed) {
    const std::u16string text = reference::RandomProgram(seed, 40);
    const bool metric = seed % 3 == 0;
    ExtractToolpath(text, metric);
    ExpectSamePath(reference::Interpret(text, metric), "seed " + std::to_string(seed));
    if (HasFatalFailure()) return;
  }
}

TEST_F(MotionScan, AgreesWithAPlainInterpreterWhenTheTableFills) {
  for (std::uint32_t seed = 5000; seed < 5010; ++seed) {
    std::u16string text;
    for (std::uint32_t part = 0; part < 60; ++part) {
      text += reference::RandomProgram(seed * 100 + part, 200);
      for (char16_t& c : text) {
        if (c == 0) c = u' ';
      }
    }
    ExtractToolpath(text, false);
    EXPECT_EQ(path.count, kMaxMotionPoints);
    EXPECT_GE(pathFullAtLine, 0);
    ExpectSamePath(reference::Interpret(text, false), "seed " + std::to_string(seed));
    if (HasFatalFailure()) return;
  }
}

}  // namespace
}  // namespace morva
