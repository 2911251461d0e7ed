/// Menus that the menu maker has made, and the exporter has written a file for, in a folder that goes with
/// them.
#ifndef TESTS_EXPORTER_MADE_MENUS_H
#define TESTS_EXPORTER_MADE_MENUS_H

#include <filesystem>
#include <string>
#include <vector>

class MadeMenus {
 public:
  /// Runs the maker with these arguments and the folder. Throws std::runtime_error when it fails.
  explicit MadeMenus(const std::string& arguments);
  ~MadeMenus();
  MadeMenus(const MadeMenus&) = delete;
  MadeMenus& operator=(const MadeMenus&) = delete;

  const std::filesystem::path& folder() const { return mFolder; }

  static std::string read(const std::filesystem::path& file);
  static std::vector<std::string> lines(const std::string& text);

 private:
  std::filesystem::path mFolder;
};

#endif
