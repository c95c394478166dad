// Builders that are made up for tests, joined to the application that has started.
#pragma once

#include "app/panels.h"
#include "documents/builder.h"
#include "shell/modes.h"
#include "support/kinds.h"

namespace support {

// Joins the builder and brings its panel up.
template <const morva::Builder& builder>
void JoinLate() {
  FreeKind(builder.kind);
  morva::RegisterBuilder<builder>();
  for (int i = 0; i < morva::PanelCount(); ++i) {
    if (morva::PanelAt(i).mode == builder.mode) morva::PanelAt(i).make();
  }
  morva::SetMode(builder.mode);
}

}  // namespace support
