// Companions that cannot be read, belong to another program, or stand beside a link.

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>

#include "documents/disabled_code.h"
#include "documents/disk_watch.h"
#include "documents/file_text.h"
#include "documents/saving.h"
#include "documents/stored_code.h"
#include "documents/tab_models.h"
#include "platform/common/faults.h"
#include "support/program_stage.h"

namespace {

using morva::app;
using morva::tabs;
namespace fs = support::fs;

struct CompanionsKept : public support::ProgramStage {
  bool Told(std::u16string_view words) const { return Output().find(words) != Output().npos; }
};

TEST_F(CompanionsKept, ADamagedOneIsKeptUnderTheNameThatOpeningTells) {
  Put("a.NC", "G0\r\n");
  Put("a.NC.features", "MVC1 damaged");
  OpenFile("a.NC");
  EXPECT_TRUE(Told(u"a.NC.features.kept"));
  EXPECT_EQ(Raw("a.NC.features"), "MVC1 damaged");
  TypeProgram(u"G1 X1");
  ASSERT_TRUE(morva::SaveProgram(app.activePath));
  EXPECT_EQ(Raw("a.NC.features.kept"), "MVC1 damaged");
  EXPECT_EQ(Raw("a.NC.features"), std::string("MVC1\0\0\0\0", 8));
  // No program was replaced.
  EXPECT_FALSE(Told(u"of the replaced program"));
  // A later save leaves both alone.
  ASSERT_TRUE(morva::SaveProgram(app.activePath));
  EXPECT_EQ(Raw("a.NC.features.kept"), "MVC1 damaged");
  EXPECT_EQ(Raw("a.NC.features"), std::string("MVC1\0\0\0\0", 8));
}

TEST_F(CompanionsKept, AnEarlierKeptOneKeepsItsName) {
  Put("a.NC", "G0\r\n");
  Put("a.NC.features", "second");
  Put("a.NC.features.kept", "first");
  OpenFile("a.NC");
  TypeProgram(u"G1 X1");
  ASSERT_TRUE(morva::SaveProgram(app.activePath));
  EXPECT_EQ(Raw("a.NC.features.kept"), "first");
  EXPECT_EQ(Raw("a.NC.features.kept2"), "second");
}

TEST_F(CompanionsKept, OneThatCannotBePutAsideFailsTheSave) {
  Put("a.NC", "G0\r\n");
  Put("a.NC.features", "damaged");
  OpenFile("a.NC");
  TypeProgram(u"G1 X1");
  headless::FailCall("rename", 1);
  EXPECT_FALSE(morva::SaveProgram(app.activePath));
  headless::FailCall("rename", 0);
  EXPECT_EQ(Raw("a.NC.features"), "damaged");
  EXPECT_EQ(Raw("a.NC"), "G0\r\n");
}

// It stands where it stood, so that the next save asks nothing.
TEST_F(CompanionsKept, OneThatIsPutBackByAFailedSaveIsNotTakenForAnothers) {
  Put("a.NC", "G0\r\n");
  Put("a.NC.features", "damaged");
  OpenFile("a.NC");
  TypeProgram(u"G1 X1");
  headless::FailCall("new", 1);
  EXPECT_FALSE(morva::SaveProgram(app.activePath));
  EXPECT_EQ(Raw("a.NC.features"), "damaged");
  headless::TakeBoxes();
  EXPECT_TRUE(morva::SaveProgramCommand());
  EXPECT_TRUE(headless::TakeBoxes().empty());
  EXPECT_EQ(Raw("a.NC.features.kept"), "damaged");
}

// A time server, a copy with new times.
TEST_F(CompanionsKept, OneThatWasOnlyTouchedIsTheSame) {
  Put("a.NC", "G0\r\n");
  Put("a.NC.features", std::string("MVC1\1\0\0\0\1\0\0\0\2\0\0\0G\0001\0", 20));
  OpenFile("a.NC");
  const auto before = fs::last_write_time(folder / "a.NC.features");
  fs::last_write_time(folder / "a.NC.features", before + std::chrono::seconds(2));
  TypeProgram(u"G1 X1");
  EXPECT_TRUE(morva::SaveProgramCommand());
  EXPECT_TRUE(headless::TakeBoxes().empty());
  EXPECT_NE(Raw("a.NC").find("G1 X1"), std::string::npos);
}

TEST_F(CompanionsKept, TheNameOfADamagedOneStaysWithItsFileBehindASaveAs) {
  Put("a.NC", "G0\r\n");
  Put("a.NC.features", "damaged");
  OpenFile("a.NC");
  TypeProgram(u"G1 X1");
  for (int i = 0; i < 2; ++i) {
    headless::QueueFile(PathOf("b.NC"));
    ASSERT_TRUE(morva::SaveProgramAs());
    ASSERT_TRUE(morva::SaveProgram(app.activePath));
  }
  EXPECT_EQ(Raw("a.NC.features"), "damaged");
  EXPECT_FALSE(fs::exists(folder / "a.NC.features.kept"));
  EXPECT_FALSE(fs::exists(folder / "b.NC.features.kept"));
  EXPECT_EQ(Raw("b.NC.features"), std::string("MVC1\0\0\0\0", 8));
}

TEST_F(CompanionsKept, ASaveAsThatFailsLeavesTheOtherProgramItsDrawings) {
  Put("q.NC", "G0\r\n");
  Put("q.NC.cadmv", "drawings of q");
  TypeProgram(u"G1 X1");
  headless::FailCall("new", 1);
  morva::SaveProgramOver(PathOf("q.NC"));
  headless::FailCall("new", 0);
  EXPECT_EQ(Raw("q.NC"), "G0\r\n");
  EXPECT_EQ(Raw("q.NC.cadmv"), "drawings of q");
  EXPECT_FALSE(fs::exists(folder / "q.NC.cadmv.kept"));
}

TEST_F(CompanionsKept, ADamagedFileOfDrawingsThatIsLoadedAgainLeavesThoseInMemory) {
  Put("a.NC", "G0\r\n");
  OpenFile("a.NC");
  tabs[1].cadStore = new morva::CadStore();
  tabs[1].cadStore->count = 1;
  Put("a.NC.cadmv", "damaged");
  EXPECT_TRUE(morva::LoadAgain());
  ASSERT_NE(tabs[1].cadStore, nullptr);
  EXPECT_EQ(tabs[1].cadStore->count, 1);
  EXPECT_TRUE(Told(u"a.NC.cadmv.kept"));
}

TEST_F(CompanionsKept, ASaveAsToANewNameThatFailsLeavesNothingBesideIt) {
  TypeProgram(u"G1 X1");
  int failed = 0;
  for (const char* name : {"new1.NC", "new2.NC", "new3.NC"}) {
    headless::FailCall("write", name[3] - '0');
    morva::SaveProgramOver(PathOf(name));
    headless::FailCall("write", 0);
    if (fs::exists(folder / name)) continue;
    ++failed;
    EXPECT_FALSE(fs::exists(folder / (std::string(name) + ".features"))) << name;
  }
  EXPECT_GE(failed, 1);
}

// People tidy small files away that they do not know.
TEST_F(CompanionsKept, AnAutosaveGoesOnWhereACompanionWasErased) {
  Put("a.NC", "G0\r\n");
  OpenFile("a.NC");
  TypeProgram(u"G1 X1");
  morva::RunAutosave();
  headless::Advance(3000);
  ASSERT_TRUE(fs::exists(folder / "a.NC.features"));
  fs::remove(folder / "a.NC.features");
  TypeProgram(u"G1 X2");
  morva::RunAutosave();
  headless::Advance(3000);
  EXPECT_NE(Raw("a.NC").find("G1 X2"), std::string::npos);
  EXPECT_TRUE(fs::exists(folder / "a.NC.features"));
  EXPECT_FALSE(tabs[1].save.changedOnDisk);
  EXPECT_TRUE(headless::TakeBoxes().empty());
}

TEST_F(CompanionsKept, AMissingOneIsNotSpokenOf) {
  Put("a.NC", "G0\r\n");
  OpenFile("a.NC");
  EXPECT_FALSE(Told(u"kept"));
}

TEST_F(CompanionsKept, SaveAsOverAProgramWithDrawingsLeavesItNoDrawings) {
  Put("q.NC", "G0\r\n");
  Put("q.NC.cadmv", "drawings of q");
  TypeProgram(u"G1 X1");
  ASSERT_TRUE(morva::SaveProgramOver(PathOf("q.NC")));
  EXPECT_FALSE(fs::exists(folder / "q.NC.cadmv"));
  EXPECT_EQ(Raw("q.NC.cadmv.kept"), "drawings of q");
  EXPECT_TRUE(Told(u"q.NC.cadmv of the replaced program is kept as q.NC.cadmv.kept"));
}

TEST_F(CompanionsKept, ASaveAsThatCannotPutTheOldDrawingsAwayIsSavedAndSaysSo) {
  Put("q.NC", "G0\r\n");
  Put("q.NC.cadmv", "drawings of q");
  TypeProgram(u"G1 X1");
  headless::TakeBoxes();
  // The files of the program itself come first: excluded code and text.
  headless::FailCall("rename", 3);
  ASSERT_TRUE(morva::SaveProgramOver(PathOf("q.NC")));
  EXPECT_TRUE(headless::TakeBoxes().empty());
  EXPECT_FALSE(app.editorDirty);
  EXPECT_NE(Raw("q.NC").find("G1 X1"), std::string::npos);
  EXPECT_TRUE(Told(u"The program is saved, but q.NC.cadmv of the replaced program could not be"));
  // It goes before this program writes one over it.
  EXPECT_EQ(Raw("q.NC.cadmv"), "drawings of q");
  EXPECT_EQ(morva::ActiveTab()->unusable[0].from, PathOf("q.NC.cadmv"));
  // It is known, so that the next save asks nothing.
  TypeProgram(u"G1 X2");
  EXPECT_TRUE(morva::SaveProgramCommand());
  EXPECT_TRUE(headless::TakeBoxes().empty());
  EXPECT_NE(Raw("q.NC").find("G1 X2"), std::string::npos);
}

// A disk that is full behind the copy of the drawings.
TEST_F(CompanionsKept, TheCopyOfWhatIsReplacedComesBeforeTheProgram) {
  Put("q.NC", "G0\r\n");
  Put("q.NC.cadmv", "drawings of q");
  TypeProgram(u"G1 X1");
  tabs[0].cadStore = new morva::CadStore();
  tabs[0].cadStore->count = 1;
  headless::FailCall("write", 2);
  morva::SaveProgramOver(PathOf("q.NC"));
  headless::FailCall("write", 0);
  EXPECT_EQ(Raw("q.NC"), "G0\r\n");
  EXPECT_EQ(Raw("q.NC.cadmv"), "drawings of q");
  EXPECT_FALSE(fs::exists(folder / "q.NC.cadmv.kept"));
  ASSERT_TRUE(morva::SaveProgramOver(PathOf("q.NC")));
  EXPECT_EQ(Raw("q.NC.cadmv.kept"), "drawings of q");
}

TEST_F(CompanionsKept, AnEmptyListOfExcludedCodeIsNotKept) {
  Put("q.NC", "G0\r\n");
  Put("q.NC.features", std::string("MVC1\0\0\0\0", 8));
  morva::KeepExcludedCode(tabs[0], u"G1 X7");
  TypeProgram(u"G1 X1");
  ASSERT_TRUE(morva::SaveProgramOver(PathOf("q.NC")));
  EXPECT_GT(Raw("q.NC.features").size(), 8u);
  EXPECT_FALSE(fs::exists(folder / "q.NC.features.kept"));
}

// A program and its copy begin with the same excluded code.
TEST_F(CompanionsKept, TheExcludedCodeOfACopyIsNotThisPrograms) {
  const std::string entry("MVC1\1\0\0\0\1\0\0\0\2\0\0\0G\0001\0", 20);
  for (const char* name : {"a.NC", "q.NC"}) {
    Put(name, "G0\r\n");
    Put(std::string(name) + ".features", entry);
  }
  OpenFile("a.NC");
  morva::KeepExcludedCode(tabs[1], u"G1 X7");
  TypeProgram(u"G1 X1");
  ASSERT_TRUE(morva::SaveProgramOver(PathOf("q.NC")));
  EXPECT_GT(Raw("q.NC.features").size(), entry.size());
  EXPECT_EQ(Raw("q.NC.features.kept"), entry);
}

TEST_F(CompanionsKept, SaveAsOverAProgramWithExcludedCodeKeepsThatCode) {
  const std::string entry("MVC1\1\0\0\0\1\0\0\0\2\0\0\0G\0001\0", 20);
  Put("q.NC", "G0\r\n");
  Put("q.NC.features", entry);
  TypeProgram(u"G1 X1");
  ASSERT_TRUE(morva::SaveProgramOver(PathOf("q.NC")));
  EXPECT_EQ(Raw("q.NC.features.kept"), entry);
  EXPECT_TRUE(Told(u"q.NC.features of the replaced program is kept as q.NC.features.kept"));
  EXPECT_EQ(Raw("q.NC.features"), std::string("MVC1\0\0\0\0", 8));
}

// A program that was moved away without what stood beside it has its excluded code nowhere else.
TEST_F(CompanionsKept, SaveAsWhereAProgramStoodKeepsTheExcludedCodeThatWasLeftThere) {
  const std::string entry("MVC1\1\0\0\0\1\0\0\0\2\0\0\0G\0001\0", 20);
  Put("q.NC.features", entry);
  TypeProgram(u"G1 X1");
  ASSERT_TRUE(morva::SaveProgramOver(PathOf("q.NC")));
  EXPECT_EQ(Raw("q.NC.features.kept"), entry);
  EXPECT_EQ(Raw("q.NC.features"), std::string("MVC1\0\0\0\0", 8));
  EXPECT_NE(Raw("q.NC").find("G1 X1"), std::string::npos);
}

// Its block would get this program's code back.
TEST_F(CompanionsKept, ASaveAsThatFailsLeavesTheOtherProgramItsExcludedCode) {
  const std::string entry("MVC1\1\0\0\0\1\0\0\0\2\0\0\0G\0001\0", 20);
  Put("q.NC", "G0\r\n");
  Put("q.NC.features", entry);
  TypeProgram(u"G1 X1");
  headless::FailCall("write", 1);  // the program
  morva::SaveProgramOver(PathOf("q.NC"));
  EXPECT_EQ(Raw("q.NC"), "G0\r\n");
  EXPECT_EQ(Raw("q.NC.features"), entry);
  EXPECT_FALSE(fs::exists(folder / "q.NC.features.kept"));
  EXPECT_FALSE(Told(u"of the replaced program"));
}

// Its own block would get the other program's code.
TEST_F(CompanionsKept, AProgramThatReplacesAnotherNeverStandsBesideTheCodeOfThatOne) {
  const std::string entry("MVC1\1\0\0\0\1\0\0\0\2\0\0\0G\0001\0", 20);
  Put("q.NC", "G0\r\n");
  Put("q.NC.features", entry);
  morva::KeepExcludedCode(tabs[0], u"G1 X7");
  TypeProgram(u"G1 X1");
  headless::FailCall("write", 2);  // the excluded code
  morva::SaveProgramOver(PathOf("q.NC"));
  EXPECT_NE(Raw("q.NC").find("G1 X1"), std::string::npos);
  EXPECT_FALSE(fs::exists(folder / "q.NC.features"));
  EXPECT_EQ(Raw("q.NC.features.kept"), entry);
  EXPECT_TRUE(app.editorDirty);
  ASSERT_TRUE(morva::SaveProgramOver(PathOf("q.NC")));
  EXPECT_GT(Raw("q.NC.features").size(), 8u);
  EXPECT_EQ(Raw("q.NC.features.kept"), entry);
  EXPECT_FALSE(fs::exists(folder / "q.NC.features.kept2"));
}

TEST_F(CompanionsKept, WritingOverAProgramOfAnotherWindowKeepsWhatStandsBesideIt) {
  const std::string entry("MVC1\1\0\0\0\1\0\0\0\2\0\0\0G\0001\0", 20);
  Put("a.NC", "G0\r\n");
  OpenFile("a.NC");
  TypeProgram(u"G1 X1");
  ASSERT_TRUE(morva::SaveProgram(app.activePath));
  Put("a.NC.features", entry);
  Put("a.NC.cadmv", "their drawings");
  TypeProgram(u"G1 X2");
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  ASSERT_TRUE(morva::SaveProgramCommand());
  EXPECT_EQ(Raw("a.NC.features.kept"), entry);
  EXPECT_EQ(Raw("a.NC.cadmv.kept"), "their drawings");
  EXPECT_FALSE(fs::exists(folder / "a.NC.cadmv"));
  EXPECT_TRUE(Told(u"a.NC.features of the replaced program is kept as a.NC.features.kept"));
  // The question is settled.
  headless::TakeBoxes();
  TypeProgram(u"G1 X3");
  ASSERT_TRUE(morva::SaveProgramCommand());
  EXPECT_TRUE(headless::TakeBoxes().empty());
}

TEST_F(CompanionsKept, AnAutosaveLeavesWhatAnotherWindowWroteBesideTheProgram) {
  for (const char* name : {"a.NC.cadmv", "a.NC.platemv", "a.NC.features"}) {
    Put("a.NC", "G0\r\n");
    OpenFile("a.NC");
    TypeProgram(u"G1 X1");
    ASSERT_TRUE(morva::SaveProgram(app.activePath));
    const std::string text = Raw("a.NC");
    Put(name, "theirs");
    TypeProgram(u"G1 X2");
    morva::RunAutosave();
    headless::Advance(100);
    EXPECT_EQ(Raw(name), "theirs");
    EXPECT_EQ(Raw("a.NC"), text);
    EXPECT_NE(Status().find(u"Changed on disk by another program."), std::u16string::npos);
    headless::QueueAnswer(platform::BoxAnswer::No);
    morva::CloseProgram();
    fs::remove(folder / name);
  }
}

TEST_F(CompanionsKept, SaveAsOntoItsOwnFileByALinkReplacesNothing) {
  Put("a.NC", "G0\r\n");
  fs::create_symlink("a.NC", folder / "link.NC");
  fs::create_directory_symlink(".", folder / "here");
  OpenFile("a.NC");
  morva::KeepExcludedCode(tabs[1], u"G1 X7");
  TypeProgram(u"G1 X1");
  ASSERT_TRUE(morva::SaveProgram(app.activePath));
  for (const char* name : {"link.NC", "here/a.NC"}) {
    headless::QueueFile(PathOf(name));
    ASSERT_TRUE(morva::SaveProgramAs());
    EXPECT_FALSE(Told(u"of the replaced program"));
    EXPECT_FALSE(fs::exists(folder / "a.NC.features.kept"));
    EXPECT_GT(Raw("a.NC.features").size(), 8u);
  }
}

TEST_F(CompanionsKept, OpeningTellsHowMuchExcludedCodeIsMissing) {
  Put("a.NC",
      "(MORVA TEXT 1)\r\n(MORVA DISABLED 1)\r\n(MORVA END 1)\r\n"
      "(MORVA TEXT 2)\r\n(MORVA DISABLED 7)\r\n(MORVA END 2)\r\n");
  Put("a.NC.features", std::string("MVC1\1\0\0\0\1\0\0\0\2\0\0\0G\0001\0", 20));
  OpenFile("a.NC");
  EXPECT_TRUE(Told(u"The code of excluded blocks is missing: 1 of 2 in this program."));
}

TEST_F(CompanionsKept, AProgramHasTheSameByItsLinkAndByItsName) {
  fs::create_directory(folder / "b");
  Put("b/real.NC", "(MORVA TEXT 1)\r\n(MORVA DISABLED 1)\r\n(MORVA END 1)\r\n");
  Put("b/real.NC.features", std::string("MVC1\1\0\0\0\1\0\0\0\2\0\0\0G\0001\0", 20));
  fs::create_symlink("b/real.NC", folder / "link.NC");
  OpenFile("link.NC");
  ASSERT_NE(morva::FindDisabledCode(tabs[1].disabledCode, 1), nullptr);
  TypeProgram(u"G1 X1");
  ASSERT_TRUE(morva::SaveProgram(app.activePath));
  EXPECT_FALSE(fs::exists(folder / "link.NC.features"));
}

TEST_F(CompanionsKept, StoredCodeBeyondTheSizeOfAProgramIsReadAgain) {
  const std::u16string code(7000000, u'G');
  Put("a.NC", "G0\r\n");
  OpenFile("a.NC");
  for (int i = 0; i < 3; ++i) ASSERT_NE(morva::KeepExcludedCode(tabs[1], code), 0);
  ASSERT_TRUE(morva::SaveProgram(app.activePath));
  EXPECT_GT(fs::file_size(folder / "a.NC.features"), 33554432u);
  std::u16string text;
  morva::DisabledCodeEntry* list = nullptr;
  EXPECT_TRUE(morva::ReadExcludedCode(app.activePath, text, list));
  EXPECT_NE(morva::FindDisabledCode(list, 3), nullptr);
  morva::FreeDisabledCode(list);
}

TEST_F(CompanionsKept, WhatTheTextDoesNotNameIsLeftOutOfAFileThatWouldBeTooLarge) {
  const std::u16string code(7999997, u'G');
  Put("a.NC", "G0\r\n");
  OpenFile("a.NC");
  for (int i = 0; i < 4; ++i) morva::AddDisabledCode(tabs[1].disabledCode, code);
  TypeProgram(u"(MORVA TEXT 1)\r\n(MORVA DISABLED 2)\r\n(MORVA END 1)");
  ASSERT_TRUE(morva::SaveProgram(app.activePath));
  EXPECT_EQ(fs::file_size(folder / "a.NC.features"), 8u + 8u + 2 * 7999997u);
}

TEST_F(CompanionsKept, WhatATabBehindNamesStaysInItsFile) {
  const std::u16string code(7999997, u'G');
  Put("a.NC", "G0\r\n");
  OpenFile("a.NC");
  for (int i = 0; i < 4; ++i) morva::AddDisabledCode(tabs[1].disabledCode, code);
  TypeProgram(u"(MORVA TEXT 1)\r\n(MORVA DISABLED 2)\r\n(MORVA END 1)");
  // The save at the switch fails; the tab is saved while another one is shown.
  headless::FailCall("new", 1);
  morva::SwitchTab(0);
  headless::Advance(6000);
  EXPECT_FALSE(tabs[1].dirty);
  EXPECT_EQ(fs::file_size(folder / "a.NC.features"), 8u + 8u + 2 * 7999997u);
}

TEST(StoredCode, IsBoundToTheBlockThatNamesItAndToNoneWhereSeveralDo) {
  morva::DisabledCodeEntry* list = nullptr;
  for (int i = 0; i < 3; ++i) morva::AddDisabledCode(list, u"G0");
  morva::BindToBlocks(list,
                      u"(MORVA TEXT 4)\r\n(MORVA DISABLED 1)\r\n(MORVA END 4)\r\n"
                      u"(MORVA TEXT 7)\r\nM8 (morva disabled 2)\r\n(MORVA END 7)\r\n"
                      u"(MORVA TEXT 8)\r\n(MORVA DISABLED 1)\r\n(MORVA END 8)\r\n");
  EXPECT_EQ(morva::FindDisabledCode(list, 1)->block, morva::kSeveralBlocks);
  EXPECT_EQ(morva::FindDisabledCode(list, 2)->block, 7);
  EXPECT_EQ(morva::FindDisabledCode(list, 3)->block, 0);
  morva::FreeDisabledCode(list);
}

}  // namespace
