// Files that change beneath the programs, and texts that a file cannot hold.

#include "documents/disk_watch.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "documents/autosave.h"
#include "documents/disabled_code.h"
#include "documents/file_text.h"
#include "documents/insertion.h"
#include "documents/save_state.h"
#include "documents/saver.h"
#include "documents/saving.h"
#include "documents/tab_models.h"
#include "platform/clock.h"
#include "platform/common/faults.h"
#include "platform/post.h"
#include "platform/timer.h"
#include "support/program_stage.h"

namespace {

using morva::app;
using morva::tabs;
using platform::BoxAnswer;

constexpr char16_t kNotSaved[] =
    u"Changed on disk by another program. Not saved; use Save or Open again.";

struct Disk : public support::ProgramStage {
  ~Disk() override { platform::fileFault = nullptr; }
  // A program of two lines, opened, its markers set.
  void OpenProgram() const {
    Put("a.NC", "G0 X1\r\n");
    OpenFile("a.NC");
    headless::Advance(2000);
    headless::TakeBoxes();
  }
  // Another program writes the file; the time of the file is another one for certain.
  void WriteElsewhere(std::string_view text) const {
    const auto before = support::fs::last_write_time(folder / "a.NC");
    Put("a.NC", text);
    support::fs::last_write_time(folder / "a.NC", before + std::chrono::seconds(2));
  }
  // The program in the second tab is what no file holds: dirty, held, and kept in "Recovery".
  void ExpectOnlyVersion(std::u16string_view text) const {
    headless::Advance(100);
    EXPECT_EQ(Text(), text);
    EXPECT_TRUE(morva::IsTouched(tabs[1]));
    EXPECT_TRUE(tabs[1].dirty);
    EXPECT_EQ(Status(), kNotSaved);
    const support::fs::path recovery = folder / "Documents/MORVA/Recovery";
    const std::vector<std::string> kept = support::NamesIn(recovery);
    ASSERT_EQ(kept.size(), 2u);  // and the code of excluded blocks
    EXPECT_EQ(support::Wide(support::ReadRaw(recovery / kept[0])), text);
  }
  static std::vector<std::u16string> BoxTitles() {
    std::vector<std::u16string> titles;
    for (const headless::BoxRecord& box : headless::TakeBoxes()) titles.push_back(box.title);
    return titles;
  }
};

using Titles = std::vector<std::u16string>;
const Titles kAsked = {u"Changed on Disk"};

TEST_F(Disk, LeavesAProgramAloneThatNobodyTouched) {
  OpenProgram();
  // The markers show the mark, and nothing writes them by itself.
  EXPECT_TRUE(app.editorDirty);
  const auto time = support::fs::last_write_time(folder / "a.NC");
  headless::Advance(60000);
  morva::SwitchTab(0);
  morva::SwitchTab(1);
  morva::RunAutosave();
  morva::CloseProgram();
  EXPECT_EQ(Raw("a.NC"), "G0 X1\r\n");
  EXPECT_EQ(support::fs::last_write_time(folder / "a.NC"), time);
  EXPECT_EQ(support::NamesIn(folder), (std::vector<std::string>{"Documents", "a.NC", "bin"}));
  EXPECT_EQ(BoxTitles(), Titles());
}

TEST_F(Disk, WritesTheMarkersWithTheUsersFirstChangeAndWithSave) {
  OpenProgram();
  EXPECT_TRUE(morva::SaveProgramCommand());
  EXPECT_NE(Raw("a.NC").find("(MORVA "), std::string::npos);
  EXPECT_FALSE(app.editorDirty);
  TypeProgram(u"G0 X2");
  headless::Advance(700);
  EXPECT_NE(Raw("a.NC").find("G0 X2"), std::string::npos);
}

TEST_F(Disk, AutosavesNothingOverAFileThatChangedAndSaysSoOnce) {
  OpenProgram();
  WriteElsewhere("G0 X9\r\n");
  TypeProgram(u"G0 X2");
  headless::Advance(700);
  EXPECT_EQ(Raw("a.NC"), "G0 X9\r\n");
  EXPECT_EQ(Status(), kNotSaved);
  EXPECT_TRUE(app.editorDirty);
  morva::ShowStatus(u"");
  TypeProgram(u"G0 X3");
  headless::Advance(700);
  EXPECT_EQ(Status(), u"");
  EXPECT_EQ(Raw("a.NC"), "G0 X9\r\n");
}

TEST_F(Disk, SaveAsksBeforeItWritesOverAFileThatChanged) {
  OpenProgram();
  WriteElsewhere("G0 X9\r\n");
  TypeProgram(u"G0 X2");
  headless::QueueAnswer(BoxAnswer::Cancel);
  EXPECT_FALSE(morva::SaveProgramCommand());
  EXPECT_EQ(BoxTitles(), kAsked);
  EXPECT_EQ(Raw("a.NC"), "G0 X9\r\n");
  headless::QueueAnswer(BoxAnswer::Yes);
  EXPECT_TRUE(morva::SaveProgramCommand());
  EXPECT_EQ(BoxTitles(), kAsked);
  EXPECT_NE(Raw("a.NC").find("G0 X2"), std::string::npos);
  // The question is settled.
  TypeProgram(u"G0 X4");
  EXPECT_TRUE(morva::SaveProgramCommand());
  EXPECT_EQ(BoxTitles(), Titles());
}

// Words without a name are of the program that is shown.
TEST_F(Disk, TellsAHoldOfAProgramThatIsNotShownWithItsName) {
  OpenProgram();
  WriteElsewhere("G0 X9\r\n");
  TypeProgram(u"G0 X2");
  headless::Advance(700);
  ASSERT_EQ(Status(), kNotSaved);
  morva::SwitchTab(0);
  EXPECT_EQ(Status(), u"a.NC: " + std::u16string(kNotSaved));
  morva::SwitchTab(1);
  EXPECT_EQ(Status(), kNotSaved);
  morva::NewProgram();
  EXPECT_EQ(Status(), u"a.NC: " + std::u16string(kNotSaved));
  morva::SwitchTab(1);
  EXPECT_EQ(Status(), kNotSaved);
  headless::QueueAnswer(BoxAnswer::No);
  morva::CloseProgram();
  ASSERT_EQ(app.tabCount, 2);
  EXPECT_EQ(Status(), morva::kReadyWords);
}

// "State: Modified" in the panel must not stand beside "Project autosaved." of another program.
TEST_F(Disk, TellsTheHoldAgainWhereTheProgramComesBack) {
  OpenProgram();
  WriteElsewhere("G0 X9\r\n");
  TypeProgram(u"G0 X2");
  headless::Advance(700);
  morva::SwitchTab(0);
  TypeProgram(u"G0 X5");
  headless::Advance(2000);
  ASSERT_EQ(Status(), u"Project autosaved.");
  morva::SwitchTab(1);
  EXPECT_EQ(Status(), kNotSaved);
  EXPECT_NE(TextOf(3208).find(u"State: Modified"), std::u16string::npos);
}

// As little where nothing is held.
TEST_F(Disk, TellsASaveOfAProgramThatIsNotShownWithItsName) {
  OpenProgram();
  TypeProgram(u"G0 X2");
  headless::Advance(2000);
  ASSERT_EQ(Status(), u"Project autosaved.");
  morva::SwitchTab(0);
  EXPECT_EQ(Status(), u"a.NC: Project autosaved.");
  morva::SwitchTab(1);
  TypeProgram(u"G0 X3");
  headless::Advance(2000);
  ASSERT_EQ(Status(), u"Project autosaved.");
  Put("b.NC", "G0 X1\r\n");
  OpenFile("b.NC");
  headless::Advance(2000);
  EXPECT_NE(TextOf(3208).find(u"State: Modified"), std::u16string::npos);
  EXPECT_NE(Status(), u"Project autosaved.");
}

bool SlowFlush(std::string_view kind) {
  if (kind == "flush") platform::SleepMilliseconds(300);
  return false;
}

// The user did not wait for the disk.
TEST_F(Disk, TellsThatAHeldProgramIsSavedBehindAnotherTabToo) {
  OpenProgram();
  WriteElsewhere("G0 X9\r\n");
  TypeProgram(u"G0 X2");
  headless::Advance(700);
  ASSERT_EQ(Status(), kNotSaved);
  platform::fileFault = SlowFlush;
  headless::QueueAnswer(BoxAnswer::Yes);
  EXPECT_TRUE(morva::SaveProgramCommand());
  morva::SwitchTab(0);
  headless::Advance(4000);
  EXPECT_FALSE(tabs[1].dirty);
  EXPECT_EQ(Status(), u"a.NC: Saved program.");
}

TEST_F(Disk, SaveAllCountsAProgramThatWasLoadedAgainAsSettled) {
  OpenProgram();
  WriteElsewhere("G0 X9\r\n");
  TypeProgram(u"G0 X2");
  Put("b.NC", "G0 X1\r\n");
  OpenFile("b.NC");
  TypeProgram(u"G0 X3");
  morva::SetDirtyMark(&tabs[2], true);
  headless::QueueAnswer(BoxAnswer::No);  // "Load again"
  morva::SaveAll();
  EXPECT_NE(Output().find(u"Save All complete."), std::u16string::npos);
  EXPECT_EQ(Output().find(u"some programs remain unsaved"), std::u16string::npos);
  for (int i = 0; i < app.tabCount; ++i) EXPECT_FALSE(tabs[i].dirty) << i;
  EXPECT_NE(Raw("b.NC").find("G0 X3"), std::string::npos);
}

// Nothing of the user's is replaced where he has typed nothing.
TEST_F(Disk, SaveOfAnUntouchedProgramPromisesNoCopy) {
  OpenProgram();
  WriteElsewhere("G0 X9\r\n");
  headless::QueueAnswer(BoxAnswer::Cancel);
  EXPECT_FALSE(morva::SaveProgramCommand());
  auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].text.find(u"Recovery"), std::u16string::npos);
  TypeProgram(u"G0 X2");
  headless::QueueAnswer(BoxAnswer::Cancel);
  EXPECT_FALSE(morva::SaveProgramCommand());
  boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_NE(boxes[0].text.find(u"Recovery"), std::u16string::npos);
}

// The status line names it as the way out.
TEST_F(Disk, OpenOfAHeldFileAsksWhatToDoWithIt) {
  OpenProgram();
  WriteElsewhere("G0 X9\r\n");
  TypeProgram(u"G0 X2");
  headless::Advance(700);
  EXPECT_EQ(Status(), kNotSaved);
  headless::QueueAnswer(BoxAnswer::No);
  OpenFile("a.NC");
  EXPECT_EQ(BoxTitles(), kAsked);
  EXPECT_EQ(Text(), u"G0 X9\r\n");
  OpenFile("a.NC");
  EXPECT_EQ(BoxTitles(), Titles());
}

// Nothing of the user's is at stake: loading is offered, once.
TEST_F(Disk, OpenOfTheShownFileThatChangedOffersToLoadItOnce) {
  OpenProgram();
  WriteElsewhere("G0 X9\r\n");
  headless::QueueAnswer(BoxAnswer::No);
  OpenFile("a.NC");
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_NE(boxes[0].text.find(u"Load it again?"), std::u16string::npos);
  EXPECT_EQ(boxes[0].text.find(u"Write over"), std::u16string::npos);
  EXPECT_EQ(Text().find(u"X9"), std::u16string::npos);
  morva::WatchDisk();  // the window comes to the front behind the dialog
  EXPECT_TRUE(headless::TakeBoxes().empty());
  // Asked for once more, it is offered once more.
  headless::QueueAnswer(BoxAnswer::Yes);
  OpenFile("a.NC");
  EXPECT_EQ(Text(), u"G0 X9\r\n");
}

// What no file holds any more counts as changed: it has a copy, and closing asks.
TEST_F(Disk, KeepsWhatIsShownBehindNoToLoadingAgain) {
  OpenProgram();
  TypeProgram(u"G0 X2");
  headless::Advance(700);
  ASSERT_EQ(Status(), u"Project autosaved.");
  ASSERT_FALSE(morva::IsTouched(tabs[1]));
  const std::u16string mine = Text();
  WriteElsewhere("G0 X9\r\n");
  headless::QueueAnswer(BoxAnswer::No);
  morva::WatchDisk();
  EXPECT_EQ(BoxTitles(), kAsked);
  ExpectOnlyVersion(mine);
  headless::QueueAnswer(BoxAnswer::Cancel);
  morva::CloseProgram();
  EXPECT_EQ(BoxTitles().size(), 1u);
  EXPECT_EQ(Raw("a.NC"), "G0 X9\r\n");
}

TEST_F(Disk, KeepsWhatIsShownBehindCancelOfASave) {
  OpenProgram();
  const std::u16string mine = Text();
  WriteElsewhere("G0 X9\r\n");
  headless::QueueAnswer(BoxAnswer::Cancel);
  EXPECT_FALSE(morva::SaveProgramCommand());
  EXPECT_EQ(BoxTitles(), kAsked);
  ExpectOnlyVersion(mine);
}

TEST_F(Disk, KeepsWhatIsShownWhereTheOtherFileCannotBeLoaded) {
  OpenProgram();
  const std::u16string mine = Text();
  WriteElsewhere(std::string("G0 X9\r\n\0\r\nG0 X8\r\n", 18));
  headless::QueueAnswer(BoxAnswer::Yes);
  morva::WatchDisk();
  EXPECT_EQ(BoxTitles(), (Titles{u"Changed on Disk", u"Open Error"}));
  ExpectOnlyVersion(mine);
}

TEST_F(Disk, OpenFromAnotherTabAsksOnceAboutAFileThatChanged) {
  OpenProgram();
  WriteElsewhere("G0 X9\r\n");
  morva::SwitchTab(0);
  OpenFile("a.NC");
  EXPECT_EQ(BoxTitles(), kAsked);
}

TEST_F(Disk, SaveOffersAnotherNameForTheTextOfAFileThatChanged) {
  OpenProgram();
  WriteElsewhere("G0 X9\r\n");
  TypeProgram(u"G0 X2");
  headless::QueueAnswer(BoxAnswer::Other);
  headless::QueueFile(PathOf("mine.NC"));
  EXPECT_TRUE(morva::SaveProgramCommand());
  EXPECT_EQ(Raw("a.NC"), "G0 X9\r\n");
  EXPECT_NE(Raw("mine.NC").find("G0 X2"), std::string::npos);
  EXPECT_EQ(std::u16string(tabs[1].path), PathOf("mine.NC"));
}

TEST_F(Disk, LoadsAFileAgainAsOneUndoStep) {
  OpenProgram();
  WriteElsewhere("G0 X9\r\n");
  TypeProgram(u"G0 X2");
  const std::u16string mine = Text();
  headless::QueueAnswer(BoxAnswer::No);
  EXPECT_FALSE(morva::SaveProgramCommand());
  EXPECT_EQ(Text(), u"G0 X9\r\n");
  EXPECT_FALSE(morva::IsTouched(tabs[1]));
  EXPECT_TRUE(headless::EditorUndo(morva::kIdEditor));
  EXPECT_EQ(Text(), mine);
}

TEST_F(Disk, KeepsTheUsersVersionWithAllItsFilesBeforeItLoadsAnother) {
  OpenProgram();
  morva::KeepExcludedCode(tabs[1], u"G1 mine");
  TypeProgram(u"G0 X2");
  EXPECT_TRUE(morva::SaveProgramCommand());
  // The other one excluded a block too, under the same number, and another one.
  morva::DisabledCodeEntry* theirs = nullptr;
  morva::AddDisabledCode(theirs, u"G1 theirs");
  morva::AddDisabledCode(theirs, u"G1 second");
  std::string image;
  ASSERT_TRUE(morva::WriteDisabledCode(theirs, image));
  morva::FreeDisabledCode(theirs);
  Put("a.NC.features", image);
  WriteElsewhere("(MORVA TEXT 1)\r\n(MORVA DISABLED 1)\r\n(MORVA END 1)\r\n");
  TypeProgram(u"G0 X3");
  const std::u16string mineText = Text();
  headless::QueueAnswer(BoxAnswer::No);
  EXPECT_FALSE(morva::SaveProgramCommand());
  // An Undo brings the text back that names the first number; theirs has another one.
  ASSERT_NE(morva::FindDisabledCode(tabs[1].disabledCode, 3), nullptr);
  EXPECT_EQ(morva::FindDisabledCode(tabs[1].disabledCode, 1)->text, u"G1 mine");
  EXPECT_EQ(morva::FindDisabledCode(tabs[1].disabledCode, 2)->text, u"G1 second");
  EXPECT_EQ(morva::FindDisabledCode(tabs[1].disabledCode, 3)->text, u"G1 theirs");
  EXPECT_NE(Text().find(u"(MORVA DISABLED 3)\r\n(MORVA END 1)"), std::u16string::npos);
  EXPECT_TRUE(headless::EditorUndo(morva::kIdEditor));
  EXPECT_EQ(Text(), mineText);
  const support::fs::path recovery = folder / "Documents/MORVA/Recovery";
  const std::vector<std::string> kept = support::NamesIn(recovery);
  ASSERT_EQ(kept.size(), 2u);
  EXPECT_NE(support::ReadRaw(recovery / kept[0]).find("G0 X3"), std::string::npos);
  morva::DisabledCodeEntry* mine = nullptr;
  ASSERT_TRUE(morva::ReadDisabledCode(support::ReadRaw(recovery / kept[1]), mine));
  EXPECT_EQ(morva::FindDisabledCode(mine, 1)->text, u"G1 mine");
  morva::FreeDisabledCode(mine);
  EXPECT_NE(Output().find(support::Wide(kept[0])), std::u16string::npos);
}

TEST_F(Disk, LoadsNoFileAgainThatHoldsNulsBetweenItsLines) {
  OpenProgram();
  const std::u16string before = Text();
  WriteElsewhere(std::string_view("G0\0X9\r\n", 8));
  headless::QueueAnswer(BoxAnswer::Yes);
  morva::WatchDisk();
  EXPECT_EQ(BoxTitles(), (Titles{u"Changed on Disk", u"Open Error"}));
  EXPECT_EQ(Text(), before);
  EXPECT_NE(
      Output().find(u"Not loaded again: " + PathOf("a.NC") + u"  (it holds NUL characters)\r\n"),
      std::u16string::npos);
}

TEST_F(Disk, SaysThatAFileHasGrownTooLargeToBeLoadedAgain) {
  OpenProgram();
  support::fs::resize_file(folder / "a.NC", 33554433);
  headless::QueueAnswer(BoxAnswer::Yes);
  morva::WatchDisk();
  EXPECT_EQ(BoxTitles(), (Titles{u"Changed on Disk", u"Open Error"}));
  EXPECT_NE(Output().find(u"Not loaded again: " + PathOf("a.NC") +
                          u"  (33554433 bytes; the limit is 33554432, 32 MiB)\r\n"),
            std::u16string::npos);
}

TEST_F(Disk, OffersAnUntouchedProgramForLoadingWhenTheWindowComesToTheFront) {
  OpenProgram();
  WriteElsewhere("G0 X9\r\n");
  headless::QueueAnswer(BoxAnswer::Yes);
  morva::WatchDisk();
  EXPECT_EQ(BoxTitles(), kAsked);
  EXPECT_EQ(Text(), u"G0 X9\r\n");
  morva::WatchDisk();
  EXPECT_EQ(BoxTitles(), Titles());
}

TEST_F(Disk, AsksOnceAboutOneStateOfAFile) {
  OpenProgram();
  WriteElsewhere("G0 X9\r\n");
  headless::QueueAnswer(BoxAnswer::No);
  morva::WatchDisk();
  morva::WatchDisk();
  EXPECT_EQ(BoxTitles(), kAsked);
  WriteElsewhere("G0 X10\r\n");
  morva::WatchDisk();
  EXPECT_EQ(BoxTitles(), kAsked);
  // What was refused is still another program's.
  TypeProgram(u"G0 X2");
  headless::Advance(700);
  EXPECT_EQ(Raw("a.NC"), "G0 X10\r\n");
}

// Another window excludes one block and then another.
TEST_F(Disk, AsksAgainWhereWhatStandsBesideTheProgramChanges) {
  OpenProgram();
  Put("a.NC.features", std::string("MVC1\1\0\0\0\1\0\0\0\2\0\0\0G\0001\0", 20));
  for (const bool asks : {true, false}) {
    headless::QueueAnswer(BoxAnswer::No);
    morva::WatchDisk();
    EXPECT_EQ(BoxTitles().size(), asks ? 1u : 0u);
  }
  Put("a.NC.features", std::string("MVC1\1\0\0\0\1\0\0\0\4\0\0\0G\0001\0X\0", 22));
  morva::WatchDisk();
  EXPECT_EQ(BoxTitles().size(), 1u);
}

TEST_F(Disk, SaysOnceThatATouchedProgramStandsOverAChangedFile) {
  OpenProgram();
  TypeProgram(u"G0 X2");
  WriteElsewhere("G0 X9\r\n");
  morva::WatchDisk();
  EXPECT_EQ(BoxTitles(), Titles());
  EXPECT_EQ(Status(), kNotSaved);
}

TEST_F(Disk, TakesAFileThatWasOnlyTouchedForTheSame) {
  OpenProgram();
  WriteElsewhere("G0 X1\r\n");
  morva::WatchDisk();
  EXPECT_EQ(BoxTitles(), Titles());
  TypeProgram(u"G0 X2");
  headless::Advance(700);
  EXPECT_NE(Raw("a.NC").find("G0 X2"), std::string::npos);
}

TEST_F(Disk, WritesAFileAnewThatSomebodyRemoved) {
  OpenProgram();
  support::fs::remove(folder / "a.NC");
  TypeProgram(u"G0 X2");
  headless::Advance(700);
  EXPECT_NE(Raw("a.NC").find("G0 X2"), std::string::npos);
  EXPECT_EQ(BoxTitles(), Titles());
}

// Its tab is the last that is left of it.
TEST_F(Disk, AsksBeforeAProgramIsClosedWhoseFileWasErased) {
  OpenProgram();
  support::fs::remove(folder / "a.NC");
  headless::QueueAnswer(BoxAnswer::Cancel);
  morva::CloseProgram();
  EXPECT_EQ(BoxTitles(), (Titles{u"Close Program"}));
  ASSERT_EQ(app.tabCount, 2);
  headless::QueueAnswer(BoxAnswer::Yes);
  morva::CloseProgram();
  EXPECT_EQ(app.tabCount, 1);
  EXPECT_NE(Raw("a.NC").find("G0 X1"), std::string::npos);
}

// Another program saves by erasing and writing, and writes while this save is under way.
TEST_F(Disk, WritesOverNoFileThatCameBackWhileASaveWasUnderWay) {
  OpenProgram();
  TypeProgram(u"G0 X2");
  support::fs::remove(folder / "a.NC");
  static const support::fs::path file = folder / "a.NC";
  static bool came;
  came = false;
  platform::fileFault = [](std::string_view kind) {
    if (kind == "flush" && !came) {
      came = true;
      support::WriteRaw(file, "G0 X9\r\n");
    }
    return false;
  };
  morva::RunAutosave();
  headless::Advance(100);
  ASSERT_TRUE(came);
  EXPECT_EQ(Raw("a.NC"), "G0 X9\r\n");
  EXPECT_EQ(Status(), kNotSaved);
  EXPECT_TRUE(app.editorDirty);
}

// The log offers the copy to look at, so that the user may work in it.
TEST_F(Disk, LeavesACopyAloneThatIsOpen) {
  OpenProgram();
  WriteElsewhere("G0 X9\r\n");
  TypeProgram(u"G0 X2");
  headless::Advance(800);
  const support::fs::path recovery = folder / "Documents/MORVA/Recovery";
  const auto copies = [&recovery] {
    std::vector<std::string> names;
    for (const std::string& name : support::NamesIn(recovery)) {
      if (name.ends_with(".NC")) names.push_back(name);
    }
    return names;
  };
  ASSERT_EQ(copies().size(), 1u);
  const std::string copy = copies()[0];
  OpenFile("Documents/MORVA/Recovery/" + copy);
  TypeProgram(u"G0 X777");
  headless::Advance(1500);
  ASSERT_NE(support::ReadRaw(recovery / copy).find("X777"), std::string::npos);
  // What is typed in the program that is held goes into another copy.
  morva::SwitchTab(1);
  TypeProgram(u"G0 X3");
  headless::Advance(1500);
  EXPECT_NE(support::ReadRaw(recovery / copy).find("X777"), std::string::npos);
  ASSERT_EQ(copies().size(), 2u);
  // Saved, it needs no copy; the one that is open stays.
  headless::QueueAnswer(BoxAnswer::Yes);
  EXPECT_TRUE(morva::SaveProgramCommand());
  headless::Advance(1500);
  EXPECT_EQ(copies(), std::vector<std::string>{copy});
  EXPECT_NE(support::ReadRaw(recovery / copy).find("X777"), std::string::npos);
}

TEST_F(Disk, ErasesNoCopyThatIsOpen) {
  OpenProgram();
  WriteElsewhere("G0 X9\r\n");
  TypeProgram(u"G0 X2");
  headless::Advance(800);
  const support::fs::path recovery = folder / "Documents/MORVA/Recovery";
  const auto copies = [&recovery] {
    std::vector<std::string> names;
    for (const std::string& name : support::NamesIn(recovery)) {
      if (name.ends_with(".NC")) names.push_back(name);
    }
    return names;
  };
  ASSERT_EQ(copies().size(), 1u);
  const std::string copy = copies()[0];
  OpenFile("Documents/MORVA/Recovery/" + copy);
  TypeProgram(u"G0 X777");
  headless::Advance(1500);
  ASSERT_NE(support::ReadRaw(recovery / copy).find("X777"), std::string::npos);
  morva::SwitchTab(1);
  // Saved, it needs no copy; the one that is open stays.
  headless::QueueAnswer(BoxAnswer::Yes);
  EXPECT_TRUE(morva::SaveProgramCommand());
  headless::Advance(1500);
  EXPECT_EQ(copies(), std::vector<std::string>{copy});
  EXPECT_NE(support::ReadRaw(recovery / copy).find("X777"), std::string::npos);
}

TEST_F(Disk, AsksAnewAboutCharactersOfATextThatWasLoaded) {
  OpenProgram();
  TypeProgram(u"(\u00D8 5)");
  headless::QueueAnswer(BoxAnswer::Yes);
  EXPECT_TRUE(morva::SaveProgramCommand());
  headless::Advance(100);
  WriteElsewhere("(\xC3\x98 6)\r\n");
  headless::QueueAnswer(BoxAnswer::Yes);
  OpenFile("a.NC");
  ASSERT_NE(Text().find(u"\u00D8 6"), std::u16string::npos);
  headless::EditorInsert(morva::kIdEditor, u"G0 ");
  headless::Advance(1500);
  EXPECT_EQ(Raw("a.NC"), "(\xC3\x98 6)\r\n");
}

TEST_F(Disk, NoticesAFileThatWasReplacedByAnotherOne) {
  OpenProgram();
  Put("fresh", "G0 X9\r\n");
  support::fs::rename(folder / "fresh", folder / "a.NC");
  TypeProgram(u"G0 X2");
  headless::Advance(700);
  EXPECT_EQ(Raw("a.NC"), "G0 X9\r\n");
  EXPECT_EQ(Status(), kNotSaved);
}

TEST_F(Disk, LooksAtAFileWhenItsTabComesToTheFront) {
  OpenProgram();
  morva::SwitchTab(0);
  WriteElsewhere("G0 X9\r\n");
  headless::QueueAnswer(BoxAnswer::Yes);
  morva::SwitchTab(1);
  EXPECT_EQ(BoxTitles(), kAsked);
  EXPECT_EQ(Text(), u"G0 X9\r\n");
}

// --- Characters that the file cannot hold.

TEST_F(Disk, AsksOnceBeforeCharactersAreLost) {
  OpenProgram();
  TypeProgram(u"G0\r\n(\u00D8 5 \u00E9)");
  headless::QueueAnswer(BoxAnswer::No);
  EXPECT_FALSE(morva::SaveProgramCommand());
  auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].text,
            u"a.NC holds characters that the file cannot hold: 2, the first in line 2. Each is "
            u"written as \"?\".\r\n\r\nSave it so?");
  EXPECT_EQ(Raw("a.NC"), "G0 X1\r\n");
  headless::QueueAnswer(BoxAnswer::Yes);
  EXPECT_TRUE(morva::SaveProgramCommand());
  EXPECT_EQ(headless::TakeBoxes().size(), 1u);
  TypeProgram(u"G0\r\n(\u00D8 6)");
  headless::Advance(700);
  EXPECT_NE(Raw("a.NC").find("(? 6)"), std::string::npos);
}

TEST_F(Disk, AutosavesNothingThatWouldLoseCharactersUnasked) {
  OpenProgram();
  TypeProgram(u"(\u00D8 5)");
  headless::Advance(700);
  EXPECT_EQ(Raw("a.NC"), "G0 X1\r\n");
  EXPECT_EQ(Status(), u"Not autosaved: the file cannot hold some of the characters. Use Save.");
  morva::ShowStatus(u"");
  TypeProgram(u"(\u00D8 55)");
  headless::Advance(700);
  EXPECT_EQ(Status(), u"");
  // Without the character nothing is lost.
  TypeProgram(u"(D 5)");
  headless::Advance(700);
  EXPECT_NE(Raw("a.NC").find("(D 5)"), std::string::npos);
}

const Titles kAskedOfBoth = {u"Changed on Disk", u"Save"};

TEST_F(Disk, AsksAboutCharactersBeforeOpenWritesOverAFileThatChanged) {
  OpenProgram();
  TypeProgram(u"(\u00D8 5)");
  headless::Advance(700);
  WriteElsewhere("G0 X9\r\n");
  headless::QueueAnswer(BoxAnswer::Yes);
  headless::QueueAnswer(BoxAnswer::No);
  OpenFile("a.NC");
  EXPECT_EQ(BoxTitles(), kAskedOfBoth);
  EXPECT_EQ(Raw("a.NC"), "G0 X9\r\n");
  EXPECT_NE(Text().find(u"(\u00D8 5)"), std::u16string::npos);
  headless::QueueAnswer(BoxAnswer::Yes);
  headless::QueueAnswer(BoxAnswer::Yes);
  OpenFile("a.NC");
  EXPECT_EQ(BoxTitles(), kAskedOfBoth);
  EXPECT_NE(Raw("a.NC").find("(? 5)"), std::string::npos);
}

// The file changes between the question of the save and its writing, and the user types on.
TEST_F(Disk, AsksAboutCharactersThatWereTypedWhileASaveFoundItsFileChanged) {
  OpenProgram();
  TypeProgram(u"G0 X2");
  platform::fileFault = SlowFlush;
  ASSERT_TRUE(morva::SaveProgramCommand());
  TypeProgram(u"(\u00D8 5)");
  WriteElsewhere("G0 X9\r\n");
  headless::QueueAnswer(BoxAnswer::Yes);
  headless::QueueAnswer(BoxAnswer::No);
  headless::Advance(5000);
  EXPECT_EQ(BoxTitles(), kAskedOfBoth);
  EXPECT_EQ(Raw("a.NC"), "G0 X9\r\n");
}

TEST_F(Disk, AsksOnceAboutCharactersWhereSaveFindsTheFileChanged) {
  OpenProgram();
  WriteElsewhere("G0 X9\r\n");
  TypeProgram(u"(\u00D8 5)");
  headless::QueueAnswer(BoxAnswer::Yes);
  headless::QueueAnswer(BoxAnswer::Yes);
  EXPECT_TRUE(morva::SaveProgramCommand());
  EXPECT_EQ(BoxTitles(), (Titles{u"Save", u"Changed on Disk"}));
  EXPECT_NE(Raw("a.NC").find("(? 5)"), std::string::npos);
}

// --- Texts that grow beyond what can be opened.

TEST_F(Disk, WritesNoFileUnaskedThatCouldNotBeOpenedAgain) {
  // With LF a file of the greatest size; with CR LF it is larger.
  std::string text(33554429, 'G');
  for (std::size_t i = 99; i < text.size(); i += 100) text[i] = '\n';
  Put("a.NC", text + "\n");
  OpenFile("a.NC");
  ASSERT_EQ(app.tabCount, 2);
  headless::EditorInsert(morva::kIdEditor, u"1");
  morva::RunAutosave();
  EXPECT_EQ(Raw("a.NC").size(), 33554430u);
  EXPECT_EQ(Status(), u"Not autosaved: the file would be too large to be opened again. Use Save.");
  headless::QueueAnswer(BoxAnswer::No);
  EXPECT_FALSE(morva::SaveProgramCommand());
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_NE(boxes[0].text.find(u"33554432"), std::u16string::npos);
  EXPECT_EQ(Raw("a.NC").size(), 33554430u);
}

TEST_F(Disk, MakesNoTextThatCouldNotBeOpenedAgain) {
  std::string text(33554432 - 100, 'G');
  for (std::size_t i = 98; i + 1 < text.size(); i += 100) text.replace(i, 2, "\r\n");
  Put("a.NC", text);
  OpenFile("a.NC");
  headless::Advance(1000);
  // Not even markers find room.
  EXPECT_EQ(Text().find(u"(MORVA"), std::u16string::npos);
  const std::u16string before = Text();
  headless::TakeBoxes();
  morva::InsertTextAtCaret(std::u16string(200, u'X'), true);
  EXPECT_EQ(BoxTitles(), Titles{u"Insert"});
  EXPECT_EQ(Text(), before);
  morva::InsertTextAtCaret(u"G4", true);
  EXPECT_EQ(BoxTitles(), Titles());
}

// --- The pace of the autosave, and a disk that takes its time.

TEST_F(Disk, SavesSteadyTypingWithinFiveSeconds) {
  OpenProgram();
  const std::uint64_t start = platform::TickMilliseconds();
  int keys = 0;
  while (Raw("a.NC") == "G0 X1\r\n" && keys < 100) {
    headless::EditorInsert(morva::kIdEditor, u"1");
    headless::Advance(400);
    ++keys;
  }
  EXPECT_LE(platform::TickMilliseconds() - start, 5000u + 400u);
  EXPECT_GE(platform::TickMilliseconds() - start, 4000u);
}

TEST_F(Disk, TellsASaveWhenItIsTrue) {
  OpenProgram();
  TypeProgram(u"G0 X2");
  platform::fileFault = SlowFlush;
  const std::uint64_t start = platform::TickMilliseconds();
  EXPECT_TRUE(morva::SaveProgramCommand());
  // The window's thread has not waited; nothing is told yet.
  EXPECT_EQ(platform::TickMilliseconds(), start);
  EXPECT_TRUE(morva::SavesUnderWay());
  EXPECT_TRUE(app.editorDirty);
  EXPECT_EQ(Output().find(u"Saved program."), std::u16string::npos);
  headless::Advance(2000);
  EXPECT_FALSE(morva::SavesUnderWay());
  EXPECT_FALSE(app.editorDirty);
  EXPECT_NE(Output().find(u"Saved program."), std::u16string::npos);
}

TEST_F(Disk, KeepsTheMarkOnWhatWasTypedWhileASaveWasUnderWay) {
  OpenProgram();
  TypeProgram(u"G0 X2");
  platform::fileFault = SlowFlush;
  morva::SaveProgramCommand();
  headless::EditorInsert(morva::kIdEditor, u"5");
  headless::Advance(650);
  EXPECT_TRUE(app.editorDirty);
  headless::Advance(5000);
  EXPECT_FALSE(app.editorDirty);
  EXPECT_NE(Raw("a.NC").find("5"), std::string::npos);
}

TEST_F(Disk, WritesOfThoseThatWaitOnlyTheNewest) {
  OpenProgram();
  static int programs;
  programs = 0;
  platform::fileFault = [](std::string_view kind) {
    if (kind == "new") ++programs;
    return SlowFlush(kind);
  };
  for (const char16_t* text : {u"G0 X2", u"G0 X3", u"G0 X4"}) {
    TypeProgram(text);
    EXPECT_TRUE(morva::SaveProgramCommand());
  }
  EXPECT_TRUE(morva::WaitForSaves());
  EXPECT_EQ(programs, 4);  // the stored code and the program, twice
  EXPECT_NE(Raw("a.NC").find("G0 X4"), std::string::npos);
  EXPECT_FALSE(app.editorDirty);
}

TEST_F(Disk, WaitsForTheDiskBeforeAProgramIsClosed) {
  OpenProgram();
  TypeProgram(u"G0 X2");
  platform::fileFault = SlowFlush;
  morva::SaveProgramCommand();
  morva::CloseProgram();
  EXPECT_EQ(BoxTitles(), Titles());
  EXPECT_EQ(app.tabCount, 1);
  EXPECT_NE(Raw("a.NC").find("G0 X2"), std::string::npos);
}

TEST_F(Disk, HandsAProgramOverBeforeItsTabIsLeft) {
  OpenProgram();
  TypeProgram(u"G0 X2");
  platform::fileFault = SlowFlush;
  morva::SwitchTab(0);
  TypeProgram(u"G0 X7");
  headless::Advance(5000);
  EXPECT_NE(Raw("a.NC").find("G0 X2"), std::string::npos);
  EXPECT_EQ(Raw("a.NC").find("G0 X7"), std::string::npos);
  EXPECT_FALSE(tabs[1].dirty);
}

// The file of a Save As under way counts as open under each of its names, also before it stands.
TEST_F(Disk, KnowsTheFileThatIsBeingSavedByItsOtherNames) {
  support::fs::create_directory(folder / "sub");
  support::fs::create_directory_symlink(folder, folder / "link");
  Put("old.NC", "G0 X7\r\n");
  for (const char* name : {"old.NC", "new.NC"}) {
    OpenProgram();
    const int tab = app.activeTab;
    TypeProgram(u"G0 X2");
    platform::fileFault = SlowFlush;
    headless::QueueFile(PathOf(name));
    ASSERT_TRUE(morva::SaveProgramAs());
    for (const std::string other : {"sub/../", "link/"}) {
      EXPECT_EQ(morva::TabOfFile(PathOf(other + name)), tab) << other << name;
      EXPECT_EQ(morva::TabOfFile(PathOf(other + "third.NC")), -1);
      EXPECT_EQ(morva::TabOfFile(PathOf("sub/" + std::string(name))), -1);
    }
    headless::Advance(5000);
    platform::fileFault = nullptr;
    EXPECT_EQ(morva::TabOfFile(PathOf("link/" + std::string(name))), tab);
    morva::CloseProgram();
  }
}

TEST_F(Disk, GoesOnUnderTheNewNameWhileTheSaveAsIsUnderWay) {
  OpenProgram();
  TypeProgram(u"G0 X2");
  platform::fileFault = SlowFlush;
  headless::QueueFile(PathOf("b.NC"));
  EXPECT_TRUE(morva::SaveProgramAs());
  TypeProgram(u"G0 X3");
  headless::Advance(5000);
  EXPECT_EQ(Raw("a.NC"), "G0 X1\r\n");
  EXPECT_NE(Raw("b.NC").find("G0 X3"), std::string::npos);
  EXPECT_EQ(std::u16string(tabs[1].title), u"b.NC");
  EXPECT_FALSE(app.editorDirty);
}

TEST_F(Disk, MakesOneHomeForAProgramThatIsSavedTwiceOnASlowDisk) {
  platform::fileFault = SlowFlush;
  TypeProgram(u"G0 X2");
  headless::Advance(700);
  TypeProgram(u"G0 X3");
  headless::Advance(5000);
  EXPECT_EQ(support::NamesIn(folder / "Documents/MORVA/Projects").size(), 1u);
  std::string bytes;
  ASSERT_TRUE(morva::ReadWholeFile(app.activePath, bytes));
  EXPECT_NE(bytes.find("G0 X3"), std::string::npos);
}

TEST_F(Disk, WritesOverAnotherProgramsFileAlsoWhenAnAutosaveComesBehindTheAnswer) {
  OpenProgram();
  platform::fileFault = SlowFlush;
  // A save of another program keeps the writer busy, so that the next ones wait.
  morva::SwitchTab(0);
  TypeProgram(u"G0 X7");
  morva::RunAutosave();
  morva::SwitchTab(1);
  WriteElsewhere("G0 X9\r\n");
  TypeProgram(u"G0 X2");
  headless::QueueAnswer(BoxAnswer::Yes);
  EXPECT_TRUE(morva::SaveProgramCommand());
  TypeProgram(u"G0 X3");
  EXPECT_TRUE(morva::SaveProgram(app.activePath));
  EXPECT_TRUE(morva::WaitForSaves());
  EXPECT_NE(Raw("a.NC").find("G0 X3"), std::string::npos);
  EXPECT_EQ(BoxTitles(), kAsked);
}

TEST_F(Disk, TriesAProgramThatIsHeldBackNotAtEveryKey) {
  OpenProgram();
  TypeProgram(u"(\u00D8 5)");
  for (int key = 0; key < 20; ++key) {
    headless::EditorInsert(morva::kIdEditor, u"1");
    headless::Advance(400);
  }
  headless::EditorInsert(morva::kIdEditor, u"1");
  headless::Advance(100);
  EXPECT_TRUE(platform::TimerRuns(platform::kMainWindow, morva::kTimerAutosave));
}

TEST_F(Disk, ClosesTheProgramThatTheKeyWasPressedFor) {
  OpenProgram();
  TypeProgram(u"G0 X2");
  platform::fileFault = SlowFlush;
  morva::SaveProgramCommand();
  // Another program comes up while the disk is waited for.
  constexpr std::uint32_t kComesUp = 0x9001;
  morva::RegisterMessage(kComesUp,
                         [](unsigned long long, unsigned long long) { morva::SwitchTab(0); });
  platform::PostToMain(kComesUp, 0, 0);
  morva::CloseProgram();
  ASSERT_EQ(app.tabCount, 1);
  EXPECT_EQ(std::u16string(tabs[0].title), u"Untitled-1.NC");
}

TEST_F(Disk, NamesAProgramThatIsNotOnTheStage) {
  OpenProgram();
  TypeProgram(u"G0 X2");
  // The save is under way when its tab is left, and fails behind it.
  platform::fileFault = [](std::string_view kind) {
    SlowFlush(kind);
    return kind == "rename";
  };
  morva::SwitchTab(0);
  headless::Advance(2000);
  EXPECT_EQ(Status(), u"a.NC: Autosave failed. Changes remain unsaved; use Save As.");
  EXPECT_TRUE(tabs[1].dirty);
}

// --- Long names.

TEST_F(Disk, SavesAProgramWhoseNameHas255Bytes) {
  const std::string name = std::string(252, 'n') + ".NC";
  Put(name, "G0 X1\r\n");
  OpenFile(name);
  ASSERT_EQ(app.tabCount, 2);
  TypeProgram(u"G0 X2");
  EXPECT_TRUE(morva::SaveProgramCommand());
  EXPECT_NE(Raw(name).find("G0 X2"), std::string::npos);
  EXPECT_EQ(BoxTitles(), Titles());
}

}  // namespace
