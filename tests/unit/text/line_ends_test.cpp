#include "text/line_ends.h"

#include <gtest/gtest.h>

#include <string>

namespace morva {
namespace {

TEST(LineEnds, AreFoundAtEveryPlaceAndFromEveryPlace) {
  for (std::size_t length = 0; length < 70; ++length) {
    for (std::size_t end = 0; end <= length; ++end) {
      for (const char16_t unit : {u'\r', u'\n'}) {
        std::u16string text(length, u'\x0D0A');  // neither, though its bytes are
        if (end < length) text[end] = unit;
        for (std::size_t from = 0; from <= length; from += 5) {
          EXPECT_EQ(FindLineEnd(text, from), from <= end ? end : length);
        }
      }
    }
  }
}

TEST(LineEnds, TheNearestOneCounts) {
  const std::u16string text = u"0123456789\r\n23456\n89\r";
  EXPECT_EQ(FindLineEnd(text, 0), 10u);
  EXPECT_EQ(FindLineEnd(text, 11), 11u);
  EXPECT_EQ(FindLineEnd(text, 12), 17u);
  EXPECT_EQ(FindLineEnd(text, 18), 20u);
  EXPECT_EQ(FindLineEnd(text, 21), 21u);
}

}  // namespace
}  // namespace morva
