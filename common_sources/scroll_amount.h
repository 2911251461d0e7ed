/// How a deflection of the cap scrolls a control: pure arithmetic and the table of window classes.
#ifndef COMMON_SOURCES_SCROLL_AMOUNT_H
#define COMMON_SOURCES_SCROLL_AMOUNT_H

#include <string_view>

enum class ScrollKind { kNone, kScrollBar, kWheel };

/// How a window of this class is scrolled; the class name is in the ANSI code page. A part of the name is
/// enough for the controls with scroll bars, since tool kits derive classes from them. A Qt widget is
/// recognised by its whole name.
ScrollKind scrollKind(std::string_view className);

/// Amounts in raw cap values: positive scrolls down or to the right.
struct ScrollAmount {
  int horizontal;
  int vertical;
};

/// Pushing the cap in or out scrolls like tilting it forwards or backwards, whichever is stronger.
ScrollAmount scrollAmount(int x, int y, int z);

/// The larger of both amounts' magnitudes.
int strength(const ScrollAmount& amount);

/// Range, page and position of a control's scroll bar, as the system reports them.
struct ScrollRange {
  int minimum;
  int maximum;
  unsigned page;
  int position;
};

bool isUsable(const ScrollRange& range);

/// Line messages of one pass: 1 to 10, more in long lists.
int lineCount(const ScrollRange& range);

/// True when there is something left to scroll to in the direction of `amount`.
bool isScrollable(const ScrollRange& range, int amount);

/// Milliseconds to wait after a pass, at least 1: the further the cap is pushed, the shorter.
int scrollWaitMs(const ScrollAmount& amount);

/// Milliseconds to wait in addition in a short list, so that it does not run away.
int shortListWaitMs(const ScrollRange& range);

#endif
