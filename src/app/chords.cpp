#include "app/chords.h"

#include "text/codetext.h"

namespace morva {

namespace {

struct NamedKey {
  int key;
  const char16_t* words;
};
constexpr NamedKey kNamed[] = {
    {platform::kKeyEnter, u"Enter"},    {platform::kKeyTab, u"Tab"},
    {platform::kKeyEscape, u"Esc"},     {platform::kKeySpace, u"Space"},
    {platform::kKeyUp, u"Up"},          {platform::kKeyDown, u"Down"},
    {platform::kKeyLeft, u"Left"},      {platform::kKeyRight, u"Right"},
    {platform::kKeyHome, u"Home"},      {platform::kKeyEnd, u"End"},
    {platform::kKeyPageUp, u"Page Up"}, {platform::kKeyPageDown, u"Page Down"},
    {platform::kKeyDelete, u"Delete"},  {platform::kKeyBackspace, u"Backspace"},
};
constexpr int kFunctionKeys = 12;

std::u16string KeyWords(int key) {
  for (const NamedKey& named : kNamed) {
    if (named.key == key) return named.words;
  }
  const int function = key - platform::kKeyF1;
  if (function >= 0 && function < kFunctionKeys) return u"F" + IntegerText(function + 1);
  return std::u16string(1, static_cast<char16_t>(key));
}

}  // namespace

bool SameKey(const platform::KeyEvent& a, const platform::KeyEvent& b) {
  return a.key == b.key && a.ctrl == b.ctrl && a.shift == b.shift && a.alt == b.alt;
}

std::u16string ChordWords(const Chord& chord) {
  if (!chord.place) return {};
  std::u16string words;
  if (chord.key.ctrl) words += u"Ctrl+";
  if (chord.key.alt) words += u"Alt+";
  if (chord.key.shift) words += u"Shift+";
  return words + KeyWords(chord.key.key);
}

}  // namespace morva
