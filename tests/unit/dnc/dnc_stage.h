// The stage of the DNC tests: the read-outs of the top bar, the messages of the worker, and
// the log as lines.
#pragma once

#include <string>
#include <vector>

#include "dnc/serial_profile.h"
#include "dnc/transfer.h"
#include "support/stage.h"

struct DncStage : public support::Stage {
  std::vector<std::u16string> statusLines;  // as seen after each posted message

  DncStage() {
    support::MakeText(morva::kIdDncState, platform::ControlKind::Label);
    support::MakeText(morva::kIdDncPort, platform::ControlKind::Label);
    support::MakeText(morva::kIdDncBaud, platform::ControlKind::Label);
    morva::ResetSerialProfile();
    morva::ResetTransfer();
    morva::RegisterTransferCommands();
    static DncStage* current = nullptr;
    current = this;
    static const platform::Events kEvents = [] {
      platform::Events events;
      events.posted = [](std::uint32_t message, std::uint64_t first, std::uint64_t second) {
        morva::RouteMessage(message, first, second);
        current->statusLines.push_back(Status());
      };
      events.timer = [](int, int timer) {
        if (timer == morva::kTimerHeld) morva::RouteTimer(timer);
      };
      return events;
    }();
    platform::ListenTo(&kEvents);
  }
  ~DncStage() override {
    morva::ResetTransfer();
    morva::ResetSerialProfile();
  }

  void PutIni(std::string_view bytes) const { Put("bin/MORVA.ini", bytes); }
  std::string Ini() const { return Raw("bin/MORVA.ini"); }
  static std::u16string Status() { return morva::app.statusText; }
  static std::u16string State() { return TextOf(morva::kIdDncState); }

  // The lines of the output log since the last call.
  std::vector<std::u16string> Log() {
    const std::u16string all = TextOf(morva::kIdOutputLog);
    std::vector<std::u16string> lines;
    for (std::size_t end = 0; (end = all.find(u"\r\n", logRead)) != all.npos; logRead = end + 2) {
      lines.push_back(all.substr(logRead, end - logRead));
    }
    return lines;
  }
  using Lines = std::vector<std::u16string>;

 private:
  std::size_t logRead = 0;
};
