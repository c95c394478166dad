#include "text/code_writer.h"

#include "text/codetext.h"

namespace morva {

namespace {

constexpr int kNumberUnits = 64;
constexpr std::size_t kLabelUnits = 16;  // of a label that is put together with its number

}  // namespace

void Put(CodeWriter& out, std::u16string_view words) {
  const std::size_t room = out.most > out.text.size() ? out.most - out.text.size() : 0;
  if (words.size() > room) out.full = true;
  out.text += words.substr(0, room);
}

void Put(CodeWriter& out, std::u16string_view label, double value, int decimals) {
  char16_t word[kLabelUnits + kNumberUnits];
  std::size_t units = 0;
  if (label.size() <= kLabelUnits) {
    units = label.copy(word, label.size());
  } else {
    Put(out, label);
  }
  const int digits = FormatFixed(value, decimals, word + units, kNumberUnits);
  Put(out, std::u16string_view(word, units + static_cast<std::size_t>(digits)));
}

void PutInteger(CodeWriter& out, std::u16string_view label, std::int64_t value) {
  Put(out, label);
  Put(out, IntegerText(value));
}

void Line(CodeWriter& out, std::u16string_view words) {
  Put(out, words);
  Put(out, u"\r\n");
}

void Line(CodeWriter& out, std::u16string_view label, double value, int decimals) {
  Put(out, label, value, decimals);
  Line(out, u"");
}

}  // namespace morva
