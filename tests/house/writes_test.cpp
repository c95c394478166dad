#include "house/writes.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cstddef>
#include <regex>

namespace house {

namespace {

bool IsWordChar(char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_'; }

std::size_t BehindBlanks(const std::string& code, std::size_t at) {
  while (at < code.size() && std::isspace(static_cast<unsigned char>(code[at]))) ++at;
  return at;
}

// The place behind the last character before `at` that is no blank.
std::size_t BeforeBlanks(const std::string& code, std::size_t at) {
  while (at > 0 && std::isspace(static_cast<unsigned char>(code[at - 1]))) --at;
  return at;
}

bool EndsWith(const std::string& code, std::size_t end, const char* piece) {
  const std::string wanted = piece;
  return end >= wanted.size() && code.compare(end - wanted.size(), wanted.size(), wanted) == 0;
}

std::string WordAt(const std::string& code, std::size_t at) {
  std::size_t end = at;
  while (end < code.size() && IsWordChar(code[end])) ++end;
  return code.substr(at, end - at);
}

std::string WordBefore(const std::string& code, std::size_t end) {
  std::size_t at = end;
  while (at > 0 && IsWordChar(code[at - 1])) --at;
  return code.substr(at, end - at);
}

// Behind the bracket that closes the one at `at`.
std::size_t BehindBracket(const std::string& code, std::size_t at) {
  int depth = 0;
  for (; at < code.size(); ++at) {
    if (code[at] == '[' || code[at] == '(') ++depth;
    if (code[at] == ']' || code[at] == ')') --depth;
    if (depth == 0) return at + 1;
  }
  return at;
}

// Member functions that hand out what they hold.
bool IsDoor(const std::string& name) {
  static const std::set<std::string> kNames = {"at",    "back", "begin",  "data", "end",
                                               "front", "get",  "rbegin", "rend"};
  return kNames.count(name) > 0;
}

// What stands behind a name: indices and members, up to the first call that is no door.
struct Chain {
  std::size_t end = 0;
  std::string field;
  std::string call;  // the member function that is called at the end, empty for none
};

Chain ChainAt(const std::string& code, std::size_t at) {
  Chain chain;
  while (at < code.size()) {
    if (code[at] == '[') {
      at = BehindBracket(code, at);
      continue;
    }
    const std::size_t dot = code.compare(at, 2, "->") == 0 ? 2 : code[at] == '.' ? 1 : 0;
    const std::string member = dot ? WordAt(code, at + dot) : "";
    if (member.empty()) break;
    const std::size_t behind = at + dot + member.size();
    if (behind < code.size() && code[behind] == '(') {
      if (IsDoor(member)) {
        at = BehindBracket(code, behind);
        continue;
      }
      chain.call = member;
      break;
    }
    if (chain.field.empty()) chain.field = member;
    at = behind;
  }
  chain.end = at;
  return chain;
}

bool IsChangingMember(const std::string& name) {
  static const std::set<std::string> kNames = {
      "append",    "assign",    "clear",    "emplace",   "emplace_back", "erase",
      "exchange",  "fill",      "insert",   "reset",     "resize",       "reserve",
      "fetch_add", "fetch_sub", "pop_back", "push_back", "store",        "swap"};
  return kNames.count(name) > 0;
}

bool IsAssignedAt(const std::string& code, std::size_t at) {
  at = BehindBlanks(code, at);
  for (const char* sign : {"++", "--", "<<=", ">>="}) {
    if (code.compare(at, std::string(sign).size(), sign) == 0) return true;
  }
  if (at + 1 >= code.size()) return false;
  if (code[at] == '=') return code[at + 1] != '=';
  return std::string("+-*/%&|^").find(code[at]) != std::string::npos && code[at + 1] == '=';
}

// The piece of the statement before `at`, from the last ; { or } on.
std::string StatementBefore(const std::string& code, std::size_t at) {
  const std::size_t from = at == 0 ? std::string::npos : code.find_last_of(";{}", at - 1);
  return code.substr(from == std::string::npos ? 0 : from + 1,
                     at - (from == std::string::npos ? 0 : from + 1));
}

bool HasWord(const std::string& code, const std::string& word) {
  for (std::size_t at = code.find(word); at != std::string::npos; at = code.find(word, at + 1)) {
    const bool left = at == 0 || !IsWordChar(code[at - 1]);
    const bool right = at + word.size() >= code.size() || !IsWordChar(code[at + word.size()]);
    if (left && right) return true;
  }
  return false;
}

// Whether the function around `at` gives back something const. Functions begin in column 0.
bool InConstFunction(const std::string& code, std::size_t at) {
  while (at > 0) {
    const std::size_t end = code.rfind('\n', at - 1);
    at = end == std::string::npos ? 0 : end;
    const std::size_t line = end == std::string::npos ? 0 : end + 1;
    if (std::isalpha(static_cast<unsigned char>(code[line]))) {
      return code.compare(line, 6, "const ") == 0;
    }
  }
  return false;
}

// Whether the name at `at` is being declared, as a member or a variable of that name is.
bool IsDeclared(const std::string& code, std::size_t at) {
  std::size_t end = BeforeBlanks(code, at);
  if (end == at) return false;  // a name follows its type behind a blank
  if (end > 0 && (code[end - 1] == '&' || code[end - 1] == '*')) {
    return end >= 2 && (IsWordChar(code[end - 2]) || code[end - 2] == '>');
  }
  if (end == 0 || (!IsWordChar(code[end - 1]) && code[end - 1] != '>')) return false;
  if (code[end - 1] == '>')
    return end < 2 || !std::isspace(static_cast<unsigned char>(code[end - 2]));
  const std::string word = WordBefore(code, end);
  return word != "return" && word != "else" && word != "case" && word != "in" && word != "do";
}

// Whether the expression from `at` to `end` is an argument that the function called may change.
bool IsChangedByCall(const std::string& code, std::size_t at, std::size_t end,
                     const ChangingParameters& known) {
  const std::size_t next = BehindBlanks(code, end);
  // A place that is counted on from the argument is changed as well.
  if (next >= code.size() || std::string(",)+-").find(code[next]) == std::string::npos) {
    return false;
  }
  std::size_t before = BeforeBlanks(code, at);
  if (before > 0 && code[before - 1] == '*') before = BeforeBlanks(code, before - 1);
  if (before == 0 || (code[before - 1] != '(' && code[before - 1] != ',')) return false;
  int depth = 0;
  int place = 0;
  for (std::size_t i = before; i-- > 0;) {
    const char c = code[i];
    if (c == ')' || c == ']' || c == '}') ++depth;
    if (c == ';') return false;
    if (c == ',' && depth == 0) ++place;
    if (c != '(' && c != '[' && c != '{') continue;
    if (depth-- > 0) continue;
    if (c != '(') return false;
    std::string function = WordBefore(code, i);
    if (EndsWith(code, i - function.size(), "ranges::")) function = "ranges::" + function;
    if (function == "move" || function == "swap") return true;
    const auto found = known.find(function);
    return found != known.end() && found->second.count(place) > 0;
  }
  return false;
}

bool IsWrite(const std::string& code, std::size_t at, const Chain& chain,
             const ChangingParameters& known) {
  if (!chain.call.empty()) return IsChangingMember(chain.call);
  if (IsAssignedAt(code, chain.end)) return true;
  const std::size_t before = BeforeBlanks(code, at);
  if (EndsWith(code, before, "++") || EndsWith(code, before, "--")) return true;
  const std::string statement = StatementBefore(code, at);
  const bool isConst = HasWord(statement, "const");
  // An address that is taken, and not of something const.
  if (at > 0 && code[at - 1] == '&' && (at < 2 || code[at - 2] != '&')) {
    const bool returned = HasWord(statement, "return") && InConstFunction(code, at);
    return !isConst && !returned;
  }
  // Type* row = table + i;
  static const std::regex kPointer("[\\w>]\\*\\s*(const\\s+)?\\w+\\s*=\\s*(std::\\w+\\()?$");
  static const std::regex kConstPointer("\\bconst\\b[^*]*\\*");
  if (std::regex_search(statement, kPointer)) return !std::regex_search(statement, kConstPointer);
  // auto row = table + i;
  static const std::regex kAuto("\\bauto\\s+\\w+\\s*=\\s*$");
  const std::size_t next = BehindBlanks(code, chain.end);
  if (chain.field.empty() && next < code.size() && code[next] == '+' &&
      std::regex_search(statement, kAuto)) {
    return true;
  }
  // Type& row = table[i]; auto& [a, b] = table[i]; for (Type& row : std::span(table, count))
  static const std::regex kBound(
      "[\\w>]&&?\\s*(\\w+|\\[[^\\]]*\\])\\s*[=:]\\s*(std::\\w+(<[^>]*>)?\\()?$");
  if (statement.find('&') != std::string::npos && std::regex_search(statement, kBound)) {
    return !isConst;
  }
  return IsChangedByCall(code, at, chain.end, known);
}

std::vector<std::string> PartsOf(const std::string& list) {
  std::vector<std::string> parts(1);
  int depth = 0;
  for (const char c : list) {
    if (c == '(' || c == '<' || c == '[') ++depth;
    if (c == ')' || c == '>' || c == ']') --depth;
    if (c == ',' && depth == 0) {
      parts.emplace_back();
    } else {
      parts.back() += c;
    }
  }
  return parts;
}

// A parameter that is a reference, pointer or array and not const; the type of a handle passes.
bool IsChangingParameter(const std::string& text, const std::set<std::string>& handles) {
  static const std::regex kReference("^\\s*([\\w:]+(<[^()]*>)?)[&*]+\\s+\\w+\\s*(=\\s*\\w+\\s*)?$");
  static const std::regex kArray("^\\s*([\\w:]+)\\s*\\(&\\w+\\)\\[.*$");
  std::smatch match;
  if (!std::regex_match(text, match, kReference) && !std::regex_match(text, match, kArray)) {
    return false;
  }
  return match[1] != "return" && match[1] != "const" && handles.count(match[1]) == 0;
}

}  // namespace

ChangingParameters StandardParameters() {
  ChangingParameters known = {{"copy", {2}},      {"copy_backward", {2}}, {"copy_if", {2}},
                              {"copy_n", {2}},    {"erase", {0}},         {"erase_if", {0}},
                              {"exchange", {0}},  {"fill_n", {0}},        {"generate_n", {0}},
                              {"getline", {1}},   {"memcpy", {0}},        {"memmove", {0}},
                              {"memset", {0}},    {"move_backward", {2}}, {"ranges::copy", {1}},
                              {"transform", {2}}, {"swap_ranges", {0, 2}}};
  for (const char* name :
       {"fill",        "generate",     "inplace_merge", "iota",       "make_heap",
        "nth_element", "partial_sort", "partition",     "pop_heap",   "push_heap",
        "remove",      "remove_if",    "replace",       "replace_if", "reverse",
        "rotate",      "shuffle",      "sort",          "sort_heap",  "stable_partition",
        "stable_sort", "unique"}) {
    known[name] = {0, 1};
    known[std::string("ranges::") + name] = {0};
  }
  return known;
}

void LearnParameters(const std::string& code, const std::set<std::string>& handles,
                     ChangingParameters& known) {
  for (std::size_t open = code.find('('); open != std::string::npos;
       open = code.find('(', open + 1)) {
    const std::string name = WordBefore(code, open);
    if (name.empty()) continue;
    const std::size_t end = BehindBracket(code, open);
    const std::string list = code.substr(open + 1, end - open - 2);
    if (list.find('&') == std::string::npos && list.find('*') == std::string::npos) continue;
    const std::vector<std::string> parts = PartsOf(list);
    for (std::size_t i = 0; i < parts.size(); ++i) {
      if (IsChangingParameter(parts[i], handles)) known[name].insert(static_cast<int>(i));
    }
  }
}

std::vector<Write> WritesTo(const std::string& name, const std::string& code,
                            const ChangingParameters& known) {
  std::vector<Write> writes;
  int line = 1;
  std::size_t counted = 0;
  for (std::size_t at = code.find(name); at != std::string::npos; at = code.find(name, at + 1)) {
    const std::size_t behind = at + name.size();
    if (behind < code.size() && IsWordChar(code[behind])) continue;
    const char before = at > 0 ? code[at - 1] : ' ';
    if (IsWordChar(before) || before == '.' || EndsWith(code, at, "->")) continue;
    if (IsDeclared(code, at)) continue;
    const Chain chain = ChainAt(code, behind);
    if (!IsWrite(code, at, chain, known)) continue;
    for (; counted < at; ++counted) line += code[counted] == '\n';
    writes.push_back({chain.field, line});
  }
  return writes;
}

std::set<std::string> HandlesOf(const std::string& type, const std::string& code, bool alsoConst) {
  std::set<std::string> found;
  for (std::size_t at = code.find(type); at != std::string::npos; at = code.find(type, at + 1)) {
    if (at > 0 && IsWordChar(code[at - 1])) continue;
    std::size_t behind = at + type.size();
    if (behind >= code.size() || (code[behind] != '&' && code[behind] != '*')) continue;
    const std::string statement = StatementBefore(code, at);
    const bool isConst = HasWord(statement.substr(statement.find_last_of("(,") + 1), "const");
    if (isConst && !alsoConst) continue;
    while (behind < code.size() &&
           (code[behind] == '&' || code[behind] == '*' || code[behind] == ' ')) {
      ++behind;
    }
    const std::string name = WordAt(code, behind);
    const char next = behind + name.size() < code.size() ? code[behind + name.size()] : ' ';
    if (!name.empty() && next != '(') found.insert(name);
  }
  return found;
}

namespace {

std::vector<std::string> FieldsWritten(const std::string& code) {
  ChangingParameters known = StandardParameters();
  LearnParameters(
      "void Fill(int& out, const int& in); void Put(int count, char16_t* to);"
      "void Free(Row& row); void Copy(char (&list)[8], std::string_view text);",
      {"Row"}, known);
  std::vector<std::string> fields;
  for (const Write& write : WritesTo("table", code, known)) fields.push_back(write.field);
  return fields;
}

using Fields = std::vector<std::string>;

TEST(Writes, AreFoundAsAssignments) {
  EXPECT_EQ(FieldsWritten("table.count = 1;"), Fields{"count"});
  EXPECT_EQ(FieldsWritten("table = Table();"), Fields{""});
  EXPECT_EQ(FieldsWritten("table[i].row.x += 2;"), Fields{"row"});
  EXPECT_EQ(FieldsWritten("table.rows[f(table.count)] |= 1;"), Fields{"rows"});
  EXPECT_EQ(FieldsWritten("if (a) ++table.count;"), Fields{"count"});
  EXPECT_EQ(FieldsWritten("list[table.count--] = 3;"), Fields{"count"});
  EXPECT_EQ(FieldsWritten("table.bits <<= 1;"), Fields{"bits"});
  EXPECT_EQ(FieldsWritten("table->left = table->right;"), Fields{"left"});
}

TEST(Writes, AreFoundAsChangingCalls) {
  EXPECT_EQ(FieldsWritten("table.text.clear();"), Fields{"text"});
  EXPECT_EQ(FieldsWritten("Fill(table.count, 3);"), Fields{"count"});
  EXPECT_EQ(FieldsWritten("Put(f(1, 2), table.name);"), Fields{"name"});
  EXPECT_EQ(FieldsWritten("Copy(table.list, text);"), Fields{"list"});
  EXPECT_EQ(FieldsWritten("x = std::move(table[i]);"), Fields{""});
  EXPECT_EQ(FieldsWritten("old = std::exchange(table.count, 3);"), Fields{"count"});
  EXPECT_EQ(FieldsWritten("std::fill(table.rows, table.rows + 3, Row());"),
            (Fields{"rows", "rows"}));
  EXPECT_EQ(FieldsWritten("std::sort(table.begin(), table.end());"), (Fields{"", ""}));
  EXPECT_EQ(FieldsWritten("std::ranges::sort(table.rows);"), Fields{"rows"});
  EXPECT_EQ(FieldsWritten("std::memset(table.rows + i, 0, 8);"), Fields{"rows"});
  EXPECT_EQ(FieldsWritten("std::erase_if(table.rows, IsOld);"), Fields{"rows"});
  EXPECT_EQ(FieldsWritten("table.rows.back().x = 1;"), Fields{"rows"});
  EXPECT_EQ(FieldsWritten("table.at(i).x = 1;"), Fields{"x"});
}

TEST(Writes, AreFoundThroughReferencesAndAddresses) {
  EXPECT_EQ(FieldsWritten("Row& row = table.rows[i];"), Fields{"rows"});
  EXPECT_EQ(FieldsWritten("for (Row& row : table) Use(row);"), Fields{""});
  EXPECT_EQ(FieldsWritten("Row* row = &table.rows[i];"), Fields{"rows"});
  EXPECT_EQ(FieldsWritten("Row* Find() {\n  return &table.rows[0];\n}"), Fields{"rows"});
  EXPECT_EQ(FieldsWritten("Row* row = table + i;"), Fields{""});
  EXPECT_EQ(FieldsWritten("auto* row = table;"), Fields{""});
  EXPECT_EQ(FieldsWritten("Row* const row = std::begin(table);"), Fields{""});
  EXPECT_EQ(FieldsWritten("auto row = table + i;"), Fields{""});
  EXPECT_EQ(FieldsWritten("auto& [a, b] = table.rows[i];"), Fields{"rows"});
  EXPECT_EQ(FieldsWritten("for (auto&& [a, b] : table) a = b;"), Fields{""});
  EXPECT_EQ(FieldsWritten("for (Row& row : std::span(table, 3)) Use(row);"), Fields{""});
}

TEST(Writes, AreNotSeenWhereATableIsRead) {
  for (const char* code : {
           "if (table.count == 1) return table.count;",
           "x = table.count;",
           "x = a && table.on;",
           "const Row& row = table.rows[i];",
           "for (const Row& row : table) Use(row);",
           "const Row* row = &table.rows[i];",
           "const Row* row = table + i;",
           "const auto& [a, b] = table.rows[i];",
           "for (const Row& row : std::span(table, 3)) Use(row);",
           "std::copy(table.begin(), table.end(), out);",
           "x = std::max(table.count, 3);",
           "x = table.rows.back().x;",
           "const Row* Find() {\n  return &table.rows[0];\n}",
           "Fill(out, table.count);",
           "Free(table.rows[i]);",
           "Draw(table.name, 3);",
           "table.text.size();",
           "other.table = 1;",
           "char16_t table[8] = {};",
           "Table& table = Other();",
           "notable = 3; tables.x = 4;",
           "Fill(table.count * scale, in);",
           "x = table.count >= 3 && table.count != 4;",
       }) {
    EXPECT_EQ(FieldsWritten(code), Fields{}) << code;
  }
}

TEST(Writes, KnowTheHandlesOfARow) {
  const std::string code =
      "void Free(Row& row, const Row& other); const Row* seen = x; Row* found = y; Row* Find();";
  EXPECT_EQ(HandlesOf("Row", code), (std::set<std::string>{"row", "found"}));
  EXPECT_EQ(HandlesOf("Row", code, true), (std::set<std::string>{"row", "other", "seen", "found"}));
}

}  // namespace

}  // namespace house
