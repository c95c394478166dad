// Marks of a selection that was left: what is new, or chosen by another way than a click on the
// canvas, is alone what the next Delete takes.

#include "cad/model/sketch.h"
#include "cad/model/tool_state.h"
#include "cad/tools/dimensions.h"
#include "cad/tools/draw_tools.h"
#include "cad/tools/edit_parts.h"
#include "cad/tools/geometry_tools.h"
#include "cad/tools/polygon.h"
#include "edits_stage.h"

namespace morva {
namespace {

struct Marks : public cad_test::EditsStage {
  // An object that a line of the operations list chose while a tool is in hand.
  void SetUp() override {
    EditsStage::SetUp();
    Add(kTypeLine, -4, 2, 1);
  }
  static void ChooseFirst() {
    SelectSketchObject(0);
    ASSERT_TRUE(IsMultiSelected(0));
  }
  static void DrawClick(double x, double y) {
    platform::PointerEvent event = At(x, y);
    event.action = platform::PointerAction::Press;
    EXPECT_TRUE(DimensionPress(event) || DrawToolPress(event));
  }
  // Delete takes the last `going` objects and leaves the first one.
  static void ExpectFirstStays(int going) {
    const int before = sketch.objectCount;
    Command(kIdCadDelete);
    EXPECT_EQ(sketch.objectCount, before - going);
    ExpectLine(0, -4, 2, -3, 2);
  }
};

TEST_F(Marks, OfAnotherObjectGoWithANewLine) {
  StartMethod(kIdMethodLine);
  ChooseFirst();
  DrawClick(0, 0);
  DrawClick(1, 0);
  ASSERT_EQ(sketch.objectCount, 2);
  EXPECT_EQ(sketch.selected, 1);
  ExpectFirstStays(1);
}

TEST_F(Marks, OfAnotherObjectGoWithANewPolygon) {
  StartMethod(kIdMethodPolygon);
  ChooseFirst();
  ASSERT_TRUE(CreatePolygon(5, 1, 0, 0, 0));
  ExpectFirstStays(5);
}

TEST_F(Marks, OfAnotherObjectGoWhereADimensionIsPicked) {
  Add(kTypeCircle, 1, 1, 1);
  EnterDimensionMode(false);
  ChooseFirst();
  DrawClick(1, 1);
  ASSERT_EQ(sketch.selected, 1);
  ExpectFirstStays(1);
}

TEST_F(Marks, OfAnotherLineGoWithAJoin) {
  Add(kTypeLine, 0, 0, 2);
  Add(kTypeLine, 1, 1, 1, 0, 90);
  sketch.selected = 1;
  StartGeometryTool(kGeometryJoin);
  ChooseFirst();
  ToolClick(1, 1.5);
  ASSERT_EQ(sketch.selected, 1);
  ExpectFirstStays(2);  // joined lines are one part
}

}  // namespace
}  // namespace morva
