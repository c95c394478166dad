// Every capacity of the program, one line each with what the user sees when it is full.
//
// A limit is part of the design and is never raised silently. A count that a user, a file or a
// room can drive to its bound is called kMax... and stands here; a text is called k...Units and
// counts its terminator. The most or least of a measure (a zoom, an angle, a width) bounds no
// table and stays with its file under a name of its own.
#pragma once

namespace morva {

// Programs and their blocks.
inline constexpr int kMaxTabs = 8;               // "The workspace supports up to 8 open programs in this build."
inline constexpr int kMaxRecentFiles = 8;        // programs in the menu at OPEN; the oldest goes
inline constexpr int kMaxFeatures = 128;         // hint "Feature browser limit: 128 sections. ..."; an insert is refused with "This program already has 128 editable blocks. ..."
inline constexpr int kMaxFeatureLines = 128;     // one row for each feature
inline constexpr int kMaxItems = 96;             // objects in a sketch or in one block's settings; more makes a damaged block, and a paste that does not fit pastes nothing and says so
inline constexpr int kMaxIdList = 128;           // hidden or locked ids of a tab; toggling one more does nothing
inline constexpr int kMaxDisabledEntries = 10000;      // hint "Disabled code storage is full. No code was changed."; more in a file makes a damaged .features
inline constexpr int kMaxDisabledUnits = 8000000;      // hint "This code is longer than 8,000,000 characters and cannot be excluded."
inline constexpr int kMaxFeaturesFileBytes = 64000000; // the save fails: "Could not save the file."
inline constexpr int kMaxReadBytes = 33554432;         // "Could not open the selected file."
inline constexpr int kMaxKeptCompanions = 1000;  // names tried for a companion that gives way; with all taken the save fails
inline constexpr int kMaxKeptCopies = 9;           // copies of one program in "Recovery" that its opening names; a further one is named by its time and not told
inline constexpr int kMaxProgramHomes = 1000;    // folders that an autosave tries for a new program: "Autosave failed: project directory unavailable."

// The CAD workspace.
inline constexpr int kMaxSketchUndo = 24;        // the oldest step can no longer be undone
inline constexpr int kMaxRecentOperations = 40;  // lines of "Recent operations"; the oldest goes
inline constexpr int kMaxDrawings = 8;           // drawings of one program: "Eight drawings per program. ..."; more makes a damaged .cadmv
inline constexpr int kMaxPlates = 8;             // plates of one program: "Eight plate drawings per project. ..."; more makes a damaged .platemv
inline constexpr int kMaxPlateFeatures = 400;    // of one plate, a full grid of 20 by 20; its counts reach no further
inline constexpr int kMaxPlateLines = 20;        // columns, and rows, of a plate's grid; a higher number counts as this
inline constexpr int kMaxPlateCircle = 120;      // features on a plate's circle; a higher number counts as this
inline constexpr int kMaxPlateLabels = 900;      // labels of a plate that can be moved; further ones stay where they are
inline constexpr int kMaxPlateSectionLabels = 15; // kept of a plate's record; more in a record are not read
inline constexpr int kMaxFormerHashes = 16;      // updates of a block whose undo is known; behind the undo of more of them a second block is made
inline constexpr int kMaxShapes = 24;            // box "The reusable shape library is full."
inline constexpr int kMaxShapeObjects = 64;      // objects of a saved shape; the drawing's further ones are left out
inline constexpr int kMaxCuts = 194;             // places where others cut a line, circle or slot; a trim does not look at further ones
inline constexpr int kMaxPreviewSegments = 200;  // lines of a trim's preview; further ones are not shown. A circle has 96
inline constexpr int kMaxPolygonSides = 64;      // "Use 3-64 sides, ..."
inline constexpr int kMaxRevolveCopies = 95;     // a revolve with more is refused
inline constexpr int kMaxQuickQuantity = 120;    // of the quick circular pattern; a higher number counts as this
inline constexpr int kMaxQuickLines = 20;        // columns, and rows, of the quick grid; a higher number counts as this

// The code tools.
inline constexpr int kMaxCompareLines = 32768;     // summary "   | LIMIT: first 32768 lines only"
inline constexpr int kMaxCompareRows = 65536;      // holds every line of both sides
inline constexpr int kMaxCompareCells = 4000000;   // summary "   | large-file alignment (64-line lookahead)"
inline constexpr int kMaxLineCells = 65536;        // to find what changed inside a line, 255 characters against as many; a longer stretch is marked whole
inline constexpr int kMaxRules = 24;               // "Enter nonempty Find text. Up to 24 rules can be queued."
inline constexpr int kMaxRuleOutput = 2000000;     // "Replacement exceeds the size limit. No code changed."
inline constexpr int kMaxChangedUnits = 33554432;  // what DO ALL may write, as much as can be opened again: "Replacement exceeds the size limit. No code changed."
inline constexpr int kMaxFollowedPlaces = 8;       // places that a change of the whole program keeps; the caret would jump for further ones. Four are asked for
inline constexpr int kMaxPrompts = 10000;          // occurrences that one Change All asks about; it ends with its summary
inline constexpr int kMaxCompletions = 128;        // rows of the completion list; further codes come up as more is typed
inline constexpr int kMaxColouredUnits = 250000;   // a longer program bears no colours
inline constexpr int kMaxColouredLine = 8190;      // units of a code line that bear colours
inline constexpr int kMaxWordsLine = 2046;         // units of a words line that bear colours
inline constexpr int kMaxEarlierWordsUnits = 16777216;  // kept of programs as the words view showed them before a change from elsewhere; an Undo further back brings G1 back as G01
inline constexpr int kMaxFindMarks = 4096;         // hits of Find that are marked at once; further ones are not marked
inline constexpr int kMaxMarkedLine = kMaxColouredLine;  // units of a line in which hits are marked
inline constexpr int kMaxLineRuns = kMaxColouredLine;  // coloured stretches of a line, each of a unit at least

// The guided skim.
inline constexpr int kMaxSkimPasses = 100;       // "Limit the plan to 100 depth passes."
inline constexpr int kMaxSkimRasterRows = 1000;  // rows of a pass: "Limit the plan to 100 depth passes, 1000 raster rows, ..."
inline constexpr int kMaxSkimRows = 20000;       // rows of all passes together; as above
inline constexpr int kMaxSkimSegments = 95;      // of a drawn centerline: "Limit the custom path to 95 line segments."
inline constexpr int kMaxSpiralPoints = 30000;   // motion points of a spiral: "Spiral exceeds 30000 motion points. ..."

// The toolpath.
inline constexpr int kMaxMotionPoints = 32768;   // bottom read-out "path shown to line ..."
inline constexpr int kMaxPathOwners = 3;         // paths that the view can show, 2.6 MB each with what stands around it, the machine's 23 MB; an owner without a row does not compile
inline constexpr int kExampleUnits = 8192;       // program text of an example; cut, which no example reaches
inline constexpr int kMaxMeshSegments = 4704;    // lines of the cut surface, 98 of 48 pieces; all fit
inline constexpr int kMaxReadOutLines = 16;      // lines that a read-out breaks into; the rest is not shown
inline constexpr int kMaxGridLines = 4096;       // grid lines in one direction; further ones are not drawn

// The motion of the machine.
inline constexpr int kMaxControlPoints = 262144;  // bottom read-out "machine path shown to line ..."
inline constexpr int kMaxOperations = 200;       // stretches of a program with one tool; further ones count in the last
inline constexpr int kMaxHeldMoves = 16;         // moves along Z alone between two moves in the plane; behind more the corner is rounded off
inline constexpr int kMaxBlockCodes = 12;        // G codes of a block; further ones are a finding
inline constexpr int kMaxBlockMs = 6;            // M codes of a block; as above
inline constexpr int kMaxCalls = 64;             // calls within calls; one more stops the run with a finding
inline constexpr int kMaxProgramsSought = 200;   // numbers that are looked for beside a program's text; further ones count as missing
inline constexpr int kMaxGroundPoints = 4096;     // of a general pocket's outline; finding NotFollowed
inline constexpr int kMaxGroundRows = 1001;       // of strokes at a depth of it; finding NotFollowed
inline constexpr int kMaxGroundStrokes = 4000;    // at a depth of it; finding NotFollowed
inline constexpr int kMaxLoops = 3;              // WHILE within WHILE, as the control has it; a higher number is a finding
inline constexpr int kMaxPrintedUnits = 4000;    // that DPRNT prints; further lines are left out
inline constexpr int kMaxFindings = 400;         // of the machine check; further ones are counted
inline constexpr int kMaxFindingsOfKind = 40;    // of one kind; as above

// The libraries of tools and macros.
inline constexpr int kMaxTools = 64;             // box "The tool library is full (64 tools)."; more in the settings file are not read
inline constexpr int kMaxFlutes = 64;            // box "Enter a flute count from 1 to 64."
inline constexpr int kMaxMacros = 24;            // box "The custom macro library is full."; more in the settings file are not read
inline constexpr int kMaxMacroCode = 24000;      // units of a saved macro: "This program is too large for the custom macro library in this build."
inline constexpr int kMaxMacroCopies = 100;      // numbers that a copy's name is tried with; the last one is kept even if it is taken

// What the builders of short jobs cut.
inline constexpr int kMaxWizardHoles = 400;      // a row with more is refused with words
inline constexpr int kMaxFacePasses = 99;        // as above
inline constexpr int kMaxCircularItems = 120;    // a higher quantity counts as this
inline constexpr int kMaxGridItems = 400;        // box "This pattern exceeds the audited limit of 400 generated items. ..."
inline constexpr int kMaxNumberedItems = 60;     // items of a pattern whose numbers are shown in its picture

// Pictures of the builders.
inline constexpr int kMaxPictureMarks = 32768;   // lines, arcs and fills of a picture: 400 features of 64 objects with their crosses and fills; "Picture full. Not everything is shown."
inline constexpr int kMaxPicturePoints = 131072; // corners of its paths; as above
inline constexpr int kMaxPictureArcs = 32768;    // circles, ellipses and single arcs; as above
inline constexpr int kMaxPictureLabels = 1400;   // 900 of dimensions, 400 of features and the rest; as above
inline constexpr int kMaxBuilderText = 131072;   // units of a builder's code unless it asks for more: "The code is larger than 131072 characters. Nothing was inserted."
inline constexpr int kMaxArcChords = 4096;       // of one arc, enough up to a radius of half a million pixels; a larger one shows corners

// Transfers.
inline constexpr int kMaxReceivedBytes = 2097152; // "TRANSFER ERROR: serial port failed, receive was aborted, or the 2 MB receive limit was reached. ..."
inline constexpr int kMaxComPorts = 64;           // ports above are not found by the scan

// What rooms register when they are joined. One more than a table holds ends the start: box
// "MORVA cannot start. Its table of ... is full: it holds ....", exit code 3.
inline constexpr int kMaxCommandHandlers = 320;
inline constexpr int kMaxTimerHandlers = 16;
inline constexpr int kMaxMessageHandlers = 16;
inline constexpr int kMaxPanels = 24;
inline constexpr int kMaxHandlers = 96;           // of single controls and views
inline constexpr int kMaxCommands = 640;          // rows of what commands say about themselves
inline constexpr int kMaxShapeLists = 8;          // lists that hold shapes
inline constexpr int kMaxToolLists = 8;           // lists that hold tools
inline constexpr int kMaxSurfaces = 4;            // workspaces beside the code surface
inline constexpr int kMaxModes = 24;              // of the code surface, pages of surfaces among them
inline constexpr int kMaxForms = 32;              // forms of named fields
inline constexpr int kMaxFormRows = 1024;         // rows of all forms together
inline constexpr int kMaxSheets = 8;              // forms that scroll
inline constexpr int kMaxBuilders = 16;

// What a table of the program itself holds; a test keeps room in each.
inline constexpr int kMaxRowKeys = 6;             // keys side by side in a row of a form
inline constexpr int kMaxFormNumbers = 32;        // numbers that a form reads at once; a record holds 16 of them
inline constexpr int kMaxFormChoices = 8;         // lists that a form reads at once; a record holds 3 of them
inline constexpr int kMaxFormWords = 8;           // texts that a form reads as typed
inline constexpr int kMaxPlacements = 96;         // what one layout places; one more ends the program with words
inline constexpr int kMaxTabStops = 160;          // controls of a surface that Tab reaches; one more ends the program with words

// Texts.
inline constexpr int kPathUnits = 520;        // cut
inline constexpr int kTitleUnits = 96;        // cut
inline constexpr int kFeatureNameUnits = 96;  // cut
inline constexpr int kGivenNameUnits = 80;    // of a block, given by the user; a longer one is refused with words
inline constexpr int kStatusUnits = 1024;     // cut
inline constexpr int kWindowTitleUnits = 700; // cut
inline constexpr int kCaptionFileUnits = 301; // file name inside the window title; cut
inline constexpr int kTabLabelUnits = 128;    // cut
inline constexpr int kFieldUnits = 80;        // a numeric field's text; cut
inline constexpr int kMaxNameBytes = 255;      // a longer name of a companion is shortened
inline constexpr int kSavePathUnits = 500;    // a longer path fails the save: "Could not save the file."
inline constexpr int kCompanionPathUnits = 600; // path with its suffix
inline constexpr int kPortNameUnits = 32;     // cut
inline constexpr int kShapeNameUnits = 72;    // cut
inline constexpr int kToolNameUnits = 64;     // cut
inline constexpr int kToolTypeUnits = 32;     // cut
inline constexpr int kToolNotesUnits = 128;   // cut
inline constexpr int kToolBlockUnits = 1200;  // text of a tool's block; cut, which no tool reaches
inline constexpr int kWizardTextUnits = 65536;   // code of a wizard's job; no job that passes its check reaches it
inline constexpr int kPatternFrameUnits = 16384; // code of a pattern or a saved shape beside its items
inline constexpr int kMacroNameUnits = 96;    // cut
inline constexpr int kMacroTextUnits = 8192;  // text of a macro template; a longer one is refused with words
inline constexpr int kMacroKeyUnits = 48063;  // a macro's text in the settings file, with its escapes; a longer one is cut
inline constexpr int kPictureLabelUnits = 32; // cut, with "…" at the end
inline constexpr int kFindUnits = 256;        // a find or replacement text; typing stops
inline constexpr int kMotionLineUnits = 220;  // a line of generated motion; cut

// The splitter stops.
inline constexpr int kLeftPanelLeast = 190;
inline constexpr int kLeftPanelMost = 430;

}  // namespace morva
