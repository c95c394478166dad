#include "simulator/control_codes.h"

namespace morva {

namespace {

constexpr int kCodes = 200;

struct CodeTable {
  CodeRow of[kCodes] = {};
  constexpr void Put(int code, CodeAction action, int group) {
    of[code] = {action, static_cast<std::uint8_t>(group)};
  }
  constexpr void PutRun(int first, int last, CodeAction action, int group) {
    for (int code = first; code <= last; ++code) Put(code, action, group);
  }
  constexpr CodeTable() {
    PutRun(0, 3, CodeAction::Motion, 1);
    PutRun(17, 19, CodeAction::Plane, 2);
    Put(90, CodeAction::Absolute, 3);
    Put(91, CodeAction::Incremental, 3);
    PutRun(93, 95, CodeAction::FeedMode, 5);
    Put(20, CodeAction::Inch, 6);
    Put(21, CodeAction::Metric, 6);
    PutRun(40, 42, CodeAction::Compensation, 7);
    PutRun(43, 44, CodeAction::Length, 8);
    Put(49, CodeAction::Length, 8);
    for (int code : {73, 74, 76, 77}) Put(code, CodeAction::Cycle, 9);
    Put(80, CodeAction::CycleEnd, 9);
    PutRun(81, 89, CodeAction::Cycle, 9);
    PutRun(98, 99, CodeAction::Return, 10);
    PutRun(50, 51, CodeAction::Scale, 11);
    PutRun(54, 59, CodeAction::WorkOffset, 12);
    PutRun(110, 129, CodeAction::WorkOffset, 12);
    Put(154, CodeAction::WorkOffset, 12);
    Put(61, CodeAction::ExactStop, 13);
    Put(64, CodeAction::ExactStop, 13);
    PutRun(68, 69, CodeAction::Turn, 16);
    PutRun(100, 101, CodeAction::Mirror, 17);
    Put(4, CodeAction::Dwell, 0);
    Put(9, CodeAction::ExactBlock, 0);
    Put(10, CodeAction::SetOffsets, 0);
    PutRun(12, 13, CodeAction::Circle, 0);
    Put(28, CodeAction::Home, 0);
    Put(29, CodeAction::FromHome, 0);
    Put(52, CodeAction::LocalZero, 0);
    Put(53, CodeAction::Machine, 0);
    Put(65, CodeAction::Macro, 0);
    PutRun(70, 72, CodeAction::HolePattern, 0);
    Put(92, CodeAction::Shift, 0);
    Put(103, CodeAction::LookAhead, 0);
    Put(150, CodeAction::Pocket, 0);
    Put(187, CodeAction::LookAhead, 0);  // smoothness: its P and E are no words of a move
    // Probing, tool setting, engraving, rotary and five-axis codes.
    for (int code : {31, 35, 36, 37, 47, 75, 102, 107, 136, 141, 143, 153, 155, 159}) {
      Put(code, CodeAction::NotFollowed, 0);
    }
    PutRun(160, 186, CodeAction::NotFollowed, 0);
    Put(188, CodeAction::NotFollowed, 0);
    for (int code : {32, 33, 34, 96, 97}) Put(code, CodeAction::Lathe, 0);
  }
};
constexpr CodeTable kTable;

constexpr int kHighestM = 199;

struct MTable {
  bool of[kHighestM + 1] = {};
  constexpr MTable() {
    constexpr int kKnown[] = {0,  1,  2,  3,  4,  5,  6,  8,  9,   10,  11, 12, 13, 16,
                              17, 18, 19, 30, 31, 32, 33, 34, 35,  36,  39, 41, 42, 50,
                              59, 69, 75, 76, 77, 78, 79, 80, 81,  82,  83, 84, 86, 88,
                              89, 93, 94, 95, 96, 97, 98, 99, 104, 105, 109};
    for (int code : kKnown) of[code] = true;
    // Outputs of the user's own relays.
    for (int code = 21; code <= 28; ++code) of[code] = true;
    for (int code = 51; code <= 58; ++code) of[code] = true;
    for (int code = 61; code <= 68; ++code) of[code] = true;
  }
};
constexpr MTable kMs;

}  // namespace

CodeRow CodeOf(int timesTen) {
  if (timesTen < 0 || timesTen % 10 != 0 || timesTen / 10 >= kCodes) return {};
  return kTable.of[timesTen / 10];
}

bool IsKnownM(int code) { return code >= 0 && code <= kHighestM && kMs.of[code]; }

}  // namespace morva
