// One block of the program: its words, read and worked out.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "app/limits.h"

namespace morva {

struct ControlRun;

constexpr int Letter(char c) { return c - 'A'; }
constexpr std::uint32_t LetterBit(char c) { return 1u << Letter(c); }
// Axes that turn, whose motion is not followed.
inline constexpr std::uint32_t kFurtherAxes = LetterBit('A') | LetterBit('B') | LetterBit('C');

// What a block asks of the flow of the program.
enum class BlockFlow : unsigned char {
  None,
  Goto,      // to `label`
  While,     // `loop`; `holds` tells what its condition gave
  EndWhile,  // `loop`
  Alarm,     // #3000
  TextEnd,   // no further block stands in the text
};

struct ControlBlock {
  std::int32_t line = 0;      // 0-based line of its text
  std::uint32_t has = 0;      // a bit for each letter; a word whose value is undefined is not there
  std::uint32_t pointed = 0;  // its number has a point, or comes from a variable
  double value[26];           // as written, by letter; only those in `has` mean anything
  std::int16_t g[kMaxBlockCodes];  // times ten
  std::int16_t m[kMaxBlockMs];
  int gCount = 0;
  int mCount = 0;
  std::int32_t label = -1;  // of N, -1 for none
  double corner = 0;        // of ",C" or ",R"
  char cornerKind = 0;      // 'C' or 'R', 0 for none
  bool cornerPointed = false;
  BlockFlow flow = BlockFlow::None;
  double target = 0;  // of GOTO, or the number of #3000
  int loop = 0;       // of DO and END, 1 to 3
  bool holds = false;

  bool Has(char c) const { return (has & LetterBit(c)) != 0; }
  double Of(char c) const { return value[Letter(c)]; }
  // The number of a tool or an offset; what no control counts to is held to a billion.
  std::int32_t NumberOf(char c) const {
    constexpr double kMost = 1e9;
    return static_cast<std::int32_t>(std::clamp(Of(c), -kMost, kMost));
  }
  // The code times ten, so that G84.1 is a code of its own.
  bool HasG(int timesTen) const {
    for (int i = 0; i < gCount; ++i) {
      if (g[i] == timesTen) return true;
    }
    return false;
  }
  bool HasM(int code) const {
    for (int i = 0; i < mCount; ++i) {
      if (m[i] == code) return true;
    }
    return false;
  }
};

// Reads the line at the run's place, executes its assignments, and puts the place to the next
// line. Comments, blanks and a line that the block delete switch takes out give an empty block.
void ReadBlock(ControlRun& run, ControlBlock& block);

}  // namespace morva
