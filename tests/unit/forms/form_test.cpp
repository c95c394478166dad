// A form of the test's own: made, placed, read, shown, converted and worked by keys.
#include "forms/form.h"

#include <gtest/gtest.h>

#include <ostream>

#include "app/commands.h"
#include "app/router.h"
#include "app/stop.h"
#include "forms/sheet.h"
#include "platform/canvas.h"
#include "platform/control.h"
#include "platform/file.h"
#include "platform/headless/headless.h"
#include "platform/listing.h"
#include "platform/window.h"
#include "support/stage.h"

namespace platform {

bool operator==(const Rect& a, const Rect& b) { return SameRect(a, b); }
void PrintTo(const Rect& r, std::ostream* out) {
  *out << r.left << " " << r.top << " " << r.right << " " << r.bottom;
}

}  // namespace platform

namespace morva {
namespace {

using platform::Rect;

enum : int {
  kHead = 41000,
  kSize,
  kCount,
  kName,
  kItem,
  kNote,
  kList,
  kLog,
  kLow,
  kFirstKey,
  kSecondKey,
  kEndKey,
  kEscape,
  kFrame,
  kPaper,
  kBar,
  kTurn,
};

constexpr Command kCommands[] = {{kFirstKey, u"First", u"Does the first thing", u"First key"},
                                 {kSecondKey, u"Second"},
                                 {kEndKey, u"End"}};
constexpr const char16_t* kItems[] = {u"Circle", u"Square"};

// Page 0 is short, page 1 has the list, page 2 the same size field under another label.
// clang-format off
constexpr FormRow kRows[] = {
    {.kind = RowKind::Head, .id = kHead, .label = u"HEAD", .pages = PageBit(0)},
    {.id = kSize, .label = u"Size", .start = u"0.5", .fallback = {0.25, 6}, .follows = Follows::Length,
     .value = 0, .pages = PageBit(0), .enter = kFirstKey},
    {.id = kSize, .label = u"Radius", .start = u"1", .fallback = 0.25, .follows = Follows::Length,
     .value = 1, .pages = PageBit(2)},
    {.kind = RowKind::Count, .id = kCount, .label = u"Count", .start = u"6", .fallback = 6, .value = 2,
     .pages = PageBit(0)},
    {.kind = RowKind::Words, .id = kName, .label = u"Name", .words = 0,
     .pages = PageBit(0) | PageBit(3), .limit = 5, .keys = {kEndKey}, .keyPages = PageBit(0),
     .shares = {60}},
    {.kind = RowKind::Choice, .id = kItem, .label = u"Item", .choice = 1, .pages = PageBit(0),
     .rows = kItems, .chosen = 1},
    {.kind = RowKind::Note, .id = kNote, .label = u"A note of a few words", .pages = PageBit(0)},
    {.kind = RowKind::List, .id = kList, .label = u"Rows", .pages = PageBit(1), .least = 60},
    {.kind = RowKind::Log, .id = kLog, .name = u"Help", .pages = PageBit(1), .height = 50,
     .yields = true},
    {.kind = RowKind::List, .id = kLow, .name = u"Low", .pages = PageBit(3) | PageBit(4),
     .height = 40, .least = 60, .fillPages = PageBit(4)},
    {.kind = RowKind::Keys, .keys = {kFirstKey, kSecondKey}, .shares = {60, 40}},
};
// clang-format on

bool metric = false;
bool IsMetric() { return metric; }
int pressed = 0;

constexpr FormLook kLook{};
constexpr Form kForm{.look = &kLook, .rows = kRows, .metric = IsMetric, .escape = kEscape};
constexpr Sheet kSheet{.frame = {kFrame, u"TestFrame", u"Frame"},
                       .paper = {kPaper, u"TestPaper", u"Paper"},
                       .bar = {kBar, u"TestBar", u"Bar"},
                       .parent = platform::kMainWindow};
constexpr Form kScrolling{.sheet = &kSheet, .rows = kRows, .metric = IsMetric};

struct FormStage : support::Stage {
  void SetUp() override {
    ClearCommands();
    ClearPanels();
    ResetForms();
    ResetCommandWords();
    AddCommands(kCommands);
    metric = false;
    pressed = 0;
    RegisterForm(kForm);
    for (const int id : {kFirstKey, kEscape}) {
      RegisterCommand(RouterStage::Click, id, platform::kNotifyClick,
                      [](int key, int) { pressed = key; });
    }
  }
  void TearDown() override {
    ResetForms();
    ResetCommandWords();
    ClearPanels();
    ClearCommands();
  }
  static Rect PlaceOf(int id) { return platform::PlaceOf(id); }
};

TEST_F(FormStage, MakesEveryControlOnceAndHidden) {
  MakeForm(kForm);
  MakeForm(kForm);
  for (const int id :
       {kHead, kSize, kCount, kName, kItem, kNote, kList, kLog, kFirstKey, kEndKey}) {
    EXPECT_TRUE(platform::Exists(id)) << id;
    EXPECT_FALSE(platform::IsVisible(id)) << id;
  }
  EXPECT_EQ(platform::TextOf(kFirstKey), u"First");
  EXPECT_EQ(platform::AccessibleName(kFirstKey), u"First key");
  EXPECT_EQ(platform::AccessibleName(kSize), u"Size");
  EXPECT_EQ(platform::RowText(kItem, 1), u"Square");
  EXPECT_EQ(platform::SelectedRow(kItem), 1);
}

// By the look: label 18 and 2 below it, fields 26, keys 26, 4 between rows.
TEST_F(FormStage, PlacesRowsFromTheTopDown) {
  EXPECT_EQ(PlaceForm(kForm, {10, 100, 210, 600}, 2), 180);
  EXPECT_TRUE(platform::IsVisible(kSize));
  EXPECT_EQ(PlaceOf(kSize), (Rect{10, 120, 210, 146}));
  // The label of the row that is shown has the next id behind that of the other row.
  // Both keys: 200 wide less the gap of 4, 60 to 40.
  EXPECT_EQ(PlaceOf(kFirstKey), (Rect{10, 150, 127, 176}));
  EXPECT_EQ(PlaceOf(kSecondKey), (Rect{131, 150, 210, 176}));
  EXPECT_FALSE(platform::IsVisible(kCount));
}

TEST_F(FormStage, PutsAKeyAtTheEndOfItsField) {
  PlaceForm(kForm, {0, 0, 200, 600}, 0);
  const Rect field = PlaceOf(kName);
  EXPECT_EQ(PlaceOf(kEndKey), (Rect{140, field.top, 200, field.bottom}));
  EXPECT_EQ(field.right, 136);
}

// Page 3 has the name without its key and the list at its height, page 4 the list as high as it
// can be: 300 less the keys' 26 and a gap of 4.
TEST_F(FormStage, LetsARowHaveItsKeysOrFillOnSomePagesOnly) {
  PlaceForm(kForm, {0, 0, 200, 300}, 0);
  EXPECT_TRUE(platform::IsVisible(kEndKey));
  PlaceForm(kForm, {0, 0, 200, 300}, 3);
  EXPECT_FALSE(platform::IsVisible(kEndKey));
  EXPECT_EQ(PlaceOf(kName).right, 200);
  EXPECT_EQ(platform::RectHeight(PlaceOf(kLow)), 40);
  PlaceForm(kForm, {0, 0, 200, 300}, 4);
  EXPECT_EQ(PlaceOf(kLow), (Rect{0, 0, 200, 270}));
}

// 400 high: the list has 400 less 20 for its label, 50 and 26 of the others and two gaps of 4.
TEST_F(FormStage, GivesAListWhatTheOthersLeave) {
  PlaceForm(kForm, {0, 0, 200, 400}, 1);
  EXPECT_EQ(PlaceOf(kList), (Rect{0, 20, 200, 316}));
  EXPECT_EQ(PlaceOf(kLog), (Rect{0, 320, 200, 370}));
  EXPECT_EQ(PlaceOf(kSecondKey).bottom, 400);
}

// 144 high: 40 are left for a list that wants 60, so the log gives up 20 of its 50.
TEST_F(FormStage, LetsAYieldingRowShrinkAndGo) {
  PlaceForm(kForm, {0, 0, 200, 144}, 1);
  EXPECT_EQ(PlaceOf(kList), (Rect{0, 20, 200, 80}));
  EXPECT_EQ(PlaceOf(kLog), (Rect{0, 84, 200, 114}));
  PlaceForm(kForm, {0, 0, 200, 110}, 1);
  EXPECT_FALSE(platform::IsVisible(kLog));
  EXPECT_EQ(PlaceOf(kList), (Rect{0, 20, 200, 80}));
  EXPECT_EQ(PlaceOf(kFirstKey).top, 84);
}

TEST_F(FormStage, HidesWhatIsNotOnThePage) {
  PlaceForm(kForm, {0, 0, 200, 400}, 0);
  PlaceForm(kForm, {0, 0, 200, 400}, 1);
  for (const int id : {kHead, kSize, kCount, kName, kItem, kNote, kEndKey}) {
    EXPECT_FALSE(platform::IsVisible(id)) << id;
  }
  EXPECT_TRUE(platform::IsVisible(kFirstKey));
  HideForm(kForm);
  EXPECT_FALSE(platform::IsVisible(kFirstKey));
  EXPECT_FALSE(platform::IsVisible(kList));
}

TEST_F(FormStage, ReadsLaxNumbersWithTheFallbackOfTheUnit) {
  PlaceForm(kForm, {0, 0, 200, 600}, 0);
  platform::SetText(kSize, u"2.5x");
  platform::SetText(kCount, u"abc");
  platform::SetText(kName, u"A b");
  platform::SelectRow(kItem, 0);
  FormValues values;
  ASSERT_TRUE(ReadForm(kForm, 0, Reading::Lax, values));
  EXPECT_EQ(values.numbers[0], 2.5);
  EXPECT_EQ(values.numbers[2], 6);
  EXPECT_EQ(values.choices[1], 0);
  EXPECT_EQ(values.words[0], u"A b");
  EXPECT_FALSE(values.metric);
  platform::SetText(kSize, u"");
  metric = true;
  ASSERT_TRUE(ReadForm(kForm, 0, Reading::Lax, values));
  EXPECT_EQ(values.numbers[0], 6);
  EXPECT_TRUE(values.metric);
}

constexpr FormRow kTurnRows[] = {
    {.id = kTurn, .fallback = 90, .decimals = 4, .value = 3, .optional = true}};
constexpr Form kTurnForm{.rows = kTurnRows};

TEST_F(FormStage, TakesTheFallbackForAnOptionalNumberThatIsLeftOut) {
  RegisterForm(kTurnForm);
  MakeForm(kTurnForm);
  FormValues values;
  EXPECT_TRUE(ReadForm(kTurnForm, 0, Reading::Strict, values));
  EXPECT_EQ(values.numbers[3], 90);
  platform::SetText(kTurn, u"45.5");
  EXPECT_TRUE(ReadForm(kTurnForm, 0, Reading::Strict, values));
  EXPECT_EQ(values.numbers[3], 45.5);
  platform::SetText(kTurn, u"45x");
  EXPECT_FALSE(ReadForm(kTurnForm, 0, Reading::Strict, values));
  EXPECT_EQ(values.refused, 0);
}

TEST_F(FormStage, WritesANumberWithTheDecimalsOfItsField) {
  RegisterForm(kTurnForm);
  EXPECT_EQ(NumberText(kTurn, 1.23456), u"1.2346");
  EXPECT_EQ(NumberText(kSize, 1.23456), u"1.235");
  EXPECT_EQ(NumberText(kFrame, 1), u"");
}

TEST_F(FormStage, RefusesByTheStrictRuleAndSaysWhichRow) {
  MakeForm(kForm);
  FormValues values;
  platform::SetText(kSize, u"0,75");
  EXPECT_FALSE(ReadForm(kForm, 0, Reading::Strict, values));
  EXPECT_EQ(values.refused, 1);
  platform::SetText(kSize, u"0.75");
  platform::SetText(kCount, u"2.5");
  EXPECT_FALSE(ReadForm(kForm, 0, Reading::Strict, values));
  EXPECT_EQ(values.refused, 3);
  platform::SetText(kCount, u"2");
  EXPECT_TRUE(ReadForm(kForm, 0, Reading::Strict, values));
  EXPECT_EQ(values.numbers[2], 2);
}

TEST_F(FormStage, ShowsWhatItRead) {
  MakeForm(kForm);
  FormValues values;
  values.numbers[0] = 0.375;
  values.numbers[2] = 12;
  values.choices[1] = 1;
  values.words[0] = u"abc";
  ShowForm(kForm, 0, values, 4);
  EXPECT_EQ(platform::TextOf(kSize), u"0.3750");
  EXPECT_EQ(platform::TextOf(kCount), u"12");
  EXPECT_EQ(platform::TextOf(kName), u"abc");
  EXPECT_EQ(platform::SelectedRow(kItem), 1);
}

TEST_F(FormStage, StartsInTheUnitThatItIsMadeIn) {
  metric = true;
  MakeForm(kForm);
  EXPECT_EQ(platform::TextOf(kSize), u"12.700");
  EXPECT_EQ(platform::TextOf(kCount), u"6");
  // What is typed stays when the form is brought up again.
  platform::SetText(kSize, u"3");
  PlaceForm(kForm, {0, 0, 200, 600}, 0);
  EXPECT_EQ(platform::TextOf(kSize), u"3");
}

// Page 2 calls the same control by another name and starts it with another text.
TEST_F(FormStage, CallsAControlOfSeveralRowsAsTheRowThatIsShown) {
  PlaceForm(kForm, {0, 0, 200, 600}, 0);
  EXPECT_EQ(platform::AccessibleName(kSize), u"Size");
  PlaceForm(kForm, {0, 0, 200, 600}, 2);
  EXPECT_EQ(platform::AccessibleName(kSize), u"Radius");
  PlaceForm(kForm, {0, 0, 200, 600}, 0);
  EXPECT_EQ(platform::AccessibleName(kSize), u"Size");
}

TEST_F(FormStage, StartsAPageWithItsTextsInItsUnit) {
  PlaceForm(kForm, {0, 0, 200, 600}, 2);
  platform::SetText(kSize, u"7");
  platform::SetText(kCount, u"9");
  StartForm(kForm, 2);
  EXPECT_EQ(platform::TextOf(kSize), u"1");
  EXPECT_EQ(platform::TextOf(kCount), u"9");  // on another page
  metric = true;
  platform::SelectRow(kItem, 0);
  StartForm(kForm, 0);
  EXPECT_EQ(platform::TextOf(kSize), u"12.700");
  EXPECT_EQ(platform::TextOf(kCount), u"6");
  EXPECT_EQ(platform::SelectedRow(kItem), 1);
}

constexpr FormRow kPagedRows[] = {
    {.id = kSize,
     .label = u"Feed",
     .start = u"10",
     .fallback = 10,
     .follows = Follows::Length,
     .decimals = 2,
     .value = 0,
     .pages = PageBit(0)},
    {.id = kSize,
     .label = u"TPI",
     .labelMm = u"Pitch",
     .start = u"20",
     .fallback = 20,
     .follows = Follows::Thread,
     .value = 0,
     .pages = PageBit(1)},
};
int pageUp = 0;
constexpr Form kPagedForm{
    .look = &kLook, .rows = kPagedRows, .page = [] { return pageUp; }, .metric = IsMetric};

// By hand: 8 threads an inch are a pitch of 3.175 mm; 8 inches a minute are 203.20 mm.
TEST_F(FormStage, ConvertsAHiddenControlByTheRowOfThePageThatIsUp) {
  ResetForms();
  RegisterForm(kPagedForm);
  for (const int page : {0, 1}) {
    pageUp = page;
    PlaceForm(kPagedForm, {0, 0, 200, 600});
    HideForm(kPagedForm);
    platform::SetText(kSize, u"8");
    ConvertForms(IsMetric, 25.4);
    EXPECT_EQ(platform::TextOf(kSize), page == 0 ? u"203.20" : u"3.175");
    EXPECT_EQ(RowOfControl(kPagedForm, kSize), page);
    EXPECT_EQ(FieldFallback(kSize), page == 0 ? 10 : 20);
    EXPECT_EQ(NumberText(kSize, 1), page == 0 ? u"1.00" : u"1.000");
  }
  // The words follow the unit, which a conversion by less than 1 leaves again.
  EXPECT_EQ(platform::AccessibleName(kSize), u"Pitch");
  ConvertForms(IsMetric, 1 / 25.4);
  EXPECT_EQ(platform::AccessibleName(kSize), u"TPI");
}

TEST_F(FormStage, SaysWhyAFieldIsNoNumber) {
  MakeForm(kForm);
  FormValues values;
  platform::SetText(kSize, u"0,75");
  platform::SetText(kCount, u"2.5");
  EXPECT_TRUE(ReadForm(kForm, 0, Reading::Lax, values));
  EXPECT_EQ(values.refused, -1);
  EXPECT_EQ(values.misread[0], Misread::NoNumber);
  EXPECT_EQ(values.misread[2], Misread::NotWhole);
  platform::SetText(kSize, u"");
  platform::SetText(kCount, u"2");
  EXPECT_FALSE(ReadForm(kForm, 0, Reading::Strict, values));
  EXPECT_EQ(values.refused, 1);
  EXPECT_EQ(values.misread[0], Misread::Empty);
  constexpr Reading blanks{.strict = true, .rule = {.below = 10, .blanksBehind = true}};
  platform::SetText(kSize, u"9.5 ");
  EXPECT_TRUE(ReadForm(kForm, 0, blanks, values));
  EXPECT_EQ(values.numbers[0], 9.5);
  EXPECT_EQ(values.misread[0], Misread::None);
  platform::SetText(kSize, u"10");
  EXPECT_FALSE(ReadForm(kForm, 0, blanks, values));
  EXPECT_EQ(values.misread[0], Misread::TooLarge);
}

// Lengths are converted, counts are not, and nothing twice.
TEST_F(FormStage, ConvertsValuesThatWereRead) {
  MakeForm(kForm);
  FormValues values;
  EXPECT_TRUE(ReadForm(kForm, 0, Reading::Lax, values));
  for (int again = 0; again < 2; ++again) {
    ConvertValues(kForm, 0, true, values);
    EXPECT_TRUE(values.metric);
    EXPECT_DOUBLE_EQ(values.numbers[0], 12.7);
    EXPECT_EQ(values.numbers[2], 6);
  }
  ConvertValues(kForm, 0, false, values);
  EXPECT_DOUBLE_EQ(values.numbers[0], 0.5);
}

TEST_F(FormStage, CallsAControlByItsLabelOnPagesWhereThatIsEnough) {
  ResetForms();
  static constexpr FormRow rows[] = {{.id = kSize,
                                      .label = u"Center X",
                                      .name = u"Pattern center X",
                                      .namePages = PageBit(1),
                                      .pages = PageBit(0) | PageBit(1)}};
  static constexpr Form form{.look = &kLook, .rows = rows};
  RegisterForm(form);
  MakeForm(form);
  for (const int page : {0, 1, 0}) {
    PlaceForm(form, {0, 0, 200, 100}, page);
    EXPECT_EQ(platform::AccessibleName(kSize), page == 0 ? u"Center X" : u"Pattern center X");
  }
}

TEST_F(FormStage, ShowsNumbersWithTheDecimalsOfTheirRows) {
  RegisterForm(kTurnForm);
  MakeForm(kTurnForm);
  FormValues values;
  values.numbers[3] = 1.23456;
  ShowForm(kTurnForm, 0, values);
  EXPECT_EQ(platform::TextOf(kTurn), u"1.2346");
}

// The size field belongs to two rows and is converted once.
TEST_F(FormStage, ConvertsAControlOfSeveralRowsOnce) {
  PlaceForm(kForm, {0, 0, 200, 600}, 2);
  platform::SetText(kSize, u"2");
  ConvertForms(IsMetric, 25.4);
  EXPECT_EQ(platform::TextOf(kSize), u"50.800");
  ConvertForms(nullptr, 25.4);
  EXPECT_EQ(platform::TextOf(kSize), u"50.800");
}

TEST_F(FormStage, ConvertsNoPartOfATextThatIsNoNumber) {
  PlaceForm(kForm, {0, 0, 200, 600}, 2);
  for (const char16_t* text : {u"12,7", u"abc", u"-.1.5", u"1000000", u" ", u"0.5 in"}) {
    platform::SetText(kSize, text);
    ConvertForms(IsMetric, 25.4);
    EXPECT_EQ(platform::TextOf(kSize), text);
  }
  for (const char16_t* text : {u"0.5", u" 0.5", u"+0.5 ", u".5"}) {
    platform::SetText(kSize, text);
    ConvertForms(IsMetric, 25.4);
    EXPECT_EQ(platform::TextOf(kSize), u"12.700") << platform::ToUtf8(text);
  }
}

TEST_F(FormStage, AnswersEnterAndEscape) {
  PlaceForm(kForm, {0, 0, 200, 600}, 0);
  platform::KeyEvent enter;
  enter.key = platform::kKeyEnter;
  EXPECT_TRUE(FormKey(kSize, enter));
  EXPECT_EQ(pressed, kFirstKey);
  pressed = 0;
  enter.shift = true;
  EXPECT_TRUE(FormKey(kSize, enter));
  EXPECT_EQ(pressed, kFirstKey);
  EXPECT_FALSE(FormKey(kCount, enter));
  platform::KeyEvent escape;
  escape.key = platform::kKeyEscape;
  EXPECT_TRUE(FormKey(kEndKey, escape));
  EXPECT_EQ(pressed, kEscape);
  escape.ctrl = true;
  EXPECT_FALSE(FormKey(kEndKey, escape));
  EXPECT_FALSE(FormKey(12345, enter));
}

// Four wells on the page: two numbers, the name and the list of items.
TEST_F(FormStage, FramesItsWellsAndTheOneWithTheKeyboardBright) {
  PlaceForm(kForm, {0, 0, 200, 600}, 0);
  platform::SetFocusTo(kCount);
  static platform::Events events;
  events.paint = [](int id, platform::Canvas& canvas) { PaintForms(canvas, id); };
  platform::ListenTo(&events);
  int wells = 0;
  int bright = 0;
  for (const headless::DrawCall& call : headless::PaintOf(platform::kMainWindow)) {
    if (call.name != "FrameArea") continue;
    ++wells;
    bright += call.colours.at(0) == kBrightAccent ? 1 : 0;
  }
  EXPECT_EQ(wells, 4);
  EXPECT_EQ(bright, 1);
}

TEST_F(FormStage, OrdersItsControlsAsTheyStandAndEachOnce) {
  int ids[16];
  const int count = FormOrder(kForm, ids, 16);
  const int expected[] = {kSize, kCount, kName, kEndKey,   kItem,
                          kList, kLog,   kLow,  kFirstKey, kSecondKey};
  ASSERT_EQ(count, 10);
  for (int i = 0; i < count; ++i) EXPECT_EQ(ids[i], expected[i]) << i;
}

TEST_F(FormStage, StopsWithWordsWhereTheOrderHasNoRoom) {
  int ids[3];
  EXPECT_EXIT(FormOrder(kForm, ids, 3), testing::ExitedWithCode(3),
              "tab stops is full: it holds 3");
}

TEST_F(FormStage, GivesARowOfASheetWhatIsLeftInSightAndNeverLessThanItsLeast) {
  ResetForms();
  RegisterForm(kScrolling);
  RegisterSheet<kSheet>();
  const auto listHeight = [](int height) {
    PlaceForm(kScrolling, {0, 0, 216, height}, 1);
    return platform::RectHeight(platform::PlaceOf(kList));
  };
  const int most = listHeight(400);
  EXPECT_GT(most, 200);
  EXPECT_EQ(listHeight(300), most - 100);
  EXPECT_EQ(listHeight(60), 60);
  EXPECT_GT(SheetPaper(kSheet).bottom, 60);
  EXPECT_EQ(listHeight(400), most);
}

TEST_F(FormStage, ScrollsASheetByWheelPagesAndFocus) {
  ResetForms();
  RegisterForm(kScrolling);
  RegisterSheet<kSheet>();
  PlaceForm(kScrolling, {0, 0, 216, 100}, 0);
  EXPECT_EQ(platform::PlaceOf(kFrame), (Rect{0, 0, 200, 100}));
  EXPECT_EQ(platform::PlaceOf(kBar), (Rect{200, 0, 216, 100}));
  // A sheet without a height of its own is as high as its rows.
  const int height = SheetPaper(kSheet).bottom;
  EXPECT_GT(height, 150);
  platform::PointerEvent wheel;
  wheel.action = platform::PointerAction::Wheel;
  wheel.wheel = -1;
  EXPECT_TRUE(SheetWheel(kSheet, wheel));
  EXPECT_EQ(SheetTop(kSheet), 36);
  platform::KeyEvent page;
  page.key = platform::kKeyPageUp;
  EXPECT_TRUE(FormKey(kSize, page));
  EXPECT_EQ(SheetTop(kSheet), 0);
  FormFocusChanged(kFirstKey, true);
  EXPECT_GT(SheetTop(kSheet), 0);
  EXPECT_LE(SheetTop(kSheet), height - 100);
}

constexpr FormRow kTwice[] = {{.id = kTurn, .pages = PageBit(0)},
                              {.id = kTurn, .pages = PageBit(0) | PageBit(1)}};
constexpr Form kTwiceForm{.rows = kTwice};
constexpr FormRow kKeyTwice[] = {{.kind = RowKind::Keys, .keys = {kFirstKey}}};
constexpr Form kKeyTwiceForm{.rows = kKeyTwice};
constexpr Sheet kLostSheet{.frame = {kFrame, u"LostFrame", u"Frame"},
                           .paper = {kPaper, u"LostPaper", u"Paper"},
                           .bar = {kBar, u"LostBar", u"Bar"}};
constexpr Form kLostForm{.sheet = &kLostSheet, .rows = kTurnRows};

using FormStageDeathTest = FormStage;

TEST_F(FormStageDeathTest, StopsAtAControlThatIsTaken) {
  EXPECT_EXIT(RegisterForm(kTwiceForm), testing::ExitedWithCode(kStopExitCode),
              "Control 41016 stands on two rows of one page");
  EXPECT_EXIT(RegisterForm(kKeyTwiceForm), testing::ExitedWithCode(kStopExitCode),
              "Control 41009 stands on two forms");
}

TEST_F(FormStageDeathTest, StopsAtASheetThatNobodyHearsOrThatStandsNowhere) {
  RegisterForm(kLostForm);
  EXPECT_EXIT(MakeForm(kLostForm), testing::ExitedWithCode(kStopExitCode),
              "The sheet LostFrame is not registered");
  RegisterSheet<kLostSheet>();
  EXPECT_EXIT(MakeForm(kLostForm), testing::ExitedWithCode(kStopExitCode),
              "The sheet LostFrame has no parent");
}

// Of two forms on one sheet one is up: it begins at its top and hides the other's frame with it.
TEST_F(FormStage, SharesASheetWithAnotherForm) {
  ResetForms();
  static constexpr Form second{.sheet = &kSheet, .rows = kTurnRows};
  RegisterForm(kScrolling);
  RegisterForm(second);
  RegisterSheet<kSheet>();
  PlaceForm(kScrolling, {0, 0, 216, 100}, 0);
  ScrollSheet(kSheet, 40);
  ASSERT_EQ(SheetTop(kSheet), 40);
  HideForm(second);
  EXPECT_TRUE(platform::IsVisible(kFrame));
  PlaceForm(kScrolling, {0, 0, 216, 100}, 0);
  EXPECT_EQ(SheetTop(kSheet), 40);
  PlaceForm(second, {0, 0, 216, 100});
  HideForm(kScrolling);
  EXPECT_TRUE(platform::IsVisible(kFrame));
  EXPECT_TRUE(platform::IsVisible(kTurn));
  EXPECT_FALSE(platform::IsVisible(kCount));
  EXPECT_EQ(SheetTop(kSheet), 0);
  HideForm(second);
  EXPECT_FALSE(platform::IsVisible(kFrame));
}

// Forms that take turns on one sheet may have the same key: it stands on the one that is up, and
// Tab reaches it where that form has it.
TEST_F(FormStage, SharesAKeyWithAnotherFormOnTheSameSheet) {
  ResetForms();
  static constexpr FormRow first[] = {{.id = kCount}, {.kind = RowKind::Keys, .keys = {kFirstKey}}};
  static constexpr FormRow second[] = {
      {.id = kSize}, {.id = kTurn}, {.kind = RowKind::Keys, .keys = {kFirstKey}}};
  static constexpr Form one{.sheet = &kSheet, .rows = first};
  static constexpr Form other{.sheet = &kSheet, .rows = second};
  RegisterForm(one);
  RegisterForm(other);
  RegisterSheet<kSheet>();
  MakeForm(one);
  MakeForm(other);
  PlaceForm(one, {0, 0, 216, 400});
  HideForm(other);
  EXPECT_TRUE(platform::IsVisible(kFirstKey));
  PlaceForm(other, {0, 0, 216, 400});
  HideForm(one);
  EXPECT_TRUE(platform::IsVisible(kFirstKey));
  headless::Focus(kTurn);
  platform::KeyEvent tab;
  tab.key = platform::kKeyTab;
  headless::PressKey(tab);
  EXPECT_EQ(platform::FocusedId(), kFirstKey);
  HideForm(one);
  HideForm(other);
  EXPECT_FALSE(platform::IsVisible(kFirstKey));
}

// Half rows that follow each other share a line; one that is left over stands alone in its column.
// What is fixed stands below what scrolls and takes what that leaves.
constexpr FormRow kHalves[] = {
    {.id = kSize, .label = u"Size", .half = true},
    {.id = kCount, .label = u"Count", .pages = PageBit(0), .half = true},
    {.id = kTurn, .label = u"Turn", .half = true},
    {.kind = RowKind::Keys, .keys = {kFirstKey}},
    {.kind = RowKind::View, .id = kList, .className = u"TestFixed", .least = 60, .fixed = true},
    {.kind = RowKind::Keys, .keys = {kSecondKey}, .fixed = true}};
constexpr FormLook kHalvesLook{.edge = 10, .labels = Labels::None};
constexpr Form kHalvesForm{.look = &kHalvesLook, .sheet = &kSheet, .rows = kHalves};

TEST_F(FormStage, PutsHalfRowsSideBySide) {
  ResetForms();
  RegisterForm(kHalvesForm);
  RegisterSheet<kSheet>();
  PlaceForm(kHalvesForm, {0, 0, 216, 400}, 0);
  const Rect size = platform::PlaceOf(kSize);
  const Rect count = platform::PlaceOf(kCount);
  EXPECT_EQ(size, (Rect{10, 0, 96, 26}));
  EXPECT_EQ(count, (Rect{104, 0, 190, 26}));
  EXPECT_EQ(platform::PlaceOf(kTurn), (Rect{10, 30, 96, 56}));
  EXPECT_EQ(platform::PlaceOf(kFirstKey), (Rect{10, 60, 190, 86}));
  // On the other page the third takes the place of the second.
  PlaceForm(kHalvesForm, {0, 0, 216, 400}, 1);
  EXPECT_FALSE(platform::IsVisible(kCount));
  EXPECT_EQ(platform::PlaceOf(kTurn), count);
  EXPECT_EQ(platform::PlaceOf(kFirstKey).top, 30);
}

TEST_F(FormStage, KeepsFixedRowsBelowWhatScrolls) {
  ResetForms();
  RegisterForm(kHalvesForm);
  RegisterSheet<kSheet>();
  PlaceForm(kHalvesForm, {0, 100, 216, 500}, 0);
  EXPECT_EQ(platform::PlaceOf(kFrame), (Rect{0, 100, 200, 186}));
  // As wide as the rows above it.
  EXPECT_FALSE(SheetScrolls(kSheet));
  EXPECT_EQ(platform::PlaceOf(kList), (Rect{10, 190, 190, 470}));
  EXPECT_EQ(platform::PlaceOf(kSecondKey), (Rect{10, 474, 190, 500}));
  // Too little room: the view keeps its least, and the rest scrolls, with a bar beside it.
  PlaceForm(kHalvesForm, {0, 100, 216, 250}, 0);
  EXPECT_EQ(platform::PlaceOf(kList), (Rect{10, 160, 206, 220}));
  EXPECT_EQ(platform::PlaceOf(kSecondKey), (Rect{10, 224, 206, 250}));
  EXPECT_EQ(platform::PlaceOf(kFrame), (Rect{0, 100, 200, 156}));
  ScrollSheet(kSheet, 1000);
  EXPECT_EQ(SheetTop(kSheet), 30);
  // The keyboard on a fixed key scrolls nothing.
  FormFocusChanged(kSecondKey, true);
  EXPECT_EQ(SheetTop(kSheet), 30);
  HideForm(kHalvesForm);
  for (const int id : {int{kList}, int{kSecondKey}, int{kFrame}}) {
    EXPECT_FALSE(platform::IsVisible(id)) << id;
  }
}

// A row that takes what is left takes all of it, so nothing is left to scroll.
TEST_F(FormStage, LeavesNothingToScrollWhereARowFillsTheSheet) {
  ResetForms();
  RegisterForm(kScrolling);
  RegisterSheet<kSheet>();
  PlaceForm(kScrolling, {0, 0, 216, 400}, 1);
  ScrollSheet(kSheet, 40);
  EXPECT_EQ(SheetTop(kSheet), 0);
}

}  // namespace
}  // namespace morva
