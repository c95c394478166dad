// What happens to editors, names and half-typed numbers when another plate comes up or the numbers
// change under an editor.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "app/router.h"
#include "documents/companions.h"
#include "documents/feature_blocks.h"
#include "documents/feature_operations.h"
#include "documents/saver.h"
#include "documents/tab_table.h"
#include "library/shapes.h"
#include "plate/canvas/plate_pointer.h"
#include "plate/model/plate_names.h"
#include "plate/model/plate_record.h"
#include "plate/panel/plate_workspace.h"
#include "plate/tools/plate_drawings.h"
#include "plate/tools/plate_edit.h"
#include "plate/tools/plate_saving.h"
#include "plate_stage.h"

namespace morva {
namespace {

using plate_test::NamedPlateUp;

// "Base", 8 long, and behind it "Long", 20 long, which is up.
struct TwoPlates : public NamedPlateUp {
  void SetUp() override {
    NamedPlateUp::SetUp();
    Settle();
    ASSERT_TRUE(headless::Click(kIdPlateTabAdd));
    ASSERT_TRUE(headless::Click(kIdPlateNaming));
    Name(u"Long");
    headless::TypeInto(kIdPlateField + kPlateLength, u"20");
    Settle();
    ASSERT_EQ(shapeLibrary.count, 2);
  }
  static void Settle() {
    headless::Advance(1000);
    WaitForSaves();
  }
  static void Choose(int drawing) { ASSERT_TRUE(headless::Click(kIdPlateTabFirst + drawing)); }
  static void ExpectNoEditor() {
    for (const int id : {kIdPlateApply, kIdPlateWidth, kIdPlateSection, kIdPlateThickness,
                         kIdPlateName, kIdPlateDelete}) {
      EXPECT_FALSE(platform::IsVisible(id)) << id;
    }
    EXPECT_EQ(plateEditor.page, PlatePage::Nothing);
  }
  // The block of the plate that is so long, from the browser of features.
  static void ReopenBlock(double length) {
    headless::Click(kIdSurfaceCode);
    ScanProgramText(platform::EditorText(kIdEditor));
    for (int i = 0; i < features.count; ++i) {
      const FeatureSettings& settings = features.rows[i].settings;
      if (settings.kind == kKindPlate && settings.values[kPlateLength] == length)
        headless::SelectRows(kIdFeatureList, {i});
    }
    ASSERT_TRUE(headless::Click(kIdFeatureEdit));
    ASSERT_EQ(app.surface, kSurfacePlate);
  }
  static void Insert() {
    headless::InDialog([] { headless::Click(kIdDestinationInsert); });
    ASSERT_TRUE(headless::Click(kIdPlateInsert));
  }
};

// Both with the first numbers of the form: the block of "Base" is not that of "Long".
struct EqualPlates : public TwoPlates {
  void SetUp() override {
    TwoPlates::SetUp();
    headless::TypeInto(kIdPlateField + kPlateLength, u"8");
    Settle();
    Choose(0);
    Insert();
    headless::TypeInto(kIdPlateField + kPlateLength, u"9");
    Settle();
  }
  static void ChangeTheBlock() {
    const int other = FindShape(u"Long");
    const double size = shapeLibrary.shapes[other].objects[0].size;
    ReopenBlock(8);
    EXPECT_NE(std::u16string(plate.name), u"Long");
    headless::TypeInto(kIdPlateField + kPlateLength, u"12");
    Settle();
    Insert();
    Settle();
    EXPECT_EQ(shapeLibrary.shapes[other].objects[0].size, size);
    Choose(1);
    EXPECT_EQ(std::u16string(plate.name), u"Long");
    EXPECT_EQ(NumbersOf(plate).length, 8);
  }
};

TEST_F(EqualPlates, KeepTheirBlocksApart) { ChangeTheBlock(); }

TEST_F(EqualPlates, KeepTheirBlocksApartAlsoWhereTheOtherIsUp) {
  Choose(1);
  ChangeTheBlock();
}

TEST_F(TwoPlates, CloseTheEditorOfAFeatureWhenTheOtherComesUp) {
  Choose(0);
  Open(0);
  Choose(1);
  ExpectNoEditor();
  RouteCommand(kIdPlateApply, platform::kNotifyClick);
  RouteCommand(kIdPlateDelete, platform::kNotifyClick);
  EXPECT_TRUE(headless::TakeBoxes().empty());
  EXPECT_FALSE(plate.features[0].placed);
  EXPECT_FALSE(plate.features[0].deleted);
}

TEST_F(TwoPlates, CloseTheEditorsOfNumbersWhenTheOtherComesUp) {
  for (const int target : {int{kPlateLength}, kDepthSection}) {
    Choose(0);
    OpenPlateTarget(target, Keyboard::ToEditor);
    Choose(1);
    ExpectNoEditor();
  }
  EXPECT_EQ(plate.values[kPlateLength].value, 20);
}

TEST_F(TwoPlates, CloseTheNameBoxWhenTheOtherComesUp) {
  Choose(0);
  ASSERT_TRUE(headless::Click(kIdPlateNaming));
  headless::TypeInto(kIdPlateName, u"Other");
  Choose(1);
  ExpectNoEditor();
  EXPECT_EQ(std::u16string(plate.name), u"Long");
}

TEST_F(TwoPlates, CloseTheEditorForANewOneToo) {
  OpenPlateTarget(kPlateLength, Keyboard::ToEditor);
  ASSERT_TRUE(headless::Click(kIdPlateTabAdd));
  EXPECT_NE(plateEditor.page, PlatePage::Section);
  EXPECT_FALSE(platform::IsVisible(kIdPlateSection));
  EXPECT_EQ(platform::FocusedId(), kIdPlateName) << "a plate without a name asks for one";
}

TEST_F(TwoPlates, CloseTheEditorForAnotherProgram) {
  Open(0);
  ASSERT_TRUE(headless::Click(kIdNew));
  EXPECT_EQ(CurrentFeature(), -1);
  EXPECT_FALSE(platform::IsVisible(kIdPlateApply) && platform::IsVisible(kIdPlateWidth));
}

TEST_F(TwoPlates, StayUpWithHalfANumber) {
  headless::TypeInto(kIdPlateField + kPlateLength, u"21,5");
  Choose(0);
  EXPECT_EQ(std::u16string(plate.name), u"Long");
  EXPECT_EQ(platform::TextOf(kIdPlateField + kPlateLength), u"21,5");
  EXPECT_NE(Status().find(u"Length  X holds no usable number"), std::u16string::npos);
  ASSERT_TRUE(headless::Click(kIdPlateTabAdd));
  EXPECT_EQ(tabs[0].plateStore->count, 2u) << "nothing is added either";
  EXPECT_EQ(std::u16string(plate.name), u"Long");
  headless::TypeInto(kIdPlateField + kPlateLength, u"21.5");
  Choose(0);
  EXPECT_EQ(std::u16string(plate.name), u"Base");
}

TEST_F(TwoPlates, AddNothingWhileTheShownOneTakesTooMuch) {
  for (int k = 0; k < 97; ++k) SetFeatureFlag(k, FeatureFlag::Locked, true);
  for (int press = 0; press < 3; ++press) ASSERT_TRUE(headless::Click(kIdPlateTabAdd));
  EXPECT_EQ(tabs[0].plateStore->count, 2u);
  EXPECT_EQ(Status(), kPlateFull);
  EXPECT_TRUE(plate.features[96].locked);
}

TEST_F(TwoPlates, NeverShareAName) {
  Choose(0);
  Insert();
  Choose(1);
  const std::uint32_t drawings = tabs[0].plateStore->count;
  ReopenBlock(8);
  EXPECT_EQ(tabs[0].plateStore->active, 0u) << "its own tab comes up";
  EXPECT_EQ(tabs[0].plateStore->count, drawings);
  EXPECT_EQ(std::u16string(plate.name), u"Base");
  Choose(1);
  EXPECT_EQ(std::u16string(plate.name), u"Long");
}

TEST_F(TwoPlates, NeverShareANameThatTheLibraryTells) {
  // Behind a restart nothing tells the name of the second one, which is made like the first.
  TakePlateName(u"", false, -1);
  headless::TypeInto(kIdPlateField + kPlateLength, u"8.000000");
  Choose(0);
  ASSERT_EQ(std::u16string(plate.name), u"Base");
  Choose(1);
  EXPECT_EQ(std::u16string(plate.name), u"");
  EXPECT_EQ(plate.savedShapeIndex, -1);
}

TEST_F(TwoPlates, NeverGiveANameToAPlateOfAnotherProgram) {
  Choose(0);
  FeatureSettings record;
  ASSERT_TRUE(SavePlateSettings(record));
  ASSERT_TRUE(headless::Click(kIdNew));
  LoadPlateSettings(record);
  SetPlateNumber(kPlateFeed, 11, 1);  // cut alike all the same
  ASSERT_TRUE(headless::Click(kIdTabFirst));
  ASSERT_EQ(std::u16string(plate.name), u"Base");
  ASSERT_TRUE(headless::Click(kIdTabFirst + 1));
  EXPECT_FALSE(plate.unnamed);
  EXPECT_EQ(std::u16string(plate.name), u"");
  ASSERT_TRUE(headless::Click(kIdPlateNaming));
  Name(u"LONG");
  EXPECT_EQ(headless::TakeBoxes().size(), 1u) << "it is the other program's";
}

TEST_F(NamedPlateUp, RenewsTheTextsOfAnOpenEditorThatNobodyTouched) {
  Open(0);
  headless::TypeInto(kIdPlateWidth, u"0.3");
  headless::TypeInto(kIdPlateField + kPlateLength, u"10");
  EXPECT_EQ(platform::TextOf(kIdPlateX), u"-4.5000");
  EXPECT_EQ(platform::TextOf(kIdPlateWidth), u"0.3") << "the user's own stays";
  ASSERT_TRUE(headless::Click(kIdPlateApply));
  EXPECT_TRUE(headless::TakeBoxes().empty());
  EXPECT_NEAR(PlaceOfFeature(0).x, -4.5, 1e-12);
}

TEST_F(NamedPlateUp, RenewsTheDepthOfAFeatureThatIsToGoThrough) {
  Open(0);
  ASSERT_TRUE(headless::Click(kIdPlateThrough));
  SetPlateText(kPlateStock, u"0.25");
  RefreshPlateWorkspace();
  EXPECT_EQ(platform::TextOf(kIdPlateDepth), u"0.2500");
  EXPECT_EQ(platform::TextOf(kIdPlateThrough), u"Through: ON");
  ASSERT_TRUE(headless::Click(kIdPlateApply));
  EXPECT_TRUE(headless::TakeBoxes().empty());
  EXPECT_TRUE(plate.features[0].through);
}

TEST_F(NamedPlateUp, RenewsAnOpenNumber) {
  OpenPlateTarget(kPlateLength, Keyboard::ToEditor);
  headless::TypeInto(kIdPlateField + kPlateLength, u"9");
  EXPECT_EQ(platform::TextOf(kIdPlateSection), u"9");
  ASSERT_TRUE(headless::Click(kIdPlateApply));
  EXPECT_EQ(NumbersOf(plate).length, 9);
  OpenPlateTarget(kDepthSection, Keyboard::ToEditor);
  headless::TypeInto(kIdPlateThickness, u"0.75");
  headless::TypeInto(kIdPlateField + kPlateCutDepth, u"-0.2");
  EXPECT_EQ(platform::TextOf(kIdPlateCutDepth), u"0.2000");
  EXPECT_EQ(platform::TextOf(kIdPlateThickness), u"0.75");
}

TEST_F(NamedPlateUp, ClosesTheEditorOfAFeatureThatTheLayoutHasNoMore) {
  headless::SelectRows(kIdPlateLayout, {1});
  headless::TypeInto(kIdPlateField + kPlateCountX, u"3");
  headless::TypeInto(kIdPlateField + kPlateCountY, u"3");
  Open(8);
  const FeatureForm form = ShowFeature(plate, 8);
  headless::SelectRows(kIdPlateLayout, {0});
  EXPECT_EQ(plateEditor.page, PlatePage::Nothing);
  EXPECT_FALSE(platform::IsVisible(kIdPlateX));
  EXPECT_FALSE(ApplyFeature(8, form));
  EXPECT_FALSE(plate.features[8].placed);
}

TEST_F(NamedPlateUp, KeepsALabelInMemoryWhereTheRecordIsFull) {
  for (int k = 0; k < kMaxItems; ++k) SetFeatureFlag(k, FeatureFlag::Locked, true);
  StorePlateLabel(kPlateWidth, 0.1, 0.2);
  EXPECT_EQ(Status(), u"Dimension layout could not be saved: plate metadata is full.");
  headless::TypeInto(kIdPlateField + kPlateLength, u"9");
  headless::Advance(1000);
  WaitForSaves();
  EXPECT_EQ(Status(), u"Named plate shape saved. Further completed edits save automatically.");
  FeatureSettings record;
  ASSERT_TRUE(SavePlateSettings(record));
  EXPECT_EQ(record.itemCount, kMaxItems);
  EXPECT_EQ(record.values[kPlateLength], 9);
  EXPECT_TRUE(plate.dimensionLabels[kPlateWidth].set);
  EXPECT_EQ(plate.dimensionLabels[kPlateWidth].y, 0.2);
  // With an item less it is stored, and counts from then on.
  SetFeatureFlag(95, FeatureFlag::Locked, false);
  ASSERT_TRUE(StoreLivePlate(record));
  EXPECT_EQ(record.itemCount, kMaxItems);
  EXPECT_EQ(record.items[0].tag, 3000 + kPlateWidth);
  SetFeatureFlag(95, FeatureFlag::Locked, true);
  EXPECT_FALSE(SavePlateSettings(record)) << "what was stored is not left out in silence";
}

TEST_F(NamedPlateUp, KeepsAnExactNumberThatIsAppliedAsItStands) {
  headless::TypeInto(kIdPlateField + kPlateSize, u"0.03125");
  OpenPlateTarget(kPlateSize, Keyboard::ToEditor);
  ASSERT_TRUE(headless::Click(kIdPlateApply));
  EXPECT_DOUBLE_EQ(NumbersOf(plate).size, 0.03125);
  EXPECT_EQ(platform::TextOf(kIdPlateField + kPlateSize), u"0.03125");
  // What is typed gets four decimals.
  OpenPlateTarget(kPlateSize, Keyboard::ToEditor);
  headless::TypeInto(kIdPlateSection, u"0.5");
  ASSERT_TRUE(headless::Click(kIdPlateApply));
  EXPECT_EQ(platform::TextOf(kIdPlateField + kPlateSize), u"0.5000");
}

TEST_F(NamedPlateUp, SaysThatNoFileKeepsAPlateThatTakesTooMuch) {
  headless::Advance(1000);
  WaitForSaves();  // it stands in the library: leaving asks for no name
  for (int k = 0; k < 97; ++k) SetFeatureFlag(k, FeatureFlag::Locked, true);
  headless::QueueAnswer(platform::BoxAnswer::No);
  headless::Click(kIdSurfaceCode);
  EXPECT_EQ(app.surface, kSurfacePlate);
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].text,
            u"The plate takes more than the file of its program can hold of one. It stays until "
            u"MORVA is closed. Leave it as it is?");
}

// What a file of this name holds, somewhere below the folder.
std::string BytesOf(const std::filesystem::path& home, const std::string& name) {
  for (const auto& file : std::filesystem::recursive_directory_iterator(home)) {
    if (file.path().filename() != name) continue;
    std::ifstream in(file.path(), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
  }
  return {};
}

TEST_F(TwoPlates, BearNoWordsOfAnotherOne) {
  ASSERT_TRUE(headless::Click(kIdPlateTabAdd));
  ASSERT_EQ(Status(), kCreateNamedPlate);
  Choose(0);
  EXPECT_EQ(Status(), u"");
  ASSERT_TRUE(headless::Click(kIdNew));
  ASSERT_EQ(Status(), u"New program opened in a workspace tab.");
  ASSERT_TRUE(headless::Click(kIdTabFirst));
  ASSERT_EQ(std::u16string(plate.name), u"Base");
  EXPECT_EQ(Status(), u"");
}

TEST_F(TwoPlates, SayWhoseLibraryCouldNotBeWrittenWhenTheOtherComesUp) {
  headless::TypeInto(kIdPlateField + kPlateLength, u"19");
  headless::FailCall("rename", 1);
  Settle();
  ASSERT_EQ(Status(), kShapesUnsaved);
  headless::FailCall("rename", 1);  // the other one comes up behind one more try
  Choose(0);
  EXPECT_EQ(Status(), u"\u201CLong\u201D: " + std::u16string(kShapesUnsaved));
  Choose(1);
  EXPECT_EQ(Status(), kShapesUnsaved);
  headless::Advance(6000);
  WaitForSaves();
  Choose(0);
  EXPECT_EQ(Status(), u"") << "it is well again";
}

TEST_F(TwoPlates, SayWhoseOwnFileCouldNotBeWrittenWhenTheOtherComesUp) {
  headless::TypeInto(kIdPlateField + kPlateLength, u"19");
  headless::FailCall("rename", 3);  // behind the settings and the mirror of the library
  Settle();
  const std::u16string words =
      u"The plate's own file beside the library could not be written. It is tried again.";
  ASSERT_EQ(Status(), words);
  Choose(0);
  EXPECT_EQ(Status(), u"\u201CLong\u201D: " + words);
  // Also where the other one was saved meanwhile.
  headless::TypeInto(kIdPlateField + kPlateLength, u"7");
  Settle();
  ASSERT_TRUE(headless::Click(kIdNew));
  ASSERT_TRUE(headless::Click(kIdTabFirst));
  EXPECT_EQ(Status().find(u"\u201CBase\u201D"), std::u16string::npos);
}

TEST_F(TwoPlates, SayWhichOneNoShapeCanHoldWhenTheOtherComesUp) {
  headless::SelectRows(kIdPlateLayout, {1});
  headless::TypeInto(kIdPlateField + kPlateCountX, u"10");
  headless::TypeInto(kIdPlateField + kPlateCountY, u"7");
  Settle();
  const std::u16string words =
      u"Reusable shape exceeds 64 objects; reduce the hole pattern before saving.";
  ASSERT_EQ(Status(), words);
  Choose(0);
  EXPECT_EQ(Status(), u"\u201CLong\u201D: " + words);
  Choose(1);
  EXPECT_EQ(Status(), words);
  headless::TypeInto(kIdPlateField + kPlateCountY, u"2");
  Settle();
  Choose(0);
  EXPECT_EQ(Status(), u"");
}

TEST_F(TwoPlates, SayOfAllThatNoShapeCanHoldHowManyAndWhich) {
  const std::u16string words =
      u"Reusable shape exceeds 64 objects; reduce the hole pattern before saving.";
  for (const int drawing : {1, 0}) {
    Choose(drawing);
    headless::SelectRows(kIdPlateLayout, {1});
    headless::TypeInto(kIdPlateField + kPlateCountX, u"10");
    headless::TypeInto(kIdPlateField + kPlateCountY, u"7");
    Settle();
  }
  EXPECT_EQ(Status(), words);  // of the one that is up
  const std::u16string both =
      u"2 plates are not saved as they are. \u201CLong\u201D, \u201CBase\u201D: " + words;
  Choose(1);
  EXPECT_EQ(Status(), both);
  Choose(0);
  EXPECT_EQ(Status(), both);
  headless::TypeInto(kIdPlateField + kPlateCountY, u"2");
  Settle();
  Choose(1);
  EXPECT_EQ(Status(), words);
}

TEST_F(TwoPlates, AreWrittenAgainWhenTheLibraryFailedBehindASwitch) {
  Choose(0);
  headless::TypeInto(kIdPlateField + kPlateLength, u"9");
  const std::string before = BytesOf(home_, "MORVA.ini");
  headless::FailCall("rename", 1);
  headless::SetFlushTime(100);  // the disk answers when the other one is up
  Choose(1);
  WaitForSaves();
  headless::SetFlushTime(0);
  ASSERT_TRUE(BytesOf(home_, "MORVA.ini") == before);
  EXPECT_EQ(Status(), u"\u201CBase\u201D: " + std::u16string(kShapesUnsaved));
  headless::Advance(6000);
  WaitForSaves();
  EXPECT_TRUE(BytesOf(home_, "MORVA.ini") != before);
  EXPECT_EQ(Status(),
            u"\u201CBase\u201D: Named plate shape saved. Further completed edits save "
            u"automatically.");
}

TEST_F(TwoPlates, AreWrittenAgainAlsoFromTheCode) {
  headless::TypeInto(kIdPlateField + kPlateLength, u"9");
  const std::string before = BytesOf(home_, "MORVA.ini");
  headless::FailCall("rename", 1);
  headless::SetFlushTime(100);  // the disk answers when the plate is out of sight
  ASSERT_TRUE(headless::Click(kIdSurfaceCode));
  WaitForSaves();
  headless::SetFlushTime(0);
  ASSERT_TRUE(BytesOf(home_, "MORVA.ini") == before);
  headless::Advance(6000);
  WaitForSaves();
  EXPECT_TRUE(BytesOf(home_, "MORVA.ini") != before);
}

TEST_F(TwoPlates, AreWrittenAgainBeforeMorvaIsClosed) {
  headless::TypeInto(kIdPlateField + kPlateLength, u"9");
  const std::string before = BytesOf(home_, "MORVA.ini");
  headless::FailCall("rename", 1);
  EXPECT_TRUE(headless::CloseKey());
  EXPECT_TRUE(headless::TakeBoxes().empty()) << "the second try has written it";
  EXPECT_TRUE(BytesOf(home_, "MORVA.ini") != before);
}

TEST_F(TwoPlates, AreAskedAboutWhereTheLibraryCannotBeWrittenAtAll) {
  std::filesystem::path file;
  for (const auto& each : std::filesystem::recursive_directory_iterator(home_)) {
    if (each.path().filename() == "MORVA.ini") file = each.path();
  }
  headless::TypeInto(kIdPlateField + kPlateLength, u"9");
  ASSERT_TRUE(std::filesystem::remove(file));
  ASSERT_TRUE(std::filesystem::create_directories(file / "in the way"));
  headless::QueueAnswer(platform::BoxAnswer::No);
  EXPECT_FALSE(headless::CloseKey());
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].text,
            u"MORVA.ini could not be written: the last change of a named plate is not in the shape "
            u"library. Close MORVA anyway?");
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  EXPECT_TRUE(headless::CloseKey());
}

TEST_F(NamedPlateUp, WritesItsOwnFileAgain) {
  headless::Advance(1000);
  WaitForSaves();
  ASSERT_TRUE(app.dataDirReady);
  headless::TypeInto(kIdPlateField, u"9");
  headless::FailCall("rename", 3);  // behind the settings and the mirror of the library
  headless::Advance(1000);
  WaitForSaves();
  EXPECT_EQ(Status(),
            u"The plate's own file beside the library could not be written. It is tried again.");
  FeatureSettings record;
  ASSERT_TRUE(ReadOldPlateFile(BytesOf(home_, "Plate-0.platemv"), record));
  EXPECT_EQ(record.values[kPlateLength], 8);
  headless::Advance(6000);
  WaitForSaves();
  EXPECT_EQ(Status(), u"Named plate shape saved. Further completed edits save automatically.");
  ASSERT_TRUE(ReadOldPlateFile(BytesOf(home_, "Plate-0.platemv"), record));
  EXPECT_EQ(record.values[kPlateLength], 9);
}

TEST_F(NamedPlateUp, IsNotCalledSavedWithASizeOfNothing) {
  headless::Advance(1000);
  WaitForSaves();
  ASSERT_EQ(Status(), u"Named plate shape saved. Further completed edits save automatically.");
  headless::TypeInto(kIdPlateField, u"0");
  headless::Advance(1000);
  WaitForSaves();
  EXPECT_EQ(Status(), u"");
}

TEST_F(TwoPlates, SayWhichOneWasSavedWithHalfANumber) {
  headless::TypeInto(kIdPlateField + kPlateWidth, u"5");
  headless::TypeInto(kIdPlateField + kPlateLength, u"21,5");
  headless::SetFlushTime(100);           // a disk that answers behind what is told of the program
  ASSERT_TRUE(headless::Click(kIdNew));  // another program asks nothing
  WaitForSaves();
  headless::SetFlushTime(0);
  EXPECT_EQ(Status(),
            u"\u201CLong\u201D: Length  X holds no usable number, so that the plate was saved with "
            u"the last one. Write 0.75, not 0,75.");
}

}  // namespace
}  // namespace morva
