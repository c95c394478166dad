// What is drawn upon what, by the names of the palette: every colour of it stands in one of these
// tables.
//
// A group says that each of its colours lies on each of its grounds somewhere in the program. Who
// draws a text or the outline of a control on another ground adds the pair here.
#pragma once

#include <vector>

#include "app/palette.h"

namespace contrast {

using namespace morva;

struct Group {
  std::vector<platform::Colour> colours;
  std::vector<platform::Colour> grounds;
};

// The grounds of bands, panels, wells and keys; of a gradient both ends.
inline const std::vector<platform::Colour> kGrounds = {
    kWindowBackground, kPanelBackground, kInputBackground, kDarkBand, kOutputBackground, kWorkArea,
    kSidePanel,        kPlainTop,        kPlainBottom,     kDeepTop,  kDeepBottom};
inline const std::vector<platform::Colour> kKeyGrounds = {
    kPlainOnTop, kPlainOnBottom, kGreenTop, kGreenBottom, kAmberTop, kAmberBottom};

// What is read.
inline const std::vector<Group> kTexts = {
    {{kMainText, kDimText, kBrightAccent}, kGrounds},
    {{kMainText, kDimText, kBrightAccent}, kKeyGrounds},
    {{kWarningText}, kGrounds},
    {{kDncConnectedText, kDncTransferText, kDncFailedText, kDncOfflineText}, kGrounds},
    {{kSelectedText}, {kSelection}},
    {{kEditorText, kCodeComment, kCodePercent, kCodeNumber, kCodeProgram, kCodeG, kCodeM, kCodeFeed,
      kCodeSpindle, kCodeTool, kCodeArc, kCodeParameter, kCodeX, kCodeY, kCodeZ},
     {kOutputBackground, kPlayedLineBand, kCaretLineBand, kHitGround}},
    {{kWordsText, kWordsPlain, kWordsComment, kWordsRapid, kWordsCut},
     {kOutputBackground, kDarkBand, kCaretLineBand}},
    {{kReviewText}, {kOutputBackground}},
    {{kReviewModified}, {kReviewModifiedBand}},
    {{kReviewChange}, {kReviewChangeGround}},
    {{kReportError, kReportWarning}, {kOutputBackground}},
    {{kReviewLeftOnly}, {kReviewLeftOnlyBand}},
    {{kReviewRightOnly}, {kReviewRightOnlyBand}},
    // Words of a program on the bands of changed lines.
    {{kEditorText, kCodeComment, kReviewNumber, kCodeProgram, kCodeG, kReviewM, kCodeFeed,
      kCodeSpindle, kReviewTool, kReviewArc, kCodeParameter, kCodeX, kCodeY, kCodeZ},
     {kReviewModifiedBand, kReviewLeftOnlyBand, kReviewRightOnlyBand}},
    {{kCompletionText, kBrightAccent}, {kPanelBackground, kCompletionSelected}},
    {{kPathText, kPathQuietText, kPathDimension, kPathMeasure}, {kPathGround}},
    {{kCubeLetter}, {kCubeFaceSlant, kCubeFaceStraight, kCubeCell}},
    {{kCadDimension, kCadMeasure, kCadHover}, {kWindowBackground, kPanelBackground}},
    {{kPictureDimension, kPictureSelected, kPictureOutline, kPictureStock},
     {kPictureGround, kPictureFace, kPictureOpening, kPicturePocket}},
};

// What must be told from its ground: outlines of controls, marks of the keyboard, icons, lines of
// paths, drawings and pictures.
inline const std::vector<Group> kLines = {
    {{kControlLine}, kGrounds},
    {{kGreenLine}, {kGreenTop, kGreenBottom}},
    {{kAmberLine}, {kAmberTop, kAmberBottom}},
    {{kGreenLine, kAmberLine}, kGrounds},
    {{kAccent}, kGrounds},
    {{kBrightAccent}, kGrounds},
    {{kBrightAccent}, kKeyGrounds},
    {{kAccent}, {kPlainOnTop, kPlainOnBottom}},
    {{kSelection}, kGrounds},
    {{kHitFrame}, {kOutputBackground, kCaretLineBand}},
    {{kPathFeed, kPathFeedLow, kPathHighest, kPathDeepest, kPathRapid, kPathGhost, kPathContext, kPathMarker,
      kPathStock, kPathSurface, kPathToolFlutes, kPathToolShank, kPathToolEnd, kPathHead},
     {kPathGround}},
    {{kPathFeed, kPathFeedLow, kPathHighest, kPathDeepest}, {kPathSwept, kPathOverlap}},
    {{kCubeRing, kCubeKey, kCubeEdge}, {kPathGround}},
    {{kCadAxisX, kCadAxisY, kCadObject, kCadConstruction, kCadTrim, kCadModelLower, kCadModelUpper},
     {kWindowBackground}},
    {{kPictureOutline, kPictureFeature, kPictureBlind, kPictureStock, kPictureConstruction,
      kPictureHidden, kPictureShadeMid, kPictureShadeLight},
     {kPictureGround}},
};

// What bears no contrast of its own: edges and words of what cannot be used now, lines between
// panels, grids, the dark sides of solids, and ink for white paper.
inline const std::vector<platform::Colour> kQuiet = {kFaintText,        kQuietKeyLine, kPanelLine,
                                                     kBandLine,         kCadGrid,      kPathGrid[0],
                                                     kPictureShadeDark, kPathToolEdge, kPaperInk};

}  // namespace contrast
