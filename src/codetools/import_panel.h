// The import panel: operations of another program, open or from a file, into the active one.
//
// The copies get ids of their own, and excluded ones bring their stored code. All or nothing
// for the program's text.
#pragma once

namespace morva {

// Takes the open programs' list anew, the first of them as the source, and shows the panel.
void OpenImportPanel();
bool IsImportOpen();
// The chosen operations into the program that was active when the panel opened.
void ImportSelected();

void RegisterImportPanel();
void ResetImportPanel();

}  // namespace morva
