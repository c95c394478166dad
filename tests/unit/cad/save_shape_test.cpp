// A drawing saved as a reusable shape. Extents and stored numbers are worked out by hand.

#include "cad/tools/save_shape.h"

#include <gtest/gtest.h>

#include "cad/model/sketch.h"
#include "library/extents.h"
#include "library/shapes.h"
#include "unit/cad/cad_stage.h"

namespace morva {
namespace {

struct SaveShape : cad_test::CadStage {
  void SetUp() override {
    CadStage::SetUp();
    ResetShapeLibrary();
  }
  void TearDown() override {
    ResetShapeLibrary();
    CadStage::TearDown();
  }
  static void Save(const char16_t* name) {
    platform::SetText(kIdCadShapeName, name);
    headless::Click(kIdCadSaveShape);
  }
  static const SavedShape& Shape(int index) { return shapeLibrary.shapes[index]; }
  std::string Ini() const { return Raw("bin/MORVA.ini"); }
};

Extents Around(SketchObject object) {
  Extents extents;
  EXPECT_TRUE(ObjectExtents(&object, 1, extents));
  return extents;
}

void Expect(const Extents& e, double minX, double minY, double maxX, double maxY) {
  // The series of the outline is good to 6e-8.
  EXPECT_NEAR(e.minX, minX, 1e-6);
  EXPECT_NEAR(e.minY, minY, 1e-6);
  EXPECT_NEAR(e.maxX, maxX, 1e-6);
  EXPECT_NEAR(e.maxY, maxY, 1e-6);
}

TEST(ShapeExtents, AreThoseOfEndsDiameterOutlineAndPosition) {
  Expect(Around({kTypeLine, 0, 1, 2, 3, 0, 90}), 1, 2, 1, 5);
  Expect(Around({kTypeWorkAxis, 0, 1, 2, 3, 0, 180}), -2, 2, 1, 2);
  Expect(Around({kTypeCircle, 0, 1, 2, 3, 0, 0}), -0.5, 0.5, 2.5, 3.5);
  Expect(Around({kTypeRectangle, 0, 0, 0, 4, 2, 90}), -1, -2, 1, 2);
  // Half diagonal of a square of side 2 on its corner.
  Expect(Around({kTypeRectangle, 0, 0, 0, 2, 2, 45}), -1.41421356, -1.41421356, 1.41421356,
         1.41421356);
  Expect(Around({kTypeSlot, 0, 0, 0, 4, 2, 0}), -2, -1, 2, 1);
  Expect(Around({kTypeSlot, 0, 0, 0, 4, 2, 90}), -1, -2, 1, 2);
  // Not its cross, which is drawn 0.025 wide whatever the unit.
  Expect(Around({kTypeWorkPoint, 0, 5, 6, 0, 0, 0}), 5, 6, 5, 6);
}

TEST(ShapeExtents, OfNothingAreZeroAndFalse) {
  Extents extents{1, 2, 3, 4};
  EXPECT_FALSE(ObjectExtents(nullptr, 0, extents));
  Expect(extents, 0, 0, 0, 0);
}

TEST_F(SaveShape, AnEmptyDrawingIsRefusedInABox) {
  Save(u"Anything");
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].title, u"Save Custom Shape");
  EXPECT_EQ(boxes[0].text, u"Draw at least one object before saving a reusable shape.");
  EXPECT_EQ(shapeLibrary.count, 0);
}

TEST_F(SaveShape, TheShapeIsCentredOnItsOwnExtents) {
  Add(kTypeRectangle, 3, 5, 4, 2, 0, 8);
  Add(kTypeCircle, 5, 6, 2, 0, 0, 8);
  // The box spans 1 to 5 by 4 to 6, the circle 4 to 6 by 5 to 7: centre (3.5, 5.5).
  Save(u"Bracket");
  ASSERT_EQ(shapeLibrary.count, 1);
  ASSERT_EQ(Shape(0).count, 2);
  EXPECT_NEAR(Shape(0).objects[0].x, -0.5, 1e-6);
  EXPECT_NEAR(Shape(0).objects[0].y, -0.5, 1e-6);
  EXPECT_EQ(Shape(0).objects[0].size, 4);
  EXPECT_EQ(Shape(0).objects[0].size2, 2);
  EXPECT_NEAR(Shape(0).objects[1].x, 1.5, 1e-6);
  EXPECT_NEAR(Shape(0).objects[1].y, 0.5, 1e-6);
  EXPECT_EQ(TextOf(kIdCadStatus),
            u"Saved reusable shape: Bracket. It is now available in Shape and Pattern "
            u"drop-downs.");
  // The drawing itself stays as it is.
  EXPECT_EQ(sketch.objects[0].x, 3);
  EXPECT_EQ(sketch.undoDepth, 0);
  LoadShapeLibrary();
  EXPECT_EQ(Shape(0).objects[0].group, 0);
  EXPECT_EQ(Shape(0).objects[1].group, 0);
}

TEST_F(SaveShape, AMillimetreDrawingIsStoredInInches) {
  sketch.metric = true;
  Add(kTypeRectangle, 100, 50, 25.4, 50.8, 30);
  Save(u"Metric");
  EXPECT_NE(Ini().find("A0=1.0000\r\n"), std::string::npos);
  EXPECT_NE(Ini().find("B0=2.0000\r\n"), std::string::npos);
  EXPECT_NE(Ini().find("R0=30.0000\r\n"), std::string::npos);
  EXPECT_NEAR(Shape(0).objects[0].x, 0, 1e-6);
}

TEST_F(SaveShape, WithoutANameItIsNumberedBehindTheLibrary) {
  Add(kTypeCircle, 0, 0, 1);
  Save(u"");
  Save(u"Other");
  Save(u"");
  EXPECT_EQ(std::u16string(Shape(0).name), u"Custom Shape 1");
  EXPECT_EQ(std::u16string(Shape(2).name), u"Custom Shape 3");
}

TEST_F(SaveShape, ANameInOtherCaseReplacesTheRecordAndItsSpelling) {
  Add(kTypeCircle, 0, 0, 1);
  Add(kTypeCircle, 4, 0, 1);
  Save(u"bracket");
  RemoveSketchObject(1);
  sketch.objects[0].size = 7;
  Save(u"BRACKET");
  ASSERT_EQ(shapeLibrary.count, 1);
  EXPECT_EQ(std::u16string(Shape(0).name), u"BRACKET");
  EXPECT_EQ(Shape(0).count, 1);
  EXPECT_EQ(Shape(0).objects[0].size, 7);
  EXPECT_EQ(Shape(0).objects[1].size, 0);
  LoadShapeLibrary();
  EXPECT_EQ(std::u16string(Shape(0).name), u"BRACKET");
  EXPECT_EQ(Shape(0).count, 1);
}

TEST_F(SaveShape, ANameIsCutAt71UnitsAndFoundAgainByThem) {
  Add(kTypeCircle, 0, 0, 1);
  const std::u16string name(80, u'n');
  Save(name.c_str());
  Save(name.c_str());
  EXPECT_EQ(shapeLibrary.count, 1);
  EXPECT_EQ(std::u16string(Shape(0).name), std::u16string(71, u'n'));
}

TEST_F(SaveShape, ANameThatWasPastedWithControlCharactersIsToldAsItIsKept) {
  Add(kTypeCircle, 0, 0, 1);
  Save(
      u"ear\t\x01"
      u"Count=9\u2028");
  EXPECT_EQ(std::u16string(Shape(0).name), u"ear  Count=9 ");
  EXPECT_EQ(TextOf(kIdCadStatus),
            u"Saved reusable shape: ear  Count=9 . It is now available in Shape and Pattern "
            u"drop-downs.");
  Save(u"ear\u2029\u2029count=9 ");  // the same name once its breaks are blanks
  EXPECT_EQ(shapeLibrary.count, 1);
  LoadShapeLibrary();
  EXPECT_EQ(std::u16string(Shape(0).name), u"ear  count=9 ");
  EXPECT_EQ(Shape(0).count, 1);
}

TEST_F(SaveShape, OfSixtyFiveObjectsSixtyFourAreSaved) {
  for (int i = 0; i < 64; ++i) Add(kTypeCircle, 0, 0, 2);
  Add(kTypeCircle, 1000, 1000, 2);  // outside: it must not move the centre either
  Save(u"Many");
  EXPECT_EQ(Shape(0).count, 64);
  EXPECT_EQ(Shape(0).objects[0].x, 0);
  EXPECT_EQ(Shape(0).objects[63].y, 0);
}

TEST_F(SaveShape, AFullLibraryIsToldAndStillTakesANameThatItHolds) {
  Add(kTypeCircle, 0, 0, 1);
  for (int i = 0; i < kMaxShapes; ++i) Save(u"");
  ASSERT_EQ(shapeLibrary.count, 24);
  const std::string before = Ini();
  Save(u"One more");
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].title, u"Save Custom Shape");
  EXPECT_EQ(boxes[0].text, u"The reusable shape library is full.");
  EXPECT_EQ(shapeLibrary.count, 24);
  EXPECT_EQ(Ini(), before);
  sketch.objects[0].size = 9;
  Save(u"custom shape 24");
  EXPECT_EQ(Shape(23).objects[0].size, 9);
}

TEST_F(SaveShape, ASettingsFileThatCannotBeWrittenIsToldInstead) {
  Add(kTypeCircle, 0, 0, 1);
  headless::FailCall("rename", 1);
  Save(u"Lost");
  EXPECT_EQ(shapeLibrary.count, 1);
  EXPECT_EQ(TextOf(kIdCadStatus),
            u"MORVA.ini could not be written \u2014 the shape lasts for this run only.");
}

TEST_F(SaveShape, EveryListOfShapesIsFilledAgain) {
  static int fills = 0;
  fills = 0;
  RegisterShapeLibrary();
  for (int i = 0; i < 3; ++i) AddShapeList([] { ++fills; });
  Add(kTypeCircle, 0, 0, 1);
  Save(u"A");
  EXPECT_EQ(fills, 3);
}

}  // namespace
}  // namespace morva
