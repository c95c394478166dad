#include "codetools/review_colours.h"

#include <algorithm>
#include <vector>

#include "app/limits.h"
#include "app/palette.h"
#include "codetools/colours.h"
#include "codetools/command_words.h"
#include "codetools/compare.h"
#include "codetools/line_changes.h"
#include "platform/editor.h"

namespace morva {

namespace {

using platform::Colour;
using platform::ColourRun;

struct RowColours {
  Colour text;
  Colour band;
};
constexpr RowColours kModifiedRow = {kReviewModified, kReviewModifiedBand};
constexpr RowColours kLeftOnlyRow = {kReviewLeftOnly, kReviewLeftOnlyBand};
constexpr RowColours kRightOnlyRow = {kReviewRightOnly, kReviewRightOnlyBand};

RowColours ColoursOf(std::int32_t type, bool left) {
  if (type == kRowModified) return kModifiedRow;
  return left ? kLeftOnlyRow : kRightOnlyRow;
}

// A word of the program as a band needs it, to be read like those beside the bands.
Colour OnBand(Colour word) {
  static_assert(kCodePercent == kCodeNumber);
  switch (word) {
    case kCodeNumber:
      return kReviewNumber;
    case kCodeM:
      return kReviewM;
    case kCodeTool:
      return kReviewTool;
    case kCodeArc:
      return kReviewArc;
    default:
      return word;
  }
}

// One line is inked unit by unit, so that what lies on top needs no cutting of runs.
struct Ink {
  Colour colour = 0;
  bool bold = false;
  bool marked = false;
  bool operator==(const Ink&) const = default;
};
Ink inks[kMaxColouredLine];
ColourRun tokens[kMaxLineRuns];
WordSpan spans[kMaxLineRuns];
// Tokens with the row's own colour between them and behind the last looked-at unit.
ColourRun merged[2 * kMaxLineRuns + 2];
platform::LineBand bands[kMaxCompareRows];

void InkStretch(int from, int length, Colour colour, bool bold) {
  for (int i = from; i < from + length; ++i) inks[i] = {colour, bold, false};
}

int MergeInks(int length) {
  int count = 0;
  for (int i = 0; i < length;) {
    int end = i + 1;
    while (end < length && inks[end] == inks[i]) ++end;
    if (inks[i] != Ink{kReviewText}) {
      merged[count++] = {i,
                         end - i,
                         inks[i].colour,
                         inks[i].bold,
                         inks[i].marked,
                         inks[i].marked ? kReviewChangeGround : 0};
    }
    i = end;
  }
  return count;
}

// Units of a pane's line in front of the program's own: the number and the marker.
std::size_t FrameOf(std::u16string_view line) {
  constexpr std::size_t kMarkerUnits = 4;
  const std::size_t number = std::min(line.find_first_not_of(u"0123456789"), line.size());
  return std::min(number + kMarkerUnits, line.size());
}

// What `line` has and the line beside it has not.
void InkChanges(std::u16string_view line, std::u16string_view beside, bool ignoreBlanks) {
  const std::size_t frame = FrameOf(line);
  const std::vector<bool> changed =
      ChangedUnits(line.substr(frame), beside.substr(FrameOf(beside)), ignoreBlanks);
  for (std::size_t i = 0; i < changed.size() && frame + i < kMaxColouredLine; ++i) {
    if (changed[i]) inks[frame + i] = {kReviewChange, true, true};
  }
}

// The next line of a text whose lines end in CR LF; `at` goes behind its end.
std::u16string_view NextLine(std::u16string_view text, std::size_t& at) {
  if (at >= text.size()) return {};
  const std::size_t end = std::min(text.find(u'\r', at), text.size());
  const std::u16string_view line = text.substr(at, end - at);
  at = end + 2;
  return line;
}

// Comments go on over rows: a state for the tokens and one for the words.
struct Comments {
  bool tokens = false;
  bool words = false;
};

int ColourRow(std::u16string_view line, Colour base, const ReviewPane& pane,
              std::u16string_view beside, Comments& comments) {
  const std::u16string_view looked = line.substr(0, kMaxColouredLine);
  const int length = static_cast<int>(looked.size());
  InkStretch(0, length, base, false);
  const bool banded = base != kReviewText;
  const auto shown = [banded](Colour word) { return banded ? OnBand(word) : word; };
  const int tokenCount = ColourLine(looked, comments.tokens, tokens, kMaxLineRuns);
  for (int i = 0; i < tokenCount; ++i) {
    InkStretch(tokens[i].from, tokens[i].length, shown(tokens[i].colour), tokens[i].bold);
  }
  const int wordCount =
      pane.words ? CommandWordsIn(looked, comments.words, spans, kMaxLineRuns) : 0;
  for (int i = 0; i < wordCount; ++i) {
    InkStretch(spans[i].from, spans[i].length, shown(spans[i].ofG ? kCodeG : kCodeM), true);
  }
  if (!beside.empty()) InkChanges(line, beside, pane.ignoreBlanks);
  int count = MergeInks(length);
  if (line.size() > looked.size() && banded) {
    merged[count++] = {length, static_cast<int>(line.size()) - length, base, false};
  }
  return count;
}

}  // namespace

ChangedStretch FirstChange(std::u16string_view line, std::u16string_view beside,
                           bool ignoreBlanks) {
  const std::size_t frame = FrameOf(line);
  const std::vector<bool> changed =
      ChangedUnits(line.substr(frame), beside.substr(FrameOf(beside)), ignoreBlanks);
  const auto first = std::ranges::find(changed, true);
  if (first == changed.end()) return {};
  const auto behind = std::find(first, changed.end(), false);
  const auto place = [&](auto at) {
    return static_cast<int>(frame) + static_cast<int>(at - changed.begin());
  };
  return {place(first), place(behind)};
}

void ColourReviewPane(int id, std::u16string_view text, const ReviewPane& pane) {
  const bool coloured = text.size() <= static_cast<std::size_t>(kMaxColouredUnits);
  Comments comments;
  int bandCount = 0;
  std::size_t at = 0;
  std::size_t besideAt = 0;
  platform::HoldEditorRedraw(id, true);
  for (std::int32_t i = 0; i < pane.count && at < text.size(); ++i) {
    const std::u16string_view line = NextLine(text, at);
    const std::u16string_view other = NextLine(pane.beside, besideAt);
    const CompareRow& row = compareResult.rows[pane.rows[i]];
    // A row without a line on this side is no changed line here, but the other side's gap.
    const bool changed = row.type != kRowSame && (pane.left ? row.left : row.right) >= 0;
    const RowColours colours =
        changed ? ColoursOf(row.type, pane.left) : RowColours{kReviewText, 0};
    if (changed) bands[bandCount++] = {i, colours.band};
    if (coloured) {
      const std::u16string_view beside = row.type == kRowModified ? other : std::u16string_view();
      platform::SetLineRuns(id, i, merged, ColourRow(line, colours.text, pane, beside, comments));
    } else if (changed) {
      merged[0] = {0, static_cast<int>(line.size()), colours.text, false};
      platform::SetLineRuns(id, i, merged, 1);
    }
  }
  platform::SetLineBands(id, bands, bandCount);
  platform::HoldEditorRedraw(id, false);
}

}  // namespace morva
