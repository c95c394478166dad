// Both conversions agree with a slow reading of their rules on any text; code goes to words
// and back with nothing lost.
#include "codetools/command_words.h"
#include "fuzz/fuzz.h"
#include "support/reference_words.h"

namespace {

// The slow reading tries every word at every character.
constexpr std::size_t kLongestText = 1024;

// The dash of the shared words has a byte of its own here, the one it has in Windows-1252.
std::u16string TextWithDashes(const std::uint8_t* data, std::size_t size) {
  std::u16string text = fuzz::TextOf(data, size < kLongestText ? size : kLongestText);
  for (char16_t& c : text) {
    if (c == 0x9797) c = u'\u2014';
  }
  return text;
}

bool IsMacro(std::u16string_view run) {
  for (const auto& macro : reference::kMacros) {
    if (macro[0] == reference::Uppered(run)) return true;
  }
  return false;
}

// No plain language outside comments. Code with such text in it can be taken for words: "G09
// MODE" reads "Exact Stop MODE", which is G61, "ARC TAN" comes back as ATAN, and in "DwellG1" the
// blank before the second word makes the first one a word.
bool HoldsCodeOnly(std::u16string_view text) {
  std::size_t run = 0;
  bool comment = false;
  for (std::size_t i = 0; i <= text.size(); ++i) {
    const char16_t c = i < text.size() ? text[i] : u' ';
    if (!comment && reference::Letter(c)) {
      ++run;
      continue;
    }
    if (run > 2 && !IsMacro(text.substr(i - run, run))) return false;
    run = 0;
    if (c == u'(') comment = true;
    if (c == u')') comment = false;
  }
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::u16string text = TextWithDashes(data, size);
  const morva::OwnedText words = morva::CodeToWords(text);
  fuzz::Check(words.View() == reference::CodeToWords(text), "the words are those of the rules");
  const morva::OwnedText code = morva::WordsToCode(text);
  fuzz::Check(code.View() == reference::WordsToCode(text), "the code is that of the rules");
  const morva::OwnedText back = morva::WordsToCode(words.View());
  fuzz::Check(back.View() == reference::WordsToCode(words.View()), "and so it is back from words");
  if (HoldsCodeOnly(text))
    fuzz::Check(reference::NothingLost(text, back.View()), "nothing is lost there and back");
  return 0;
}
