#include "documents/text_refresh.h"

#include <cstdint>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "documents/feature_blocks.h"
#include "documents/program_information.h"
#include "documents/split_undo.h"
#include "platform/editor.h"
#include "platform/timer.h"
#include "platform/window.h"

namespace morva {

void ArmTextRefresh(int milliseconds) {
  platform::StartTimer(platform::kMainWindow, kTimerText, milliseconds);
}

void RunTextRefresh() {
  platform::StopTimer(platform::kMainWindow, kTimerText);
  const std::uint64_t before = platform::EditorRevision(kIdEditor);
  ReturnBehindUndo();
  TagAfterEdit();
  if (platform::EditorRevision(kIdEditor) != before) WriteProgramInformation();
  RefreshFeatureList();
  Call(hooks.colourEditor);
  // The list floats above the editor, and colouring may have brought the editor forward.
  if (platform::IsVisible(kIdCompletion)) platform::BringToTop(kIdCompletion);
}

}  // namespace morva
