// Random programs for property tests and fuzzing: mostly plausible lines, some torn ones.
#pragma once

#include <cstdint>
#include <string>

namespace reference {

struct Dice {
  std::uint32_t state;
  std::uint32_t Roll(std::uint32_t sides) {
    state = state * 1664525u + 1013904223u;
    return (state >> 8) % sides;
  }
};

inline void AppendDigits(std::u16string& text, Dice& dice, std::uint32_t most) {
  for (std::uint32_t n = dice.Roll(most + 1); n > 0; --n) {
    text += static_cast<char16_t>(u'0' + dice.Roll(10));
  }
}

// A number as people write them, and now and then one that nobody would.
inline void AppendNumber(std::u16string& text, Dice& dice) {
  const std::uint32_t kind = dice.Roll(40);
  if (kind == 0) return;  // a bare letter
  if (dice.Roll(3) == 0) text += u'-';
  if (dice.Roll(20) == 0) text += u'+';  // "-+" is a lone sign and a stray
  if (kind == 1) {                       // longer than a word's number can be
    AppendDigits(text, dice, 40);
    text += u'.';
    AppendDigits(text, dice, 80);
    return;
  }
  if (kind == 2) return;  // a lone sign, or nothing
  AppendDigits(text, dice, kind == 3 ? 17 : 2);
  if (dice.Roll(4) != 0) {
    text += u'.';
    AppendDigits(text, dice, 4);
  }
  if (kind == 4) text += u".5";  // a second point
}

inline void AppendWord(std::u16string& text, Dice& dice) {
  static constexpr char16_t kLetters[] = u"XXXXYYYYZZIIJJRTKFSMNxyzij";
  static constexpr const char16_t* kCodes[] = {
      u"G0",  u"G1",   u"G1",  u"G2",   u"G3",  u"G02", u"G03.", u"G90", u"G91",   u"G20",
      u"G21", u"G17",  u"G18", u"G19",  u"G4",  u"G28", u"G53",  u"G92", u"G81",   u"G83.5",
      u"G89", u"G80",  u"G54", u"G1.0", u"g1",  u"G",   u"G-",   u"G.",  u"G89.5", u"G80.5",
      u"T5",  u"T1.9", u"M6",  u"G17",  u"G 1", u"G10", u"G30",  u"G52", u"G76",   u"G001"};
  if (dice.Roll(3) == 0) {
    text += kCodes[dice.Roll(sizeof(kCodes) / sizeof(kCodes[0]))];
  } else {
    text += kLetters[dice.Roll(sizeof(kLetters) / sizeof(kLetters[0]) - 1)];
    AppendNumber(text, dice);
  }
}

// A half or whole turn whose centre fits, so that true arcs are met often.
inline void AppendArc(std::u16string& text, Dice& dice) {
  static constexpr const char16_t* kArcs[] = {
      u"G91G2X1.Y0I.5J0G17", u"G91 G3 X-2 Y0 I-1",      u"G17 G2 I1.",
      u"G3 J-.25 Z1",        u"G91 G17 G2 X1 Y1 I1 J0", u"G91 G3 X1 Y1 J1 Z-.5",
      u"G2 I0 J0",           u"G91 G2 X1.0 Y0 I.50004", u"G91 G17 G3 X.001 Y0 I1 J0"};
  text += kArcs[dice.Roll(sizeof(kArcs) / sizeof(kArcs[0]))];
}

inline std::u16string RandomProgram(std::uint32_t seed, std::uint32_t mostLines) {
  static constexpr const char16_t* kEnds[] = {u"\r\n", u"\r\n", u"\r\n", u"\n", u"\r", u"\n\r"};
  static constexpr const char16_t* kStrays[] = {
      u"(G1 X9", u"(note)", u";", u" ", u")", u"/", u"%", u"#101=", u"\t", u"((", u"\u00DCX1"};
  Dice dice{seed * 2654435761u + 12345u};
  std::u16string text;
  for (std::uint32_t lines = dice.Roll(mostLines + 1); lines > 0; --lines) {
    for (std::uint32_t words = dice.Roll(6); words > 0; --words) {
      const std::uint32_t what = dice.Roll(16);
      if (what == 0) {
        text += kStrays[dice.Roll(sizeof(kStrays) / sizeof(kStrays[0]))];
      } else if (what < 3) {
        AppendArc(text, dice);
      } else {
        AppendWord(text, dice);
      }
      if (dice.Roll(3) != 0) text += u' ';
    }
    if (lines > 1 || dice.Roll(2)) text += kEnds[dice.Roll(6)];
  }
  if (dice.Roll(30) == 0 && !text.empty()) {
    text[dice.Roll(static_cast<std::uint32_t>(text.size()))] = 0;
  }
  return text;
}

}  // namespace reference
