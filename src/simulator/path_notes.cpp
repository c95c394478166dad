#include "simulator/path_notes.h"

#include <iterator>

#include "text/codetext.h"

namespace morva {

namespace {

struct Group {
  const char16_t* words;  // behind the number of lines
  const char16_t* tip;
};
constexpr Group kGroups[] = {
    {u"not shown", u"Not shown"},
    {u"behind M30", u"Drawn, but behind the program's end"},
    {u"with /", u"Drawn, but left out with block delete"},
    {u"behind %", u"Drawn, but never read by the control"},
    {u"not applied", u"Drawn without"},
};
constexpr int kNotApplied = 4;  // its words name the codes

struct Kind {
  PathNote note;
  int group;
  const char16_t* tip;
  const char16_t* code = u"";  // behind the tip, where the words name it
  bool drawnAsMove = false;    // axes on such a line
};
constexpr Kind kKinds[] = {
    {PathNote::Macros, 0, u"macros and #"},
    {PathNote::Brackets, 0, u"[ ]"},
    {PathNote::Blanks, 0, u"blank between letter and number"},
    {PathNote::Calls, 0, u"M97 and M98"},
    {PathNote::Pockets, 0, u"G12, G13, G150 and kin"},
    {PathNote::Home, 0, u"G28, G30 and G53"},
    {PathNote::Cycles, 0, u"canned cycles"},
    {PathNote::RArcs, 0, u"R arcs"},
    {PathNote::OtherPlanes, 0, u"arcs in G18 or G19"},
    {PathNote::BadArcs, 0, u"arcs without a centre that fits"},
    {PathNote::Rotary, 0, u"A, B and C"},
    {PathNote::BehindEnd, 1, u"lines behind M30"},
    {PathNote::BlockDelete, 2, u"lines with /"},
    {PathNote::Unread, 3, u"lines behind the closing %"},
    {PathNote::Shift, kNotApplied, u"the shift of", u"G92"},
    {PathNote::LocalZero, kNotApplied, u"the shift of", u"G52", true},
    {PathNote::Turn, kNotApplied, u"the rotation of", u"G68", true},
    {PathNote::Scale, kNotApplied, u"the scaling of", u"G51", true},
    {PathNote::Offsets, kNotApplied, u"the offsets of", u"G10"},
    {PathNote::Mirror, kNotApplied, u"the mirroring of", u"G101", true},
    {PathNote::OtherZero, kNotApplied, u"changes of", u"work offsets"},
};
static_assert(std::size(kKinds) == kPathNotes);
static_assert([] {
  for (int i = 0; i < kPathNotes; ++i) {
    if (kKinds[i].note != static_cast<PathNote>(i)) return false;
  }
  return true;
}());

PathNotes::Row SumOf(const PathNotes& notes, int group) {
  PathNotes::Row sum;
  for (int i = 0; i < kPathNotes; ++i) {
    const PathNotes::Row& row = notes.rows[i];
    if (kKinds[i].group != group || row.lines == 0) continue;
    sum.lines += row.lines;
    if (sum.first < 0 || row.first < sum.first) sum.first = row.first;
  }
  return sum;
}

std::u16string TipOf(const PathNotes& notes, int group) {
  std::u16string tip;
  bool asMove = false;
  for (int i = 0; i < kPathNotes; ++i) {
    if (kKinds[i].group != group || notes.rows[i].lines == 0) continue;
    tip += tip.empty() ? u": " : u", ";
    tip += kKinds[i].tip;
    if (kKinds[i].code[0]) tip += u" " + std::u16string(kKinds[i].code);
    tip += u" " + IntegerText(notes.rows[i].lines);
    asMove = asMove || kKinds[i].drawnAsMove;
  }
  if (asMove) tip += u"; X, Y and Z beside them are drawn as a move";
  return tip.empty() ? tip : kGroups[group].tip + tip;
}

// "of G92, G68 ", nothing where the group has no codes.
std::u16string CodesOf(const PathNotes& notes, int group) {
  std::u16string codes;
  for (int i = 0; i < kPathNotes; ++i) {
    if (kKinds[i].group != group || notes.rows[i].lines == 0 || !kKinds[i].code[0]) continue;
    codes += codes.empty() ? u"of " : u", ";
    codes += kKinds[i].code;
  }
  return codes.empty() ? codes : codes + u" ";
}

}  // namespace

void NoteLine(PathNotes& notes, PathNote kind, std::int32_t line) {
  PathNotes::Row& row = notes.rows[static_cast<int>(kind)];
  if (row.lines++ == 0) row.first = line;
}

std::u16string PathNotesWords(const PathNotes& notes) {
  std::u16string words;
  for (int group = 0; group < static_cast<int>(std::size(kGroups)); ++group) {
    const PathNotes::Row sum = SumOf(notes, group);
    if (sum.lines == 0) continue;
    words += u"  /  " + IntegerText(sum.lines) + (sum.lines == 1 ? u" line " : u" lines ") +
             CodesOf(notes, group);
    words += kGroups[group].words;
    words += u", first " + IntegerText(sum.first + 1);
  }
  return words;
}

bool HasLinesNotShown(const PathNotes& notes) {
  return SumOf(notes, 0).lines > 0 || SumOf(notes, kNotApplied).lines > 0;
}

std::u16string PathNotesTip(const PathNotes& notes) {
  std::u16string tip;
  for (int group = 0; group < static_cast<int>(std::size(kGroups)); ++group) {
    const std::u16string line = TipOf(notes, group);
    if (line.empty()) continue;
    if (!tip.empty()) tip += u"\n";
    tip += line;
  }
  return tip;
}

}  // namespace morva
