// The main window with everything in it on the headless machine, listening as the program does.
#pragma once

#include <gtest/gtest.h>

#include "app/mode_table.h"
#include "app/outlets.h"
#include "builders/macros/macro_panel.h"
#include "builders/shapes/shape_panel.h"
#include "builders/tools/tool_panel.h"
#include "builders/wizard/wizard_panel.h"
#include "cad/panel/cad_room.h"
#include "cad/panel/cad_surface.h"
#include "codetools/check_panel.h"
#include "codetools/find_pane.h"
#include "codetools/index_panel.h"
#include "dnc/setup_panel.h"
#include "documents/program_tabs.h"
#include "plate/panel/plate_room.h"
#include "plate/panel/plate_surface.h"
#include "platform/window.h"
#include "shell/keys.h"
#include "shell/layout.h"
#include "shell/modes.h"
#include "shell/shell_registry.h"
#include "shell/speed_slider.h"
#include "shell/theme.h"
#include "simulator/shown_path.h"
#include "simulator/toolpath.h"
#include "simulator/view_switches.h"
#include "support/stage.h"

namespace shell_test {

inline void OnCommand(int id, int notification) {
  morva::RouteCommand(id, notification);
  morva::RefreshKeyStates();
}
inline void OnPaint(int view, platform::Canvas& canvas) {
  if (view == platform::kMainWindow) morva::PaintMainWindow(canvas);
  if (view == morva::kIdSpeedSlider) morva::PaintSpeedSlider(canvas);
}
inline bool OnPointer(int view, const platform::PointerEvent& event) {
  if (view == platform::kMainWindow) return morva::MainPointer(event);
  return view == morva::kIdSpeedSlider && morva::SpeedSliderPointer(event);
}
inline bool OnKey(int id, const platform::KeyEvent& key) {
  if (id == morva::kIdModeList) return morva::ModeListKey(key);
  return id == morva::kIdSpeedSlider && morva::SpeedSliderKey(key);
}
inline void OnResized(int, int) { morva::Layout(); }

struct MainStage : public support::Stage {
  platform::Events events;

  void SetUp() override {
    headless::Reset(home);
    morva::ResetDocuments();
    morva::ResetSimulator();
    morva::ResetShell();
    morva::ResetCad();
    morva::ResetPlateRoom();
    events.command = OnCommand;
    events.paint = OnPaint;
    events.pointer = OnPointer;
    events.key = OnKey;
    events.resized = OnResized;
    events.drawItem = morva::DrawOwnerItem;
    platform::ListenTo(&events);
    platform::MainWindowSpec window;
    window.className = u"MorvaDeskWnd";
    window.place = {0, 0, 1560, 940};
    window.minimumWidth = 1200;
    window.minimumHeight = 800;
    platform::MakeMainWindow(window);
    morva::RegisterCadSurface();
    morva::RegisterPlateSurface();
    // In words alone, as long as their panels are not there.
    for (morva::ModeRow row : {morva::kCheckMode, morva::kFindMode, morva::kCodeIndexMode,
                               morva::kToolsMode, morva::kMacrosMode, morva::kWizardMode,
                               morva::kShapesMode, morva::kSlotMode, morva::kDncMode}) {
      row.coming = true;
      morva::RegisterMode(row);
    }
    morva::RegisterShellCommands();
    morva::MakeMainControls();
    morva::OpenTab(u"", u"", u"Untitled-1.NC");
    morva::SwitchTab(0);
    morva::SetMode(morva::kModeHome);
    platform::ShowMainWindow();
  }
  void TearDown() override {
    morva::FreeTabs();
    morva::ResetDocuments();
    morva::ResetSimulator();
    morva::ResetCad();  // its window went with the machine
    morva::ResetPlateRoom();
    morva::ResetShell();
    morva::playback = morva::Playback();
    morva::switches = morva::ViewSwitches();
  }

  static bool Visible(int id) { return platform::IsVisible(id); }
  // Whether any call of the paint shows the text in the colour.
  static bool Paints(const std::vector<headless::DrawCall>& calls, std::u16string_view text,
                     platform::Colour colour) {
    for (const headless::DrawCall& call : calls) {
      if (call.name == "PaintText" && call.text == text && call.colours.at(0) == colour)
        return true;
    }
    return false;
  }
};

}  // namespace shell_test
