// Files and folders step by step, on real files in a folder of the test's own.

#include "platform/file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>

#include "platform/atomic_file.h"
#include "platform/clock.h"
#include "platform/common/faults.h"
#include "platform/limits.h"
#include "platform/real_path.h"
#include "support/stage.h"

namespace {

namespace fs = std::filesystem;
using platform::ReadAnswer;
using support::NamesIn;
using support::ReadRaw;
using support::Wide;
using support::WriteRaw;

struct Files : public ::testing::Test {
  fs::path folder = support::NewHome();
  ~Files() override {
    platform::fileFault = nullptr;
    std::error_code ignored;
    fs::remove_all(folder, ignored);
  }
  std::u16string Path(const std::string& name) const { return Wide((folder / name).string()); }
};

struct AtomicFile : public Files {};

mode_t ModeOf(const fs::path& path) {
  struct stat about;
  EXPECT_EQ(stat(path.c_str(), &about), 0);
  return about.st_mode & 07777;
}

TEST_F(Files, ReadsAWholeFileUpToTheLimitAndNotAByteMore) {
  WriteRaw(folder / "a", "12345");
  std::string bytes = "old";
  EXPECT_EQ(platform::ReadBytes(Path("a"), 5, bytes), ReadAnswer::Read);
  EXPECT_EQ(bytes, "12345");
  EXPECT_EQ(platform::ReadBytes(Path("a"), 4, bytes), ReadAnswer::TooLarge);
  EXPECT_EQ(bytes, "");
}

TEST_F(Files, ReadsAnEmptyFile) {
  WriteRaw(folder / "a", "");
  std::string bytes = "old";
  EXPECT_EQ(platform::ReadBytes(Path("a"), 5, bytes), ReadAnswer::Read);
  EXPECT_EQ(bytes, "");
}

TEST_F(Files, FailsOnWhatIsNoFile) {
  std::string bytes;
  EXPECT_EQ(platform::ReadBytes(Path("missing"), 5, bytes), ReadAnswer::Failed);
  EXPECT_EQ(platform::ReadBytes(Wide(folder.string()), 5, bytes), ReadAnswer::Failed);
  EXPECT_EQ(platform::ReadBytes(u"/dev/zero", 5, bytes), ReadAnswer::Failed);
  EXPECT_EQ(platform::ReadBytes(u"", 5, bytes), ReadAnswer::Failed);
}

TEST_F(Files, DoesNotHangOnAPipeWithoutAWriter) {
  ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
  std::string bytes;
  EXPECT_EQ(platform::ReadBytes(Path("pipe"), 5, bytes), ReadAnswer::Failed);
}

TEST_F(Files, RefusesANulInAPath) {
  WriteRaw(folder / "a", "x");
  std::u16string path = Path("a");
  path += u'\0';
  path += u"b";
  std::string bytes;
  EXPECT_EQ(platform::ReadBytes(path, 5, bytes), ReadAnswer::Failed);
  EXPECT_FALSE(platform::EraseFile(path));
  EXPECT_TRUE(platform::FileExists(Path("a")));
}

TEST_F(Files, MakesANewFileAndNeverOpensAnOldOne) {
  const int handle = platform::NewFile(Path("n"));
  ASSERT_GE(handle, 0);
  EXPECT_EQ(platform::WriteBytes(handle, "abc", 3), 3);
  EXPECT_EQ(platform::SizeOfFile(handle), 3);
  EXPECT_TRUE(platform::FlushFile(handle));
  EXPECT_TRUE(platform::ShutFile(handle));
  EXPECT_EQ(ReadRaw(folder / "n"), "abc");
  EXPECT_EQ(platform::NewFile(Path("n")), -1);
  EXPECT_EQ(ReadRaw(folder / "n"), "abc");
}

TEST_F(Files, KeepsNamesThatAreNotAscii) {
  const std::u16string path = Path("Gew\xC3\xBCnde \xE2\x80\x94 1.NC");
  platform::ShutFile(platform::NewFile(path));
  EXPECT_TRUE(platform::FileExists(path));
  EXPECT_EQ(NamesIn(folder), std::vector<std::string>{"Gew\xC3\xBCnde \xE2\x80\x94 1.NC"});
}

TEST_F(Files, MakesAFolderOnceAndTakesAnythingThatStandsThere) {
  EXPECT_EQ(platform::MakeFolder(Path("d")), platform::FolderAnswer::Made);
  EXPECT_EQ(platform::MakeFolder(Path("d")), platform::FolderAnswer::Exists);
  WriteRaw(folder / "f", "x");
  EXPECT_EQ(platform::MakeFolder(Path("f")), platform::FolderAnswer::Exists);
  EXPECT_EQ(platform::MakeFolder(Path("no/d")), platform::FolderAnswer::Failed);
}

TEST_F(Files, FollowsALinkToItsEnd) {
  WriteRaw(folder / "real", "x");
  fs::create_symlink("real", folder / "one");
  fs::create_symlink(folder / "one", folder / "two");
  EXPECT_EQ(platform::LinkTarget(Path("two")), Path("real"));
  EXPECT_EQ(platform::LinkTarget(Path("real")), Path("real"));
  EXPECT_EQ(platform::LinkTarget(Path("missing")), Path("missing"));
}

TEST_F(Files, GivesNothingForLinksInACircle) {
  fs::create_symlink("b", folder / "a");
  fs::create_symlink("a", folder / "b");
  EXPECT_EQ(platform::LinkTarget(Path("a")), u"");
}

TEST_F(Files, FollowsAsManyLinksAsTheLimitIncludingTheLook) {
  // The last of the 40 looks finds that the file itself is no link.
  static_assert(platform::kMaxLinks == 40);
  WriteRaw(folder / "0", "x");
  for (int i = 1; i <= 41; ++i) {
    fs::create_symlink(std::to_string(i - 1), folder / std::to_string(i));
  }
  EXPECT_EQ(platform::LinkTarget(Path("39")), Path("0"));
  EXPECT_EQ(platform::LinkTarget(Path("40")), u"");
  EXPECT_EQ(platform::LinkTarget(Path("38")), Path("0"));
}

TEST_F(Files, NamesAFileOfTheCommandLineByItsRealFolder) {
  fs::create_directories(folder / "jobs/old");
  fs::create_directory_symlink("jobs", folder / "link");
  WriteRaw(folder / "jobs/a.NC", "G0");
  fs::create_symlink("a.NC", folder / "jobs/b.NC");
  const std::string at = folder.string();
  for (const char* spelled : {"/jobs/a.NC", "/link/a.NC", "/jobs/old/../a.NC", "/./link//a.NC"}) {
    EXPECT_EQ(platform::PathOfArgument((at + spelled).c_str()), Path("jobs/a.NC")) << spelled;
  }
  // A program opened by a link of its own keeps that name.
  EXPECT_EQ(platform::PathOfArgument((at + "/link/b.NC").c_str()), Path("jobs/b.NC"));
  EXPECT_EQ(platform::PathOfArgument((at + "/none/a.NC").c_str()), Path("none/a.NC"));
  const fs::path before = fs::current_path();
  fs::current_path(folder / "jobs/old");
  EXPECT_EQ(platform::PathOfArgument("../a.NC"), Path("jobs/a.NC"));
  EXPECT_EQ(platform::PathOfArgument("new.NC"), Path("jobs/old/new.NC"));
  fs::current_path(before);
}

TEST_F(AtomicFile, WritesNothingThroughALinkToANameThatIsNoUtf8) {
  // The name would come back as another one, and a file of that name be made beside the target.
  const std::string latin = (folder / "caf").string() + "\xE9";
  WriteRaw(latin, "old");
  fs::create_symlink(latin, folder / "link.NC");
  EXPECT_EQ(platform::LinkTarget(Path("link.NC")), u"");
  EXPECT_FALSE(platform::WriteFileAtomic(Path("link.NC"), "new"));
  EXPECT_EQ(ReadRaw(latin), "old");
  EXPECT_EQ(NamesIn(folder).size(), 2u);
}

TEST_F(AtomicFile, WritesANewFileAndLeavesNothingBesideIt) {
  EXPECT_TRUE(platform::WriteFileAtomic(Path("p.NC"), "G0 X1\r\n"));
  EXPECT_EQ(ReadRaw(folder / "p.NC"), "G0 X1\r\n");
  EXPECT_EQ(NamesIn(folder), std::vector<std::string>{"p.NC"});
}

TEST_F(AtomicFile, WritesAnEmptyFile) {
  WriteRaw(folder / "p.NC", "old");
  EXPECT_TRUE(platform::WriteFileAtomic(Path("p.NC"), ""));
  EXPECT_EQ(ReadRaw(folder / "p.NC"), "");
}

TEST_F(AtomicFile, KeepsTheModeOfTheOldFile) {
  WriteRaw(folder / "p.NC", "old");
  ASSERT_EQ(chmod((folder / "p.NC").c_str(), 0640), 0);
  EXPECT_TRUE(platform::WriteFileAtomic(Path("p.NC"), "new"));
  EXPECT_EQ(ModeOf(folder / "p.NC"), 0640u);
  EXPECT_EQ(ReadRaw(folder / "p.NC"), "new");
}

// A folder that a whole workshop shares may hold files that everybody may write.
TEST_F(AtomicFile, KeepsEachBitOfAccess) {
  WriteRaw(folder / "p.NC", "old");
  for (mode_t bit = 01; bit <= 0400; bit <<= 1) {
    // The user who saves must be able to read and write.
    const mode_t mode = 0600 | bit;
    ASSERT_EQ(chmod((folder / "p.NC").c_str(), mode), 0);
    EXPECT_TRUE(platform::WriteFileAtomic(Path("p.NC"), "new"));
    EXPECT_EQ(ModeOf(folder / "p.NC"), mode);
  }
}

TEST_F(AtomicFile, KeepsTheOwnerOfTheOldFile) {
  if (geteuid() != 0) GTEST_SKIP() << "only the superuser can give a file away";
  WriteRaw(folder / "p.NC", "old");
  ASSERT_EQ(chown((folder / "p.NC").c_str(), 4321, 1234), 0);
  ASSERT_EQ(chmod((folder / "p.NC").c_str(), 0664), 0);
  EXPECT_TRUE(platform::WriteFileAtomic(Path("p.NC"), "new"));
  struct stat about;
  ASSERT_EQ(stat((folder / "p.NC").c_str(), &about), 0);
  EXPECT_EQ(about.st_uid, 4321u);
  EXPECT_EQ(about.st_gid, 1234u);
  EXPECT_EQ(about.st_mode & 07777, 0664u);
}

TEST_F(AtomicFile, WritesThroughALinkInAnotherFolder) {
  fs::create_directory(folder / "store");
  WriteRaw(folder / "store" / "p.NC", "old");
  fs::create_symlink("store/p.NC", folder / "link.NC");
  EXPECT_TRUE(platform::WriteFileAtomic(Path("link.NC"), "new"));
  EXPECT_TRUE(fs::is_symlink(folder / "link.NC"));
  EXPECT_EQ(ReadRaw(folder / "store" / "p.NC"), "new");
  EXPECT_EQ(NamesIn(folder / "store"), std::vector<std::string>{"p.NC"});
}

TEST_F(AtomicFile, MakesTheTargetOfALinkThatLeadsNowhereYet) {
  fs::create_symlink("later.NC", folder / "link.NC");
  EXPECT_TRUE(platform::WriteFileAtomic(Path("link.NC"), "new"));
  EXPECT_TRUE(fs::is_symlink(folder / "link.NC"));
  EXPECT_EQ(ReadRaw(folder / "later.NC"), "new");
}

TEST_F(AtomicFile, ReplacesNeitherAFolderNorAPipe) {
  fs::create_directory(folder / "d");
  ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
  EXPECT_FALSE(platform::WriteFileAtomic(Path("d"), "new"));
  EXPECT_FALSE(platform::WriteFileAtomic(Path("pipe"), "new"));
  EXPECT_TRUE(fs::is_directory(folder / "d"));
  EXPECT_TRUE(fs::is_fifo(folder / "pipe"));
  EXPECT_EQ(NamesIn(folder), (std::vector<std::string>{"d", "pipe"}));
}

TEST_F(AtomicFile, ReplacesNoFileThatTheUserMayNotWrite) {
  if (geteuid() == 0) GTEST_SKIP() << "the superuser may write everything";
  WriteRaw(folder / "p.NC", "old");
  ASSERT_EQ(chmod((folder / "p.NC").c_str(), 0444), 0);
  EXPECT_FALSE(platform::WriteFileAtomic(Path("p.NC"), "new"));
  EXPECT_EQ(ReadRaw(folder / "p.NC"), "old");
  EXPECT_EQ(NamesIn(folder), std::vector<std::string>{"p.NC"});
}

TEST_F(AtomicFile, FailsForAFolderThatDoesNotExist) {
  EXPECT_FALSE(platform::WriteFileAtomic(Path("no/p.NC"), "new"));
  EXPECT_TRUE(NamesIn(folder).empty());
}

// The count of the call that fails, and the calls seen so far, per kind.
std::string faultKind;
int faultAt = 0;
int faultSeen = 0;

bool FailNth(std::string_view kind) { return kind == faultKind && ++faultSeen == faultAt; }

TEST_F(AtomicFile, KeepsTheOldFileWholeWhateverStepFails) {
  for (const char* kind : {"new", "write", "size", "flush", "shut", "access", "rename"}) {
    int at = 0;
    do {
      WriteRaw(folder / "p.NC", "old");
      faultKind = kind;
      faultAt = ++at;
      faultSeen = 0;
      platform::fileFault = FailNth;
      const bool saved = platform::WriteFileAtomic(Path("p.NC"), "brand new");
      platform::fileFault = nullptr;
      const bool met = faultSeen >= faultAt;
      EXPECT_EQ(saved, !met) << kind << " " << at;
      EXPECT_EQ(ReadRaw(folder / "p.NC"), met ? "old" : "brand new") << kind << " " << at;
      EXPECT_EQ(NamesIn(folder), std::vector<std::string>{"p.NC"}) << kind << " " << at;
    } while (faultSeen >= faultAt);
    EXPECT_GE(at, 2) << kind << " was never asked for";
  }
}

TEST_F(AtomicFile, GoesOnAfterAShortWrite) {
  faultKind = "short";
  faultAt = 1;
  faultSeen = 0;
  platform::fileFault = FailNth;
  EXPECT_TRUE(platform::WriteFileAtomic(Path("p.NC"), "twelve bytes"));
  EXPECT_GE(faultSeen, 2);
  EXPECT_EQ(ReadRaw(folder / "p.NC"), "twelve bytes");
}

TEST_F(AtomicFile, SaysSoWhenTheFolderCouldNotBeFlushed) {
  WriteRaw(folder / "p.NC", "old");
  faultKind = "flushfolder";
  faultAt = 1;
  faultSeen = 0;
  platform::fileFault = FailNth;
  EXPECT_FALSE(platform::WriteFileAtomic(Path("p.NC"), "new"));
  EXPECT_EQ(ReadRaw(folder / "p.NC"), "new");
  EXPECT_EQ(NamesIn(folder), std::vector<std::string>{"p.NC"});
}

int fileFlushes = 0;
int folderFlushes = 0;
bool CountBothFlushes(std::string_view kind) {
  fileFlushes += kind == "flush";
  folderFlushes += kind == "flushfolder";
  return false;
}

TEST_F(AtomicFile, FlushesWhatIsToOutlastAPowerCut) {
  const struct {
    platform::Lasting lasting;
    int files;
    int folders;
  } rows[] = {{platform::Lasting::Folder, 1, 1},
              {platform::Lasting::File, 1, 0},
              {platform::Lasting::No, 0, 0}};
  platform::fileFault = CountBothFlushes;
  for (const auto& row : rows) {
    fileFlushes = folderFlushes = 0;
    EXPECT_TRUE(platform::WriteFileAtomic(Path("p.NC"), "new", row.lasting));
    EXPECT_EQ(fileFlushes, row.files);
    EXPECT_EQ(folderFlushes, row.folders);
    EXPECT_EQ(ReadRaw(folder / "p.NC"), "new");
  }
}

TEST_F(AtomicFile, WritesUnderANameOf255Bytes) {
  const std::string name = std::string(252, 'n') + ".NC";
  EXPECT_TRUE(platform::WriteFileAtomic(Path(name), "new"));
  EXPECT_TRUE(platform::WriteFileAtomic(Path(name), "newer"));
  EXPECT_EQ(ReadRaw(folder / name), "newer");
  EXPECT_EQ(NamesIn(folder), std::vector<std::string>{name});
}

platform::WriteAnswer WriteCompanion(const std::u16string& path, const std::u16string& program) {
  platform::FileFigures written;
  return platform::WriteAtomic({.path = path, .bytes = "new", .companionOf = program}, written);
}

TEST_F(AtomicFile, ReplacesTheLinkThatStandsInACompanionsPlace) {
  fs::create_directory(folder / "outside");
  WriteRaw(folder / "outside" / "secret", "secret");
  WriteRaw(folder / "p.NC", "program");
  fs::create_symlink("outside/secret", folder / "p.NC.cadmv");
  EXPECT_EQ(WriteCompanion(Path("p.NC.cadmv"), Path("p.NC")), platform::WriteAnswer::Written);
  EXPECT_FALSE(fs::is_symlink(folder / "p.NC.cadmv"));
  EXPECT_EQ(ReadRaw(folder / "p.NC.cadmv"), "new");
  EXPECT_EQ(ReadRaw(folder / "outside" / "secret"), "secret");
  EXPECT_EQ(NamesIn(folder / "outside"), std::vector<std::string>{"secret"});
}

TEST_F(AtomicFile, GivesACompanionTheModeOfItsProgram) {
  WriteRaw(folder / "p.NC", "program");
  ASSERT_EQ(chmod((folder / "p.NC").c_str(), 0600), 0);
  WriteRaw(folder / "p.NC.cadmv", "old");
  ASSERT_EQ(chmod((folder / "p.NC.cadmv").c_str(), 0644), 0);
  EXPECT_EQ(WriteCompanion(Path("p.NC.cadmv"), Path("p.NC")), platform::WriteAnswer::Written);
  EXPECT_EQ(WriteCompanion(Path("p.NC.features"), Path("p.NC")), platform::WriteAnswer::Written);
  EXPECT_EQ(ModeOf(folder / "p.NC.cadmv"), 0600u);
  EXPECT_EQ(ModeOf(folder / "p.NC.features"), 0600u);
}

TEST_F(AtomicFile, PutsACompanionInThePlaceOfNeitherAFolderNorAPipe) {
  WriteRaw(folder / "p.NC", "program");
  fs::create_directory(folder / "d");
  ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
  EXPECT_EQ(WriteCompanion(Path("d"), Path("p.NC")), platform::WriteAnswer::Failed);
  EXPECT_EQ(WriteCompanion(Path("pipe"), Path("p.NC")), platform::WriteAnswer::Failed);
  EXPECT_EQ(NamesIn(folder), (std::vector<std::string>{"d", "p.NC", "pipe"}));
}

TEST_F(AtomicFile, ReplacesOnlyTheStateThatIsExpected) {
  WriteRaw(folder / "p.NC", "old");
  const platform::FileFigures known = platform::FiguresOf(Path("p.NC"));
  platform::FileFigures written;
  WriteRaw(folder / "p.NC", "from elsewhere");
  const std::u16string path = Path("p.NC");
  EXPECT_EQ(platform::WriteAtomic({.path = path, .bytes = "mine", .expected = &known}, written),
            platform::WriteAnswer::Changed);
  EXPECT_EQ(ReadRaw(folder / "p.NC"), "from elsewhere");
  EXPECT_EQ(NamesIn(folder), std::vector<std::string>{"p.NC"});
  const platform::FileFigures now = platform::FiguresOf(path);
  EXPECT_EQ(platform::WriteAtomic({.path = path, .bytes = "mine", .expected = &now}, written),
            platform::WriteAnswer::Written);
  EXPECT_EQ(ReadRaw(folder / "p.NC"), "mine");
}

TEST_F(AtomicFile, TellsTheFiguresOfWhatItWrote) {
  platform::FileFigures written;
  const std::u16string path = Path("p.NC");
  ASSERT_EQ(platform::WriteAtomic({.path = path, .bytes = "twelve bytes"}, written),
            platform::WriteAnswer::Written);
  EXPECT_EQ(written.size, 12u);
  EXPECT_EQ(written, platform::FiguresOf(path));
}

TEST_F(AtomicFile, TakesAnotherNameWhereAStrayFileHasTheFirst) {
  static std::string seen;
  static fs::path inside;
  inside = folder;
  const auto occupy = [](std::string_view kind) {
    if (kind != "new" || !seen.empty()) return false;
    // The name is made of the tick; the files of this and the next second take it away.
    const std::uint64_t now = platform::TickMilliseconds();
    for (std::uint64_t tick = now; tick < now + 1000; ++tick) {
      WriteRaw(inside / (".tmp-" + std::to_string(static_cast<std::uint32_t>(tick))), "stray");
    }
    seen = "occupied";
    return true;
  };
  platform::fileFault = occupy;
  const bool saved = platform::WriteFileAtomic(Path("p.NC"), "new");
  platform::fileFault = nullptr;
  seen.clear();
  EXPECT_TRUE(saved);
  EXPECT_EQ(ReadRaw(folder / "p.NC"), "new");
}

TEST_F(AtomicFile, KnowsOneFileByAllOfItsNames) {
  WriteRaw(folder / "p.NC", "x");
  WriteRaw(folder / "other.NC", "x");
  fs::create_symlink("p.NC", folder / "link.NC");
  fs::create_hard_link(folder / "p.NC", folder / "hard.NC");
  const platform::FileFigures program = platform::FiguresOf(Path("p.NC"));
  EXPECT_TRUE(platform::IsSameFile(program, platform::FiguresOf(Path("link.NC"))));
  EXPECT_TRUE(platform::IsSameFile(program, platform::FiguresOf(Path("hard.NC"))));
  EXPECT_FALSE(platform::IsSameFile(program, platform::FiguresOf(Path("other.NC"))));
  const platform::FileFigures none = platform::FiguresOf(Path("none"));
  EXPECT_FALSE(platform::IsSameFile(none, none));
}

}  // namespace
