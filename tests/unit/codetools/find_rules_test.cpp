#include "codetools/find_rules.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <utility>
#include <vector>

#include "codetools/find_match.h"
#include "text/codetext.h"

namespace morva {
namespace {

using Pairs = std::vector<std::pair<const char16_t*, const char16_t*>>;

RuleRun Apply(std::u16string_view text, const Pairs& pairs, bool matchCase = false,
              bool wholeToken = false) {
  std::vector<FindRule> rules(pairs.size());
  for (std::size_t i = 0; i < pairs.size(); ++i) {
    CopyBounded(rules[i].find, kFindUnits, pairs[i].first);
    CopyBounded(rules[i].replaceWith, kFindUnits, pairs[i].second);
  }
  return RunRules(text, rules.data(), static_cast<int>(rules.size()), matchCase, wholeToken);
}

TEST(MatchAt, FoldsAToZUnlessCaseMatters) {
  EXPECT_TRUE(MatchAt(u"xg01", 1, u"G01", false, false));
  EXPECT_FALSE(MatchAt(u"xg01", 1, u"G01", true, false));
  EXPECT_FALSE(MatchAt(u"G0", 0, u"G01", false, false));
  EXPECT_FALSE(MatchAt(u"G0", 0, u"", false, false));
  EXPECT_FALSE(MatchAt(u"G0", 5, u"G", false, false));
}

TEST(MatchAt, AWholeTokenTouchesNoWordCharacter) {
  EXPECT_FALSE(MatchAt(u"G10", 0, u"G1", false, true));
  EXPECT_TRUE(MatchAt(u"G1.", 0, u"G1", false, true));
  EXPECT_TRUE(MatchAt(u"G1.5", 0, u"G1", false, true));
  EXPECT_FALSE(MatchAt(u"X1.5", 0, u"X", false, true));
  EXPECT_FALSE(MatchAt(u"_G1", 1, u"G1", false, true));
  EXPECT_TRUE(MatchAt(u"G1", 0, u"G1", false, true));
}

TEST(Rules, DoNotCascade) {
  const RuleRun run = Apply(u"A B", {{u"A", u"B"}, {u"B", u"C"}});
  EXPECT_EQ(run.text.View(), u"B C");
  EXPECT_EQ(run.matches, 2);
}

TEST(Rules, SwapInOnePass) {
  EXPECT_EQ(Apply(u"ABBA", {{u"A", u"B"}, {u"B", u"A"}}).text.View(), u"BAAB");
}

TEST(Rules, TheFirstInTheQueueWinsNotTheLongest) {
  EXPECT_EQ(Apply(u"G01", {{u"G0", u"x"}, {u"G01", u"y"}}).text.View(), u"x1");
}

TEST(Rules, OfOneUnitMatchAtTheVeryEndAndBeforeAnything) {
  EXPECT_EQ(Apply(u"xaXb\u00E9x", {{u"xa", u"1"}, {u"x", u"2"}, {u"\u00E9", u"3"}}).text.View(),
            u"12b32");
  EXPECT_EQ(Apply(u"a\u00E9", {{u"A\u00E9", u"1"}}).text.View(), u"1");
  EXPECT_EQ(Apply(u"@`", {{u"`", u"1"}, {u"@", u"2"}}).text.View(), u"21");
}

TEST(Rules, WholeTokenLooksAtTheOriginalText) {
  EXPECT_EQ(Apply(u"G10 G1. G1", {{u"G1", u"G01"}}, false, true).text.View(), u"G10 G01. G01");
  // In the output "G1" would touch a letter; in the text it stood alone.
  EXPECT_EQ(Apply(u"X.G1", {{u".", u""}, {u"X", u"Y"}, {u"G1", u"G01"}}, false, true).text.View(),
            u"Y.G01");
}

TEST(Rules, AnEmptyReplacementDeletes) {
  const RuleRun run = Apply(u"N10 G0 N20", {{u"N10 ", u""}});
  EXPECT_EQ(run.text.View(), u"G0 N20");
  EXPECT_EQ(run.matches, 1);
}

TEST(Rules, LeaveMarkerLinesAlone) {
  const RuleRun run = Apply(u"(MORVA BEGIN 12)\r\n \t(morva begin 3)\r\nBEGIN\r\n(MORVATED BEGIN)",
                            {{u"BEGIN", u"x"}});
  EXPECT_EQ(run.text.View(), u"(MORVA BEGIN 12)\r\n \t(morva begin 3)\r\nx\r\n(MORVATED BEGIN)");
  EXPECT_EQ(run.matches, 1);
}

TEST(Rules, AMatchAtALineStartClearsTheLineStart) {
  // What follows the match is no line start, so the marker behind it is not protected.
  EXPECT_EQ(Apply(u"Q(MORVA BEGIN", {{u"Q", u""}, {u"BEGIN", u"x"}}).text.View(), u"(MORVA x");
}

TEST(Rules, AReplacedLineEndOpensNoProtectedLine) {
  EXPECT_EQ(Apply(u"G0\n(MORVA BEGIN 1)", {{u"\n", u"\n"}, {u"BEGIN", u"x"}}).text.View(),
            u"G0\n(MORVA x 1)");
}

TEST(Rules, StopBelowTwoMillionUnits) {
  const std::u16string text(1999999, u'a');
  EXPECT_FALSE(Apply(text, {{u"b", u"c"}}).overLimit);
  EXPECT_TRUE(Apply(text + u"a", {{u"b", u"c"}}).overLimit);
  EXPECT_TRUE(Apply(std::u16string(1000000, u'a'), {{u"a", u"bb"}}).overLimit);
  EXPECT_FALSE(Apply(std::u16string(999999, u'a'), {{u"a", u"bb"}}).overLimit);
}

TEST(Rules, TakeFollowedPlacesAlong) {
  FindRule rules[2];
  CopyBounded(rules[0].find, kFindUnits, u"abc");
  CopyBounded(rules[0].replaceWith, kFindUnits, u"x");
  CopyBounded(rules[1].find, kFindUnits, u"d");
  CopyBounded(rules[1].replaceWith, kFindUnits, u"long");
  // ".abc.d.": before "abc" is 1, inside it 3, behind it 4, before "d" 5, the end 7. Written
  // is ".x.long.". Given out of order, as a caret and a top line may be.
  std::size_t at[6] = {7, 1, 3, 0, 4, 5};
  const RuleRun run = RunRules(u".abc.d.", rules, 2, false, false, {at, 6});
  EXPECT_EQ(run.text.View(), u".x.long.");
  const std::size_t wanted[6] = {8, 1, 2, 0, 2, 3};
  for (int i = 0; i < 6; ++i) EXPECT_EQ(at[i], wanted[i]) << i;
}

TEST(DoAll, TakesFollowedPlacesAlong) {
  std::size_t at[3] = {6, 2, 4};
  const OwnedText changed = ReplaceOccurrences(u"XaXXbX", u"x", u"yyy", {at, 3});
  EXPECT_EQ(changed.View(), u"yyyayyyyyybyyy");
  EXPECT_EQ(at[0], 14u);
  EXPECT_EQ(at[1], 4u);
  EXPECT_EQ(at[2], 10u);
}

TEST(RuleQueue, HoldsTwentyFourAndRefusesTheNext) {
  ClearRules();
  EXPECT_FALSE(AddRule(u"", u"x"));
  for (int i = 0; i < kMaxRules; ++i) EXPECT_TRUE(AddRule(u"A", u"B"));
  EXPECT_FALSE(AddRule(u"A", u"B"));
  EXPECT_TRUE(RemoveRule(3));
  EXPECT_FALSE(RemoveRule(23));
  EXPECT_TRUE(AddRule(std::u16string(300, u'f'), u"B"));
  EXPECT_EQ(std::u16string(ruleQueue.rules[23].find).size(), 255u);
  EXPECT_EQ(RuleRow(ruleQueue.rules[0]), u"A  \u2192  B");
  ClearRules();
}

TEST(DoAll, CountsAndReplacesAnyCaseWithoutProtection) {
  const std::u16string text = u"(MORVA BEGIN 1) begin aaa";
  EXPECT_EQ(CountOccurrences(text, u"BEGIN"), 2);
  EXPECT_EQ(CountOccurrences(text, u"aa"), 1);
  EXPECT_EQ(ReplaceOccurrences(text, u"begin", u"x").View(), u"(MORVA x 1) x aaa");
  EXPECT_EQ(ReplaceOccurrences(u"aaa", u"a", u"aa").View(), u"aaaaaa");
}

// One pass told place by place: at each place outside marker lines the first rule that matches.
struct PlainRun {
  std::u16string text;
  std::int32_t matches = 0;
};

bool IsMarkerFrom(std::u16string_view text, std::size_t at) {
  while (at < text.size() && (text[at] == u' ' || text[at] == u'\t')) ++at;
  return SameFolded(text.substr(at, 6), u"(MORVA");
}

PlainRun RunPlainly(std::u16string_view text, const std::vector<FindRule>& rules, bool matchCase,
                    bool wholeToken) {
  PlainRun run;
  bool atLineStart = true;
  bool isMarker = false;
  for (std::size_t at = 0; at < text.size();) {
    if (atLineStart) isMarker = IsMarkerFrom(text, at);
    const FindRule* met = nullptr;
    for (const FindRule& rule : rules) {
      if (!met && !isMarker && MatchAt(text, at, rule.find, matchCase, wholeToken)) met = &rule;
    }
    if (met) {
      run.text += met->replaceWith;
      at += std::u16string_view(met->find).size();
      ++run.matches;
      atLineStart = false;
    } else {
      atLineStart = text[at] == u'\r' || text[at] == u'\n';
      run.text += text[at++];
    }
  }
  return run;
}

std::u16string RandomText(std::mt19937& random, std::size_t most, std::u16string_view alphabet) {
  static constexpr std::u16string_view kPieces[] = {u"(MORVA", u"\r\n",  u" \t(morva ",
                                                    u"\n",     u"G01 X", u"\r"};
  std::u16string text;
  const std::size_t length = random() % (most + 1);
  while (text.size() < length) {
    if (random() % 6 == 0) {
      text += kPieces[random() % std::size(kPieces)];
    } else {
      text += alphabet[random() % alphabet.size()];
    }
  }
  return text;
}

TEST(Rules, AgreeWithAPassPlaceByPlace) {
  std::mt19937 random(23);
  for (int run = 0; run < 6000; ++run) {
    const std::u16string_view alphabet =
        random() % 2 ? u"ab" : u"GXYZgxyz01._ \t\r\n(MORVA\u00E9\u0430@`";
    const std::u16string text = RandomText(random, 120, alphabet);
    std::vector<FindRule> rules(random() % (kMaxRules + 1));
    for (FindRule& rule : rules) {
      // Half of them are taken from the text, so that they match.
      std::u16string find = RandomText(random, 5, alphabet);
      if (random() % 2 && !text.empty()) {
        find = text.substr(random() % text.size(), 1 + random() % 24);
      }
      CopyBounded(rule.find, kFindUnits, find);
      CopyBounded(rule.replaceWith, kFindUnits, RandomText(random, 3, alphabet));
    }
    const bool matchCase = random() % 2;
    const bool wholeToken = random() % 2;
    const RuleRun got =
        RunRules(text, rules.data(), static_cast<int>(rules.size()), matchCase, wholeToken);
    const PlainRun wanted = RunPlainly(text, rules, matchCase, wholeToken);
    ASSERT_EQ(got.text.View(), wanted.text) << run;
    ASSERT_EQ(got.matches, wanted.matches) << run;
  }
}

TEST(FindMatch, FindsTheFirstPlaceThatMatches) {
  std::mt19937 random(29);
  for (int run = 0; run < 6000; ++run) {
    const std::u16string_view alphabet = random() % 2 ? u"ab" : u"GXYZgxyz01._ \u00E9\u0430@`[{";
    const std::u16string text = RandomText(random, 150, alphabet);
    std::u16string find = RandomText(random, 3, alphabet);
    if (random() % 2 && !text.empty())
      find = text.substr(random() % text.size(), 1 + random() % 40);
    const std::size_t from = random() % (text.size() + 2);
    const bool matchCase = random() % 2;
    const bool wholeToken = random() % 2;
    std::size_t wanted = from;
    while (wanted < text.size() && !MatchAt(text, wanted, find, matchCase, wholeToken)) ++wanted;
    if (wanted >= text.size()) wanted = text.npos;
    ASSERT_EQ(FindMatch(text, from, find, matchCase, wholeToken), wanted) << run;
  }
}

}  // namespace
}  // namespace morva
