#include <gtest/gtest.h>

#include <string_view>

#include "desk/another_program.h"
#include "platform/thread.h"

int main(int argc, char** argv) {
  if (argc == 2 && std::string_view(argv[1]) == desk::kAnotherProgram) {
    return desk::RunAnotherProgram(argc, argv);
  }
  testing::InitGoogleTest(&argc, argv);
  const int failed = RUN_ALL_TESTS();
  // A save that is still being written reads what the end of the process takes away.
  platform::EndWorkers();
  return failed;
}
