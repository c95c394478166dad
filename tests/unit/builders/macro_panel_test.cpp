// The panel of the macro library on the whole application.

#include "builders/macros/macro_panel.h"

#include <gtest/gtest.h>

#include "documents/tab_table.h"
#include "library/macro_templates.h"
#include "library/macros.h"
#include "library/units.h"
#include "platform/listing.h"
#include "shell/modes.h"
#include "support/workbench.h"

namespace morva {
namespace {

struct MacroPanel : support::Workbench {
  void SetUp() override {
    support::Workbench::SetUp();
    SetMode(kModeMacros);
  }
  static void SetProgram(const std::u16string& text) { platform::SetEditorText(kIdEditor, text); }
  static void SaveAs(const char16_t* name) {
    headless::TypeInto(kIdMacroName, name);
    headless::Click(kIdMacroSave);
  }
};

TEST_F(MacroPanel, ShowsTheFieldsOfTheChosenTemplateWithTheirStartTexts) {
  for (int kind = 0; kind < kMacroTemplates; ++kind) {
    headless::SelectRows(kIdMacroCombo, {kind});
    for (int i = 0; i < kMacroFields; ++i) {
      const MacroField& field = MacroTemplates()[static_cast<std::size_t>(kind)].fields[i];
      const int id = kIdMacroField + i;
      EXPECT_EQ(platform::IsVisible(id), field.label[0] != 0) << kind << " " << i;
      if (!field.label[0]) continue;
      EXPECT_EQ(platform::TextOf(id), field.start) << kind << " " << i;
      EXPECT_EQ(platform::AccessibleName(id), field.label) << kind << " " << i;
    }
  }
}

TEST_F(MacroPanel, KeepsFieldsAsTheyAreInTheOtherUnit) {
  headless::SelectRows(kIdMacroCombo, {3});
  SetUnits(true);
  EXPECT_EQ(platform::TextOf(kIdMacroField + 3), u"1.000");
}

TEST_F(MacroPanel, InsertsATemplateByEnterInAField) {
  headless::SelectRows(kIdMacroCombo, {6});
  headless::TypeInto(kIdMacroField + 4, u"M02");
  headless::Focus(kIdMacroField + 4);
  platform::KeyEvent enter;
  enter.key = platform::kKeyEnter;
  headless::PressKey(enter);
  const std::u16string text(platform::EditorText(kIdEditor));
  EXPECT_NE(text.find(u"(END PROGRAM)\r\nG00 Z0.500\r\nM09\r\nM05\r\nG53 G00 Z0\r\nM02\r\n%"),
            text.npos);
  EXPECT_TRUE(app.editorDirty);
}

TEST_F(MacroPanel, RefusesATextThatWouldBeCut) {
  headless::SelectRows(kIdMacroCombo, {3});
  headless::TypeInto(kIdMacroField + 2, u"600");
  const std::u16string before(platform::EditorText(kIdEditor));
  headless::TakeBoxes();
  headless::Click(kIdMacroInsert);
  EXPECT_EQ(platform::EditorText(kIdEditor), before);
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].text, u"The code is larger than 8191 characters. Nothing was inserted.");
}

TEST_F(MacroPanel, RefusesHalfNumbersInRowsOfHolesAndNothingElse) {
  headless::SelectRows(kIdMacroCombo, {3});
  const std::u16string before(platform::EditorText(kIdEditor));
  headless::TakeBoxes();
  const std::pair<int, const char16_t*> halves[] = {{0, u"0,5"}, {1, u"1/2"},  {2, u"4x"},
                                                    {3, u"1e3"}, {4, u"-0,5"}, {5, u"10,0"}};
  for (const auto& [field, text] : halves) {
    const std::u16string start = platform::TextOf(kIdMacroField + field);
    headless::TypeInto(kIdMacroField + field, text);
    headless::Click(kIdMacroInsert);
    EXPECT_EQ(headless::TakeBoxes().size(), 1u) << field;
    EXPECT_EQ(platform::EditorText(kIdEditor), before) << field;
    headless::TypeInto(kIdMacroField + field, start);
  }
  // A variable of the control goes out as typed, and no number counts as none.
  headless::TypeInto(kIdMacroField + 4, u"#101");
  headless::TypeInto(kIdMacroField + 3, u"abc");
  headless::Click(kIdMacroInsert);
  EXPECT_TRUE(headless::TakeBoxes().empty());
  EXPECT_NE(platform::EditorText(kIdEditor).find(u"Z#101"), std::u16string::npos);
  // Other templates write their fields as typed.
  headless::SelectRows(kIdMacroCombo, {2});
  headless::Click(kIdMacroInsert);
  EXPECT_TRUE(headless::TakeBoxes().empty());
}

// The row would have one hole and four.
TEST_F(MacroPanel, RefusesACountThatIsNotWhole) {
  headless::SelectRows(kIdMacroCombo, {3});
  const std::u16string before(platform::EditorText(kIdEditor));
  headless::TakeBoxes();
  for (const char16_t* text : {u"+4", u"4.7"}) {
    headless::TypeInto(kIdMacroField + 2, text);
    headless::Click(kIdMacroInsert);
    const auto boxes = headless::TakeBoxes();
    ASSERT_EQ(boxes.size(), 1u) << platform::ToUtf8(text);
    EXPECT_EQ(boxes[0].text,
              u"The hole count is a whole number of digits alone. Nothing was inserted.");
    EXPECT_EQ(platform::EditorText(kIdEditor), before);
    EXPECT_EQ(platform::FocusedId(), kIdMacroField + 2);
  }
  for (const char16_t* text : {u"4", u"04", u"4.0", u"-4", u""}) {
    headless::TypeInto(kIdMacroField + 2, text);
    headless::Click(kIdMacroInsert);
    EXPECT_TRUE(headless::TakeBoxes().empty()) << platform::ToUtf8(text);
  }
}

TEST_F(MacroPanel, TellsWhereItLeavesTheOtherUnitOn) {
  SetProgram(u"G20\r\nG0 X7");
  SaveAs(u"seven");
  headless::SelectRows(kIdMacroList, {0});
  SetProgram(u"G20\r\nG1 X1");
  headless::Click(kIdMacroInsertCustom);
  EXPECT_FALSE(OutputHas(u"names no unit"));
  SetProgram(u"G21\r\nG1 X1");
  headless::Click(kIdMacroInsertCustom);
  EXPECT_TRUE(
      OutputHas(u"The program was in millimeters. Code behind this block that names no unit runs "
                u"in inches."));
}

TEST_F(MacroPanel, SaysThatItsListIsEmpty) {
  ASSERT_EQ(platform::RowCount(kIdMacroList), 1);
  EXPECT_EQ(platform::RowText(kIdMacroList, 0), u"No macros yet");
  EXPECT_TRUE(platform::IsRowDim(kIdMacroList, 0));
  headless::TypeInto(kIdMacroName, u"seven");
  headless::SelectRows(kIdMacroList, {0});
  EXPECT_EQ(platform::TextOf(kIdMacroName), u"seven") << "the name that was typed stays";
  headless::Click(kIdMacroInsertCustom);
  EXPECT_EQ(platform::TextOf(kIdStatusLine), u"Select a macro first.");
  SetProgram(u"G0 X7");
  SaveAs(u"seven");
  ASSERT_EQ(platform::RowCount(kIdMacroList), 1);
  EXPECT_EQ(platform::RowText(kIdMacroList, 0), u"seven");
  EXPECT_FALSE(platform::IsRowDim(kIdMacroList, 0));
}

TEST_F(MacroPanel, SaysWhereItsPercentSignStandsInTheMiddle) {
  SetProgram(u"%\r\nO1000\r\nG54\r\n%");
  SaveAs(u"head");
  headless::SelectRows(kIdMacroList, {0});
  SetProgram(u"G20\r\nG1 X1");
  platform::SetEditorSelection(kIdEditor, {0, 0});
  headless::Click(kIdMacroInsertCustom);
  EXPECT_EQ(platform::EditorText(kIdEditor), u"G20\r\n%\r\nO1000\r\nG54\r\n%\r\nG1 X1");
  EXPECT_TRUE(OutputHas(
      u"Line 2: the inserted % stands between code. A control reads from one % to the next."));
  EXPECT_TRUE(
      OutputHas(u"Line 3: the inserted O1000 stands behind code. It begins another program."));
}

TEST_F(MacroPanel, AsksBeforeAMacroGoesWhereItIsNeverRun) {
  SetProgram(u"G0 X7");
  SaveAs(u"seven");
  headless::SelectRows(kIdMacroList, {0});
  const std::u16string program = u"%\r\nO1\r\nM30\r\n%";
  SetProgram(program);
  const int end = platform::EditorLength(kIdEditor);
  platform::SetEditorSelection(kIdEditor, {end, end});
  headless::TakeBoxes();
  headless::Click(kIdMacroInsertCustom);
  EXPECT_EQ(platform::EditorText(kIdEditor), program);
  ASSERT_EQ(headless::TakeBoxes().size(), 1u);
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  headless::Click(kIdMacroInsertCustom);
  EXPECT_EQ(platform::EditorText(kIdEditor), program + u"\r\nG0 X7\r\n");
}

TEST_F(MacroPanel, BringsNoMarkersOfAnotherProgramIn) {
  SetProgram(u"(MORVA TEXT 1)\r\nG0 X7\r\n(MORVA DISABLED 3)\r\n(MORVA END 1)\r\n");
  SaveAs(u"seven");
  EXPECT_EQ(macroLibrary.macros[0].code, platform::EditorText(kIdEditor)) << "the whole text";
  headless::SelectRows(kIdMacroList, {0});
  SetProgram(u"G1");
  headless::Click(kIdMacroInsertCustom);
  EXPECT_EQ(platform::EditorText(kIdEditor), u"G1\r\nG0 X7\r\n");
  EXPECT_TRUE(OutputHas(u"Code that was excluded when the macro was saved is not part of it."));
}

TEST_F(MacroPanel, SaysThatAMacroWithoutTextInsertsNothing) {
  PutMacro(u"blank", u"\r\n\r\n");
  FillMacroList();
  headless::SelectRows(kIdMacroList, {0});
  const std::u16string before(platform::EditorText(kIdEditor));
  headless::Click(kIdMacroInsertCustom);
  EXPECT_EQ(platform::EditorText(kIdEditor), before);
  EXPECT_FALSE(OutputHas(u"Custom macro inserted"));
  EXPECT_EQ(platform::TextOf(kIdStatusLine), u"The macro is blank. Nothing was inserted.");
}

TEST_F(MacroPanel, SaysWhereTheEndOfAMacroStaysInTheFile) {
  headless::Advance(100);
  WriteFile("bin/MORVA.ini",
            "[CustomMacros]\r\nCount=1\r\n[CustomMacro0]\r\nName=big\r\nCode=G0 X7" +
                std::string(50000, ' ') + "M30\r\n");
  LoadMacroLibrary();
  EXPECT_TRUE(OutputHas(u"Macro \"big\" is longer in MORVA.ini than the library reads."));
  FillMacroList();
  headless::SelectRows(kIdMacroList, {0});
  headless::Click(kIdMacroInsertCustom);
  EXPECT_TRUE(OutputHas(u"The end of the macro was not inserted: MORVA.ini holds more of it."));
}

TEST_F(MacroPanel, TakesThe25thMacroOnlyInPlaceOfAnother) {
  SetProgram(u"M30");
  for (int i = 0; i < kMaxMacros; ++i) {
    SaveAs((u"M" + std::u16string(1, static_cast<char16_t>(u'A' + i))).c_str());
  }
  ASSERT_EQ(macroLibrary.count, kMaxMacros);
  const auto toldFull = [] {
    const auto boxes = headless::TakeBoxes();
    return boxes.size() == 1 && boxes[0].title == u"Custom Macros" &&
           boxes[0].text == u"The custom macro library is full.";
  };
  headless::TakeBoxes();
  SaveAs(u"ONE MORE");
  EXPECT_TRUE(toldFull());
  EXPECT_EQ(macroLibrary.count, kMaxMacros);
  // A hand in the settings file may have left a macro without a name.
  RenameMacro(0, u"");
  headless::Click(kIdMacroDuplicate);
  EXPECT_TRUE(toldFull());
  EXPECT_EQ(macroLibrary.count, kMaxMacros);
  SetProgram(u"M02");
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  SaveAs(u"mb");
  EXPECT_EQ(macroLibrary.macros[1].code, u"M02");
  EXPECT_EQ(SelectedMacro(), 1);
}

TEST_F(MacroPanel, SavesTheProgramAsItWasAtThePressThoughItChangesBehindTheQuestion) {
  SetProgram(u"M30");
  SaveAs(u"MINE");
  std::u16string whole;
  for (int i = 0; i < 40; ++i) whole += u"G01 X1.000 Y2.000 F10.0\r\n";
  SetProgram(whole.c_str());
  headless::WhileOpen([] {
    headless::EditorSetAll(kIdEditor, u"G4");
    SyncActiveTab();
  });
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  SaveAs(u"MINE");
  EXPECT_EQ(macroLibrary.macros[0].code, whole);
}

TEST_F(MacroPanel, KeepsTheSelectionWhenAMacroIsRenamed) {
  SetProgram(u"M30");
  SaveAs(u"one");
  SaveAs(u"two");
  headless::SelectRows(kIdMacroList, {0});
  EXPECT_EQ(platform::TextOf(kIdMacroName), u"one");
  headless::TypeInto(kIdMacroName, u"ONE");
  headless::Click(kIdMacroRename);
  EXPECT_EQ(SelectedMacro(), 0);
  EXPECT_EQ(platform::RowText(kIdMacroList, 0), u"ONE");
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  headless::Click(kIdMacroDelete);
  EXPECT_EQ(platform::TextOf(kIdMacroName), u"two");
}

TEST_F(MacroPanel, KeepsTheMacrosThatAnotherProgramWrote) {
  SetProgram(u"M30");
  SaveAs(u"mine");
  headless::Advance(100);
  WriteFile("bin/MORVA.ini",
            "[CustomMacros]\r\nCount=2\r\n[CustomMacro0]\r\nName=hers\r\nCode=M8\r\n"
            "[CustomMacro1]\r\nName=mine\r\nCode=M30\r\n");
  headless::SelectRows(kIdMacroList, {0});
  headless::TypeInto(kIdMacroName, u"renamed");
  headless::Click(kIdMacroRename);
  ASSERT_EQ(macroLibrary.count, 2);
  EXPECT_EQ(std::u16string(macroLibrary.macros[0].name), u"hers");
  EXPECT_EQ(std::u16string(macroLibrary.macros[1].name), u"renamed");
  headless::Advance(100);
  WriteFile("bin/MORVA.ini",
            "[CustomMacros]\r\nCount=1\r\n[CustomMacro0]\r\nName=hers\r\nCode=M9\r\n");
  SaveAs(u"more");
  ASSERT_EQ(macroLibrary.count, 2);
  EXPECT_EQ(macroLibrary.macros[0].code, u"M9");
  EXPECT_EQ(platform::RowCount(kIdMacroList), 2);
  headless::Advance(100);
  // Nor is a macro removed that is not the one that was asked about.
  WriteFile("bin/MORVA.ini",
            "[CustomMacros]\r\nCount=1\r\n[CustomMacro0]\r\nName=hers\r\nCode=M10\r\n");
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  headless::Click(kIdMacroDelete);
  EXPECT_EQ(macroLibrary.count, 1);
}

TEST_F(MacroPanel, InsertsTheCodeThatAnotherWindowStored) {
  SetProgram(u"G0 X7");
  SaveAs(u"seven");
  headless::SelectRows(kIdMacroList, {0});
  headless::Advance(100);
  SetProgram(u"");
  WriteFile("bin/MORVA.ini",
            "[CustomMacros]\r\nCount=2\r\n[CustomMacro0]\r\nName=eight\r\nCode=M8\r\n"
            "[CustomMacro1]\r\nName=seven\r\nCode=M7\r\n");
  headless::Click(kIdMacroInsertCustom);
  EXPECT_EQ(platform::EditorText(kIdEditor), u"M7\r\n");
}

// Another window has deleted the selected macro, and every row has moved.
TEST_F(MacroPanel, SelectsNoOtherMacroWhenTheLibraryIsReadAgain) {
  SetProgram(u"M30");
  for (const char16_t* name : {u"Alpha", u"Beta", u"Gamma"}) SaveAs(name);
  headless::SelectRows(kIdMacroList, {0});
  headless::Advance(100);
  WriteFile("bin/MORVA.ini",
            "[CustomMacros]\r\nCount=2\r\n[CustomMacro0]\r\nName=Beta\r\nCode=M8\r\n"
            "[CustomMacro1]\r\nName=Gamma\r\nCode=M9\r\n");
  headless::QueueAnswer(platform::BoxAnswer::No);
  SaveAs(u"Gamma");
  EXPECT_EQ(SelectedMacro(), -1);
  EXPECT_EQ(platform::TextOf(kIdMacroName), u"Gamma");
  headless::TypeInto(kIdMacroName, u"Alpha 2");
  headless::Click(kIdMacroRename);
  EXPECT_EQ(std::u16string(macroLibrary.macros[0].name), u"Beta");
}

TEST_F(MacroPanel, SaysSavedOnlyWhenItIs) {
  SetProgram(u"M30");
  headless::FailCall("rename", 1);
  SaveAs(u"lost");
  headless::Advance(100);
  const std::u16string log = platform::TextOf(kIdOutputLog);
  EXPECT_EQ(log.find(u"Current program saved"), log.npos);
  EXPECT_NE(log.find(u"lasts for this run only"), log.npos);
}

}  // namespace
}  // namespace morva
