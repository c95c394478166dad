// A colour stands only in the palette; everybody else uses its name.

#include <gtest/gtest.h>

#include <cctype>
#include <cstddef>
#include <cstdio>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "house/sources.h"

namespace {

using namespace house;

constexpr char kPalette[] = "app/palette.h";

// Colours of the forms 0xRRGGBB and 0xAARRGGBB in a line of code, as RRGGBB in capitals. Digits may
// be parted by quotes. Eight digits are a mask where one half says nothing; two are a hash's.
std::vector<std::string> ColoursIn(std::string code) {
  if (code.find("0x") == std::string::npos && code.find("0X") == std::string::npos) return {};
  static const std::regex kQuote("([0-9A-Fa-f])'(?=[0-9A-Fa-f])");
  code = std::regex_replace(code, kQuote, "$1");
  static const std::regex kForm("\\b0[xX]([0-9A-Fa-f]{2})?([0-9A-Fa-f]{6})[uU]?\\b");
  static const std::regex kMask("(0000|8000|FFFF|7FFF).*|..000000|811C9DC5|01000193",
                                std::regex::icase);
  std::vector<std::string> found;
  for (std::sregex_iterator it(code.begin(), code.end(), kForm), end; it != end; ++it) {
    if ((*it)[1].matched && std::regex_match((*it)[1].str() + (*it)[2].str(), kMask)) continue;
    std::string digits = (*it)[2];
    for (char& digit : digits) digit = static_cast<char>(std::toupper(digit));
    found.push_back(digits);
  }
  return found;
}

std::string Hexadecimal(int red, int green, int blue) {
  char digits[8];
  std::snprintf(digits, sizeof digits, "%02X%02X%02X", red, green, blue);
  return digits;
}

// Colours that the toolkit's own types make of parts or of names, as RRGGBB.
std::vector<std::string> ToolkitColoursIn(const std::string& code) {
  static const std::regex kParts(
      "\\b(?:QColor|qRgb|qRgba|fromRgb)\\b\\s*[({]\\s*(0[xX][0-9A-Fa-f]{1,2}|\\d+)\\s*,\\s*"
      "(0[xX][0-9A-Fa-f]{1,2}|\\d+)\\s*,\\s*(0[xX][0-9A-Fa-f]{1,2}|\\d+)");
  static const std::regex kNames(
      "\\bQt::(white|black|red|green|blue|cyan|magenta|yellow|gray|(?:dark|light)[A-Z]\\w*)\\b");
  std::vector<std::string> found;
  for (std::sregex_iterator it(code.begin(), code.end(), kParts), end; it != end; ++it) {
    const auto part = [&it](std::size_t i) { return std::stoi((*it)[i].str(), nullptr, 0); };
    found.push_back(Hexadecimal(part(1), part(2), part(3)));
  }
  for (std::sregex_iterator it(code.begin(), code.end(), kNames), end; it != end; ++it) {
    const std::string name = (*it)[1];
    found.push_back(name == "white" ? "FFFFFF" : name == "black" ? "000000" : name);
  }
  return found;
}

// Whether a line writes a colour in numbers: as 0xRRGGBB, as Rgb of a number, or as a constant of
// that type. A record's colour may start at 0, which is no constant.
bool WritesAColour(const std::string& code) {
  static const std::regex kParts("\\bRgb\\(\\s*[0-9]");
  static const std::regex kConstant(
      "\\bconstexpr (platform::)?Colour \\w+(\\[\\w*\\])?\\s*(=\\s*\\{?|\\{)\\s*[0-9]");
  if (!ColoursIn(code).empty()) return true;
  if (!ToolkitColoursIn(code).empty()) return true;
  static const std::regex kGiven(
      "([.>]|\\b)(\\w*C|c)olour\\s*(=|\\{|\\()\\s*(0[xX])?[0-9]*[1-9A-F]");
  static const std::regex kIndex("\\b\\w*[gG]ridColour\\b");
  if (std::regex_search(code, kGiven) && !std::regex_search(code, kIndex)) return true;
  if (code.find("Rgb") != std::string::npos && std::regex_search(code, kParts)) return true;
  return code.find("Colour") != std::string::npos && std::regex_search(code, kConstant);
}

TEST(Palette, TellsAColourFromOtherNumbers) {
  EXPECT_TRUE(WritesAColour("constexpr Colour kRing = 0x24506e;"));
  EXPECT_TRUE(WritesAColour("  FillArea(canvas, area, 0x000000);"));
  EXPECT_TRUE(WritesAColour("return platform::Rgb(0x22, 255, 110);"));
  EXPECT_TRUE(WritesAColour("return Rgb( 12, g, b);"));
  EXPECT_TRUE(WritesAColour("inline constexpr platform::Colour kInk = 0;"));
  EXPECT_TRUE(WritesAColour("constexpr Colour kRows[] = {255, 0};"));
  EXPECT_TRUE(WritesAColour("constexpr Colour kInk{255};"));
  EXPECT_TRUE(WritesAColour("pen.colour = 255;"));
  EXPECT_TRUE(WritesAColour("pen->colour = 0xFF;"));
  EXPECT_TRUE(WritesAColour("const Colour colour{65280};"));
  EXPECT_TRUE(WritesAColour("constexpr std::uint32_t kInk = 0xFF24506E;"));
  EXPECT_TRUE(WritesAColour("Ink(0x24'50'6Eu);"));
  EXPECT_TRUE(WritesAColour("painter->setPen(Qt::white);"));
  EXPECT_TRUE(WritesAColour("brush = QColor(0x0B, 42, 0x3E);"));
  EXPECT_FALSE(WritesAColour("constexpr std::uint32_t kSign = 0x80000000u;"));
  EXPECT_FALSE(WritesAColour("view.gridColour = 1;"));
  EXPECT_FALSE(WritesAColour("pen.colour = kAccent;"));
  EXPECT_FALSE(WritesAColour("Colour colour = 0;"));
  EXPECT_FALSE(WritesAColour("constexpr std::uint32_t kMessage = 0x8014;"));
  EXPECT_FALSE(WritesAColour("const std::uint64_t prime = 0x100000001B3;"));
  EXPECT_FALSE(WritesAColour("return Rgb(mix(a, b), mix(c, d), 0);"));
  EXPECT_FALSE(WritesAColour("constexpr Colour kBright = kBrightAccent;"));
}

// The toolkit's room is looked at by the test after this one.
TEST(Palette, HoldsEveryColourOfTheProgram) {
  for (const fs::path& path : SourcesBelow(kSource / "src")) {
    if (NameInSource(path) == kPalette || Below(path, "src/platform/qt")) continue;
    for (const std::string& line : Lines(CodeOf(ReadText(path)))) {
      EXPECT_FALSE(WritesAColour(line)) << path << ": " << line;
    }
  }
}

// The toolkit's room stands below the palette and repeats the colours that it needs for menus,
// boxes and frames of its own, each of them one of the palette's. The shades of edges that the
// toolkit's style asks for are its own; nothing else of the program draws them.
TEST(Palette, IsRepeatedByTheToolkitsRoomWithoutAnotherColour) {
  const std::set<std::string> shades = {"0B2A3E", "1A4560", "12364E", "082030", "010A11"};
  std::set<std::string> known = shades;
  for (const std::string& line : Lines(CodeOf(ReadText(kSource / "src" / kPalette)))) {
    for (const std::string& colour : ColoursIn(line)) known.insert(colour);
  }
  EXPECT_GT(known.size(), 50u);
  std::set<std::string> repeated;
  for (const fs::path& path : SourcesBelow(kSource / "src" / "platform" / "qt")) {
    for (const std::string& line : Lines(CodeOf(ReadText(path)))) {
      std::vector<std::string> colours = ColoursIn(line);
      for (const std::string& colour : ToolkitColoursIn(line)) colours.push_back(colour);
      for (const std::string& colour : colours) {
        repeated.insert(colour);
        EXPECT_TRUE(known.count(colour)) << path << ": " << line;
      }
    }
  }
  for (const std::string& shade : shades) EXPECT_TRUE(repeated.count(shade)) << shade;
}

}  // namespace
