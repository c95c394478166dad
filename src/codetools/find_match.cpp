#include "codetools/find_match.h"

#include <algorithm>

#include "text/codetext.h"
#include "text/unit_block.h"

namespace morva {

namespace {

constexpr std::size_t kNone = std::u16string_view::npos;
constexpr std::size_t kAskedForAnchors = 32;  // units of a find text

bool IsWordUnit(char16_t c) {
  const char16_t folded = FoldUpper(c);
  return (folded >= u'A' && folded <= u'Z') || IsDigit(c) || c == u'_';
}

// How much of a program consists of a unit, roughly: 0 for little.
int Commonness(char16_t c) {
  constexpr std::u16string_view kEverywhere = u"0123456789.- \r\nGXYZN";
  constexpr std::u16string_view kOften = u"()FIJM";
  const char16_t upper = FoldUpper(c);
  if (kEverywhere.find(upper) != kNone) return 2;
  return kOften.find(upper) != kNone ? 1 : 0;
}

Anchor AnchorAt(std::u16string_view find, std::size_t offset, bool matchCase) {
  constexpr char16_t kLowerBit = 0x20;
  const char16_t unit = find[offset];
  const char16_t upper = FoldUpper(unit);
  const bool folds = !matchCase && upper >= u'A' && upper <= u'Z';
  const char16_t fold = folds ? kLowerBit : u'\0';
  return {offset, static_cast<char16_t>(unit | fold), fold};
}

void AskBlock(const char16_t* units, const ReadyFind& ready, unsigned char (&hits)[kBlockUnits]) {
  const char16_t* const one = units + ready.one.offset;
  const char16_t* const other = units + ready.other.offset;
  for (std::size_t k = 0; k < kBlockUnits; ++k) {
    hits[k] = static_cast<unsigned char>(((one[k] | ready.one.fold) == ready.one.unit) &
                                         ((other[k] | ready.other.fold) == ready.other.unit));
  }
}

}  // namespace

bool MatchAt(std::u16string_view text, std::size_t position, std::u16string_view find,
             bool matchCase, bool wholeToken) {
  if (find.empty() || position > text.size() || text.size() - position < find.size()) return false;
  for (std::size_t i = 0; i < find.size(); ++i) {
    const char16_t a = text[position + i];
    const char16_t b = find[i];
    if (a != b && (matchCase || FoldUpper(a) != FoldUpper(b))) return false;
  }
  if (!wholeToken) return true;
  if (position > 0 && IsWordUnit(text[position - 1])) return false;
  const std::size_t behind = position + find.size();
  return behind == text.size() || !IsWordUnit(text[behind]);
}

ReadyFind MakeReadyFind(std::u16string_view find, bool matchCase, bool wholeToken) {
  ReadyFind ready{find, matchCase, wholeToken, {}, {}};
  if (find.empty()) return ready;
  // Two rare units of it; the last ones of those, since programs differ in their last digits.
  const std::u16string_view asked = find.substr(0, kAskedForAnchors);
  std::size_t rarest = 0;
  for (std::size_t i = 1; i < asked.size(); ++i) {
    if (Commonness(asked[i]) <= Commonness(asked[rarest])) rarest = i;
  }
  std::size_t next = rarest == 0 ? asked.size() - 1 : 0;
  for (std::size_t i = 0; i < asked.size(); ++i) {
    if (i != rarest && Commonness(asked[i]) <= Commonness(asked[next])) next = i;
  }
  ready.one = AnchorAt(find, rarest, matchCase);
  ready.other = AnchorAt(find, next, matchCase);
  return ready;
}

std::size_t FindMatch(std::u16string_view text, std::size_t from, const ReadyFind& ready) {
  if (ready.find.empty()) return kNone;
  const std::size_t farthest = std::max(ready.one.offset, ready.other.offset);
  std::size_t at = from;
  for (; at + farthest + kBlockUnits <= text.size(); at += kBlockUnits) {
    unsigned char hits[kBlockUnits];
    AskBlock(text.data() + at, ready, hits);
    for (std::size_t k = FirstHit(hits); k < kBlockUnits; k = FirstHit(hits)) {
      if (MatchAt(text, at + k, ready.find, ready.matchCase, ready.wholeToken)) return at + k;
      hits[k] = 0;
    }
  }
  for (; at < text.size(); ++at) {
    if (MatchAt(text, at, ready.find, ready.matchCase, ready.wholeToken)) return at;
  }
  return kNone;
}

std::size_t FindMatch(std::u16string_view text, std::size_t from, std::u16string_view find,
                      bool matchCase, bool wholeToken) {
  return FindMatch(text, from, MakeReadyFind(find, matchCase, wholeToken));
}

}  // namespace morva
