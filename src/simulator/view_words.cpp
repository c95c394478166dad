#include "simulator/view_words.h"

#include <cmath>

#include "app/command_ids.h"
#include "library/units.h"
#include "platform/window.h"
#include "simulator/machine_motion.h"
#include "simulator/path_notes.h"
#include "simulator/place_pick.h"
#include "simulator/preview_state.h"
#include "simulator/shown_path.h"
#include "simulator/toolpath.h"
#include "text/codetext.h"

namespace morva {

namespace {

// Where the head stands, while only what lies before it is drawn.
std::u16string HeadWords() {
  const OwnedPath& shown = ShownPath();
  const std::int32_t head = shown.play.playHead;
  if (!shown.play.headInUse || head < 1 || head > shown.path.count) return {};
  std::u16string words = shown.play.playing ? u"  /  playing, line " : u"  /  at line ";
  return words + IntegerText(shown.path.points[head - 1].sourceLine + 1);
}

}  // namespace

std::u16string_view MarkerWords() {
  return PreviewIsShown() ? std::u16string_view(previewState.markerWords) : std::u16string_view();
}

bool ValidPick(std::int32_t pick) { return pick >= 0 && pick < ShownPath().path.count; }

bool ExtentsText(char16_t (&text)[kReadOutUnits]) {
  if (ShownPath().path.count == 0) return false;
  const PathBounds& b = Bounds();
  CopyBounded(text, kReadOutUnits, UnitsMetric() ? u"PATH EXTENTS (mm)" : u"PATH EXTENTS (in)");
  AppendLabelNumber(text, kReadOutUnits, u"   X ", b.maxX - b.minX, 4);
  AppendLabelNumber(text, kReadOutUnits, u"   Y ", b.maxY - b.minY, 4);
  AppendLabelNumber(text, kReadOutUnits, u"   Z ", b.maxZ - b.minZ, 4);
  return true;
}

bool MeasureText(char16_t (&text)[kReadOutUnits]) {
  const MeasurePicks& picks = ShownPath().picks;
  if (!ValidPick(picks.a) || !ValidPick(picks.b)) return false;
  const MotionPoint& a = ShownPath().path.points[picks.a];
  const MotionPoint& b = ShownPath().path.points[picks.b];
  const double dx = b.x - a.x;
  const double dy = b.y - a.y;
  const double dz = b.z - a.z;
  CopyBounded(text, kReadOutUnits, u"MEASURE");
  AppendLabelNumber(text, kReadOutUnits, u"  dX ", dx, 4);
  AppendLabelNumber(text, kReadOutUnits, u"  dY ", dy, 4);
  AppendLabelNumber(text, kReadOutUnits, u"  dZ ", dz, 4);
  AppendLabelNumber(text, kReadOutUnits, u"  distance ", std::sqrt(dx * dx + dy * dy + dz * dz), 4);
  return true;
}

std::u16string WarningWords() {
  const MotionPath& shown = ShownPath().path;
  std::u16string words;
  if (EditorPathIsShown() && PathIsStale()) {
    words += u"  /  text changed, press PATH";
  }
  if (PreviewIsShown() && previewState.lags) words += u"  /  fields incomplete, last path shown";
  if (shown.fullAtLine >= 0) {
    // The last line of which something stands in the table.
    const std::int32_t last = shown.count > 0 ? shown.points[shown.count - 1].sourceLine : -1;
    const bool machine = ShownOwner() == PathOwner::Machine;
    words += machine ? u"  /  machine path shown to line " : u"  /  path shown to line ";
    words += IntegerText(last + 1);
  }
  words += PathNotesWords(shown.notes);
  if (ShownOwner() == PathOwner::Program && HasLinesNotShown(shown.notes)) {
    words += u"  /  Machine motion in the layers menu runs them";
  }
  return words;
}

std::u16string ToolpathWords() {
  char16_t text[kReadOutUnits];
  std::u16string words = ExtentsText(text) ? text : u"No toolpath";
  words += HeadWords();
  if (ShownOwner() == PathOwner::Machine) words += u"  /  " + MachineWords();
  words += WarningWords();
  if (!MarkerWords().empty()) words.append(u"  /  ").append(MarkerWords());
  if (!PlacePickHelp().empty()) words.append(u"  /  ").append(PlacePickHelp());
  if (!PickCrossWords().empty()) words += u"  /  " + PickCrossWords();
  if (MeasureText(text)) words += std::u16string(u"  /  ") + text;
  return words;
}

}  // namespace morva
