/// Root of the host's classes with run-time class information.
#ifndef STANDIN_RXOBJECT_H
#define STANDIN_RXOBJECT_H

#include "standin_objectarx_api.h"

class AcRxClass;

class STANDIN_OBJECTARX_API AcRxObject {
 public:
  virtual ~AcRxObject();
  AcRxObject(const AcRxObject&) = delete;
  AcRxObject& operator=(const AcRxObject&) = delete;

  static AcRxClass* desc();
  virtual AcRxClass* isA() const;
  /// Whether the object's class is `classP` or derives from it; false for null.
  bool isKindOf(const AcRxClass* classP) const;

 protected:
  AcRxObject() = default;
};

/// Declares the run-time class of a host class; `cast` answers null for an object of another class, or null.
#define ACRX_DECLARE_MEMBERS(CLASS)                                                                  \
  static AcRxClass* desc();                                                                          \
  AcRxClass* isA() const override;                                                                   \
  static CLASS* cast(const AcRxObject* objectP) {                                                    \
    if (objectP == nullptr || !objectP->isKindOf(CLASS::desc())) return nullptr;                     \
    return const_cast<CLASS*>(static_cast<const CLASS*>(objectP)); /* as the host's own cast does */ \
  }

#endif
