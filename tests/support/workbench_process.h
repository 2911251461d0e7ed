/// Runs the built program as a process of its own, in a folder that lives as long as the object.
#ifndef TESTS_SUPPORT_WORKBENCH_PROCESS_H
#define TESTS_SUPPORT_WORKBENCH_PROCESS_H

#include "tests/support/temp_folder.h"

#include <filesystem>
#include <string>

class WorkbenchProcess : public TempFolder {
 public:
  struct Outcome {
    int status = -1;  ///< exit status; -1 when a signal ended the process
    std::string out;
    std::string err;
  };

  /// What a replay reads, and the name of the folder in here that it writes to.
  struct Replay {
    std::filesystem::path drawing;
    std::filesystem::path session;
    std::filesystem::path menu;
    std::string out;
  };

  /// Runs "workbench ARGUMENTS" in the folder, with `environment` ("A=1 B=2") added to the process's own.
  Outcome run(const std::string& arguments, const std::string& environment = {}) const;

  /// Plays the session with the real module. The folder for the results is made if need be.
  Outcome replay(const Replay& files) const;
};

#endif
