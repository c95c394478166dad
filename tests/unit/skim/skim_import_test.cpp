// A skim among the operations that are imported into a program of the other unit.

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "codetools/import_text.h"
#include "documents/feature_blocks.h"
#include "documents/generated_code.h"
#include "skim/model/plan_record.h"
#include "support/skim_plans.h"

namespace morva {
namespace {

SkimPlan Metric() {
  SkimPlan plan = support::SmallSkim();
  ConvertSkimPlan(plan, true);
  return plan;
}

// A program in inches with the block of a skim in millimetres.
std::u16string Program(const SkimPlan& plan) {
  FeatureSettings record;
  StoreSkimPlan(plan, record);
  const std::u16string code = support::SkimCode(plan);
  record.codeHash = CodeHash(code);
  return u"(MORVA TEXT 1)\r\nG20\r\n(MORVA END 1)\r\n" +
         SettingsBlockText(2, u"Face", record, code) + u"\r\n";
}

struct SkimImport : testing::Test {
  SkimImport() { LoadImportSource(Program(Metric()), *source); }
  ~SkimImport() override { ResetFeatures(); }
  std::unique_ptr<ImportSource> source = std::make_unique<ImportSource>();
  bool chosen[kMaxFeatures] = {false, true};
};

// The unit that its code says counts, not that of the program around it.
TEST_F(SkimImport, IsKnownToBeInItsOwnUnit) {
  ASSERT_EQ(source->count, 2);
  EXPECT_TRUE(HasOtherUnits(*source, chosen, 20, nullptr));
  EXPECT_FALSE(HasOtherUnits(*source, chosen, 21, nullptr));
}

TEST_F(SkimImport, KeepsItsPlanAndItsCode) {
  std::u16string text;
  ASSERT_EQ(BuildImportText(*source, chosen, 7, nullptr, nullptr, text), ImportBuild::Done);
  ScanProgramText(text);
  ASSERT_EQ(features.count, 1);
  EXPECT_EQ(features.rows[0].id, 7);
  SkimPlan plan;
  ASSERT_TRUE(LoadSkimPlan(features.rows[0].settings, plan));
  EXPECT_TRUE(plan.metric);
  EXPECT_EQ(plan.xMax, Metric().xMax);
  EXPECT_NE(text.find(u"G01 X66.0400 F304.800\r\n"), text.npos);
  const std::size_t code = text.find(u"(MORVA CODE)") + 12;
  EXPECT_TRUE(
      IsGeneratedCode(features.rows[0].settings,
                      std::u16string_view(text).substr(code, text.find(u"(MORVA END 7)") - code)));
}

}  // namespace
}  // namespace morva
