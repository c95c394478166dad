// The tool strip and the other keys of the CAD workspace, by rows.
#pragma once

namespace morva {

struct CadKeySpec {
  int id;
  int width;           // pixels at the least window; wider windows keep it
  bool apart = false;  // begins a group: drawing, patterns, edits, view, output, units
};

inline constexpr int kCadStripRows = 2;
// The keys of a strip row, from left to right.
const CadKeySpec* CadStripRow(int row, int& count);
// Whether the key stands for a state that is on now.
bool CadKeyIsOn(int id);

}  // namespace morva
