/// System variables, and owners of what the host lends: the implied selection, and objects opened for a
/// moment. Main thread.
#ifndef COMMON_SOURCES_HOST_OBJECTS_H
#define COMMON_SOURCES_HOST_OBJECTS_H

// clang-format off
#include "acedads.h"
#include "adscodes.h"
#include "adsdef.h"
#include "dbmain.h"
// clang-format on

/// What `require` throws. The proxy's operation catches it and logs its own text.
struct HostRefusal {};

inline void require(bool isGranted) {
  if (!isGranted) throw HostRefusal();
}

/// The value of an integer system variable; 0 when the host does not report it.
inline short systemVariable(const ACHAR* name) {
  resbuf result{};
  acedGetVar(name, &result);
  return result.resval.rint;
}

/// The pre-selected objects. The host has a limited number of selection sets, so this one is always freed.
class ImpliedSelection {
 public:
  ImpliedSelection() : mIsTaken(acedSSGet(L"I", nullptr, nullptr, nullptr, mName) == RTNORM) {}
  ~ImpliedSelection() {
    try {
      free();
    } catch (...) {
      // Reached only while another exception propagates, or after freeing has failed twice.
    }
  }
  ImpliedSelection(const ImpliedSelection&) = delete;
  ImpliedSelection& operator=(const ImpliedSelection&) = delete;

  /// False when nothing is pre-selected.
  bool isTaken() const { return mIsTaken; }
  const ads_name& name() const { return mName; }

  /// Frees the set, once more when the host refuses. What the host throws passes through; the destructor
  /// tries again.
  void free() {
    if (!mIsTaken) return;
    if (acedSSFree(mName) != RTNORM) acedSSFree(mName);
    mIsTaken = false;
  }

 private:
  ads_name mName{};
  bool mIsTaken;
};

/// Number of entities in a selection set. Throws HostRefusal when the host does not report it.
inline AdInt32 selectionLength(const ads_name selectionSet) {
  AdInt32 length = 0;
  require(acedSSLength(selectionSet, &length) == RTNORM);
  return length;
}

/// A database object that was opened for a moment, or nothing. It is always closed: no command can open an
/// object that was left open for writing.
template <class T>
class Opened {
 public:
  explicit Opened(T* objectP) : mObjectP(objectP) {}
  ~Opened() {
    try {
      close();
    } catch (...) {
      // Reached only while another exception propagates, or after closing has failed twice.
    }
  }
  Opened(const Opened&) = delete;
  Opened& operator=(const Opened&) = delete;

  explicit operator bool() const { return mObjectP != nullptr; }
  T* operator->() const { return mObjectP; }
  T& operator*() const { return *mObjectP; }

  /// Closes the object, once more when the host refuses. What the host throws passes through; the destructor
  /// tries again.
  void close() {
    if (mObjectP == nullptr) return;
    if (mObjectP->close() != Acad::eOk) mObjectP->close();
    mObjectP = nullptr;
  }

 private:
  T* mObjectP;
};

/// Opens an entity by its name in a selection set; nothing when it cannot be opened.
inline Opened<AcDbEntity> openEntity(const ads_name name, AcDb::OpenMode mode) {
  AcDbObjectId id;
  AcDbEntity* entityP = nullptr;
  const bool isOpen =
      acdbGetObjectId(id, name) == Acad::eOk && acdbOpenAcDbEntity(entityP, id, mode) == Acad::eOk;
  return Opened<AcDbEntity>(isOpen ? entityP : nullptr);
}

/// Opens an object of class T by its id; nothing when it cannot be opened or is of another class.
template <class T>
Opened<T> openObject(AcDbObjectId id, AcDb::OpenMode mode) {
  AcDbObject* objectP = nullptr;
  const bool isOpen = acdbOpenAcDbObject(objectP, id, mode, T::desc(), false) == Acad::eOk;
  return Opened<T>(isOpen ? static_cast<T*>(objectP) : nullptr);
}

#endif
