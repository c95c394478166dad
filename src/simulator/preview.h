// A builder's preview in place of the program's path, for the hooks of app/hooks.h.
//
// It is the builder's own path with its play, head and view (shown_path.h), so nothing of the
// program's is saved or restored. What the records mean stands in app/path_preview.h.
#pragma once

#include "app/path_preview.h"

namespace morva {

// Shows it, or the next change of it. The view shows path, stock and what stands around them, as
// long as the user does not zoom or shift it.
void ShowPreview(const PathPreview& preview);
// Points at a place; a record without place and words takes the marker away. Nothing where no
// preview is shown.
void MarkPreview(const PreviewMarker& marker);
// The program is shown again, as it stood. Nothing where no preview is shown.
void LeavePreview();
// The program changed behind the preview: what stands around it is read anew.
void FollowPreviewedProgram();

}  // namespace morva
