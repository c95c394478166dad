#include "simulator/view_commands.h"

#include "app/command_ids.h"
#include "app/icon_names.h"
#include "platform/window.h"
#include "simulator/shown_path.h"
#include "simulator/view_switches.h"

namespace morva {

namespace {

bool Playing(int) { return ShownPath().play.playing; }
bool Panning(int) { return switches.panMode; }
bool ExtentsShown(int) { return switches.showExtents; }
bool Measuring(int) { return switches.measureMode; }

// A key of the top bar does nothing where what it acts on is out of sight. Playing marks lines of
// the code besides, and can be paused anywhere.
const char16_t* NoView(int) {
  return platform::IsVisible(kViewToolpath)
             ? nullptr
             : u"Dim because no toolpath is shown here. Home and Simulator show it.";
}
const char16_t* NothingPlays(int id) {
  const bool code = platform::IsVisible(kIdEditor) || platform::IsVisible(kIdWordsEditor);
  if (code || platform::IsVisible(kViewToolpath) || Playing(id)) return nullptr;
  return u"Dim because neither code nor toolpath is shown here.";
}

// The playback bar speaks with one voice: its keys and its slider share this hint.
constexpr char16_t kPlayback[] =
    u"Playback: start | previous operation | rewind | play/pause | fast forward | next operation "
    u"| end | stop. Slider: slower / faster simulation (0.125x\u201364x); center = 1x.";

// A key of the playback bar: an icon, so that its words are the hint.
constexpr Command PlayKey(int id, const char16_t* help, const char16_t* name, int icon) {
  return {.id = id, .words = kPlayback, .help = help, .name = name, .icon = icon};
}

constexpr Command PlayKey(int id, const char16_t* help, int icon, int key = platform::kKeyNone) {
  Command row = PlayKey(id, help, help, icon);
  if (key != platform::kKeyNone) row.chord = PlainKey(kToolpathChords, key);
  return row;
}

// A key of the view's tools: an icon, its words are hint and tool tip.
constexpr Command ViewKey(int id, const char16_t* words, int icon, bool (*on)(int) = nullptr) {
  return {.id = id, .words = words, .icon = icon, .on = on};
}

// The keys of the bar at the top: an icon, and a sentence besides its name.
constexpr Command BarKey(int id, const char16_t* words, const char16_t* help, int icon,
                         const char16_t* (*barred)(int), bool (*on)(int) = nullptr) {
  Command row = ViewKey(id, words, icon, on);
  row.help = help;
  row.hint = Hint::Help;
  row.barred = barred;
  return row;
}

constexpr Command kCommands[] = {
    BarKey(kIdRewind, u"Rewind", u"Rewind ten toolpath points; playback pauses.", kIconRewind,
           NothingPlays),
    BarKey(kIdFastForward, u"Fast forward", u"Fast forward through the visible toolpath.",
           kIconForward, NothingPlays),
    BarKey(kIdDimensions, u"Dimensions",
           u"Dimensions: display X/Y/Z extents of the visible toolpath.", kIconDimensions, NoView,
           ExtentsShown),
    BarKey(kIdMeasure, u"Measure",
           u"Measure: choose two displayed endpoints for distance and X/Y/Z differences.",
           kIconMeasure, NoView, Measuring),
    BarKey(kIdPan, u"Pan",
           u"Switch left-drag between orbit and pan. Middle or Shift-drag always pans.", kIconPan,
           NoView, Panning),
    BarKey(kIdFit, u"Fit", u"Fit the visible toolpath and reset pan/zoom.", kIconFit, NoView),
    {kIdPath, u"PATH", u"Rebuild the toolpath from the program"},
    {.id = kIdPlay,
     .words = u"PLAY",
     .help = u"Play or pause the toolpath",
     .wordsOn = u"Pause",  // while it plays
     .on = Playing,
     .told = kToldInTip,
     .barred = NothingPlays},
    {.id = kIdViewMenu,
     .words = u"VIEW",
     .help = u"Top, front, right and isometric views",
     .barred = NoView},
    {.id = kIdZoomOut, .words = u"-", .help = u"Zoom out", .name = u"Zoom out", .barred = NoView},
    {.id = kIdZoomIn, .words = u"+", .help = u"Zoom in", .name = u"Zoom in", .barred = NoView},
    {.id = kIdZoomReset, .words = u"RESET", .help = u"Reset zoom and pan", .barred = NoView},

    ViewKey(kIdViewRefresh, u"Refresh toolpath", kIconRefresh),
    ViewKey(kIdViewFit, u"Fit toolpath to view", kIconFit),
    ViewKey(kIdViewPan, u"Toggle pan / orbit; middle or Shift-drag pans", kIconPan, Panning),
    ViewKey(kIdViewExtents, u"Show path dimensions", kIconDimensions, ExtentsShown),
    ViewKey(kIdViewMeasure, u"Measure between two path points", kIconMeasure, Measuring),
    ViewKey(kIdViewGrid, u"Toggle world grid", kIconGrid, [](int) { return view.gridOn; }),
    ViewKey(kIdViewGridMenu, u"Grid settings: spacing and color", kIconGridMenu),
    ViewKey(kIdViewLayers,
            u"Preview layers: rapid moves, overlap, context and approximate cut surface",
            kIconLayers),

    PlayKey(kIdPlayStart, u"Go to start", kIconStart, platform::kKeyHome),
    PlayKey(kIdPlayPrevious, u"Previous operation", kIconPrevious, platform::kKeyLeft),
    PlayKey(kIdPlayRewind, u"Rewind ten points", kIconRewind),
    {.id = kIdPlayToggle,
     .words = kPlayback,
     .help = u"Play / pause",
     .name = u"Play / pause",
     .icon = kIconPlay,
     .iconOn = kIconPause,
     .on = Playing,
     .told = kToldInTip,
     .chord = PlainKey(kToolpathChords, platform::kKeySpace)},
    PlayKey(kIdPlayForward, u"Fast forward", u"Play faster", kIconForward),
    PlayKey(kIdPlayNext, u"Next operation", kIconNext, platform::kKeyRight),
    PlayKey(kIdPlayEnd, u"Go to end", kIconEnd, platform::kKeyEnd),
    PlayKey(kIdPlayStop, u"Stop", kIconStop),
    {.id = kIdSpeedSlider, .hintWords = kPlayback},

    // The menus of the view.
    {kIdViewTop, u"Top (XY)"},
    {kIdViewFront, u"Front (XZ)"},
    {kIdViewRight, u"Right (YZ)"},
    {kIdViewIsometric, u"Isometric"},
    {kIdGridColourFirst, u"Slate blue"},
    {kIdGridColourFirst + 1, u"Teal"},
    {kIdGridColourFirst + 2, u"Green"},
    {kIdGridColourFirst + 3, u"Amber"},
    {kIdGridColourFirst + 4, u"Violet"},
    {kIdGridColourLast, u"Neutral gray"},
    {kIdGridAutomatic, u"Grid spacing: automatic"},
    {kIdGridHalf, u"Grid spacing: half (finer)"},
    {kIdGridDouble, u"Grid spacing: double (coarser)"},
    {.id = kIdLayerRapids, .words = u"Show rapid moves", .wordsOn = u"Hide rapid moves"},
    {.id = kIdLayerOverlap, .words = u"Show coverage overlap", .wordsOn = u"Hide coverage overlap"},
    {.id = kIdLayerDrawing, .words = u"Show drawing paths", .wordsOn = u"Hide drawing paths"},
    {.id = kIdLayerCutSurface,
     .words = u"Show cut surface (approximate)",
     .wordsOn = u"Hide cut surface"},
    {kIdLayerClean, u"Clean path view"},
    {.id = kIdLayerSkimDepth,
     .words = u"Skim: show current depth only",
     .wordsOn = u"Skim: show all depth levels"},
    {kIdLayerDepthShade, u"Shade by depth"},
    {.id = kIdLayerMachine, .words = u"Machine motion", .wordsOn = u"Path as written"},
    {.id = kIdLayerPlayByTime, .words = u"Play by time", .wordsOn = u"Play by points"},
};

}  // namespace

std::span<const Command> SimulatorCommands() { return kCommands; }

}  // namespace morva
