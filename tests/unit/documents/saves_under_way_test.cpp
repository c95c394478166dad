// Programs whose saves are still under way, fail or are left behind.

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "app/hooks.h"
#include "app/outlets.h"
#include "documents/autosave.h"
#include "documents/disk_watch.h"
#include "documents/insertion.h"
#include "documents/recovery.h"
#include "documents/save_state.h"
#include "documents/saver.h"
#include "documents/save_words.h"
#include "documents/saving.h"
#include "documents/tab_models.h"
#include "platform/clock.h"
#include "platform/common/faults.h"
#include "platform/thread.h"
#include "support/program_stage.h"

namespace {

using morva::app;
using morva::tabs;
using platform::BoxAnswer;

bool SlowFlush(std::string_view kind) {
  if (kind == "flush") platform::SleepMilliseconds(300);
  return false;
}

// The two files of a save take 1.2 s.
bool SlowerFlush(std::string_view kind) {
  if (kind == "flush") platform::SleepMilliseconds(600);
  return false;
}

// A stick that was pulled: no file can be made.
bool failing = false;
int tries = 0;
bool Pulled(std::string_view kind) {
  if (kind == "new") ++tries;
  return failing && kind == "new";
}

struct SavesUnderWay : public support::ProgramStage {
  SavesUnderWay() {
    failing = false;
    tries = 0;
  }
  ~SavesUnderWay() override { platform::fileFault = nullptr; }
  void Open(const char* name) const {
    Put(name, "G0 X1\r\n");
    OpenFile(name);
    headless::Advance(2000);
    headless::TakeBoxes();
  }
  bool Holds(const char* name, const char* words) const {
    return Raw(name).find(words) != std::string::npos;
  }
  void SaveAs(const char* name) const {
    headless::QueueFile(PathOf(name));
    EXPECT_TRUE(morva::SaveProgramAs());
  }
};

TEST_F(SavesUnderWay, PutsWhatIsTypedBehindASaveAsIntoTheNewFileAlone) {
  Open("a.NC");
  platform::fileFault = SlowerFlush;
  TypeProgram(u"G0 X2");
  morva::RunAutosave();
  SaveAs("b.NC");
  // The autosave of the old name is told; the save under the new one is still under way.
  headless::Advance(1300);
  TypeProgram(u"G0 X3");
  headless::Advance(8000);
  EXPECT_EQ(std::u16string(tabs[1].path), PathOf("b.NC"));
  EXPECT_TRUE(Holds("b.NC", "G0 X3"));
  EXPECT_TRUE(Holds("a.NC", "G0 X2"));
  EXPECT_FALSE(Holds("a.NC", "G0 X3"));
  EXPECT_FALSE(app.editorDirty);
}

TEST_F(SavesUnderWay, SavesUnderTheNewNameAlsoWhenTheSaveAsIsStillUnderWay) {
  Open("a.NC");
  platform::fileFault = SlowFlush;
  TypeProgram(u"G0 X2");
  SaveAs("b.NC");
  TypeProgram(u"G0 X3");
  EXPECT_TRUE(morva::SaveProgramCommand());
  headless::Advance(8000);
  EXPECT_EQ(Raw("a.NC"), "G0 X1\r\n");
  EXPECT_TRUE(Holds("b.NC", "G0 X3"));
  EXPECT_FALSE(app.editorDirty);
}

TEST_F(SavesUnderWay, EndsWithTheLastOfTwoNamesAlsoWhenThatIsItsOwn) {
  Open("a.NC");
  platform::fileFault = SlowFlush;
  TypeProgram(u"G0 X2");
  SaveAs("b.NC");
  headless::QueueAnswer(BoxAnswer::Yes);
  SaveAs("a.NC");
  headless::Advance(8000);
  EXPECT_EQ(std::u16string(tabs[1].path), PathOf("a.NC"));
  EXPECT_TRUE(Holds("a.NC", "G0 X2"));
  EXPECT_FALSE(app.editorDirty);
  TypeProgram(u"G0 X3");
  headless::Advance(8000);
  EXPECT_TRUE(Holds("a.NC", "G0 X3"));
  EXPECT_FALSE(Holds("b.NC", "G0 X3"));
}

TEST_F(SavesUnderWay, TellsOnceAndWithItsNameThatAProgramLeftBehindHasNoFolder) {
  Open("a.NC");
  morva::SwitchTab(0);
  TypeProgram(u"G0 X2");
  // A file stands where the folder of projects would be made.
  const auto data = folder / "Documents/MORVA";
  support::fs::remove_all(data / "Projects");
  Put("Documents/MORVA/Projects", "");
  morva::SwitchTab(1);
  EXPECT_EQ(Status(), u"Untitled-1.NC: Autosave failed: project directory unavailable.");
  for (int i = 0; i < 4; ++i) {
    platform::SetText(morva::kIdStatusLine, u"");
    headless::Advance(6000);
    EXPECT_EQ(Status(), u"") << i;
  }
  support::fs::remove(data / "Projects");
  support::fs::create_directory(data / "Projects");
  headless::Advance(6000);
  EXPECT_FALSE(tabs[0].dirty);
}

// What the autosave may not write is lost by no kill either.
TEST_F(SavesUnderWay, KeepsACopyInRecoveryAsLongAsTheAutosaveIsHeld) {
  Open("a.NC");
  TypeProgram(u"G0 X2");
  Put("a.NC", "G0 X999\r\n");
  headless::Advance(1000);
  const auto folderOfCopies = folder / "Documents/MORVA/Recovery";
  const auto copy = [&]() {
    std::string program;
    for (const std::string& name : support::NamesIn(folderOfCopies)) {
      if (name.ends_with(".NC")) {
        EXPECT_EQ(program, "");
        program = Raw("Documents/MORVA/Recovery/" + name);
      }
    }
    return program;
  };
  EXPECT_NE(copy().find("G0 X2"), std::string::npos);
  EXPECT_NE(Output().find(u"is saved, its changes are kept in"), std::u16string::npos);
  TypeProgram(u"G0 X3");
  headless::Advance(1000);
  EXPECT_NE(copy().find("G0 X3"), std::string::npos);
  EXPECT_EQ(Raw("a.NC"), "G0 X999\r\n");
  EXPECT_EQ(morva::HeldWords(),
            u"Changed on disk by another program. Not saved; use Save or Open again.");
  ASSERT_TRUE(morva::SaveProgramOver(PathOf("a.NC")));
  headless::Advance(1000);
  EXPECT_TRUE(Holds("a.NC", "G0 X3"));
  EXPECT_EQ(support::NamesIn(folderOfCopies), std::vector<std::string>());
  EXPECT_EQ(morva::HeldWords(), u"");
}

// The names in "Recovery", programs alone.
std::vector<std::string> Copies(const support::fs::path& machine) {
  std::vector<std::string> names = support::NamesIn(machine / "Documents/MORVA/Recovery");
  std::erase_if(names, [](const std::string& name) { return !name.ends_with(".NC"); });
  return names;
}

struct HeldCopies : public SavesUnderWay {
  // Another program wrote the file while the user had typed.
  void Hold(const char* name) const {
    Open(name);
    TypeProgram(u"G0 X2");
    Put(name, "G0 X999\r\n");
    headless::Advance(1000);
  }
  // As a process that was killed and started again.
  static void StartAgain() {
    morva::ResetDocuments();
    morva::ClearCommands();
    morva::RegisterDocumentCommands();
    morva::SwitchTab(morva::OpenTab(u"", u"", u"Untitled-1.NC"));
    morva::ClearOutput();
  }
  static bool Told(std::u16string_view words) {
    return Output().find(words) != std::u16string::npos;
  }
};

TEST_F(HeldCopies, TheOpeningBehindAKillNamesTheCopy) {
  Hold("a.NC");
  ASSERT_EQ(Copies(folder).size(), 1u);
  const std::u16string copy = morva::tabs[1].save.heldCopy;
  StartAgain();
  OpenFile("a.NC");
  EXPECT_TRUE(Told(u"Changes of a.NC that were never saved are kept in " + copy + u";"));
  // A further one does not replace it.
  TypeProgram(u"G0 X3");
  Put("a.NC", "G0 X998\r\n");
  headless::Advance(1000);
  EXPECT_EQ(Copies(folder).size(), 2u);
  EXPECT_NE(morva::tabs[1].save.heldCopy, copy);
  // Nor is it spoken of with a program of that name elsewhere.
  morva::ClearOutput();
  support::fs::create_directory(folder / "else");
  Put("else/a.NC", "G0 X1\r\n");
  OpenFile("else/a.NC");
  EXPECT_FALSE(Told(u"never saved"));
}

TEST_F(HeldCopies, TheOpeningByALinkNamesTheCopyToo) {
  Hold("a.NC");
  StartAgain();
  support::fs::create_symlink("a.NC", folder / "b.NC");
  OpenFile("b.NC");
  EXPECT_TRUE(Told(u"never saved"));
}

TEST_F(HeldCopies, ACopyThatIsStillBeingWrittenGoesWhenTheProgramIsSaved) {
  Open("a.NC");
  TypeProgram(u"G0 X2");
  Put("a.NC", "G0 X999\r\n");
  platform::fileFault = SlowFlush;
  morva::RunAutosave();
  ASSERT_TRUE(morva::SavesUnderWay());
  morva::DropHeldCopy(*morva::ActiveTab());
  EXPECT_TRUE(morva::WaitForSaves());
  EXPECT_EQ(support::NamesIn(folder / "Documents/MORVA/Recovery"), std::vector<std::string>());
}

// The log of a second window names the copy to its user, who writes into it.
TEST_F(HeldCopies, OneThatAnotherProgramChangedIsNotWrittenOver) {
  Hold("a.NC");
  const std::string copy = "Documents/MORVA/Recovery/" + Copies(folder).at(0);
  Put(copy.c_str(), "(NOTES OF ANOTHER WINDOW)\r\n");
  TypeProgram(u"G0 X3");
  headless::Advance(1000);
  EXPECT_EQ(Raw(copy.c_str()), "(NOTES OF ANOTHER WINDOW)\r\n");
  ASSERT_EQ(Copies(folder).size(), 2u);
  EXPECT_NE(morva::ActiveTab()->save.heldCopy, PathOf(copy));
  EXPECT_TRUE(Told(morva::ActiveTab()->save.heldCopy));
}

TEST_F(HeldCopies, OneThatAnotherProgramChangedIsNotErased) {
  Hold("a.NC");
  const std::string copy = "Documents/MORVA/Recovery/" + Copies(folder).at(0);
  Put(copy.c_str(), "(NOTES OF ANOTHER WINDOW)\r\n");
  ASSERT_TRUE(morva::SaveProgramOver(PathOf("a.NC")));
  headless::Advance(1000);
  EXPECT_EQ(Raw(copy.c_str()), "(NOTES OF ANOTHER WINDOW)\r\n");
  EXPECT_EQ(Copies(folder).size(), 1u);
}

TEST_F(HeldCopies, ATerminateSignalWritesBesideOneThatAnotherProgramChanged) {
  Hold("a.NC");
  const std::string copy = "Documents/MORVA/Recovery/" + Copies(folder).at(0);
  Put(copy.c_str(), "(NOTES OF ANOTHER WINDOW)\r\n");
  std::u16string kept;
  EXPECT_TRUE(morva::KeepProgramInRecovery(*morva::ActiveTab(), kept));
  EXPECT_TRUE(morva::WaitForSaves());
  EXPECT_EQ(Raw(copy.c_str()), "(NOTES OF ANOTHER WINDOW)\r\n");
  EXPECT_EQ(Copies(folder).size(), 2u);
}

TEST_F(HeldCopies, LoadingAgainLeavesOneCopyOfTheUsersVersion) {
  Hold("a.NC");
  EXPECT_TRUE(morva::LoadAgain());
  EXPECT_EQ(Copies(folder).size(), 1u);
  EXPECT_EQ(morva::tabs[1].save.heldCopy, u"");
}

TEST_F(HeldCopies, ALongNameOfManyBytesLeavesRoomForTheNumber) {
  // 82 signs of three bytes: 249 bytes with the end.
  std::string name;
  for (int i = 0; i < 82; ++i) name += "\xE6\xBC\xA2";
  name += ".NC";
  Hold(name.c_str());
  EXPECT_EQ(Copies(folder).size(), 1u);
}

TEST_F(HeldCopies, OneThatIsTooLargeToBeOpenedIsToldSo) {
  Open("a.NC");
  platform::SetEditorText(morva::kIdEditor, std::u16string(33554430, u'G'));
  TypeProgram(Text() + u"G\r\nG");
  headless::Advance(1000);
  EXPECT_TRUE(Told(u"(too large to be opened here)"));
}

// What was written is on the disk, and its result is not told yet.
TEST_F(SavesUnderWay, TakesItsOwnSaveForNoneOfAnotherProgramBeforeItIsTold) {
  Open("a.NC");
  platform::fileFault = SlowFlush;
  TypeProgram(u"G0 X2");
  morva::RunAutosave();
  ASSERT_TRUE(morva::IsBeingSaved(PathOf("a.NC")));
  platform::EndWorker(platform::Worker::Saver);
  ASSERT_TRUE(Holds("a.NC", "G0 X2"));
  headless::TakeBoxes();
  morva::WatchDisk();
  EXPECT_EQ(morva::HeldWords(), u"");
  EXPECT_TRUE(morva::SaveProgramCommand());
  EXPECT_TRUE(morva::WaitForSaves());
  EXPECT_TRUE(headless::TakeBoxes().empty());
  EXPECT_FALSE(app.editorDirty);
  // Behind the result another program's change is noticed again.
  TypeProgram(u"G0 X3");
  Put("a.NC", "G0 X999\r\n");
  morva::WatchDisk();
  EXPECT_NE(morva::HeldWords(), u"");
}

TEST_F(SavesUnderWay, StaysWithItsFileWhenTheSaveAsFails) {
  Open("a.NC");
  TypeProgram(u"G0 X2");
  platform::fileFault = Pulled;
  failing = true;
  headless::QueueFile(PathOf("b.NC"));
  morva::SaveProgramAs();
  headless::Advance(100);
  EXPECT_EQ(headless::TakeBoxes().size(), 1u);
  failing = false;
  headless::Advance(8000);
  EXPECT_EQ(std::u16string(tabs[1].path), PathOf("a.NC"));
  EXPECT_TRUE(Holds("a.NC", "G0 X2"));
}

TEST_F(SavesUnderWay, GivesOneFileToOneTabWhileTheSaveAsIsUnderWay) {
  Open("a.NC");
  platform::fileFault = SlowFlush;
  TypeProgram(u"G0 X2");
  SaveAs("x.NC");
  morva::SwitchTab(0);
  TypeProgram(u"G0 X7");
  headless::TakeBoxes();
  headless::QueueFile(PathOf("x.NC"));
  EXPECT_FALSE(morva::SaveProgramAs());
  EXPECT_EQ(headless::TakeBoxes().size(), 1u);
  headless::Advance(8000);
  EXPECT_TRUE(Holds("x.NC", "G0 X2"));
}

TEST_F(SavesUnderWay, SavesATabThatWasLeftWhileItsSaveAsWasUnderWay) {
  Open("a.NC");
  platform::fileFault = SlowFlush;
  TypeProgram(u"G0 X2");
  SaveAs("b.NC");
  TypeProgram(u"G0 X3");
  morva::SwitchTab(0);
  headless::Advance(10000);
  EXPECT_EQ(app.activeTab, 0);
  EXPECT_TRUE(Holds("b.NC", "G0 X3"));
  EXPECT_FALSE(tabs[1].dirty);
}

TEST_F(SavesUnderWay, TriesATabAgainThatWasLeftWhenItsDiskIsBack) {
  Open("a.NC");
  TypeProgram(u"G0 X2");
  platform::fileFault = Pulled;
  failing = true;
  morva::SwitchTab(0);
  headless::Advance(20000);
  EXPECT_TRUE(tabs[1].dirty);
  EXPECT_EQ(Raw("a.NC"), "G0 X1\r\n");
  // Not at every turn: each 5 s, the file and its copy in "Recovery".
  EXPECT_LE(tries, 10);
  EXPECT_EQ(Output().find(u"its changes are kept in"), std::u16string::npos);
  failing = false;
  headless::Advance(6000);
  EXPECT_TRUE(Holds("a.NC", "G0 X2"));
  EXPECT_FALSE(tabs[1].dirty);
}

TEST_F(SavesUnderWay, SaysNoMoreThatTheAutosaveFailedOnceASaveHasWorked) {
  Open("a.NC");
  platform::fileFault = Pulled;
  failing = true;
  TypeProgram(u"G0 X2");
  headless::Advance(3000);
  EXPECT_NE(std::u16string(app.statusText).find(u"Autosave failed"), std::u16string::npos);
  failing = false;
  morva::SaveAndWait();
  EXPECT_EQ(std::u16string(app.statusText), u"Saved program.");
  // Who reads it types on, and saves then.
  failing = true;
  TypeProgram(u"G0 X3");
  headless::Advance(3000);
  EXPECT_NE(std::u16string(app.statusText).find(u"Autosave failed"), std::u16string::npos);
  TypeProgram(u"G0 X4");
  failing = false;
  morva::SaveAndWait();
  EXPECT_EQ(std::u16string(app.statusText), u"Saved program.");
}

TEST_F(SavesUnderWay, SaysNoMoreThatItWaitsOnceTheDiskHasAnswered) {
  Open("a.NC");
  platform::fileFault = SlowFlush;
  TypeProgram(u"G0 X2");
  morva::SaveAndWait();
  EXPECT_EQ(Status().find(u"Waiting for the disk"), std::u16string::npos);
  EXPECT_FALSE(app.editorDirty);
}

bool ATransferRuns() {
  morva::ShowStatus(u"DNC receive armed");
  return true;
}

TEST_F(SavesUnderWay, TellsTheTransferOnceTheDiskHasAnswered) {
  morva::hooks.tellStanding = ATransferRuns;
  platform::fileFault = SlowFlush;
  morva::SaveJob job;
  job.program = PathOf("MORVA.ini");
  job.files.push_back({.path = PathOf("MORVA.ini"), .lasting = platform::Lasting::File});
  morva::HandOverSave(std::move(job));
  ASSERT_TRUE(morva::SavesUnderWay());
  EXPECT_TRUE(morva::WaitForSaves());
  EXPECT_EQ(Status(), u"DNC receive armed");
}

bool NoFolder(std::string_view kind) { return failing && kind == "folder"; }

// The words of a home that cannot be made are words of a hold like the others.
TEST_F(SavesUnderWay, SaysNoMoreThatThereIsNoFolderOnceASaveAsHasWorked) {
  platform::fileFault = NoFolder;
  failing = true;
  TypeProgram(u"G0 X2");
  headless::Advance(3000);
  ASSERT_EQ(Status(), u"Autosave failed: project directory unavailable.");
  SaveAs("new.NC");
  EXPECT_EQ(Status(), u"Saved program.");
  EXPECT_FALSE(app.editorDirty);
}

// It was told with the title that the program had.
TEST_F(SavesUnderWay, SaysNoMoreThatAProgramFailedWhichHasAnotherNameNow) {
  platform::fileFault = NoFolder;
  failing = true;
  TypeProgram(u"G0 X2");
  morva::SwitchTab(morva::OpenTab(u"", u"", u"B.NC"));
  headless::Advance(3000);
  ASSERT_EQ(Status(), u"Untitled-1.NC: Autosave failed: project directory unavailable.");
  morva::SwitchTab(0);
  SaveAs("new.NC");
  EXPECT_EQ(Status(), u"Saved program.");
}

TEST_F(SavesUnderWay, KeepsNoCopyOfAProgramWithoutChanges) {
  Open("a.NC");
  platform::fileFault = Pulled;
  failing = true;
  morva::SaveAndWait();
  headless::Advance(3000);
  EXPECT_TRUE(tabs[1].save.heldCopy.empty());
  failing = false;
}

TEST_F(SavesUnderWay, WritesTheCopyOfAHeldProgramOnlyWhenThereIsMoreToKeep) {
  Open("a.NC");
  TypeProgram(u"G0 X2");
  Put("a.NC", "G0 X999\r\n");
  headless::Advance(1000);
  morva::SwitchTab(0);
  headless::Advance(1000);
  platform::fileFault = Pulled;
  tries = 0;
  for (int i = 0; i < 10; ++i) morva::RunAutosave();
  headless::Advance(1000);
  EXPECT_EQ(tries, 0);
}

TEST_F(SavesUnderWay, TellsAFailedAutosaveOnceForOneText) {
  Open("a.NC");
  TypeProgram(u"G0 X2");
  platform::fileFault = Pulled;
  failing = true;
  headless::Advance(1000);
  EXPECT_EQ(Status(), u"Autosave failed. Changes remain unsaved; use Save As.");
  morva::ShowStatus(u"");
  headless::Advance(12000);
  EXPECT_GE(tries, 2);
  EXPECT_EQ(Status(), u"");
  TypeProgram(u"G0 X3");
  headless::Advance(1000);
  EXPECT_EQ(Status(), u"Autosave failed. Changes remain unsaved; use Save As.");
}

TEST_F(SavesUnderWay, OpensAFileWithoutWaitingForTheSaveOfAnother) {
  Open("a.NC");
  Put("c.NC", "G0 X5\r\n");
  TypeProgram(u"G0 X2");
  platform::fileFault = SlowFlush;
  EXPECT_TRUE(morva::SaveProgramCommand());
  OpenFile("c.NC");
  EXPECT_EQ(app.tabCount, 3);
  EXPECT_TRUE(morva::SavesUnderWay());
  EXPECT_TRUE(morva::WaitForSaves());
}

TEST_F(SavesUnderWay, ClosesAProgramWithoutWaitingForTheSaveOfAnother) {
  Open("a.NC");
  TypeProgram(u"G0 X2");
  platform::fileFault = SlowFlush;
  EXPECT_TRUE(morva::SaveProgramCommand());
  morva::SwitchTab(0);
  morva::CloseProgram();
  EXPECT_EQ(app.tabCount, 1);
  EXPECT_TRUE(morva::SavesUnderWay());
  EXPECT_TRUE(morva::WaitForSaves());
}

TEST_F(SavesUnderWay, ShowsTheTabOfAFileThatASaveAsIsStillWriting) {
  Open("a.NC");
  Put("b.NC", "G0 X8\r\n");
  TypeProgram(u"G0 X2");
  platform::fileFault = SlowFlush;
  SaveAs("b.NC");
  morva::SwitchTab(0);
  OpenFile("b.NC");
  EXPECT_EQ(app.tabCount, 2);
  EXPECT_EQ(app.activeTab, 1);
}

TEST_F(SavesUnderWay, BringsUpNoBoxWhenNobodyIsThereToAnswer) {
  Open("a.NC");
  TypeProgram(u"G0 X2");
  platform::fileFault = [](std::string_view kind) {
    SlowFlush(kind);
    return kind == "rename";
  };
  EXPECT_TRUE(morva::SaveProgramCommand());
  morva::SaveWithoutBoxes();
  EXPECT_TRUE(morva::WaitForSaves());
  EXPECT_EQ(headless::TakeBoxes().size(), 0u);
  EXPECT_TRUE(morva::IsTouched(tabs[1]));
}

// --- Insertions that find no room tell no success.

struct FullProgram : public SavesUnderWay {
  // Leaves room for 50 units, each of which counts as two bytes.
  void OpenFull() const {
    std::string text(33554432 - 100, 'G');
    for (std::size_t i = 98; i + 1 < text.size(); i += 100) text.replace(i, 2, "\r\n");
    Put("a.NC", text);
    OpenFile("a.NC");
    headless::Advance(1000);
    headless::TakeBoxes();
  }
};

TEST_F(FullProgram, AnswersWhetherATextWasInserted) {
  OpenFull();
  EXPECT_FALSE(morva::InsertTextAtCaret(std::u16string(200, u'X'), true));
  EXPECT_TRUE(morva::InsertTextAtCaret(u"G4", true));
  EXPECT_FALSE(morva::InsertTextAtCaret(u"", true));
}

// --- Loading again keeps the user's version first.

struct LoadsAgain : public SavesUnderWay {
  void ChangeElsewhere() const {
    Open("a.NC");
    Put("a.NC", "G0 X999\r\n");
    TypeProgram(u"G0 X2");
  }
};

TEST_F(LoadsAgain, TellsThatTheUsersVersionIsKeptWhenItIs) {
  ChangeElsewhere();
  platform::fileFault = SlowFlush;
  EXPECT_TRUE(morva::LoadAgain());
  const std::vector<std::string> kept = support::NamesIn(folder / "Documents/MORVA/Recovery");
  ASSERT_FALSE(kept.empty());
  EXPECT_FALSE(morva::SavesUnderWay());
  EXPECT_NE(Output().find(u"Your version is kept in"), std::u16string::npos);
  EXPECT_EQ(Text(), u"G0 X999\r\n");
}

TEST_F(LoadsAgain, AsksBeforeItLoadsOverAVersionThatCouldNotBeKept) {
  ChangeElsewhere();
  platform::fileFault = Pulled;
  failing = true;
  headless::QueueAnswer(BoxAnswer::No);
  EXPECT_FALSE(morva::LoadAgain());
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_NE(boxes[0].text.find(u"could not be kept"), std::u16string::npos);
  EXPECT_NE(Text().find(u"G0 X2"), std::u16string::npos);
  EXPECT_EQ(Output().find(u"is kept in"), std::u16string::npos);
  EXPECT_EQ(Status().find(u"Autosave failed"), std::u16string::npos);
  headless::QueueAnswer(BoxAnswer::Yes);
  EXPECT_TRUE(morva::LoadAgain());
  EXPECT_EQ(Text(), u"G0 X999\r\n");
  EXPECT_EQ(Output().find(u"is kept in"), std::u16string::npos);
}

}  // namespace
