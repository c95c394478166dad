// The name box of a drawing in the whole application: its keys and the room it takes.

#include "documents/program_tabs.h"
#include "platform/window.h"
#include "support/workbench.h"

namespace morva {
namespace {

class DrawingName : public support::Workbench {
 protected:
  void SetUp() override {
    support::Workbench::SetUp();
    ASSERT_TRUE(headless::Click(kIdSurfaceCad));
    for (int i = 1; i < kMaxDrawings; ++i) headless::Click(kIdDrawingAdd);
  }
  static int TabWidth() { return RectWidth(platform::PlaceOf(kIdDrawingFirst)); }
  static void Press(int key) {
    platform::KeyEvent event;
    event.key = key;
    headless::PressKey(event);
  }
  static std::u16string Name() { return ActiveTab()->cadStore->drawings[kMaxDrawings - 1].name; }
};

TEST_F(DrawingName, EscapeKeepsTheOldNameAndGivesTheTabsTheirRoomBack) {
  const int width = TabWidth();
  headless::Click(kIdDrawingRename);
  ASSERT_EQ(platform::FocusedId(), kIdCadDrawingName);
  // It stands in the place of the last tabs; the others keep their width.
  EXPECT_EQ(TabWidth(), width);
  const platform::Rect name = platform::PlaceOf(kIdCadDrawingName);
  EXPECT_GE(RectWidth(name), 148);
  EXPECT_LT(name.right, platform::PlaceOf(kIdDrawingAdd).left);
  EXPECT_FALSE(platform::IsVisible(kIdDrawingLast));
  for (int i = 0; i < kMaxDrawings; ++i) {
    const platform::Rect tab = platform::PlaceOf(kIdDrawingFirst + i);
    EXPECT_EQ(platform::IsVisible(kIdDrawingFirst + i),
              tab.right <= name.left || tab.bottom <= name.top)
        << i;
  }
  headless::TypeInto(kIdCadDrawingName, u"Lost");
  Press(platform::kKeyEscape);
  EXPECT_FALSE(platform::IsVisible(kIdCadDrawingName));
  EXPECT_TRUE(platform::IsVisible(kIdDrawingLast));
  EXPECT_EQ(TabWidth(), width);
  EXPECT_EQ(Name(), u"Drawing 8");
  EXPECT_EQ(platform::FocusedId(), kViewCadCanvas);
}

// In the body font "Drawing 8" is 72 pixels wide on this machine.
TEST_F(DrawingName, EightNamesCanBeReadInASmallWindow) {
  headless::Resize(1200, 800);
  for (int i = 0; i < kMaxDrawings; ++i) {
    const int id = kIdDrawingFirst + i;
    EXPECT_LE(platform::TextWidth(platform::FontRole::Body, platform::TextOf(id)) + 4,
              RectWidth(platform::PlaceOf(id)));
  }
  EXPECT_LE(platform::PlaceOf(kIdDrawingLast).bottom, platform::PlaceOf(kViewCadCanvas).top);
  EXPECT_LE(platform::PlaceOf(kIdDrawingRename).right, platform::PlaceOf(kViewCadCanvas).right);
  for (int i = 1; i < kMaxDrawings; ++i) {
    const platform::Rect before = platform::PlaceOf(kIdDrawingFirst + i - 1);
    const platform::Rect tab = platform::PlaceOf(kIdDrawingFirst + i);
    EXPECT_TRUE(tab.left >= before.right || tab.top >= before.bottom) << i;
  }
}

// In the upper row the box covers keys of that row.
TEST_F(DrawingName, StandsInTheRowOfItsDrawing) {
  headless::Resize(1200, 800);
  headless::Click(kIdDrawingFirst + 1);
  const platform::Rect tab = platform::PlaceOf(kIdDrawingFirst + 1);
  headless::Click(kIdDrawingRename);
  const platform::Rect name = platform::PlaceOf(kIdCadDrawingName);
  EXPECT_GE(name.top, tab.top);
  EXPECT_LE(name.bottom, tab.bottom);
  EXPECT_FALSE(platform::IsVisible(kIdDrawingFirst + 1));
  EXPECT_TRUE(platform::IsVisible(kIdDrawingLast));
}

TEST_F(DrawingName, EnterTakesTheNameAndGoesBackToTheCanvas) {
  const int width = TabWidth();
  headless::Click(kIdDrawingRename);
  headless::TypeInto(kIdCadDrawingName, u"Lid");
  Press(platform::kKeyEnter);
  EXPECT_FALSE(platform::IsVisible(kIdCadDrawingName));
  EXPECT_EQ(TabWidth(), width);
  EXPECT_EQ(Name(), u"Lid");
  EXPECT_EQ(platform::TextOf(kIdDrawingLast), u"Lid");
  EXPECT_EQ(platform::FocusedId(), kViewCadCanvas);
}

TEST_F(DrawingName, TheBoxOfAShapesNameTakes71UnitsByTyping) {
  headless::TypeInto(kIdCadShapeName, std::u16string(80, u'n'));
  EXPECT_EQ(platform::TextOf(kIdCadShapeName), std::u16string(71, u'n'));
}

}  // namespace
}  // namespace morva
