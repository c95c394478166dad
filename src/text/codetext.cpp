#include "text/codetext.h"

#include <cmath>
#include <limits>

#include "text/series_trig.h"

namespace morva {

namespace {

bool IsBlank(char16_t c) { return c == u' ' || c == u'\t'; }

// What FormatFixed prints of a magnitude, without its sign: at most 40 digits, a point and six
// decimals. Longer than any 64-bit number, so nothing is lost here.
constexpr int kDigitUnits = 64;
struct Digits {
  char16_t text[kDigitUnits];
  int length = 0;
};

void PushUnsigned(Digits& d, std::uint64_t value) {
  char16_t reversed[kDigitUnits];
  int count = 0;
  do {
    reversed[count++] = static_cast<char16_t>(u'0' + value % 10);
    value /= 10;
  } while (value != 0);
  while (count > 0) d.text[d.length++] = reversed[--count];
}

Digits FixedDigits(double value, int decimals) {
  static constexpr std::int64_t kScales[] = {1, 10, 100, 1000, 10000, 100000};
  int places = decimals;
  std::int64_t scale = 1000000;
  if (decimals >= 0 && decimals <= 5) {
    scale = kScales[decimals];
  } else {
    places = 6;
  }
  // A product that a signed 64-bit integer cannot hold saturates; NaN lands there too.
  const double scaled = std::fabs(value) * static_cast<double>(scale) + 0.5;
  const bool fits = scaled < 9223372036854775808.0;
  const std::int64_t n =
      fits ? static_cast<std::int64_t>(scaled) : std::numeric_limits<std::int64_t>::max();
  Digits d;
  if (value < 0.0) d.text[d.length++] = u'-';
  PushUnsigned(d, static_cast<std::uint64_t>(n / scale));
  if (places == 0) return d;
  d.text[d.length++] = u'.';
  // From the last digit on: a division by 10 costs less than one by each place.
  std::int64_t rest = n % scale;
  d.length += places;
  for (int i = 1; i <= places; ++i) {
    d.text[d.length - i] = static_cast<char16_t>(u'0' + rest % 10);
    rest /= 10;
  }
  return d;
}

}  // namespace

double ParseDecimal(std::u16string_view text, double fallback) {
  std::size_t i = 0;
  const std::size_t n = text.size();
  while (i < n && IsBlank(text[i])) ++i;
  double sign = 1.0;
  if (i < n && (text[i] == u'+' || text[i] == u'-')) {
    if (text[i] == u'-') sign = -1.0;
    ++i;
  }
  double value = 0.0;
  bool any = false;
  while (i < n && IsDigit(text[i])) {
    value = value * 10.0 + static_cast<double>(text[i] - u'0');
    any = true;
    ++i;
  }
  if (i + 1 < n && text[i] == u'.' && IsDigit(text[i + 1])) {
    double place = 0.1;
    for (++i; i < n && IsDigit(text[i]); ++i) {
      value += static_cast<double>(text[i] - u'0') * place;
      place *= 0.1;
    }
    any = true;
  }
  return any ? sign * value : fallback;
}

std::int32_t ParseInteger(std::u16string_view text, std::int32_t fallback) {
  std::size_t i = 0;
  const std::size_t n = text.size();
  while (i < n && IsBlank(text[i])) ++i;
  bool negative = false;
  if (i < n && text[i] == u'-') {
    negative = true;
    ++i;
  }
  if (i >= n || !IsDigit(text[i])) return fallback;
  std::uint32_t value = 0;  // wraps silently
  for (; i < n && IsDigit(text[i]); ++i) {
    value = value * 10u + static_cast<std::uint32_t>(text[i] - u'0');
  }
  return static_cast<std::int32_t>(negative ? 0u - value : value);
}

int FormatFixed(double value, int decimals, char16_t* dest, int capacity) {
  if (!dest || capacity <= 0) return 0;
  const Digits d = FixedDigits(value, decimals);
  int count = d.length < capacity - 1 ? d.length : capacity - 1;
  for (int i = 0; i < count; ++i) dest[i] = d.text[i];
  dest[count] = 0;
  return count;
}

void AppendBounded(char16_t* dest, int capacity, const char16_t* text) {
  if (!dest) return;
  int length = 0;
  while (length < capacity && dest[length]) ++length;
  if (length >= capacity) return;
  if (text && capacity - length >= 2) {
    for (int i = 0; text[i] && length < capacity - 1; ++i) dest[length++] = text[i];
  }
  dest[length] = 0;
}

void AppendLine(char16_t* dest, int capacity, const char16_t* text) {
  if (!dest) return;
  if (text) AppendBounded(dest, capacity, text);
  int length = 0;
  while (length < capacity && dest[length]) ++length;
  if (length >= capacity) return;
  // Where only one unit is free the CR stands alone.
  if (length < capacity - 1) dest[length++] = u'\r';
  if (length < capacity - 1) dest[length++] = u'\n';
  dest[length] = 0;
}

void AppendLabelNumber(char16_t* dest, int capacity, const char16_t* label, double value,
                       int decimals) {
  char16_t number[kDigitUnits];
  FormatFixed(value, decimals, number, kDigitUnits);
  AppendBounded(dest, capacity, label);
  AppendBounded(dest, capacity, number);
}

void AppendLabelInteger(char16_t* dest, int capacity, const char16_t* label, std::int32_t value) {
  AppendBounded(dest, capacity, label);
  AppendBounded(dest, capacity, IntegerText(value).c_str());
}

void CopyBounded(char16_t* dest, int capacity, std::u16string_view text) {
  if (!dest || capacity <= 0) return;
  std::size_t count = text.size();
  if (count > static_cast<std::size_t>(capacity - 1))
    count = static_cast<std::size_t>(capacity - 1);
  for (std::size_t i = 0; i < count; ++i) dest[i] = text[i];
  dest[count] = 0;
}

std::u16string FixedText(double value, int decimals) {
  const Digits d = FixedDigits(value, decimals);
  return std::u16string(d.text, static_cast<std::size_t>(d.length));
}

std::u16string IntegerText(std::int64_t value) {
  Digits d;
  if (value < 0) d.text[d.length++] = u'-';
  const std::uint64_t magnitude =
      value < 0 ? 0u - static_cast<std::uint64_t>(value) : static_cast<std::uint64_t>(value);
  PushUnsigned(d, magnitude);
  return std::u16string(d.text, static_cast<std::size_t>(d.length));
}

bool SameFolded(std::u16string_view a, std::u16string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (FoldUpper(a[i]) != FoldUpper(b[i])) return false;
  }
  return true;
}

std::size_t FindFolded(std::u16string_view text, std::u16string_view wanted, std::size_t from) {
  if (wanted.size() > text.size()) return std::u16string_view::npos;
  for (std::size_t i = from; i + wanted.size() <= text.size(); ++i) {
    if (SameFolded(text.substr(i, wanted.size()), wanted)) return i;
  }
  return std::u16string_view::npos;
}

double AngleDegrees(double y, double x) {
  if (x == 0.0) return y > 0.0 ? 90.0 : y < 0.0 ? -90.0 : 0.0;
  const double ax = std::fabs(x);
  const double ay = std::fabs(y);
  double t = ay > ax ? ax / ay : ay / ax;
  double base = 0.0;
  // tan(22.5 degrees): above it the eighth of a turn is taken out, so that the series is short.
  if (t > 0.414213562373095) {
    t = (t - 1.0) / (t + 1.0);
    base = kPi / 4.0;
  }
  const double square = t * t;
  double power = t;
  double sum = 0.0;
  for (int k = 1; k <= 31; k += 2) {
    sum += (k % 4 == 1 ? power : -power) / static_cast<double>(k);
    power *= square;
  }
  double angle = base + sum;
  if (ay > ax) angle = kPi / 2.0 - angle;
  if (x < 0.0) angle = kPi - angle;
  if (y < 0.0) angle = -angle;
  return angle * 180.0 / kPi;
}

}  // namespace morva
