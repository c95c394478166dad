#include "simulator/preview_state.h"

#include "simulator/preview_context.h"
#include "simulator/shown_path.h"

namespace morva {

PreviewState previewState;

void ForgetPreview() {
  previewState = PreviewState{};
  EmptyPreviewContext();
}

bool PreviewIsShown() { return previewState.stands && ShownOwner() == PathOwner::Builder; }

bool HasLevels() { return PreviewIsShown() && previewState.levels; }

bool HasCoverage() { return PreviewIsShown() && previewState.diameter > 0; }

std::int32_t ToolOf(const MotionPoint& point) {
  return PreviewIsShown() && previewState.tool > 0 ? previewState.tool : point.tool;
}

}  // namespace morva
