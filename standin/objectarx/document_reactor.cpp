// A reactor that nobody has derived from does nothing.
#include "acdocman.h"

void AcApDocManagerReactor::documentCreateStarted(AcApDocument* /*documentP*/) {}
void AcApDocManagerReactor::documentCreated(AcApDocument* /*documentP*/) {}
void AcApDocManagerReactor::documentToBeDestroyed(AcApDocument* /*documentP*/) {}
void AcApDocManagerReactor::documentDestroyed(const ACHAR* /*fileName*/) {}
void AcApDocManagerReactor::documentCreateCanceled(AcApDocument* /*documentP*/) {}
void AcApDocManagerReactor::documentLockModeWillChange(AcApDocument* /*documentP*/,
                                                       AcAp::DocLockMode /*myCurrentMode*/,
                                                       AcAp::DocLockMode /*myNewMode*/,
                                                       AcAp::DocLockMode /*currentMode*/,
                                                       const ACHAR* /*command*/) {}
void AcApDocManagerReactor::documentLockModeChangeVetoed(AcApDocument* /*documentP*/,
                                                         const ACHAR* /*command*/) {}
void AcApDocManagerReactor::documentLockModeChanged(AcApDocument* /*documentP*/,
                                                    AcAp::DocLockMode /*myPreviousMode*/,
                                                    AcAp::DocLockMode /*myCurrentMode*/,
                                                    AcAp::DocLockMode /*currentMode*/,
                                                    const ACHAR* /*command*/) {}
void AcApDocManagerReactor::documentBecameCurrent(AcApDocument* /*documentP*/) {}
void AcApDocManagerReactor::documentToBeActivated(AcApDocument* /*documentP*/) {}
void AcApDocManagerReactor::documentToBeDeactivated(AcApDocument* /*documentP*/) {}
void AcApDocManagerReactor::documentActivationModified(bool /*isActivationOn*/) {}
void AcApDocManagerReactor::documentActivated(AcApDocument* /*documentP*/) {}
