/// Open drawings, their locks and the text sent to their command line. Main thread only.
#ifndef STANDIN_ACDOCMAN_H
#define STANDIN_ACDOCMAN_H

#include "acadstrc.h"
#include "adesk.h"
#include "rxobject.h"

struct AcAp {
  enum DocLockMode {
    kNone = 0x00,
    kAutoWrite = 0x01,
    kNotLocked = 0x02,
    kWrite = 0x04,
    kProtectedAutoWrite = 0x14,
    kRead = 0x20,
    kXWrite = 0x08
  };
};

/// An open drawing.
class STANDIN_OBJECTARX_API AcApDocument : public AcRxObject {};

/// Is told of what happens to documents, while it is registered.
class STANDIN_OBJECTARX_API AcApDocManagerReactor : public AcRxObject {
 public:
  virtual void documentToBeDestroyed(AcApDocument* documentP);
};

class STANDIN_OBJECTARX_API AcApDocManager : public AcRxObject {
 public:
  /// Null when no drawing is open.
  virtual AcApDocument* curDocument() const = 0;
  /// Locks nest; each needs its unlock. eNoDocument for a document that is not open, eLockViolation on a
  /// conflict.
  virtual Acad::ErrorStatus lockDocument(AcApDocument* documentP, AcAp::DocLockMode mode = AcAp::kWrite,
                                         const ACHAR* globalCommand = nullptr,
                                         const ACHAR* localCommand = nullptr, bool prompt = true) = 0;
  virtual Acad::ErrorStatus unlockDocument(AcApDocument* documentP) = 0;
  /// Queues text for the command line; it runs when the host is idle, in order.
  virtual Acad::ErrorStatus sendStringToExecute(AcApDocument* documentP, const ACHAR* text,
                                                bool activate = true, bool wrapUpInactiveDoc = false,
                                                bool echo = true) = 0;
  virtual void addReactor(AcApDocManagerReactor* reactorP) = 0;
  virtual void removeReactor(AcApDocManagerReactor* reactorP) = 0;
};

STANDIN_OBJECTARX_API AcApDocManager* acDocManagerPtr();
#define acDocManager acDocManagerPtr()

#endif
