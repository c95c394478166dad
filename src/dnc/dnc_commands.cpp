#include "dnc/dnc_commands.h"

#include "app/command_ids.h"

namespace morva {

namespace {

constexpr char16_t kSetupPanel[] = u"DNC setup panel";

constexpr Command kCommands[] = {
    {kIdSend, u"SEND", u"Send the program to the control"},
    {kIdReceive, u"RECEIVE", u"Receive a program from the control"},
    {.id = kIdAbortTransfer,
     .words = u"ABORT",
     .help = u"Abort the transfer that runs",
     .name = u"Abort transfer"},
    {.id = kIdSetup, .words = u"SETUP", .help = u"DNC setup", .pending = kSetupPanel},
    {.id = kIdSetupSecond, .pending = kSetupPanel},
    {.id = kIdOpenDncSetup, .words = u"OPEN DNC SETUP WIZARD", .pending = kSetupPanel},
    {.id = kIdMachine,
     .words = u"Machine: Haas VF-3  \u25BE",
     .help = u"DNC setup of this machine",
     .pending = kSetupPanel},
};

}  // namespace

std::span<const Command> DncCommands() { return kCommands; }

}  // namespace morva
