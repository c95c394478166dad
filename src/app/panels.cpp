#include "app/panels.h"

#include "app/app_state.h"
#include "app/hooks.h"
#include "platform/window.h"

namespace morva {

namespace {

Panel panels[kMaxPanels];
int panelCount = 0;
Handlers handlerTable[kMaxHandlers];
int handlerCount = 0;

}  // namespace

bool RegisterPanel(const Panel& panel) {
  if (panelCount >= kMaxPanels) return false;
  panels[panelCount++] = panel;
  return true;
}

int PanelCount() { return panelCount; }

const Panel& PanelAt(int index) { return panels[index]; }

bool IsPanelActive(const Panel& panel) {
  if (panel.active) return panel.active();
  return app.surface == kSurfaceCode && app.mode == panel.mode;
}

bool HasPanel(int mode) {
  for (int i = 0; i < panelCount; ++i) {
    if (panels[i].mode == mode) return true;
  }
  return false;
}

void ShowAt(int id, const platform::Rect& place) {
  platform::SetPlace(id, place);
  platform::SetVisible(id, true);
}

void RelayPanels() { Call(hooks.layout); }

bool RegisterHandlers(const Handlers& handlers) {
  if (handlerCount >= kMaxHandlers) return false;
  handlerTable[handlerCount++] = handlers;
  return true;
}

const Handlers* HandlersOf(int id, int n) {
  for (int i = 0; i < handlerCount; ++i) {
    if (handlerTable[i].id == id && n-- == 0) return &handlerTable[i];
  }
  return nullptr;
}

void ClearPanels() {
  panelCount = 0;
  handlerCount = 0;
}

}  // namespace morva
