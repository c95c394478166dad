// Files that belong to no tab, and a disk that takes 300 ms for each flush of a file.

#include "documents/saver.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "documents/recovery.h"
#include "documents/tab_models.h"
#include "library/shapes.h"
#include "platform/clock.h"
#include "platform/common/faults.h"
#include "platform/profile.h"
#include "platform/thread.h"
#include "support/program_stage.h"

namespace {

using morva::app;

std::vector<bool> told;
void Tell(bool saved) { told.push_back(saved); }

struct Saver : public support::ProgramStage {
  Saver() { told.clear(); }
  std::string Settings() const { return Raw("bin/MORVA.ini"); }
  static void SetPort(std::u16string_view port) {
    platform::BeginProfileChange();
    platform::WriteProfile(u"DNC", u"Port", port);
    EXPECT_TRUE(platform::EndProfileChange(Tell));
  }
};

TEST_F(Saver, WritesTheSettingsFileWhileTheWindowGoesOn) {
  Put("bin/MORVA.ini", "[DNC]\r\nPort=COM1\r\n");
  headless::SetFlushTime(300);
  const std::uint64_t start = platform::TickMilliseconds();
  SetPort(u"COM2");
  EXPECT_EQ(platform::TickMilliseconds(), start);
  EXPECT_TRUE(told.empty());
  EXPECT_EQ(Settings(), "[DNC]\r\nPort=COM1\r\n");
  // What was set is read although it is not written yet.
  EXPECT_EQ(platform::ReadProfile(u"DNC", u"Port", u""), u"COM2");
  headless::Advance(300);
  EXPECT_EQ(told, std::vector<bool>{true});
  EXPECT_EQ(Settings(), "[DNC]\r\nPort=COM2\r\n");
}

TEST_F(Saver, WritesOfTheSettingsThatWaitOnlyTheNewestAndTellsAll) {
  headless::SetFlushTime(300);
  SetPort(u"COM1");
  SetPort(u"COM2");
  platform::WriteProfile(u"DNC", u"Baud", u"9600");
  SetPort(u"COM3");
  headless::Advance(300);
  EXPECT_EQ(told, std::vector<bool>{true});
  EXPECT_EQ(Settings(), "[DNC]\r\nPort=COM1\r\n");
  headless::Advance(300);
  EXPECT_EQ(told, (std::vector<bool>{true, true, true}));
  EXPECT_EQ(Settings(), "[DNC]\r\nPort=COM3\r\nBaud=9600\r\n");
  EXPECT_FALSE(morva::SavesUnderWay());
}

TEST_F(Saver, TellsWhenTheSettingsCouldNotBeWritten) {
  Put("bin/MORVA.ini", "[DNC]\r\nPort=COM1\r\n");
  headless::SetFlushTime(300);
  headless::FailCall("rename", 1);
  SetPort(u"COM2");
  // The same once more is no change to what is under way, and hears the same.
  SetPort(u"COM2");
  headless::Advance(1000);
  EXPECT_EQ(told, (std::vector<bool>{false, false}));
  EXPECT_EQ(Settings(), "[DNC]\r\nPort=COM1\r\n");
  EXPECT_EQ(platform::ReadProfile(u"DNC", u"Port", u""), u"COM1");
}

TEST_F(Saver, WritesTheSettingsAtOnceWhereNoThreadStarts) {
  headless::FailCall("worker", 1);
  SetPort(u"COM2");
  EXPECT_EQ(told, std::vector<bool>{true});
  EXPECT_EQ(Settings(), "[DNC]\r\nPort=COM2\r\n");
}

TEST_F(Saver, WritesTheShapeLibraryAndItsMirrorWhileTheWindowGoesOn) {
  headless::SetFlushTime(300);
  morva::shapeLibrary = morva::ShapeLibrary();
  ASSERT_EQ(morva::AppendShape(u"Bracket"), 0);
  const std::uint64_t start = platform::TickMilliseconds();
  EXPECT_TRUE(morva::SaveShapeLibrary(Tell));
  EXPECT_EQ(platform::TickMilliseconds(), start);
  EXPECT_TRUE(morva::WaitForSaves());
  EXPECT_EQ(told, std::vector<bool>{true});
  EXPECT_NE(Settings().find("Name=Bracket"), std::string::npos);
  EXPECT_EQ(Raw("Documents/MORVA/Shapes/Library.shapes").size(), 3224u);
}

std::vector<morva::SaveAnswer> answers;

// A share that does not answer for a moment, while another program has written the file.
TEST_F(Saver, WritesNothingWhereItCannotBeToldWhatStandsThere) {
  Put("Job.NC", "G0 X1\r\n");
  Put("Job.NC.features", "theirs");
  morva::SaveJob job;
  job.program = PathOf("Job.NC");
  job.checked = true;
  job.files = {{PathOf("Job.NC.features"), "mine"}, {job.program, "G0 X2\r\n"}};
  job.told = [](const morva::SaveResult& result) { answers.push_back(result.answer); };
  std::string bytes;
  ASSERT_TRUE(morva::ReadWithState(job.program, bytes, job.known));
  Put("Job.NC", "G0 X111\r\n");
  const auto save = [&] {
    answers.clear();
    morva::HandOverSave(job);
    EXPECT_TRUE(morva::WaitForSaves());
    return answers;
  };
  using Answers = std::vector<morva::SaveAnswer>;
  headless::FailCall("look", 1);
  EXPECT_EQ(save(), Answers{morva::SaveAnswer::Failed});
  EXPECT_EQ(Raw("Job.NC.features"), "theirs");
  EXPECT_EQ(save(), Answers{morva::SaveAnswer::Changed});
  EXPECT_EQ(Raw("Job.NC"), "G0 X111\r\n");
  // One that is gone for certain is written anew.
  support::fs::remove(folder / "Job.NC");
  EXPECT_EQ(save(), Answers{morva::SaveAnswer::Saved});
  EXPECT_EQ(Raw("Job.NC"), "G0 X2\r\n");
}

// A program with its excluded code, as a save of its tab hands them over.
struct SaverOfTwo : public Saver {
  SaverOfTwo() {
    answers.clear();
    shown = this;
  }
  ~SaverOfTwo() override { platform::fileFault = nullptr; }
  morva::SaveJob Job(std::string_view program = "G0 X2\r\n") const {
    morva::SaveJob job;
    job.serial = 7;
    job.program = PathOf("Job.NC");
    job.files = {{PathOf("Job.NC.features"), "mine"}, {job.program, std::string(program)}};
    job.told = [](const morva::SaveResult& result) { answers.push_back(result.answer); };
    return job;
  }
  // Knows the files as they stand now.
  morva::SaveJob CheckedJob() const {
    morva::SaveJob job = Job();
    job.checked = true;
    std::string bytes;
    EXPECT_TRUE(morva::ReadWithState(job.program, bytes, job.known));
    job.beside.push_back({PathOf("Job.NC.features"), {}});
    if (platform::FileExists(job.beside[0].path)) {
      EXPECT_TRUE(morva::ReadWithState(job.beside[0].path, bytes, job.beside[0].state));
    }
    return job;
  }
  static morva::SaveAnswer Save(morva::SaveJob job) {
    answers.clear();
    morva::HandOverSave(std::move(job));
    EXPECT_TRUE(morva::WaitForSaves());
    return answers.size() == 1 ? answers[0] : morva::SaveAnswer::Failed;
  }
  // Keeps the worker busy, so that what is handed over next waits.
  void HoldWorker() const {
    headless::SetFlushTime(300);
    morva::SaveJob other;
    other.program = PathOf("Other.NC");
    other.files = {{other.program, "G0\r\n"}};
    morva::HandOverSave(std::move(other));
  }
  static const SaverOfTwo* shown;
};
const SaverOfTwo* SaverOfTwo::shown = nullptr;

// Between the look at the files and the moment in which they are replaced.
TEST_F(SaverOfTwo, LeavesExcludedCodeThatAnotherWindowWritesMeanwhile) {
  Put("Job.NC", "G0 X1\r\n");
  Put("Job.NC.features", "before");
  morva::SaveJob job = CheckedJob();
  platform::fileFault = [](std::string_view kind) {
    if (kind == "flush") shown->Put("Job.NC.features", "theirs, of another window");
    return false;
  };
  EXPECT_EQ(Save(job), morva::SaveAnswer::Changed);
  EXPECT_EQ(Raw("Job.NC.features"), "theirs, of another window");
  EXPECT_EQ(Raw("Job.NC"), "G0 X1\r\n");
}

// Program and companion are gone; the companion comes by another window while it is being written.
TEST_F(SaverOfTwo, ErasesNoFreshCompanionThatAnotherWindowWrote) {
  Put("Job.NC", "G0 X1\r\n");
  Put("Job.NC.features", "before");
  morva::SaveJob job = CheckedJob();
  support::fs::remove(folder / "Job.NC");
  support::fs::remove(folder / "Job.NC.features");
  platform::fileFault = [](std::string_view kind) {
    if (kind == "flush") shown->Put("Job.NC.features", "theirs, of another window");
    return false;
  };
  EXPECT_EQ(Save(job), morva::SaveAnswer::Changed);
  EXPECT_EQ(Raw("Job.NC.features"), "theirs, of another window");
}

TEST_F(SaverOfTwo, WritesNothingBesideExcludedCodeOfAnotherWindow) {
  Put("Job.NC", "G0 X1\r\n");
  morva::SaveJob job = CheckedJob();
  Put("Job.NC.features", "theirs");
  EXPECT_EQ(Save(job), morva::SaveAnswer::Changed);
  // A share that does not say at the second of the two what stands there.
  headless::FailCall("look", 2);
  EXPECT_EQ(Save(job), morva::SaveAnswer::Failed);
  EXPECT_EQ(Raw("Job.NC.features"), "theirs");
  EXPECT_EQ(Raw("Job.NC"), "G0 X1\r\n");
}

// What an earlier save has put away is the only copy of it.
TEST_F(SaverOfTwo, PutsNothingOverAKeptFileThatItCannotSee) {
  Put("Job.NC", "G0 X1\r\n");
  Put("Job.NC.features.kept", "kept by an earlier save");
  morva::SaveJob job = Job();
  job.moves = {{PathOf("Job.NC.features"), PathOf("Job.NC.features.kept")}};
  for (const int look : {1, 2, 3}) {
    Put("Job.NC.features", "damaged");
    headless::FailCall("look", look);
    Save(job);
    headless::FailCall("look", 0);
    EXPECT_EQ(Raw("Job.NC.features.kept"), "kept by an earlier save") << look;
  }
}

// Whichever write fails: the old program never stands beside the new one's excluded code.
TEST_F(SaverOfTwo, WritesAProgramThatReplacesAnotherFirstAlsoInPlaceOfAnOlderSave) {
  for (const int write : {1, 2, 3}) {
    Put("Job.NC", "G0 X1\r\n");
    Put("Job.NC.features", "of the program that stands there");
    HoldWorker();
    morva::SaveJob older = Job();
    older.replaces = true;
    morva::HandOverSave(std::move(older));
    headless::FailCall("write", write);
    Save(Job());
    headless::FailCall("write", 0);
    EXPECT_FALSE(Raw("Job.NC") == "G0 X1\r\n" && Raw("Job.NC.features") == "mine") << write;
  }
}

TEST_F(SaverOfTwo, PutsAwayWhatAnOlderSaveInItsPlaceHadToPutAway) {
  Put("Job.NC", "G0 X1\r\n");
  Put("Job.NC.features", "damaged");
  Put("Job.NC.cadmv", "drawings of the other program");
  HoldWorker();
  morva::SaveJob older = Job();
  older.moves = {{PathOf("Job.NC.features"), PathOf("Job.NC.features.kept")}};
  older.files.push_back({.path = PathOf("Job.NC.cadmv.kept"),
                         .bytes = "drawings of the other program",
                         .copyOf = PathOf("Job.NC.cadmv")});
  morva::HandOverSave(std::move(older));
  EXPECT_EQ(Save(Job()), morva::SaveAnswer::Saved);
  EXPECT_EQ(Raw("Job.NC.features.kept"), "damaged");
  EXPECT_EQ(Raw("Job.NC.cadmv.kept"), "drawings of the other program");
  EXPECT_EQ(Raw("Job.NC.features"), "mine");
}

// Two programs of one title in one millisecond, neither of them written yet.
TEST_F(Saver, GivesEachProgramThatIsKeptAFileOfItsOwn) {
  headless::SetFlushTime(300);
  std::u16string first;
  std::u16string second;
  ASSERT_GE(app.tabCount, 1);
  EXPECT_TRUE(morva::KeepProgramInRecovery(morva::tabs[0], first));
  EXPECT_TRUE(morva::KeepProgramInRecovery(morva::tabs[0], second));
  EXPECT_NE(first, second);
  EXPECT_TRUE(morva::WaitForSaves());
  EXPECT_TRUE(platform::FileExists(first));
  EXPECT_TRUE(platform::FileExists(second));
}

}  // namespace
