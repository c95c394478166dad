// The form of a tool: what it starts with, what it refuses in which order, and what is stored.

#include "library/tool_fields.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/file.h"
#include "text/codetext.h"

namespace morva {
namespace {

struct ToolForm : testing::Test {
  void SetUp() override { ResetToolLibrary(); }
  void TearDown() override { ResetToolLibrary(); }
  ToolTexts texts = NewToolTexts(false);
  std::string Refused(bool isNew = true, bool metric = false) const {
    return platform::ToUtf8(CheckTool(texts, isNew, metric).words);
  }
};

constexpr char kNotPositive[] = "Dimensions, speeds and feeds must be positive finite numbers.";

TEST_F(ToolForm, StartsWithAHalfInchEndMillInBothUnits) {
  EXPECT_EQ(texts[ToolField::Diameter], u"0.500");
  EXPECT_EQ(texts[ToolField::Feed], u"12.0");
  EXPECT_EQ(texts.typeRow, 0);
  EXPECT_EQ(CoolantRows()[static_cast<std::size_t>(texts.coolantRow)],
            std::u16string(u"Flood M08"));
  const ToolTexts metric = NewToolTexts(true);
  const std::u16string wanted[] = {u"1",      u"1/2 END MILL", u"",  u"12.700", u"4",
                                   u"76.200", u"38.100",       u"1", u"1",      u"5000",
                                   u"304.80", u"127.00",       u"",  u""};
  for (int i = 0; i < kToolFields; ++i) EXPECT_EQ(metric.texts[i], wanted[i]) << i;
  EXPECT_EQ(Refused(), "");
}

TEST_F(ToolForm, RefusesInTheOrderOfItsChecks) {
  // Everything is wrong; one repair after the other shows the next refusal.
  for (int i = 0; i < kMaxTools; ++i) AppendTool(ToolRecord());
  for (std::u16string& text : texts.texts) text.clear();
  const ToolField measures[] = {ToolField::Diameter, ToolField::GaugeLength, ToolField::Stickout,
                                ToolField::Feed,     ToolField::Plunge,      ToolField::MaxRpm};
  for (const ToolField field : measures) {
    EXPECT_EQ(Refused(), kNotPositive);
    EXPECT_EQ(CheckTool(texts, true, false).field, field);
    EXPECT_EQ(std::u16string(CheckTool(texts, true, false).title), u"Tool geometry");
    EXPECT_EQ(CheckTool(texts, true, false).icon, platform::BoxIcon::None);
    texts[field] = field == ToolField::Stickout ? u"1.001" : u"1";
  }
  EXPECT_EQ(Refused(), "Stickout cannot exceed gauge length.");
  texts[ToolField::Stickout] = u"1.000";
  EXPECT_EQ(Refused(), "Enter a flute count from 1 to 64.");
  texts[ToolField::Flutes] = u"64";
  EXPECT_EQ(Refused(), "Enter a tool number from 1 to 999.");
  EXPECT_EQ(std::u16string(CheckTool(texts, true, false).title), u"Tool Builder");
  EXPECT_EQ(CheckTool(texts, true, false).icon, platform::BoxIcon::Warning);
  texts[ToolField::Number] = u"999";
  EXPECT_EQ(Refused(), "Give the tool a descriptive name.");
  texts[ToolField::Name] = u" ";
  EXPECT_EQ(Refused(), "The tool library is full (64 tools).");
  EXPECT_EQ(CheckTool(texts, true, false).icon, platform::BoxIcon::Error);
  EXPECT_EQ(Refused(false), "");
}

TEST_F(ToolForm, ReadsItsNumbersLaxly) {
  texts[ToolField::Diameter] = u"1/2";
  EXPECT_EQ(Refused(), "");
  EXPECT_EQ(ToolOfTexts(texts, false).diameter, 1);
  texts[ToolField::MaxRpm] = u"+4000";
  EXPECT_EQ(Refused(), "");
  EXPECT_EQ(ToolOfTexts(texts, false).maxRpm, 5000) << "no whole number begins with a plus";
  for (const char16_t* feed : {u"0", u"-1", u"1000000", u"abc", u"999999.9"}) {
    texts[ToolField::Feed] = feed;
    texts[ToolField::Flutes] = u"0";
    EXPECT_EQ(Refused() == kNotPositive, std::u16string(feed) != u"999999.9")
        << platform::ToUtf8(feed);
  }
  texts = NewToolTexts(false);
  for (const char16_t* number : {u"0", u"1000", u"-1", u"+5", u"x"}) {
    texts[ToolField::Number] = number;
    EXPECT_EQ(Refused(), "Enter a tool number from 1 to 999.");
  }
  texts[ToolField::Number] = u" 12.7";
  EXPECT_EQ(Refused(), "");
  EXPECT_EQ(ToolOfTexts(texts, false).number, 12);
}

TEST_F(ToolForm, NamesTheFieldsOfWhichOnlyAPartWasRead) {
  const auto partlyRead = [this](bool metric) {
    return platform::ToUtf8(PartlyRead(texts, TextsOfTool(ToolOfTexts(texts, metric), metric)));
  };
  EXPECT_EQ(partlyRead(false), "");
  texts[ToolField::Diameter] = u" 0.1285 ";
  texts[ToolField::HOffset] = u"";
  texts[ToolField::Notes] = u"1/2";
  EXPECT_EQ(partlyRead(false), "") << "rounding in the field, a fallback and notes are no parts";
  texts[ToolField::Diameter] = u"1/2";
  texts[ToolField::Flutes] = u"4.5";
  texts[ToolField::MaxRpm] = u"+4000";
  texts[ToolField::Feed] = u"1e3";
  EXPECT_EQ(partlyRead(false), "Diameter 1.000, Flutes 4, Max RPM 5000, Feed 1.00");
}

TEST_F(ToolForm, RefusesWhatWouldBeStoredAsNothing) {
  texts[ToolField::MaxRpm] = u"0.5";
  EXPECT_EQ(Refused(), kNotPositive);
  texts[ToolField::MaxRpm] = u"1";
  EXPECT_EQ(Refused(), "");
  texts[ToolField::Diameter] = u"0.00004";
  EXPECT_EQ(Refused(), kNotPositive);
  texts[ToolField::Diameter] = u"0.001";
  EXPECT_EQ(Refused(), "");
  EXPECT_EQ(Refused(true, true), kNotPositive) << "a thousandth of a millimetre";
}

TEST_F(ToolForm, RefusesACommaBecauseOnlyAPartWouldCount) {
  for (const ToolField field : {ToolField::Diameter, ToolField::GaugeLength, ToolField::Stickout,
                                ToolField::Feed, ToolField::Plunge, ToolField::MaxRpm}) {
    texts = NewToolTexts(false);
    texts[field] = u"1,5";
    EXPECT_EQ(Refused(),
              "A comma is no decimal point here. Write 12.7, not 12,7. Nothing was stored.");
    EXPECT_EQ(CheckTool(texts, true, false).field, field);
  }
}

TEST_F(ToolForm, StoresInchesOfEitherUnit) {
  const ToolRecord tool = ToolOfTexts(NewToolTexts(true), true);
  EXPECT_EQ(tool.diameter, 12.7 / 25.4);
  EXPECT_DOUBLE_EQ(tool.gaugeLength, 3);
  EXPECT_DOUBLE_EQ(tool.stickout, 1.5);
  EXPECT_DOUBLE_EQ(tool.feed, 12);
  EXPECT_DOUBLE_EQ(tool.plunge, 5);
  EXPECT_EQ(tool.flutes, 4);
  EXPECT_EQ(std::u16string(tool.type), u"End Mill");
}

TEST_F(ToolForm, FillsOffsetsWithTheNumberAndListsWithTheirFirstUse) {
  texts[ToolField::Number] = u"42";
  texts[ToolField::HOffset] = u"";
  texts[ToolField::DOffset] = u"-";
  texts.typeRow = -1;
  texts.coolantRow = -1;
  const ToolRecord tool = ToolOfTexts(texts, false);
  EXPECT_EQ(tool.hOffset, 42);
  EXPECT_EQ(tool.dOffset, 42);
  EXPECT_EQ(std::u16string(tool.type), u"End Mill");
  EXPECT_EQ(tool.coolant, 1);
}

TEST_F(ToolForm, CutsNameAndNotes) {
  texts[ToolField::Name] = std::u16string(80, u'n');
  texts[ToolField::Notes] = std::u16string(200, u'o');
  const ToolRecord tool = ToolOfTexts(texts, false);
  EXPECT_EQ(std::u16string(tool.name).size(), 63u);
  EXPECT_EQ(std::u16string(tool.notes).size(), 127u);
}

TEST_F(ToolForm, ShowsARecordAndTakesItBack) {
  ToolRecord tool;
  tool.number = 7;
  CopyBounded(tool.name, kToolNameUnits, u"LONG");
  CopyBounded(tool.type, kToolTypeUnits, u"Carbide Ball Nose Long");
  tool.diameter = 0.0625;
  tool.flutes = 2;
  tool.gaugeLength = 4;
  tool.stickout = 2;
  tool.hOffset = 107;
  tool.dOffset = 207;
  tool.maxRpm = 8000;
  tool.feed = 0.125;
  tool.plunge = 2.5;
  tool.coolant = 2;
  CopyBounded(tool.notes, kToolNotesUnits, u"two lines");
  const ToolTexts shown = TextsOfTool(tool, false);
  EXPECT_EQ(shown[ToolField::Diameter], u"0.063");
  EXPECT_EQ(shown[ToolField::Feed], u"0.13");
  EXPECT_EQ(shown[ToolField::HOffset], u"107");
  EXPECT_EQ(shown.typeRow, 4);
  EXPECT_EQ(shown.coolantRow, 2);
  EXPECT_EQ(TextsOfTool(tool, true)[ToolField::Diameter], u"1.588");
  EXPECT_EQ(TextsOfTool(tool, true)[ToolField::Feed], u"3.18");
  const ToolRecord stored = ToolOfTexts(shown, false, &tool);
  EXPECT_EQ(std::u16string(stored.type), u"Ball Nose");
  EXPECT_EQ(stored.diameter, 0.0625);
  EXPECT_EQ(stored.feed, 0.125);
  EXPECT_EQ(stored.dOffset, 207);
  EXPECT_EQ(stored.coolant, 2);
  EXPECT_EQ(std::u16string(stored.notes), u"two lines");
  const ToolRecord metric = ToolOfTexts(TextsOfTool(tool, true), true, &tool);
  EXPECT_EQ(metric.diameter, 0.0625);
  EXPECT_EQ(metric.feed, 0.125);
}

TEST_F(ToolForm, KeepsALengthThatShowsTheStoredOneAndTakesOneThatDoesNot) {
  ToolRecord tool = ToolOfTexts(texts, false);
  tool.diameter = 0.1285;
  tool.feed = 3.125;
  // What the unit keys make of the fields, there and back.
  ToolTexts shown = TextsOfTool(tool, false);
  shown[ToolField::Diameter] = u"3.277";
  shown[ToolField::Feed] = u"79.50";
  EXPECT_EQ(ToolOfTexts(shown, true, &tool).diameter, 0.1285);
  EXPECT_EQ(ToolOfTexts(shown, true, &tool).feed, 3.125);
  shown = TextsOfTool(tool, true);
  EXPECT_EQ(shown[ToolField::Diameter], u"3.264");
  shown[ToolField::Diameter] = u"0.129";
  shown[ToolField::Feed] = u"3.13";
  EXPECT_EQ(ToolOfTexts(shown, false, &tool).diameter, 0.1285);
  EXPECT_EQ(ToolOfTexts(shown, false, &tool).feed, 3.125);
  shown[ToolField::Diameter] = u"0.1286";
  shown[ToolField::Feed] = u"3.1";
  EXPECT_DOUBLE_EQ(ToolOfTexts(shown, false, &tool).diameter, 0.1286);
  EXPECT_DOUBLE_EQ(ToolOfTexts(shown, false, &tool).feed, 3.1);
  EXPECT_DOUBLE_EQ(ToolOfTexts(shown, false).diameter, 0.1286);
}

}  // namespace
}  // namespace morva
