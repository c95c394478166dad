// Changes from the two editors, in the order in which everything follows them.

#include "documents/editor_changes.h"

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "documents/program_changed.h"
#include "documents/program_information.h"
#include "platform/post.h"
#include "platform/timer.h"
#include "platform/window.h"

namespace morva {

bool completionApplying = false;

namespace {

constexpr int kCompletionMilliseconds = 60;

void FollowChange() {
  ProgramChanged({.autosave = true, .refreshMs = kChangeRefreshMs});
  platform::StopTimer(platform::kMainWindow, kTimerCompletion);
  if (!completionApplying) {
    platform::StartTimer(platform::kMainWindow, kTimerCompletion, kCompletionMilliseconds);
    platform::PostToMain(kMessageCompletion, 0, 0);
  }
  platform::Repaint(kViewGutter);
}

}  // namespace

ApplyingCompletion::ApplyingCompletion() : before_(completionApplying) {
  completionApplying = true;
}
ApplyingCompletion::~ApplyingCompletion() { completionApplying = before_; }

void EditorChanged(int id) {
  if (app.insertingText) return;
  if (id == kIdEditor) {
    if (app.suppressChange) return;
    FollowChange();
    if (app.commandWordsActive) Call(hooks.wordsFromEditor);
  } else if (id == kIdWordsEditor) {
    Call(hooks.editorFromWords);
    FollowChange();
  } else {
    return;
  }
  WriteProgramInformation();
}

void RunCompletionRefresh() {
  platform::StopTimer(platform::kMainWindow, kTimerCompletion);
  Call(hooks.refreshCompletion);
}

}  // namespace morva
