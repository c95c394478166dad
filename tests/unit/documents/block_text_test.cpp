// The parts of one block: where its name goes, whether its code is in the program, and where the
// stored code comes back.

#include "documents/block_text.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "documents/feature_blocks.h"
#include "unit/documents/block_builder.h"

namespace {

using namespace morva;
using morva::testing_blocks::SketchBlock;
using View = std::u16string_view;

constexpr View kText = u"(MORVA TEXT 1)\r\n";
constexpr View kName = u"(MORVA NAME n)\r\n";
constexpr View kEnd = u"(MORVA END 1)";
constexpr View kOff = u"(MORVA DISABLED 7)\r\n";

const FeatureRecord& FirstRow(View text) {
  ScanProgramText(text);
  EXPECT_GE(features.count, 1);
  return features.rows[0];
}

std::u16string Block(std::u16string_view code) {
  return std::u16string(kText) + std::u16string(kName) + std::u16string(code) +
         std::u16string(kEnd);
}

Inclusion Of(const std::u16string& text) { return InclusionOf(text, FirstRow(text)); }

TEST(NameLine, GoesWhereTheNextLineByTheScanIs) {
  struct {
    const char16_t* before;
    const char16_t* after;
  } cases[] = {
      {u"(MORVA TEXT 1)\r\nG0\r\n(MORVA END 1)", u"(MORVA TEXT 1)\r\n|G0\r\n(MORVA END 1)"},
      {u"(MORVA TEXT 1)\r\n\r\n\r\nG0\r\n(MORVA END 1)",
       u"(MORVA TEXT 1)\r\n\r\n\r\n|G0\r\n(MORVA END 1)"},
      {u"(MORVA TEXT 1)\n\r\nG0\n(MORVA END 1)", u"(MORVA TEXT 1)\n\r\n|G0\n(MORVA END 1)"},
      {u"(MORVA TEXT 1)\r\n\r\n(MORVA END 1)", u"(MORVA TEXT 1)\r\n\r\n|(MORVA END 1)"},
      {u"(MORVA TEXT 1)\r\n\r\n  G0\r\n(MORVA END 1)",
       u"(MORVA TEXT 1)\r\n\r\n|  G0\r\n(MORVA END 1)"},
  };
  for (const auto& c : cases) {
    std::u16string text = c.before;
    std::int32_t from = 0;
    std::int32_t to = 0;
    ASSERT_TRUE(FindNameLine(text, FirstRow(text), from, to));
    EXPECT_EQ(from, to);
    EXPECT_EQ(text.insert(static_cast<std::size_t>(from), u"|"), c.after);
  }
}

TEST(NameLine, IsReplacedWithOneLineEndWhereverItStands) {
  const std::u16string text = u"(MORVA TEXT 1)\r\n\r\n(MORVA NAME old)\r\n\r\nG0\r\n(MORVA END 1)";
  std::int32_t from = 0;
  std::int32_t to = 0;
  ASSERT_TRUE(FindNameLine(text, FirstRow(text), from, to));
  EXPECT_EQ(text.substr(static_cast<std::size_t>(from), static_cast<std::size_t>(to - from)),
            u"(MORVA NAME old)\r\n");
}

TEST(NameLine, LeavesTheCodeBehindTheNameWhereItStands) {
  for (const char16_t* tail : {u"G0 X1\r\n", u" G0 X1\r\n"}) {
    const std::u16string text =
        u"(MORVA TEXT 1)\r\n(MORVA NAME old)" + std::u16string(tail) + u"(MORVA END 1)";
    std::int32_t from = 0;
    std::int32_t to = 0;
    ASSERT_TRUE(FindNameLine(text, FirstRow(text), from, to));
    EXPECT_EQ(text.substr(static_cast<std::size_t>(from), static_cast<std::size_t>(to - from)),
              u"(MORVA NAME old)");
  }
}

TEST(NameLine, HasNoPlaceInABlockOfOneLine) {
  const std::u16string text = u"(MORVA TEXT 1) G0 (MORVA END 1)\r\nM8";
  std::int32_t from = 0;
  std::int32_t to = 0;
  EXPECT_FALSE(FindNameLine(text, FirstRow(text), from, to));
}

TEST(BlockInclusion, IsOnWithoutADisabledLine) {
  EXPECT_EQ(Of(Block(u"G0\r\n")), Inclusion::On);
  EXPECT_EQ(Of(Block(u"")), Inclusion::On);
}

TEST(BlockInclusion, IsOffWhereNothingButBlanksStandsBesideTheLine) {
  for (const char16_t* code :
       {u"(MORVA DISABLED 7)\r\n", u"\r\n(MORVA DISABLED 7)\r\n\r\n", u"  (MORVA DISABLED 7) \t",
        u"(morva disabled 7)\r\n", u"(MORVA DISABLED 7)\r\n(MORVA DISABLED 8)\r\n",
        u"(MORVA DISABLED 7\r\n"}) {
    EXPECT_EQ(Of(Block(code)), Inclusion::Off);
  }
  const std::u16string sketch = SketchBlock(1, u"(MORVA DISABLED 7)\r\n");
  EXPECT_EQ(Of(sketch), Inclusion::Off);
}

TEST(BlockInclusion, HasCodeWhereAnythingStandsBesideTheLine) {
  for (const char16_t* code :
       {u"(MORVA DISABLED 7)\r\nG0 X1\r\n", u"M8\r\n(MORVA DISABLED 7)\r\n",
        u"(MORVA DISABLED 7) M8\r\n", u"M8 (MORVA DISABLED 7)\r\n", u"(MORVA DISABLED 7)\r\n/M8",
        u"(MORVA DISABLED 7)\r\n(note)\r\n", u"(MORVA DISABLED 7)\r\n%\r\n"}) {
    EXPECT_EQ(Of(Block(code)), Inclusion::OffHasCode);
    const std::u16string sketch = SketchBlock(1, code);
    EXPECT_EQ(Of(sketch), Inclusion::OffHasCode);
  }
}

// A block ends at the END of its number, what is swapped at the first one of any.
TEST(BlockInclusion, HasCodeWhereItStandsBehindAnotherEnd) {
  EXPECT_EQ(Of(Block(u"(MORVA DISABLED 7)\r\n(MORVA END 3)\r\nM8\r\n")), Inclusion::OffHasCode);
}

// What shares a line with the opening or the name is never swapped.
TEST(BlockInclusion, HasCodeWhereItStandsOnAMarkersLine) {
  const std::u16string rest = u"(MORVA DISABLED 7)\r\n(MORVA END 1)";
  EXPECT_EQ(Of(u"(MORVA TEXT 1) G0 X9\r\n(MORVA NAME n)\r\n" + rest), Inclusion::OffHasCode);
  EXPECT_EQ(Of(u"(MORVA TEXT 1)\r\n(MORVA NAME n)G0 X9\r\n" + rest), Inclusion::OffHasCode);
  EXPECT_EQ(Of(u"(MORVA TEXT 1) (note)\r\n(MORVA NAME n) ;G0\r\n" + rest), Inclusion::Off);
  std::u16string sketch = SketchBlock(1, u"(MORVA DISABLED 7)\r\n");
  sketch.insert(sketch.find(u')') + 1, u"G0 X9");
  EXPECT_EQ(Of(sketch), Inclusion::OffHasCode);
}

// What the block's code is once its stored code is back.
std::u16string Included(View code, View stored) {
  std::u16string text = Block(code);
  std::int32_t from = 0;
  std::int32_t to = 0;
  EXPECT_TRUE(FindIncludeSpan(text, FirstRow(text), from, to));
  DisabledMarker marker;
  EXPECT_TRUE(FindDisabledMarker(text, from, to, marker));
  EXPECT_EQ(marker.number, 7);
  text.replace(static_cast<std::size_t>(marker.from),
               static_cast<std::size_t>(marker.to - marker.from), CodeForMarker(marker, stored));
  const std::size_t front = kText.size() + kName.size();
  return text.substr(front, text.size() - front - kEnd.size());
}

TEST(BlockInclusion, TheStoredCodeTakesThePlaceOfItsLineAlone) {
  EXPECT_EQ(Included(kOff, u"G1\r\n"), u"G1\r\n");
  EXPECT_EQ(Included(kOff, u"G1"), u"G1");
  EXPECT_EQ(Included(kOff, u""), u"");
  EXPECT_EQ(Included(u"(MORVA DISABLED 7)\r\nM8\r\n", u"G1\r\n"), u"G1\r\nM8\r\n");
  EXPECT_EQ(Included(u"M8\r\n(MORVA DISABLED 7)\r\nM9\r\n", u"G1\r\n"), u"M8\r\nG1\r\nM9\r\n");
  EXPECT_EQ(Included(u"\r\n  (MORVA DISABLED 7)\t\r\n\r\nM9\r\n", u"G1\r\n"),
            u"\r\nG1\r\n\r\nM9\r\n");
}

TEST(BlockInclusion, TheStoredCodeNeverSharesALineWithOtherCode) {
  EXPECT_EQ(Included(u"(MORVA DISABLED 7)\r\nM8\r\n", u"G1"), u"G1\r\nM8\r\n");
  EXPECT_EQ(Included(u"(MORVA DISABLED 7) M8\r\n", u"G1\r\n"), u"G1\r\n M8\r\n");
  EXPECT_EQ(Included(u"M8 (MORVA DISABLED 7)\r\n", u"G1\r\n"), u"M8 \r\nG1\r\n");
  EXPECT_EQ(Included(u"M8(MORVA DISABLED 7)M9\r\n", u"G1"), u"M8\r\nG1\r\nM9\r\n");
  EXPECT_EQ(Included(u"(MORVA DISABLED 7)M9", u"G1"), u"G1\r\nM9");
}

TEST(BlockInclusion, AMarkerInLowerCaseIsNotSwapped) {
  const std::u16string text = Block(u"(morva disabled 7)\r\n");
  std::int32_t from = 0;
  std::int32_t to = 0;
  ASSERT_TRUE(FindIncludeSpan(text, FirstRow(text), from, to));
  DisabledMarker marker;
  EXPECT_FALSE(FindDisabledMarker(text, from, to, marker));
}

}  // namespace
