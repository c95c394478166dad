// Two stages for questions about text: a control that the user types into, and a code editor.
#pragma once

#include <string>

#include "contract/contract.h"

namespace contract {

// Control 1 is an edit line or a multi-line edit.
class TypedText : public Contract {
 protected:
  // It holds the text and has the keyboard; nothing was told yet.
  static void Start(const char16_t* text) {
    platform::SetText(1, text);
    platform::SetFocusTo(1);
    Forget();
  }
};

class CodeEditor : public Contract {
 protected:
  static constexpr int kId = 300;
  static std::u16string Text() { return std::u16string(platform::EditorText(kId)); }
  // Anchor and caret.
  static std::string Selection() {
    const platform::EditorRange range = platform::EditorSelection(kId);
    return std::to_string(range.from) + " " + std::to_string(range.to);
  }
  static void Select(int from, int to) {
    platform::SetEditorSelection(kId, {from, to});
    Forget();
  }
};

}  // namespace contract
