// A made-up builder on the whole application: a form, three pure functions and a record make a
// panel, a key, a block that reopens, an update and a live picture.
#include "documents/builder.h"

#include <gtest/gtest.h>

#include "app/commands.h"
#include "app/panels.h"
#include "documents/feature_blocks.h"
#include "documents/feature_operations.h"
#include "documents/insertion.h"
#include "library/units.h"
#include "platform/canvas.h"
#include "platform/listing.h"
#include "shell/modes.h"
#include "support/groove.h"
#include "support/workbench.h"

namespace morva {
namespace {

using namespace support::groove;  // NOLINT: its names are this test's subject

struct MadeUpBuilder : support::Workbench {
  void SetUp() override {
    support::Workbench::SetUp();
    Join();
  }
};

TEST_F(MadeUpBuilder, StandsInThePanelOfItsMode) {
  EXPECT_EQ(app.mode, kModeShapes);
  for (const int id : {kSide, kWidth, kHoles, kDepth, kFeed, kPicture, kInsert}) {
    EXPECT_TRUE(platform::IsVisible(id)) << id;
  }
  EXPECT_EQ(platform::TextOf(kInsert), u"INSERT GROOVE");
  SetMode(kModeHome);
  EXPECT_FALSE(platform::IsVisible(kWidth));
}

TEST_F(MadeUpBuilder, WritesABlockAndTellsAboutIt) {
  platform::SetText(kWidth, u"3");
  headless::Click(kInsert);
  EXPECT_NE(Text().find(u"G01 X-3.000 F10.0\r\n(HOLES 2)\r\n"), std::u16string::npos);
  EXPECT_TRUE(OutputHas(u"Groove inserted."));
  EXPECT_TRUE(app.editorDirty);
}

TEST_F(MadeUpBuilder, RefusesAndChangesNothing) {
  const std::u16string before = Text();
  platform::SetText(kFeed, u"-1");
  headless::TakeBoxes();
  headless::Click(kInsert);
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].title, u"Groove");
  EXPECT_EQ(boxes[0].text, u"Enter a positive feed.");
  EXPECT_EQ(Text(), before);
  EXPECT_EQ(platform::FocusedId(), kFeed);
}

TEST_F(MadeUpBuilder, ReopensItsBlockAndUpdatesItInPlace) {
  platform::SelectRow(kSide, 1);
  platform::SetText(kWidth, u"1.25");
  platform::SetText(kHoles, u"7");
  headless::Click(kInsert);
  SetMode(kModeHome);
  platform::SetText(kWidth, u"9");
  platform::SelectRow(kSide, 0);
  headless::Click(kIdFeatureEdit);
  EXPECT_EQ(app.mode, kModeShapes);
  EXPECT_EQ(platform::TextOf(kWidth), u"1.250000");
  EXPECT_EQ(platform::TextOf(kHoles), u"7");
  EXPECT_EQ(platform::SelectedRow(kSide), 1);
  EXPECT_EQ(platform::TextOf(kInsert), u"UPDATE GROOVE");
  platform::SetText(kWidth, u"4");
  headless::Click(kInsert);
  EXPECT_NE(Text().find(u"G01 X4.000 F10.0"), std::u16string::npos);
  EXPECT_EQ(Text().find(u"G01 X1.250"), std::u16string::npos);
  EXPECT_EQ(platform::TextOf(kInsert), u"INSERT GROOVE");
}

// Fields to record to fields to record: the same bytes.
TEST_F(MadeUpBuilder, KeepsItsRecordThroughTheForm) {
  for (const char16_t* width : {u"0.375", u"2", u"123456.789", u"-0.000001", u"0.1"}) {
    platform::SetText(kWidth, width);
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
  for (const int id : {kSide, kWidth, kHoles, kDepth, kFeed, kPicture, kInsert}) {
    const platform::Rect place = platform::PlaceOf(id);
    EXPECT_TRUE(place.bottom <= view.top || place.left >= view.right) << id;
  }
}

// A builder whose list says which page its form shows; both pages have a number in place 1.
enum : int { kPagedKind = kInsert + 10, kPagedFirst, kPagedSecond, kPagedKey };
constexpr Command kPagedCommands[] = {
    {.id = kPagedKey, .words = u"INSERT PAGED", .help = u"For tests", .wordsOn = u"UPDATE PAGED"}};
constexpr FormRow kPagedRows[] = {
    {.kind = RowKind::Choice, .id = kPagedKind, .label = u"Kind", .choice = 0, .rows = kSides},
    {.id = kPagedFirst, .label = u"First", .start = u"1", .value = 1, .pages = 1},
    {.id = kPagedSecond, .label = u"Second", .start = u"2", .value = 1, .pages = 2},
    {.kind = RowKind::Keys, .keys = {kPagedKey}},
};
constexpr Form kPagedForm{.look = &kLook, .rows = kPagedRows, .metric = UnitsMetric};
constexpr Builder kPagedBuilder{
    .kind = kKindRectangular,
    .title = u"Paged",
    .form = &kPagedForm,
    .page = [] { return platform::SelectedRow(kPagedKind) == 1 ? 1 : 0; },
    .mode = kModeSlot,
    .insertKey = kPagedKey,
    .write = Write};

TEST_F(MadeUpBuilder, OpensTheRecordOnThePageThatItsListChooses) {
  AddCommands(kPagedCommands);
  RegisterBuilder<kPagedBuilder>();
  for (int i = 0; i < PanelCount(); ++i) {
    if (PanelAt(i).mode == kModeSlot) PanelAt(i).make();
  }
  SetMode(kModeSlot);
  ASSERT_TRUE(platform::IsVisible(kPagedFirst));
  FeatureSettings record;
  record.a = 1;
  record.values[1] = 7;
  ASSERT_TRUE(OpenBuilder(kPagedBuilder, record));
  EXPECT_EQ(platform::TextOf(kPagedSecond), u"7.000000");
  EXPECT_EQ(platform::TextOf(kPagedFirst), u"1");
  EXPECT_TRUE(platform::IsVisible(kPagedSecond));
  EXPECT_FALSE(platform::IsVisible(kPagedFirst));
}

constexpr int kOtherKey = kInsert + 1;
constexpr int kLevelPart = 5;
int pressedPart = 0;
// One level line, which lies in the middle of the view.
void DrawLevel(const FormValues&, Picture& picture) {
  AddLine(picture, {0, 0}, {2, 0}, Ink::Feature, kLevelPart);
}
constexpr Builder kPressedBuilder{.form = &kForm,
                                  .insertKey = kOtherKey,
                                  .write = Write,
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
  platform::SetText(kWidth, u"50");
  platform::SetText(kFeed, u"300");
  headless::Click(kInsert);
  EXPECT_NE(Text().find(u"G01 X-50.000 F300.0"), std::u16string::npos);
  SetUnits(false);
  headless::Click(kIdFeatureEdit);
  EXPECT_TRUE(UnitsMetric());
  EXPECT_EQ(platform::TextOf(kWidth), u"50.000000");
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
  EXPECT_EQ(platform::TextOf(kWidth), u"50.800");
  EXPECT_EQ(platform::TextOf(kFeed), u"254.00");
  EXPECT_EQ(platform::TextOf(kHoles), u"2");
  FeatureSettings record;
  StoreBuilder(kBuilder, record);
  EXPECT_EQ(record.metric, 1);
}

TEST_F(MadeUpBuilder, IsGoneOnceRoomsAreJoinedAnew) {
  ResetApplication();
  headless::Reset(platform::FromUtf8(home_.string()));
  ASSERT_EQ(StartApplication(), 0);
  for (int i = 0; const Builder* builder = BuilderAt(i); ++i) EXPECT_NE(builder, &kBuilder);
  for (int i = 0; const Form* form = FormAt(i); ++i) EXPECT_NE(form, &kForm);
}

// Plain text of as many units as the field says.
void WriteMuch(const FormValues& v, CodeWriter& out) {
  Put(out, std::u16string(static_cast<std::size_t>(v.numbers[kWidthNumber]), u'G'));
}
constexpr Builder kLongBuilder{.title = u"Groove", .form = &kForm, .write = WriteMuch};

TEST_F(MadeUpBuilder, RefusesCodeThatFindsNoRoomInsteadOfCuttingIt) {
  const std::u16string before = Text();
  platform::SetText(kWidth, u"131073");
  headless::TakeBoxes();
  EXPECT_FALSE(InsertFromBuilder(kLongBuilder));
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].title, u"Groove");
  EXPECT_EQ(boxes[0].text, u"The code is larger than 131072 characters. Nothing was inserted.");
  EXPECT_EQ(Text(), before);
  platform::SetText(kWidth, u"131072");
  EXPECT_TRUE(InsertFromBuilder(kLongBuilder));
  EXPECT_NE(Text().find(std::u16string(131072, u'G')), std::u16string::npos);
}

}  // namespace
}  // namespace morva
