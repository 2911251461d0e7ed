/// A folder for one test, removed with everything in it when the test is over.
#ifndef TESTS_UTIL_TEMP_FOLDER_H
#define TESTS_UTIL_TEMP_FOLDER_H

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

  /// Full path of `name`, both with backslashes, as the module's own texts have it.
  std::string path(std::string_view name) const {
    std::string result = mRoot.string() + "\\" + std::string(name);
    std::replace(result.begin(), result.end(), '/', '\\');
    return result;
  }

  void write(const std::string& name, std::string_view text) const {
    std::ofstream(mRoot / name, std::ios::binary) << text;
  }

  std::string read(const std::string& name) const {
    // As text: on Windows the lines end in their own manner.
    std::ifstream file(mRoot / name);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  }

  bool has(const std::string& name) const { return std::filesystem::exists(mRoot / name); }

 private:
  std::filesystem::path mRoot;
};

#endif
