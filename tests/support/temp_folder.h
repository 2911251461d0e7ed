/// A folder for one test, removed with everything in it when the test is over.
#ifndef TESTS_SUPPORT_TEMP_FOLDER_H
#define TESTS_SUPPORT_TEMP_FOLDER_H

#include "tests/support/system.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

class TempFolder {
 public:
  TempFolder() : mRoot(tests::makeTempFolder()) {}
  ~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(mRoot, ignored);
  }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  const std::filesystem::path& root() const { return mRoot; }
  std::filesystem::path operator/(const std::filesystem::path& name) const { return mRoot / name; }

  /// Full path of `name`, both with backslashes, as the module's own texts have it.
  std::string path(std::string_view name) const {
    std::string result = mRoot.string() + "\\" + std::string(name);
    std::replace(result.begin(), result.end(), '/', '\\');
    return result;
  }

  /// Writes the bytes of `text` and returns the file's path.
  std::filesystem::path write(const std::filesystem::path& name, std::string_view text) const {
    std::ofstream(mRoot / name, std::ios::binary) << text;
    return mRoot / name;
  }

  /// The file's text, its lines ended by line feeds on every system; empty when there is no such file.
  std::string read(const std::filesystem::path& name) const { return contents(name, std::ios::in); }
  std::string bytes(const std::filesystem::path& name) const { return contents(name, std::ios::binary); }

  bool has(const std::filesystem::path& name) const { return std::filesystem::exists(mRoot / name); }

 private:
  std::string contents(const std::filesystem::path& name, std::ios::openmode mode) const {
    std::ifstream file(mRoot / name, mode);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  }

  std::filesystem::path mRoot;
};

#endif
