// Sine and cosine by one short series, the same on every system and for every generator.
//
// Good to about 6e-8; quarter turns give exact zeros, a cosine of 0 is not exactly 1. The
// geometry that leaves the program in code rests on these digits, so nothing is cleaned up.
#pragma once

namespace morva {

inline constexpr double kRadiansPerDegree = 0.017453292519943295;

double SeriesSine(double radians);
double SeriesCosine(double radians);

}  // namespace morva
