// A stage with one open program, for tests of what is written into the editor.
#pragma once

#include <string>
#include <vector>

#include "documents/feature_blocks.h"
#include "documents/insertion.h"
#include "documents/program_tabs.h"
#include "support/stage.h"

namespace morva {

struct BlocksStage : support::Stage {
  BlocksStage() {
    ResetInsertion();
    FreeTabs();
    app.activeTab = 0;
    app.tabCount = 1;
  }
  ~BlocksStage() override {
    ResetInsertion();
    FreeTabs();
    ResetAppState();
  }
  static void Load(std::u16string_view text) { platform::SetEditorText(kIdEditor, text); }
  static void Caret(int position) { platform::SetEditorSelection(kIdEditor, {position, position}); }
  static platform::EditorRange Selection() { return platform::EditorSelection(kIdEditor); }
  static std::u16string Hint() { return platform::TextOf(kIdFeatureHint); }
  static std::vector<std::u16string> RowTexts() {
    std::vector<std::u16string> texts;
    for (int i = 0; i < platform::RowCount(kIdFeatureList); ++i)
      texts.push_back(platform::RowText(kIdFeatureList, i));
    return texts;
  }
};

}  // namespace morva
