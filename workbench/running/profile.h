/// The user's profile folder of a run: where the module finds and leaves its settings, its log and the menu
/// file.
#ifndef WORKBENCH_PROFILE_H
#define WORKBENCH_PROFILE_H

#include <filesystem>
#include <string>

namespace workbench {

/// The folders below `profile` that the module expects. Main thread.
class Profile {
 public:
  explicit Profile(const std::filesystem::path& profile);

  /// Makes the folders. Throws InputError when that cannot be done, and when the module could not write
  /// there.
  void make() const;
  /// Writes the menu file "autocad.mnu". Throws InputError when that cannot be done.
  void writeMenu(const std::string& bytes) const;

  const std::filesystem::path& folder() const { return mFolder; }
  /// The menu file, empty when there is none.
  std::string menu() const;

  /// The folder of the settings and, unless they say otherwise, of the log.
  std::filesystem::path settings() const { return mFolder / "Lumetrapad"; }
  std::filesystem::path settingsFile() const { return applications() / "autocad_addin.ini"; }

 private:
  std::filesystem::path applications() const { return settings() / "Applications"; }
  std::filesystem::path menuFile() const { return applications() / "autocad.mnu"; }

  std::filesystem::path mFolder;  ///< absolute
};

}  // namespace workbench

#endif
