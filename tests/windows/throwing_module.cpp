// A module, in AutoCAD's ABI, that throws into the host wherever the host calls it. Its exceptions are of the
// kinds that a module can have: a number, a class of its own, a class of the library that it is compiled
// with.
// clang-format off
#include <windows.h>
#include "accmd.h"
#include "acdocman.h"
#include "acedads.h"
#include "arxEntryPoint.h"
// clang-format on

#include <stdexcept>

namespace {

struct OwnError {};

class ThrowingReactor final : public AcApDocManagerReactor {
 public:
  void documentToBeDestroyed(AcApDocument* /*documentP*/) override { throw OwnError(); }
};

}  // namespace

class ThrowingApp final : public AcRxArxApp {
 public:
  AcRx::AppRetCode On_kInitAppMsg(void* packetP) override {
    const AcRx::AppRetCode result = AcRxArxApp::On_kInitAppMsg(packetP);
    acDocManagerPtr()->addReactor(&mReactor);
    return result;
  }
  AcRx::AppRetCode On_kUnloadAppMsg(void* packetP) override {
    acDocManagerPtr()->removeReactor(&mReactor);
    return AcRxArxApp::On_kUnloadAppMsg(packetP);
  }
  void RegisterServerComponents() override {}

  static void TestThrow_A_Number() { throw 7; }
  static void TestThrow_An_Exception() { throw std::length_error("thrown by a command"); }

 private:
  ThrowingReactor mReactor;
};

IMPLEMENT_ARX_ENTRYPOINT(ThrowingApp);
ACED_ARXCOMMAND_ENTRY_AUTO(ThrowingApp, Test, Throw_A_Number, Throw_A_Number, ACRX_CMD_MODAL, nullptr);
ACED_ARXCOMMAND_ENTRY_AUTO(ThrowingApp, Test, Throw_An_Exception, Throw_An_Exception, ACRX_CMD_MODAL,
                           nullptr);
