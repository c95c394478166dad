#include "library/shapes.h"

#include <algorithm>
#include <utility>

#include "app/app_state.h"
#include "app/join_table.h"
#include "app/profile_keys.h"
#include "app/stop.h"
#include "documents/feature_operations.h"
#include "documents/little_endian.h"
#include "library/file_marks.h"
#include "library/kept_text.h"
#include "library/mirror.h"
#include "library/saved_section.h"
#include "platform/listing.h"
#include "platform/profile.h"
#include "text/codetext.h"

namespace morva {

ShapeLibrary shapeLibrary;

namespace {

constexpr char16_t kTable[] = u"CustomShapes";
constexpr int kDecimals = 4;
constexpr std::size_t kNameBytes = std::size_t{2} * kShapeNameUnits;  // 144
constexpr std::size_t kObjectsAt = kNameBytes + 8;  // behind the count and a reserved word
constexpr std::size_t kObjectBytes = 48;
static_assert(kObjectsAt + kMaxShapeObjects * kObjectBytes == kShapeMirrorBytes);

void (*fills[kMaxShapeLists])() = {};
JoinTable listFill{u"lists of shapes", kMaxShapeLists};
FileMarks marks;
SavedSection<SavedShape> saved[kMaxShapes];

constexpr ShapeRow kBuiltIn[] = {{u"Square", 0},   {u"Rectangle", 1}, {u"Circle", 2},
                                 {u"Triangle", 3}, {u"Line", 4},      {u"Diamond / Other", 5},
                                 {u"Slot", 6}};

std::u16string SectionOf(int index) { return u"SavedShape" + IntegerText(index); }

// The doubles of an object by their keys, with what a missing key counts as.
struct NumberKey {
  char16_t letter;
  double SketchObject::*field;
  double fallback;
};
constexpr NumberKey kNumbers[] = {{u'X', &SketchObject::x, 0},
                                  {u'Y', &SketchObject::y, 0},
                                  {u'A', &SketchObject::size, 1.0},
                                  {u'B', &SketchObject::size2, 0.5},
                                  {u'R', &SketchObject::angle, 0}};

void LoadShape(int index, SavedShape& shape) {
  const std::u16string section = SectionOf(index);
  CopyBounded(shape.name, kShapeNameUnits,
              KeptShapeName(platform::ReadProfile(section, u"Name", u"Custom Shape")));
  const std::int32_t count = ProfileReadInteger(section.c_str(), u"Count", 0);
  shape.count = count >= 0 && count <= kMaxShapeObjects ? count : 0;
  for (int i = 0; i < shape.count; ++i) {
    SketchObject& object = shape.objects[i];
    const std::u16string number = IntegerText(i);
    object.type = ProfileReadInteger(section.c_str(), (u"K" + number).c_str(), 0);
    for (const NumberKey& key : kNumbers) {
      object.*key.field =
          ProfileReadDecimal(section.c_str(), (key.letter + number).c_str(), key.fallback);
    }
  }
}

void WriteShape(const std::u16string& section, const SavedShape& shape) {
  platform::WriteProfile(section, u"Name", shape.name);
  platform::WriteProfile(section, u"Count", IntegerText(shape.count));
  for (int i = 0; i < shape.count; ++i) {
    const SketchObject& object = shape.objects[i];
    const std::u16string number = IntegerText(i);
    platform::WriteProfile(section, u"K" + number, IntegerText(object.type));
    for (const NumberKey& key : kNumbers) {
      platform::WriteProfile(section, key.letter + number, FixedText(object.*key.field, kDecimals));
    }
  }
}

void StoreShape(const SavedShape& shape, unsigned char* at) {
  StoreText(at, kShapeNameUnits, shape.name);
  StoreInteger(at + kNameBytes, shape.count);
  unsigned char* item = at + kObjectsAt;
  for (int i = 0; i < shape.count; ++i, item += kObjectBytes) {
    const SketchObject& object = shape.objects[i];
    StoreInteger(item, object.type);
    StoreInteger(item + 4, object.group);
    StoreReal(item + 8, object.x);
    StoreReal(item + 16, object.y);
    StoreReal(item + 24, object.size);
    StoreReal(item + 32, object.size2);
    StoreReal(item + 40, object.angle);
  }
}

void RoundAsInFile(SavedShape& shape) {
  for (int i = 0; i < shape.count; ++i) {
    for (const NumberKey& key : kNumbers) {
      double& number = shape.objects[i].*key.field;
      number = ParseDecimal(FixedText(number, kDecimals), number);
    }
  }
}

// As the settings file gives it back, which knows no groups.
std::string StateOf(const SavedShape& shape) {
  SavedShape kept = shape;
  RoundAsInFile(kept);
  for (SketchObject& object : kept.objects) object.group = 0;
  std::string bytes(kShapeMirrorBytes, '\0');
  StoreShape(kept, reinterpret_cast<unsigned char*>(bytes.data()));
  return bytes;
}

std::string StateOf(const ShapeLibrary& library) {
  std::string states;
  for (int i = 0; i < library.count; ++i) AddState(states, HashBytes(StateOf(library.shapes[i])));
  return states;
}

constexpr RecordWriter<SavedShape> kWriter{WriteShape, StateOf};

// False: the file has no such library, or cannot be read.
bool ReadShapes(ShapeLibrary& library) {
  library = ShapeLibrary();
  platform::BeginProfileChange();  // one reading of the file for all keys
  const bool there = !platform::ReadProfile(kTable, u"Count", u"").empty();
  library.count = std::clamp(ProfileReadInteger(kTable, u"Count", 0), 0, kMaxShapes);
  for (int i = 0; i < library.count; ++i) LoadShape(i, library.shapes[i]);
  platform::EndProfileChange();
  return there;
}

bool HoldsItems(const SavedShape& shape, const FeatureSettings& record) {
  if (shape.count != record.itemCount) return false;
  for (int i = 0; i < shape.count; ++i) {
    if (!SameGeometry(shape.objects[i], ObjectOf(record.items[i]))) return false;
  }
  return true;
}

}  // namespace

void LoadShapeLibrary() {
  ReadShapes(shapeLibrary);
  ReadState(marks, StateOf(shapeLibrary));
}

bool FollowShapeFile() {
  ShapeLibrary now;
  if (!ReadShapes(now) || KnowsState(marks, StateOf(now))) return false;
  shapeLibrary = now;
  ReadState(marks, StateOf(now));
  TellReadAgain(u"shape library");
  RefreshShapeLists();
  return true;
}

bool SaveShapeLibrary(void (*told)(bool saved)) {
  platform::BeginProfileChange();
  platform::WriteProfile(kTable, u"Count", IntegerText(shapeLibrary.count));
  std::string states;
  for (int i = 0; i < shapeLibrary.count; ++i) {
    AddState(states, SaveSection(saved[i], SectionOf(i), shapeLibrary.shapes[i], kWriter));
  }
  HandedState(marks, states);
  const bool handed = EndLibraryChange(told, [](bool written) { WrittenState(marks, written); });
  if (app.dataDirReady) {
    std::string bytes;
    WriteShapeMirror(shapeLibrary, bytes);
    SaveMirror(u"Shapes", u"Library.shapes", std::move(bytes));
  }
  return handed;
}

std::u16string KeptShapeName(std::u16string_view name) { return KeptText(name, kShapeNameUnits); }

int FindShape(std::u16string_view name) {
  for (int i = 0; i < shapeLibrary.count; ++i) {
    if (SameFolded(shapeLibrary.shapes[i].name, name)) return i;
  }
  return -1;
}

int AppendShape(std::u16string_view name) {
  if (shapeLibrary.count >= kMaxShapes) return -1;
  const int index = shapeLibrary.count++;
  shapeLibrary.shapes[index] = SavedShape();
  CopyBounded(shapeLibrary.shapes[index].name, kShapeNameUnits, KeptShapeName(name));
  return index;
}

int PutShapeAt(int index, const SavedShape& shape) {
  if (index < 0 || index >= shapeLibrary.count) index = AppendShape(shape.name);
  if (index < 0) return -1;
  SavedShape& kept = shapeLibrary.shapes[index];
  kept = shape;
  RoundAsInFile(kept);
  return index;
}

int PutShape(const SavedShape& shape) { return PutShapeAt(FindShape(shape.name), shape); }

bool IsShapeAt(int index, const SavedShape& shape) {
  if (index < 0 || index >= shapeLibrary.count) return false;
  const SavedShape& have = shapeLibrary.shapes[index];
  if (have.count != shape.count) return false;
  SavedShape rounded = shape;
  RoundAsInFile(rounded);
  return std::equal(have.objects, have.objects + have.count, rounded.objects, SameGeometry);
}

void WriteShapeMirror(const ShapeLibrary& library, std::string& bytes) {
  bytes.assign(static_cast<std::size_t>(library.count) * kShapeMirrorBytes, '\0');
  auto* at = reinterpret_cast<unsigned char*>(bytes.data());
  for (int i = 0; i < library.count; ++i, at += kShapeMirrorBytes) {
    StoreShape(library.shapes[i], at);
  }
}

int RecoverProjectShape(const FeatureSettings& record) {
  for (int i = 0; i < shapeLibrary.count; ++i) {
    if (HoldsItems(shapeLibrary.shapes[i], record)) return i;
  }
  if (record.itemCount < 0 || record.itemCount > kMaxShapeObjects) return -1;
  const int index = AppendShape(u"Recovered project shape");
  if (index < 0) return -1;
  SavedShape& shape = shapeLibrary.shapes[index];
  shape.count = record.itemCount;
  for (int i = 0; i < shape.count; ++i) shape.objects[i] = ObjectOf(record.items[i]);
  RefreshShapeLists();
  return index;
}

void FillShapeList(int listId, const ShapeRow* builtIn, int count) {
  const int before = platform::SelectedRow(listId);
  const std::u16string text = before >= 0 ? platform::RowText(listId, before) : std::u16string();
  platform::HoldListRedraw(listId, true);
  platform::ClearRows(listId);
  for (int i = 0; i < count; ++i) platform::AddRow(listId, builtIn[i].text, builtIn[i].data);
  for (int i = 0; i < shapeLibrary.count; ++i) {
    platform::AddRow(listId, u"CUSTOM: " + std::u16string(shapeLibrary.shapes[i].name),
                     kCustomShapeData + i);
  }
  const int rows = platform::RowCount(listId);
  const auto same = [&](int row) { return row < rows && platform::RowText(listId, row) == text; };
  // Several shapes may have one name: the row itself comes first.
  int row = before;
  if (before >= 0 && !same(before)) {
    for (row = 0; row < rows && !same(row);) ++row;
  }
  if (row >= 0 && row < rows) platform::SelectRow(listId, row);
  platform::HoldListRedraw(listId, false);
}

const ShapeRow* BuiltInShapeRows(int& count) {
  count = static_cast<int>(std::size(kBuiltIn));
  return kBuiltIn;
}

void AddShapeList(void (*fill)()) {
  if (!fill) StopProgram(u"MORVA cannot start. A list of shapes has nothing that fills it.");
  fills[NextRow(listFill)] = fill;
}

void RefreshShapeLists() {
  for (int i = 0; i < listFill.count; ++i) fills[i]();
}

void RegisterShapeLibrary() {
  listFill.count = 0;
  SetShapeRecovery(RecoverProjectShape);
}

void ResetShapeLibrary() {
  shapeLibrary = ShapeLibrary();
  marks = FileMarks();
  std::ranges::fill(saved, SavedSection<SavedShape>());
  listFill.count = 0;
}

}  // namespace morva
