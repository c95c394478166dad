// The workbench's entry. Which platform stands behind it is the linker's choice.

#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include "dnc/transfer.h"
#include "platform/file.h"
#include "platform/process.h"
#include "platform/window.h"
#include "shell/start_up.h"

namespace {

// The full paths of the files on the command line.
std::vector<std::u16string> ProgramsNamed(int argc, char** argv) {
  std::vector<std::u16string> paths;
  for (int i = 1; i < argc; ++i) {
    std::error_code problem;
    const std::filesystem::path path = std::filesystem::absolute(argv[i], problem);
    paths.push_back(platform::FromUtf8(problem ? argv[i] : path.string()));
  }
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
