/// Finds the window that the user means by pointing at it.
#ifndef COMMON_SOURCES_WINDOW_SEARCH_H
#define COMMON_SOURCES_WINDOW_SEARCH_H

#include <windows.h>

/// The smallest visible window under a screen point; null when there is none. Main thread.
HWND smallestWindowAt(POINT point);

#endif
