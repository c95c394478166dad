#include "codetools/review_colours.h"

#include <algorithm>

#include "app/limits.h"
#include "app/palette.h"
#include "codetools/colours.h"
#include "codetools/command_words.h"
#include "codetools/compare.h"
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

// One line is inked unit by unit, so that what lies on top needs no cutting of runs.
struct Ink {
  Colour colour;
  bool bold;
};
Ink inks[kMaxColouredLine];
ColourRun tokens[kMaxLineRuns];
WordSpan spans[kMaxLineRuns];
// Tokens with the row's own colour between them and behind the last looked-at unit.
ColourRun merged[2 * kMaxLineRuns + 2];
platform::LineBand bands[kMaxCompareRows];

void InkStretch(int from, int length, Colour colour, bool bold) {
  for (int i = from; i < from + length; ++i) inks[i] = {colour, bold};
}

int MergeInks(int length) {
  int count = 0;
  for (int i = 0; i < length;) {
    int end = i + 1;
    while (end < length && inks[end].colour == inks[i].colour && inks[end].bold == inks[i].bold) {
      ++end;
    }
    const bool plain = inks[i].colour == kReviewText && !inks[i].bold;
    if (!plain) merged[count++] = {i, end - i, inks[i].colour, inks[i].bold};
    i = end;
  }
  return count;
}

// Comments go on over rows: a state for the tokens and one for the words.
struct Comments {
  bool tokens = false;
  bool words = false;
};

int ColourRow(std::u16string_view line, Colour base, bool words, Comments& comments) {
  const std::u16string_view looked = line.substr(0, kMaxColouredLine);
  const int length = static_cast<int>(looked.size());
  InkStretch(0, length, base, false);
  const int tokenCount = ColourLine(looked, comments.tokens, tokens, kMaxLineRuns);
  for (int i = 0; i < tokenCount; ++i) {
    InkStretch(tokens[i].from, tokens[i].length, tokens[i].colour, tokens[i].bold);
  }
  const int wordCount = words ? CommandWordsIn(looked, comments.words, spans, kMaxLineRuns) : 0;
  for (int i = 0; i < wordCount; ++i) {
    InkStretch(spans[i].from, spans[i].length, spans[i].ofG ? kCodeG : kCodeM, true);
  }
  int count = MergeInks(length);
  if (line.size() > looked.size() && base != kReviewText) {
    merged[count++] = {length, static_cast<int>(line.size()) - length, base, false};
  }
  return count;
}

}  // namespace

void ColourReviewPane(int id, std::u16string_view text, const ReviewPane& pane) {
  const bool coloured = text.size() <= static_cast<std::size_t>(kMaxColouredUnits);
  Comments comments;
  int bandCount = 0;
  std::size_t at = 0;
  platform::HoldEditorRedraw(id, true);
  for (std::int32_t i = 0; i < pane.count && at < text.size(); ++i) {
    const std::size_t end = std::min(text.find(u'\r', at), text.size());
    const std::u16string_view line = text.substr(at, end - at);
    at = end + 2;
    const CompareRow& row = compareResult.rows[pane.rows[i]];
    // A row without a line on this side is no changed line here, but the other side's gap.
    const bool changed = row.type != kRowSame && (pane.left ? row.left : row.right) >= 0;
    const RowColours colours =
        changed ? ColoursOf(row.type, pane.left) : RowColours{kReviewText, 0};
    if (changed) bands[bandCount++] = {i, colours.band};
    if (coloured) {
      platform::SetLineRuns(id, i, merged, ColourRow(line, colours.text, pane.words, comments));
    } else if (changed) {
      merged[0] = {0, static_cast<int>(line.size()), colours.text, false};
      platform::SetLineRuns(id, i, merged, 1);
    }
  }
  platform::SetLineBands(id, bands, bandCount);
  platform::HoldEditorRedraw(id, false);
}

}  // namespace morva
