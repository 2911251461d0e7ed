/// Changes of the module's settings while it runs: the user changes the file while the module is not loaded,
/// because the module writes it when it is unloaded. Main thread, while the host is idle.
#ifndef WORKBENCH_RELOADING_H
#define WORKBENCH_RELOADING_H

#include "workbench/running/module_run.h"
#include "workbench/sessions/session.h"

#include <filesystem>
#include <functional>
#include <utility>
#include <vector>

namespace workbench {

class Reloading {
 public:
  /// The arguments must outlive this. `loaded` is called whenever the module has been loaded again.
  Reloading(
      Module& module, ModuleRun& run, std::filesystem::path settingsFile,
      std::function<void()> loaded = [] {})
      : mModule(module), mRun(run), mSettingsFile(std::move(settingsFile)), mLoaded(std::move(loaded)) {}

  /// Keeps the change for the next load().
  void change(const ChangeSetting& change) { mChanges.push_back(change); }
  /// Unloads the module, makes the changes and loads it again. Throws InputError when the file has no such
  /// setting; the module is loaded again all the same.
  void load();

 private:
  void writeChanges();

  Module& mModule;
  ModuleRun& mRun;
  std::filesystem::path mSettingsFile;
  std::function<void()> mLoaded;
  std::vector<ChangeSetting> mChanges;
};

}  // namespace workbench

#endif
