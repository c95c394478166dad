#include "documents/program_changed.h"

#include "app/hooks.h"
#include "app/outlets.h"
#include "documents/autosave.h"
#include "documents/save_state.h"
#include "documents/save_words.h"
#include "documents/tab_table.h"
#include "documents/text_refresh.h"

namespace morva {

void ProgramChanged(const ProgramChange& change) {
  MarkModified();
  if (const ProgramTab* const tab = ActiveTab()) TakeBackStored(*tab);
  Call(hooks.textChanged);
  if (change.autosave) ScheduleAutosave();
  if (change.refreshMs > 0) ArmTextRefresh(change.refreshMs);
  if (change.rebuildPath) Call(hooks.rebuildToolpath);
  if (!change.logged.empty()) AppendOutput(change.logged);
}

}  // namespace morva
