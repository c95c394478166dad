// Programs of one name that are open at the same time.

#include <gtest/gtest.h>

#include <string>

#include "documents/program_information.h"
#include "platform/control.h"
#include "support/program_stage.h"

namespace {

using morva::app;

struct TabNames : public support::ProgramStage {
  void Open(const std::string& name) const {
    support::fs::create_directories((folder / name).parent_path());
    Put(name, "G0 X1\r\n");
    OpenFile(name);
  }
};

TEST_F(TabNames, TellTwoProgramsOfOneNameApartByTheirFolders) {
  Open("left/p.NC");
  EXPECT_EQ(Label(1), u"> p.NC");
  EXPECT_EQ(platform::WindowTitle(), u"MORVA v4.20.0  \u2014  p.NC");
  Open("right/p.NC");
  EXPECT_EQ(Label(1), u"p.NC (left)");
  EXPECT_EQ(Label(2), u"> p.NC (right)");
  EXPECT_EQ(platform::WindowTitle(), u"MORVA v4.20.0  \u2014  p.NC (right)");
  morva::WriteProgramInformation();
  EXPECT_NE(TextOf(morva::kIdInfoPanel).find(u"File: p.NC (right)\r\n"), std::u16string::npos);
  morva::SwitchTab(1);
  EXPECT_EQ(platform::WindowTitle(), u"MORVA v4.20.0  \u2014  p.NC (left)");
  morva::SwitchTab(2);
  morva::CloseProgram();
  EXPECT_EQ(Label(1), u"> p.NC");
  EXPECT_EQ(platform::WindowTitle(), u"MORVA v4.20.0  \u2014  p.NC");
}

TEST_F(TabNames, GoBackUpTheFoldersAsFarAsItTakes) {
  Open("one/parts/p.NC");
  Open("two/parts/p.NC");
  EXPECT_EQ(morva::NameOfTab(1), u"p.NC (one/parts)");
  EXPECT_EQ(morva::NameOfTab(2), u"p.NC (two/parts)");
  Open("three/p.NC");
  EXPECT_EQ(morva::NameOfTab(1), u"p.NC (one/parts)");
  EXPECT_EQ(morva::NameOfTab(3), u"p.NC (three)");
  // One that lies above the other has no more folders to show.
  Open("p.NC");
  Open("x/p.NC");
  EXPECT_EQ(morva::NameOfTab(5), u"p.NC (x)");
}

TEST_F(TabNames, FollowASaveUnderTheNameOfAnother) {
  Open("left/p.NC");
  Open("q.NC");
  support::fs::create_directory(folder / "right");
  headless::QueueFile(PathOf("right/p.NC"));
  EXPECT_TRUE(morva::SaveProgramAs());
  EXPECT_EQ(Label(1), u"p.NC (left)");
  EXPECT_EQ(Label(2), u"> p.NC (right)");
  EXPECT_EQ(platform::WindowTitle(), u"MORVA v4.20.0  \u2014  p.NC (right)");
}

TEST_F(TabNames, ShowTheMarkBehindTheLongestFolder) {
  const std::string name(90, 'n');
  Open(std::string(60, 'f') + "/" + name);
  Open(std::string(60, 'g') + "/" + name);
  TypeProgram(u"G0 X2");
  EXPECT_TRUE(Label(2).ends_with(u" *"));
  EXPECT_EQ(Label(2).size(), 127u);
}

TEST_F(TabNames, AreDifferentForAllNewPrograms) {
  morva::NewProgram();
  morva::NewProgram();
  morva::SwitchTab(1);
  morva::CloseProgram();
  morva::NewProgram();
  EXPECT_EQ(morva::NameOfTab(1), u"Untitled-3.NC (not saved)");
  EXPECT_EQ(morva::NameOfTab(2), u"Untitled-3.NC (not saved, 2)");
}

TEST_F(TabNames, StandInTheTipWithTheWholePath) {
  Open("left/p.NC");
  EXPECT_EQ(headless::ToolTipOf(morva::kIdTabFirst + 1).find(PathOf("left/p.NC")), 0u);
  EXPECT_EQ(headless::ToolTipOf(morva::kIdTabFirst).find(u"Not saved in a file yet"), 0u);
}

}  // namespace
