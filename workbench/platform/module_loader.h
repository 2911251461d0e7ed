/// The module under test as the host meets it: a library loaded at run time, reached by its two exports only.
/// Main thread only.
#ifndef WORKBENCH_MODULE_LOADER_H
#define WORKBENCH_MODULE_LOADER_H

#include "rxdefs.h"

#include <cassert>
#include <filesystem>
#include <string>

namespace workbench {

class Module {
 public:
  /// Loads the library by `loaded`, another path of `file`. Throws InputError that names `file` when there is
  /// no such file, when it cannot be loaded, lacks one of its exports or is built for another release of the
  /// host.
  Module(const std::filesystem::path& file, const std::filesystem::path& loaded);
  explicit Module(const std::filesystem::path& file) : Module(file, file) {}
  /// Frees the library if it is still loaded.
  ~Module();
  Module(const Module&) = delete;
  Module& operator=(const Module&) = delete;

  /// Calls the entry point. Exceptions of the module reach the caller.
  AcRx::AppRetCode send(AcRx::AppMsgCode message) {
    assert(mEntryPoint != nullptr && mHandle != nullptr && "a message to a module that is not loaded");
    // The packet is the host's own; the module only passes it back to the host.
    return mEntryPoint(message, this);
  }

  /// Frees the library. False when it is still mapped because something else refers to it.
  bool unload();

  /// Loads the library again after unload(). Throws as the constructor does.
  void load();

  /// Leaves the library in memory for the rest of the process, for a thread that runs in it.
  void keep() { mHandle = nullptr; }

 private:
  using EntryPoint = AcRx::AppRetCode (*)(AcRx::AppMsgCode, void*);

  std::string mName;  ///< of the file, for messages
  std::filesystem::path mFile;
  std::string mPath;  ///< by which the system loads it
  void* mHandle = nullptr;
  EntryPoint mEntryPoint = nullptr;
};

/// Folder of the running program.
std::filesystem::path executableFolder();

}  // namespace workbench

#endif
