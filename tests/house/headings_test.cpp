// Headings look alike in every mode and on every surface: the bright accent in the font of
// emphasis. Labels of fields and lists have another colour.

#include <gtest/gtest.h>

#include <set>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/palette.h"
#include "platform/control.h"
#include "platform/headless/headless.h"
#include "platform/headless/headless_internal.h"
#include "shell/modes.h"
#include "support/workbench.h"

namespace {

struct Headings : public support::Workbench {
  std::set<int> seen;

  void LookAtLabels() {
    for (const int id : headless::AllIds()) {
      const headless::Item* item = headless::Find(id);
      if (!item || item->kind != headless::Kind::Label || !platform::IsVisible(id)) continue;
      // Read-outs of the line, which are no headings.
      if (id == morva::kIdDncPort || id == morva::kIdDncBaud) continue;
      const bool bright = item->colours.text == morva::kBrightAccent;
      const bool strong = item->font == platform::FontRole::Emphasis;
      EXPECT_EQ(bright, strong) << id << " " << platform::ToUtf8(item->text);
      if (bright) seen.insert(id);
    }
  }
};

TEST_F(Headings, BearOneStyleInEveryMode) {
  for (int mode = 0; mode <= morva::kModeFind; ++mode) {
    morva::SetMode(mode);
    LookAtLabels();
  }
  for (const int surface : {morva::kSurfaceCad, morva::kSurfacePlate, morva::kSurfaceSkim}) {
    morva::SetSurface(surface);
    LookAtLabels();
  }
  EXPECT_TRUE(seen.count(morva::kIdOutputHead));
  EXPECT_TRUE(seen.count(morva::kIdCadOperationsHead));
  EXPECT_GT(seen.size(), 6u);
}

}  // namespace
