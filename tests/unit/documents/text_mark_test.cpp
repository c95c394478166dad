// Which text stands in the code editor, over changes and from tab to tab.

#include "documents/text_mark.h"

#include <gtest/gtest.h>

#include <string>

#include "documents/feature_blocks.h"
#include "documents/program_tabs.h"
#include "support/program_stage.h"

namespace {

using morva::EditorTextMark;
using morva::features;
using morva::ScanEditorText;
using morva::SwitchTab;
using morva::tabs;
using morva::TextMark;

struct TextMarks : public support::OfflineProgramStage {
  TextMarks() {
    SwitchTab(morva::OpenTab(
        u"", u"(SHAPE: A)\r\nG1 X1\r\n(MORVA TEXT 40)\r\nG1 X2\r\n(MORVA END 40)\r\n", u"Second"));
  }
  // To the other program and back.
  static void GoAndReturn() {
    const int shown = morva::app.activeTab;
    SwitchTab(1 - shown);
    ScanEditorText();
    SwitchTab(shown);
  }
};

TEST_F(TextMarks, AreThoseOfAProgramAndOfOneStateOfItsText) {
  const TextMark first = EditorTextMark();
  EXPECT_TRUE(first.Known());
  EXPECT_EQ(first.serial, tabs[1].serial);
  platform::ReplaceRange(morva::kIdEditor, {0, 0}, u"G0\r\n");
  const TextMark second = EditorTextMark();
  EXPECT_NE(second, first);
  // The same characters again are taken for another text.
  ASSERT_TRUE(platform::UndoEditor(morva::kIdEditor));
  EXPECT_NE(EditorTextMark(), first);
  EXPECT_NE(EditorTextMark(), second);
  SwitchTab(0);
  EXPECT_EQ(EditorTextMark().serial, tabs[0].serial);
}

TEST_F(TextMarks, ComeBackWithAProgramThatComesBackAsItLeft) {
  const TextMark mark = EditorTextMark();
  for (int i = 0; i < 3; ++i) {
    GoAndReturn();
    EXPECT_EQ(EditorTextMark(), mark);
  }
  platform::ReplaceRange(morva::kIdEditor, {0, 0}, u"G0\r\n");
  const TextMark changed = EditorTextMark();
  EXPECT_NE(changed, mark);
  GoAndReturn();
  EXPECT_EQ(EditorTextMark(), changed);
}

TEST_F(TextMarks, AreOthersWhereAnotherTextCameBack) {
  const TextMark mark = EditorTextMark();
  SwitchTab(0);
  tabs[1].text += u"G0\r\n";
  SwitchTab(1);
  const TextMark longer = EditorTextMark();
  EXPECT_NE(longer, mark);
  // The editor keeps nothing, and is given the whole text.
  SwitchTab(0);
  platform::DropEditorText(morva::kIdEditor, 0);
  SwitchTab(1);
  EXPECT_NE(EditorTextMark(), longer);
}

TEST_F(TextMarks, AreNotKnownBetweenTwoPrograms) {
  const TextMark mark = morva::NoteTextLeft();
  EXPECT_TRUE(mark.Known());
  EXPECT_FALSE(EditorTextMark().Known());
  morva::NoteTextStaged(mark.serial, mark);
  EXPECT_EQ(EditorTextMark(), mark);
}

TEST_F(TextMarks, AreNotKnownBeforeAnyProgram) {
  ScanEditorText();
  GoAndReturn();
  morva::FreeTabs();
  EXPECT_FALSE(EditorTextMark().Known());
  EXPECT_EQ(morva::KeptTableCount(), 0);
}

// The feature table that the text has when it is scanned.
void ExpectScanned() {
  const auto rows = morva::BlocksOf(platform::EditorText(morva::kIdEditor));
  const std::int32_t nextId = features.nextId;
  ASSERT_EQ(features.count, static_cast<std::int32_t>(rows.size()));
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const morva::FeatureRecord& row = features.rows[i];
    EXPECT_EQ(row.id, rows[i].id);
    EXPECT_EQ(row.start, rows[i].start);
    EXPECT_EQ(row.end, rows[i].end);
    EXPECT_EQ(std::u16string(row.name), rows[i].name);
    EXPECT_EQ(row.needsMarkers, rows[i].needsMarkers);
    EXPECT_EQ(row.holdsDisabled, rows[i].holdsDisabled);
    EXPECT_EQ(row.settings.kind, rows[i].settings.kind);
  }
  morva::ScanProgramText(platform::EditorText(morva::kIdEditor));
  EXPECT_EQ(nextId, features.nextId);
}

TEST_F(TextMarks, GiveAProgramItsFeatureTableAgain) {
  ScanEditorText();
  const std::int32_t shape = features.rows[0].end;
  for (int i = 0; i < 2; ++i) {
    GoAndReturn();
    ScanEditorText();
    EXPECT_EQ(features.rows[0].end, shape);
    ExpectScanned();
    ScanEditorText();
  }
}

TEST_F(TextMarks, HoldForEachOfAllOpenPrograms) {
  while (morva::app.tabCount < morva::kMaxTabs) {
    const std::u16string number = support::Wide(std::to_string(morva::app.tabCount));
    SwitchTab(morva::OpenTab(u"", u"(SHAPE: A" + number + u")\r\nG1 X" + number + u"\r\n\r\nM5",
                             u"Further"));
  }
  TextMark marks[morva::kMaxTabs];
  for (int i = 0; i < morva::kMaxTabs; ++i) {
    SwitchTab(i);
    ScanEditorText();
    marks[i] = EditorTextMark();
    EXPECT_EQ(marks[i].serial, tabs[i].serial);
  }
  for (int i = 0; i < morva::kMaxTabs; ++i) {
    SwitchTab(i);
    EXPECT_EQ(EditorTextMark(), marks[i]);
    ScanEditorText();
    ExpectScanned();
    ScanEditorText();
  }
  EXPECT_EQ(morva::KeptTableCount(), morva::kMaxTabs);
}

TEST_F(TextMarks, OfProgramsThatAreClosedAreInNobodysWay) {
  ScanEditorText();
  for (int i = 0; i < 3 * morva::kMaxTabs; ++i) {
    const std::u16string_view text = i % 2 == 0 ? u"(SHAPE: A)\r\nG1" : u"(MACRO: BC)\r\nG1\r\nX1";
    SwitchTab(morva::OpenTab(u"", text, u"Closed soon"));
    ScanEditorText();
    ExpectScanned();
    ScanEditorText();
    SwitchTab(0);
    ScanEditorText();
    SwitchTab(2);
    const TextMark closed = EditorTextMark();
    ScanEditorText();
    ExpectScanned();
    ScanEditorText();
    EXPECT_EQ(morva::KeptTableCount(), 3);
    morva::RemoveTab(2);
    EXPECT_EQ(morva::KeptTableCount(), 2);
    SwitchTab(1);
    EXPECT_NE(EditorTextMark(), closed);
    ScanEditorText();
    EXPECT_EQ(morva::KeptTableCount(), 2);
    ExpectScanned();
    const TextMark mark = EditorTextMark();
    ScanEditorText();
    GoAndReturn();
    EXPECT_EQ(EditorTextMark(), mark);
  }
}

TEST_F(TextMarks, LeaveNoTableToATextThatChanged) {
  const auto type = [] { platform::ReplaceRange(morva::kIdEditor, {0, 0}, u"(WIZARD: B)\r\n"); };
  const auto whole = [] { platform::SetEditorText(morva::kIdEditor, u"(MACRO: C)\r\nG1 X2\r\n"); };
  const auto undo = [] {
    platform::ReplaceRange(morva::kIdEditor, {0, 0}, u"(SHAPE: D)\r\n");
    EXPECT_TRUE(platform::UndoEditor(morva::kIdEditor));
  };
  // As long as it was.
  const auto overwrite = [] { platform::ReplaceRange(morva::kIdEditor, {0, 2}, u"%\r\n"); };
  const auto aside = [] {
    SwitchTab(0);
    tabs[1].text.replace(0, 3, u"G0 ");
    SwitchTab(1);
  };
  for (void (*change)() : {+type, +undo, +whole, +overwrite, +aside}) {
    ScanEditorText();
    GoAndReturn();
    change();
    ScanEditorText();
    ExpectScanned();
    ScanEditorText();
    GoAndReturn();
    ScanEditorText();
    ExpectScanned();
  }
}

}  // namespace
