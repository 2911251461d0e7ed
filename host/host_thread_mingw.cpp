// The threads library is linked into the module and keeps two handles for each thread that has used it; it
// frees them when the thread ends. The host's thread outlives the module, so its handles would be lost at
// each unload.
#include "util/threads.h"

#include <windows.h>

/// What the library does when a thread ends.
extern "C" const PIMAGE_TLS_CALLBACK __xl_f;

namespace {

struct HostThread {
  ~HostThread() {
    // The library would wait for what a thread that was ended within it has locked.
    if (!isProcessEnding()) __xl_f(nullptr, DLL_THREAD_DETACH, nullptr);
  }
};

/// Made before all other static objects of the module, and so destroyed after them: none of them may use the
/// library any more.
[[maybe_unused]] const HostThread theHostThread __attribute__((init_priority(101)));

}  // namespace
