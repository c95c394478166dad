#include "codetools/plain_line.h"

#include <gtest/gtest.h>

namespace {

using morva::IsPlainText;

TEST(PlainLine, IsWhatNoControlReads) {
  for (const char16_t* line : {u"Rapid to X 2.5 Y 1", u"G1 X", u"X Y1.", u"M8 coolant on",
                               u"G1 X1. !", u"G1 X1. \"", u"XY1.", u"Enddo 1"}) {
    EXPECT_TRUE(IsPlainText(line));
  }
}

TEST(PlainLine, IsNoCodeCommentOrStatement) {
  for (const char16_t* line :
       {u"", u"  ", u"%", u"O1000 (PART)", u"G1 X-1. Y +.5 F10.", u"(Rapid to X)", u"g1x2,r.1",
        u"/N10 G0", u"; end of it", u"M30 ; the end", u"#1=2", u"IF [#1 EQ 0] GOTO 10", u"GOTO10",
        u"END1", u"POPEN", u"DPRNT[X]", u"G1 X1. (open", u"G01 X 1."}) {
    EXPECT_FALSE(IsPlainText(line));
  }
}

}  // namespace
