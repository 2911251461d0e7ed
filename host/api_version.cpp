// With the real SDK this export comes from its library; the other builds provide it.
#include "dbxEntryPoint.h"

namespace {
constexpr int kMajorRelease = 19;
constexpr int kMinorRelease = 0;
}  // namespace

/// Release of the host's interface that the module is built for: major in the high 16 bits, minor in the low.
extern "C" STANDIN_MODULE_EXPORT int acrxGetApiVersion() {
  return kMajorRelease << 16 | kMinorRelease;
}
