// A library's record beside its section of the settings file: what stands there as it was last
// written is passed over, so that a change of one record does not write the texts of all.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "documents/saver.h"
#include "platform/profile.h"

namespace morva {

// A record as it was last written, and what its section held behind that. The section is compared
// byte by byte, so that one which somebody else has touched, or which was never written, is written
// as ever.
template <class Record>
struct SavedSection {
  Record record;
  std::string bytes;        // empty: nothing is known
  std::uint64_t state = 0;  // HashBytes of what tells the record from others in the file
};

// How a kind of record is written.
template <class Record>
struct RecordWriter {
  void (*write)(const std::u16string& section, const Record& record);  // its keys
  std::string (*stateOf)(const Record& record);  // equal for what the file cannot tell apart
};

// Within a change of the settings file: writes the record, and answers its state.
template <class Record>
std::uint64_t SaveSection(SavedSection<Record>& saved, const std::u16string& section,
                          const Record& record, const RecordWriter<Record>& writer) {
  if (!saved.bytes.empty() && saved.record == record &&
      platform::ProfileSectionIs(section, saved.bytes)) {
    return saved.state;
  }
  writer.write(section, record);
  saved.record = record;
  saved.bytes = platform::ProfileSection(section);
  saved.state = HashBytes(writer.stateOf(record));
  return saved.state;
}

// The state of a library is those of its records, one behind the other.
inline void AddState(std::string& states, std::uint64_t state) {
  for (int i = 0; i < 8; ++i) states += static_cast<char>(state >> (8 * i));
}

}  // namespace morva
