/// The sources of the live page, embedded at build time from the folder `page/live`.
#ifndef WORKBENCH_LIVE_PAGE_H
#define WORKBENCH_LIVE_PAGE_H

namespace workbench {

/// The page's frame; `@@STYLE@@` and `@@SCRIPT@@` mark where these go.
extern const char* const kLiveFrame;
extern const char* const kLiveStyle;
extern const char* const kLiveScript;

}  // namespace workbench

#endif
