// The system's calls for files, as the linker hands them to these programs: counted, failed, cut
// short, or the moment at which the process is killed.
//
// The plan lies in memory that a process shares with those it forks, so that what a killed one
// had done can still be read.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <span>
#include <string>

namespace file_calls {

enum class Call : unsigned char {
  Open,
  Read,
  Write,
  Flush,
  Close,
  Rename,
  Erase,
  MakeFolder,
  Access,
  Mode,
  Owner,
  Figures,  // of a path or of an open file
  Link
};

const char* NameOf(Call call);

// What happens at the chosen call.
enum class Deed : unsigned char {
  None,
  Kill,   // before it
  Tear,   // a write puts down a part of its bytes, then the process is killed
  Fail,   // with `error`
  Short,  // a read or write takes a part of what was asked
};

inline constexpr int kMostCalls = 2000;

struct Plan {
  bool active = false;
  int counted = 0;  // calls so far
  Call calls[kMostCalls] = {};
  int at = 0;  // the call it happens at, counted from 1; 0: none
  Deed deed = Deed::None;
  int error = 0;
  // All calls from there on fail, but for those that close and erase.
  bool onward = false;
  int quarters = 0;  // of the bytes that are taken: 0 to 3; 0 is one byte
  bool met = false;
  // Whether a call has failed without which a file is not safely on the disk: a write, a flush, a
  // rename, the close of a file that was written. Not of those in the folder `aside`.
  bool mustTell = false;
  // A folder below another one, "/" on either side, of whose files nobody waits for the save;
  // empty: none. Whether anything happened to one of its calls.
  char aside[100] = {};
  bool asideMet = false;
  // Whether a call that erases has failed, so that a file may lie about.
  bool eraseFailed = false;
};

extern Plan* plan;

// Gives the plan its place; once a process.
void Begin();
void Start(int at, Deed deed);
void SetAside(const std::string& folder);
void Stop();

// The errors that this call is known to fail with.
std::span<const int> ErrorsOf(Call call);
// An interrupted call is taken up again.
bool IsHarmless(Call call, int error);

}  // namespace file_calls
