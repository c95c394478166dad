// The strict rule of typed numbers: what is a number, and why something is none.
#include "text/strict_number.h"

#include <gtest/gtest.h>

#include <string>

namespace morva {
namespace {

constexpr StrictRule kSmall{.below = 100000, .units = 6, .blanksBehind = true};

Misread Why(std::u16string_view text, const StrictRule& rule = {}) {
  double value = -7;
  const Misread why = ReadStrict(text, rule, value);
  EXPECT_EQ(value == -7, why != Misread::None);
  return why;
}

TEST(StrictNumber, TakesASignDigitsAndOnePoint) {
  for (const char16_t* text : {u"4", u"+4", u"-4", u"5.", u".5", u"-.5", u"999999.9"}) {
    EXPECT_EQ(Why(text), Misread::None);
  }
  double value = 0;
  EXPECT_TRUE(ReadStrictNumber(u"-2.5", value));
  EXPECT_EQ(value, -2.5);
}

TEST(StrictNumber, SaysWhyATextIsNone) {
  EXPECT_EQ(Why(u""), Misread::Empty);
  for (const char16_t* text :
       {u" 4", u"4 ", u"4in", u"1,5", u"1e3", u"1.2.3", u"-", u".", u"+-5"}) {
    EXPECT_EQ(Why(text), Misread::NoNumber);
  }
  EXPECT_EQ(Why(u"1000000"), Misread::TooLarge);
  EXPECT_EQ(Why(u"-1000000"), Misread::TooLarge);
  EXPECT_EQ(Why(std::u16string(78, u'0')), Misread::None);
  EXPECT_EQ(Why(std::u16string(79, u'0')), Misread::TooLong);
}

TEST(StrictNumber, FollowsARuleOfItsOwn) {
  EXPECT_EQ(Why(u"4  ", kSmall), Misread::None);
  EXPECT_EQ(Why(u"   ", kSmall), Misread::Empty);
  EXPECT_EQ(Why(u"4 4", kSmall), Misread::NoNumber);
  EXPECT_EQ(Why(u"99999", kSmall), Misread::None);
  EXPECT_EQ(Why(u"100000", kSmall), Misread::TooLarge);
  EXPECT_EQ(Why(u"1.00000", kSmall), Misread::TooLong);
  EXPECT_EQ(Why(u"1.0000    ", kSmall), Misread::None);
}

}  // namespace
}  // namespace morva
