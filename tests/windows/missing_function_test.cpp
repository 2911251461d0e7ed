// A host whose database library lacks one of the functions whose names are not sure.
#include "tests/windows/module_run.h"

namespace host = standin::host;

namespace {

constexpr const char* kMissing =
    "AutoCAD has no function '?getGeomExtents@AcDbEntity@@UEBA?AW4ErrorStatus@Acad@@AEAVAcDbExtents@@@Z', "
    "what needs it is "
    "switched off";

std::size_t countOf(const std::string& part, const std::string& text) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
  return count;
}

/// The library is in the process before the module asks for one of its name.
class IncompleteHost : public ModuleRun {
 protected:
  IncompleteHost() : mLibraryP(tests::openLibrary(LM_INCOMPLETE_DATABASE_FILE)) {}
  ~IncompleteHost() override { tests::closeLibrary(mLibraryP); }

  void moveOnce() {
    const std::size_t updates = mHost.mUpdates.size();
    const std::size_t commits = mHost.mCommits.size();
    moveCap(100, 50);
    EXPECT_TRUE(serve(0, [&] { return mHost.mUpdates.size() > updates + 3; }));
    moveCap(0, 0);
    EXPECT_TRUE(serve(0, [&] { return mHost.mCommits.size() > commits; }));
  }

 private:
  void* mLibraryP;
};

TEST_F(IncompleteHost, MissingFunctionIsReportedOnceAndTheRestWorks) {
  const LoadedModule module(LM_MODULE_FILE);
  EXPECT_EQ(module.send(AcRx::kInitAppMsg), AcRx::kRetOK);
  moveOnce();
  EXPECT_EQ(countOf("AutoCAD has no function", read("autocad_addin_log.txt")), 0u);
  // The centre of what is selected is where its extents are needed.
  host::select({0x10});
  moveOnce();
  moveOnce();
  std::string printed;
  for (const std::wstring& text : mHost.mPrinted) printed.append(text.begin(), text.end());
  module.send(AcRx::kUnloadAppMsg);
  const std::string log = read("autocad_addin_log.txt");
  EXPECT_EQ(countOf(kMissing, printed), 1u) << printed;
  EXPECT_EQ(countOf(kMissing, log), 1u) << log;
  EXPECT_GE(countOf("Error getSelObjectsCenter()", log), 1u) << log;
  EXPECT_TRUE(host::counts().breaches.empty());
}

}  // namespace
