// The data directory: where autosaved programs and library files live.
#pragma once

namespace morva {

// "MORVA" in the Documents folder, or "QA-data" beside an executable of another name, with
// "Projects", "Shapes", "Tool Library" and "Recovery" in it. Sets dataDir and dataDirReady;
// where a step fails dataDirReady stays false and nothing is said.
void FindDataDirectory();
// Makes what of it was removed since; does nothing where dataDirReady is not set.
void RemakeDataFolders();

}  // namespace morva
