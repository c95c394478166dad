#include "documents/document_commands.h"

#include "app/command_ids.h"

namespace morva {

namespace {

constexpr Command kCommands[] = {
    // The question where code goes. The captions say all.
    {kIdDestinationInsert, u"Insert / update code"},
    {kIdDestinationCancel, u"Cancel"},
};

}  // namespace

std::span<const Command> DocumentCommands() { return kCommands; }

}  // namespace morva
