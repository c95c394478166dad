#include "text/strict_number.h"

#include <cmath>
#include <cstddef>

#include "text/codetext.h"

namespace morva {

namespace {

constexpr std::size_t kNumberUnits = 78;  // a longer text is no number

}  // namespace

bool ReadStrictNumber(std::u16string_view text, double& value) {
  if (text.size() > kNumberUnits) return false;
  std::size_t i = 0;
  if (i < text.size() && (text[i] == u'+' || text[i] == u'-')) ++i;
  int points = 0;
  int digits = 0;
  for (; i < text.size(); ++i) {
    if (text[i] == u'.') {
      if (++points > 1) return false;
    } else if (IsDigit(text[i])) {
      ++digits;
    } else {
      return false;
    }
  }
  if (digits == 0) return false;
  const double read = ParseDecimal(text, 0);
  if (!(std::fabs(read) < kStrictLimit)) return false;
  value = read;
  return true;
}

}  // namespace morva
