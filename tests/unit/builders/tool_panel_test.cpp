// The panel of the tool library and the tool builder, on the whole application.

#include "builders/tools/tool_panel.h"

#include <gtest/gtest.h>

#include "app/hooks.h"
#include "app/router.h"
#include "builders/tools/tool_list.h"
#include "library/tool_fields.h"
#include "library/tools.h"
#include "library/units.h"
#include "platform/listing.h"
#include "shell/modes.h"
#include "support/workbench.h"

namespace morva {
namespace {

struct ToolPanel : support::Workbench {
  void SetUp() override {
    support::Workbench::SetUp();
    SetMode(kModeTools);
  }
  static int Id(ToolField field) { return kIdToolField + static_cast<int>(field); }
  static std::u16string Text(ToolField field) { return platform::TextOf(Id(field)); }
  static void Type(ToolField field, const char16_t* text) { headless::TypeInto(Id(field), text); }
  static void Add(const char16_t* number, const char16_t* name) {
    headless::Click(kIdToolAdd);
    Type(ToolField::Number, number);
    Type(ToolField::Name, name);
    headless::Click(kIdToolSave);
  }
};

TEST_F(ToolPanel, KeepsTheStoredToolUnderEditAfterAFirstSave) {
  Add(u"3", u"FIRST");
  Type(ToolField::Name, u"SECOND");
  headless::Click(kIdToolSave);
  ASSERT_EQ(toolLibrary.count, 1);
  EXPECT_EQ(std::u16string(toolLibrary.tools[0].name), u"SECOND");
  Type(ToolField::Name, u"THIRD");
  headless::Click(kIdToolRevert);
  EXPECT_EQ(Text(ToolField::Name), u"SECOND");
}

TEST_F(ToolPanel, ConvertsLengthsAndFeedsAndNothingElse) {
  headless::Click(kIdToolAdd);
  SetUnits(true);
  EXPECT_EQ(Text(ToolField::Diameter), u"12.700");
  EXPECT_EQ(Text(ToolField::GaugeLength), u"76.200");
  EXPECT_EQ(Text(ToolField::Stickout), u"38.100");
  EXPECT_EQ(Text(ToolField::Feed), u"304.80");
  EXPECT_EQ(Text(ToolField::Plunge), u"127.00");
  EXPECT_EQ(Text(ToolField::Flutes), u"4");
  EXPECT_EQ(Text(ToolField::MaxRpm), u"5000");
  EXPECT_EQ(Text(ToolField::HOffset), u"1");
  headless::Click(kIdToolSave);
  EXPECT_NEAR(toolLibrary.tools[0].diameter, 0.5, 1e-12);
  headless::Click(kIdToolFormInch);
  EXPECT_EQ(Text(ToolField::Feed), u"12.00");
}

TEST_F(ToolPanel, SaysThatItsListIsEmpty) {
  ASSERT_EQ(platform::RowCount(kIdToolList), 1);
  EXPECT_EQ(platform::RowText(kIdToolList, 0), u"No tools yet");
  EXPECT_TRUE(platform::IsRowDim(kIdToolList, 0));
  headless::SelectRows(kIdToolList, {0});
  EXPECT_EQ(SelectedTool(), -1);
  headless::Click(kIdToolEdit);
  EXPECT_EQ(platform::TextOf(kIdStatusLine), u"Select a tool first.");
  Add(u"3", u"FIRST");
  ASSERT_EQ(platform::RowCount(kIdToolList), 1);
  EXPECT_EQ(SelectedTool(), 0);
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  headless::Click(kIdToolDelete);
  EXPECT_EQ(platform::RowText(kIdToolList, 0), u"No tools yet");
}

TEST_F(ToolPanel, LetsTheOffsetsOfANewToolFollowItsNumber) {
  headless::Click(kIdToolAdd);
  for (const char16_t* text : {u"", u"2", u"25"}) Type(ToolField::Number, text);
  EXPECT_EQ(Text(ToolField::HOffset), u"25");
  EXPECT_EQ(Text(ToolField::DOffset), u"25");
  headless::Click(kIdToolSave);
  EXPECT_EQ(toolLibrary.tools[0].hOffset, 25);
  EXPECT_EQ(toolLibrary.tools[0].dOffset, 25);
  EXPECT_TRUE(OutputHas(u"T25 takes H25 and D25, as its number says."));
  EXPECT_FALSE(OutputHas(u"Check it"));
  // A tool that is stored keeps its offsets.
  Type(ToolField::Number, u"26");
  EXPECT_EQ(Text(ToolField::HOffset), u"25");
  // So does a new one those that were typed.
  headless::Click(kIdToolAdd);
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  headless::Click(kIdToolAdd);
  Type(ToolField::HOffset, u"7");
  Type(ToolField::Number, u"3");
  EXPECT_EQ(Text(ToolField::HOffset), u"7");
  EXPECT_EQ(Text(ToolField::DOffset), u"3");
  headless::Click(kIdToolSave);
  EXPECT_TRUE(OutputHas(u"T3 takes D3, as its number says."));
  EXPECT_TRUE(OutputHas(u"T3 has H offset 7. Check it"));
}

TEST_F(ToolPanel, SavesANoteWithoutRoundingWhatNobodyTyped) {
  Add(u"3", u"NO 30");
  Type(ToolField::Diameter, u"0.1285");
  Type(ToolField::Feed, u"3.125");
  headless::Click(kIdToolSave);
  headless::Click(kIdToolEdit);
  EXPECT_EQ(Text(ToolField::Diameter), u"0.129");
  SetUnits(true);
  SetUnits(false);
  Type(ToolField::Notes, u"A note");
  headless::Click(kIdToolSave);
  EXPECT_DOUBLE_EQ(toolLibrary.tools[0].diameter, 0.1285);
  EXPECT_DOUBLE_EQ(toolLibrary.tools[0].feed, 3.125);
  EXPECT_EQ(std::u16string(toolLibrary.tools[0].notes), u"A note");
}

TEST_F(ToolPanel, AsksBeforeABlockGoesWhereItIsNeverRun) {
  Add(u"3", u"THIRD");
  const std::u16string program = u"%\r\nO1\r\nM30\r\n%";
  platform::SetEditorText(kIdEditor, program);
  const int end = platform::EditorLength(kIdEditor);
  platform::SetEditorSelection(kIdEditor, {end, end});
  headless::TakeBoxes();
  headless::Click(kIdToolInsert);
  EXPECT_EQ(platform::EditorText(kIdEditor), program);
  ASSERT_EQ(headless::TakeBoxes().size(), 1u);
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  headless::Click(kIdToolInsert);
  EXPECT_EQ(platform::EditorText(kIdEditor).find(program + u"\r\n(TOOL LIBRARY: T3"), 0u);
}

// The user's own moves stand behind the block: X50.8 would be inches.
TEST_F(ToolPanel, AsksBeforeItSwitchesTheProgramsUnit) {
  Add(u"3", u"THIRD");
  const std::u16string text(platform::EditorText(kIdEditor));
  const struct {
    const char16_t* program;
    int line;
    bool asksInInches;
    bool asksInMillimeters;
  } kCases[] = {{u"G90\r\nG1 X1", 0, false, false},
                {u"G21\r\nG1 X1", 1, true, false},
                {u"G20\r\nG1 X1", 1, false, true},
                {u"G20\r\nG1 X1\r\nG21\r\nG1 X9", 1, false, true},
                {u"G20\r\nG1 X1\r\nG21\r\nG1 X9", 3, true, false},
                {u"G1 X1\r\nG21\r\nG1 X9", 0, true, false}};
  for (const auto& c : kCases) {
    for (const bool metric : {false, true}) {
      SCOPED_TRACE(metric);
      SetUnits(metric);
      platform::SetEditorText(kIdEditor, c.program);
      const int caret = platform::EditorLineStart(kIdEditor, c.line);
      platform::SetEditorSelection(kIdEditor, {caret, caret});
      headless::TakeBoxes();
      headless::Click(kIdToolInsert);
      const auto boxes = headless::TakeBoxes();
      const bool asks = metric ? c.asksInMillimeters : c.asksInInches;
      ASSERT_EQ(boxes.size(), asks ? 1u : 0u) << c.line;
      EXPECT_EQ(platform::EditorText(kIdEditor) == c.program, asks) << "No is the answer";
      if (!asks) continue;
      EXPECT_EQ(boxes[0].title, u"Tool Library");
      EXPECT_NE(
          boxes[0].text.find(metric ? u"switches it to millimeters" : u"switches it to inches"),
          boxes[0].text.npos);
      headless::QueueAnswer(platform::BoxAnswer::Yes);
      headless::Click(kIdToolInsert);
      EXPECT_NE(
          platform::EditorText(kIdEditor).find(metric ? u"G21\r\nG00 G43" : u"G20\r\nG00 G43"),
          std::u16string::npos);
    }
  }
}

TEST_F(ToolPanel, SelectsWhatWasStoredAndKeepsItInTheOtherUnit) {
  Add(u"1", u"ONE");
  Add(u"2", u"TWO");
  EXPECT_EQ(SelectedTool(), 1);
  SetUnits(true);
  EXPECT_EQ(SelectedTool(), 1);
  EXPECT_EQ(platform::RowText(kIdToolList, 1), u"T02  TWO  \u2022  End Mill  \u00D812.700 mm");
}

TEST_F(ToolPanel, ShowsTheSelectedToolButKeepsWhatIsTyped) {
  Add(u"1", u"ONE");
  Add(u"2", u"TWO");
  headless::SelectRows(kIdToolList, {0});
  EXPECT_EQ(Text(ToolField::Name), u"ONE");
  Type(ToolField::Name, u"TYPED");
  headless::SelectRows(kIdToolList, {1});
  EXPECT_EQ(Text(ToolField::Name), u"TYPED");
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  headless::Click(kIdToolEdit);
  EXPECT_EQ(Text(ToolField::Name), u"TWO");
}

TEST_F(ToolPanel, TellsWhereTheBlockOrTheOffsetIsAnother) {
  headless::Click(kIdToolAdd);
  Type(ToolField::Number, u"5");
  Type(ToolField::HOffset, u"1");
  headless::Click(kIdToolSave);
  EXPECT_NE(Output().find(u"T5 has H offset 1. Check it"), std::u16string::npos);
  headless::SelectRows(kIdToolList, {0});
  headless::Click(kIdToolEdit);
  Type(ToolField::Feed, u"30");
  headless::Click(kIdToolInsert);
  EXPECT_NE(Output().find(u"the block holds the stored tool."), std::u16string::npos);
}

TEST_F(ToolPanel, KeepsOffsetsOfANewToolWithItsNumberUntilTheyAreTyped) {
  headless::Click(kIdToolAdd);
  Type(ToolField::Number, u"");
  Type(ToolField::Number, u"4");
  EXPECT_EQ(Text(ToolField::HOffset), u"4");
  EXPECT_EQ(Text(ToolField::DOffset), u"4");
  Type(ToolField::DOffset, u"24");
  Type(ToolField::Number, u"7");
  EXPECT_EQ(Text(ToolField::HOffset), u"7");
  EXPECT_EQ(Text(ToolField::DOffset), u"24");
  headless::Click(kIdToolSave);
  EXPECT_EQ(Output().find(u"Check it"), std::u16string::npos);
  // A stored tool has offsets of its own.
  Type(ToolField::Number, u"9");
  EXPECT_EQ(Text(ToolField::HOffset), u"7");
}

TEST_F(ToolPanel, ShowsWhatIsKeptAndSaysWhereThatIsLess) {
  Add(u"1", u"ONE");
  EXPECT_EQ(Output().find(u"Only a part"), std::u16string::npos);
  Type(ToolField::Diameter, u"1/2");
  Type(ToolField::MaxRpm, u"1e3");
  headless::Click(kIdToolSave);
  EXPECT_EQ(Text(ToolField::Diameter), u"1.000");
  EXPECT_EQ(Text(ToolField::MaxRpm), u"1");
  EXPECT_NE(Output().find(u"Only a part of what was typed is a number. Kept: Diameter 1.000, "
                          u"Max RPM 1."),
            std::u16string::npos);
  // A tool eight times as thick must not be stored with a line of the log alone.
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_NE(boxes[0].text.find(u"Kept: Diameter 1.000, Max RPM 1."), std::u16string::npos);
  // Nothing is unsaved: another tool is shown without a question.
  headless::Click(kIdToolAdd);
  EXPECT_TRUE(headless::TakeBoxes().empty());
}

TEST_F(ToolPanel, SaysSavedOfTheFormAlone) {
  Add(u"1", u"ONE");
  headless::Advance(100);
  const std::u16string line = u"Tool Library updated and saved.";
  const std::size_t said = Output().find(line);
  ASSERT_NE(said, std::u16string::npos);
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  headless::Click(kIdToolDelete);
  headless::Advance(100);
  ASSERT_EQ(toolLibrary.count, 0);
  EXPECT_EQ(Output().find(line, said + 1), std::u16string::npos);
}

// What another window of MORVA, or a hand in the settings file, put there.
constexpr char kForeignTools[] =
    "[ToolLibrary]\r\nCount=2\r\n[Tool0]\r\nNumber=50\r\nName=FOREIGN\r\n"
    "[Tool1]\r\nNumber=1\r\nName=ONE\r\nHOffset=1\r\nDOffset=1\r\n";

TEST_F(ToolPanel, KeepsTheToolsThatAnotherProgramWrote) {
  Add(u"1", u"ONE");
  headless::Advance(100);
  WriteFile("bin/MORVA.ini", kForeignTools);
  Add(u"2", u"TWO");
  headless::Advance(100);
  ASSERT_EQ(toolLibrary.count, 3);
  EXPECT_EQ(std::u16string(toolLibrary.tools[0].name), u"FOREIGN");
  EXPECT_EQ(std::u16string(toolLibrary.tools[2].name), u"TWO");
  EXPECT_EQ(platform::RowCount(kIdToolList), 3);
  EXPECT_TRUE(OutputHas(u"The tool library was changed by another program and has been read"));
  EXPECT_NE(ReadFile("bin/MORVA.ini").find("Name=FOREIGN"), std::string::npos);
}

TEST_F(ToolPanel, FollowsItsToolToAnotherPlaceInTheFile) {
  Add(u"1", u"ONE");
  headless::Advance(100);
  WriteFile("bin/MORVA.ini", kForeignTools);
  Type(ToolField::Notes, u"typed");
  headless::Click(kIdToolSave);
  ASSERT_EQ(toolLibrary.count, 2);
  EXPECT_EQ(std::u16string(toolLibrary.tools[1].notes), u"typed");
  EXPECT_EQ(std::u16string(toolLibrary.tools[0].notes), u"");
}

TEST_F(ToolPanel, InsertsTheOffsetThatAnotherWindowStored) {
  Add(u"1", u"ONE");
  headless::Advance(100);
  WriteFile("bin/MORVA.ini",
            "[ToolLibrary]\r\nCount=1\r\n[Tool0]\r\nNumber=1\r\nName=ONE\r\n"
            "HOffset=31\r\nDOffset=1\r\n");
  headless::Click(kIdToolInsert);
  EXPECT_NE(std::u16string(platform::EditorText(kIdEditor)).find(u"H31"), std::u16string::npos);
  // Without the tool nothing is inserted in its place.
  const std::u16string before(platform::EditorText(kIdEditor));
  WriteFile("bin/MORVA.ini", "[ToolLibrary]\r\nCount=1\r\n[Tool0]\r\nNumber=9\r\nName=NINE\r\n");
  headless::Click(kIdToolInsert);
  EXPECT_EQ(platform::EditorText(kIdEditor), before);
}

TEST_F(ToolPanel, KeepsTheListOnItsToolWhenTheLibraryIsReadAgain) {
  Add(u"1", u"ONE");
  Add(u"12", u"TWELVE");
  Add(u"5", u"FIVE");
  headless::SelectRows(kIdToolList, {1});
  headless::Advance(100);
  const std::string ini = ReadFile("bin/MORVA.ini");
  const auto write = [this](const char* first, const char* second) {
    WriteFile("bin/MORVA.ini", "[ToolLibrary]\r\nCount=2\r\n[Tool0]\r\n" + std::string(first) +
                                   "\r\n[Tool1]\r\n" + second + "\r\n");
  };
  write("Number=12\r\nName=TWELVE", "Number=5\r\nName=FIVE");
  headless::Click(kIdToolInsert);
  EXPECT_NE(std::u16string(platform::EditorText(kIdEditor)).find(u"T12 M06"), std::u16string::npos);
  EXPECT_EQ(SelectedTool(), 0);
  // Without the tool the list stands on none.
  const std::u16string before(platform::EditorText(kIdEditor));
  write("Number=5\r\nName=FIVE", "Number=7\r\nName=SEVEN");
  headless::Click(kIdToolInsert);
  EXPECT_EQ(SelectedTool(), -1);
  headless::Click(kIdToolInsert);
  EXPECT_EQ(platform::EditorText(kIdEditor), before);
}

TEST_F(ToolPanel, SaysThatATypedToolIsKeptAsAFurtherOneOnlyWhenItIs) {
  Add(u"1", u"ONE");
  headless::Advance(100);
  WriteFile("bin/MORVA.ini", "[ToolLibrary]\r\nCount=1\r\n[Tool0]\r\nNumber=9\r\nName=NINE\r\n");
  Type(ToolField::Diameter, u"-1");
  headless::TakeBoxes();
  headless::Click(kIdToolSave);
  EXPECT_EQ(headless::TakeBoxes().size(), 1u);
  EXPECT_FALSE(OutputHas(u"kept as a further one"));
  headless::Click(kIdToolAdd);
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  headless::Click(kIdToolAdd);
  Type(ToolField::Number, u"4");
  headless::Click(kIdToolSave);
  EXPECT_FALSE(OutputHas(u"kept as a further one"));
}

TEST_F(ToolPanel, KeepsBothWhereTheSameToolWasChangedTwice) {
  Add(u"1", u"ONE");
  headless::Advance(100);
  WriteFile("bin/MORVA.ini", "[ToolLibrary]\r\nCount=1\r\n[Tool0]\r\nName=HERS\r\n");
  Type(ToolField::Name, u"MINE");
  headless::Click(kIdToolSave);
  ASSERT_EQ(toolLibrary.count, 2);
  EXPECT_EQ(std::u16string(toolLibrary.tools[0].name), u"HERS");
  EXPECT_EQ(std::u16string(toolLibrary.tools[1].name), u"MINE");
  headless::Advance(100);
  // Nor is a tool removed that is not the one that was asked about.
  WriteFile("bin/MORVA.ini", "[ToolLibrary]\r\nCount=1\r\n[Tool0]\r\nName=ANOTHER\r\n");
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  headless::Click(kIdToolDelete);
  ASSERT_EQ(toolLibrary.count, 1);
  EXPECT_EQ(std::u16string(toolLibrary.tools[0].name), u"ANOTHER");
}

TEST_F(ToolPanel, LosesNothingTypedUnasked) {
  Add(u"1", u"ONE");
  headless::Click(kIdToolAdd);
  Type(ToolField::Name, u"TYPED");
  headless::TakeBoxes();
  for (const int key : {kIdToolAdd, kIdToolEdit, kIdToolClose}) {
    headless::QueueAnswer(platform::BoxAnswer::No);
    headless::Click(key);
    const auto boxes = headless::TakeBoxes();
    ASSERT_EQ(boxes.size(), 1u) << key;
    EXPECT_EQ(boxes[0].text, u"Close the form without saving the tool?");
    EXPECT_EQ(boxes[0].buttons, platform::BoxButtons::NoYes);
    EXPECT_EQ(Text(ToolField::Name), u"TYPED") << key;
    EXPECT_TRUE(platform::IsVisible(kIdToolSave)) << key;
  }
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  headless::Click(kIdToolAdd);
  EXPECT_EQ(Text(ToolField::Name), u"1/2 END MILL");
  headless::TakeBoxes();
  headless::Click(kIdToolEdit);
  EXPECT_TRUE(headless::TakeBoxes().empty()) << "nothing was typed since";
}

TEST_F(ToolPanel, IsAskedAboutWhenTheWindowCloses) {
  headless::Click(kIdToolAdd);
  Type(ToolField::Name, u"TYPED");
  SetMode(kModeHome);
  headless::TakeBoxes();
  headless::QueueAnswer(platform::BoxAnswer::No);
  EXPECT_FALSE(headless::CloseKey());
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].title, u"Tool geometry");
  EXPECT_EQ(boxes[0].buttons, platform::BoxButtons::NoYes);
  EXPECT_EQ(Text(ToolField::Name), u"TYPED");
  EXPECT_TRUE(platform::IsVisible(kIdToolSave)) << "what is asked about comes up";
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  EXPECT_TRUE(headless::CloseKey());
  EXPECT_TRUE(headless::WindowClosed());
}

TEST_F(ToolPanel, GoesOnWithTheSameToolWhenAnEarlierOneIsRemoved) {
  Add(u"1", u"ONE");
  Add(u"2", u"TWO");
  SelectTool(0);
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  headless::Click(kIdToolDelete);
  ASSERT_EQ(toolLibrary.count, 1);
  Type(ToolField::Name, u"TWO AGAIN");
  headless::Click(kIdToolSave);
  ASSERT_EQ(toolLibrary.count, 1);
  EXPECT_EQ(std::u16string(toolLibrary.tools[0].name), u"TWO AGAIN");
}

TEST_F(ToolPanel, ShowsTheNumberOfAToolAtHomeAndNothingWithoutTools) {
  SetMode(kModeHome);
  EXPECT_FALSE(platform::IsVisible(kIdHomeTool));
  SetMode(kModeTools);
  Add(u"4", u"FOUR");
  Add(u"15", u"FIFTEEN");
  SetMode(kModeHome);
  ASSERT_TRUE(platform::IsVisible(kIdHomeTool));
  EXPECT_EQ(platform::TextOf(kIdHomeToolNumber), u"4");
  headless::SelectRows(kIdHomeTool, {1});
  EXPECT_EQ(platform::TextOf(kIdHomeToolNumber), u"15");
  EXPECT_EQ(platform::RowText(kIdHomeTool, 1), u"T15  FIFTEEN");
  EXPECT_FALSE(headless::TypeInto(kIdHomeToolNumber, u"99"));
  EXPECT_EQ(platform::TextOf(kIdHomeToolNumber), u"15");
}

TEST_F(ToolPanel, IsPaintedAnewWithEachKeyAndSaysWhyItIsNot) {
  headless::Click(kIdToolAdd);
  const auto says = [] {
    for (const headless::DrawCall& call : headless::PaintOf(kViewToolPicture)) {
      if (call.text.find(u"Stickout cannot exceed") != call.text.npos) return true;
    }
    return false;
  };
  EXPECT_FALSE(says());
  Type(ToolField::Stickout, u"4");
  EXPECT_TRUE(says());
  Type(ToolField::Stickout, u"1");
  EXPECT_FALSE(says());
  Type(ToolField::Diameter, u"abc");
  EXPECT_TRUE(says());
  Type(ToolField::Diameter, u"1");
  EXPECT_FALSE(says());
  Type(ToolField::Diameter, u"1,5");
  EXPECT_TRUE(says());
}

TEST_F(ToolPanel, StaysWhileTheModeIsLeftAndClosesByTheBackKey) {
  headless::Click(kIdToolAdd);
  SetMode(kModeHome);
  EXPECT_FALSE(platform::IsVisible(kIdToolSave));
  SetMode(kModeTools);
  EXPECT_TRUE(platform::IsVisible(kIdToolSave));
  headless::Click(kIdBack);
  EXPECT_FALSE(platform::IsVisible(kIdToolSave));
  EXPECT_EQ(app.mode, kModeTools);
  headless::Click(kIdBack);
  EXPECT_EQ(app.mode, kModeHome);
}

TEST_F(ToolPanel, StandsBehindTheImportOfOperations) {
  headless::Click(kIdToolAdd);
  RouteCommand(kIdImport, platform::kNotifyClick);
  EXPECT_FALSE(platform::IsVisible(kIdToolSave));
  headless::Click(kIdImportCancel);
  EXPECT_TRUE(platform::IsVisible(kIdToolSave));
}

}  // namespace
}  // namespace morva
