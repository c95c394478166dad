// Saves one file once, to be cut off or refused at any system call from outside.
//
//   save_once PATH BYTES    0 when the save says it is done, 3 when it says it failed
#include <cstdlib>
#include <string>

#include "documents/file_text.h"
#include "platform/file.h"

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  const std::string bytes(static_cast<std::size_t>(std::atoi(argv[2])), 'n');
  return morva::SaveFileAtomic(platform::FromUtf8(argv[1]), bytes) ? 0 : 3;
}
