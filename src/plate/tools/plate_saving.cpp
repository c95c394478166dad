#include "plate/tools/plate_saving.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "app/app_state.h"
#include "app/outlets.h"
#include "documents/companions.h"
#include "documents/file_names.h"
#include "documents/program_changed.h"
#include "documents/saver.h"
#include "documents/saving.h"
#include "library/mirror.h"
#include "library/outline.h"
#include "library/placed_shape.h"
#include "library/shapes.h"
#include "plate/geometry/plate_layout.h"
#include "plate/geometry/plate_picture.h"
#include "plate/model/plate_names.h"
#include "plate/model/plate_record.h"
#include "platform/file.h"
#include "text/codetext.h"
#include "text/length_units.h"

namespace morva {

namespace {

using platform::PointF;

constexpr int kCornerChords = 4;
constexpr double kChordTurn = 90.0 / kCornerChords;
constexpr std::u16string_view kFolder = u"Shapes";  // of the data directory
constexpr double kEvenSlack = 0.0001;               // between the two scales of an outline

struct ShapeList {
  SavedShape shape;
  bool full = false;
};

void TellSaved(bool saved);

void Add(ShapeList& list, const SketchObject& object) {
  if (list.shape.count >= kMaxShapeObjects) {
    list.full = true;
    return;
  }
  list.shape.objects[list.shape.count++] = object;
}

SketchObject LineFrom(PointF from, double length, double angle) {
  return {kTypeLine, 0, from.x, from.y, length, 0, angle > 180 ? angle - 360 : angle};
}

// Counter-clockwise from the left end of the lower side.
void AddRoundedRectangle(ShapeList& list, const PlateNumbers& n, double radius) {
  const double x = n.length / 2 - radius;
  const double y = n.width / 2 - radius;
  const PointF starts[] = {{-x, -y - radius}, {x + radius, -y}, {x, y + radius}, {-x - radius, y}};
  const PointF centres[] = {{x, -y}, {x, y}, {-x, y}, {-x, -y}};
  const double sides[] = {2 * x, 2 * y, 2 * x, 2 * y};
  const double chord = 2 * radius * SketchSine(kChordTurn / 2);
  for (int corner = 0; corner < 4; ++corner) {
    const double along = 90.0 * corner;
    Add(list, LineFrom(starts[corner], sides[corner], along));
    for (int i = 0; i < kCornerChords; ++i) {
      const double turn = along + kChordTurn * i;
      const PointF from{centres[corner].x + radius * ExactSine(turn),
                        centres[corner].y - radius * ExactCosine(turn)};
      Add(list, LineFrom(from, chord, turn + kChordTurn / 2));
    }
  }
}

PlateSave AddCustomOutline(ShapeList& list, const PlateNumbers& n, const SavedShape& outline) {
  const OutlineStretch stretch = StretchOf(n, outline);
  for (int i = 0; i < outline.count; ++i) {
    SketchObject object = outline.objects[i];
    object.group = 0;
    object.x -= stretch.middleX;
    object.y -= stretch.middleY;
    ScaleLengths(object, stretch.scaleX);
    Add(list, object);
  }
  const double inches = n.metric ? kInchPerMm : 1;
  const double difference = std::fabs(stretch.scaleX - stretch.scaleY) * inches;
  return difference <= kEvenSlack ? PlateSave::Done : PlateSave::Stretched;
}

PlateSave AddOutline(ShapeList& list, const PlateNumbers& n, const SavedShape& outline) {
  switch (n.shape) {
    case PlateShape::Custom:
      return AddCustomOutline(list, n, outline);
    case PlateShape::Round:
      Add(list, {kTypeCircle, 0, 0, 0, n.length, 0, 0});
      break;
    case PlateShape::Obround:
      Add(list, {kTypeSlot, 0, 0, 0, n.length, n.width, 0});
      break;
    case PlateShape::Rectangle:
      if (const double radius = CornerRadius(n); radius > 0) {
        AddRoundedRectangle(list, n, radius);
      } else {
        Add(list, {kTypeRectangle, 0, 0, 0, n.length, n.width, 0});
      }
      break;
  }
  return PlateSave::Done;
}

// In the plate's unit.
void AddFeature(ShapeList& list, const PlateNumbers& n, const PlateFeature& feature, int k) {
  if (feature.deleted) return;
  const PointF at = FeaturePlace(n, feature, k);
  if (feature.shape.count == 0) {
    const ClosedShape item = PlainFeature(n, k, at);
    const bool round = item.shape == ItemShape::Circle;
    Add(list,
        {round ? kTypeCircle : kTypeSlot, 0, at.x, at.y, item.width, item.height, item.angle});
    return;
  }
  for (int i = 0; i < feature.shape.count && !list.full; ++i) {
    SketchObject object = feature.shape.objects[i];
    if (!IsCut(object)) continue;
    object.group = 0;
    ScaleLengths(object, n.metric ? kMmPerInch : 1);
    object.x += at.x;
    object.y += at.y;
    Add(list, object);
  }
}

const char16_t* WordsOf(PlateSave answer) {
  switch (answer) {
    case PlateSave::NoName:
      return kEnterPlateName;
    case PlateSave::TooMany:
      return u"Reusable shape exceeds 64 objects; reduce the hole pattern before saving.";
    case PlateSave::Full:
      return u"Shape library is full.";
    case PlateSave::NameTaken:
      return kNameTaken;
    case PlateSave::Stretched:
      return u"Custom reusable shapes keep their aspect ratio. Match width and height scale before "
             u"saving.";
    case PlateSave::NoRecord:
      return kPlateFull;
    case PlateSave::NoFile:
      return kShapesUnsaved;
    case PlateSave::NoOwnFile:
      return u"The plate's own file beside the library could not be written. It is tried again.";
    case PlateSave::BadNumbers:
    case PlateSave::Done:
      break;
  }
  return nullptr;
}

// What was said last of a plate that cannot be saved, and at which of its changes: an autosave
// tries again behind every pause, and says nothing new.
PlateSave saidOf = PlateSave::Done;
std::uint32_t saidAt = 0;

// A named plate that is not saved as it is.
struct Unsaved {
  std::u16string name;
  PlateSave why = PlateSave::Done;
};
// Those that no shape can hold as they are, the last one at the end; every plate of all programs
// has room.
Unsaved refused[kMaxTabs * kMaxPlates];
int refusedCount = 0;

void ForgetRefused(std::u16string_view name) {
  const auto end = std::remove_if(refused, refused + refusedCount, [name](const Unsaved& row) {
    return SameFolded(row.name, name);
  });
  refusedCount = static_cast<int>(end - refused);
}

void NoteRefused(PlateSave why) {
  if (why != PlateSave::TooMany && why != PlateSave::Full && why != PlateSave::NameTaken &&
      why != PlateSave::Stretched) {
    return;
  }
  ForgetRefused(plate.name);
  // Of plates that were renamed or closed: the oldest goes.
  if (refusedCount == std::ssize(refused)) {
    std::move(std::next(refused), std::end(refused), refused);
    --refusedCount;
  }
  refused[refusedCount++] = {plate.name, why};
}

constexpr std::u16string_view kPlateSaved =
    u"Named plate shape saved. Further completed edits save automatically.";

PlateSave Refuse(PlateSave why) {
  // Nothing is said of such a size, but what was said of the former one no longer holds.
  if (why == PlateSave::BadNumbers && plate.status == kPlateSaved) SayOnPlate(u"");
  const char16_t* words = WordsOf(why);
  if (words && (saidOf != why || saidAt != plate.changes)) SayOnPlate(words);
  NoteRefused(why);
  saidOf = why;
  saidAt = plate.changes;
  return why;
}

// The plate that was saved last, as it was then: the disk may answer when another one is up.
struct HandedPlate {
  char16_t name[kShapeNameUnits] = {};
  std::uint32_t changes = 0;
  int halfNumber = -1;  // the first field without a number
  bool noRecord = false;
};
HandedPlate handed;

bool libraryOwed = false;    // it could not be written, and was not handed over again
bool libraryFailed = false;  // the user was told so

bool IsPlateUp(std::u16string_view name) { return !plate.unnamed && SameFolded(name, plate.name); }
bool IsHandedPlateUp() { return IsPlateUp(handed.name); }

// On the status line of another plate the words say which one they are about.
void SayOf(std::u16string_view name, std::u16string_view words) {
  if (IsPlateUp(name)) return SayOnPlate(words);
  SayOnPlate(PlateInWords(name) + std::u16string(words));
}

// What went wrong, and that it is well again, is seen also where the plate is out of sight.
void SayEverywhere(std::u16string_view name, std::u16string_view words) {
  SayOf(name, words);
  if (app.surface != kSurfacePlate) ShowStatus(PlateInWords(name) + std::u16string(words));
}

void HandOverLibrary() {
  libraryOwed = false;
  SaveShapeLibrary(TellSaved);
}

// Handed over again some seconds later, with the plate as it is then where it is still up.
void TryAgain() {
  libraryOwed = true;
  if (!libraryFailed) SayEverywhere(handed.name, kShapesUnsaved);
  if (IsHandedPlateUp()) {
    Refuse(PlateSave::NoFile);
    LeavePlatePending();
  }
  libraryFailed = true;
  TryAgainLater();
}

// The disk answers behind what was said of the record.
void TellSaved(bool saved) {
  if (!saved) return TryAgain();
  const bool failed = std::exchange(libraryFailed, false);
  saidOf = PlateSave::Done;
  // As it was saved, even if the plate itself could not be handed over again.
  if (IsHandedPlateUp() && handed.changes == plate.changes) SettlePlate(true);
  if (handed.noRecord) return SayOf(handed.name, kPlateFull);
  if (handed.halfNumber >= 0) {
    return SayOf(handed.name, HalfNumberWords(handed.halfNumber,
                                              u", so that the plate was saved with the last one"));
  }
  if (failed) return SayEverywhere(handed.name, kPlateSaved);
  if (IsHandedPlateUp()) SayOnPlate(kPlateSaved);
}

// Another program, or a change of the library here, may have moved the plate's shape.
int IndexNow() {
  const int index = plate.savedShapeIndex;
  if (index < 0) return -1;
  const bool stands =
      index < shapeLibrary.count && SameFolded(shapeLibrary.shapes[index].name, plate.savedName);
  return stands ? index : FindShape(plate.savedName);
}

// What the plate's own file is to hold; empty: its record cannot be built.
std::string PlateBytes() {
  static FeatureSettings record;
  std::string bytes;
  if (SavePlateSettings(record)) WriteOldPlateFile(record, bytes);
  return bytes;
}

std::u16string PlateFile(int index) {
  return u"Plate-" + IntegerText(index) + std::u16string(kPlateEnd);
}

// What the plates' own files are to hold, by index, until they hold it.
struct OwnFile {
  std::string bytes;
  std::u16string name;  // of the plate
  bool failed = false;  // could not be written the last time
  bool owed = false;    // nor was it handed over again
};
OwnFile ownFiles[kMaxShapes];

void TellOwnFile(const SaveResult& result) {
  for (int i = 0; i < kMaxShapes; ++i) {
    if (ownFiles[i].bytes.empty() || PathInData(kFolder, PlateFile(i)) != result.program) continue;
    if (result.answer == SaveAnswer::Saved) {
      const OwnFile written = std::exchange(ownFiles[i], {});
      if (saidOf == PlateSave::NoOwnFile) SayEverywhere(written.name, kPlateSaved);
      if (saidOf == PlateSave::NoOwnFile) saidOf = PlateSave::Done;
      return;
    }
    ownFiles[i].failed = true;
    ownFiles[i].owed = true;
    if (saidOf != PlateSave::NoOwnFile)
      SayEverywhere(ownFiles[i].name, WordsOf(PlateSave::NoOwnFile));
    saidOf = PlateSave::NoOwnFile;
    return TryAgainLater();
  }
}

void HandOverOwnFile(int index) {
  ownFiles[index].owed = false;
  SaveMirror(kFolder, PlateFile(index), ownFiles[index].bytes, TellOwnFile,
             platform::Lasting::Folder);
}

// What is told of first: all shapes stand in the settings file.
Unsaved WhatIsOwed() {
  if (libraryFailed) return {handed.name, PlateSave::NoFile};
  for (const OwnFile& file : ownFiles) {
    if (file.failed) return {file.name, PlateSave::NoOwnFile};
  }
  return {};
}

bool FileHolds(int index, const std::string& record) {
  std::string bytes;
  const std::u16string path = PathInData(kFolder, PlateFile(index));
  return platform::ReadBytes(path, record.size(), bytes) == platform::ReadAnswer::Read &&
         bytes == record;
}

void NoteHanded() {
  handed = {};
  CopyBounded(handed.name, kShapeNameUnits, plate.name);
  handed.changes = plate.changes;
  int value = -1;
  if (!PlateTextsRead(plate, value)) handed.halfNumber = value;
  handed.noRecord = PlateBytes().empty();
}

}  // namespace

PlateSave BuildPlateShape(const PlateRecord& record, SavedShape& shape) {
  const PlateNumbers n = NumbersOf(record);
  if (!(n.length > 0 && n.width > 0 && n.size > 0)) return PlateSave::BadNumbers;
  ShapeList list;
  const PlateSave outline = AddOutline(list, n, record.outline);
  for (int k = 0; k < FeatureCount(n) && !list.full; ++k) {
    AddFeature(list, n, record.features[k], k);
  }
  if (list.full) return PlateSave::TooMany;
  if (outline != PlateSave::Done) return outline;
  for (int i = 0; i < list.shape.count; ++i) {
    ScaleLengths(list.shape.objects[i], n.metric ? kInchPerMm : 1);
  }
  shape = list.shape;
  return PlateSave::Done;
}

PlateSave SaveNamedPlate() {
  if (plate.unnamed) return PlateSave::Done;
  if (plate.name[0] == 0) return Refuse(PlateSave::NoName);
  SavedShape shape;
  const PlateSave built = BuildPlateShape(plate, shape);
  if (built != PlateSave::Done && built != PlateSave::Stretched) return Refuse(built);
  FollowShapeFile();
  const int index = IndexNow();
  if (index < 0 && FindShape(plate.name) >= 0) return Refuse(PlateSave::NameTaken);
  if (index < 0 && shapeLibrary.count >= kMaxShapes) return Refuse(PlateSave::Full);
  if (built == PlateSave::Stretched) return Refuse(built);
  CopyBounded(shape.name, kShapeNameUnits, plate.name);
  SetPlateShapeIndex(PutShapeAt(index, shape));
  SettlePlate(true);
  ForgetRefused(plate.name);
  NoteHanded();
  HandOverLibrary();
  RefreshShapeLists();
  return RefreshPlateMetadataFile() || !app.dataDirReady ? PlateSave::Done : PlateSave::NoRecord;
}

std::u16string HalfNumberWords(int value, std::u16string_view meaning) {
  std::u16string words = PlateSectionWords(value);
  words += u" holds no usable number";
  words += meaning;
  return words + u". Write 0.75, not 0,75.";
}

std::u16string HalfNumberOf(const PlateRecord& record) {
  int value = -1;
  if (PlateTextsRead(record, value)) return {};
  return HalfNumberWords(value, u", so that the plate is kept with the last one");
}

void SavePendingShape() {
  if (plate.pending && !plate.unnamed) SaveNamedPlate();
}

void PlateEdited() { ProgramChanged({.autosave = true}); }

int FindPlateShapes(int (&found)[kMaxShapes]) {
  SavedShape shape;
  if (BuildPlateShape(plate, shape) != PlateSave::Done) return 0;
  int alike = 0;
  for (int i = 0; i < shapeLibrary.count; ++i) {
    if (IsShapeAt(i, shape)) found[alike++] = i;
  }
  if (alike < 2) return alike;
  // Plates that are cut alike may differ in what they are made of.
  const std::string record = PlateBytes();
  int count = 0;
  for (int i = 0; i < alike; ++i) {
    if (FileHolds(found[i], record)) found[count++] = found[i];
  }
  return count;
}

bool RefreshPlateMetadataFile() {
  if (plate.savedShapeIndex < 0 || !app.dataDirReady) return false;
  std::string bytes = PlateBytes();
  if (bytes.empty()) {
    Refuse(PlateSave::NoRecord);
    return false;
  }
  ownFiles[plate.savedShapeIndex].bytes = std::move(bytes);
  ownFiles[plate.savedShapeIndex].name = plate.name;
  HandOverOwnFile(plate.savedShapeIndex);
  return true;
}

void SaveOwedShapes() {
  if (libraryOwed) HandOverLibrary();
  for (int i = 0; i < kMaxShapes; ++i) {
    if (ownFiles[i].owed) HandOverOwnFile(i);
  }
}

bool OwesShapes() { return libraryOwed; }

bool OwesOwnFiles() {
  return std::ranges::any_of(ownFiles, [](const OwnFile& file) { return file.owed; });
}

void SayWhatIsOwed() {
  const Unsaved owed = WhatIsOwed();
  if (owed.why != PlateSave::Done) ShowStatus(PlateInWords(owed.name) + WordsOf(owed.why));
}

namespace {

bool IsOpen(const Unsaved& row) { return IsPlateUp(row.name) || IsNameOfOtherDrawing(row.name); }

// How many, and which for each reason.
std::u16string RefusedWords(const std::vector<Unsaved>& open) {
  std::u16string words =
      IntegerText(static_cast<std::int64_t>(open.size())) + u" plates are not saved as they are.";
  std::vector<PlateSave> told;
  for (const Unsaved& row : open) {
    if (std::ranges::count(told, row.why) > 0) continue;
    told.push_back(row.why);
    const char16_t* before = u" \u201C";
    for (const Unsaved& other : open) {
      if (other.why != row.why) continue;
      words += before + other.name + u"\u201D";
      before = u", \u201C";
    }
    words += std::u16string(u": ") + WordsOf(row.why);
  }
  return words;
}

// False: none that is open was refused.
bool SayRefused() {
  std::vector<Unsaved> open;
  std::copy_if(refused, refused + refusedCount, std::back_inserter(open), IsOpen);
  if (open.size() > 1) SayOnPlate(RefusedWords(open));
  if (open.size() == 1) SayOf(open[0].name, WordsOf(open[0].why));
  return !open.empty();
}

}  // namespace

void SayBehindLoad() {
  const Unsaved owed = WhatIsOwed();
  if (owed.why != PlateSave::Done) return SayOf(owed.name, WordsOf(owed.why));
  if (SayRefused()) return;
  if (PlateItems(plate) > kMaxItems) return SayOnPlate(kPlateFull);
  SayOnPlate(HalfNumberOf(plate));
}

std::u16string PlateInWords(std::u16string_view name) {
  if (name.empty()) return {};
  return u"\u201C" + std::u16string(name) + u"\u201D: ";
}

void ResetPlateSaving() {
  saidOf = PlateSave::Done;
  saidAt = 0;
  refusedCount = 0;
  handed = {};
  libraryOwed = false;
  libraryFailed = false;
  for (OwnFile& file : ownFiles) file = {};
}

}  // namespace morva
