// The tool library: up to 64 cutters, described once and used by builders, pictures and the
// simulator.
//
// It lives in MORVA.ini, sections [ToolLibrary] and [Tool0] to [Tool63], with a binary mirror
// under "Tool Library" of the data directory that is written and never read. Lengths are in
// inches, rates in inches a minute, whatever unit the user works in; forms convert. Two tools may
// bear the same number: then the first one is meant.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "app/limits.h"

namespace morva {

struct CodeWriter;

// The numbers stand in the settings file.
enum class Coolant : std::int32_t { None = 0, Flood = 1, Shower = 2 };

struct ToolRecord {
  std::int32_t number = 0;  // of the T word, 1 to 999
  char16_t name[kToolNameUnits] = {};
  char16_t type[kToolTypeUnits] = {};  // one of ToolTypes, or what a file says
  double diameter = 0;
  std::int32_t flutes = 0;  // 1 to 64
  double gaugeLength = 0;   // from the spindle's face to the tip
  double stickout = 0;      // from the holder's nose to the tip, at most the gauge length
  std::int32_t hOffset = 0;
  std::int32_t dOffset = 0;
  std::int32_t maxRpm = 0;
  double feed = 0;
  double plunge = 0;
  std::int32_t coolant = 0;  // a Coolant; a file may hold another number
  char16_t notes[kToolNotesUnits] = {};
  bool operator==(const ToolRecord&) const = default;
};

struct ToolLibrary {
  std::int32_t count = 0;  // 0 to 64, in the order in which tools were added
  ToolRecord tools[kMaxTools];
};
extern ToolLibrary toolLibrary;

// From the settings file. A count that is no count is 0, one above 64 is 64; what a tool lacks
// counts as its default. Values are not checked.
void LoadToolLibrary();
// Before a change: takes over what another program, or the user by hand, has written into the file
// since it was read or written here, and says so. False: nothing of the kind, and nothing changed.
// Indices may have moved behind it; FindSameTool finds a record again.
bool FollowToolFile();
// Rewrites the keys, then the mirror where the data directory is ready. Sections of tools that
// were deleted stay. `told` hears, now or when it is written, whether the settings file holds the
// table. False: it is known already that it does not.
bool SaveToolLibrary(void (*told)(bool saved) = nullptr);
// A list that shows tools: filled anew after each change of the library and of the unit. A full
// table and null stop the program with words.
void AddToolList(void (*fill)());
void RefreshToolLists();
void RegisterToolLibrary();
void ResetToolLibrary();

// The record at the end. Its index, -1 when 64 are held.
int AppendTool(const ToolRecord& tool);
// In place of an existing one. False: there is no such record.
bool ReplaceTool(int index, const ToolRecord& tool);
// Later records move down. False: there is no such record.
bool RemoveTool(int index);
// The first tool that the settings file would hold like this one, -1 for none.
int FindSameTool(const ToolRecord& tool);
// The first tool with this number, -1 for none.
int FindTool(std::int32_t number);

// The bytes of the mirror: 528 for each tool, little-endian; reserved bytes and what stands behind
// a text are zero.
inline constexpr int kToolMirrorBytes = 528;
void WriteToolMirror(const ToolLibrary& library, std::string& bytes);

// The eight names of types, in the order of the form's list.
std::span<const char16_t* const> ToolTypes();
// The row of the first name that the text contains, case of A to Z ignored; 0 for none.
int ToolTypeRow(std::u16string_view type);
// What the cutter's end looks like, by the text of its type.
enum class ToolShape { Flat, Drill, Ball, Chamfer };
ToolShape ShapeOfTool(std::u16string_view type);
// How far above its tip a cutter of this radius begins, at a distance from the axis up to it.
double ToolTipHeight(ToolShape shape, double radius, double distance);

// "T01  1/2 END MILL  •  End Mill  Ø0.500 in": the row of lists that offer tools.
std::u16string ToolRowText(const ToolRecord& tool, bool metric);
// "T01  1/2 END MILL", where there is no room for more.
std::u16string ToolNameText(const ToolRecord& tool);
// The tool change as program text: an empty line, then seven or six lines.
void WriteToolBlock(const ToolRecord& tool, bool metric, CodeWriter& out);

}  // namespace morva
