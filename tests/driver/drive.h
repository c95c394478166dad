// The job driver as a library: one line in, one JSON line out.
//
// It links the whole application against the headless platform. A line that cannot be read is
// an error answer; nothing that stands in a line may end the program.
#pragma once

#include <string>
#include <string_view>

namespace drive {

struct Machine {
  std::u16string home;
  std::u16string executableName = u"MORVA";
  bool hasDocuments = true;
};

// Starts the application on a fresh machine; what lies in its folders stays. False: it did
// not start.
bool Begin(const Machine& machine);
// The answer to one line, without a line end; empty where a dialog came up while the line was
// at work, because the line was answered then.
std::string AnswerLine(std::string_view line);
// Who reads on while a dialog of the application stands open. `opened` answers the line that
// brought it up with {"ok":true}; `turn` reads one further line and hands it to AnswerLine,
// false when there is none: the dialog is cancelled. Without a reader every dialog is.
struct DialogReader {
  void (*opened)() = nullptr;
  bool (*turn)() = nullptr;
};
void ReadOnInDialogs(const DialogReader& reader);
// Closes the window as its user does, without questions.
void End();
// From now on only files below the home folder can be named, for inputs made by chance.
void KeepFilesAtHome();

}  // namespace drive
