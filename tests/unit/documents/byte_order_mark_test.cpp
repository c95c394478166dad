// Programs whose files begin with a byte order mark.

#include <gtest/gtest.h>

#include <string>

#include "documents/disk_watch.h"
#include "documents/text_refresh.h"
#include "support/program_stage.h"

namespace {

using morva::tabs;

struct ByteOrderMark : public support::ProgramStage {
  static constexpr std::string_view kMark = "\xEF\xBB\xBF";
  void Open() const {
    Put("a.NC", std::string(kMark) + "%\r\nO1\r\nG0 X1\r\n%\r\n");
    OpenFile("a.NC");
  }
};

TEST_F(ByteOrderMark, StaysInFrontOfTheFileAndOutOfTheProgram) {
  Open();
  EXPECT_EQ(Text()[0], u'%');
  EXPECT_NE(Output().find(u"begins with a byte order mark"), std::u16string::npos);
  headless::Advance(1000);
  EXPECT_EQ(Text().substr(0, 17), u"%\r\n(MORVA TEXT 1)");
  TypeProgram(Text() + u"G0 X2\r\n");
  headless::Advance(1000);
  EXPECT_TRUE(headless::TakeBoxes().empty());
  EXPECT_FALSE(morva::app.editorDirty);
  const std::string file = Raw("a.NC");
  EXPECT_EQ(file.substr(0, 20), std::string(kMark) + "%\r\n(MORVA TEXT 1)");
  EXPECT_EQ(file.find(kMark, 1), std::string::npos);
  EXPECT_EQ(file.find('?'), std::string::npos);
  // The next opening takes it for the same.
  morva::CloseProgram();
  OpenFile("a.NC");
  EXPECT_EQ(Text().substr(0, 17), u"%\r\n(MORVA TEXT 1)");
  EXPECT_TRUE(tabs[1].save.byteOrderMark);
}

TEST_F(ByteOrderMark, GoesAndComesWithTheFileThatIsLoadedAgain) {
  Open();
  Put("a.NC", "G0 X9\r\n");
  EXPECT_TRUE(morva::LoadAgain());
  EXPECT_FALSE(tabs[1].save.byteOrderMark);
  Put("a.NC", std::string(kMark) + "G0 X8\r\n");
  EXPECT_TRUE(morva::LoadAgain());
  EXPECT_EQ(Text(), u"G0 X8\r\n");
  EXPECT_TRUE(tabs[1].save.byteOrderMark);
}

TEST_F(ByteOrderMark, IsNotPutInFrontOfOtherPrograms) {
  Put("a.NC", "G0 X1\r\n");
  OpenFile("a.NC");
  TypeProgram(u"G0 X2");
  ASSERT_TRUE(morva::SaveAndWait());
  EXPECT_EQ(Raw("a.NC").find(kMark), std::string::npos);
}

}  // namespace
