// The workbench as it starts, up to its first painting.
#include "first_paint.h"
#include "platform/process.h"
#include "platform/window.h"
#include "shell/start_up.h"

int main(int argc, char** argv) {
  platform::BeginProcess(argc, argv);
  const FirstPaint first;
  if (morva::StartApplication() != 0) return 1;
  return platform::RunLoop();
}
