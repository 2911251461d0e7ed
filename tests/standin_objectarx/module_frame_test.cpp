#include "host_fixture.h"
#include "tests/support/system.h"

#include "rxdefs.h"

namespace {

using namespace standin;

using EntryPoint = AcRx::AppRetCode (*)(AcRx::AppMsgCode, void*);
using Handled = const wchar_t* (*)();

class ModuleFrame : public HostTest {
 protected:
  ModuleFrame() : mLibraryP(tests::openLibrary(SAMPLE_MODULE_PATH)) {
    mEntryPoint = reinterpret_cast<EntryPoint>(tests::symbolOf(mLibraryP, "acrxEntryPoint"));
    mHandled = reinterpret_cast<Handled>(tests::symbolOf(mLibraryP, "handled"));
  }
  ~ModuleFrame() override { tests::closeLibrary(mLibraryP); }
  void SetUp() override { ASSERT_TRUE(mEntryPoint != nullptr && mHandled != nullptr); }

  AcRx::AppRetCode send(int message) { return mEntryPoint(static_cast<AcRx::AppMsgCode>(message), nullptr); }

  void* mLibraryP;
  EntryPoint mEntryPoint = nullptr;
  Handled mHandled = nullptr;
};

TEST_F(ModuleFrame, EachMessageReachesItsOwnHandler) {
  for (int message = 0; message <= 15; ++message) send(message);
  EXPECT_STREQ(
      mHandled(),
      L"null init unload load unload-dwg invoke cfg end quit save dependency no-dependency ole-unload "
      L"pre-quit init-dialog end-dialog ");
}

TEST_F(ModuleFrame, EntryPointReturnsOkForUnknownMessages) {
  EXPECT_EQ(send(16), AcRx::kRetOK);
  EXPECT_EQ(send(9999), AcRx::kRetOK);
  EXPECT_EQ(send(-1), AcRx::kRetOK);
  EXPECT_STREQ(mHandled(), L"");
}

TEST_F(ModuleFrame, EntryPointReturnsTheResultOfTheHandler) {
  EXPECT_EQ(send(AcRx::kSaveMsg), AcRx::kRetError);
  EXPECT_EQ(send(AcRx::kInitAppMsg), AcRx::kRetOK);
}

TEST_F(ModuleFrame, InitUnlocksAndRegistersTheApplication) {
  send(AcRx::kInitAppMsg);
  EXPECT_EQ(host::faults().calls("AcRxDynamicLinker::unlockApplication"), 1u);
  EXPECT_EQ(host::faults().calls("AcRxDynamicLinker::registerAppMDIAware"), 1u);
}

TEST_F(ModuleFrame, CommandsExistFromInitToUnload) {
  EXPECT_EQ(host::counts().commandsRegistered, 0u);
  send(AcRx::kInitAppMsg);
  EXPECT_EQ(host::counts().commandsRegistered, 2u);
  send(AcRx::kUnloadAppMsg);
  EXPECT_EQ(host::counts().commandsRegistered, 0u);
}

TEST_F(ModuleFrame, CommandRunsByItsGlobalOrLocalName) {
  send(AcRx::kInitAppMsg);
  host::type(L"FIRST");
  host::type(L"_first");
  host::type(L"localfirst");
  EXPECT_EQ(mHost.mPrinted, (std::vector<std::wstring>{L"first", L"first", L"first"}));
}

TEST_F(ModuleFrame, ThrowingCommandBreaksARule) {
  send(AcRx::kInitAppMsg);
  host::type(L"Second");
  EXPECT_EQ(breaches(),
            std::vector<std::string>{"a command of the module: let something be thrown into the host"});
}

TEST_F(ModuleFrame, CommandIsUnknownAfterUnload) {
  send(AcRx::kInitAppMsg);
  send(AcRx::kUnloadAppMsg);
  host::type(L"First");
  EXPECT_EQ(mHost.mHostPrinted, std::vector<std::wstring>{L"Unknown command \"FIRST\"."});
}

TEST_F(ModuleFrame, InitSucceedsWithoutRegistryEntries) {
  host::faults().inject("AcRxDictionary::at", {Misbehaviour::kFail, 1, false});
  EXPECT_EQ(send(AcRx::kInitAppMsg), AcRx::kRetOK);
  EXPECT_EQ(host::counts().commandsRegistered, 0u);
}

}  // namespace
