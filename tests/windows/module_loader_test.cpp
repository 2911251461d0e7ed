// What the workbench says of a module that Windows does not load. This program needs no library of its own,
// so that a missing one is missing.
#include "workbench/platform/module_loader.h"

#include "tests/support/temp_folder.h"
#include "workbench/input_error.h"

#include <gmock/gmock.h>

namespace {

using workbench::InputError;
using workbench::Module;

std::string messageFor(const std::filesystem::path& file) {
  try {
    const Module module(file);
  } catch (const InputError& error) {
    return error.what();
  }
  return "loaded";
}

TEST(ModuleLoader, LoaderNamesTheFirstLibraryThatIsMissing) {
  const TempFolder folder;
  const std::filesystem::path module = folder.root() / "LMTRAutoCAD2013.arx";
  std::filesystem::copy_file(LM_MODULE_FILE, module);
  // The program's own folder is searched before any other, so it must not be the build's.
  EXPECT_EQ(messageFor(module), module.string() +
                                    ": expected a module for host interface 0x130000, found one that needs "
                                    "accore.dll, which is missing");
}

TEST(ModuleLoader, LoaderNamesAFileThatIsNoLibrary) {
  const TempFolder folder;
  folder.write("a.arx", "no library");
  EXPECT_EQ(messageFor(folder.root() / "a.arx"),
            (folder.root() / "a.arx").string() +
                ": expected a module for host interface 0x130000, found a file that is no 64-bit library");
}

TEST(ModuleLoader, LoaderNamesAFileThatIsMissing) {
  const TempFolder folder;
  EXPECT_EQ(messageFor(folder.root() / "a.arx"),
            (folder.root() / "a.arx").string() +
                ": expected a module for host interface 0x130000, found no such file");
}

}  // namespace
