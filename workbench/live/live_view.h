/// What is on the screen, as the pages get it: JSON texts with the keys that docs/live.md lists. Main thread
/// only.
#ifndef WORKBENCH_LIVE_VIEW_H
#define WORKBENCH_LIVE_VIEW_H

#include <nlohmann/json.hpp>

#include <cstdint>
#include <string>

namespace workbench {

/// Camera, cap, desktop and the rest of what changes while the cap is held. Equal states give equal values.
nlohmann::json pictureJson();

/// What changes when the user or the module does something: documents, tab, viewports, selection.
nlohmann::json hostJson();

}  // namespace workbench

#endif
