#include "app/commands.h"

#include <gtest/gtest.h>

#include "platform/control.h"
#include "support/stage.h"

namespace morva {
namespace {

constexpr int kIdCut = 41001;
constexpr int kIdTurn = 41002;
constexpr int kIdBare = 41003;
constexpr Command kRows[] = {
    {kIdTurn, u"TURN", u"Turn it round"},
    {kIdCut, u"CUT", u"Cut it off", u"Cut the part off"},
    {kIdBare, u"BARE"},
};

struct Commands : public support::Stage {
  Commands() { ResetCommandWords(); }
  ~Commands() override { ResetCommandWords(); }
};

TEST_F(Commands, KnowNoIdBeforeARoomHandsInItsRows) { EXPECT_EQ(CommandOf(kIdCut), nullptr); }

TEST_F(Commands, AreFoundByIdWhateverTheirOrder) {
  AddCommands(kRows);
  for (const Command& row : kRows) EXPECT_EQ(CommandOf(row.id), &row);
  EXPECT_EQ(CommandOf(kIdCut - 1), nullptr);
  EXPECT_EQ(CommandOf(kIdBare + 1), nullptr);
}

TEST_F(Commands, CountOnceWhenARoomJoinsAgain) {
  for (int i = 0; i < 1000; ++i) AddCommands(kRows);
  for (const Command& row : kRows) EXPECT_EQ(CommandOf(row.id), &row);
}

TEST_F(Commands, MakeAKeyWithCaptionNameAndTip) {
  AddCommands(kRows);
  ASSERT_TRUE(MakeCommandKey(kIdCut, platform::kMainWindow, platform::FontRole::Small, false));
  EXPECT_EQ(platform::TextOf(kIdCut), u"CUT");
  EXPECT_EQ(platform::AccessibleName(kIdCut), u"Cut the part off");
  EXPECT_EQ(headless::ToolTipOf(kIdCut), u"Cut it off");
  EXPECT_TRUE(platform::IsEnabled(kIdCut));
}

TEST_F(Commands, NameAKeyByItsCaptionWhereThatSaysEnough) {
  AddCommands(kRows);
  ASSERT_TRUE(MakeCommandKey(kIdTurn, platform::kMainWindow, platform::FontRole::Small, true));
  EXPECT_EQ(platform::AccessibleName(kIdTurn), u"TURN");
  EXPECT_FALSE(platform::IsVisible(kIdTurn));
}

TEST_F(Commands, GiveNoTipWhereTheCaptionSaysAll) {
  AddCommands(kRows);
  ASSERT_TRUE(MakeCommandKey(kIdBare, platform::kMainWindow, platform::FontRole::Small, false));
  EXPECT_EQ(headless::ToolTipOf(kIdBare), u"");
}

TEST_F(Commands, MakeNoKeyWithoutARow) {
  EXPECT_FALSE(MakeCommandKey(kIdCut, platform::kMainWindow, platform::FontRole::Small, false));
  EXPECT_FALSE(platform::Exists(kIdCut));
}

TEST_F(Commands, DimAKeyThatIsStillToCome) {
  constexpr Command kPending[] = {{kIdToolAdd, u"+ ADD TOOL"}};
  AddCommands(kPending);
  ASSERT_TRUE(MakeCommandKey(kIdToolAdd, platform::kMainWindow, platform::FontRole::Body, false));
  EXPECT_FALSE(platform::IsEnabled(kIdToolAdd));
}

}  // namespace
}  // namespace morva
