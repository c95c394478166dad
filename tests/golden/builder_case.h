// A golden case of a builder: a folder that says what stands in the fields and what comes of it.
//
// fields.txt holds lines "name = text", carried out from the top once the form is up; "#" begins a
// comment line. A name is a label, an accessible name or an id, of the form or of another one that
// is up. Nine names are special:
//
//     builder = INSERT GROOVE   the words on the builder's key; the first line of all
//     mode = Machining wizard   a row of the mode list
//     press = MM                a click on the key with these words, or this id
//     again = NEXT              as press, once the block is opened again, before it is updated
//     item = 0 0 1 2 2.5 0 90   an item of the record: type, tag, five numbers; before the fields
//     shape = 0 0 -1 0 2 0 0    an object of a saved shape "Golden", likewise, in inches
//     picture = more            the picture shows more than the code cuts
//     blocks = 128              the program has so many blocks already
//     picker = cancel           the user cancels the question where the block goes
//
// Beside it stand program.nc, the code with CR LF, and picture.txt where the builder draws. Or
// refusal.txt: the title and the words of the box, a line each; empty where no box comes.
//
// picture.txt begins with "picture inch" or "picture mm" and has a line a mark, in its order, with
// 4 decimals: kind, ink, places, then what the kind needs.
//
//     path feature 0.0000,0.0000 -3.0000,0.0000     corners, also of a loop or a fill
//     arc construction 1.0000,2.0000 radius 0.5000  a whole circle about this centre
//     arc feature 0.0000,0.0000 radius 2.0000 from 0.0000 by 90.0000
//     cross blind 1.0000,2.0000                     a drilled hole
//     dimension across dimension 0.0000,0.0000 1.0000,0.0000 row -1 outside: 1.000
//     label dimension 1.0000,0.0000 above: Z -0.500
//
// Behind the marks it has a line a label, in their order: ink, place and side, or the measured
// points and the row of the line, then the words. A number of a size has 3 decimals in inches and 2
// in millimetres.
//
//     label feature 1.0000,2.0000 above: 1
//     dimension across dimension 0.0000,0.0000 2.0000,0.0000 row 1: 2.000
//     dimension diameter dimension 1.0000,2.0000 radius 1.2500 leader 45.0000: Ø2.500
//
// The inks are those of forms/picture.h in small letters. FILE.new is left where a file differs.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "documents/builder.h"

namespace golden {

struct Setting {
  std::u16string name;
  std::u16string text;
};

struct BuilderCase {
  std::u16string builder;
  std::vector<Setting> settings;
  std::vector<std::u16string> again;
  bool pictureShowsMore = false;
  int blocks = 0;
  bool cancelsPicker = false;
};

// Names of the folders of cases that hold this file, sorted.
std::vector<std::string> CasesWith(std::string_view file);
std::filesystem::path CaseFolder(const std::string& name);
// Text of a file of a case, empty where there is none.
std::u16string CaseText(const std::string& name, std::string_view file);
// Leaves the text beside the file as FILE.new.
void LeaveNew(const std::string& name, std::string_view file, std::u16string_view text);
// What cannot be read is a failure of the running test.
BuilderCase ReadCase(const std::string& name);

// The builder with these words on its key, null where none is registered.
const morva::Builder* BuilderOfWords(std::u16string_view words);
// Brings the form up, where a mode does that.
void BringUp(const morva::Builder& builder);
// Brings the form up and carries the settings out. A name that the form does not have is a
// failure of the running test.
void SetUpCase(const BuilderCase& wanted, const morva::Builder& builder);

// A click on the key with these words, or this id.
void PressKey(std::u16string_view name);
// What the form says.
morva::FormValues ValuesOf(const morva::Builder& builder);
std::u16string CodeOf(const morva::Builder& builder, const morva::FormValues& values);

}  // namespace golden
