/// Fills a virtual table up to the slots that the module calls: Microsoft's ABI finds a virtual function by
/// its number. The numbers count from 0 with the base's first function. A reserved slot is never called; one
/// that is ends the run.
#ifndef STANDIN_RESERVED_SLOTS_H
#define STANDIN_RESERVED_SLOTS_H

#include "standin_objectarx_api.h"

/// Names the slot on standard error and ends the process.
[[noreturn]] STANDIN_OBJECTARX_API void standinReservedSlotCalled(const char* className, int slot);

#define STANDIN_SLOT(CLASS, NUMBER)            \
  virtual void reservedSlot##NUMBER() {        \
    standinReservedSlotCalled(#CLASS, NUMBER); \
  }
#define STANDIN_SLOTS_2(CLASS, A, B) STANDIN_SLOT(CLASS, A) STANDIN_SLOT(CLASS, B)
#define STANDIN_SLOTS_3(CLASS, A, B, C) STANDIN_SLOTS_2(CLASS, A, B) STANDIN_SLOT(CLASS, C)
#define STANDIN_SLOTS_4(CLASS, A, B, C, D) STANDIN_SLOTS_2(CLASS, A, B) STANDIN_SLOTS_2(CLASS, C, D)
#define STANDIN_SLOTS_5(CLASS, A, B, C, D, E) STANDIN_SLOTS_4(CLASS, A, B, C, D) STANDIN_SLOT(CLASS, E)
/// The ten slots whose numbers begin with TENS.
#define STANDIN_SLOTS_10(CLASS, TENS)                                 \
  STANDIN_SLOTS_5(CLASS, TENS##0, TENS##1, TENS##2, TENS##3, TENS##4) \
  STANDIN_SLOTS_5(CLASS, TENS##5, TENS##6, TENS##7, TENS##8, TENS##9)

#endif
