// Names of files that the program makes by itself.
#pragma once

#include <string>
#include <string_view>

namespace morva {

// A title as a file's name: characters that some system does not allow become "_".
std::u16string CleanedTitle(std::u16string_view title);
// The same of a title's first 60 units, so that a number fits behind it.
std::u16string ShortTitle(std::u16string_view title);
// A path in a folder of the data directory: "Projects", "Recovery".
std::u16string PathInData(std::u16string_view folder, std::u16string_view name);

}  // namespace morva
