#include "driver/line_words.h"

#include <cmath>
#include <cstdlib>

#include "driver/json_text.h"
#include "platform/file.h"

namespace drive {
namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

struct NamedKey {
  const char16_t* name;
  int key;
};
constexpr NamedKey kNamedKeys[] = {
    {u"Enter", platform::kKeyEnter},   {u"Tab", platform::kKeyTab},
    {u"Esc", platform::kKeyEscape},    {u"Space", platform::kKeySpace},
    {u"Up", platform::kKeyUp},         {u"Down", platform::kKeyDown},
    {u"Left", platform::kKeyLeft},     {u"Right", platform::kKeyRight},
    {u"Home", platform::kKeyHome},     {u"End", platform::kKeyEnd},
    {u"PageUp", platform::kKeyPageUp}, {u"PageDown", platform::kKeyPageDown},
    {u"Delete", platform::kKeyDelete}, {u"Backspace", platform::kKeyBackspace},
};

bool TakeModifier(std::u16string_view& text, std::u16string_view name) {
  if (text.size() <= name.size() || text.substr(0, name.size()) != name) return false;
  text.remove_prefix(name.size());
  return true;
}

bool ReadBareKey(std::u16string_view name, int& key) {
  if (name.size() == 1) {
    const char16_t c = name[0];
    if (c >= u'a' && c <= u'z') {
      key = c - u'a' + 'A';
      return true;
    }
    key = c;
    return (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9');
  }
  for (const NamedKey& each : kNamedKeys) {
    if (name != each.name) continue;
    key = each.key;
    return true;
  }
  std::int64_t number = 0;
  const Word digits{false, std::u16string(name.substr(1))};
  if (name[0] != u'F' || !ReadInteger(digits, 1, 12, number)) return false;
  key = platform::kKeyF1 + static_cast<int>(number) - 1;
  return true;
}

}  // namespace

bool SplitLine(std::string_view line, std::vector<Word>& words) {
  words.clear();
  for (;;) {
    while (!line.empty() && IsBlank(line.front())) line.remove_prefix(1);
    if (line.empty()) return true;
    Word word;
    if (line.front() == '"') {
      word.quoted = true;
      if (!ReadQuoted(line, word.text)) return false;
      if (!line.empty() && !IsBlank(line.front())) return false;
    } else {
      std::size_t length = 0;
      while (length < line.size() && !IsBlank(line[length])) ++length;
      word.text = platform::FromUtf8(line.substr(0, length));
      line.remove_prefix(length);
    }
    words.push_back(std::move(word));
  }
}

bool ReadInteger(const Word& word, std::int64_t least, std::int64_t most, std::int64_t& value) {
  std::u16string_view digits = word.text;
  const bool negative = !digits.empty() && digits[0] == u'-';
  if (negative) digits.remove_prefix(1);
  if (word.quoted || digits.empty() || digits.size() > 15) return false;
  std::int64_t sum = 0;
  for (char16_t c : digits) {
    if (c < u'0' || c > u'9') return false;
    sum = sum * 10 + (c - u'0');
  }
  value = negative ? -sum : sum;
  return value >= least && value <= most;
}

bool ReadDecimal(const Word& word, double& value) {
  const std::string text = platform::ToUtf8(word.text);
  if (word.quoted || text.empty()) return false;
  char* end = nullptr;
  value = std::strtod(text.c_str(), &end);
  return *end == 0;
}

bool ReadFlag(const Word& word, bool& value) {
  value = word.text == u"true" || word.text == u"1";
  return !word.quoted && (value || word.text == u"false" || word.text == u"0");
}

bool ReadKey(std::u16string_view text, platform::KeyEvent& key) {
  key = platform::KeyEvent();
  for (;;) {
    if (TakeModifier(text, u"Ctrl+")) {
      key.ctrl = true;
    } else if (TakeModifier(text, u"Shift+")) {
      key.shift = true;
    } else if (TakeModifier(text, u"Alt+")) {
      key.alt = true;
    } else {
      return !text.empty() && ReadBareKey(text, key.key);
    }
  }
}

}  // namespace drive
