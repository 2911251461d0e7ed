// TILEMODE, CVPORT and NETLOAD.
#include "built_ins.h"
#include "listener.h"
#include "printing.h"
#include "text.h"
#include "view_actions.h"

#include <exception>
#include <filesystem>
#include <utility>

namespace standin::host {
namespace {

class VariableCommand final : public ActiveCommand {
 public:
  VariableCommand(std::wstring name, std::wstring refusal)
      : mName(std::move(name)), mRefusal(std::move(refusal)) {}

  std::wstring prompt() const override { return L"Enter new value for " + mName + L":"; }

  Next input(const std::wstring& text) override {
    if (text.empty()) return Next::kDone;
    int value = 0;
    if (parseInteger(text, value) && changeVariable(mName, value) == VariableChange::kDone)
      return Next::kDone;
    // The command asks again, as the host's does; a lone Enter keeps the value.
    hostPrint(mRefusal);
    return Next::kMore;
  }

 private:
  std::wstring mName;
  std::wstring mRefusal;
};

/// False also for a name that the system's files cannot have.
bool isFileThere(const std::wstring& name) {
  try {
    return std::filesystem::exists(std::filesystem::path(name));
    // A name that cannot be converted throws as well, and not only a filesystem_error.
  } catch (const std::exception&) {
    return false;
  }
}

/// Assemblies are not run here; the line names the assembly, and the listener may run it.
class NetloadCommand final : public ActiveCommand {
 public:
  std::wstring prompt() const override { return L"Assembly file name:"; }

  Next input(const std::wstring& text) override {
    if (text.empty()) return Next::kDone;
    const bool isThere = isFileThere(text);
    hostPrint(isThere ? L"Assembly \"" + text + L"\" loaded." : L"Cannot load assembly \"" + text + L"\".");
    if (isThere) notify(&Listener::assemblyLoaded, text);
    return Next::kDone;
  }
};

}  // namespace

std::unique_ptr<ActiveCommand> makeTileModeCommand() {
  return std::make_unique<VariableCommand>(L"TILEMODE", L"Requires 0 or 1 only.");
}
std::unique_ptr<ActiveCommand> makeCvportCommand() {
  return std::make_unique<VariableCommand>(L"CVPORT", L"** No such viewport **");
}
std::unique_ptr<ActiveCommand> makeNetloadCommand() {
  return std::make_unique<NetloadCommand>();
}

}  // namespace standin::host
