#include "dnc/dnc_commands.h"

#include "app/command_ids.h"
#include "dnc/transfer_show.h"
#include "dnc/transfer_worker.h"

namespace morva {

namespace {

const char16_t* Busy(int) { return KeysAreDim() ? kAlreadyActive : nullptr; }

constexpr Command kCommands[] = {
    {.id = kIdSend, .words = u"SEND", .help = u"Send the program to the control", .barred = Busy},
    {.id = kIdReceive,
     .words = u"RECEIVE",
     .help = u"Receive a program from the control",
     .barred = Busy},
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
