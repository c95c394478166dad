// Colours of program text: the editors, their gutter, the words view and the review panes.
//
// The window's own palette is app/palette.h.
#pragma once

#include "app/palette.h"
#include "platform/geometry.h"

namespace morva {

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
inline constexpr platform::Colour kReviewLeftOnly = 0xFF9FAC;
inline constexpr platform::Colour kReviewLeftOnlyBand = 0x4B2228;
inline constexpr platform::Colour kReviewRightOnly = 0x8CF2B6;
inline constexpr platform::Colour kReviewRightOnlyBand = 0x164131;

// The completion list.
inline constexpr platform::Colour kCompletionText = 0xE1EEF8;
inline constexpr platform::Colour kCompletionSelected = 0x0C3B5A;

}  // namespace morva
