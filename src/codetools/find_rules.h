// Matching and replacement rules: what stands where in a text, and one pass of queued rules.
//
// Pure functions and the rule queue. Rules look at the text as it stood before the batch,
// never at what an earlier rule wrote, and leave the marker lines of feature blocks alone.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "app/limits.h"
#include "codetools/owned_text.h"

namespace morva {

struct FindRule {
  char16_t find[kFindUnits] = {};
  char16_t replaceWith[kFindUnits] = {};
};

struct RuleQueue {
  std::int32_t count = 0;
  FindRule rules[kMaxRules];
};
extern RuleQueue ruleQueue;

// Appends a pair, each cut at 255 units. False: 24 are queued or the find text is empty.
bool AddRule(std::u16string_view find, std::u16string_view replaceWith);
// Closes the gap. False: no such row.
bool RemoveRule(int row);
void ClearRules();
// The list row of a rule: find, two blanks, an arrow, two blanks, replacement.
std::u16string RuleRow(const FindRule& rule);

// Places in the text before a change, 0 to its length. The change sets each to where the same
// place lies behind it: a place inside what was replaced stays as far into the replacement as
// that goes.
struct FollowedPlaces {
  std::size_t* at = nullptr;
  int count = 0;
};

struct RuleRun {
  OwnedText text;
  std::int32_t matches = 0;
  // The output would reach 2,000,000 units, or there is no memory for it; nothing else counts.
  bool overLimit = false;
};
// One pass of `rules` over the text: at each place outside marker lines the first rule in the
// queue that matches wins.
RuleRun RunRules(std::u16string_view text, const FindRule* rules, int count, bool matchCase,
                 bool wholeToken, FollowedPlaces places = {});

// Every occurrence, any case, no bounds, no protection, from left to right.
std::int32_t CountOccurrences(std::u16string_view text, std::u16string_view find);
// How many of them begin in marker lines of feature blocks.
std::int32_t CountInMarkers(std::u16string_view text, std::u16string_view find);
// Whether the line at `at` is a marker's.
bool IsInMarker(std::u16string_view text, std::size_t at);
// Without units also where the text would pass kMaxChangedUnits.
OwnedText ReplaceOccurrences(std::u16string_view text, std::u16string_view find,
                             std::u16string_view replaceWith, FollowedPlaces places = {});

}  // namespace morva
