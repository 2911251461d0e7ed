/// The registry of the Windows functions' faults.
#include "operations.h"

namespace standin::windows {

/// Made at the first use: operations of other files register before this file's statics exist.
FaultRegistry& faults() {
  static auto* const registry = new FaultRegistry;
  return *registry;
}

}  // namespace standin::windows
