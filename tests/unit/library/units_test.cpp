#include "library/units.h"

#include "app/command_ids.h"
#include "app/router.h"
#include "app/stop.h"
#include "support/stage.h"

namespace morva {
namespace {

int conversions = 0;
double lastFactor = 0;
bool metricSeen = false;
bool activeSeen = false;
int captionCalls = 0;
bool rebuiltMetric[4];
int rebuilds = 0;

class Units : public support::Stage {
 protected:
  Units() {
    ResetUnits();
    conversions = captionCalls = rebuilds = 0;
    support::MakeButton(kIdInch, u"INCH *");
    support::MakeButton(kIdMm, u"MM");
  }
  ~Units() override { ResetUnits(); }
  static void Convert(bool metric, double factor) {
    ++conversions;
    lastFactor = factor;
    metricSeen = metric;
    activeSeen = UnitsMetric();
  }
  static void Captions() { ++captionCalls; }
  static void Rebuild() { rebuiltMetric[rebuilds++] = UnitsMetric(); }
};

TEST_F(Units, SwitchingDrawsThePathAnewInTheNewUnit) {
  hooks.rebuildToolpath = Rebuild;
  SetUnits(false);
  EXPECT_EQ(rebuilds, 0);
  SetUnits(true);
  ASSERT_EQ(rebuilds, 1);
  EXPECT_TRUE(rebuiltMetric[0]);
  SetUnits(true);
  EXPECT_EQ(rebuilds, 1);
}

TEST_F(Units, StartInInch) { EXPECT_FALSE(UnitsMetric()); }

TEST_F(Units, SwitchingMovesTheStarAndTellsTheUser) {
  SetUnits(true);
  EXPECT_TRUE(UnitsMetric());
  EXPECT_EQ(TextOf(kIdInch), u"INCH");
  EXPECT_EQ(TextOf(kIdMm), u"MM *");
  EXPECT_EQ(TextOf(kIdStatusLine), u"Units switched to MM (G21). Tool inputs converted.");
  SetUnits(false);
  EXPECT_EQ(TextOf(kIdInch), u"INCH *");
  EXPECT_EQ(TextOf(kIdMm), u"MM");
  EXPECT_EQ(TextOf(kIdStatusLine), u"Units switched to INCH (G20). Tool inputs converted.");
}

TEST_F(Units, TheActiveUnitConvertsNothingAndSaysNothing) {
  RegisterUnitForm(Convert, Captions);
  platform::SetText(kIdInch, u"?");
  SetUnits(false);
  EXPECT_EQ(conversions, 0);
  EXPECT_EQ(captionCalls, 1);
  EXPECT_EQ(TextOf(kIdInch), u"INCH *");
  EXPECT_EQ(TextOf(kIdStatusLine), u"");
}

TEST_F(Units, FormsAreConvertedBeforeTheFlagTurns) {
  RegisterUnitForm(Convert, nullptr);
  SetUnits(true);
  EXPECT_EQ(conversions, 1);
  EXPECT_EQ(lastFactor, 25.4);
  EXPECT_TRUE(metricSeen);
  EXPECT_FALSE(activeSeen);
  SetUnits(false);
  EXPECT_EQ(lastFactor, 0.03937007874015748);
  EXPECT_FALSE(metricSeen);
}

TEST_F(Units, AFormWithNothingToConvertStopsTheProgram) {
  EXPECT_EXIT(RegisterUnitForm(nullptr, nullptr), testing::ExitedWithCode(kStopExitCode),
              "form of the unit switch has nothing to convert");
}

TEST_F(Units, KeysOfTheMainWindowSwitch) {
  RegisterUnitCommands();
  EXPECT_TRUE(RouteCommand(kIdMm, 0));
  EXPECT_TRUE(UnitsMetric());
  EXPECT_TRUE(RouteCommand(kIdInch, 0));
  EXPECT_FALSE(UnitsMetric());
}

}  // namespace
}  // namespace morva
