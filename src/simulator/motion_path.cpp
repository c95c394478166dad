// The point tables, the one way into them, and the rebuild from the active editor.
#include "simulator/motion_path.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "documents/feature_blocks.h"
#include "documents/tab_table.h"
#include "library/units.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "platform/window.h"
#include "simulator/feature_lines.h"
#include "simulator/motion_run.h"
#include "simulator/playback.h"
#include "simulator/shown_path.h"
#include "simulator/stock_envelope.h"
#include "text/codetext.h"

namespace morva {

namespace {
MotionPoint programPoints[kMaxMotionPoints];
MotionPoint ghostPoints[kMaxMotionPoints];
}  // namespace

MotionPath path{programPoints};
MotionPath ghostPath{ghostPoints};
MotionRun motionRun;

namespace {

constexpr std::u16string_view kDisabledMarker = u"(MORVA DISABLED ";

// One run behind the points that stand in the table already, from the start state: at the
// origin, absolute, rapid, tool 0. With `arrives` no line leads into its first point.
void Run(MotionPath& out, std::u16string_view text, const ExtractOptions& options, bool arrives) {
  ++out.generation;
  motionRun = MotionRun{};
  motionRun.out = &out;
  motionRun.first = out.count;
  motionRun.filtered = options.filtered && StartLineFilter();
  motionRun.jump = arrives;
  AddMotionPoint(0.0, 0.0, 0.0, true, 0);
  ScanMotion(text, options.metric);
  motionRun = MotionRun{};
}

// The stored code behind a feature's DISABLED line, null for none.
const DisabledCodeEntry* StoredCode(const ProgramTab& tab, const FeatureRecord& row,
                                    std::u16string_view text) {
  const std::size_t start = static_cast<std::size_t>(std::max(row.start, 0));
  const std::size_t end = std::min(static_cast<std::size_t>(std::max(row.end, 0)), text.size());
  if (start >= end) return nullptr;
  const std::u16string_view span = text.substr(start, end - start);
  const std::size_t found = FindFolded(span, kDisabledMarker, 0);
  if (found == std::u16string_view::npos) return nullptr;
  return FindDisabledCode(tab.disabledCode,
                          ParseInteger(span.substr(found + kDisabledMarker.size()), 0));
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
    Run(ghostPath, stored->text, {.metric = UnitsMetric()}, true);
  }
}

}  // namespace

void AddMotionPoint(double x, double y, double z, bool rapid, std::int32_t sourceLine) {
  if (motionRun.filtered && LineIsDropped(sourceLine)) {
    motionRun.jump = true;
    return;
  }
  MotionPath& out = *motionRun.out;
  if (out.count >= kMaxMotionPoints) {
    if (out.fullAtLine < 0) out.fullAtLine = sourceLine;
    return;
  }
  if (out.count > motionRun.first) {
    constexpr double kSame = 1e-6;
    const MotionPoint& last = out.points[out.count - 1];
    if (std::fabs(x - last.x) <= kSame && std::fabs(y - last.y) <= kSame &&
        std::fabs(z - last.z) <= kSame) {
      return;
    }
  }
  MotionPoint& point = out.points[out.count++];
  point.x = x;
  point.y = y;
  point.z = z;
  point.rapid = rapid;
  point.sourceLine = sourceLine;
  point.jump = motionRun.jump;
  point.tool = motionRun.tool;
  motionRun.jump = false;
}

void EmptyPath(MotionPath& out) {
  ++out.generation;
  out.count = 0;
  out.fullAtLine = -1;
}

void ExtractInto(MotionPath& out, std::u16string_view text, const ExtractOptions& options) {
  out.count = 0;
  out.fullAtLine = -1;
  Run(out, text, options, false);
}

void ExtractPathOf(PathOwner owner, std::u16string_view text, bool metric) {
  const bool filtered = owner == PathOwner::Program;
  if (filtered) IndexFeatureLines(text);
  ExtractInto(OwnedBy(owner).path, text, {.metric = metric, .filtered = filtered});
  ResetPlayback(owner);
  if (owner == ShownOwner()) platform::Repaint(kViewToolpath);
}

void ExtractToolpath(std::u16string_view text, bool metric) {
  ExtractPathOf(PathOwner::Program, text, metric);
}

void RebuildToolpath() {
  HaltPlayback(PathOwner::Program);
  playback.headInUse = false;
  ForgetHighlight();
  // The key tells of the path that is shown.
  if (ShownOwner() == PathOwner::Program) platform::SetText(kIdPlay, u"PLAY");
  if (platform::Exists(kIdEditor)) {
    const std::u16string_view text = platform::EditorText(kIdEditor);
    ScanProgramText(text);
    RebuildGhosts(text);
    ExtractToolpath(text, UnitsMetric());
  }
  FindStockEnvelope();
  platform::Repaint(kViewToolpath);
}

const PathBounds& BoundsOf(MotionPath& of) {
  PathBounds& bounds = of.bounds;
  if (of.boundsGeneration == of.generation && of.boundsCount == of.count) return bounds;
  of.boundsGeneration = of.generation;
  of.boundsCount = of.count;
  bounds = PathBounds{};
  if (of.count == 0) return bounds;
  const MotionPoint& first = of.points[0];
  bounds = {first.x, first.x, first.y, first.y, first.z, first.z};
  for (std::int32_t i = 1; i < of.count; ++i) {
    const MotionPoint& p = of.points[i];
    bounds.minX = std::min(bounds.minX, p.x);
    bounds.maxX = std::max(bounds.maxX, p.x);
    bounds.minY = std::min(bounds.minY, p.y);
    bounds.maxY = std::max(bounds.maxY, p.y);
    bounds.minZ = std::min(bounds.minZ, p.z);
    bounds.maxZ = std::max(bounds.maxZ, p.z);
  }
  return bounds;
}

const PathBounds& Bounds() {
  const OwnedPath& shown = ShownPath();
  return BoundsOf(shown.path.count == 0 && shown.ghosts ? *shown.ghosts : shown.path);
}

void ResetSimulator() {
  // Generations go on counting, so that nothing derived from older points can be taken for
  // current.
  EmptyPath(ghostPath);
  featureLines.count = 0;
  motionRun = MotionRun{};
  ResetOwnedPaths();
  switches = ViewSwitches{};
  ForgetHighlight();
}

}  // namespace morva
