// The laws about words: a sentence stands once, and what commands say in the rows of their rooms.

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "house/sources.h"
#include "platform/file.h"

namespace {

using namespace house;

constexpr int kSentenceLeast = 4;  // words

int WordsIn(std::string_view text) {
  int words = 0;
  bool inside = false;
  for (const char c : text) {
    words += c != ' ' && !inside ? 1 : 0;
    inside = c != ' ';
  }
  return words;
}

// The UTF-8 of \u and four hexadecimal digits, and of the plain escapes.
std::string Unescaped(std::string_view literal) {
  std::u16string text;
  const std::u16string units = platform::FromUtf8(literal);
  for (std::size_t i = 0; i < units.size(); ++i) {
    if (units[i] != u'\\' || i + 1 >= units.size()) {
      text += units[i];
      continue;
    }
    const char16_t escape = units[++i];
    if (escape == u'u' && i + 4 < units.size()) {
      const std::string digits = platform::ToUtf8(units.substr(i + 1, 4));
      text += static_cast<char16_t>(std::stoi(digits, nullptr, 16));
      i += 4;
    } else {
      text += escape == u'n' ? u'\n' : escape == u'r' ? u'\r' : escape == u't' ? u'\t' : escape;
    }
  }
  return platform::ToUtf8(text);
}

// The index behind a literal that begins at `from` with the mark that ends it.
std::size_t BehindLiteral(const std::string& source, std::size_t from) {
  std::size_t i = from + 1;
  while (i < source.size() && source[i] != source[from]) i += source[i] == '\\' ? 2 : 1;
  return std::min(i + 1, source.size());
}

// Every string of a source, those that follow each other put together; comments left out.
std::vector<std::string> StringsOf(const std::string& source) {
  const std::string code = CodeOf(source);  // literals and comments are blanks in it
  std::vector<std::string> strings;
  std::size_t last = std::string::npos;  // behind the last string
  for (std::size_t i = 0; i < source.size();) {
    const bool blank = code[i] == ' ';
    if (blank && source.compare(i, 2, "//") == 0) {
      i = std::min(source.find('\n', i), source.size());
    } else if (blank && source[i] == '\'') {
      i = BehindLiteral(source, i);
    } else if (blank && source[i] == '"') {
      const std::size_t end = BehindLiteral(source, i);
      // Only the prefix of the next piece stands between two pieces of one string.
      const bool follows = last != std::string::npos && code.find_first_not_of(" \nu", last) >= i;
      if (!follows) strings.emplace_back();
      strings.back() += Unescaped(std::string_view(source).substr(i + 1, end - i - 2));
      i = last = end;
    } else {
      ++i;
    }
  }
  return strings;
}

TEST(Strings, AreFoundWithTheirPiecesAndEscapes) {
  const std::vector<std::string> found = StringsOf(
      "// \"no\"\nf(u\"one \" // and\n  u\"two\", 'x', '\\'', \"th\\u00B0ree\");\ng(\"a\\\"b\");");
  EXPECT_EQ(found, (std::vector<std::string>{"one two", "th\u00B0ree", "a\"b"}));
}

// The texts between quotes in the rows of a page's tables, without what stands for anything.
std::vector<std::string> QuotesInTables(const std::string& page) {
  std::vector<std::string> quotes;
  for (const std::string& line : Lines(page)) {
    if (!line.starts_with("| ")) continue;
    for (std::size_t from = line.find('"'); from != std::string::npos;) {
      const std::size_t end = line.find('"', from + 1);
      if (end == std::string::npos) break;
      std::string_view rest = std::string_view(line).substr(from + 1, end - from - 1);
      while (!rest.empty()) {
        const std::size_t dots = std::min(rest.find("..."), rest.size());
        std::string_view piece = rest.substr(0, dots);
        while (piece.starts_with(' ')) piece.remove_prefix(1);
        while (piece.ends_with(' ')) piece.remove_suffix(1);
        if (!piece.empty() && piece != ".") quotes.emplace_back(piece);
        rest.remove_prefix(std::min(dots + 3, rest.size()));
      }
      from = line.find('"', end + 1);
    }
  }
  return quotes;
}

TEST(Pages, HaveTheirQuotesFound) {
  EXPECT_EQ(
      QuotesInTables("no \"a\"\n| \"It ... is ...\" | also \"that.\" |\n| \"...\" | \"open |"),
      (std::vector<std::string>{"It", "is", "that."}));
}

// Users look for the words that they see. What a page quotes in a table, the program says.
TEST(Pages, QuoteInTablesWhatTheProgramSays) {
  std::string said;
  for (const fs::path& path : SourcesBelow(kSource / "src")) {
    for (const std::string& text : StringsOf(ReadText(path))) said += text + "\n";
  }
  std::size_t found = 0;
  for (const char* page : {"guide.md", "limits.md", "first_connection.md"}) {
    for (const std::string& quote : QuotesInTables(ReadText(kSource / "docs" / page))) {
      EXPECT_NE(said.find(quote), std::string::npos) << page << " quotes \"" << quote << "\"";
      ++found;
    }
  }
  EXPECT_GT(found, 50u);
}

using Places = std::map<std::string, std::vector<std::string>>;  // of a text, by source

// The strings of all sources that `counts` takes. The table of codes names several codes alike.
template <class Counts>
Places PlacesOf(const Counts& counts) {
  Places places;
  for (const fs::path& path : SourcesBelow(kSource / "src")) {
    if (NameInSource(path) == "library/code_table.cpp") continue;
    for (const std::string& text : StringsOf(ReadText(path))) {
      if (counts(text)) places[text].push_back(NameInSource(path));
    }
  }
  return places;
}

void ExpectEachOnce(const Places& places) {
  for (const auto& [text, files] : places) {
    std::string where;
    for (const std::string& file : files) where += file + " ";
    EXPECT_EQ(files.size(), 1u) << "\"" << text << "\" stands in " << where;
  }
}

// Captions, tips, help in forms, what the status line, boxes and logs say.
TEST(Sentences, StandOnceInTheSources) {
  const Places places =
      PlacesOf([](const std::string& text) { return WordsIn(text) >= kSentenceLeast; });
  EXPECT_GT(places.size(), 400u);
  ExpectEachOnce(places);
}

// A comment of a program that readers know blocks by; the patterns and ends of file names; a mark
// behind a name in a list.
bool BelongsToAFormat(const std::string& text) {
  static const std::regex kFormat(R"(^(\([A-Z]|\*\.|\.[A-Za-z]| \[)|\(\*\.)");
  return std::regex_search(text, kFormat);
}

TEST(Formats, AreToldFromOtherWords) {
  for (const char* text :
       {"(MORVA ", "(SHAPE: SLOT)", "*.NC;*.TAP", ".features", " [hidden]", "All files (*.*)"}) {
    EXPECT_TRUE(BelongsToAFormat(text)) << text;
  }
  for (const char* text : {"(any)", "(", ".", "...", ". Save it first", "NC", "[C]"}) {
    EXPECT_FALSE(BelongsToAFormat(text)) << text;
  }
}

// What is written by one room and read by another is the same for both.
TEST(Formats, StandOnceInTheSources) {
  const Places places = PlacesOf(BelongsToAFormat);
  EXPECT_GT(places.size(), 40u);
  ExpectEachOnce(places);
}

// Whoever gives a key a tip of its own goes around the table.
TEST(House, GivesToolTipsOnlyFromTheRowsOfCommands) {
  // The speed slider's tip tells the speed, the toolpath view's what its path lacks; they are no
  // keys.
  const std::set<std::string> allowed = {"app/commands.cpp", "shell/speed_slider.cpp",
                                         "simulator/toolpath.cpp"};
  for (const fs::path& path : SourcesBelow(kSource / "src")) {
    if (Below(path, "src/platform") || allowed.count(NameInSource(path))) continue;
    EXPECT_EQ(CodeOf(ReadText(path)).find("SetToolTip"), std::string::npos) << path;
  }
}

TEST(House, MakesPushButtonsOnlyFromTheRowsOfCommands) {
  for (const fs::path& path : SourcesBelow(kSource / "src")) {
    if (Below(path, "src/platform") || NameInSource(path) == "app/commands.cpp") continue;
    EXPECT_EQ(CodeOf(ReadText(path)).find("PushButton"), std::string::npos) << path;
  }
}

// A whole namespace that is taken over hides whose function a bare name is; a name alone may be
// taken over, but not that of the menu.
bool ShowsAMenu(const std::string& code) {
  static const std::regex kNamed(R"(\bplatform\s*::\s*ShowPopup\b)");
  return std::regex_search(code, kNamed);
}
bool TakesANamespaceOver(const std::string& code) {
  static const std::regex kTaken(R"(\busing\s+namespace\b|\bnamespace\s+\w+\s*=)");
  return std::regex_search(code, kTaken);
}

TEST(House, TellsAMenuAndANamespaceTakenOver) {
  EXPECT_TRUE(ShowsAMenu("return platform::ShowPopup(items, 3, x, y);"));
  EXPECT_TRUE(ShowsAMenu("using platform::ShowPopup;"));
  EXPECT_TRUE(ShowsAMenu("const auto show = &platform ::ShowPopup;"));
  EXPECT_FALSE(ShowsAMenu("void ShowPopup() {}"));
  EXPECT_TRUE(TakesANamespaceOver("using namespace platform;\nShowPopup(items, 3, x, y);"));
  EXPECT_TRUE(TakesANamespaceOver("namespace p = platform;"));
  EXPECT_FALSE(TakesANamespaceOver("using platform::Rect;\nnamespace morva {"));
}

TEST(House, TakesNoNamespaceOver) {
  for (const fs::path& path : SourcesBelow(kSource / "src")) {
    EXPECT_FALSE(TakesANamespaceOver(CodeOf(ReadText(path)))) << path;
  }
}

TEST(House, ShowsMenusOnlyOfRowsOfCommands) {
  for (const fs::path& path : SourcesBelow(kSource / "src")) {
    if (Below(path, "src/platform") || NameInSource(path) == "app/command_menu.cpp") continue;
    EXPECT_FALSE(ShowsAMenu(CodeOf(ReadText(path)))) << path;
  }
}

TEST(House, QuotesNoCaptionBesideAnId) {
  const std::string ids = ReadText(kSource / "src/app/command_ids.h");
  ASSERT_GT(Lines(ids).size(), 300u);
  for (const std::string& line : Lines(ids)) {
    EXPECT_EQ(line.find('"'), std::string::npos) << line;
    EXPECT_EQ(line.find("0x"), std::string::npos) << line;
  }
}

}  // namespace
