// AutoCAD's functions and classes in Microsoft's ABI, each handing its call to the stand-in host. What the
// host throws is thrown here anew, as an exception of this ABI.
#include "host_calls.h"

// clang-format off
#include <windows.h>
#include "accmd.h"
#include "acdocman.h"
#include "aced.h"
#include "acedads.h"
#include "acutads.h"
#include "dbents.h"
#include "dbsymtb.h"
#include "gs.h"
#include "acgs.h"
#include "rxdlinkr.h"
// clang-format on

#include <cstdarg>
#include <map>
#include <memory>

namespace {

struct HostException {};

const HostCalls& host() {
  static const HostCalls* const callsP = [] {
    const FARPROC query = GetProcAddress(GetModuleHandleW(kHostLibrary), kHostCallsQuery);
    return reinterpret_cast<HostCallsQuery>(reinterpret_cast<void*>(query))();
  }();
  return *callsP;
}

/// Calls a row of the table that has a result.
template <class Result, class... Parameters, class... Arguments>
Result ask(int (*row)(Result*, Parameters...), Arguments... arguments) {
  Result result{};
  if (row(&result, arguments...) != 0) throw HostException();
  return result;
}

/// Calls a row of the table that has none.
template <class... Parameters, class... Arguments>
void call(int (*row)(Parameters...), Arguments... arguments) {
  if (row(arguments...) != 0) throw HostException();
}

template <class... Parameters, class... Arguments>
Acad::ErrorStatus askStatus(int (*row)(int*, Parameters...), Arguments... arguments) {
  return static_cast<Acad::ErrorStatus>(ask(row, arguments...));
}

/// Calls the module: 1 when it threw. The host's frames cannot catch an exception of this ABI.
template <class Call>
int thrown(Call intoTheModule) {
  try {
    intoTheModule();
    return 0;
  } catch (...) {
    return 1;
  }
}

/// The one object of class T here for an object of the host; null for null.
template <class T>
T* proxyOf(const void* hostObjectP) {
  static std::map<const void*, std::unique_ptr<T>> all;
  if (hostObjectP == nullptr) return nullptr;
  std::unique_ptr<T>& ownP = all[hostObjectP];
  if (ownP == nullptr) ownP = std::make_unique<T>(const_cast<void*>(hostObjectP));
  return ownP.get();
}

AcRxClass* classOf(const void* hostClassP) {
  struct Class final : AcRxClass {
    explicit Class(void* hostP) : AcRxClass(static_cast<const Body*>(hostP)) {}
  };
  return proxyOf<Class>(hostClassP);
}

AcRxClass* classNamed(const char* name) {
  return classOf(ask(host().classByName, name));
}

struct Document final : AcApDocument {
  explicit Document(void* hostP) : mHostP(hostP) {}
  void* mHostP;
};

void* hostDocument(AcApDocument* documentP) {
  return documentP == nullptr ? nullptr : static_cast<Document*>(documentP)->mHostP;
}

class DocManager final : public AcApDocManager {
 public:
  AcApDocument* curDocument() const override { return proxyOf<Document>(ask(host().curDocument)); }
  Acad::ErrorStatus lockDocument(AcApDocument* documentP, AcAp::DocLockMode mode, const ACHAR* globalName,
                                 const ACHAR* localName, bool isToPrompt) override {
    return askStatus(host().lockDocument, hostDocument(documentP), static_cast<int>(mode), globalName,
                     localName, isToPrompt);
  }
  Acad::ErrorStatus unlockDocument(AcApDocument* documentP) override {
    return askStatus(host().unlockDocument, hostDocument(documentP));
  }
  void addReactor(AcApDocManagerReactor* reactorP) override {
    call(host().addReactor, static_cast<void*>(reactorP), &toBeDestroyed);
  }
  void removeReactor(AcApDocManagerReactor* reactorP) override {
    call(host().removeReactor, static_cast<void*>(reactorP));
  }
  Acad::ErrorStatus sendStringToExecute(AcApDocument* documentP, const ACHAR* text, bool activate,
                                        bool wrapUp, bool echo) override {
    return askStatus(host().sendStringToExecute, hostDocument(documentP), text, activate, wrapUp, echo);
  }

 private:
  static int toBeDestroyed(void* reactorP, void* documentP) {
    return thrown([=] {
      static_cast<AcApDocManagerReactor*>(reactorP)->documentToBeDestroyed(proxyOf<Document>(documentP));
    });
  }
};

class CommandStack final : public AcEdCommandStack {
 public:
  explicit CommandStack(void* hostP) : mHostP(hostP) {}
  Acad::ErrorStatus addCommand(const ACHAR* group, const ACHAR* globalName, const ACHAR* localName,
                               Adesk::Int32 flags, AcRxFunctionPtr function, AcEdUIContext* contextP,
                               int code, HINSTANCE resource, AcEdCommand** commandPP) override {
    if (commandPP != nullptr) *commandPP = nullptr;
    return askStatus(host().addCommand, mHostP, group, globalName, localName,
                     static_cast<std::int32_t>(flags), function, &runFunction, static_cast<void*>(contextP),
                     code, static_cast<void*>(resource));
  }
  Acad::ErrorStatus removeCmd(const ACHAR* group, const ACHAR* globalName) override {
    return askStatus(host().removeCmd, mHostP, group, globalName);
  }

 private:
  static int runFunction(void (*function)()) {
    return thrown([=] { function(); });
  }

  void* mHostP;
};

class DynamicLinker final : public AcRxDynamicLinker {
 public:
  explicit DynamicLinker(void* hostP) : mHostP(hostP) {}
  bool unlockApplication(void* packetP) const override {
    return ask(host().unlockApplication, mHostP, packetP);
  }
  bool registerAppMDIAware(void* packetP) const override {
    return ask(host().registerMdiAware, mHostP, packetP);
  }

 private:
  void* mHostP;
};

class Registry final : public AcRxDictionary {
 public:
  AcRxObject* at(const ACHAR* key) const override {
    void* const hostP = ask(host().registryAt, key);
    if (hostP == nullptr) return nullptr;
    AcRxClass* const classP = classOf(ask(host().classOf, static_cast<const void*>(hostP)));
    if (classP == AcEdCommandStack::desc()) return proxyOf<CommandStack>(hostP);
    return classP == AcRxDynamicLinker::desc() ? proxyOf<DynamicLinker>(hostP) : nullptr;
  }
  AcRxObject* at(Adesk::UInt32 /*id*/) const override { return nullptr; }
};

class View final : public AcGsView {
 public:
  explicit View(void* hostP) : mHostP(hostP) {}
  ~View() override = default;
  const void* hostView() const { return mHostP; }
  void setView(const AcGePoint3d& position, const AcGePoint3d& target, const AcGeVector3d& up, double width,
               double height, Projection projection) override {
    call(host().viewSet, mHostP, &position, &target, &up, width, height, static_cast<int>(projection));
  }
  AcGePoint3d position() const override { return ask(host().viewPosition, hostView()); }
  AcGePoint3d target() const override { return ask(host().viewTarget, hostView()); }
  AcGeVector3d upVector() const override { return ask(host().viewUpVector, hostView()); }
  bool isPerspective() const override { return ask(host().viewIsPerspective, hostView()); }
  double fieldWidth() const override { return ask(host().viewFieldWidth, hostView()); }
  double fieldHeight() const override { return ask(host().viewFieldHeight, hostView()); }
  bool isValid() const override { return ask(host().viewIsValid, hostView()); }
  void update() override { call(host().viewUpdate, mHostP); }
  void zoom(double factor) override { call(host().viewZoom, mHostP, factor); }

 private:
  void* mHostP;
};

}  // namespace

namespace standin::host {

/// An object of the database keeps the host's own in the place of its identity.
class ObjectAccess {
 public:
  static void setHost(AcDbObject& object, void* hostP) {
    object.mId = reinterpret_cast<std::uint64_t>(hostP);
  }
  static void* host(const AcDbObject& object) { return reinterpret_cast<void*>(object.mId); }
};

}  // namespace standin::host

namespace {

void* hostOf(const AcDbObject* objectP) {
  return standin::host::ObjectAccess::host(*objectP);
}

/// An object of the database: class Base, with the functions that are called by slot.
template <class Base>
struct DatabaseObject : Base {
  explicit DatabaseObject(void* hostP) { standin::host::ObjectAccess::setHost(*this, hostP); }
  AcRxClass* isA() const override {
    return classOf(ask(host().classOf, static_cast<const void*>(hostOf(this))));
  }
};

struct Line final : DatabaseObject<AcDbLine> {
  using DatabaseObject::DatabaseObject;
  Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const override {
    return askStatus(host().lineStart, static_cast<const void*>(hostOf(this)), &point);
  }
  Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const override {
    return askStatus(host().lineEnd, static_cast<const void*>(hostOf(this)), &point);
  }
};
struct Entity final : DatabaseObject<AcDbEntity> {
  using DatabaseObject::DatabaseObject;
};
struct Viewport final : DatabaseObject<AcDbViewport> {
  using DatabaseObject::DatabaseObject;
};
struct TileRecord final : DatabaseObject<AcDbViewportTableRecord> {
  using DatabaseObject::DatabaseObject;
};

AcDbObject* objectOf(void* hostP) {
  if (hostP == nullptr) return nullptr;
  const AcRxClass* const classP = classOf(ask(host().classOf, static_cast<const void*>(hostP)));
  if (classP == AcDbLine::desc()) return proxyOf<Line>(hostP);
  if (classP == AcDbViewport::desc()) return proxyOf<Viewport>(hostP);
  if (classP == AcDbViewportTableRecord::desc()) return proxyOf<TileRecord>(hostP);
  return proxyOf<Entity>(hostP);
}

}  // namespace

AcApDocManager* acDocManagerPtr() {
  call(host().docManager);
  static DocManager manager;
  return &manager;
}

AcRxDictionary* acrxSysRegistry() {
  call(host().sysRegistry);
  static Registry registry;
  return &registry;
}

#define ADAPTER_CLASS(NAME)      \
  AcRxClass* NAME::desc() {      \
    return classNamed(#NAME);    \
  }                              \
  AcRxClass* NAME::isA() const { \
    return desc();               \
  }
ADAPTER_CLASS(AcEdCommandStack)
ADAPTER_CLASS(AcRxDynamicLinker)
ADAPTER_CLASS(AcDbLine)
ADAPTER_CLASS(AcDbViewport)
ADAPTER_CLASS(AcDbViewportTableRecord)

/// Classes that modules do not ask for: nothing has one of these as its own.
#define ADAPTER_BASE(NAME)       \
  AcRxClass* NAME::desc() {      \
    return nullptr;              \
  }                              \
  AcRxClass* NAME::isA() const { \
    return nullptr;              \
  }
ADAPTER_BASE(AcRxObject)
ADAPTER_BASE(AcRxClass)
ADAPTER_BASE(AcRxDictionary)
ADAPTER_BASE(AcApDocManagerReactor)
ADAPTER_BASE(AcGiDrawable)
ADAPTER_BASE(AcDbObject)
ADAPTER_BASE(AcDbEntity)
ADAPTER_BASE(AcDbCurve)
ADAPTER_BASE(AcDbSymbolTableRecord)
ADAPTER_BASE(AcDbAbstractViewTableRecord)

bool AcRxClass::isDerivedFrom(const AcRxClass* otherP) const {
  if (otherP == nullptr) return false;
  return ask(host().isDerivedFrom, static_cast<const void*>(body()),
             static_cast<const void*>(otherP->body()));
}

int acedGetVar(const ACHAR* name, resbuf* valueP) {
  return ask(host().getVar, name, valueP);
}
int acutPrintf(const ACHAR* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  int result = 0;
  const int thrown = host().print(&result, format, arguments);
  va_end(arguments);
  if (thrown != 0) throw HostException();
  return result;
}
int acedSSGet(const ACHAR* mode, const void* pt1, const void* pt2, const resbuf* filterP, ads_name ss) {
  return ask(host().ssGet, mode, pt1, pt2, filterP, ss);
}
int acedSSLength(const ads_name ss, AdInt32* lengthP) {
  return ask(host().ssLength, ss, lengthP);
}
int acedSSName(const ads_name ss, AdInt32 index, ads_name entity) {
  return ask(host().ssName, ss, index, entity);
}
int acedSSFree(const ads_name ss) {
  return ask(host().ssFree, ss);
}
int acedRedraw(const ads_name entity, int mode) {
  return ask(host().redraw, entity, mode);
}
AcDbObjectId acedActiveViewportId() {
  return AcDbObjectId(ask(host().activeViewportId));
}
Acad::ErrorStatus acedVports2VportTableRecords() {
  return askStatus(host().vportsToRecords);
}
Acad::ErrorStatus acedVportTableRecords2Vports() {
  return askStatus(host().recordsToVports);
}

AcGsView* acgsGetGsView(int viewport, bool createIfNone) {
  return proxyOf<View>(ask(host().getGsView, viewport, createIfNone));
}
Adesk::Boolean acgsSetViewParameters(int viewport, const AcGsView* viewP, bool regen, bool rescale,
                                     bool sync) {
  const void* const hostP = viewP == nullptr ? nullptr : static_cast<const View*>(viewP)->hostView();
  return ask(host().setViewParameters, viewport, hostP, regen, rescale, sync);
}

AcDbExtents::AcDbExtents() : mMinimum(1e20, 1e20, 1e20), mMaximum(-1e20, -1e20, -1e20) {}

Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& id, const ads_name name) {
  std::uint64_t key = id.value();
  const Acad::ErrorStatus status = askStatus(host().getObjectId, &key, name);
  id = AcDbObjectId(key);
  return status;
}
Acad::ErrorStatus acdbOpenAcDbEntity(AcDbEntity*& entityP, AcDbObjectId id, AcDb::OpenMode mode,
                                     bool openErased) {
  entityP = nullptr;
  void* hostP = nullptr;
  const Acad::ErrorStatus status =
      askStatus(host().openEntity, &hostP, id.value(), static_cast<int>(mode), openErased);
  entityP = static_cast<AcDbEntity*>(objectOf(hostP));
  return status;
}
Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& objectP, AcDbObjectId id, AcDb::OpenMode mode,
                                     const AcRxClass* classP, bool openErased) {
  objectP = nullptr;
  void* hostP = nullptr;
  const Acad::ErrorStatus status = askStatus(host().openObject, &hostP, id.value(), static_cast<int>(mode),
                                             static_cast<const void*>(classP->body()), openErased);
  objectP = objectOf(hostP);
  return status;
}
Acad::ErrorStatus AcDbObject::close() {
  return askStatus(host().close, hostOf(this));
}
Acad::ErrorStatus AcDbEntity::getGeomExtents(AcDbExtents& extents) const {
  return askStatus(host().geomExtents, static_cast<const void*>(hostOf(this)), &extents);
}
Acad::ErrorStatus AcDbEntity::transformBy(const AcGeMatrix3d& transform) {
  return askStatus(host().transformBy, hostOf(this), &transform);
}

double AcDbViewport::width() const {
  return ask(host().viewportWidth, static_cast<const void*>(hostOf(this)));
}
double AcDbViewport::height() const {
  return ask(host().viewportHeight, static_cast<const void*>(hostOf(this)));
}
double AcDbViewport::viewHeight() const {
  return ask(host().viewportViewHeight, static_cast<const void*>(hostOf(this)));
}
Acad::ErrorStatus AcDbViewport::setViewHeight(double height) {
  return askStatus(host().viewportSetViewHeight, hostOf(this), height);
}
AcGePoint2d AcDbViewport::viewCenter() const {
  return ask(host().viewportViewCenter, static_cast<const void*>(hostOf(this)));
}
Acad::ErrorStatus AcDbViewport::setViewCenter(const AcGePoint2d& centre) {
  return askStatus(host().viewportSetViewCenter, hostOf(this), &centre);
}
Acad::ErrorStatus AcDbViewport::updateDisplay() const {
  return askStatus(host().viewportUpdateDisplay, static_cast<const void*>(hostOf(this)));
}
AcGePoint2d AcDbAbstractViewTableRecord::centerPoint() const {
  return ask(host().recordCenterPoint, static_cast<const void*>(hostOf(this)));
}
void AcDbAbstractViewTableRecord::setCenterPoint(const AcGePoint2d& centre) {
  call(host().recordSetCenterPoint, hostOf(this), &centre);
}
double AcDbAbstractViewTableRecord::width() const {
  return ask(host().recordWidth, static_cast<const void*>(hostOf(this)));
}
double AcDbAbstractViewTableRecord::height() const {
  return ask(host().recordHeight, static_cast<const void*>(hostOf(this)));
}
void AcDbAbstractViewTableRecord::setHeight(double height) {
  call(host().recordSetHeight, hostOf(this), height);
}
