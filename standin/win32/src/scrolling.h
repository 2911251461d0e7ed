/// How a control's scroll position changes with messages. Pure functions.
#ifndef STANDIN_WIN32_SCROLLING_H
#define STANDIN_WIN32_SCROLLING_H

#include "standin_desktop.h"

namespace standin::desktop {

/// The bar with its position inside its limits.
ScrollBar limited(ScrollBar bar);

/// The bar after a scroll-bar message with this code: a line moves by one, a page by a page; a code that does
/// not move changes nothing.
ScrollBar scrolledBy(const ScrollBar& bar, WORD code);

/// The bar after a turn of the wheel: three lines for each WHEEL_DELTA, up for a positive one.
ScrollBar wheeledBy(const ScrollBar& bar, int delta);

}  // namespace standin::desktop

#endif
