/// The module from its init message to its unload message, as the host sends them, with a check that it
/// leaves nothing behind. Main thread only.
#ifndef WORKBENCH_MODULE_RUN_H
#define WORKBENCH_MODULE_RUN_H

#include "workbench/platform/module_loader.h"

#include <cstdint>
#include <string>
#include <vector>

namespace workbench {

class ModuleRun {
 public:
  /// The module is loaded. What goes wrong is added to `problems`, one line each. Both must outlive this.
  ModuleRun(Module& module, std::vector<std::string>& problems) : mModule(module), mProblems(problems) {}

  /// Sends what the host sends to a module that is loaded while a document is open.
  void begin();
  /// Sends the unload messages.
  void end();
  /// After end(). Frees the library; a thread that still runs in it would crash, so the library stays loaded
  /// then. False when it could not be freed.
  bool unload();

 private:
  void send(AcRx::AppMsgCode message, const std::string& name);
  void addProblem(std::uint64_t count, const char* what);

  Module& mModule;
  std::vector<std::string>& mProblems;
};

}  // namespace workbench

#endif
