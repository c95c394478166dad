// The writer of files: the window's thread makes the bytes, one worker writes them, in order. It
// writes programs and what belongs to them, the settings file and what else the rooms hand over.
//
// A save under way is never touched. Of those that wait, the newest of a program replaces the
// older ones. What became of a save comes back by a message, to the window's thread.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/atomic_file.h"
#include "platform/file.h"

namespace morva {

// What stood on disk when a program was read or last written.
struct DiskState {
  platform::FileFigures figures;
  std::uint64_t hash = 0;  // of the bytes, by HashBytes
};

// A file, and how it stood when it was read or last written.
struct KnownFile {
  std::u16string path;
  DiskState state;
};

// FNV-1a over words of eight bytes, the rest byte by byte: for telling texts apart, not for safety.
std::uint64_t HashBytes(std::string_view bytes);
// How the file at a path stands to what `known` tells of it. One of another time and the same bytes
// is the same; `known` then takes its figures. Unknown: the system did not say, as for a share that
// does not answer.
enum class FileStanding { Same, Gone, Changed, Unknown };
FileStanding StandingOf(std::u16string_view path, DiskState& known);
// The same for several: Changed where one has changed, else Unknown where one is unknown, else
// Same. One that stands where none was known has changed; one that is gone holds nothing to be
// lost.
FileStanding StandingOfAll(std::vector<KnownFile>& files);

// Reads a file and what tells its state. A file that changes meanwhile is read again, some times.
// False: it cannot be read.
bool ReadWithState(std::u16string_view path, std::string& bytes, DiskState& state);

struct SaveFile {
  std::u16string path;
  std::string bytes = {};
  std::u16string copyOf = {};  // the file that this is a copy of; empty: it is none
  platform::Lasting lasting = platform::Lasting::Folder;
  // In place of `bytes`: a text that another thread reads meanwhile.
  std::shared_ptr<const std::string> shared = {};
};

// A file that is put under another name: before anything is written, or behind the last file. Where
// that name is taken it has been done by an earlier save.
struct SaveMove {
  std::u16string from;
  std::u16string to;
  bool last = false;
};

enum class SaveAnswer { Saved, Failed, Changed };
struct SaveResult;

struct SaveJob {
  std::uint64_t ticket = 0;   // given by HandOverSave
  std::uint64_t serial = 0;   // of the program's tab; 0: a file of no tab
  std::uint32_t changes = 0;  // the tab's count of changes that the bytes hold
  bool byUser = false;        // asked for by the user, not by the autosave
  bool takesPath = false;     // behind the save, `program` is the tab's path
  std::u16string program;
  std::vector<SaveFile> files;  // in the order of writing; but for `program` all are companions
  std::vector<SaveMove> moves;
  bool checked = false;  // program and companions must still hold what they are known to hold
  DiskState known;       // of the program
  std::vector<KnownFile> beside;  // its companions
  // The program takes the place of one that has excluded code of its own, so that its companions
  // are written behind it: neither ever stands beside the other's code.
  bool replaces = false;
  // Who hears what became of it, on the window's thread; null: the listener.
  void (*told)(const SaveResult& result) = nullptr;
};

struct SaveResult {
  std::uint64_t ticket = 0;
  std::uint64_t serial = 0;
  std::uint32_t changes = 0;
  bool byUser = false;
  bool takesPath = false;
  bool checked = false;
  std::u16string program;
  SaveAnswer answer = SaveAnswer::Failed;
  DiskState now;                  // of the program, where it was saved
  std::vector<KnownFile> beside;  // the companions as they stand now; empty: as before
  std::vector<SaveMove> moved;    // what stands under another name now
  std::vector<SaveMove> copied;   // what has a copy under another name now
  std::vector<SaveMove> left;     // what had to go behind the save and could not be moved
  void (*told)(const SaveResult& result) = nullptr;
};

// Starts the worker if it is idle. Replaces a waiting job of the same program: `byUser` stays set
// if either had it, `checked` only if both had it. Where no thread can be started the files are
// written before the call returns. Answers the job's ticket.
std::uint64_t HandOverSave(SaveJob job);
// A result that is there already is told within HandOverSave, else by kMessageSaved.
void SetSaveListener(void (*told)(const SaveResult& result));
bool SavesUnderWay();
// Whether this program is being written, or waits for it.
bool IsBeingSaved(std::u16string_view program);
// Waits until all is written and told, with words on the status line. False: the disk has not
// answered for 30 s.
bool WaitForSaves();
// The same for the saves of this file and of the tab with this serial alone; 0: of no tab.
bool WaitForSavesOf(std::u16string_view program, std::uint64_t serial);

void RegisterSaver();
void ResetSaver();

}  // namespace morva
