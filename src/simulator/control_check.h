// What the check looks for while the program runs, beside what the control itself refuses.
//
// A false stop costs more trust than a missed hint: what many working programs do is silent.
#pragma once

#include "simulator/control_block.h"
#include "simulator/control_run.h"

namespace morva {

// A finding that stays true from line to line: told once, until spindle or tool change.
void ReportOnce(ControlRun& run, Finding kind, double number = 0, char letter = 0);

// A length of the block was read by its letter.
void NoteLength(ControlRun& run, const ControlBlock& block, char letter);
// The tool is about to cut.
void NoteCut(ControlRun& run);
// The tool is about to go by rapid to a program place.
void NoteRapid(ControlRun& run, const Vec3& target);
// D names a diameter of zero: told once for each D.
void NoteNoDiameter(ControlRun& run, std::int32_t number);
// The text is about to be read: the run goes on to the "%" that opens it, where one closes it too.
void PassHead(ControlRun& run);
// The words G43 and H of a block were taken.
void NoteToolLength(ControlRun& run);
// The tool was changed, the spindle started, or stopped in its place by M19.
void NoteChange(ControlRun& run);
void NoteSpindle(ControlRun& run);
void NoteSpindlePlaced(ControlRun& run);
// A code that is not followed; some of them tell that the tool is a probe.
void NoteUnfollowed(ControlRun& run, int code);
// A block is about to move in the modes in force.
void NoteMove(ControlRun& run, const ControlBlock& block);
// A block that moves names axes which are not followed: told once for each letter.
void NoteFurtherAxes(ControlRun& run, const ControlBlock& block);
// A stretch of motion follows: how far down cuts left the tool, and where they opened the ground.
void NoteWay(ControlRun& run, const ControlSegment& segment);
// Whether cuts may have opened the ground about a shown place wider than the present tool.
bool IsOpened(const ControlRun& run, const Vec3& shown);
// The machine goes home, to a shown place.
void NoteWayHome(ControlRun& run, const Vec3& home);
// The tool goes to a shown place: whether the machine reaches it.
void NoteTravel(ControlRun& run, const Vec3& shown);
// The run is over: what only the whole program tells.
void NoteEnd(ControlRun& run);

}  // namespace morva
