// What the laws of the house read: the sources, their lines, and their code without words.
#pragma once

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "support/places.h"

namespace house {

namespace fs = std::filesystem;

inline const fs::path kSource = support::SourceDir();
inline const fs::path kBinary = support::BinaryDir();

inline std::string ReadText(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::stringstream text;
  text << in.rdbuf();
  return text.str();
}

inline std::vector<fs::path> SourcesBelow(const fs::path& folder) {
  std::vector<fs::path> found;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    const std::string extension = entry.path().extension().string();
    if (extension == ".h" || extension == ".cpp") found.push_back(entry.path());
  }
  return found;
}

inline std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  std::stringstream in(text);
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

inline bool Below(const fs::path& path, const char* folder) {
  const std::string relative = fs::relative(path, kSource).generic_string();
  return relative.rfind(std::string(folder) + "/", 0) == 0;
}

// Whether a line includes something, with blanks before or behind the "#" too.
inline bool IsInclude(const std::string& line) {
  std::size_t at = line.find_first_not_of(" \t");
  if (at == std::string::npos || line[at] != '#') return false;
  at = line.find_first_not_of(" \t", at + 1);
  return at != std::string::npos && line.compare(at, 7, "include") == 0;
}

// The text between quotes or angle brackets of an include line, empty for other lines.
inline std::string Included(const std::string& line) {
  if (!IsInclude(line)) return "";
  const std::size_t from = line.find_first_of("<\"");
  const std::size_t to = line.find_last_of(">\"");
  if (from == std::string::npos || to <= from) return "";
  return line.substr(from + 1, to - from - 1);
}

// The path from src/ on, "app/router.h".
inline std::string NameInSource(const fs::path& path) {
  return fs::relative(path, kSource / "src").generic_string();
}

// The code of a text: comments, literals of characters and strings are blanks, line breaks stay.
// Good for this source, which has no raw strings but in tests and no comment within a macro.
inline std::string CodeOf(const std::string& text) {
  std::string code = text;
  enum { kCode, kLine, kBlock, kString, kChar } state = kCode;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    const char next = i + 1 < text.size() ? text[i + 1] : ' ';
    const char before = i > 0 ? text[i - 1] : ' ';
    if (state == kCode) {
      // A quote within a number parts its digits.
      const bool digits = c == '\'' && ((before >= '0' && before <= '9'));
      if (c == '/' && next == '/') state = kLine;
      if (c == '/' && next == '*') state = kBlock;
      if (c == '"') state = kString;
      if (c == '\'' && !digits) state = kChar;
      if (state != kCode) code[i] = ' ';
      continue;
    }
    if (c != '\n') code[i] = ' ';
    if (state == kLine && c == '\n') state = kCode;
    if (state == kBlock && before == '*' && c == '/') state = kCode;
    if (state == kString || state == kChar) {
      if (c == '\\') {
        ++i;
        if (i < text.size() && text[i] != '\n') code[i] = ' ';
      } else if (c == (state == kString ? '"' : '\'')) {
        state = kCode;
      }
    }
  }
  return code;
}

}  // namespace house
