// The bounded program text.
#include "text/code_writer.h"

#include <gtest/gtest.h>

namespace morva {
namespace {

TEST(CodeWriter, EndsLinesWithCrLf) {
  CodeWriter out{u"", 40};
  Line(out, u"");
  Line(out, u"G90 G17");
  EXPECT_EQ(out.text, u"\r\nG90 G17\r\n");
  EXPECT_FALSE(out.full);
}

// 0.0625 rounds half up to 0.063; -0.0004 keeps its minus.
TEST(CodeWriter, WritesNumbersWithTheirDecimals) {
  CodeWriter out{u"", 40};
  Put(out, u"X", 0.0625, 3);
  Put(out, u" F", 12.5, 0);
  Put(out, u" Z", -0.0004, 3);
  PutInteger(out, u" N", -7);
  EXPECT_EQ(out.text, u"X0.063 F13 Z-0.000 N-7");
}

TEST(CodeWriter, KeepsWhatFitsAndTellsThatItIsFull) {
  CodeWriter out{u"", 5};
  Put(out, u"ABCDE");
  EXPECT_FALSE(out.full);
  Put(out, u"");
  EXPECT_FALSE(out.full);
  Put(out, u"F");
  EXPECT_TRUE(out.full);
  EXPECT_EQ(out.text, u"ABCDE");
}

TEST(CodeWriter, LeavesALoneCrWhereOneUnitIsLeft) {
  CodeWriter out{u"", 4};
  Line(out, u"G90");
  EXPECT_EQ(out.text, u"G90\r");
  EXPECT_TRUE(out.full);
}

TEST(CodeWriter, TakesNothingWithoutRoom) {
  CodeWriter out;
  Line(out, u"G90");
  EXPECT_EQ(out.text, u"");
  EXPECT_TRUE(out.full);
}

}  // namespace
}  // namespace morva
