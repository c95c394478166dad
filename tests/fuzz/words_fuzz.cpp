// Both conversions agree with a slow reading of their rules on any text; code goes to words
// and back with nothing lost. What is typed into the words of the view and taken out again leaves
// the code behind them as it was, and so do all of the words, cut and put in again.
#include "codetools/command_words.h"
#include "codetools/words_pair.h"
#include "fuzz/fuzz.h"
#include "support/reference_words.h"
#include "support/whole_words.h"

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

// Where the last byte of an input lies in a text, as a part of its length.
std::size_t PlaceIn(std::u16string_view text, const std::uint8_t* data, std::size_t size) {
  return size == 0 ? 0 : text.size() * data[size - 1] / 255;
}

void CheckPair(std::u16string_view text, const std::uint8_t* data, std::size_t size) {
  static constexpr std::u16string_view kTyped[] = {u"5", u"(", u")\r\n", u";", u"\n", u"\rDwell\r"};
  morva::WordsPair pair;
  if (!support::MakePair(text, pair)) return;
  fuzz::Check(Joined(pair.code) == text, "the pair has the code as it is");
  const std::u16string words = Joined(pair.words);
  const std::u16string_view typed = kTyped[size % std::size(kTyped)];
  const std::size_t at = PlaceIn(words, data, size);
  std::u16string changed = words;
  changed.insert(at, typed);
  support::TakeWhole(pair, changed, at + typed.size());
  support::TakeWhole(pair, words, at);
  fuzz::Check(Joined(pair.code) == text, "what is typed and taken out again leaves the code");
  support::TakeWhole(pair, u"", 0);
  support::TakeWhole(pair, words, words.size());
  fuzz::Check(Joined(pair.code) == text, "what is cut and put in again is the code as it was");
  fuzz::Check(pair.replaced.empty(), "nothing is told apart from what it was");
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
  CheckPair(text, data, size);
  if (HoldsCodeOnly(text))
    fuzz::Check(reference::NothingLost(text, back.View()), "nothing is lost there and back");
  return 0;
}
