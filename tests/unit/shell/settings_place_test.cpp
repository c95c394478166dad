// Settings of a copy whose folder cannot be written, over the whole application.

#include <optional>

#include "app/outlets.h"
#include "platform/headless/machine_folders.h"
#include "platform/profile.h"
#include "support/locked_folder.h"
#include "support/workbench.h"

namespace morva {
namespace {

constexpr char kOwn[] = ".config/MORVA/MORVA.ini";

struct SettingsPlace : public support::Workbench {
  void TearDown() override {
    lock_.reset();
    support::Workbench::TearDown();
  }
  void Lock() { lock_.emplace(home_, home_ / "bin"); }
  // Ends the program and starts it again on the same machine.
  void StartAgain(bool hasConfiguration = true) const {
    headless::CloseKey();
    ResetApplication();
    headless::Reset(platform::FromUtf8(home_.string()));
    if (!hasConfiguration) headless::RemoveConfiguration();
    ASSERT_EQ(StartApplication(), 0);
  }
  std::u16string KeptWords() const {
    return u"The program's folder cannot be written. Settings are kept in " + Path(kOwn) + u".";
  }
  static std::u16string Status() { return platform::TextOf(kIdStatusLine); }
  static std::u16string Saved(const char16_t* key) {
    return platform::ReadProfile(u"Simulator", key, u"none");
  }

 private:
  std::optional<support::LockedFolder> lock_;
};

TEST_F(SettingsPlace, IsNotToldWhereTheProgramsFolderCanBeWritten) {
  EXPECT_EQ(Status(), u"Ready  \u2022  F5 Validate");
  headless::Click(kIdViewGrid);
  headless::Advance(100);
  EXPECT_TRUE(std::filesystem::exists(home_ / "bin" / "MORVA.ini"));
  EXPECT_FALSE(std::filesystem::exists(home_ / ".config"));
}

TEST_F(SettingsPlace, IsToldOnceAndKeepsWhatIsSetForTheNextRun) {
  const std::string ours = "[DNC]\r\nPort=COM7\r\n[Simulator]\r\nGrid=1\r\n";
  WriteFile("bin/MORVA.ini", ours);
  Lock();
  StartAgain();
  EXPECT_EQ(Status(), KeptWords());
  EXPECT_EQ(platform::TextOf(kIdDncPort), u"PORT  COM7");
  ShowStatus(u"Something else.");
  headless::Click(kIdViewGrid);
  headless::Advance(100);
  EXPECT_EQ(Status(), u"Something else.");
  EXPECT_EQ(Saved(u"Grid"), u"0");
  EXPECT_EQ(ReadFile("bin/MORVA.ini"), ours);
  EXPECT_EQ(ReadFile(kOwn).substr(0, 17), "[DNC]\r\nPort=COM7\r");
  StartAgain();
  EXPECT_EQ(Status(), KeptWords());
  EXPECT_EQ(Saved(u"Grid"), u"0");
  EXPECT_EQ(platform::TextOf(kIdDncPort), u"PORT  COM7");
}

TEST_F(SettingsPlace, IsToldToBeNowhereWithoutAFolderForSettings) {
  Lock();
  StartAgain(false);
  EXPECT_EQ(Status(), Path("bin/MORVA.ini") +
                          u" cannot be written. Settings that you change hold for this run only.");
  headless::Click(kIdViewGrid);
  headless::Advance(100);
  EXPECT_EQ(
      Status(),
      u"The settings file could not be written. Settings of the view hold for this run only.");
  EXPECT_TRUE(std::filesystem::is_empty(home_ / "bin"));
}

TEST_F(SettingsPlace, IsToldToBeNowhereWhereTheUsersFolderCannotBeWrittenEither) {
  WriteFile(".config", "a file in the way");
  Lock();
  StartAgain();
  EXPECT_EQ(Status(),
            Path(kOwn) + u" cannot be written. Settings that you change hold for this run only.");
  headless::Click(kIdViewGrid);
  headless::Advance(100);
  EXPECT_EQ(
      Status(),
      u"The settings file could not be written. Settings of the view hold for this run only.");
}

}  // namespace
}  // namespace morva
