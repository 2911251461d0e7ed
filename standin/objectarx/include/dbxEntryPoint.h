/// Base of a module's application object, and the entry point that hands the host's messages to it. Compiled
/// into the module. Main thread only. Needs <windows.h> before it.
#ifndef STANDIN_DBXENTRYPOINT_H
#define STANDIN_DBXENTRYPOINT_H

#include "rxdefs.h"
#include "rxdlinkr.h"

/// The module's instance handle; defined by IMPLEMENT_ARX_ENTRYPOINT, null until the module's DllMain sets
/// it.
extern HINSTANCE _hdllInstance;

class AcRxDbxApp {
 public:
  AcRxDbxApp() = default;
  virtual ~AcRxDbxApp() = default;
  AcRxDbxApp(const AcRxDbxApp&) = delete;
  AcRxDbxApp& operator=(const AcRxDbxApp&) = delete;

  virtual AcRx::AppRetCode On_kInitAppMsg(void* pkt) {
    m_hdllInstance = _hdllInstance;
    const AcRxDynamicLinker* linkerP = acrxDynamicLinker;
    if (linkerP == nullptr) return AcRx::kRetOK;
    if (m_bUnlocked) linkerP->unlockApplication(pkt);
    if (m_bMDIAware) linkerP->registerAppMDIAware(pkt);
    return AcRx::kRetOK;
  }
  virtual AcRx::AppRetCode On_kUnloadAppMsg(void* /*pkt*/) { return AcRx::kRetOK; }
  virtual AcRx::AppRetCode On_kLoadDwgMsg(void* /*pkt*/) { return AcRx::kRetOK; }
  virtual AcRx::AppRetCode On_kUnloadDwgMsg(void* /*pkt*/) { return AcRx::kRetOK; }
  virtual AcRx::AppRetCode On_kInvkSubrMsg(void* /*pkt*/) { return AcRx::kRetOK; }
  virtual AcRx::AppRetCode On_kCfgMsg(void* /*pkt*/) { return AcRx::kRetOK; }
  virtual AcRx::AppRetCode On_kEndMsg(void* /*pkt*/) { return AcRx::kRetOK; }
  virtual AcRx::AppRetCode On_kQuitMsg(void* /*pkt*/) { return AcRx::kRetOK; }
  virtual AcRx::AppRetCode On_kSaveMsg(void* /*pkt*/) { return AcRx::kRetOK; }
  virtual AcRx::AppRetCode On_kDependencyMsg(void* /*pkt*/) { return AcRx::kRetOK; }
  virtual AcRx::AppRetCode On_kNoDependencyMsg(void* /*pkt*/) { return AcRx::kRetOK; }
  virtual AcRx::AppRetCode On_kOleUnloadAppMsg(void* /*pkt*/) { return AcRx::kRetOK; }
  virtual AcRx::AppRetCode On_kPreQuitMsg(void* /*pkt*/) { return AcRx::kRetOK; }
  virtual AcRx::AppRetCode On_kInitDialogMsg(void* /*pkt*/) { return AcRx::kRetOK; }
  virtual AcRx::AppRetCode On_kEndDialogMsg(void* /*pkt*/) { return AcRx::kRetOK; }
  virtual AcRx::AppRetCode On_kNullMsg(void* /*pkt*/) { return AcRx::kRetOK; }

  virtual void RegisterServerComponents() = 0;

  /// Hands a message to its handler; kRetOK at once for a number that is not in the list.
  AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode msg, void* pkt) {
    switch (msg) {
      case AcRx::kNullMsg:
        return On_kNullMsg(pkt);
      case AcRx::kInitAppMsg:
        return On_kInitAppMsg(pkt);
      case AcRx::kUnloadAppMsg:
        return On_kUnloadAppMsg(pkt);
      case AcRx::kLoadDwgMsg:
        return On_kLoadDwgMsg(pkt);
      case AcRx::kUnloadDwgMsg:
        return On_kUnloadDwgMsg(pkt);
      case AcRx::kInvkSubrMsg:
        return On_kInvkSubrMsg(pkt);
      case AcRx::kCfgMsg:
        return On_kCfgMsg(pkt);
      case AcRx::kEndMsg:
        return On_kEndMsg(pkt);
      case AcRx::kQuitMsg:
        return On_kQuitMsg(pkt);
      case AcRx::kSaveMsg:
        return On_kSaveMsg(pkt);
      case AcRx::kDependencyMsg:
        return On_kDependencyMsg(pkt);
      case AcRx::kNoDependencyMsg:
        return On_kNoDependencyMsg(pkt);
      case AcRx::kOleUnloadAppMsg:
        return On_kOleUnloadAppMsg(pkt);
      case AcRx::kPreQuitMsg:
        return On_kPreQuitMsg(pkt);
      case AcRx::kInitDialogMsg:
        return On_kInitDialogMsg(pkt);
      case AcRx::kEndDialogMsg:
        return On_kEndDialogMsg(pkt);
    }
    return AcRx::kRetOK;
  }

 protected:
  HINSTANCE m_hdllInstance = nullptr;
  bool m_bUnlocked = true;
  bool m_bMDIAware = true;
};

#if defined(_WIN32)
#define STANDIN_MODULE_EXPORT __declspec(dllexport)
#else
#define STANDIN_MODULE_EXPORT __attribute__((visibility("default")))
#endif

/// Defines the module's one application object and its exported entry point. Use at global scope, once.
#define IMPLEMENT_ARX_ENTRYPOINT(CLASS)                                                               \
  HINSTANCE _hdllInstance = nullptr;                                                                  \
  static CLASS entryPointObject;                                                                      \
  extern "C" STANDIN_MODULE_EXPORT AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode msg, void* pkt) { \
    AcRxDbxApp& applicationObject = entryPointObject;                                                 \
    return applicationObject.acrxEntryPoint(msg, pkt);                                                \
  }

#endif
