// Clicks, drags and keys on the preview; code into the program, and blocks back.

#include <gtest/gtest.h>

#include "app/router.h"
#include "documents/edit_link.h"
#include "documents/feature_blocks.h"
#include "documents/feature_operations.h"
#include "documents/tab_table.h"
#include "library/shapes.h"
#include "plate/canvas/plate_pointer.h"
#include "plate/geometry/plate_code.h"
#include "plate/model/plate_names.h"
#include "plate/model/plate_record.h"
#include "plate_stage.h"

namespace morva {
namespace {

using plate_test::NamedPlateUp;
using plate_test::PlateUp;

struct PlateHand : public NamedPlateUp {
  static bool Key(int key, bool shift = false, bool ctrl = false) {
    headless::Focus(kViewPlatePicture);
    return headless::PressKey({key, ctrl, shift});
  }
  // A pixel inside the label with this place number.
  static platform::PointF LabelAt(int place) {
    const platform::Rect client = platform::ClientArea(kViewPlatePicture);
    for (int y = 0; y < RectHeight(client); y += 2) {
      for (int x = 0; x < RectWidth(client); x += 2) {
        const int label = PlateLabelAt(x, y);
        if (label >= 0 &&
            DrawnPlate().labels[static_cast<std::size_t>(label)].spec.place == place) {
          return {x + 3.0, y + 3.0};
        }
      }
    }
    return {-1, -1};
  }
  // Through the picker, at the place that it offers.
  static void Insert() {
    headless::InDialog([] { headless::Click(kIdDestinationInsert); });
    ASSERT_TRUE(headless::Click(kIdPlateInsert));
  }
  static int PlateBlocks() {
    ScanProgramText(platform::EditorText(kIdEditor));
    int count = 0;
    for (int i = 0; i < features.count; ++i)
      count += features.rows[i].settings.kind == kKindPlate ? 1 : 0;
    return count;
  }
  static void Reopen() {
    headless::Click(kIdSurfaceCode);
    ScanProgramText(platform::EditorText(kIdEditor));
    for (int i = 0; i < features.count; ++i) {
      if (features.rows[i].settings.kind == kKindPlate) headless::SelectRows(kIdFeatureList, {i});
    }
    ASSERT_TRUE(headless::Click(kIdFeatureEdit));
  }
  // The block of the plate that is so long.
  static void ReopenPlate(double length) {
    headless::Click(kIdSurfaceCode);
    ScanProgramText(platform::EditorText(kIdEditor));
    for (int i = 0; i < features.count; ++i) {
      const FeatureSettings& settings = features.rows[i].settings;
      if (settings.kind == kKindPlate && settings.values[kPlateLength] == length)
        headless::SelectRows(kIdFeatureList, {i});
    }
    ASSERT_TRUE(headless::Click(kIdFeatureEdit));
  }
};

// Where words stand on the preview; empty for none.
platform::Rect PlaceOfWords(std::u16string_view words) {
  for (const headless::DrawCall& call : headless::PaintOf(kViewPlatePicture)) {
    if (call.name != "PaintText" || call.text.find(words) != 0) continue;
    return {static_cast<int>(call.numbers[0]), static_cast<int>(call.numbers[1]),
            static_cast<int>(call.numbers[2]), static_cast<int>(call.numbers[3])};
  }
  return {};
}

TEST_F(PlateHand, BearsItsOuterWordsClearOfThePlate) {
  for (const bool metric : {false, true}) {
    SetPlateUnit(metric);
    for (const PlateShape shape : {PlateShape::Rectangle, PlateShape::Obround}) {
      SetPlateShape(shape);
      SetPlateLayout(PlateLayout::Grid);
      SetPlateType(PlateFeatureType::Mixed);
      SetPlateText(kPlateCountX, u"3");
      SetPlateText(kPlateCountY, u"3");
      const PlateNumbers n = NumbersOf(plate);
      const platform::PointF low = PixelOf({-n.length / 2, -n.width / 2});
      const platform::PointF high = PixelOf({n.length / 2, n.width / 2});
      EXPECT_LT(PlaceOfWords(u"Length (Y)").right, low.x) << metric;
      EXPECT_GT(PlaceOfWords(u"Width (X)").top, low.y) << metric;
      const platform::Rect depth = PlaceOfWords(metric ? u"Cut depth -2.54" : u"Cut depth -0.1");
      EXPECT_GT(depth.left, high.x) << metric;
      EXPECT_GT(PlaceOfWords(u"Mixed Hole").left, high.x) << metric;
      EXPECT_GT(PlaceOfWords(metric ? u"2\u00D7 63.50" : u"2\u00D7 2.500").left, high.x) << metric;
      EXPECT_GT(PlaceOfWords(metric ? u"Thickness 12.70" : u"Thickness 0.500").left, high.x);
    }
  }
}

TEST_F(PlateHand, OpensTheFeatureUnderAClick) {
  ClickAt(PixelOf(PlaceOfFeature(2)));
  EXPECT_EQ(CurrentFeature(), 2);
  EXPECT_EQ(platform::SelectedRow(kIdPlateFeatures), 3);
  EXPECT_EQ(platform::FocusedId(), kIdPlateWidth);
}

TEST_F(PlateHand, OpensTheSectionUnderAClick) {
  const platform::Rect area = PlateSectionArea();
  ASSERT_GT(RectHeight(area), 0);
  ClickAt({area.left + 40.0, area.top + 40.0});
  EXPECT_EQ(plateEditor.page, PlatePage::Depth);
  ClickAt(LabelAt(kPlateLength));
  EXPECT_EQ(plateEditor.page, PlatePage::Section);
  EXPECT_EQ(plateEditor.target, int{kPlateLength});
}

TEST_F(PlateHand, MovesAFeatureToTheStepAndTypesItsPlace) {
  const platform::PointF from = PixelOf(PlaceOfFeature(0));
  const platform::PointF to = PixelOf({-2.01, -1.04});
  Drag(from, to);
  EXPECT_NEAR(PlaceOfFeature(0).x, -2.0, 1e-9);
  EXPECT_NEAR(PlaceOfFeature(0).y, -1.05, 1e-9);
  EXPECT_EQ(platform::FocusedId(), kIdPlateX);
  EXPECT_EQ(platform::TextOf(kIdPlateX), u"-2.0000");
  headless::TypeInto(kIdPlateX, u"-1.875");
  ASSERT_TRUE(headless::PressKey({platform::kKeyEnter}));
  EXPECT_NEAR(PlaceOfFeature(0).x, -1.875, 1e-9);
}

TEST_F(PlateHand, DrawsAFeatureToTheLineOfAnotherOne) {
  const platform::PointF target{PlaceOfFeature(2).x + 0.03, 0.4};
  Drag(PixelOf(PlaceOfFeature(0)), PixelOf(target));
  EXPECT_EQ(PlaceOfFeature(0).x, PlaceOfFeature(2).x);
}

TEST_F(PlateHand, LeavesALockedFeatureWhereItIs) {
  SetFeatureFlag(0, FeatureFlag::Locked, true);
  const platform::PointF at = PlaceOfFeature(0);
  Drag(PixelOf(at), PixelOf({-1, -1}));
  EXPECT_EQ(PlaceOfFeature(0).x, at.x);
  EXPECT_EQ(Status(), kUnlockToMove);
}

TEST_F(PlateHand, GivesADragUpByEscape) {
  const platform::PointF at = PlaceOfFeature(0);
  const platform::PointF pixel = PixelOf(at);
  Pointer(platform::PointerAction::Press, pixel.x, pixel.y);
  Pointer(platform::PointerAction::Move, pixel.x + 60, pixel.y - 40);
  ASSERT_TRUE(PlateDragRuns());
  EXPECT_NE(PlaceOfFeature(0).x, at.x);
  EXPECT_TRUE(Key(platform::kKeyEscape));
  EXPECT_FALSE(PlateDragRuns());
  EXPECT_EQ(PlaceOfFeature(0).x, at.x);
  EXPECT_FALSE(plate.features[0].placed);
}

TEST_F(PlateHand, MarksTheProgramWhenADragIsGivenUp) {
  headless::Advance(1000);
  headless::TypeInto(kIdPlateField + kPlateLength, u"10");
  const platform::PointF pixel = PixelOf(PlaceOfFeature(0));
  Pointer(platform::PointerAction::Press, pixel.x, pixel.y);
  Pointer(platform::PointerAction::Move, pixel.x + 60, pixel.y - 40);
  ASSERT_TRUE(PlateDragRuns());
  headless::Advance(1000);  // an autosave stores the feature where it is just now
  ASSERT_TRUE(PlateDragRuns());
  tabs[0].dirty = false;
  EXPECT_TRUE(Key(platform::kKeyEscape));
  EXPECT_TRUE(tabs[0].dirty) << "what was stored is saved again";
  headless::Advance(1000);
  EXPECT_NEAR(shapeLibrary.shapes[0].objects[20].x, -4.5, 1e-9);
}

TEST_F(PlateHand, KeysChangeNothingWhileSomethingIsDragged) {
  const platform::PointF at = LabelAt(kPlateWidth);
  Pointer(platform::PointerAction::Press, at.x, at.y);
  Pointer(platform::PointerAction::Move, at.x + 20, at.y);
  headless::PressKey({platform::kKeyPageDown});
  EXPECT_EQ(CurrentFeature(), -1);
  Pointer(platform::PointerAction::Move, at.x + 50, at.y + 20);
  Pointer(platform::PointerAction::Release, at.x + 50, at.y + 20);
  int set = 0;
  for (const PlateLabel& label : plate.dimensionLabels) set += label.set ? 1 : 0;
  EXPECT_EQ(set, 1);
  EXPECT_TRUE(plate.dimensionLabels[kPlateWidth].set);
}

TEST_F(PlateHand, KeepsTheLabelInHandWhereThePictureIsDrawnAnew) {
  const platform::PointF at = LabelAt(kPlateWidth);
  Pointer(platform::PointerAction::Press, at.x, at.y);
  Pointer(platform::PointerAction::Move, at.x + 20, at.y);
  OpenPlateTarget(FeatureTarget(0), Keyboard::Stays);  // its labels come before the others
  Pointer(platform::PointerAction::Move, at.x + 50, at.y + 20);
  Pointer(platform::PointerAction::Release, at.x + 50, at.y + 20);
  int set = 0;
  for (const PlateLabel& label : plate.dimensionLabels) set += label.set ? 1 : 0;
  EXPECT_EQ(set, 1);
  EXPECT_TRUE(plate.dimensionLabels[kPlateWidth].set);
}

TEST_F(PlateHand, KeepsALabelWhereItWasDragged) {
  const platform::PointF at = LabelAt(kPlateWidth);
  ASSERT_GE(at.x, 0);
  Drag(at, {at.x + 50, at.y + 20});
  ASSERT_TRUE(plate.dimensionLabels[kPlateWidth].set);
  const platform::Rect area = PlatePictureArea();
  EXPECT_NEAR(plate.dimensionLabels[kPlateWidth].x * RectWidth(area), 50, 1e-6);
  EXPECT_NEAR(plate.dimensionLabels[kPlateWidth].y * RectHeight(area), 20, 1e-6);
  EXPECT_EQ(plateEditor.page, PlatePage::Nothing) << "a drag opens no editor";
}

TEST_F(PlateHand, TakesAMoveOfFourPixelsForAClick) {
  const platform::PointF at = PixelOf(PlaceOfFeature(1));
  Drag(at, {at.x + 4, at.y - 4});
  EXPECT_FALSE(plate.features[1].placed);
  EXPECT_EQ(CurrentFeature(), 1);
}

TEST_F(PlateHand, ZoomsAboutThePointerAndFits) {
  const PictureView before = PlateSight();
  const platform::PointF pixel = PixelOf(PlaceOfFeature(1));
  platform::PointerEvent wheel;
  wheel.action = platform::PointerAction::Wheel;
  wheel.x = static_cast<int>(std::lround(pixel.x));
  wheel.y = static_cast<int>(std::lround(pixel.y));
  wheel.wheel = 3;
  headless::Pointer(kViewPlatePicture, wheel);
  EXPECT_GT(PlateSight().scaleX, before.scaleX * 1.3);
  EXPECT_NEAR(PixelOf(PlaceOfFeature(1)).x, pixel.x, 1);
  ASSERT_TRUE(headless::Click(kIdPlateFit));
  EXPECT_DOUBLE_EQ(PlateSight().scaleX, before.scaleX);
}

TEST_F(PlateHand, IsWorkedByKeys) {
  EXPECT_TRUE(Key(platform::kKeyPageDown));
  EXPECT_EQ(CurrentFeature(), 0);
  EXPECT_TRUE(Key(platform::kKeyPageUp));
  EXPECT_EQ(CurrentFeature(), 3);
  const double x = PlaceOfFeature(3).x;
  EXPECT_TRUE(Key(platform::kKeyRight));
  EXPECT_NEAR(PlaceOfFeature(3).x, x + 0.05, 1e-9);
  EXPECT_TRUE(Key(platform::kKeyLeft, true));
  EXPECT_NEAR(PlaceOfFeature(3).x, x - 0.45, 1e-9);
  EXPECT_TRUE(Key('D'));
  ASSERT_GE(MarksOnPlate().label, 0);
  const int label = MarksOnPlate().label;
  EXPECT_TRUE(Key(platform::kKeyDown));
  EXPECT_TRUE(plate.dimensionLabels[label].set);
  EXPECT_TRUE(Key(platform::kKeyEscape));
  EXPECT_EQ(MarksOnPlate().label, -1);
  EXPECT_TRUE(Key(platform::kKeyEscape));
  EXPECT_EQ(CurrentFeature(), -1);
}

TEST_F(PlateUp, InsertsNothingWithoutAName) {
  const std::u16string before = Text();
  ASSERT_TRUE(headless::Click(kIdPlateInsert));
  EXPECT_EQ(Status(), u"Start a named plate before inserting code.");
  EXPECT_EQ(Text(), before);
}

TEST_F(PlateHand, RefusesHalfANumberInTheForm) {
  const std::u16string before = Text();
  headless::TypeInto(kIdPlateField + kPlateSize, u"0,75");
  ASSERT_TRUE(headless::Click(kIdPlateInsert));
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].title, u"Plate Template Maker");
  EXPECT_EQ(platform::FocusedId(), kIdPlateField + kPlateSize);
  EXPECT_EQ(Text(), before);
}

TEST_F(PlateHand, InsertsTheCodeAndTellsIt) {
  Insert();
  EXPECT_NE(Text().find(u"(PLATE TEMPLATE MAKER)\r\nG20 (INCH)\r\nG90 G17 G94\r\nG00 Z0.500\r\n"
                        u"(PLATE OUTLINE)\r\nG00 X-3.750 Y-3.000\r\nG01 Z-0.100 F10.00\r\n"),
            std::u16string::npos);
  EXPECT_TRUE(
      OutputHas(u"Plate Template inserted. Verify plate stock size, feature locations, cutter/tool "
                u"selection, work offset, and clearances."));
  EXPECT_EQ(PlateBlocks(), 1);
}

TEST_F(PlateHand, ReopensABlockAndUpdatesIt) {
  headless::TypeInto(kIdPlateField + kPlateLength, u"10");
  Insert();
  headless::TypeInto(kIdPlateField + kPlateLength, u"12");
  headless::Advance(1000);
  Reopen();
  EXPECT_EQ(app.surface, kSurfacePlate);
  EXPECT_EQ(platform::TextOf(kIdPlateInsert), u"UPDATE PLATE");
  EXPECT_EQ(NumbersOf(plate).length, 10);
  EXPECT_EQ(platform::TextOf(kIdPlateField), u"10.000000");
  ASSERT_NE(tabs[0].plateStore, nullptr);
  EXPECT_EQ(tabs[0].plateStore->count, 2u) << "the plate of 12 stands in no block and stays";
  headless::TypeInto(kIdPlateField + kPlateLength, u"9");
  Insert();
  EXPECT_EQ(PlateBlocks(), 1);
  EXPECT_NE(Text().find(u"G00 X-4.250 Y-3.000"), std::u16string::npos);
}

TEST_F(PlateHand, GivesAPlateOfABlockNoOtherPlatesName) {
  headless::TypeInto(kIdPlateField + kPlateLength, u"7");
  Insert();  // of Base, the first block
  ASSERT_TRUE(headless::Click(kIdPlateTabAdd));
  ASSERT_TRUE(headless::Click(kIdPlateNaming));
  Name(u"Beta");
  headless::TypeInto(kIdPlateField + kPlateLength, u"9");
  Insert();
  ASSERT_EQ(PlateBlocks(), 2);
  ASSERT_TRUE(headless::Click(kIdPlateTabFirst));
  ASSERT_TRUE(headless::Click(kIdPlateTabFirst + 1));
  ASSERT_EQ(std::u16string(plate.name), u"Beta");
  headless::Advance(1000);
  ASSERT_EQ(shapeLibrary.count, 2);
  const int beta = FindShape(u"Beta");
  ReopenPlate(7);
  ASSERT_EQ(NumbersOf(plate).length, 7);
  EXPECT_EQ(std::u16string(plate.name), u"Base");
  headless::TypeInto(kIdPlateField + kPlateLength, u"6");
  headless::Advance(1000);
  EXPECT_NEAR(shapeLibrary.shapes[beta].objects[0].size, 8.5, 1e-9) << "Beta is what it was";
  EXPECT_EQ(shapeLibrary.count, 2);
}

TEST_F(PlateHand, RefusesABlockThatWasEditedByHand) {
  Insert();
  headless::Advance(1000);  // saved, so that it may be left
  headless::Click(kIdSurfaceCode);
  ASSERT_EQ(app.surface, kSurfaceCode);
  std::u16string text = Text();
  const std::size_t at = text.find(u"X-3.750 Y-3.000");
  ASSERT_NE(at, std::u16string::npos);
  text.replace(at, 7, u"X-3.755");
  headless::EditorSetAll(kIdEditor, text);
  headless::Advance(1000);
  ScanProgramText(platform::EditorText(kIdEditor));
  headless::SelectRows(kIdFeatureList, {0});
  headless::Click(kIdFeatureEdit);
  EXPECT_EQ(app.surface, kSurfaceCode);
}

TEST_F(PlateHand, OffersToUpdateTheBlockThatHoldsThePlateAlready) {
  Insert();
  headless::TakeBoxes();
  headless::QueueAnswer(platform::BoxAnswer::Cancel);
  headless::Click(kIdPlateInsert);
  EXPECT_EQ(headless::TakeBoxes().size(), 1u);
  EXPECT_EQ(PlateBlocks(), 1);
}

void UndoInTheCode() {
  headless::Advance(1000);  // saved, so that the plate may be left
  headless::Click(kIdSurfaceCode);
  headless::EditorUndo(kIdEditor);
}

TEST_F(PlateHand, KnowsItsBlockBehindTheUndoOfAnUpdate) {
  headless::TypeInto(kIdPlateField + kPlateLength, u"10");
  Insert();
  const std::u16string before = Text();
  headless::TypeInto(kIdPlateField + kPlateLength, u"9");
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  Insert();
  ASSERT_EQ(PlateBlocks(), 1);
  const std::u16string after = Text();
  ASSERT_TRUE(after != before);
  UndoInTheCode();
  EXPECT_TRUE(Text() == before);
  ASSERT_TRUE(headless::Click(kIdSurfacePlate));
  EXPECT_EQ(NumbersOf(plate).length, 9) << "the plate is what was typed";
  headless::TakeBoxes();
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  Insert();
  EXPECT_EQ(headless::TakeBoxes().size(), 1u) << "it is asked whether to update";
  EXPECT_EQ(PlateBlocks(), 1);
  EXPECT_TRUE(Text() == after);
  // And brought back by its block as it is there.
  UndoInTheCode();
  Reopen();
  EXPECT_EQ(NumbersOf(plate).length, 10);
}

struct PlateUndone : public PlateHand {
  void SetUp() override {
    PlateHand::SetUp();
    headless::TypeInto(kIdPlateField + kPlateLength, u"10");
    Insert();
  }
  static void Update(const char16_t* length) {
    headless::TypeInto(kIdPlateField + kPlateLength, length);
    headless::TakeBoxes();
    headless::QueueAnswer(platform::BoxAnswer::Yes);
    Insert();
    EXPECT_EQ(headless::TakeBoxes().size(), 1u) << "it is asked whether to update";
    EXPECT_EQ(PlateBlocks(), 1);
  }
  static void Undo(int times) {
    for (; times > 0; --times) UndoInTheCode();
    ASSERT_TRUE(headless::Click(kIdSurfacePlate));
  }
};

TEST_F(PlateUndone, BlockWhosePlateHasNoKnownNameAsksForOne) {
  Update(u"9");
  UndoInTheCode();
  Reopen();
  ASSERT_EQ(NumbersOf(plate).length, 10);
  ASSERT_EQ(std::u16string(plate.name), u"");
  EXPECT_EQ(plateEditor.page, PlatePage::Name);
  EXPECT_EQ(platform::FocusedId(), int{kIdPlateName});
  EXPECT_EQ(Status(), kEnterPlateName) << "nothing of the update of the other one";
}

TEST_F(PlateUndone, BlockOfANamedPlateAsksForNoName) {
  headless::Advance(1000);
  Reopen();
  ASSERT_EQ(std::u16string(plate.name), u"Base");
  EXPECT_EQ(plateEditor.page, PlatePage::Nothing);
  EXPECT_EQ(platform::FocusedId(), int{kViewPlatePicture});
}

TEST_F(PlateUndone, KnowsItsBlockBehindTheUndoOfTwoUpdates) {
  Update(u"9");
  Update(u"9.2");
  Undo(2);
  Update(u"9.5");
}

TEST_F(PlateUndone, KnowsItsBlockBehindASecondRoundOfUpdateAndUndo) {
  Update(u"9");
  Undo(1);
  Update(u"9.2");
  Undo(1);
  Update(u"9.5");
}

TEST_F(PlateUndone, KnowsItsBlockAlsoWhereItWasOpenedMeanwhile) {
  Update(u"9");
  headless::Advance(1000);
  Reopen();
  DropEditLink();
  Undo(1);
  Update(u"9.5");
}

}  // namespace
}  // namespace morva
