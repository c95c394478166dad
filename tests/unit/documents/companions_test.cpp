// Companion files. The layout tests write and read single bytes at offsets from the format's
// own table, without the functions under test.

#include "documents/companions.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <memory>
#include <string>

namespace {

using morva::CadStore;
using morva::FeatureSettings;
using morva::PlateStore;

void PutInt(std::string& bytes, std::size_t at, std::uint32_t value) {
  for (std::size_t i = 0; i < 4; ++i) bytes[at + i] = static_cast<char>(value >> (8 * i));
}

void PutDouble(std::string& bytes, std::size_t at, double value) {
  std::uint64_t bits;
  std::memcpy(&bits, &value, 8);
  for (std::size_t i = 0; i < 8; ++i) bytes[at + i] = static_cast<char>(bits >> (8 * i));
}

// A settings record of this kind with one circle as its only item.
void PutRecord(std::string& bytes, std::size_t at, std::uint32_t version, std::uint32_t kind) {
  PutInt(bytes, at, version);
  PutInt(bytes, at + 4, kind);
  PutInt(bytes, at + 8, 1);   // metric
  PutInt(bytes, at + 24, 1);  // items
  PutDouble(bytes, at + 32, 2.5);
  PutInt(bytes, at + 160, 2);
  PutInt(bytes, at + 164, 77);  // tag
  PutDouble(bytes, at + 168, -1.25);
  PutDouble(bytes, at + 184, 3);
}

std::string CadFile(std::uint32_t count, std::uint32_t active) {
  std::string bytes(40712, '\0');
  PutInt(bytes, 0, count);
  PutInt(bytes, 4, active);
  for (std::uint32_t i = 0; i < count && i < 8; ++i) PutRecord(bytes, 8 + i * 5088u, 3, 4);
  return bytes;
}

std::string PlateFile(std::uint32_t count, std::uint32_t active) {
  std::string bytes(38152, '\0');
  PutInt(bytes, 0, count);
  PutInt(bytes, 4, active);
  for (std::uint32_t i = 0; i < count && i < 8; ++i) PutRecord(bytes, 8 + i * 4768u, 3, 5);
  return bytes;
}

bool ReadsCad(const std::string& bytes) {
  const auto store = std::make_unique<CadStore>();
  return ReadCadFile(bytes, *store);
}

bool ReadsPlates(const std::string& bytes) {
  const auto store = std::make_unique<PlateStore>();
  return ReadPlateFile(bytes, *store);
}

TEST(CadFile, ReadsEveryFieldFromItsPlace) {
  std::string bytes = CadFile(2, 1);
  const std::size_t slot = 8 + 5088;
  bytes[slot + 4768] = 1;
  bytes[slot + 4768 + 95] = 5;
  bytes[slot + 4864 + 3] = 1;
  bytes[slot + 4960] = 'A';
  bytes[slot + 4961] = '\x20';
  const auto store = std::make_unique<CadStore>();
  ASSERT_TRUE(ReadCadFile(bytes, *store));
  EXPECT_EQ(store->count, 2u);
  EXPECT_EQ(store->active, 1u);
  const morva::Drawing& drawing = store->drawings[1];
  EXPECT_EQ(drawing.settings.kind, 4);
  EXPECT_EQ(drawing.settings.metric, 1);
  EXPECT_EQ(drawing.settings.values[0], 2.5);
  EXPECT_EQ(drawing.settings.items[0].tag, 77);
  EXPECT_EQ(drawing.settings.items[0].p0, -1.25);
  EXPECT_EQ(drawing.settings.items[0].p2, 3);
  EXPECT_EQ(drawing.hidden[0], 1);
  EXPECT_EQ(drawing.hidden[95], 5);
  EXPECT_EQ(drawing.locked[3], 1);
  EXPECT_EQ(drawing.name[0], char16_t{0x2041});
}

TEST(CadFile, GoesOutAsItCameIn) {
  const std::string bytes = CadFile(8, 7);
  const auto store = std::make_unique<CadStore>();
  ASSERT_TRUE(ReadCadFile(bytes, *store));
  std::string again;
  WriteCadFile(*store, again);
  EXPECT_EQ(again, bytes);
}

TEST(CadFile, ForcesTheEndOfAName) {
  std::string bytes = CadFile(1, 0);
  for (std::size_t i = 0; i < 128; ++i) bytes[8 + 4960 + i] = 'A';
  const auto store = std::make_unique<CadStore>();
  ASSERT_TRUE(ReadCadFile(bytes, *store));
  EXPECT_EQ(store->drawings[0].name[62], char16_t{0x4141});
  EXPECT_EQ(store->drawings[0].name[63], char16_t{0});
}

TEST(CadFile, RefusesAnotherSize) {
  const std::string bytes = CadFile(1, 0);
  EXPECT_TRUE(ReadsCad(bytes));
  EXPECT_FALSE(ReadsCad(bytes.substr(0, 40711)));
  EXPECT_FALSE(ReadsCad(bytes + "x"));
  EXPECT_FALSE(ReadsCad(""));
}

TEST(CadFile, RefusesABadCountOrActiveIndex) {
  EXPECT_FALSE(ReadsCad(CadFile(0, 0)));
  EXPECT_FALSE(ReadsCad(CadFile(9, 0)));
  EXPECT_FALSE(ReadsCad(CadFile(2, 2)));
  EXPECT_FALSE(ReadsCad(CadFile(2, 0xFFFFFFFF)));
  EXPECT_FALSE(ReadsCad(CadFile(0xFFFFFFFF, 1)));
  EXPECT_TRUE(ReadsCad(CadFile(8, 7)));
}

TEST(CadFile, ChecksUsedSlotsAndLeavesTheOthersAlone) {
  std::string bytes = CadFile(2, 0);
  PutInt(bytes, 8 + 2 * 5088 + 4, 99);  // the third slot is not in use
  EXPECT_TRUE(ReadsCad(bytes));
  PutInt(bytes, 8 + 5088 + 4, 5);  // a plate where a sketch belongs
  EXPECT_FALSE(ReadsCad(bytes));
}

TEST(CadFile, RefusesAWildItemCount) {
  for (const std::uint32_t count : {97u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
    std::string bytes = CadFile(1, 0);
    PutInt(bytes, 8 + 24, count);
    EXPECT_FALSE(ReadsCad(bytes)) << count;
  }
}

TEST(CadFile, DropsTheTagsOfOlderRecords) {
  std::string bytes = CadFile(1, 0);
  PutInt(bytes, 8, 2);
  const auto store = std::make_unique<CadStore>();
  ASSERT_TRUE(ReadCadFile(bytes, *store));
  EXPECT_EQ(store->drawings[0].settings.items[0].tag, 0);
}

TEST(CadFile, LeavesTheStoreUntouchedWhenItFails) {
  const auto store = std::make_unique<CadStore>();
  store->count = 3;
  store->drawings[0].hidden[0] = 9;
  std::string bytes = CadFile(2, 0);
  PutInt(bytes, 8 + 5088, 9);  // version of the second slot
  EXPECT_FALSE(ReadCadFile(bytes, *store));
  EXPECT_EQ(store->count, 3u);
  EXPECT_EQ(store->drawings[0].hidden[0], 9);
}

TEST(PlateFile, ReadsBothFormsBySize) {
  const auto store = std::make_unique<PlateStore>();
  ASSERT_TRUE(ReadPlateFile(PlateFile(3, 2), *store));
  EXPECT_EQ(store->count, 3u);
  EXPECT_EQ(store->active, 2u);
  EXPECT_EQ(store->plates[2].items[0].p0, -1.25);
  std::string old(4768, '\0');
  PutRecord(old, 0, 3, 5);
  const auto plate = std::make_unique<FeatureSettings>();
  EXPECT_TRUE(ReadOldPlateFile(old, *plate));
  EXPECT_EQ(plate->values[0], 2.5);
  EXPECT_FALSE(ReadsPlates(old));
  EXPECT_FALSE(ReadOldPlateFile(PlateFile(1, 0), *plate));
}

TEST(PlateFile, GoesOutAsItCameInInBothForms) {
  const std::string bytes = PlateFile(8, 0);
  const auto store = std::make_unique<PlateStore>();
  ASSERT_TRUE(ReadPlateFile(bytes, *store));
  std::string again;
  WritePlateFile(*store, again);
  EXPECT_EQ(again, bytes);
  std::string old(4768, '\0');
  PutRecord(old, 0, 3, 5);
  const auto plate = std::make_unique<FeatureSettings>();
  ASSERT_TRUE(ReadOldPlateFile(old, *plate));
  WriteOldPlateFile(*plate, again);
  EXPECT_EQ(again, old);
}

TEST(PlateFile, RefusesABadHeadOrRecord) {
  EXPECT_TRUE(ReadsPlates(PlateFile(1, 0)));
  EXPECT_FALSE(ReadsPlates(PlateFile(0, 0)));
  EXPECT_FALSE(ReadsPlates(PlateFile(9, 0)));
  EXPECT_FALSE(ReadsPlates(PlateFile(4, 4)));
  std::string bytes = PlateFile(2, 0);
  PutInt(bytes, 8 + 4768 + 4, 4);  // a sketch where a plate belongs
  EXPECT_FALSE(ReadsPlates(bytes));
  bytes = PlateFile(2, 0);
  PutDouble(bytes, 8 + 32, std::numeric_limits<double>::quiet_NaN());
  EXPECT_FALSE(ReadsPlates(bytes));
}

TEST(PlateFile, LeavesTheRecordUntouchedWhenItFails) {
  const auto plate = std::make_unique<FeatureSettings>();
  plate->version = 42;
  EXPECT_FALSE(ReadOldPlateFile(std::string(4768, '\0'), *plate));
  EXPECT_EQ(plate->version, 42);
}

TEST(CompanionPath, IsTheProgramsPathAndTheSuffix) {
  EXPECT_EQ(morva::CompanionPath(u"/shop/a.NC", u".cadmv"), u"/shop/a.NC.cadmv");
  const std::u16string most = u"/shop/" + std::u16string(255 - 6, u'n');
  EXPECT_EQ(morva::CompanionPath(most, u".cadmv"), most + u".cadmv");
}

TEST(CompanionPath, StaysWithin255BytesAndTellsLongNamesApart) {
  const std::u16string one = morva::CompanionPath(u"/shop/" + std::u16string(250, u'n'), u".cadmv");
  const std::u16string other =
      morva::CompanionPath(u"/shop/" + std::u16string(249, u'n') + u"m", u".cadmv");
  EXPECT_EQ(one.size(), 6u + 255u);
  EXPECT_EQ(other.size(), 6u + 255u);
  EXPECT_NE(one, other);
  EXPECT_EQ(one.substr(0, 6 + 240), u"/shop/" + std::u16string(240, u'n'));
  EXPECT_EQ(one.substr(6 + 240, 1), u"~");
  EXPECT_EQ(one.substr(6 + 240 + 9), u".cadmv");
}

TEST(CompanionPath, CutsNoCharacterInHalf) {
  // 62 characters of four bytes and two of one: 250 bytes.
  std::u16string name;
  for (int i = 0; i < 62; ++i) name += u"\U0001F600";
  const std::u16string path = morva::CompanionPath(name + u"ab", u".platemv");
  // 255 - 17 bytes leave room for 59 of them.
  std::u16string kept;
  for (int i = 0; i < 59; ++i) kept += u"\U0001F600";
  EXPECT_EQ(path.substr(0, kept.size() + 1), kept + u"~");
}

}  // namespace
