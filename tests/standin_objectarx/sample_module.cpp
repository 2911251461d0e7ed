// A module as small as one can be: what the entry point and the command table make of it.
// clang-format off
#include <windows.h>
#include "accmd.h"
#include "acedads.h"
#include "acutads.h"
#include "arxEntryPoint.h"
// clang-format on

#include <string>

namespace {

std::wstring gHandled;

void note(const wchar_t* handler) {
  gHandled += handler;
}

}  // namespace

class SampleApp : public AcRxArxApp {
 public:
  AcRx::AppRetCode On_kInitAppMsg(void* pkt) override {
    note(L"init ");
    return AcRxArxApp::On_kInitAppMsg(pkt);
  }
  AcRx::AppRetCode On_kUnloadAppMsg(void* pkt) override {
    note(L"unload ");
    return AcRxArxApp::On_kUnloadAppMsg(pkt);
  }
  AcRx::AppRetCode On_kLoadDwgMsg(void*) override { return answer(L"load "); }
  AcRx::AppRetCode On_kUnloadDwgMsg(void*) override { return answer(L"unload-dwg "); }
  AcRx::AppRetCode On_kInvkSubrMsg(void*) override { return answer(L"invoke "); }
  AcRx::AppRetCode On_kCfgMsg(void*) override { return answer(L"cfg "); }
  AcRx::AppRetCode On_kEndMsg(void*) override { return answer(L"end "); }
  AcRx::AppRetCode On_kQuitMsg(void*) override { return answer(L"quit "); }
  AcRx::AppRetCode On_kSaveMsg(void*) override { return answer(L"save "); }
  AcRx::AppRetCode On_kDependencyMsg(void*) override { return answer(L"dependency "); }
  AcRx::AppRetCode On_kNoDependencyMsg(void*) override { return answer(L"no-dependency "); }
  AcRx::AppRetCode On_kOleUnloadAppMsg(void*) override { return answer(L"ole-unload "); }
  AcRx::AppRetCode On_kPreQuitMsg(void*) override { return answer(L"pre-quit "); }
  AcRx::AppRetCode On_kInitDialogMsg(void*) override { return answer(L"init-dialog "); }
  AcRx::AppRetCode On_kEndDialogMsg(void*) override { return answer(L"end-dialog "); }
  AcRx::AppRetCode On_kNullMsg(void*) override { return answer(L"null "); }
  void RegisterServerComponents() override {}

  static void SampleFirst() { acutPrintf(L"first"); }
  static void SampleSecond() { throw 1; }

 private:
  static AcRx::AppRetCode answer(const wchar_t* handler) {
    note(handler);
    return AcRx::kRetError;
  }
};

IMPLEMENT_ARX_ENTRYPOINT(SampleApp)

ACED_ARXCOMMAND_ENTRY_AUTO(SampleApp, Sample, First, LocalFirst, ACRX_CMD_MODAL, nullptr)
ACED_ARXCOMMAND_ENTRY_AUTO(SampleApp, Sample, Second, Second, ACRX_CMD_MODAL, nullptr)

/// The handlers that have run, in order, for the tests to see.
extern "C" STANDIN_MODULE_EXPORT const wchar_t* handled() {
  return gHandled.c_str();
}
