// The heap part of a program's record. A memory that runs out skips that one model.

#include "documents/tab_models.h"

#include <algorithm>
#include <memory>
#include <new>
#include <string>
#include <utility>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/limits.h"
#include "app/outlets.h"
#include "documents/feature_blocks.h"
#include "documents/file_text.h"
#include "documents/known_block.h"
#include "documents/save_state.h"
#include "documents/stored_code.h"
#include "documents/tab_table.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "platform/file.h"
#include "platform/real_path.h"
#include "platform/window.h"
#include "text/codetext.h"

namespace morva {

LiveModels liveModels;

namespace {

struct CompanionKind {
  std::u16string_view suffix;
  std::u16string_view words;
};
constexpr std::u16string_view kCadEnd = u".cadmv";
constexpr std::u16string_view kFeaturesEnd = u".features";
constexpr CompanionKind kCompanionKinds[kCompanionCount] = {
    {kCadEnd, u"The file of the drawings"},
    {kPlateEnd, u"The file of the plates"},
    {kFeaturesEnd, u"The file of the excluded code"},
};

constexpr std::uint64_t kEmptyCompanion = 8;  // bytes of ".features" without an entry

bool CadWindowExists() { return liveModels.cadWindowExists && liveModels.cadWindowExists(); }
bool PlateWindowExists() { return liveModels.plateWindowExists && liveModels.plateWindowExists(); }

template <typename Record>
bool Provide(Record*& record) {
  if (!record) record = new (std::nothrow) Record();
  return record != nullptr;
}

// A writer that fails half way must not spoil what is stored, nor may memory that runs out
// leave a record without a kind.
bool TakeLive(bool (*writer)(FeatureSettings& record), FeatureSettings& record) {
  static FeatureSettings live;
  if (!writer || !writer(live)) return false;
  record = live;
  return true;
}

void StoreSketch(ProgramTab& tab) {
  if (!Provide(tab.cadSettings)) return;
  const bool taken = TakeLive(liveModels.storeSketch, *tab.cadSettings);
  if (!tab.cadStore) {
    if (!Provide(tab.cadStore)) return;
    tab.cadStore->count = 1;
    CopyBounded(tab.cadStore->drawings[0].name, kDrawingNameUnits, u"Drawing 1");
  }
  Drawing& drawing = tab.cadStore->drawings[tab.cadStore->active];
  if (taken) drawing.settings = *tab.cadSettings;
  std::copy_n(tab.sketchHidden, kMaxItems, drawing.hidden);
  std::copy_n(tab.sketchLocked, kMaxItems, drawing.locked);
}

// A plate that takes more than a record holds leaves what was stored before, which may be nothing.
// Its name is kept all the same: no record tells it.
void StorePlate(ProgramTab& tab) {
  const bool had = tab.plateSettings != nullptr;
  if (!Provide(tab.plateSettings)) return;
  const bool taken = TakeLive(liveModels.storePlate, *tab.plateSettings);
  if (!taken && !had) {
    delete tab.plateSettings;
    tab.plateSettings = nullptr;
    return;
  }
  if (!tab.plateStore) {
    if (!Provide(tab.plateStore)) return;
    tab.plateStore->count = 1;
    tab.plateStore->plates[0] = *tab.plateSettings;
  }
  PlateStore& store = *tab.plateStore;
  if (liveModels.plateName) {
    CopyBounded(store.names[store.active], kShapeNameUnits, liveModels.plateName());
  }
  if (liveModels.plateSavedName) {
    CopyBounded(store.savedNames[store.active], kShapeNameUnits, liveModels.plateSavedName());
  }
  if (taken) store.plates[store.active] = *tab.plateSettings;
}

bool TakeDrawings(const std::string& bytes, ProgramTab& tab) {
  const bool had = tab.cadStore != nullptr;
  if (!Provide(tab.cadStore)) return false;
  if (!ReadCadFile(bytes, *tab.cadStore)) {
    if (had) return false;  // a program that is loaded again keeps its drawings
    delete tab.cadStore;
    tab.cadStore = nullptr;
    return false;
  }
  const Drawing& active = tab.cadStore->drawings[tab.cadStore->active];
  std::copy_n(active.hidden, kMaxItems, tab.sketchHidden);
  std::copy_n(active.locked, kMaxItems, tab.sketchLocked);
  if (Provide(tab.cadSettings)) *tab.cadSettings = active.settings;
  return true;
}

bool TakePlates(const std::string& bytes, ProgramTab& tab) {
  const std::unique_ptr<PlateStore> store(new (std::nothrow) PlateStore());
  const std::unique_ptr<FeatureSettings> plate(new (std::nothrow) FeatureSettings());
  if (!store || !plate) return false;
  if (ReadPlateFile(bytes, *store)) {
    if (Provide(tab.plateStore)) *tab.plateStore = *store;
    if (Provide(tab.plateSettings)) *tab.plateSettings = store->plates[store->active];
  } else if (ReadOldPlateFile(bytes, *plate)) {
    delete tab.plateStore;
    tab.plateStore = nullptr;
    if (Provide(tab.plateSettings)) *tab.plateSettings = *plate;
  } else {
    return false;
  }
  return true;
}

bool TakeCompanion(int which, const std::string& bytes, std::u16string& text, ProgramTab& tab) {
  switch (which) {
    case 0:
      return TakeDrawings(bytes, tab);
    case 1:
      return TakePlates(bytes, tab);
    default:
      return TakeDisabledCode(bytes, text, tab.disabledCode);
  }
}

// Companions stand beside the file itself, so that a program has the same ones by all of its links.
// Where the links cannot be followed, only the name is left to look beside.
std::u16string FileToRead(std::u16string_view program) {
  std::u16string file = platform::LinkTarget(program);
  return file.empty() ? std::u16string(program) : file;
}

// As it was read, or written last.
DiskState StateBeside(const ProgramTab& tab, int which) {
  const auto index = static_cast<std::size_t>(which);
  return index < tab.save.beside.size() ? tab.save.beside[index].state : DiskState();
}

enum class Companion { Missing, Read, Unusable };

Companion ReadOne(const std::u16string& path, std::string& bytes) {
  // Stored code may take more room than a program.
  if (platform::ReadBytes(path, kMaxFeaturesFileBytes, bytes) == platform::ReadAnswer::Read)
    return Companion::Read;
  return platform::FileExists(path) ? Companion::Unusable : Companion::Missing;
}

// Beside the file, else beside the link that it is opened by, where older ones stand.
Companion ReadCompanion(std::u16string_view program, std::u16string_view suffix,
                        std::string& bytes) {
  const std::u16string path = CompanionPath(FileToRead(program), suffix);
  const Companion found = ReadOne(path, bytes);
  const std::u16string older = CompanionPath(program, suffix);
  return found == Companion::Missing && older != path ? ReadOne(older, bytes) : found;
}

// A free name for a companion of `file` that has to give way; empty where all are taken.
std::u16string NameToKeep(std::u16string_view file, std::u16string_view suffix) {
  for (int number = 1; number <= kMaxKeptCompanions; ++number) {
    const std::u16string end = u".kept" + (number == 1 ? u"" : IntegerText(number));
    std::u16string path = CompanionPath(file, std::u16string(suffix) + end);
    if (!platform::FileExists(path)) return path;
  }
  return {};
}

void NoteCompanion(std::u16string_view program, int which, bool usable, ProgramTab& tab) {
  SaveMove& kept = tab.unusable[which];
  kept = {};
  if (usable) return;
  const CompanionKind& kind = kCompanionKinds[which];
  const std::u16string file = FileToRead(program);
  kept = {CompanionPath(file, kind.suffix), NameToKeep(file, kind.suffix)};
  AppendOutput(std::u16string(kind.words) +
               u" beside this program cannot be read. Before anything is written over that file "
               u"it is kept as " +
               std::u16string(BareFileName(kept.to)));
}

// Told at once: behind a session of work the file that holds it may be gone for good.
void TellMissingCode(std::u16string_view text, const ProgramTab& tab) {
  const std::vector<std::int32_t> named = NamedNumbers(text);
  const auto missing = std::ranges::count_if(named, [&tab](std::int32_t number) {
    return FindDisabledCode(tab.disabledCode, number) == nullptr;
  });
  if (missing == 0) return;
  AppendOutput(u"The code of excluded blocks is missing: " + IntegerText(missing) + u" of " +
               IntegerText(static_cast<std::int64_t>(named.size())) +
               u" in this program. It belongs into its \".features\" file.");
}

void AddModelFiles(std::u16string_view file, const ProgramTab& tab, std::vector<SaveFile>& files) {
  if (tab.cadStore) {
    files.push_back({CompanionPath(file, kCadEnd), {}});
    WriteCadFile(*tab.cadStore, files.back().bytes);
  }
  if (!tab.plateSettings) return;
  files.push_back({CompanionPath(file, kPlateEnd), {}});
  if (tab.plateStore) {
    WritePlateFile(*tab.plateStore, files.back().bytes);
  } else {
    WriteOldPlateFile(*tab.plateSettings, files.back().bytes);
  }
}

}  // namespace

bool ReadExcludedCode(std::u16string_view path, std::u16string& text, DisabledCodeEntry*& list) {
  std::string bytes;
  const Companion found = ReadCompanion(path, kFeaturesEnd, bytes);
  if (found != Companion::Read) return found == Companion::Missing;
  return TakeDisabledCode(bytes, text, list);
}

void ReadCompanions(std::u16string_view path, std::u16string& text, ProgramTab& tab) {
  std::vector<KnownFile> beside;
  for (int i = 0; i < kCompanionCount; ++i) {
    const std::u16string_view suffix = kCompanionKinds[i].suffix;
    std::u16string place = CompanionPath(FileToRead(path), suffix);
    // Before it is read: what changes meanwhile counts as changed.
    DiskState state{platform::FiguresOf(place)};
    std::string bytes;
    const Companion found = ReadCompanion(path, suffix, bytes);
    state.hash = HashBytes(bytes);
    beside.push_back({std::move(place), state});
    NoteCompanion(path, i,
                  found == Companion::Missing ||
                      (found == Companion::Read && TakeCompanion(i, bytes, text, tab)),
                  tab);
  }
  NoteBeside(tab, std::move(beside));
  TellMissingCode(text, tab);
}

namespace {

bool IsOnePlace(std::u16string_view one, std::u16string_view other) {
  return one == other || platform::RealPath(one) == platform::RealPath(other);
}

// What cannot be looked at is not taken for ours.
bool MayBeTheirs(KnownFile& known) {
  const FileStanding standing = StandingOf(known.path, known.state);
  return standing == FileStanding::Changed || standing == FileStanding::Unknown;
}

// What is about to be written over stays under another name. Excluded code leaves its name before
// the program is replaced, as its numbers are those of other code in the new one. An empty list of
// it is no loss.
void KeepReplaced(const std::u16string& file, std::u16string_view suffix, SaveJob& job) {
  std::string bytes;
  const std::u16string companion = CompanionPath(file, suffix);
  const Companion found = ReadOne(companion, bytes);
  if (found == Companion::Missing) return;
  if (found == Companion::Read && bytes.size() <= kEmptyCompanion) return;
  const std::u16string kept = NameToKeep(file, suffix);
  if (found == Companion::Unusable || suffix == kFeaturesEnd) {
    job.moves.push_back({companion, kept});
  } else {
    job.files.insert(job.files.begin(), {kept, std::move(bytes), companion});
  }
}

}  // namespace

void AddMoves(std::u16string_view path, const ProgramTab& tab, bool over, SaveJob& job) {
  const std::u16string file = FileToRead(path);
  const bool own = tab.path[0] && IsOnePlace(file, FileToRead(tab.path));
  const bool stands = platform::FileExists(file);
  for (int i = 0; i < kCompanionCount; ++i) {
    const std::u16string_view suffix = kCompanionKinds[i].suffix;
    KnownFile known{CompanionPath(file, suffix), own ? StateBeside(tab, i) : DiskState()};
    const bool written = std::ranges::any_of(
        job.files, [&](const SaveFile& other) { return other.path == known.path; });
    const bool theirs = (over || !own) && MayBeTheirs(known);
    if (suffix == kFeaturesEnd) job.replaces = stands && (theirs || !own);
    // What belongs to the program that is replaced would be this one's when it is opened again. It
    // goes when that program has gone.
    if (theirs && !written) job.moves.push_back({known.path, NameToKeep(file, suffix), true});
    if (theirs && written) KeepReplaced(file, suffix, job);
    const SaveMove& unusable = tab.unusable[i];
    if (!theirs && written && !unusable.from.empty() && IsOnePlace(unusable.from, known.path)) {
      job.moves.push_back({known.path, unusable.to});
    }
    job.beside.push_back(std::move(known));
  }
}

void KeepLeft(ProgramTab& tab, const SaveMove& move) {
  for (int i = 0; i < kCompanionCount; ++i) {
    if (move.from != CompanionPath(FileToRead(tab.path), kCompanionKinds[i].suffix)) continue;
    tab.unusable[i] = {move.from, move.to};
  }
}

bool AddProgramFiles(std::u16string_view path, std::string bytes, std::u16string_view text,
                     const ProgramTab& tab, std::vector<SaveFile>& files) {
  // A link that cannot be followed now must not get companions of its own.
  const std::u16string file = platform::LinkTarget(path);
  if (file.empty()) return false;
  files.push_back({CompanionPath(file, kFeaturesEnd), {}});
  if (!WriteDisabledCode(tab.disabledCode, files.back().bytes)) {
    const std::vector<std::int32_t> named = NamedNumbers(text);
    if (!WriteDisabledCode(tab.disabledCode, files.back().bytes, &named)) return false;
  }
  files.push_back({std::u16string(path), std::move(bytes)});
  AddModelFiles(file, tab, files);
  return true;
}

void EraseCompanions(std::u16string_view path) {
  for (const CompanionKind& kind : kCompanionKinds)
    platform::EraseFile(CompanionPath(path, kind.suffix));
}

std::int32_t KeepExcludedCode(ProgramTab& tab, std::u16string_view code, std::int32_t block) {
  const bool shown = &tab == ActiveTab() && platform::Exists(kIdEditor);
  const std::u16string_view text = shown ? platform::EditorText(kIdEditor) : tab.text;
  if (!FeaturesFileHolds(tab.disabledCode, text, code.size())) return 0;
  return AddDisabledCode(tab.disabledCode, code, LargestNamedNumber(text), block);
}

void FreeTab(ProgramTab& tab) {
  FreeDisabledCode(tab.disabledCode);
  delete tab.plateStore;
  delete tab.cadStore;
  delete tab.cadSettings;
  delete tab.plateSettings;
  tab = ProgramTab();
}

void ResetLiveModels() { liveModels = LiveModels(); }

void StashActiveWorkspace() {
  ProgramTab* tab = ActiveTab();
  if (!tab) return;
  if (liveModels.storeSketchFlags) {
    liveModels.storeSketchFlags(tab->sketchHidden, tab->sketchLocked);
  }
  if (CadWindowExists()) StoreSketch(*tab);
  if (PlateWindowExists()) StorePlate(*tab);
}

void FollowBlocksOfDrawings(ProgramTab& tab) {
  if (!tab.cadStore) return;
  for (std::uint32_t i = 0; i < tab.cadStore->count; ++i) {
    KnownBlock& block = tab.cadStore->drawings[i].block;
    const int row = RowOfBlock(block, kKindSketch);
    if (row < 0) continue;
    const std::uint32_t now = features.rows[row].settings.codeHash;
    if (now != block.codeHash) NoteBlock(block, block.id, now);
  }
}

void RestoreWorkspace() {
  if (liveModels.resetSelection) liveModels.resetSelection();
  const ProgramTab* tab = ActiveTab();
  if (!tab) return;
  if (liveModels.loadSketchFlags) {
    liveModels.loadSketchFlags(tab->sketchHidden, tab->sketchLocked);
  }
  if (CadWindowExists() && liveModels.loadSketch) liveModels.loadSketch(tab->cadSettings);
  if (PlateWindowExists() && liveModels.loadPlate) liveModels.loadPlate(tab->plateSettings);
}

}  // namespace morva
