// A builder that can be refused in every way, made up for tests: it reads by the strict rule, has
// little room for code, cannot store thirteen holes, and asks where its block goes.
#pragma once

#include "library/units.h"
#include "support/groove.h"

namespace support::careful {

using namespace morva;  // NOLINT: as a builder of the program is written

inline constexpr int kFirst = 41200, kInsert = 41210, kMode = 92;
inline constexpr std::size_t kRoom = 300;  // units of code
inline constexpr int kUnstored = 13;       // holes
enum Number : int { kWidth, kHoles };

inline constexpr Command kCommands[] = {{.id = kInsert,
                                         .words = u"INSERT CAREFULLY",
                                         .help = u"Write the holes into the program",
                                         .wordsOn = u"UPDATE CAREFULLY"}};
inline constexpr FormRow kRows[] = {
    {.id = kFirst + kWidth,
     .label = u"Width",
     .help = u"From the first hole to the last",
     .start = u"2.000",
     .follows = Follows::Length,
     .value = kWidth},
    {.kind = RowKind::Count,
     .id = kFirst + kHoles,
     .label = u"Holes",
     .help = u"Whole number of holes",
     .start = u"2",
     .value = kHoles},
    {.kind = RowKind::Keys, .keys = {kInsert}},
};
inline constexpr Form kForm{
    .sheet = &kBuilderSheet, .rows = kRows, .metric = UnitsMetric, .takeUnit = SetUnits};

inline bool Check(const FormValues& v, Refusal& refusal) {
  if (v.refused < 0) return true;
  const FormRow& row = kRows[v.refused];
  refusal.title = row.label;
  refusal.words =
      v.misread[row.value] == Misread::NotWhole ? u"Enter a whole number." : u"Enter one number.";
  return false;
}
inline void Write(const FormValues& v, CodeWriter& out) {
  Line(out, u"");
  for (int i = 0; i < static_cast<int>(v.numbers[kHoles]); ++i) {
    Put(out, u"G00 X", v.numbers[kWidth] * i, 3);
    Line(out, u"");
  }
}
inline constexpr Builder kBuilder{
    .kind = kKindCircular,
    .title = u"Careful",
    .form = &kForm,
    .mode = kMode,
    .reading = Reading::Strict,
    .insertKey = kInsert,
    .commands = kCommands,
    .asksWhere = true,
    .check = Check,
    .write = Write,
    .room = [](const FormValues&) { return kRoom; },
    .storeItems = [](FeatureSettings& record) { return record.values[kHoles] != kUnstored; },
    .loadItems = [](const FeatureSettings& record) { return record.values[kHoles] != kUnstored; }};

inline void Join() { JoinLate<kBuilder>(); }

}  // namespace support::careful
