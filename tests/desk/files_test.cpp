// Files on the real window: a disk that takes its time, the system's wish to end.

#include <gtest/gtest.h>

#include <atomic>
#include <csignal>
#include <thread>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "desk/at_desk.h"
#include "documents/saver.h"
#include "documents/tab_table.h"
#include "platform/common/faults.h"

namespace {

using desk::Until;

std::atomic<bool> held{false};
std::atomic<int> flushes{0};

// The worker stands still in its flush until the test lets it go.
bool HoldFlush(std::string_view kind) {
  if (kind != "flush") return false;
  ++flushes;
  while (held.load()) std::this_thread::yield();
  return false;
}

struct Files : public AtDesk {
  void SetUp() override {
    AtDesk::SetUp();
    WriteAll(Path("part.NC"), "G0 X1\r\n");
    Open(Path("part.NC"));
    desk::Run(300);
  }
  void TearDown() override {
    held = false;
    morva::WaitForSaves();
    platform::fileFault = nullptr;
    AtDesk::TearDown();
  }
  static void HoldTheDisk() {
    held = true;
    flushes = 0;
    platform::fileFault = HoldFlush;
  }
};

TEST_F(Files, TypingGoesOnWhileTheDiskHoldsASave) {
  HoldTheDisk();
  desk::TypeInto(morva::kIdEditor, QStringLiteral("M8 "));
  desk::Key(morva::kIdEditor, Qt::Key_S, Qt::ControlModifier);
  ASSERT_TRUE(Until([]() { return flushes.load() == 1; }));
  desk::TypeInto(morva::kIdEditor, QStringLiteral("M9 "));
  EXPECT_TRUE(desk::TextOf(morva::kIdEditor).contains(QStringLiteral("M9 ")));
  EXPECT_TRUE(morva::SavesUnderWay());
  EXPECT_TRUE(morva::app.editorDirty);
  EXPECT_FALSE(desk::TextOf(morva::kIdOutputLog).contains(QStringLiteral("Saved program.")));
  held = false;
  ASSERT_TRUE(Until([]() { return !morva::app.editorDirty; }));
  EXPECT_TRUE(desk::TextOf(morva::kIdOutputLog).contains(QStringLiteral("Saved program.")));
  EXPECT_TRUE(ReadAll(Path("part.NC")).contains("M9 "));
}

TEST_F(Files, ATerminateSignalSavesWhatWasTyped) {
  desk::TypeInto(morva::kIdEditor, QStringLiteral("M8 "));
  ASSERT_FALSE(ReadAll(Path("part.NC")).contains("M8 "));
  std::raise(SIGTERM);
  EXPECT_TRUE(Until([this]() { return ReadAll(Path("part.NC")).contains("M8 "); }));
}

}  // namespace
