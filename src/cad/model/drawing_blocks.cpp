#include "cad/model/drawing_blocks.h"

#include <string>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "cad/model/cut_data.h"
#include "cad/model/drawings.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_record.h"
#include "cad/model/sketch_words.h"
#include "documents/edit_link.h"
#include "documents/feature_blocks.h"
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

void ScanProgram() { ScanProgramText(platform::EditorText(kIdEditor)); }

bool IsSketchRow(int row) { return features.rows[row].settings.kind == kKindSketch; }

// The first block with the geometry of this record, -1 for none.
int RowHolding(const FeatureSettings& drawing) {
  for (int i = 0; i < features.count; ++i) {
    if (IsSketchRow(i) && SameItems(drawing, features.rows[i].settings)) return i;
  }
  return -1;
}

const Drawing* ActiveDrawing() {
  const ProgramTab* tab = ActiveTab();
  return tab && tab->cadStore ? &tab->cadStore->drawings[tab->cadStore->active] : nullptr;
}

// The block that the drawing was opened from or sent as, if it is still the one, whatever its
// geometry is now; else -1.
int RowRemembered(const Drawing& drawing) {
  const int row = drawing.block != 0 ? FindFeature(drawing.block) : -1;
  if (row < 0 || !IsSketchRow(row)) return -1;
  return features.rows[row].settings.codeHash == drawing.blockHash ? row : -1;
}

std::u16string NameOf(std::int32_t id) {
  const int row = FindFeature(id);
  if (row >= 0 && features.rows[row].name[0]) return features.rows[row].name;
  return KindWords(kKindSketch);
}

bool IsUnnamed(const CadStore& store, std::uint32_t index) {
  const std::u16string own = u"Drawing " + IntegerText(static_cast<std::int64_t>(index) + 1);
  return store.drawings[index].name == own;
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
    } else if (SameItems(drawing.settings, record)) {
      return index;
    } else if (RowRemembered(drawing) >= 0 && RowHolding(drawing.settings) >= 0) {
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
void BringUp(ProgramTab& tab, int index, std::int32_t id) {
  const EditLink link = editLink;
  const std::u16string name = NameOf(id);
  SwitchDrawing(tab, static_cast<std::uint32_t>(index));
  SetEditLink(link);
  NameActiveDrawing(tab, name);
  Call(hooks.layout);  // a key more, perhaps
}

// Where the live sketch holds geometry that stands in no block, a free drawing comes up, called
// after the block; without a free one the user is asked. False: the drawing is to stay.
bool MakeRoom(const FeatureSettings& record, std::int32_t id) {
  static FeatureSettings live;
  ProgramTab* tab = ProvideDrawings();
  if (!tab || sketch.objectCount == 0 || !StoreLiveSketch(live)) return true;
  ScanProgram();
  // The same geometry loses nothing, and what a block holds can be opened again.
  const Drawing& active = *ActiveDrawing();
  if (SameItems(live, record)) return true;
  if (RowHolding(live) >= 0) {
    if (RowRemembered(active) >= 0 && NameOf(active.block) == active.name) {
      NameActiveDrawing(*tab, NameOf(id));
    }
    return true;
  }
  const int free = FreeDrawing(*tab, record);
  if (free < 0) return MayReplace(active);
  BringUp(*tab, free, id);
  return true;
}

}  // namespace

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
  SetDrawingBlock(*tab, id, features.rows[row].settings.codeHash);
}

bool OpenSketchBlock(const FeatureSettings& record) {
  if (!IsSketchRecord(record)) return false;
  // First: the workspace stages the program's own drawing when it comes up.
  Call(hooks.setSurface, static_cast<int>(kSurfaceCad));
  const bool stands = liveModels.cadWindowExists && liveModels.cadWindowExists();
  if (!stands || !MakeRoom(record, editLink.id)) return false;
  DropSketchUndoForBlock(SketchDiffersFrom(record), ShownCutData());
  TakeSketchItems(record);
  RememberBlock(editLink.id);
  if (sketch.undoDepth > 0) LogSketchOperation(u"Opened a block (Undo: former drawing)");
  return true;
}

}  // namespace morva
