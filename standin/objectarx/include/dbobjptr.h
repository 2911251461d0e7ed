/// Opens a database object for as long as the pointer lives. Compiled into the module. Main thread only.
#ifndef STANDIN_DBOBJPTR_H
#define STANDIN_DBOBJPTR_H

#include "dbmain.h"

template <class T>
class AcDbObjectPointer {
 public:
  AcDbObjectPointer(AcDbObjectId id, AcDb::OpenMode mode, bool openErased = false) {
    AcDbObject* objectP = nullptr;
    mStatus = acdbOpenAcDbObject(objectP, id, mode, T::desc(), openErased);
    if (mStatus == Acad::eOk) mObjectP = static_cast<T*>(objectP);
  }
  ~AcDbObjectPointer() {
    if (mObjectP == nullptr) return;
    // What the host throws must not end the process here.
    try {
      mObjectP->close();
    } catch (...) {
    }
  }
  AcDbObjectPointer(const AcDbObjectPointer&) = delete;
  AcDbObjectPointer& operator=(const AcDbObjectPointer&) = delete;

  Acad::ErrorStatus openStatus() const { return mStatus; }
  /// Only when openStatus() is eOk.
  T* operator->() const { return mObjectP; }

 private:
  T* mObjectP = nullptr;
  Acad::ErrorStatus mStatus = Acad::eNullObjectPointer;
};

#endif
