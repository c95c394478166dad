#include "text/codetext.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace morva {
namespace {

std::u16string Fixed(double value, int decimals, int capacity = 64) {
  std::u16string buffer(static_cast<std::size_t>(capacity), u'#');
  FormatFixed(value, decimals, buffer.data(), capacity);
  return std::u16string(buffer.c_str());
}

TEST(ParseDecimal, ReadsSignBlanksDigitsAndFraction) {
  EXPECT_EQ(ParseDecimal(u"  +12.50", 9), 12.5);
  EXPECT_EQ(ParseDecimal(u"\t-.5", 9), -0.5);
  EXPECT_EQ(ParseDecimal(u".5", 9), 0.5);
  EXPECT_EQ(ParseDecimal(u"5.", 9), 5.0);
}

TEST(ParseDecimal, IgnoresWhatFollowsTheNumber) {
  EXPECT_EQ(ParseDecimal(u"12abc", 9), 12.0);
  EXPECT_EQ(ParseDecimal(u"1e3", 9), 1.0);
  EXPECT_EQ(ParseDecimal(u"1,5", 9), 1.0);
}

TEST(ParseDecimal, GivesTheFallbackWithoutANumber) {
  for (const char16_t* text : {u"", u".", u"-", u"abc", u"- 5", u"+-5", u"\r\n5", u"-.", u"\n5"}) {
    EXPECT_EQ(ParseDecimal(text, 9), 9.0);
  }
}

TEST(ParseDecimal, SumsTheFractionIntoOneRunningValue) {
  // By the rule: digit times place, the place multiplied by 0.1 each time.
  EXPECT_EQ(ParseDecimal(u"0.3", 0), 3.0 * 0.1);
  const double second = 0.1 * 0.1;
  EXPECT_EQ(ParseDecimal(u"5.15", 0), (5.0 + 1.0 * 0.1) + 5.0 * second);
  EXPECT_EQ(ParseDecimal(u"0.375", 0), 0.37500000000000006);
  EXPECT_GT(ParseDecimal(u"0.000001", 0), 1e-6);
}

TEST(ParseInteger, TakesMinusOnlyAndStopsAtTheFirstOtherCharacter) {
  EXPECT_EQ(ParseInteger(u"+7", 5), 5);
  EXPECT_EQ(ParseInteger(u"-7", 5), -7);
  EXPECT_EQ(ParseInteger(u" 7x", 5), 7);
  EXPECT_EQ(ParseInteger(u"12.7", 5), 12);
  EXPECT_EQ(ParseInteger(u"0x10", 5), 0);
  EXPECT_EQ(ParseInteger(u"\n7", 5), 5);
  EXPECT_EQ(ParseInteger(u"", 5), 5);
  EXPECT_EQ(ParseInteger(u"-", 5), 5);
}

TEST(ParseInteger, WrapsAt32Bits) {
  EXPECT_EQ(ParseInteger(u"4294967297", 5), 1);  // 2^32 + 1
  EXPECT_EQ(ParseInteger(u"2147483648", 5), std::numeric_limits<std::int32_t>::min());
}

TEST(FormatFixed, RoundsHalfAwayFromZeroOnTheMagnitude) {
  EXPECT_EQ(Fixed(0.0005, 3), u"0.001");
  EXPECT_EQ(Fixed(0.0625, 3), u"0.063");
  EXPECT_EQ(Fixed(0.125, 2), u"0.13");
  EXPECT_EQ(Fixed(2.5, 0), u"3");
  EXPECT_EQ(Fixed(-2.5, 0), u"-3");
  EXPECT_EQ(Fixed(ParseDecimal(u"1.4655", 0), 3), u"1.465");
}

TEST(FormatFixed, KeepsTheMinusOfAValueThatRoundsToZeroButNotOfNegativeZero) {
  EXPECT_EQ(Fixed(-0.0004, 3), u"-0.000");
  EXPECT_EQ(Fixed(-0.0, 3), u"0.000");
}

TEST(FormatFixed, AlwaysPrintsTheFullCountOfDecimals) {
  EXPECT_EQ(Fixed(2, 0), u"2");
  EXPECT_EQ(Fixed(1, 9), u"1.000000");
  EXPECT_EQ(Fixed(1, -1), u"1.000000");
  EXPECT_EQ(Fixed(0.5, 3), u"0.500");
  EXPECT_EQ(Fixed(12.34, 5), u"12.34000");
}

TEST(FormatFixed, SaturatesWhatASixtyFourBitProductCannotHold) {
  EXPECT_EQ(Fixed(1e300, 0), u"9223372036854775807");
  EXPECT_EQ(Fixed(std::numeric_limits<double>::infinity(), 3), u"9223372036854775.807");
  EXPECT_EQ(Fixed(-std::numeric_limits<double>::infinity(), 3), u"-9223372036854775.807");
  EXPECT_EQ(Fixed(std::nan(""), 0), u"9223372036854775807");
}

TEST(FormatFixed, StopsAtTheCapacityAndLosesTheLowEnd) {
  EXPECT_EQ(Fixed(12345.678, 3, 5), u"1234");
  EXPECT_EQ(Fixed(12345.678, 3, 1), u"");
}

TEST(AppendBounded, LeavesAFullBufferUnchanged) {
  char16_t buffer[4] = {u'a', u'b', u'c', 0};
  AppendBounded(buffer, 4, u"d");
  EXPECT_EQ(std::u16string(buffer), u"abc");
  char16_t full[3] = {u'a', u'b', u'c'};  // no terminator inside the capacity
  AppendBounded(full, 3, u"d");
  EXPECT_EQ(full[2], u'c');
}

TEST(AppendBounded, CutsWhatDoesNotFit) {
  char16_t buffer[5] = {u'a', 0};
  AppendBounded(buffer, 5, u"bcdef");
  EXPECT_EQ(std::u16string(buffer), u"abcd");
}

TEST(AppendLine, LeavesALoneCarriageReturnWhereOneUnitIsFree) {
  char16_t buffer[4] = {u'a', u'b', 0};
  AppendLine(buffer, 4, nullptr);
  EXPECT_EQ(std::u16string(buffer), u"ab\r");
  char16_t room[8] = {};
  AppendLine(room, 8, u"G0");
  EXPECT_EQ(std::u16string(room), u"G0\r\n");
  AppendLine(nullptr, 8, u"G0");
}

TEST(AppendLabel, PutsTheNumberBehindItsLabel) {
  char16_t buffer[32] = {};
  AppendLabelNumber(buffer, 32, u"X", -1.5, 3);
  AppendLabelInteger(buffer, 32, u" T", -12);
  EXPECT_EQ(std::u16string(buffer), u"X-1.500 T-12");
}

TEST(IntegerText, PrintsTheWholeRange) {
  EXPECT_EQ(IntegerText(0), u"0");
  EXPECT_EQ(IntegerText(std::numeric_limits<std::int32_t>::min()), u"-2147483648");
  EXPECT_EQ(IntegerText(std::numeric_limits<std::int64_t>::min()), u"-9223372036854775808");
}

TEST(AngleDegrees, KnowsTheAxesAndTheZeroVector) {
  EXPECT_EQ(AngleDegrees(0, 0), 0);
  EXPECT_EQ(AngleDegrees(1, 0), 90);
  EXPECT_EQ(AngleDegrees(-1, 0), -90);
  EXPECT_DOUBLE_EQ(AngleDegrees(0, -1), 180);
  EXPECT_LT(AngleDegrees(-0.5, -1), 0);
}

TEST(AngleDegrees, AgreesWithTheLibraryArcTangentToThreeDecimalsAndBetter) {
  for (int i = 1; i < 720; ++i) {
    const double a = static_cast<double>(i) * 0.5 * 3.14159265358979323846 / 180.0;
    const double wanted = std::atan2(std::sin(a), std::cos(a)) * 180.0 / 3.14159265358979323846;
    EXPECT_NEAR(AngleDegrees(std::sin(a), std::cos(a)), wanted, 1e-9) << i;
  }
}

TEST(FindFolded, IgnoresTheCaseOfAToZOnly) {
  EXPECT_EQ(FindFolded(u"x(morva END 5)", u"(MORVA end 5)", 0), 1u);
  EXPECT_EQ(FindFolded(u"\u00e9", u"\u00c9", 0), std::u16string_view::npos);
  EXPECT_EQ(FindFolded(u"abc", u"abcd", 0), std::u16string_view::npos);
}

}  // namespace
}  // namespace morva
