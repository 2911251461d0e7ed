// The system registry and what the module finds in it: the loader of modules and the stack of commands.
#include "call_record.h"
#include "operation.h"
#include "state.h"
#include "text.h"

#include "rxdlinkr.h"

#include <algorithm>
#include <cwchar>
#include <cwctype>

using namespace standin::host;

namespace {

const Operation kSysRegistry("acrxSysRegistry", Result::kTellsNothing);
const Operation kAt("AcRxDictionary::at", Result::kTellsFailure);
const Operation kUnlock("AcRxDynamicLinker::unlockApplication", Result::kTellsFailure);
const Operation kMdiAware("AcRxDynamicLinker::registerAppMDIAware", Result::kTellsFailure);
const Operation kAddCommand("AcEdCommandStack::addCommand", Result::kTellsFailure);
const Operation kRemoveCommand("AcEdCommandStack::removeCmd", Result::kTellsFailure);

class DynamicLinker final : public AcRxDynamicLinker {
 public:
  bool unlockApplication(void* /*appId*/) const override { return !Call(kUnlock).isToFail(); }
  bool registerAppMDIAware(void* /*appId*/) const override { return !Call(kMdiAware).isToFail(); }
};

/// A command is identified by group and global name together: two modules may use one name.
auto findCommand(const ACHAR* group, const ACHAR* globalName) {
  auto& commands = run().commands;
  return std::find_if(commands.begin(), commands.end(), [&](const RegisteredCommand& command) {
    return isSameName(command.group, group) && isSameName(command.globalName, globalName);
  });
}

class CommandStack final : public AcEdCommandStack {
 public:
  Acad::ErrorStatus addCommand(const ACHAR* group, const ACHAR* globalName, const ACHAR* localName,
                               Adesk::Int32 flags, AcRxFunctionPtr function, AcEdUIContext* contextP,
                               int fcode, HINSTANCE /*resource*/, AcEdCommand** commandPP) override {
    const Call call(kAddCommand);
    callRecord().commandFlags = flags;
    callRecord().hasCommandContext = contextP != nullptr;
    callRecord().commandResource = fcode;
    // What the host returns for the likeliest failure: the module was loaded twice.
    if (call.isToFail()) return Acad::eDuplicateKey;
    if (group == nullptr || globalName == nullptr || localName == nullptr || function == nullptr)
      return Acad::eInvalidInput;
    if (findCommand(group, globalName) != run().commands.end()) return Acad::eDuplicateKey;
    callRecord().commands.push_back(std::wstring(group) + L" " + globalName + L" " + localName);
    run().commands.push_back({group, globalName, localName, function});
    // The stand-in has no command objects.
    if (commandPP != nullptr) *commandPP = nullptr;
    return Acad::eOk;
  }

  Acad::ErrorStatus removeCmd(const ACHAR* group, const ACHAR* globalName) override {
    const Call call(kRemoveCommand);
    if (call.isToFail()) return Acad::eKeyNotFound;
    if (group == nullptr || globalName == nullptr) return Acad::eInvalidInput;
    const auto found = findCommand(group, globalName);
    if (found == run().commands.end()) return Acad::eKeyNotFound;
    run().commands.erase(found);
    return Acad::eOk;
  }
};

class SystemRegistry final : public AcRxDictionary {
 public:
  AcRxObject* at(const ACHAR* key) const override {
    if (Call(kAt).isToFail() || key == nullptr) return nullptr;
    static DynamicLinker linker;
    static CommandStack stack;
    if (std::wcscmp(key, ACRX_DYNAMIC_LINKER) == 0) return &linker;
    if (std::wcscmp(key, L"ACAD_REGISTERED_COMMANDS") == 0) return &stack;
    return nullptr;
  }
  AcRxObject* at(Adesk::UInt32 /*id*/) const override { return nullptr; }
};

}  // namespace

AcRxDictionary* acrxSysRegistry() {
  const Call call(kSysRegistry);
  static SystemRegistry registry;
  return &registry;
}
