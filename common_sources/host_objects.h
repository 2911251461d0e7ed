/// Owners of what the host lends: the implied selection and an entity opened for a moment. Main thread.
#ifndef COMMON_SOURCES_HOST_OBJECTS_H
#define COMMON_SOURCES_HOST_OBJECTS_H

#include "acedads.h"
#include "adscodes.h"
#include "adsdef.h"
#include "dbmain.h"

/// What `require` throws; the operation that met it catches it and logs its own text.
struct HostRefusal {};

inline void require(bool isGranted) {
  if (!isGranted) throw HostRefusal();
}

/// The pre-selected objects. The host has few selection sets to give: this one is freed whatever happens.
class ImpliedSelection {
 public:
  ImpliedSelection() : mIsTaken(acedSSGet(L"I", nullptr, nullptr, nullptr, mName) == RTNORM) {}
  ~ImpliedSelection() {
    try {
      free();
    } catch (...) {
      // Only reached when another failure is being reported already, or freeing has failed twice.
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

/// Number of entities in a selection set. Throws HostRefusal when the host does not tell.
inline AdInt32 selectionLength(const ads_name selectionSet) {
  AdInt32 length = 0;
  require(acedSSLength(selectionSet, &length) == RTNORM);
  return length;
}

/// An entity opened by its name in a selection set.
class OpenedEntity {
 public:
  OpenedEntity(const ads_name name, AcDb::OpenMode mode) {
    AcDbObjectId id;
    if (acdbGetObjectId(id, name) != Acad::eOk) return;
    if (acdbOpenAcDbEntity(mEntityP, id, mode) != Acad::eOk) mEntityP = nullptr;
  }
  ~OpenedEntity() {
    try {
      close();
    } catch (...) {
      // Only reached when another failure is being reported already, or closing has failed twice.
    }
  }
  OpenedEntity(const OpenedEntity&) = delete;
  OpenedEntity& operator=(const OpenedEntity&) = delete;

  explicit operator bool() const { return mEntityP != nullptr; }
  AcDbEntity* operator->() const { return mEntityP; }
  AcDbEntity* get() const { return mEntityP; }

  /// Closes the entity, once more when the host refuses. What the host throws passes through; the destructor
  /// tries again.
  void close() {
    if (mEntityP == nullptr) return;
    if (mEntityP->close() != Acad::eOk) mEntityP->close();
    mEntityP = nullptr;
  }

 private:
  AcDbEntity* mEntityP = nullptr;
};

#endif
