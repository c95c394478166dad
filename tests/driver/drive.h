// The job driver as a library: one line in, one JSON line out.
//
// It links the whole application against the headless platform. A line that cannot be read is
// an error answer; nothing that stands in a line may end the program.
#pragma once

#include <string>
#include <string_view>

namespace drive {

// Starts the application on a fresh machine in the folder `home`. False: it did not start.
bool Begin(std::u16string_view home);
// The answer to one line, without a line end.
std::string AnswerLine(std::string_view line);
// Closes the window as its user does, without questions.
void End();
// From now on only files below the home folder can be named, for inputs made by chance.
void KeepFilesAtHome();

}  // namespace drive
