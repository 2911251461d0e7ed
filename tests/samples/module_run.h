/// Runs of the built program with the real module, in a folder that lives as long as the object.
#ifndef TESTS_SAMPLES_MODULE_RUN_H
#define TESTS_SAMPLES_MODULE_RUN_H

#include <filesystem>
#include <string>

class ModuleRun {
 public:
  ModuleRun();
  ~ModuleRun();
  ModuleRun(const ModuleRun&) = delete;
  ModuleRun& operator=(const ModuleRun&) = delete;

  /// Folder of a run's results.
  std::filesystem::path out(const std::string& name) const { return mFolder / name; }
  /// Writes a file into the folder and answers its path.
  std::filesystem::path write(const std::string& name, const std::string& text) const;
  /// A file's text, empty when there is none.
  static std::string read(const std::filesystem::path& file);

  /// Exit status of a replay into out(name), which is made if need be; what it printed is in its stdout.txt.
  int play(const std::filesystem::path& drawing, const std::filesystem::path& session,
           const std::filesystem::path& menu, const std::string& name) const;

 private:
  std::filesystem::path mFolder;
};

#endif
