// Saving with companions and the autosave. Expected files are written out by hand.

#include "documents/autosave.h"

#include <gtest/gtest.h>

#include <string>

#include "app/change_guard.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/outlets.h"
#include "documents/disabled_code.h"
#include "documents/feature_operations.h"
#include "documents/file_text.h"
#include "documents/program_changed.h"
#include "documents/program_tabs.h"
#include "documents/save_words.h"
#include "documents/saver.h"
#include "documents/saving.h"
#include "documents/tab_models.h"
#include "platform/clock.h"
#include "platform/common/faults.h"
#include "platform/editor.h"
#include "platform/timer.h"
#include "support/program_stage.h"

namespace {

using morva::app;
using morva::tabs;
using support::NamesIn;
using support::Wide;

struct Autosave : public support::ProgramStage {
  support::fs::path Projects() const { return folder / "Documents" / "MORVA" / "Projects"; }
};
struct OfflineAutosave : public support::OfflineProgramStage {};

bool AutosaveArmed() { return platform::TimerRuns(platform::kMainWindow, 2900); }

bool StoreAnySketch(morva::FeatureSettings& record) {
  record.version = 3;
  record.kind = 4;
  record.values[0] = 7;
  return true;
}

bool StoreAnyPlate(morva::FeatureSettings& record) {
  record.version = 3;
  record.kind = 5;
  record.values[0] = 9;
  return true;
}

// The panel beside it tells the state of the program that is shown.
TEST_F(Autosave, NamesAProgramThatIsNotShown) {
  TypeProgram(u"G0 X1");
  headless::SetFlushTime(50);
  morva::SwitchTab(morva::OpenTab(u"", u"", u"B.NC"));
  headless::Advance(1000);
  EXPECT_EQ(Status(), u"Untitled-1.NC: Project autosaved.");
}

TEST_F(Autosave, NamesAProgramNoMoreThatIsShownAgain) {
  TypeProgram(u"G0 X1");
  headless::SetFlushTime(50);
  morva::SwitchTab(morva::OpenTab(u"", u"", u"B.NC"));
  headless::Advance(1000);
  ASSERT_EQ(Status(), u"Untitled-1.NC: Project autosaved.");
  morva::SwitchTab(0);
  EXPECT_EQ(Status(), u"Project autosaved.");
}

TEST_F(Autosave, LeavesTheResultOfATransferOnTheStatusLineForTenSeconds) {
  headless::Advance(1000);
  morva::TellResult(u"DNC receive complete.");
  TypeProgram(u"G0 X1");
  headless::Advance(2000);
  EXPECT_FALSE(app.editorDirty) << "it is saved all the same";
  EXPECT_EQ(Status(), u"DNC receive complete.");
  headless::Advance(8000);
  TypeProgram(u"G0 X2");
  headless::Advance(2000);
  EXPECT_EQ(Status(), u"Project autosaved.");
}

TEST_F(Autosave, TellsOfItselfWhereOtherWordsTookTheResultsPlace) {
  headless::Advance(1000);
  morva::TellResult(u"DNC receive complete.");
  TypeProgram(u"G0 X1");
  morva::ShowStatus(u"Something else.");
  headless::Advance(2000);
  EXPECT_EQ(Status(), u"Project autosaved.");
}

bool ATransferRuns() {
  morva::ShowStatus(u"DNC receive armed");
  return true;
}

TEST_F(Autosave, LeavesTheLineToATransfer) {
  headless::Advance(1000);
  TypeProgram(u"G0 X1");
  headless::Advance(2000);
  ASSERT_EQ(Status(), u"Project autosaved.");
  morva::hooks.tellStanding = ATransferRuns;
  morva::ProgramChanged({.autosave = true});
  EXPECT_EQ(Status(), u"DNC receive armed");
  headless::Advance(2000);
  EXPECT_FALSE(app.editorDirty) << "it is saved all the same";
  EXPECT_EQ(Status(), u"DNC receive armed");
}

// RENUMBER, Undo and markers leave the caret where it is, so that no help takes the line.
TEST_F(Autosave, SaysThatAllIsSavedNoLongerThanItIs) {
  headless::Advance(1000);
  TypeProgram(u"G0 X1");
  headless::Advance(700);
  ASSERT_EQ(Status(), u"Project autosaved.");
  morva::ProgramChanged({.autosave = true});
  EXPECT_TRUE(app.editorDirty);
  EXPECT_EQ(Status(), morva::kReadyWords);
  headless::Advance(700);
  EXPECT_EQ(Status(), u"Project autosaved.");
}

TEST_F(Autosave, SaysThatAllIsSavedNoLongerThanTheMarkersAreTheSame) {
  headless::Advance(1000);
  TypeProgram(u"G0 X1");
  headless::Advance(2000);
  ASSERT_EQ(Status(), u"Project autosaved.");
  {
    // What came in by the way of a program is tagged without a change of the user's.
    const morva::SuppressChanges guard;
    platform::SetEditorText(morva::kIdEditor, u"G0 X1\r\n");
  }
  morva::TagAfterEdit();
  EXPECT_TRUE(app.editorDirty);
  EXPECT_EQ(Status(), morva::kReadyWords);
}

TEST_F(Autosave, GivesAnUnsavedProgramAHomeUnderProjects) {
  headless::Advance(1000);
  TypeProgram(u"G0 X1");
  headless::Advance(699);
  EXPECT_TRUE(app.editorDirty);
  headless::Advance(1);
  EXPECT_EQ(Status(), u"Project autosaved.");
  EXPECT_FALSE(app.editorDirty);
  EXPECT_EQ(NamesIn(Projects()), std::vector<std::string>{"Untitled-1.NC-1700"});
  const support::fs::path home_ = Projects() / "Untitled-1.NC-1700";
  EXPECT_EQ(NamesIn(home_), (std::vector<std::string>{"Untitled-1.NC", "Untitled-1.NC.features"}));
  EXPECT_EQ(support::ReadRaw(home_ / "Untitled-1.NC.features"), std::string("MVC1\0\0\0\0", 8));
  EXPECT_EQ(support::ReadRaw(home_ / "Untitled-1.NC"),
            "(MORVA TEXT 1)\r\n(MORVA NAME User code)\r\nG0 X1\r\n(MORVA END 1)\r\n");
  EXPECT_EQ(platform::WindowTitle(), u"MORVA v4.20.0  \u2014  Untitled-1.NC");
  // From here on it is an ordinary program at that path.
  TypeProgram(u"G0 X2");
  headless::Advance(700);
  EXPECT_EQ(NamesIn(Projects()).size(), 1u);
  EXPECT_NE(support::ReadRaw(home_ / "Untitled-1.NC").find("G0 X2"), std::string::npos);
}

TEST_F(Autosave, WritesTheMarkersThatItSetsItself) {
  TypeProgram(u"G0 X1");
  morva::RunAutosave();
  EXPECT_EQ(support::ReadRaw(Projects() / "Untitled-1.NC-0" / "Untitled-1.NC"),
            "(MORVA TEXT 1)\r\n(MORVA NAME User code)\r\nG0 X1\r\n(MORVA END 1)\r\n");
}

TEST_F(Autosave, ComesAfterTheLastChangeOnly) {
  TypeProgram(u"a");
  headless::Advance(600);
  TypeProgram(u"b");
  headless::Advance(600);
  EXPECT_TRUE(app.editorDirty);
  headless::Advance(100);
  EXPECT_FALSE(app.editorDirty);
  EXPECT_FALSE(AutosaveArmed());
}

TEST_F(Autosave, CleansATitleAndTakesItOverAtTheSync) {
  morva::SwitchTab(morva::OpenTab(u"", u"G0", u"a:b\"*/<>?\\|c"));
  TypeProgram(u"G1");
  morva::RunAutosave();
  EXPECT_EQ(std::u16string(tabs[1].title), u"a_b________c");
  EXPECT_EQ(Label(1), u"> a_b________c");
}

TEST_F(Autosave, NeverReplacesAProgramThatWasAutosavedEarlier) {
  // Two programs of one title, saved within the same millisecond.
  for (const char16_t* text : {u"first", u"second"}) {
    morva::SwitchTab(morva::OpenTab(u"", u"x", u"twin.NC"));
    TypeProgram(text);
    morva::RunAutosave();
  }
  EXPECT_EQ(NamesIn(Projects()), (std::vector<std::string>{"twin.NC-0", "twin.NC-1"}));
  EXPECT_NE(support::ReadRaw(Projects() / "twin.NC-0" / "twin.NC").find("first"),
            std::string::npos);
  EXPECT_NE(support::ReadRaw(Projects() / "twin.NC-1" / "twin.NC").find("second"),
            std::string::npos);
}

TEST_F(Autosave, UsesAnEmptyFolderThatStandsThere) {
  support::fs::create_directory(Projects() / "twin.NC-0");
  morva::SwitchTab(morva::OpenTab(u"", u"x", u"twin.NC"));
  TypeProgram(u"mine");
  morva::RunAutosave();
  EXPECT_EQ(NamesIn(Projects()), std::vector<std::string>{"twin.NC-0"});
  EXPECT_EQ(std::u16string(tabs[1].path), Wide((Projects() / "twin.NC-0" / "twin.NC").string()));
}

TEST_F(Autosave, OverwritesTheUsersOwnFile) {
  Put("a.NC", "old\r\n");
  OpenFile("a.NC");
  TypeProgram(u"new");
  headless::Advance(700);
  EXPECT_EQ(Raw("a.NC"), "(MORVA TEXT 1)\r\n(MORVA NAME User code)\r\nnew\r\n(MORVA END 1)\r\n");
  EXPECT_TRUE(NamesIn(Projects()).empty());
}

TEST_F(Autosave, DoesNothingForAnUntouchedProgram) {
  morva::RunAutosave();
  EXPECT_TRUE(NamesIn(Projects()).empty());
  EXPECT_EQ(Status(), u"");
}

TEST_F(OfflineAutosave, IsNeverArmedWithoutADataDirectory) {
  Put("a.NC", "old\r\n");
  OpenFile("a.NC");
  TypeProgram(u"new");
  EXPECT_FALSE(AutosaveArmed());
  morva::RunAutosave();
  EXPECT_TRUE(app.editorDirty);
  EXPECT_EQ(Raw("a.NC"), "old\r\n");
}

TEST_F(Autosave, KeepsTextAndMarkWhenAWriteFails) {
  Put("a.NC", "old\r\n");
  OpenFile("a.NC");
  TypeProgram(u"new");
  headless::FailCall("write", 2);
  headless::Advance(700);
  headless::FailCall("write", 0);
  EXPECT_EQ(Status(), u"Autosave failed. Changes remain unsaved; use Save As.");
  EXPECT_TRUE(app.editorDirty);
  EXPECT_TRUE(tabs[1].dirty);
  EXPECT_EQ(Raw("a.NC"), "old\r\n");
  EXPECT_NE(Text().find(u"new"), std::u16string::npos);
  // The next edit tries again.
  TypeProgram(u"newer");
  headless::Advance(700);
  EXPECT_FALSE(app.editorDirty);
  EXPECT_NE(Raw("a.NC").find("newer"), std::string::npos);
}

TEST_F(Autosave, TellsThatAHomeCannotBeMade) {
  TypeProgram(u"G0");
  headless::FailCall("folder", 1);
  morva::RunAutosave();
  headless::FailCall("folder", 0);
  EXPECT_EQ(Status(), u"Autosave failed: project directory unavailable.");
  EXPECT_TRUE(app.editorDirty);
  EXPECT_EQ(std::u16string(app.activePath), u"");
  headless::Advance(100);
  EXPECT_FALSE(support::NamesIn(folder / "Documents/MORVA/Recovery").empty());
  morva::RunAutosave();
  EXPECT_FALSE(app.editorDirty);
}

// Both saves are handed over before the first of them stands.
TEST_F(Autosave, GivesEachOfTwoProgramsOfOneTitleAHomeOfItsOwn) {
  const support::fs::path projects = folder / "Documents/MORVA/Projects";
  support::fs::remove_all(projects);
  Put("Documents/MORVA/Projects", "no folder");
  morva::OpenTab(u"", u"G0 X1\r\n", u"Part.NC");
  morva::OpenTab(u"", u"G0 X2\r\n", u"Part.NC");
  for (const int tab : {1, 2}) {
    morva::SwitchTab(tab);
    TypeProgram(tab == 1 ? u"G0 X11" : u"G0 X22");
  }
  morva::RunAutosave();
  ASSERT_EQ(Status(), u"Autosave failed: project directory unavailable.");
  support::fs::remove(projects);
  support::fs::create_directory(projects);
  platform::fileFault = [](std::string_view kind) {
    if (kind == "flush") platform::SleepMilliseconds(300);
    return false;
  };
  morva::RunAutosave();
  EXPECT_TRUE(morva::WaitForSaves());
  platform::fileFault = nullptr;
  ASSERT_NE(tabs[1].path[0], 0);
  EXPECT_NE(std::u16string(tabs[1].path), tabs[2].path);
  EXPECT_NE(support::ReadRaw(tabs[1].path).find("G0 X11"), std::string::npos);
  EXPECT_NE(support::ReadRaw(tabs[2].path).find("G0 X22"), std::string::npos);
}

// With the ticks behind it such a title is longer than a folder's name may be.
TEST_F(Autosave, MakesAHomeForAProgramOfALongName) {
  std::string name;
  for (int i = 0; i < 84; ++i) name += "\xE5\xAD\x97";  // three bytes each
  Put(name + ".N", std::string("G0\0X1\r\n", 7));       // opened as a new program
  OpenFile(name + ".N");
  ASSERT_EQ(std::u16string(app.activePath), u"");
  TypeProgram(u"G0 X2");
  morva::RunAutosave();
  headless::Advance(100);
  EXPECT_EQ(Status(), u"Project autosaved.");
  EXPECT_FALSE(app.editorDirty);
}

TEST_F(Autosave, LosesNothingWhenItFailsOnLeavingATab) {
  Put("a.NC", "old\r\n");
  OpenFile("a.NC");
  TypeProgram(u"typed");
  headless::FailCall("new", 1);
  morva::SwitchTab(0);
  headless::FailCall("new", 0);
  EXPECT_EQ(app.activeTab, 0);
  EXPECT_TRUE(tabs[1].dirty);
  EXPECT_NE(tabs[1].text.find(u"typed"), std::u16string::npos);
  // The next autosave, whichever tab it comes for, takes up what the failed one left.
  morva::SwitchTab(1);
  EXPECT_FALSE(app.editorDirty);
  EXPECT_NE(Text().find(u"typed"), std::u16string::npos);
  EXPECT_NE(Raw("a.NC").find("typed"), std::string::npos);
}

// The plate workspace, which stores its plate so.
void StorePlateBy(void (*store)()) {
  morva::Surface plate;
  plate.surface = morva::kSurfacePlate;
  plate.storePending = store;
  morva::RegisterSurface(plate);
}

TEST_F(Autosave, StoresAPendingPlateFirstOnThePlateSurfaceOnly) {
  static int stored;
  stored = 0;
  StorePlateBy([] { ++stored; });
  TypeProgram(u"a");
  morva::RunAutosave();
  EXPECT_EQ(stored, 0);
  app.surface = morva::kSurfacePlate;
  TypeProgram(u"b");
  morva::RunAutosave();
  EXPECT_EQ(stored, 1);
}

TEST_F(Autosave, HoldsBackANestedAutosave) {
  static int stored;
  stored = 0;
  app.surface = morva::kSurfacePlate;
  StorePlateBy([] {
    ++stored;
    morva::ScheduleAutosave();
    EXPECT_FALSE(AutosaveArmed());
    morva::RunAutosave();
  });
  TypeProgram(u"a");
  morva::RunAutosave();
  EXPECT_EQ(stored, 1);
  EXPECT_FALSE(app.editorDirty);
}

TEST_F(OfflineAutosave, SavesTheExcludedCodeBeforeTheText) {
  Put("a.NC", "old\r\n");
  OpenFile("a.NC");
  morva::AddDisabledCode(tabs[1].disabledCode, u"G1");
  TypeProgram(u"new");
  headless::FailCall("rename", 2);
  EXPECT_FALSE(morva::SaveProgram(app.activePath));
  headless::FailCall("rename", 0);
  EXPECT_EQ(Raw("a.NC"), "old\r\n");
  EXPECT_EQ(Raw("a.NC.features"), std::string("MVC1\1\0\0\0\1\0\0\0\2\0\0\0G\0001\0", 20));
}

TEST_F(OfflineAutosave, WritesAFeaturesFileOfEightBytesForAProgramWithoutExclusions) {
  EXPECT_TRUE(morva::SaveProgram(PathOf("a.NC")));
  EXPECT_EQ(Raw("a.NC.features"), std::string("MVC1\0\0\0\0", 8));
  EXPECT_EQ(NamesIn(folder),
            (std::vector<std::string>{"Documents", "a.NC", "a.NC.features", "bin"}));
}

TEST_F(OfflineAutosave, ReadsTheExcludedCodeAgain) {
  Put("a.NC", "G0\r\n");
  Put("a.NC.features", std::string("MVC1\1\0\0\0\0\0\0\0\2\0\0\0G\0001\0", 20));
  OpenFile("a.NC");
  const morva::DisabledCodeEntry* entry = morva::FindDisabledCode(tabs[1].disabledCode, 1);
  ASSERT_NE(entry, nullptr);
  EXPECT_EQ(entry->text, u"G1");
}

TEST_F(OfflineAutosave, IgnoresDamagedCompanions) {
  Put("a.NC", "G0\r\n");
  Put("a.NC.features", "MVC1\1\0\0");
  Put("a.NC.cadmv", std::string(40712, 'x'));
  Put("a.NC.platemv", std::string(4768, '\0'));
  OpenFile("a.NC");
  EXPECT_EQ(app.activeTab, 1);
  EXPECT_EQ(tabs[1].disabledCode, nullptr);
  EXPECT_EQ(tabs[1].cadStore, nullptr);
  EXPECT_EQ(tabs[1].cadSettings, nullptr);
  EXPECT_EQ(tabs[1].plateStore, nullptr);
  EXPECT_EQ(tabs[1].plateSettings, nullptr);
  EXPECT_TRUE(headless::TakeBoxes().empty());
}

TEST_F(OfflineAutosave, WritesDrawingsOnceTheCadWindowHasBeenThere) {
  static bool window;
  window = false;
  morva::liveModels.cadWindowExists = [] { return window; };
  morva::liveModels.storeSketch = StoreAnySketch;
  EXPECT_TRUE(morva::SaveProgram(PathOf("a.NC")));
  EXPECT_FALSE(support::fs::exists(folder / "a.NC.cadmv"));
  window = true;
  EXPECT_TRUE(morva::SaveProgram(PathOf("a.NC")));
  const std::string bytes = Raw("a.NC.cadmv");
  ASSERT_EQ(bytes.size(), 40712u);
  EXPECT_EQ(bytes.substr(0, 16), std::string("\1\0\0\0\0\0\0\0\3\0\0\0\4\0\0\0", 16));
  // 7.0 is 0x401C000000000000; the name stands at 8 + 4960.
  EXPECT_EQ(bytes.substr(8 + 32, 8), std::string("\0\0\0\0\0\0\x1C\x40", 8));
  EXPECT_EQ(bytes.substr(8 + 4960, 20), std::string("D\0r\0a\0w\0i\0n\0g\0 \0001\0\0\0", 20));
}

TEST_F(OfflineAutosave, ReadsDrawingsFlagsAndPlatesAgain) {
  morva::liveModels.cadWindowExists = [] { return true; };
  morva::liveModels.plateWindowExists = [] { return true; };
  morva::liveModels.storeSketch = StoreAnySketch;
  morva::liveModels.storePlate = StoreAnyPlate;
  tabs[0].sketchHidden[5] = 1;
  tabs[0].sketchLocked[6] = 1;
  headless::QueueFile(PathOf("a.NC"));
  ASSERT_TRUE(morva::SaveProgramAs());
  EXPECT_EQ(Raw("a.NC.platemv").size(), 38152u);
  morva::liveModels = morva::LiveModels();
  morva::NewProgram();
  morva::RemoveTab(0);
  morva::SwitchTab(0);
  OpenFile("a.NC");
  ASSERT_NE(tabs[1].cadStore, nullptr);
  ASSERT_NE(tabs[1].cadSettings, nullptr);
  ASSERT_NE(tabs[1].plateStore, nullptr);
  ASSERT_NE(tabs[1].plateSettings, nullptr);
  EXPECT_EQ(tabs[1].cadSettings->values[0], 7);
  EXPECT_EQ(tabs[1].sketchHidden[5], 1);
  EXPECT_EQ(tabs[1].sketchLocked[6], 1);
  EXPECT_EQ(tabs[1].plateSettings->values[0], 9);
}

std::string OldPlateFile() {
  std::string bytes(4768, '\0');
  bytes[0] = 3;
  bytes[4] = 5;
  return bytes;
}

TEST_F(OfflineAutosave, KeepsAnOldPlateFileInItsFormUntilThePlateWindowComesUp) {
  Put("a.NC", "G0\r\n");
  Put("a.NC.platemv", OldPlateFile());
  OpenFile("a.NC");
  EXPECT_EQ(tabs[1].plateStore, nullptr);
  ASSERT_NE(tabs[1].plateSettings, nullptr);
  EXPECT_TRUE(morva::SaveProgram(app.activePath));
  EXPECT_EQ(Raw("a.NC.platemv"), OldPlateFile());
  morva::liveModels.plateWindowExists = [] { return true; };
  morva::liveModels.storePlate = StoreAnyPlate;
  EXPECT_TRUE(morva::SaveProgram(app.activePath));
  EXPECT_EQ(Raw("a.NC.platemv").size(), 38152u);
}

TEST_F(OfflineAutosave, KeepsWhatIsStoredWhenTheLiveModelCannotBeWritten) {
  Put("a.NC", "G0\r\n");
  Put("a.NC.platemv", OldPlateFile());
  OpenFile("a.NC");
  morva::liveModels.plateWindowExists = [] { return true; };
  morva::liveModels.storePlate = [](morva::FeatureSettings& record) {
    record.version = 99;
    return false;
  };
  morva::StashActiveWorkspace();
  EXPECT_EQ(tabs[1].plateSettings->version, 3);
  ASSERT_NE(tabs[1].plateStore, nullptr);
  EXPECT_EQ(tabs[1].plateStore->plates[0].version, 3);
}

TEST_F(OfflineAutosave, SavesQuestionMarksForWhatIsNoAsciiAndKeepsItInTheEditor) {
  Put("a.NC", "x\r\n");
  OpenFile("a.NC");
  TypeProgram(u"(\u00E9)");
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  EXPECT_TRUE(morva::SaveProgramCommand());
  EXPECT_NE(Raw("a.NC").find("(?)"), std::string::npos);
  EXPECT_NE(Text().find(u"(\u00E9)"), std::u16string::npos);
}

TEST_F(OfflineAutosave, FailsForAPathOfMoreThan500Units) {
  EXPECT_FALSE(morva::SaveProgram(home + u"/" + std::u16string(500, u'a')));
  EXPECT_EQ(NamesIn(folder), (std::vector<std::string>{"Documents", "bin"}));
}

TEST_F(OfflineAutosave, LeavesStrayTemporaryFilesAlone) {
  Put("a.NC", "x\r\n");
  Put(".tmp-77", "half");
  OpenFile("a.NC");
  EXPECT_TRUE(morva::SaveProgramCommand());
  EXPECT_EQ(Raw(".tmp-77"), "half");
}

TEST_F(OfflineAutosave, SavesNothingOverAProgramWithoutAnEditor) {
  Put("a.NC", "x\r\n");
  platform::Destroy(300);
  EXPECT_FALSE(morva::SaveProgram(PathOf("a.NC")));
  EXPECT_EQ(Raw("a.NC"), "x\r\n");
}

TEST_F(Autosave, TagsAPauseAfterAnEdit) {
  TypeProgram(u"G0");
  static bool coloured;
  coloured = false;
  morva::hooks.colourEditor = [] { coloured = true; };
  headless::Advance(149);
  EXPECT_EQ(Text(), u"G0");
  headless::Advance(1);
  EXPECT_EQ(Text(), u"(MORVA TEXT 1)\r\n(MORVA NAME User code)\r\nG0\r\n(MORVA END 1)");
  EXPECT_TRUE(coloured);
  EXPECT_FALSE(platform::TimerRuns(platform::kMainWindow, 1));
}

}  // namespace
