// The tables of the code index, and the way from a code to its row.
#include <cstdint>

#include "library/code_index.h"
#include "text/codetext.h"

namespace morva {

constexpr CodeRow codeTable[kCodeRows] = {
    {u"G00", u"Rapid Motion Positioning"},
    {u"G01", u"Linear Interpolation Motion"},
    {u"G02", u"Circular Interpolation Motion CW"},
    {u"G03", u"Circular Interpolation Motion CCW"},
    {u"G04", u"Dwell"},
    {u"G09", u"Exact Stop"},
    {u"G10", u"Set Offsets"},
    {u"G12", u"Circular Pocket Milling CW"},
    {u"G13", u"Circular Pocket Milling CCW"},
    {u"G17", u"XY Plane Selection"},
    {u"G18", u"XZ Plane Selection"},
    {u"G19", u"YZ Plane Selection"},
    {u"G20", u"Select Inches"},
    {u"G21", u"Select Metric"},
    {u"G28", u"Return To Machine Zero Point"},
    {u"G29", u"Return From Reference Point"},
    {u"G31", u"Feed Until Skip"},
    {u"G35", u"Automatic Tool Diameter Measurement"},
    {u"G36", u"Automatic Work Offset Measurement"},
    {u"G37", u"Automatic Tool Offset Measurement"},
    {u"G40", u"Cutter Compensation Cancel"},
    {u"G41", u"2D Cutter Compensation Left"},
    {u"G42", u"2D Cutter Compensation Right"},
    {u"G43", u"Tool Length Compensation +"},
    {u"G44", u"Tool Length Compensation -"},
    {u"G47", u"Text Engraving"},
    {u"G49", u"Tool Length Compensation Cancel"},
    {u"G50", u"Cancel Scaling"},
    {u"G51", u"Scaling"},
    {u"G52", u"Set Work Coordinate System"},
    {u"G53", u"Non-Modal Machine Coordinate Selection"},
    {u"G54", u"Work Coordinate System #1"},
    {u"G55", u"Work Coordinate System #2"},
    {u"G56", u"Work Coordinate System #3"},
    {u"G57", u"Work Coordinate System #4"},
    {u"G58", u"Work Coordinate System #5"},
    {u"G59", u"Work Coordinate System #6"},
    {u"G60", u"Uni-Directional Positioning"},
    {u"G61", u"Exact Stop Mode"},
    {u"G64", u"Cancel Exact Stop Mode"},
    {u"G65", u"Macro Subprogram Call (option)"},
    {u"G68", u"Rotation"},
    {u"G69", u"Cancel Rotation"},
    {u"G70", u"Bolt Hole Circle"},
    {u"G71", u"Bolt Hole Arc"},
    {u"G72", u"Bolt Holes Along an Angle"},
    {u"G73", u"High-Speed Peck Drilling Canned Cycle"},
    {u"G74", u"Reverse Tap Canned Cycle"},
    {u"G76", u"Fine Boring Canned Cycle"},
    {u"G77", u"Back Bore Canned Cycle"},
    {u"G80", u"Canned Cycle Cancel"},
    {u"G81", u"Drill Canned Cycle"},
    {u"G82", u"Spot Drill Canned Cycle"},
    {u"G83", u"Normal Peck Drilling Canned Cycle"},
    {u"G84", u"Tapping Canned Cycle"},
    {u"G85", u"Boring Canned Cycle"},
    {u"G86", u"Bore and Stop Canned Cycle"},
    {u"G89", u"Bore In, Dwell, Bore Out Canned Cycle"},
    {u"G90", u"Absolute Position Command"},
    {u"G91", u"Incremental Position Command"},
    {u"G92", u"Set Work Coordinate Systems Shift Value"},
    {u"G93", u"Inverse Time Feed Mode"},
    {u"G94", u"Feed Per Minute Mode"},
    {u"G95", u"Feed Per Revolution"},
    {u"G98", u"Canned Cycle Initial Point Return"},
    {u"G99", u"Canned Cycle R Plane Return"},
    {u"G100", u"Cancel Mirror Image"},
    {u"G101", u"Enable Mirror Image"},
    {u"G103", u"Limit Block Buffering"},
    {u"G107", u"Cylindrical Mapping"},
    {u"G110", u"Coordinate System #7"},
    {u"G111", u"Coordinate System #8"},
    {u"G112", u"Coordinate System #9"},
    {u"G113", u"Coordinate System #10"},
    {u"G114", u"Coordinate System #11"},
    {u"G115", u"Coordinate System #12"},
    {u"G116", u"Coordinate System #13"},
    {u"G117", u"Coordinate System #14"},
    {u"G118", u"Coordinate System #15"},
    {u"G119", u"Coordinate System #16"},
    {u"G120", u"Coordinate System #17"},
    {u"G121", u"Coordinate System #18"},
    {u"G122", u"Coordinate System #19"},
    {u"G123", u"Coordinate System #20"},
    {u"G124", u"Coordinate System #21"},
    {u"G125", u"Coordinate System #22"},
    {u"G126", u"Coordinate System #23"},
    {u"G127", u"Coordinate System #24"},
    {u"G128", u"Coordinate System #25"},
    {u"G129", u"Coordinate System #26"},
    {u"G136", u"Automatic Work Offset Center Measurement"},
    {u"G141", u"3D+ Cutter Compensation"},
    {u"G143", u"5-Axis Tool Length Compensation +"},
    {u"G150", u"General Purpose Pocket Milling"},
    {u"G154", u"Select Work Coordinates P1-P99"},
    {u"G156", u"Broaching Canned Cycle"},
    {u"G167", u"Modify Setting"},
    {u"G174", u"CCW Non-Vertical Rigid Tap"},
    {u"G184", u"CW Non-Vertical Rigid Tap"},
    {u"G187", u"Set Smoothness Level"},
    {u"G234", u"Tool Center Point Control (TCPC)"},
    {u"G253", u"Orient Spindle Normal To Feature Coordinate System"},
    {u"G254", u"Dynamic Work Offset (DWO)"},
    {u"G255", u"Cancel Dynamic Work Offset (DWO)"},
    {u"G266", u"Visible Axes Linear Rapid % Motion"},
    {u"G268", u"Enable Feature Coordinate System"},
    {u"G269", u"Disable Feature Coordinate System"},
    {u"M00", u"Stop Program"},
    {u"M01", u"Optional Program Stop"},
    {u"M02", u"Program End"},
    {u"M03", u"Spindle Forward"},
    {u"M04", u"Spindle Reverse"},
    {u"M05", u"Spindle Stop"},
    {u"M06", u"Tool Change"},
    {u"M07", u"Shower Coolant On"},
    {u"M08", u"Coolant On"},
    {u"M09", u"Coolant Off"},
    {u"M10", u"Engage 4th Axis Brake"},
    {u"M11", u"Release 4th Axis Brake"},
    {u"M12", u"Engage 5th Axis Brake"},
    {u"M13", u"Release 5th Axis Brake"},
    {u"M16", u"Tool Change"},
    {u"M19", u"Orient Spindle"},
    {u"M21", u"Optional User M Function with M-Fin"},
    {u"M22", u"Optional User M Function with M-Fin"},
    {u"M23", u"Optional User M Function with M-Fin"},
    {u"M24", u"Optional User M Function with M-Fin"},
    {u"M25", u"Optional User M Function with M-Fin"},
    {u"M29", u"Set Output Relay with M-Fin"},
    {u"M30", u"Program End and Reset"},
    {u"M31", u"Chip Conveyor Forward"},
    {u"M33", u"Chip Conveyor Stop"},
    {u"M34", u"Coolant Increment"},
    {u"M35", u"Coolant Decrement"},
    {u"M36", u"Pallet Part Ready"},
    {u"M39", u"Rotate Tool Turret"},
    {u"M41", u"Low Gear Override"},
    {u"M42", u"High Gear Override"},
    {u"M46", u"Qn Pmm Jump to Line"},
    {u"M48", u"Validate Program for Loaded Pallet"},
    {u"M50", u"Pallet Change Sequence"},
    {u"M51", u"Set Optional User M-code"},
    {u"M52", u"Set Optional User M-code"},
    {u"M53", u"Set Optional User M-code"},
    {u"M54", u"Set Optional User M-code"},
    {u"M55", u"Set Optional User M-code"},
    {u"M59", u"Set Output Relay"},
    {u"M61", u"Clear Optional User M-code"},
    {u"M62", u"Clear Optional User M-code"},
    {u"M63", u"Clear Optional User M-code"},
    {u"M64", u"Clear Optional User M-code"},
    {u"M65", u"Clear Optional User M-code"},
    {u"M69", u"Clear Output Relay"},
    {u"M70", u"Workholding Clamp"},
    {u"M71", u"Workholding Unclamp"},
    {u"M73", u"Tool Air Blast On"},
    {u"M74", u"Tool Air Blast Off"},
    {u"M75", u"Set G35/G136 Reference Point"},
    {u"M78", u"Alarm if Skip Signal Found"},
    {u"M79", u"Alarm if Skip Signal Not Found"},
    {u"M80", u"Auto Door Open"},
    {u"M81", u"Auto Door Close"},
    {u"M82", u"Tool Unclamp"},
    {u"M83", u"Auto Air Gun On"},
    {u"M84", u"Auto Air Gun Off"},
    {u"M86", u"Tool Clamp"},
    {u"M88", u"Through-Spindle Coolant On"},
    {u"M89", u"Through-Spindle Coolant Off"},
    {u"M90", u"Fixture Clamp Input On"},
    {u"M91", u"Fixture Clamp Input Off"},
    {u"M95", u"Sleep Mode"},
    {u"M96", u"Jump If No Input"},
    {u"M97", u"Local Subprogram Call"},
    {u"M98", u"Subprogram Call"},
    {u"M99", u"Subprogram Return or Loop"},
    {u"M104", u"Probe Arm Extend"},
    {u"M105", u"Probe Arm Retract"},
    {u"M109", u"Interactive User Input"},
    {u"M116", u"Vise Air Chips Blast On"},
    {u"M117", u"Vise Air Chips Blast Off"},
    {u"M130", u"Display Media"},
    {u"M131", u"Cancel Display Media"},
    {u"M138", u"Spindle Speed Variation On"},
    {u"M139", u"Spindle Speed Variation Off"},
    {u"M158", u"Mist Condenser On"},
    {u"M159", u"Mist Condenser Off"},
    {u"M160", u"Cancel Active PulseJet"},
    {u"M161", u"PulseJet Continuous Mode"},
    {u"M162", u"PulseJet Single Event Mode"},
    {u"M163", u"PulseJet Modal Mode"},
    {u"M180", u"Auto Window Open"},
    {u"M181", u"Auto Window Close"},
    {u"M199", u"Pallet / Part Load or Program End"},
    {u"M300", u"APL/Robot Custom Sequence"},
    {u"N", u"Sequence / block number prefix (example N10)"},
    {u"O", u"Program number prefix (example O1000)"},
};

// Words of the macro option. Some rows stand for a group and are inserted whole.
constexpr CodeRow macroWordTable[kMacroWordRows] = {
    {u"#1-#33", u"Local macro variables (arguments / temporary values)"},
    {u"#100-#199", u"Common macro variables; verify persistence behavior on control"},
    {u"#500-#699", u"Common persistent variables on many Haas controls; verify machine"},
    {u"#3000", u"Programmable alarm variable (macro option / control dependent)"},
    {u"#3006", u"Programmable stop/message variable (control dependent)"},
    {u"G65", u"Macro subprogram call with arguments (option / control dependent)"},
    {u"IF", u"Conditional macro expression"},
    {u"THEN", u"Conditional action keyword"},
    {u"GOTO", u"Conditional/unconditional branch to N sequence number"},
    {u"WHILE", u"Begin macro loop"},
    {u"DO", u"Loop level marker used with WHILE"},
    {u"END", u"End WHILE/DO macro loop"},
    {u"EQ NE GT LT GE LE", u"Macro comparison operators"},
    {u"SIN COS TAN ATAN", u"Macro math functions; verify control support"},
    {u"FIX FUP ROUND", u"Macro numeric functions; verify control support"},
};

namespace {

inline constexpr int kRowN = kGRows + kMRows;
inline constexpr int kRowO = kRowN + 1;
inline constexpr int kLastNumber = 300;  // M300 is the highest

constexpr int NumberOf(std::u16string_view code) {
  int number = 0;
  for (std::size_t i = 1; i < code.size(); ++i) {
    if (code[i] < u'0' || code[i] > u'9') return -1;
    number = number * 10 + (code[i] - u'0');
  }
  return number;
}

// Row + 1 by number, 0 for none: one table for G and one for M.
struct RowsByNumber {
  std::uint8_t g[kLastNumber + 1] = {};
  std::uint8_t m[kLastNumber + 1] = {};
  constexpr RowsByNumber() {
    for (int i = 0; i < kRowN; ++i) {
      std::uint8_t* rows = i < kGRows ? g : m;
      rows[NumberOf(codeTable[i].code)] = static_cast<std::uint8_t>(i + 1);
    }
  }
};
constexpr RowsByNumber kRowsByNumber;

}  // namespace

int FindCodeRow(std::u16string_view code) {
  if (code.empty() || code.size() > 4) return -1;
  const char16_t letter = FoldUpper(code[0]);
  if (code.size() == 1) return letter == u'N' ? kRowN : letter == u'O' ? kRowO : -1;
  if (letter != u'G' && letter != u'M') return -1;
  const int number = NumberOf(code);
  if (number < 0 || number > kLastNumber) return -1;
  const int row = (letter == u'G' ? kRowsByNumber.g : kRowsByNumber.m)[number] - 1;
  // The number alone would take "G1" and "G001" for "G01".
  return row >= 0 && codeTable[row].code.size() == code.size() ? row : -1;
}

}  // namespace morva
