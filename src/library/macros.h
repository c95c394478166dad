// The macro library: up to 24 whole program texts that the user saved for reuse.
//
// It lives in MORVA.ini, sections [CustomMacros] and [CustomMacro0] to [CustomMacro23]; a text
// stands there on one line, with escapes for backslash, CR and LF.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "app/limits.h"
#include "platform/message.h"

namespace morva {

struct MacroRecord {
  char16_t name[kMacroNameUnits] = {};
  std::u16string code;  // at most 24,000 units where the user saved it
  // The line of the settings file where it is longer than what is read of it; else empty. It goes
  // back as it is while nobody gives the macro another text.
  std::u16string longLine;
  // Of `code` and `longLine`: where two records have the same number they have the same of both, so
  // that a save need not compare them.
  std::uint64_t text = 0;
  bool operator==(const MacroRecord& other) const;
};

struct MacroLibrary {
  std::int32_t count = 0;  // 0 to 24, in the order in which they were saved
  MacroRecord macros[kMaxMacros];
};
extern MacroLibrary macroLibrary;

// From the settings file. A count that is no count is 0, one above 24 is 24. Of a line of more than
// 48,062 units the text is what stands before them; the log says so.
void LoadMacroLibrary();
// Before a change: takes over what another program, or the user by hand, has written into the file
// since it was read or written here, and says so. False: nothing of the kind, and nothing changed.
bool FollowMacroFile();
// Rewrites the keys; sections of macros that were deleted stay. `told` hears, now or when it is
// written, whether the settings file holds the table. False: it is known already that it does not.
bool SaveMacroLibrary(void (*told)(bool saved) = nullptr);
void ResetMacroLibrary();

// On one line: "\\" for a backslash, "\r" and "\n" for CR and LF.
std::u16string EscapedMacro(std::u16string_view code);
// The way back. A backslash in front of any other character stays as it stands.
std::u16string UnescapedMacro(std::u16string_view line);

// Index of the macro with this name, case of A to Z ignored, one of them left out; -1 for none.
int FindMacro(std::u16string_view name, int except = -1);
// Index of the macro with the same name and text, -1 for none.
int FindSameMacro(const MacroRecord& macro);
// In place of the macro that bears the name, spelled as given now, or at the end. Its index, -1
// when 24 others are held. Names are cut at 95 units; no NUL is kept.
int PutMacro(std::u16string_view name, std::u16string_view code);
// A copy at the end, called "... Copy", "... Copy 2" and so on. Its index, -1 when 24 are held or
// there is no such macro. A long name is shortened so that its end can be read.
int DuplicateMacro(int index);
// False: there is no such macro.
bool RenameMacro(int index, std::u16string_view name);
bool RemoveMacro(int index);

inline constexpr char16_t kSaveMacroTitle[] = u"Save Program as Macro";  // of boxes

// Why a macro is not saved or renamed: the box. Without words all is well.
struct MacroRefusal {
  const char16_t* title = u"";
  const char16_t* words = u"";
  platform::BoxIcon icon = platform::BoxIcon::Warning;
};
// What INSERT puts into a program: the text without the lines that mark blocks, because their
// numbers are those of the program that it was saved from. `lacksCode`: one of them stood for
// excluded code, which that program has and the macro has not.
std::u16string MacroToInsert(std::u16string_view code, bool& lacksCode);
// Line ends alone are no code: nothing would be inserted.
bool IsBlankCode(std::u16string_view code);
MacroRefusal CheckMacro(std::u16string_view name, std::u16string_view code);
// Whether a further macro finds room.
MacroRefusal CheckMacroRoom();
MacroRefusal CheckMacroName(int index, std::u16string_view name);

}  // namespace morva
