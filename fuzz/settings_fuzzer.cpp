/// Any bytes are a settings file: what was read completely reads back the same after it was written.
#include "LM_Daemon/src/logging.h"
#include "common_sources/settings.h"
#include "fuzz/memory_file.h"
#include "tests/support/temp_folder.h"

#include <cstdlib>

namespace {

/// A NUL at the end of a value is dropped in reading, so such a value does not survive.
bool hasNul(const std::string& text) {
  return text.find('\0') != std::string::npos;
}

Settings& settings() {
  static Settings instance;
  return instance;
}

}  // namespace

/// Keeps the settings of whoever runs this out of it.
extern "C" int LLVMFuzzerInitialize(int*, char***) {
  return unsetenv("USERPROFILE");
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dataP, std::size_t size) {
  static MemoryFile file;
  static const TempFolder folder;
  static const std::string written = folder.path("written.ini");
  file.fill(dataP, size);
  Settings& tested = settings();
  if (tested.readSettingsFile(file.path()) != 0) return 0;
  const std::string dump = tested.dump();
  if (tested.writeSettingsFile(written) != 0) std::abort();
  if (hasNul(dump)) return 0;
  if (tested.readSettingsFile(written) != 0 || tested.dump() != dump) std::abort();
  return 0;
}
