// What the builders of short jobs have in common: the rows of their fields, and why they refuse.
#pragma once

#include <span>
#include <string_view>

#include "forms/form.h"
#include "text/codetext.h"

namespace morva {

// A field of a builder's form, in inches.
struct BuilderField {
  const char16_t* label = u"";        // empty: the field is not used
  const char16_t* metricLabel = u"";  // in millimetres; empty: the same
  const char16_t* start = u"";
  double fallback = 0;  // what a text without a number counts as, in either unit
  RowKind kind = RowKind::Number;
  Follows follows = Follows::Nothing;
  int decimals = 3;  // after a conversion
};

// What is wrong, and the number of the field that it is about, counted from 0 in the order of the
// form. Without words nothing is wrong.
struct BuilderFault {
  const char16_t* words = u"";
  int field = -1;
};

// A number as a whole one between the bounds; the lower one where it is no number.
inline int WholeWithin(double value, int least, int most) {
  return value > least ? value < most ? static_cast<int>(value) : most : least;
}

inline constexpr double kLeastCut = 0.000001;  // sizes and feeds count above it

// A number as the code writes it with so many decimals.
inline double Printed(double value, int decimals) {
  return ParseDecimal(FixedText(value, decimals), 0);
}
// Whether a size or feed cuts anything, also once it is written: a control stops at F0.0 and at an
// arc of no radius.
inline bool CutsPrinted(double value, int decimals) {
  return value > kLeastCut && Printed(value, decimals) > 0;
}

}  // namespace morva
