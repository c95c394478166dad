// The workbench's entry. Which platform stands behind it is the linker's choice.

#include "platform/process.h"
#include "platform/window.h"
#include "shell/start_up.h"

int main(int argc, char** argv) {
  platform::BeginProcess(argc, argv);
  int code = morva::StartApplication();
  if (code == 0) code = platform::RunLoop();
  platform::EndProcess();
  return code;
}
