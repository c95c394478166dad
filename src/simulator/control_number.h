// Digits of a word, for the readers of blocks and of expressions.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "text/codetext.h"

namespace morva {

// Digits with at most one point among them. `pointed` tells whether it stands there. False: there
// are none, and nothing changes. Up to 15 digits the value is the nearest one that there is.
[[gnu::always_inline]] inline bool TakeDigits(const char16_t*& p, const char16_t* end,
                                              double& value, bool& pointed) {
  // Quotients of exact numbers are rounded once.
  constexpr double kTens[] = {1,   1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                              1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
  constexpr std::ptrdiff_t kExact = 15;
  const char16_t* q = p;
  std::uint64_t sum = 0;  // of too many digits it runs over, and is not used
  unsigned digit = 0;
  for (; q != end && (digit = static_cast<unsigned>(*q) - u'0') <= 9; ++q) sum = sum * 10 + digit;
  std::ptrdiff_t digits = q - p;
  const bool point = q != end && *q == u'.';
  std::ptrdiff_t places = 0;
  if (point) {
    const char16_t* const first = ++q;
    for (; q != end && (digit = static_cast<unsigned>(*q) - u'0') <= 9; ++q) sum = sum * 10 + digit;
    places = q - first;
    digits += places;
  }
  if (q == p) return false;
  if (digits > kExact) {
    value = ParseDecimal(std::u16string_view(p, static_cast<std::size_t>(q - p)), 0);
  } else {
    value = static_cast<double>(static_cast<std::int64_t>(sum));
    if (places > 0) value /= kTens[places];
  }
  pointed = point;
  p = q;
  return true;
}

// The same with a minus in front or without. Most words are no more than that.
[[gnu::always_inline]] inline bool TakePlainNumber(const char16_t*& p, const char16_t* end,
                                                   double& value, bool& pointed) {
  const char16_t* q = p;
  const bool minus = q != end && *q == u'-';
  if (minus) ++q;
  if (!TakeDigits(q, end, value, pointed)) return false;
  if (minus) value = -value;
  p = q;
  return true;
}

}  // namespace morva
