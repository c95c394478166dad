// The workbench on the headless platform in a folder of its own, for benchmarks.
#pragma once

#include <stdlib.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "platform/file.h"
#include "platform/headless/headless.h"
#include "shell/start_up.h"

// From its start to the end of its life; one at a time. Its folder is made below `parent`.
struct Workbench {
  std::filesystem::path home;
  explicit Workbench(const std::filesystem::path& parent = std::filesystem::temp_directory_path()) {
    std::string name = (parent / "morva-bench-XXXXXX").string();
    if (!mkdtemp(name.data())) std::abort();
    home = name;
    headless::Reset(platform::FromUtf8(name));
    if (morva::StartApplication() != 0) std::abort();
    headless::Advance(200);
  }
  ~Workbench() {
    morva::ResetApplication();
    std::error_code ignored;
    std::filesystem::remove_all(home, ignored);
  }
  Workbench(const Workbench&) = delete;
  Workbench& operator=(const Workbench&) = delete;
};
