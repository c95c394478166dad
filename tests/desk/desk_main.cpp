#include <gtest/gtest.h>

#include "platform/thread.h"

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  const int failed = RUN_ALL_TESTS();
  // A save that is still being written reads what the end of the process takes away.
  platform::EndWorkers();
  return failed;
}
