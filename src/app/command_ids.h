// Command ids: the number is the identity of a control in routing, hover hints and layout.
//
// One line each with its caption. Ids from 3000 up belong to things that the routing table
// does not name: read-outs, the view's own keys and the views themselves.
#pragma once

namespace morva {

inline constexpr int kIdNew = 101;             // "NEW"
inline constexpr int kIdOpen = 102;            // "OPEN"
inline constexpr int kIdSaveMenu = 103;        // "SAVE  ▼"
inline constexpr int kIdValidate = 104;        // run validation
inline constexpr int kIdRenumber = 105;        // renumber
inline constexpr int kIdSetup = 106;           // "SETUP"
inline constexpr int kIdSend = 108;            // "SEND"
inline constexpr int kIdReceive = 109;         // "RECEIVE"
inline constexpr int kIdFind = 110;            // "FIND"
inline constexpr int kIdSaveAll = 111;         // "Save All", menu item
inline constexpr int kIdCompare = 112;         // "COMPARE"
inline constexpr int kIdFindSecond = 113;      // "FIND"
inline constexpr int kIdSetupSecond = 114;     // "SETUP"
inline constexpr int kIdModeList = 200;        // left mode list
inline constexpr int kIdEditor = 300;          // code editor
inline constexpr int kIdCompletion = 303;      // completion list
inline constexpr int kIdWizardCombo = 400;     // Machining wizard combo
inline constexpr int kIdWizardInsert = 430;    // "INSERT GENERATED CODE"
inline constexpr int kIdPreflight = 440;       // "RUN PROGRAM PREFLIGHT"
inline constexpr int kIdToolList = 600;        // tool list
inline constexpr int kIdToolAdd = 601;         // "+ ADD TOOL"
inline constexpr int kIdToolEdit = 602;        // "EDIT TOOL"
inline constexpr int kIdToolDelete = 603;      // "DELETE"
inline constexpr int kIdToolInsert = 604;      // "INSERT CODE"
inline constexpr int kIdIndexSearch = 620;     // Code Index search
inline constexpr int kIdIndexList = 621;       // Code Index list
inline constexpr int kIdIndexAll = 622;        // category 0
inline constexpr int kIdIndexG = 623;          // category 1
inline constexpr int kIdIndexN = 624;          // category 3
inline constexpr int kIdIndexM = 625;          // category 2
inline constexpr int kIdIndexMacro = 626;      // category 4
inline constexpr int kIdMacroCombo = 627;      // macro combo
inline constexpr int kIdMacroInsert = 637;     // "INSERT BUILT-IN MACRO"
inline constexpr int kIdShapeCombo = 638;      // shape combo
inline constexpr int kIdShapeInsert = 653;     // "INSERT SHAPE G-CODE"
inline constexpr int kIdBuilderInch = 654;     // "INCH *" of the builders
inline constexpr int kIdBuilderMm = 655;       // "MM" of the builders
inline constexpr int kIdPath = 660;            // "PATH"
inline constexpr int kIdPlay = 661;            // "PLAY"
inline constexpr int kIdViewMenu = 663;        // "VIEW"
inline constexpr int kIdZoomOut = 664;         // "-"
inline constexpr int kIdZoomIn = 665;          // "+"
inline constexpr int kIdZoomReset = 666;       // "RESET"
inline constexpr int kIdOpenDncSetup = 670;    // "OPEN DNC SETUP WIZARD"
inline constexpr int kIdValidateSecond = 680;  // "RUN VALIDATION"
inline constexpr int kIdPromptEach = 742;      // "PROMPT EACH"
inline constexpr int kIdDoAll = 743;           // "DO ALL"
inline constexpr int kIdMacroList = 745;       // custom macro list
inline constexpr int kIdMacroFirst = 747;      // custom macro buttons, 747 to 751
inline constexpr int kIdMacroLast = 751;
inline constexpr int kIdCircularItem = 760;         // circular pattern combo
inline constexpr int kIdCircularInsert = 772;       // "INSERT CIRCULAR PATTERN"
inline constexpr int kIdCircularOrientation = 773;  // circular pattern combo
inline constexpr int kIdRectItem = 780;             // rectangular pattern combo
inline constexpr int kIdRectInsert = 793;           // "INSERT RECTANGULAR PATTERN"
inline constexpr int kIdTabFirst = 800;             // tab buttons, 800 to 807
inline constexpr int kIdTabLast = 807;
inline constexpr int kIdTabNew = 808;         // "+"
inline constexpr int kIdCompareSecond = 809;  // "COMPARE"
inline constexpr int kIdClose = 811;          // "CLOSE"
inline constexpr int kIdOldFirst = 900;       // second route to modes and clipboard, 900 to 916
inline constexpr int kIdOldLast = 916;
inline constexpr int kIdSaveAs = 917;            // "Save As…"
inline constexpr int kIdIndexText = 918;         // "TEXT"
inline constexpr int kIdCommandWords = 919;      // "COMMAND WORDS"
inline constexpr int kIdWordsEditor = 920;       // command words editor
inline constexpr int kIdSurfaceCode = 1200;      // surface button Code
inline constexpr int kIdSurfaceCad = 1201;       // surface button CAD
inline constexpr int kIdSurfacePlate = 1202;     // surface button Plate
inline constexpr int kIdShowFeatures = 1210;     // "FEATURES"
inline constexpr int kIdShowIndex = 1211;        // "CODE INDEX"
inline constexpr int kIdFeatureList = 1212;      // feature list
inline constexpr int kIdFeatureEdit = 1213;      // "Edit feature"
inline constexpr int kIdFeatureNew = 1214;       // "New feature"
inline constexpr int kIdFeatureName = 1215;      // feature name box, 80 characters at most
inline constexpr int kIdFeatureRename = 1216;    // "RENAME"
inline constexpr int kIdFeatureIsolate = 1270;   // "Simulate only this feature"
inline constexpr int kIdFeatureAll = 1271;       // "Simulate all visible features"
inline constexpr int kIdFeatureHideItem = 1272;  // "Hide feature" or "Show feature"
inline constexpr int kIdFeatureLockItem = 1273;  // "Lock settings" or "Unlock settings"
inline constexpr int kIdFeatureShowAll = 1274;   // "Show all features"
inline constexpr int kIdFeatureInclude = 1275;   // "Include code: ON"
inline constexpr int kIdFeatureDelete = 1276;    // "Delete feature"
inline constexpr int kIdInch = 1280;             // "INCH *" of the main window
inline constexpr int kIdMm = 1281;               // "MM" of the main window
inline constexpr int kIdRewind = 1290;           // "Rewind"
inline constexpr int kIdFastForward = 1291;      // "Fast forward"
inline constexpr int kIdDimensions = 1292;       // "Dimensions"
inline constexpr int kIdMeasure = 1293;          // "Measure"
inline constexpr int kIdPan = 1294;              // "Pan"
inline constexpr int kIdFit = 1295;              // "Fit"
inline constexpr int kIdBack = 1700;             // "←"
inline constexpr int kIdQuickShapeFirst = 1710;  // quick shape keys, 1710 to 1716
inline constexpr int kIdQuickShapeLast = 1716;
inline constexpr int kIdCustomShapes = 1717;      // "Custom shapes"
inline constexpr int kIdQuickInsertFirst = 1721;  // quick insert keys
inline constexpr int kIdQuickInsertLast = 1722;
inline constexpr int kIdRuleFirst = 1901;  // "ADD RULE" to "UNDO", 1901 to 1905
inline constexpr int kIdRuleLast = 1905;
inline constexpr int kIdNextMatch = 1908;        // next match
inline constexpr int kIdWizardKindFirst = 1990;  // "Skim / face" to "Tap holes", 1990 to 1994
inline constexpr int kIdWizardKindLast = 1994;
inline constexpr int kIdImport = 2929;       // "Import operations into this project"
inline constexpr int kIdHomeTool = 2930;     // Home tool combo
inline constexpr int kIdMachine = 2990;      // "Machine: Haas VF-3  ▾"
inline constexpr int kIdFeatureLock = 2991;  // "Lock feature"
inline constexpr int kIdFeatureHide = 2992;  // "Show / hide feature"

// Menu items that have no control of their own.
inline constexpr int kIdSave = 3000;          // "Save", menu items
inline constexpr int kIdClosePopup = 3001;    // "Close program", tab menu
inline constexpr int kIdComparePopup = 3002;  // "Compare programs...", tab menu
inline constexpr int kIdEditUndo = 3003;      // "Undo", edit context menu
inline constexpr int kIdEditCut = 3004;
inline constexpr int kIdEditCopy = 3005;
inline constexpr int kIdEditPaste = 3006;
inline constexpr int kIdEditSelectAll = 3007;
inline constexpr int kIdViewTop = 3010;          // "Top (XY)"
inline constexpr int kIdViewFront = 3011;        // "Front (XZ)"
inline constexpr int kIdViewRight = 3012;        // "Right (YZ)"
inline constexpr int kIdViewIsometric = 3013;    // "Isometric"
inline constexpr int kIdGridColourFirst = 3020;  // grid colours, 3020 to 3025
inline constexpr int kIdGridColourLast = 3025;
inline constexpr int kIdGridAutomatic = 3026;  // "Grid spacing: automatic"
inline constexpr int kIdGridHalf = 3027;       // "Grid spacing: half (finer)"
inline constexpr int kIdGridDouble = 3028;     // "Grid spacing: double (coarser)"
inline constexpr int kIdLayerRapids = 3030;    // layers menu, rows 1 to 6
inline constexpr int kIdLayerOverlap = 3031;
inline constexpr int kIdLayerDrawing = 3032;
inline constexpr int kIdLayerCutSurface = 3033;
inline constexpr int kIdLayerClean = 3034;
inline constexpr int kIdLayerSkimDepth = 3035;

// Keys of the toolpath view that the routing table does not name.
inline constexpr int kIdViewRefresh = 3100;   // "Refresh toolpath"
inline constexpr int kIdViewFit = 3101;       // "Fit toolpath to view"
inline constexpr int kIdViewPan = 3102;       // "Toggle pan / orbit; ..."
inline constexpr int kIdViewExtents = 3103;   // "Show path dimensions"
inline constexpr int kIdViewMeasure = 3104;   // "Measure between two path points"
inline constexpr int kIdViewGrid = 3105;      // "Toggle world grid"
inline constexpr int kIdViewGridMenu = 3106;  // "Grid settings: spacing and color"
inline constexpr int kIdViewLayers = 3107;    // "Preview layers: ..."
inline constexpr int kIdPlayStart = 3110;     // go to start
inline constexpr int kIdPlayPrevious = 3111;  // previous operation
inline constexpr int kIdPlayRewind = 3112;    // rewind
inline constexpr int kIdPlayToggle = 3113;    // play/pause
inline constexpr int kIdPlayForward = 3114;   // fast forward
inline constexpr int kIdPlayNext = 3115;      // next operation
inline constexpr int kIdPlayEnd = 3116;       // go to end
inline constexpr int kIdPlayStop = 3117;      // stop
inline constexpr int kIdSpeedSlider = 3118;   // drawn view, class "MorvaSpeed"

// Read-outs.
inline constexpr int kIdStatusLine = 3200;
inline constexpr int kIdOutputHead = 3201;  // "OUTPUT / VALIDATION"
inline constexpr int kIdOutputLog = 3202;
inline constexpr int kIdFeatureHint = 3203;
inline constexpr int kIdDncState = 3204;   // "DNC: OFFLINE"
inline constexpr int kIdDncPort = 3205;    // "PORT  --"
inline constexpr int kIdDncBaud = 3206;    // "BAUD  9600"
inline constexpr int kIdPanelHead = 3207;  // the mode's header
inline constexpr int kIdInfoPanel = 3208;  // program information
inline constexpr int kIdHelpText = 3209;   // help text under the panel

// Controls of panels that the routing table does not name.
inline constexpr int kIdFindText = 3220;        // "Find"
inline constexpr int kIdReplaceText = 3221;     // "Replace with"
inline constexpr int kIdRuleList = 3222;        // "Replacement rules"
inline constexpr int kIdMatchCase = 3223;       // "Match case"
inline constexpr int kIdWholeToken = 3224;      // "Whole token"
inline constexpr int kIdFindStatus = 3225;      // the pane's status line
inline constexpr int kIdFindLabel = 3226;       // "Find"
inline constexpr int kIdReplaceLabel = 3227;    // "Replace with"
inline constexpr int kIdRulesLabel = 3228;      // "Replacement rules"
inline constexpr int kIdFindHelp = 3229;        // help of the rules
inline constexpr int kIdChangeHead = 3230;      // "Change All"
inline constexpr int kIdChangeHelp = 3231;      // help of PROMPT EACH and DO ALL
inline constexpr int kIdInlineName = 3240;      // rename box over a feature row
inline constexpr int kIdImportFirst = 3250;     // import panel, 3250 to 3269
inline constexpr int kIdImportPreview = 3254;  // the source program
inline constexpr int kIdIndexDetail = 3300;     // code index panel, 3300 to 3319: "Word"
inline constexpr int kIdIndexInsertion = 3301;  // "Insertion text"
inline constexpr int kIdIndexInsert = 3302;     // "INSERT INTO PROGRAM"
inline constexpr int kIdIndexClear = 3303;      // "CLEAR SEARCH"

// The compare review, 3270 to 3299.
inline constexpr int kIdReviewHead = 3270;        // "PROGRAMS (Ctrl / Shift)"
inline constexpr int kIdReviewPrograms = 3271;    // programs to review
inline constexpr int kIdReviewSelected = 3272;    // "Review selected"
inline constexpr int kIdReviewPrevious = 3273;    // "Previous change"
inline constexpr int kIdReviewNext = 3274;        // "Next change"
inline constexpr int kIdReviewSwap = 3275;        // "Swap sides"
inline constexpr int kIdReviewSpaces = 3276;      // "Spaces: exact"
inline constexpr int kIdReviewTags = 3277;        // "Tags: hidden"
inline constexpr int kIdReviewLines = 3278;       // "All lines"
inline constexpr int kIdReviewBack = 3279;        // "Back to program"
inline constexpr int kIdReviewSummary = 3280;     // "READ-ONLY REVIEW   Added + ..."
inline constexpr int kIdReviewLeftLabel = 3281;   // "Baseline"
inline constexpr int kIdReviewLeft = 3282;        // program on the left side
inline constexpr int kIdReviewRightLabel = 3283;  // "Compared"
inline constexpr int kIdReviewRight = 3284;       // program on the right side
inline constexpr int kIdReviewLeftPane = 3285;
inline constexpr int kIdReviewRightPane = 3286;

// Drawn views.
inline constexpr int kViewGutter = 20001;    // class "CodeGutter"
inline constexpr int kViewToolpath = 20002;  // class "HaasSimView"

}  // namespace morva
