#include "dnc/dnc_commands.h"

#include "app/command_ids.h"

namespace morva {

namespace {

constexpr Command kCommands[] = {
    {kIdSend, u"SEND", u"Send the program to the control"},
    {kIdReceive, u"RECEIVE", u"Receive a program from the control"},
    {.id = kIdAbortTransfer,
     .words = u"ABORT",
     .help = u"Abort the transfer that runs",
     .name = u"Abort transfer"},
    {kIdSetup, u"SETUP", u"DNC setup"},
    {kIdSetupSecond},
    {kIdOpenDncSetup, u"OPEN DNC SETUP WIZARD", u"Choose port and line settings"},
    {kIdMachine, u"Machine: Haas VF-3  \u25BE", u"DNC setup of this machine"},
};

}  // namespace

std::span<const Command> DncCommands() { return kCommands; }

}  // namespace morva
