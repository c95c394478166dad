// Placing the stock: by numbers, on picked geometry, anywhere on the plane of its surface.
#pragma once

namespace morva {

inline constexpr char16_t kCorrectFirst[] = u"Correct skim inputs before placing the area.";

// A field of the placement changed: the stock moves along, or the status line says why not.
void TakeTypedPlace();
// The next press in the view places the stock's lower left corner on geometry, with its surface,
// or anywhere on the plane of the surface.
void PickSkimGeometry();
void PickSkimPlane();
// A place of a drawing that the user chose, in units of the application.
void PlaceSkimByDrawing(double x, double y);

}  // namespace morva
