#include "documents/feature_blocks.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "unit/documents/block_builder.h"

namespace morva {
namespace {

using namespace testing_blocks;

struct Row {
  int id;
  int kind;
  bool needsMarkers;
  std::u16string name;
  std::u16string text;
  bool operator==(const Row&) const = default;
};

void PrintTo(const Row& row, std::ostream* out) {
  const auto narrow = [](const std::u16string& s) { return std::string(s.begin(), s.end()); };
  *out << row.id << " kind " << row.kind << (row.needsMarkers ? " bare " : " ") << narrow(row.name)
       << "|" << narrow(row.text);
}

std::vector<Row> Scan(std::u16string_view text) {
  ScanProgramText(text);
  std::vector<Row> rows;
  for (int i = 0; i < features.count; ++i) {
    const FeatureRecord& r = features.rows[i];
    rows.push_back({r.id, r.settings.kind, r.needsMarkers, r.name,
                    std::u16string(text.substr(static_cast<std::size_t>(r.start),
                                               static_cast<std::size_t>(r.end - r.start)))});
  }
  return rows;
}

Row Bare(int id, std::u16string text) { return {id, kKindUserCode, true, u"", std::move(text)}; }

using Rows = std::vector<Row>;

TEST(ScanProgramText, FindsNothingInAnEmptyTextAndNumbersFromOne) {
  EXPECT_EQ(Scan(u""), Rows());
  EXPECT_EQ(features.nextId, 1);
  EXPECT_EQ(NextTableId(), 1);
}

TEST(ScanProgramText, WrapsNothingInATextOfPercentLinesAndBlanks) {
  EXPECT_EQ(Scan(u"%\r\n \t\r\n\r\n %%\r\n"), Rows());
  EXPECT_EQ(features.nextId, 1);
}

TEST(ScanProgramText, ForgetsTheTextBefore) {
  Scan(UserBlock(7, u"G0"));
  EXPECT_EQ(Scan(u""), Rows());
  EXPECT_EQ(features.nextId, 1);
}

TEST(ScanProgramText, TakesAUserBlockWithItsName) {
  const std::u16string block = UserBlock(3, u"G0 X1", u"Rough pass");
  EXPECT_EQ(Scan(block + u"\r\n"), Rows({{3, kKindUserCode, false, u"Rough pass", block}}));
  EXPECT_EQ(features.nextId, 4);
}

TEST(ScanProgramText, TakesAUserBlockWithoutAName) {
  const std::u16string block = u"(MORVA TEXT 3)\r\nG0 X1\r\n(MORVA END 3)";
  EXPECT_EQ(Scan(block), Rows({{3, kKindUserCode, false, u"", block}}));
}

TEST(ScanProgramText, TakesASettingsBlockWithNameAndSettings) {
  std::vector<unsigned char> bytes = RecordBytes(3, 5, 2, 1);
  bytes[8] = 1;      // metric
  bytes[28] = 0x2C;  // codeHash
  bytes[31] = 0xE4;
  bytes[32 + 6] = 0xF0;  // values[0] = 1.0
  bytes[32 + 7] = 0x3F;
  bytes[160] = 4;  // the item's type
  bytes[164] = 9;  // and its tag
  const std::u16string block = u"(MORVA BEGIN 12)\r\n(MORVA NAME Base plate)\r\n" +
                               DataLines(bytes) + u"(MORVA CODE)\r\n\r\nG0\r\n(MORVA END 12)";
  EXPECT_EQ(Scan(u"%\r\n" + block + u"\r\n%\r\n"),
            Rows({{12, kKindPlate, false, u"Base plate", block}}));
  const FeatureSettings& s = features.rows[0].settings;
  EXPECT_EQ(s.version, 3);
  EXPECT_EQ(s.metric, 1);
  EXPECT_EQ(s.a, 2);
  EXPECT_EQ(s.itemCount, 1);
  EXPECT_EQ(s.codeHash, 0xE400002Cu);
  EXPECT_EQ(s.values[0], 1.0);
  EXPECT_EQ(s.items[0].type, 4);
  EXPECT_EQ(s.items[0].tag, 9);
  EXPECT_EQ(s.items[1].type, 0);
}

TEST(ScanProgramText, DropsTheTagsOfAnOlderRecord) {
  std::vector<unsigned char> bytes = RecordBytes(2, 4, 0, 1);
  bytes[164] = 9;
  Scan(u"(MORVA BEGIN 1)\r\n" + DataLines(bytes) + u"(MORVA CODE)\r\n(MORVA END 1)");
  ASSERT_EQ(features.count, 1);
  EXPECT_EQ(features.rows[0].settings.version, 2);
  EXPECT_EQ(features.rows[0].settings.items[0].tag, 0);
}

TEST(ScanProgramText, ReadsLowerCaseHexAndUnevenLines) {
  const std::u16string zeros(160 * 2 - 16, u'0');
  const std::u16string block =
      u"(MORVA BEGIN 1)\n(MORVA DATA 03)\n(MORVA DATA 000000)\n"
      u"(MORVA DATA 04000000" +
      zeros + u")\n\r\n(MORVA CODE)\nG0\n(MORVA END 1)";
  EXPECT_EQ(Scan(block), Rows({{1, kKindSketch, false, u"", block}}));
  std::u16string lower = SketchBlock(2, u"G0");
  std::vector<unsigned char> bytes = RecordBytes(3, 4, 0, 0);
  bytes[28] = 0xAB;
  const std::u16string hashed =
      u"(MORVA BEGIN 2)\r\n" + DataLines(bytes) + u"(MORVA CODE)\r\n(MORVA END 2)";
  std::u16string folded = hashed;
  folded.replace(folded.find(u"AB"), 2, u"aB");
  Scan(folded);
  ASSERT_EQ(features.count, 1);
  EXPECT_EQ(features.rows[0].settings.codeHash, 0xABu);
}

TEST(ScanProgramText, UsesUpTheNumberOfAStrayEnd) {
  EXPECT_EQ(Scan(u"(MORVA END 5)"), Rows({Bare(6, u"(MORVA END 5)")}));
}

TEST(ScanProgramText, UsesUpNumbersOfMarkersAnywhereInALineButOnlyInExactCase) {
  EXPECT_EQ(Scan(u"G0 (MORVA BEGIN 8) X1"), Rows({Bare(9, u"G0 (MORVA BEGIN 8) X1")}));
  EXPECT_EQ(Scan(u"G0 (MORVA TEXT  \t 8"), Rows({Bare(9, u"G0 (MORVA TEXT  \t 8")}));
  EXPECT_EQ(Scan(u"G0 (morva end 8)"), Rows({Bare(1, u"G0 (morva end 8)")}));
  EXPECT_EQ(Scan(u"(MORVA END -8)"), Rows({Bare(1, u"(MORVA END -8)")}));
  EXPECT_EQ(Scan(u"(MORVA DISABLED 8)"), Rows({Bare(1, u"(MORVA DISABLED 8)")}));
  EXPECT_EQ(Scan(u"(MORVA END x)"), Rows({Bare(1, u"(MORVA END x)")}));
}

TEST(ScanProgramText, KnowsNoOpeningMarkerInLowerCaseButClosesWithOne) {
  EXPECT_EQ(Scan(u"(morva text 3)\r\nG0\r\n(MORVA END 3)"),
            Rows({Bare(4, u"(morva text 3)\r\nG0\r\n(MORVA END 3)")}));
  std::u16string block = SketchBlock(3, u"G0");
  block.replace(block.size() - 13, 13, u"(morva End 3)");
  EXPECT_EQ(Scan(block), Rows({{3, kKindSketch, false, u"", block}}));
  std::u16string lower = SketchBlock(3, u"G0");
  lower.replace(0, 15, u"(morva begin 3)");
  const std::vector<Row> rows = Scan(lower);
  ASSERT_EQ(rows.size(), 1u);
  EXPECT_TRUE(rows[0].needsMarkers);
}

TEST(ScanProgramText, WantsOpeningMarkersInTheFirstColumn) {
  const std::u16string text = u" " + UserBlock(3, u"G0");
  EXPECT_EQ(Scan(text), Rows({Bare(4, text.substr(1))}));
}

TEST(ScanProgramText, FindsAnEndAnywhereInALine) {
  EXPECT_EQ(Scan(u"(MORVA TEXT 3)\r\nG0 X1 (MORVA END 3) M0"),
            Rows({{3, kKindUserCode, false, u"", u"(MORVA TEXT 3)\r\nG0 X1 (MORVA END 3)"},
                  Bare(4, u"M0")}));
}

TEST(ScanProgramText, TakesTheEndOfABlockForALineStart) {
  EXPECT_EQ(Scan(u"(MORVA TEXT 1)\r\nG0\r\n(MORVA END 1)(MORVA TEXT 2)\r\nG1\r\n(MORVA END 2)"),
            Rows({{1, kKindUserCode, false, u"", u"(MORVA TEXT 1)\r\nG0\r\n(MORVA END 1)"},
                  {2, kKindUserCode, false, u"", u"(MORVA TEXT 2)\r\nG1\r\n(MORVA END 2)"}}));
}

TEST(ScanProgramText, ClosesByTheValueOfTheNumber) {
  const std::u16string block = u"(MORVA TEXT \t007)\r\nG0\r\n(MORVA END 7)";
  EXPECT_EQ(Scan(block), Rows({{7, kKindUserCode, false, u"", block}}));
  const std::u16string padded = u"(MORVA TEXT 7)\r\nG0\r\n(MORVA END 007)";
  EXPECT_EQ(Scan(padded), Rows({Bare(8, padded)}));
  const std::u16string longer = u"(MORVA TEXT 7)\r\nG0\r\n(MORVA END 71)\r\n(MORVA END  7)";
  EXPECT_EQ(Scan(longer), Rows({Bare(72, longer)}));
}

TEST(ScanProgramText, TakesTheFirstEndBehindTheOpeningMarker) {
  const std::u16string text =
      u"(MORVA END 3)\r\n(MORVA TEXT 3)\r\nG0\r\n(MORVA END 3)\r\n(MORVA END 3)";
  EXPECT_EQ(Scan(text),
            Rows({Bare(4, u"(MORVA END 3)"),
                  {3, kKindUserCode, false, u"", u"(MORVA TEXT 3)\r\nG0\r\n(MORVA END 3)"},
                  Bare(5, u"(MORVA END 3)")}));
}

TEST(ScanProgramText, RefusesIdsBelowOne) {
  for (const std::u16string id : {u"0", u"-4", u"x", u""}) {
    const std::u16string text = u"(MORVA TEXT " + id + u")\r\nG0\r\n(MORVA END " + id + u")";
    EXPECT_EQ(Scan(text), Rows({Bare(1, text)}));
  }
  const std::vector<Row> rows = Scan(SketchBlock(0, u"G0"));
  ASSERT_EQ(rows.size(), 1u);
  EXPECT_TRUE(rows[0].needsMarkers);
}

TEST(ScanProgramText, WrapsNumbersAtThirtyTwoBits) {
  // 4,294,967,301 is 2 to the 32nd and 5.
  const std::u16string block = u"(MORVA TEXT 4294967301)\r\nG0\r\n(MORVA END 5)";
  EXPECT_EQ(Scan(block), Rows({{5, kKindUserCode, false, u"", block}}));
}

TEST(ScanProgramText, AcceptsAHighIdWithoutMovingTheNextFreeOne) {
  const std::u16string high = UserBlock(2000000000, u"G0");
  EXPECT_EQ(Scan(high + u"\r\nG1"),
            Rows({{2000000000, kKindUserCode, false, u"User code", high}, Bare(1, u"G1")}));
  const std::u16string counted = UserBlock(1999999999, u"G0");
  EXPECT_EQ(Scan(counted + u"\r\nG1")[1].id, 2000000000);
}

TEST(ScanProgramText, LeavesABlockWithoutAnEndAsText) {
  EXPECT_EQ(Scan(u"(MORVA TEXT 3)\r\nG0"), Rows({Bare(4, u"(MORVA TEXT 3)\r\nG0")}));
  std::u16string block = SketchBlock(3, u"G0");
  block.resize(block.size() - 1);
  EXPECT_EQ(Scan(block), Rows({Bare(4, block)}));
}

TEST(ScanProgramText, RefusesSettingsWhoseBytesDoNotFitTheirItems) {
  std::vector<unsigned char> bytes = RecordBytes(3, 4, 0, 3);
  bytes[24] = 2;
  const std::u16string text =
      u"(MORVA BEGIN 1)\r\n" + DataLines(bytes) + u"(MORVA CODE)\r\nG0\r\n(MORVA END 1)";
  EXPECT_EQ(Scan(text), Rows({Bare(2, text)}));
  for (const int more : {-1, 1}) {
    bytes = RecordBytes(3, 4, 0, 0);
    bytes.resize(static_cast<std::size_t>(160 + more), 0);
    const std::u16string odd =
        u"(MORVA BEGIN 1)\r\n" + DataLines(bytes) + u"(MORVA CODE)\r\nG0\r\n(MORVA END 1)";
    EXPECT_EQ(Scan(odd), Rows({Bare(2, odd)}));
  }
}

TEST(ScanProgramText, RefusesABlockWithoutDataOrWithoutItsCodeMarker) {
  for (const std::u16string& middle :
       {std::u16string(u"(MORVA CODE)\r\n"), DataLines(RecordBytes(3, 4, 0, 0)),
        DataLines(RecordBytes(3, 4, 0, 0)) + u"(morva code)\r\n",
        DataLines(RecordBytes(3, 4, 0, 0)) + u" (MORVA CODE)\r\n"}) {
    const std::u16string text = u"(MORVA BEGIN 1)\r\n" + middle + u"G0\r\n(MORVA END 1)";
    EXPECT_EQ(Scan(text), Rows({Bare(2, text)}));
  }
}

TEST(ScanProgramText, RefusesDamagedHex) {
  const std::u16string good = SketchBlock(1, u"G0");
  const std::size_t hex = good.find(u"DATA 03") + 5;
  ASSERT_FALSE(Scan(good)[0].needsMarkers);
  const auto damaged = [&](std::size_t at, std::size_t count, const std::u16string& with) {
    std::u16string text = good;
    text.replace(at, count, with);
    return Scan(text) == Rows({Bare(2, text)});
  };
  EXPECT_TRUE(damaged(hex, 1, u"G"));
  EXPECT_TRUE(damaged(hex, 1, u" "));
  EXPECT_TRUE(damaged(hex + 1, 1, u""));    // an odd count of digits
  EXPECT_TRUE(damaged(hex + 48, 1, u""));   // the line's bracket is gone
  EXPECT_TRUE(damaged(hex + 49, 0, u" "));  // a blank behind the bracket
  EXPECT_TRUE(damaged(good.find(u"(MORVA DATA"), 12, u"(morva data "));
}

TEST(ScanProgramText, RefusesMoreBytesThanARecordCanHave) {
  std::vector<unsigned char> bytes = RecordBytes(3, 4, 0, 96);
  ASSERT_EQ(bytes.size(), 4768u);
  const auto block = [&] {
    return u"(MORVA BEGIN 1)\r\n" + DataLines(bytes) + u"(MORVA CODE)\r\n(MORVA END 1)";
  };
  EXPECT_EQ(Scan(block()), Rows({{1, kKindSketch, false, u"", block()}}));
  bytes.push_back(0);
  EXPECT_EQ(Scan(block()), Rows({Bare(2, block())}));
}

TEST(ScanProgramText, RefusesTheOuterOfTwoNestedBlocksAndScansTheInner) {
  const std::u16string inner = SketchBlock(5, u"G1");
  const std::u16string outer = SketchBlock(4, inner);
  const std::size_t at = outer.find(inner);
  EXPECT_EQ(Scan(outer), Rows({Bare(6, outer.substr(0, at - 2)),
                               {5, kKindSketch, false, u"", inner},
                               Bare(7, u"(MORVA END 4)")}));
}

TEST(ScanProgramText, RefusesABlockWithABeginOfAnyCaseInItsCode) {
  const std::u16string text = SketchBlock(4, u"G0 (morva begin 9)");
  EXPECT_EQ(Scan(text), Rows({Bare(5, text)}));
  const std::u16string behind = SketchBlock(4, u"G0") + u" (morva begin 9)";
  EXPECT_FALSE(Scan(behind)[0].needsMarkers);
}

TEST(ScanProgramText, KeepsAnythingInsideAUserBlock) {
  const std::u16string block = UserBlock(2, SketchBlock(5, u"(SHAPE: SLOT)"));
  EXPECT_EQ(Scan(block), Rows({{2, kKindUserCode, false, u"User code", block}}));
}

TEST(ScanProgramText, ListsTwoBlocksWithOneId) {
  const std::u16string block = UserBlock(2, u"G0");
  const std::vector<Row> rows = Scan(block + u"\r\n" + block);
  ASSERT_EQ(rows.size(), 2u);
  EXPECT_EQ(rows[0].id, 2);
  EXPECT_EQ(rows[1].id, 2);
  EXPECT_EQ(CountFeatures(2), 2);
  EXPECT_EQ(FindFeature(2), 0);
  EXPECT_EQ(CountFeatures(9), 0);
  EXPECT_EQ(FindFeature(9), -1);
}

TEST(ScanProgramText, CutsANameAtNinetyFiveUnitsAndAtItsBracket) {
  EXPECT_EQ(Scan(UserBlock(1, u"G0", std::u16string(95, u'n')))[0].name, std::u16string(95, u'n'));
  EXPECT_EQ(Scan(UserBlock(1, u"G0", std::u16string(96, u'n')))[0].name, std::u16string(95, u'n'));
  EXPECT_EQ(Scan(UserBlock(1, u"G0", u"One) two"))[0].name, u"One");
  EXPECT_EQ(Scan(u"(MORVA TEXT 1)\r\n(MORVA NAME One\r\nG0\r\n(MORVA END 1)")[0].name, u"One");
  EXPECT_EQ(Scan(u"(MORVA TEXT 1)\r\n\r\n(MORVA NAME Late)\r\n(MORVA END 1)")[0].name, u"Late");
  EXPECT_EQ(Scan(u"(MORVA TEXT 1)\r\nG0\r\n(MORVA NAME No)\r\n(MORVA END 1)")[0].name, u"");
}

TEST(ScanProgramText, TakesALegacyBlockAndLeavesTheEndOfTheProgramOut) {
  EXPECT_EQ(Scan(u"(SHAPE: SLOT)\r\nG0 X1\r\nG1 Y2\r\nM30\r\n%\r\n"),
            Rows({{2, 0, true, u"(SHAPE: SLOT) [text]", u"(SHAPE: SLOT)\r\nG0 X1\r\nG1 Y2"},
                  Bare(1, u"M30")}));
  EXPECT_EQ(Scan(u"(SHAPE: SLOT)\r\nG0\r\n%\r\nM30"),
            Rows({{2, 0, true, u"(SHAPE: SLOT) [text]", u"(SHAPE: SLOT)\r\nG0"}, Bare(1, u"M30")}));
}

TEST(ScanProgramText, KnowsTheEightLegacyLabels) {
  for (const std::u16string label :
       {u"(CIRCULAR PATTERN)", u"(CUSTOM SHAPE EDITOR)", u"(PLATE TEMPLATE MAKER)",
        u"(RECTANGULAR PATTERN)", u"(MACRO: PECK)", u"(SAVED CUSTOM SHAPE: A)", u"(SHAPE:)",
        u"(WIZARD: FACE", u"(CIRCULAR PATTERN) AND MORE"}) {
    EXPECT_EQ(Scan(label + u"\r\nG0"), Rows({{1, 0, true, label + u" [text]", label + u"\r\nG0"}}));
  }
  for (const std::u16string line :
       {u"(CIRCULAR PATTERN 2)", u"(Shape: A)", u" (SHAPE: A)", u"(WIZARD A)", u"G0 (SHAPE: A)"}) {
    const std::vector<Row> rows = Scan(line);
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].kind, kKindUserCode);
  }
}

TEST(ScanProgramText, StepsOverBlankLinesBehindALegacyLabelButStopsAtLaterOnes) {
  EXPECT_EQ(Scan(u"(WIZARD: FACE)\r\n\r\n\r\nG0\r\n\r\nG1"),
            Rows({{2, 0, true, u"(WIZARD: FACE) [text]", u"(WIZARD: FACE)\r\n\r\n\r\nG0"},
                  Bare(1, u"G1")}));
  // A line of blanks only is not empty.
  EXPECT_EQ(Scan(u"(WIZARD: FACE)\nG0\n \nG1").size(), 1u);
}

TEST(ScanProgramText, StopsALegacyBlockAtTheLineStartOnly) {
  EXPECT_EQ(Scan(u"(SHAPE: A)\r\nG0\r\nM300")[0].text, u"(SHAPE: A)\r\nG0");
  EXPECT_EQ(Scan(u"(SHAPE: A)\r\nG0\r\nm30")[0].text, u"(SHAPE: A)\r\nG0\r\nm30");
  EXPECT_EQ(Scan(u"(SHAPE: A)\r\nG0\r\nN5 M30")[0].text, u"(SHAPE: A)\r\nG0\r\nN5 M30");
  EXPECT_EQ(Scan(u"(SHAPE: A)\r\nG0\r\n(MORVA X)")[0].text, u"(SHAPE: A)\r\nG0");
  EXPECT_EQ(Scan(u"(SHAPE: A)\r\n%")[0].text, u"(SHAPE: A)");
  EXPECT_EQ(Scan(u"(SHAPE: A)\r\nG0\r\n(SHAPE: B)\r\nG1").size(), 1u);
}

TEST(ScanProgramText, GoesOnWithTheLineThatStopsALegacyBlock) {
  const std::u16string user = UserBlock(4, u"G1");
  EXPECT_EQ(Scan(u"(SHAPE: A)\r\nG0\r\n" + user),
            Rows({{5, 0, true, u"(SHAPE: A) [text]", u"(SHAPE: A)\r\nG0"},
                  {4, kKindUserCode, false, u"User code", user}}));
}

TEST(ScanProgramText, CutsALegacyNameAtSeventyFourUnits) {
  const std::u16string label = u"(SHAPE: " + std::u16string(90, u'A') + u")";
  const std::vector<Row> rows = Scan(label);
  ASSERT_EQ(rows.size(), 1u);
  EXPECT_EQ(rows[0].name, label.substr(0, 74) + u" [text]");
}

TEST(ScanProgramText, NumbersGapsFirstAndLegacyBlocksBehindThem) {
  EXPECT_EQ(Scan(u"G0\r\n(SHAPE: A)\r\nG1\r\n\r\nG2\r\n(SHAPE: B)\r\nG3\r\n\r\nG4"),
            Rows({Bare(1, u"G0"),
                  {4, 0, true, u"(SHAPE: A) [text]", u"(SHAPE: A)\r\nG1"},
                  Bare(2, u"G2"),
                  {5, 0, true, u"(SHAPE: B) [text]", u"(SHAPE: B)\r\nG3"},
                  Bare(3, u"G4")}));
  EXPECT_EQ(features.nextId, 6);
}

TEST(ScanProgramText, TrimsBlanksAndPercentsAroundForeignText) {
  EXPECT_EQ(Scan(u"%\r\n\t O1000 (50%)\r\nG0 % \r\n%"), Rows({Bare(1, u"O1000 (50%)\r\nG0")}));
}

TEST(ScanProgramText, EndsTheTextAtTheFirstNul) {
  const std::u16string text = u"G0" + std::u16string(1, u'\0') + u"G1\r\n(MORVA END 9)";
  EXPECT_EQ(Scan(text), Rows({Bare(1, u"G0")}));
  const std::u16string cut = u"(MORVA TEXT 1)\r\nG0" + std::u16string(1, u'\0') + u"(MORVA END 1)";
  EXPECT_EQ(Scan(cut), Rows({Bare(2, u"(MORVA TEXT 1)\r\nG0")}));
}

TEST(ScanProgramText, TakesLinesWithAnyLineEnd) {
  for (const std::u16string end : {u"\n", u"\r", u"\r\n", u"\n\r"}) {
    const std::u16string block =
        u"(MORVA TEXT 1)" + end + u"(MORVA NAME N)" + end + u"G0" + end + u"(MORVA END 1)";
    EXPECT_EQ(Scan(u"G9" + end + block + end + u"G8"),
              Rows({Bare(2, u"G9"), {1, kKindUserCode, false, u"N", block}, Bare(3, u"G8")}));
  }
}

TEST(ScanProgramText, StopsAtOneHundredAndTwentyEightMarkedBlocks) {
  std::u16string text = u"G0\r\n";
  for (int i = 1; i <= 129; ++i) text += UserBlock(i, u"G1") + u"\r\n";
  const std::vector<Row> rows = Scan(text);
  ASSERT_EQ(rows.size(), 128u);
  for (int i = 0; i < 128; ++i) {
    EXPECT_EQ(rows[static_cast<std::size_t>(i)].id, i + 1);
    EXPECT_FALSE(rows[static_cast<std::size_t>(i)].needsMarkers);
  }
}

TEST(ScanProgramText, FillsTheFirstGapsWhileTheTableHasRoom) {
  // 126 blocks with a word in front of each and one behind: two gaps get in.
  std::u16string text;
  for (int i = 1; i <= 126; ++i) text += u"G0\r\n" + UserBlock(i, u"G1") + u"\r\n";
  const std::vector<Row> rows = Scan(text + u"M30");
  ASSERT_EQ(rows.size(), 128u);
  EXPECT_EQ(rows[0], Bare(127, u"G0"));
  EXPECT_EQ(rows[1].id, 1);
  EXPECT_EQ(rows[2], Bare(128, u"G0"));
  EXPECT_EQ(rows[3].id, 2);
  EXPECT_EQ(rows[4].id, 3);
  EXPECT_EQ(rows[127].id, 126);
}

TEST(ScanProgramText, ClearsSettingsThatARowHadBefore) {
  std::vector<unsigned char> bytes = RecordBytes(3, 5, 2, 96);
  Scan(u"(MORVA BEGIN 1)\r\n" + DataLines(bytes) + u"(MORVA CODE)\r\n(MORVA END 1)");
  ASSERT_EQ(features.rows[0].settings.itemCount, 96);
  Scan(u"G0");
  const FeatureSettings& s = features.rows[0].settings;
  EXPECT_EQ(s.kind, kKindUserCode);
  EXPECT_EQ(s.version, 0);
  EXPECT_EQ(s.a, 0);
  EXPECT_EQ(s.itemCount, 0);
}

TEST(ScanProgramText, GivesOutNoNumberThatAnyEndInTheTextHas) {
  EXPECT_EQ(Scan(u"G0 (morva end 1) G1"), Rows({Bare(2, u"G0 (morva end 1) G1")}));
  EXPECT_EQ(Scan(u"(SHAPE: A) (Morva End 1)\r\n(morva end 2)\r\n\r\nG1")[0].id, 4);
  const std::u16string high = UserBlock(1999999999, u"G0");
  EXPECT_EQ(Scan(high + u"\r\nG1 (MORVA END 2000000000)")[1].id, 2000000001);
}

TEST(NextTableId, StaysANumberBehindTheLargestOfAll) {
  Scan(UserBlock(2147483647, u"G0") + u"\r\n" + UserBlock(3, u"G0"));
  ASSERT_EQ(features.count, 2);
  EXPECT_EQ(NextTableId(), 4);
}

TEST(NextTableId, CountsTheTableAndNotStrayMarkers) {
  Scan(UserBlock(4, u"(MORVA END 90)"));
  EXPECT_EQ(NextTableId(), 5);
  EXPECT_EQ(features.nextId, 91);
}

TEST(CodeHash, AgreesWithThePublishedVectorsForPlainText) {
  // The hash of 16-bit units below 256 is the byte hash of the same characters.
  EXPECT_EQ(CodeHash(u""), 0x811C9DC5u);
  EXPECT_EQ(CodeHash(u"a"), 0xE40C292Cu);
  EXPECT_EQ(CodeHash(u"foobar"), 0xBF9CF968u);
}

TEST(CodeHash, TakesWholeUnits) {
  // (0x811C9DC5 xor 0x2014) times 16777619 modulo 2 to the 32nd, worked out apart.
  EXPECT_EQ(CodeHash(u"\u2014"), 0x113ED003u);
}

TEST(CodeHash, SkipsTabLineEndsAndBlanksOnly) {
  EXPECT_EQ(CodeHash(u"\r\n f\too \r b\nar\t"), CodeHash(u"foobar"));
  EXPECT_EQ(CodeHash(u" \t\r\n"), 0x811C9DC5u);
  EXPECT_NE(CodeHash(u"foo\u00A0bar"), CodeHash(u"foobar"));
  EXPECT_NE(CodeHash(u"foo\vbar"), CodeHash(u"foobar"));
}

bool FirstHoldsDisabled(std::u16string_view text) {
  ScanProgramText(text);
  return features.count > 0 && features.rows[0].holdsDisabled;
}

TEST(ScanProgramText, TellsInWhichBlocksAnExclusionStandsInAnyCase) {
  EXPECT_TRUE(FirstHoldsDisabled(UserBlock(3, u"G0 (Morva disabled 4) G1")));
  EXPECT_TRUE(FirstHoldsDisabled(u"G0 (MORVA DISABLED 4"));
  EXPECT_FALSE(FirstHoldsDisabled(u"G0 (MORVA DISABLED"));
  EXPECT_FALSE(FirstHoldsDisabled(UserBlock(3, u"(MORVA DISABLED)")));
  ScanProgramText(UserBlock(3, u"G0") + u"\r\nG1\r\n" + UserBlock(4, u"(MORVA DISABLED 4)") +
                  u"\r\nG2");
  ASSERT_EQ(features.count, 4);
  for (int i = 0; i < features.count; ++i) EXPECT_EQ(features.rows[i].holdsDisabled, i == 2) << i;
}

TEST(ScanProgramText, FindsMarkersAtEveryPlaceOfTheStride) {
  for (std::size_t pad = 0; pad < 40; ++pad) {
    const std::u16string before = std::u16string(pad, u'x') + u"\r\n";
    const std::u16string block = UserBlock(3, u"G0 X1");
    Rows rows{{3, kKindUserCode, false, u"User code", block}};
    if (pad > 0) rows.insert(rows.begin(), Bare(4, std::u16string(pad, u'x')));
    EXPECT_EQ(Scan(before + block + u"\r\n"), rows);
  }
}

TEST(ScanProgramText, EndsAtANulAtEveryPlaceOfTheStride) {
  const std::u16string block = UserBlock(3, u"G0");
  for (std::size_t pad = 1; pad < 40; ++pad) {
    std::u16string text(pad, u'x');
    text += u'\0';
    text += u"\r\n" + block;
    EXPECT_EQ(Scan(text), Rows({Bare(1, std::u16string(pad, u'x'))})) << pad;
  }
  // A marker that a NUL parts is none.
  for (std::size_t at = 1; at < block.size(); ++at) {
    std::u16string text = block;
    text[at] = 0;
    for (const Row& row : Scan(text)) EXPECT_TRUE(row.needsMarkers) << at;
  }
}

TEST(MapTextOffset, CountsACrLfOnceAndOthersAsTheyStand) {
  const std::u16string text = u"AB\r\n\r\nC\nD\rE\r\n";
  // Worked out by hand, index by index; an index inside a pair stands behind its line end.
  const int expected[] = {0, 1, 2, 3, 3, 4, 4, 5, 6, 7, 8, 9, 10, 10};
  ASSERT_EQ(text.size(), 13u);
  for (int i = 0; i <= 13; ++i) EXPECT_EQ(MapTextOffset(text, i), expected[i]) << i;
  OffsetMap map{text};
  for (int i = 0; i <= 13; ++i) EXPECT_EQ(AdvanceOffset(map, i), expected[i]) << i;
}

TEST(MapTextOffset, GoesBackThroughTextIndexOf) {
  const std::u16string text = u"AB\r\n\r\nC\nD\rE\r\n";
  const int expected[] = {0, 1, 2, 4, 6, 7, 8, 9, 10, 11, 13};
  for (int i = 0; i <= 10; ++i) EXPECT_EQ(TextIndexOf(text, i), expected[i]) << i;
  EXPECT_EQ(TextIndexOf(text, 99), 13);
  EXPECT_EQ(TextIndexOf(text, -1), 0);
}

TEST(SettingsBlockText, WritesTwentyFourBytesALineAndAShorterLast) {
  auto settings = std::make_unique<FeatureSettings>();
  settings->version = 3;
  settings->kind = kKindSketch;
  settings->codeHash = 0xE40C292C;
  const std::u16string zeros48(48, u'0');
  const std::u16string zeroLine = u"(MORVA DATA " + zeros48 + u")\r\n";
  // 160 bytes: one line with the head's start, five of zeros, 16 bytes in the last.
  EXPECT_EQ(SettingsBlockText(7, u"", *settings, u"\r\nG0 X1\r\n"),
            u"(MORVA BEGIN 7)\r\n"
            u"(MORVA DATA 030000000400000000000000000000000000000000000000)\r\n"
            u"(MORVA DATA 000000002C290CE400000000000000000000000000000000)\r\n" +
                zeroLine + zeroLine + zeroLine + zeroLine + u"(MORVA DATA " +
                std::u16string(32, u'0') +
                u")\r\n"
                u"(MORVA CODE)\r\n\r\nG0 X1\r\n\r\n(MORVA END 7)");
}

TEST(SettingsBlockText, PutsANameBehindTheBegin) {
  auto settings = std::make_unique<FeatureSettings>();
  const std::u16string text = SettingsBlockText(7, u"Top face", *settings, u"G0");
  EXPECT_EQ(text.substr(0, 55), u"(MORVA BEGIN 7)\r\n(MORVA NAME Top face)\r\n(MORVA DATA 000");
}

TEST(SettingsBlockText, IsReadBackByTheScan) {
  auto settings = std::make_unique<FeatureSettings>();
  settings->version = 3;
  settings->kind = kKindSketch;
  settings->itemCount = 96;
  for (int i = 0; i < 96; ++i) settings->items[i] = {i % 6, i, 0.1 * i, -i / 3.0, 2.0 * i, 1.0, -9};
  settings->values[3] = 1.0 / 3.0;
  const std::u16string block = SettingsBlockText(31, u"All", *settings, u"G0 X1\r\n");
  EXPECT_EQ(Scan(u"M1\r\n" + block + u"\r\nM2"),
            Rows({Bare(32, u"M1"), {31, kKindSketch, false, u"All", block}, Bare(33, u"M2")}));
  const FeatureSettings& back = features.rows[1].settings;
  EXPECT_EQ(back.values[3], 1.0 / 3.0);
  EXPECT_EQ(back.items[95].p1, -95 / 3.0);
  EXPECT_EQ(back.items[95].tag, 95);
}

}  // namespace
}  // namespace morva
