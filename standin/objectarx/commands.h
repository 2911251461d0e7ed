/// Finds a command by name: the host's own, or one that a module has added. Main thread only, and not while
/// the host's lock is held.
#ifndef STANDIN_COMMANDS_H
#define STANDIN_COMMANDS_H

#include "built_ins.h"

#include <string>

namespace standin::host {

struct BuiltIn {
  const wchar_t* name;
  const wchar_t* alias;  ///< null for none
  bool isTransparent;    ///< may interrupt another command
  CommandMaker* make;
};

/// The command of that name or alias, in any case; null when there is none.
const BuiltIn* findBuiltIn(const std::wstring& name);

/// Carries out a command that a module has added; false when there is none of that name.
bool runRegisteredCommand(const std::wstring& name);

}  // namespace standin::host

#endif
