// Start-up, the close flow and the outlets, over the whole application.

#include "shell/start_up.h"

#include "app/commands.h"
#include "app/data_dir.h"
#include "app/hover.h"
#include "app/outlets.h"
#include "app/router.h"
#include "dnc/transfer.h"
#include "documents/program_tabs.h"
#include "platform/clock.h"
#include "platform/timer.h"
#include "platform/window.h"
#include "shell/modes.h"
#include "support/workbench.h"
#include "text/codetext.h"

namespace morva {
namespace {

using StartUp = support::Workbench;
using CloseFlow = support::Workbench;
using Outlets = support::Workbench;

TEST_F(StartUp, ShowsOneFreshTabInTheHomeModeOfTheCodeSurface) {
  EXPECT_EQ(app.tabCount, 1);
  EXPECT_EQ(app.activeTab, 0);
  EXPECT_EQ(app.surface, kSurfaceCode);
  EXPECT_EQ(app.mode, kModeHome);
  EXPECT_EQ(Text(),
            u"(FILE: Untitled-1.NC)\r\nG20 (INCHES)\r\nG90 G17 G94\r\nG54 (WORK COORDINATE "
            u"SYSTEM)\r\nG40 G80\r\n(OPERATION CODE BELOW)\r\n");
  EXPECT_TRUE(platform::IsVisible(kIdEditor));
  EXPECT_EQ(platform::TextOf(kIdStatusLine), u"Ready  \u2022  F5 Validate");
  EXPECT_EQ(platform::TextOf(kIdDncState), u"DNC: OFFLINE");
  EXPECT_EQ(platform::TextOf(kIdDncPort), u"PORT  --");
  EXPECT_EQ(platform::TextOf(kIdDncBaud), u"BAUD  9600");
}

TEST_F(StartUp, WrapsTheTemplateWithinEightyMilliseconds) {
  headless::Advance(79);
  EXPECT_FALSE(tabs[0].dirty);
  headless::Advance(1);
  EXPECT_EQ(Text().substr(0, 48), u"(MORVA TEXT 1)\r\n(MORVA NAME User code)\r\n(FILE: U");
  EXPECT_TRUE(tabs[0].dirty);
  EXPECT_EQ(platform::RowText(kIdFeatureList, 0), u"#1  User code");
}

TEST_F(StartUp, ReplacesTheCreationTitleAtTheFirstUpdate) {
  EXPECT_EQ(platform::WindowTitle(), u"MORVA v4.20.0");
}

TEST_F(StartUp, MakesTheDataDirectoryInTheDocumentsFolder) {
  EXPECT_TRUE(app.dataDirReady);
  for (const char* folder : {"Projects", "Shapes", "Tool Library", "Recovery"}) {
    EXPECT_TRUE(std::filesystem::is_directory(home_ / "Documents" / "MORVA" / folder));
  }
}

TEST_F(StartUp, TakesItsOwnNameInAnyCaseAndKeepsOtherCopiesApart) {
  headless::SetExecutableName(u"morva.EXE");
  FindDataDirectory();
  EXPECT_EQ(std::u16string(app.dataDir), Path("Documents/MORVA"));
  headless::SetExecutableName(u"MORVA2");
  FindDataDirectory();
  EXPECT_EQ(std::u16string(app.dataDir), Path("bin/QA-data"));
  EXPECT_TRUE(std::filesystem::is_directory(home_ / "bin" / "QA-data" / "Projects"));
}

TEST_F(StartUp, ComparesNoMoreThan159CharactersOfItsName) {
  headless::SetExecutableName(u"MORVA" + std::u16string(200, u' '));
  FindDataDirectory();
  EXPECT_EQ(std::u16string(app.dataDir), Path("bin/QA-data"));
}

TEST_F(StartUp, CutsTheFolderNameBehindADocumentsPathOf519Characters) {
  // The home folder grows until home, separator and "Documents" make 519.
  std::string home = home_.string();
  while (home.size() < 509)
    home += "/" + std::string(std::min<std::size_t>(100, 508 - home.size()), 'd');
  std::filesystem::create_directories(home);
  headless::Reset(platform::FromUtf8(home));
  FindDataDirectory();
  EXPECT_EQ(std::u16string(app.dataDir), platform::FromUtf8(home + "/Documents"));
  EXPECT_EQ(std::u16string_view(app.dataDir).size(), 519u);
  EXPECT_TRUE(app.dataDirReady);
}

TEST_F(StartUp, RunsOnWithoutADocumentsFolder) {
  headless::RemoveDocuments();
  FindDataDirectory();
  EXPECT_FALSE(app.dataDirReady);
  headless::EditorInsert(kIdEditor, u"G0");
  headless::Advance(2000);
  EXPECT_TRUE(app.editorDirty);  // no autosave, ever, in this run
}

TEST_F(StartUp, AFileInTheWayOfAFolderPassesTheTest) {
  std::filesystem::remove_all(home_ / "Documents" / "MORVA");
  std::filesystem::create_directories(home_ / "Documents" / "MORVA");
  WriteFile("Documents/MORVA/Shapes", "a file");
  FindDataDirectory();
  EXPECT_TRUE(app.dataDirReady);
}

class NamedPrograms : public StartUp {
 protected:
  // Starts with these files of the home folder on the command line.
  void StartWith(const std::vector<std::string>& names) {
    morva::ResetApplication();
    headless::Reset(platform::FromUtf8(home_.string()));
    std::vector<std::u16string> paths;
    for (const std::string& name : names)
      paths.push_back(platform::FromUtf8((home_ / name).string()));
    ASSERT_EQ(StartApplication(paths), 0);
  }
};

TEST_F(NamedPrograms, OfTheCommandLineAreOpenedAndTheLastOneIsShown) {
  WriteFile("a.NC", "G0 X1\r\n");
  WriteFile("b.NC", "G0 X2\r\n");
  StartWith({"a.NC", "b.NC", "a.NC"});
  EXPECT_TRUE(headless::TakeBoxes().empty());
  ASSERT_EQ(app.tabCount, 3);
  EXPECT_EQ(std::u16string(app.activePath), Path("a.NC"));
  EXPECT_EQ(Text().substr(0, 5), u"G0 X1");
  EXPECT_EQ(platform::FocusedId(), kIdEditor);
}

TEST_F(NamedPrograms, BeyondTheTabsAreNamedAndAllThatAreOpenAreShown) {
  std::vector<std::string> names;
  for (int i = 0; i < 10; ++i) {
    names.push_back(std::to_string(i) + ".NC");
    WriteFile(names.back(), "G0 X1\r\n");
  }
  names.push_back("2.NC");
  StartWith(names);
  EXPECT_EQ(headless::TakeBoxes().size(), 1u);
  EXPECT_EQ(std::u16string(app.activePath), Path("2.NC"));
  const std::u16string log = platform::TextOf(kIdOutputLog);
  for (const char* name : {"7.NC", "8.NC", "9.NC"}) {
    EXPECT_NE(log.find(u"Not opened: " + Path(name)), std::u16string::npos) << name;
  }
  EXPECT_EQ(log.find(u"Not opened: " + Path("6.NC")), std::u16string::npos);
}

TEST_F(NamedPrograms, ThatCannotBeOpenedAreRefusedLikeThoseOfOpen) {
  WriteFile("a.NC", "G0 X1\r\n");
  std::filesystem::create_directory(home_ / "folder");
  StartWith({"missing.NC", "folder", "a.NC"});
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 2u);
  EXPECT_EQ(boxes[0].title, u"Open Error");
  EXPECT_EQ(app.tabCount, 2);
  EXPECT_NE(platform::TextOf(kIdOutputLog).find(u"Not opened: " + Path("missing.NC")),
            std::u16string::npos);
}

TEST_F(NamedPrograms, EndWithTheEighthTabAndOneBox) {
  std::vector<std::string> names;
  for (int i = 0; i < 12; ++i) {
    names.push_back("p" + std::to_string(i) + ".NC");
    WriteFile(names.back(), "G0\r\n");
  }
  StartWith(names);
  EXPECT_EQ(app.tabCount, kMaxTabs);
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].title, u"MORVA Tabs");
}

TEST_F(StartUp, EndsWithTwoWhenNoWindowCanBeMade) {
  morva::ResetApplication();
  headless::Reset(platform::FromUtf8(home_.string()));
  headless::FailCall("window", 1);
  EXPECT_EQ(StartApplication(), 2);
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].title, u"MORVA v4.12.0");
  EXPECT_EQ(boxes[0].text, u"Could not create the main window.");
  morva::ResetApplication();
  headless::Reset(platform::FromUtf8(home_.string()));
  EXPECT_EQ(StartApplication(), 0);
}

TEST_F(CloseFlow, AsksNothingWhenAutosaveClearedTheOnlyDirtyTab) {
  headless::EditorInsert(kIdEditor, u"G0 X1");
  EXPECT_TRUE(headless::CloseKey());
  EXPECT_TRUE(headless::TakeBoxes().empty());
  EXPECT_TRUE(headless::WindowClosed());
}

TEST_F(CloseFlow, AsksOnceForADirtyInactiveTabAndNoKeepsTheProgramOpen) {
  headless::Advance(1000);
  headless::Click(kIdNew);
  headless::Advance(1000);
  tabs[0].dirty = true;
  tabs[0].save.userChanges = ++tabs[0].save.changes;
  // The close tries to save it, where no folder can be made.
  headless::FailCall("folder", 1);
  headless::QueueAnswer(platform::BoxAnswer::No);
  EXPECT_FALSE(headless::CloseKey());
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].text, u"One or more project tabs have unsaved changes. Close MORVA anyway?");
  EXPECT_EQ(boxes[0].title, u"MORVA");
  EXPECT_NE(platform::TextOf(kIdOutputLog).find(u"Unsaved changes in: Untitled-1.NC\r\n"),
            std::u16string::npos);
  EXPECT_EQ(app.tabCount, 2);
  headless::FailCall("folder", 1);
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  EXPECT_TRUE(headless::CloseKey());
}

TEST_F(CloseFlow, AsksBeforeAReceivedProgramIsLostThatNoTabAndNoFileTook) {
  headless::RemoveDocuments();
  FindDataDirectory();
  headless::SetPort(u"COM1", headless::PortState::Present);
  headless::Click(kIdReceive);
  while (app.tabCount < kMaxTabs) headless::Click(kIdNew);
  headless::PeerSend("O1\r\nM30\r\n");
  headless::Advance(3000);
  ASSERT_EQ(platform::TextOf(kIdStatusLine),
            u"DNC receive complete \u2014 close a program, then press RECEIVE to open it.");
  headless::TakeBoxes();
  EXPECT_FALSE(headless::CloseKey());
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].text,
            u"A received program is in no tab, and no file could be written for it. Close MORVA "
            u"and lose it?");
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  EXPECT_TRUE(headless::CloseKey());
}

TEST_F(CloseFlow, TellsOfUnsavedChangesWhereTheDiskDoesNotAnswer) {
  headless::Advance(1000);
  headless::SetFlushTime(60000);
  headless::EditorInsert(kIdEditor, u"G0 X1");
  headless::QueueAnswer(platform::BoxAnswer::No);
  EXPECT_FALSE(headless::CloseKey());
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].text,
            u"The disk does not answer; a save is still under way. Close MORVA anyway?\n\n"
            u"Unsaved changes of one or more project tabs are lost too.");
}

TEST_F(CloseFlow, TellsOfUnsavedChangesWhereTheTransferEndsUnderTheQuestionAboutTheDisk) {
  headless::SetPort(u"COM1", headless::PortState::Present);
  headless::Advance(1000);
  headless::Click(kIdReceive);
  ASSERT_TRUE(TransferRuns());
  headless::Advance(20000);
  headless::SetFlushTime(200000);
  headless::EditorInsert(kIdEditor, u"G0 X1");
  headless::TakeBoxes();
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  headless::WhileOpen([] { headless::Advance(60000); });
  headless::QueueAnswer(platform::BoxAnswer::No);
  EXPECT_FALSE(headless::CloseKey());
  EXPECT_FALSE(TransferRuns());
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 2u);
  EXPECT_EQ(boxes[0].text,
            u"The disk does not answer; a save is still under way. Close MORVA anyway?");
  EXPECT_EQ(boxes[1].text, u"One or more project tabs have unsaved changes. Close MORVA anyway?");
}

// A program that is tagged already, so that nothing of it is modified; its file was erased.
class ErasedProgram : public CloseFlow {
 protected:
  void SetUp() override {
    CloseFlow::SetUp();
    std::filesystem::create_directory(home_ / "jobs");
    WriteFile("jobs/a.NC",
              "(MORVA TEXT 1)\r\n(MORVA NAME User code)\r\nG0 X1234\r\n(MORVA END 1)\r\n");
    Open("jobs/a.NC");
    headless::Advance(2000);
    ASSERT_FALSE(tabs[app.activeTab].dirty);
  }
  bool IsKept() const {
    for (const auto& file :
         std::filesystem::directory_iterator(home_ / "Documents" / "MORVA" / "Recovery")) {
      std::ifstream in(file.path(), std::ios::binary);
      std::stringstream text;
      text << in.rdbuf();
      if (text.str().find("G0 X1234") != std::string::npos) return true;
    }
    return false;
  }
};

TEST_F(ErasedProgram, IsKeptInRecoveryAtATerminateSignal) {
  std::filesystem::remove(home_ / "jobs" / "a.NC");
  headless::Terminate();
  EXPECT_TRUE(IsKept());
}

TEST_F(ErasedProgram, IsWrittenAnewBySaveAll) {
  std::filesystem::remove(home_ / "jobs" / "a.NC");
  RouteCommand(kIdSaveAll, 0);
  EXPECT_NE(ReadFile("jobs/a.NC").find("G0 X1234"), std::string::npos);
}

TEST_F(ErasedProgram, IsKeptInRecoveryWhereItsFolderIsGoneToo) {
  std::filesystem::remove_all(home_ / "jobs");
  RouteCommand(kIdSave, 0);
  EXPECT_EQ(headless::TakeBoxes().size(), 1u);
  headless::Advance(1000);
  EXPECT_TRUE(IsKept());
}

TEST_F(ErasedProgram, IsKeptWhereTheFolderOfCopiesWasRemovedToo) {
  std::filesystem::remove(home_ / "jobs" / "a.NC");
  std::filesystem::remove_all(home_ / "Documents" / "MORVA");
  headless::Terminate();
  EXPECT_TRUE(IsKept());
}

TEST_F(CloseFlow, GivesAProgramItsHomeWhereTheDataFolderWasRemoved) {
  headless::Advance(1000);
  std::filesystem::remove_all(home_ / "Documents" / "MORVA");
  headless::EditorInsert(kIdEditor, u"G0 X1");
  headless::Advance(3000);
  EXPECT_EQ(platform::TextOf(kIdStatusLine), u"Project autosaved.");
}

TEST_F(CloseFlow, SavesWhatWasTypedBehindASaveAsThatIsUnderWay) {
  headless::Advance(1000);
  headless::SetFlushTime(100);
  headless::QueueFile(Path("new.NC"));
  RouteCommand(kIdSaveAs, 0);
  headless::EditorInsert(kIdEditor, u"G0 X77 ");
  EXPECT_TRUE(headless::CloseKey());
  EXPECT_TRUE(headless::TakeBoxes().empty());
  EXPECT_NE(ReadFile("new.NC").find("G0 X77"), std::string::npos);
}

TEST_F(Outlets, RepeatingAStatusInOtherCaseLeavesTheControlUntouched) {
  ShowStatus(u"Saved here");
  platform::SetText(kIdStatusLine, u"touched");
  ShowStatus(u"SAVED HERE");
  EXPECT_EQ(platform::TextOf(kIdStatusLine), u"touched");
  ShowStatus(u"Saved there");
  EXPECT_EQ(platform::TextOf(kIdStatusLine), u"Saved there");
}

TEST_F(Outlets, CutsALongStatus) {
  ShowStatus(std::u16string(2000, u'x'));
  EXPECT_EQ(platform::TextOf(kIdStatusLine).size(), 1023u);
}

TEST_F(Outlets, CutsTheFileNameInTheTitleAt300) {
  CopyBounded(app.activePath, kPathUnits, u"/" + std::u16string(400, u'n'));
  app.editorDirty = true;
  UpdateTitle();
  EXPECT_EQ(platform::WindowTitle(),
            u"MORVA v4.20.0  \u2014  " + std::u16string(300, u'n') + u"  \u2022");
  app.activePath[0] = 0;
}

TEST_F(Outlets, ShowsFileNameAndDirtyMarkInTheTitle) {
  WriteFile("O1000.NC", "G0 X0\r\n");
  Open("O1000.NC");
  EXPECT_EQ(platform::WindowTitle(), u"MORVA v4.20.0  \u2014  O1000.NC");
  headless::EditorInsert(kIdEditor, u"G1");
  EXPECT_EQ(platform::WindowTitle(), u"MORVA v4.20.0  \u2014  O1000.NC  \u2022");
}

// Two ticks of the hover timer: a rest.
constexpr int kRest = 300;

class Hover : public support::Workbench {
 protected:
  static std::u16string Status() { return platform::TextOf(kIdStatusLine); }
  // The help that lies over the log; empty for none.
  static std::u16string HelpOverLog() {
    return platform::IsVisible(kIdOutputHelp) ? platform::TextOf(kIdOutputHelp) : u"";
  }
  static void RestOn(int id) {
    headless::MovePointerOver(id);
    headless::Advance(kRest);
  }
};

TEST_F(Hover, LaysTheHintOfTheControlUnderThePointerOverTheLog) {
  const std::u16string log = Output();
  RestOn(kIdFeatureList);
  const std::u16string hint =
      u"Program features: right-click to isolate simulation, hide/show, or lock settings.";
  EXPECT_EQ(Status(), hint);
  EXPECT_EQ(HelpOverLog(), hint);
  EXPECT_TRUE(
      platform::SameRect(platform::PlaceOf(kIdOutputHelp), platform::PlaceOf(kIdOutputLog)));
  EXPECT_EQ(Output(), log);
}

TEST_F(Hover, SaysNothingOverEditorAndLog) {
  const std::u16string before = Status();
  for (const int id : {kIdEditor, kIdOutputLog}) {
    RestOn(id);
    EXPECT_EQ(Status(), before);
    EXPECT_EQ(HelpOverLog(), u"");
  }
}

TEST_F(Hover, SpeaksOnceForEachControl) {
  RestOn(kIdNew);
  EXPECT_EQ(Status(), u"NEW");
  ShowStatus(u"something else");
  headless::Advance(600);
  EXPECT_EQ(Status(), u"something else");
}

TEST_F(Hover, Takes279CharactersOfAControlsText) {
  platform::SetText(kIdFeatureHint, std::u16string(400, u'x'));
  RestOn(kIdFeatureHint);
  EXPECT_EQ(Status(), std::u16string(279, u'x'));
  EXPECT_EQ(HelpOverLog(), std::u16string(279, u'x'));
}

TEST_F(Hover, ComesAtTheSecondTickOnTheSameControl) {
  ShowStatus(u"Told.");
  headless::Advance(149 - static_cast<int>(platform::TickMilliseconds() % 150));
  headless::MovePointerOver(kIdNew);
  headless::Advance(150);
  EXPECT_EQ(Status(), u"Told.");
  headless::Advance(1);
  EXPECT_EQ(Status(), u"NEW");
}

TEST_F(Hover, APointerThatPassesCoversNothing) {
  ShowStatus(u"Told.");
  for (const int id : {kIdNew, kIdOpen, kIdSaveMenu, kIdFeatureList, kIdEditor}) {
    headless::MovePointerOver(id);
    headless::Advance(150);
    EXPECT_EQ(Status(), u"Told.") << id;
    EXPECT_EQ(HelpOverLog(), u"") << id;
  }
}

TEST_F(Hover, WhatWasToldIsBackWhenThePointerLeaves) {
  AppendOutput(u"A report.");
  const std::u16string log = Output();
  // To what says nothing, to the bare window, out of the window.
  for (const int id : {kIdEditor, platform::kMainWindow, 0}) {
    ShowStatus(u"Told.");
    RestOn(kIdNew);
    ASSERT_EQ(Status(), u"NEW");
    headless::MovePointerOver(id);
    headless::Advance(150);
    EXPECT_EQ(Status(), u"Told.") << id;
    EXPECT_EQ(HelpOverLog(), u"") << id;
    EXPECT_EQ(Output(), log) << id;
    RestOn(kIdEditor);
  }
}

TEST_F(Hover, TheFirstWordsAreBackWhenThePointerLeaves) {
  const std::u16string before = Status();
  RestOn(kIdNew);
  ASSERT_EQ(Status(), u"NEW");
  RestOn(kIdEditor);
  EXPECT_EQ(Status(), before);
}

TEST_F(Hover, FromHelpToHelpTheNextComesAtOnce) {
  ShowStatus(u"Told.");
  RestOn(kIdNew);
  headless::MovePointerOver(kIdOpen);
  headless::Advance(150);
  EXPECT_EQ(Status(), u"OPEN");
  EXPECT_EQ(HelpOverLog(), u"OPEN");
  RestOn(kIdEditor);
  EXPECT_EQ(Status(), u"Told.");
}

TEST_F(Hover, WhatIsToldWhileHelpStandsTakesItsPlaceAndStays) {
  ShowStatus(u"Old.");
  RestOn(kIdNew);
  ShowStatus(u"New.");
  EXPECT_EQ(Status(), u"New.");
  EXPECT_EQ(HelpOverLog(), u"");
  headless::Advance(600);
  EXPECT_EQ(Status(), u"New.");
  // The pointer passes other keys.
  for (const int id : {kIdOpen, kIdSaveMenu, 0}) {
    headless::MovePointerOver(id);
    headless::Advance(150);
    EXPECT_EQ(Status(), u"New.") << id;
  }
}

TEST_F(Hover, TheSameWordsToldAgainAreTold) {
  ShowStatus(u"Told.");
  RestOn(kIdNew);
  ShowStatus(u"Told.");
  EXPECT_EQ(Status(), u"Told.");
  headless::Advance(600);
  EXPECT_EQ(Status(), u"Told.");
}

TEST_F(Hover, ALineForTheLogBringsTheLogBack) {
  RestOn(kIdNew);
  ASSERT_EQ(HelpOverLog(), u"NEW");
  AppendOutput(u"Done.");
  EXPECT_EQ(HelpOverLog(), u"");
  RestOn(kIdOpen);
  ASSERT_EQ(HelpOverLog(), u"OPEN");
  ClearOutput();
  EXPECT_EQ(HelpOverLog(), u"");
  EXPECT_EQ(Output(), u"");
}

TEST_F(Hover, WhatIsToldIsNotCoveredBeforeThePointerMovesAgain) {
  headless::MovePointerOver(kIdNew);
  headless::Advance(150);
  ShowStatus(u"Told.");
  headless::Advance(600);
  EXPECT_EQ(Status(), u"Told.");
  RestOn(kIdOpen);
  EXPECT_EQ(Status(), u"OPEN");
}

TEST_F(Hover, AControlThatComesUnderAPointerAtRestSaysNothing) {
  ShowStatus(u"Told.");
  // One key lies over another and goes, as the abort key does at the end of a transfer.
  const platform::Rect place = platform::PlaceOf(kIdNew);
  platform::SetPlace(kIdPath, place);
  platform::BringToTop(kIdPath);
  RestOn(kIdPath);
  ASSERT_EQ(Status(), u"PATH");
  platform::SetVisible(kIdPath, false);
  ASSERT_EQ(platform::IdUnderPointer(), kIdNew);
  headless::Advance(150);
  EXPECT_EQ(Status(), u"Told.");
  EXPECT_EQ(HelpOverLog(), u"");
  headless::Advance(600);
  EXPECT_EQ(Status(), u"Told.");
  // The hand moves on it.
  RestOn(kIdNew);
  EXPECT_EQ(Status(), u"NEW");
}

TEST_F(Hover, AFieldDoesNotSayWhatItHolds) {
  ShowStatus(u"Told.");
  platform::SetEnabled(kIdFeatureName, true);
  ASSERT_TRUE(headless::TypeInto(kIdFeatureName, u"Pocket 1"));
  RestOn(kIdFeatureName);
  EXPECT_EQ(Status(), u"Told.");
  EXPECT_EQ(HelpOverLog(), u"");
}

TEST_F(Hover, TheHelpGoesWithTheLayoutThatItLiesIn) {
  ShowStatus(u"Told.");
  RestOn(kIdNew);
  ASSERT_TRUE(platform::IsVisible(kIdOutputHelp));
  headless::Resize(1300, 850);
  EXPECT_FALSE(platform::IsVisible(kIdOutputHelp));
  EXPECT_EQ(Status(), u"Told.");
  RestOn(kIdOpen);
  EXPECT_TRUE(
      platform::SameRect(platform::PlaceOf(kIdOutputHelp), platform::PlaceOf(kIdOutputLog)));
  SetSurface(kSurfaceCad);
  EXPECT_FALSE(platform::IsVisible(kIdOutputHelp));
}

using Keys = support::Workbench;

TEST_F(Keys, AltVOverAPushButtonDoesNothing) {
  headless::Focus(kIdNew);
  platform::KeyEvent key;
  key.key = 'V';
  key.alt = true;
  headless::PressKey(key);
  EXPECT_EQ(app.tabCount, 1);
  EXPECT_TRUE(headless::TakeBoxes().empty());
}

TEST_F(Keys, AltCAndAltVCopyAndPasteInTheEditorAndAltZUndoes) {
  headless::EditorSetAll(kIdEditor, u"G0 X1");
  headless::Focus(kIdEditor);
  headless::EditorSelect(kIdEditor, 0, 2);
  platform::KeyEvent key;
  key.alt = true;
  key.key = 'C';
  headless::PressKey(key);
  headless::EditorSelect(kIdEditor, 5, 5);
  key.key = 'V';
  headless::PressKey(key);
  EXPECT_EQ(Text(), u"G0 X1G0");
  key.key = 'Z';
  headless::PressKey(key);
  EXPECT_EQ(Text(), u"G0 X1");
}

TEST_F(Keys, GoToTheShownEditorWithEveryProgramThatComesUp) {
  WriteFile("O1.NC", "G0 X1\r\n");
  for (const bool words : {false, true}) {
    if (words) headless::Click(kIdCommandWords);
    const int editor = words ? kIdWordsEditor : kIdEditor;
    const auto comes = [editor](int key) {
      headless::Focus(kIdFeatureList);
      headless::Focus(key);
      headless::Click(key);
      EXPECT_EQ(platform::FocusedId(), editor) << key;
    };
    comes(kIdNew);
    comes(kIdTabFirst);
    comes(kIdTabFirst);  // the one that is shown
    comes(kIdTabNew);
    headless::QueueFile(Path("O1.NC"));
    comes(kIdOpen);
    headless::Click(kIdTabFirst);
    headless::QueueFile(Path("O1.NC"));
    comes(kIdOpen);  // which is open
    comes(kIdClose);
    headless::PressKey({platform::kKeyF1 + 4});
    EXPECT_TRUE(OutputHas(u"Validation complete")) << words;
    ClearOutput();
  }
}

TEST_F(Keys, TheEditContextMenuHoldsItsFiveItems) {
  headless::QueuePick(kIdEditSelectAll);
  EXPECT_TRUE(headless::ContextMenu(kIdEditor, -1));
  const auto menus = headless::TakeMenus();
  ASSERT_EQ(menus.size(), 1u);
  std::vector<std::u16string> words;
  for (const auto& item : menus[0].items) words.push_back(item.id ? item.text : u"-");
  EXPECT_EQ(words,
            (std::vector<std::u16string>{u"Undo\tAlt+Z", u"-", u"Cut\tCtrl+X", u"Copy\tAlt+C",
                                         u"Paste\tAlt+V", u"-", u"Select All\tCtrl+A"}));
  const platform::EditorRange all = platform::EditorSelection(kIdEditor);
  EXPECT_EQ(all.to - all.from, platform::EditorLength(kIdEditor));
}

using Routing = support::Workbench;

// The order of routing is the program's order: each id of this stage and who answers it.
TEST_F(Routing, OffersEveryIdInTheProgramsOrder) {
  const struct {
    int id;
    int notification;
    RouterStage stage;
  } wanted[] = {
      {kIdPlay, 0, RouterStage::Simulator},       {kIdViewMenu, 0, RouterStage::Simulator},
      {kIdZoomReset, 0, RouterStage::Simulator},  {kIdInch, 0, RouterStage::Simulator},
      {kIdMm, 0, RouterStage::Simulator},         {kIdRewind, 0, RouterStage::Simulator},
      {kIdFit, 0, RouterStage::Simulator},        {kIdNew, 0, RouterStage::Click},
      {kIdOpen, 0, RouterStage::Click},           {kIdSaveMenu, 0, RouterStage::Click},
      {kIdValidate, 0, RouterStage::Click},       {kIdRenumber, 0, RouterStage::Click},
      {kIdSend, 0, RouterStage::Click},           {kIdReceive, 0, RouterStage::Click},
      {kIdTabFirst, 0, RouterStage::Click},       {kIdTabLast, 0, RouterStage::Click},
      {kIdTabNew, 0, RouterStage::Click},         {kIdClose, 0, RouterStage::Click},
      {kIdPath, 0, RouterStage::Click},           {kIdZoomIn, 0, RouterStage::Click},
      {kIdZoomOut, 0, RouterStage::Click},        {kIdPreflight, 0, RouterStage::Click},
      {kIdSaveAll, 0, RouterStage::Click},        {kIdSurfaceCode, 0, RouterStage::Surface},
      {kIdShowFeatures, 0, RouterStage::Surface}, {kIdEditor, 768, RouterStage::Notified},
  };
  for (const auto& row : wanted) {
    EXPECT_EQ(StageOf(row.id, row.notification), static_cast<int>(row.stage)) << row.id;
  }
}

// Every key, item and list that the routing knows has somebody who answers it.
TEST_F(Routing, AnswersEveryIdThatItKnows) {
  constexpr int kClicked[][2] = {
      {101, 106},   {108, 114},   {430, 430},   {440, 440},   {601, 604},   {622, 626},
      {637, 637},   {653, 655},   {660, 661},   {663, 666},   {670, 670},   {680, 680},
      {742, 743},   {747, 751},   {772, 772},   {793, 793},   {800, 809},   {811, 811},
      {900, 919},   {1200, 1202}, {1210, 1211}, {1213, 1214}, {1216, 1216}, {1270, 1276},
      {1280, 1281}, {1290, 1295}, {1700, 1700}, {1710, 1717}, {1721, 1722}, {1901, 1905},
      {1908, 1908}, {1990, 1994}, {2929, 2929}, {2990, 2992}};
  for (const auto& [first, last] : kClicked) {
    for (int id = first; id <= last; ++id) EXPECT_GE(StageOf(id, 0), 0) << id;
  }
  for (const int id : {200, 600, 1212}) {
    EXPECT_GE(StageOf(id, platform::kNotifyListSelect), 0) << id;
    EXPECT_GE(StageOf(id, platform::kNotifyListDouble), 0) << id;
  }
  EXPECT_GE(StageOf(621, platform::kNotifyListDouble), 0);
  EXPECT_GE(StageOf(2930, platform::kNotifyComboSelect), 0);
}

// Its panel has the key of the preflight and says what that cannot know; no key leads to it.
TEST_F(Routing, ShowsTheDiagnosticsToWhoAsksForTheMode) {
  SetMode(kModeDiagnostics);
  EXPECT_EQ(app.mode, kModeDiagnostics);
  EXPECT_EQ(platform::TextOf(kIdPanelHead), u"DIAGNOSTICS");
  EXPECT_TRUE(platform::IsVisible(kIdValidateSecond));
  EXPECT_EQ(platform::TextOf(kIdValidateSecond), u"RUN VALIDATION");
  headless::Click(kIdValidateSecond);
  EXPECT_TRUE(OutputHas(u"Validation complete"));
  SetMode(kModeHome);
  EXPECT_FALSE(platform::IsVisible(kIdValidateSecond));
}

TEST_F(Routing, HasNoCommandThatIsStillToCome) {
  for (const Command* row : AllCommands()) EXPECT_EQ(row->pending[0], 0) << row->id;
}

}  // namespace
}  // namespace morva
