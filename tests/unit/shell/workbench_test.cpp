// The check that ends every test of the whole application is seen to fail.

#include "support/workbench.h"

#include <gtest/gtest-spi.h>

#include "platform/control.h"
#include "platform/window.h"

namespace {

using support::Workbench;

constexpr int kFree = 31999;  // an id that the application does not use

struct NamesOfFields : public Workbench {
  static void Make(platform::ControlKind kind, const char16_t* name) {
    platform::ControlSpec spec;
    spec.id = kFree;
    spec.kind = kind;
    spec.accessibleName = name;
    ASSERT_TRUE(platform::MakeControl(spec));
  }
};

TEST_F(NamesOfFields, AreMissedInAFieldWithoutOne) {
  Make(platform::ControlKind::EditLine, u"");
  platform::SetText(kFree, u"1.000");
  EXPECT_NONFATAL_FAILURE(ExpectNames(), "31999 has no name");
  platform::Destroy(kFree);
}

TEST_F(NamesOfFields, AreFoundInAFieldThatBearsOne) {
  Make(platform::ControlKind::EditLine, u"Depth");
  ExpectNames();
}

}  // namespace
