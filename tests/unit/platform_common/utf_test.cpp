// UTF-8 and 16-bit text. The ill-formed cases are those of the Unicode standard's chapter 3
// table on maximal subparts; the others are worked out from the bit patterns by hand.

#include <gtest/gtest.h>

#include <string>

#include "platform/file.h"

namespace {

using platform::FromUtf8;
using platform::ToUtf8;
using namespace std::string_literals;

TEST(Utf8, KeepsAsciiOfEveryLengthAroundTheStride) {
  for (std::size_t length = 0; length < 70; ++length) {
    std::string bytes;
    std::u16string text;
    for (std::size_t i = 0; i < length; ++i) {
      bytes += static_cast<char>(1 + i * 7 % 127);
      text += static_cast<char16_t>(1 + i * 7 % 127);
    }
    EXPECT_EQ(FromUtf8(bytes), text);
    EXPECT_EQ(ToUtf8(text), bytes);
  }
}

TEST(Utf8, ReadsTheFirstAndLastCharacterOfEachLength) {
  EXPECT_EQ(FromUtf8("\x7F"), u"\x7F");
  EXPECT_EQ(FromUtf8("\xC2\x80"), u"\u0080"s);
  EXPECT_EQ(FromUtf8("\xDF\xBF"), u"\u07FF");
  EXPECT_EQ(FromUtf8("\xE0\xA0\x80"), u"\u0800");
  EXPECT_EQ(FromUtf8("\xED\x9F\xBF"), u"\uD7FF");
  EXPECT_EQ(FromUtf8("\xEE\x80\x80"), u"\uE000");
  EXPECT_EQ(FromUtf8("\xEF\xBF\xBF"), u"\uFFFF");
  EXPECT_EQ(FromUtf8("\xF0\x90\x80\x80"), u"\U00010000");
  EXPECT_EQ(FromUtf8("\xF4\x8F\xBF\xBF"), u"\U0010FFFF");
}

TEST(Utf8, WritesTheFirstAndLastCharacterOfEachLength) {
  EXPECT_EQ(ToUtf8(u"\u0080"), "\xC2\x80");
  EXPECT_EQ(ToUtf8(u"\u07FF"), "\xDF\xBF");
  EXPECT_EQ(ToUtf8(u"\u0800"), "\xE0\xA0\x80");
  EXPECT_EQ(ToUtf8(u"\uFFFF"), "\xEF\xBF\xBF");
  EXPECT_EQ(ToUtf8(u"\U00010000"), "\xF0\x90\x80\x80");
  EXPECT_EQ(ToUtf8(u"\U0010FFFF"), "\xF4\x8F\xBF\xBF");
}

TEST(Utf8, ReplacesEachMaximalIllFormedPieceOnce) {
  // Overlong, surrogate and too large leads take nothing with them.
  EXPECT_EQ(FromUtf8("\xC0\xAF\xE0\x80\xBF\xF0\x81\x82\x41"),
            u"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\u0041");
  EXPECT_EQ(FromUtf8("\xED\xA0\x80\xED\xBF\xBF\xED\xAF\x41"),
            u"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\u0041");
  EXPECT_EQ(FromUtf8("\xF4\x91\x92\x93\xFF\x41\x80\xBF\x42"),
            u"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\u0041\uFFFD\uFFFD\u0042");
  // Truncated sequences are one piece each.
  EXPECT_EQ(FromUtf8("\xE1\x80\xE2\xF0\x91\x92\xF1\xBF\x41"), u"\uFFFD\uFFFD\uFFFD\uFFFD\u0041");
}

TEST(Utf8, ReplacesACharacterCutOffAtTheEnd) {
  EXPECT_EQ(FromUtf8("a\xC3"), u"a\uFFFD");
  EXPECT_EQ(FromUtf8("a\xE2\x82"), u"a\uFFFD");
  EXPECT_EQ(FromUtf8("a\xF0\x9F\x98"), u"a\uFFFD");
}

TEST(Utf8, FindsABadByteInsideALongAsciiRun) {
  for (std::size_t at = 0; at < 40; ++at) {
    std::string bytes(40, 'x');
    std::u16string text(40, u'x');
    bytes[at] = '\xE9';  // Latin-1 e acute
    text[at] = 0xFFFD;
    EXPECT_EQ(FromUtf8(bytes), text);
  }
}

TEST(Utf8, ReplacesUnpairedSurrogates) {
  EXPECT_EQ(ToUtf8(std::u16string{0xD83D, 'a'}),
            "\xEF\xBF\xBD"
            "a");
  EXPECT_EQ(ToUtf8(std::u16string{0xDE00, 'a'}),
            "\xEF\xBF\xBD"
            "a");
  EXPECT_EQ(ToUtf8(std::u16string{0xD83D}), "\xEF\xBF\xBD");
  EXPECT_EQ(ToUtf8(std::u16string{0xD83D, 0xD83D, 0xDE00}), "\xEF\xBF\xBD\xF0\x9F\x98\x80");
}

TEST(Utf8, KeepsNulAndAByteOrderMarkAsCharacters) {
  EXPECT_EQ(FromUtf8("a\0b"s), u"a\0b"s);
  EXPECT_EQ(ToUtf8(u"a\0b"s), "a\0b"s);
  EXPECT_EQ(FromUtf8("\xEF\xBB\xBFG0"), u"\uFEFFG0");
}

TEST(Utf8, ComesBackForEveryCharacter) {
  std::u16string text;
  for (std::uint32_t c = 1; c < 0x10000; ++c) {
    if (c < 0xD800 || c > 0xDFFF) text += static_cast<char16_t>(c);
  }
  for (std::uint32_t c = 0x10000; c < 0x110000; c += 0x101) {
    text += static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10));
    text += static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
  }
  EXPECT_EQ(FromUtf8(ToUtf8(text)), text);
}

}  // namespace
