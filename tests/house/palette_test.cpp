// A colour stands only in the palette; everybody else uses its name.

#include <gtest/gtest.h>

#include <cctype>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "house/sources.h"

namespace {

using namespace house;

constexpr char kPalette[] = "app/palette.h";

// Colours of the form 0xRRGGBB in a line of code, in capitals.
std::vector<std::string> ColoursIn(const std::string& code) {
  if (code.find("0x") == std::string::npos && code.find("0X") == std::string::npos) return {};
  static const std::regex kForm("\\b0[xX]([0-9A-Fa-f]{6})\\b");
  std::vector<std::string> found;
  for (std::sregex_iterator it(code.begin(), code.end(), kForm), end; it != end; ++it) {
    std::string digits = (*it)[1];
    for (char& digit : digits) digit = static_cast<char>(std::toupper(digit));
    found.push_back(digits);
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
// boxes and frames of its own: as 0xRRGGBB, each of them one of the palette's. The shades of edges
// that the toolkit's style asks for, by parts, are its own; nothing else of the program draws them.
TEST(Palette, IsRepeatedByTheToolkitsRoomWithoutAnotherColour) {
  std::set<std::string> known;
  for (const std::string& line : Lines(CodeOf(ReadText(kSource / "src" / kPalette)))) {
    for (const std::string& colour : ColoursIn(line)) known.insert(colour);
  }
  EXPECT_GT(known.size(), 50u);
  std::size_t repeated = 0;
  for (const fs::path& path : SourcesBelow(kSource / "src" / "platform" / "qt")) {
    for (const std::string& line : Lines(CodeOf(ReadText(path)))) {
      for (const std::string& colour : ColoursIn(line)) {
        ++repeated;
        EXPECT_TRUE(known.count(colour)) << path << ": " << line;
      }
    }
  }
  EXPECT_GT(repeated, 0u);
}

}  // namespace
