// What stands around a builder's preview: the program's motion as it is now, the drawings of its
// blocks and its stock.
//
// The points have a table of their own, the context of the builder's path, so that the program's
// own path is not touched. Left out are the block under edit, for which the preview stands, and
// what the user hid or isolated away.
#pragma once

#include "simulator/motion_path.h"
#include "simulator/stock_envelope.h"

namespace morva {

struct PreviewContext {
  bool drawn = false;   // something is, within these bounds; display units
  PathBounds bounds;    // of the feeds and drawings alone
  StockEnvelope stock;  // of the program
};
const PreviewContext& ContextOfPreview();

// Reads the program in the editor, unless it is the one that was read last: false.
bool RefreshPreviewContext();
// Leaves nothing around the preview.
void EmptyPreviewContext();

// Whether a point of a context is the end of a move or a corner of a drawing; not a place within an
// arc, nor one that the tool only comes to.
bool IsEndpoint(const MotionPath& context, std::int32_t index);

}  // namespace morva
