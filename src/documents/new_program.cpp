#include "documents/new_program.h"

namespace morva {

namespace {

constexpr std::u16string_view kInchLine = u"G20 (INCHES)\r\n";
constexpr std::u16string_view kMetricLine = u"G21 (MILLIMETERS)\r\n";
constexpr std::u16string_view kBehind =
    u"G90 G17 G94\r\nG54 (WORK COORDINATE SYSTEM)\r\nG40 G80\r\n(OPERATION CODE BELOW)\r\n";

}  // namespace

std::u16string NewProgramLines(bool metric) {
  std::u16string text(metric ? kMetricLine : kInchLine);
  text += kBehind;
  return text;
}

std::u16string NewProgramText(std::u16string_view title, bool metric) {
  std::u16string text = u"(FILE: ";
  text += title;
  text += u")\r\n";
  return text + NewProgramLines(metric);
}

}  // namespace morva
