#include "cad/tool_state.h"

namespace morva {

ToolState tools;

void ClearMultiSelect() {
  for (unsigned char& mark : tools.multiSelect) mark = 0;
}

bool IsMultiSelected(int index) {
  return index >= 0 && index < sketch.objectCount && tools.multiSelect[index] != 0;
}

int MultiSelectCount() {
  int count = 0;
  for (int i = 0; i < sketch.objectCount; ++i) count += tools.multiSelect[i] != 0 ? 1 : 0;
  return count;
}

}  // namespace morva
