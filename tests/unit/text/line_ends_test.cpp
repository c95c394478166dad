#include "text/line_ends.h"

#include <gtest/gtest.h>

#include <iterator>
#include <random>
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

TEST(LineEnds, PairsAreCountedAsOneByOne) {
  std::mt19937 random(5);
  constexpr char16_t kUnits[] = {u'\r', u'\n', u'\n', u'x'};
  for (int round = 0; round < 300; ++round) {
    std::u16string text(random() % 120, u' ');
    for (char16_t& unit : text) unit = kUnits[random() % std::size(kUnits)];
    const std::size_t from = random() % (text.size() + 1);
    const std::size_t to = from + random() % (text.size() - from + 1);
    std::size_t pairs = 0;
    for (std::size_t at = from; at < to; ++at) {
      if (at > 0 && text[at] == u'\n' && text[at - 1] == u'\r') ++pairs;
    }
    ASSERT_EQ(CountPairs(text, from, to), pairs) << from << " " << to;
  }
}

// More of them than a sum of 16 bits holds.
TEST(LineEnds, ManyPairsAreCounted) {
  std::u16string text;
  for (int i = 0; i < 2000000; ++i) text += u"\r\n";
  EXPECT_EQ(CountPairs(text, 0, text.size()), 2000000u);
}

}  // namespace
}  // namespace morva
