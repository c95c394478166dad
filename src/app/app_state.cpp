#include "app/app_state.h"

#include "app/hooks.h"

namespace morva {

AppState app;
Hooks hooks;

void ResetAppState() { app = AppState(); }

void NoteUserKey(std::uint64_t tick) { app.lastKeyAt = tick; }

void NoteUserPress(std::uint64_t tick) { app.lastPressAt = tick; }

void ShowFeaturesInSidebar(bool shows) { app.sidebarShowsFeatures = shows; }

}  // namespace morva
