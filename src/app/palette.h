// The palette of the dark look: every colour that the program draws with has its name here.
//
// A name says what it colours. Colours are 0xRRGGBB.
#pragma once

#include "platform/geometry.h"

namespace morva {

inline constexpr platform::Colour kWindowBackground = 0x010F19;
inline constexpr platform::Colour kPanelBackground = 0x021726;
inline constexpr platform::Colour kInputBackground = 0x031929;
inline constexpr platform::Colour kDarkBand = 0x010D15;
inline constexpr platform::Colour kOutputBackground = 0x03080E;
inline constexpr platform::Colour kAccent = 0x0089B2;
inline constexpr platform::Colour kBrightAccent = 0x00D3F2;
inline constexpr platform::Colour kMainText = 0xDEE9F2;
inline constexpr platform::Colour kDimText = 0x91AAC4;
inline constexpr platform::Colour kWorkArea = 0x0A192B;
inline constexpr platform::Colour kSidePanel = 0x091627;
inline constexpr platform::Colour kPanelLine = 0x12528B;
// Outlines of what can be used, seen on every ground that a control lies on: keys, fields, lists,
// views, logs.
inline constexpr platform::Colour kControlLine = 0x2A6FA3;
inline constexpr platform::Colour kGreenLine = 0x2D9D6C;
inline constexpr platform::Colour kAmberLine = 0x9A6B22;
inline constexpr platform::Colour kSelection = 0x00779B;  // behind text that is selected
inline constexpr platform::Colour kSelectedText = 0xFFFFFF;
inline constexpr platform::Colour kEditorText = 0xDCE0E6;
inline constexpr platform::Colour kFaintText = 0x5C7389;     // of what cannot be used
inline constexpr platform::Colour kBandLine = 0x0A2A44;      // between the bands of the main window
inline constexpr platform::Colour kQuietKeyLine = 0x0B2C44;  // edge of a key that cannot be pressed

// Grounds of panels and keys: a gradient from top to bottom, another where one is on.
inline constexpr platform::Colour kPlainTop = 0x031A27;
inline constexpr platform::Colour kPlainBottom = 0x02111C;
inline constexpr platform::Colour kPlainOnTop = 0x042D43;
inline constexpr platform::Colour kPlainOnBottom = 0x033A54;
inline constexpr platform::Colour kGreenTop = 0x032217;
inline constexpr platform::Colour kGreenBottom = 0x044428;
inline constexpr platform::Colour kAmberTop = 0x241A09;
inline constexpr platform::Colour kAmberBottom = 0x352206;
inline constexpr platform::Colour kDeepTop = 0x031E2F;
inline constexpr platform::Colour kDeepBottom = 0x01121F;

// What builders draw: fills first, then lines.
inline constexpr platform::Colour kPictureGround = kWindowBackground;
inline constexpr platform::Colour kPictureFace = 0x123048;
inline constexpr platform::Colour kPictureOpening = kPictureGround;
inline constexpr platform::Colour kPicturePocket = 0x0B2233;
inline constexpr platform::Colour kPictureShadeDark = 0x1B3E57;
inline constexpr platform::Colour kPictureShadeMid = 0x3B6C8E;
inline constexpr platform::Colour kPictureShadeLight = 0x86AFCB;
inline constexpr platform::Colour kPictureStock = 0x96A7BD;
inline constexpr platform::Colour kPictureConstruction = 0x8F83C9;
inline constexpr platform::Colour kPictureHidden = 0x466786;
inline constexpr platform::Colour kPictureOutline = 0x9CC3E0;
inline constexpr platform::Colour kPictureFeature = 0x48D3B8;
inline constexpr platform::Colour kPictureBlind = 0x5B9BE6;
inline constexpr platform::Colour kPictureDimension = 0xB4C6D8;
inline constexpr platform::Colour kPictureSelected = 0xF1BE4C;
inline constexpr platform::Colour kWarningText = kPictureSelected;  // of a place that harms
inline constexpr platform::Colour kPaperInk = 0x000000;             // all lines on paper

// The toolpath view.
inline constexpr platform::Colour kPathGround = kWindowBackground;
inline constexpr platform::Colour kPathText = kMainText;
inline constexpr platform::Colour kPathQuietText = kDimText;
inline constexpr platform::Colour kPathFeed = 0x48D3B8;
inline constexpr platform::Colour kPathHighest = 0xF6F2B0;  // cuts shaded by depth: from this one
inline constexpr platform::Colour kPathDeepest = 0x9A84FF;  // by way of kPathFeed to this one
inline constexpr platform::Colour kPathFeedLow = 0x33A18C;  // the deepest cuts of a dense path
inline constexpr platform::Colour kPathRapid = 0x4889D2;
inline constexpr platform::Colour kPathGhost = 0x53687C;    // of excluded blocks
inline constexpr platform::Colour kPathContext = 0x9A8BC9;  // what stands around a preview
inline constexpr platform::Colour kPathSwept = 0x123A4C;    // ground below a cutter
inline constexpr platform::Colour kPathOverlap = 0x4E4128;  // the same once more
inline constexpr platform::Colour kPathMarker = 0xF08FC0;   // a place that a builder points at
inline constexpr platform::Colour kPathStock = 0x96A7BD;
inline constexpr platform::Colour kPathSurface = 0x577B93;  // mesh of the cut surface
inline constexpr platform::Colour kPathToolFlutes = 0xC3CCD4;
inline constexpr platform::Colour kPathToolShank = 0x8795A1;
inline constexpr platform::Colour kPathToolEnd = 0xA9B5BF;
inline constexpr platform::Colour kPathToolEdge = 0x26323C;
inline constexpr platform::Colour kPathDimension = 0xF1BE4C;
inline constexpr platform::Colour kPathHead = 0xFFCB48;
inline constexpr platform::Colour kPathMeasure = 0xFFFFFF;
inline constexpr platform::Colour kCaretLineBand = 0x0C2032;   // behind the caret's line of code
inline constexpr platform::Colour kHitGround = 0x2A2608;       // behind the hits of Find
inline constexpr platform::Colour kHitFrame = 0xB8923A;        // around them
inline constexpr platform::Colour kPlayedLineBand = 0x083248;  // behind the head's line of code
// Its grid, in the order of the choice.
inline constexpr platform::Colour kPathGrid[] = {0x344A60, 0x286973, 0x436F48,
                                                 0x79562B, 0x634478, 0x686C72};

// The view cube.
inline constexpr platform::Colour kCubeRing = 0x2E688F;
inline constexpr platform::Colour kCubeKey = kDimText;
inline constexpr platform::Colour kCubeFaceSlant = 0x14364E;     // a face seen at a slant
inline constexpr platform::Colour kCubeFaceStraight = 0x2C6187;  // a face seen straight on
inline constexpr platform::Colour kCubeEdge = 0x7FB2D4;
inline constexpr platform::Colour kCubeCell = kSelection;
inline constexpr platform::Colour kCubeLetter = 0xFFFFFF;

// The drawing canvas.
inline constexpr platform::Colour kCadGrid = 0x0E2536;
inline constexpr platform::Colour kCadAxisX = 0xC4574D;
inline constexpr platform::Colour kCadAxisY = 0x4FA765;
inline constexpr platform::Colour kCadObject = 0x86AAC6;
inline constexpr platform::Colour kCadConstruction = 0x8F83C9;
inline constexpr platform::Colour kCadHover = 0xF1BE4C;
inline constexpr platform::Colour kCadTrim = 0xFF6B5E;  // what a trim would take away
inline constexpr platform::Colour kCadDimension = 0xF1BE4C;
inline constexpr platform::Colour kCadMeasure = 0xFFFFFF;
inline constexpr platform::Colour kCadModelLower = 0x4A6C86;  // edges of the solid picture, below
inline constexpr platform::Colour kCadModelUpper = 0x9CC3E0;  // and above

// The state of the serial line.
inline constexpr platform::Colour kDncConnectedText = 0x22FF6E;
inline constexpr platform::Colour kDncTransferText = 0xFFBE50;
inline constexpr platform::Colour kDncFailedText = 0xFF6473;
inline constexpr platform::Colour kDncOfflineText = kDimText;

// Lines of a preflight report.
inline constexpr platform::Colour kReportError = kDncFailedText;
inline constexpr platform::Colour kReportWarning = kDncTransferText;

// Words of a program.
inline constexpr platform::Colour kCodeComment = 0x86D06A;
inline constexpr platform::Colour kCodePercent = 0x809AB2;
inline constexpr platform::Colour kCodeNumber = 0x809AB2;   // N
inline constexpr platform::Colour kCodeProgram = 0xFFE880;  // O
inline constexpr platform::Colour kCodeG = 0x2CD6DF;
inline constexpr platform::Colour kCodeM = 0x489AFF;
inline constexpr platform::Colour kCodeFeed = 0x4AD6E2;       // F
inline constexpr platform::Colour kCodeSpindle = 0xFFC448;    // S
inline constexpr platform::Colour kCodeTool = 0xE670FF;       // D, H, T
inline constexpr platform::Colour kCodeArc = 0xBE84FF;        // I, J, K, R
inline constexpr platform::Colour kCodeParameter = 0xA4B8CE;  // L, P, Q
inline constexpr platform::Colour kCodeX = 0xFFA448;
inline constexpr platform::Colour kCodeY = 0xEF87E7;
inline constexpr platform::Colour kCodeZ = 0x5DC0FF;

// The command words view, a line by what it says.
inline constexpr platform::Colour kWordsText = kMainText;  // where a line bears no colour
inline constexpr platform::Colour kWordsPlain = 0xDEC585;
inline constexpr platform::Colour kWordsComment = 0x7591A1;
inline constexpr platform::Colour kWordsRapid = 0x64B2FF;
inline constexpr platform::Colour kWordsCut = 0x56DFAD;

// The review panes; what is changed has a band behind it and a text colour of its own.
inline constexpr platform::Colour kReviewText = kMainText;
inline constexpr platform::Colour kReviewModified = 0xFFD588;
inline constexpr platform::Colour kReviewModifiedBand = 0x453419;
inline constexpr platform::Colour kReviewChange = 0xFFFFFF;  // characters that changed in a line
inline constexpr platform::Colour kReviewChangeGround = 0x9A5B00;
inline constexpr platform::Colour kReviewLeftOnly = 0xFF9FAC;
inline constexpr platform::Colour kReviewLeftOnlyBand = 0x4B2228;
inline constexpr platform::Colour kReviewRightOnly = 0x8CF2B6;
inline constexpr platform::Colour kReviewRightOnlyBand = 0x164131;
// Words of a program that are too dark for the bands, a little lighter there.
inline constexpr platform::Colour kReviewNumber = 0x91A8BC;  // N and the percent sign
inline constexpr platform::Colour kReviewM = 0x5EA6FF;
inline constexpr platform::Colour kReviewTool = 0xE776FF;
inline constexpr platform::Colour kReviewArc = 0xC28BFF;

// The completion list.
inline constexpr platform::Colour kCompletionText = 0xE1EEF8;
inline constexpr platform::Colour kCompletionSelected = 0x0C3B5A;

}  // namespace morva
