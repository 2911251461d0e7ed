/// Runs the built program as a process of its own, in a folder that lives as long as the object.
#ifndef TESTS_WORKBENCH_WORKBENCH_PROCESS_H
#define TESTS_WORKBENCH_WORKBENCH_PROCESS_H

#include <filesystem>
#include <string>

namespace workbench {

struct Outcome {
  int status = -1;  ///< exit status; -1 when a signal ended the process
  std::string out;
  std::string err;
};

class WorkbenchProcess {
 public:
  WorkbenchProcess();
  ~WorkbenchProcess();
  WorkbenchProcess(const WorkbenchProcess&) = delete;
  WorkbenchProcess& operator=(const WorkbenchProcess&) = delete;

  const std::filesystem::path& folder() const { return mFolder; }
  void write(const std::string& name, const std::string& text) const;
  std::string read(const std::string& name) const;

  /// Runs "workbench ARGUMENTS" in the folder; `fault` is what the fake module does wrong.
  Outcome run(const std::string& arguments, const std::string& fault = {}) const;

  /// Writes the session and replays it with the fake module, drawing `a.dxf` and the folder `out` (made if
  /// need be).
  Outcome replay(const std::string& session, const std::string& options = {},
                 const std::string& fault = {}) const;

 private:
  std::filesystem::path mFolder;
};

}  // namespace workbench

#endif
