// The code of drawings: a worked example to the character, and the command around it.

#include "cad/panel/sketch_code.h"

#include <gtest/gtest.h>

#include <string>

#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "documents/feature_blocks.h"
#include "documents/insertion.h"
#include "documents/program_tabs.h"
#include "platform/listing.h"
#include "support/stage.h"

namespace morva {
namespace {

SketchObject Line(double x, double y, double length, double angle) {
  return {kTypeLine, 0, x, y, length, 0, angle};
}
SketchObject Circle(double x, double y, double diameter) {
  return {kTypeCircle, 0, x, y, diameter, 0, 0};
}

int rebuilt = 0;

struct SketchCodeTest : support::Stage {
  SketchCodeTest() {
    ResetSketch();
    ResetInsertion();
    FreeTabs();
    ResetFeatures();
    rebuilt = 0;
    hooks.rebuildToolpath = [] { ++rebuilt; };
    RegisterSketchCode();
    for (const int id : {kIdCadDepth, kIdCadFeed, kIdCadSafeZ}) {
      support::MakeText(id, platform::ControlKind::EditLine);
    }
    Fields(u"-0.1", u"10", u"0.5");
    app.activeTab = 0;
    app.tabCount = 1;
  }
  ~SketchCodeTest() override {
    ResetSketch();
    ResetInsertion();
    FreeTabs();
    ResetAppState();
  }

  static void Fields(const char16_t* depth, const char16_t* feed, const char16_t* safeZ) {
    platform::SetText(kIdCadDepth, depth);
    platform::SetText(kIdCadFeed, feed);
    platform::SetText(kIdCadSafeZ, safeZ);
  }
  static void Draw(const SketchObject& object) { AppendSketchObject(object); }
  static std::u16string Code() { return SketchCode({-0.1, 10, 0.5}); }
  // The one box that this command showed.
  static headless::BoxRecord Refusal() {
    GenerateSketchCode();
    const auto boxes = headless::TakeBoxes();
    EXPECT_EQ(boxes.size(), 1u);
    return boxes.empty() ? headless::BoxRecord() : boxes[0];
  }
  static bool Holds(std::u16string_view text, std::u16string_view words) {
    return text.find(words) != text.npos;
  }
};

TEST_F(SketchCodeTest, IsTheWorkedExampleToTheCharacter) {
  Draw(Line(0, 0, 2, 0));
  Draw(Circle(1, 1, 1));
  EXPECT_EQ(Code(),
            u"\r\n"
            u"(CUSTOM SHAPE EDITOR)\r\n"
            u"G20 (INCH)\r\n"
            u"G90 G17 G94\r\n"
            u"G00 Z0.500\r\n"
            u"(OBJECT 1)\r\n"
            u"G00 X0.000 Y0.000\r\n"
            u"G01 Z-0.100 F10.00\r\n"
            u"G01 X2.000 Y0.000 F10.0\r\n"
            u"G00 Z0.500\r\n"
            u"(OBJECT 2)\r\n"
            u"G00 X1.500 Y1.000\r\n"
            u"G01 Z-0.100 F10.00\r\n"
            u"G02 X1.462 Y0.809 I-0.500 J0.000 F10.00\r\n"
            u"G02 X1.354 Y0.646 I-0.462 J0.191\r\n"
            u"G02 X1.191 Y0.538 I-0.354 J0.354\r\n"
            u"G02 X1.000 Y0.500 I-0.191 J0.462\r\n"
            u"G02 X0.809 Y0.538 I0.000 J0.500\r\n"
            u"G02 X0.646 Y0.646 I0.191 J0.462\r\n"
            u"G02 X0.538 Y0.809 I0.354 J0.354\r\n"
            u"G02 X0.500 Y1.000 I0.462 J0.191\r\n"
            u"G02 X0.538 Y1.191 I0.500 J0.000\r\n"
            u"G02 X0.646 Y1.354 I0.462 J-0.191\r\n"
            u"G02 X0.809 Y1.462 I0.354 J-0.354\r\n"
            u"G02 X1.000 Y1.500 I0.191 J-0.462\r\n"
            u"G02 X1.191 Y1.462 I0.000 J-0.500\r\n"
            u"G02 X1.354 Y1.354 I-0.191 J-0.462\r\n"
            u"G02 X1.462 Y1.191 I-0.354 J-0.354\r\n"
            u"G02 X1.500 Y1.000 I-0.462 J-0.191\r\n"
            u"G00 Z0.500\r\n"
            u"(END CUSTOM SHAPE)\r\n");
}

TEST_F(SketchCodeTest, WritesTheHeaderAndTheEndAloneForWorkPoints) {
  Draw({kTypeWorkPoint, 0, 1, 1, 0, 0, 0});
  Draw({kTypeWorkPoint, 0, 2, 1, 0, 0, 0});
  EXPECT_EQ(Code(),
            u"\r\n(CUSTOM SHAPE EDITOR)\r\nG20 (INCH)\r\nG90 G17 G94\r\nG00 Z0.500\r\n"
            u"(END CUSTOM SHAPE)\r\n");
}

TEST_F(SketchCodeTest, NumbersObjectsByTheirPlaceSoThatAWorkAxisSkipsOne) {
  Draw({kTypeWorkAxis, 0, 0, 0, 5, 0, 0});
  Draw(Line(0, 0, 2, 0));
  EXPECT_FALSE(Holds(Code(), u"(OBJECT 1)"));
  EXPECT_TRUE(Holds(Code(), u"(OBJECT 2)\r\nG00 X0.000 Y0.000\r\n"));
}

TEST_F(SketchCodeTest, CutsHiddenAndLockedObjects) {
  Draw(Line(0, 0, 2, 0));
  const std::u16string shown = Code();
  sketch.hidden[0] = 1;
  sketch.locked[0] = 1;
  EXPECT_EQ(Code(), shown);
  EXPECT_TRUE(Holds(shown, u"G01 X2.000 Y0.000 F10.0\r\n"));
}

TEST_F(SketchCodeTest, LeavesTheCommentOfACircleOfNothing) {
  Draw(Circle(1, 1, 0));
  EXPECT_TRUE(Holds(Code(), u"G00 Z0.500\r\n(OBJECT 1)\r\n(END CUSTOM SHAPE)\r\n"));
}

TEST_F(SketchCodeTest, CutsASlotShorterThanItIsWideAsTwoHalfCircles) {
  Draw({kTypeSlot, 0, 0, 0, 0.5, 1, 0});
  EXPECT_TRUE(Holds(Code(),
                    u"G01 X0.000 Y0.500 F10.0\r\nG03 X0.000 Y-0.500 I0.000 J-0.500\r\n"
                    u"G01 X0.000 Y-0.500 F10.0\r\nG03 X0.000 Y0.500 I0.000 J0.500\r\n"));
}

TEST_F(SketchCodeTest, KeepsTheMinusOfASmallValue) {
  Draw(Line(-0.0004, -0.0004, 2, 0));
  EXPECT_TRUE(Holds(Code(), u"G00 X-0.000 Y-0.000\r\n"));
}

TEST_F(SketchCodeTest, NamesTheUnitOfTheSketchAndNotOfTheApplication) {
  Draw(Line(0, 0, 2, 0));
  app.unitsMetric = true;
  EXPECT_TRUE(Holds(Code(), u"G20 (INCH)\r\n"));
  app.unitsMetric = false;
  sketch.metric = true;
  EXPECT_TRUE(Holds(Code(), u"G21 (MM)\r\n"));
}

TEST_F(SketchCodeTest, IsNotCutWithNinetySixOfTheLongestObjects) {
  for (int i = 0; i < kMaxItems; ++i) Draw(Circle(-899999.5 - i, -899999.5, 199998.123));
  const std::u16string text = Code();
  EXPECT_TRUE(Holds(text, u"(OBJECT 96)\r\n"));
  const std::u16string end = u"(END CUSTOM SHAPE)\r\n";
  EXPECT_EQ(text.substr(text.size() - end.size()), end);
}

// The command.

TEST_F(SketchCodeTest, AsksForAnObjectBeforeItLooksAtTheFields) {
  Fields(u"5", u"0", u"1");
  const headless::BoxRecord box = Refusal();
  EXPECT_EQ(box.title, u"Custom Shape Editor");
  EXPECT_EQ(box.text, u"Draw at least one object first.");
  EXPECT_EQ(box.icon, platform::BoxIcon::Information);
}

TEST_F(SketchCodeTest, RefusesASafeZEqualToTheDepthOrBelowIt) {
  Draw(Line(0, 0, 2, 0));
  for (const char16_t* safeZ : {u"-0.1", u"-0.2"}) {
    Fields(u"-0.1", u"10", safeZ);
    const headless::BoxRecord box = Refusal();
    EXPECT_EQ(box.title, u"Custom Shape Editor");
    EXPECT_EQ(box.text, u"Enter a positive feed with Safe Z above the cutting depth.");
    EXPECT_EQ(box.icon, platform::BoxIcon::Warning);
  }
  EXPECT_EQ(Text(), u"");
}

// Digits are summed: "0.000001" is a little above the limit, "0.0000009" below it.
TEST_F(SketchCodeTest, RefusesAFeedOfAMillionthOrLess) {
  Draw(Line(0, 0, 2, 0));
  for (const char16_t* feed : {u"0", u"-5", u"0.0000009"}) {
    Fields(u"-0.1", feed, u"0.5");
    EXPECT_EQ(Refusal().text, u"Enter a positive feed with Safe Z above the cutting depth.");
  }
  Fields(u"-0.1", u"0.000001", u"0.5");
  GenerateSketchCode();
  EXPECT_TRUE(headless::TakeBoxes().empty());
  EXPECT_TRUE(Holds(Text(), u"F0.00\r\n"));
}

TEST_F(SketchCodeTest, TakesTheInchFallbacksForFieldsThatAreNoNumbers) {
  Draw(Line(0, 0, 2, 0));
  Fields(u"", u"", u"");
  GenerateSketchCode();
  EXPECT_TRUE(Holds(Text(), u"G00 Z0.500\r\n(OBJECT 1)"));
  EXPECT_TRUE(Holds(Text(), u"G01 Z-2.500 F10.00\r\n"));
}

TEST_F(SketchCodeTest, TakesTheMillimetreFallbacksWithTheSameDepth) {
  Draw(Line(0, 0, 2, 0));
  sketch.metric = true;
  Fields(u"", u"", u"");
  GenerateSketchCode();
  EXPECT_TRUE(Holds(Text(), u"G00 Z12.700\r\n(OBJECT 1)"));
  EXPECT_TRUE(Holds(Text(), u"G01 Z-2.500 F250.00\r\n"));
}

TEST_F(SketchCodeTest, RefusesCuttingFieldsThatAreNoNumbers) {
  Draw(Line(0, 0, 2, 0));
  const struct {
    const char16_t* fields[3];
    const char16_t* words;
  } kCases[] = {{{u"-0,75", u"10", u"0.5"}, u"Cut Z holds no"},
                {{u"-0.1", u"10 in", u"0.5"}, u"Cut feed holds no"},
                {{u"-0.1", u"10", u"abc"}, u"Safe Z holds no"}};
  for (const auto& each : kCases) {
    Fields(each.fields[0], each.fields[1], each.fields[2]);
    const headless::BoxRecord box = Refusal();
    EXPECT_EQ(box.title, u"Custom Shape Editor");
    EXPECT_EQ(box.text.find(each.words), 0u);
    EXPECT_NE(box.text.find(u"Write 0.75, not 0,75."), box.text.npos);
    EXPECT_EQ(Text(), u"");
  }
}

TEST_F(SketchCodeTest, SaysWhichCuttingFieldsWereEmptyAndWhatWasUsed) {
  Draw(Line(0, 0, 2, 0));
  Fields(u"", u"10.5", u"");
  GenerateSketchCode();
  const std::u16string log = platform::TextOf(kIdOutputLog);
  EXPECT_TRUE(
      Holds(log, u"Cut Z is not a number: -2.500 was used. Check the code before you run it.\r\n"));
  EXPECT_TRUE(
      Holds(log, u"Safe Z is not a number: 0.500 was used. Check the code before you run it.\r\n"));
  EXPECT_FALSE(Holds(log, u"Cut feed is not"));
}

TEST_F(SketchCodeTest, InsertsOneBlockOfASketchAndTellsWhatToVerify) {
  Draw(Line(0, 0, 2, 0));
  Fields(u"-0.125", u"7.5", u"0.25");
  ASSERT_TRUE(RouteCommand(kIdCadGenerate, platform::kNotifyClick));
  ScanProgramText(Text());
  ASSERT_EQ(features.count, 1);
  EXPECT_EQ(features.rows[0].settings.kind, kKindSketch);
  EXPECT_EQ(features.rows[0].settings.itemCount, 1);
  EXPECT_EQ(features.rows[0].settings.codeHash, CodeHash(SketchCode({-0.125, 7.5, 0.25})));
  EXPECT_TRUE(Holds(Text(), SketchCode({-0.125, 7.5, 0.25})));
  EXPECT_TRUE(Holds(platform::TextOf(kIdOutputLog),
                    u"Custom Shape Editor geometry inserted into active program. Verify work "
                    u"offset, cutter compensation, stock, and clearances.\r\n"));
  EXPECT_TRUE(app.editorDirty);
  EXPECT_EQ(rebuilt, 1);
  EXPECT_EQ(sketch.objectCount, 1);
}

TEST_F(SketchCodeTest, CutsByTheFallbackOfAnEmptyFieldAndKeepsZeroInTheBlock) {
  Draw(Line(0, 0, 2, 0));
  SetSketchThickness(0.75);
  Fields(u"", u"7.5", u"0.25");
  GenerateSketchCode();
  ScanProgramText(Text());
  ASSERT_EQ(features.count, 1);
  EXPECT_TRUE(Holds(Text(), SketchCode({-2.5, 7.5, 0.25})));
  const FeatureSettings& stored = features.rows[0].settings;
  EXPECT_EQ(stored.values[0], 0);
  EXPECT_EQ(stored.values[1], 7.5);
  EXPECT_EQ(stored.values[2], 0.25);
  for (int i = 3; i < 15; ++i) EXPECT_EQ(stored.values[i], 0) << i;
  EXPECT_EQ(stored.values[15], 0.75);
}

TEST_F(SketchCodeTest, SaysInTheWorkspaceWhereTheCodeWentAndWhetherItIsNew) {
  platform::ListSpec recent;
  recent.id = kIdCadRecent;
  platform::MakeList(recent);
  std::u16string_view(u"Bracket.NC").copy(ActiveTab()->title, kTitleUnits - 1);
  Draw(Line(0, 0, 2, 0));
  GenerateSketchCode();
  EXPECT_EQ(
      SketchStatus(),
      u"Code added to Bracket.NC. After a change press Generate again: it offers to update this "
      u"feature.");
  ASSERT_EQ(platform::RowCount(kIdCadRecent), 1);
  EXPECT_EQ(platform::RowText(kIdCadRecent, 0), u"Generated code");
  ScanProgramText(Text());
  ASSERT_EQ(features.count, 1);
  editLink.kind = kKindSketch;
  editLink.id = features.rows[0].id;
  editLink.tab = app.activeTab;
  editLink.original =
      Text().substr(static_cast<std::size_t>(features.rows[0].start),
                    static_cast<std::size_t>(features.rows[0].end - features.rows[0].start));
  GenerateSketchCode();
  EXPECT_EQ(SketchStatus().substr(0, 27), u"Code updated in Bracket.NC.");
  EXPECT_EQ(platform::RowText(kIdCadRecent, 1), u"Updated code");
}

// Pressed twice.

TEST_F(SketchCodeTest, OffersToUpdateTheBlockThatTheDrawingStandsIn) {
  Draw(Line(0, 0, 2, 0));
  GenerateSketchCode();
  const std::u16string once = Text();
  headless::TakeBoxes();
  headless::QueueAnswer(platform::BoxAnswer::Cancel);
  const headless::BoxRecord box = Refusal();
  EXPECT_EQ(box.title, u"Custom Shape Editor");
  EXPECT_EQ(box.text,
            u"It stands in #1 CAD sketch already; another block would cut it twice.\r\n\r\n"
            u"Yes: update that block.\r\nNo: add another block.\r\nCancel: change nothing.");
  EXPECT_EQ(box.buttons, platform::BoxButtons::YesNoCancel);
  EXPECT_EQ(Text(), once);
  // Another depth updates the one block.
  Fields(u"-0.5", u"10", u"0.5");
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  GenerateSketchCode();
  ScanProgramText(Text());
  EXPECT_EQ(features.count, 1);
  EXPECT_TRUE(Holds(Text(), u"G01 Z-0.500 F10.00"));
  EXPECT_FALSE(Holds(Text(), u"G01 Z-0.100"));
  EXPECT_EQ(editLink.kind, 0);
  headless::QueueAnswer(platform::BoxAnswer::No);
  GenerateSketchCode();
  ScanProgramText(Text());
  EXPECT_EQ(features.count, 2);
}

TEST_F(SketchCodeTest, ForgetsThatOfferedBlockWhenThePickerIsCancelled) {
  Draw(Line(0, 0, 2, 0));
  GenerateSketchCode();
  SetDestinationPicker([](int, std::int32_t) { return Destination::Cancelled; });
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  GenerateSketchCode();
  EXPECT_EQ(editLink.kind, 0);
}

TEST_F(SketchCodeTest, UpdatesNoBlockThatWasEditedByHand) {
  Draw(Line(0, 0, 2, 0));
  GenerateSketchCode();
  std::u16string text = Text();
  text.replace(text.find(u"Z-0.100"), 7, u"Z-0.200");
  platform::SetEditorText(kIdEditor, text);
  headless::TakeBoxes();
  const headless::BoxRecord box = Refusal();
  EXPECT_EQ(box.buttons, platform::BoxButtons::NoYes);
  EXPECT_NE(box.text.find(u"copied or edited by hand"), box.text.npos);
  EXPECT_EQ(Text(), text);
}

TEST_F(SketchCodeTest, IsTheMenuItemsCommandAsWell) {
  Draw(Line(0, 0, 2, 0));
  ASSERT_TRUE(RouteCommand(kIdCadGenerateItem, platform::kNotifyClick));
  EXPECT_TRUE(Holds(Text(), u"(END CUSTOM SHAPE)"));
}

TEST_F(SketchCodeTest, RunsNothingOfItsSuccessWhenThePickerIsCancelled) {
  Draw(Line(0, 0, 2, 0));
  SetDestinationPicker([](int, std::int32_t) { return Destination::Cancelled; });
  GenerateSketchCode();
  EXPECT_EQ(Text(), u"");
  EXPECT_EQ(platform::TextOf(kIdOutputLog), u"");
  EXPECT_EQ(SketchStatus().find(u"Code "), std::u16string::npos);
  EXPECT_EQ(rebuilt, 0);
  EXPECT_FALSE(app.editorDirty);
}

}  // namespace
}  // namespace morva
