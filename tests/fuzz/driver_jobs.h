// What the targets that speak the driver's language share: a home folder and jobs by bytes.
#pragma once

#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace fuzz {

// In memory where the system has such a folder: every save of the program is flushed.
inline std::filesystem::path NewHome() {
  const std::filesystem::path memory = "/dev/shm";
  const bool there = std::filesystem::is_directory(memory);
  const std::filesystem::path parent = there ? memory : std::filesystem::temp_directory_path();
  std::string name = (parent / "morva-fuzz-XXXXXX").string();
  if (!mkdtemp(name.data())) std::abort();
  return name;
}

class Bytes {
 public:
  Bytes(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}
  bool Any() const { return at_ < size_; }
  std::size_t Next() { return Any() ? data_[at_++] : 0; }

 private:
  const std::uint8_t* data_;
  std::size_t size_;
  std::size_t at_ = 0;
};

// The phrase that the next byte picks. `put` writes what stands for a character of it and takes
// further bytes; it answers false for a character that means itself.
template <std::size_t Count, typename Put>
std::string PickedLine(Bytes& bytes, const char* const (&phrases)[Count], Put put) {
  std::string line;
  for (const char* c = phrases[bytes.Next() % Count]; *c; ++c) {
    if (!put(*c, line)) line.push_back(*c);
  }
  return line;
}

}  // namespace fuzz
