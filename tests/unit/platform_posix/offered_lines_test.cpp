#include "platform/posix/offered_lines.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <fstream>

namespace {

using platform::AddOfferedLines;
using platform::SerialName;

class OfferedLines : public testing::Test {
 protected:
  void SetUp() override {
    char name[] = "/tmp/morva-offers-XXXXXX";
    ASSERT_NE(mkdtemp(name), nullptr);
    folder_ = name;
  }
  void TearDown() override { std::filesystem::remove_all(folder_); }
  void Offer(const std::string& process, const std::string& text) const {
    std::ofstream(folder_ + "/" + process) << text;
  }
  int Add(int count = 0, int capacity = 4) {
    return AddOfferedLines(folder_, names_, count, capacity);
  }

  std::string folder_;
  SerialName names_[4];
};

TEST_F(OfferedLines, StandBehindThePortsWithTheirPathAndWords) {
  Offer(std::to_string(getpid()), "/dev/null\nSimulated control\n");
  ASSERT_EQ(Add(1), 2);
  EXPECT_EQ(std::u16string(names_[1].name), u"/dev/null");
  EXPECT_EQ(std::u16string(names_[1].adapter), u"Simulated control");
  EXPECT_EQ(std::u16string(names_[1].device), u"");
  EXPECT_EQ(Add(2, 2), 2);
}

TEST_F(OfferedLines, OfAProcessThatHasEndedAreNotListed) {
  const pid_t child = fork();
  if (child == 0) _exit(0);
  waitpid(child, nullptr, 0);
  Offer(std::to_string(child), "/dev/null\nSimulated control\n");
  EXPECT_EQ(Add(), 0);
}

TEST_F(OfferedLines, ThatAreNoLinesAreNotListed) {
  const std::string own = std::to_string(getpid());
  for (const char* text :
       {"", "/dev/null", "dev/null\nwords\n", "/nowhere/at/all\nwords\n", "/dev/null\n\n",
        "/tmp\nwords\n", "/dev/../dev/../dev/../dev/../dev/null\nwords\n"}) {
    Offer(own, text);
    EXPECT_EQ(Add(), 0) << text;
  }
  Offer("12x", "/dev/null\nwords\n");
  Offer("-1", "/dev/null\nwords\n");
  std::filesystem::remove(folder_ + "/" + own);
  EXPECT_EQ(Add(), 0);
}

TEST_F(OfferedLines, OfAFolderThatOthersMayWriteAreNotListed) {
  Offer(std::to_string(getpid()), "/dev/null\nSimulated control\n");
  ASSERT_EQ(chmod(folder_.c_str(), 0777), 0);
  EXPECT_EQ(Add(), 0);
  ASSERT_EQ(chmod(folder_.c_str(), 0700), 0);
  EXPECT_EQ(Add(), 1);
}

TEST(OfferedLinesFolder, IsTheUsersOwn) {
  EXPECT_EQ(platform::OfferedLinesFolder("/run/user/7"), "/run/user/7/morva-lines");
  const std::string own = "/tmp/morva-lines-" + std::to_string(geteuid());
  EXPECT_EQ(platform::OfferedLinesFolder(nullptr), own);
  EXPECT_EQ(platform::OfferedLinesFolder("relative"), own);
}

}  // namespace
