// The two floating number boxes: the preview's sizes, typed instead of clicked.
#pragma once

#include "platform/canvas.h"
#include "platform/events.h"

namespace morva {

// What the log says of an object that was drawn by points or by typed sizes.
inline constexpr char16_t kDrawnByPoints[] = u"Created geometry by construction points";

void CaptionSizeBoxes();  // by the method in hand
void FillSizeBoxes();     // with the numbers of the preview
// Shows them beside a canvas pixel.
void OpenSizeBoxes(int canvasX, int canvasY);
// Anew for a canvas of another size; nothing while they are hidden.
void PlaceSizeBoxes();
void FocusSizeBoxes();
// Enter, Tab and Escape in them. True: used.
bool SizeBoxKey(const platform::KeyEvent& key);
// The ground below the number boxes and their frames; nothing while they are hidden.
void PaintSizeBoxes(platform::Canvas& canvas);
// Creates the previewed object with the sizes in the boxes. From the button a failure is told,
// from the Enter key it is silent.
bool CommitTypedSize(bool fromButton);

}  // namespace morva
