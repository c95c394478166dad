// The preflight in the output log: its report with its colours, and the way from a line of it to
// the program's line.
#pragma once

namespace morva {

// The report of the active program in the place of all that the log holds.
void ValidateProgram();
// Another program is shown from now on: the log says once whose report stands in it.
void MarkReport();
// Goes to the place that the line means in which the log's caret is; says so where there is none.
void FollowReportLine();
void ResetPreflightLog();

}  // namespace morva
