#include "app/router.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/command_ids.h"
#include "app/stop.h"
#include "platform/events.h"

namespace morva {
namespace {

std::vector<std::string> asked;

void Early(int, int) { asked.push_back("early"); }
void Late(int, int) { asked.push_back("late"); }
void Timer() { asked.push_back("timer"); }
void Message(unsigned long long a, unsigned long long b) {
  asked.push_back(std::to_string(a) + "," + std::to_string(b));
}

class Router : public testing::Test {
 protected:
  void SetUp() override {
    ClearCommands();
    asked.clear();
  }
  void TearDown() override { ClearCommands(); }
};

TEST_F(Router, AsksTheEarlierStageFirstWhateverTheOrderOfRegistration) {
  RegisterCommand(RouterStage::Click, 661, 0, Late);
  RegisterCommand(RouterStage::Simulator, 661, 0, Early);
  EXPECT_EQ(StageOf(661, 0), static_cast<int>(RouterStage::Simulator));
  EXPECT_TRUE(RouteCommand(661, 0));
  EXPECT_EQ(asked, std::vector<std::string>{"early"});
}

TEST_F(Router, KeepsClicksAndNotificationsApart) {
  RegisterCommand(RouterStage::FeatureSelect, kIdFeatureList, platform::kNotifyListSelect, Early);
  RegisterCommand(RouterStage::FeatureEdit, kIdFeatureList, platform::kNotifyListDouble, Late);
  EXPECT_FALSE(RouteCommand(kIdFeatureList, platform::kNotifyClick));
  EXPECT_TRUE(RouteCommand(kIdFeatureList, platform::kNotifyListDouble));
  EXPECT_TRUE(RouteCommand(kIdFeatureList, platform::kNotifyListSelect));
  EXPECT_EQ(asked, (std::vector<std::string>{"late", "early"}));
}

TEST_F(Router, TakesEveryNotificationBelowThreeWhereAListAsksForIt) {
  RegisterCommand(RouterStage::Notified, kIdToolList, kNotifyBelowThree, Early);
  EXPECT_FALSE(RouteCommand(kIdToolList, 0));
  EXPECT_TRUE(RouteCommand(kIdToolList, 1));
  EXPECT_TRUE(RouteCommand(kIdToolList, 2));
  EXPECT_FALSE(RouteCommand(kIdToolList, 3));
}

TEST_F(Router, TakesRangesOfIds) {
  RegisterCommand(RouterStage::Click, kIdTabFirst, kIdTabLast, 0, Early);
  EXPECT_FALSE(RouteCommand(799, 0));
  EXPECT_TRUE(RouteCommand(800, 0));
  EXPECT_TRUE(RouteCommand(807, 0));
  EXPECT_FALSE(RouteCommand(808, 0));
}

TEST_F(Router, AnswersNothingToAnUnknownId) {
  EXPECT_FALSE(RouteCommand(12345, 0));
  EXPECT_EQ(StageOf(12345, 0), -1);
}

TEST_F(Router, StopsTheProgramAtARowThatMakesNoSense) {
  const auto stops = testing::ExitedWithCode(kStopExitCode);
  EXPECT_EXIT(RegisterCommand(RouterStage::Click, 661, 0, nullptr), stops,
              "command 661 has no handler");
  EXPECT_EXIT(RegisterCommand(RouterStage::Click, 662, 661, 0, Early), stops,
              "command 662 has no handler or no id");
  RegisterCommand(RouterStage::Click, 800, 807, 0, Early);
  EXPECT_EXIT(RegisterCommand(RouterStage::Click, 807, 0, Late), stops,
              "command 807 has a handler in this stage already");
  RegisterCommand(RouterStage::Click, 808, 0, Late);
  RegisterCommand(RouterStage::Simulator, 807, 0, Late);
  RegisterCommand(RouterStage::Click, 807, 1, Late);
  EXPECT_EXIT(RegisterTimer(3, nullptr), stops, "timer 3 has no handler");
  RegisterTimer(3, Timer);
  EXPECT_EXIT(RegisterTimer(3, Timer), stops, "timer 3 has this handler already");
  EXPECT_EXIT(RegisterMessage(9, nullptr), stops, "message 9 has no handler");
  RegisterMessage(9, Message);
  EXPECT_EXIT(RegisterMessage(9, Message), stops, "message 9 has a handler already");
}

TEST_F(Router, HandsTimersAndMessagesToTheirOwner) {
  RegisterTimer(3, Timer);
  RegisterMessage(0x8016, Message);
  RouteTimer(3);
  RouteTimer(4);
  RouteMessage(0x8016, 128, 4410);
  RouteMessage(0x8017, 1, 1);
  EXPECT_EQ(asked, (std::vector<std::string>{"timer", "128,4410"}));
}

}  // namespace
}  // namespace morva
