// The point tables, the one way into them, and the rebuild from the active editor.
#include "simulator/motion_path.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "documents/feature_blocks.h"
#include "documents/program_tabs.h"
#include "library/units.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "platform/window.h"
#include "simulator/feature_lines.h"
#include "simulator/motion_run.h"
#include "simulator/playback.h"
#include "simulator/stock_envelope.h"
#include "text/codetext.h"

namespace morva {

MotionPath path;
MotionPath ghostPath;
std::uint32_t pathGeneration = 0;
std::int32_t pathFullAtLine = -1;
MotionRun motionRun;

namespace {

constexpr std::u16string_view kDisabledMarker = u"(MORVA DISABLED ";

// One run into the main table, from the start state: at the origin, absolute, rapid, tool 0.
void RunExtraction(std::u16string_view text, bool metric, bool ghost) {
  ++pathGeneration;
  path.count = 0;
  pathFullAtLine = -1;
  motionRun = MotionRun{};
  motionRun.ghost = ghost;
  if (!ghost) {
    IndexFeatureLines(text);
    motionRun.filtered = StartLineFilter();
  }
  AddMotionPoint(0.0, 0.0, 0.0, true, 0);
  ScanMotion(text, metric);
  ResetPlayback();
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

// Appends the main table to the ghosts. Each block stands alone: no line leads into it.
void KeepGhost() {
  const std::int32_t room = kMaxMotionPoints - ghostPath.count;
  const std::int32_t taken = std::min(path.count, room);
  MotionPoint* const first = ghostPath.points + ghostPath.count;
  std::copy_n(path.points, taken, first);
  if (taken > 0) first->jump = true;
  ghostPath.count += taken;
}

void RebuildGhosts(std::u16string_view text) {
  ghostPath.count = 0;
  const ProgramTab* tab = ActiveTab();
  if (!tab || !tab->disabledCode) return;
  for (std::int32_t i = 0; i < features.count; ++i) {
    const FeatureRecord& row = features.rows[i];
    if (IdListHolds(tab->hiddenIds, row.id)) continue;
    const DisabledCodeEntry* stored = StoredCode(*tab, row, text);
    if (!stored) continue;
    RunExtraction(stored->text, UnitsMetric(), true);
    KeepGhost();
  }
}

}  // namespace

void AddMotionPoint(double x, double y, double z, bool rapid, std::int32_t sourceLine) {
  if (motionRun.filtered && LineIsDropped(sourceLine)) {
    motionRun.jump = true;
    return;
  }
  if (path.count >= kMaxMotionPoints) {
    if (pathFullAtLine < 0) pathFullAtLine = sourceLine;
    return;
  }
  if (path.count > 0) {
    constexpr double kSame = 1e-6;
    const MotionPoint& last = path.points[path.count - 1];
    if (std::fabs(x - last.x) <= kSame && std::fabs(y - last.y) <= kSame &&
        std::fabs(z - last.z) <= kSame) {
      return;
    }
  }
  MotionPoint& point = path.points[path.count++];
  point.x = x;
  point.y = y;
  point.z = z;
  point.rapid = rapid;
  point.sourceLine = sourceLine;
  point.jump = motionRun.jump;
  point.tool = motionRun.tool;
  motionRun.jump = false;
}

void ExtractToolpath(std::u16string_view text, bool metric) { RunExtraction(text, metric, false); }

void RebuildToolpath() {
  HaltPlayback();
  playback.headInUse = false;
  ForgetHighlight();
  platform::SetText(kIdPlay, u"PLAY");
  if (platform::Exists(kIdEditor)) {
    const std::u16string_view text = platform::EditorText(kIdEditor);
    ScanProgramText(text);
    RebuildGhosts(text);
    ExtractToolpath(text, UnitsMetric());
  }
  FindStockEnvelope();
  platform::Repaint(kViewToolpath);
}

const PathBounds& Bounds() {
  static PathBounds bounds;
  static std::uint32_t generation = 0;
  static std::int32_t mainCount = -1;
  static std::int32_t ghostCount = -1;
  if (generation == pathGeneration && mainCount == path.count && ghostCount == ghostPath.count) {
    return bounds;
  }
  generation = pathGeneration;
  mainCount = path.count;
  ghostCount = ghostPath.count;
  bounds = PathBounds{};
  const MotionPath& table = path.count > 0 ? path : ghostPath;
  if (table.count == 0) return bounds;
  const MotionPoint& first = table.points[0];
  bounds = {first.x, first.x, first.y, first.y, first.z, first.z};
  for (std::int32_t i = 1; i < table.count; ++i) {
    const MotionPoint& p = table.points[i];
    bounds.minX = std::min(bounds.minX, p.x);
    bounds.maxX = std::max(bounds.maxX, p.x);
    bounds.minY = std::min(bounds.minY, p.y);
    bounds.maxY = std::max(bounds.maxY, p.y);
    bounds.minZ = std::min(bounds.minZ, p.z);
    bounds.maxZ = std::max(bounds.maxZ, p.z);
  }
  return bounds;
}

void ResetSimulator() {
  path.count = 0;
  ghostPath.count = 0;
  featureLines.count = 0;
  stockEnvelope = StockEnvelope{};
  // The generation goes on counting, so that nothing derived from older points can be taken
  // for current.
  ++pathGeneration;
  pathFullAtLine = -1;
  motionRun = MotionRun{};
  ResetPlayback();
  playback = Playback{};
  switches = ViewSwitches{};
  ForgetHighlight();
}

}  // namespace morva
