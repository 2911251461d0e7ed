/// `workbench live`: the module in real time before a page in the browser.
///
/// The host loop runs on the main thread, in the order of a replay and on the same clock, which a pacer keeps
/// at the pace of the wall. So whatever is done has a time of the session, and the session that is saved
/// plays to exactly the same views and entities.
#ifndef WORKBENCH_RUN_LIVE_H
#define WORKBENCH_RUN_LIVE_H

#include "workbench/options.h"

#include <ostream>

namespace workbench {

/// Runs until the user interrupts the program. Returns the exit status: that of a clean run, or of one in
/// which a rule was broken. Throws InputError. Main thread.
int runLive(const LiveOptions& options, std::ostream& out, std::ostream& err);

}  // namespace workbench

#endif
