#include "cad/tools/size_boxes.h"

#include "cad/model/sketch.h"
#include "cad/model/tool_state.h"
#include "cad/tools/draw_tools.h"
#include "unit/cad/draw_stage.h"

namespace morva {
namespace {

using platform::kKeyEnter;
using platform::kKeyEscape;
using platform::kKeyTab;

class SizeBoxes : public DrawStage {
 protected:
  // A method with all but its last point, and the pointer at (x, y).
  static void Prepare(int method, double x0, double y0, double x, double y) {
    StartMethod(method);
    Click(x0, y0);
    Move(x, y);
    ASSERT_TRUE(tools.previewValid);
    ASSERT_TRUE(Key(kKeyTab));
    ASSERT_TRUE(tools.sizePanelShown);
  }
  static bool Enter(std::u16string_view first, std::u16string_view second = u"") {
    Type(kIdCadSizeBox1, first);
    Type(kIdCadSizeBox2, second);
    return CommitTypedSize(false);
  }
};

constexpr const char16_t* kChooseFirst =
    u"Choose construction points and valid positive dimensions first.";

TEST_F(SizeBoxes, TabWithNoValidPreviewDoesNothing) {
  StartMethod(kIdMethodLine);
  Key(kKeyTab);
  EXPECT_FALSE(tools.sizePanelShown);
  Click(1, 1);
  Move(1, 1);
  Key(kKeyTab);
  EXPECT_FALSE(tools.sizePanelShown);
  EXPECT_FALSE(platform::IsVisible(kIdCadSizeBox1));
  EXPECT_EQ(platform::FocusedId(), kViewCadCanvas);
}

TEST_F(SizeBoxes, TabOpensTheFirstBoxBesideTheCursorWithItsTextSelected) {
  Prepare(kIdMethodLine, 0, 0, 1, 0);
  EXPECT_TRUE(platform::IsVisible(kIdCadSizeBox1));
  EXPECT_FALSE(platform::IsVisible(kIdCadSizeBox2));
  EXPECT_EQ(platform::FocusedId(), kIdCadSizeBox1);
  EXPECT_EQ(TextOf(kIdCadSizeBox1), u"1.0000");
  // The cursor stands at canvas pixel (620, 300), the canvas at (100, 50).
  const platform::Rect place = platform::PlaceInMainWindow(kIdCadSizeBox1);
  EXPECT_EQ(place.left, 100 + 620 + 16);
  EXPECT_EQ(place.top, 50 + 300 + 24);
  EXPECT_EQ(place.right - place.left, 106);
  EXPECT_EQ(place.bottom - place.top, 28);
}

TEST_F(SizeBoxes, ABoxHasTwoNumbersSideBySide) {
  for (const int method : {kIdMethodRectangle, kIdMethodRectangleCentre, kIdMethodPolygon}) {
    Prepare(method, 0, 0, 1, 1);
    ASSERT_TRUE(platform::IsVisible(kIdCadSizeBox2)) << method;
    const platform::Rect first = platform::PlaceInMainWindow(kIdCadSizeBox1);
    const platform::Rect second = platform::PlaceInMainWindow(kIdCadSizeBox2);
    EXPECT_EQ(second.left, first.left + 112);
    EXPECT_EQ(second.top, first.top);
    EXPECT_EQ(second.right - second.left, 106);
  }
  for (const int method : {kIdMethodCircleRadius, kIdMethodCircleDiameter}) {
    Prepare(method, 0, 0, 1, 1);
    EXPECT_FALSE(platform::IsVisible(kIdCadSizeBox2)) << method;
  }
}

// In main-window pixels, the canvas standing at (100, 50) of 1040 by 600.
void ExpectBoxesOnTheCanvas() {
  const platform::Rect canvas = platform::PlaceInMainWindow(kViewCadCanvas);
  for (const int id : {kIdCadSizeBox1, kIdCadSizeBox2, kIdCadSizeCaption, kIdCadCreateTyped}) {
    const platform::Rect place = platform::PlaceInMainWindow(id);
    EXPECT_GE(place.left, canvas.left) << id;
    EXPECT_GE(place.top, canvas.top) << id;
    EXPECT_LE(place.right, canvas.right) << id;
    EXPECT_LE(place.bottom, canvas.bottom) << id;
  }
}

TEST_F(SizeBoxes, TheBoxesStayInsideTheCanvasAndTheWorkspace) {
  for (const double x : {-5.1, 5.1}) {
    for (const double y : {-2.9, 2.9}) {
      SCOPED_TRACE(testing::Message() << x << ", " << y);
      Prepare(kIdMethodRectangle, 0, 0, x, y);
      ExpectBoxesOnTheCanvas();
    }
  }
  // The workspace ends at 1350, 800; the canvas's right lower corner is brought close to it.
  platform::SetPlace(kViewCadCanvas, {300, 190, 1340, 790});
  Prepare(kIdMethodRectangle, 0, 0, 5.1, -2.9);  // canvas pixel (1030, 590)
  ExpectBoxesOnTheCanvas();
  const platform::Rect place = platform::PlaceInMainWindow(kIdCadSizeBox1);
  EXPECT_LE(place.left, 1350 - 240);
  EXPECT_LE(place.top, 800 - 45);
}

TEST_F(SizeBoxes, WithoutRoomBesideTheCursorTheBoxesStandBelowOrAboveIt) {
  const auto clears = [](int x, int y) {
    bool clear = true;
    for (const int id : {kIdCadSizeBox1, kIdCadSizeBox2, kIdCadSizeCaption, kIdCadCreateTyped}) {
      const platform::Rect place = platform::PlaceInMainWindow(id);
      clear = clear && !platform::RectHolds(place, x, y);
    }
    return clear;
  };
  Prepare(kIdMethodRectangle, 0, 0, 4.5, 0.5);  // canvas pixel (970, 250)
  EXPECT_TRUE(clears(100 + 970, 50 + 250));
  EXPECT_GT(platform::PlaceInMainWindow(kIdCadCreateTyped).top, 50 + 250);
  Prepare(kIdMethodRectangle, 0, 0, 4.5, -2.8);  // canvas pixel (970, 580), the canvas ends at 600
  EXPECT_TRUE(clears(100 + 970, 50 + 580));
  EXPECT_LT(platform::PlaceInMainWindow(kIdCadSizeBox1).bottom, 50 + 580);
}

TEST_F(SizeBoxes, TheBoxesFollowACanvasThatBecomesSmaller) {
  Prepare(kIdMethodRectangle, 0, 0, 5.1, -2.9);
  platform::SetPlace(kViewCadCanvas, {100, 50, 700, 400});
  PlaceSizeBoxes();
  ExpectBoxesOnTheCanvas();
}

TEST_F(SizeBoxes, TheBoxesStandOnAGroundOfTheirOwn) {
  Prepare(kIdMethodRectangle, 0, 0, 1, 1);
  const platform::Rect canvas = platform::PlaceInMainWindow(kViewCadCanvas);
  platform::Rect around = platform::PlaceInMainWindow(kIdCadSizeBox1);
  around.top = platform::PlaceInMainWindow(kIdCadCreateTyped).top;
  around.right = platform::PlaceInMainWindow(kIdCadCreateTyped).right;
  static platform::Events painting;
  painting.paint = [](int, platform::Canvas& on) { PaintSizeBoxes(on); };
  platform::ListenTo(&painting);
  const auto painted = [&]() {
    for (const headless::DrawCall& call : headless::PaintOf(kViewCadCanvas)) {
      if (call.name != "FillArea") continue;
      const auto& n = call.numbers;
      if (n[0] > 0 && n[0] <= around.left - canvas.left && n[1] <= around.top - canvas.top &&
          n[2] >= around.right - canvas.left && n[3] >= around.bottom - canvas.top) {
        return true;
      }
    }
    return false;
  };
  EXPECT_TRUE(painted());
  Key(kKeyEscape);
  EXPECT_FALSE(painted());
}

TEST_F(SizeBoxes, TheCaptionAndTheCreateKeyStandAboveThem) {
  Prepare(kIdMethodRectangle, 0, 0, 1, 1);
  const platform::Rect first = platform::PlaceInMainWindow(kIdCadSizeBox1);
  const platform::Rect second = platform::PlaceInMainWindow(kIdCadSizeBox2);
  const platform::Rect caption = platform::PlaceInMainWindow(kIdCadSizeCaption);
  const platform::Rect key = platform::PlaceInMainWindow(kIdCadCreateTyped);
  EXPECT_TRUE(platform::IsVisible(kIdCadSizeCaption));
  EXPECT_TRUE(platform::IsVisible(kIdCadCreateTyped));
  EXPECT_EQ(caption.left, first.left);
  EXPECT_LE(caption.bottom, first.top);
  EXPECT_EQ(key.left, second.left);
  EXPECT_LE(key.bottom, second.top);
  EXPECT_LE(caption.right, key.left);
  Key(kKeyEscape);
  EXPECT_FALSE(platform::IsVisible(kIdCadSizeCaption));
  EXPECT_FALSE(platform::IsVisible(kIdCadCreateTyped));
}

TEST_F(SizeBoxes, WhileTheyAreOpenMovesLeaveThePreviewAlone) {
  Prepare(kIdMethodLine, 0, 0, 1, 0);
  Move(3, 0);
  EXPECT_EQ(tools.previewObject.size, 1);
  EXPECT_EQ(TextOf(kIdCadSizeBox1), u"1.0000");
  Type(kIdCadSizeBox1, u"2");
  Move(4, 0);
  EXPECT_EQ(TextOf(kIdCadSizeBox1), u"2");
}

TEST_F(SizeBoxes, EnterCommitsTheTypedSizeAndTheMethodGoesOn) {
  Prepare(kIdMethodLine, 1, 1, 2, 2);
  Type(kIdCadSizeBox1, u"2.5");
  EXPECT_TRUE(BoxKey(kKeyEnter));
  ASSERT_EQ(sketch.objectCount, 1);
  ExpectObject(Last(), kTypeLine, 1, 1, 2.5, 0, 45);
  EXPECT_EQ(LastLogged(), u"Created geometry by construction points");
  EXPECT_EQ(sketch.undoDepth, 1);
  EXPECT_FALSE(platform::IsVisible(kIdCadSizeBox1));
  EXPECT_FALSE(tools.sizePanelShown);
  EXPECT_FALSE(tools.previewValid);
  EXPECT_EQ(tools.constructionClicks, 0);
  EXPECT_EQ(tools.constructionMethod, kIdMethodLine);
  EXPECT_EQ(platform::FocusedId(), kViewCadCanvas);
}

TEST_F(SizeBoxes, AMethodOfThreePointsTakesTypedSizes) {
  StartMethod(kIdMethodSlotPoints);
  Click(0, 0);
  Click(2, 0);
  Move(1, 0.5);
  Key(kKeyTab);
  EXPECT_TRUE(platform::IsVisible(kIdCadSizeBox2));
  EXPECT_EQ(TextOf(kIdCadSizeBox1), u"3.0000");
  EXPECT_EQ(TextOf(kIdCadSizeBox2), u"1.0000");
  EXPECT_TRUE(Enter(u"4", u".75"));
  ExpectObject(Last(), kTypeSlot, 1, 0, 4, 0.75, 0);
}

TEST_F(SizeBoxes, ASlotNeedsItsLengthNotBelowItsWidth) {
  StartMethod(kIdMethodSlotPoints);
  Click(0, 0);
  Click(2, 0);
  Move(1, 0.5);
  Key(kKeyTab);
  EXPECT_FALSE(Enter(u"1", u"1.001"));
  EXPECT_EQ(sketch.objectCount, 0);
  EXPECT_TRUE(tools.sizePanelShown);  // the numbers can be mended
  EXPECT_TRUE(Enter(u"1", u"1"));
}

TEST_F(SizeBoxes, ADiameterByItsEndsStartsAtTheFirstPoint) {
  Prepare(kIdMethodCircleDiameter, 1, 1, 4, 5 - 2);  // towards (3, 2), length sqrt 13
  EXPECT_TRUE(Enter(u"2"));
  const double unit = std::sqrt(13);
  ExpectObject(Last(), kTypeCircle, 1 + 3 / unit, 1 + 2 / unit, 2, 0, 0);
}

TEST_F(SizeBoxes, ACircleAboutItsCentreKeepsIt) {
  Prepare(kIdMethodCircleRadius, 1, 1, 2, 1);
  EXPECT_EQ(TextOf(kIdCadSizeBox1), u"2.0000");
  EXPECT_TRUE(Enter(u"0.375"));
  ExpectObject(Last(), kTypeCircle, 1, 1, 0.375, 0, 0);
}

TEST_F(SizeBoxes, ARectangleGrowsFromItsFirstCornerTowardsThePreview) {
  Prepare(kIdMethodRectangle, 1, 1, 0, 2);
  EXPECT_TRUE(Enter(u"3", u"0.5"));
  ExpectObject(Last(), kTypeRectangle, 1 - 1.5, 1 + 0.25, 3, 0.5, 0);
  Prepare(kIdMethodRectangle, 1, 1, 2, 0);
  EXPECT_TRUE(Enter(u"3", u"0.5"));
  ExpectObject(Last(), kTypeRectangle, 1 + 1.5, 1 - 0.25, 3, 0.5, 0);
}

TEST_F(SizeBoxes, ARectangleAboutItsCentreKeepsIt) {
  Prepare(kIdMethodRectangleCentre, 1, 1, 2, 0);
  EXPECT_TRUE(Enter(u"3", u"0.5"));
  ExpectObject(Last(), kTypeRectangle, 1, 1, 3, 0.5, 0);
}

TEST_F(SizeBoxes, APolygonTakesRadiusAndWholeSides) {
  Prepare(kIdMethodPolygon, 0, 0, 0, 1);
  for (const char16_t* sides : {u"2", u"65", u"4.5", u"", u"4a", u"-4"}) {
    EXPECT_FALSE(Enter(u"2", sides));
  }
  EXPECT_EQ(sketch.objectCount, 0);
  EXPECT_TRUE(Enter(u"2", u"4"));
  ASSERT_EQ(sketch.objectCount, 4);
  EXPECT_NEAR(sketch.objects[0].y, 2, 1e-6);
  EXPECT_NEAR(sketch.objects[0].size, std::sqrt(8), 1e-6);
  EXPECT_EQ(LastLogged(), u"Created polygon");
}

TEST_F(SizeBoxes, OnlyStrictNumbersAboveZeroCount) {
  const std::u16string longest(77, u'0');
  Prepare(kIdMethodLine, 0, 0, 1, 0);
  for (const std::u16string& text :
       {std::u16string(u""), std::u16string(u"abc"), std::u16string(u"1,5"),
        std::u16string(u"1.5in"), std::u16string(u" 1"), std::u16string(u"1 "),
        std::u16string(u"1e3"), std::u16string(u"1.2.3"), std::u16string(u"."),
        std::u16string(u"+"), std::u16string(u"--1"), std::u16string(u"-1"), std::u16string(u"0"),
        std::u16string(u"-0"), std::u16string(u"1000000"), longest + u"01"}) {
    EXPECT_FALSE(Enter(text)) << support::Narrow(text);
  }
  EXPECT_EQ(sketch.objectCount, 0);
  EXPECT_EQ(sketch.undoDepth, 0);
  for (const std::u16string& text :
       {std::u16string(u"5"), std::u16string(u"+5"), std::u16string(u"5."), std::u16string(u".5"),
        std::u16string(u"999999.999"), longest + u"1"}) {
    Prepare(kIdMethodLine, 0, 0, 1, 0);
    EXPECT_TRUE(Enter(text)) << support::Narrow(text);
  }
  EXPECT_EQ(sketch.objectCount, 6);
}

TEST_F(SizeBoxes, TheSecondNumberIsStrictToo) {
  Prepare(kIdMethodRectangle, 0, 0, 1, 1);
  for (const char16_t* text : {u"", u"0", u"-1", u"1x"}) EXPECT_FALSE(Enter(u"1", text));
  EXPECT_EQ(sketch.objectCount, 0);
}

TEST_F(SizeBoxes, TheEnterKeyFailsSilentlyAndTheButtonTells) {
  Prepare(kIdMethodLine, 0, 0, 1, 0);
  const std::u16string before = Status();
  Type(kIdCadSizeBox1, u"none");
  EXPECT_TRUE(BoxKey(kKeyEnter));
  EXPECT_EQ(Status(), before);
  ASSERT_TRUE(headless::Click(kIdCadCreateTyped));
  EXPECT_EQ(Status(), kChooseFirst);
  Type(kIdCadSizeBox1, u"2");
  ASSERT_TRUE(headless::Click(kIdCadCreateTyped));
  EXPECT_EQ(sketch.objectCount, 1);
}

TEST_F(SizeBoxes, WithoutAPreviewNothingIsCreated) {
  Type(kIdCadSizeBox1, u"2");
  EXPECT_FALSE(CommitTypedSize(false));
  EXPECT_FALSE(CommitTypedSize(true));
  EXPECT_EQ(Status(), kChooseFirst);
  StartMethod(kIdMethodLine);
  Click(0, 0);
  EXPECT_FALSE(CommitTypedSize(true));
  EXPECT_EQ(sketch.objectCount, 0);
}

TEST_F(SizeBoxes, With96ObjectsTheTypedPathIsRefused) {
  Fill(96);
  Prepare(kIdMethodLine, 0, 0, 1, 0);
  const std::u16string before = Status();
  EXPECT_FALSE(CommitTypedSize(false));
  EXPECT_EQ(Status(), before);
  EXPECT_FALSE(CommitTypedSize(true));
  EXPECT_EQ(Status(), kChooseFirst);
  EXPECT_EQ(sketch.undoDepth, 0);
  RemoveSketchObject(0);
  RemoveSketchObject(0);
  Prepare(kIdMethodPolygon, 0, 0, 1, 0);
  EXPECT_FALSE(CommitTypedSize(true));  // six sides, room for two
  EXPECT_EQ(Status(), kChooseFirst);
  EXPECT_EQ(sketch.objectCount, 94);
}

TEST_F(SizeBoxes, ATypedCircleThatTouchesIsNotOffered) {
  Put(kTypeCircle, 2, 0, 2);
  StartMethod(kIdMethodCircleOnCircle);
  Click(2.5, 0);
  Move(5, 0);
  ASSERT_TRUE(tools.previewValid);
  Key(kKeyTab);
  EXPECT_FALSE(tools.sizePanelShown);
  EXPECT_FALSE(CommitTypedSize(true));
  EXPECT_EQ(sketch.objectCount, 1);
}

TEST_F(SizeBoxes, TabGoesBetweenTheBoxes) {
  Prepare(kIdMethodRectangle, 0, 0, 1, 1);
  EXPECT_TRUE(BoxKey(kKeyTab));
  EXPECT_EQ(platform::FocusedId(), kIdCadSizeBox2);
  EXPECT_TRUE(BoxKey(kKeyTab));
  EXPECT_EQ(platform::FocusedId(), kIdCadSizeBox1);
  Prepare(kIdMethodLine, 0, 0, 1, 1);
  EXPECT_TRUE(BoxKey(kKeyTab));
  EXPECT_EQ(platform::FocusedId(), kIdCadSizeBox1);
}

TEST_F(SizeBoxes, TabBringsTheKeyboardBackToThem) {
  Prepare(kIdMethodLine, 0, 0, 1, 0);
  platform::SetFocusTo(kViewCadCanvas);  // as after a pan with the middle button
  Type(kIdCadSizeBox1, u"7");
  EXPECT_TRUE(Key(kKeyTab));
  EXPECT_EQ(platform::FocusedId(), kIdCadSizeBox1);
  EXPECT_EQ(TextOf(kIdCadSizeBox1), u"7");
}

TEST_F(SizeBoxes, AnotherMethodHidesThem) {
  for (const int method : {kIdMethodLine, kIdMethodSlotDrag, kIdMethodDimension}) {
    Prepare(kIdMethodRectangle, 0, 0, 1, 1);
    StartMethod(method);
    EXPECT_FALSE(tools.sizePanelShown) << method;
    EXPECT_FALSE(platform::IsVisible(kIdCadSizeBox1)) << method;
    EXPECT_FALSE(platform::IsVisible(kIdCadSizeBox2)) << method;
    EXPECT_FALSE(tools.previewValid) << method;
  }
}

TEST_F(SizeBoxes, AThreePointCircleKeepsItsCentreUnderATypedDiameter) {
  StartMethod(kIdMethodCircleThree);
  Click(1, 0);
  Click(0, 1);
  Move(-1, 0);
  Key(kKeyTab);
  EXPECT_FALSE(platform::IsVisible(kIdCadSizeBox2));
  EXPECT_TRUE(Enter(u"0.5"));
  ExpectObject(Last(), kTypeCircle, 0, 0, 0.5, 0, 0);
}

TEST_F(SizeBoxes, TabBackwardsLeavesTheCanvas) {
  StartMethod(kIdMethodLine);
  Click(0, 0);
  Move(1, 0);
  platform::KeyEvent back;
  back.key = kKeyTab;
  back.shift = true;
  EXPECT_FALSE(DrawToolKey(back));
  EXPECT_FALSE(tools.sizePanelShown);
}

TEST_F(SizeBoxes, EscapeInABoxEndsTheMethod) {
  Prepare(kIdMethodRectangle, 0, 0, 1, 1);
  EXPECT_TRUE(BoxKey(kKeyEscape));
  EXPECT_EQ(tools.constructionMethod, 0);
  EXPECT_FALSE(platform::IsVisible(kIdCadSizeBox1));
  EXPECT_EQ(platform::FocusedId(), kViewCadCanvas);
}

TEST_F(SizeBoxes, OtherKeysStayWithTheBox) { EXPECT_FALSE(BoxKey(u'5')); }

TEST_F(SizeBoxes, EnterOnTheCanvasCommitsOnlyWhileTheyAreOpen) {
  StartMethod(kIdMethodLine);
  Click(0, 0);
  Move(1, 0);
  EXPECT_FALSE(Key(kKeyEnter));
  EXPECT_EQ(sketch.objectCount, 0);
  Key(kKeyTab);
  EXPECT_TRUE(Key(kKeyEnter));
  EXPECT_EQ(sketch.objectCount, 1);
}

TEST_F(SizeBoxes, AClickWhileTheyAreOpenTakesThePlaceInstead) {
  Prepare(kIdMethodLine, 0, 0, 1, 0);
  Type(kIdCadSizeBox1, u"9");
  Click(0, 3);
  ExpectObject(Last(), kTypeLine, 0, 0, 3, 0, 90);
  EXPECT_FALSE(platform::IsVisible(kIdCadSizeBox1));
}

TEST_F(SizeBoxes, MillimetresAreTypedAsTheyAre) {
  sketch.metric = true;
  Prepare(kIdMethodCircleRadius, 10, 10, 20, 10);
  EXPECT_EQ(TextOf(kIdCadSizeBox1), u"20.0000");
  EXPECT_TRUE(Enter(u"12.7"));
  ExpectObject(Last(), kTypeCircle, 10, 10, 12.7, 0, 0);
}

}  // namespace
}  // namespace morva
