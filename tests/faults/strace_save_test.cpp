// A real process saves a real file while the system refuses or kills it at each of its system
// calls in turn; and a save onto a file system that really is full.

#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string>
#include <vector>

#include "documents/file_text.h"
#include "support/places.h"
#include "support/program_stage.h"

namespace {

using morva::app;
namespace fs = std::filesystem;

const std::string kOld(3000, 'o');
const std::string kNew(5000, 'n');

struct Cut : public ::testing::Test {
  fs::path folder = support::NewHome();
  fs::path programs = folder / "programs";
  fs::path log = folder / "log";
  ~Cut() override {
    std::error_code ignored;
    fs::remove_all(folder, ignored);
  }
  // Exit status of a shell command, 128 and the signal for a killed one.
  static int Run(const std::string& command) {
    const int status = std::system(command.c_str());
    if (WIFSIGNALED(status)) return 128 + WTERMSIG(status);
    return WEXITSTATUS(status);
  }
  bool CanTrace() const {
    return Run("strace -f -o " + log.string() + " true >/dev/null 2>&1") == 0;
  }
  std::string Strays() const {
    std::string names;
    for (const std::string& name : support::NamesIn(programs)) {
      if (name.find(".tmp-") != name.npos) names += name + " ";
    }
    return names;
  }
  static std::string SaveOnce(const fs::path& program) {
    return support::BinaryDir() + ("/bin/save_once " + program.string() + " 5000");
  }
  // One save with this injection. What came of it stands in `log` and in `programs`.
  int Save(const std::string& inject) const {
    fs::remove_all(programs);
    fs::create_directory(programs);
    support::WriteRaw(programs / "a.NC", kOld);
    // Another mode than a new file has, so that it must be set.
    fs::permissions(programs / "a.NC", fs::perms(0640));
    return Run("strace -f -y -o " + log.string() + " -e 'inject=" + inject + "' " +
               SaveOnce(programs / "a.NC") + " 2>/dev/null");
  }
  // The calls that were refused, one line each; a call is counted under each of its names.
  std::vector<std::string> Refused() const {
    std::ifstream in(log);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) {
      if (line.find("(INJECTED)") != line.npos) lines.push_back(line);
    }
    return lines;
  }
  void CheckWhole(const std::string& where) const {
    const std::string bytes = support::ReadRaw(programs / "a.NC");
    EXPECT_TRUE(bytes == kOld || bytes == kNew) << where << ": " << bytes.size() << " bytes";
    EXPECT_EQ(fs::status(programs / "a.NC").permissions(), fs::perms(0640)) << where;
  }
};

// The calls of a save, under every name that a C library may use for them.
constexpr const char* kCalls[] = {"openat",
                                  "readlink,readlinkat",
                                  "stat,newfstatat,fstat,statx",
                                  "faccessat,faccessat2,access",
                                  "chmod,fchmodat",
                                  "write",
                                  "fsync",
                                  "close",
                                  "rename,renameat,renameat2"};

// strace refuses a set with a name that the machine's kernel interface does not have.
std::string Known(const std::string& calls) {
  std::string known;
  for (std::size_t at = 0; at < calls.size();) {
    const std::size_t comma = std::min(calls.find(',', at), calls.size());
    known += (known.empty() ? "?" : ",?") + calls.substr(at, comma - at);
    at = comma + 1;
  }
  return known;
}

TEST_F(Cut, RefusedAtAnyCallLeavesTheOldFileAndNothingBesideIt) {
  if (!CanTrace()) GTEST_SKIP() << "strace is missing or may not trace here";
  for (const char* calls : kCalls) {
    bool onSavedFile = false;
    int n = 0;
    bool met = false;
    do {
      const std::string where = calls + std::string(" ") + std::to_string(++n);
      const int status = Save(Known(calls) + ":error=ENOSPC:when=" + std::to_string(n));
      const std::vector<std::string> refused = Refused();
      met = !refused.empty();
      CheckWhole(where);
      EXPECT_EQ(Strays(), "") << where;
      if (!met) {
        EXPECT_EQ(status, 0) << where;
      } else if (status == 0) {
        EXPECT_EQ(support::ReadRaw(programs / "a.NC"), kNew) << where;
      }
      // Refused on the saved file or the new one beside it, the save must say that it failed.
      for (const std::string& line : refused) {
        const bool fresh = line.find("/programs/.tmp-") != line.npos;
        if (!fresh && line.find("/programs/a.NC") == line.npos) continue;
        onSavedFile = true;
        EXPECT_EQ(status, 3) << line;
        EXPECT_EQ(support::ReadRaw(programs / "a.NC"), kOld) << line;
      }
      ASSERT_LT(n, 80) << calls;
    } while (met);
    EXPECT_TRUE(onSavedFile) << calls << " never fell on the file that was saved";
  }
}

TEST_F(Cut, KilledAtAnyCallLeavesOneOfTheTwoFilesWhole) {
  if (!CanTrace()) GTEST_SKIP() << "strace is missing or may not trace here";
  for (const char* calls : kCalls) {
    int n = 0;
    int status = 0;
    do {
      const std::string where = calls + std::string(" ") + std::to_string(++n);
      status = Save(Known(calls) + ":signal=KILL:when=" + std::to_string(n));
      CheckWhole(where);
      if (status == 0) {
        EXPECT_EQ(support::ReadRaw(programs / "a.NC"), kNew) << where;
      }
      ASSERT_LT(n, 80) << calls;
    } while (status != 0);
    EXPECT_GE(n, 2) << calls;
  }
}

TEST_F(Cut, SavesWhenNothingIsInTheWay) {
  fs::create_directory(programs);
  support::WriteRaw(programs / "a.NC", kOld);
  EXPECT_EQ(Run(SaveOnce(programs / "a.NC")), 0);
  EXPECT_EQ(support::ReadRaw(programs / "a.NC"), kNew);
}

// 64 KiB of file system, taken down at the end.
struct FullDisk : public support::OfflineProgramStage {
  fs::path disk = folder / "disk";
  bool mounted = false;
  FullDisk() {
    fs::create_directory(disk);
    mounted = mount("none", disk.c_str(), "tmpfs", 0, "size=64k") == 0;
    problem = std::strerror(errno);
  }
  ~FullDisk() override {
    if (mounted) umount2(disk.c_str(), MNT_DETACH);
  }
  std::string problem;
};

TEST_F(FullDisk, KeepsTheOldProgramAndTheMark) {
  if (!mounted) GTEST_SKIP() << "no small file system can be mounted here: " << problem;
  Put("disk/a.NC", "G0 X1\r\n");
  OpenFile("disk/a.NC");
  EXPECT_TRUE(morva::SaveProgramCommand());
  const std::string before = Raw("disk/a.NC");
  headless::TakeBoxes();
  TypeProgram(u"(" + std::u16string(60000, u'x') + u")");
  EXPECT_FALSE(morva::SaveProgramCommand());
  EXPECT_EQ(headless::TakeBoxes().size(), 1u);
  EXPECT_TRUE(app.editorDirty);
  EXPECT_EQ(Raw("disk/a.NC"), before);
  EXPECT_EQ(support::NamesIn(disk), (std::vector<std::string>{"a.NC", "a.NC.features"}));
  EXPECT_GT(Text().size(), 60000u);
  // With room again the same text goes out.
  TypeProgram(u"G0 X2");
  EXPECT_TRUE(morva::SaveProgramCommand());
  EXPECT_NE(Raw("disk/a.NC").find("G0 X2"), std::string::npos);
}

TEST_F(FullDisk, FailsOnlyWhereTheLastBytesDoNotFit) {
  if (!mounted) GTEST_SKIP() << "no small file system can be mounted here: " << problem;
  ASSERT_TRUE(morva::SaveFileAtomic(PathOf("disk/a"), kOld));
  // Old and new file stand beside each other until the rename.
  EXPECT_FALSE(morva::SaveFileAtomic(PathOf("disk/a"), std::string(61441, 'n')));
  EXPECT_EQ(Raw("disk/a"), kOld);
  EXPECT_EQ(support::NamesIn(disk), std::vector<std::string>{"a"});
  EXPECT_TRUE(morva::SaveFileAtomic(PathOf("disk/a"), std::string(61440, 'n')));
  EXPECT_EQ(Raw("disk/a"), std::string(61440, 'n'));
}

}  // namespace
