/// Result codes of the host's database and document operations. Only `eOk` has a value worth relying on.
#ifndef STANDIN_ACADSTRC_H
#define STANDIN_ACADSTRC_H

struct Acad {
  enum ErrorStatus {
    eOk = 0,
    eNotApplicable,
    eInvalidInput,
    eNullObjectId,
    eNullObjectPointer,
    eUnknownHandle,
    eNotThatKindOfClass,
    eNullExtents,
    eDuplicateKey,
    eKeyNotFound,
    eNotOpenForRead,
    eNotOpenForWrite,
    eWasOpenForRead,
    eWasOpenForWrite,
    eWasErased,
    eOnLockedLayer,
    eLockViolation,
    eNoDocument,
  };
};

#endif
