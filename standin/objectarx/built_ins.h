/// Makes the host's own commands, one function each. Main thread only, and not while the host's lock is held.
#ifndef STANDIN_BUILT_INS_H
#define STANDIN_BUILT_INS_H

#include "active_command.h"

#include <memory>

namespace standin::host {

/// Null for a command that is done at once.
using CommandMaker = std::unique_ptr<ActiveCommand>();

CommandMaker makeViewCommand;
CommandMaker makeZoomCommand;
CommandMaker makeLineCommand;
CommandMaker makeCircleCommand;
CommandMaker makeEraseCommand;
CommandMaker makeSelectCommand;
CommandMaker makeTileModeCommand;
CommandMaker makeCvportCommand;
CommandMaker makeNetloadCommand;

}  // namespace standin::host

#endif
