// The plan in a block's settings, and a saved block's strategy comment.

#include "skim/model/plan_record.h"

#include <gtest/gtest.h>

#include <string>

#include "documents/feature_blocks.h"
#include "documents/file_loss.h"
#include "documents/file_text.h"
#include "documents/generated_code.h"
#include "skim/geometry/saved_code.h"
#include "support/skim_plans.h"

namespace morva {
namespace {

using support::DrawnSkim;
using support::SkimCode;
using support::SmallSkim;

// Every field with a value of its own.
SkimPlan Particular() {
  SkimPlan plan = DrawnSkim(2);
  for (int field = kSkimXMin; field < kSkimFields; ++field) {
    SetSkimValue(plan, field, 1.25 + field);
  }
  plan.tool = 12;
  plan.workOffset = 57;
  plan.useTotalDepth = true;
  plan.metric = true;
  plan.stockThickness = 0.75;
  plan.centerline.segments[1] = support::SkimLine(-1, 2, 3, -45);
  return plan;
}

TEST(SkimRecord, HoldsTheNumbersInItsOrder) {
  FeatureSettings record;
  StoreSkimPlan(Particular(), record);
  EXPECT_EQ(record.version, 2);
  EXPECT_EQ(record.kind, 6);
  EXPECT_EQ(record.metric, 1);
  EXPECT_EQ(record.a, 12);
  EXPECT_EQ(record.b, 57);
  EXPECT_EQ(record.c, 1);
  // The fields from the stock's edges to the exit stand in the order of the form.
  for (int i = 0; i < kSettingsValues; ++i) EXPECT_EQ(record.values[i], 3.25 + i) << i;
  ASSERT_EQ(record.itemCount, 3);
  EXPECT_EQ(record.items[0].type, 4);
  EXPECT_EQ(record.items[0].tag, 0);
  EXPECT_EQ(record.items[0].p0, 0);
  EXPECT_EQ(record.items[0].p1, 0);
  EXPECT_EQ(record.items[0].p2, 0.75);
  EXPECT_EQ(record.items[0].p3, 8);
  EXPECT_EQ(record.items[0].p4, 0);
  EXPECT_EQ(record.items[2].type, 0);
  EXPECT_EQ(record.items[2].p0, -1);
  EXPECT_EQ(record.items[2].p1, 2);
  EXPECT_EQ(record.items[2].p2, 3);
  EXPECT_EQ(record.items[2].p4, -45);
  EXPECT_TRUE(ValidateSettings(record, static_cast<std::size_t>(SettingsLength(record))));
}

TEST(SkimRecord, ComesBackAsThePlan) {
  FeatureSettings record;
  StoreSkimPlan(Particular(), record);
  SkimPlan plan;
  ASSERT_TRUE(LoadSkimPlan(record, plan));
  for (int field = 0; field < kSkimFields; ++field) {
    EXPECT_EQ(SkimValue(plan, field), SkimValue(Particular(), field)) << field;
  }
  EXPECT_TRUE(plan.metric && plan.useTotalDepth);
  EXPECT_EQ(plan.strategy, kSkimCustom);
  EXPECT_EQ(plan.stockThickness, 0.75);
  ASSERT_EQ(plan.centerline.count, 2);
  EXPECT_TRUE(SameGeometry(plan.centerline.segments[1], Particular().centerline.segments[1]));
}

TEST(SkimRecord, KeepsSegmentsOfTheCustomStrategyAlone) {
  SkimPlan plan = DrawnSkim(3);
  plan.strategy = kSkimSpiral;
  FeatureSettings record;
  StoreSkimPlan(plan, record);
  EXPECT_EQ(record.itemCount, 1);
  record.itemCount = 3;
  SkimPlan back;
  ASSERT_TRUE(LoadSkimPlan(record, back));
  EXPECT_EQ(back.strategy, kSkimSpiral);
  EXPECT_EQ(back.centerline.count, 0);
}

TEST(SkimRecord, HoldsNinetyFiveSegments) {
  FeatureSettings record;
  StoreSkimPlan(DrawnSkim(95), record);
  EXPECT_EQ(record.itemCount, 96);
  SkimPlan plan;
  ASSERT_TRUE(LoadSkimPlan(record, plan));
  EXPECT_EQ(plan.centerline.count, 95);
}

TEST(SkimRecord, WithoutItsFirstItemIsAZigzag) {
  FeatureSettings record;
  StoreSkimPlan(Particular(), record);
  SkimPlan plan;
  record.items[0].type = 3;
  ASSERT_TRUE(LoadSkimPlan(record, plan));
  EXPECT_EQ(plan.strategy, kSkimZigzag);
  EXPECT_EQ(plan.stockThickness, 0.5);
  EXPECT_EQ(plan.centerline.count, 0);
  record.items[0].type = 4;
  record.itemCount = 0;
  ASSERT_TRUE(LoadSkimPlan(record, plan));
  EXPECT_EQ(plan.strategy, kSkimZigzag);
}

TEST(SkimRecord, OfAnotherKindIsNone) {
  FeatureSettings record;
  StoreSkimPlan(Particular(), record);
  record.kind = kKindPlate;
  SkimPlan plan;
  EXPECT_FALSE(LoadSkimPlan(record, plan));
  EXPECT_EQ(plan.tool, 0);
}

// A program file holds "?" for the dot of the crossing strategies' names.
struct SavedSkim : testing::Test {
  SavedSkim() { RegisterSkimCode(); }
  ~SavedSkim() override { ResetCodeRestorers(); }
  static FeatureSettings Record(const SkimPlan& plan) {
    FeatureSettings record;
    StoreSkimPlan(plan, record);
    record.codeHash = CodeHash(SkimCode(plan));
    return record;
  }
  static SkimPlan Of(std::int32_t strategy) {
    SkimPlan plan = DrawnSkim(1);
    plan.strategy = strategy;
    return plan;
  }
  static std::u16string Saved(std::u16string code) {
    for (char16_t& c : code) c = c > 127 ? u'?' : c;
    return code;
  }
};

TEST_F(SavedSkim, IsKnownAsGeneratedWhateverItsStrategy) {
  for (std::int32_t strategy = 0; strategy < kSkimStrategies; ++strategy) {
    const SkimPlan plan = Of(strategy);
    EXPECT_TRUE(IsGeneratedCode(Record(plan), SkimCode(plan))) << strategy;
    EXPECT_TRUE(IsGeneratedCode(Record(plan), Saved(SkimCode(plan)))) << strategy;
  }
}

TEST_F(SavedSkim, ThatWasEditedIsNotGenerated) {
  const SkimPlan plan = Of(kSkimRightUp);
  std::u16string code = Saved(SkimCode(plan));
  code.replace(code.find(u"M08"), 3, u"M07");
  EXPECT_FALSE(IsGeneratedCode(Record(plan), code));
  // Nor is the comment of another strategy.
  code = Saved(SkimCode(plan));
  code.replace(code.find(u"right then up"), 13, u"left then up");
  EXPECT_FALSE(IsGeneratedCode(Record(plan), code));
  EXPECT_FALSE(IsGeneratedCode(Record(Of(kSkimLeftUp)), Saved(SkimCode(plan))));
  // Nor the name in other letters.
  code = Saved(SkimCode(plan));
  code.replace(code.find(u"right then up"), 13, u"RIGHT then up");
  EXPECT_FALSE(IsGeneratedCode(Record(plan), code));
  // Nor a "?" anywhere else.
  code = SkimCode(plan);
  code.replace(code.find(u"(X DIR"), 1, u"?");
  EXPECT_FALSE(IsGeneratedCode(Record(plan), code));
}

// A program with the block of a plan and with code of the user's.
std::u16string Program(const SkimPlan& plan, std::u16string_view code, std::u16string_view own) {
  return u"(MORVA TEXT 1)\r\n" + std::u16string(own) + u"\r\n(MORVA END 1)\r\n" +
         SettingsBlockText(2, u"Face", SavedSkim::Record(plan), code) + u"\r\n";
}

TEST_F(SavedSkim, LosesNothingInAFile) {
  for (std::int32_t strategy = 0; strategy < kSkimStrategies; ++strategy) {
    const SkimPlan plan = Of(strategy);
    EXPECT_EQ(MeasureFile(Program(plan, SkimCode(plan), u"G20")).lost, 0) << strategy;
  }
  const SkimPlan plan = Of(kSkimRightUp);
  const std::u16string text = Program(plan, SkimCode(plan), u"G20");
  // A control does not open it again.
  EXPECT_EQ(MeasureOutput(text).lost, 1);
  EXPECT_EQ(MeasureFile(text).bytes, MeasureOutput(text).bytes);
  ResetCodeRestorers();
  EXPECT_EQ(MeasureFile(text).lost, 1);
}

TEST_F(SavedSkim, LosesItsLineInUserCode) {
  const SkimPlan plan = Of(kSkimRightUp);
  const std::u16string line = u"(STRATEGY: Alternate X/Y \u00b7 right then up)";
  const OutputFigures figures = MeasureFile(Program(plan, SkimCode(plan), u"G20\r\n" + line));
  EXPECT_EQ(figures.lost, 1);
  EXPECT_EQ(figures.firstLostLine, 3);
  EXPECT_EQ(MeasureFile(line).lost, 1);
  // All of its code there is no block either.
  EXPECT_EQ(MeasureFile(SkimCode(plan)).lost, 1);
}

TEST_F(SavedSkim, LosesTheLineThatWasEditedByHand) {
  const SkimPlan plan = Of(kSkimRightUp);
  const std::u16string code = SkimCode(plan);
  const auto lost = [&](std::u16string_view from, std::u16string_view to) {
    std::u16string edited = code;
    edited.replace(edited.find(from), from.size(), to);
    return MeasureFile(Program(plan, edited, u"G20")).lost;
  };
  EXPECT_EQ(lost(u"M08", u"M07"), 1);
  EXPECT_EQ(lost(u"\u00b7", u"\u00e9"), 1);  // another character comes back
  EXPECT_EQ(lost(u"(X DIR", u"(\u00d8 X DIR"), 2);
  EXPECT_EQ(lost(u"right then up", u"left then up"), 1);
  EXPECT_EQ(lost(u"\u00b7", u"?"), 0);
}

TEST_F(SavedSkim, IsMeasuredBesideTheTableOfTheProgram) {
  const SkimPlan plan = Of(kSkimRightUp);
  ScanProgramText(u"(MORVA TEXT 7)\r\nG20\r\n(MORVA END 7)\r\nG21\r\n");
  MeasureFile(Program(plan, SkimCode(plan), u"G20"));
  ASSERT_EQ(features.count, 2);
  EXPECT_EQ(features.rows[0].id, 7);
  EXPECT_EQ(features.rows[1].id, 8);
  EXPECT_EQ(features.nextId, 9);
  ResetFeatures();
}

TEST_F(SavedSkim, OfAnotherKindIsLeftAsItIs) {
  const SkimPlan plan = Of(kSkimRightUp);
  FeatureSettings record = Record(plan);
  record.kind = kKindShape;
  EXPECT_TRUE(IsGeneratedCode(record, SkimCode(plan)));
  EXPECT_FALSE(IsGeneratedCode(record, Saved(SkimCode(plan))));
  record.kind = 99;
  EXPECT_FALSE(IsGeneratedCode(record, u"G00"));
}

}  // namespace
}  // namespace morva
