// What follows a change of a program, each part alone and all of it.

#include "documents/program_changed.h"

#include <gtest/gtest.h>

#include "app/command_ids.h"
#include "app/hooks.h"
#include "documents/program_tabs.h"
#include "platform/control.h"
#include "platform/timer.h"
#include "support/program_stage.h"

namespace {

using morva::app;
using morva::ProgramChanged;

int rebuilds = 0;
bool modifiedAtRebuild = false;

struct ProgramChange : public support::ProgramStage {
  void SetUp() override {
    support::ProgramStage::SetUp();
    platform::StopTimer(platform::kMainWindow, morva::kTimerText);
    platform::StopTimer(platform::kMainWindow, morva::kTimerAutosave);
    platform::SetText(morva::kIdOutputLog, u"");
    rebuilds = 0;
    modifiedAtRebuild = false;
    morva::hooks.rebuildToolpath = [] {
      ++rebuilds;
      modifiedAtRebuild = app.editorDirty;
    };
  }

  static bool RefreshArmed() {
    return platform::TimerRuns(platform::kMainWindow, morva::kTimerText);
  }
  static bool AutosaveArmed() {
    return platform::TimerRuns(platform::kMainWindow, morva::kTimerAutosave);
  }
};

TEST_F(ProgramChange, AloneMarksTheProgramAndItsTab) {
  ASSERT_FALSE(app.editorDirty);
  ProgramChanged({});
  EXPECT_TRUE(app.editorDirty);
  EXPECT_TRUE(morva::ActiveTab()->dirty);
  EXPECT_EQ(platform::WindowTitle().back(), u'\u2022');
  EXPECT_FALSE(AutosaveArmed());
  EXPECT_FALSE(RefreshArmed());
  EXPECT_EQ(rebuilds, 0);
  EXPECT_EQ(platform::TextOf(morva::kIdOutputLog), u"");
}

TEST_F(ProgramChange, ArmsTheAutosaveAlone) {
  ProgramChanged({.autosave = true});
  EXPECT_TRUE(AutosaveArmed());
  EXPECT_FALSE(RefreshArmed());
  EXPECT_EQ(rebuilds, 0);
}

TEST_F(ProgramChange, RefreshesTheTextAfterSoManyMilliseconds) {
  ProgramChanged({.refreshMs = 40});
  EXPECT_FALSE(AutosaveArmed());
  headless::Advance(39);
  EXPECT_TRUE(RefreshArmed());
  headless::Advance(1);
  EXPECT_FALSE(RefreshArmed());
}

TEST_F(ProgramChange, RebuildsThePathOfAProgramThatIsMarkedAlready) {
  ProgramChanged({.rebuildPath = true, .logged = u"Done."});
  EXPECT_EQ(rebuilds, 1);
  EXPECT_TRUE(modifiedAtRebuild);
  EXPECT_EQ(platform::TextOf(morva::kIdOutputLog), u"Done.\r\n");
}

TEST_F(ProgramChange, WithoutAnOpenProgramTouchesNoTab) {
  morva::FreeTabs();
  ProgramChanged({.autosave = true});
  EXPECT_FALSE(AutosaveArmed());
  for (const morva::ProgramTab& tab : morva::tabs) EXPECT_FALSE(tab.dirty);
}

}  // namespace
