#include "simulator/preview_context.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "documents/edit_link.h"
#include "documents/feature_blocks.h"
#include "documents/tab_table.h"
#include "library/outline.h"
#include "library/units.h"
#include "platform/editor.h"
#include "platform/window.h"
#include "simulator/extract.h"
#include "simulator/feature_lines.h"
#include "simulator/shown_path.h"

namespace morva {

namespace {

PreviewContext context;

// The program that the context was read from.
struct ContextKey {
  bool known = false;
  std::int32_t tab = -1;
  std::uint64_t revision = 0;
  bool metric = false;
  std::int32_t editedId = 0;

  bool operator==(const ContextKey&) const = default;
};
ContextKey key;

ContextKey KeyNow() {
  ContextKey now;
  now.known = true;
  now.tab = app.activeTab;
  now.revision = platform::EditorRevision(kIdEditor);
  now.metric = UnitsMetric();
  if (editLink.kind != 0 && editLink.tab == app.activeTab) now.editedId = editLink.id;
  return now;
}

bool BlockIsLeftOut(std::int32_t id) {
  const ProgramTab* const tab = ActiveTab();
  if (id == key.editedId) return true;
  if (!tab) return false;
  return IdListHolds(tab->hiddenIds, id) || (tab->isolatedId != 0 && id != tab->isolatedId);
}

// Lines are asked in rising order, so the place in the index goes along.
FeatureLineIndex blockLines;
std::int32_t atBlock = 0;
std::int32_t lastLine = 0;

bool DropsLine(std::int32_t line) {
  if (line < lastLine) atBlock = 0;
  lastLine = line;
  while (atBlock < blockLines.count && blockLines.rows[atBlock].lastLine < line) ++atBlock;
  if (atBlock < blockLines.count && blockLines.rows[atBlock].firstLine <= line) {
    return BlockIsLeftOut(blockLines.rows[atBlock].id);
  }
  const ProgramTab* const tab = ActiveTab();
  return tab && tab->isolatedId != 0;
}

void AddScaled(MotionPath& out, double* xs, double* ys, int count, double scale) {
  for (int i = 0; i < count; ++i) {
    xs[i] *= scale;
    ys[i] *= scale;
  }
  AddPolyline(out, xs, ys, count);
}

void AddObject(MotionPath& out, const SketchObject& object, double scale) {
  double xs[kOutlinePoints];
  double ys[kOutlinePoints];
  const int count = ObjectOutline(object, xs, ys);
  AddScaled(out, xs, ys, count, scale);
}

// The sketch's objects that are cut: no points and axes to draw by.
void AddSketch(MotionPath& out, const FeatureSettings& settings) {
  const double scale = DisplayUnitsPer(settings);
  const std::int32_t items = std::min(settings.itemCount, kMaxItems);
  for (std::int32_t i = 0; i < items; ++i) {
    const SketchObject object = ObjectOf(settings.items[i]);
    if (object.type <= kTypeSlot) AddObject(out, object, scale);
  }
}

// The outer edge of a plate about the origin.
void AddPlate(MotionPath& out, const FeatureSettings& settings) {
  const double scale = DisplayUnitsPer(settings);
  const double width = std::fabs(settings.values[0]);
  const double height = std::fabs(settings.values[1]);
  SketchObject edge;
  edge.size = width;
  if (settings.a == kRoundPlate) {
    edge.type = kTypeCircle;
  } else {
    edge.type = kTypeRectangle;
    edge.size2 = height;
  }
  if (width > 0) AddObject(out, edge, scale);
}

void AddDrawings(MotionPath& out) {
  for (std::int32_t i = 0; i < features.count; ++i) {
    const FeatureRecord& row = features.rows[i];
    if (BlockIsLeftOut(row.id)) continue;
    if (row.settings.kind == kKindSketch) AddSketch(out, row.settings);
    if (row.settings.kind == kKindPlate) AddPlate(out, row.settings);
  }
}

bool IsDrawn(const MotionPoint& end) { return !end.rapid && !end.jump; }

void Include(const MotionPoint& point) {
  PathBounds& b = context.bounds;
  if (!context.drawn) b = {point.x, point.x, point.y, point.y, point.z, point.z};
  context.drawn = true;
  b.minX = std::min(b.minX, point.x);
  b.maxX = std::max(b.maxX, point.x);
  b.minY = std::min(b.minY, point.y);
  b.maxY = std::max(b.maxY, point.y);
  b.minZ = std::min(b.minZ, point.z);
  b.maxZ = std::max(b.maxZ, point.z);
}

void FindBounds(const MotionPath& of) {
  for (std::int32_t i = 1; i < of.count; ++i) {
    if (!IsDrawn(of.points[i])) continue;
    Include(of.points[i - 1]);
    Include(of.points[i]);
  }
}

}  // namespace

const PreviewContext& ContextOfPreview() { return context; }

bool RefreshPreviewContext() {
  const ContextKey now = KeyNow();
  if (key == now) return false;
  EmptyPreviewContext();
  key = now;
  if (!platform::Exists(kIdEditor)) return true;
  const std::u16string_view text = platform::EditorText(kIdEditor);
  ScanEditorText();
  IndexFeatureLines(text, blockLines);
  lastLine = 0;
  atBlock = 0;
  MotionPath& out = OwnedBy(PathOwner::Builder).context;
  ExtractInto(out, text, {.metric = UnitsMetric(), .dropsLine = DropsLine});
  AddDrawings(out);
  context.stock = StockOfFeatures();
  FindBounds(out);
  return true;
}

void EmptyPreviewContext() {
  EmptyPath(OwnedBy(PathOwner::Builder).context);
  context = PreviewContext{};
  key = ContextKey{};
}

bool IsEndpoint(const MotionPath& of, std::int32_t index) {
  const bool ends = IsDrawn(of.points[index]);
  if (index + 1 >= of.count || !IsDrawn(of.points[index + 1])) return ends && index > 0;
  // A move leads on from here: within an arc it is the same line's.
  return !ends || index == 0 || of.points[index].sourceLine != of.points[index + 1].sourceLine;
}

}  // namespace morva
