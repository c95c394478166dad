#include "app/app_state.h"

#include "app/hooks.h"

namespace morva {

AppState app;
Hooks hooks;

void ResetAppState() { app = AppState(); }

void ShowFeaturesInSidebar(bool shows) { app.sidebarShowsFeatures = shows; }

}  // namespace morva
