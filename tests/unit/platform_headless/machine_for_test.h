// A fresh machine for every test and a listener that writes down what it hears.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "platform/events.h"
#include "platform/headless/headless.h"

namespace headless_test {

inline std::vector<std::string> heard;
inline bool takeKeys = false;

inline void HearCommand(int id, int notification) {
  heard.push_back("command " + std::to_string(id) + " " + std::to_string(notification));
}
inline void HearSelection(int id) { heard.push_back("selection " + std::to_string(id)); }
inline bool HearKey(int id, const platform::KeyEvent& key) {
  heard.push_back("key " + std::to_string(id) + " " + std::to_string(key.key));
  return takeKeys;
}
inline void HearTyped(int id, char16_t c) {
  heard.push_back("typed " + std::to_string(id) + " " + std::to_string(static_cast<int>(c)));
}
inline void HearTimer(int, int timer) { heard.push_back("timer " + std::to_string(timer)); }
inline void HearPost(std::uint32_t message, std::uint64_t first, std::uint64_t) {
  heard.push_back("post " + std::to_string(message) + " " + std::to_string(first));
}
inline void HearFocus(int id, bool gained) {
  heard.push_back((gained ? "gained " : "lost ") + std::to_string(id));
}

class HeadlessTest : public testing::Test {
 protected:
  void SetUp() override {
    home_ = std::filesystem::temp_directory_path() /
            ("headless_" + std::to_string(getpid()) + "_" +
             testing::UnitTest::GetInstance()->current_test_info()->name());
    std::filesystem::create_directories(home_);
    headless::Reset(home_.u16string());
    heard.clear();
    takeKeys = false;
    events_ = platform::Events();
    events_.command = HearCommand;
    events_.key = HearKey;
    events_.typed = HearTyped;
    events_.timer = HearTimer;
    events_.posted = HearPost;
    platform::ListenTo(&events_);
  }
  void TearDown() override {
    headless::Reset(home_.u16string());
    std::filesystem::remove_all(home_);
  }

  std::filesystem::path home_;
  platform::Events events_;
};

}  // namespace headless_test
