// The shape library in the settings file and in its mirror. Files are written out by hand.

#include "library/shapes.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "platform/profile.h"
#include "support/stage.h"
#include "text/codetext.h"

namespace morva {
namespace {

struct Shapes : support::Stage {
  void SetUp() override { ResetShapeLibrary(); }
  void TearDown() override { ResetShapeLibrary(); }
  void PutIni(std::string_view bytes) const { Put("bin/MORVA.ini", bytes); }
  std::string Ini() const { return Raw("bin/MORVA.ini"); }
  void ReadyDataDirectory() const {
    support::fs::create_directories(folder / "data" / "Shapes");
    CopyBounded(app.dataDir, kPathUnits, PathOf("data"));
    app.dataDirReady = true;
  }
  static void PutShape(const char16_t* name, std::vector<SketchObject> objects) {
    SavedShape& shape = shapeLibrary.shapes[AppendShape(name)];
    for (const SketchObject& object : objects) shape.objects[shape.count++] = object;
  }
  static std::u16string NameOf(int index) { return shapeLibrary.shapes[index].name; }
};

TEST_F(Shapes, AreNoneWithoutASettingsFile) {
  PutShape(u"Old", {});
  LoadShapeLibrary();
  EXPECT_EQ(shapeLibrary.count, 0);
}

TEST_F(Shapes, LoadNamesCountsAndObjectsWithTheDefaultsOfMissingKeys) {
  PutIni(
      "[CustomShapes]\r\nCount=2\r\n"
      "[SavedShape0]\r\nName=Bracket\r\nCount=2\r\n"
      "K0=1\r\nX0=0.5000\r\nY0=-0.2500\r\nA0=2.0000\r\nB0=1.5000\r\nR0=45.0000\r\n"
      "K1=2\r\n"
      "[SavedShape1]\r\nCount=1\r\nX0=oops\r\nA0=\r\n");
  LoadShapeLibrary();
  ASSERT_EQ(shapeLibrary.count, 2);
  EXPECT_EQ(NameOf(0), u"Bracket");
  ASSERT_EQ(shapeLibrary.shapes[0].count, 2);
  const SketchObject& box = shapeLibrary.shapes[0].objects[0];
  EXPECT_EQ(box.type, kTypeRectangle);
  EXPECT_EQ(box.group, 0);
  EXPECT_EQ(box.x, 0.5);
  EXPECT_EQ(box.y, -0.25);
  EXPECT_EQ(box.size, 2);
  EXPECT_EQ(box.size2, 1.5);
  EXPECT_EQ(box.angle, 45);
  const SketchObject& missing = shapeLibrary.shapes[0].objects[1];
  EXPECT_EQ(missing.type, kTypeCircle);
  EXPECT_EQ(missing.x, 0);
  EXPECT_EQ(missing.y, 0);
  EXPECT_EQ(missing.size, 1.0);
  EXPECT_EQ(missing.size2, 0.5);
  EXPECT_EQ(missing.angle, 0);
  EXPECT_EQ(NameOf(1), u"Custom Shape");
  EXPECT_EQ(shapeLibrary.shapes[1].objects[0].type, kTypeLine);
  EXPECT_EQ(shapeLibrary.shapes[1].objects[0].x, 0);
  EXPECT_EQ(shapeLibrary.shapes[1].objects[0].size, 1.0);
}

TEST_F(Shapes, CountNoDigitOrANegativeValueAsNoneAndMoreThan24As24) {
  const struct {
    const char* text;
    int count;
  } rows[] = {{"Count=abc", 0}, {"Count=", 0},    {"Count=-3", 0}, {"Other=9", 0},
              {"Count=24", 24}, {"Count=25", 24}, {"count=7", 7},  {"Count=1000000", 24}};
  for (const auto& row : rows) {
    PutIni(std::string("[CustomShapes]\r\n") + row.text + "\r\n");
    LoadShapeLibrary();
    EXPECT_EQ(shapeLibrary.count, row.count) << row.text;
  }
}

TEST_F(Shapes, WithACountOutOfRangeLoadEmptyAndStayListed) {
  PutIni(
      "[CustomShapes]\r\nCount=4\r\n[SavedShape0]\r\nName=A\r\nCount=65\r\nK0=1\r\n"
      "[SavedShape1]\r\nName=B\r\nCount=-1\r\n[SavedShape2]\r\nName=C\r\nCount=64\r\n"
      "[SavedShape3]\r\nName=D\r\nCount=x\r\n");
  LoadShapeLibrary();
  ASSERT_EQ(shapeLibrary.count, 4);
  EXPECT_EQ(shapeLibrary.shapes[0].count, 0);
  EXPECT_EQ(shapeLibrary.shapes[1].count, 0);
  EXPECT_EQ(shapeLibrary.shapes[2].count, 64);
  EXPECT_EQ(shapeLibrary.shapes[3].count, 0);
  EXPECT_EQ(NameOf(0), u"A");
}

TEST_F(Shapes, CutANameAt71Units) {
  PutIni("[CustomShapes]\r\nCount=1\r\n[SavedShape0]\r\nName=" + std::string(90, 'n') + "\r\n");
  LoadShapeLibrary();
  EXPECT_EQ(NameOf(0), std::u16string(71, u'n'));
}

TEST_F(Shapes, LeaveTheSettingsFileAloneWhenTheyLoad) {
  const std::string file = "\xEF\xBB\xBF; mine\n[CustomShapes]\nCount=1";
  PutIni(file);
  LoadShapeLibrary();
  EXPECT_EQ(shapeLibrary.count, 1);
  EXPECT_EQ(Ini(), file);
}

TEST_F(Shapes, AreWrittenAsTheirKeysWithFourDecimals) {
  PutIni("[DNC]\r\nPort=COM3\r\n");
  PutShape(u"Slot 1/2", {{kTypeSlot, 7, -0.00004, 1.00005, 2.5, 0.25, -30}});
  PutShape(u"Empty", {});
  EXPECT_TRUE(SaveShapeLibrary());
  EXPECT_EQ(Ini(),
            "[DNC]\r\nPort=COM3\r\n"
            "[CustomShapes]\r\nCount=2\r\n"
            "[SavedShape0]\r\nName=Slot 1/2\r\nCount=1\r\n"
            "K0=3\r\nX0=-0.0000\r\nY0=1.0001\r\nA0=2.5000\r\nB0=0.2500\r\nR0=-30.0000\r\n"
            "[SavedShape1]\r\nName=Empty\r\nCount=0\r\n");
}

TEST_F(Shapes, ComeBackWithoutTheirGroups) {
  PutShape(u"  Two \"parts\" ", {{kTypeLine, 3, 0, 0, 1, 0, 90}, {kTypeCircle, 3, 1, 1, 2, 0, 0}});
  ASSERT_TRUE(SaveShapeLibrary());
  LoadShapeLibrary();
  ASSERT_EQ(shapeLibrary.count, 1);
  EXPECT_EQ(NameOf(0), u"  Two \"parts\" ");
  ASSERT_EQ(shapeLibrary.shapes[0].count, 2);
  EXPECT_EQ(shapeLibrary.shapes[0].objects[0].group, 0);
  EXPECT_EQ(shapeLibrary.shapes[0].objects[1].group, 0);
  EXPECT_EQ(shapeLibrary.shapes[0].objects[0].angle, 90);
  EXPECT_EQ(shapeLibrary.shapes[0].objects[1].size, 2);
}

TEST_F(Shapes, KeepNamesThatLookLikeSettings) {
  const std::u16string names[] = {u"a=b",
                                  u"=",
                                  u"[SavedShape0]",
                                  u"[",
                                  u"]x[",
                                  u"; no comment",
                                  u"# no comment",
                                  u"\"",
                                  u"\"\"",
                                  u"\"quoted\"",
                                  u"\"half",
                                  u"'single'",
                                  u"  leading",
                                  u"trailing  ",
                                  u" ",
                                  u" \"both\" ",
                                  u"(ear) (left)",
                                  u"Count=9",
                                  u"\u00A0hard blank\u00A0",
                                  u"\u00D8 25 \u2014 \U0001F529",
                                  std::u16string(71, u'n')};
  PutIni("[CustomShapes]\r\nCount=0\r\n[DNC]\r\nPort=COM3\r\n");
  int count = 0;
  for (const std::u16string& name : names) {
    PutShape(name.c_str(), {{kTypeCircle, 0, 0, 0, 1.0 + count, 0, 0}});
    ++count;
  }
  ASSERT_TRUE(SaveShapeLibrary());
  ResetShapeLibrary();
  LoadShapeLibrary();
  ASSERT_EQ(shapeLibrary.count, count);
  for (int i = 0; i < count; ++i) {
    EXPECT_EQ(NameOf(i), names[i]) << i;
    EXPECT_EQ(FindShape(names[i]), i);
    ASSERT_EQ(shapeLibrary.shapes[i].count, 1) << i;
    EXPECT_EQ(shapeLibrary.shapes[i].objects[0].size, 1.0 + i) << i;
  }
  EXPECT_EQ(platform::ReadProfile(u"DNC", u"Port", u""), u"COM3");
}

TEST_F(Shapes, TakeABlankForWhatNoLineCanHold) {
  EXPECT_EQ(KeptShapeName(u"a\r\nKey=1"), u"a  Key=1");
  EXPECT_EQ(KeptShapeName(u"tab\there\x7F\u0085\u2028\u2029."), u"tab here    .");
  EXPECT_EQ(KeptShapeName(std::u16string(1, u'\0') + u"x"), u" x");
  PutShape(u"one\ntwo", {});
  PutShape(u"one\nthree", {});
  ASSERT_TRUE(SaveShapeLibrary());
  LoadShapeLibrary();
  EXPECT_EQ(NameOf(0), u"one two");
  EXPECT_EQ(NameOf(1), u"one three");
}

TEST_F(Shapes, CutANameBetweenCharactersAndNeverInOne) {
  const std::u16string bolt = u"\U0001F529";  // two units
  const std::u16string front(70, u'n');
  EXPECT_EQ(KeptShapeName(front + bolt), front);
  EXPECT_EQ(KeptShapeName(front.substr(1) + bolt), front.substr(1) + bolt);
  EXPECT_EQ(KeptShapeName(bolt.substr(0, 1) + u"x" + bolt.substr(1)), u"\uFFFDx\uFFFD");
  EXPECT_EQ(KeptShapeName(std::u16string(72, u'n')).size(), 71u);
  PutShape((front + bolt).c_str(), {});
  ASSERT_TRUE(SaveShapeLibrary());
  LoadShapeLibrary();
  EXPECT_EQ(NameOf(0), front);
}

TEST_F(Shapes, AnyNameIsKeptOnceAndComesBackUnitByUnit) {
  std::mt19937 random(8);
  constexpr std::u16string_view kUnits =
      u"aZ=[];#\"' \t\r\n\\/%()\u00A0\u00E4\u2028\uFEFF\x01\U0001F529";
  for (int round = 0; round < 40; ++round) {
    ResetShapeLibrary();
    std::vector<std::u16string> kept;
    for (int i = 0; i < kMaxShapes; ++i) {
      std::u16string name(1 + random() % 90, u' ');
      for (char16_t& c : name) c = kUnits[random() % kUnits.size()];
      PutShape(name.c_str(), {{kTypeLine, 0, 0, 0, 1.0 * i, 0, 0}});
      kept.push_back(NameOf(i));
      ASSERT_EQ(KeptShapeName(kept.back()), kept.back());
      ASSERT_LE(kept.back().size(), 71u);
    }
    ASSERT_TRUE(SaveShapeLibrary());
    LoadShapeLibrary();
    ASSERT_EQ(shapeLibrary.count, kMaxShapes);
    for (int i = 0; i < kMaxShapes; ++i) {
      ASSERT_EQ(NameOf(i), kept[static_cast<std::size_t>(i)]) << round << " " << i;
      ASSERT_EQ(shapeLibrary.shapes[i].objects[0].size, i);
    }
  }
}

TEST_F(Shapes, AFullLibraryComesBackWhole) {
  for (int i = 0; i < kMaxShapes; ++i) {
    SavedShape& shape = shapeLibrary.shapes[AppendShape(u"Shape")];
    shape.count = kMaxShapeObjects;
    for (int k = 0; k < kMaxShapeObjects; ++k) {
      shape.objects[k] = {k % 4, 0, i * 0.5, k * -0.5, 1.0 + k, 0.5, k * 1.5};
    }
  }
  ASSERT_TRUE(SaveShapeLibrary());
  ResetShapeLibrary();
  LoadShapeLibrary();
  ASSERT_EQ(shapeLibrary.count, kMaxShapes);
  for (int i = 0; i < kMaxShapes; ++i) {
    ASSERT_EQ(shapeLibrary.shapes[i].count, kMaxShapeObjects);
    for (int k = 0; k < kMaxShapeObjects; ++k) {
      const SketchObject& object = shapeLibrary.shapes[i].objects[k];
      ASSERT_EQ(object.type, k % 4);
      ASSERT_EQ(object.x, i * 0.5);
      ASSERT_EQ(object.y, k * -0.5);
      ASSERT_EQ(object.angle, k * 1.5);
    }
  }
}

TEST_F(Shapes, SaveIsFalseWhenTheSettingsFileCannotBeWritten) {
  PutIni("[DNC]\r\nPort=COM3\r\n");
  PutShape(u"A", {});
  headless::FailCall("rename", 1);
  EXPECT_FALSE(SaveShapeLibrary());
  EXPECT_EQ(Ini(), "[DNC]\r\nPort=COM3\r\n");
  EXPECT_EQ(shapeLibrary.count, 1);
}

// A mirror put together byte by byte.
void Add32(std::string& bytes, std::uint32_t value) {
  for (int i = 0; i < 4; ++i) bytes += static_cast<char>(value >> (8 * i));
}
void AddReal(std::string& bytes, double value) {
  std::uint64_t bits = 0;
  std::memcpy(&bits, &value, 8);
  for (int i = 0; i < 8; ++i) bytes += static_cast<char>(bits >> (8 * i));
}

TEST_F(Shapes, HaveAMirrorOf3224BytesEach) {
  ReadyDataDirectory();
  PutShape(u"Ab\u2014", {{kTypeRectangle, 5, 0.5, -1.5, 2, 3, 45}});
  PutShape(u"Empty", {});
  shapeLibrary.shapes[1].objects[0].x = 9;  // past the count: nothing of it is written
  ASSERT_TRUE(SaveShapeLibrary());
  std::string wanted("A\0b\0\x14\x20", 6);
  wanted.resize(144);
  Add32(wanted, 1);
  Add32(wanted, 0);
  Add32(wanted, 1);
  Add32(wanted, 5);
  for (const double value : {0.5, -1.5, 2.0, 3.0, 45.0}) AddReal(wanted, value);
  wanted.resize(3224);
  wanted += std::string("E\0m\0p\0t\0y\0", 10);
  wanted.resize(6448);
  EXPECT_EQ(Raw("data/Shapes/Library.shapes"), wanted);
}

TEST_F(Shapes, HaveNoMirrorWithoutADataDirectory) {
  ReadyDataDirectory();
  app.dataDirReady = false;
  PutShape(u"A", {});
  EXPECT_TRUE(SaveShapeLibrary());
  EXPECT_FALSE(support::fs::exists(folder / "data" / "Shapes" / "Library.shapes"));
}

TEST_F(Shapes, AMirrorThatFailsIsNoFailure) {
  ReadyDataDirectory();
  support::fs::remove(folder / "data" / "Shapes");
  PutShape(u"A", {});
  EXPECT_TRUE(SaveShapeLibrary());
  EXPECT_NE(Ini().find("Name=A"), std::string::npos);
}

TEST_F(Shapes, TheMirrorIsNeverReadBack) {
  ReadyDataDirectory();
  PutShape(u"A", {});
  ASSERT_TRUE(SaveShapeLibrary());
  PutIni("");
  LoadShapeLibrary();
  EXPECT_EQ(shapeLibrary.count, 0);
}

TEST_F(Shapes, AreFoundByNameWithoutTheCaseOfAToZ) {
  PutShape(u"Bracket \u00E4", {});
  EXPECT_EQ(FindShape(u"BRACKET \u00E4"), 0);
  EXPECT_EQ(FindShape(u"Bracket \u00C4"), -1);
  EXPECT_EQ(FindShape(u"Bracket"), -1);
}

std::vector<std::u16string> RowTexts(int id) {
  std::vector<std::u16string> texts;
  for (int i = 0; i < platform::RowCount(id); ++i) texts.push_back(platform::RowText(id, i));
  return texts;
}

TEST_F(Shapes, FillTheShapeBuildersListBehindTheSevenOwnRows) {
  platform::ListSpec list;
  list.id = kIdShapeCombo;
  list.kind = platform::ListKind::Combo;
  platform::MakeList(list);
  RegisterShapeLibrary();
  AddShapeList([] {
    int count = 0;
    const ShapeRow* rows = BuiltInShapeRows(count);
    FillShapeList(kIdShapeCombo, rows, count);
  });
  PutShape(u"Bracket", {});
  PutShape(u"Ear", {});
  RefreshShapeLists();
  EXPECT_EQ(RowTexts(kIdShapeCombo),
            (std::vector<std::u16string>{u"Square", u"Rectangle", u"Circle", u"Triangle", u"Line",
                                         u"Diamond / Other", u"Slot", u"CUSTOM: Bracket",
                                         u"CUSTOM: Ear"}));
  for (int i = 0; i < 7; ++i) EXPECT_EQ(platform::RowData(kIdShapeCombo, i), i);
  EXPECT_EQ(platform::RowData(kIdShapeCombo, 7), 1000);
  EXPECT_EQ(platform::RowData(kIdShapeCombo, 8), 1001);
}

TEST_F(Shapes, AFillKeepsTheSelectionByItsText) {
  platform::ListSpec list;
  list.id = kIdCircularItem;
  list.kind = platform::ListKind::Combo;
  platform::MakeList(list);
  const ShapeRow own[] = {{u"Circle", 0}};
  PutShape(u"Bracket", {});
  PutShape(u"Ear", {});
  FillShapeList(kIdCircularItem, own, 1);
  platform::SelectRow(kIdCircularItem, 2);
  // The library is loaded in another order: the row of the name stays the selected one.
  ResetShapeLibrary();
  PutShape(u"Ear", {});
  PutShape(u"Bracket", {});
  FillShapeList(kIdCircularItem, own, 1);
  EXPECT_EQ(platform::SelectedRow(kIdCircularItem), 1);
  ResetShapeLibrary();
  FillShapeList(kIdCircularItem, own, 1);
  EXPECT_EQ(platform::RowCount(kIdCircularItem), 1);
}

TEST_F(Shapes, AFillKeepsTheSecondOfTwoOfOneName) {
  platform::ListSpec list;
  list.id = kIdCircularItem;
  list.kind = platform::ListKind::Combo;
  platform::MakeList(list);
  const ShapeRow own[] = {{u"Circle", 0}};
  shapeLibrary.count = 2;
  for (int i = 0; i < 2; ++i) {
    CopyBounded(shapeLibrary.shapes[i].name, kShapeNameUnits, u"Recovered project shape");
  }
  FillShapeList(kIdCircularItem, own, 1);
  platform::SelectRow(kIdCircularItem, 2);
  FillShapeList(kIdCircularItem, own, 1);
  EXPECT_EQ(platform::SelectedRow(kIdCircularItem), 2);
}

TEST_F(Shapes, TakeOverWhatAnotherProgramWroteAndNothingElse) {
  RegisterShapeLibrary();
  LoadShapeLibrary();
  PutShape(u"Mine", {{kTypeCircle, 3, 1.0 / 3, 0, 1, 0, 0}});
  SaveShapeLibrary();
  EXPECT_FALSE(FollowShapeFile()) << "its own save";
  EXPECT_EQ(shapeLibrary.shapes[0].objects[0].group, 3);
  static int refreshed = 0;
  refreshed = 0;
  AddShapeList([] { ++refreshed; });
  PutIni("[CustomShapes]\r\nCount=1\r\n[SavedShape0]\r\nName=Hers\r\nCount=1\r\nK0=1\r\n");
  EXPECT_TRUE(FollowShapeFile());
  EXPECT_EQ(NameOf(0), u"Hers");
  EXPECT_EQ(refreshed, 1);
  EXPECT_FALSE(FollowShapeFile());
}

FeatureSettings RecordOf(std::vector<FeatureItem> items) {
  FeatureSettings record;
  record.version = 3;
  record.kind = kKindShape;
  record.a = -1;
  for (const FeatureItem& item : items) record.items[record.itemCount++] = item;
  return record;
}

TEST_F(Shapes, AProjectShapeIsFoundByItsExactNumbers) {
  PutShape(u"A", {{kTypeCircle, 0, 0.5, 0, 1, 0, 0}});
  PutShape(u"B", {{kTypeCircle, 0, 0.25, 0, 1, 0, 0}});
  EXPECT_EQ(RecoverProjectShape(RecordOf({{kTypeCircle, 9, 0.25, 0, 1, 0, 0}})), 1);
  EXPECT_EQ(shapeLibrary.count, 2);
}

TEST_F(Shapes, AShapeFromMillimetresIsFoundAfterARestartAsWell) {
  SavedShape shape;
  CopyBounded(shape.name, kShapeNameUnits, u"Metric");
  shape.count = 1;
  shape.objects[0] = {kTypeRectangle, 0, 1 / 25.4, -2 / 25.4, 10 / 25.4, 7 / 25.4, 100.0 / 3};
  ASSERT_EQ(morva::PutShape(shape), 0);
  // What a block holds that was made from it.
  const SketchObject& kept = shapeLibrary.shapes[0].objects[0];
  const FeatureSettings record =
      RecordOf({{kept.type, 0, kept.x, kept.y, kept.size, kept.size2, kept.angle}});
  EXPECT_NEAR(kept.size, 0.3937, 1e-12);
  EXPECT_NEAR(kept.angle, 33.3333, 1e-12);
  SaveShapeLibrary();
  LoadShapeLibrary();
  EXPECT_EQ(RecoverProjectShape(record), 0);
  EXPECT_EQ(shapeLibrary.count, 1);
}

TEST_F(Shapes, AnUnknownProjectShapeIsAddedWithACopyOfItsItems) {
  PutShape(u"A", {{kTypeCircle, 0, 0.5, 0, 1, 0, 0}});
  static int refreshed = 0;
  refreshed = 0;
  RegisterShapeLibrary();
  AddShapeList([] { ++refreshed; });
  const FeatureSettings record =
      RecordOf({{kTypeCircle, 0, 0.5, 0, 1, 0, 0}, {kTypeLine, 4, 1, 2, 3, 0, 30}});
  ASSERT_EQ(RecoverProjectShape(record), 1);
  EXPECT_EQ(NameOf(1), u"Recovered project shape");
  ASSERT_EQ(shapeLibrary.shapes[1].count, 2);
  EXPECT_EQ(shapeLibrary.shapes[1].objects[1].x, 1);
  EXPECT_EQ(shapeLibrary.shapes[1].objects[1].angle, 30);
  EXPECT_EQ(refreshed, 1);
  // Any single number that differs makes another shape.
  FeatureSettings other = record;
  other.items[1].p3 = 1e-9;
  EXPECT_EQ(RecoverProjectShape(other), 2);
  EXPECT_EQ(RecoverProjectShape(record), 1);
}

TEST_F(Shapes, AProjectShapeOf65ItemsIsNotRecovered) {
  FeatureSettings record = RecordOf({});
  record.itemCount = 65;
  EXPECT_EQ(RecoverProjectShape(record), -1);
  record.itemCount = 64;
  EXPECT_EQ(RecoverProjectShape(record), 0);
}

TEST_F(Shapes, AFullLibraryRecoversOnlyWhatItHolds) {
  for (int i = 0; i < kMaxShapes; ++i) PutShape(u"A", {{kTypeCircle, 0, 1.0 * i, 0, 1, 0, 0}});
  EXPECT_EQ(RecoverProjectShape(RecordOf({{kTypeCircle, 0, 23, 0, 1, 0, 0}})), 23);
  EXPECT_EQ(RecoverProjectShape(RecordOf({{kTypeCircle, 0, 24, 0, 1, 0, 0}})), -1);
}

}  // namespace
}  // namespace morva
