// The compare review's workspace: its controls, their places and keys.
//
// What the keys do is in review_work.h. The workspace takes the place of editor, gutter and
// toolpath view while app.compareActive is set.
#pragma once

namespace morva {

void RegisterReview();
void ResetReview();

}  // namespace morva
