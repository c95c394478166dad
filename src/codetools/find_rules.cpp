#include "codetools/find_rules.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>

#include "app/limits.h"
#include "codetools/find_match.h"
#include "text/codetext.h"
#include "text/line_ends.h"

namespace morva {

RuleQueue ruleQueue;

namespace {

constexpr std::u16string_view kProtected = u"(MORVA";
constexpr std::size_t kNone = std::u16string_view::npos;

// Whether what stands behind the blanks at a line start makes the line a marker's.
bool OpensProtectedLine(std::u16string_view text, std::size_t at) {
  while (at < text.size() && (text[at] == u' ' || text[at] == u'\t')) ++at;
  return SameFolded(text.substr(at, kProtected.size()), kProtected);
}

// A rule with what the pass asks at every place worked out once.
struct ReadyRule {
  std::u16string_view find;
  std::u16string_view replaceWith;
};

// A bit for each rule.
using RuleBits = std::uint32_t;
static_assert(kMaxRules <= 32);

// The rules that have a unit at one place of their find text, by the unit.
struct RulesByUnit {
  RuleBits low[kAscii] = {};
  RuleBits others = 0;  // of every unit above
};

RuleBits RulesWith(const RulesByUnit& table, char16_t c) {
  return c < kAscii ? table.low[c] : table.others;
}

// A rule is looked for by two neighbouring units of its find text, its sign, which need not be
// the first two. For each unit: the rules whose sign begins with it above those whose sign ends
// with it.
struct Signs {
  std::uint64_t units[kAscii + 1] = {};  // the last for every unit above
  std::size_t offsets[kMaxRules] = {};   // of the sign in the find text
  std::size_t farthest = 0;              // of the offsets
};
constexpr int kSignBegins = 32;  // bits up
constexpr std::size_t kFarthestSign = 16;

struct ReadyRules {
  ReadyRule rules[kMaxRules];
  RulesByUnit first;
  RulesByUnit second;
  RuleBits oneUnit = 0;  // rules without a second unit
  Signs signs;
};

void AddUnit(RulesByUnit& table, char16_t c, RuleBits rule, bool matchCase) {
  if (c >= kAscii) {
    table.others |= rule;
    return;
  }
  table.low[c] |= rule;
  if (matchCase) return;
  const char16_t upper = FoldUpper(c);
  table.low[upper] |= rule;
  if (upper >= u'A' && upper <= u'Z') table.low[upper - u'A' + u'a'] |= rule;
}

ReadyRules MakeReady(const FindRule* rules, int count, bool matchCase) {
  ReadyRules ready;
  for (int i = 0; i < count && i < kMaxRules; ++i) {
    const std::u16string_view find = rules[i].find;
    ready.rules[i] = {find, rules[i].replaceWith};
    if (find.empty()) continue;
    const RuleBits rule = RuleBits{1} << i;
    AddUnit(ready.first, find[0], rule, matchCase);
    if (find.size() == 1) {
      ready.oneUnit |= rule;
    } else {
      AddUnit(ready.second, find[1], rule, matchCase);
    }
  }
  return ready;
}

// How often pairs of units stand in a text, by some of them.
struct PairSample {
  static constexpr std::size_t kPairs = 4096;
  std::uint16_t times[kAscii * kAscii] = {};
};

std::size_t PairNumber(char16_t a, char16_t b) {
  return std::size_t{FoldUpper(a)} % kAscii * kAscii + FoldUpper(b) % kAscii;
}

void TakeSample(PairSample& sample, std::u16string_view text) {
  const std::size_t step = text.size() / PairSample::kPairs + 1;
  for (std::size_t at = 0; at + 1 < text.size(); at += step) {
    ++sample.times[PairNumber(text[at], text[at + 1])];
  }
}

// Where the rarest pair of the find text begins.
std::size_t RarestPair(const PairSample& sample, std::u16string_view find) {
  std::size_t rarest = 0;
  for (std::size_t i = 1; i + 1 < find.size() && i <= kFarthestSign; ++i) {
    if (sample.times[PairNumber(find[i], find[i + 1])] <
        sample.times[PairNumber(find[rarest], find[rarest + 1])]) {
      rarest = i;
    }
  }
  return rarest;
}

void AddSignUnit(Signs& signs, char16_t c, std::uint64_t rule, bool matchCase) {
  if (c >= kAscii) {
    signs.units[kAscii] |= rule;
    return;
  }
  signs.units[c] |= rule;
  if (matchCase) return;
  const char16_t upper = FoldUpper(c);
  signs.units[upper] |= rule;
  if (upper >= u'A' && upper <= u'Z') signs.units[upper - u'A' + u'a'] |= rule;
}

void MakeSigns(ReadyRules& ready, std::u16string_view text, bool matchCase) {
  PairSample sample;
  TakeSample(sample, text);
  Signs& signs = ready.signs;
  for (int i = 0; i < kMaxRules; ++i) {
    const std::u16string_view find = ready.rules[i].find;
    if (find.empty()) continue;
    const std::size_t offset = RarestPair(sample, find);
    const std::uint64_t ends = std::uint64_t{1} << i;
    signs.offsets[i] = offset;
    signs.farthest = std::max(signs.farthest, offset);
    AddSignUnit(signs, find[offset], ends << kSignBegins, matchCase);
    if (find.size() > 1) {
      AddSignUnit(signs, find[offset + 1], ends, matchCase);
    } else {
      for (std::uint64_t& unit : signs.units) unit |= ends;
    }
  }
}

std::uint64_t SignsOf(const Signs& signs, char16_t c) {
  return signs.units[c < kAscii ? c : kAscii];
}

// The rules whose sign stands at `at`.
RuleBits SignsAt(const Signs& signs, std::u16string_view text, std::size_t at) {
  const std::uint64_t begins = SignsOf(signs, text[at]) >> kSignBegins;
  // A rule of one unit takes anything behind it, and the end as well.
  const std::uint64_t ends =
      at + 1 < text.size() ? SignsOf(signs, text[at + 1]) : ~std::uint64_t{0};
  return static_cast<RuleBits>(begins & ends);
}

constexpr std::size_t kTogether = 8;

// Whether one of so many units is above the table.
bool AnyAbove(const char16_t* units) {
  constexpr std::uint64_t kAbove = 0xFF80FF80FF80FF80u;
  static_assert(kAscii == 0x80);
  std::uint64_t words[2];
  static_assert(sizeof words == kTogether * sizeof(char16_t));
  std::memcpy(words, units, sizeof words);
  return ((words[0] | words[1]) & kAbove) != 0;
}

// The first place at or behind `at` where a sign stands; the length of the text for none.
std::size_t FindSign(const Signs& signs, std::u16string_view text, std::size_t at) {
  for (; at + kTogether < text.size(); at += kTogether) {
    const char16_t* const units = text.data() + at;
    if (AnyAbove(units)) {
      for (std::size_t k = 0; k < kTogether; ++k) {
        if (SignsAt(signs, text, at + k) != 0) return at + k;
      }
      continue;
    }
    // Written out: the loop would cost as much as its work.
    const auto of = [&](std::size_t k) { return signs.units[units[k]]; };
    const std::uint64_t s1 = of(1), s2 = of(2), s3 = of(3), s4 = of(4), s5 = of(5), s6 = of(6);
    const std::uint64_t s7 = of(7), s8 = SignsOf(signs, units[kTogether]);
    const std::uint64_t half = (of(0) >> kSignBegins & s1) | (s1 >> kSignBegins & s2) |
                               (s2 >> kSignBegins & s3) | (s3 >> kSignBegins & s4);
    const std::uint64_t rest = (s4 >> kSignBegins & s5) | (s5 >> kSignBegins & s6) |
                               (s6 >> kSignBegins & s7) | (s7 >> kSignBegins & s8);
    if ((half | rest) != 0) break;
  }
  while (at < text.size() && SignsAt(signs, text, at) == 0) ++at;
  return at;
}

const ReadyRule* FirstMatch(std::u16string_view text, std::size_t at, const ReadyRules& ready,
                            bool matchCase, bool wholeToken) {
  RuleBits left = RulesWith(ready.first, text[at]);
  if (left == 0) return nullptr;
  RuleBits next = ready.oneUnit;
  if (at + 1 < text.size()) next |= RulesWith(ready.second, text[at + 1]);
  // In the order of the queue.
  for (left &= next; left != 0; left &= left - 1) {
    const ReadyRule& rule = ready.rules[std::countr_zero(left)];
    if (MatchAt(text, at, rule.find, matchCase, wholeToken)) return &rule;
  }
  return nullptr;
}

struct Asking {
  bool matchCase;
  bool wholeToken;
};

// A place where a rule matches, or none.
struct Met {
  std::size_t at = 0;
  const ReadyRule* rule = nullptr;
};

// The first place at or behind `from` where a rule matches, and the first rule of the queue there.
Met MeetRule(std::u16string_view text, std::size_t from, const ReadyRules& ready, Asking asking) {
  for (std::size_t at = from;; ++at) {
    at = FindSign(ready.signs, text, at);
    if (at >= text.size()) return {text.size(), nullptr};
    bool matches = false;
    for (RuleBits left = SignsAt(ready.signs, text, at); left != 0 && !matches; left &= left - 1) {
      const int i = std::countr_zero(left);
      const std::size_t offset = ready.signs.offsets[i];
      matches = at >= from + offset && MatchAt(text, at - offset, ready.rules[i].find,
                                               asking.matchCase, asking.wholeToken);
    }
    if (!matches) continue;
    // One whose sign comes later may begin earlier.
    std::size_t place = std::max(from, at - std::min(at, ready.signs.farthest));
    for (;; ++place) {
      const ReadyRule* rule = FirstMatch(text, place, ready, asking.matchCase, asking.wholeToken);
      if (rule) return {place, rule};
    }
  }
}

// Whether `at` lies in a marker's line. What stands before `changed` was replaced, or is the
// beginning of the text: a line end there opens no line.
bool IsProtected(std::u16string_view text, std::size_t at, std::size_t changed) {
  std::size_t start = at;
  while (start > changed && text[start - 1] != u'\r' && text[start - 1] != u'\n') --start;
  return (start > changed || start == 0) && OpensProtectedLine(text, start);
}

// What a change leaves, piece by piece in a block of a given size, with the followed places.
struct Writing {
  OwnedText changed;
  FollowedPlaces places;
  int order[kMaxFollowedPlaces] = {};  // by place, so that a piece looks at the next one only
  int next = 0;
};

// False: there is no memory.
bool BeginWriting(Writing& out, std::size_t capacity, FollowedPlaces places) {
  out.places = places;
  out.places.count = std::min(places.count, kMaxFollowedPlaces);
  for (int i = 0; i < out.places.count; ++i) out.order[i] = i;
  std::sort(out.order, out.order + out.places.count,
            [&places](int a, int b) { return places.at[a] < places.at[b]; });
  return Allocate(out.changed, capacity);
}

// `piece` stands for the `taken` units of the old text at `from`.
void WritePiece(Writing& out, std::u16string_view piece, std::size_t from, std::size_t taken) {
  for (; out.next < out.places.count; ++out.next) {
    std::size_t& place = out.places.at[out.order[out.next]];
    if (place >= from + taken) break;
    place = out.changed.length + std::min(place - from, piece.size());
  }
  std::copy(piece.begin(), piece.end(), out.changed.units.get() + out.changed.length);
  out.changed.length += piece.size();
}

void EndWriting(Writing& out) {
  for (; out.next < out.places.count; ++out.next) {
    out.places.at[out.order[out.next]] = out.changed.length;
  }
}

}  // namespace

bool AddRule(std::u16string_view find, std::u16string_view replaceWith) {
  if (ruleQueue.count >= kMaxRules || find.empty()) return false;
  FindRule& rule = ruleQueue.rules[ruleQueue.count++];
  CopyBounded(rule.find, kFindUnits, find);
  CopyBounded(rule.replaceWith, kFindUnits, replaceWith);
  return true;
}

bool RemoveRule(int row) {
  if (row < 0 || row >= ruleQueue.count) return false;
  for (int i = row; i + 1 < ruleQueue.count; ++i) ruleQueue.rules[i] = ruleQueue.rules[i + 1];
  ruleQueue.rules[--ruleQueue.count] = FindRule();
  return true;
}

void ClearRules() { ruleQueue = RuleQueue(); }

std::u16string RuleRow(const FindRule& rule) {
  return std::u16string(rule.find) + u"  \u2192  " + rule.replaceWith;
}

RuleRun RunRules(std::u16string_view text, const FindRule* rules, int count, bool matchCase,
                 bool wholeToken, FollowedPlaces places) {
  RuleRun run;
  run.overLimit = true;
  ReadyRules ready = MakeReady(rules, count, matchCase);
  MakeSigns(ready, text, matchCase);
  Writing out;
  if (!BeginWriting(out, kMaxRuleOutput, places)) return run;
  constexpr std::size_t kRoom = kMaxRuleOutput;
  std::size_t kept = 0;  // from here to `at` everything stays as it is
  std::size_t at = 0;
  while (at < text.size()) {
    const Met met = MeetRule(text, at, ready, {matchCase, wholeToken});
    at = met.at;
    if (!met.rule) break;
    if (IsProtected(text, at, kept)) {
      at = std::min(FindLineEnd(text, at) + 1, text.size());
      continue;
    }
    const std::size_t length = out.changed.length + (at - kept);
    if (length + met.rule->replaceWith.size() >= kRoom) return run;
    WritePiece(out, text.substr(kept, at - kept), kept, at - kept);
    WritePiece(out, met.rule->replaceWith, at, met.rule->find.size());
    at += met.rule->find.size();
    kept = at;
    ++run.matches;
  }
  if (out.changed.length + (at - kept) >= kRoom) return run;
  WritePiece(out, text.substr(kept), kept, at - kept);
  EndWriting(out);
  run.text = std::move(out.changed);
  run.overLimit = false;
  return run;
}

std::int32_t CountOccurrences(std::u16string_view text, std::u16string_view find) {
  const ReadyFind ready = MakeReadyFind(find, false, false);
  std::int32_t count = 0;
  for (std::size_t at = FindMatch(text, 0, ready); at != kNone;
       at = FindMatch(text, at + find.size(), ready)) {
    ++count;
  }
  return count;
}

bool IsInMarker(std::u16string_view text, std::size_t at) {
  const std::size_t end = at == 0 ? kNone : text.find_last_of(u"\r\n", at - 1);
  return OpensProtectedLine(text, end == kNone ? 0 : end + 1);
}

std::int32_t CountInMarkers(std::u16string_view text, std::u16string_view find) {
  const ReadyFind ready = MakeReadyFind(find, false, false);
  std::int32_t count = 0;
  std::size_t looked = 0;  // from here on no line end has been looked for
  bool marker = OpensProtectedLine(text, 0);
  for (std::size_t at = FindMatch(text, 0, ready); at != kNone;
       at = FindMatch(text, at + find.size(), ready)) {
    const std::size_t end = text.substr(looked, at - looked).find_last_of(u"\r\n");
    if (end != kNone) marker = OpensProtectedLine(text, looked + end + 1);
    looked = at;
    count += marker;
  }
  return count;
}

OwnedText ReplaceOccurrences(std::u16string_view text, std::u16string_view find,
                             std::u16string_view replaceWith, FollowedPlaces places) {
  const auto count = static_cast<std::size_t>(CountOccurrences(text, find));
  const std::size_t size = text.size() - count * find.size() + count * replaceWith.size();
  if (size > kMaxChangedUnits) return {};
  Writing out;
  if (!BeginWriting(out, size, places)) return {};
  const ReadyFind ready = MakeReadyFind(find, false, false);
  std::size_t from = 0;
  for (std::size_t at = FindMatch(text, 0, ready); at != kNone; at = FindMatch(text, from, ready)) {
    WritePiece(out, text.substr(from, at - from), from, at - from);
    WritePiece(out, replaceWith, at, find.size());
    from = at + find.size();
  }
  WritePiece(out, text.substr(from), from, text.size() - from);
  EndWriting(out);
  return std::move(out.changed);
}

}  // namespace morva
