#include "app/mode_table.h"

#include "app/join_table.h"
#include "app/limits.h"
#include "app/stop.h"
#include "text/codetext.h"

namespace morva {

namespace {

ModeRow table[kMaxModes];
JoinTable fill{u"modes", kMaxModes};
const ModeRow kNone;

ModeRow* Find(int mode) {
  for (int i = 0; i < fill.count; ++i) {
    if (table[i].mode == mode) return &table[i];
  }
  return nullptr;
}

}  // namespace

void RegisterMode(const ModeRow& row) {
  if (row.mode < 0) StopProgram(u"MORVA cannot start. A mode has no number.");
  ModeRow* known = Find(row.mode);
  if (!known) {
    table[NextRow(fill)] = row;
  } else if (known->coming) {
    *known = row;
  } else if (!row.coming) {
    StopProgram(u"MORVA cannot start. Mode " + IntegerText(row.mode) + u" comes twice.");
  }
}

int ModeCount() { return fill.count; }

const ModeRow& ModeAt(int index) { return table[index]; }

const ModeRow& ModeOf(int mode) {
  const ModeRow* row = Find(mode);
  return row ? *row : kNone;
}

const ModeRow* ListedMode(int n) {
  for (int i = 0; i < fill.count; ++i) {
    if (table[i].place == 0) continue;
    int above = 0;
    for (int k = 0; k < fill.count; ++k) {
      if (table[k].place != 0 && table[k].place < table[i].place) ++above;
    }
    if (above == n) return &table[i];
  }
  return nullptr;
}

void ClearModes() { fill.count = 0; }

}  // namespace morva
