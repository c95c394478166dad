// File images here are written byte by byte from the format's table.
#include "documents/disabled_code.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/limits.h"

namespace morva {
namespace {

struct List {
  DisabledCodeEntry* head = nullptr;
  ~List() { FreeDisabledCode(head); }
};

std::string Number(std::uint32_t value) {
  std::string bytes;
  for (int i = 0; i < 4; ++i) {
    bytes += static_cast<char>(value % 256);
    value /= 256;
  }
  return bytes;
}

std::string Entry(std::uint32_t id, const std::string& ascii) {
  std::string bytes = Number(id) + Number(static_cast<std::uint32_t>(ascii.size()));
  for (const char c : ascii) {
    bytes += c;
    bytes += '\0';
  }
  return bytes;
}

std::string File(std::uint32_t count, const std::string& entries) {
  return "MVC1" + Number(count) + entries;
}

std::vector<std::int32_t> Ids(const DisabledCodeEntry* list) {
  std::vector<std::int32_t> ids;
  for (; list; list = list->next) ids.push_back(list->id);
  return ids;
}

TEST(DisabledCode, GivesTheLargestIdPlusOneAndKeepsTheNewestInFront) {
  List list;
  EXPECT_EQ(AddDisabledCode(list.head, u"G0"), 1);
  EXPECT_EQ(AddDisabledCode(list.head, u"G1"), 2);
  ASSERT_TRUE(ReadDisabledCode(File(1, Entry(40, "M8")), list.head));
  EXPECT_EQ(AddDisabledCode(list.head, u""), 41);
  EXPECT_EQ(Ids(list.head), (std::vector<std::int32_t>{41, 40, 2, 1}));
}

TEST(DisabledCode, FindsAnEntryByItsNumber) {
  List list;
  AddDisabledCode(list.head, u"G0");
  AddDisabledCode(list.head, u"G1 X1\r\n");
  const DisabledCodeEntry* found = FindDisabledCode(list.head, 2);
  ASSERT_NE(found, nullptr);
  EXPECT_EQ(found->text, u"G1 X1\r\n");
  EXPECT_EQ(FindDisabledCode(list.head, 3), nullptr);
  EXPECT_EQ(FindDisabledCode(list.head, 0), nullptr);
  EXPECT_EQ(FindDisabledCode(nullptr, 1), nullptr);
}

TEST(DisabledCode, RefusesTextAboveEightMillionUnitsInSilence) {
  List list;
  std::u16string text(8000001, u'G');
  EXPECT_EQ(AddDisabledCode(list.head, text), 0);
  EXPECT_EQ(list.head, nullptr);
  text.pop_back();
  EXPECT_EQ(AddDisabledCode(list.head, text), 1);
}

TEST(DisabledCode, RefusesAnIdBeyondTheLargestNumber) {
  List list;
  ASSERT_TRUE(ReadDisabledCode(File(1, Entry(0x7FFFFFFF, "")), list.head));
  EXPECT_EQ(AddDisabledCode(list.head, u"G0"), 0);
  EXPECT_EQ(Ids(list.head), (std::vector<std::int32_t>{0x7FFFFFFF}));
}

TEST(DisabledCode, KeepsNoMoreEntriesThanAFileCanGiveBack) {
  List list;
  for (int i = 1; i <= 10000; ++i) ASSERT_EQ(AddDisabledCode(list.head, u""), i);
  EXPECT_EQ(AddDisabledCode(list.head, u""), 0);
  std::string bytes;
  ASSERT_TRUE(WriteDisabledCode(list.head, bytes));
  List back;
  EXPECT_TRUE(ReadDisabledCode(bytes, back.head));
}

TEST(DisabledCode, WritesAnEmptyListAsEightBytes) {
  std::string bytes = "stale";
  EXPECT_TRUE(WriteDisabledCode(nullptr, bytes));
  EXPECT_EQ(bytes, std::string("MVC1\0\0\0\0", 8));
}

TEST(DisabledCode, WritesNumbersAndTextLittleEndianInListOrder) {
  List list;
  AddDisabledCode(list.head, u"G0");
  AddDisabledCode(list.head, u"\u2014");
  std::string bytes;
  ASSERT_TRUE(WriteDisabledCode(list.head, bytes));
  EXPECT_EQ(bytes, std::string("MVC1\x02\0\0\0"
                               "\x02\0\0\0\x01\0\0\0\x14\x20"
                               "\x01\0\0\0\x02\0\0\0G\0"
                               "0\0",
                               30));
}

TEST(DisabledCode, FailsTheWriteAboveSixtyFourMillionBytes) {
  // Four entries of 7,999,997 units: 8 + 4 * (8 + 15,999,994) = 64,000,016 bytes.
  List list;
  const std::u16string text(7999997, u'G');
  for (int i = 0; i < 4; ++i) ASSERT_NE(AddDisabledCode(list.head, text), 0);
  std::string bytes = "stale";
  EXPECT_FALSE(WriteDisabledCode(list.head, bytes));
  EXPECT_TRUE(bytes.empty());
  // Eight units, sixteen bytes, less and it is exactly the limit.
  list.head->text.resize(7999997 - 8);
  EXPECT_TRUE(WriteDisabledCode(list.head, bytes));
  EXPECT_EQ(bytes.size(), 64000000u);
  List back;
  EXPECT_TRUE(ReadDisabledCode(bytes, back.head));
}

TEST(DisabledCode, FlipsTheOrderAtEachSaveAndLoad) {
  List list;
  AddDisabledCode(list.head, u"first");
  AddDisabledCode(list.head, u"second \u00E9\r\n");
  std::string bytes;
  ASSERT_TRUE(WriteDisabledCode(list.head, bytes));
  List back;
  ASSERT_TRUE(ReadDisabledCode(bytes, back.head));
  EXPECT_EQ(Ids(back.head), (std::vector<std::int32_t>{1, 2}));
  EXPECT_EQ(FindDisabledCode(back.head, 1)->text, u"first");
  EXPECT_EQ(FindDisabledCode(back.head, 2)->text, u"second \u00E9\r\n");
}

TEST(DisabledCode, PutsReadEntriesInFrontOfThoseOfTheTab) {
  List list;
  AddDisabledCode(list.head, u"own");
  ASSERT_TRUE(ReadDisabledCode(File(2, Entry(7, "a") + Entry(8, "b")), list.head));
  EXPECT_EQ(Ids(list.head), (std::vector<std::int32_t>{8, 7, 1}));
}

TEST(DisabledCode, GivesIdZeroTheLargestReadSoFarPlusOne) {
  List list;
  ASSERT_TRUE(ReadDisabledCode(File(1, Entry(0, "G0")), list.head));
  EXPECT_EQ(Ids(list.head), (std::vector<std::int32_t>{1}));
  List more;
  ASSERT_TRUE(ReadDisabledCode(File(3, Entry(9, "a") + Entry(0, "b") + Entry(4, "c")), more.head));
  EXPECT_EQ(Ids(more.head), (std::vector<std::int32_t>{4, 10, 9}));
}

// Each of these leaves the list as it was.
void ExpectRefused(const std::string& bytes) {
  List list;
  AddDisabledCode(list.head, u"own");
  const DisabledCodeEntry* before = list.head;
  EXPECT_FALSE(ReadDisabledCode(bytes, list.head));
  EXPECT_EQ(list.head, before);
  EXPECT_EQ(list.head->next, nullptr);
  EXPECT_EQ(list.head->text, u"own");
}

TEST(DisabledCode, RefusesSevenBytesAndAnotherMagic) {
  ExpectRefused("");
  ExpectRefused(std::string("MVC1\0\0\0", 7));
  ExpectRefused(std::string("MVC2\0\0\0\0", 8));
  ExpectRefused(std::string("mvc1\0\0\0\0", 8));
}

TEST(DisabledCode, RefusesACountThatTheEntriesDoNotFill) {
  ExpectRefused(File(2, Entry(5, "G0")));
  ExpectRefused(File(1, ""));
  ExpectRefused(File(10001, ""));
  ExpectRefused(File(0xFFFFFFFF, ""));
}

TEST(DisabledCode, RefusesBytesBehindTheLastEntry) {
  ExpectRefused(File(1, Entry(5, "G0") + "x"));
  ExpectRefused(File(0, Number(0)));
}

TEST(DisabledCode, RefusesALengthThatRunsOutOfTheFile) {
  ExpectRefused(File(1, Number(5) + Number(3) + std::string("G\0000\0\0", 5)));
  ExpectRefused(File(1, Number(5) + Number(0xFFFFFFFF)));
  ExpectRefused(File(1, Number(5) + Number(8000001) + std::string(16000002, 'G')));
  ExpectRefused(File(1, Number(5) + std::string("\1\0\0", 3)));
}

TEST(DisabledCode, RefusesNegativeAndDoubledIds) {
  ExpectRefused(File(1, Entry(0xFFFFFFFF, "G0")));
  ExpectRefused(File(2, Entry(5, "a") + Entry(5, "b")));
  // The zero becomes 6, which the third entry claims.
  ExpectRefused(File(3, Entry(5, "a") + Entry(0, "b") + Entry(6, "c")));
  ExpectRefused(File(2, Entry(0x7FFFFFFF, "a") + Entry(0, "b")));
}

TEST(DisabledCode, RefusesAnIdThatTheTabHasAlready) { ExpectRefused(File(1, Entry(1, "a"))); }

TEST(DisabledCode, TakesTenThousandEntriesAndAnEmptyOne) {
  std::string entries;
  for (std::uint32_t i = 1; i <= 10000; ++i) entries += Entry(i, "");
  List list;
  EXPECT_TRUE(ReadDisabledCode(File(10000, entries), list.head));
  EXPECT_EQ(list.head->id, 10000);
}

}  // namespace
}  // namespace morva
