// The workbench's entry. Which platform stands behind it is the linker's choice.

#include "dnc/transfer.h"
#include "platform/process.h"
#include "platform/window.h"
#include "shell/start_up.h"

int main(int argc, char** argv) {
  platform::BeginProcess(argc, argv);
  int code = morva::StartApplication();
  if (code == 0) code = platform::RunLoop();
  // A transfer under way is aborted: its worker must not outlive the records it reads.
  morva::ResetTransfer();
  platform::EndProcess();
  return code;
}
