// The main window: size, title, closing, the loop.

#include "contract/contract.h"
#include "platform/post.h"

namespace contract {
namespace {

using platform::ClientArea;
using platform::kMainWindow;

class Window : public Contract {
 protected:
  static std::string Size(int id) {
    const platform::Rect area = ClientArea(id);
    return std::to_string(area.right) + " " + std::to_string(area.bottom);
  }
};

TEST_F(Window, IsShownWithItsClientSize) {
  EXPECT_TRUE(platform::Exists(kMainWindow));
  EXPECT_TRUE(platform::IsVisible(kMainWindow));
  EXPECT_EQ(Size(kMainWindow), "1200 800");
}

TEST_F(Window, HasItsNewSizeWhenItTellsIt) {
  std::string seen;
  listening.resized = [&seen](int, int) { seen = Size(kMainWindow); };
  hands::ResizeWindow(1300, 700);
  EXPECT_TRUE(hands::Until([] { return Size(kMainWindow) == "1300 700"; }));
  EXPECT_EQ(seen, "1300 700");
  EXPECT_EQ(Told("resized"), Lines{"resized 1300 700"});
}

TEST_F(Window, LeavesItsChildrenWhereTheyAreWhenItIsResized) {
  MakeView(50, {100, 100, 300, 300});
  hands::ResizeWindow(900, 600);
  EXPECT_EQ(Size(50), "200 200");
  EXPECT_EQ(platform::PlaceOf(50).left, 100);
}

TEST_F(Window, StopsAtItsLeastSize) {
  hands::ResizeWindow(100, 500);
  EXPECT_TRUE(hands::Until([] { return Size(kMainWindow) == "400 500"; }));
}

TEST_F(Window, TellsNoResizeToTheSameSize) {
  hands::ResizeWindow(1200, 800);
  EXPECT_EQ(Told("resized"), Lines{});
}

TEST_F(Window, BearsTheTitleThatTheProgramSets) {
  EXPECT_EQ(platform::WindowTitle(), u"contract");
  platform::SetWindowTitle(u"A & B \u2014 [*] C");
  EXPECT_EQ(platform::WindowTitle(), u"A & B \u2014 [*] C");
}

TEST_F(Window, KnowsThePlacesOfAViewAsItsClientArea) {
  MakeView(50, {100, 100, 300, 350});
  EXPECT_EQ(Size(50), "200 250");
  platform::SetPlace(50, {0, 0, 20, 30});
  EXPECT_EQ(Size(50), "20 30");
}

TEST_F(Window, StaysWhereTheApplicationRefusesToClose) {
  listening.closing = [] { return false; };
  hands::PressCloseKey();
  platform::RequestClose();
  EXPECT_EQ(Told("closing destroyed"), (Lines{"closing", "closing"}));
  EXPECT_TRUE(platform::IsVisible(kMainWindow));
}

TEST_F(Window, IsClosedOnceAndTellsItLast) {
  hands::PressCloseKey();
  platform::RequestClose();
  EXPECT_EQ(Told("closing destroyed"), (Lines{"closing", "destroyed"}));
}

TEST_F(Window, RunsItsLoopUntilItIsToldToEnd) {
  listening.posted = [](std::uint32_t, std::uint64_t) { platform::QuitLoop(7); };
  platform::PostToMain(1, 0, 0);
  EXPECT_EQ(platform::RunLoop(), 7);
}

TEST_F(Window, RunsNoLoopThatHasBeenEndedBefore) {
  platform::QuitLoop(5);
  EXPECT_EQ(platform::RunLoop(), 5);
}

TEST_F(Window, IsPaintedWithItsClientArea) {
  MakeView(50, {100, 100, 300, 350});
  std::string seen;
  listening.paint = [&seen](int id, platform::Canvas&) { seen = std::to_string(id); };
  hands::Paint(50);
  EXPECT_EQ(seen, "50");
}

}  // namespace
}  // namespace contract
