// The wizard's jobs, written out by hand, and what it refuses.

#include "builders/wizard/wizard_text.h"

#include <gtest/gtest.h>

#include <string>

#include "app/limits.h"
#include "builders/wizard/wizard_picture.h"
#include "library/tools.h"
#include "platform/file.h"
#include "text/code_writer.h"
#include "text/codetext.h"

namespace morva {
namespace {

// What the form of a kind starts with, read as a form reads it; in millimetres converted.
WizardValues Start(int kind, bool metric = false) {
  WizardValues values;
  values.kind = kind;
  values.metric = metric;
  const auto fields = WizardFields(kind);
  for (std::size_t i = 0; i < fields.size(); ++i) {
    double value = ParseDecimal(fields[i].start, fields[i].fallback);
    if (metric && fields[i].follows == Follows::Length) value *= 25.4;
    if (metric && fields[i].follows == Follows::Thread) value = 25.4 / value;
    values.numbers[i] = value;
  }
  return values;
}

std::string Written(const WizardValues& values) {
  CodeWriter out;
  out.most = WizardRoom();
  WriteWizard(values, out);
  EXPECT_FALSE(out.full);
  return platform::ToUtf8(out.text);
}

int Fault(const WizardValues& values) {
  const BuilderFault fault = CheckWizard(values);
  EXPECT_EQ(fault.words[0] != 0, fault.field >= 0);
  return fault.field;
}

TEST(WizardText, FacesInAZigzagFromTheCurrentTool) {
  EXPECT_EQ(Written(Start(kWizardFace)),
            "\r\n(WIZARD: SKIM / FACE)\r\nG20 (INCH)\r\nG90 G17 G94 G80\r\n"
            "(KEEP CURRENT TOOL AND LENGTH OFFSET)\r\nS1500 M03\r\nG54\r\nG00 Z0.500\r\nM08\r\n"
            "G00 X0.000 Y0.000\r\nG01 Z-0.010 F12.0\r\nG01 X4.000 F12.0\r\nY0.400\r\n"
            "G01 X0.000 F12.0\r\nG00 Z0.500\r\nM09\r\nM05\r\n(END WIZARD BLOCK)\r\n");
}

TEST(WizardText, LeavesYMaxUncutWhereTheLastStepFallsShort) {
  WizardValues values = Start(kWizardFace);
  values.numbers[kWizardTenth] = 1;
  const std::string text = Written(values);
  EXPECT_NE(text.find("G01 X4.000 F12.0\r\nY0.400\r\nG01 X0.000 F12.0\r\nY0.800\r\n"
                      "G01 X4.000 F12.0\r\nG00 Z0.500"),
            std::string::npos);
}

TEST(WizardText, StepsByTenMillimetresAndSixteenHundredths) {
  WizardValues values = Start(kWizardFace, true);
  values.numbers[kWizardTenth] = 10.16;
  EXPECT_NE(Written(values).find("G21 (MM)"), std::string::npos);
  EXPECT_NE(
      Written(values).find("G01 X101.600 F304.8\r\nY10.160\r\nG01 X0.000 F304.8\r\nG00 Z12.7"),
      std::string::npos);
}

TEST(WizardText, ChangesToAToolWithItsLengthOffset) {
  WizardValues values = Start(kWizardSlot);
  values.numbers[kWizardTool] = 5;
  values.numbers[kWizardTenth] = -1.25;
  values.offset = u"G154 P3 ";
  EXPECT_EQ(Written(values),
            "\r\n(WIZARD: SLOT)\r\nG20 (INCH)\r\nG90 G17 G94 G80\r\nT5 M06\r\nS1500 M03\r\n"
            "G154 P3 \r\nG00 G43 H05 Z0.500\r\nM08\r\nG00 X0.000 Y0.000\r\nG01 Z-0.125 F6.0\r\n"
            "G01 X4.000 Y-1.250 F12.0\r\nG00 Z0.500\r\nM09\r\nM05\r\n(END WIZARD BLOCK)\r\n");
  values.numbers[kWizardTool] = 12;
  EXPECT_NE(Written(values).find("T12 M06\r\n"), std::string::npos);
  EXPECT_NE(Written(values).find("G00 G43 H12 Z0.500\r\n"), std::string::npos);
}

TEST(WizardText, DrillsARow) {
  EXPECT_NE(Written(Start(kWizardDrill))
                .find("M08\r\nG00 X0.000 Y0.000\r\nG81 Z-0.500 R0.100 F12.0\r\nX1.000 Y0.000\r\n"
                      "X2.000 Y0.000\r\nX3.000 Y0.000\r\nG80\r\nG00 Z0.500\r\nM09\r\n"),
            std::string::npos);
}

TEST(WizardText, PecksAtAFixedSpacing) {
  WizardValues values = Start(kWizardPeck);
  values.numbers[kWizardTenth] = 2;
  EXPECT_NE(Written(values).find("(WIZARD: PECK DRILL G83)\r\n"), std::string::npos);
  EXPECT_NE(Written(values).find("G83 Z-0.750 R0.100 Q0.100 F12.0\r\nX1.000 Y0.000\r\nG80\r\n"),
            std::string::npos);
  values.metric = true;
  EXPECT_NE(Written(values).find("\r\nX25.400 Y0.000\r\nG80\r\n"), std::string::npos);
}

TEST(WizardText, TapsAtTheFeedOfTheThread) {
  EXPECT_NE(Written(Start(kWizardTap)).find("S500 M03\r\n"), std::string::npos);
  EXPECT_NE(Written(Start(kWizardTap)).find("G84 Z-0.500 R0.100 F25.0000\r\nX1.000"),
            std::string::npos);
  EXPECT_NE(Written(Start(kWizardTap, true)).find("G84 Z-12.700 R2.540 F635.0000\r\nX25.400"),
            std::string::npos);
}

TEST(WizardText, DrillsOneHoleWithoutASecondLine) {
  WizardValues values = Start(kWizardDrill);
  values.numbers[kWizardNinth] = 1;
  EXPECT_NE(Written(values).find("F12.0\r\nG80\r\n"), std::string::npos);
}

TEST(WizardCheck, PassesWhatTheFormsStartWith) {
  for (int kind = 0; kind < kWizardKinds; ++kind) {
    EXPECT_EQ(Fault(Start(kind)), -1) << kind;
    EXPECT_EQ(Fault(Start(kind, true)), -1) << kind;
  }
}

TEST(WizardCheck, TakesToolsFrom0To999) {
  for (const double tool : {0.0, 999.0}) {
    WizardValues values = Start(kWizardSlot);
    values.numbers[kWizardTool] = tool;
    EXPECT_EQ(Fault(values), -1);
  }
  for (const double tool : {-1.0, 1000.0}) {
    WizardValues values = Start(kWizardSlot);
    values.numbers[kWizardTool] = tool;
    EXPECT_EQ(Fault(values), kWizardTool);
  }
}

TEST(WizardCheck, WantsSpindleFeedAndClearance) {
  const struct {
    int field;
    double bad;
    double good;
  } rows[] = {{kWizardRpm, 0, 1}, {kWizardFeed, 0, 0.2}, {kWizardSafeZ, -0.125, -0.124}};
  for (const auto& row : rows) {
    WizardValues values = Start(kWizardSlot);
    values.numbers[row.field] = row.bad;
    EXPECT_EQ(Fault(values), row.field);
    values.numbers[row.field] = row.good;
    EXPECT_EQ(Fault(values), -1) << row.field;
  }
}

// The plunge of a pass has half the feed, and its code one decimal: F0.0 stops a control.
TEST(WizardCheck, WantsNumbersThatTheCodeDoesNotWriteAsZero) {
  const struct {
    int kind;
    int field;
    double bad;
    double good;
  } rows[] = {{kWizardSlot, kWizardFeed, 0.09, 0.12},
              {kWizardDrill, kWizardFeed, 0.04, 0.06},
              {kWizardPeck, kWizardFeed, 0.04, 0.06},
              {kWizardFace, kWizardFeed, 0.04, 0.06},
              {kWizardPeck, kWizardNinth, 0.0004, 0.0006}};
  for (const auto& row : rows) {
    WizardValues values = Start(row.kind);
    values.numbers[row.field] = row.bad;
    EXPECT_EQ(Fault(values), row.field) << row.kind;
    values.numbers[row.field] = row.good;
    EXPECT_EQ(Fault(values), -1) << row.kind;
  }
  // One turn a minute over so many threads an inch.
  WizardValues tap = Start(kWizardTap);
  tap.numbers[kWizardRpm] = 1;
  tap.numbers[kWizardFeed] = 999999;
  EXPECT_EQ(Fault(tap), kWizardFeed);
  tap.numbers[kWizardFeed] = 10000;  // F0.0001
  EXPECT_EQ(Fault(tap), -1);
  // In millimetres the feed is the product.
  tap = Start(kWizardTap, true);
  tap.numbers[kWizardRpm] = 1;
  tap.numbers[kWizardFeed] = 0.00004;
  EXPECT_EQ(Fault(tap), kWizardFeed);
}

TEST(WizardCheck, WantsClearanceThatTheCodeShows) {
  WizardValues slot = Start(kWizardSlot);
  slot.numbers[kWizardDepth] = -0.0004;
  slot.numbers[kWizardSafeZ] = 0.0004;
  EXPECT_EQ(Fault(slot), kWizardSafeZ);
  slot.numbers[kWizardSafeZ] = 0.0006;
  EXPECT_EQ(Fault(slot), -1);
  WizardValues tap = Start(kWizardTap);
  tap.numbers[kWizardDepth] = 0.0002;
  tap.numbers[kWizardSafeZ] = 0.0014;
  EXPECT_EQ(Fault(tap), kWizardSafeZ);
  tap.numbers[kWizardSafeZ] = 0.003;
  EXPECT_EQ(Fault(tap), -1);
}

TEST(WizardCheck, WantsAFifthOfSafeZAboveTheDepthOfHoles) {
  for (const int kind : {kWizardDrill, kWizardPeck, kWizardTap}) {
    WizardValues values = Start(kind);
    values.numbers[kWizardDepth] = 0.2;
    EXPECT_EQ(Fault(values), kWizardSafeZ);
    values.numbers[kWizardDepth] = 0.09;
    EXPECT_EQ(Fault(values), -1);
  }
  WizardValues slot = Start(kWizardSlot);
  slot.numbers[kWizardDepth] = 0.2;
  EXPECT_EQ(Fault(slot), -1);
}

TEST(WizardCheck, WantsAWholeCountOfHolesUpTo400) {
  for (const int kind : {kWizardDrill, kWizardPeck, kWizardTap}) {
    const int field = kind == kWizardPeck ? kWizardTenth : kWizardNinth;
    for (const double count : {0.0, 3.5, 401.0, -2.0, 1.0, 400.0}) {
      WizardValues values = Start(kind);
      values.numbers[field] = count;
      EXPECT_EQ(Fault(values), count == 1 || count == 400 ? -1 : field) << count;
    }
  }
  WizardValues peck = Start(kWizardPeck);
  peck.numbers[kWizardNinth] = 0;
  EXPECT_EQ(Fault(peck), kWizardNinth);
}

TEST(WizardCheck, WantsAFaceThatIncreasesAndHasAtMost99Passes) {
  WizardValues values = Start(kWizardFace);
  values.numbers[kWizardNinth] = 0;
  EXPECT_EQ(Fault(values), kWizardNinth);
  values.numbers[kWizardNinth] = 1;
  values.numbers[kWizardTenth] = 0;
  EXPECT_EQ(Fault(values), kWizardTenth);
  values.numbers[kWizardTenth] = 39.2;  // 98 steps
  EXPECT_EQ(Fault(values), -1);
  EXPECT_EQ(WizardWay(values).size(), 2u * 99);
  values.numbers[kWizardTenth] = 39.3;
  EXPECT_EQ(Fault(values), kWizardTenth);
  values = Start(kWizardFace, true);
  values.numbers[kWizardTenth] = 995.68;
  EXPECT_EQ(Fault(values), -1);
  values.numbers[kWizardTenth] = 995.8;
  EXPECT_EQ(Fault(values), kWizardTenth);
}

TEST(WizardCheck, SaysAllOfItInOneSentence) {
  WizardValues values = Start(kWizardSlot);
  values.numbers[kWizardRpm] = 0;
  EXPECT_EQ(platform::ToUtf8(CheckWizard(values).words),
            "Check tool (0=current, 1-999=library), positive spindle/feed, clearance above depth, "
            "and integer hole count (1-400). Face bounds must increase and fit within 99 passes; "
            "peck depth must be positive.");
}

TEST(WizardFields, AreNamedByKindAndUnit) {
  EXPECT_EQ(std::u16string(WizardFields(kWizardTap)[kWizardFeed].label), u"TPI");
  EXPECT_EQ(std::u16string(WizardFields(kWizardTap)[kWizardFeed].metricLabel), u"Pitch mm");
  EXPECT_EQ(std::u16string(WizardFields(kWizardPeck)[kWizardTenth].label), u"Hole count");
  EXPECT_EQ(std::u16string(WizardFields(kWizardFace)[kWizardTenth].start), u"0.400");
  EXPECT_EQ(WizardFields(kWizardFace)[kWizardTool].fallback, 1);
  EXPECT_EQ(WizardFields(kWizardFace)[kWizardRpm].fallback, 1500);
  EXPECT_EQ(std::u16string(WizardKinds()[1]), u"Profile pass");
  EXPECT_EQ(WizardFields(7).data(), WizardFields(0).data());
}

TEST(WizardValues, AreThoseOfAFormInTheirOrder) {
  FormValues form;
  form.metric = true;
  for (int i = 0; i < kWizardNumbers; ++i) form.numbers[i] = i;
  form.words[0] = u"G55";
  const WizardValues values = WizardOf(kWizardTap, form);
  EXPECT_TRUE(values.metric);
  EXPECT_EQ(values.numbers[kWizardTenth], 9);
  EXPECT_EQ(values.offset, u"G55");
}

TEST(WizardPicture, ShowsTheToolOfTheLibrary) {
  ResetToolLibrary();
  ToolRecord tool;
  tool.number = 5;
  tool.diameter = 0.5;
  AppendTool(tool);
  WizardValues values = Start(kWizardDrill);
  EXPECT_EQ(WizardCutter(values), 0);
  values.numbers[kWizardTool] = 5;
  EXPECT_EQ(WizardCutter(values), 0.5);
  values.metric = true;
  EXPECT_EQ(WizardCutter(values), 12.7);
  values.numbers[kWizardTool] = 6;
  EXPECT_EQ(WizardCutter(values), 0);
  ResetToolLibrary();
}

TEST(WizardPicture, ShowsHolesAsDrawingsDo) {
  Picture picture;
  ClearPicture(picture, false);
  WizardValues values = Start(kWizardDrill);
  values.numbers[kWizardNinth] = 2;
  DrawWizard(values, 0.25, picture);
  EXPECT_EQ(platform::ToUtf8(PictureText(picture)),
            "picture inch\n"
            "path construction 0.0000,0.0000 1.0000,0.0000\n"
            "cross feature 0.0000,0.0000\n"
            "arc outline 0.0000,0.0000 radius 0.1250\n"
            "cross feature 1.0000,0.0000\n"
            "arc outline 1.0000,0.0000 radius 0.1250\n"
            "dimension across dimension 0.0000,0.0000 1.0000,0.0000 row -1 outside: 1.000\n"
            "dimension diameter dimension 0.0000,0.0000 radius 0.1250 leader 135.0000: "
            "2\u00D7 \u00D80.250\n"
            "label dimension 1.0000,0.0000 above clear 0.1250: Z -0.500\n");
}

TEST(WizardPicture, TakesValuesThatDoNotPass) {
  for (int kind = 0; kind < kWizardKinds; ++kind) {
    for (const double value : {0.0, -1.0, 1e79, -1e79, 3.7}) {
      WizardValues values = Start(kind);
      for (double& number : values.numbers) number = value;
      Picture picture;
      DrawWizard(values, value, picture);
      EXPECT_LE(picture.marks.size(), 2000u);
    }
  }
}

}  // namespace
}  // namespace morva
