#include "text/strict_number.h"

#include <cmath>
#include <cstddef>

#include "text/codetext.h"

namespace morva {

Misread ReadStrict(std::u16string_view text, const StrictRule& rule, double& value) {
  if (rule.blanksBehind) {
    while (!text.empty() && text.back() == u' ') text.remove_suffix(1);
  }
  if (text.empty()) return Misread::Empty;
  if (text.size() > rule.units) return Misread::TooLong;
  std::size_t i = text[0] == u'+' || text[0] == u'-' ? 1 : 0;
  int points = 0;
  int digits = 0;
  for (; i < text.size(); ++i) {
    if (text[i] == u'.') {
      if (++points > 1) return Misread::NoNumber;
    } else if (IsDigit(text[i])) {
      ++digits;
    } else {
      return Misread::NoNumber;
    }
  }
  if (digits == 0) return Misread::NoNumber;
  const double read = ParseDecimal(text, 0);
  if (!(std::fabs(read) < rule.below)) return Misread::TooLarge;
  value = read;
  return Misread::None;
}

bool ReadStrictNumber(std::u16string_view text, double& value) {
  return ReadStrict(text, {}, value) == Misread::None;
}

}  // namespace morva
