// AppState: the application-wide fields, and the numbers of timers and posted messages.
//
// There is one static record. A field without a value here starts at zero. Tabs, features and paths
// stand in the tables of the rooms that own them.
#pragma once

#include <cstdint>

#include "app/limits.h"

namespace morva {

enum WorkspaceSurface : std::int32_t {
  kSurfaceCode = 0,
  kSurfaceCad = 1,
  kSurfacePlate = 2,
  kSurfaceSkim = 3,
};

enum WorkspaceMode : std::int32_t {
  kModeHome = 0,
  kModeWizard = 1,
  kModeTools = 2,
  kModeCodeIndex = 3,
  kModeMacros = 4,
  kModeShapes = 5,
  kModeSlot = 6,
  kModeCircular = 7,
  kModeRectangular = 8,
  kModeSimulator = 9,
  kModeDnc = 10,
  kModeDiagnostics = 11,
  kModeFind = 12,
  kModeCadItem = 13,    // a row of the mode list only
  kModePlateItem = 14,  // a row of the mode list only
};

struct AppState {
  std::int32_t activeTab = -1;        // index of the active ProgramTab, -1 for none
  std::int32_t tabCount = 0;          // open ProgramTabs, 0 to 8
  std::int32_t leftPanelWidth = 300;  // pixels; the splitter's position
  std::int32_t topBarHeight = 132;    // pixels; top of the work area
  bool sidebarShowsFeatures = true;   // else CODE INDEX
  std::int32_t surface = kSurfaceCode;
  std::int32_t mode = kModeHome;
  bool compareActive = false;
  bool commandWordsActive = false;
  bool dataDirReady = false;  // data directory and its four sub-directories exist
  char16_t dataDir[kPathUnits] = {};
  char16_t activePath[kPathUnits] = {};
  bool editorDirty = false;
  bool suppressChange = false;  // the program itself sets the text
  bool insertingText = false;   // the program inserts, or the two editors synchronise
  char16_t statusText[kStatusUnits] = {};
  std::uint64_t lastKeyAt = 0;    // the tick of the user's last key, 0 for none
  std::uint64_t lastPressAt = 0;  // the same of a pointer's button, pressed or let go
  bool unitsMetric = false;       // UnitsMetric: false inch, true millimetre
};

extern AppState app;

// Every field as at process start.
void ResetAppState();

// The left panel shows the features, else the code index.
void ShowFeaturesInSidebar(bool shows);

// The user pressed a key at this tick.
void NoteUserKey(std::uint64_t tick);
// The user pressed or let go a pointer's button in the window at this tick.
void NoteUserPress(std::uint64_t tick);

// Timers of the main window.
inline constexpr int kTimerText = 1;         // deferred text refresh, one shot
inline constexpr int kTimerPlay = 3;         // playback, 16 ms
inline constexpr int kTimerCompletion = 4;   // completion list, one shot
inline constexpr int kTimerHover = 12;       // scroll lock and hover hint, 150 ms
inline constexpr int kTimerFlyout = 13;      // rest of the pointer on a CAD tool key, one shot
inline constexpr int kTimerHeld = 14;        // whether the control holds a send, 250 ms
inline constexpr int kTimerAutosave = 2900;  // 700 ms after the last change, one shot
inline constexpr int kTimerView = 1620;      // view animation, on a view window
inline constexpr int kTimerViewRest = 1621;  // the view stands still again, on a view, one shot

// Messages posted to the main window.
inline constexpr std::uint32_t kMessageTransferFailed = 0x8014;
inline constexpr std::uint32_t kMessageReceiveDone = 0x8015;
inline constexpr std::uint32_t kMessageSendProgress = 0x8016;
inline constexpr std::uint32_t kMessageSendDone = 0x8017;
inline constexpr std::uint32_t kMessageSaved = 0x8018;
inline constexpr std::uint32_t kMessageReceiveProgress = 0x8019;
inline constexpr std::uint32_t kMessageCompletion = 0x8028;

}  // namespace morva
