// What a lower folder of this room, or the sketch below its fields, asks of a higher place.
//
// The owner of an operation sets its pointer when the room is joined. Until then, and in tests that
// join a part of the room, the operation does nothing. Callers use the functions below the record.
#pragma once

#include "app/hooks.h"
#include "platform/events.h"

namespace morva {

struct FormerDrawing;

struct CadHooks {
  void (*formerDrawingBack)(const FormerDrawing& former) = nullptr;  // model/drawings
  void (*sketchBegun)() = nullptr;                                   // model/drawings
  void (*switchSketchUnits)(bool metric) = nullptr;                  // tools/sketch_units
  void (*dropTools)() = nullptr;                                     // tools/select_drag
  void (*leaveModelView)() = nullptr;                                // canvas/canvas_model
  bool (*takePress)(const platform::PointerEvent& event) = nullptr;  // panel/wanted
  void (*refreshSketchPanels)() = nullptr;                           // panel/sketch_panels
  void (*refreshDrawingTabs)() = nullptr;                            // panel/drawing_tabs
  void (*refreshCadPanel)() = nullptr;                               // panel/workspace
  void (*refreshCadTools)() = nullptr;                               // panel/workspace
};
inline CadHooks cadHooks;

// Inch (false) or millimetre: converts the sketch and the numeric fields. Nothing when active.
inline void SwitchSketchUnits(bool metric) { Call(cadHooks.switchSketchUnits, metric); }
// Every tool, pick and drag given up as at start, without a word.
inline void DropTools() { Call(cadHooks.dropTools); }
inline void LeaveModelView() { Call(cadHooks.leaveModelView); }
// A press of the left button that a builder waits for. True: it took it.
inline bool TakeWantedPress(const platform::PointerEvent& event) {
  return cadHooks.takePress && cadHooks.takePress(event);
}
// List, fields, status line and canvas from the live sketch. Harmless without a window.
inline void RefreshSketchPanels() { Call(cadHooks.refreshSketchPanels); }
inline void RefreshDrawingTabs() { Call(cadHooks.refreshDrawingTabs); }  // captions and states
// Shows the panel of tools.panelMode and hides the others.
inline void RefreshCadPanel() { Call(cadHooks.refreshCadPanel); }
// After any event on the CAD surface: the keys of the tools in hand, captions, panel.
inline void RefreshCadTools() { Call(cadHooks.refreshCadTools); }

}  // namespace morva
