#include "simulator/control_variables.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "simulator/control_frame.h"
#include "simulator/control_number.h"
#include "text/codetext.h"

namespace morva {

namespace {

constexpr int kMostDepth = 64;  // brackets within brackets; a control takes far fewer
constexpr double kDegree = 0.017453292519943295;
constexpr double kMostVariable = 1e7;

constexpr int kFirstCommon = 100;
constexpr int kLastCommon = 999;

// System variables of which each tool has one.
struct ToolVariables {
  int first;
  double ToolOffset::*field;
};
constexpr ToolVariables kToolVariables[] = {{2001, &ToolOffset::length},
                                            {2201, &ToolOffset::lengthWear},
                                            {2401, &ToolOffset::diameter},
                                            {2601, &ToolOffset::diameterWear}};

// Rows of the work offsets whose axes are variables: the first one, rows, the table's first row.
struct WorkVariables {
  int first;
  int rows;
  int row;
};
constexpr int kAxesStep = 20;
constexpr WorkVariables kWorkVariables[] = {
    {5201, 1, kLocalZeroRow}, {5221, 6, kFirstWorkRow}, {7001, 20, kFurtherWorkRow}};

double InProgramUnits(const ControlRun& run, double inches) {
  return inches * run.perInch / run.unit;
}

// The place of a work offset's number in the table, null where it has none.
double* WorkPlace(ControlRun& run, int number) {
  for (const WorkVariables& part : kWorkVariables) {
    const int behind = number - part.first;
    if (behind < 0 || behind >= part.rows * kAxesStep || behind % kAxesStep > 2) continue;
    return &run.table.work[part.row + behind / kAxesStep][behind % kAxesStep];
  }
  return nullptr;
}

// Places of the axes A to C, which this reader does not move: they stand at 0.
bool IsOfFurtherAxis(int number) {
  const bool place = (number >= 5001 && number <= 5066) || (number >= 5201 && number <= 5326) ||
                     (number >= 7001 && number <= 7386);
  const int axis = (number - 1) % kAxesStep;
  return place && axis >= 3 && axis <= 5;
}

bool IsCounter(int number) { return number == 3901 || number == 3902; }

// What a control holds and this reader does not know: last words, counters, times and lives of
// tools, settings, parameters.
bool IsOfControl(int number) {
  return (number >= 4101 && number <= 4126) || IsCounter(number) ||
         (number >= 5401 && number <= 6999);
}

double* ToolPlace(ControlRun& run, int number) {
  for (const ToolVariables& part : kToolVariables) {
    const int tool = number - part.first + 1;
    if (tool >= 1 && tool <= kControlTools) return &(run.table.tools[tool].*part.field);
  }
  return nullptr;
}

// G codes in force by group, from #4001.
double ModeOf(const ControlRun& run, int group) {
  const ControlModes& modes = run.modes;
  switch (group) {
    case 1:
      return modes.line;
    case 2:
      return modes.plane;
    case 3:
      return modes.absolute ? 90 : 91;
    case 5:
      return modes.feedMode;
    case 6:
      return modes.metric ? 21 : 20;
    case 7:
      return modes.compensation;
    case 8:
      return modes.lengthMode;
    case 9:
      return modes.motion > 3 ? modes.motion : 80;
    case 10:
      return modes.returnPlane;
    case 11:
      return run.frame.scale != 1 ? 51 : 50;
    case 12:
      if (modes.workRow < kFurtherWorkRow) return 54 + modes.workRow - kFirstWorkRow;
      return modes.workRow < kFurtherWorkRow + 20 ? 110 + modes.workRow - kFurtherWorkRow : 154;
    case 13:
      return modes.exactStop ? 61 : 64;
    case 16:
      return run.frame.turned ? 68 : 69;
    default:
      return 0;
  }
}

double ReadSystem(ControlRun& run, int number) {
  if (const double* tool = ToolPlace(run, number)) return InProgramUnits(run, *tool);
  if (const double* work = WorkPlace(run, number)) return InProgramUnits(run, *work);
  if (number >= 4001 && number <= 4021) return ModeOf(run, number - 4000);
  switch (number) {
    case 4107:
      return run.diameterNumber;
    case 4111:
      return run.lengthNumber;
    case 4109:
      return run.feed / run.unit;
    case 4119:
      return run.speed;
    case 4120:
      return run.toolCalled;
    case 3026:
      return run.tool;
    case 3027:
      return run.spindle ? run.speed : 0;
    case 3001:
      return run.timerMs + run.time * 1000;
    case 3002:
      return run.timerHours + run.time / 3600;
    case 3011:
    case 3012:
      return 0;  // date and time: a reading must give the same twice
    case 3000:
    case 3003:
    case 3004:
    case 3006:
      return 0;
    default:
      break;
  }
  for (const int first : {5001, 5041, 5061}) {
    if (number >= first && number <= first + 2) return run.at.of[number - first] / run.unit;
  }
  if (number >= 5021 && number <= 5023) {
    const int axis = number - 5021;
    return (run.shown.of[axis] + run.zero.of[axis]) / run.unit;
  }
  if (number >= 1000 && number <= 1199) return 0;  // inputs and outputs
  if (IsOfFurtherAxis(number)) return 0;
  if (IsOfControl(number)) {
    Report(run, Finding::NotFollowed, number, '#');
  } else {
    Report(run, Finding::BadVariable, number);
  }
  return Undefined();
}

// Functions of one value.
enum class Function : unsigned char {
  Sin,
  Cos,
  Tan,
  Asin,
  Acos,
  Atan,
  Sqrt,
  Abs,
  Round,
  Fix,
  None
};
constexpr struct {
  std::u16string_view name;
  Function function;
} kFunctions[] = {{u"SIN", Function::Sin},   {u"COS", Function::Cos},   {u"TAN", Function::Tan},
                  {u"ASIN", Function::Asin}, {u"ACOS", Function::Acos}, {u"ATAN", Function::Atan},
                  {u"SQRT", Function::Sqrt}, {u"ABS", Function::Abs},   {u"ROUND", Function::Round},
                  {u"FIX", Function::Fix}};

enum class Operator : unsigned char {
  None,
  Times,
  Over,
  Mod,
  And,
  Plus,
  Minus,
  Or,
  Xor,
  Eq,
  Ne,
  Gt,
  Lt,
  Ge,
  Le
};
constexpr struct {
  std::u16string_view name;
  Operator which;
  int height;  // higher ones bind first
} kOperators[] = {
    {u"*", Operator::Times, 3}, {u"/", Operator::Over, 3},  {u"MOD", Operator::Mod, 3},
    {u"AND", Operator::And, 3}, {u"+", Operator::Plus, 2},  {u"-", Operator::Minus, 2},
    {u"OR", Operator::Or, 2},   {u"XOR", Operator::Xor, 2}, {u"EQ", Operator::Eq, 1},
    {u"NE", Operator::Ne, 1},   {u"GT", Operator::Gt, 1},   {u"LT", Operator::Lt, 1},
    {u"GE", Operator::Ge, 1},   {u"LE", Operator::Le, 1}};

void SkipBlanks(const char16_t*& p, const char16_t* end) {
  while (p != end && (*p == u' ' || *p == u'\t')) ++p;
}

bool TakeName(const char16_t*& p, const char16_t* end, std::u16string_view name) {
  if (static_cast<std::size_t>(end - p) < name.size()) return false;
  for (std::size_t i = 0; i < name.size(); ++i) {
    if (FoldUpper(p[i]) != name[i]) return false;
  }
  p += name.size();
  return true;
}

double Zeroed(double value) { return IsUndefined(value) ? 0 : value; }

double Whole(double value) {
  return std::clamp(std::trunc(Zeroed(value)), -2147483648.0, 2147483647.0);
}

double Apply(ControlRun& run, Function function, double value) {
  const double v = Zeroed(value);
  switch (function) {
    case Function::Sin:
      return std::sin(v * kDegree);
    case Function::Cos:
      return std::cos(v * kDegree);
    case Function::Tan:
      if (std::fabs(std::remainder(v - 90, 180)) < 1e-9) {
        StopWith(run, Finding::FunctionRange, v);
        return 0;
      }
      return std::tan(v * kDegree);
    case Function::Asin:
    case Function::Acos:
      if (!(std::fabs(v) <= 1)) {
        StopWith(run, Finding::FunctionRange, v);
        return 0;
      }
      return (function == Function::Asin ? std::asin(v) : std::acos(v)) / kDegree;
    case Function::Atan:
      return std::atan(v) / kDegree;
    case Function::Sqrt:
      if (!(v >= 0)) {
        StopWith(run, Finding::FunctionRange, v);
        return 0;
      }
      return std::sqrt(v);
    case Function::Abs:
      return std::fabs(v);
    case Function::Round:
      return std::round(v);
    case Function::Fix:
      return std::trunc(v);
    case Function::None:
      break;
  }
  return v;
}

double Combine(ControlRun& run, double left, Operator which, double right) {
  const double a = Zeroed(left);
  const double b = Zeroed(right);
  const auto bits = [](double v) { return static_cast<std::int64_t>(Whole(v)); };
  switch (which) {
    case Operator::Times:
      return a * b;
    case Operator::Over:
    case Operator::Mod:
      if (b == 0) {
        StopWith(run, Finding::DivisionByZero);
        return 0;
      }
      return which == Operator::Over ? a / b : std::fmod(a, b);
    case Operator::And:
      return static_cast<double>(bits(a) & bits(b));
    case Operator::Or:
      return static_cast<double>(bits(a) | bits(b));
    case Operator::Xor:
      return static_cast<double>(bits(a) ^ bits(b));
    case Operator::Plus:
      return a + b;
    case Operator::Minus:
      return a - b;
    // Only an undefined value equals an undefined one.
    case Operator::Eq:
      return IsUndefined(left) == IsUndefined(right) && a == b ? 1 : 0;
    case Operator::Ne:
      return IsUndefined(left) == IsUndefined(right) && a == b ? 0 : 1;
    case Operator::Gt:
      return a > b ? 1 : 0;
    case Operator::Lt:
      return a < b ? 1 : 0;
    case Operator::Ge:
      return a >= b ? 1 : 0;
    case Operator::Le:
      return a <= b ? 1 : 0;
    case Operator::None:
      break;
  }
  return a;
}

struct Read {
  ControlRun& run;
  const char16_t*& p;
  const char16_t* end;
};

double TakeOperand(Read& read, int depth) {
  double value = 0;
  bool pointed = false;
  if (!TakeValue(read.run, read.p, read.end, value, pointed, depth)) {
    StopWith(read.run, Finding::BadExpression);
  }
  return value;
}

// The operator at the place, None where there is none at least as high.
Operator TakeOperator(Read& read, int least, int& height) {
  SkipBlanks(read.p, read.end);
  // Most expressions end at a bracket or at their line.
  if (read.p == read.end || *read.p == u']' || *read.p == u'\n' || *read.p == u'\r') {
    return Operator::None;
  }
  const char16_t first = FoldUpper(*read.p);
  for (const auto& row : kOperators) {
    if (row.height < least || row.name.front() != first) continue;
    if (!TakeName(read.p, read.end, row.name)) continue;
    height = row.height;
    return row.which;
  }
  return Operator::None;
}

double TakeSum(Read& read, int least, int depth) {
  double left = TakeOperand(read, depth);
  for (;;) {
    int height = 0;
    const Operator which = TakeOperator(read, least, height);
    if (which == Operator::None || read.run.ended) return left;
    const double right = TakeSum(read, height + 1, depth);
    left = Combine(read.run, left, which, right);
  }
}

bool TakeFunction(ControlRun& run, const char16_t*& p, const char16_t* end, double& value,
                  int depth) {
  const char16_t* q = p;
  const char16_t first = FoldUpper(*p);
  for (const auto& row : kFunctions) {
    if (row.name.front() != first) continue;
    q = p;
    if (!TakeName(q, end, row.name)) continue;
    SkipBlanks(q, end);
    if (q == end || *q != u'[') continue;
    ++q;
    double of = TakeExpression(run, q, end, depth + 1);
    // ATAN[a]/[b], as other controls write it, is the angle of the place (b, a).
    const char16_t* second = q;
    SkipBlanks(second, end);
    if (row.function == Function::Atan && end - second >= 2 && second[0] == u'/' &&
        second[1] == u'[') {
      second += 2;
      const double under = TakeExpression(run, second, end, depth + 1);
      value = std::atan2(Zeroed(of), Zeroed(under)) / kDegree;
      p = second;
      return true;
    }
    value = Apply(run, row.function, of);
    p = q;
    return true;
  }
  return false;
}

// What is more than a sign and digits.
[[gnu::noinline]] bool TakeLongValue(ControlRun& run, const char16_t*& p, const char16_t* end,
                                     double& value, bool& pointed, int depth) {
  if (p == end) return false;
  const char16_t* q = p;
  bool minus = false;
  for (; q != end && (*q == u'-' || *q == u'+' || *q == u' ' || *q == u'\t'); ++q) {
    if (*q == u'-') minus = !minus;
  }
  if (q == end) return false;
  if (TakeDigits(q, end, value, pointed)) {
  } else if (*q == u'#') {
    // "##1" is the variable whose number #1 holds: the number is a value without a sign.
    ++q;
    double number = 0;
    bool ignored = false;
    if (depth > kMostDepth || !TakeValue(run, q, end, number, ignored, depth + 1)) {
      StopWith(run, Finding::BadExpression);
      p = end;
      return false;
    }
    value = ReadVariable(run, number);
    pointed = true;
  } else if (*q == u'[') {
    ++q;
    value = TakeExpression(run, q, end, depth + 1);
    pointed = true;
  } else if (TakeFunction(run, q, end, value, depth)) {
    pointed = true;
  } else {
    return false;
  }
  if (minus) value = -value;
  p = q;
  return true;
}

}  // namespace

double Undefined() { return std::numeric_limits<double>::quiet_NaN(); }

void ClearVariables(ControlVariables& variables) {
  for (auto& row : variables.locals) std::fill(std::begin(row), std::end(row), Undefined());
  std::fill(std::begin(variables.common), std::end(variables.common), Undefined());
}

double ReadVariable(ControlRun& run, double number) {
  if (!(number >= 0 && number < kMostVariable)) {
    Report(run, Finding::BadVariable, IsUndefined(number) ? 0 : number);
    return Undefined();
  }
  int which = static_cast<int>(number);
  if (which != number) which = static_cast<int>(std::round(number));
  if (which == 0) return Undefined();
  if (which < kLocals) return run.variables.locals[run.calls[run.callCount - 1].locals][which];
  if (which >= kFirstCommon && which <= kLastCommon) return run.variables.common[which];
  return ReadSystem(run, which);
}

void WriteVariable(ControlRun& run, double number, double value) {
  const int which =
      number >= 0 && number < kMostVariable ? static_cast<int>(std::round(number)) : 0;
  if (which >= 1 && which < kLocals) {
    run.variables.locals[run.calls[run.callCount - 1].locals][which] = value;
    return;
  }
  if (which >= kFirstCommon && which <= kLastCommon) {
    run.variables.common[which] = value;
    return;
  }
  const double inches = Zeroed(value) * run.unit / run.perInch;
  if (double* tool = ToolPlace(run, which)) {
    *tool = inches;
    return;
  }
  if (double* work = WorkPlace(run, which)) {
    *work = inches;
    return run.movedInWork ? SettleFrame(run) : PlaceZero(run, run.modes.workRow);
  }
  if (which == 3001) {
    run.timerMs = Zeroed(value) - run.time * 1000;
    return;
  }
  if (which == 3002) {
    run.timerHours = Zeroed(value) - run.time / 3600;
    return;
  }
  const bool taken = which >= 3000 && which <= 3032;
  const bool output = which >= 1100 && which <= 1199;
  if (taken || output || IsCounter(which) || (IsOfFurtherAxis(which) && which >= 5201)) return;
  if (which >= 5401 && IsOfControl(which)) return Report(run, Finding::NotFollowed, which, '#');
  Report(run, Finding::BadVariable, which);
}

double TakeExpression(ControlRun& run, const char16_t*& p, const char16_t* end, int depth) {
  if (depth > kMostDepth) {
    StopWith(run, Finding::BadExpression);
    p = end;
    return 0;
  }
  Read read{run, p, end};
  const double value = TakeSum(read, 1, depth);
  SkipBlanks(p, end);
  if (p == end || *p != u']') {
    StopWith(run, Finding::BadExpression);
    p = end;
    return 0;
  }
  ++p;
  return value;
}

double TakeOpenExpression(ControlRun& run, const char16_t*& p, const char16_t* end) {
  Read read{run, p, end};
  return TakeSum(read, 1, 0);
}

bool TakeValue(ControlRun& run, const char16_t*& p, const char16_t* end, double& value,
               bool& pointed, int depth) {
  if (TakePlainNumber(p, end, value, pointed)) return true;
  return TakeLongValue(run, p, end, value, pointed, depth);
}

}  // namespace morva
