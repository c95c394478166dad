// Colours of the review panes: the bands of changed rows, and words over them.
//
// Bands and text colours are layout formats of read-only editors; no text is touched here.
#pragma once

#include <cstdint>
#include <string_view>

namespace morva {

// What a pane shows, line by line.
struct ReviewPane {
  const std::int32_t* rows = nullptr;  // indices into the rows of the last comparison
  std::int32_t count = 0;
  bool left = false;
  bool words = false;          // the command words view is on: words of the code table are coloured
  bool ignoreBlanks = false;   // they count for no change
  std::u16string_view beside;  // what the other pane shows; empty: no changed character is marked
};

// The first stretch of a pane's line that the line beside it has not, as places in it; both 0 for
// none.
struct ChangedStretch {
  int from = 0;
  int to = 0;
};
ChangedStretch FirstChange(std::u16string_view line, std::u16string_view beside, bool ignoreBlanks);

// `text` is what the editor `id` shows, a line for each row. Beyond kMaxColouredUnits only the
// rows' own colours are laid, and no changed characters are marked.
void ColourReviewPane(int id, std::u16string_view text, const ReviewPane& pane);

}  // namespace morva
