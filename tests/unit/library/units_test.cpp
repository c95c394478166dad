#include "library/units.h"

#include "app/command_ids.h"
#include "app/router.h"
#include "forms/form.h"
#include "support/stage.h"

namespace morva {
namespace {

enum : int { kIdLength = 41001, kIdFeed, kIdPitch, kIdCount };

constexpr FormRow kRows[] = {
    {.id = kIdLength, .label = u"Length", .follows = Follows::Length},
    {.id = kIdFeed, .label = u"Feed", .follows = Follows::Length, .decimals = 2},
    {.id = kIdPitch, .label = u"TPI", .follows = Follows::Thread},
    {.id = kIdCount, .label = u"Count"},
};
constexpr Form kForm{.rows = kRows, .metric = UnitsMetric};

bool rebuiltMetric[4];
int rebuilds = 0;

class Units : public support::Stage {
 protected:
  Units() {
    ResetUnits();
    rebuilds = 0;
    ResetForms();
    RegisterForm(kForm);
    MakeForm(kForm);
    platform::SetText(kIdLength, u"2");
    support::MakeButton(kIdInch, u"INCH *");
    support::MakeButton(kIdMm, u"MM");
  }
  ~Units() override {
    ResetUnits();
    ResetForms();
  }
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

TEST_F(Units, TurnThreadsAnInchIntoThePitchAndLeaveWhatIsNoThread) {
  const struct {
    const char16_t* typed;
    const char16_t* after;
  } kCases[] = {{u"20", u"1.270"}, {u"13", u"1.954"}, {u"", u""},
                {u"0", u"0"},      {u"-20", u"-20"},  {u"0.0000005", u"0.0000005"},
                {u"abc", u"abc"}};
  for (const auto& each : kCases) {
    SetUnits(false);
    platform::SetText(kIdPitch, each.typed);
    SetUnits(true);
    EXPECT_EQ(TextOf(kIdPitch), each.after) << platform::ToUtf8(each.typed);
  }
}

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
  platform::SetText(kIdInch, u"?");
  SetUnits(false);
  EXPECT_EQ(TextOf(kIdLength), u"2");
  EXPECT_EQ(TextOf(kIdInch), u"INCH *");
  EXPECT_EQ(TextOf(kIdStatusLine), u"");
}

// 25.4 / 20 = 1.27 both ways; 12 * 25.4 = 304.8.
TEST_F(Units, FieldsFollowAsTheirRowsSay) {
  platform::SetText(kIdFeed, u"12.0");
  platform::SetText(kIdPitch, u"20");
  platform::SetText(kIdCount, u"4");
  SetUnits(true);
  EXPECT_EQ(TextOf(kIdLength), u"50.800");
  EXPECT_EQ(TextOf(kIdFeed), u"304.80");
  EXPECT_EQ(TextOf(kIdPitch), u"1.270");
  EXPECT_EQ(TextOf(kIdCount), u"4");
  SetUnits(false);
  EXPECT_EQ(TextOf(kIdLength), u"2.000");
  EXPECT_EQ(TextOf(kIdPitch), u"20.000");
}

// 0.001 * 25.4 = 0.0254 and 0.025 / 25.4 = 0.00098; 0.5 * 25.4 = 12.7.
TEST_F(Units, FieldsComeBackFromTheOtherUnit) {
  const struct {
    int id;
    const char16_t *inch, *mm, *again;
  } rows[] = {{kIdLength, u"0.500", u"12.700", u"0.500"},
              {kIdLength, u"0.001", u"0.025", u"0.001"},
              {kIdFeed, u"12.0", u"304.80", u"12.00"}};
  for (const auto& row : rows) {
    platform::SetText(row.id, row.inch);
    SetUnits(true);
    EXPECT_EQ(TextOf(row.id), row.mm);
    SetUnits(false);
    EXPECT_EQ(TextOf(row.id), row.again);
  }
}

// A part of it, or nothing, would be a length that nobody typed.
TEST_F(Units, KeepATextThatIsNoNumber) {
  const std::u16string digits(79, u'0');
  for (const std::u16string& text :
       {std::u16string(u""), std::u16string(u"abc"), std::u16string(u"1/2"), std::u16string(u"1e3"),
        std::u16string(u"1 1/2"), std::u16string(u"0,5"), digits}) {
    for (const int id : {kIdLength, kIdFeed, kIdPitch}) platform::SetText(id, text);
    for (const bool metric : {true, false}) {
      SetUnits(metric);
      for (const int id : {kIdLength, kIdFeed, kIdPitch}) {
        EXPECT_EQ(TextOf(id), text) << id << platform::ToUtf8(text);
      }
    }
  }
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
