// A builder with pages, made up for tests: a list says whether it faces, drills or taps, and the
// pages share their controls under other labels, starts and units.
#pragma once

#include "library/units.h"
#include "support/groove.h"

namespace support::bores {

using namespace morva;  // NOLINT: as a builder of the program is written

inline constexpr int kFirst = 41100, kOperation = 41110, kInsert = 41111, kMode = 91;
enum Number : int { kFeed, kDepth, kNinth, kTenth };
enum Page : int { kFace, kDrill, kTap };

inline constexpr Command kCommands[] = {{.id = kInsert,
                                         .words = u"INSERT BORES",
                                         .help = u"Write the bores into the program",
                                         .wordsOn = u"UPDATE BORES"}};
inline constexpr const char16_t* kOperations[] = {u"Face", u"Drill", u"Tap"};
inline constexpr unsigned kHoles = PageBit(kDrill) | PageBit(kTap);
// clang-format off
inline constexpr FormRow kRows[] = {
    {.kind = RowKind::Choice, .id = kOperation, .label = u"Operation",
     .help = u"What is done at each place", .choice = 0, .rows = kOperations, .picks = kTap + 1},
    {.id = kFirst + kFeed, .label = u"Cut feed", .help = u"Feed while facing, a minute",
     .start = u"12.00", .fallback = 12, .follows = Follows::Length, .decimals = 2, .value = kFeed,
     .pages = PageBit(kFace)},
    {.id = kFirst + kFeed, .label = u"Drill feed", .help = u"Feed into the hole, a minute",
     .start = u"8.00", .fallback = 8, .follows = Follows::Length, .decimals = 2, .value = kFeed,
     .pages = PageBit(kDrill)},
    {.id = kFirst + kFeed, .label = u"TPI", .labelMm = u"Pitch mm",
     .help = u"Threads an inch, or millimetres a turn", .start = u"20", .fallback = {20, 1.27},
     .follows = Follows::Thread, .value = kFeed, .pages = PageBit(kTap)},
    {.id = kFirst + kDepth, .label = u"Depth Z", .help = u"Z of the face", .start = u"-0.010",
     .follows = Follows::Length, .value = kDepth, .pages = PageBit(kFace)},
    {.id = kFirst + kDepth, .label = u"Depth Z", .help = u"Z of the holes' ends",
     .start = u"-0.500", .startMm = u"-12.5", .follows = Follows::Length, .value = kDepth,
     .pages = kHoles},
    {.id = kFirst + kNinth, .label = u"X max", .help = u"Right edge of the face",
     .start = u"4.000", .follows = Follows::Length, .value = kNinth, .pages = PageBit(kFace)},
    {.kind = RowKind::Count, .id = kFirst + kNinth, .label = u"Hole count",
     .help = u"Whole number of holes", .start = u"4", .fallback = 1, .value = kNinth,
     .pages = kHoles},
    {.id = kFirst + kTenth, .label = u"Y max", .help = u"Upper edge of the face",
     .start = u"0.400", .follows = Follows::Length, .value = kTenth, .pages = PageBit(kFace)},
    {.id = kFirst + kTenth, .label = u"X spacing", .help = u"From hole to hole along X",
     .start = u"1.000", .follows = Follows::Length, .value = kTenth, .pages = kHoles},
    {.kind = RowKind::Keys, .keys = {kInsert}},
};
// clang-format on
inline constexpr Form kForm{
    .sheet = &kBuilderSheet, .rows = kRows, .metric = UnitsMetric, .takeUnit = SetUnits};

inline void Write(const FormValues& v, CodeWriter& out) {
  Line(out, u"");
  for (const int place : {kFeed, kDepth, kNinth, kTenth}) {
    Put(out, u"(", v.numbers[place], 3);
    Line(out, u")");
  }
}
inline constexpr Builder kBuilder{.kind = kKindRectangular,
                                  .title = u"Bores",
                                  .form = &kForm,
                                  .mode = kMode,
                                  .insertKey = kInsert,
                                  .commands = kCommands,
                                  .logged = u"Bores inserted.",
                                  .write = Write};

inline void Join() { JoinLate<kBuilder>(); }

}  // namespace support::bores
