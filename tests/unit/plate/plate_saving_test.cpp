// Named plates: names, the shape in the library, the file beside it, and the plates of a program.

#include "plate/tools/plate_saving.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "documents/companions.h"
#include "documents/program_tabs.h"
#include "documents/saver.h"
#include "documents/tab_models.h"
#include "documents/tab_table.h"
#include "library/shapes.h"
#include "library/units.h"
#include "plate/model/plate.h"
#include "plate/model/plate_names.h"
#include "plate/model/plate_record.h"
#include "plate/tools/plate_drawings.h"
#include "platform/common/faults.h"
#include "support/workbench.h"

namespace {

using namespace morva;

class NamedPlate : public support::Workbench {
 protected:
  void SetUp() override {
    Workbench::SetUp();
    ResetPlate();
    liveModels.plateWindowExists = [] { return true; };
    liveModels.storePlate = StoreLivePlate;
    liveModels.loadPlate = LoadLivePlate;
    liveModels.plateName = [] { return static_cast<const char16_t*>(plate.name); };
    liveModels.plateSavedName = [] { return static_cast<const char16_t*>(plate.savedName); };
  }
  void TearDown() override {
    ResetPlate();
    ResetPlateDrawings();
    Workbench::TearDown();
  }
  static PlateSave Save() {
    const PlateSave answer = SaveNamedPlate();
    WaitForSaves();
    return answer;
  }
  static std::u16string Status() { return plate.status; }
  std::string Metadata(int index) const {
    const std::string name = "Plate-" + std::to_string(index) + ".platemv";
    std::string bytes;
    for (const auto& file : std::filesystem::recursive_directory_iterator(home_)) {
      if (file.path().filename() != name) continue;
      std::ifstream in(file.path(), std::ios::binary);
      bytes.assign(std::istreambuf_iterator<char>(in), {});
    }
    return bytes;
  }
  static const SavedShape& Shape(int index) { return shapeLibrary.shapes[index]; }
};

TEST_F(NamedPlate, IsNamedWithoutBlanksAndControlCharactersAround) {
  EXPECT_EQ(GivePlateName(u" \t Base plate \r\n"), Naming::Named);
  EXPECT_EQ(std::u16string(plate.name), u"Base plate");
  EXPECT_FALSE(plate.unnamed);
  EXPECT_EQ(GivePlateName(u" \t "), Naming::Empty);
  EXPECT_EQ(std::u16string(plate.name), u"Base plate");
}

TEST_F(NamedPlate, CannotHaveTheNameOfAnotherShapeInAnyCase) {
  ASSERT_EQ(AppendShape(u"Fixture"), 0);
  EXPECT_EQ(GivePlateName(u"fIXTURE"), Naming::Taken);
  EXPECT_TRUE(plate.unnamed);
  EXPECT_EQ(GivePlateName(u"Fixture 2"), Naming::Named);
  ASSERT_EQ(Save(), PlateSave::Done);
  // Its own name in another case is no other name.
  EXPECT_EQ(GivePlateName(u"FIXTURE 2"), Naming::Named);
  ASSERT_EQ(Save(), PlateSave::Done);
  EXPECT_EQ(shapeLibrary.count, 2);
  EXPECT_EQ(std::u16string(Shape(1).name), u"FIXTURE 2");
}

TEST_F(NamedPlate, CannotHaveTheNameOfAnotherPlateOfItsProgram) {
  GivePlateName(u"One");
  ProgramTab* tab = ProvidePlates();
  ASSERT_NE(tab, nullptr);
  ASSERT_EQ(AddPlateDrawing(*tab), 1);
  ASSERT_TRUE(SwitchPlateDrawing(*tab, 1));
  EXPECT_EQ(GivePlateName(u"ONE"), Naming::Taken);
  EXPECT_EQ(GivePlateName(u"Two"), Naming::Named);
}

TEST_F(NamedPlate, KeepsItsPlaceInTheLibraryUnderANewName) {
  GivePlateName(u"Base");
  ASSERT_EQ(Save(), PlateSave::Done);
  // Another shape came before it.
  const SavedShape base = Shape(0);
  ResetShapeLibrary();
  ASSERT_EQ(AppendShape(u"Other"), 0);
  ASSERT_EQ(PutShapeAt(-1, base), 1);
  SaveShapeLibrary();
  EXPECT_EQ(GivePlateName(u"Other"), Naming::Taken);
  EXPECT_EQ(GivePlateName(u"Top"), Naming::Named);
  ASSERT_EQ(Save(), PlateSave::Done);
  ASSERT_EQ(shapeLibrary.count, 2);
  EXPECT_EQ(std::u16string(Shape(0).name), u"Other");
  EXPECT_EQ(std::u16string(Shape(1).name), u"Top");
  EXPECT_EQ(plate.savedShapeIndex, 1);
}

TEST_F(NamedPlate, KeepsItsPlaceInTheLibraryWhileAnotherOneIsUp) {
  GivePlateName(u"Base");
  ASSERT_EQ(Save(), PlateSave::Done);
  SetPlateLayout(PlateLayout::Grid);
  SetPlateText(kPlateCountX, u"20");
  SetPlateText(kPlateCountY, u"20");
  GivePlateName(u"Top");
  ASSERT_EQ(Save(), PlateSave::TooMany);
  ProgramTab* tab = ProvidePlates();
  ASSERT_EQ(AddPlateDrawing(*tab), 1);
  ASSERT_TRUE(SwitchPlateDrawing(*tab, 1));
  ASSERT_TRUE(SwitchPlateDrawing(*tab, 0));
  ASSERT_EQ(std::u16string(plate.name), u"Top");
  SetPlateText(kPlateCountX, u"2");
  SetPlateText(kPlateCountY, u"2");
  ASSERT_EQ(Save(), PlateSave::Done);
  ASSERT_EQ(shapeLibrary.count, 1);
  EXPECT_EQ(std::u16string(Shape(0).name), u"Top");
}

TEST_F(NamedPlate, KeepsItsPlaceInTheLibraryWhileItsProgramRests) {
  GivePlateName(u"Base");
  ASSERT_EQ(Save(), PlateSave::Done);
  GivePlateName(u"Top");
  WriteFile("other.NC", "G0 X1\r\n");
  Open("other.NC");
  SwitchTab(0);
  ASSERT_EQ(std::u16string(plate.name), u"Top");
  ASSERT_EQ(Save(), PlateSave::Done);
  ASSERT_EQ(shapeLibrary.count, 1);
  EXPECT_EQ(std::u16string(Shape(0).name), u"Top");
}

TEST_F(NamedPlate, IsNotSavedAsASecondShapeOfItsName) {
  SetPlateLayout(PlateLayout::Grid);
  SetPlateText(kPlateCountX, u"20");
  SetPlateText(kPlateCountY, u"20");
  GivePlateName(u"Base");
  ASSERT_EQ(Save(), PlateSave::TooMany);
  ASSERT_EQ(AppendShape(u"BASE"), 0);  // a sketch, meanwhile
  SetPlateText(kPlateCountX, u"2");
  SetPlateText(kPlateCountY, u"2");
  EXPECT_EQ(Save(), PlateSave::NameTaken);
  EXPECT_EQ(Status(), kNameTaken);
  EXPECT_EQ(shapeLibrary.count, 1);
  EXPECT_EQ(Shape(0).count, 0);
}

TEST_F(NamedPlate, CutsANameToWhatTheLibraryHolds) {
  EXPECT_EQ(GivePlateName(std::u16string(70, u'a') + u" bcd"), Naming::Named);
  EXPECT_EQ(std::u16string(plate.name), std::u16string(70, u'a'));
}

TEST_F(NamedPlate, IsSavedAsTwentyLinesAndItsHoles) {
  GivePlateName(u"Base");
  ASSERT_EQ(Save(), PlateSave::Done);
  EXPECT_EQ(Status(), u"Named plate shape saved. Further completed edits save automatically.");
  ASSERT_EQ(shapeLibrary.count, 1);
  const SavedShape& shape = Shape(0);
  ASSERT_EQ(shape.count, 24);
  // Counter-clockwise from the lower side; a chord of 22.5 degrees of a radius of 0.25 is
  // 2 * 0.25 * sin 11.25 = 0.0975 long.
  EXPECT_TRUE(SameGeometry(shape.objects[0], {kTypeLine, 0, -3.75, -3, 7.5, 0, 0}));
  EXPECT_NEAR(shape.objects[1].x, 3.75, 1e-9);
  EXPECT_NEAR(shape.objects[1].y, -3, 1e-9);
  EXPECT_NEAR(shape.objects[1].size, 0.0975, 1e-9);
  EXPECT_EQ(shape.objects[1].angle, 11.25);
  EXPECT_EQ(shape.objects[4].angle, 78.75);
  EXPECT_TRUE(SameGeometry(shape.objects[5], {kTypeLine, 0, 4, -2.75, 5.5, 0, 90}));
  EXPECT_EQ(shape.objects[15].angle, -90);
  EXPECT_TRUE(SameGeometry(shape.objects[20], {kTypeCircle, 0, -3.5, -2.5, 0.25, 0, 0}));
  EXPECT_EQ(plate.savedShapeIndex, 0);
  EXPECT_FALSE(plate.pending);
}

TEST_F(NamedPlate, IsSavedInInches) {
  StartPlate(true);
  SetPlateShape(PlateShape::Round);
  PlateFeature feature;
  feature.shape.count = 1;
  feature.shape.objects[0] = {kTypeRectangle, 0, 0, 0, 0.5, 0.25, 0};
  PutFeature(1, feature);
  SetFeatureFlag(2, FeatureFlag::Deleted, true);
  SetFeatureFlag(3, FeatureFlag::Hidden, true);
  GivePlateName(u"Metric");
  ASSERT_EQ(Save(), PlateSave::Done);
  const SavedShape& shape = Shape(0);
  ASSERT_EQ(shape.count, 4);
  EXPECT_TRUE(SameGeometry(shape.objects[0], {kTypeCircle, 0, 0, 0, 8, 0, 0}));
  EXPECT_TRUE(SameGeometry(shape.objects[2], {kTypeRectangle, 0, 3.5, -2.5, 0.5, 0.25, 0}));
  EXPECT_TRUE(SameGeometry(shape.objects[3], {kTypeCircle, 0, -3.5, 2.5, 0.25, 0, 0}));
  // The file beside the library brings the plate back in its own unit.
  FeatureSettings record;
  ASSERT_EQ(Metadata(0).size(), 4768u);
  ASSERT_TRUE(ReadOldPlateFile(Metadata(0), record));
  StartPlate(false);
  ASSERT_TRUE(LoadPlateSettings(record));
  EXPECT_TRUE(plate.metric);
  EXPECT_NEAR(plate.values[kPlateLength].value, 203.2, 1e-9);
}

// It is read back where two saved plates are cut alike, unlike the mirror of the library.
TEST_F(NamedPlate, FlushesTheFileOfThePlateAndItsFolder) {
  static int files;
  static int folders;
  files = folders = 0;
  GivePlateName(u"Flushed");
  headless::FailCall("worker", 1);  // all is written in this thread
  platform::fileFault = [](std::string_view kind) {
    files += kind == "flush";
    folders += kind == "flushfolder";
    return false;
  };
  EXPECT_EQ(Save(), PlateSave::Done);
  platform::fileFault = nullptr;
  EXPECT_EQ(Metadata(0).size(), 4768u);
  EXPECT_EQ(files, 2) << "the settings and the plate";
  EXPECT_EQ(folders, 1) << "the plate";
}

TEST_F(NamedPlate, SavesNothingWithoutAName) {
  EXPECT_EQ(Save(), PlateSave::Done);
  EXPECT_EQ(shapeLibrary.count, 0);
  SetPlateName(u"");
  EXPECT_EQ(Save(), PlateSave::NoName);
  EXPECT_EQ(Status(), u"Enter a name beside Save shape.");
}

TEST_F(NamedPlate, FailsQuietlyForASizeOfNothing) {
  GivePlateName(u"Base");
  SayOnPlate(u"before");
  SetPlateText(kPlateWidth, u"0");
  EXPECT_EQ(Save(), PlateSave::BadNumbers);
  EXPECT_EQ(Status(), u"before");
  EXPECT_EQ(shapeLibrary.count, 0);
}

TEST_F(NamedPlate, HoldsSixtyFourObjectsInTheLibrary) {
  GivePlateName(u"Grid");
  SetPlateLayout(PlateLayout::Grid);
  SetPlateText(kPlateEdgeRadius, u"0");  // one object
  SetPlateText(kPlateCountX, u"9");
  SetPlateText(kPlateCountY, u"7");
  EXPECT_EQ(Save(), PlateSave::Done);
  EXPECT_EQ(Shape(0).count, 64);
  SetPlateText(kPlateCountX, u"13");
  SetPlateText(kPlateCountY, u"5");
  EXPECT_EQ(Save(), PlateSave::TooMany);
  EXPECT_EQ(Status(), u"Reusable shape exceeds 64 objects; reduce the hole pattern before saving.");
  EXPECT_EQ(Shape(0).count, 64);
  // Without two of them it fits again.
  SetFeatureFlag(0, FeatureFlag::Deleted, true);
  SetFeatureFlag(1, FeatureFlag::Deleted, true);
  EXPECT_EQ(Save(), PlateSave::Done);
}

TEST_F(NamedPlate, IsRefusedByAFullLibrary) {
  for (int i = 0; i < kMaxShapes; ++i) AppendShape(u"Other");
  GivePlateName(u"Base");
  EXPECT_EQ(Save(), PlateSave::Full);
  EXPECT_EQ(Status(), u"Shape library is full.");
  EXPECT_EQ(shapeLibrary.count, kMaxShapes);
}

TEST_F(NamedPlate, KeepsTheAspectOfACustomOutline) {
  SavedShape outline;
  outline.count = 1;
  outline.objects[0] = {kTypeRectangle, 0, 1, 1, 4, 3, 0};
  AppendShape(u"Outline");
  PutShapeAt(0, outline);
  SetPlateOutline(0);
  GivePlateName(u"Base");
  ASSERT_EQ(Save(), PlateSave::Done);  // 8 by 6 is twice 4 by 3
  EXPECT_TRUE(SameGeometry(Shape(1).objects[0], {kTypeRectangle, 0, 0, 0, 8, 6, 0}));
  SetPlateText(kPlateLength, u"9");
  EXPECT_EQ(Save(), PlateSave::Stretched);
  EXPECT_EQ(Status(),
            u"Custom reusable shapes keep their aspect ratio. Match width and height scale before "
            u"saving.");
  EXPECT_EQ(Shape(1).objects[0].size, 8);
}

TEST_F(NamedPlate, SaysThatItsRecordIsTooLarge) {
  GivePlateName(u"Base");
  for (int k = 0; k < 97; ++k) SetFeatureFlag(k, FeatureFlag::Locked, true);
  EXPECT_EQ(Save(), PlateSave::NoRecord);
  EXPECT_TRUE(Metadata(0).empty());
}

TEST_F(NamedPlate, WritesNoFileWithoutADataDirectory) { EXPECT_FALSE(RefreshPlateMetadataFile()); }

TEST_F(NamedPlate, GetsItsNameBackFromTheLibrary) {
  SetPlateText(kPlateLength, u"7");
  GivePlateName(u"Base");
  ASSERT_EQ(Save(), PlateSave::Done);
  FeatureSettings record;
  ASSERT_TRUE(SavePlateSettings(record));
  LoadLivePlate(nullptr);
  EXPECT_TRUE(plate.unnamed);
  LoadLivePlate(&record);
  EXPECT_EQ(std::u16string(plate.name), u"Base");
  EXPECT_EQ(plate.savedShapeIndex, 0);
  EXPECT_FALSE(plate.pending);
}

TEST_F(NamedPlate, GetsNoNameWhereTwoPlatesAreAlike) {
  GivePlateName(u"Base");
  ASSERT_EQ(Save(), PlateSave::Done);
  LoadLivePlate(nullptr);
  GivePlateName(u"Twin");
  ASSERT_EQ(Save(), PlateSave::Done);
  FeatureSettings record;
  ASSERT_TRUE(SavePlateSettings(record));
  LoadLivePlate(&record);
  EXPECT_FALSE(plate.unnamed);
  EXPECT_EQ(std::u16string(plate.name), u"");
  EXPECT_EQ(Save(), PlateSave::NoName);
}

TEST_F(NamedPlate, IsKnownFromItsTwinByTheFileBesideTheLibrary) {
  headless::SetFlushTime(0);
  ASSERT_TRUE(app.dataDirReady);
  GivePlateName(u"Base");
  ASSERT_EQ(Save(), PlateSave::Done);
  FeatureSettings first;
  ASSERT_TRUE(SavePlateSettings(first));
  // Cut alike, made of other numbers: nothing is cut at the pattern's diameter.
  LoadLivePlate(nullptr);
  SetPlateText(kPlatePatternDiameter, u"3");
  GivePlateName(u"Twin");
  ASSERT_EQ(Save(), PlateSave::Done);
  FeatureSettings second;
  ASSERT_TRUE(SavePlateSettings(second));
  LoadLivePlate(&first);
  EXPECT_EQ(std::u16string(plate.name), u"Base");
  LoadLivePlate(&second);
  EXPECT_EQ(std::u16string(plate.name), u"Twin");
  EXPECT_EQ(plate.savedShapeIndex, 1);
}

// Three of a kind in one program, as a user has them who makes left and right ones.
struct Triplets : public NamedPlate {
  void SetUp() override {
    NamedPlate::SetUp();
    ASSERT_TRUE(app.dataDirReady);
    ProgramTab* tab = ProvidePlates();
    for (const char16_t* name : kNames) {
      if (name != kNames[0]) {
        const int added = AddPlateDrawing(*tab);
        ASSERT_TRUE(SwitchPlateDrawing(*tab, static_cast<std::uint32_t>(added)));
      }
      ASSERT_EQ(GivePlateName(name), Naming::Named);
      ASSERT_EQ(Save(), PlateSave::Done);
    }
    ASSERT_TRUE(SaveLivePlate());
  }
  // Nothing but the records stands, as behind a restart; drawing `up` is the one that is shown.
  static void Forget(std::uint32_t up) {
    PlateStore& store = *ActiveTab()->plateStore;
    for (int i = 0; i < kMaxPlates; ++i) store.names[i][0] = store.savedNames[i][0] = 0;
    store.active = up;
    *ActiveTab()->plateSettings = store.plates[up];
    LoadLivePlate(ActiveTab()->plateSettings);
  }
  static constexpr const char16_t* kNames[] = {u"Left", u"Middle", u"Right"};
};

// Which of the names is whose nobody knows: they need not have been named in the order of the tabs.
TEST_F(Triplets, GetNoNameThatMayBeAnotherOnes) {
  Forget(1);
  EXPECT_EQ(std::u16string(plate.name), u"");
  for (const std::uint32_t drawing : {2u, 0u}) {
    SwitchPlateDrawing(*ActiveTab(), drawing);
    EXPECT_EQ(std::u16string(plate.name), u"") << drawing;
    EXPECT_EQ(plate.savedShapeIndex, -1);
  }
}

TEST_F(Triplets, GetNoNameWhereAnotherPlateMayHaveIt) {
  // The third belongs to a program that is not open.
  ActiveTab()->plateStore->count = 2;
  Forget(0);
  EXPECT_EQ(std::u16string(plate.name), u"");
  SwitchPlateDrawing(*ActiveTab(), 1);
  EXPECT_EQ(std::u16string(plate.name), u"");
}

// The one that is left need not be that of the plate which comes up first.
TEST_F(Triplets, GetNoNameWhereOneShapeOfThemIsLeft) {
  const ShapeLibrary three = shapeLibrary;
  ResetShapeLibrary();
  PutShape(three.shapes[0]);
  SaveShapeLibrary();
  WaitForSaves();
  Forget(1);
  EXPECT_EQ(std::u16string(plate.name), u"");
  EXPECT_EQ(plate.savedShapeIndex, -1);
  // One that stands alone has it.
  ActiveTab()->plateStore->count = 1;
  Forget(0);
  EXPECT_EQ(std::u16string(plate.name), u"Left");
}

TEST_F(Triplets, GetNoNameWhereAShapeOfThemIsMissing) {
  ShapeLibrary two = shapeLibrary;
  ResetShapeLibrary();
  for (int i = 0; i < 2; ++i) PutShape(two.shapes[i]);
  SaveShapeLibrary();
  WaitForSaves();
  Forget(0);
  EXPECT_EQ(std::u16string(plate.name), u"");
}

// The own file of a plate says which of the shapes that are alike it is; one that was damaged says
// nothing, whatever it holds, and is whole again behind the next save.
TEST_F(NamedPlate, IsNotKnownByADamagedFileBesideTheLibrary) {
  ASSERT_TRUE(app.dataDirReady);
  GivePlateName(u"Base");
  ASSERT_EQ(Save(), PlateSave::Done);
  FeatureSettings first;
  ASSERT_TRUE(SavePlateSettings(first));
  LoadLivePlate(nullptr);
  SetPlateText(kPlatePatternDiameter, u"3");
  GivePlateName(u"Twin");
  ASSERT_EQ(Save(), PlateSave::Done);
  const std::string whole = Metadata(0);
  ASSERT_EQ(whole.size(), 4768u);
  std::filesystem::path file;
  for (const auto& each : std::filesystem::recursive_directory_iterator(home_)) {
    if (each.path().filename() == "Plate-0.platemv") file = each.path();
  }
  std::string flipped = whole;
  flipped[200] = static_cast<char>(flipped[200] ^ 1);
  const std::string damaged[] = {"", whole.substr(0, 4767), whole + "x", std::string(4768, '\xFF'),
                                 flipped};
  for (const std::string& bytes : damaged) {
    std::ofstream(file, std::ios::binary) << bytes;
    LoadLivePlate(&first);
    EXPECT_EQ(std::u16string(plate.name), u"") << bytes.size();
    EXPECT_EQ(plate.values[kPlateLength].value, 8);
  }
  TakePlateName(u"Base", false, 0);
  ASSERT_EQ(Save(), PlateSave::Done);
  EXPECT_EQ(Metadata(0), whole);
}

TEST_F(NamedPlate, FindsTheOutlineThatTheSettingsFileRounded) {
  SavedShape outline;
  outline.count = 1;
  outline.objects[0] = {kTypeRectangle, 0, 0, 0, 4.0000001234, 3, 0};
  TakePlateOutline(outline, -1);
  FeatureSettings record;
  ASSERT_TRUE(SavePlateSettings(record));
  ASSERT_EQ(AppendShape(u"Outline"), 0);
  ASSERT_EQ(PutShapeAt(0, outline), 0);  // as the settings file has it
  ASSERT_FALSE(SameGeometry(shapeLibrary.shapes[0].objects[0], outline.objects[0]));
  ASSERT_TRUE(LoadPlateSettings(record));
  EXPECT_EQ(shapeLibrary.count, 1) << "no second one";
  EXPECT_EQ(plate.customOutlineIndex, 0);
}

TEST_F(NamedPlate, StandsBesideSevenOthers) {
  ProgramTab* tab = ProvidePlates();
  ASSERT_NE(tab, nullptr);
  EXPECT_EQ(tab->plateStore->count, 1u);
  GivePlateName(u"One");
  SetPlateText(kPlateLength, u"11");
  for (int i = 1; i < kMaxPlates; ++i) EXPECT_EQ(AddPlateDrawing(*tab), i);
  EXPECT_EQ(AddPlateDrawing(*tab), -1);
  EXPECT_EQ(tab->plateStore->count, 8u);
  EXPECT_FALSE(SwitchPlateDrawing(*tab, 0));
  EXPECT_FALSE(SwitchPlateDrawing(*tab, 8));
  ASSERT_TRUE(SwitchPlateDrawing(*tab, 7));
  EXPECT_TRUE(plate.unnamed);
  EXPECT_EQ(plate.values[kPlateLength].value, 8);
  ASSERT_TRUE(SwitchPlateDrawing(*tab, 0));
  EXPECT_EQ(plate.values[kPlateLength].value, 11);
  EXPECT_EQ(std::u16string(plate.name), u"One");
  EXPECT_EQ(tab->plateSettings->values[kPlateLength], 11);
}

TEST_F(NamedPlate, StaysUpWhereItCannotBeStored) {
  ProgramTab* tab = ProvidePlates();
  ASSERT_NE(tab, nullptr);
  ASSERT_EQ(AddPlateDrawing(*tab), 1);
  for (int k = 0; k < 97; ++k) SetFeatureFlag(k, FeatureFlag::Locked, true);
  EXPECT_FALSE(SwitchPlateDrawing(*tab, 1));
  EXPECT_EQ(Status(), kPlateFull);
  EXPECT_TRUE(OutputHas(u"93 stored settings belong to feature numbers"));
  EXPECT_TRUE(plate.features[96].locked);
  EXPECT_EQ(tab->plateStore->active, 0u);
}

TEST_F(NamedPlate, WaitsForItsProgramWhereItCannotBeStored) {
  ASSERT_NE(ProvidePlates(), nullptr);
  for (int k = 0; k < 97; ++k) SetFeatureFlag(k, FeatureFlag::Locked, true);
  SetPlateText(kPlateLength, u"12,5");
  WriteFile("other.NC", "G0 X1\r\n");
  Open("other.NC");
  EXPECT_TRUE(plate.unnamed);
  EXPECT_FALSE(plate.features[96].locked);
  SwitchTab(0);
  EXPECT_TRUE(plate.features[96].locked);
  EXPECT_EQ(std::u16string(plate.values[kPlateLength].text), u"12,5");
  // Once it can be stored it comes back from its record, as others do.
  SetFeatureFlag(96, FeatureFlag::Locked, false);
  SetPlateText(kPlateLength, u"12.5");
  SwitchTab(1);
  SwitchTab(0);
  EXPECT_TRUE(plate.features[95].locked);
  EXPECT_EQ(std::u16string(plate.values[kPlateLength].text), u"12.500000");
}

TEST_F(NamedPlate, SaysOnceAChangeThatItCannotBeSaved) {
  SetPlateLayout(PlateLayout::Grid);
  SetPlateText(kPlateCountX, u"20");
  SetPlateText(kPlateCountY, u"20");
  GivePlateName(u"Grid");
  EXPECT_EQ(Save(), PlateSave::TooMany);
  EXPECT_NE(Status(), u"");
  SayOnPlate(u"");
  EXPECT_EQ(Save(), PlateSave::TooMany);
  EXPECT_EQ(Status(), u"");
  SetPlateText(kPlateCountX, u"19");
  EXPECT_EQ(Save(), PlateSave::TooMany);
  EXPECT_NE(Status(), u"");
}

TEST_F(NamedPlate, LeavesNoRecordWithoutAKindBehind) {
  for (int k = 0; k < 97; ++k) SetFeatureFlag(k, FeatureFlag::Locked, true);
  EXPECT_EQ(ProvidePlates(), nullptr);
  EXPECT_EQ(ActiveTab()->plateSettings, nullptr);
  EXPECT_EQ(ActiveTab()->plateStore, nullptr);
  SetFeatureFlag(0, FeatureFlag::Locked, false);
  EXPECT_NE(ProvidePlates(), nullptr);
}

TEST_F(NamedPlate, BeginsInTheUnitOfTheApplication) {
  SetUnits(true);
  LoadLivePlate(nullptr);
  EXPECT_TRUE(plate.metric);
  EXPECT_EQ(std::u16string(plate.values[kPlateLength].text), u"203.200");
  ProgramTab* tab = ProvidePlates();
  ASSERT_NE(tab, nullptr);
  SetUnits(false);
  ASSERT_EQ(AddPlateDrawing(*tab), 1);
  EXPECT_EQ(tab->plateStore->plates[1].metric, 0);
}

}  // namespace
