// A machine of one input on the headless platform, and the bytes of its settings file.
#pragma once

#include <stdlib.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "platform/file.h"
#include "platform/headless/headless.h"

namespace fuzz {

// In memory where the system has such a folder. Taken away with the input, because the process of
// the inputs ends without clearing up.
struct Home {
  std::filesystem::path path;
  std::string file;  // MORVA.ini
  Home() {
    namespace fs = std::filesystem;
    const bool memory = fs::is_directory("/dev/shm");
    const fs::path parent = memory ? fs::path("/dev/shm") : fs::temp_directory_path();
    std::string name = (parent / "morva-fuzz-XXXXXX").string();
    if (!mkdtemp(name.data())) std::abort();
    path = name;
    file = (path / "bin" / "MORVA.ini").string();
    headless::Reset(platform::FromUtf8(name));
  }
  ~Home() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
  }
};

inline void Write(const std::string& file, const std::uint8_t* data, std::size_t size) {
  std::ofstream out(file, std::ios::binary | std::ios::trunc);
  out.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
}

inline std::string Bytes(const std::string& file) {
  std::ifstream in(file, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), {});
}

}  // namespace fuzz
