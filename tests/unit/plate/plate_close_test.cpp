// What leaving the plate, its program and MORVA says of half a number in a field, and of files that
// could not be written.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "app/router.h"
#include "documents/program_tabs.h"
#include "documents/save_state.h"
#include "documents/saver.h"
#include "documents/tab_table.h"
#include "library/shapes.h"
#include "plate/model/plate_names.h"
#include "plate_stage.h"

namespace morva {
namespace {

using plate_test::NamedPlateUp;

struct PlateLeft : public NamedPlateUp {
  void SetUp() override {
    NamedPlateUp::SetUp();
    Settle();
    ASSERT_TRUE(app.dataDirReady);
    ASSERT_EQ(shapeLibrary.count, 1);
    headless::TakeBoxes();
  }
  static void Settle() {
    headless::Advance(1000);
    WaitForSaves();
  }
  static void TypeHalf() {
    headless::TypeInto(kIdPlateField, u"9,5");
    Settle();
  }
  // The files of the programs hold what they can.
  static void CountAsSaved() {
    for (int i = 0; i < app.tabCount; ++i) NoteSaved(tabs[i], tabs[i].save.changes);
  }
  static std::u16string Length() { return platform::TextOf(kIdPlateField); }
  static std::u16string ProgramStatus() { return platform::TextOf(kIdStatusLine); }
  // A folder in the way of the file, so that it cannot be written.
  void Block(const char* name) const {
    std::filesystem::path file;
    for (const auto& each : std::filesystem::recursive_directory_iterator(home_)) {
      if (each.path().filename() == name) file = each.path();
    }
    ASSERT_FALSE(file.empty());
    ASSERT_TRUE(std::filesystem::remove(file));
    ASSERT_TRUE(std::filesystem::create_directories(file / "in the way"));
  }
};

constexpr char16_t kHalfQuestion[] =
    u"\u201CBase\u201D: Length  X holds no usable number, so that the plate is kept with the last "
    u"one. Write 0.75, not 0,75.";
constexpr char16_t kOwnFileWords[] =
    u"The plate's own file beside the library could not be written. It is tried again.";

TEST_F(PlateLeft, SaysInTheCodeThatAFieldHoldsHalfANumber) {
  TypeHalf();
  ASSERT_TRUE(headless::Click(kIdSurfaceCode));
  EXPECT_EQ(ProgramStatus(), kHalfQuestion);
  ASSERT_TRUE(headless::Click(kIdSurfacePlate));
  EXPECT_EQ(Length(), u"9,5");
}

TEST_F(PlateLeft, KeepsHalfANumberWhileAnotherProgramIsUp) {
  TypeHalf();
  ASSERT_TRUE(headless::Click(kIdNew));
  EXPECT_EQ(Length(), u"8.000");
  SwitchTab(0);
  headless::Advance(100);
  EXPECT_EQ(Length(), u"9,5");
  EXPECT_EQ(std::u16string(plate.name), u"Base");
  // What reads is kept by the record again.
  headless::TypeInto(kIdPlateField, u"9.5");
  SwitchTab(1);
  SwitchTab(0);
  headless::Advance(100);
  EXPECT_EQ(Length(), u"9.500000");
}

TEST_F(PlateLeft, AsksBeforeItsProgramIsClosedWithHalfANumber) {
  TypeHalf();
  CountAsSaved();
  headless::QueueAnswer(platform::BoxAnswer::No);
  RouteCommand(kIdClose, platform::kNotifyClick);
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].text, std::u16string(kHalfQuestion) + u"\n\nClose this program all the same?");
  EXPECT_EQ(Length(), u"9,5");
  EXPECT_EQ(platform::FocusedId(), int{kIdPlateField});
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  RouteCommand(kIdClose, platform::kNotifyClick);
  EXPECT_TRUE(plate.unnamed);
}

TEST_F(PlateLeft, AsksBeforeMorvaIsClosedWithHalfANumber) {
  TypeHalf();
  ASSERT_TRUE(headless::Click(kIdNew));  // and it is not even up
  CountAsSaved();
  headless::QueueAnswer(platform::BoxAnswer::No);
  EXPECT_FALSE(headless::CloseKey());
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].text,
            u"Untitled-1.NC: " + std::u16string(kHalfQuestion) + u"\n\nClose MORVA all the same?");
  EXPECT_EQ(app.activeTab, 0) << "the program of the plate comes up";
  EXPECT_EQ(platform::FocusedId(), int{kIdPlateField});
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  EXPECT_TRUE(headless::CloseKey());
}

TEST_F(PlateLeft, AsksOnceWhereTheChangesAreThrownAway) {
  headless::TypeInto(kIdPlateField, u"9,5");
  headless::QueueAnswer(platform::BoxAnswer::No);
  RouteCommand(kIdClose, platform::kNotifyClick);
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].text, u"Save changes before closing this program?");
  EXPECT_TRUE(plate.unnamed) << "it is closed";
}

TEST_F(PlateLeft, AsksOfHalfANumberBehindTheSave) {
  headless::TypeInto(kIdPlateField, u"9,5");
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  headless::QueueFile(Path("part.NC"));
  headless::QueueAnswer(platform::BoxAnswer::No);
  RouteCommand(kIdClose, platform::kNotifyClick);
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 2u);
  EXPECT_EQ(boxes[1].text, std::u16string(kHalfQuestion) + u"\n\nClose this program all the same?");
  EXPECT_EQ(Length(), u"9,5");
}

TEST_F(PlateLeft, SaysNothingOfHalfANumberThatWasClosedWithItsProgram) {
  headless::QueueFile(Path("part.NC"));
  RouteCommand(kIdSaveAs, platform::kNotifyClick);
  headless::TypeInto(kIdPlateField + kPlateWidth, u"5");
  TypeHalf();
  ASSERT_NE(Status().find(u"so that the plate was saved with the last one"), std::u16string::npos);
  ASSERT_TRUE(headless::Click(kIdSurfaceCode));
  CountAsSaved();
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  RouteCommand(kIdClose, platform::kNotifyClick);
  Workbench::Open("part.NC");
  ASSERT_TRUE(headless::Click(kIdSurfacePlate));
  ASSERT_EQ(std::u16string(plate.name), u"Base");
  EXPECT_EQ(Length(), u"8.000000");
  EXPECT_EQ(Status().find(u"no usable number"), std::u16string::npos) << "every field reads";
}

TEST_F(PlateLeft, SaysAgainOfHalfANumberWhenItsProgramComesBack) {
  TypeHalf();
  ASSERT_TRUE(headless::Click(kIdNew));
  EXPECT_EQ(Status(), u"New program opened in a workspace tab.");
  SwitchTab(0);
  EXPECT_EQ(Length(), u"9,5");
  EXPECT_EQ(Status(),
            u"Length  X holds no usable number, so that the plate is kept with the last one. Write "
            u"0.75, not 0,75.");
}

TEST_F(PlateLeft, AsksNothingWhereEveryFieldReads) {
  headless::TypeInto(kIdPlateField, u"9.5");
  CountAsSaved();
  EXPECT_TRUE(headless::CloseKey());
  EXPECT_TRUE(headless::TakeBoxes().empty());
}

TEST_F(PlateLeft, BlockThatIsOpenedLeavesAPlateWithHalfANumberUp) {
  headless::InDialog([] { headless::Click(kIdDestinationInsert); });
  ASSERT_TRUE(headless::Click(kIdPlateInsert));
  headless::TypeInto(kIdPlateField + kPlateWidth, u"5");
  TypeHalf();
  ASSERT_TRUE(headless::Click(kIdSurfaceCode));
  headless::SelectRows(kIdFeatureList, {0});
  headless::Click(kIdFeatureEdit);
  EXPECT_EQ(app.surface, kSurfacePlate);
  EXPECT_EQ(Length(), u"9,5");
  EXPECT_EQ(Status(),
            u"Length  X holds no usable number; until then this plate stays up. Write 0.75, not "
            u"0,75.");
}

TEST_F(PlateLeft, SaysInTheCodeThatItsOwnFileCouldNotBeWritten) {
  Block("Plate-0.platemv");
  headless::TypeInto(kIdPlateField, u"9");
  headless::SetFlushTime(100);  // the disk answers when the plate is out of sight
  ASSERT_TRUE(headless::Click(kIdSurfaceCode));
  headless::SetFlushTime(0);
  WaitForSaves();
  EXPECT_EQ(ProgramStatus(), u"\u201CBase\u201D: " + std::u16string(kOwnFileWords));
}

TEST_F(PlateLeft, SaysWhenItIsLeftThatItsOwnFileCouldNotBeWritten) {
  Block("Plate-0.platemv");
  headless::TypeInto(kIdPlateField, u"9");
  Settle();
  ASSERT_EQ(Status(), kOwnFileWords);
  ASSERT_TRUE(headless::Click(kIdSurfaceCode));
  WaitForSaves();
  EXPECT_EQ(ProgramStatus(), u"\u201CBase\u201D: " + std::u16string(kOwnFileWords));
}

TEST_F(PlateLeft, AsksBeforeMorvaIsClosedWithoutThePlatesOwnFile) {
  Block("Plate-0.platemv");
  headless::TypeInto(kIdPlateField, u"9");
  Settle();
  CountAsSaved();
  headless::TakeBoxes();
  headless::QueueAnswer(platform::BoxAnswer::No);
  EXPECT_FALSE(headless::CloseKey());
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].text,
            u"The own file of a named plate could not be written: behind a restart MORVA may ask "
            u"for the plate's name. Close MORVA anyway?");
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  EXPECT_TRUE(headless::CloseKey());
}

TEST_F(PlateLeft, NewProgramAsksForANameAtOnce) {
  ASSERT_TRUE(headless::Click(kIdNew));
  EXPECT_EQ(plateEditor.page, PlatePage::Name);
  EXPECT_EQ(platform::FocusedId(), int{kIdPlateName});
  // Back at the named plate nothing is asked.
  SwitchTab(0);
  EXPECT_EQ(plateEditor.page, PlatePage::Nothing);
}

TEST_F(PlateLeft, NewProgramAsksForNoNameOutOfSight) {
  ASSERT_TRUE(headless::Click(kIdSurfaceCode));
  ASSERT_TRUE(headless::Click(kIdNew));
  EXPECT_EQ(platform::FocusedId(), int{kIdEditor});
  EXPECT_EQ(plateEditor.page, PlatePage::Nothing);
}

}  // namespace
}  // namespace morva
