// The motion of the machine at its bounds: full, and one beyond.

#include <string>

#include "unit/simulator/control_fixture.h"

namespace {

using namespace control_test;

// A program with so many different feed moves.
std::u16string Moves(int count) {
  std::u16string text = u"G1 F10.\n";
  for (int i = 0; i < count; ++i) text += i % 2 ? u"X1.Y0.Z0.\n" : u"X0.Y0.Z0.\n";
  return text + u"M30\n";
}

TEST(ControlLimits, FillsThePathToItsLastPointAndSaysWhereItEnds) {
  static_assert(kMaxControlPoints == 262144);
  const ControlTrack& full = RunText(Moves(kMaxControlPoints));
  EXPECT_EQ(full.path.count, kMaxControlPoints);
  EXPECT_EQ(full.path.fullAtLine, -1);
  const ControlTrack& over = RunText(Moves(kMaxControlPoints + 1));
  EXPECT_EQ(over.path.count, kMaxControlPoints);
  EXPECT_EQ(over.path.fullAtLine, kMaxControlPoints + 1);
  EXPECT_EQ(Found(over), "PathFull " + std::to_string(kMaxControlPoints + 2));
}

TEST(ControlLimits, CountsFurtherOperationsInTheLastOne) {
  static_assert(kMaxOperations == 200);
  std::u16string text = u"G0 X0. Y0. Z0.\n";
  for (int i = 0; i < kMaxOperations; ++i) text += u"T1 M6\n";
  EXPECT_EQ(RunText(text + u"M30\n").operationCount, kMaxOperations);
  EXPECT_EQ(RunText(text + u"T1 M6\nM30\n").operationCount, kMaxOperations);
}

TEST(ControlLimits, NamesOnePastTheCodesOfABlock) {
  static_assert(kMaxBlockCodes == 12 && kMaxBlockMs == 6);
  std::u16string codes;
  for (int i = 0; i < kMaxBlockCodes; ++i) codes += u"G4 ";
  EXPECT_EQ(Found(RunText(codes + u"\nM30\n")), "");
  EXPECT_EQ(Found(RunText(codes + u"G4\nM30\n")), "TwoOfAGroup 1");
  EXPECT_EQ(Found(RunText(u"M8 M8 M8 M8 M8 M8\nM30\n")), "TwoM 1");
  EXPECT_EQ(Found(RunText(u"M8 M8 M8 M8 M8 M8 M8\nM30\n")), "TwoM 1");
}

// O1 calls O2 and so on; the last one moves.
std::u16string Chain(int calls) {
  std::u16string text = u"G0 X0. Y0. Z0.\nM98 P1\nM30\n";
  for (int i = 1; i <= calls; ++i) {
    const std::string number = std::to_string(i);
    const std::string next = std::to_string(i + 1);
    text += u"O" + std::u16string(number.begin(), number.end()) + u"\n";
    if (i < calls) text += u"M98 P" + std::u16string(next.begin(), next.end()) + u"\n";
    if (i == calls) text += u"X1.\n";
    text += u"M99\n";
  }
  return text;
}

TEST(ControlLimits, FollowsAsManyCallsWithinCallsAsItHoldsAndStopsAtOneMore) {
  static_assert(kMaxCalls == 64);
  EXPECT_EQ(RunText(Chain(kMaxCalls)).path.count, 2);
  EXPECT_EQ(RunText(Chain(kMaxCalls + 1)).path.count, 1);
}

std::int32_t asked = 0;
std::int32_t Nowhere(std::int32_t, std::u16string_view&) {
  ++asked;
  return 0;
}

TEST(ControlLimits, LooksForNoFurtherProgramsBesideTheText) {
  static_assert(kMaxProgramsSought == 200);
  asked = 0;
  EXPECT_EQ(Found(RunText(u"#1=1\nWHILE [#1 LE 300] DO1\nM98 P#1\n#1=#1+1\nEND1\nM30\n",
                          {.findProgram = Nowhere})),
            "ProgramMissing 3");
  EXPECT_EQ(asked, kMaxProgramsSought);
}

TEST(ControlLimits, TakesThreeLoopsWithinEachOther) {
  static_assert(kMaxLoops == 3);
  EXPECT_EQ(Found(RunText(u"#1=0\nWHILE [#1 LT 1] DO1\nWHILE [#1 LT 1] DO2\n"
                          u"WHILE [#1 LT 1] DO3\n#1=1\nEND3\nEND2\nEND1\nM30\n")),
            "");
  EXPECT_EQ(Found(RunText(u"WHILE [1 EQ 1] DO4\nM30\n")), "WhileOpen 1");
}

TEST(ControlLimits, LeavesOutLinesBeyondWhatIsPrinted) {
  static_assert(kMaxPrintedUnits == 4000);
  std::u16string text;
  // 79 characters and the line's end each: 50 of them are 4,000.
  for (int i = 0; i < 50; ++i) text += u"DPRNT[" + std::u16string(79, u'A') + u"]\n";
  EXPECT_EQ(RunText(text + u"M30\n").printed.size(), 4000u);
  EXPECT_EQ(RunText(text + u"DPRNT[]\nM30\n").printed.size(), 4000u);
}

// A compensated corner with so many moves along Z at it.
std::u16string Heights(int count) {
  std::u16string text = u"G10 L12 P1 R.5\nG0 X-1. Y0. Z0.\nG41 D1 G1 X0. F10.\n";
  for (int i = 0; i < count; ++i) text += i % 2 ? u"Z0.\n" : u"Z-1.\n";
  return text + u"Y2.\nG40 X-1.\nM30\n";
}

TEST(ControlLimits, LooksPastSixteenMovesAlongZForTheNextCorner) {
  static_assert(kMaxHeldMoves == 16);
  // Beside the next line's start, the place of the first plunge.
  EXPECT_NEAR(RunText(Heights(kMaxHeldMoves)).path.points[1].x, -.25, 1e-9);
  EXPECT_NEAR(RunText(Heights(kMaxHeldMoves)).path.points[1].y, 0, 1e-9);
  // One more, and the tool stands square beside the entry's end.
  EXPECT_NEAR(RunText(Heights(kMaxHeldMoves + 1)).path.points[1].x, 0, 1e-9);
  EXPECT_NEAR(RunText(Heights(kMaxHeldMoves + 1)).path.points[1].y, .25, 1e-9);
}

const std::u16string kPocket = u"G20 G90 G17 S900 M3\nF10.\n";
const std::u16string kSquare = u"M30\nN100 G1 X1. Y0.\nY1.\nX-1.\nY-1.\nX1.\nY0.\n";

TEST(ControlLimits, DrawsNoGroundOfAnOutlineWithTooManyPoints) {
  static_assert(kMaxGroundPoints == 4096);
  const auto points = [](int pairs) {
    std::u16string text =
        kPocket + u"G0 X0. Y0. Z1.\nG150 P100 X0. Y0. Z-.1 R.1 J.5 F10.\n" + kSquare + u"G91\n";
    for (int i = 0; i < pairs; ++i) text += u"X.01\nX-.01\n";
    return Found(RunText(text + u"G90\nM99\n"));
  };
  // The start, the six of the square, and these.
  EXPECT_EQ(points(2044), "");  // 4,095
  EXPECT_EQ(points(2045), "NotFollowed 4");
}

TEST(ControlLimits, DrawsNoGroundOfTooManyStrokes) {
  // A comb with eight teeth in its upper half.
  static_assert(kMaxGroundStrokes == 4000);
  const auto strokes = [](std::u16string_view step) {
    std::u16string text = kPocket + u"G0 X0. Y0. Z1.\nG150 P100 X0. Y0. Z-.1 R.1 J" +
                          std::u16string(step) + u" F10.\nM30\nN100 G1 X15.\n";
    for (int i = 0; i < 8; ++i) text += i == 0 ? u"Y2.\nG91 X-1.\n" : u"Y-1.\nX-1.\nY1.\nX-1.\n";
    return Found(RunText(text + u"G90 X0. Y0.\nM99\n"));
  };
  EXPECT_EQ(strokes(u".004"), "");               // 250 rows of one, 251 of eight
  EXPECT_EQ(strokes(u".002"), "NotFollowed 4");  // 500 rows of one, 501 of eight
}

TEST(ControlLimits, DrawsNoGroundOfTooManyRows) {
  static_assert(kMaxGroundRows == 1001);
  const auto rows = [](std::u16string_view step) {
    return Found(RunText(kPocket + u"G0 X0. Y0. Z1.\nG150 P100 X0. Y0. Z-.1 R.1 J" +
                         std::u16string(step) + u" F10.\n" + kSquare + u"M99\n"));
  };
  EXPECT_EQ(rows(u".002"), "");
  EXPECT_EQ(rows(u".0019"), "NotFollowed 4");
}

TEST(ControlLimits, CountsFindingsBeyondItsTable) {
  static_assert(kMaxFindings == 400 && kMaxFindingsOfKind == 40);
  std::u16string text;
  for (int i = 0; i < kMaxFindingsOfKind; ++i) text += u"G200\n";
  const ControlTrack& full = RunText(text + u"M30\n");
  EXPECT_EQ(full.findings.count, kMaxFindingsOfKind);
  EXPECT_EQ(full.findings.more, 0);
  const ControlTrack& over = RunText(text + u"G200\nM30\n");
  EXPECT_EQ(over.findings.count, kMaxFindingsOfKind);
  EXPECT_EQ(over.findings.more, 1);
  Findings all;
  for (int kind = 0; kind < kFindings; ++kind) {
    for (int line = 0; line < kMaxFindingsOfKind; ++line) {
      AddFinding(all, {static_cast<Finding>(kind), line});
    }
  }
  EXPECT_EQ(all.count, kMaxFindings);
  EXPECT_EQ(all.more, kFindings * kMaxFindingsOfKind - kMaxFindings);
}

}  // namespace
