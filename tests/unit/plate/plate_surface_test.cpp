// The workspace as it comes up, naming, the form, the list and the editors.

#include <gtest/gtest.h>

#include "app/commands.h"
#include "app/router.h"
#include "documents/saver.h"
#include "documents/tab_table.h"
#include "library/shapes.h"
#include "plate/model/plate_record.h"
#include "plate/tools/plate_saving.h"
#include "plate_stage.h"

namespace morva {
namespace {

using plate_test::NamedPlateUp;
using plate_test::PlateUp;

TEST_F(PlateUp, ComesUpEmptyAndAsksForAName) {
  EXPECT_EQ(app.surface, kSurfacePlate);
  EXPECT_EQ(platform::FocusedId(), kIdPlateName);
  EXPECT_EQ(platform::TextOf(kIdPlateHead), u"Name this plate \u00B7 automatic saving");
  EXPECT_EQ(Status(), u"Create a named plate to begin. Your changes will save automatically.");
  EXPECT_TRUE(PreviewSays(u"Choose a plate shape to start a new named plate."));
  EXPECT_TRUE(Rows().empty());
  EXPECT_EQ(platform::TextOf(kIdPlateNaming), u"Name plate\u2026");
  EXPECT_EQ(platform::TextOf(kIdPlateField), u"8.000");
  EXPECT_EQ(platform::TextOf(kIdPlateField + 12), u"0.500");
}

TEST_F(PlateUp, TakesANameAndShowsPictureAndFeatures) {
  Name(u"  Base plate ");
  EXPECT_FALSE(plate.unnamed);
  EXPECT_EQ(std::u16string(plate.name), u"Base plate");
  EXPECT_EQ(platform::TextOf(kIdPlateNaming), u"Base plate");
  EXPECT_FALSE(platform::IsVisible(kIdPlateName));
  const std::vector<std::u16string> rows = {
      u"Plate outline / thickness", u"Feature 1  \u00B7  Blind", u"Feature 2  \u00B7  Blind",
      u"Feature 3  \u00B7  Blind", u"Feature 4  \u00B7  Blind"};
  EXPECT_EQ(Rows(), rows);
  EXPECT_TRUE(PreviewSays(u"PLATE PREVIEW  \u2022  outline + mounting features"));
  EXPECT_TRUE(PreviewSays(
      u"Click to edit \u2022 drag dimensions to reposition \u2022 amber = selected feature"));
  EXPECT_TRUE(PreviewSays(u"SECTION \u2022 click to edit"));
  EXPECT_TRUE(tabs[0].dirty);
  EXPECT_EQ(Status(), u"The plate has its name. Completed edits save automatically.");
  EXPECT_EQ(platform::FocusedId(), kViewPlatePicture) << "the keys go on from there";
}

TEST_F(PlateUp, LeavesAnEmptyNameAlone) {
  Name(u"  \t ");
  EXPECT_TRUE(plate.unnamed);
  EXPECT_TRUE(headless::TakeBoxes().empty());
  EXPECT_TRUE(platform::IsVisible(kIdPlateName));
}

TEST_F(PlateUp, RefusesTheNameOfASavedShapeInAnyCase) {
  AppendShape(u"BASE");
  Name(u"base");
  EXPECT_TRUE(plate.unnamed);
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].title, u"Plate name");
  EXPECT_EQ(boxes[0].text,
            u"That name already exists. Choose another name or open the saved shape.");
}

TEST_F(PlateUp, EnterAndEscapeWorkTheNameBox) {
  headless::TypeInto(kIdPlateName, u"Jig");
  headless::Focus(kIdPlateName);
  EXPECT_TRUE(headless::PressKey({platform::kKeyEscape}));
  EXPECT_TRUE(plate.unnamed);
  ASSERT_TRUE(headless::Click(kIdPlateNaming));
  headless::TypeInto(kIdPlateName, u"Jig");
  EXPECT_TRUE(headless::PressKey({platform::kKeyEnter}));
  EXPECT_FALSE(plate.unnamed);
}

TEST_F(PlateUp, CreatePlateSavesAtOnce) {
  ASSERT_TRUE(headless::Click(kIdPlateCreate));
  Name(u"Base");
  EXPECT_EQ(shapeLibrary.count, 1);
  EXPECT_EQ(plate.savedShapeIndex, 0);
}

TEST_F(PlateUp, BeginsANewPlateWithAShapeOfTheList) {
  headless::PressKey({platform::kKeyEscape});
  headless::SelectRows(kIdPlateShape, {2});
  EXPECT_EQ(platform::FocusedId(), kIdPlateName);
  Name(u"Arm");
  EXPECT_EQ(plate.shape, PlateShape::Obround);
}

TEST_F(NamedPlateUp, FollowsItsFieldsAndLists) {
  headless::TypeInto(kIdPlateField + kPlateLength, u"10");
  EXPECT_EQ(NumbersOf(plate).length, 10);
  headless::SelectRows(kIdPlateLayout, {1});
  headless::TypeInto(kIdPlateField + kPlateCountX, u"4");
  headless::TypeInto(kIdPlateField + kPlateCountY, u"3");
  EXPECT_EQ(Rows().size(), 13u);
  headless::SelectRows(kIdPlateType, {3});
  EXPECT_EQ(plate.type, PlateFeatureType::Mixed);
}

TEST_F(NamedPlateUp, ConvertsItsFieldsWithTheUnitAndKeepsCounts) {
  EXPECT_EQ(platform::TextOf(kIdPlateUnit), u"IN \u25CF");
  ASSERT_TRUE(headless::Click(kIdPlateUnit));
  EXPECT_EQ(platform::TextOf(kIdPlateUnit), u"MM \u25CF");
  EXPECT_EQ(platform::TextOf(kIdPlateField), u"203.200000");
  EXPECT_EQ(NumbersOf(plate).countX, 2);
}

TEST_F(NamedPlateUp, EditsASection) {
  ASSERT_TRUE(headless::Click(kIdPlateFit));
  OpenPlateTarget(kPlateWidth, Keyboard::ToEditor);
  EXPECT_EQ(platform::FocusedId(), kIdPlateSection);
  headless::TypeInto(kIdPlateSection, u"5");
  ASSERT_TRUE(headless::Click(kIdPlateApply));
  EXPECT_EQ(platform::TextOf(kIdPlateField + kPlateWidth), u"5.0000");
  EXPECT_FALSE(platform::IsVisible(kIdPlateSection));
}

TEST_F(NamedPlateUp, RefusesHalfANumberAndZeroInASection) {
  for (const char16_t* text : {u"0", u"0,75", u"", u"100000", u"x"}) {
    OpenPlateTarget(kPlateWidth, Keyboard::ToEditor);
    headless::TypeInto(kIdPlateSection, text);
    ASSERT_TRUE(headless::Click(kIdPlateApply));
    const auto boxes = headless::TakeBoxes();
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].title, u"Check plate settings");
    EXPECT_EQ(platform::TextOf(kIdPlateField + kPlateWidth), u"6.000");
  }
}

TEST_F(NamedPlateUp, OpensThicknessAndDepthByTheFirstRow) {
  headless::SelectRows(kIdPlateFeatures, {0});
  EXPECT_TRUE(platform::IsVisible(kIdPlateThickness));
  EXPECT_EQ(platform::TextOf(kIdPlateCutDepth), u"0.1000");
  headless::TypeInto(kIdPlateThickness, u"0.75");
  headless::TypeInto(kIdPlateCutDepth, u"0.75");
  ASSERT_TRUE(headless::Click(kIdPlateApply));
  EXPECT_DOUBLE_EQ(NumbersOf(plate).thickness, 0.75);
  EXPECT_EQ(platform::TextOf(kIdPlateField + kPlateCutDepth), u"-0.7500");
}

TEST_F(NamedPlateUp, EditsAFeature) {
  Open(1);
  EXPECT_EQ(platform::TextOf(kIdPlateHead), u"Edit feature 2");
  EXPECT_EQ(platform::TextOf(kIdPlateX), u"3.5000");
  EXPECT_EQ(platform::TextOf(kIdPlateY), u"-2.5000");
  headless::SelectRows(kIdPlateKind, {2});
  headless::TypeInto(kIdPlateWidth, u"1");
  headless::TypeInto(kIdPlateHeight, u"0.5");
  headless::TypeInto(kIdPlateX, u"3");
  ASSERT_TRUE(headless::Click(kIdPlateThrough));
  EXPECT_FALSE(platform::IsEnabled(kIdPlateDepth));
  EXPECT_EQ(platform::TextOf(kIdPlateThrough), u"Through: ON");
  ASSERT_TRUE(headless::Click(kIdPlateApply));
  EXPECT_TRUE(headless::TakeBoxes().empty());
  EXPECT_EQ(Rows()[2], u"Feature 2  \u00B7  Through");
  EXPECT_EQ(PlaceOfFeature(1).x, 3);
  EXPECT_EQ(plate.features[1].shape.count, 1);
  EXPECT_EQ(plate.features[1].shape.objects[0].type, kTypeSlot);
}

TEST_F(NamedPlateUp, RefusesAFeatureDeeperThanThePlateAndLeavesItAsItWas) {
  Open(0);
  const std::u16string deeper = u"99";
  headless::TypeInto(kIdPlateDepth, deeper);
  ASSERT_TRUE(headless::Click(kIdPlateApply));
  EXPECT_EQ(headless::TakeBoxes().size(), 1u);
  EXPECT_FALSE(plate.features[0].placed);
  EXPECT_EQ(platform::TextOf(kIdPlateDepth), deeper) << "to be mended, not typed anew";
}

TEST_F(NamedPlateUp, LocksHidesAndDeletes) {
  Open(2);
  ASSERT_TRUE(headless::Click(kIdPlateLock));
  EXPECT_FALSE(platform::IsEnabled(kIdPlateWidth));
  EXPECT_FALSE(platform::IsEnabled(kIdPlateApply));
  ASSERT_TRUE(headless::Click(kIdPlateDelete));
  EXPECT_EQ(Status(), u"Unlock the feature before deleting it.");
  ASSERT_TRUE(headless::Click(kIdPlateLock));
  EXPECT_TRUE(platform::IsEnabled(kIdPlateWidth));
  ASSERT_TRUE(headless::Click(kIdPlateHide));
  EXPECT_TRUE(platform::IsRowDim(kIdPlateFeatures, 3));
  headless::QueueAnswer(platform::BoxAnswer::No);
  ASSERT_TRUE(headless::Click(kIdPlateDelete));
  EXPECT_EQ(Rows().size(), 5u);
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  ASSERT_TRUE(headless::Click(kIdPlateDelete));
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 2u);
  EXPECT_EQ(boxes[1].title, u"Delete feature");
  EXPECT_EQ(Rows().size(), 4u);
  EXPECT_EQ(Rows()[3], u"Feature 4  \u00B7  Blind") << "the others keep their numbers";
}

TEST_F(NamedPlateUp, TakesTheCommandsByNumberOnItsSurfaceAlone) {
  RouteCommand(kIdPlateCommandFirst + 4, platform::kNotifyClick);
  EXPECT_EQ(Status(), u"Select a hole feature first.");
  Open(0);
  RouteCommand(kIdPlateCommandFirst + 1, platform::kNotifyClick);
  EXPECT_EQ(platform::SelectedRow(kIdPlateKind), 1);
  RouteCommand(kIdPlateCommandFirst + 4, platform::kNotifyClick);
  EXPECT_TRUE(plate.features[0].locked);
  headless::Advance(1000);  // saved, so that it may be left
  headless::Click(kIdSurfaceCode);
  ASSERT_EQ(app.surface, kSurfaceCode);
  RouteCommand(kIdPlateCommandFirst + 4, platform::kNotifyClick);
  EXPECT_TRUE(plate.features[0].locked);
}

TEST_F(NamedPlateUp, CutsASavedShapeAtAFeature) {
  Open(0);
  headless::SelectRows(kIdPlateKind, {3});
  EXPECT_EQ(Status(), u"Save a custom CAD shape first.");
  EXPECT_EQ(platform::SelectedRow(kIdPlateKind), 0);
  SavedShape shape;
  shape.name[0] = u'T';
  shape.count = 1;
  shape.objects[0] = {kTypeRectangle, 0, 0, 0, 2, 1, 0};
  PutShape(shape);
  headless::QueuePick(kIdCustomShapeFirst + 0);
  headless::SelectRows(kIdPlateKind, {3});
  EXPECT_EQ(platform::SelectedRow(kIdPlateKind), 3);
  EXPECT_EQ(platform::TextOf(kIdPlateWidth), u"2.0000");
  EXPECT_EQ(platform::TextOf(kIdPlateHeight), u"1.0000");
  ASSERT_TRUE(headless::Click(kIdPlateApply));
  EXPECT_TRUE(headless::TakeBoxes().empty());
  EXPECT_EQ(plate.features[0].shape.count, 1);
  EXPECT_EQ(std::u16string(plate.features[0].shape.name), u"T");
}

// A right angle whose first line stands upright, with a work axis far beyond it.
void SaveUprightAngle() {
  SavedShape shape;
  shape.name[0] = u'T';
  shape.count = 3;
  shape.objects[0] = {kTypeWorkAxis, 0, 50, 50, 20, 0, 0};
  shape.objects[1] = {kTypeLine, 0, 5, 5, 1, 0, 90};
  shape.objects[2] = {kTypeLine, 0, 5, 5, 2, 0, 0};
  ASSERT_EQ(PutShape(shape), 0);
}

TEST_F(NamedPlateUp, CutsASavedShapeAsItStands) {
  SaveUprightAngle();
  Open(0);
  headless::QueuePick(kIdCustomShapeFirst + 0);
  headless::SelectRows(kIdPlateKind, {3});
  EXPECT_EQ(platform::TextOf(kIdPlateWidth), u"2.0000");
  EXPECT_EQ(platform::TextOf(kIdPlateHeight), u"1.0000");
  EXPECT_EQ(platform::TextOf(kIdPlateAngle), u"90.0000");
  ASSERT_TRUE(headless::Click(kIdPlateApply));
  EXPECT_TRUE(headless::TakeBoxes().empty());
  const SavedShape& cut = plate.features[0].shape;
  ASSERT_EQ(cut.count, 2) << "without the axis";
  for (int i = 0; i < 2; ++i) {
    // Its box is measured with the sketch's own sines.
    EXPECT_NEAR(cut.objects[i].x, -1, 1e-7);
    EXPECT_NEAR(cut.objects[i].y, -0.5, 1e-7);
    EXPECT_NEAR(cut.objects[i].size, i + 1, 1e-6);
    EXPECT_NEAR(cut.objects[i].angle, i == 0 ? 90 : 0, 1e-9);
  }
}

TEST_F(NamedPlateUp, RefusesASavedShapeWithNothingToCut) {
  SavedShape shape;
  shape.name[0] = u'A';
  shape.count = 1;
  shape.objects[0] = {kTypeWorkAxis, 0, 0, 0, 2, 0, 0};
  PutShape(shape);
  Open(0);
  headless::QueuePick(kIdCustomShapeFirst + 0);
  headless::SelectRows(kIdPlateKind, {3});
  EXPECT_EQ(Status(), u"Nothing of this saved shape is cut. Choose another one.");
  EXPECT_EQ(platform::SelectedRow(kIdPlateKind), 0);
}

TEST_F(NamedPlateUp, SetsThroughWhereTheThicknessIsShownRounded) {
  headless::TypeInto(kIdPlateField + kPlateStock, u"0.15626");  // shown as 0.1563
  Open(0);
  ASSERT_TRUE(headless::Click(kIdPlateThrough));
  ASSERT_TRUE(headless::Click(kIdPlateApply));
  EXPECT_TRUE(headless::TakeBoxes().empty());
  EXPECT_TRUE(plate.features[0].through);
}

TEST_F(NamedPlateUp, TakesASavedShapeForItsOutline) {
  headless::SelectRows(kIdPlateShape, {3});
  EXPECT_EQ(Status(), u"Save a custom CAD shape first.");
  EXPECT_EQ(platform::SelectedRow(kIdPlateShape), 0);
  EXPECT_FALSE(platform::IsVisible(kIdPlateOutline));
  SavedShape shape;
  shape.name[0] = u'T';
  shape.count = 1;
  shape.objects[0] = {kTypeCircle, 0, 0, 0, 2, 0, 0};
  const int index = PutShape(shape);
  headless::QueuePick(kIdCustomShapeFirst + index);
  headless::SelectRows(kIdPlateShape, {3});
  EXPECT_EQ(plate.shape, PlateShape::Custom);
  EXPECT_EQ(plate.customOutlineIndex, index);
  EXPECT_TRUE(platform::IsVisible(kIdPlateOutline));
}

TEST_F(NamedPlateUp, StartsOverOnlyWhenTheUserSaysSo) {
  headless::TypeInto(kIdPlateField, u"10");
  headless::QueueAnswer(platform::BoxAnswer::No);
  ASSERT_TRUE(headless::Click(kIdPlateReset));
  EXPECT_EQ(platform::TextOf(kIdPlateField), u"10");
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  ASSERT_TRUE(headless::Click(kIdPlateReset));
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 2u);
  EXPECT_EQ(boxes[0].title, u"Reset plate");
  EXPECT_EQ(boxes[0].text,
            u"Clear the plate and all its features from this workspace and start over? Previously "
            u"saved shapes stay in your library.");
  EXPECT_EQ(platform::TextOf(kIdPlateField), u"8.000");
  EXPECT_TRUE(plate.unnamed);
  EXPECT_EQ(platform::FocusedId(), kIdPlateName);
}

TEST_F(PlateUp, IsLeftWithoutAQuestionWhileNothingChanged) {
  ASSERT_TRUE(headless::Click(kIdSurfaceCode));
  EXPECT_EQ(app.surface, kSurfaceCode);
  EXPECT_TRUE(headless::TakeBoxes().empty());
}

TEST_F(PlateUp, AsksOnceBeforeAnUnnamedPlateWithChangesIsLeft) {
  headless::TypeInto(kIdPlateField, u"10");
  headless::QueueAnswer(platform::BoxAnswer::Cancel);
  headless::Click(kIdSurfaceCode);
  EXPECT_EQ(app.surface, kSurfacePlate);
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  headless::Click(kIdBack);
  EXPECT_EQ(app.surface, kSurfacePlate);
  EXPECT_EQ(platform::FocusedId(), kIdPlateName);
  headless::QueueAnswer(platform::BoxAnswer::No);
  headless::Click(kIdSurfaceCad);
  EXPECT_EQ(app.surface, kSurfaceCad);
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 3u);
  EXPECT_EQ(boxes[0].title, u"Save plate shape");
  EXPECT_EQ(boxes[0].text,
            u"Name and save this plate as a reusable shape before leaving? Yes returns to the name "
            u"field; No leaves without adding a library shape.");
}

TEST_F(NamedPlateUp, AsksForANameThatIsNotKnownAnyMore) {
  TakePlateName(u"", false, -1);
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  headless::Click(kIdSurfaceCode);
  EXPECT_EQ(app.surface, kSurfacePlate);
  EXPECT_EQ(headless::TakeBoxes().size(), 1u) << "Yes leads to the name at once";
  EXPECT_EQ(platform::FocusedId(), kIdPlateName);
  headless::QueueAnswer(platform::BoxAnswer::No);
  headless::Click(kIdSurfaceCode);
  ASSERT_EQ(app.surface, kSurfaceCode);
  ASSERT_TRUE(headless::Click(kIdSurfacePlate));
  EXPECT_EQ(platform::FocusedId(), kIdPlateName);
  EXPECT_EQ(Status(), u"Enter a name beside Save shape.");
}

TEST_F(NamedPlateUp, IsSavedWhenItIsLeft) {
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  ASSERT_TRUE(headless::Click(kIdSurfaceCode));
  EXPECT_EQ(app.surface, kSurfaceCode);
  EXPECT_EQ(shapeLibrary.count, 1);
  ASSERT_TRUE(headless::Click(kIdSurfacePlate));
  headless::TypeInto(kIdPlateField, u"10");
  headless::TakeBoxes();
  ASSERT_TRUE(headless::Click(kIdSurfaceCode));
  EXPECT_TRUE(headless::TakeBoxes().empty()) << "it stands in the library already";
  EXPECT_EQ(shapeLibrary.count, 1);
}

TEST_F(NamedPlateUp, SavesItselfByTheAutosave) {
  headless::Advance(1000);
  EXPECT_EQ(shapeLibrary.count, 1);
  EXPECT_EQ(Status(), u"Named plate shape saved. Further completed edits save automatically.");
}

TEST_F(NamedPlateUp, IsNotToldAsSavedWhereItsRecordIsTooLarge) {
  for (int k = 0; k < 97; ++k) SetFeatureFlag(k, FeatureFlag::Locked, true);
  headless::SetFlushTime(100);  // a disk that answers late
  headless::TypeInto(kIdPlateField, u"9");
  headless::Advance(1000);
  WaitForSaves();
  headless::SetFlushTime(0);
  EXPECT_EQ(Status(), kPlateFull) << "also behind the answer of the disk";
}

// More than a record holds.
void OverfillPlate() {
  for (int k = 0; k < 97; ++k) SetFeatureFlag(k, FeatureFlag::Locked, true);
  PlateEdited();
  headless::Advance(1000);
  WaitForSaves();
}

TEST_F(NamedPlateUp, CountsAsUnsavedWhereNoFileCanHoldIt) {
  OverfillPlate();
  EXPECT_TRUE(tabs[0].dirty);
  headless::QueueAnswer(platform::BoxAnswer::No);
  EXPECT_FALSE(headless::CloseKey());
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].text, u"One or more project tabs have unsaved changes. Close MORVA anyway?");
  // It fits again.
  SetFeatureFlag(96, FeatureFlag::Locked, false);
  PlateEdited();
  headless::Advance(1000);
  WaitForSaves();
  EXPECT_FALSE(tabs[0].dirty);
  EXPECT_TRUE(headless::CloseKey());
  EXPECT_TRUE(headless::TakeBoxes().empty());
}

TEST_F(NamedPlateUp, IsAskedAboutBeforeItsProgramIsClosedWithoutIt) {
  OverfillPlate();
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  headless::QueueAnswer(platform::BoxAnswer::No);
  RouteCommand(kIdClose, platform::kNotifyClick);
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 2u);
  EXPECT_EQ(boxes[0].text, u"Save changes before closing this program?");
  EXPECT_NE(boxes[1].text.find(u"not its plate as shown"), std::u16string::npos);
  EXPECT_TRUE(plate.features[96].locked) << "it is still there";
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  RouteCommand(kIdClose, platform::kNotifyClick);
  EXPECT_FALSE(plate.features[96].locked);
  EXPECT_TRUE(plate.unnamed);
}

TEST_F(NamedPlateUp, IsUnsavedAlsoWhileItsProgramRests) {
  OverfillPlate();
  ASSERT_TRUE(headless::Click(kIdNew));
  EXPECT_TRUE(tabs[0].dirty);
  headless::QueueAnswer(platform::BoxAnswer::No);
  EXPECT_FALSE(headless::CloseKey());
  EXPECT_EQ(headless::TakeBoxes().size(), 1u);
  ASSERT_TRUE(headless::Click(kIdTabFirst));
  EXPECT_TRUE(plate.features[96].locked);
}

TEST_F(NamedPlateUp, GetsItsOwnShapeBackAfterAQuestion) {
  headless::Advance(1000);
  ASSERT_EQ(shapeLibrary.count, 1);
  TakePlateName(u"", false, -1);  // as behind a restart, where nothing tells the name
  headless::SelectRows(kIdPlateLayout, {1});
  headless::TypeInto(kIdPlateField + kPlateCountX, u"20");
  ASSERT_TRUE(headless::Click(kIdPlateNaming));
  headless::QueueAnswer(platform::BoxAnswer::No);
  Name(u"bASE");
  EXPECT_EQ(plate.name[0], 0);
  EXPECT_EQ(platform::FocusedId(), kIdPlateName);
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  ASSERT_TRUE(headless::Click(kIdPlateApply));
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 2u) << "one question a press";
  EXPECT_EQ(boxes[0].title, u"Plate name");
  EXPECT_EQ(std::u16string(plate.name), u"Base");
  EXPECT_EQ(plate.savedShapeIndex, 0);
  headless::TypeInto(kIdPlateField + kPlateCountX, u"3");
  headless::Advance(1000);
  EXPECT_EQ(shapeLibrary.count, 1);
  EXPECT_EQ(shapeLibrary.shapes[0].count, 26) << "twenty lines and six holes";
}

TEST_F(NamedPlateUp, DoesNotCallHalfANumberSaved) {
  headless::TypeInto(kIdPlateField, u"5,5");
  headless::Advance(1000);
  WaitForSaves();
  EXPECT_EQ(Status(),
            u"Length  X holds no usable number, so that the plate was saved with the last one. "
            u"Write 0.75, not 0,75.");
  headless::TypeInto(kIdPlateField, u"5.5");
  headless::Advance(1000);
  WaitForSaves();
  EXPECT_EQ(Status(), u"Named plate shape saved. Further completed edits save automatically.");
}

TEST_F(NamedPlateUp, KeepsNothingOfANumberThatEndsHalf) {
  headless::Focus(kIdPlateField);
  for (const char16_t* text : {u"2", u"25", u"25o"}) headless::TypeInto(kIdPlateField, text);
  EXPECT_EQ(NumbersOf(plate).length, 8);
  EXPECT_TRUE(headless::PressKey({platform::kKeyEnter}));
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].text,
            u"Length  X holds no usable number. Write 0.75, not 0,75. Nothing was changed.");
  EXPECT_EQ(NumbersOf(plate).length, 8) << "what stood there before the edit";
  EXPECT_EQ(platform::TextOf(kIdPlateField), u"25o") << "for the user to mend";
  headless::TypeInto(kIdPlateField, u"25");
  EXPECT_EQ(NumbersOf(plate).length, 25);
  headless::Focus(kIdPlateField + 1);
  headless::TypeInto(kIdPlateField, u"25,");
  EXPECT_EQ(NumbersOf(plate).length, 25) << "an edit that was finished";
  ASSERT_TRUE(headless::Click(kIdPlateUnit));
  headless::TypeInto(kIdPlateField, u"9o");
  EXPECT_NEAR(NumbersOf(plate).length, 635, 1e-9) << "in the unit of now";
}

TEST_F(NamedPlateUp, IsSavedAgainAfterTheLibraryCouldNotBeWritten) {
  headless::Advance(1000);
  WaitForSaves();
  headless::FailCall("rename", 1);
  headless::TypeInto(kIdPlateField, u"9");
  headless::Advance(1000);
  WaitForSaves();
  EXPECT_EQ(Status(), kShapesUnsaved);
  EXPECT_TRUE(plate.pending);
  headless::Advance(6000);
  WaitForSaves();
  EXPECT_EQ(Status(), u"Named plate shape saved. Further completed edits save automatically.");
  EXPECT_FALSE(plate.pending);
}

TEST_F(NamedPlateUp, HasEightDrawingsAndRefusesTheNinth) {
  for (int i = 1; i < kMaxPlates; ++i) {
    ASSERT_TRUE(headless::Click(kIdPlateTabAdd));
    EXPECT_TRUE(plate.unnamed) << i;
  }
  EXPECT_TRUE(platform::IsChecked(kIdPlateTabLast));
  ASSERT_TRUE(headless::Click(kIdPlateTabAdd));
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].title, u"Plate drawings");
  ASSERT_TRUE(headless::Click(kIdPlateTabFirst));
  EXPECT_FALSE(plate.unnamed);
}

TEST_F(NamedPlateUp, ComesBackWithItsProgram) {
  headless::TypeInto(kIdPlateField, u"10");
  ASSERT_TRUE(headless::Click(kIdNew));
  EXPECT_TRUE(plate.unnamed);
  EXPECT_EQ(platform::TextOf(kIdPlateField), u"8.000");
  ASSERT_TRUE(headless::Click(kIdTabFirst));
  EXPECT_FALSE(plate.unnamed);
  EXPECT_EQ(NumbersOf(plate).length, 10);
}

TEST_F(NamedPlateUp, KeepsTheNameThatNoShapeTellsWhileItsProgramRests) {
  headless::SelectRows(kIdPlateLayout, {1});
  headless::TypeInto(kIdPlateField + kPlateCountX, u"20");
  headless::TypeInto(kIdPlateField + kPlateCountY, u"20");
  ASSERT_TRUE(headless::Click(kIdNew));
  EXPECT_EQ(shapeLibrary.count, 0) << "it has more objects than a shape";
  ASSERT_TRUE(headless::Click(kIdTabFirst));
  EXPECT_EQ(std::u16string(plate.name), u"Base");
}

TEST_F(NamedPlateUp, KeepsANewNameWhileItsProgramRests) {
  ASSERT_TRUE(headless::Click(kIdPlateTabAdd));  // the set of plates knows the first name now
  ASSERT_TRUE(headless::Click(kIdPlateTabFirst));
  headless::TypeInto(kIdPlateField, u"10");
  headless::Advance(1000);
  ASSERT_EQ(shapeLibrary.count, 1);
  ASSERT_TRUE(headless::Click(kIdPlateNaming));
  Name(u"Uno");
  ASSERT_TRUE(headless::Click(kIdNew));
  ASSERT_TRUE(headless::Click(kIdTabFirst));
  EXPECT_EQ(std::u16string(plate.name), u"Uno");
  headless::TypeInto(kIdPlateField, u"11");
  headless::Advance(1000);
  ASSERT_EQ(shapeLibrary.count, 1) << "no second shape under the former name";
  EXPECT_EQ(std::u16string(shapeLibrary.shapes[0].name), u"Uno");
}

TEST_F(NamedPlateUp, IsSavedBeforeAnotherDrawingIsChosen) {
  headless::Advance(1000);
  ASSERT_EQ(shapeLibrary.count, 1);
  headless::TypeInto(kIdPlateField, u"10");
  ASSERT_TRUE(headless::Click(kIdPlateTabAdd));  // sooner than the autosave
  EXPECT_TRUE(plate.unnamed);
  EXPECT_NEAR(shapeLibrary.shapes[0].objects[0].size, 9.5, 1e-9) << "less two corners of 0.25";
}

TEST_F(PlateUp, TakesTheUnitOfTheProgramWhileNobodyTouchedIt) {
  ASSERT_TRUE(headless::Click(kIdSurfaceCode));
  ASSERT_TRUE(headless::Click(kIdMm));
  ASSERT_TRUE(headless::Click(kIdSurfacePlate));
  EXPECT_TRUE(plate.metric);
  EXPECT_EQ(NumbersOf(plate).length, 203.2);
}

}  // namespace
}  // namespace morva
