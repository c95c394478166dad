// Open programs: the store, the stage, the tab bar and the commands of NEW, OPEN, SAVE, CLOSE.

#include "documents/program_tabs.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "app/outlets.h"
#include "documents/builder_table.h"
#include "documents/editor_changes.h"
#include "documents/feature_blocks.h"
#include "documents/insertion.h"
#include "documents/tab_models.h"
#include "documents/text_refresh.h"
#include "platform/timer.h"
#include "support/program_stage.h"

namespace {

using morva::app;
using morva::tabs;
using platform::BoxAnswer;
using support::NamesIn;
using support::Wide;

constexpr char16_t kTemplateEnd[] =
    u"G90 G17 G94\r\nG54 (WORK COORDINATE SYSTEM)\r\nG40 G80\r\n(OPERATION CODE BELOW)\r\n";

struct Tabs : public support::ProgramStage {};
struct OfflineTabs : public support::OfflineProgramStage {};

std::vector<std::u16string> Titles() {
  std::vector<std::u16string> titles;
  for (int i = 0; i < app.tabCount; ++i) titles.push_back(tabs[i].title);
  return titles;
}

TEST_F(Tabs, StartsWithOneProgramFromTheTemplate) {
  EXPECT_EQ(app.tabCount, 1);
  EXPECT_EQ(app.activeTab, 0);
  EXPECT_EQ(Text(), std::u16string(u"(FILE: Untitled-1.NC)\r\nG20 (INCHES)\r\n") + kTemplateEnd);
  EXPECT_FALSE(app.editorDirty);
  EXPECT_EQ(Label(0), u"> Untitled-1.NC");
}

TEST_F(Tabs, PutsMillimetresIntoTheTemplateInMetricUnits) {
  app.unitsMetric = true;
  morva::NewProgram();
  EXPECT_EQ(Text(),
            std::u16string(u"(FILE: Untitled-2.NC)\r\nG21 (MILLIMETERS)\r\n") + kTemplateEnd);
}

TEST_F(Tabs, NumbersNewProgramsByTheCountOnly) {
  morva::NewProgram();
  morva::NewProgram();
  EXPECT_EQ(Output(),
            u"New program opened in a workspace tab.\r\n"
            u"New program opened in a workspace tab.\r\n");
  morva::SwitchTab(1);
  app.editorDirty = false;
  morva::CloseProgram();
  morva::NewProgram();
  EXPECT_EQ(Titles(),
            (std::vector<std::u16string>{u"Untitled-1.NC", u"Untitled-3.NC", u"Untitled-3.NC"}));
}

TEST_F(Tabs, NamesAProgramWithoutPathAndTitle) {
  EXPECT_EQ(morva::OpenTab(u"", u"G0", u""), 1);
  EXPECT_EQ(std::u16string(tabs[1].title), u"Untitled.NC");
  EXPECT_EQ(tabs[1].text, u"G0");
}

TEST_F(Tabs, RefusesTheNinthProgramWithABox) {
  for (int i = 1; i < 8; ++i) EXPECT_EQ(morva::OpenTab(u"", u"G0", u"t"), i);
  EXPECT_EQ(morva::OpenTab(u"", u"G0", u"ninth"), -1);
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].title, u"MORVA Tabs");
  EXPECT_EQ(boxes[0].text, u"The workspace supports up to 8 open programs in this build.");
  EXPECT_EQ(boxes[0].icon, platform::BoxIcon::Warning);
  EXPECT_EQ(boxes[0].buttons, platform::BoxButtons::Ok);
  EXPECT_EQ(app.tabCount, 8);
  // One goes, one fits again.
  app.editorDirty = false;
  morva::CloseProgram();
  EXPECT_EQ(morva::OpenTab(u"", u"G0", u"ninth"), 7);
}

TEST_F(Tabs, TellsTheLimitAndThenTheOpenErrorForTheNinthFile) {
  Put("a.NC", "G0\r\n");
  for (int i = 1; i < 8; ++i) morva::OpenTab(u"", u"G0", u"t");
  OpenFile("a.NC");
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 2u);
  EXPECT_EQ(boxes[0].title, u"MORVA Tabs");
  EXPECT_EQ(boxes[1].title, u"Open Error");
}

TEST_F(Tabs, CutsPathAndTitleAtTheirCapacity) {
  const std::u16string path(600, u'p');
  const int index = morva::OpenTab(path, u"G0", u"");
  EXPECT_EQ(std::u16string(tabs[index].path), std::u16string(519, u'p'));
  EXPECT_EQ(std::u16string(tabs[index].title), std::u16string(95, u'p'));
}

TEST_F(Tabs, DoesNotActivateWhatItOpens) {
  morva::OpenTab(u"", u"G1", u"x");
  EXPECT_EQ(app.activeTab, 0);
  EXPECT_NE(Text(), u"G1");
}

TEST_F(Tabs, ShowsOnlyTheButtonsOfOpenPrograms) {
  morva::OpenTab(u"", u"G1", u"x");
  EXPECT_TRUE(platform::IsVisible(800));
  EXPECT_TRUE(platform::IsVisible(801));
  EXPECT_FALSE(platform::IsVisible(802));
  EXPECT_FALSE(platform::IsVisible(807));
}

TEST_F(Tabs, BuildsALabelFromMarkSelectionTitleAndStar) {
  morva::OpenTab(u"", u"G1", u"x.NC");
  tabs[0].compareSelected = true;
  tabs[0].dirty = true;
  morva::RefreshTabButtons();
  EXPECT_EQ(Label(0), u"> [C] Untitled-1.NC *");
  EXPECT_EQ(Label(1), u"x.NC");
}

TEST_F(Tabs, OpensAFileWithItsNameAndTellsSo) {
  Put("part.NC", "G0 X1\r\nM30\r\n");
  OpenFile("part.NC");
  EXPECT_EQ(app.activeTab, 1);
  EXPECT_EQ(Text(), u"G0 X1\r\nM30\r\n");
  EXPECT_EQ(std::u16string(app.activePath), PathOf("part.NC"));
  EXPECT_EQ(std::u16string(tabs[1].title), u"part.NC");
  EXPECT_FALSE(app.editorDirty);
  EXPECT_EQ(Output(), u"Opened program in a new workspace tab.  " + PathOf("part.NC") + u"\r\n");
  EXPECT_EQ(platform::WindowTitle(), u"MORVA v4.20.0  \u2014  part.NC");
}

TEST_F(Tabs, AsksForAFileWithItsOwnFilters) {
  morva::OpenProgram();
  const auto picks = headless::TakeFilePicks();
  ASSERT_EQ(picks.size(), 1u);
  EXPECT_FALSE(picks[0].save);
  EXPECT_EQ(picks[0].title, u"Open Haas Program");
  const std::vector<std::pair<std::u16string, std::u16string>> filters = {
      {u"Haas programs (*.NC;*.TAP;*.GCODE)", u"*.NC;*.TAP;*.GCODE"},
      {u"Text (*.TXT)", u"*.TXT"},
      {u"All files (*.*)", u"*.*"}};
  EXPECT_EQ(picks[0].filters, filters);
  EXPECT_EQ(app.tabCount, 1);
}

TEST_F(Tabs, TellsThatAFileCannotBeOpened) {
  Put("big.NC", std::string(33554433, 'x'));
  support::fs::create_directory(folder / "folder.NC");
  for (const char* name : {"big.NC", "folder.NC", "missing.NC"}) {
    OpenFile(name);
    const auto boxes = headless::TakeBoxes();
    if (boxes.empty()) continue;  // the dialog itself takes no missing file
    EXPECT_EQ(boxes[0].title, u"Open Error");
    EXPECT_EQ(boxes[0].text, u"Could not open the selected file.");
    EXPECT_EQ(boxes[0].icon, platform::BoxIcon::Error);
  }
  const std::u16string log = Output();
  const auto says = [&](const char* name, const char16_t* why) {
    return log.find(u"Not opened: " + PathOf(name) + why + u"\r\n") != log.npos;
  };
  EXPECT_TRUE(says("big.NC", u"  (33554433 bytes; the limit is 33554432, 32 MiB)"));
  EXPECT_TRUE(says("folder.NC", u"  (it cannot be read)"));
  EXPECT_EQ(app.tabCount, 1);
  EXPECT_EQ(app.activeTab, 0);
}

TEST_F(Tabs, OpensAnEmptyFileAsAnEmptyProgram) {
  Put("empty.NC", "");
  OpenFile("empty.NC");
  EXPECT_EQ(Text(), u"");
  EXPECT_EQ(std::u16string(tabs[1].title), u"empty.NC");
}

TEST_F(Tabs, OpensAFileOfLineFeedsAndSavesItWithCrLf) {
  Put("lf.NC", "G0 X1\nG1 Y2\n");
  OpenFile("lf.NC");
  EXPECT_EQ(tabs[1].text, u"G0 X1\nG1 Y2\n");
  EXPECT_EQ(Text(), u"G0 X1\r\nG1 Y2\r\n");
  EXPECT_TRUE(morva::SaveProgramCommand());
  EXPECT_EQ(Raw("lf.NC"),
            "(MORVA TEXT 1)\r\n(MORVA NAME User code)\r\nG0 X1\r\nG1 Y2\r\n(MORVA END 1)\r\n");
}

TEST_F(Tabs, OpensATextThatIsNoUtf8WithReplacements) {
  Put("latin.NC", "(caf\xE9)\r\n");
  OpenFile("latin.NC");
  EXPECT_EQ(Text(), u"(caf\uFFFD)\r\n");
}

TEST_F(Tabs, NeverWritesOverAFileThatHoldsNulsBetweenItsLines) {
  const std::string bytes("G0 X1\r\n\0G1 Y2\r\n", 16);
  Put("nul.NC", bytes);
  OpenFile("nul.NC");
  EXPECT_EQ(Text(), u"G0 X1\r\nG1 Y2\r\n");
  EXPECT_EQ(std::u16string(app.activePath), u"");
  EXPECT_EQ(std::u16string(tabs[1].title), u"nul.NC");
  EXPECT_NE(Output().find(u"The file holds NUL characters. It was opened without them as a new "
                          u"program; the file stays as it is.\r\nOpened program"),
            std::u16string::npos);
  TypeProgram(u"G2");
  headless::Advance(2000);
  EXPECT_EQ(Raw("nul.NC"), bytes);
  // A leader of a punched program hides nothing.
  Put("leader.NC", std::string("\0\0G0", 4));
  OpenFile("leader.NC");
  EXPECT_EQ(Text(), u"G0");
  EXPECT_EQ(Raw("leader.NC"), std::string("\0\0G0", 4));
}

TEST_F(Tabs, LeavesTheLeaderOfAReceivedProgramOut) {
  const int index = morva::OpenTab(u"", std::u16string(u"\0\0%\r\nG0\0\r\n%\0", 12), u"r.NC");
  EXPECT_EQ(tabs[index].text, u"%\r\nG0\r\n%");
}

TEST_F(Tabs, TakesNulsAtTheEndOfAFileForFilling) {
  Put("fill.NC", std::string("G0\r\n\0\0\x1A\r\n", 9));
  OpenFile("fill.NC");
  EXPECT_EQ(Text(), u"G0\r\n");
  EXPECT_EQ(std::u16string(app.activePath), PathOf("fill.NC"));
}

TEST_F(Tabs, OpensALineOfTenMegabytes) {
  Put("long.NC", std::string(10000000, 'X'));
  OpenFile("long.NC");
  EXPECT_EQ(Text().size(), 10000000u);
}

TEST_F(Tabs, OpensEveryByteValueAsText) {
  std::string bytes;
  for (int i = 1; i < 256; ++i) bytes += static_cast<char>(i);
  Put("bytes.NC", bytes);
  OpenFile("bytes.NC");
  EXPECT_EQ(app.activeTab, 1);
  headless::Advance(100);
  EXPECT_TRUE(headless::TakeBoxes().empty());
}

TEST_F(OfflineTabs, CarriesTextPathAndDirtyMarkAcrossASwitch) {
  Put("a.NC", "A\r\n");
  OpenFile("a.NC");
  TypeProgram(u"changed");
  EXPECT_EQ(Label(1), u"> a.NC *");
  morva::SwitchTab(0);
  EXPECT_EQ(Label(1), u"a.NC *");
  EXPECT_EQ(std::u16string(app.activePath), u"");
  EXPECT_FALSE(app.editorDirty);
  EXPECT_EQ(tabs[1].text, u"changed");
  morva::SwitchTab(1);
  EXPECT_EQ(Text(), u"changed");
  EXPECT_TRUE(app.editorDirty);
  EXPECT_EQ(std::u16string(app.activePath), PathOf("a.NC"));
  EXPECT_EQ(platform::WindowTitle(), u"MORVA v4.20.0  \u2014  a.NC  \u2022");
}

TEST_F(OfflineTabs, MarksNothingModifiedByASwitch) {
  morva::OpenTab(u"", u"G1", u"x");
  morva::SwitchTab(1);
  EXPECT_FALSE(app.editorDirty);
  EXPECT_FALSE(tabs[0].dirty);
  EXPECT_FALSE(app.suppressChange);
}

TEST_F(OfflineTabs, ComesBackToThePlaceThatWasLeft) {
  std::u16string lines;
  for (int i = 0; i < 400; ++i) lines += u"G1 X1\r\n";
  morva::SwitchTab(morva::OpenTab(u"", lines, u"long"));
  EXPECT_EQ(platform::FirstVisibleLine(300), 0);
  const platform::EditorRange place{platform::EditorLineStart(300, 200) + 2,
                                    platform::EditorLineStart(300, 200) + 4};
  platform::SetEditorSelection(300, place);
  platform::ScrollToLine(300, 190);
  morva::SwitchTab(0);
  EXPECT_EQ(platform::EditorSelection(300).to, 0);
  EXPECT_EQ(platform::FirstVisibleLine(300), 0);
  morva::SwitchTab(1);
  EXPECT_EQ(platform::EditorSelection(300).from, place.from);
  EXPECT_EQ(platform::EditorSelection(300).to, place.to);
  EXPECT_EQ(platform::FirstVisibleLine(300), 190);
}

TEST_F(OfflineTabs, ShowsWhatATabGotWhileAnotherOneWasUp) {
  morva::SwitchTab(morva::OpenTab(u"", u"G1", u"x"));
  morva::SwitchTab(0);
  tabs[1].text = u"G2";
  morva::SwitchTab(1);
  EXPECT_EQ(Text(), u"G2");
}

TEST_F(OfflineTabs, ShowsItsOwnTextBehindACloseInTheMiddle) {
  for (const char16_t* text : {u"G1", u"G2", u"G3"})
    morva::SwitchTab(morva::OpenTab(u"", text, u"x"));
  morva::SwitchTab(2);
  morva::RemoveTab(2);
  morva::SwitchTab(2);
  EXPECT_EQ(Text(), u"G3");
  morva::SwitchTab(1);
  EXPECT_EQ(Text(), u"G1");
}

TEST_F(OfflineTabs, ForgetsTheUndoHistoryAtASwitch) {
  TypeProgram(u"changed");
  morva::OpenTab(u"", u"G1", u"x");
  morva::SwitchTab(1);
  EXPECT_FALSE(platform::CanUndoEditor(300));
}

// The order of the hooks during a switch, as one line of words.
std::string trail;

// A workspace whose pick or box waits.
void HearCancel() {
  morva::Surface cad;
  cad.surface = morva::kSurfaceCad;
  cad.cancelInput = [] { trail += "cancel "; };
  morva::RegisterSurface(cad);
}

// Whether the first program's record holds what the editor held.
bool Synced() { return tabs[0].text == u"G0"; }

TEST_F(Tabs, SwitchesInOrder) {
  morva::OpenTab(u"", u"G1", u"x");
  app.suppressChange = true;
  platform::SetEditorText(300, u"G0");
  app.suppressChange = false;
  app.commandWordsActive = true;
  morva::editLink.kind = 1;
  trail.clear();
  HearCancel();
  static const morva::Builder listening{
      .linked = [] { trail += Synced() ? "late keys " : "keys "; }};
  morva::AddBuilder(listening);
  morva::hooks.wordsFromEditor = [] { trail += Text() == u"G1" ? "words " : "early "; };
  morva::hooks.rebuildToolpath = [] { trail += "path "; };
  morva::hooks.layout = [] { trail += "layout "; };
  morva::liveModels.cadWindowExists = [] { return true; };
  morva::liveModels.storeSketch = [](morva::FeatureSettings& record) {
    trail += Synced() ? "late stash " : "stash ";
    record.version = 3;
    record.kind = 4;
    return true;
  };
  morva::liveModels.resetSelection = [] {
    trail += Synced() && app.activeTab == 1 ? "reset " : "early reset ";
  };
  morva::liveModels.loadSketch = [](const morva::FeatureSettings* record) {
    trail += record ? "load " : "empty ";
  };
  morva::SwitchTab(1);
  EXPECT_EQ(trail, "cancel stash keys reset empty words path layout ");
  EXPECT_EQ(morva::editLink.kind, 0);
  EXPECT_TRUE(platform::TimerRuns(platform::kMainWindow, 1));
  // The first program's sketch comes back with it.
  trail.clear();
  morva::SwitchTab(0);
  EXPECT_NE(trail.find("load "), std::string::npos);
}

TEST_F(Tabs, AutosavesAndCancelsInputEvenForTheActiveOrABadIndex) {
  HearCancel();
  for (const int index : {0, -1, 1, 99}) {
    TypeProgram(u"G" + Wide(std::to_string(index + 2)));
    EXPECT_TRUE(app.editorDirty);
    trail.clear();
    morva::hooks.layout = [] { trail += "layout "; };
    morva::SwitchTab(index);
    EXPECT_EQ(trail, "cancel ");
    EXPECT_FALSE(app.editorDirty);
    EXPECT_EQ(app.activeTab, 0);
  }
}

TEST_F(OfflineTabs, ClosesTheOnlyProgramForACleanOne) {
  TypeProgram(u"mine");
  headless::QueueAnswer(BoxAnswer::No);
  headless::Click(811);
  morva::RouteCommand(811, 0);
  EXPECT_EQ(app.tabCount, 1);
  EXPECT_EQ(app.activeTab, 0);
  EXPECT_FALSE(app.editorDirty);
  EXPECT_EQ(std::u16string(tabs[0].title), u"Untitled-1.NC");
  EXPECT_EQ(Text(), std::u16string(u"(FILE: Untitled-1.NC)\r\nG20 (INCHES)\r\n") + kTemplateEnd);
}

TEST_F(OfflineTabs, ActivatesTheNeighbourOfAClosedProgram) {
  for (const char16_t* title : {u"a", u"b"}) morva::OpenTab(u"", title, title);
  morva::SwitchTab(2);
  morva::CloseProgram();
  EXPECT_EQ(app.activeTab, 1);
  EXPECT_EQ(Text(), u"a");
  morva::SwitchTab(0);
  morva::CloseProgram();
  EXPECT_EQ(app.activeTab, 0);
  EXPECT_EQ(Text(), u"a");
  EXPECT_EQ(app.tabCount, 1);
  EXPECT_FALSE(platform::IsVisible(801));
}

TEST_F(OfflineTabs, AsksBeforeClosingAModifiedProgram) {
  TypeProgram(u"mine");
  headless::QueueAnswer(BoxAnswer::Cancel);
  morva::CloseProgram();
  auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].title, u"Close Program");
  EXPECT_EQ(boxes[0].text, u"Save changes before closing this program?");
  EXPECT_EQ(boxes[0].buttons, platform::BoxButtons::YesNoCancel);
  EXPECT_EQ(boxes[0].icon, platform::BoxIcon::Question);
  EXPECT_EQ(Text(), u"mine");
  EXPECT_TRUE(app.editorDirty);
}

TEST_F(OfflineTabs, StaysWhenTheSaveBeforeAClosingFails) {
  Put("a.NC", "old\r\n");
  OpenFile("a.NC");
  TypeProgram(u"mine");
  headless::QueueAnswer(BoxAnswer::Yes);
  headless::FailCall("rename", 2);  // the program itself; its first companion passes
  morva::CloseProgram();
  headless::FailCall("rename", 0);
  EXPECT_EQ(app.tabCount, 2);
  EXPECT_TRUE(app.editorDirty);
  EXPECT_NE(Text().find(u"mine"), std::u16string::npos);
  EXPECT_EQ(Raw("a.NC"), "old\r\n");
  headless::QueueAnswer(BoxAnswer::Yes);
  morva::CloseProgram();
  EXPECT_EQ(app.tabCount, 1);
  EXPECT_NE(Raw("a.NC").find("mine"), std::string::npos);
}

// A posted message may open another program while the question stands.
int openedMeanwhile = 0;

TEST_F(OfflineTabs, ClosesTheProgramItAskedAboutAfterAnotherOneCameUp) {
  morva::OpenTab(u"", u"second", u"second");
  TypeProgram(u"first");
  morva::RunTextRefresh();
  // Saving asks for a name, and another program comes up on the way back to the closing.
  headless::QueueAnswer(BoxAnswer::Yes);
  headless::QueueFile(PathOf("first.NC"));
  openedMeanwhile = 0;
  morva::hooks.titleChanged = [] {
    // The save's own title update stands in for the message.
    if (openedMeanwhile++ == 0) morva::SwitchTab(1);
  };
  morva::CloseProgram();
  EXPECT_EQ(app.tabCount, 1);
  EXPECT_EQ(std::u16string(tabs[0].title), u"second");
  EXPECT_NE(Raw("first.NC").find("first"), std::string::npos);
}

// Another program comes up while a question or a menu stands, as a receive does at its end.
void AnotherComesUp() { morva::SwitchTab(morva::OpenTab(u"", u"received", u"received")); }

TEST_F(OfflineTabs, SavesTheProgramItAskedAboutNotTheOneThatCameUpMeanwhile) {
  Put("a.NC", "A\r\n");
  OpenFile("a.NC");
  TypeProgram(u"mine");
  headless::WhileOpen(AnotherComesUp);
  headless::QueueAnswer(BoxAnswer::Yes);
  morva::CloseProgram();
  EXPECT_NE(Raw("a.NC").find("mine"), std::string::npos);
  EXPECT_EQ(Titles(), (std::vector<std::u16string>{u"Untitled-1.NC", u"received"}));
}

TEST_F(OfflineTabs, LeavesTheProgramThatCameUpWhenTheQuestionIsCancelled) {
  TypeProgram(u"mine");
  headless::WhileOpen(AnotherComesUp);
  headless::QueueAnswer(BoxAnswer::Cancel);
  morva::CloseProgram();
  EXPECT_EQ(Titles(), (std::vector<std::u16string>{u"Untitled-1.NC", u"received"}));
  EXPECT_EQ(app.activeTab, 1);
  EXPECT_TRUE(tabs[0].dirty);
}

TEST_F(OfflineTabs, ClosesTheTabWhoseMenuWasOpenNotTheOneThatCameUp) {
  Put("a.NC", "A\r\n");
  OpenFile("a.NC");
  headless::WhileOpen(AnotherComesUp);
  headless::QueuePick(3001);
  morva::ShowTabMenu(1, 10, 10);
  EXPECT_EQ(Titles(), (std::vector<std::u16string>{u"Untitled-1.NC", u"received"}));
}

TEST_F(OfflineTabs, SavesFromTheMenuTheProgramThatItWasOpenedOn) {
  Put("a.NC", "A\r\n");
  OpenFile("a.NC");
  TypeProgram(u"mine");
  headless::WhileOpen(AnotherComesUp);
  headless::QueuePick(3000);
  headless::Click(103);
  EXPECT_NE(Raw("a.NC").find("mine"), std::string::npos);
  EXPECT_EQ(std::u16string(tabs[2].path), u"");
}

TEST_F(OfflineTabs, SavesUnderTheChosenNameTheProgramThatTheDialogWasAbout) {
  TypeProgram(u"mine");
  headless::WhileOpen(AnotherComesUp);
  headless::QueueFile(PathOf("mine.NC"));
  EXPECT_TRUE(morva::SaveProgramAs());
  EXPECT_NE(Raw("mine.NC").find("mine"), std::string::npos);
  EXPECT_EQ(Titles(), (std::vector<std::u16string>{u"mine.NC", u"received"}));
}

TEST_F(Tabs, ShowsTheTabOfAFileThatIsOpenAlready) {
  Put("a.NC", "A\r\n");
  Put("b.NC", "B\r\n");
  support::fs::create_symlink("a.NC", folder / "link.NC");
  support::fs::create_hard_link(folder / "a.NC", folder / "hard.NC");
  OpenFile("a.NC");
  OpenFile("b.NC");
  for (const char* name : {"a.NC", "link.NC", "hard.NC"}) {
    morva::SwitchTab(2);
    OpenFile(name);
    EXPECT_EQ(app.tabCount, 3) << name;
    EXPECT_EQ(app.activeTab, 1) << name;
    EXPECT_EQ(Status(), u"This file is open already; its tab is shown.") << name;
    morva::ShowStatus(u"");
  }
}

TEST_F(Tabs, SavesUnderNoNameThatIsOpenInAnotherTab) {
  Put("a.NC", "A\r\n");
  Put("b.NC", "B\r\n");
  support::fs::create_symlink("a.NC", folder / "link.NC");
  OpenFile("a.NC");
  OpenFile("b.NC");
  for (const char* name : {"a.NC", "link.NC"}) {
    headless::QueueFile(PathOf(name));
    EXPECT_FALSE(morva::SaveProgramAs());
    const auto boxes = headless::TakeBoxes();
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].text,
              u"This file is open in another tab. Close it there, or choose another name.");
  }
  EXPECT_EQ(Raw("a.NC"), "A\r\n");
}

TEST_F(OfflineTabs, LeavesTheCompareReviewBeforeItOpensMakesOrClosesAProgram) {
  // What stood on the bar when the review was left.
  static std::vector<int> left;
  left.clear();
  morva::hooks.leaveCompare = [] { left.push_back(app.tabCount); };
  morva::RouteCommand(808, 0);
  EXPECT_EQ(left, std::vector<int>{1});
  headless::QueueFileCancel();
  morva::RouteCommand(102, 0);
  EXPECT_EQ(left, (std::vector<int>{1, 2}));
  morva::CloseProgram();
  EXPECT_EQ(left, (std::vector<int>{1, 2, 2}));
  morva::ShowTabMenu(0, 1, 1);
  EXPECT_EQ(left, (std::vector<int>{1, 2, 2, 1}));
}

TEST_F(OfflineTabs, LaysTheWindowOutAfterAClosing) {
  morva::OpenTab(u"", u"second", u"second");
  static std::string shown;
  shown.clear();
  morva::hooks.layout = [] { shown += platform::IsVisible(801) ? "two " : "one "; };
  morva::CloseProgram();
  // Once by the switch to the neighbour, once at the end.
  EXPECT_EQ(shown, "one one ");
}

TEST_F(OfflineTabs, StoresTextAndTitleAfterSaveAsFromTheMenu) {
  TypeProgram(u"mine");
  headless::QueuePick(917);
  headless::QueueFile(PathOf("mine.NC"));
  headless::Click(103);
  EXPECT_EQ(tabs[0].text, Text());
  EXPECT_EQ(std::u16string(tabs[0].title), u"mine.NC");
  EXPECT_NE(TextOf(3208).find(u"File: mine.NC"), std::u16string::npos);
  EXPECT_NE(TextOf(3208).find(u"State: Saved / clean"), std::u16string::npos);
}

TEST_F(OfflineTabs, SavesAProgramWithoutAPathAsSaveAsDoes) {
  TypeProgram(u"mine");
  headless::QueueFileCancel();
  EXPECT_FALSE(morva::SaveProgramCommand());
  EXPECT_TRUE(app.editorDirty);
  auto picks = headless::TakeFilePicks();
  ASSERT_EQ(picks.size(), 1u);
  EXPECT_TRUE(picks[0].save);
  EXPECT_EQ(picks[0].title, u"Save Haas Program");
  EXPECT_EQ(picks[0].initialName, u"O1000.NC");
  EXPECT_EQ(picks[0].defaultExtension, u"NC");
  const std::vector<std::pair<std::u16string, std::u16string>> filters = {
      {u"Haas programs (*.NC;*.TAP)", u"*.NC;*.TAP"},
      {u"G-code (*.GCODE)", u"*.GCODE"},
      {u"Text (*.TXT)", u"*.TXT"},
      {u"All files (*.*)", u"*.*"}};
  EXPECT_EQ(picks[0].filters, filters);
  headless::QueueFile(PathOf("mine.NC"));
  EXPECT_TRUE(morva::SaveProgramCommand());
  EXPECT_FALSE(app.editorDirty);
  EXPECT_FALSE(tabs[0].dirty);
  EXPECT_EQ(std::u16string(app.activePath), PathOf("mine.NC"));
  EXPECT_EQ(std::u16string(tabs[0].title), u"mine.NC");
  EXPECT_EQ(Label(0), u"> mine.NC");
  EXPECT_EQ(Output(), u"Saved program.\r\n");
}

TEST_F(OfflineTabs, LeavesTheOldFilesInPlaceOnSaveAs) {
  Put("a.NC", "A\r\n");
  OpenFile("a.NC");
  headless::TakeFilePicks();
  headless::QueueFile(PathOf("b.NC"));
  morva::RouteCommand(917, 0);
  EXPECT_EQ(headless::TakeFilePicks()[0].initialName, PathOf("a.NC"));
  EXPECT_EQ(Raw("a.NC"), "A\r\n");
  EXPECT_NE(Raw("b.NC").find("\r\nA\r\n"), std::string::npos);
  EXPECT_EQ(std::u16string(app.activePath), PathOf("b.NC"));
  EXPECT_NE(TextOf(3208).find(u"File: b.NC\r\n"), std::u16string::npos);
}

TEST_F(OfflineTabs, KeepsPathAndMarkWhenASaveFails) {
  Put("a.NC", "A\r\n");
  OpenFile("a.NC");
  TypeProgram(u"mine");
  headless::QueueFile(PathOf("none/b.NC"));
  EXPECT_FALSE(morva::SaveProgramAs());
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].title, u"Save Error");
  EXPECT_EQ(boxes[0].text, u"Could not save the file.");
  EXPECT_EQ(boxes[0].icon, platform::BoxIcon::Error);
  EXPECT_EQ(std::u16string(app.activePath), PathOf("a.NC"));
  EXPECT_TRUE(app.editorDirty);
  EXPECT_TRUE(tabs[1].dirty);
}

TEST_F(OfflineTabs, SavesAllAndComesBackToTheProgramItLeft) {
  morva::OpenTab(u"", u"second", u"second");
  tabs[1].dirty = true;
  TypeProgram(u"first");
  headless::QueueFile(PathOf("one.NC"));
  headless::QueueFile(PathOf("two.NC"));
  morva::RouteCommand(111, 0);
  EXPECT_EQ(app.activeTab, 0);
  EXPECT_NE(Raw("one.NC").find("first"), std::string::npos);
  EXPECT_NE(Raw("two.NC").find("second"), std::string::npos);
  EXPECT_EQ(Output(), u"Saved program.\r\nSaved program.\r\nSave All complete.\r\n");
}

TEST_F(OfflineTabs, StopsSavingAllAtTheFirstCancel) {
  morva::OpenTab(u"", u"second", u"second");
  tabs[1].dirty = true;
  morva::OpenTab(u"", u"third", u"third");
  morva::SwitchTab(2);
  TypeProgram(u"third changed");
  headless::QueueFileCancel();
  morva::SaveAll();
  EXPECT_EQ(app.activeTab, 2);
  EXPECT_EQ(headless::TakeFilePicks().size(), 1u);
  EXPECT_EQ(Output(), u"Save All stopped; some programs remain unsaved.\r\n");
  EXPECT_TRUE(tabs[1].dirty);
  EXPECT_TRUE(app.editorDirty);
}

TEST_F(Tabs, SavesAllWithoutAskingOnceAutosaveGaveTheProgramsAHome) {
  TypeProgram(u"first");
  morva::NewProgram();
  TypeProgram(u"second");
  morva::SaveAll();
  EXPECT_TRUE(headless::TakeFilePicks().empty());
  EXPECT_FALSE(tabs[0].dirty);
  EXPECT_FALSE(tabs[1].dirty);
}

TEST_F(Tabs, OffersTheSaveMenuUnderItsButton) {
  headless::Click(103);
  const auto menus = headless::TakeMenus();
  ASSERT_EQ(menus.size(), 1u);
  ASSERT_EQ(menus[0].items.size(), 3u);
  EXPECT_EQ(menus[0].items[0].text, u"Save        Ctrl+S");
  EXPECT_EQ(menus[0].items[1].text, u"Save As\u2026");
  EXPECT_EQ(menus[0].items[1].id, 917);
  EXPECT_EQ(menus[0].items[2].text, u"Save All");
  EXPECT_EQ(menus[0].items[2].id, 111);
}

TEST_F(OfflineTabs, SavesFromTheMenu) {
  Put("a.NC", "A\r\n");
  OpenFile("a.NC");
  TypeProgram(u"mine");
  headless::QueuePick(3000);
  headless::Click(103);
  EXPECT_FALSE(app.editorDirty);
  EXPECT_NE(Raw("a.NC").find("mine"), std::string::npos);
}

TEST_F(OfflineTabs, SavesAtOnceWhereNoMenuCanBeMade) {
  Put("a.NC", "A\r\n");
  OpenFile("a.NC");
  TypeProgram(u"mine");
  headless::FailCall("popup", 1);
  headless::Click(103);
  headless::FailCall("popup", 0);
  EXPECT_FALSE(app.editorDirty);
  EXPECT_NE(Raw("a.NC").find("mine"), std::string::npos);
}

TEST_F(Tabs, SwitchesByAPlainClickOnATab) {
  morva::OpenTab(u"", u"second", u"second");
  bool left = false;
  static bool* leftCompare;
  leftCompare = &left;
  morva::hooks.leaveCompare = [] { *leftCompare = true; };
  EXPECT_TRUE(headless::Click(801));
  EXPECT_EQ(app.activeTab, 1);
  EXPECT_TRUE(left);
}

TEST_F(Tabs, NeverSwitchesByACtrlClick) {
  morva::OpenTab(u"", u"second", u"second");
  headless::HoldCtrl(true);
  EXPECT_TRUE(headless::Click(801));
  EXPECT_EQ(app.activeTab, 0);
  EXPECT_TRUE(tabs[1].compareSelected);
  EXPECT_EQ(Label(1), u"[C] second");
  EXPECT_EQ(Status(), u"Compare selection changed. Ctrl+click another tab, then press COMPARE.");
  EXPECT_TRUE(headless::Click(801));
  EXPECT_FALSE(tabs[1].compareSelected);
  headless::HoldCtrl(false);
}

TEST_F(Tabs, ShowsATabsMenuAfterSwitchingToIt) {
  morva::OpenTab(u"", u"second", u"second");
  morva::ShowTabMenu(1, 10, 10);
  EXPECT_EQ(app.activeTab, 1);
  const auto menus = headless::TakeMenus();
  ASSERT_EQ(menus.size(), 1u);
  std::vector<std::u16string> texts;
  for (const auto& item : menus[0].items) texts.push_back(item.text);
  EXPECT_EQ(texts, (std::vector<std::u16string>{u"Save\tCtrl+S", u"Save as...", u"",
                                                u"Compare programs...", u"", u"Close program"}));
  morva::ShowTabMenu(2, 10, 10);
  EXPECT_TRUE(headless::TakeMenus().empty());
  headless::QueuePick(3001);
  morva::ShowTabMenu(1, 10, 10);
  EXPECT_EQ(app.tabCount, 1);
}

TEST_F(OfflineTabs, WritesTheInformationPanelInHomeModeOnly) {
  Put("a.NC", "A\r\nB\r\n");
  OpenFile("a.NC");
  EXPECT_EQ(TextOf(3208),
            u"PROGRAM\r\n\r\nFile: a.NC\r\nLines: 3\r\nState: Saved / clean\r\n\r\nUse Tool "
            u"Library for reusable cutters, Code Index for quick inserts, and PATH for a basic "
            u"coordinate preview.");
  morva::SwitchTab(0);
  TypeProgram(u"x");
  EXPECT_EQ(TextOf(3208).substr(0, 67),
            u"PROGRAM\r\n\r\nFile: Unsaved / New\r\nLines: 1\r\nState: Modified\r\n\r\nUse To");
  app.mode = morva::kModeTools;
  platform::SetText(3208, u"other");
  morva::SwitchTab(1);
  EXPECT_EQ(TextOf(3208), u"other");
}

TEST_F(Tabs, FollowsAnEditInOrder) {
  trail.clear();
  morva::hooks.wordsFromEditor = [] { trail += "words "; };
  app.commandWordsActive = true;
  platform::SetEditorText(300, u"changed");
  EXPECT_TRUE(app.editorDirty);
  EXPECT_TRUE(tabs[0].dirty);
  EXPECT_EQ(Label(0), u"> Untitled-1.NC *");
  EXPECT_TRUE(platform::TimerRuns(platform::kMainWindow, 1));
  EXPECT_TRUE(platform::TimerRuns(platform::kMainWindow, 4));
  EXPECT_TRUE(platform::TimerRuns(platform::kMainWindow, 2900));
  EXPECT_EQ(trail, "words ");
  EXPECT_NE(TextOf(3208).find(u"State: Modified"), std::u16string::npos);
}

TEST_F(Tabs, RefreshesTheCompletionListAtOnceAndOnceMoreSixtyMillisecondsLater) {
  static int refreshed;
  refreshed = 0;
  morva::hooks.refreshCompletion = [] { ++refreshed; };
  TypeProgram(u"G");
  headless::DrainPosts();
  EXPECT_EQ(refreshed, 1);
  headless::Advance(59);
  EXPECT_EQ(refreshed, 1);
  headless::Advance(1);
  EXPECT_EQ(refreshed, 2);
  EXPECT_FALSE(platform::TimerRuns(platform::kMainWindow, 4));
  headless::Advance(1000);
  EXPECT_EQ(refreshed, 2);
}

TEST_F(Tabs, TellsStateAndLinesInThePanelAfterTaggingSavingAndAutosave) {
  Put("a.NC", "A\r\n");
  OpenFile("a.NC");
  headless::Advance(60);
  // Three marker lines and what stood there.
  EXPECT_NE(TextOf(3208).find(u"Lines: 5\r\nState: Modified"), std::u16string::npos);
  EXPECT_TRUE(morva::SaveProgramCommand());
  EXPECT_NE(TextOf(3208).find(u"State: Saved / clean"), std::u16string::npos);
  TypeProgram(u"B");
  EXPECT_NE(TextOf(3208).find(u"State: Modified"), std::u16string::npos);
  morva::RunAutosave();
  EXPECT_NE(TextOf(3208).find(u"State: Saved / clean"), std::u16string::npos);
}

TEST_F(Tabs, IgnoresAChangeThatTheProgramMakesItself) {
  app.suppressChange = true;
  platform::SetEditorText(300, u"a");
  app.suppressChange = false;
  app.insertingText = true;
  platform::SetEditorText(300, u"b");
  morva::EditorChanged(920);
  app.insertingText = false;
  EXPECT_FALSE(app.editorDirty);
  EXPECT_FALSE(platform::TimerRuns(platform::kMainWindow, 4));
}

TEST_F(Tabs, KeepsTheCompletionListShutWhileACompletionIsWritten) {
  morva::completionApplying = true;
  platform::SetEditorText(300, u"G01");
  morva::completionApplying = false;
  EXPECT_TRUE(app.editorDirty);
  EXPECT_FALSE(platform::TimerRuns(platform::kMainWindow, 4));
}

TEST_F(Tabs, CopiesTheWordsIntoTheCodeBeforeAnythingElse) {
  trail.clear();
  morva::hooks.editorFromWords = [] { trail += app.editorDirty ? "late " : "copied "; };
  morva::hooks.wordsFromEditor = [] { trail += "rebuilt "; };
  app.commandWordsActive = true;
  morva::EditorChanged(920);
  EXPECT_EQ(trail, "copied ");
  EXPECT_TRUE(app.editorDirty);
}

TEST_F(Tabs, HoldsHiddenIdsInTheFirstFreeSlotUpTo128) {
  std::int32_t list[morva::kMaxIdList] = {};
  for (int id = 1; id <= 128; ++id) morva::ToggleListId(id, list);
  EXPECT_TRUE(morva::IdListHolds(list, 128));
  morva::ToggleListId(129, list);
  EXPECT_FALSE(morva::IdListHolds(list, 129));
  morva::ToggleListId(5, list);
  EXPECT_FALSE(morva::IdListHolds(list, 5));
  morva::ToggleListId(129, list);
  EXPECT_EQ(list[4], 129);
  EXPECT_FALSE(morva::IdListHolds(list, 0));
}

TEST_F(Tabs, ForgetsHiddenIdsWithTheProgram) {
  morva::ToggleListId(3, tabs[0].hiddenIds);
  tabs[0].isolatedId = 3;
  app.editorDirty = false;
  morva::CloseProgram();
  EXPECT_FALSE(morva::IdListHolds(tabs[0].hiddenIds, 3));
  EXPECT_EQ(tabs[0].isolatedId, 0);
}

TEST_F(Tabs, AnswersItsCommandsInTheClickStage) {
  for (const int id : {101, 102, 103, 111, 917, 800, 807, 808, 811, 3000, 3001, 3002}) {
    EXPECT_EQ(morva::StageOf(id, 0), static_cast<int>(morva::RouterStage::Click)) << id;
  }
  EXPECT_EQ(morva::StageOf(917, 1), static_cast<int>(morva::RouterStage::Notified));
}

}  // namespace
