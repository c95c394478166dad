#include "cad/model/drawing_blocks.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "cad/model/cad_form.h"
#include "cad/model/cut_data.h"
#include "cad/model/drawings.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_record.h"
#include "cad/model/sketch_words.h"
#include "documents/edit_link.h"
#include "documents/feature_blocks.h"
#include "documents/known_block.h"
#include "documents/tab_models.h"
#include "documents/tab_table.h"
#include "platform/editor.h"
#include "platform/message.h"
#include "text/codetext.h"

namespace morva {

namespace {

bool SameItems(const FeatureSettings& a, const FeatureSettings& b) {
  if (a.itemCount != b.itemCount || a.metric != b.metric) return false;
  for (int i = 0; i < a.itemCount; ++i) {
    const SketchObject one = ObjectOf(a.items[i]);
    const SketchObject other = ObjectOf(b.items[i]);
    if (one.group != other.group || !SameGeometry(one, other)) return false;
  }
  return true;
}

void ScanProgram() { ScanEditorText(); }

// Cutting data and thickness too.
bool SameRecord(const FeatureSettings& a, const FeatureSettings& b) {
  for (const int value :
       {int{kSketchDepth}, int{kSketchFeed}, int{kSketchSafeZ}, kSketchThickness}) {
    if (a.values[value] != b.values[value]) return false;
  }
  return SameItems(a, b);
}

// A block knows nothing of what is hidden and locked.
bool HasFlags(const unsigned char (&hidden)[kMaxItems], const unsigned char (&locked)[kMaxItems]) {
  const auto set = [](unsigned char flag) { return flag != 0; };
  return std::ranges::any_of(hidden, set) || std::ranges::any_of(locked, set);
}

// The first block with the geometry of this record, -1 for none.
int RowHolding(const FeatureSettings& drawing) {
  return FirstRowOf(kKindSketch,
                    [&](const FeatureRecord& row) { return SameItems(drawing, row.settings); });
}

// The first block that gives back all of the drawing but its name, -1 for none.
int RowHoldingAll(const Drawing& drawing) {
  if (HasFlags(drawing.hidden, drawing.locked)) return -1;
  return FirstRowOf(kKindSketch, [&](const FeatureRecord& row) {
    return SameRecord(drawing.settings, row.settings);
  });
}

const Drawing* ActiveDrawing() {
  const ProgramTab* tab = ActiveTab();
  return tab && tab->cadStore ? &tab->cadStore->drawings[tab->cadStore->active] : nullptr;
}

// For a drawing of a file that says nothing of its block: the one that the file's drawing was equal
// to, or is called after.
int RowByLooks(const Drawing& drawing) {
  const int same = FirstRowOf(kKindSketch, [&](const FeatureRecord& row) {
    return GeometryHash(row.settings) == drawing.readGeometry;
  });
  if (same >= 0) return same;
  return FirstRowOf(kKindSketch, [&](const FeatureRecord& row) {
    return std::u16string_view(row.name) == std::u16string_view(drawing.name);
  });
}

// The block that the drawing was opened from or sent as, if it is still the one, whatever its
// geometry is now; else -1.
int RowRemembered(const Drawing& drawing) {
  const int row = RowOfBlock(drawing.block, kKindSketch);
  return row >= 0 || drawing.readGeometry == 0 ? row : RowByLooks(drawing);
}

std::u16string NameOf(int row) {
  if (row >= 0 && features.rows[row].name[0]) return features.rows[row].name;
  return KindWords(kKindSketch);
}

bool IsUnnamed(const CadStore& store, std::uint32_t index) {
  const std::u16string own = u"Drawing " + IntegerText(static_cast<std::int64_t>(index) + 1);
  return store.drawings[index].name == own;
}

// Called after its block, or after blocks at all; a name of the user's own belongs to the drawing.
bool IsCalledAfter(const Drawing& drawing, int row) {
  const std::u16string_view name = drawing.name;
  return name == NameOf(row) || name == NameOf(RowRemembered(drawing)) || name == NameOf(-1);
}

// Nothing is lost where another block takes the drawing's place.
bool MayGiveWay(const CadStore& store, std::uint32_t index, const Drawing& drawing) {
  const int row = RowHoldingAll(drawing);
  return row >= 0 && (IsUnnamed(store, index) || IsCalledAfter(drawing, row));
}

bool Shows(const Drawing& drawing, const FeatureSettings& record) {
  return SameRecord(drawing.settings, record) && !HasFlags(drawing.hidden, drawing.locked);
}

// A drawing that may take the block: it shows it already, is empty, is still to be made, or shows
// another block just as it is. -1 for none.
int FreeDrawing(ProgramTab& tab, const FeatureSettings& record) {
  const CadStore& store = *tab.cadStore;
  int empty = -1;
  int unnamed = -1;
  int shown = -1;
  for (std::uint32_t i = store.count; i-- > 0;) {
    const Drawing& drawing = store.drawings[i];
    const int index = static_cast<int>(i);
    if (i == store.active) continue;
    if (drawing.settings.itemCount == 0) {
      (IsUnnamed(store, i) ? unnamed : empty) = index;
    } else if (Shows(drawing, record)) {
      return index;
    } else if (RowRemembered(drawing) >= 0 && MayGiveWay(store, i, drawing)) {
      shown = index;
    }
  }
  if (unnamed >= 0) return unnamed;
  if (store.count < kMaxDrawings) return static_cast<int>(AddDrawing(tab));
  return empty >= 0 ? empty : shown;
}

bool MayReplace(const Drawing& drawing) {
  const std::u16string words = u"No drawing tab is free. The block would take the place of \u201C" +
                               std::u16string(drawing.name) +
                               u"\u201D, which stands in no block of the program. Replace it?";
  return platform::ShowBox(u"Open a block", words, platform::BoxButtons::NoYes,
                           platform::BoxIcon::Warning) == platform::BoxAnswer::Yes;
}

// The link is made already; it stays over a change of drawing.
void BringUp(ProgramTab& tab, int index, const std::u16string& name) {
  const EditLink link = editLink;
  SwitchDrawing(tab, static_cast<std::uint32_t>(index));
  SetEditLink(link);
  NameActiveDrawing(tab, name);
  Call(hooks.layout);  // a key more, perhaps
}

enum class Room { None, Free, Taken };

// Where the live sketch holds anything that stands in no block, a free drawing comes up, called
// after the block; without a free one the user is asked. None: the drawing is to stay. Taken: the
// user gave its place away.
Room MakeRoom(const FeatureSettings& record, std::int32_t id) {
  static Drawing live;
  ProgramTab* tab = ProvideDrawings();
  if (!tab || sketch.objectCount == 0 || !StoreLiveSketch(live.settings)) return Room::Free;
  StoreFlags(live.hidden, live.locked);
  if (Shows(live, record)) return Room::Free;
  ScanProgram();
  const CadStore& store = *tab->cadStore;
  const Drawing& active = store.drawings[store.active];
  CopyBounded(live.name, kDrawingNameUnits, active.name);
  live.block = active.block;
  live.readGeometry = active.readGeometry;
  const std::u16string name = NameOf(FindFeature(id));
  const bool unnamed = IsUnnamed(store, store.active);
  if (MayGiveWay(store, store.active, live)) {
    if (!unnamed) NameActiveDrawing(*tab, name);
    return Room::Free;
  }
  const int free = FreeDrawing(*tab, record);
  if (free >= 0) {
    BringUp(*tab, free, name);
    return Room::Free;
  }
  if (!MayReplace(active)) return Room::None;
  if (!unnamed) NameActiveDrawing(*tab, name);
  return Room::Taken;
}

}  // namespace

FormerDrawing LiveFormerDrawing() {
  FormerDrawing former{.cut = ShownCutData()};
  const Drawing* drawing = ActiveDrawing();
  if (!drawing) return former;
  CopyBounded(former.name, kDrawingNameUnits, drawing->name);
  former.block = drawing->block;
  return former;
}

std::int32_t BlockOfLiveDrawing() {
  static FeatureSettings live;
  if (sketch.objectCount == 0 || !StoreLiveSketch(live)) return 0;
  ScanProgram();
  const Drawing* drawing = ActiveDrawing();
  const int remembered = drawing ? RowRemembered(*drawing) : -1;
  const bool same = remembered >= 0 && SameItems(live, features.rows[remembered].settings);
  const int holding = same ? remembered : RowHolding(live);
  const int row = holding >= 0 ? holding : remembered;
  return row >= 0 ? features.rows[row].id : 0;
}

void RememberBlock(std::int32_t id) {
  static FeatureSettings live;
  ProgramTab* tab = ProvideDrawings();
  if (!tab || !StoreLiveSketch(live)) return;
  ScanProgram();
  const int row = id != 0 ? FindFeature(id) : -1;
  if (row < 0 || !SameItems(live, features.rows[row].settings)) return;
  KnownBlock block = ActiveDrawing()->block;
  NoteBlock(block, id, features.rows[row].settings.codeHash);
  SetDrawingBlock(*tab, block);
}

bool OpenSketchBlock(const FeatureSettings& record) {
  if (!IsSketchRecord(record)) return false;
  // First: the workspace stages the program's own drawing when it comes up.
  Call(hooks.setSurface, static_cast<int>(kSurfaceCad));
  if (!liveModels.cadWindowExists || !liveModels.cadWindowExists()) return false;
  const FormerDrawing former = LiveFormerDrawing();
  const Room room = MakeRoom(record, editLink.id);
  if (room == Room::None) return false;
  DropSketchUndoForBlock(room == Room::Taken ? &former : nullptr);
  TakeSketchItems(record);
  RememberBlock(editLink.id);
  if (sketch.undoDepth > 0) LogSketchOperation(u"Opened a block (Undo: former drawing)");
  return true;
}

}  // namespace morva
