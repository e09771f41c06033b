// ICommandHandler: the interface of every link in the chain that commands run down. command_state
// asks whether the handler would carry a command out (and enables it if so); do_command does it.
#pragma once

namespace Tavi {

class Command;

class ICommandHandler
{
public:
    // True when the handler has dealt with the command.
    virtual bool do_command(Command *command) = 0;
    // True when the handler knows the command; it then calls enable on it. A handler that does not
    // know it answers false and leaves it untouched.
    virtual bool command_state(Command *command) = 0;
    virtual ~ICommandHandler() = default;
};

}  // namespace Tavi
