// The mode of the machining wizard on the whole application.

#include "builders/wizard/wizard_panel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <vector>

#include "app/commands.h"
#include "app/hooks.h"
#include "app/palette.h"
#include "builders/wizard/wizard_text.h"
#include "documents/program_tabs.h"
#include "library/tools.h"
#include "library/units.h"
#include "platform/listing.h"
#include "platform/window.h"
#include "shell/modes.h"
#include "simulator/shown_path.h"
#include "simulator/view_parts.h"
#include "support/workbench.h"
#include "text/codetext.h"

namespace morva {
namespace {

using Texts = std::vector<std::u16string>;

struct WizardPanel : support::Workbench {
  void SetUp() override {
    support::Workbench::SetUp();
    headless::Advance(200);  // the program has its markers
    SetMode(kModeWizard);
  }
  static int Field(int number) { return kIdWizardField + number; }
  static void Type(int number, const char16_t* text) { headless::TypeInto(Field(number), text); }
  static Texts Fields() {
    Texts texts;
    for (int i = 0; i < kWizardNumbers; ++i) texts.push_back(platform::TextOf(Field(i)));
    return texts;
  }
  static Texts Labels() {
    Texts names;
    for (int i = 0; i < kWizardNumbers; ++i) names.push_back(platform::AccessibleName(Field(i)));
    return names;
  }
  static void Choose(int kind) { headless::SelectRows(kIdWizardCombo, {kind}); }
  static void Insert() { headless::Click(kIdWizardInsert); }
  static bool Has(std::u16string_view code) { return Text().find(code) != std::u16string::npos; }
  static bool PictureSays(std::u16string_view words) {
    for (const headless::DrawCall& call : headless::PaintOf(kViewWizardPicture)) {
      if (call.text == words) return true;
    }
    return false;
  }
  static void AddRated(int number, int rpm, double feed) {
    ToolRecord tool;
    tool.number = tool.hOffset = number;
    tool.maxRpm = rpm;
    tool.feed = tool.plunge = feed;
    ASSERT_GE(AppendTool(tool), 0);
    RefreshToolLists();
  }
  static void AddTool(int number, double diameter) {
    ToolRecord tool;
    tool.number = number;
    tool.diameter = diameter;
    ASSERT_GE(AppendTool(tool), 0);
    RefreshToolLists();
  }
};

TEST_F(WizardPanel, NamesItsTenFieldsByOperationAndUnit) {
  const Texts face = {u"Tool #",  u"Work offset", u"RPM",   u"Cut feed", u"Safe Z",
                      u"Depth Z", u"X min",       u"Y min", u"X max",    u"Y max"};
  const Texts slot = {u"Tool #",  u"Work offset", u"RPM",     u"Cut feed", u"Safe Z",
                      u"Depth Z", u"X start",     u"Y start", u"X end",    u"Y end"};
  const Texts drill = {u"Tool #",  u"Work offset", u"RPM",     u"Feed",       u"Safe Z",
                       u"Depth Z", u"X start",     u"Y start", u"Hole count", u"X spacing"};
  const Texts peck = {u"Tool #",  u"Work offset", u"RPM",     u"Feed",   u"Safe Z",
                      u"Depth Z", u"X start",     u"Y start", u"Peck Q", u"Hole count"};
  const Texts tap = {u"Tool #",  u"Work offset", u"RPM",     u"TPI",        u"Safe Z",
                     u"Depth Z", u"X start",     u"Y start", u"Hole count", u"X spacing"};
  const Texts* const wanted[] = {&face, &slot, &drill, &peck, &tap};
  EXPECT_EQ(Labels(), face);
  for (int kind = 1; kind < kWizardKinds; ++kind) {
    Choose(kind);
    EXPECT_EQ(Labels(), *wanted[kind]) << kind;
  }
  SetUnits(true);
  EXPECT_EQ(platform::AccessibleName(Field(kWizardFeed)), u"Pitch mm");
  SetUnits(false);
  EXPECT_EQ(Labels(), tap);
}

TEST_F(WizardPanel, StartsEachOperationWithItsTexts) {
  const Texts wanted[] = {
      {u"0", u"G54", u"1500", u"12.0", u"0.500", u"-0.010", u"0.000", u"0.000", u"4.000", u"0.400"},
      {u"0", u"G54", u"1500", u"12.0", u"0.500", u"-0.125", u"0.000", u"0.000", u"4.000", u"0.000"},
      {u"0", u"G54", u"1500", u"12.0", u"0.500", u"-0.500", u"0.000", u"0.000", u"4", u"1.000"},
      {u"0", u"G54", u"1500", u"12.0", u"0.500", u"-0.750", u"0.000", u"0.000", u"0.100", u"4"},
      {u"0", u"G54", u"500", u"20", u"0.500", u"-0.500", u"0.000", u"0.000", u"4", u"1.000"}};
  for (int kind = kWizardKinds - 1; kind >= 0; --kind) {
    Choose(kind);
    EXPECT_EQ(Fields(), wanted[kind]) << kind;
  }
}

// 25.4 times each length and feed; speed, counts and offset stay; threads become a pitch.
TEST_F(WizardPanel, StartsEachOperationConvertedInMillimetres) {
  SetUnits(true);
  const Texts wanted[] = {
      {u"0", u"G54", u"1500", u"304.80", u"12.700", u"-0.254", u"0.000", u"0.000", u"101.600",
       u"10.160"},
      {u"0", u"G54", u"1500", u"304.80", u"12.700", u"-3.175", u"0.000", u"0.000", u"101.600",
       u"0.000"},
      {u"0", u"G54", u"1500", u"304.80", u"12.700", u"-12.700", u"0.000", u"0.000", u"4",
       u"25.400"},
      {u"0", u"G54", u"1500", u"304.80", u"12.700", u"-19.050", u"0.000", u"0.000", u"2.540", u"4"},
      {u"0", u"G54", u"500", u"1.270", u"12.700", u"-12.700", u"0.000", u"0.000", u"4", u"25.400"}};
  for (int kind = kWizardKinds - 1; kind >= 0; --kind) {
    Choose(kind);
    EXPECT_EQ(Fields(), wanted[kind]) << kind;
  }
}

TEST_F(WizardPanel, ConvertsWhatIsTypedByItsOwnUnitKeys) {
  Choose(kWizardPeck);
  Type(kWizardDepth, u"-1");
  Type(kWizardX, u"");
  Type(kWizardOffset, u"G55 P1");
  ASSERT_TRUE(headless::Click(kIdBuilderMm));
  EXPECT_EQ(platform::TextOf(kIdBuilderMm), u"MM *");
  EXPECT_EQ(platform::TextOf(Field(kWizardDepth)), u"-25.400");
  EXPECT_EQ(platform::TextOf(Field(kWizardX)), u"");
  EXPECT_EQ(platform::TextOf(Field(kWizardOffset)), u"G55 P1");
  EXPECT_EQ(platform::TextOf(Field(kWizardTenth)), u"4");
  EXPECT_EQ(platform::TextOf(kIdStatusLine), u"Units switched to MM (G21). Tool inputs converted.");
  ASSERT_TRUE(headless::Click(kIdBuilderInch));
  EXPECT_EQ(platform::TextOf(Field(kWizardDepth)), u"-1.000");
  EXPECT_EQ(platform::TextOf(kIdBuilderInch), u"INCH *");
}

// A thread of nothing has no pitch: the text stays, and the check refuses it.
TEST_F(WizardPanel, LeavesAThreadOfNothingAsItIs) {
  Choose(kWizardTap);
  for (const char16_t* text : {u"0", u"-20", u"abc"}) {
    Type(kWizardFeed, text);
    SetUnits(!UnitsMetric());
    EXPECT_EQ(platform::TextOf(Field(kWizardFeed)), text);
    Insert();
    EXPECT_EQ(headless::TakeBoxes().size(), 1u);
    EXPECT_FALSE(Has(u"(WIZARD:"));
  }
}

TEST_F(WizardPanel, ChoosesTheOperationByItsCardToo) {
  for (int kind = kWizardKinds - 1; kind >= 0; --kind) {
    const int card = kIdWizardKindFirst + kind;
    ASSERT_TRUE(headless::Click(card));
    EXPECT_EQ(ChosenWizardKind(), kind);
    EXPECT_EQ(platform::TextOf(card), WizardKinds()[static_cast<std::size_t>(kind)]);
    for (int other = 0; other < kWizardKinds; ++other) {
      headless::ControlInfo info;
      ASSERT_TRUE(headless::Describe(kIdWizardKindFirst + other, info));
      EXPECT_EQ(info.checked, other == kind) << other;
    }
  }
}

TEST_F(WizardPanel, KeepsTheFieldsOfTheOperationThatIsChosenAlready) {
  Choose(kWizardSlot);
  Type(kWizardDepth, u"-0.2");
  headless::Click(kIdWizardKindFirst + kWizardSlot);
  EXPECT_EQ(platform::TextOf(Field(kWizardDepth)), u"-0.2");
  SetMode(kModeHome);
  SetMode(kModeWizard);
  EXPECT_EQ(platform::TextOf(Field(kWizardDepth)), u"-0.2");
}

TEST_F(WizardPanel, ReadsAToolThatIsNoNumberAsOneAndSaysSo) {
  Choose(kWizardSlot);
  for (const char16_t* text : {u"abc", u""}) {
    Type(kWizardTool, text);
    Insert();
    EXPECT_TRUE(Has(u"\r\nT1 M06\r\nS1500 M03\r\nG54\r\nG00 G43 H01 Z0.500\r\n"));
    EXPECT_TRUE(OutputHas(u"Tool # is not a whole number: 1 was used."));
    ASSERT_TRUE(platform::UndoEditor(kIdEditor));
    platform::SetText(kIdOutputLog, u"");
  }
  Type(kWizardTool, u"0");
  Insert();
  EXPECT_TRUE(Has(u"(KEEP CURRENT TOOL AND LENGTH OFFSET)"));
  EXPECT_FALSE(OutputHas(u"was used"));
}

// A part of a number would cut somewhere else, with another tool, or at another speed.
TEST_F(WizardPanel, RefusesHalfNumbersByTheirNames) {
  Choose(kWizardDrill);
  const std::u16string before = Text();
  constexpr int kNumbers[] = {kWizardTool, kWizardRpm, kWizardFeed,  kWizardSafeZ, kWizardDepth,
                              kWizardX,    kWizardY,   kWizardNinth, kWizardTenth};
  for (const int field : kNumbers) {
    const std::u16string text = platform::TextOf(Field(field));
    const std::u16string name = platform::AccessibleName(Field(field));
    for (const char16_t* half : {u"1/2", u"1e3", u"0,5", u"1,500", u"4 in", u"5-", u"1000000"}) {
      Type(field, half);
      Insert();
      const auto boxes = headless::TakeBoxes();
      ASSERT_EQ(boxes.size(), 1u) << field << platform::ToUtf8(half);
      EXPECT_EQ(boxes[0].title, u"Machining Wizard");
      EXPECT_EQ(boxes[0].text.find(name + u" holds no usable number."), 0u);
      EXPECT_EQ(platform::FocusedId(), Field(field));
      EXPECT_EQ(platform::TextOf(Field(field)), half);
    }
    Type(field, text.c_str());
  }
  EXPECT_EQ(Text(), before);
  Type(kWizardDepth, u"-0.5 ");  // a blank behind a number cannot be seen
  Insert();
  EXPECT_TRUE(headless::TakeBoxes().empty());
  EXPECT_TRUE(Has(u"G81 Z-0.500 R0.100"));
}

TEST_F(WizardPanel, TellsWhatEmptyFieldsCountAs) {
  Choose(kWizardSlot);
  for (int field : {kWizardRpm, kWizardFeed, kWizardSafeZ, kWizardY}) Type(field, u"");
  Insert();
  EXPECT_TRUE(headless::TakeBoxes().empty());
  EXPECT_TRUE(
      Has(u"S1500 M03\r\nG54\r\nG00 Z0.500\r\nM08\r\nG00 X0.000 Y0.000\r\nG01 Z-0.125 "
          u"F6.0\r\nG01 X4.000 Y0.000 F12.0\r\n"));
  for (const char16_t* words :
       {u"RPM is not a whole number: 1500 was used.", u"Cut feed is not a number: 12.00 was used.",
        u"Safe Z is not a number: 0.500 was used.", u"Y start is not a number: 0.000 was used."}) {
    EXPECT_TRUE(OutputHas(words)) << platform::ToUtf8(words);
  }
}

TEST_F(WizardPanel, TellsWhereAllHolesLieInOnePlace) {
  Choose(kWizardDrill);
  Insert();
  Type(kWizardTenth, u"0.0004");
  Type(kWizardNinth, u"1");
  Insert();
  EXPECT_FALSE(OutputHas(u"holes lie in one place"));
  Type(kWizardNinth, u"3");
  Insert();
  EXPECT_TRUE(OutputHas(u"All 3 holes lie in one place. Check the X spacing."));
}

TEST_F(WizardPanel, WritesTheWorkOffsetAsTyped) {
  Choose(kWizardSlot);
  Type(kWizardOffset, u"G154 P7 (FIXTURE)");
  Insert();
  EXPECT_TRUE(Has(u"S1500 M03\r\nG154 P7 (FIXTURE)\r\nG00 Z0.500\r\n"));
}

TEST_F(WizardPanel, TakesFourHundredHolesAndNotOneMore) {
  Choose(kWizardDrill);
  Type(kWizardNinth, u"401");
  Insert();
  EXPECT_EQ(headless::TakeBoxes().size(), 1u);
  EXPECT_FALSE(Has(u"(WIZARD:"));
  EXPECT_EQ(platform::FocusedId(), Field(kWizardNinth));
  Type(kWizardNinth, u"400");
  Insert();
  EXPECT_TRUE(headless::TakeBoxes().empty());
  EXPECT_TRUE(Has(u"X399.000 Y0.000\r\nG80\r\n"));
}

TEST_F(WizardPanel, InsertsBehindTheLineOfTheCaretAsOneChange) {
  platform::SetEditorText(kIdEditor, u"G90\r\nM01\r\nM30\r\n");
  headless::EditorSelect(kIdEditor, 5, 5);
  Choose(kWizardSlot);
  Insert();
  EXPECT_EQ(Text().substr(0, 26), u"G90\r\nM01\r\n(WIZARD: SLOT)\r\n");
  EXPECT_TRUE(app.editorDirty);
  EXPECT_TRUE(
      OutputHas(u"Wizard block inserted. Verify tool, offset, workholding, and Graphics "
                u"mode before running."));
  ASSERT_TRUE(platform::UndoEditor(kIdEditor));
  EXPECT_EQ(Text(), u"G90\r\nM01\r\nM30\r\n");
}

// Behind M30 nothing runs: a box asks, and Cancel leaves everything as it is.
TEST_F(WizardPanel, AsksBeforeItWritesWhereNothingRuns) {
  platform::SetEditorText(kIdEditor, u"G90\r\nM30\r\n");
  headless::Advance(200);
  const std::u16string before = Text();
  const int end = static_cast<int>(before.size());
  headless::EditorSelect(kIdEditor, end, end);
  Choose(kWizardSlot);
  headless::QueueAnswer(platform::BoxAnswer::Cancel);
  Insert();
  ASSERT_EQ(headless::TakeBoxes().size(), 1u);
  EXPECT_EQ(Text(), before);
}

TEST_F(WizardPanel, OpensTheGuidedSkimInPlaceOfAFace) {
  static int opened;
  opened = 0;
  const std::u16string before = Text();
  hooks.openSkim = [] { return ++opened > 0; };
  Type(kWizardNinth, u"no number");
  Insert();
  EXPECT_EQ(opened, 1);
  EXPECT_EQ(Text(), before);
  EXPECT_TRUE(headless::TakeBoxes().empty());
  Choose(kWizardSlot);
  Insert();
  EXPECT_EQ(opened, 1);
}

TEST_F(WizardPanel, DrawsWhatIsTyped) {
  Choose(kWizardDrill);
  EXPECT_TRUE(PictureSays(u"3\u00D7 1.000"));
  Type(kWizardTenth, u"0.75");
  EXPECT_TRUE(PictureSays(u"3\u00D7 0.750"));
  Type(kWizardDepth, u"-0.625");
  EXPECT_TRUE(PictureSays(u"Z -0.625"));
  SetUnits(true);
  EXPECT_TRUE(PictureSays(u"3\u00D7 19.05"));
}

TEST_F(WizardPanel, DrawsTheDiameterOfTheLibrarysTool) {
  Choose(kWizardDrill);
  Type(kWizardTool, u"7");
  EXPECT_FALSE(PictureSays(u"4\u00D7 \u00D80.250"));
  AddTool(7, 0.25);
  EXPECT_TRUE(PictureSays(u"4\u00D7 \u00D80.250"));
}

TEST_F(WizardPanel, DrawsWhateverStandsInTheFields) {
  const char16_t* const texts[] = {u"",       u"abc",     u"1/2",       u"0,5",         u"1e3",
                                   u"-5",     u"1000000", u"-99999999", u"99999999999", u"0.000001",
                                   u"400000", u"."};
  for (int kind = 0; kind < kWizardKinds; ++kind) {
    Choose(kind);
    for (int field = 0; field < kWizardNumbers; ++field) {
      const std::u16string before = platform::TextOf(Field(field));
      for (const char16_t* text : texts) {
        Type(field, text);
        EXPECT_FALSE(headless::PaintOf(kViewWizardPicture).empty());
      }
      Type(field, before.c_str());
    }
  }
}

// The example of the operation that is chosen, in the unit that is in force.
TEST_F(WizardPanel, PlaysTheExampleOfTheOperation) {
  EXPECT_TRUE(ExampleIsShown());
  EXPECT_TRUE(ShownPath().play.playing);
  std::set<std::vector<double>> ways;
  for (int kind = 0; kind < kWizardKinds; ++kind) {
    Choose(kind);
    EXPECT_TRUE(ExampleIsShown());
    EXPECT_EQ(ShownPath().play.playHead, 1);
    std::vector<double> way;
    for (int i = 0; i < ShownPath().path.count; ++i) way.push_back(ShownPath().path.points[i].z);
    EXPECT_TRUE(ways.insert(way).second) << kind;
  }
  const double inch = ShownPath().path.points[2].x;
  SetUnits(true);
  EXPECT_NEAR(ShownPath().path.points[2].x, inch * 25.4, 1e-9);
  headless::Advance(400);
  EXPECT_GT(ShownPath().play.segmentFraction + ShownPath().play.playHead, 1);
}

TEST_F(WizardPanel, TakesTheExampleAwayHoweverTheModeIsLeft) {
  const auto leave = [](auto how) {
    SetMode(kModeWizard);
    EXPECT_TRUE(ExampleIsShown());
    how();
    EXPECT_FALSE(ExampleIsShown());
    EXPECT_EQ(ShownOwner(), PathOwner::Program);
    EXPECT_EQ(ShownPath().view.zoom, 1);
  };
  leave([] { headless::Click(kIdBack); });
  leave([] { headless::SelectRows(kIdModeList, {0}); });
  leave([] { SetMode(kModeSimulator); });
  leave([] { SetMode(kModeFind); });
  leave([] { headless::Click(kIdSurfaceCad); });
  headless::Click(kIdSurfaceCode);
  EXPECT_TRUE(ExampleIsShown());
  leave([] { SetMode(kModeCircular); });
}

TEST_F(WizardPanel, KeepsTheExampleWhileProgramsChange) {
  headless::Click(kIdNew);
  EXPECT_TRUE(ExampleIsShown());
  SwitchTab(0);
  EXPECT_TRUE(ExampleIsShown());
  headless::Click(kIdCompareSecond);
  headless::Click(kIdCompareSecond);
  EXPECT_TRUE(ExampleIsShown());
  Choose(kWizardTap);
  Insert();
  headless::Advance(1000);
  EXPECT_TRUE(ExampleIsShown());
  EXPECT_TRUE(ShownPath().play.playing);
  headless::Click(kIdPath);
  EXPECT_TRUE(ExampleIsShown());
}

// In a small view the cube would cover half of the example: it stands back for it.
TEST_F(WizardPanel, ShowsTheExampleInASmallViewWithoutTheCube) {
  const auto cube = [] { return CubeFits(CubeClient(platform::ClientArea(kViewToolpath))); };
  EXPECT_TRUE(cube());
  headless::Resize(1470, 800);  // just room for a view between editor and panel
  EXPECT_FALSE(cube());
  const platform::Rect view = platform::ClientArea(kViewToolpath);
  platform::PointerEvent press;
  press.action = platform::PointerAction::Press;
  press.button = platform::PointerButton::Left;
  press.x = view.right - 84;
  press.y = 76;
  headless::Pointer(kViewToolpath, press);
  EXPECT_FALSE(viewCube.running);
  press.action = platform::PointerAction::Release;
  headless::Pointer(kViewToolpath, press);
  SetMode(kModeHome);
  EXPECT_TRUE(cube());
}

// The tool of the example stands above the stock, so the words of the stock stand below it.
TEST_F(WizardPanel, WritesTheSizeOfTheExamplesStockBelowIt) {
  double lowest = 0;
  double words = 0;
  const auto look = [&] {
    lowest = words = 0;
    for (const headless::DrawCall& call : headless::PaintOf(kViewToolpath)) {
      if (call.text.substr(0, 14) == u"STOCK ENVELOPE") words = call.numbers.at(1);
      const bool stock = call.name == "PaintSegments" && call.colours.at(0) == kPathStock;
      for (int i = 0; stock && i < 12; ++i) {
        lowest = std::max({lowest, call.numbers.at(i * 4 + 1), call.numbers.at(i * 4 + 3)});
      }
    }
  };
  for (const int width : {1560, 1200}) {
    headless::Resize(width, width == 1200 ? 800 : 940);
    look();
    EXPECT_GT(lowest, 0);
    EXPECT_GT(words, lowest) << width;
  }
}

// The view stands beside the form, so that it has the whole panel.
TEST_F(WizardPanel, ShowsEveryFieldAtOnceInASmallWindow) {
  for (const int width : {1200, 1560}) {
    headless::Resize(width, width == 1200 ? 800 : 940);
    const platform::Rect frame = platform::PlaceInMainWindow(kViewBuilder);
    for (int i = 0; i < kWizardNumbers; ++i) {
      const platform::Rect field = platform::PlaceInMainWindow(Field(i));
      EXPECT_GE(field.top, frame.top) << i;
      EXPECT_LE(field.bottom, frame.bottom) << i;
    }
    EXPECT_LE(platform::PlaceInMainWindow(kIdBuilderInch).bottom, frame.bottom);
    // Below the fields, not among them.
    for (const int id : {kViewWizardPicture, kIdWizardInsert}) {
      EXPECT_GE(platform::PlaceInMainWindow(id).top, frame.bottom) << id;
    }
    EXPECT_LE(platform::PlaceInMainWindow(kViewToolpath).right, frame.left);
  }
}

TEST_F(WizardPanel, TakesNumberSpeedAndFeedFromTheLibrary) {
  ToolRecord tool;
  tool.number = 7;
  CopyBounded(tool.name, kToolNameUnits, u"MILL");
  tool.maxRpm = 3000;
  tool.feed = 8;
  tool.plunge = 4;
  AppendTool(tool);
  RefreshToolLists();
  Choose(kWizardSlot);
  EXPECT_EQ(platform::RowText(kIdWizardTools, platform::SelectedRow(kIdWizardTools)),
            u"Current tool");
  headless::SelectRows(kIdWizardTools, {1});
  EXPECT_EQ(platform::RowText(kIdWizardTools, 1), u"T07  MILL");
  EXPECT_EQ(platform::TextOf(Field(kWizardTool)), u"7");
  EXPECT_EQ(platform::TextOf(Field(kWizardRpm)), u"3000");
  EXPECT_EQ(platform::TextOf(Field(kWizardFeed)), u"8.00");
  Choose(kWizardDrill);
  EXPECT_EQ(platform::SelectedRow(kIdWizardTools), 0) << "the fields start anew";
  headless::SelectRows(kIdWizardTools, {1});
  EXPECT_EQ(platform::TextOf(Field(kWizardFeed)), u"4.00") << "down alone";
  Choose(kWizardTap);
  headless::SelectRows(kIdWizardTools, {1});
  EXPECT_EQ(platform::TextOf(Field(kWizardRpm)), u"3000");
  EXPECT_EQ(platform::TextOf(Field(kWizardFeed)), u"20") << "threads an inch";
  SetUnits(true);
  Choose(kWizardSlot);
  headless::SelectRows(kIdWizardTools, {1});
  EXPECT_EQ(platform::TextOf(Field(kWizardFeed)), u"203.20");
  headless::SelectRows(kIdWizardTools, {0});
  EXPECT_EQ(platform::TextOf(Field(kWizardTool)), u"0");
}

TEST_F(WizardPanel, TakesTheFirstOfTwoToolsOfOneNumber) {
  for (const std::int32_t rpm : {1000, 8000}) {
    ToolRecord tool;
    tool.number = 5;
    tool.maxRpm = rpm;
    tool.feed = rpm / 100.0;
    AppendTool(tool);
  }
  RefreshToolLists();
  Choose(kWizardSlot);
  headless::SelectRows(kIdWizardTools, {2});
  EXPECT_EQ(platform::SelectedRow(kIdWizardTools), 1);
  EXPECT_EQ(platform::TextOf(Field(kWizardRpm)), u"1000");
  EXPECT_EQ(platform::TextOf(Field(kWizardFeed)), u"10.00");
  EXPECT_EQ(platform::TextOf(kIdStatusLine),
            u"Two tools bear this number: the first in the list counts.");
}

// Both tools stand in the library; the second one is two inches wide and slow.
TEST_F(WizardPanel, TakesTheRatesOfATypedNumber) {
  AddRated(5, 9000, 90);
  AddRated(6, 600, 6);
  Choose(kWizardSlot);
  headless::SelectRows(kIdWizardTools, {1});
  EXPECT_EQ(platform::TextOf(Field(kWizardRpm)), u"9000");
  Type(kWizardTool, u"6");
  EXPECT_EQ(platform::SelectedRow(kIdWizardTools), 2);
  EXPECT_EQ(platform::TextOf(Field(kWizardRpm)), u"600");
  EXPECT_EQ(platform::TextOf(Field(kWizardFeed)), u"6.00");
  Type(kWizardFeed, u"33");
  Type(kWizardTool, u"5");
  EXPECT_EQ(platform::TextOf(Field(kWizardRpm)), u"9000");
  EXPECT_EQ(platform::TextOf(Field(kWizardFeed)), u"33") << "typed by the user";
}

TEST_F(WizardPanel, TakesTheRatesOfANumberThatIsTypedKeyByKey) {
  AddRated(1, 9000, 45);
  AddRated(12, 600, 6);
  Choose(kWizardDrill);
  const auto type = [](const char16_t* keys) {
    platform::SetFocusTo(Field(kWizardTool));
    platform::SelectAllText(Field(kWizardTool));
    headless::TypeText(keys);
  };
  const auto expect = [](const char16_t* rpm, const char16_t* feed) {
    EXPECT_EQ(platform::TextOf(Field(kWizardRpm)), rpm);
    EXPECT_EQ(platform::TextOf(Field(kWizardFeed)), feed);
  };
  type(u"1");
  expect(u"9000", u"45.00");
  headless::TypeText(u"7");
  ASSERT_EQ(platform::TextOf(Field(kWizardTool)), u"17");
  expect(u"1500", u"12.0");
  type(u"12");
  expect(u"600", u"6.00");
  SetUnits(true);
  type(u"17");
  expect(u"1500", u"304.80");
  SetUnits(false);
  // The current tool has no rates of the library either.
  headless::SelectRows(kIdWizardTools, {2});
  expect(u"600", u"6.00");
  headless::SelectRows(kIdWizardTools, {0});
  EXPECT_EQ(platform::TextOf(Field(kWizardRpm)), u"1500");
  // What the user typed meanwhile stays.
  type(u"1");
  Type(kWizardFeed, u"33");
  type(u"17");
  expect(u"1500", u"33");
}

TEST_F(WizardPanel, TellsASpeedAboveTheTools) {
  AddRated(5, 9000, 90);
  Choose(kWizardSlot);
  headless::SelectRows(kIdWizardTools, {1});
  Insert();
  EXPECT_FALSE(OutputHas(u"by the library"));
  toolLibrary.tools[0].maxRpm = 300;  // as a tool that was stored anew
  RefreshToolLists();
  Insert();
  EXPECT_TRUE(OutputHas(u"T5 turns at 300 RPM at most by the library; the code has S9000."));
}

TEST_F(WizardPanel, TellsTheOffsetThatAnotherWindowStored) {
  AddRated(5, 9000, 90);
  Choose(kWizardSlot);
  headless::SelectRows(kIdWizardTools, {1});
  WriteFile("bin/MORVA.ini",
            "[ToolLibrary]\r\nCount=2\r\n[Tool0]\r\nNumber=2\r\nName=TWO\r\n"
            "[Tool1]\r\nNumber=5\r\nName=FIVE\r\nHOffset=31\r\nMaxRPM=9000\r\n");
  Insert();
  EXPECT_TRUE(OutputHas(u"The library gives T5 the H offset 31; the code has H5."));
  EXPECT_EQ(platform::SelectedRow(kIdWizardTools), 2) << "the row of T5 in the list that is new";
}

TEST_F(WizardPanel, KeepsASpeedAndAFeedThatTheUserTyped) {
  AddTool(7, 0.5);
  Choose(kWizardSlot);
  Type(kWizardRpm, u"900");
  headless::SelectRows(kIdWizardTools, {1});
  EXPECT_EQ(platform::TextOf(Field(kWizardRpm)), u"900");
  EXPECT_EQ(platform::TextOf(Field(kWizardFeed)), u"0.00") << "what the library holds";
  Choose(kWizardFace);
  Type(kWizardFeed, u"33");
  headless::SelectRows(kIdWizardTools, {1});
  EXPECT_EQ(platform::TextOf(Field(kWizardFeed)), u"33");
  EXPECT_EQ(platform::TextOf(Field(kWizardRpm)), u"0");
}

TEST_F(WizardPanel, ShowsWhichToolANumberMeansAndSaysWhereThereIsNone) {
  AddRated(7, 3000, 8);
  Choose(kWizardSlot);
  const auto shown = [] {
    return platform::RowText(kIdWizardTools, platform::SelectedRow(kIdWizardTools));
  };
  Type(kWizardTool, u"7");
  EXPECT_EQ(platform::SelectedRow(kIdWizardTools), 1);
  Insert();
  EXPECT_FALSE(OutputHas(u"is not in the tool library"));
  Type(kWizardTool, u"8");
  EXPECT_EQ(shown(), u"Not in the library");
  Insert();
  EXPECT_TRUE(OutputHas(u"T8 is not in the tool library."));
  RemoveTool(0);
  RefreshToolLists();
  EXPECT_EQ(shown(), u"Not in the library");
  Type(kWizardTool, u"0");
  EXPECT_EQ(shown(), u"Current tool");
}

TEST_F(WizardPanel, IsReachedByItsOldCommand) {
  SetMode(kModeHome);
  EXPECT_TRUE(RouteCommand(905, 0));
  EXPECT_EQ(app.mode, kModeWizard);
  for (int id = kIdWizardKindFirst; id <= kIdWizardKindLast; ++id) EXPECT_FALSE(IsPending(id));
  EXPECT_FALSE(IsPending(kIdWizardInsert));
}

}  // namespace
}  // namespace morva
