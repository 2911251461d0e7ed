#include "tests/exporter/made_menus.h"

#include "tests/support/system.h"

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

MadeMenus::MadeMenus(const std::string& arguments) : mFolder(tests::makeTempFolder()) {
  const std::string command = LM_MONO " '" LM_MENU_MAKER "' " + arguments + " '" + mFolder.string() + "'";
  if (std::system(command.c_str()) != 0) throw std::runtime_error("failed: " + command);
}

MadeMenus::~MadeMenus() {
  std::error_code ignored;
  std::filesystem::remove_all(mFolder, ignored);
}

std::string MadeMenus::read(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) throw std::runtime_error("no " + file.string());
  return {std::istreambuf_iterator<char>(stream), {}};
}

std::vector<std::string> MadeMenus::lines(const std::string& text) {
  std::vector<std::string> found;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) found.push_back(line);
  return found;
}
