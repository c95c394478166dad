#include "app/hover.h"

#include <string>

#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/outlets.h"
#include "app/surfaces.h"
#include "platform/control.h"
#include "platform/window.h"

namespace morva {

namespace {

constexpr std::size_t kHoverTextMost = 279;

struct Hint {
  int id;
  const char16_t* text;
};

const Hint kHints[] = {
    {kIdRewind, u"Rewind ten toolpath points; playback pauses."},
    {kIdFastForward, u"Fast forward through the visible toolpath."},
    {kIdDimensions, u"Dimensions: display X/Y/Z extents of the visible toolpath."},
    {kIdMeasure, u"Measure: choose two displayed endpoints for distance and X/Y/Z differences."},
    {kIdPan, u"Switch left-drag between orbit and pan. Middle or Shift-drag always pans."},
    {kIdFit, u"Fit the visible toolpath and reset pan/zoom."},
    {kIdInch, u"Working units: converts builder inputs; existing G-code is not rewritten."},
    {kIdMm, u"Working units: converts builder inputs; existing G-code is not rewritten."},
    {kIdSpeedSlider, kPlaybackHint},
    {kIdCadOperations,
     u"Operations: select geometry to edit. Right-click for copy, scale, visibility and locks."},
    {kIdCadGenerate, u"Generate or update the current sketch in the active program."},
    {kIdCadScale, u"Scale dimensions around the selected object's anchor."},
    {kIdFeatureList,
     u"Program features: right-click to isolate simulation, hide/show, or lock settings."},
};

int lastId = 0;

std::u16string HintFor(int id) {
  for (const Hint& hint : kHints) {
    if (hint.id == id) return hint.text;
  }
  return platform::TextOf(id).substr(0, kHoverTextMost);
}

}  // namespace

void HoverTick() {
  Call(hooks.compareTick);
  int id = platform::IdUnderPointer();
  TellPointerOver(id);
  // The rename box lies over the list and goes again: the list's hint must not wipe what was said
  // about the name.
  if (id == kIdInlineName) id = kIdFeatureList;
  // Over another window, as a question of our own, nothing is forgotten: the hint of the key that
  // asked must not come again and wipe what became of it.
  if (id == 0 || id == lastId) return;
  lastId = id;
  if (id == platform::kMainWindow) return;
  if (id == kIdCadStatus || id == kIdCadHint) return;
  if (id == kIdEditor || id == kIdWordsEditor || id == kIdOutputLog) return;
  if (id == kIdImportPreview) return;
  if (id == kIdReviewLeftPane || id == kIdReviewRightPane || id == kIdReviewSummary) return;
  // Standing text and the status line are read where they are; they must not wipe the log.
  if (id == kIdInfoPanel || id == kIdHelpText || id == kIdStatusLine) return;
  const std::u16string text = HintFor(id);
  if (text.empty()) return;
  ShowStatus(text);
  const Surface* up = SurfaceUp();
  if (up && up->hintLabel != 0) {
    platform::SetText(up->hintLabel, text);
    return;
  }
  platform::SetText(kIdOutputLog, text + u"\r\n");
}

void HoverPressed(int id) {
  if (id != 0 && platform::IdUnderPointer() == id) lastId = id;
}

void ResetHover() { lastId = 0; }

}  // namespace morva
