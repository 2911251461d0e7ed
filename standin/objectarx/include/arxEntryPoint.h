/// Application object of a module with commands: they are on the host's command stack from the init to the
/// unload message. Compiled into the module. Main thread only. Needs <windows.h>, accmd.h and acedads.h
/// before it.
#ifndef STANDIN_ARXENTRYPOINT_H
#define STANDIN_ARXENTRYPOINT_H

#include "dbxEntryPoint.h"

/// A row of the module's command table; rows stand in the order of their definition.
class AcRxArxCommandEntry {
 public:
  AcRxArxCommandEntry(const ACHAR* group, const ACHAR* globalName, const ACHAR* localName, Adesk::Int32 flags,
                      AcRxFunctionPtr function, AcEdUIContext* contextP)
      : mGroupP(group),
        mGlobalNameP(globalName),
        mLocalNameP(localName),
        mFlags(flags),
        mFunction(function),
        mContextP(contextP) {
    AcRxArxCommandEntry** linkP = &first();
    while (*linkP != nullptr) linkP = &(*linkP)->mNextP;
    *linkP = this;
  }

  /// Head of the table of the module that includes this header.
  static AcRxArxCommandEntry*& first() {
    static AcRxArxCommandEntry* headP = nullptr;
    return headP;
  }
  const AcRxArxCommandEntry* next() const { return mNextP; }

  void addTo(AcEdCommandStack& stack) const {
    stack.addCommand(mGroupP, mGlobalNameP, mLocalNameP, mFlags, mFunction, mContextP, -1, _hdllInstance);
  }
  void removeFrom(AcEdCommandStack& stack) const { stack.removeCmd(mGroupP, mGlobalNameP); }

 private:
  const ACHAR* mGroupP;
  const ACHAR* mGlobalNameP;
  const ACHAR* mLocalNameP;
  Adesk::Int32 mFlags;
  AcRxFunctionPtr mFunction;
  AcEdUIContext* mContextP;
  AcRxArxCommandEntry* mNextP = nullptr;
};

/// The module's table of LISP functions is empty, so load drawing, unload drawing and invoke do what
/// the base does.
class AcRxArxApp : public AcRxDbxApp {
 public:
  AcRx::AppRetCode On_kInitAppMsg(void* pkt) override {
    const AcRx::AppRetCode result = AcRxDbxApp::On_kInitAppMsg(pkt);
    if (AcEdCommandStack* stackP = acedRegCmds)
      for (auto* rowP = firstRow(); rowP != nullptr; rowP = rowP->next()) rowP->addTo(*stackP);
    return result;
  }

  AcRx::AppRetCode On_kUnloadAppMsg(void* pkt) override {
    const AcRx::AppRetCode result = AcRxDbxApp::On_kUnloadAppMsg(pkt);
    if (AcEdCommandStack* stackP = acedRegCmds)
      for (auto* rowP = firstRow(); rowP != nullptr; rowP = rowP->next()) rowP->removeFrom(*stackP);
    return result;
  }

 private:
  static const AcRxArxCommandEntry* firstRow() { return AcRxArxCommandEntry::first(); }
};

/// Adds a row to the command table. The handler is the static member CLASS::GROUP##GLOBAL().
#define ACED_ARXCOMMAND_ENTRY_AUTO(CLASS, GROUP, GLOBAL, LOCAL, FLAGS, UICONTEXT) \
  static AcRxArxCommandEntry arxCommand_##CLASS##_##GROUP##GLOBAL(                \
      ACRX_T(#GROUP), ACRX_T(#GLOBAL), ACRX_T(#LOCAL), FLAGS, &CLASS::GROUP##GLOBAL, UICONTEXT);

#endif
