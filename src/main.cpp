// The workbench's entry. Which platform stands behind it is the linker's choice.

#include <string>
#include <vector>

#include "dnc/transfer.h"
#include "platform/process.h"
#include "platform/real_path.h"
#include "platform/window.h"
#include "shell/start_up.h"

namespace {

std::vector<std::u16string> ProgramsNamed(int argc, char** argv) {
  std::vector<std::u16string> paths;
  for (int i = 1; i < argc; ++i) paths.push_back(platform::PathOfArgument(argv[i]));
  return paths;
}

}  // namespace

int main(int argc, char** argv) {
  platform::BeginProcess(argc, argv);
  int code = morva::StartApplication(ProgramsNamed(argc, argv));
  if (code == 0) code = platform::RunLoop();
  // A transfer under way is aborted: its worker must not outlive the records it reads.
  morva::ResetTransfer();
  platform::EndProcess();
  return code;
}
