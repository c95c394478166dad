// Every capacity of the program, one line each with what the user sees when it is full.
//
// A limit is part of the design and is never raised silently.
#pragma once

namespace morva {

inline constexpr int kMaxTabs = 8;               // "The workspace supports up to 8 open programs in this build."
inline constexpr int kMaxFeatures = 128;         // hint "Feature browser limit: 128 sections. ..."; an insert is refused with "This program already has 128 editable blocks. ..."
inline constexpr int kMaxItems = 96;             // objects in a sketch or in one block's settings; more makes a damaged block
inline constexpr int kMaxSketchUndo = 24;        // the oldest step can no longer be undone
inline constexpr int kMaxRecentOperations = 40;  // lines of "Recent operations"; the oldest goes
inline constexpr int kMaxShapes = 24;            // box "The reusable shape library is full."
inline constexpr int kMaxShapeObjects = 64;      // objects of a saved shape; the drawing's further ones are left out
inline constexpr int kShapeNameUnits = 72;       // with the terminator; cut
inline constexpr int kMaxShapeLists = 8;         // lists that hold shapes; one more stops the start
inline constexpr int kMaxDrawings = 8;           // drawings of one program: "Eight drawings per program. ..."; more makes a damaged .cadmv
inline constexpr int kMaxPlates = 8;             // plates of one program; more makes a damaged .platemv
inline constexpr int kMaxMotionPoints = 32768;   // bottom read-out "path shown to line ..."
inline constexpr int kMaxFeatureLines = 128;     // one row for each feature
inline constexpr int kMaxIdList = 128;           // hidden or locked ids of a tab; toggling one more does nothing
inline constexpr int kMaxCompareLines = 32768;     // summary "   | LIMIT: first 32768 lines only"
inline constexpr int kMaxCompareRows = 65536;      // holds every line of both sides
inline constexpr int kMaxCompareCells = 4000000;   // summary "   | large-file alignment (64-line lookahead)"
inline constexpr int kMaxRules = 24;               // "Enter nonempty Find text. Up to 24 rules can be queued."
inline constexpr int kFindUnits = 256;             // a find or replacement text with its terminator; typing stops
inline constexpr int kMaxRuleOutput = 2000000;     // "Replacement exceeds the size limit. No code changed."
inline constexpr int kMaxChangedUnits = 33554432;  // what DO ALL may write, as much as can be opened again: "Replacement exceeds the size limit. No code changed."
inline constexpr int kMaxReceivedBytes = 2097152;      // "TRANSFER ERROR: serial port failed, receive was aborted, or the 2 MB receive limit was reached. ..."
inline constexpr int kMaxReadBytes = 33554432;         // "Could not open the selected file."
inline constexpr int kMaxFeaturesFileBytes = 64000000; // the save fails: "Could not save the file."
inline constexpr int kMaxDisabledEntries = 10000;      // hint "Disabled code storage is full. No code was changed."; more in a file makes a damaged .features
inline constexpr int kMaxDisabledUnits = 8000000;      // a longer block is not excluded, no message

inline constexpr int kPathUnits = 520;        // with the terminator; cut
inline constexpr int kTitleUnits = 96;        // cut
inline constexpr int kFeatureNameUnits = 96;  // cut
inline constexpr int kStatusUnits = 1024;     // cut
inline constexpr int kWindowTitleUnits = 700; // cut
inline constexpr int kCaptionFileUnits = 301; // file name inside the window title, with the terminator; cut
inline constexpr int kTabLabelUnits = 128;    // cut
inline constexpr int kFieldUnits = 80;        // a numeric field's text; cut
inline constexpr int kSavePathUnits = 500;    // a longer path fails the save: "Could not save the file."
inline constexpr int kCompanionPathUnits = 600; // path with its suffix
inline constexpr int kMaxComPorts = 64;       // ports above are not found by the scan
inline constexpr int kPortNameUnits = 32;     // cut
inline constexpr int kMaxCommandHandlers = 256; // one more stops the start: "MORVA cannot start. ..."
inline constexpr int kMaxTimerHandlers = 16;    // as above
inline constexpr int kMaxMessageHandlers = 16;  // as above
inline constexpr int kMaxSurfaces = 4;          // as above: workspaces beside the code surface
inline constexpr int kMaxPlacements = 96;       // as above: what one layout places
inline constexpr int kMaxCommands = 640;        // as above: rows of what commands say about themselves
inline constexpr int kMaxForms = 32;            // as above: forms of named fields
inline constexpr int kMaxFormRows = 1024;       // as above: rows of all forms together
inline constexpr int kMaxRowKeys = 6;           // keys side by side in a row of a form
inline constexpr int kMaxFormNumbers = 16;      // numbers of one form, as many as a record holds
inline constexpr int kMaxBuilders = 16;         // a programming error
inline constexpr int kMaxBuilderText = 131072;  // units of a builder's code unless it asks for more; what is beyond is left out
inline constexpr int kMaxFormWords = 8;         // texts that a form reads as typed
inline constexpr int kMaxTabStops = 160;        // as above: controls of a surface that Tab reaches
inline constexpr int kMaxSheets = 8;            // as above: forms that scroll
inline constexpr int kMaxPictureMarks = 32768;   // lines, arcs and fills of a picture: 400 features of 64 objects with their crosses and fills; "Picture full. Not everything is shown."
inline constexpr int kMaxPicturePoints = 131072; // corners of its paths; as above
inline constexpr int kMaxPictureArcs = 32768;    // circles, ellipses and single arcs; as above
inline constexpr int kMaxPictureLabels = 1400;   // 900 of dimensions, 400 of features and the rest; as above
inline constexpr int kPictureLabelUnits = 32;    // with the terminator; cut, with "…" at the end
inline constexpr int kLeftPanelLeast = 190;   // the splitter stops
inline constexpr int kLeftPanelMost = 430;    // the splitter stops

}  // namespace morva
