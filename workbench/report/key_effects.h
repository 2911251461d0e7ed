/// What each key of a session did: the texts it sent to the command line and the view after it.
#ifndef WORKBENCH_KEY_EFFECTS_H
#define WORKBENCH_KEY_EFFECTS_H

#include "workbench/report/report.h"
#include "workbench/running/recording.h"
#include "workbench/sessions/session.h"

#include <vector>

namespace workbench {

/// One entry for each time at which keys were pressed. What happened until the next key, or until the user
/// did something, counts as its effect.
std::vector<ReportKey> keyEffects(const Session& session, const Recording& recording,
                                  const std::vector<ReportFunction>& functions);

/// A row's view in words: "from the front, 180 x 112".
std::string viewInWords(const TrajectoryRow& row);

}  // namespace workbench

#endif
