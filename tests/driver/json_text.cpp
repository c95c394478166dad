#include "driver/json_text.h"

#include <cmath>
#include <cstdio>

#include "platform/file.h"

namespace drive {
namespace {

int HexOf(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// The four digits behind "\u".
bool ReadUnit(std::string_view& line, char16_t& unit) {
  if (line.size() < 4) return false;
  int value = 0;
  for (int i = 0; i < 4; ++i) {
    const int digit = HexOf(line[static_cast<std::size_t>(i)]);
    if (digit < 0) return false;
    value = value * 16 + digit;
  }
  unit = static_cast<char16_t>(value);
  line.remove_prefix(4);
  return true;
}

bool ReadEscape(std::string_view& line, char16_t& unit) {
  if (line.empty()) return false;
  const char c = line.front();
  line.remove_prefix(1);
  constexpr std::string_view kLetters = "\"\\/bfnrt";
  constexpr std::u16string_view kMeanings = u"\"\\/\b\f\n\r\t";
  const std::size_t at = kLetters.find(c);
  if (at != kLetters.npos) {
    unit = kMeanings[at];
    return true;
  }
  return c == 'u' && ReadUnit(line, unit);
}

bool IsHigh(char16_t c) { return c >= 0xD800 && c <= 0xDBFF; }
bool IsLow(char16_t c) { return c >= 0xDC00 && c <= 0xDFFF; }

void AppendEscaped(std::string& out, char16_t c) {
  char text[8];
  std::snprintf(text, sizeof text, "\\u%04X", static_cast<unsigned>(c));
  out += text;
}

}  // namespace

bool ReadQuoted(std::string_view& line, std::u16string& text) {
  text.clear();
  if (line.empty() || line.front() != '"') return false;
  line.remove_prefix(1);
  std::size_t plain = 0;
  for (;;) {
    if (plain == line.size()) return false;
    const char c = line[plain];
    if (c != '"' && c != '\\') {
      ++plain;
      continue;
    }
    text += platform::FromUtf8(line.substr(0, plain));
    line.remove_prefix(plain + 1);
    plain = 0;
    if (c == '"') return true;
    char16_t unit = 0;
    if (!ReadEscape(line, unit)) return false;
    text.push_back(unit);
  }
}

void AppendQuoted(std::string& out, std::u16string_view text) {
  out.push_back('"');
  std::size_t plain = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t c = text[i];
    if (IsHigh(c) && i + 1 < text.size() && IsLow(text[i + 1])) {
      ++i;
      continue;
    }
    if (c >= 0x20 && c != u'"' && c != u'\\' && c != 0x7F && !IsHigh(c) && !IsLow(c)) continue;
    out += platform::ToUtf8(text.substr(plain, i - plain));
    plain = i + 1;
    if (c == u'"' || c == u'\\') {
      out.push_back('\\');
      out.push_back(static_cast<char>(c));
    } else if (c == u'\n' || c == u'\r' || c == u'\t') {
      out += c == u'\n' ? "\\n" : c == u'\r' ? "\\r" : "\\t";
    } else {
      AppendEscaped(out, c);
    }
  }
  out += platform::ToUtf8(text.substr(plain));
  out.push_back('"');
}

void AppendNumber(std::string& out, double value) {
  char text[40];
  std::snprintf(text, sizeof text, "%.17g", value);
  out += std::isfinite(value) ? text : "null";
}

void Json::Comma() {
  if (out_.size() > 1) out_.push_back(',');
}

void Json::Key(std::string_view key) {
  Comma();
  out_.push_back('"');
  out_ += key;
  out_ += "\":";
}

Json& Json::Text(std::string_view key, std::u16string_view value) {
  Key(key);
  AppendQuoted(out_, value);
  return *this;
}

Json& Json::Number(std::string_view key, double value) {
  Key(key);
  AppendNumber(out_, value);
  return *this;
}

Json& Json::Flag(std::string_view key, bool value) { return Raw(key, value ? "true" : "false"); }

Json& Json::Raw(std::string_view key, std::string_view json) {
  Key(key);
  out_ += json;
  return *this;
}

Json& Json::Item(std::string_view json) {
  Comma();
  out_ += json;
  return *this;
}

Json& Json::Item(double value) {
  Comma();
  AppendNumber(out_, value);
  return *this;
}

Json& Json::Item(bool value) { return Item(std::string_view(value ? "true" : "false")); }

Json& Json::ItemText(std::u16string_view value) {
  Comma();
  AppendQuoted(out_, value);
  return *this;
}

std::string Good() { return "{\"ok\":true}"; }

std::string Good(std::string_view key, std::string_view json) {
  return Json('{').Flag("ok", true).Raw(key, json).Done();
}

std::string GoodText(std::u16string_view text) {
  return Json('{').Flag("ok", true).Text("text", text).Done();
}

std::string Bad(std::u16string_view error) {
  return Json('{').Flag("ok", false).Text("error", error).Done();
}

}  // namespace drive
