// The N-th file call of a kind fails, N = 1, 2, 3, ... until a run meets no fault; then the
// invariants: every file on the disk is whole, old or new, nothing stray lies about, and what
// was typed is still marked as unsaved wherever the save was not told to be done.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "documents/disabled_code.h"
#include "documents/file_text.h"
#include "documents/save_state.h"
#include "documents/saver.h"
#include "documents/saving.h"
#include "documents/tab_models.h"
#include "platform/common/faults.h"
#include "platform/profile.h"
#include "support/program_stage.h"

namespace {

using morva::app;
using morva::tabs;

// Steps that can fail on a save. An erase that fails leaves a stray file by its nature.
constexpr const char* kKinds[] = {"new",  "write",  "short",  "size",       "flush",
                                  "shut", "access", "rename", "flushfolder"};

std::string kindNow;
int countdown = 0;
bool met = false;

bool FailOnce(std::string_view kind) {
  if (kind != kindNow || --countdown != 0) return false;
  met = true;
  return true;
}

void Arm(const char* kind, int n) {
  kindNow = kind;
  countdown = n;
  met = false;
  platform::fileFault = FailOnce;
}

struct SaveFaults : public support::OfflineProgramStage {
  std::vector<std::string> names = {"a.NC", "a.NC.cadmv", "a.NC.features", "a.NC.platemv"};
  std::vector<std::string> oldFiles;
  std::vector<std::string> newFiles;

  // A saved program with all of its companions, and then every part of it changed.
  void Begin() {
    morva::liveModels.cadWindowExists = [] { return true; };
    morva::liveModels.plateWindowExists = [] { return true; };
    morva::liveModels.storeSketch = [](morva::FeatureSettings& record) { return Live(record, 4); };
    morva::liveModels.storePlate = [](morva::FeatureSettings& record) { return Live(record, 5); };
    Put("a.NC", "G0 X1\r\n");
    OpenFile("a.NC");
    generation = 1;
    TypeProgram(u"G0 X1 (first)");
    EXPECT_TRUE(morva::SaveProgramCommand());
    oldFiles = Files();
    generation = 2;
    TypeProgram(u"G0 X2 (second, and longer than the first)");
    morva::AddDisabledCode(tabs[1].disabledCode, u"G1 X3");
  }
  ~SaveFaults() override { platform::fileFault = nullptr; }

  static int generation;
  static bool Live(morva::FeatureSettings& record, std::int32_t kind) {
    record.version = 3;
    record.kind = kind;
    record.values[0] = generation;
    return true;
  }

  std::vector<std::string> Files() const {
    std::vector<std::string> files;
    for (const std::string& name : names) files.push_back(Raw(name));
    return files;
  }
  // As if the program had just been opened from its file.
  static void TakeState() {
    std::string bytes;
    EXPECT_TRUE(morva::ReadWithState(tabs[1].path, bytes, tabs[1].save.disk));
    for (morva::KnownFile& file : tabs[1].save.beside) {
      EXPECT_TRUE(morva::ReadWithState(file.path, bytes, file.state));
    }
  }
  void PutBack() const {
    for (std::size_t i = 0; i < names.size(); ++i) Put(names[i], oldFiles[i]);
    TakeState();
  }
  std::vector<std::string> ProgramFiles() const {
    std::vector<std::string> found = support::NamesIn(folder);
    std::erase(found, "bin");
    std::erase(found, "Documents");
    return found;
  }
  // What must hold after every run, with or without a fault.
  void CheckWhole(const std::string& where) const {
    EXPECT_EQ(ProgramFiles(), names) << where;
    const std::vector<std::string> files = Files();
    for (std::size_t i = 0; i < names.size(); ++i) {
      EXPECT_TRUE(files[i] == oldFiles[i] || files[i] == newFiles[i]) << where << " " << names[i];
    }
    // The text refers to the stored code, so that the text is never newer than that.
    EXPECT_FALSE(files[0] == newFiles[0] && files[2] == oldFiles[2]) << where;
    EXPECT_NE(Text().find(u"second"), std::u16string::npos) << where;
  }
};

int SaveFaults::generation = 0;

TEST_F(SaveFaults, LeaveEveryFileWholeAndTheMarkOn) {
  Begin();
  ASSERT_TRUE(morva::SaveProgram(app.activePath));
  newFiles = Files();
  for (std::size_t i = 0; i < names.size(); ++i) ASSERT_NE(oldFiles[i], newFiles[i]) << names[i];
  for (const char* kind : kKinds) {
    int n = 0;
    do {
      PutBack();
      morva::MarkModified();
      const std::string where = kind + std::string(" ") + std::to_string(++n);
      Arm(kind, n);
      const bool saved = morva::SaveProgramCommand();
      platform::fileFault = nullptr;
      CheckWhole(where);
      // A write that took less than asked is no error; everything else is.
      EXPECT_EQ(saved, !met || std::string(kind) == "short") << where;
      EXPECT_EQ(app.editorDirty, !saved) << where;
      EXPECT_EQ(tabs[1].dirty, !saved) << where;
      if (saved) {
        EXPECT_EQ(Files(), newFiles) << where;
      }
      EXPECT_EQ(headless::TakeBoxes().size(), saved ? 0u : 1u) << where;
      ASSERT_LT(n, 20) << kind;
    } while (met);
    // Four files, and the run that met no fault.
    EXPECT_GE(n, 5) << kind;
  }
}

TEST_F(SaveFaults, DoNotLetACloseLoseAProgram) {
  Begin();
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  Arm("flush", 2);
  morva::CloseProgram();
  platform::fileFault = nullptr;
  EXPECT_EQ(app.tabCount, 2);
  EXPECT_TRUE(app.editorDirty);
  EXPECT_NE(Text().find(u"second"), std::u16string::npos);
}

struct AutosaveFaults : public support::ProgramStage {
  ~AutosaveFaults() override { platform::fileFault = nullptr; }
};

TEST_F(AutosaveFaults, LoseNothingOnATabSwitch) {
  Put("a.NC", "G0 X1\r\n");
  OpenFile("a.NC");
  headless::Advance(100);
  for (const char* kind : kKinds) {
    if (std::string(kind) == "short") continue;
    for (int n = 1; n <= 3; ++n) {
      Put("a.NC", "G0 X1\r\n");
      std::string bytes;
      ASSERT_TRUE(morva::ReadWithState(tabs[1].path, bytes, tabs[1].save.disk));
      const std::u16string typed = u"(typed " + support::Wide(kind) + u")";
      TypeProgram(typed);
      Arm(kind, n);
      morva::SwitchTab(0);
      platform::fileFault = nullptr;
      EXPECT_EQ(tabs[1].dirty, met) << kind << n;
      EXPECT_NE(tabs[1].text.find(typed), std::u16string::npos) << kind << n;
      // The way back saves what could not be saved on the way there.
      morva::SwitchTab(1);
      EXPECT_FALSE(app.editorDirty) << kind << n;
      EXPECT_NE(Text().find(typed), std::u16string::npos) << kind << n;
      EXPECT_NE(Raw("a.NC").find(support::Narrow(typed)), std::string::npos) << kind << n;
      EXPECT_EQ(support::NamesIn(folder),
                (std::vector<std::string>{"Documents", "a.NC", "a.NC.features", "bin"}));
    }
  }
}

TEST_F(AutosaveFaults, LeaveAProgramWithoutAHomeUnsavedUntilOneCanBeMade) {
  TypeProgram(u"G0 X1");
  const support::fs::path projects = folder / "Documents" / "MORVA" / "Projects";
  for (const char* kind : {"folder", "new", "write", "size", "flush", "shut", "rename"}) {
    Arm(kind, 1);
    headless::Advance(1);
    morva::RunAutosave();
    platform::fileFault = nullptr;
    EXPECT_TRUE(met) << kind;
    EXPECT_TRUE(app.editorDirty) << kind;
    EXPECT_EQ(std::u16string(app.activePath), u"") << kind;
    for (const auto& entry : support::fs::recursive_directory_iterator(projects)) {
      EXPECT_TRUE(entry.is_directory()) << kind << " " << entry.path();
    }
  }
  morva::RunAutosave();
  EXPECT_FALSE(app.editorDirty);
}

struct ProfileFaults : public support::Stage {
  ~ProfileFaults() override { platform::fileFault = nullptr; }
};

TEST_F(ProfileFaults, LeaveTheSettingsWhole) {
  const std::string before = "[DNC]\r\nPort=COM1\r\n[Tool0]\r\nName=drill\r\n";
  for (const char* kind : kKinds) {
    // The folder of the settings is not flushed.
    if (std::string(kind) == "short" || std::string(kind) == "flushfolder") continue;
    int n = 0;
    do {
      Put("bin/MORVA.ini", before);
      Arm(kind, ++n);
      platform::BeginProfileChange();
      platform::WriteProfile(u"DNC", u"Port", u"COM2");
      platform::WriteProfile(u"DNC", u"Baud", u"9600");
      const bool saved = platform::EndProfileChange();
      platform::fileFault = nullptr;
      EXPECT_EQ(saved, !met) << kind << n;
      EXPECT_EQ(Raw("bin/MORVA.ini"),
                !met ? "[DNC]\r\nPort=COM2\r\nBaud=9600\r\n[Tool0]\r\nName=drill\r\n" : before)
          << kind << n;
      EXPECT_EQ(support::NamesIn(folder / "bin"), std::vector<std::string>{"MORVA.ini"}) << kind;
      ASSERT_LT(n, 10) << kind;
    } while (met);
    EXPECT_EQ(n, 2) << kind;
  }
}

}  // namespace
