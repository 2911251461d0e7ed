/// The application object: handles the messages of the host. One for the process, constructed before the
/// entry point is first called. Main thread; no exception leaves a handler or a command.
#ifndef HOST_AUTO_CAD_APP_H
#define HOST_AUTO_CAD_APP_H

#include "host/doc_data.h"

// clang-format off
#include <windows.h>
#include "accmd.h"
#include "acedads.h"
#include "arxEntryPoint.h"
// clang-format on

class LmAutoCad;

/// The base returns kRetOK for every message that has no handler here: the module has no LISP functions, and
/// nothing to do when the host quits, saves or opens a dialog.
class CAutoCAD2011App : public AcRxArxApp {
 public:
  CAutoCAD2011App();

  /// Registers with the dynamic linker and the command stack, and creates the core object.
  AcRx::AppRetCode On_kInitAppMsg(void* pkt) override;

  /// Removes the commands and destroys the core object; when it returns, no thread of the module is left.
  AcRx::AppRetCode On_kUnloadAppMsg(void* pkt) override;

  /// The module serves no COM components.
  void RegisterServerComponents() override {}

  // The commands, named group and command as an ObjectARX command table has them.
  static void LMGroupLM_Toggle_Rotation_Center();
  static void LMGroupLM_Toggle_Rotation_Axis();
  static void LMGroupLM_Toggle_Scroll_Mode();
  static void LMGroupLM_Toggle_Object_Move_Mode();

 private:
  // Owned; null until the init message, destroyed by the unload message only: a process that ends without it
  // has already ended their threads, and the host may not be called any more.
  LmAutoCad* mLmAutoCadP = nullptr;
  DocDataManager* mDocDataP = nullptr;
};

#endif
