#include "library/kept_text.h"

#include <cstddef>

namespace morva {

namespace {

// What breaks a line, in the settings file or in a list, or has no face of its own.
bool IsControl(char16_t c) {
  return c < 0x20 || (c >= 0x7F && c < 0xA0) || c == 0x2028 || c == 0x2029;
}

bool IsHighSurrogate(char16_t c) { return c >= 0xD800 && c < 0xDC00; }
bool IsLowSurrogate(char16_t c) { return c >= 0xDC00 && c < 0xE000; }

}  // namespace

std::u16string KeptText(std::u16string_view text, int units) {
  const auto most = static_cast<std::size_t>(units > 0 ? units - 1 : 0);
  std::u16string kept;
  for (std::size_t i = 0; i < text.size() && kept.size() < most; ++i) {
    const char16_t c = text[i];
    if (IsHighSurrogate(c) && i + 1 < text.size() && IsLowSurrogate(text[i + 1])) {
      if (kept.size() + 2 > most) break;
      kept.append(text.substr(i++, 2));
    } else if (IsHighSurrogate(c) || IsLowSurrogate(c)) {
      kept += u'\uFFFD';
    } else {
      kept += IsControl(c) ? u' ' : c;
    }
  }
  return kept;
}

std::u16string NameInComment(std::u16string_view name) {
  std::u16string words(name);
  std::erase_if(words, [](char16_t c) { return c == u'(' || c == u')'; });
  return words;
}

}  // namespace morva
