/// Result codes of the host's database and document operations, with the host's values.
#ifndef STANDIN_ACADSTRC_H
#define STANDIN_ACADSTRC_H

struct Acad {
  enum ErrorStatus {
    eOk = 0,
    eNotApplicable = 2,
    eInvalidInput = 3,
    eUnknownHandle = 13,
    eNullObjectPointer = 15,
    eNullObjectId = 16,
    eKeyNotFound = 22,
    eDuplicateKey = 23,
    eNotOpenForRead = 44,
    eNotOpenForWrite = 45,
    eNotThatKindOfClass = 46,
    eWasErased = 80,
    eWasOpenForRead = 82,
    eWasOpenForWrite = 83,
    eOnLockedLayer = 87,
    eNullExtents = 312,
    eLockViolation = 320,
    eNoDocument = 330,
  };
};

#endif
