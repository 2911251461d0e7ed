/// Open drawings, their locks and the text sent to their command line. Main thread only.
#ifndef STANDIN_ACDOCMAN_H
#define STANDIN_ACDOCMAN_H

#include "reserved_slots.h"

#include "acadstrc.h"
#include "adesk.h"
#include "rxclass.h"
#include "rxobject.h"

struct AcAp {
  enum DocLockMode {
    kNone = 0x00,
    kAutoWrite = 0x01,
    kNotLocked = 0x02,
    kWrite = 0x04,
    kProtectedAutoWrite = 0x14,
    kRead = 0x20,
    kXWrite = 0x40
  };
};

/// An open drawing.
class STANDIN_OBJECTARX_CLASS AcApDocument : public AcRxObject {};

/// While it is registered, the host calls it for what happens to documents: by slot, of which it has twenty.
class STANDIN_NO_TABLE STANDIN_OBJECTARX_CLASS AcApDocManagerReactor : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcApDocManagerReactor)
  AcApDocManagerReactor() = default;

  STANDIN_OBJECTARX_MEMBER virtual void documentCreateStarted(AcApDocument* documentP);
  STANDIN_OBJECTARX_MEMBER virtual void documentCreated(AcApDocument* documentP);
  STANDIN_OBJECTARX_MEMBER virtual void documentToBeDestroyed(AcApDocument* documentP);
  STANDIN_OBJECTARX_MEMBER virtual void documentDestroyed(const ACHAR* fileName);
  STANDIN_OBJECTARX_MEMBER virtual void documentCreateCanceled(AcApDocument* documentP);
  STANDIN_OBJECTARX_MEMBER virtual void documentLockModeWillChange(AcApDocument* documentP,
                                                                   AcAp::DocLockMode myCurrentMode,
                                                                   AcAp::DocLockMode myNewMode,
                                                                   AcAp::DocLockMode currentMode,
                                                                   const ACHAR* command);
  STANDIN_OBJECTARX_MEMBER virtual void documentLockModeChangeVetoed(AcApDocument* documentP,
                                                                     const ACHAR* command);
  STANDIN_OBJECTARX_MEMBER virtual void documentLockModeChanged(AcApDocument* documentP,
                                                                AcAp::DocLockMode myPreviousMode,
                                                                AcAp::DocLockMode myCurrentMode,
                                                                AcAp::DocLockMode currentMode,
                                                                const ACHAR* command);
  STANDIN_OBJECTARX_MEMBER virtual void documentBecameCurrent(AcApDocument* documentP);
  STANDIN_OBJECTARX_MEMBER virtual void documentToBeActivated(AcApDocument* documentP);
  STANDIN_OBJECTARX_MEMBER virtual void documentToBeDeactivated(AcApDocument* documentP);
  STANDIN_OBJECTARX_MEMBER virtual void documentActivationModified(bool isActivationOn);
  STANDIN_OBJECTARX_MEMBER virtual void documentActivated(AcApDocument* documentP);

 protected:
  /// What a reactor leaves here when it forbids a lock; it keeps the place that the host expects it at.
  signed char mVeto = 0;
};

class STANDIN_OBJECTARX_CLASS AcApDocManager : public AcRxObject {
 public:
  /// Slot 7. Null when no drawing is open.
  virtual AcApDocument* curDocument() const = 0;
  STANDIN_SLOTS_3(AcApDocManager, 8, 9, 10)
  /// Slots 11 and 12. Locks nest; each needs its unlock. eNoDocument for a document that is not open,
  /// eLockViolation on a conflict.
  virtual Acad::ErrorStatus lockDocument(AcApDocument* documentP, AcAp::DocLockMode mode = AcAp::kWrite,
                                         const ACHAR* globalCommand = nullptr,
                                         const ACHAR* localCommand = nullptr, bool prompt = true) = 0;
  virtual Acad::ErrorStatus unlockDocument(AcApDocument* documentP) = 0;
  STANDIN_SLOT(AcApDocManager, 13)
  /// Slots 14 and 15.
  virtual void addReactor(AcApDocManagerReactor* reactorP) = 0;
  virtual void removeReactor(AcApDocManagerReactor* reactorP) = 0;
  STANDIN_SLOTS_3(AcApDocManager, 16, 17, 18)
  /// Slot 19. Queues text for the command line; it runs when the host is idle, in order.
  virtual Acad::ErrorStatus sendStringToExecute(AcApDocument* documentP, const ACHAR* text,
                                                bool activate = true, bool wrapUpInactiveDoc = false,
                                                bool echo = true) = 0;
  STANDIN_SLOTS_10(AcApDocManager, 2)
  STANDIN_SLOTS_5(AcApDocManager, 30, 31, 32, 33, 34)
  STANDIN_SLOT(AcApDocManager, 35)
};

STANDIN_OBJECTARX_API AcApDocManager* acDocManagerPtr();
#define acDocManager acDocManagerPtr()

#endif
