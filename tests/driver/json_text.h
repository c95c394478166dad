// JSON as the driver speaks it: strings read from a line, answers written into one.
//
// Pure text functions. Input and output are UTF-8 bytes, strings in between are 16-bit text;
// a lone surrogate travels as its escape.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace drive {

// Reads the string literal at the start of `line` and takes it off. False: none stands there
// or it is damaged; `line` is then of no use.
bool ReadQuoted(std::string_view& line, std::u16string& text);

void AppendQuoted(std::string& out, std::u16string_view text);
// Full precision, 17 significant digits; null for what is no number.
void AppendNumber(std::string& out, double value);

// An object or an array under construction: members with the commas between them.
class Json {
 public:
  explicit Json(char open) : close_(open == '{' ? '}' : ']') { out_.push_back(open); }
  Json& Text(std::string_view key, std::u16string_view value);
  Json& Number(std::string_view key, double value);
  Json& Flag(std::string_view key, bool value);
  Json& Raw(std::string_view key, std::string_view json);
  Json& Item(std::string_view json);  // of an array
  Json& Item(double value);
  Json& Item(bool value);
  Json& ItemText(std::u16string_view value);
  std::string Done() const { return out_ + close_; }

 private:
  void Key(std::string_view key);
  void Comma();
  std::string out_;
  char close_;
};

std::string Good();  // {"ok":true}
std::string Good(std::string_view key, std::string_view json);
std::string GoodText(std::u16string_view text);
std::string Bad(std::u16string_view error);

}  // namespace drive
