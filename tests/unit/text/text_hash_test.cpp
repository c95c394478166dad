#include "text/text_hash.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <utility>

namespace morva {
namespace {

std::u16string RandomText(std::mt19937& random, std::size_t units) {
  std::u16string text(units, u' ');
  for (char16_t& unit : text) unit = static_cast<char16_t>(u'0' + random() % 10);
  return text;
}

TEST(TextHash, OfPiecesIsThatOfTheirText) {
  std::mt19937 random(3);
  for (int round = 0; round < 200; ++round) {
    const std::u16string text = RandomText(random, random() % 200);
    TextHash hash;
    for (std::size_t at = 0; at < text.size();) {
      const std::size_t units = random() % 40;
      AddText(hash, std::u16string_view(text).substr(at, units));
      at += units;
    }
    ASSERT_EQ(EndHash(hash), DigestOf(text));
  }
}

TEST(TextHash, TellsAChangeOfOneUnitAndAnExchangeOfTwo) {
  std::mt19937 random(4);
  for (std::size_t units = 1; units < 70; ++units) {
    const std::u16string text = RandomText(random, units);
    for (std::size_t at = 0; at < units; ++at) {
      std::u16string other = text;
      ++other[at];
      ASSERT_NE(DigestOf(other), DigestOf(text)) << units << " " << at;
      for (std::size_t with = 0; with < at; ++with) {
        other = text;
        std::swap(other[at], other[with]);
        ASSERT_EQ(DigestOf(other) == DigestOf(text), other == text) << units << " " << at;
      }
    }
  }
}

}  // namespace
}  // namespace morva
