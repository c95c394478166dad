#include "app/panels.h"

#include <algorithm>
#include <cstddef>

#include "app/app_state.h"
#include "app/hooks.h"
#include "app/join_table.h"
#include "app/limits.h"
#include "app/mode_table.h"
#include "app/outlets.h"
#include "app/stop.h"
#include "platform/window.h"

namespace morva {

namespace {

Panel panels[kMaxPanels];
JoinTable panelFill{u"panels", kMaxPanels};
Handlers handlerTable[kMaxHandlers];
JoinTable handlerFill{u"control handlers", kMaxHandlers};

// Whether what is asked holds for an active panel.
template <typename Ask>
bool HoldsForActive(Ask ask) {
  return std::any_of(panels, panels + panelFill.count,
                     [&ask](const Panel& panel) { return ask(panel) && IsPanelActive(panel); });
}

}  // namespace

void RegisterPanel(const Panel& panel) {
  panels[NextRow(panelFill)] = panel;
  if (panel.row) RegisterMode(*panel.row);
  for (const ModeRow& row : panel.moreModes) RegisterMode(row);
}

int PanelCount() { return panelFill.count; }

const Panel& PanelAt(int index) { return panels[index]; }

bool IsPanelOf(const Panel& panel, int mode) {
  return panel.mode == mode || std::ranges::any_of(panel.moreModes, [mode](const ModeRow& row) {
           return row.mode == mode;
         });
}

bool IsPanelActive(const Panel& panel) {
  if (panel.active) return panel.active();
  return app.surface == kSurfaceCode && IsPanelOf(panel, app.mode);
}

bool HasPanel(int mode) {
  for (int i = 0; i < panelFill.count; ++i) {
    if (IsPanelOf(panels[i], mode)) return true;
  }
  return false;
}

bool IsPanelAt(PanelSpot spot) {
  return HoldsForActive([spot](const Panel& panel) { return panel.spot == spot; });
}

bool FocusPanelAt(PanelSpot spot) {
  for (int i = 0; i < panelFill.count; ++i) {
    if (panels[i].spot == spot && IsPanelActive(panels[i]) && Call(panels[i].focus)) return true;
  }
  return false;
}

int HeightAboveView() {
  int height = 0;
  for (int i = 0; i < panelFill.count; ++i) {
    if (IsPanelActive(panels[i])) height = std::max(height, panels[i].heightAboveView);
  }
  return height;
}

bool IsHelpBelow() {
  return HoldsForActive([](const Panel& panel) { return panel.helpBelow; });
}

bool MayTakeWork() {
  if (!IsPanelAt(PanelSpot::Work)) return true;
  ShowStatus(u"Close what stands over the code first.");
  return false;
}

bool MayEndPanels() {
  for (int i = 0; i < PanelCount(); ++i) {
    const Panel& panel = PanelAt(i);
    if (panel.mayEnd && !panel.mayEnd()) return false;
  }
  return true;
}

// No form: this shows what a panel has made itself.
void ShowAt(int id, const platform::Rect& place) {
  platform::SetPlace(id, place);
  platform::SetVisible(id, true);
}

void RelayPanels() { Call(hooks.layout); }

void RegisterHandlers(const Handlers& handlers) {
  if (handlers.id == 0) StopProgram(u"MORVA cannot start. A control handler has no id.");
  handlerTable[NextRow(handlerFill)] = handlers;
}

const Handlers* HandlersOf(int id, int n) {
  for (int i = 0; i < handlerFill.count; ++i) {
    if (handlerTable[i].id == id && n-- == 0) return &handlerTable[i];
  }
  return nullptr;
}

std::span<const Handlers> AllHandlers() {
  return {handlerTable, static_cast<std::size_t>(handlerFill.count)};
}

void ClearPanels() {
  panelFill.count = 0;
  handlerFill.count = 0;
  ClearModes();
}

}  // namespace morva
