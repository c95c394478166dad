// A made-up builder on the whole application: a form, three pure functions and a record make a
// panel, a key, a block that reopens, an update and a live picture.
#include "documents/builder.h"

#include <gtest/gtest.h>

#include "app/commands.h"
#include "app/panels.h"
#include "app/stop.h"
#include "documents/feature_blocks.h"
#include "documents/feature_operations.h"
#include "documents/insertion.h"
#include "documents/tab_table.h"
#include "library/units.h"
#include "platform/canvas.h"
#include "platform/listing.h"
#include "shell/modes.h"
#include "support/bores.h"
#include "support/careful.h"
#include "support/groove.h"
#include "support/kinds.h"
#include "support/workbench.h"

namespace morva {
namespace {

using support::FreeKind;
using namespace support::groove;  // NOLINT: its names are this test's subject

struct MadeUpBuilder : support::Workbench {
  void SetUp() override {
    support::Workbench::SetUp();
    Join();
  }
};

TEST_F(MadeUpBuilder, StandsInThePanelOfItsMode) {
  EXPECT_EQ(app.mode, kMode);
  for (const int id : {kSide, kFirst + kWidth, kFirst + kHoles, kFirst + kDepth, kFirst + kFeed,
                       kPicture, kInsert}) {
    EXPECT_TRUE(platform::IsVisible(id)) << id;
  }
  EXPECT_EQ(platform::TextOf(kInsert), u"INSERT GROOVE");
  SetMode(kModeHome);
  EXPECT_FALSE(platform::IsVisible(kFirst + kWidth));
}

TEST_F(MadeUpBuilder, WritesABlockAndTellsAboutIt) {
  platform::SetText(kFirst + kWidth, u"3");
  headless::Click(kInsert);
  EXPECT_NE(Text().find(u"G01 X-3.000 F10.0\r\n(HOLES 2)\r\n"), std::u16string::npos);
  EXPECT_TRUE(OutputHas(u"Groove inserted."));
  EXPECT_TRUE(app.editorDirty);
}

TEST_F(MadeUpBuilder, CountsAnInsertAsOneChange) {
  headless::Advance(2000);
  AutoTagBlocks();
  const std::uint32_t before = ActiveTab()->save.changes;
  headless::Click(kInsert);
  EXPECT_TRUE(ActiveTab()->dirty);
  EXPECT_EQ(ActiveTab()->save.changes, before + 1);
}

TEST_F(MadeUpBuilder, RefusesAndChangesNothing) {
  const std::u16string before = Text();
  platform::SetText(kFirst + kFeed, u"-1");
  headless::TakeBoxes();
  headless::Click(kInsert);
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].title, u"Groove");
  EXPECT_EQ(boxes[0].text, u"Enter a positive feed.");
  EXPECT_EQ(Text(), before);
  EXPECT_EQ(platform::FocusedId(), kFirst + kFeed);
}

TEST_F(MadeUpBuilder, ReopensItsBlockAndUpdatesItInPlace) {
  platform::SelectRow(kSide, 1);
  platform::SetText(kFirst + kWidth, u"1.25");
  platform::SetText(kFirst + kHoles, u"7");
  headless::Click(kInsert);
  SetMode(kModeHome);
  platform::SetText(kFirst + kWidth, u"9");
  platform::SelectRow(kSide, 0);
  headless::Click(kIdFeatureEdit);
  EXPECT_EQ(app.mode, kMode);
  EXPECT_EQ(platform::TextOf(kFirst + kWidth), u"1.250000");
  EXPECT_EQ(platform::TextOf(kFirst + kHoles), u"7");
  EXPECT_EQ(platform::SelectedRow(kSide), 1);
  EXPECT_EQ(platform::TextOf(kInsert), u"UPDATE GROOVE");
  platform::SetText(kFirst + kWidth, u"4");
  headless::Click(kInsert);
  EXPECT_NE(Text().find(u"G01 X4.000 F10.0"), std::u16string::npos);
  EXPECT_EQ(Text().find(u"G01 X1.250"), std::u16string::npos);
  EXPECT_EQ(platform::TextOf(kInsert), u"INSERT GROOVE");
}

// Fields to record to fields to record: the same bytes.
TEST_F(MadeUpBuilder, KeepsItsRecordThroughTheForm) {
  for (const char16_t* width : {u"0.375", u"2", u"123456.789", u"-0.000001", u"0.1"}) {
    platform::SetText(kFirst + kWidth, width);
    FeatureSettings first;
    ASSERT_TRUE(StoreBuilder(kBuilder, first));
    ASSERT_TRUE(OpenBuilder(kBuilder, first));
    FeatureSettings second;
    ASSERT_TRUE(StoreBuilder(kBuilder, second));
    unsigned char a[kSettingsBytes];
    unsigned char b[kSettingsBytes];
    WriteSettings(first, a);
    WriteSettings(second, b);
    EXPECT_TRUE(std::equal(a, a + kSettingsBytes, b)) << platform::ToUtf8(width);
    EXPECT_EQ(first.kind, kKindShape);
    EXPECT_EQ(first.version, 3);
  }
}

TEST_F(MadeUpBuilder, MayShowTheToolpathViewWithItsPanel) {
  ASSERT_TRUE(platform::IsVisible(kViewToolpath));
  const platform::Rect view = platform::PlaceOf(kViewToolpath);
  const platform::Rect form = platform::PlaceOf(kViewBuilder);
  EXPECT_TRUE(form.bottom <= view.top || form.left >= view.right);
  for (const int id : {kSide, kFirst + kWidth, kFirst + kHoles, kFirst + kDepth, kFirst + kFeed,
                       kPicture, kInsert}) {
    ShowFormControl(id);
    const platform::Rect place = platform::PlaceInMainWindow(id);
    EXPECT_GE(place.top, form.top) << id;
    EXPECT_LE(place.bottom, form.bottom) << id;
  }
}

// The page comes up first, as the record's list says, then its numbers.
TEST_F(MadeUpBuilder, OpensTheRecordOnThePageThatItsListChooses) {
  support::bores::Join();
  const int feed = support::bores::kFirst + support::bores::kFeed;
  const int count = support::bores::kFirst + support::bores::kNinth;
  ASSERT_TRUE(platform::IsVisible(feed));
  EXPECT_EQ(platform::AccessibleName(count), u"X max");
  FeatureSettings record;
  record.a = support::bores::kTap;
  record.values[support::bores::kFeed] = 16;
  record.values[support::bores::kNinth] = 7;
  ASSERT_TRUE(OpenBuilder(support::bores::kBuilder, record));
  EXPECT_EQ(platform::TextOf(feed), u"16.000000");
  EXPECT_EQ(platform::TextOf(count), u"7");
  EXPECT_EQ(platform::AccessibleName(feed), u"TPI");
  EXPECT_EQ(platform::AccessibleName(count), u"Hole count");
}

TEST_F(MadeUpBuilder, KeepsTheUnitAndTheFieldsWhereARecordIsRefused) {
  namespace careful = support::careful;
  careful::Join();
  platform::SetText(careful::kFirst + careful::kWidth, u"1.500");
  FeatureSettings record;
  record.kind = kKindCircular;
  record.metric = 1;
  record.values[careful::kWidth] = 25.4;
  record.values[careful::kHoles] = careful::kUnstored;
  EXPECT_FALSE(OpenBuilder(careful::kBuilder, record));
  EXPECT_FALSE(UnitsMetric());
  EXPECT_EQ(platform::TextOf(careful::kFirst + careful::kWidth), u"1.500");
  EXPECT_EQ(platform::TextOf(careful::kFirst + careful::kHoles), u"2");
}

// Its list shows "Tap": 20 threads an inch are a pitch of 1.27 mm, and a count follows no unit.
TEST_F(MadeUpBuilder, ConvertsTheHiddenPageThatItsListShows) {
  support::bores::Join();
  ASSERT_TRUE(headless::SelectRows(support::bores::kOperation, {support::bores::kTap}));
  EXPECT_EQ(platform::TextOf(support::bores::kFirst + support::bores::kFeed), u"20");
  SetMode(kModeHome);
  SetUnits(true);
  EXPECT_EQ(platform::TextOf(support::bores::kFirst + support::bores::kFeed), u"1.270");
  EXPECT_EQ(platform::TextOf(support::bores::kFirst + support::bores::kNinth), u"4");
  EXPECT_EQ(platform::AccessibleName(support::bores::kFirst + support::bores::kFeed), u"Pitch mm");
  EXPECT_EQ(FieldFallback(support::bores::kFirst + support::bores::kFeed), 1.27);
}

TEST_F(MadeUpBuilder, StartsThePageThatTheUserPicksInTheUnitOfTheForm) {
  support::bores::Join();
  SetUnits(true);
  const int feed = support::bores::kFirst + support::bores::kFeed;
  platform::SetText(feed, u"77");
  ASSERT_TRUE(headless::SelectRows(support::bores::kOperation, {support::bores::kDrill}));
  EXPECT_EQ(platform::TextOf(feed), u"203.20");
  EXPECT_EQ(platform::TextOf(support::bores::kFirst + support::bores::kDepth), u"-12.5");
  EXPECT_EQ(platform::AccessibleName(feed), u"Drill feed");
}

TEST(BuildersDeathTest, StopAtAModeThatHasAPanelAlready) {
  ClearPanels();
  ResetForms();
  RegisterBuilder<support::bores::kBuilder>();
  static const Builder kSecond{.form = kBuilder.form,
                               .mode = support::bores::kMode,
                               .insertKey = kInsert,
                               .write = kBuilder.write};
  EXPECT_EXIT(RegisterBuilder<kSecond>(), testing::ExitedWithCode(kStopExitCode),
              "Two panels stand in mode 91");
  ClearPanels();
  ResetForms();
  ResetBuilders();
  FreeKind(kKindRectangular);
}

constexpr int kOtherKey = kInsert + 1;
constexpr int kLevelPart = 5;
int pressedPart = 0;
// One level line, which lies in the middle of the view.
void DrawLevel(const FormValues&, Picture& picture) {
  AddLine(picture, {0, 0}, {2, 0}, Ink::Feature, kLevelPart);
}
const Builder kPressedBuilder{.form = kBuilder.form,
                              .insertKey = kOtherKey,
                              .write = kBuilder.write,
                              .draw = DrawLevel,
                              .pressed = [](int part) { pressedPart = part; }};

TEST_F(MadeUpBuilder, TellsWhichPartOfItsPictureWasPressed) {
  RegisterBuilder<kPressedBuilder>();
  const platform::Rect place = platform::PlaceOf(kPicture);
  platform::PointerEvent press;
  press.action = platform::PointerAction::Press;
  press.button = platform::PointerButton::Right;
  press.x = platform::RectWidth(place) / 2;
  press.y = platform::RectHeight(place) / 2;
  pressedPart = 0;
  headless::Pointer(kPicture, press);
  EXPECT_EQ(pressedPart, 0);
  press.button = platform::PointerButton::Left;
  headless::Pointer(kPicture, press);
  EXPECT_EQ(pressedPart, kLevelPart);
  press.y = 2;
  headless::Pointer(kPicture, press);
  EXPECT_EQ(pressedPart, kNoPart);
}

// A record in millimetres must not come back as so many inches.
TEST_F(MadeUpBuilder, ReopensABlockOfTheOtherUnitInTheUnitOfTheBlock) {
  SetUnits(true);
  platform::SetText(kFirst + kWidth, u"50");
  platform::SetText(kFirst + kFeed, u"300");
  headless::Click(kInsert);
  EXPECT_NE(Text().find(u"G01 X-50.000 F300.0"), std::u16string::npos);
  SetUnits(false);
  headless::Click(kIdFeatureEdit);
  EXPECT_TRUE(UnitsMetric());
  EXPECT_EQ(platform::TextOf(kFirst + kWidth), u"50.000000");
  headless::Click(kInsert);
  EXPECT_NE(Text().find(u"G01 X-50.000 F300.0"), std::u16string::npos);
  EXPECT_NE(Text().find(u"(GROOVE)\r\nG21"), std::u16string::npos);
  EXPECT_EQ(Text().find(u"(GROOVE)\r\nG20"), std::u16string::npos);
}

TEST_F(MadeUpBuilder, DrawsWhatTheFieldsSay) {
  std::vector<double> lines[2];
  for (int i = 0; i < 2; ++i) {
    platform::SelectRow(kSide, i);
    for (const headless::DrawCall& call : headless::PaintOf(kPicture)) {
      if (call.name == "PaintSegments") lines[i] = call.numbers;
    }
  }
  EXPECT_FALSE(lines[0].empty());
  EXPECT_NE(lines[0], lines[1]);
}

TEST_F(MadeUpBuilder, FollowsTheUnitOfTheApplication) {
  SetUnits(true);
  EXPECT_EQ(platform::TextOf(kFirst + kWidth), u"50.800");
  EXPECT_EQ(platform::TextOf(kFirst + kFeed), u"254.00");
  EXPECT_EQ(platform::TextOf(kFirst + kHoles), u"2");
  FeatureSettings record;
  StoreBuilder(kBuilder, record);
  EXPECT_EQ(record.metric, 1);
}

TEST_F(MadeUpBuilder, IsGoneOnceRoomsAreJoinedAnew) {
  ResetApplication();
  headless::Reset(platform::FromUtf8(home_.string()));
  ASSERT_EQ(StartApplication(), 0);
  for (int i = 0; const Builder* builder = BuilderAt(i); ++i) EXPECT_NE(builder, &kBuilder);
  for (int i = 0; const Form* form = FormAt(i); ++i) EXPECT_NE(form, kBuilder.form);
}

// Plain text of as many units as the field says.
void WriteMuch(const FormValues& v, CodeWriter& out) {
  Put(out, std::u16string(static_cast<std::size_t>(v.numbers[kWidth]), u'G'));
}
const Builder kLongBuilder{.title = u"Groove", .form = kBuilder.form, .write = WriteMuch};

TEST_F(MadeUpBuilder, RefusesCodeThatFindsNoRoomInsteadOfCuttingIt) {
  const std::u16string before = Text();
  platform::SetText(kFirst + kWidth, u"131073");
  headless::TakeBoxes();
  EXPECT_FALSE(InsertFromBuilder(kLongBuilder));
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].title, u"Groove");
  EXPECT_EQ(boxes[0].text, u"The code is larger than 131072 characters. Nothing was inserted.");
  EXPECT_EQ(Text(), before);
  platform::SetText(kFirst + kWidth, u"131072");
  EXPECT_TRUE(InsertFromBuilder(kLongBuilder));
  EXPECT_NE(Text().find(std::u16string(131072, u'G')), std::u16string::npos);
}

}  // namespace
}  // namespace morva
