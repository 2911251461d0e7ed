// The host's functions whose names are not sure. A module that imports a name that the host does not have is
// not loaded at all; these are looked up when the module is loaded, into the very pointers that an import
// library would have made. A call of one that is missing is logged and printed once, and throws: the
// operation that needs it fails as if the host had.
#include "LM_Daemon/src/logging.h"

#include "acutads.h"
#include "adscodes.h"

#include <windows.h>

#include <cstddef>
#include <cstring>
#include <string>

/// What a call of a missing function throws. The module catches everything that the host throws. The name of
/// what is thrown is in the file, and that of an unnamed namespace depends on the folder of the sources.
struct HostFunctionMissing {};

namespace {

struct LateImport {
  const wchar_t* library;
  const char* name;
};

constexpr LateImport kImports[] = {
#define LATE_IMPORT(INDEX, LIBRARY, NAME) {L"" LIBRARY, NAME},
#include "late_imports.inc"
#undef LATE_IMPORT
};

constexpr char kPrintName[] = "acutPrintf";

bool isTold[std::size(kImports)] = {};

void tell(std::size_t index) {
  if (isTold[index]) return;
  isTold[index] = true;
  const char* const name = kImports[index].name;
  LM_LOG(kError, "Host", "Host::missing")
      << "AutoCAD has no function '" << name << "', what needs it is switched off!";
  if (std::strcmp(name, kPrintName) == 0) return;
  acutPrintf(L"\nLumetrapad: AutoCAD has no function '%hs', what needs it is switched off.\n", name);
}

template <std::size_t kIndex>
void missing() {
  tell(kIndex);
  throw HostFunctionMissing();
}

/// Printing alone returns its failure: most callers only print.
int missingPrint(const ACHAR* /*format*/, ...) {
  for (std::size_t i = 0; i < std::size(kImports); ++i)
    if (std::strcmp(kImports[i].name, kPrintName) == 0) tell(i);
  return RTERROR;
}

}  // namespace

#define LATE_IMPORT(INDEX, LIBRARY, NAME)                    \
  extern "C" void* lateImport##INDEX __asm__("__imp_" NAME); \
  void* lateImport##INDEX = nullptr;
#include "late_imports.inc"
#undef LATE_IMPORT

namespace {

template <std::size_t kIndex>
void* find() {
  const LateImport& import = kImports[kIndex];
  const HMODULE library = GetModuleHandleW(import.library);
  const FARPROC address = library != nullptr ? GetProcAddress(library, import.name) : nullptr;
  if (address != nullptr) return reinterpret_cast<void*>(address);
  if (std::strcmp(import.name, kPrintName) == 0) return reinterpret_cast<void*>(&missingPrint);
  return reinterpret_cast<void*>(&missing<kIndex>);
}

/// Before any function of the module is called.
[[maybe_unused]] const bool isFound = [] {
#define LATE_IMPORT(INDEX, LIBRARY, NAME) lateImport##INDEX = find<INDEX>();
#include "late_imports.inc"
#undef LATE_IMPORT
  return true;
}();

}  // namespace
