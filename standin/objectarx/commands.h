/// The host's own commands. Main thread only, and not while the host's lock is held.
#ifndef STANDIN_COMMANDS_H
#define STANDIN_COMMANDS_H

#include "command_line.h"

#include <memory>
#include <string>

namespace standin::host {

struct BuiltIn {
  const wchar_t* name;
  const wchar_t* alias;  ///< null for none
  bool isTransparent;    ///< may interrupt another command
  std::unique_ptr<ActiveCommand> (*make)();
};

/// The command of that name or alias, in any case; null when there is none.
const BuiltIn* findBuiltIn(const std::wstring& name);

/// A keyword without the underscore that says it is not in a local language, in capitals.
std::wstring keyword(const std::wstring& input);

std::unique_ptr<ActiveCommand> makeViewCommand();
std::unique_ptr<ActiveCommand> makeZoomCommand();
std::unique_ptr<ActiveCommand> makeLineCommand();
std::unique_ptr<ActiveCommand> makeCircleCommand();
std::unique_ptr<ActiveCommand> makeEraseCommand();
std::unique_ptr<ActiveCommand> makeSelectCommand();
std::unique_ptr<ActiveCommand> makeTileModeCommand();
std::unique_ptr<ActiveCommand> makeCvportCommand();
std::unique_ptr<ActiveCommand> makeNetloadCommand();

/// Carries out a command that a module has added; false when there is none of that name.
bool runRegisteredCommand(const std::wstring& name);

}  // namespace standin::host

#endif
