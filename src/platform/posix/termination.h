// The system's wishes that the process end: a terminate or hang-up signal, Ctrl+C in a terminal.
#pragma once

namespace platform {

// From now on these signals no longer end the process; each writes a byte into a pipe. The
// pipe's end for reading, or -1 where it could not be made: then the signals end the process
// as before.
int WatchTermination();

}  // namespace platform
