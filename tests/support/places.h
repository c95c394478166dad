// Where the sources and the built programs lie: absolute paths, no slash at the end.
//
// One object knows them, so that all others are the same in every checkout and a compiler cache
// can serve them from one to another.
#pragma once

namespace support {

const char* SourceDir();
const char* BinaryDir();

}  // namespace support
