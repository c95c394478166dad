#include "codetools/validator.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace morva {
namespace {

bool Has(const std::u16string& report, std::u16string_view line) {
  return report.find(std::u16string(line) + u"\r\n") != std::u16string::npos;
}

// A program that breaks no rule.
const std::u16string kSound =
    u"%\r\nO1000\r\nG90 G40 G49 G80\r\nG83 X1. Z-1. R.1 Q0.1 F5.\r\nM30\r\n%\r\n";

TEST(FindCodeWord, TakesTheNumberHoweverItIsWritten) {
  for (const char16_t* text :
       {u"G90", u"G090", u"G90.", u"G90.0", u"G 90", u"g\t90", u"XG90", u"N10G90"}) {
    EXPECT_TRUE(FindCodeWord(text, u'G', 90));
  }
  for (const char16_t* text : {u"G90.1", u"G900", u"G-90", u"G+90", u"G.90", u"G\r\n90", u""}) {
    EXPECT_FALSE(FindCodeWord(text, u'G', 90));
  }
}

TEST(FindCodeWord, AnyNumberAlsoTakesANonZeroFraction) {
  EXPECT_TRUE(FindCodeWord(u"Q0.1", u'Q', -1));
  EXPECT_FALSE(FindCodeWord(u"Q.25", u'Q', -1));
  EXPECT_FALSE(FindCodeWord(u"Q-.1", u'Q', -1));
  EXPECT_FALSE(FindCodeWord(u"F.5", u'F', -1));
}

TEST(FindCodeWord, StepsOverNestedCommentsThatSpanLines) {
  EXPECT_FALSE(FindCodeWord(u"(A (B) M30\r\nM30", u'M', 30));
  EXPECT_TRUE(FindCodeWord(u"(A (B)) M30", u'M', 30));
  EXPECT_TRUE(FindCodeWord(u") M30", u'M', 30));
}

TEST(FindCodeWord, EndsASemicolonCommentAtTheLineEndOnly) {
  EXPECT_FALSE(FindCodeWord(u"; M30", u'M', 30));
  EXPECT_TRUE(FindCodeWord(u"; (\r\nM30", u'M', 30));
  // A semicolon inside parentheses starts nothing.
  EXPECT_TRUE(FindCodeWord(u"(;) M30", u'M', 30));
}

TEST(FindCodeWord, StopsGrowingADigitRunAtAMillion) {
  EXPECT_TRUE(FindCodeWord(u"O12345678", u'O', 1234567));
  EXPECT_FALSE(FindCodeWord(u"O12345678", u'O', 12345678));
}

TEST(FindCodeWord, EndsAtTheFirstNul) {
  EXPECT_FALSE(FindCodeWord(std::u16string_view(u"G0\0M30", 6), u'M', 30));
}

// The line that a rule's message leads to, counted from 1; 0 for none.
int PlaceOf(std::u16string_view message, std::u16string_view program) {
  EXPECT_TRUE(Has(PreflightReport(program), message)) << "the rule does not fail";
  return PlaceOfReportLine(message, program) + 1;
}

TEST(PlaceOfReportLine, IsThatOfTheWordOrWhereTheMissingOneBelongs) {
  const std::u16string program =
      u"%\r\n\r\n(MORVA TEXT 1)\r\nN10 (M30 G84)\r\nG54\r\nN20 G01 X1\r\nG81 Z-1\r\nG84 Z-1\r\n"
      u"G83 Z-1\r\nX5\r\n(MORVA END 1)\r\n%\r\n";
  EXPECT_EQ(PlaceOf(u"ERROR: No O-number found (example O1000).", program), 4);
  EXPECT_EQ(PlaceOf(u"ERROR: M30 program end not found.", program), 10);
  for (const char16_t* message : {u"WARNING: G90 absolute mode not found.",
                                  u"WARNING: G40 cutter compensation cancel not found.",
                                  u"WARNING: G49 tool length cancel not found near startup/end."}) {
    EXPECT_EQ(PlaceOf(message, program), 6);
  }
  EXPECT_EQ(PlaceOf(u"ERROR: Canned cycle present but G80 cancel was not found.", program), 7);
  EXPECT_EQ(PlaceOf(u"WARNING: G83 is present but no Q peck address was found.", program), 9);
  EXPECT_EQ(PlaceOf(u"ERROR: G84 tapping is present but no feed F address was found.", program), 8);
}

TEST(PlaceOfReportLine, IsTheParenthesisWithoutItsOtherOne) {
  constexpr std::u16string_view kMessage = u"WARNING: Parenthesis comments appear unbalanced.";
  EXPECT_EQ(PlaceOf(kMessage, u"(A)\r\n(B\r\n(C)\r\n"), 2);
  EXPECT_EQ(PlaceOf(kMessage, u"(A)\r\n(B)\r\nC)\r\n(D)"), 3);
  EXPECT_EQ(PlaceOf(kMessage, u"G0\r\n(A (B)"), 2);
}

TEST(PlaceOfReportLine, IsTheTopOfAProgramThatHoldsNothingToLookAt) {
  for (const std::u16string_view program : {u"", u"\r\n\r\n", u"(A)\r\nM5\r\n"}) {
    for (const char16_t* message :
         {u"WARNING: G90 absolute mode not found.", u"ERROR: No O-number found (example O1000)."}) {
      EXPECT_EQ(PlaceOf(message, program), 1);
    }
  }
  EXPECT_EQ(PlaceOf(u"WARNING: % delimiters not found; RS-232 transfer wrapper can add them "
                    u"automatically.",
                    u"O1\r\nM30\r\n"),
            1);
}

TEST(PlaceOfReportLine, IsTheLineThatTheMachineCheckNames) {
  EXPECT_EQ(KindOfReportLine(u"ERROR: Line 2: A feed move has no F."), ReportKind::Error);
  EXPECT_EQ(KindOfReportLine(u"WARNING: Line 1: x"), ReportKind::Warning);
  EXPECT_EQ(PlaceOfReportLine(u"ERROR: Line 2: A feed move has no F.", u"O1\r\nG1\r\nM30"), 1);
  // The program has become shorter since.
  EXPECT_EQ(PlaceOfReportLine(u"ERROR: Line 9: x", u"O1\r\nG1"), 1);
  for (const char16_t* line : {u"Line 2: x", u"ERROR: Line : x", u"ERROR: Line 2",
                               u"ERROR: Line 0: x", u"NOTE: Line 2: x"}) {
    EXPECT_EQ(KindOfReportLine(line), ReportKind::Plain);
    EXPECT_EQ(PlaceOfReportLine(line, u"O1"), -1);
  }
}

TEST(PlaceOfReportLine, IsNoneForWhatNoRuleWrote) {
  for (const char16_t* line : {u"", u"VALIDATION \u2014 classic Haas preflight", u"ERROR: M30",
                               u"Validation complete: 1 error(s), 2 warning(s)."}) {
    EXPECT_EQ(PlaceOfReportLine(line, kSound), -1);
    EXPECT_EQ(KindOfReportLine(line), ReportKind::Plain);
  }
  EXPECT_EQ(KindOfReportLine(u"ERROR: M30 program end not found."), ReportKind::Error);
  EXPECT_EQ(KindOfReportLine(u"WARNING: G90 absolute mode not found."), ReportKind::Warning);
}

TEST(Preflight, ReportsAnEmptyProgramWithTwoErrorsAndFourWarnings) {
  EXPECT_EQ(PreflightReport(u""),
            u"VALIDATION \u2014 classic Haas preflight\r\n"
            u"ERROR: No O-number found (example O1000).\r\n"
            u"ERROR: M30 program end not found.\r\n"
            u"WARNING: G90 absolute mode not found.\r\n"
            u"WARNING: G40 cutter compensation cancel not found.\r\n"
            u"WARNING: G49 tool length cancel not found near startup/end.\r\n"
            u"WARNING: % delimiters not found; RS-232 transfer wrapper can add them "
            u"automatically.\r\n"
            u"NOTE: This validator cannot know your work offset, tool length, workholding, stock, "
            u"spindle option, or machine condition.\r\n"
            u"Run unfamiliar code in Haas Graphics mode and use safe proving practices.\r\n"
            u"Validation complete: 2 error(s), 4 warning(s).\r\n");
}

TEST(Preflight, ReportsAllTenRulesInTheirOrder) {
  EXPECT_EQ(PreflightReport(u"G83 G84 ;)"),
            u"VALIDATION \u2014 classic Haas preflight\r\n"
            u"ERROR: No O-number found (example O1000).\r\n"
            u"ERROR: M30 program end not found.\r\n"
            u"WARNING: G90 absolute mode not found.\r\n"
            u"WARNING: G40 cutter compensation cancel not found.\r\n"
            u"WARNING: G49 tool length cancel not found near startup/end.\r\n"
            u"ERROR: Canned cycle present but G80 cancel was not found.\r\n"
            u"WARNING: G83 is present but no Q peck address was found.\r\n"
            u"ERROR: G84 tapping is present but no feed F address was found.\r\n"
            u"WARNING: Parenthesis comments appear unbalanced.\r\n"
            u"WARNING: % delimiters not found; RS-232 transfer wrapper can add them "
            u"automatically.\r\n"
            u"NOTE: This validator cannot know your work offset, tool length, workholding, stock, "
            u"spindle option, or machine condition.\r\n"
            u"Run unfamiliar code in Haas Graphics mode and use safe proving practices.\r\n"
            u"Validation complete: 4 error(s), 6 warning(s).\r\n");
}

TEST(Preflight, FindsNothingInASoundProgram) {
  EXPECT_TRUE(Has(PreflightReport(kSound), u"Validation complete: 0 error(s), 0 warning(s)."));
}

TEST(Preflight, AnUnclosedParenthesisHidesTheRestAndCountsAsUnbalanced) {
  const std::u16string report = PreflightReport(u"%\r\n(OPEN\r\n" + kSound);
  EXPECT_TRUE(Has(report, u"ERROR: No O-number found (example O1000)."));
  EXPECT_TRUE(Has(report, u"ERROR: M30 program end not found."));
  EXPECT_TRUE(Has(report, u"WARNING: Parenthesis comments appear unbalanced."));
  // The cycle is hidden with everything else, so its rules stay silent.
  EXPECT_TRUE(Has(report, u"Validation complete: 2 error(s), 4 warning(s)."));
}

TEST(Preflight, CommentsDoNotEndAProgramAndM300IsAnotherWord) {
  EXPECT_TRUE(Has(PreflightReport(u"(M30)"), u"ERROR: M30 program end not found."));
  EXPECT_TRUE(Has(PreflightReport(u";M30"), u"ERROR: M30 program end not found."));
  EXPECT_TRUE(Has(PreflightReport(u"M300"), u"ERROR: M30 program end not found."));
  EXPECT_FALSE(Has(PreflightReport(u"M 30"), u"ERROR: M30 program end not found."));
  EXPECT_FALSE(Has(PreflightReport(u"m30"), u"ERROR: M30 program end not found."));
}

TEST(Preflight, AsksForAPeckAddressOfG83) {
  const char16_t* line = u"WARNING: G83 is present but no Q peck address was found.";
  EXPECT_TRUE(Has(PreflightReport(u"G83 Z-1. Q.1"), line));
  EXPECT_FALSE(Has(PreflightReport(u"G83 Z-1. Q0.1"), line));
}

TEST(Preflight, AsksForAFeedOfG84AnywhereInTheProgram) {
  const char16_t* line = u"ERROR: G84 tapping is present but no feed F address was found.";
  EXPECT_TRUE(Has(PreflightReport(u"G84 (F20)"), line));
  EXPECT_FALSE(Has(PreflightReport(u"F20\r\nG84"), line));
}

TEST(Preflight, AsksForG80AfterEveryCycleButG87AndG88) {
  const char16_t* line = u"ERROR: Canned cycle present but G80 cancel was not found.";
  for (const char16_t* text : {u"G81", u"G82", u"G83", u"G84", u"G85", u"G86", u"G89"}) {
    EXPECT_TRUE(Has(PreflightReport(text), line));
  }
  EXPECT_FALSE(Has(PreflightReport(u"G87"), line));
  EXPECT_FALSE(Has(PreflightReport(u"G88"), line));
  EXPECT_FALSE(Has(PreflightReport(u"G81.5"), line));
  EXPECT_FALSE(Has(PreflightReport(u"G81 G80"), line));
}

TEST(Preflight, CountsParenthesesAndPercentAsRawCharacters) {
  const char16_t* unbalanced = u"WARNING: Parenthesis comments appear unbalanced.";
  EXPECT_FALSE(Has(PreflightReport(u")("), unbalanced));
  EXPECT_TRUE(Has(PreflightReport(u"; ("), unbalanced));
  EXPECT_FALSE(Has(PreflightReport(u"(%)"),
                   u"WARNING: % delimiters not found; RS-232 transfer wrapper can add them "
                   u"automatically."));
}

// The report walks the text once; the word finder answers one question at a time. Both must
// agree on any text.
TEST(Preflight, AgreesWithTheWordFinderOnRandomText) {
  const std::u16string alphabet = u"GMOQFgx0123 89.()%;\t\r\n-+";
  std::mt19937 random(20260101);
  for (int run = 0; run < 3000; ++run) {
    std::u16string text;
    for (int i = 0; i < 40; ++i) text += alphabet[random() % alphabet.size()];
    const std::u16string report = PreflightReport(text);
    EXPECT_EQ(Has(report, u"ERROR: No O-number found (example O1000)."),
              !FindCodeWord(text, u'O', -1));
    EXPECT_EQ(Has(report, u"ERROR: M30 program end not found."), !FindCodeWord(text, u'M', 30));
    EXPECT_EQ(Has(report, u"WARNING: G90 absolute mode not found."), !FindCodeWord(text, u'G', 90));
    bool cycle = false;
    for (const int g : {81, 82, 83, 84, 85, 86, 89}) cycle = cycle || FindCodeWord(text, u'G', g);
    EXPECT_EQ(Has(report, u"ERROR: Canned cycle present but G80 cancel was not found."),
              cycle && !FindCodeWord(text, u'G', 80));
    EXPECT_EQ(Has(report, u"WARNING: G83 is present but no Q peck address was found."),
              FindCodeWord(text, u'G', 83) && !FindCodeWord(text, u'Q', -1));
  }
}

TEST(LastUnitsCode, IsTheLastOfTheTwoOutsideComments) {
  EXPECT_EQ(LastUnitsCode(u"G20 G0 X1\r\ng21 G1"), 21);
  EXPECT_EQ(LastUnitsCode(u"G21\r\nG 20"), 20);
  EXPECT_EQ(LastUnitsCode(u"G20 (G21)\r\n; G21\r\nG121 G21.1 X21"), 20);
  EXPECT_EQ(LastUnitsCode(u"G0 X20 (G20)"), 0);
  EXPECT_EQ(LastUnitsCode(u""), 0);
}

}  // namespace
}  // namespace morva
