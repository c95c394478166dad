// The last programs and the folder of the dialogs: the list, its menu at OPEN, the settings file,
// files that are dropped.

#include "documents/recent_files.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/profile.h"
#include "support/program_stage.h"

namespace {

using morva::app;
using morva::RecentFile;
using morva::RecentFileCount;

struct RecentFiles : public support::ProgramStage {
  std::vector<std::u16string> List() const {
    std::vector<std::u16string> list;
    for (int i = 0; i < RecentFileCount(); ++i) list.push_back(RecentFile(i));
    return list;
  }
  static headless::MenuRecord Menu() {
    auto menus = headless::TakeMenus();
    EXPECT_EQ(menus.size(), 1u);
    return menus.empty() ? headless::MenuRecord() : menus.back();
  }
  // As the next run does.
  static void ReadAgain() {
    morva::ResetRecentFiles();
    EXPECT_EQ(RecentFileCount(), 0);
    morva::LoadRecentFiles();
  }
};

TEST_F(RecentFiles, BeginWithTheLastOneAndHoldEachOnce) {
  Put("a.NC", "G0\r\n");
  Put("b.NC", "G1\r\n");
  OpenFile("a.NC");
  OpenFile("b.NC");
  EXPECT_EQ(List(), (std::vector<std::u16string>{PathOf("b.NC"), PathOf("a.NC")}));
  OpenFile("a.NC");  // open already
  EXPECT_EQ(List(), (std::vector<std::u16string>{PathOf("a.NC"), PathOf("b.NC")}));
}

TEST_F(RecentFiles, StandInTheSettingsFile) {
  Put("a.NC", "G0\r\n");
  Put(" b .NC", "G1\r\n");
  OpenFile("a.NC");
  OpenFile(" b .NC");
  ReadAgain();
  EXPECT_EQ(List(), (std::vector<std::u16string>{PathOf(" b .NC"), PathOf("a.NC")}));
  EXPECT_EQ(morva::LastFolder(), home);
}

TEST_F(RecentFiles, StayWhereTheSettingsCannotBeReadForAMoment) {
  for (const char* name : {"a.NC", "b.NC"}) {
    Put(name, "G0\r\n");
    OpenFile(name);
  }
  headless::FailCall("read", 1);
  morva::NoteRecentFile(PathOf("c.NC"));
  const std::vector<std::u16string> all{PathOf("c.NC"), PathOf("b.NC"), PathOf("a.NC")};
  EXPECT_EQ(List(), all);
  ReadAgain();
  EXPECT_EQ(List(), all);
}

TEST_F(RecentFiles, AreEightAtMost) {
  for (int i = 0; i < 12; ++i)
    morva::NoteRecentFile(u"/jobs/" + std::u16string(1, u"abcdefghijkl"[i]));
  EXPECT_EQ(RecentFileCount(), 8);
  EXPECT_EQ(RecentFile(0), u"/jobs/l");
  EXPECT_EQ(RecentFile(7), u"/jobs/e");
  EXPECT_EQ(RecentFile(8), u"");
  EXPECT_EQ(RecentFile(-1), u"");
  ReadAgain();
  EXPECT_EQ(RecentFileCount(), 8);
}

TEST_F(RecentFiles, LeaveOutWhatTheSettingsCannotHold) {
  morva::NoteRecentFile(u"/jobs/two\nlines.NC");
  morva::NoteRecentFile(std::u16string(600, u'p'));
  morva::NoteRecentFile(u"");
  EXPECT_EQ(RecentFileCount(), 0);
  EXPECT_EQ(morva::LastFolder(), u"");
}

TEST_F(RecentFiles, TakeAProgramThatTheUserNames) {
  TypeProgram(u"G0 X1");
  headless::QueueFile(PathOf("named.NC"));
  EXPECT_TRUE(morva::SaveProgramAs());
  headless::Advance(100);
  EXPECT_EQ(List(), (std::vector<std::u16string>{PathOf("named.NC")}));
}

TEST_F(RecentFiles, LeaveOutWhatAutosaveNames) {
  TypeProgram(u"G0 X1");
  headless::Advance(5000);
  ASSERT_NE(app.activePath[0], u'\0');
  EXPECT_EQ(RecentFileCount(), 0);
}

TEST_F(RecentFiles, KeepTheListOfAnotherWindow) {
  morva::NoteRecentFile(u"/jobs/a.NC");
  // The other window writes behind our back.
  platform::BeginProfileChange();
  platform::WriteProfile(u"Recent", u"File1", u"/jobs/theirs.NC");
  platform::WriteProfile(u"Recent", u"File2", u"/jobs/a.NC");
  platform::EndProfileChange();
  morva::NoteRecentFile(u"/jobs/b.NC");
  EXPECT_EQ(List(),
            (std::vector<std::u16string>{u"/jobs/b.NC", u"/jobs/theirs.NC", u"/jobs/a.NC"}));
}

TEST_F(RecentFiles, GiveTheirFolderToTheDialogs) {
  support::fs::create_directory(folder / "jobs");
  Put("jobs/a.NC", "G0\r\n");
  OpenFile("jobs/a.NC");
  headless::TakeFilePicks();
  morva::OpenProgram();
  morva::NewProgram();
  morva::SaveProgramAs();
  const auto picks = headless::TakeFilePicks();
  ASSERT_EQ(picks.size(), 2u);
  EXPECT_EQ(picks[0].folder, PathOf("jobs"));
  EXPECT_EQ(picks[1].folder, PathOf("jobs"));
}

TEST_F(RecentFiles, StandInAMenuWithTheirNamesInFront) {
  morva::NoteRecentFile(u"/jobs/" + std::u16string(100, u'f') + u"/a.NC");
  morva::NoteRecentFile(u"/b.NC");
  morva::ShowRecentMenu();
  const auto menu = Menu();
  ASSERT_GE(menu.items.size(), 2u);
  EXPECT_EQ(menu.items[0].id, morva::kIdRecentFirst);
  EXPECT_EQ(menu.items[0].text, u"b.NC\t/");
  EXPECT_EQ(menu.items[1].text, u"a.NC\t\u2026" + std::u16string(60, u'f'));
}

TEST_F(RecentFiles, SayThatThereAreNoneYet) {
  morva::ShowRecentMenu();
  const auto menu = Menu();
  ASSERT_GE(menu.items.size(), 1u);
  EXPECT_EQ(menu.items[0].text, u"No program opened yet");
  EXPECT_FALSE(menu.items[0].enabled);
}

TEST_F(RecentFiles, OpenFromTheMenu) {
  Put("a.NC", "G0 X7\r\n");
  OpenFile("a.NC");
  app.editorDirty = false;
  morva::CloseProgram();
  headless::QueuePick(morva::kIdRecentFirst);
  morva::ShowRecentMenu();
  EXPECT_EQ(std::u16string(app.activePath), PathOf("a.NC"));
  EXPECT_EQ(Text(), u"G0 X7\r\n");
}

TEST_F(RecentFiles, SayThatAFileIsGoneAndDropIt) {
  morva::NoteRecentFile(PathOf("gone.NC"));
  morva::NoteRecentFile(PathOf("other.NC"));
  headless::QueuePick(morva::kIdRecentFirst + 1);
  morva::ShowRecentMenu();
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].text,
            PathOf("gone.NC") + u"\r\n\r\nThis file is not there any more. It goes off the list.");
  EXPECT_EQ(List(), (std::vector<std::u16string>{PathOf("other.NC")}));
  ReadAgain();
  EXPECT_EQ(RecentFileCount(), 1);
}

TEST_F(RecentFiles, OpenSeveralAndNameWhatFindsNoTab) {
  std::vector<std::u16string> paths;
  for (const char* name : {"1", "2", "3", "4", "5", "6", "7", "8", "9"}) {
    Put(name, "G0\r\n");
    paths.push_back(PathOf(name));
  }
  paths.push_back(PathOf("2"));  // open by then
  morva::OpenProgramFiles(paths);
  EXPECT_EQ(app.tabCount, 8);  // with the first, untouched one
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].title, u"MORVA Tabs");
  EXPECT_NE(
      Output().find(u"Not opened: " + PathOf("8") + u"  (8 programs are open)\r\nNot opened: " +
                    PathOf("9") + u"  (8 programs are open)\r\n"),
      std::u16string::npos);
  EXPECT_EQ(Output().find(u"Not opened: " + PathOf("2")), std::u16string::npos);
}

TEST_F(RecentFiles, GoOnBehindOneThatCannotBeOpened) {
  Put("a.NC", "G0\r\n");
  const std::vector<std::u16string> paths{PathOf("none.NC"), PathOf("a.NC")};
  morva::OpenProgramFiles(paths);
  EXPECT_EQ(std::u16string(app.activePath), PathOf("a.NC"));
  EXPECT_NE(Output().find(u"Not opened: " + PathOf("none.NC") + u"  (it is not there)\r\n"),
            std::u16string::npos);
}

}  // namespace
