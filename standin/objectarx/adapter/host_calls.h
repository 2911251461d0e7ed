/// The stand-in host as a table of C functions, for the adapter that gives it Microsoft's C++ ABI. The two
/// sides are compiled by different compilers: only plain data crosses, an object of the host as an address
/// that the adapter hands back. A function returns 0, or 1 when the host threw: no exception crosses either.
/// Main thread, as the host itself.
#ifndef STANDIN_HOST_CALLS_H
#define STANDIN_HOST_CALLS_H

#include <cstdarg>
#include <cstdint>

struct resbuf;
class AcDbExtents;
class AcGeMatrix3d;
class AcGePoint2d;
class AcGePoint3d;
class AcGeVector3d;

struct HostCalls {
  // Documents
  int (*docManager)();
  int (*curDocument)(void** resultP);
  int (*lockDocument)(int* resultP, void* documentP, int mode, const wchar_t* globalName,
                      const wchar_t* localName, bool isToPrompt);
  int (*unlockDocument)(int* resultP, void* documentP);
  int (*sendStringToExecute)(int* resultP, void* documentP, const wchar_t* text, bool activate, bool wrapUp,
                             bool echo);
  /// `toBeDestroyed` is called with `reactorP` and the document; 1 when the module threw.
  int (*addReactor)(void* reactorP, int (*toBeDestroyed)(void* reactorP, void* documentP));
  int (*removeReactor)(void* reactorP);

  // Registry
  int (*sysRegistry)();
  int (*registryAt)(void** resultP, const wchar_t* key);
  int (*unlockApplication)(bool* resultP, void* linkerP, void* packetP);
  int (*registerMdiAware)(bool* resultP, void* linkerP, void* packetP);
  /// `runFunction` calls `function`; 1 when the module threw.
  int (*addCommand)(int* resultP, void* stackP, const wchar_t* group, const wchar_t* globalName,
                    const wchar_t* localName, std::int32_t flags, void (*function)(),
                    int (*runFunction)(void (*function)()), void* contextP, int code, void* resourceP);
  int (*removeCmd)(int* resultP, void* stackP, const wchar_t* group, const wchar_t* globalName);

  // Classes
  int (*classByName)(const void** resultP, const char* name);
  int (*classOf)(const void** resultP, const void* objectP);
  int (*isDerivedFrom)(bool* resultP, const void* classP, const void* otherP);

  // Editor
  int (*getVar)(int* resultP, const wchar_t* name, resbuf* valueP);
  int (*print)(int* resultP, const wchar_t* format, char* arguments);
  int (*ssGet)(int* resultP, const wchar_t* mode, const void* pt1, const void* pt2, const resbuf* filterP,
               std::int64_t* ss);
  int (*ssLength)(int* resultP, const std::int64_t* ss, long* lengthP);
  int (*ssName)(int* resultP, const std::int64_t* ss, long index, std::int64_t* entity);
  int (*ssFree)(int* resultP, const std::int64_t* ss);
  int (*redraw)(int* resultP, const std::int64_t* entity, int mode);
  int (*activeViewportId)(std::uint64_t* resultP);
  int (*vportsToRecords)(int* resultP);
  int (*recordsToVports)(int* resultP);

  // Graphics views
  int (*getGsView)(void** resultP, int viewport, bool createIfNone);
  int (*setViewParameters)(int* resultP, int viewport, const void* viewP, bool regen, bool rescale,
                           bool sync);
  int (*viewSet)(void* viewP, const AcGePoint3d* position, const AcGePoint3d* target, const AcGeVector3d* up,
                 double width, double height, int projection);
  int (*viewPosition)(AcGePoint3d* resultP, const void* viewP);
  int (*viewTarget)(AcGePoint3d* resultP, const void* viewP);
  int (*viewUpVector)(AcGeVector3d* resultP, const void* viewP);
  int (*viewIsPerspective)(bool* resultP, const void* viewP);
  int (*viewFieldWidth)(double* resultP, const void* viewP);
  int (*viewFieldHeight)(double* resultP, const void* viewP);
  int (*viewIsValid)(bool* resultP, const void* viewP);
  int (*viewUpdate)(void* viewP);
  int (*viewZoom)(void* viewP, double factor);

  // Database
  int (*getObjectId)(int* resultP, std::uint64_t* idP, const std::int64_t* name);
  int (*openEntity)(int* resultP, void** entityPP, std::uint64_t id, int mode, bool openErased);
  int (*openObject)(int* resultP, void** objectPP, std::uint64_t id, int mode, const void* classP,
                    bool openErased);
  int (*close)(int* resultP, void* objectP);
  int (*geomExtents)(int* resultP, const void* entityP, AcDbExtents* extentsP);
  int (*transformBy)(int* resultP, void* entityP, const AcGeMatrix3d* transformP);
  int (*lineStart)(int* resultP, const void* lineP, AcGePoint3d* pointP);
  int (*lineEnd)(int* resultP, const void* lineP, AcGePoint3d* pointP);
  int (*viewportWidth)(double* resultP, const void* viewportP);
  int (*viewportHeight)(double* resultP, const void* viewportP);
  int (*viewportViewHeight)(double* resultP, const void* viewportP);
  int (*viewportSetViewHeight)(int* resultP, void* viewportP, double height);
  int (*viewportViewCenter)(AcGePoint2d* resultP, const void* viewportP);
  int (*viewportSetViewCenter)(int* resultP, void* viewportP, const AcGePoint2d* centreP);
  int (*viewportUpdateDisplay)(int* resultP, const void* viewportP);
  int (*recordCenterPoint)(AcGePoint2d* resultP, const void* recordP);
  int (*recordSetCenterPoint)(void* recordP, const AcGePoint2d* centreP);
  int (*recordWidth)(double* resultP, const void* recordP);
  int (*recordHeight)(double* resultP, const void* recordP);
  int (*recordSetHeight)(void* recordP, double height);
};

/// What the stand-in host exports beside its C++ names.
using HostCallsQuery = const HostCalls* (*)();
constexpr const wchar_t* kHostLibrary = L"standin_objectarx.dll";
constexpr const char* kHostCallsQuery = "standinHostCalls";

#endif
