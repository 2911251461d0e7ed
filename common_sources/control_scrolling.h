/// Scrolls the tree, list or edit field under the mouse pointer. Main thread.
#ifndef COMMON_SOURCES_CONTROL_SCROLLING_H
#define COMMON_SOURCES_CONTROL_SCROLLING_H

/// Scrolls by raw cap values and waits, the longer the less the cap is deflected. False, and nothing done,
/// when the window under the pointer cannot be scrolled.
bool scrollControlUnderPointer(int x, int y, int z);

#endif
