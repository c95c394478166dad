// The edits by their commands, as keys and menus run them. Expected numbers are worked out by
// hand.

#include "cad/tools/edits.h"

#include <cmath>

#include "cad/model/cad_hooks.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "cad/tools/scale_revolve.h"
#include "edits_stage.h"
#include "support/program_maker.h"

namespace morva {
namespace {

using Edits = cad_test::EditsStage;

constexpr char16_t kLocked[] = u"This object is locked. Right-click it in Operations to unlock.";
constexpr char16_t kBeyond[] = u"Geometry exceeds the sketch coordinate limit.";
constexpr int kButtons[] = {kIdCadApply, kIdCadExtend,    kIdCadTrim,
                            kIdCadSplit, kIdCadDuplicate, kIdCadDelete};

void Type(int id, const char16_t* text) { platform::SetText(id, text); }

// Apply, Extend and Trim.

TEST_F(Edits, AppliesTheFiveFields) {
  Add(kTypeRectangle, 1, 2, 3, 4, 5);
  sketch.selected = 0;
  Type(kIdCadX, u"-1.5");
  Type(kIdCadY, u"2.25");
  Type(kIdCadSize, u"-6");
  Type(kIdCadSize2, u"0.5");
  Type(kIdCadAngle, u"-30");
  Command(kIdCadApply);
  EXPECT_EQ(Object(0).x, -1.5);
  EXPECT_EQ(Object(0).y, 2.25);
  EXPECT_EQ(Object(0).size, 6);
  EXPECT_EQ(Object(0).size2, 0.5);
  EXPECT_EQ(Object(0).angle, -30);
  EXPECT_EQ(Recent(), std::vector<std::u16string>{u"Edited geometry"});
}

TEST_F(Edits, KeepsTheObjectsValueWhereAFieldHasNoNumber) {
  Add(kTypeRectangle, 1, 2, 3, 4, 5);
  sketch.selected = 0;
  for (const int id : {kIdCadX, kIdCadSize, kIdCadSize2, kIdCadAngle}) Type(id, u"none");
  Type(kIdCadY, u"");
  Command(kIdCadApply);
  EXPECT_EQ(Object(0).x, 1);
  EXPECT_EQ(Object(0).y, 2);
  EXPECT_EQ(Object(0).size, 3);
  EXPECT_EQ(Object(0).size2, 4);
  EXPECT_EQ(Object(0).angle, 5);
}

// A field shows three decimals, an angle four: what was not typed over is not rounded to them.
TEST_F(Edits, KeepsTheExactValueOfAFieldThatStillShowsIt) {
  const SketchObject exact = {
      kTypeSlot, 0, 1.00000000000007, 1.73205080757, 2.00049, 0.333333333333333, 12.3456789};
  const struct {
    int id;
    double SketchObject::*number;
    const char16_t* text;
    double wanted;
  } kCases[] = {{kIdCadX, &SketchObject::x, u"1.5", 1.5},
                {kIdCadY, &SketchObject::y, u"1.5", 1.5},
                {kIdCadSize, &SketchObject::size, u"3", 3},
                {kIdCadSize2, &SketchObject::size2, u"0.25", 0.25},
                {kIdCadAngle, &SketchObject::angle, u"60", 60},
                {kIdCadX, &SketchObject::x, u"1", 1}};
  for (const auto& each : kCases) {
    ResetSketch();
    AppendSketchObject(exact);
    sketch.selected = 0;
    RefreshSketchPanels();
    Type(each.id, each.text);
    Command(kIdCadApply);
    SketchObject wanted = exact;
    wanted.*each.number = each.wanted;
    EXPECT_EQ(Object(0).x, wanted.x) << each.id;
    EXPECT_EQ(Object(0).y, wanted.y) << each.id;
    EXPECT_EQ(Object(0).size, wanted.size) << each.id;
    EXPECT_EQ(Object(0).size2, wanted.size2) << each.id;
    EXPECT_EQ(Object(0).angle, wanted.angle) << each.id;
  }
}

TEST_F(Edits, RaisesAnAppliedSlotToItsWidthAndClearsACirclesSecondSize) {
  Add(kTypeSlot, 0, 0, 2, 0.5);
  Add(kTypeCircle, 0, 0, 2);
  sketch.selected = 0;
  Type(kIdCadSize2, u"3");
  Command(kIdCadApply);
  EXPECT_EQ(Object(0).size, 3);
  EXPECT_EQ(Object(0).size2, 3);
  sketch.selected = 1;
  Type(kIdCadSize2, u"3");
  Command(kIdCadApply);
  EXPECT_EQ(Object(1).size2, 0);
}

TEST_F(Edits, RefusesAnAppliedTextThatIsNoNumber) {
  Add(kTypeCircle, 0, 0, 2);
  sketch.selected = 0;
  const Picture before = Now();
  for (const int id : {kIdCadX, kIdCadY, kIdCadSize, kIdCadSize2, kIdCadAngle}) {
    for (const char16_t* text : {u"0,75", u"1 in", u"abc", u"1.2.3"}) {
      RefreshSketchPanels();
      Type(id, text);
      Command(kIdCadApply);
      EXPECT_EQ(Now(), before);
      EXPECT_NE(SketchStatus().find(u" holds no usable number. Write 0.75, not 0,75. Nothing was "
                                    u"changed."),
                std::u16string::npos);
      EXPECT_EQ(platform::TextOf(id), text);
    }
  }
  EXPECT_TRUE(Recent().empty());
  // Without a text the object keeps its own.
  RefreshSketchPanels();
  Type(kIdCadX, u"");
  Type(kIdCadSize, u"0.75");
  Command(kIdCadApply);
  EXPECT_NEAR(Object(0).size, 0.75, 1e-12);
}

TEST_F(Edits, ExtendsAndTrimsByANumberOnly) {
  Add(kTypeLine, 0, 0, 2);
  sketch.selected = 0;
  for (const int id : {kIdCadExtend, kIdCadTrim}) {
    Type(kIdCadAmount, u"0,75");
    Command(id);
    EXPECT_EQ(Object(0).size, 2);
    EXPECT_EQ(SketchStatus().find(u"Trim / extend by holds no usable number."), 0u);
  }
  EXPECT_EQ(sketch.undoDepth, 0);
}

TEST_F(Edits, RefusesAnAppliedNumberAtTheLimit) {
  Add(kTypeLine, 0, 0, 2);
  sketch.selected = 0;
  const Picture before = Now();
  for (const int id : {kIdCadX, kIdCadY, kIdCadSize, kIdCadSize2}) {
    RefreshSketchPanels();
    Type(id, u"1000000");
    Command(kIdCadApply);
    EXPECT_EQ(Now(), before);
    EXPECT_EQ(SketchStatus(), kBeyond);
  }
  EXPECT_TRUE(Recent().empty());
}

TEST_F(Edits, ExtendsEachTypeByItsRule) {
  Add(kTypeLine, 1, 1, 2);
  Add(kTypeRectangle, 1, 1, 2, 1);
  Add(kTypeCircle, 1, 1, 2);
  Add(kTypeSlot, 1, 1, 2, 1);
  const double sizes[] = {2.25, 2.25, 2.5, 2.25};
  const double second[] = {0, 1.25, 0, 1};
  for (int i = 0; i < 4; ++i) {
    sketch.selected = i;
    Type(kIdCadAmount, u"-0.25");  // taken without its sign
    Command(kIdCadExtend);
    EXPECT_EQ(Object(i).size, sizes[i]) << i;
    EXPECT_EQ(Object(i).size2, second[i]) << i;
    EXPECT_EQ(Object(i).x, 1) << i;
    EXPECT_EQ(SketchStatus(), u"EXTEND applied to selected geometry.");
  }
  EXPECT_EQ(Recent(), std::vector<std::u16string>(4, u"Edited geometry"));
}

TEST_F(Edits, TrimsByTheAmountAndTellsIt) {
  Add(kTypeSlot, 1, 1, 2, 1);
  Add(kTypeCircle, 1, 1, 2);
  Type(kIdCadAmount, u"0.5");
  sketch.selected = 0;
  Command(kIdCadTrim);
  EXPECT_EQ(Object(0).size, 1.5);
  EXPECT_EQ(SketchStatus(), u"TRIM applied to selected geometry.");
  sketch.selected = 1;
  Command(kIdCadTrim);
  EXPECT_EQ(Object(1).size, 1);
}

TEST_F(Edits, TakesTheUnitsOwnAmountFromAnEmptyField) {
  Add(kTypeLine, 0, 0, 2);
  sketch.selected = 0;
  Command(kIdCadExtend);
  EXPECT_EQ(Object(0).size, 2.1);
  sketch.metric = true;
  sketch.objects[0].size = 10;
  Command(kIdCadExtend);
  EXPECT_EQ(Object(0).size, 12);
}

TEST_F(Edits, KeepsTheLeastSizesWhenTrimming) {
  Add(kTypeLine, 0, 0, 1);
  Add(kTypeRectangle, 0, 0, 3, 1);
  Add(kTypeCircle, 0, 0, 1);
  Add(kTypeSlot, 0, 0, 1, 0.5);
  Type(kIdCadAmount, u"2");
  const double sizes[] = {0.01, 1, 0.01, 0.5};
  const double second[] = {0, 0.01, 0, 0.5};
  for (int i = 0; i < 4; ++i) {
    sketch.selected = i;
    Command(kIdCadTrim);
    EXPECT_EQ(Object(i).size, sizes[i]) << i;
    EXPECT_EQ(Object(i).size2, second[i]) << i;
  }
  sketch.metric = true;
  sketch.selected = 0;
  Command(kIdCadTrim);
  EXPECT_EQ(Object(0).size, 0.25);
}

TEST_F(Edits, NeverTrimsASecondSizeBelowZero) {
  Add(kTypeWorkAxis, 0, 0, 3);
  Add(kTypeWorkPoint, 0, 0, 0);
  Type(kIdCadAmount, u"1");
  for (int i = 0; i < 2; ++i) {
    sketch.selected = i;
    Command(kIdCadTrim);
    EXPECT_EQ(Object(i).size2, 0) << i;
  }
  EXPECT_EQ(Object(0).size, 2);
}

TEST_F(Edits, TakesTwoStepsForApplyExtendAndTrimAndOneForTheRest) {
  const int steps[] = {2, 2, 2, 1, 1, 1};
  for (int k = 0; k < 6; ++k) {
    sketch.objectCount = 0;
    sketch.undoDepth = 0;
    Add(kTypeLine, 0, 0, 2);
    sketch.selected = 0;
    RefreshSketchPanels();
    Type(kIdCadX, u"1");
    const Picture before = Now();
    Command(kButtons[k]);
    EXPECT_EQ(sketch.undoDepth, steps[k]) << k;
    for (int i = 0; i < steps[k]; ++i) SketchUndo();
    EXPECT_EQ(Now(), before) << k;
  }
}

TEST_F(Edits, RestoresTheSameStateByTheFirstUndoAfterApply) {
  Add(kTypeLine, 0, 0, 2);
  sketch.selected = 0;
  const Picture before = Now(false);
  RefreshSketchPanels();
  Type(kIdCadX, u"1");
  Command(kIdCadApply);
  SketchUndo();
  EXPECT_EQ(Now(false), before);
  SketchUndo();
  EXPECT_EQ(Now(false), before);
  EXPECT_EQ(sketch.undoDepth, 0);
}

TEST_F(Edits, TakesOneStepWhenAppliedAlone) {
  Add(kTypeLine, 0, 0, 2);
  sketch.selected = 0;
  RefreshSketchPanels();
  ApplyGeometryFields();
  ExtendOrTrim(true);
  EXPECT_EQ(sketch.undoDepth, 2);
  EXPECT_TRUE(Recent().empty());
}

TEST_F(Edits, RefusesEveryButtonOnALockedSelection) {
  Add(kTypeLine, 0, 0, 2);
  sketch.selected = 0;
  sketch.locked[0] = 1;
  const Picture before = Now();
  for (const int id : kButtons) {
    RefreshSketchPanels();
    Command(id);
    EXPECT_EQ(Now(), before) << id;
    EXPECT_EQ(SketchStatus(), kLocked) << id;
  }
  EXPECT_TRUE(Recent().empty());
}

TEST_F(Edits, DoesNothingWithoutASelection) {
  Add(kTypeLine, 0, 0, 2);
  for (const int selected : {-1, 5}) {
    sketch.selected = selected;
    const Picture before = Now();
    for (const int id : kButtons) Command(id);
    for (const int id : {kIdCadCopy, kIdCadCut, kIdCadPaste, kIdCadHide, kIdCadLock,
                         kIdCadApplyScale, kIdCadApplyRevolve}) {
      Command(id);
    }
    EXPECT_EQ(Now(), before);
  }
  EXPECT_TRUE(Recent().empty());
}

// Split, Duplicate and Delete.

TEST_F(Edits, SplitsALineAtItsMiddle) {
  Add(kTypeLine, 1, 1, 2, 0, 90, 4);
  Add(kTypeLine, 5, 5, 1);
  sketch.selected = 0;
  sketch.hidden[0] = 1;
  Command(kIdCadSplit);
  ASSERT_EQ(sketch.objectCount, 3);
  EXPECT_EQ(Object(0).size, 1);
  EXPECT_EQ(Object(2).size, 1);
  EXPECT_EQ(Object(2).x, 1);
  EXPECT_NEAR(Object(2).y, 2, 1e-7);
  EXPECT_EQ(Object(2).angle, 90);
  EXPECT_EQ(Object(2).group, 4);
  EXPECT_EQ(sketch.hidden[2], 0);
  EXPECT_EQ(sketch.selected, 0);
  EXPECT_EQ(SketchStatus(), u"CUT complete: selected line split into two independent segments.");
  EXPECT_EQ(LastLine(), u"Edited geometry");
}

TEST_F(Edits, AnswersTheSplitOfACircleWithTheBoxAndChangesNothing) {
  for (const SketchType type : {kTypeCircle, kTypeRectangle, kTypeSlot, kTypeWorkAxis}) {
    sketch.objectCount = 0;
    Add(type, 0, 0, 2, 1);
    sketch.selected = 0;
    const Picture before = Now();
    headless::TakeBoxes();
    Command(kIdCadSplit);
    const std::vector<headless::BoxRecord> boxes = headless::TakeBoxes();
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].title, u"Custom Shape Editor");
    EXPECT_EQ(boxes[0].text,
              u"CUT/SPLIT currently splits a selected line at its midpoint. Use TRIM on "
              u"rectangles, circles, and slots.");
    EXPECT_EQ(Now(), before);
  }
  EXPECT_TRUE(Recent().empty());
}

TEST_F(Edits, SplitsAndDuplicatesNothingThatItMayNotWhenCalledAlone) {
  Add(kTypeCircle, 0, 0, 2);
  Add(kTypeLine, 0, 0, 2);
  sketch.locked[1] = 1;
  for (const int selected : {0, 1, -1}) {
    sketch.selected = selected;
    const Picture before = Now();
    SplitLine();
    EXPECT_EQ(Now(), before) << selected;
    if (selected != 0) DuplicateObject();
    EXPECT_EQ(Now(), before) << selected;
  }
  EXPECT_EQ(headless::TakeBoxes().size(), 1u);  // the circle's
}

TEST_F(Edits, SplitsAndDuplicatesNothingIntoAFullSketch) {
  for (int i = 0; i < 96; ++i) Add(kTypeLine, 0, 0, 2);
  sketch.selected = 3;
  const Picture before = Now();
  Command(kIdCadSplit);
  Command(kIdCadDuplicate);
  EXPECT_EQ(Now(), before);
  EXPECT_TRUE(headless::TakeBoxes().empty());
  RemoveSketchObject(95);
  Command(kIdCadDuplicate);
  EXPECT_EQ(sketch.objectCount, 96);
  EXPECT_EQ(sketch.selected, 95);
}

TEST_F(Edits, DuplicatesTheSelectedObjectAloneWithItsGroup) {
  Add(kTypeRectangle, 1, 2, 3, 4, 5, 8);
  Add(kTypeLine, 0, 0, 1, 0, 0, 8);
  sketch.selected = 0;
  sketch.hidden[0] = 1;
  Command(kIdCadDuplicate);
  ASSERT_EQ(sketch.objectCount, 3);
  EXPECT_EQ(sketch.selected, 2);
  EXPECT_EQ(Object(2).x, 1.2);
  EXPECT_EQ(Object(2).y, 2.2);
  EXPECT_EQ(Object(2).size, 3);
  EXPECT_EQ(Object(2).size2, 4);
  EXPECT_EQ(Object(2).angle, 5);
  EXPECT_EQ(Object(2).group, 8);
  EXPECT_EQ(sketch.hidden[2], 0);
  sketch.metric = true;
  Command(kIdCadDuplicate);
  EXPECT_NEAR(Object(3).x, 6.2, 1e-12);
}

TEST_F(Edits, DeletesThePartAndAllMarks) {
  Add(kTypeLine, 0, 0, 1);           // stays
  Add(kTypeLine, 1, 0, 1, 0, 0, 2);  // the selected one's group
  Add(kTypeLine, 2, 0, 1);           // marked
  Add(kTypeLine, 3, 0, 1, 0, 0, 2);  // selected
  Add(kTypeLine, 4, 0, 1);           // stays
  sketch.selected = 3;
  tools.multiSelect[2] = 1;
  Command(kIdCadDelete);
  ASSERT_EQ(sketch.objectCount, 2);
  EXPECT_EQ(Object(0).x, 0);
  EXPECT_EQ(Object(1).x, 4);
  EXPECT_EQ(sketch.selected, 1);
  EXPECT_EQ(MultiSelectCount(), 0);
  EXPECT_EQ(LastLine(), u"Deleted geometry");
  Command(kIdCadDelete);
  Command(kIdCadDelete);
  EXPECT_EQ(sketch.objectCount, 0);
  EXPECT_EQ(sketch.selected, -1);
}

TEST_F(Edits, KeepsALockedMemberOfADeletedGroup) {
  Add(kTypeLine, 0, 0, 1, 0, 0, 2);
  Add(kTypeLine, 1, 0, 1, 0, 0, 2);
  Add(kTypeLine, 2, 0, 1, 0, 0, 2);
  sketch.locked[1] = 1;
  sketch.selected = 0;
  Command(kIdCadDelete);
  ASSERT_EQ(sketch.objectCount, 1);
  EXPECT_EQ(Object(0).x, 1);
  EXPECT_EQ(sketch.locked[0], 1);
}

TEST_F(Edits, ClearsTheSketchAndGivesItBack) {
  headless::TakeBoxes();
  Command(kIdCadClear);  // there is nothing to ask about
  EXPECT_TRUE(headless::TakeBoxes().empty());
  Add(kTypeLine, 0, 0, 1);
  Add(kTypeLine, 1, 0, 1);
  sketch.locked[0] = 1;
  sketch.hidden[1] = 1;
  sketch.selected = 0;
  tools.multiSelect[1] = 1;
  const Picture before = Now();
  headless::TakeBoxes();
  headless::QueueAnswer(platform::BoxAnswer::No);
  Command(kIdCadClear);
  EXPECT_EQ(Now(), before);
  EXPECT_EQ(headless::TakeBoxes().size(), 1u);
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  Command(kIdCadClear);
  EXPECT_EQ(sketch.objectCount, 0);
  EXPECT_EQ(sketch.selected, -1);
  EXPECT_EQ(sketch.locked[0] + sketch.hidden[1] + tools.multiSelect[1], 0);
  SketchUndo();
  EXPECT_EQ(Now(), before);
}

// Clipboard.

TEST_F(Edits, PastesOneObjectWithoutAGroup) {
  Add(kTypeCircle, 1, 2, 3, 0, 0, 9);
  sketch.selected = 0;
  Command(kIdCadCopy);
  EXPECT_EQ(LastLine(), u"Copied part");
  EXPECT_EQ(sketch.undoDepth, 0);
  Command(kIdCadPaste);
  ASSERT_EQ(sketch.objectCount, 2);
  EXPECT_EQ(Object(1).group, 0);
  EXPECT_EQ(Object(1).x, 1.2);
  EXPECT_EQ(Object(1).y, 2.2);
  EXPECT_EQ(Object(1).size, 3);
  EXPECT_EQ(sketch.selected, 1);
  EXPECT_EQ(sketch.undoDepth, 1);
  EXPECT_EQ(LastLine(), u"Pasted part");
}

TEST_F(Edits, PastesAPartIntoAFreshGroupInArrayOrder) {
  Add(kTypeLine, 1, 0, 1, 0, 0, 9);
  Add(kTypeCircle, 2, 0, 1);
  Add(kTypeLine, 3, 0, 1, 0, 0, 9);
  sketch.selected = 2;
  sketch.locked[0] = 1;
  Command(kIdCadCopy);
  Command(kIdCadPaste);
  ASSERT_EQ(sketch.objectCount, 5);
  EXPECT_EQ(Object(3).x, 1.2);
  EXPECT_EQ(Object(4).x, 3.2);
  EXPECT_EQ(Object(3).group, 10);
  EXPECT_EQ(Object(4).group, 10);
  EXPECT_EQ(sketch.locked[3], 0);
  EXPECT_EQ(sketch.selected, 3);
  Command(kIdCadPaste);
  EXPECT_EQ(Object(5).group, 11);
  EXPECT_EQ(Object(5).x, 1.2);  // from the clipboard, not from the last copy
}

TEST_F(Edits, PastesNothingWhereItDoesNotFit) {
  Add(kTypeLine, 1, 0, 1, 0, 0, 9);
  Add(kTypeLine, 2, 0, 1, 0, 0, 9);
  sketch.selected = 0;
  Command(kIdCadPaste);  // nothing copied yet
  EXPECT_EQ(sketch.objectCount, 2);
  Command(kIdCadCopy);
  for (int i = 2; i < 95; ++i) Add(kTypeLine, 0, 0, 1);
  const Picture before = Now();
  Command(kIdCadPaste);
  EXPECT_EQ(Now(), before);
  EXPECT_EQ(platform::TextOf(kIdCadStatus),
            u"No room: the sketch holds 95 of 96 objects, 2 more do not fit. Nothing was changed.");
  RemoveSketchObject(94);
  Command(kIdCadPaste);
  EXPECT_EQ(sketch.objectCount, 96);
}

TEST_F(Edits, SaysWhereOneMoreObjectDoesNotFit) {
  for (int i = 0; i < 96; ++i) Add(kTypeLine, i, 0, 1);
  for (const int command : {kIdCadDuplicate, kIdCadSplit}) {
    sketch.selected = 0;
    SetSketchStatus(nullptr);
    const Picture before = Now();
    Command(command);
    EXPECT_EQ(Now(), before) << command;
    EXPECT_EQ(
        platform::TextOf(kIdCadStatus),
        u"No room: the sketch holds 96 of 96 objects, 1 more do not fit. Nothing was changed.")
        << command;
  }
}

TEST_F(Edits, CutsThePartAndPastesIt) {
  Add(kTypeLine, 1, 0, 1, 0, 0, 9);
  Add(kTypeLine, 2, 0, 1);
  Add(kTypeLine, 3, 0, 1, 0, 0, 9);
  sketch.selected = 0;
  Command(kIdCadCut);
  ASSERT_EQ(sketch.objectCount, 1);
  EXPECT_EQ(Object(0).x, 2);
  EXPECT_EQ(LastLine(), u"Cut part");
  EXPECT_EQ(sketch.undoDepth, 1);
  Command(kIdCadPaste);
  EXPECT_EQ(sketch.objectCount, 3);
  EXPECT_EQ(Object(1).group, 1);
}

TEST_F(Edits, CutsNoMarkedObjectThatTheClipboardDoesNotHold) {
  Add(kTypeLine, 1, 0, 1, 0, 0, 9);
  Add(kTypeLine, 2, 0, 1);  // marked beside the part
  Add(kTypeLine, 3, 0, 1, 0, 0, 9);
  sketch.selected = 0;
  for (int i = 0; i < 3; ++i) tools.multiSelect[i] = 1;
  const Picture before = Now();
  Command(kIdCadCut);
  ASSERT_EQ(sketch.objectCount, 1);
  EXPECT_EQ(Object(0).x, 2);
  EXPECT_EQ(sketch.selected, 0);
  EXPECT_EQ(MultiSelectCount(), 0);
  EXPECT_EQ(sketch.undoDepth, 1);
  SketchUndo();
  EXPECT_EQ(Now(), before);
}

TEST_F(Edits, LeavesALockedMemberOfACutPartAndDoesNotStoreIt) {
  Add(kTypeLine, 1, 0, 1, 0, 0, 9);
  Add(kTypeLine, 2, 0, 1, 0, 0, 9);
  Add(kTypeLine, 3, 0, 1, 0, 0, 9);
  sketch.locked[1] = 1;
  sketch.selected = 2;
  Command(kIdCadCut);
  ASSERT_EQ(sketch.objectCount, 1);
  EXPECT_EQ(Object(0).x, 2);
  EXPECT_EQ(sketch.locked[0], 1);
  Command(kIdCadPaste);
  ASSERT_EQ(sketch.objectCount, 3);
  EXPECT_EQ(Object(1).x, 1.2);
  EXPECT_EQ(Object(2).x, 3.2);
}

TEST_F(Edits, FindsAFreeGroupWhereTheNumbersAreUsedUp) {
  Add(kTypeLine, 1, 0, 1, 0, 0, 2147483647);
  Add(kTypeLine, 2, 0, 1, 0, 0, 2147483647);
  Add(kTypeLine, 3, 0, 1, 0, 0, 1);
  sketch.selected = 0;
  Command(kIdCadCopy);
  Command(kIdCadPaste);
  ASSERT_EQ(sketch.objectCount, 5);
  EXPECT_EQ(Object(3).group, 2);
  EXPECT_EQ(Object(4).group, 2);
}

TEST_F(Edits, CutsNoLockedSelectionAndLeavesTheClipboard) {
  Add(kTypeLine, 1, 0, 1);
  Add(kTypeLine, 2, 0, 1);
  sketch.selected = 0;
  Command(kIdCadCopy);
  sketch.selected = 1;
  sketch.locked[1] = 1;
  const Picture before = Now();
  Command(kIdCadCut);
  EXPECT_EQ(Now(), before);
  EXPECT_EQ(SketchStatus(), kLocked);
  Command(kIdCadPaste);
  EXPECT_EQ(Object(2).x, 1.2);
}

TEST_F(Edits, CopiesALockedObject) {
  Add(kTypeLine, 1, 0, 1);
  sketch.locked[0] = 1;
  sketch.selected = 0;
  Command(kIdCadCopy);
  Command(kIdCadPaste);
  EXPECT_EQ(sketch.objectCount, 2);
  EXPECT_EQ(sketch.locked[1], 0);
}

TEST_F(Edits, CarriesLengthsToADrawingOfTheOtherUnit) {
  Add(kTypeRectangle, 1, 2, 3, 4, 30);
  sketch.selected = 0;
  Command(kIdCadCopy);
  sketch.metric = true;
  Command(kIdCadPaste);
  EXPECT_NEAR(Object(1).x, 25.4 + 5, 1e-12);
  EXPECT_NEAR(Object(1).y, 50.8 + 5, 1e-12);
  EXPECT_NEAR(Object(1).size, 76.2, 1e-12);
  EXPECT_NEAR(Object(1).size2, 101.6, 1e-12);
  EXPECT_EQ(Object(1).angle, 30);
}

TEST_F(Edits, RefusesAPasteBeyondTheLimit) {
  Add(kTypeLine, 999999.9, 0, 1);
  sketch.selected = 0;
  Command(kIdCadCopy);
  const Picture before = Now();
  Command(kIdCadPaste);
  EXPECT_EQ(SketchStatus(), kBeyond);
  RefreshSketchPanels();
  Command(kIdCadDuplicate);
  EXPECT_EQ(SketchStatus(), kBeyond);
  EXPECT_EQ(Now(), before);
}

// Lock and hide.

TEST_F(Edits, LocksAndHidesTheWholePartOfOneValue) {
  Add(kTypeLine, 1, 0, 1, 0, 0, 9);
  Add(kTypeLine, 2, 0, 1, 0, 0, 9);
  Add(kTypeLine, 3, 0, 1);
  sketch.selected = 0;
  sketch.locked[1] = 1;
  Command(kIdCadLock);  // toggles the selected one's flag: on
  EXPECT_EQ(sketch.locked[0], 1);
  EXPECT_EQ(sketch.locked[1], 1);
  EXPECT_EQ(sketch.locked[2], 0);
  EXPECT_EQ(LastLine(), u"Lock changed");
  Command(kIdCadHide);  // on locked objects too
  EXPECT_EQ(sketch.hidden[0] + sketch.hidden[1], 2);
  EXPECT_EQ(LastLine(), u"Visibility changed");
  EXPECT_EQ(sketch.undoDepth, 2);
  Command(kIdCadLock);
  EXPECT_EQ(sketch.locked[0] + sketch.locked[1], 0);
  SketchUndo();
  SketchUndo();
  SketchUndo();
  EXPECT_EQ(sketch.locked[0], 0);
  EXPECT_EQ(sketch.locked[1], 1);
  EXPECT_EQ(sketch.hidden[0], 0);
}

// Scale and revolve.

TEST_F(Edits, ScalesThePartAboutTheSelectedAnchor) {
  Add(kTypeCircle, 3, 5, 1, 0, 0, 9);
  Add(kTypeRectangle, 1, 1, 2, 1, 30, 9);
  Add(kTypeLine, 1, 1, 1);
  sketch.selected = 1;
  Type(kIdCadScaleFactor, u"1.5");
  Command(kIdCadApplyScale);
  EXPECT_EQ(Object(0).x, 4);
  EXPECT_EQ(Object(0).y, 7);
  EXPECT_EQ(Object(0).size, 1.5);
  EXPECT_EQ(Object(1).x, 1);
  EXPECT_EQ(Object(1).size, 3);
  EXPECT_EQ(Object(1).size2, 1.5);
  EXPECT_EQ(Object(1).angle, 30);
  EXPECT_EQ(Object(2).size, 1);
  EXPECT_EQ(sketch.undoDepth, 1);
  EXPECT_EQ(LastLine(), u"Scaled geometry");
}

TEST_F(Edits, RefusesAScaleFactorOutsideItsRange) {
  Add(kTypeLine, 0, 0, 2);
  sketch.selected = 0;
  const Picture before = Now();
  for (const char16_t* text : {u"0", u"-1", u"1000.001", u"", u"x", u"1,5", u"2x", u"1.2.3"}) {
    RefreshSketchPanels();
    Type(kIdCadScaleFactor, text);
    Command(kIdCadApplyScale);
    EXPECT_EQ(SketchStatus(), u"Scale factor must be greater than zero and at most 1000.");
    EXPECT_EQ(Now(), before);
  }
  Type(kIdCadScaleFactor, u"1000");
  Command(kIdCadApplyScale);
  EXPECT_EQ(Object(0).size, 2000);
  Command(kIdCadApplyScale);
  EXPECT_EQ(SketchStatus(), kBeyond);
  EXPECT_EQ(Object(0).size, 2000);
  sketch.locked[0] = 1;
  Command(kIdCadApplyScale);
  EXPECT_EQ(SketchStatus(), kLocked);
}

TEST_F(Edits, OpensThePanelsOfScaleAndRevolve) {
  tools.geometryTool = kGeometryTrim;
  tools.pivotX = 3;
  Command(kIdCadScale);
  EXPECT_EQ(tools.panelMode, kPanelScale);
  EXPECT_EQ(tools.geometryTool, kGeometryNone);
  Command(kIdCadRevolve);
  EXPECT_EQ(tools.panelMode, kPanelRevolve);
  EXPECT_EQ(tools.pivotX, 3);
  EXPECT_EQ(sketch.undoDepth, 0);
}

void TypeRevolve(const char16_t* x, const char16_t* y, const char16_t* angle,
                 const char16_t* copies) {
  Type(kIdCadPivotX, x);
  Type(kIdCadPivotY, y);
  Type(kIdCadRevolveAngle, angle);
  Type(kIdCadRevolveCopies, copies);
}

TEST_F(Edits, MovesTheGeometryWithNoCopies) {
  Add(kTypeLine, 2, 0, 1, 0, 10, 9);
  Add(kTypeLine, 5, 0, 1, 0, 0, 9);
  sketch.selected = 0;
  TypeRevolve(u"0", u"0", u"90", u"0");
  Command(kIdCadApplyRevolve);
  ASSERT_EQ(sketch.objectCount, 2);
  EXPECT_EQ(Object(0).x, 0);  // quarter turns are exact
  EXPECT_EQ(Object(0).y, 2);
  EXPECT_EQ(Object(0).angle, 100);
  EXPECT_EQ(Object(1).x, 5);  // not its group
  EXPECT_EQ(LastLine(), u"Revolved geometry");
}

TEST_F(Edits, CopiesEachBySoManyTimesTheAngle) {
  Add(kTypeRectangle, 3, 1, 1, 2, 0, 9);
  sketch.selected = 0;
  sketch.hidden[0] = 1;
  TypeRevolve(u"1", u"1", u"90", u"3");
  Command(kIdCadApplyRevolve);
  ASSERT_EQ(sketch.objectCount, 4);
  EXPECT_EQ(Object(0).x, 3);
  const double xs[] = {1, -1, 1};
  const double ys[] = {3, 1, -1};
  for (int k = 0; k < 3; ++k) {
    EXPECT_EQ(Object(k + 1).x, xs[k]) << k;
    EXPECT_EQ(Object(k + 1).y, ys[k]) << k;
    EXPECT_EQ(Object(k + 1).angle, 90 * (k + 1)) << k;
    EXPECT_EQ(Object(k + 1).group, 9) << k;
    EXPECT_EQ(sketch.hidden[k + 1], 0) << k;
  }
  EXPECT_EQ(sketch.selected, 0);
  EXPECT_EQ(sketch.undoDepth, 1);
}

TEST_F(Edits, LeavesAnAngleAsLargeAsItGrows) {
  Add(kTypeLine, 1, 0, 1, 0, 300);
  sketch.selected = 0;
  TypeRevolve(u"0", u"0", u"36000", u"95");
  Command(kIdCadApplyRevolve);
  ASSERT_EQ(sketch.objectCount, 96);
  EXPECT_EQ(Object(95).angle, 300 + 95 * 36000.0);
  EXPECT_EQ(Object(95).x, 1);  // whole turns
}

TEST_F(Edits, RefusesARevolveWithItsOneMessage) {
  Add(kTypeLine, 1, 0, 1);
  Add(kTypeLine, 1, 0, 1);
  sketch.selected = 0;
  const Picture before = Now();
  const char16_t* forms[][4] = {{u"0", u"0", u"90", u"-1"},      {u"0", u"0", u"90", u"95"},
                                {u"0", u"0", u"90", u"96"},      {u"0", u"0", u"36000.5", u"1"},
                                {u"1000000", u"0", u"90", u"1"}, {u"0", u"-1000000", u"90", u"1"},
                                {u"0", u"0", u"90", u""},        {u"0", u"0", u"90", u"+2"},
                                {u"0", u"0", u"", u"1"},         {u"", u"0", u"90", u"1"},
                                {u"0", u"0", u"22,5", u"1"},     {u"1,5", u"0", u"90", u"1"},
                                {u"0", u"0", u"90", u"1.5"},     {u"0", u"0", u"90", u"2x"}};
  for (const auto& form : forms) {
    RefreshSketchPanels();
    TypeRevolve(form[0], form[1], form[2], form[3]);
    Command(kIdCadApplyRevolve);
    EXPECT_EQ(SketchStatus(), u"Select unlocked geometry; copies must fit the sketch.");
    EXPECT_EQ(Now(), before);
    EXPECT_EQ(tools.pivotX, 0);
  }
  TypeRevolve(u"0", u"0", u"90", u"1");
  sketch.locked[0] = 1;
  RefreshSketchPanels();
  Command(kIdCadApplyRevolve);
  EXPECT_EQ(SketchStatus(), u"Select unlocked geometry; copies must fit the sketch.");
  sketch.selected = -1;
  EXPECT_FALSE(Revolve(10, 1));
  sketch.locked[0] = 0;
  sketch.selected = 0;
  EXPECT_EQ(Now(), before);
  TypeRevolve(u"0", u"0", u"90", u"94");
  Command(kIdCadApplyRevolve);
  EXPECT_EQ(sketch.objectCount, 96);
}

// The undo steps that a command takes from its own rules, 0 for a refusal.
int StepsOf(int id, bool scaleFits, bool copiesFit, int& copied) {
  const bool free = sketch.locked[sketch.selected] == 0;
  const bool room = sketch.objectCount < 96;
  switch (id) {
    case kIdCadApply:
    case kIdCadExtend:
    case kIdCadTrim:
      return free ? 2 : 0;
    case kIdCadSplit:
      return free && room && sketch.objects[sketch.selected].type == kTypeLine ? 1 : 0;
    case kIdCadDuplicate:
      return free && room ? 1 : 0;
    case kIdCadDelete:
      return free ? 1 : 0;
    case kIdCadCut:
      if (!free) return 0;
      copied = 0;
      for (int i = 0; i < sketch.objectCount; ++i) copied += InSelectedPart(i) ? 1 : 0;
      return 1;
    case kIdCadPaste:
      return copied > 0 && sketch.objectCount + copied <= 96 ? 1 : 0;
    case kIdCadApplyScale:
      return free && scaleFits ? 1 : 0;
    case kIdCadApplyRevolve:
      return free && copiesFit && room ? 1 : 0;
    default:
      return 1;
  }
}

// Random edits and undos beside a history that the test keeps: the sketch is always what the
// history says, to the last bit, and a refusal leaves nothing behind.
TEST_F(Edits, EndWhereTheReferenceHistorySays) {
  constexpr int kIds[] = {kIdCadApply,  kIdCadExtend, kIdCadTrim,       kIdCadSplit,
                          kIdCadDelete, kIdCadCut,    kIdCadDuplicate,  kIdCadPaste,
                          kIdCadHide,   kIdCadLock,   kIdCadApplyScale, kIdCadApplyRevolve};
  int refusals = 0;
  int undone = 0;
  for (std::uint32_t seed = 1; seed <= 30; ++seed) {
    reference::Dice dice{seed * 2654435761u};
    ResetEdits();
    ResetSketch();
    int copied = 0;
    std::vector<Picture> history;  // the state before each step, oldest first
    for (int step = 0; step < 150; ++step) {
      while (sketch.objectCount < 4) {
        const double x = dice.Roll(5);
        const double y = dice.Roll(5);
        const double size = 1 + dice.Roll(3);
        Add(static_cast<SketchType>(dice.Roll(6)), x, y, size, 1, dice.Roll(360),
            static_cast<int>(dice.Roll(3)));
      }
      const auto count = static_cast<std::uint32_t>(sketch.objectCount);
      sketch.selected = static_cast<int>(dice.Roll(count));
      ClearMultiSelect();
      if (dice.Roll(4) == 0) tools.multiSelect[dice.Roll(count)] = 1;
      RefreshSketchPanels();
      const bool scaleFits = dice.Roll(4) != 0;
      const bool copiesFit = dice.Roll(3) != 0;
      Type(kIdCadScaleFactor, scaleFits ? u"0.5" : u"0");
      TypeRevolve(u"1", u"1", u"30", copiesFit ? u"1" : u"-1");
      const Picture before = Now(false);
      if (dice.Roll(4) == 0) {
        SketchUndo();
        ASSERT_EQ(Now(false), history.empty() ? before : history.back()) << seed << " " << step;
        if (!history.empty()) history.pop_back();
        ++undone;
        continue;
      }
      const int id = kIds[dice.Roll(12)];
      const int steps = StepsOf(id, scaleFits, copiesFit, copied);
      Command(id);
      headless::TakeBoxes();
      if (steps == 0) {
        ASSERT_EQ(Now(false), before) << seed << " " << step << " " << id;
        ++refusals;
      }
      for (int i = 0; i < steps; ++i) history.push_back(before);
      while (history.size() > 24) history.erase(history.begin());
      ASSERT_EQ(sketch.undoDepth, static_cast<int>(history.size())) << seed << " " << step;
    }
    while (!history.empty()) {
      SketchUndo();
      ASSERT_EQ(Now(false), history.back()) << seed;
      history.pop_back();
    }
  }
  EXPECT_GT(refusals, 300);
  EXPECT_GT(undone, 600);
}

}  // namespace
}  // namespace morva
