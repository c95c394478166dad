#include "app/surfaces.h"

#include <algorithm>

#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/join_table.h"
#include "app/limits.h"
#include "app/router.h"
#include "app/stop.h"
#include "text/codetext.h"

namespace morva {

namespace {

Surface table[kMaxSurfaces];
JoinTable fill{u"surfaces", kMaxSurfaces};

void PressSurface(int id, int) {
  for (int i = 0; i < fill.count; ++i) {
    if (table[i].button == id) return Call(hooks.setSurface, table[i].surface);
  }
}

}  // namespace

void RegisterSurface(const Surface& surface) {
  if (surface.surface == kSurfaceCode) {
    StopProgram(u"MORVA cannot start. A surface has no number.");
  }
  if (SurfaceOf(surface.surface)) {
    StopProgram(u"MORVA cannot start. Surface " + IntegerText(surface.surface) + u" comes twice.");
  }
  table[NextRow(fill)] = surface;
  for (const ModeRow& row : surface.modes) RegisterMode(row);
  if (surface.button == 0) return;
  RegisterCommand(RouterStage::Surface, surface.button, platform::kNotifyClick, PressSurface);
}

int SurfaceCount() { return fill.count; }

const Surface& SurfaceAt(int index) { return table[index]; }

const Surface* SurfaceOf(int surface) {
  for (int i = 0; i < fill.count; ++i) {
    if (table[i].surface == surface) return &table[i];
  }
  return nullptr;
}

const Surface* SurfaceUp() { return SurfaceOf(app.surface); }

const Surface* SurfaceOfMode(int mode) {
  if (mode < 0) return nullptr;
  for (int i = 0; i < fill.count; ++i) {
    const Surface& surface = table[i];
    if (mode == surface.row || std::ranges::count(surface.pages, mode) > 0) return &surface;
  }
  return nullptr;
}

bool IsSurfaceKeyOn(int id) {
  const Surface* up = SurfaceUp();
  return id == (up ? up->button : kIdSurfaceCode);
}

void ClearSurfaces() { fill.count = 0; }

void SettleSurface() {
  const Surface* up = SurfaceUp();
  if (up) Call(up->settled);
}

void TellSurfaceLogged(std::u16string_view text) {
  const Surface* up = SurfaceUp();
  if (up) Call(up->logged, text);
}

void CancelSurfaceInput() {
  for (int i = 0; i < fill.count; ++i) Call(table[i].cancelInput);
}

void StoreWhatIsOwed() {
  for (int i = 0; i < fill.count; ++i) Call(table[i].storeOwed);
}

namespace {

bool AllAnswerYes(bool (*Surface::*question)()) {
  for (int i = 0; i < fill.count; ++i) {
    if (table[i].*question && !(table[i].*question)()) return false;
  }
  return true;
}

}  // namespace

bool MayCloseSurfaces() { return AllAnswerYes(&Surface::mayClose); }
bool MayCloseProgram() { return AllAnswerYes(&Surface::mayCloseProgram); }

void TellPointerOver(int id) {
  for (int i = 0; i < fill.count; ++i) Call(table[i].pointerOver, id);
}

}  // namespace morva
