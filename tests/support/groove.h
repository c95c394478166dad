// The smallest builder: a groove along X, five fields and a drop-down list. Made up for tests.
#pragma once

#include "app/commands.h"
#include "app/panels.h"
#include "documents/builder.h"
#include "library/units.h"
#include "shell/modes.h"

namespace support::groove {

using namespace morva;  // NOLINT: as a builder of the program is written

enum : int { kDepth = 41000, kFeed, kWidth, kHoles, kSide, kPicture, kInsert };
enum Number : int { kDepthNumber, kFeedNumber, kWidthNumber, kHolesNumber };

inline constexpr Command kCommands[] = {{.id = kInsert,
                                         .words = u"INSERT GROOVE",
                                         .help = u"Write the groove into the program",
                                         .wordsOn = u"UPDATE GROOVE"}};
inline constexpr const char16_t* kSides[] = {u"Left", u"Right"};
// clang-format off
inline constexpr FormRow kRows[] = {
    {.kind = RowKind::Choice, .id = kSide, .label = u"Side", .choice = 0, .rows = kSides},
    {.id = kWidth, .label = u"Width", .start = u"2.000", .fallback = 1, .follows = Follows::Length,
     .value = kWidthNumber, .enter = kInsert},
    {.kind = RowKind::Count, .id = kHoles, .label = u"Holes", .start = u"2", .fallback = 1,
     .value = kHolesNumber},
    {.id = kDepth, .label = u"Z depth", .start = u"-0.100", .fallback = -0.1,
     .follows = Follows::Length, .value = kDepthNumber},
    {.id = kFeed, .label = u"Feed", .start = u"10.00", .fallback = 10, .follows = Follows::Length,
     .decimals = 2, .value = kFeedNumber},
    {.kind = RowKind::View, .id = kPicture, .name = u"Groove", .className = u"GroovePicture",
     .least = 120},
    {.kind = RowKind::Keys, .keys = {kInsert}},
};
// clang-format on
inline constexpr FormLook kLook{};
inline constexpr Form kForm{
    .look = &kLook, .rows = kRows, .metric = UnitsMetric, .takeUnit = SetUnits};

inline double Reach(const FormValues& v) {
  return v.choices[0] == 0 ? -v.numbers[kWidthNumber] : v.numbers[kWidthNumber];
}
inline bool Check(const FormValues& v, int, Refusal& refusal) {
  refusal.words = u"Enter a positive feed.";
  refusal.field = kFeed;
  return v.numbers[kFeedNumber] > 0;
}
inline void Write(const FormValues& v, CodeWriter& out) {
  Line(out, u"");
  Line(out, u"(GROOVE)");
  Line(out, v.metric ? u"G21 (MM)" : u"G20 (INCH)");
  Line(out, u"G00 X0.000 Y0.000");
  Put(out, u"G01 Z", v.numbers[kDepthNumber], 3);
  Put(out, u" F", v.numbers[kFeedNumber], 1);
  Line(out, u"");
  Put(out, u"G01 X", Reach(v), 3);
  Put(out, u" F", v.numbers[kFeedNumber], 1);
  Line(out, u"");
  PutInteger(out, u"(HOLES ", static_cast<int>(v.numbers[kHolesNumber]));
  Line(out, u")");
}
inline void Draw(const FormValues& v, Picture& picture) {
  AddLine(picture, {0, 0}, {Reach(v), 0}, Ink::Feature);
}
// A kind and a mode that have no builder yet lend it their places in the tables.
inline constexpr Builder kBuilder{.kind = kKindShape,
                                  .title = u"Groove",
                                  .form = &kForm,
                                  .mode = kModeShapes,
                                  .heightAboveView = 400,
                                  .insertKey = kInsert,
                                  .logged = u"Groove inserted.",
                                  .check = Check,
                                  .write = Write,
                                  .draw = Draw};

// Joins it to the application that has started, and brings its panel up.
inline void Join() {
  AddCommands(kCommands);
  RegisterBuilder<kBuilder>();
  for (int i = 0; i < PanelCount(); ++i) {
    if (PanelAt(i).mode == kModeShapes) PanelAt(i).make();
  }
  SetMode(kModeShapes);
}

}  // namespace support::groove
