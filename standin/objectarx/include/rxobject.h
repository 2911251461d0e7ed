/// Root of the host's classes with run-time class information.
#ifndef STANDIN_RXOBJECT_H
#define STANDIN_RXOBJECT_H

#include "standin_objectarx_api.h"

#include "acadstrc.h"
#include "adesk.h"
#include "rxdefs.h"

class AcRxClass;

#if defined(_MSC_VER)
#define STANDIN_NO_TABLE __declspec(novtable)
#else
#define STANDIN_NO_TABLE
#endif

/// Seven slots; nothing is made of this class alone, so it needs no table of its own.
class STANDIN_NO_TABLE STANDIN_OBJECTARX_CLASS AcRxObject {
 public:
  virtual ~AcRxObject() = default;
  AcRxObject(const AcRxObject&) = delete;
  AcRxObject& operator=(const AcRxObject&) = delete;

  STANDIN_OBJECTARX_MEMBER static AcRxClass* desc();
  STANDIN_OBJECTARX_MEMBER virtual AcRxClass* isA() const;
  /// Null: none of the stand-in's objects can be copied, compared or asked for an extension.
  STANDIN_OBJECTARX_MEMBER virtual AcRxObject* clone() const;
  STANDIN_OBJECTARX_MEMBER virtual Acad::ErrorStatus copyFrom(const AcRxObject* otherP);
  STANDIN_OBJECTARX_MEMBER virtual Adesk::Boolean isEqualTo(const AcRxObject* otherP) const;
  STANDIN_OBJECTARX_MEMBER virtual AcRx::Ordering comparedTo(const AcRxObject* otherP) const;
  /// Whether the object's class is `classP` or derives from it; false for null. Defined with AcRxClass.
  inline bool isKindOf(const AcRxClass* classP) const;

 protected:
  STANDIN_OBJECTARX_MEMBER AcRxObject();
  STANDIN_OBJECTARX_MEMBER virtual AcRxObject* subQueryX(const AcRxClass* classP) const;
};

/// Declares the run-time class of a host class; `cast` returns null for an object of another class, or null.
#define ACRX_DECLARE_MEMBERS(CLASS)                                                                  \
  STANDIN_OBJECTARX_MEMBER static AcRxClass* desc();                                                 \
  STANDIN_OBJECTARX_MEMBER AcRxClass* isA() const override;                                          \
  static CLASS* cast(const AcRxObject* objectP) {                                                    \
    if (objectP == nullptr || !objectP->isKindOf(CLASS::desc())) return nullptr;                     \
    return const_cast<CLASS*>(static_cast<const CLASS*>(objectP)); /* as the host's own cast does */ \
  }

#endif
