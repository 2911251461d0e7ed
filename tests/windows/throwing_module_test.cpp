// What a module throws into the host: the host's frames are of another compiler and cannot catch it.
#include "tests/support/system.h"
#include "tests/windows/module_run.h"

namespace host = standin::host;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace {

class ThrowingModule : public ModuleRun {
 protected:
  ThrowingModule() : mLibraryP(tests::openLibrary(LM_THROWING_MODULE_FILE)) { send(AcRx::kInitAppMsg); }
  ~ThrowingModule() override {
    send(AcRx::kUnloadAppMsg);
    tests::closeLibrary(mLibraryP);
  }
  void send(int message) {
    reinterpret_cast<int (*)(int, void*)>(tests::symbolOf(mLibraryP, "acrxEntryPoint"))(message, nullptr);
  }

 private:
  void* mLibraryP;
};

TEST_F(ThrowingModule, ACommandThatThrowsBreaksARuleAndEndsNothing) {
  for (const wchar_t* const name : {L"Throw_A_Number", L"Throw_An_Exception"}) {
    SCOPED_TRACE(name);
    const std::uint64_t breaches = host::counts().breachesInAll;
    host::type(name);
    ASSERT_EQ(host::counts().breachesInAll, breaches + 1);
    EXPECT_THAT(host::counts().breaches.back(), HasSubstr("a command of the module"));
  }
}

TEST_F(ThrowingModule, AReactorThatThrowsBreaksARuleAndTheDocumentIsClosed) {
  host::closeDocument();
  EXPECT_THAT(host::counts().breaches, ElementsAre(HasSubstr("a reactor of the module")));
  EXPECT_THAT(host::documentNames(), IsEmpty());
}

}  // namespace
