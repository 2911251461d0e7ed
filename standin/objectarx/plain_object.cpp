// What every object of the host does that does nothing else. It needs nothing else of the host.
#include "reserved_slots.h"

#include "rxobject.h"

#include <cstdio>
#if defined(_WIN32)
#include <process.h>
#else
#include <unistd.h>
#endif

AcRxObject::AcRxObject() = default;

AcRxObject* AcRxObject::clone() const {
  return nullptr;
}

Acad::ErrorStatus AcRxObject::copyFrom(const AcRxObject* /*otherP*/) {
  return Acad::eNotApplicable;
}

Adesk::Boolean AcRxObject::isEqualTo(const AcRxObject* otherP) const {
  return otherP == this;
}

AcRx::Ordering AcRxObject::comparedTo(const AcRxObject* otherP) const {
  return otherP == this ? AcRx::kEqual : AcRx::kNotOrderable;
}

AcRxObject* AcRxObject::subQueryX(const AcRxClass* /*classP*/) const {
  return nullptr;
}

void standinReservedSlotCalled(const char* className, int slot) {
  std::fprintf(stderr, "The host has no function in slot %d of %s: the run ends.\n", slot, className);
  std::fflush(stderr);
  // Not exit(): destructors of a module that called the wrong slot must not run.
  _exit(3);
}
