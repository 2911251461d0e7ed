/// How much a session may ask for.
#ifndef WORKBENCH_SESSION_LIMITS_H
#define WORKBENCH_SESSION_LIMITS_H

#include "workbench/sessions/session.h"

#include <cstdint>

namespace workbench {

/// Drawing calls for which the cap may be deflected in all. Each of them makes a row of the trajectory, which
/// is kept until the end of the run: a line of a session could ask for more memory than there is.
constexpr std::int64_t kMostPasses = 2000000;

/// Throws InputError at the motion that lasts beyond kMostPasses drawing calls of `frameMs`.
void checkMotion(const Session& session, std::uint32_t frameMs);

}  // namespace workbench

#endif
