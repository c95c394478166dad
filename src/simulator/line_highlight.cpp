#include "simulator/line_highlight.h"

#include <algorithm>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/palette.h"
#include "documents/edit_link.h"
#include "documents/feature_operations.h"
#include "platform/editor.h"
#include "platform/listing.h"
#include "platform/window.h"
#include "simulator/feature_lines.h"

namespace morva {

namespace {

std::int32_t highlightedFeature = 0;

// The name box follows, or RENAME would give this block the name of the one before.
void SelectPlayedRow(std::int32_t id) {
  const int rows = platform::RowCount(kIdFeatureList);
  for (int row = 0; row < rows; ++row) {
    if (platform::RowData(kIdFeatureList, row) == id) {
      platform::SelectRow(kIdFeatureList, row);
      UpdateFeatureCaptions();
      return;
    }
  }
}

// The text may have become shorter than the path remembers it.
void MarkInEditor(std::int32_t line) {
  if (line >= platform::EditorLineCount(kIdEditor)) {
    platform::MarkEditorLine(kIdEditor, -1, kPlayedLineBand);
    return;
  }
  platform::MarkEditorLine(kIdEditor, line, kPlayedLineBand);
  const int top = platform::FirstVisibleLine(kIdEditor);
  const int shown = platform::VisibleLineCount(kIdEditor);
  if (line >= top && line < top + shown) return;
  platform::ScrollToLine(kIdEditor, std::max(0, line - shown / 2));
  platform::Repaint(kViewGutter);
}

void SelectInWords(std::int32_t line) {
  if (!app.commandWordsActive || line >= platform::EditorLineCount(kIdWordsEditor)) return;
  const int from = platform::EditorLineStart(kIdWordsEditor, line);
  const int to = from + platform::EditorLineLength(kIdWordsEditor, line);
  platform::SetEditorSelection(kIdWordsEditor, {from, to});
  platform::ScrollCaretIntoView(kIdWordsEditor);
}

}  // namespace

void HighlightSourceLine(std::int32_t line) {
  if (line < 0) return;
  const int row = FeatureRowOfLine(line);
  const std::int32_t id = row < 0 ? 0 : featureLines.rows[row].id;
  if (id != highlightedFeature) {
    highlightedFeature = id;
    if (id != 0 && editLink.kind == 0) SelectPlayedRow(id);
    platform::Repaint(kIdFeatureList);
  }
  MarkInEditor(line);
  SelectInWords(line);
}

void MoveHighlight(std::int32_t line) {
  if (line >= platform::EditorLineCount(kIdEditor)) line = -1;
  platform::MarkEditorLine(kIdEditor, line, kPlayedLineBand);
}

std::int32_t HighlightedFeature() { return highlightedFeature; }

void ForgetHighlight() {
  platform::MarkEditorLine(kIdEditor, -1, kPlayedLineBand);
  if (highlightedFeature == 0) return;
  highlightedFeature = 0;
  platform::Repaint(kIdFeatureList);
}

}  // namespace morva
