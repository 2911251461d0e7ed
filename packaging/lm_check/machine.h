/// Which of the things that the module needs a machine has: facts, found by one of the two gather functions
/// and judged by checkMachine(). Paths are in Windows' ANSI code page, as the module has them.
#ifndef PACKAGING_LM_CHECK_MACHINE_H
#define PACKAGING_LM_CHECK_MACHINE_H

#include "packaging/lm_check/finding.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// Result of connecting to the driver as the module does.
enum class Connection { kNotTried, kHangs, kRefused, kNoCount, kOpen };

struct ClientLibrary {
  std::string path;          ///< empty when it was not found
  std::string driverFolder;  ///< where the driver is installed; empty when the registry has no entry
  bool isInDriverFolder = false;
  bool is64Bit = true;
  std::uint32_t loadError = 0;  ///< Windows' number; 0 when it could be loaded
  std::vector<int> missingOperations;
  Connection connection = Connection::kNotTried;
  std::vector<std::optional<std::string>> devices;  ///< names, none for one that was not described
};

struct Bundle {
  std::string folder;
  bool isForAllUsers = false;
  std::vector<std::string> missing;  ///< files, relative to the folder
  std::vector<std::string> blocked;  ///< files with the mark of the web
  std::vector<std::string> not64Bit;
};

struct Machine {
  bool hasAutoCad = false;
  bool has32BitAutoCad = false;
  std::vector<std::string> bundlePlaces;  ///< folders that AutoCAD looks into
  std::vector<Bundle> bundles;
  ClientLibrary client;
  unsigned codePage = 0;
  /// Paths that a conversion to the code page and back changes.
  std::vector<std::string> lossyPaths;
  /// Paths with a character whose second byte is that of the backslash, at which the module would cut.
  std::vector<std::string> misreadPaths;
};

/// Windows only. Loads the client library, connects and disconnects.
Machine gatherMachine();

Findings checkMachine(const Machine& machine);

#endif
