#include "cad/motion_text.h"

namespace morva {

void EmitMotion(char16_t*, int, const char16_t*, double, double, double, bool) {}
void RotatePoint(double, double, double, double, double, double&, double&) {}
void EmitClosedShape(char16_t*, int, int, double, double, double, double, double, double, double,
                     double) {}
void EmitCircle(char16_t*, int, double, double, double, double, double, double) {}
void EmitSlot(char16_t*, int, double, double, double, double, double, double, double, double) {}

}  // namespace morva
