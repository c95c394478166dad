#include "codetools/compare.h"

#include <algorithm>
#include <cstring>

#include "documents/marker_lines.h"
#include "text/codetext.h"
#include "text/line_ends.h"

namespace morva {

CompareResult compareResult;

namespace {

constexpr int kLookahead = 64;
// Units that lookaheads compare before it is cheaper to number all lines once.
constexpr std::int64_t kFewUnits = 4000000;
constexpr std::size_t kRowFrameUnits = 16;   // a number of ten digits, the marker, the line end
constexpr std::int32_t kHashSlots = 131072;  // twice the lines of both sides, a power of two
constexpr int kWordBits = 64;
// Rows of bits for the exact method: lines of the left times words of the right, for every
// pair that keeps to the cells.
constexpr std::int32_t kBitWords = kMaxCompareCells / kWordBits + kMaxCompareLines + 1;

// Equal lines bear one number, so that the alignment compares numbers.
std::int32_t leftClass[kMaxCompareLines];
std::int32_t rightClass[kMaxCompareLines];
struct Slot {
  std::uint32_t hash;
  std::int32_t side;  // 0 free, 1 left, 2 right
  std::int32_t line;
  std::int32_t number;
};
Slot slots[kHashSlots];

std::uint64_t bitRows[kBitWords];
std::uint64_t matchRow[kMaxCompareLines / kWordBits + 1];
// The last line of each class, so that a lookahead for a line that comes no more is not begun.
std::int32_t lastLeft[2 * kMaxCompareLines];
std::int32_t lastRight[2 * kMaxCompareLines];
std::int32_t firstOfClass[2 * kMaxCompareLines];
std::int32_t nextOfClass[kMaxCompareLines];
CompareRow regrouped[kMaxCompareRows];  // a run of changes

bool IsBlank(char16_t c) { return c == u' ' || c == u'\t'; }

struct Texts {
  std::u16string_view left;
  std::u16string_view right;
  bool ignoreSpaces;
};

std::u16string_view LineText(const Texts& texts, std::int32_t side, std::int32_t line) {
  const CompareLine& l =
      side == 1 ? compareResult.left.lines[line] : compareResult.right.lines[line];
  const std::u16string_view text = side == 1 ? texts.left : texts.right;
  return text.substr(static_cast<std::size_t>(l.start), static_cast<std::size_t>(l.length));
}

bool IsMarkerLine(std::u16string_view line) { return line.starts_with(kMarkerHead); }

// True when text is left behind the last line that fits.
bool SplitSide(std::u16string_view text, bool showTags, CompareSide& side) {
  side.count = 0;
  std::size_t at = 0;
  std::int32_t number = 0;
  while (at < text.size()) {
    if (side.count == kMaxCompareLines) return true;
    const std::size_t end = FindLineEnd(text, at);
    ++number;
    if (showTags || !IsMarkerLine(text.substr(at, end - at))) {
      side.lines[side.count++] = {static_cast<std::int32_t>(at),
                                  static_cast<std::int32_t>(end - at), number};
    }
    at = end;
    if (at < text.size()) {
      const bool pair = text[at] == u'\r' && at + 1 < text.size() && text[at + 1] == u'\n';
      at += pair ? 2 : 1;
    }
  }
  return false;
}

// FNV-1a over four units at a time, folded to 32 bits; it stays in memory only.
std::uint32_t HashLine(std::u16string_view line, bool ignoreSpaces) {
  constexpr std::uint64_t kPrime = 0x100000001B3u;
  std::uint64_t hash = 0xCBF29CE484222325u;
  std::size_t at = 0;
  if (!ignoreSpaces) {
    for (; at + 4 <= line.size(); at += 4) {
      std::uint64_t four;
      std::memcpy(&four, line.data() + at, sizeof four);
      hash = (hash ^ four) * kPrime;
      hash ^= hash >> 32;
    }
  }
  for (; at < line.size(); ++at) {
    if (ignoreSpaces && IsBlank(line[at])) continue;
    hash = (hash ^ line[at]) * kPrime;
  }
  return static_cast<std::uint32_t>(hash ^ (hash >> 32));
}

std::int32_t ClassOf(const Texts& texts, std::int32_t side, std::int32_t line,
                     std::int32_t& classes) {
  const std::u16string_view text = LineText(texts, side, line);
  const std::uint32_t hash = HashLine(text, texts.ignoreSpaces);
  std::uint32_t at = (hash ^ (hash >> 15)) & (kHashSlots - 1);
  while (slots[at].side != 0) {
    const Slot& slot = slots[at];
    if (slot.hash == hash &&
        CompareLinesEqual(LineText(texts, slot.side, slot.line), text, texts.ignoreSpaces)) {
      return slot.number;
    }
    at = (at + 1) & (kHashSlots - 1);
  }
  slots[at] = {hash, side, line, classes};
  return classes++;
}

// How many classes of equal lines there are.
std::int32_t NumberLines(const Texts& texts) {
  for (Slot& slot : slots) slot.side = 0;
  std::int32_t classes = 0;
  for (std::int32_t i = 0; i < compareResult.left.count; ++i) {
    leftClass[i] = ClassOf(texts, 1, i, classes);
  }
  for (std::int32_t j = 0; j < compareResult.right.count; ++j) {
    rightClass[j] = ClassOf(texts, 2, j, classes);
  }
  return classes;
}

void AddCompareRow(std::int32_t left, std::int32_t right, std::int32_t type) {
  compareResult.rows[compareResult.rowCount++] = {left, right, type};
}

// The table of longest common subsequences from the end, a bit for each step of a row: bit k
// of row i is clear where L(i, m - 1 - k) is one more than L(i, m - k). All of a row follows
// from the row below by one addition over its words (the bit-vector method of the trade).
struct BitTable {
  std::int32_t n;
  std::int32_t m;
  std::int32_t words;
};

const std::uint64_t* BitRow(const BitTable& table, std::int32_t i) {
  return bitRows + static_cast<std::size_t>(i) * static_cast<std::size_t>(table.words);
}

void ChainRightLines(const BitTable& table, std::int32_t classes) {
  for (std::int32_t c = 0; c < classes; ++c) firstOfClass[c] = -1;
  for (std::int32_t j = 0; j < table.m; ++j) {
    nextOfClass[j] = firstOfClass[rightClass[j]];
    firstOfClass[rightClass[j]] = j;
  }
}

void MatchLine(const BitTable& table, std::int32_t lineClass) {
  for (std::int32_t w = 0; w < table.words; ++w) matchRow[w] = 0;
  for (std::int32_t j = firstOfClass[lineClass]; j >= 0; j = nextOfClass[j]) {
    const std::int32_t k = table.m - 1 - j;
    matchRow[k / kWordBits] |= std::uint64_t{1} << (k % kWordBits);
  }
}

void FillBitTable(const BitTable& table, std::int32_t classes) {
  ChainRightLines(table, classes);
  std::uint64_t* below =
      bitRows + static_cast<std::size_t>(table.n) * static_cast<std::size_t>(table.words);
  for (std::int32_t w = 0; w < table.words; ++w) below[w] = ~std::uint64_t{0};
  std::int32_t matched = -1;
  for (std::int32_t i = table.n - 1; i >= 0; --i) {
    if (leftClass[i] != matched) MatchLine(table, leftClass[i]);
    matched = leftClass[i];
    std::uint64_t* row = below - table.words;
    std::uint64_t carry = 0;
    for (std::int32_t w = 0; w < table.words; ++w) {
      const std::uint64_t v = below[w];
      const std::uint64_t u = v & matchRow[w];
      const std::uint64_t half = v + u;
      const std::uint64_t sum = half + carry;
      carry = (half < v || sum < half) ? 1 : 0;
      row[w] = sum | (v & ~matchRow[w]);
    }
    below = row;
  }
}

// L(i, j): the clear bits of row i below bit m - j.
std::int32_t LengthAt(const BitTable& table, std::int32_t i, std::int32_t j) {
  const std::uint64_t* row = BitRow(table, i);
  const std::int32_t bits = table.m - j;
  std::int32_t set = 0;
  std::int32_t w = 0;
  for (; (w + 1) * kWordBits <= bits; ++w) set += __builtin_popcountll(row[w]);
  const std::int32_t rest = bits - w * kWordBits;
  if (rest > 0) set += __builtin_popcountll(row[w] & ((std::uint64_t{1} << rest) - 1));
  return bits - set;
}

void WalkExact(std::int32_t classes) {
  BitTable table{compareResult.left.count, compareResult.right.count, 0};
  table.words = (table.m + kWordBits - 1) / kWordBits;
  FillBitTable(table, classes);
  std::int32_t i = 0;
  std::int32_t j = 0;
  while (i < table.n || j < table.m) {
    if (i < table.n && j < table.m && leftClass[i] == rightClass[j]) {
      AddCompareRow(i++, j++, kRowSame);
    } else if (i >= table.n) {
      AddCompareRow(-1, j++, kRowAdded);
    } else if (j >= table.m) {
      AddCompareRow(i++, -1, kRowRemoved);
    } else if (LengthAt(table, i + 1, j) >= LengthAt(table, i, j + 1)) {
      AddCompareRow(i++, -1, kRowRemoved);
    } else {
      AddCompareRow(-1, j++, kRowAdded);
    }
  }
}

void FindLastLines(std::int32_t classes) {
  std::fill_n(lastLeft, classes, -1);
  std::fill_n(lastRight, classes, -1);
  for (std::int32_t i = 0; i < compareResult.left.count; ++i) lastLeft[leftClass[i]] = i;
  for (std::int32_t j = 0; j < compareResult.right.count; ++j) lastRight[rightClass[j]] = j;
}

// Equal programs differ in few places. So lines are compared as texts first, and numbered when
// the lookaheads have become many: the answer is the same.
struct Aligning {
  Texts texts;
  bool numbered = false;
  std::int64_t unitsLeft = kFewUnits;
};

bool LinesMatch(Aligning& aligning, std::int32_t i, std::int32_t j) {
  if (aligning.numbered) return leftClass[i] == rightClass[j];
  const std::u16string_view left = LineText(aligning.texts, 1, i);
  const std::u16string_view right = LineText(aligning.texts, 2, j);
  return CompareLinesEqual(left, right, aligning.texts.ignoreSpaces);
}

void NumberIfMany(Aligning& aligning, std::int32_t i, std::int32_t j) {
  if (aligning.numbered) return;
  const std::int64_t longer =
      std::max(compareResult.left.lines[i].length, compareResult.right.lines[j].length);
  aligning.unitsLeft -= 2 * kLookahead * (longer + 1);
  if (aligning.unitsLeft >= 0) return;
  FindLastLines(NumberLines(aligning.texts));
  aligning.numbered = true;
}

// The first distance from 1 to 64 at which the left line ahead equals right line j (`a`) or
// the right line ahead equals left line i (`b`), 0 for none.
void LookAhead(Aligning& aligning, std::int32_t i, std::int32_t j, int& a, int& b) {
  a = 0;
  b = 0;
  NumberIfMany(aligning, i, j);
  if (aligning.numbered && lastLeft[rightClass[j]] <= i && lastRight[leftClass[i]] <= j) return;
  for (int k = 1; k <= kLookahead && a == 0 && b == 0; ++k) {
    if (i + k < compareResult.left.count && LinesMatch(aligning, i + k, j)) a = k;
    if (j + k < compareResult.right.count && LinesMatch(aligning, i, j + k)) b = k;
  }
}

void WalkLookahead(const Texts& texts) {
  Aligning aligning{texts};
  const std::int32_t n = compareResult.left.count;
  const std::int32_t m = compareResult.right.count;
  std::int32_t i = 0;
  std::int32_t j = 0;
  while (i < n || j < m) {
    if (i < n && j < m && LinesMatch(aligning, i, j)) {
      AddCompareRow(i++, j++, kRowSame);
      continue;
    }
    if (i >= n) {
      AddCompareRow(-1, j++, kRowAdded);
      continue;
    }
    if (j >= m) {
      AddCompareRow(i++, -1, kRowRemoved);
      continue;
    }
    int a = 0;
    int b = 0;
    LookAhead(aligning, i, j, a, b);
    if (a == 0 && b == 0) {
      AddCompareRow(i++, j++, kRowModified);
    } else if (a == 0 || (b != 0 && b < a)) {
      AddCompareRow(-1, j++, kRowAdded);
    } else {
      AddCompareRow(i++, -1, kRowRemoved);
    }
  }
}

// Within the run of changes from `at` to `end` the k-th left line stands beside the k-th right
// one. How many rows are left of it, in `regrouped`.
std::int32_t RegroupRun(std::int32_t at, std::int32_t end) {
  std::int32_t count = 0;
  std::int32_t l = at;
  std::int32_t r = at;
  for (;;) {
    while (l < end && compareResult.rows[l].left < 0) ++l;
    while (r < end && compareResult.rows[r].right < 0) ++r;
    if (l >= end && r >= end) return count;
    const std::int32_t left = l < end ? compareResult.rows[l++].left : -1;
    const std::int32_t right = r < end ? compareResult.rows[r++].right : -1;
    const std::int32_t one = left >= 0 ? kRowRemoved : kRowAdded;
    regrouped[count++] = {left, right, left >= 0 && right >= 0 ? kRowModified : one};
  }
}

void RegroupRows() {
  std::int32_t out = 0;
  std::int32_t at = 0;
  CompareRow* const rows = compareResult.rows;
  const std::int32_t count = compareResult.rowCount;
  while (at < count) {
    if (rows[at].type == kRowSame) {
      rows[out++] = rows[at++];
      continue;
    }
    std::int32_t end = at;
    while (end < count && rows[end].type != kRowSame) ++end;
    const std::int32_t left = RegroupRun(at, end);
    std::copy_n(regrouped, left, rows + out);
    out += left;
    at = end;
  }
  compareResult.rowCount = out;
}

const char16_t* RowMarker(std::int32_t type) {
  switch (type) {
    case kRowRemoved:
      return u" -  ";
    case kRowAdded:
      return u" +  ";
    case kRowModified:
      return u" ~  ";
    default:
      return u"    ";
  }
}

}  // namespace

bool CompareLinesEqual(std::u16string_view a, std::u16string_view b, bool ignoreSpaces) {
  if (!ignoreSpaces) {
    return a.size() == b.size() &&
           (a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof a[0]) == 0);
  }
  std::size_t i = 0;
  std::size_t j = 0;
  for (;;) {
    while (i < a.size() && IsBlank(a[i])) ++i;
    while (j < b.size() && IsBlank(b[j])) ++j;
    if (i == a.size() || j == b.size()) return i == a.size() && j == b.size();
    if (a[i++] != b[j++]) return false;
  }
}

void EmptyCompare() { compareResult.rowCount = 0; }

void CompareTexts(std::u16string_view left, std::u16string_view right,
                  const CompareOptions& options) {
  compareResult.rowCount = 0;
  const bool leftCut = SplitSide(left, options.showTags, compareResult.left);
  const bool rightCut = SplitSide(right, options.showTags, compareResult.right);
  compareResult.truncated = leftCut || rightCut;
  const Texts texts{left, right, options.ignoreSpaces};
  const std::int64_t cells = (static_cast<std::int64_t>(compareResult.left.count) + 1) *
                             (static_cast<std::int64_t>(compareResult.right.count) + 1);
  compareResult.largeFile = cells > kMaxCompareCells;
  if (compareResult.largeFile) {
    WalkLookahead(texts);
  } else {
    WalkExact(NumberLines(texts));
  }
  RegroupRows();
}

CompareCounts CountCompareRows() {
  CompareCounts counts;
  for (std::int32_t i = 0; i < compareResult.rowCount; ++i) {
    switch (compareResult.rows[i].type) {
      case kRowRemoved:
        ++counts.removed;
        break;
      case kRowAdded:
        ++counts.added;
        break;
      case kRowModified:
        ++counts.modified;
        break;
      default:
        break;
    }
  }
  return counts;
}

std::u16string CompareSummary() {
  const CompareCounts counts = CountCompareRows();
  std::u16string text = u"READ-ONLY REVIEW   Added + " + IntegerText(counts.added) +
                        u"   Removed - " + IntegerText(counts.removed) + u"   Modified ~ " +
                        IntegerText(counts.modified);
  if (compareResult.largeFile) text += u"   | large-file alignment (64-line lookahead)";
  if (compareResult.truncated) {
    text += u"   | LIMIT: first " + IntegerText(kMaxCompareLines) + u" lines only";
  }
  return text;
}

bool IsRowShown(const CompareRow& row, const CompareOptions& options) {
  return !options.changesOnly || row.type != kRowSame;
}

OwnedText ComparePaneText(std::u16string_view text, bool leftSide, const CompareOptions& options) {
  OwnedText pane;
  // Room for the longest number of each row.
  std::size_t capacity = text.size();
  capacity += static_cast<std::size_t>(compareResult.rowCount) * kRowFrameUnits;
  if (!Allocate(pane, capacity)) return pane;
  char16_t* out = pane.units.get();
  const auto write = [&out](std::u16string_view piece) {
    out = std::copy(piece.begin(), piece.end(), out);
  };
  for (std::int32_t i = 0; i < compareResult.rowCount; ++i) {
    const CompareRow& row = compareResult.rows[i];
    if (!IsRowShown(row, options)) continue;
    const std::int32_t index = leftSide ? row.left : row.right;
    if (index >= 0) {
      const CompareLine& line =
          leftSide ? compareResult.left.lines[index] : compareResult.right.lines[index];
      write(IntegerText(line.number));
      write(RowMarker(row.type));
      write(
          text.substr(static_cast<std::size_t>(line.start), static_cast<std::size_t>(line.length)));
    }
    write(u"\r\n");
  }
  pane.length = static_cast<std::size_t>(out - pane.units.get());
  return pane;
}

}  // namespace morva
