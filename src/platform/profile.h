// Sections and keys of the settings file.
//
// UTF-8 without a mark, CR LF, "[Section]" and "Key=Value". Reading ignores the case of A to
// Z in section and key, trims the outer blanks of a value and one pair of double quotes, and
// takes LF for a line end. Unknown sections, keys and other lines stay as they are.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace platform {

// Where the settings file is at this moment: MORVA.ini in the folder of the executable. Where that
// folder cannot be written it is MORVA/MORVA.ini in the user's configuration folder. While none
// stands there the one beside the executable is read, and the first change writes all of it to
// the new place. Empty: the system tells neither place.
std::u16string ProfilePath();
// Where changes go. Nowhere: ProfilePath cannot be written either.
enum class ProfilePlace { BesideExecutable, Configuration, Nowhere };
ProfilePlace WhereProfileIsKept();
// The value, or `fallback` when file, section or key is missing.
std::u16string ReadProfile(std::u16string_view section, std::u16string_view key,
                           std::u16string_view fallback);
// Collects changes until the matching EndProfileChange, which rewrites the file once and
// atomically. Nests. Reads in between see the changes and read the file no more, so that many keys
// are best read inside the pair; without a change nothing is written.
//
// `told` hears what became of the change, once, now or when the file is written. Until then
// reading sees the change. EndProfileChange is false where it is known already that nothing was
// written; the file is then whole as it was.
using ProfileTold = void (*)(bool saved);
void BeginProfileChange();
void WriteProfile(std::u16string_view section, std::u16string_view key, std::u16string_view value);
// The bytes of a section from its header up to the next one, as they stand at this moment. Empty:
// there is none of this name, or several.
std::string ProfileSection(std::u16string_view section);
// Whether those are the bytes; false for an empty text.
bool ProfileSectionIs(std::u16string_view section, std::string_view bytes);
// Takes a whole section out.
void EraseProfileSection(std::u16string_view section);
bool EndProfileChange(ProfileTold told = nullptr);

// Who writes the file instead of EndProfileChange, and answers with ProfileWritten and the number
// of the change, now or later, on the same thread. Of the changes that wait it may leave out all
// but the newest, which holds the others. Null: EndProfileChange writes. Changes that are under
// way are forgotten. The text is read here meanwhile, and not copied for it.
using ProfileWriter = void (*)(std::u16string path, std::shared_ptr<const std::string> bytes,
                               std::uint32_t change);
void SetProfileWriter(ProfileWriter writer);
void ProfileWritten(std::uint32_t change, bool written);

// The pure halves, for tests and fuzzing.
bool FindInProfile(std::u16string_view file, std::u16string_view section, std::u16string_view key,
                   std::u16string& value);
std::u16string ChangeInProfile(std::u16string_view file, std::u16string_view section,
                               std::u16string_view key, std::u16string_view value);

}  // namespace platform
