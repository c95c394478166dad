#include "support/places.h"

namespace support {

const char* SourceDir() { return MORVA_SOURCE_DIR; }
const char* BinaryDir() { return MORVA_BINARY_DIR; }

}  // namespace support
