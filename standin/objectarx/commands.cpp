/// The host's own commands by name, and the commands that modules have registered.
#include "commands.h"

#include "operation.h"
#include "state.h"
#include "text.h"

#include <algorithm>
#include <functional>

namespace standin::host {
namespace {

constexpr BuiltIn kBuiltIns[] = {
    {L"-VIEW", L"-V", true, makeViewCommand},          {L"ZOOM", L"Z", true, makeZoomCommand},
    {L"LINE", L"L", false, makeLineCommand},           {L"CIRCLE", L"C", false, makeCircleCommand},
    {L"ERASE", L"E", false, makeEraseCommand},         {L"SELECT", nullptr, false, makeSelectCommand},
    {L"TILEMODE", nullptr, true, makeTileModeCommand}, {L"CVPORT", nullptr, true, makeCvportCommand},
    {L"NETLOAD", nullptr, false, makeNetloadCommand},
};

std::function<void()> functionOf(const std::wstring& name) {
  const std::lock_guard lock(hostMutex());
  for (const RegisteredCommand& command : run().commands)
    if (isSameName(command.globalName, name) || isSameName(command.localName, name)) return command.function;
  return {};
}

void addToCommandDepth(int change) {
  const std::lock_guard lock(hostMutex());
  run().commandDepth += change;
}

}  // namespace

const BuiltIn* findBuiltIn(const std::wstring& name) {
  for (const BuiltIn& builtIn : kBuiltIns)
    if (isSameName(name, builtIn.name) || (builtIn.alias != nullptr && isSameName(name, builtIn.alias)))
      return &builtIn;
  return nullptr;
}

bool runRegisteredCommand(const std::wstring& name) {
  const std::function<void()> function = functionOf(name);
  if (function == nullptr) return false;
  // While a registered command runs, the host locks the current document for it.
  addToCommandDepth(1);
  // Without the host's lock: the command calls the host, and may wait for another thread of the module.
  try {
    function();
  } catch (...) {
    const std::lock_guard lock(hostMutex());
    breach("a command of the module", "let something be thrown into the host");
  }
  addToCommandDepth(-1);
  return true;
}

}  // namespace standin::host
