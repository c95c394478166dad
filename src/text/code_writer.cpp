#include "text/code_writer.h"

#include "text/codetext.h"

namespace morva {

namespace {

constexpr int kNumberUnits = 64;

}  // namespace

void Put(CodeWriter& out, std::u16string_view words) {
  const std::size_t room = out.most > out.text.size() ? out.most - out.text.size() : 0;
  if (words.size() > room) out.full = true;
  out.text += words.substr(0, room);
}

void Put(CodeWriter& out, std::u16string_view label, double value, int decimals) {
  char16_t number[kNumberUnits];
  FormatFixed(value, decimals, number, kNumberUnits);
  Put(out, label);
  Put(out, std::u16string_view(number));
}

void PutInteger(CodeWriter& out, std::u16string_view label, std::int64_t value) {
  Put(out, label);
  Put(out, IntegerText(value));
}

void Line(CodeWriter& out, std::u16string_view words) {
  Put(out, words);
  Put(out, u"\r\n");
}

}  // namespace morva
