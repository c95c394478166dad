// Variables of the control: "#" numbers, what they hold, and expressions over them.
#pragma once

#include <cmath>

#include "simulator/control_run.h"

namespace morva {

inline bool IsUndefined(double value) { return std::isnan(value); }
double Undefined();

// What "#number" holds; a number that is none, or that the control has not got, is a finding and
// undefined.
double ReadVariable(ControlRun& run, double number);
void WriteVariable(ControlRun& run, double number, double value);
// Before a run: every variable undefined, but the system's.
void ClearVariables(ControlVariables& variables);

// An expression in square brackets, from behind "[" up to behind "]". Order: functions and signs;
// * / MOD AND; + - OR XOR; comparisons, which give 1 or 0. Angles are in degrees. What cannot be
// read is a finding and ends the run.
double TakeExpression(ControlRun& run, const char16_t*& p, const char16_t* end, int depth);
// The right side of "#1 = ...": the same without brackets around it, up to where no operator
// follows.
double TakeOpenExpression(ControlRun& run, const char16_t*& p, const char16_t* end);
// The number of a word, from its first character on: digits, "#...", "[...]" or a function, with
// signs and blanks. False: there is none, `p` stays.
bool TakeValue(ControlRun& run, const char16_t*& p, const char16_t* end, double& value,
               bool& pointed, int depth);

}  // namespace morva
