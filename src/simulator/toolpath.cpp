#include "simulator/toolpath.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "app/command_ids.h"
#include "app/commands.h"
#include "documents/feature_blocks.h"
#include "documents/marker_lines.h"
#include "documents/stored_code.h"
#include "documents/tab_table.h"
#include "library/units.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "platform/window.h"
#include "simulator/cutter.h"
#include "simulator/extract.h"
#include "simulator/feature_lines.h"
#include "simulator/kept_paths.h"
#include "simulator/line_highlight.h"
#include "simulator/machine_motion.h"
#include "simulator/machine_path.h"
#include "simulator/motion_run.h"
#include "simulator/place_pick.h"
#include "simulator/preview_state.h"
#include "simulator/view.h"
#include "simulator/view_parts.h"
#include "simulator/view_switches.h"
#include "text/codetext.h"

namespace morva {

namespace {

// The editor's text that the program's path was read from; false: it came from elsewhere.
bool readFromEditor = false;
std::uint64_t readRevision = 0;
bool staleShown = false;  // at the last look

constexpr char16_t kPausedWords[] = u"Play";  // of the play key, until the path is drawn anew

// The stored code behind a feature's DISABLED line, null for none.
const DisabledCodeEntry* StoredCode(const ProgramTab& tab, const FeatureRecord& row,
                                    std::u16string_view text) {
  const std::size_t start = static_cast<std::size_t>(std::max(row.start, 0));
  const std::size_t end = std::min(static_cast<std::size_t>(std::max(row.end, 0)), text.size());
  if (start >= end) return nullptr;
  const std::u16string_view span = text.substr(start, end - start);
  const std::size_t found = FindFolded(span, kDisabledMark, 0);
  if (found == std::u16string_view::npos) return nullptr;
  const DisabledCodeEntry* stored = FindDisabledCode(
      tab.disabledCode, ParseInteger(span.substr(found + kDisabledMark.size()), 0));
  return stored && MayBeCodeOf(*stored, row) ? stored : nullptr;
}

// What the view's read-out has no room for.
void TellNotes() {
  const bool machine = ShownOwner() == PathOwner::Machine;
  platform::SetToolTip(kViewToolpath,
                       machine ? MachineTip() : PathNotesTip(ShownPath().path.notes));
  platform::TellViewValue(kViewToolpath);
}

void RebuildGhosts(std::u16string_view text) {
  EmptyPath(ghostPath);
  const ProgramTab* tab = ActiveTab();
  if (!tab || !tab->disabledCode) return;
  for (std::int32_t i = 0; i < features.count; ++i) {
    const FeatureRecord& row = features.rows[i];
    if (IdListHolds(tab->hiddenIds, row.id)) continue;
    const DisabledCodeEntry* stored = StoredCode(*tab, row, text);
    if (!stored) continue;
    // Each block stands alone.
    ExtractBehind(ghostPath, stored->text, {.metric = UnitsMetric()});
  }
}

// Of both paths of the program.
void ResetEditorPlayback() {
  ResetPlayback(PathOwner::Program);
  ResetPlayback(PathOwner::Machine);
}

void ReadProgramPath(std::u16string_view text, bool metric, bool ofEditor) {
  readFromEditor = false;
  const bool seen = EditorOwner() == PathOwner::Program;
  if (ofEditor && seen && TakeKeptPath(metric)) return;
  IndexFeatureLines(text);
  // Nobody sees the program as written; the switch back reads it.
  if (!seen) return EmptyPath(path);
  ExtractInto(path, text, {.metric = metric, .filtered = true});
  if (ofEditor) NoteProgramPath(metric);
}

void Extract(PathOwner owner, std::u16string_view text, bool metric, bool ofEditor = false) {
  const bool filtered = owner == PathOwner::Program;
  if (filtered) {
    ReadProgramPath(text, metric, ofEditor);
    FollowMachineMotion(text, metric, ofEditor);
  } else {
    ExtractInto(OwnedBy(owner).path, text, {.metric = metric});
  }
  if (owner != ShownOwner() && !(filtered && EditorPathIsShown())) return;
  TellNotes();
  platform::Repaint(kViewToolpath);
}

// Reads the editor: ghosts, path, stock, and which text they belong to. Play is left as it is.
void ReadEditor() {
  LoadViewSettings();
  if (EditorPathIsShown()) ShowPathOf(EditorOwner());
  if (platform::Exists(kIdEditor)) {
    const std::u16string_view text = platform::EditorText(kIdEditor);
    ScanEditorText();
    KeepLeftPath();
    RebuildGhosts(text);
    Extract(PathOwner::Program, text, UnitsMetric(), true);
    readFromEditor = true;
    readRevision = platform::EditorRevision(kIdEditor);
    staleShown = false;
  }
  FindStockEnvelope();
  platform::Repaint(kViewToolpath);
}

}  // namespace

void ExtractPathOf(PathOwner owner, std::u16string_view text, bool metric) {
  Extract(owner, text, metric);
  if (owner != PathOwner::Builder) return ResetEditorPlayback();
  ResetPlayback(owner);
}

void ExtractToolpath(std::u16string_view text, bool metric) {
  ExtractPathOf(PathOwner::Program, text, metric);
}

void RebuildToolpath() {
  for (const PathOwner owner : {PathOwner::Program, PathOwner::Machine}) {
    HaltPlayback(owner);
    ForgetHead(owner);
  }
  ForgetHighlight();
  // The key tells of the path that is shown.
  if (EditorPathIsShown()) ShowPlayWords();
  ReadEditor();
  if (readFromEditor) ResetEditorPlayback();
}

void SwitchMachineMotion(bool on) {
  if (on == switches.machineMotion) return;
  ShowMachineMotion(on);
  ForgetControlSettings();
  RebuildToolpath();
}

void FollowTag(std::uint64_t revisionBefore) {
  if (!readFromEditor) return;
  const bool sameMoves = readRevision == revisionBefore;
  ReadEditor();
  SettlePlayback(PathOwner::Program, sameMoves);
  SettlePlayback(PathOwner::Machine, sameMoves);
  const OwnedPath& program = OwnedBy(EditorOwner());
  if (program.play.headInUse && program.play.playHead > 0) {
    MoveHighlight(program.path.points[program.play.playHead - 1].sourceLine);
  }
}

bool PathIsStale() {
  return readFromEditor && platform::Exists(kIdEditor) &&
         platform::EditorRevision(kIdEditor) != readRevision;
}

void ShowStalePath() {
  if (PathIsStale() == staleShown) return;
  staleShown = !staleShown;
  platform::Repaint(kViewToolpath);
}

void ShowPlayWords(bool paused) {
  platform::SetText(kIdPlay, paused ? kPausedWords : WordsOf(kIdPlay, ShownPath().play.playing));
  platform::TellViewValue(kViewToolpath);
}

void ShowPathOf(PathOwner owner) {
  if (owner == ShownOwner()) return;
  HaltPlayback(ShownOwner());
  LetGoOfView();
  SetShownOwner(owner);
  ShowPlayWords();
  TellNotes();
  platform::Repaint(kViewToolpath);
}

void ResetSimulator() {
  // Generations go on counting, so that nothing derived from older points can be taken for
  // current.
  EmptyFeatureLines();
  EndMotionRun();
  RemoveDemoCutter();
  ForgetKeptPaths();
  ResetPlacePick();
  ForgetPreview();
  ForgetControlSettings();
  EmptyMachineTrack();
  ResetOwnedPaths();
  ResetSwitches();
  ForgetHighlight();
  readFromEditor = false;
  staleShown = false;
  TellNotes();
}

}  // namespace morva
