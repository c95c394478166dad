// One spelling for all the ways that lead to a file.
#pragma once

#include <string>
#include <string_view>

namespace platform {

// The path with ".", ".." and links of its folder followed; its last name stays as it is, and no
// file has to stand there. The path as given where the folder cannot be reached.
std::u16string RealPath(std::u16string_view path);
// The file that an argument of the command line names, in bytes as the system carries names: its
// RealPath from the root, also of one that is named from the working folder.
std::u16string PathOfArgument(const char* argument);

}  // namespace platform
