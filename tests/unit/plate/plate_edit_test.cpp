// What the plate's editors do with what is typed.

#include "plate/tools/plate_edit.h"

#include <gtest/gtest.h>

#include <string>

#include "library/shapes.h"
#include "plate/geometry/plate_layout.h"
#include "plate/model/plate.h"

namespace {

using namespace morva;

class PlateEdit : public testing::Test {
 protected:
  PlateEdit() {
    ResetPlate();
    ResetShapeLibrary();
  }
  ~PlateEdit() override {
    ResetPlate();
    ResetShapeLibrary();
  }
  static FeatureForm Form(FeatureKindRow kind, const char16_t* width, const char16_t* height) {
    FeatureForm form = ShowFeature(plate, 0);
    form.kind = kind;
    form.width = width;
    form.height = height;
    return form;
  }
  // A triangle of lines, 2 wide and 1 high, that lies beside its origin, with a work point.
  static void SaveTriangle() {
    SavedShape shape;
    shape.count = 4;
    shape.objects[0] = {kTypeLine, 0, 5, 5, 2, 0, 0};
    shape.objects[1] = {kTypeLine, 0, 7, 5, 1, 0, 90};
    shape.objects[2] = {kTypeLine, 0, 5, 5, 2.236068, 0, 26.565051};
    shape.objects[3] = {kTypeWorkPoint, 0, 100, 100, 0, 0, 0};
    ASSERT_EQ(AppendShape(u"Triangle"), 0);
    ASSERT_EQ(PutShapeAt(0, shape), 0);
  }
};

TEST_F(PlateEdit, ShowsWhatTheFormMakes) {
  const FeatureForm hole = ShowFeature(plate, 2);
  EXPECT_EQ(hole.kind, FeatureKindRow::Circle);
  EXPECT_EQ(hole.width, u"0.2500");
  EXPECT_EQ(hole.height, u"0.2500");
  EXPECT_EQ(hole.angle, u"0.0000");
  EXPECT_EQ(hole.depth, u"0.1000");
  EXPECT_EQ(hole.x, u"3.5000");
  EXPECT_EQ(hole.y, u"2.5000");
  SetPlateType(PlateFeatureType::SlotsY);
  SetFeatureFlag(2, FeatureFlag::Through, true);
  const FeatureForm slot = ShowFeature(plate, 2);
  EXPECT_EQ(slot.kind, FeatureKindRow::Slot);
  EXPECT_EQ(slot.width, u"0.7500");
  EXPECT_EQ(slot.angle, u"90.0000");
  EXPECT_EQ(slot.depth, u"0.5000");
}

TEST_F(PlateEdit, MakesOneObjectOfARectangle) {
  FeatureForm form = Form(FeatureKindRow::Rectangle, u"2", u"1");
  form.angle = u"30";
  form.depth = u"0.25";
  form.x = u"1.5";
  form.y = u"-1";
  ASSERT_TRUE(ApplyFeature(0, form));
  const PlateFeature& feature = plate.features[0];
  ASSERT_EQ(feature.shape.count, 1);
  EXPECT_TRUE(SameGeometry(feature.shape.objects[0], {kTypeRectangle, 0, 0, 0, 2, 1, 30}));
  EXPECT_TRUE(feature.placed);
  EXPECT_EQ(feature.x, 1.5);
  EXPECT_EQ(feature.y, -1);
  EXPECT_EQ(feature.depth, 0.25);
  EXPECT_FALSE(feature.through);
}

TEST_F(PlateEdit, KeepsMillimetresAsInches) {
  SetPlateUnit(true);
  FeatureForm form = Form(FeatureKindRow::Circle, u"25.4", u"25.4");
  form.x = u"50.8";
  form.y = u"-12.7";
  form.depth = u"12.7";
  ASSERT_TRUE(ApplyFeature(0, form));
  const PlateFeature& feature = plate.features[0];
  EXPECT_NEAR(feature.shape.objects[0].size, 1, 1e-12);
  EXPECT_EQ(feature.shape.objects[0].size2, 0);
  EXPECT_NEAR(feature.x, 2, 1e-12);
  EXPECT_NEAR(feature.y, -0.5, 1e-12);
  EXPECT_NEAR(feature.depth, 0.5, 1e-12);
}

TEST_F(PlateEdit, TakesABlindDepthThatEqualsTheThickness) {
  FeatureForm form = Form(FeatureKindRow::Circle, u"1", u"1");
  form.depth = u"0.5";
  EXPECT_TRUE(ApplyFeature(0, form));
  form.depth = u"0.5001";
  EXPECT_FALSE(ApplyFeature(0, form));
  SetPlateUnit(true);  // the thickness is 12.7 now
  form.depth = u"12.7";
  form.x = u"1";
  EXPECT_TRUE(ApplyFeature(0, form));
}

TEST_F(PlateEdit, TakesTheThicknessAsItIsShown) {
  SetPlateNumber(kPlateStock, 0.15626, 5);  // shown as 0.1563
  FeatureForm form = Form(FeatureKindRow::Circle, u"1", u"1");
  form.depth = u"0.1563";
  ASSERT_TRUE(ApplyFeature(0, form));
  EXPECT_EQ(plate.features[0].depth, 0.15626);
  form.depth = u"0.1564";
  EXPECT_FALSE(ApplyFeature(0, form));
  // 8 mm, shown in inches as 0.3150, which is more.
  SetPlateUnit(true);
  SetPlateNumber(kPlateStock, 8, 3);
  SetPlateUnit(false);
  form = Form(FeatureKindRow::Circle, u"1", u"1");
  form.depth = u"0.3150";
  ASSERT_TRUE(ApplyFeature(0, form));
  EXPECT_NEAR(plate.features[0].depth * 25.4, 8, 1e-9);
}

TEST_F(PlateEdit, KeepsThicknessAndDepthThatAreAppliedUnchanged) {
  SetPlateUnit(true);
  SetPlateNumber(kPlateStock, 8, 3);
  SetPlateNumber(kPlateCutDepth, -8, 3);
  SetPlateUnit(false);
  ASSERT_TRUE(ApplyDepthSection(u"0.3150", u"0.3150"));
  EXPECT_NEAR(plate.values[kPlateStock].value * 25.4, 8, 1e-9);
  EXPECT_NEAR(plate.values[kPlateCutDepth].value * 25.4, -8, 1e-9);
  ASSERT_TRUE(ApplyDepthSection(u"0.3150", u"0.1000"));
  EXPECT_NEAR(plate.values[kPlateStock].value * 25.4, 8, 1e-9);
  EXPECT_EQ(plate.values[kPlateCutDepth].value, -0.1);
  ASSERT_TRUE(ApplyDepthSection(u"0.3150", u"0.3150")) << "down to the thickness as it is shown";
  EXPECT_NEAR(plate.values[kPlateCutDepth].value * 25.4, -8, 1e-9);
}

TEST_F(PlateEdit, RefusesWithoutAChange) {
  const FeatureForm good = Form(FeatureKindRow::Slot, u"2", u"1");
  const struct {
    std::u16string FeatureForm::*field;
    const char16_t* text;
  } kCases[] = {{&FeatureForm::width, u"0"},       {&FeatureForm::width, u"-1"},
                {&FeatureForm::width, u"100000"},  {&FeatureForm::width, u"0.5"},
                {&FeatureForm::height, u""},       {&FeatureForm::height, u"1,5"},
                {&FeatureForm::height, u"2.0001"}, {&FeatureForm::depth, u"0"},
                {&FeatureForm::depth, u"0.6"},     {&FeatureForm::x, u""},
                {&FeatureForm::x, u"100000"},      {&FeatureForm::y, u"-100000"},
                {&FeatureForm::y, u"abc"},         {&FeatureForm::angle, u"3o"}};
  const std::uint32_t changes = plate.changes;
  for (const auto& each : kCases) {
    FeatureForm form = good;
    form.*each.field = each.text;
    EXPECT_FALSE(ApplyFeature(0, form)) << testing::PrintToString(std::u16string(each.text));
  }
  EXPECT_EQ(plate.changes, changes);
  EXPECT_TRUE(ApplyFeature(0, good));
}

TEST_F(PlateEdit, LeavesALockedFeatureAlone) {
  SetFeatureFlag(0, FeatureFlag::Locked, true);
  EXPECT_FALSE(ApplyFeature(0, Form(FeatureKindRow::Circle, u"1", u"1")));
  EXPECT_FALSE(MoveFeature(0, 1, 1));
  EXPECT_FALSE(MayDeleteFeature(0));
  EXPECT_EQ(std::u16string(plate.status), u"Unlock the feature before deleting it.");
  EXPECT_TRUE(MayDeleteFeature(1));
  EXPECT_FALSE(plate.features[0].placed);
}

TEST_F(PlateEdit, CentresScalesAndTurnsASavedShape) {
  SaveTriangle();
  FeatureForm form = ShowFeature(plate, 0);
  ASSERT_TRUE(ChooseCustomShape(form, 0, plate));
  EXPECT_EQ(form.width, u"2.0000");
  EXPECT_EQ(form.height, u"1.0000");
  EXPECT_EQ(form.angle, u"0.0000");
  form.width = u"4";
  form.height = u"2";
  form.angle = u"90";
  ASSERT_TRUE(ApplyFeature(0, form));
  const SavedShape& shape = plate.features[0].shape;
  ASSERT_EQ(shape.count, 3);  // without the work point
  // The lower left corner lay at (-1, -0.5): doubled and turned it is at (1, -2).
  // The library keeps 4 decimals of its sides.
  EXPECT_NEAR(shape.objects[0].x, 1, 1e-3);
  EXPECT_NEAR(shape.objects[0].y, -2, 1e-3);
  EXPECT_NEAR(shape.objects[0].size, 4, 1e-3);
  EXPECT_NEAR(shape.objects[0].angle, 90, 1e-9);
  // What is shown now can be applied again and changes nothing.
  const FeatureForm again = ShowFeature(plate, 0);
  EXPECT_EQ(again.kind, FeatureKindRow::Custom);
  EXPECT_EQ(again.width, u"2.0000");
  EXPECT_EQ(again.height, u"4.0000");
  ASSERT_TRUE(ApplyFeature(0, again));
  EXPECT_NEAR(plate.features[0].shape.objects[0].x, 1, 1e-4);
}

TEST_F(PlateEdit, KeepsTheAspectOfASavedShape) {
  SaveTriangle();
  FeatureForm form = ShowFeature(plate, 0);
  ASSERT_TRUE(ChooseCustomShape(form, 0, plate));
  form.height = u"1.01";
  EXPECT_FALSE(ApplyFeature(0, form));
  form.height = u"1.00005";
  EXPECT_TRUE(ApplyFeature(0, form));
}

// A line at 20 degrees: 0.0469846 wide and 0.0171010 high. The fourth decimal of such a width is
// ten times the slack of the aspect.
void SaveSmallShape() {
  SavedShape shape;
  shape.count = 1;
  shape.objects[0] = {kTypeLine, 0, 0, 0, 0.05, 0, 20};
  ASSERT_EQ(AppendShape(u"Small"), 0);
  ASSERT_EQ(PutShapeAt(0, shape), 0);
}

TEST_F(PlateEdit, TakesASmallSavedShapeAsItIsShown) {
  SaveSmallShape();
  FeatureForm form = ShowFeature(plate, 0);
  ASSERT_TRUE(ChooseCustomShape(form, 0, plate));
  EXPECT_EQ(form.width, u"0.0470");
  EXPECT_EQ(form.height, u"0.0171");
  ASSERT_TRUE(ApplyFeature(0, form));
  EXPECT_NEAR(plate.features[0].shape.objects[0].size, 0.05, 1e-12) << "in its own size";
}

TEST_F(PlateEdit, TakesASmallSavedShapeAtOneScaleInRoundedNumbers) {
  SaveSmallShape();
  FeatureForm form = ShowFeature(plate, 0);
  ASSERT_TRUE(ChooseCustomShape(form, 0, plate));
  form.width = u"0.0313";  // two thirds: 0.03132 by 0.01140
  form.height = u"0.0114";
  ASSERT_TRUE(ApplyFeature(0, form));
  EXPECT_NEAR(plate.features[0].shape.objects[0].size, 0.0333, 1e-4);
  form.customShape = 0;
  form.height = u"0.0113";
  EXPECT_FALSE(ApplyFeature(0, form)) << "no one scale has these";
}

TEST_F(PlateEdit, KeepsExactNumbersThatAreAppliedAsTheyAreShown) {
  PlateFeature feature;
  feature.placed = true;
  feature.x = 1.0 / 3;
  feature.y = -1.0 / 7;
  feature.depth = 1.0 / 13;
  feature.shape.count = 1;
  feature.shape.objects[0] = {kTypeSlot, 0, 0, 0, 2.0 / 3, 1.0 / 3, 100.0 / 3};
  PutFeature(0, feature);
  ASSERT_TRUE(ApplyFeature(0, ShowFeature(plate, 0)));
  const PlateFeature& kept = plate.features[0];
  EXPECT_EQ(kept.x, feature.x);
  EXPECT_EQ(kept.y, feature.y);
  EXPECT_EQ(kept.depth, feature.depth);
  EXPECT_TRUE(SameGeometry(kept.shape.objects[0], feature.shape.objects[0]));
  FeatureForm form = ShowFeature(plate, 0);
  form.x = u"0.3334";
  ASSERT_TRUE(ApplyFeature(0, form));
  EXPECT_NEAR(plate.features[0].x, 0.3334, 1e-12) << "what is typed counts as it is typed";
}

TEST_F(PlateEdit, RefusesCustomWithoutAShape) {
  EXPECT_FALSE(ApplyFeature(0, Form(FeatureKindRow::Custom, u"1", u"1")));
  FeatureForm form = ShowFeature(plate, 0);
  EXPECT_FALSE(ChooseCustomShape(form, 0, plate));
  EXPECT_FALSE(ChooseCustomShape(form, -1, plate));
}

TEST_F(PlateEdit, WritesASectionWithFourDecimals) {
  EXPECT_TRUE(ApplySection(kPlateLength, u"9.5"));
  EXPECT_EQ(std::u16string(plate.values[kPlateLength].text), u"9.5000");
  EXPECT_FALSE(ApplySection(kPlateLength, u"0"));
  EXPECT_TRUE(ApplySection(kPlateEdgeRadius, u"0"));
  EXPECT_FALSE(ApplySection(kPlateWidth, u"100000"));
  EXPECT_FALSE(ApplySection(kPlateWidth, u"1/2"));
  EXPECT_FALSE(ApplySection(kDepthSection, u"1"));
  EXPECT_EQ(plate.values[kPlateWidth].value, 6);
}

TEST_F(PlateEdit, TakesTheCutDepthAsAPositiveNumberUpToTheThickness) {
  EXPECT_TRUE(ApplyDepthSection(u"0.75", u"0.75"));
  EXPECT_EQ(std::u16string(plate.values[kPlateStock].text), u"0.7500");
  EXPECT_EQ(std::u16string(plate.values[kPlateCutDepth].text), u"-0.7500");
  EXPECT_FALSE(ApplyDepthSection(u"0.5", u"0.6"));
  EXPECT_FALSE(ApplyDepthSection(u"0.5", u"-0.1"));
  EXPECT_FALSE(ApplyDepthSection(u"0", u"0.1"));
  EXPECT_NEAR(plate.values[kPlateStock].value, 0.75, 1e-12);
}

TEST_F(PlateEdit, NamesFeaturesByTheirNumbersAlsoBehindADeletedOne) {
  SetFeatureFlag(1, FeatureFlag::Deleted, true);
  SetFeatureFlag(2, FeatureFlag::Through, true);
  EXPECT_EQ(FeatureRowWords(plate, 0), u"Feature 1  ·  Blind");
  EXPECT_EQ(FeatureRowWords(plate, 2), u"Feature 3  ·  Through");
}

TEST_F(PlateEdit, OverridesSurviveAChangeOfLayoutAndUnit) {
  ASSERT_TRUE(MoveFeature(3, 1.25, 0.5));
  SetPlateLayout(PlateLayout::Circular);
  SetPlateUnit(true);
  SetPlateLayout(PlateLayout::Grid);
  SetPlateUnit(false);
  const platform::PointF at = FeaturePlace(NumbersOf(plate), plate.features[3], 3);
  EXPECT_EQ(at.x, 1.25);
  EXPECT_EQ(at.y, 0.5);
}

}  // namespace
