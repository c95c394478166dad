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
#include "support/workbench.h"

namespace morva {
namespace {

using Builders = support::Workbench;

enum : int { kDepth = 41000, kFeed, kWidth, kHoles, kSide, kPicture, kInsert };
enum Number : int { kDepthNumber, kFeedNumber, kWidthNumber, kHolesNumber };

constexpr Command kCommands[] = {{.id = kInsert,
                                  .words = u"INSERT GROOVE",
                                  .help = u"Write the groove into the program",
                                  .wordsOn = u"UPDATE GROOVE"}};
constexpr const char16_t* kSides[] = {u"Left", u"Right"};
// clang-format off
constexpr FormRow kRows[] = {
    {.kind = RowKind::Choice, .id = kSide, .label = u"Side", .choice = 0, .rows = kSides},
    {.id = kWidth, .label = u"Width", .start = u"2.000", .fallback = 1, .follows = Follows::Length,
     .value = kWidthNumber, .enter = kInsert},
    {.kind = RowKind::Count, .id = kHoles, .label = u"Holes", .start = u"2", .fallback = 1,
     .value = kHolesNumber},
    {.id = kDepth, .label = u"Z depth", .start = u"-0.100", .fallback = -0.1,
     .follows = Follows::Length, .value = kDepthNumber},
    {.id = kFeed, .label = u"Feed", .start = u"10.00", .fallback = 10, .follows = Follows::Length,
     .decimals = 2, .value = kFeedNumber},
    {.kind = RowKind::View, .id = kPicture, .name = u"Groove", .start = u"GroovePicture",
     .least = 120},
    {.kind = RowKind::Keys, .keys = {kInsert}},
};
// clang-format on
constexpr FormLook kLook{};
constexpr Form kForm{.look = &kLook, .rows = kRows, .metric = UnitsMetric};

double Reach(const FormValues& v) {
  return v.choices[0] == 0 ? -v.numbers[kWidthNumber] : v.numbers[kWidthNumber];
}
bool Check(const FormValues& v, int, Refusal& refusal) {
  refusal = {u"Groove", u"Enter a positive feed.", platform::BoxIcon::Warning, kFeed};
  return v.numbers[kFeedNumber] > 0;
}
void Write(const FormValues& v, CodeWriter& out) {
  Line(out, u"");
  Line(out, u"(GROOVE)");
  Put(out, u"G01 X", Reach(v), 3);
  Put(out, u" F", v.numbers[kFeedNumber], 1);
  Line(out, u"");
  PutInteger(out, u"(HOLES ", static_cast<int>(v.numbers[kHolesNumber]));
  Line(out, u")");
}
void Draw(const FormValues& v, Picture& picture) {
  AddLine(picture, {0, 0}, {Reach(v), 0}, Ink::Feature);
}
// A kind that has no builder yet lends its place in the tables.
constexpr Builder kBuilder{.kind = kKindShape,
                           .form = &kForm,
                           .mode = kModeShapes,
                           .insertKey = kInsert,
                           .logged = u"Groove inserted.",
                           .check = Check,
                           .write = Write,
                           .draw = Draw};

struct MadeUpBuilder : Builders {
  void SetUp() override {
    Builders::SetUp();
    AddCommands(kCommands);
    RegisterBuilder<kBuilder>();
    for (int i = 0; i < PanelCount(); ++i) {
      if (PanelAt(i).mode == kModeShapes) PanelAt(i).make();
    }
    SetMode(kModeShapes);
    StartForm(kForm);
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
  EXPECT_NE(Text().find(u"(GROOVE)\r\nG01 X-3.000 F10.0\r\n(HOLES 2)\r\n"), std::u16string::npos);
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

}  // namespace
}  // namespace morva
