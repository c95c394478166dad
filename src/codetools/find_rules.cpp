#include "codetools/find_rules.h"

#include <algorithm>
#include <bit>
#include <utility>

#include "app/limits.h"
#include "text/codetext.h"

namespace morva {

RuleQueue ruleQueue;

namespace {

constexpr std::u16string_view kProtected = u"(MORVA";
constexpr std::size_t kNone = std::u16string_view::npos;

bool IsWordUnit(char16_t c) {
  const char16_t folded = FoldUpper(c);
  return (folded >= u'A' && folded <= u'Z') || IsDigit(c) || c == u'_';
}

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

struct ReadyRules {
  ReadyRule rules[kMaxRules];
  RulesByUnit first;
  RulesByUnit second;
  RuleBits oneUnit = 0;  // rules without a second unit
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

bool MatchAt(std::u16string_view text, std::size_t position, std::u16string_view find,
             bool matchCase, bool wholeToken) {
  if (find.empty() || position > text.size() || text.size() - position < find.size()) return false;
  for (std::size_t i = 0; i < find.size(); ++i) {
    const char16_t a = text[position + i];
    const char16_t b = find[i];
    if (matchCase ? a != b : FoldUpper(a) != FoldUpper(b)) return false;
  }
  if (!wholeToken) return true;
  if (position > 0 && IsWordUnit(text[position - 1])) return false;
  const std::size_t behind = position + find.size();
  return behind == text.size() || !IsWordUnit(text[behind]);
}

std::size_t FindMatch(std::u16string_view text, std::size_t from, std::u16string_view find,
                      bool matchCase, bool wholeToken) {
  for (std::size_t i = from; i < text.size(); ++i) {
    if (MatchAt(text, i, find, matchCase, wholeToken)) return i;
  }
  return kNone;
}

RuleRun RunRules(std::u16string_view text, const FindRule* rules, int count, bool matchCase,
                 bool wholeToken, FollowedPlaces places) {
  RuleRun run;
  run.overLimit = true;
  const ReadyRules ready = MakeReady(rules, count, matchCase);
  Writing out;
  if (!BeginWriting(out, kMaxRuleOutput, places)) return run;
  constexpr std::size_t kRoom = kMaxRuleOutput;
  bool atLineStart = true;
  bool protectedLine = false;
  std::size_t kept = 0;  // from here to `at` everything stays as it is
  std::size_t at = 0;
  while (at < text.size()) {
    const std::size_t length = out.changed.length + (at - kept);
    if (atLineStart) protectedLine = OpensProtectedLine(text, at);
    const ReadyRule* rule =
        protectedLine ? nullptr : FirstMatch(text, at, ready, matchCase, wholeToken);
    if (rule) {
      if (length + rule->replaceWith.size() >= kRoom) return run;
      WritePiece(out, text.substr(kept, at - kept), kept, at - kept);
      WritePiece(out, rule->replaceWith, at, rule->find.size());
      at += rule->find.size();
      kept = at;
      ++run.matches;
      atLineStart = false;
      continue;
    }
    if (length >= kRoom - 1) return run;
    const char16_t c = text[at++];
    atLineStart = c == u'\r' || c == u'\n';
  }
  WritePiece(out, text.substr(kept), kept, at - kept);
  EndWriting(out);
  run.text = std::move(out.changed);
  run.overLimit = false;
  return run;
}

std::int32_t CountOccurrences(std::u16string_view text, std::u16string_view find) {
  std::int32_t count = 0;
  for (std::size_t at = FindMatch(text, 0, find, false, false); at != kNone;
       at = FindMatch(text, at + find.size(), find, false, false)) {
    ++count;
  }
  return count;
}

bool IsInMarker(std::u16string_view text, std::size_t at) {
  const std::size_t end = at == 0 ? kNone : text.find_last_of(u"\r\n", at - 1);
  return OpensProtectedLine(text, end == kNone ? 0 : end + 1);
}

std::int32_t CountInMarkers(std::u16string_view text, std::u16string_view find) {
  std::int32_t count = 0;
  std::size_t looked = 0;  // from here on no line end has been looked for
  bool marker = OpensProtectedLine(text, 0);
  for (std::size_t at = FindMatch(text, 0, find, false, false); at != kNone;
       at = FindMatch(text, at + find.size(), find, false, false)) {
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
  std::size_t from = 0;
  for (std::size_t at = FindMatch(text, 0, find, false, false); at != kNone;
       at = FindMatch(text, from, find, false, false)) {
    WritePiece(out, text.substr(from, at - from), from, at - from);
    WritePiece(out, replaceWith, at, find.size());
    from = at + find.size();
  }
  WritePiece(out, text.substr(from), from, text.size() - from);
  EndWriting(out);
  return std::move(out.changed);
}

}  // namespace morva
