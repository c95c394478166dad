// Where the settings file is, and what it begins with, where the executable's folder cannot be
// written.

#include <memory>

#include "platform/headless/machine_folders.h"
#include "platform/profile.h"
#include "support/locked_folder.h"
#include "support/stage.h"

namespace {

using platform::ProfilePlace;

constexpr char kBeside[] = "bin/MORVA.ini";
constexpr char kOwn[] = ".config/MORVA/MORVA.ini";

struct ProfilePlaces : public support::Stage {
  // From here on the executable's folder, or another one, cannot be written.
  void Lock(const char* name = "bin") {
    lock_ = std::make_unique<support::LockedFolder>(folder, folder / name);
  }
  void Unlock() { lock_.reset(); }
  void PutOwn(std::string_view bytes) const {
    support::fs::create_directories(folder / ".config" / "MORVA");
    Put(kOwn, bytes);
  }
  bool Exists(const char* name) const { return support::fs::exists(folder / name); }
  static std::u16string Port() { return platform::ReadProfile(u"DNC", u"Port", u"none"); }
  static bool SetPort(std::u16string_view port) {
    platform::BeginProfileChange();
    platform::WriteProfile(u"DNC", u"Port", port);
    return platform::EndProfileChange();
  }

 private:
  std::unique_ptr<support::LockedFolder> lock_;
};

TEST_F(ProfilePlaces, AreBesideTheExecutableWhereThatFolderCanBeWritten) {
  PutOwn("[DNC]\r\nPort=COM9\r\n");
  EXPECT_EQ(platform::ProfilePath(), PathOf(kBeside));
  EXPECT_EQ(platform::WhereProfileIsKept(), ProfilePlace::BesideExecutable);
  EXPECT_EQ(Port(), u"none");
  EXPECT_TRUE(SetPort(u"COM2"));
  EXPECT_EQ(Raw(kBeside), "[DNC]\r\nPort=COM2\r\n");
  EXPECT_EQ(Raw(kOwn), "[DNC]\r\nPort=COM9\r\n");
}

TEST_F(ProfilePlaces, AreTheUsersFolderWhereTheExecutablesCannotBeWritten) {
  Lock();
  EXPECT_EQ(platform::ProfilePath(), PathOf(kOwn));
  EXPECT_EQ(platform::WhereProfileIsKept(), ProfilePlace::Configuration);
  EXPECT_EQ(Port(), u"none");
  EXPECT_FALSE(Exists(".config"));
  EXPECT_TRUE(SetPort(u"COM2"));
  EXPECT_EQ(Raw(kOwn), "[DNC]\r\nPort=COM2\r\n");
  EXPECT_EQ(Port(), u"COM2");
  EXPECT_EQ(support::NamesIn(folder / "bin"), std::vector<std::string>());
}

TEST_F(ProfilePlaces, TheUsersFileCountsAloneOnceItStands) {
  Put(kBeside, "[DNC]\r\nPort=COM1\r\nBaud=19200\r\n");
  PutOwn("[DNC]\r\nPort=COM9\r\n");
  Lock();
  EXPECT_EQ(Port(), u"COM9");
  EXPECT_EQ(platform::ReadProfile(u"DNC", u"Baud", u"9600"), u"9600");
}

TEST_F(ProfilePlaces, TheUsersFileBeginsAsTheOneBesideTheExecutable) {
  Put(kBeside, "; ours\n[DNC]\nPort=COM1\nBaud=19200\n[Other]\nName=\xE9\n");
  Lock();
  EXPECT_EQ(Port(), u"COM1");
  EXPECT_FALSE(Exists(kOwn));
  EXPECT_TRUE(SetPort(u"COM2"));
  EXPECT_EQ(Raw(kOwn), "; ours\n[DNC]\nPort=COM2\r\nBaud=19200\n[Other]\nName=\xE9\n");
  EXPECT_EQ(Raw(kBeside), "; ours\n[DNC]\nPort=COM1\nBaud=19200\n[Other]\nName=\xE9\n");
}

TEST_F(ProfilePlaces, NothingIsMadeByReadingOrByAChangeThatChangesNothing) {
  Put(kBeside, "[DNC]\r\nPort=COM1\r\n");
  Lock();
  EXPECT_TRUE(SetPort(u"COM1"));
  EXPECT_FALSE(Exists(".config"));
}

TEST_F(ProfilePlaces, ALinkBesideTheExecutableIsWrittenThrough) {
  support::fs::create_directory(folder / "store");
  Put("store/MORVA.ini", "[DNC]\r\nPort=COM1\r\n");
  support::fs::create_symlink("../store/MORVA.ini", folder / kBeside);
  Lock();
  EXPECT_EQ(platform::ProfilePath(), PathOf(kBeside));
  EXPECT_TRUE(SetPort(u"COM2"));
  EXPECT_EQ(Raw("store/MORVA.ini"), "[DNC]\r\nPort=COM2\r\n");
  EXPECT_FALSE(Exists(".config"));
}

TEST_F(ProfilePlaces, AChangeStaysWithTheFileThatItBeganWith) {
  Put(kBeside, "[DNC]\r\nPort=COM1\r\n");
  Lock();
  platform::BeginProfileChange();
  platform::WriteProfile(u"DNC", u"Port", u"COM2");
  Unlock();
  EXPECT_TRUE(platform::EndProfileChange());
  EXPECT_EQ(Raw(kBeside), "[DNC]\r\nPort=COM1\r\n");
  EXPECT_EQ(Raw(kOwn), "[DNC]\r\nPort=COM2\r\n");
}

TEST_F(ProfilePlaces, AreNowhereWithoutAFolderForSettings) {
  headless::RemoveConfiguration();
  Put(kBeside, "[DNC]\r\nPort=COM1\r\n");
  Lock();
  EXPECT_EQ(platform::WhereProfileIsKept(), ProfilePlace::Nowhere);
  EXPECT_EQ(platform::ProfilePath(), PathOf(kBeside));
  EXPECT_EQ(Port(), u"COM1");
  EXPECT_FALSE(SetPort(u"COM2"));
  EXPECT_EQ(Port(), u"COM1");
  EXPECT_EQ(Raw(kBeside), "[DNC]\r\nPort=COM1\r\n");
}

TEST_F(ProfilePlaces, AreNowhereWhereAFileStandsInTheWay) {
  Put(".config", "no folder");
  Lock();
  EXPECT_EQ(platform::WhereProfileIsKept(), ProfilePlace::Nowhere);
  EXPECT_FALSE(SetPort(u"COM2"));
  EXPECT_EQ(Raw(".config"), "no folder");
}

TEST_F(ProfilePlaces, ReadTheUsersFileAlsoWhereItCannotBeWritten) {
  Put(kBeside, "[DNC]\r\nPort=COM1\r\n");
  PutOwn("[DNC]\r\nPort=COM9\r\n");
  support::fs::permissions(folder / ".config" / "MORVA", support::fs::perms(0555));
  Lock();
  EXPECT_EQ(platform::WhereProfileIsKept(), ProfilePlace::Nowhere);
  EXPECT_EQ(Port(), u"COM9");
  EXPECT_FALSE(SetPort(u"COM2"));
  EXPECT_EQ(Raw(kOwn), "[DNC]\r\nPort=COM9\r\n");
  support::fs::permissions(folder / ".config" / "MORVA", support::fs::perms(0755));
}

}  // namespace
