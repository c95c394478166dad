// Arrays asked for with nothrow that fail on demand, in the whole of this test program.
#pragma once

namespace shell_test {

// The n-th array from now on fails, once; 0: none does.
extern int arraysUntilFailure;

}  // namespace shell_test
