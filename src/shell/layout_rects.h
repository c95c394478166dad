// The main window's layout as a pure function: where everything lies for a size and a state.
//
// Nothing here knows a control beyond its id. A thing with an empty rectangle is hidden; no
// two places of one plan overlap, and all lie inside the client area from 1200 by 760 up. They
// stand in the order of the eye, which Tab follows.
#pragma once

#include <cstdint>
#include <span>

#include "app/limits.h"
#include "platform/geometry.h"

namespace morva {

struct KeyWidth {
  int id;
  int width;  // pixels
};

struct LayoutInput {
  int width = 0;  // client pixels
  int height = 0;
  int leftPanelWidth = 300;
  int topBarHeight = 132;
  std::int32_t surface = 0;
  std::int32_t mode = 0;
  bool rightPanel = false;                // the mode has one
  std::span<const KeyWidth> surfaceKeys;  // that bring surfaces up, from left to right
  bool footPanel = false;                 // a panel stands beside the output
  bool headPanel = false;                 // a panel stands left of the keys above the output
  int tabCount = 1;
  bool viewAway = false;  // a panel stands in the work area: the toolpath view makes room
  // Pixels that the panel keeps when the view stands below it; 0: no view.
  int heightAboveView = 0;
  bool helpBelow = false;          // the help text stands below a right panel
  bool transferRuns = false;       // its bar and the abort key stand in the top band
  bool viewBesideSurface = false;  // the surface shows the view as well
  int stripHeight = 0;             // of the output, as the user wants it; 0: as the mode has it
  bool stripClosed = false;        // only the head of the output is left
};

// Areas that the main window paints itself.
struct LayoutAreas {
  platform::Rect topBand;
  platform::Rect leftPanel;
  platform::Rect workArea;
  platform::Rect rightPanel;
  platform::Rect editor;      // the code editor alone
  platform::Rect work;        // from the gutter to the right, down to the editor's lower edge
  platform::Rect foot;        // of a panel beside the output, empty without one
  platform::Rect outputHead;  // of a panel left of the keys above the output
  platform::Rect leftLower;   // feature list, its keys, name box and hint
  platform::Rect panelBody;   // where a right panel's own controls go
  platform::Rect output;      // empty while the strip is closed
  platform::Rect stripEdge;   // between the editor and the head of the output: drags the strip
  int stripTop = 0;           // where the output begins; of a closed strip, where it would begin
  int stripFoot = 0;          // where it ends
  platform::Rect separator;   // the line between mode list and features
  platform::Rect workspace;   // the surface that is up, instead of all below the tabs
  platform::Rect status;      // the band under the status line
};
struct Placement {
  int id = 0;
  platform::Rect place;
};

struct LayoutPlan {
  int leftPanelWidth = 0;  // as cut to the window
  LayoutAreas areas;
  int count = 0;
  Placement placements[kMaxPlacements];
};

inline bool IsEmpty(const platform::Rect& r) { return r.left >= r.right || r.top >= r.bottom; }

// Pixels of the output that are left at least while the strip is open: three lines.
inline constexpr int kStripLeast = 54;

// At most the client width minus 760, and never below 190.
int FittedLeftPanel(int clientWidth, int wanted);
// 350, or 320 below 1180 pixels.
int RightPanelWidth(int clientWidth);
// How far the line between mode list and features lies below the panel's top.
int SeparatorDepth(int workHeight);

LayoutPlan PlanLayout(const LayoutInput& in);
// The place of an id in a plan, empty when it is hidden or has none.
platform::Rect PlaceIn(const LayoutPlan& plan, int id);

}  // namespace morva
