#include "platform/common/line_ends.h"

#include <algorithm>
#include <cstddef>

namespace platform {

namespace {

bool IsForeign(char16_t c) {
  return c == 0 || c == 0x2028 || c == 0x2029 || c == 0xFDD0 || c == 0xFDD1;
}

bool IsHighSurrogate(char16_t c) { return c >= 0xD800 && c < 0xDC00; }

}  // namespace

std::u16string WithCrLf(std::u16string_view text) {
  std::u16string out;
  out.reserve(text.size() + text.size() / 16);
  std::size_t plain = 0;
  // Whole stretches at once: a program has hundreds of thousands of characters.
  const auto flush = [&](std::size_t end) { out.append(text, plain, end - plain); };
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t c = text[i];
    if (c == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') {
      ++i;
    } else if (c == u'\r' || c == u'\n') {
      flush(i);
      out.append(u"\r\n");
      plain = i + 1;
    } else if (IsForeign(c)) {
      flush(i);
      out.push_back(u'\uFFFD');
      plain = i + 1;
    }
  }
  flush(text.size());
  return out;
}

std::u16string WithoutLineEnds(std::u16string_view text) {
  std::u16string out(text);
  std::erase_if(out, [](char16_t c) { return c == u'\r' || c == u'\n'; });
  return out;
}

std::u16string_view FittingUnits(std::u16string_view text, int units) {
  std::size_t count = static_cast<std::size_t>(std::max(0, units));
  if (count >= text.size()) return text;
  if (count > 0 && text[count] == u'\n' && text[count - 1] == u'\r') --count;
  if (count > 0 && IsHighSurrogate(text[count - 1])) --count;
  return text.substr(0, count);
}

}  // namespace platform
