#include "shell/coming.h"

#include "app/app_state.h"
#include "app/mode_table.h"

namespace morva {

namespace {

constexpr ModeRow kModes[] = {
    {.mode = kModeDiagnostics, .header = u"DIAGNOSTICS"},
};

}  // namespace

void RegisterComingModes() {
  for (ModeRow row : kModes) {
    row.coming = true;
    RegisterMode(row);
  }
}

}  // namespace morva
