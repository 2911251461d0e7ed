// The host's side of the table: each row calls the function of the host's own headers that it is named after.
#include "host_calls.h"

#include "standin/objectarx/operation.h"
#include "standin/objectarx/printing.h"
#include "standin/objectarx/state.h"

// clang-format off
#include <windows.h>
#include "accmd.h"
#include "acdocman.h"
#include "aced.h"
#include "acedads.h"
#include "dbents.h"
#include "dbsymtb.h"
#include "gs.h"
#include "acgs.h"
#include "rxdlinkr.h"
// clang-format on

#include <cstring>
#include <map>
#include <memory>
#include <mutex>
#include <stdexcept>

namespace {

template <typename Call>
int contained(Call call) {
  try {
    call();
    return 0;
  } catch (...) {
    return 1;
  }
}

/// The object of the host at an address that it gave out.
template <class T>
T& as(void* objectP) {
  return *static_cast<T*>(static_cast<AcRxObject*>(objectP));
}
template <class T>
const T& as(const void* objectP) {
  return *static_cast<const T*>(static_cast<const AcRxObject*>(objectP));
}
AcApDocument* document(void* documentP) {
  return static_cast<AcApDocument*>(static_cast<AcRxObject*>(documentP));
}
void* address(AcRxObject* objectP) {
  return objectP;
}
AcGsView& view(void* viewP) {
  return *static_cast<AcGsView*>(viewP);
}
const AcGsView& view(const void* viewP) {
  return *static_cast<const AcGsView*>(viewP);
}

/// `result` of a function of the module's: 1 when it threw, which is thrown on in the host.
void throwIfModuleThrew(int result) {
  if (result != 0) throw std::runtime_error("the module threw into the host");
}

/// A reactor of the module's. Only this function is handed on: the module overrides no other.
class ModuleReactor final : public AcApDocManagerReactor {
 public:
  ModuleReactor(void* reactorP, int (*toBeDestroyed)(void*, void*))
      : mReactorP(reactorP), mToBeDestroyed(toBeDestroyed) {}
  void documentToBeDestroyed(AcApDocument* documentP) override {
    throwIfModuleThrew(mToBeDestroyed(mReactorP, address(documentP)));
  }

 private:
  void* mReactorP;
  int (*mToBeDestroyed)(void*, void*);
};

std::map<void*, std::unique_ptr<ModuleReactor>>& reactors() {
  static std::map<void*, std::unique_ptr<ModuleReactor>> all;
  return all;
}

int addReactor(void* reactorP, int (*toBeDestroyed)(void*, void*)) {
  return contained([&] {
    auto& ownP = reactors()[reactorP];
    if (ownP == nullptr) ownP = std::make_unique<ModuleReactor>(reactorP, toBeDestroyed);
    acDocManager->addReactor(ownP.get());
  });
}

int removeReactor(void* reactorP) {
  const auto found = reactors().find(reactorP);
  // The host names the breach of a reactor that is not there.
  AcApDocManagerReactor* const ownP = found == reactors().end() ? nullptr : found->second.get();
  const int result = contained([&] { acDocManager->removeReactor(ownP); });
  if (result == 0 && found != reactors().end()) reactors().erase(found);
  return result;
}

const AcRxClass* classNamed(const char* name) {
  for (const AcRxClass* classP : {AcEdCommandStack::desc(), AcRxDynamicLinker::desc(), AcDbLine::desc(),
                                  AcDbViewport::desc(), AcDbViewportTableRecord::desc()}) {
    const std::wstring wide = classP->name();
    if (std::string(wide.begin(), wide.end()) == name) return classP;
  }
  return nullptr;
}

constexpr HostCalls kCalls = {
    [] { return contained([] { acDocManagerPtr(); }); },
    [](void** r) { return contained([=] { *r = address(acDocManager->curDocument()); }); },
    [](int* r, void* d, int mode, const wchar_t* global, const wchar_t* local, bool isToPrompt) {
      return contained([=] {
        *r = acDocManager->lockDocument(document(d), static_cast<AcAp::DocLockMode>(mode), global, local,
                                        isToPrompt);
      });
    },
    [](int* r, void* d) { return contained([=] { *r = acDocManager->unlockDocument(document(d)); }); },
    [](int* r, void* d, const wchar_t* text, bool activate, bool wrapUp, bool echo) {
      return contained(
          [=] { *r = acDocManager->sendStringToExecute(document(d), text, activate, wrapUp, echo); });
    },
    addReactor,
    removeReactor,

    [] { return contained([] { acrxSysRegistry(); }); },
    [](void** r, const wchar_t* key) { return contained([=] { *r = address(acrxSysRegistry()->at(key)); }); },
    [](bool* r, void* linker, void* packet) {
      return contained([=] { *r = as<AcRxDynamicLinker>(linker).unlockApplication(packet); });
    },
    [](bool* r, void* linker, void* packet) {
      return contained([=] { *r = as<AcRxDynamicLinker>(linker).registerAppMDIAware(packet); });
    },
    [](int* r, void* stack, const wchar_t* group, const wchar_t* global, const wchar_t* local,
       std::int32_t flags, void (*function)(), int (*runFunction)(void (*)()), void* context, int code,
       void* resource) {
      return contained([=] {
        *r = as<AcEdCommandStack>(stack).addCommand(group, global, local, flags, function,
                                                    static_cast<AcEdUIContext*>(context), code,
                                                    static_cast<HINSTANCE>(resource));
        if (*r != Acad::eOk) return;
        const std::lock_guard lock(standin::host::hostMutex());
        standin::host::run().commands.back().function = [=] { throwIfModuleThrew(runFunction(function)); };
      });
    },
    [](int* r, void* stack, const wchar_t* group, const wchar_t* global) {
      return contained([=] { *r = as<AcEdCommandStack>(stack).removeCmd(group, global); });
    },

    [](const void** r, const char* name) {
      return contained([=] { *r = static_cast<const AcRxObject*>(classNamed(name)); });
    },
    [](const void** r, const void* object) {
      return contained([=] { *r = static_cast<const AcRxObject*>(as<AcRxObject>(object).isA()); });
    },
    [](bool* r, const void* derived, const void* base) {
      return contained([=] { *r = as<AcRxClass>(derived).isDerivedFrom(&as<AcRxClass>(base)); });
    },

    [](int* r, const wchar_t* name, resbuf* value) {
      return contained([=] { *r = acedGetVar(name, value); });
    },
    [](int* r, const wchar_t* format, char* arguments) {
      return contained([=] { *r = standin::host::modulePrint(format, arguments); });
    },
    [](int* r, const wchar_t* mode, const void* pt1, const void* pt2, const resbuf* filter,
       std::int64_t* ss) { return contained([=] { *r = acedSSGet(mode, pt1, pt2, filter, ss); }); },
    [](int* r, const std::int64_t* ss, long* length) {
      return contained([=] { *r = acedSSLength(ss, length); });
    },
    [](int* r, const std::int64_t* ss, long index, std::int64_t* entity) {
      return contained([=] { *r = acedSSName(ss, index, entity); });
    },
    [](int* r, const std::int64_t* ss) { return contained([=] { *r = acedSSFree(ss); }); },
    [](int* r, const std::int64_t* entity, int mode) {
      return contained([=] { *r = acedRedraw(entity, mode); });
    },
    [](std::uint64_t* r) { return contained([=] { *r = acedActiveViewportId().value(); }); },
    [](int* r) { return contained([=] { *r = acedVports2VportTableRecords(); }); },
    [](int* r) { return contained([=] { *r = acedVportTableRecords2Vports(); }); },

    [](void** r, int viewport, bool create) {
      return contained([=] { *r = acgsGetGsView(viewport, create); });
    },
    [](int* r, int viewport, const void* v, bool regen, bool rescale, bool sync) {
      return contained([=] {
        *r = acgsSetViewParameters(viewport, static_cast<const AcGsView*>(v), regen, rescale, sync);
      });
    },
    [](void* v, const AcGePoint3d* position, const AcGePoint3d* target, const AcGeVector3d* up, double width,
       double height, int projection) {
      return contained([=] {
        view(v).setView(*position, *target, *up, width, height,
                        static_cast<AcGsView::Projection>(projection));
      });
    },
    [](AcGePoint3d* r, const void* v) { return contained([=] { *r = view(v).position(); }); },
    [](AcGePoint3d* r, const void* v) { return contained([=] { *r = view(v).target(); }); },
    [](AcGeVector3d* r, const void* v) { return contained([=] { *r = view(v).upVector(); }); },
    [](bool* r, const void* v) { return contained([=] { *r = view(v).isPerspective(); }); },
    [](double* r, const void* v) { return contained([=] { *r = view(v).fieldWidth(); }); },
    [](double* r, const void* v) { return contained([=] { *r = view(v).fieldHeight(); }); },
    [](bool* r, const void* v) { return contained([=] { *r = view(v).isValid(); }); },
    [](void* v) { return contained([=] { view(v).update(); }); },
    [](void* v, double factor) { return contained([=] { view(v).zoom(factor); }); },

    [](int* r, std::uint64_t* id, const std::int64_t* name) {
      return contained([=] {
        AcDbObjectId found;
        *r = acdbGetObjectId(found, name);
        if (*r == Acad::eOk) *id = found.value();
      });
    },
    [](int* r, void** entity, std::uint64_t id, int mode, bool openErased) {
      return contained([=] {
        AcDbEntity* openP = nullptr;
        *r = acdbOpenAcDbEntity(openP, AcDbObjectId(id), static_cast<AcDb::OpenMode>(mode), openErased);
        *entity = address(openP);
      });
    },
    [](int* r, void** object, std::uint64_t id, int mode, const void* classP, bool openErased) {
      return contained([=] {
        AcDbObject* openP = nullptr;
        *r = acdbOpenAcDbObject(openP, AcDbObjectId(id), static_cast<AcDb::OpenMode>(mode),
                                &as<AcRxClass>(classP), openErased);
        *object = address(openP);
      });
    },
    [](int* r, void* object) { return contained([=] { *r = as<AcDbObject>(object).close(); }); },
    [](int* r, const void* entity, AcDbExtents* extents) {
      return contained([=] { *r = as<AcDbEntity>(entity).getGeomExtents(*extents); });
    },
    [](int* r, void* entity, const AcGeMatrix3d* transform) {
      return contained([=] { *r = as<AcDbEntity>(entity).transformBy(*transform); });
    },
    [](int* r, const void* line, AcGePoint3d* point) {
      return contained([=] { *r = as<AcDbLine>(line).getStartPoint(*point); });
    },
    [](int* r, const void* line, AcGePoint3d* point) {
      return contained([=] { *r = as<AcDbLine>(line).getEndPoint(*point); });
    },
    [](double* r, const void* v) { return contained([=] { *r = as<AcDbViewport>(v).width(); }); },
    [](double* r, const void* v) { return contained([=] { *r = as<AcDbViewport>(v).height(); }); },
    [](double* r, const void* v) { return contained([=] { *r = as<AcDbViewport>(v).viewHeight(); }); },
    [](int* r, void* v, double height) {
      return contained([=] { *r = as<AcDbViewport>(v).setViewHeight(height); });
    },
    [](AcGePoint2d* r, const void* v) { return contained([=] { *r = as<AcDbViewport>(v).viewCenter(); }); },
    [](int* r, void* v, const AcGePoint2d* centre) {
      return contained([=] { *r = as<AcDbViewport>(v).setViewCenter(*centre); });
    },
    [](int* r, const void* v) { return contained([=] { *r = as<AcDbViewport>(v).updateDisplay(); }); },
    [](AcGePoint2d* r, const void* t) {
      return contained([=] { *r = as<AcDbAbstractViewTableRecord>(t).centerPoint(); });
    },
    [](void* t, const AcGePoint2d* centre) {
      return contained([=] { as<AcDbAbstractViewTableRecord>(t).setCenterPoint(*centre); });
    },
    [](double* r, const void* t) {
      return contained([=] { *r = as<AcDbAbstractViewTableRecord>(t).width(); });
    },
    [](double* r, const void* t) {
      return contained([=] { *r = as<AcDbAbstractViewTableRecord>(t).height(); });
    },
    [](void* t, double height) {
      return contained([=] { as<AcDbAbstractViewTableRecord>(t).setHeight(height); });
    },
};

}  // namespace

extern "C" STANDIN_OBJECTARX_API const HostCalls* standinHostCalls() {
  return &kCalls;
}
