// The code of a skim, against texts written out by hand.

#include "skim/geometry/skim_code.h"

#include <gtest/gtest.h>

#include <string>

#include "support/skim_plans.h"

namespace morva {
namespace {

using support::SkimCode;
using support::SmallSkim;
using support::WithCrLf;

// Two inches by one, two passes, rows at 0, 0.6 and 1.
TEST(SkimCode, OfAZigzagInTwoPasses) {
  EXPECT_EQ(SkimCode(SmallSkim()), WithCrLf(u"\n"
                                            "(WIZARD: GUIDED SKIM / FACE)\n"
                                            "(STRATEGY: Alternate / continuous zigzag)\n"
                                            "G20\n"
                                            "G90 G17 G94 G40 G80\n"
                                            "T5 M06\n"
                                            "G54\n"
                                            "G00 G43 H5 Z0.5000\n"
                                            "(PASS 1 TOTAL REMOVED 0.1250 TARGET Z -0.1250)\n"
                                            "G20\n"
                                            "G90 G17 G94 G40 G80\n"
                                            "G54\n"
                                            "S1500 M03\n"
                                            "M08\n"
                                            "G00 Z0.5000\n"
                                            "G00 X-0.6000 Y0.0000\n"
                                            "G01 Z-0.1250 F4.000\n"
                                            "G01 X2.6000 F12.000\n"
                                            "G01 Y0.6000 F12.000\n"
                                            "G01 X-0.6000 F12.000\n"
                                            "G01 Y1.0000 F12.000\n"
                                            "G01 X2.6000 F12.000\n"
                                            "G00 Z0.5000\n"
                                            "G00 X0.0000 Y0.0000\n"
                                            "M09\n"
                                            "M05\n"
                                            "(NEXT CUT 0.1250 TOTAL 0.2500 Z -0.2500)\n"
                                            "M00 (CYCLE START FOR NEXT PASS)\n"
                                            "(PASS 2 TOTAL REMOVED 0.2500 TARGET Z -0.2500)\n"
                                            "G20\n"
                                            "G90 G17 G94 G40 G80\n"
                                            "G54\n"
                                            "S1500 M03\n"
                                            "M08\n"
                                            "G00 Z0.5000\n"
                                            "G00 X-0.6000 Y0.0000\n"
                                            "G01 Z-0.2500 F4.000\n"
                                            "G01 X2.6000 F12.000\n"
                                            "G01 Y0.6000 F12.000\n"
                                            "G01 X-0.6000 F12.000\n"
                                            "G01 Y1.0000 F12.000\n"
                                            "G01 X2.6000 F12.000\n"
                                            "G00 Z0.5000\n"
                                            "G00 X0.0000 Y0.0000\n"
                                            "M09\n"
                                            "M05\n"
                                            "(END GUIDED SKIM - AT XY ZERO AND SAFE Z)\n"));
}

}  // namespace
}  // namespace morva
