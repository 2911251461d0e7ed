/// The tables of what a module calls of the host, and the stand-in's operations.
#include "standin/objectarx/host_control.h"

#include <gtest/gtest.h>

#include <fstream>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

using Texts = std::vector<std::string>;

std::vector<Texts> rowsOf(const std::string& file) {
  std::ifstream stream(LM_SOURCE_DIR "/" + file);
  std::vector<Texts> rows;
  for (std::string line; std::getline(stream, line);) {
    std::istringstream cells(line);
    rows.emplace_back();
    for (std::string cell; std::getline(cells, cell, '\t');) rows.back().push_back(cell);
  }
  return rows;
}

/// What every object of the host has, what only calculates, and what the host calls itself, is no operation.
bool isOperation(const std::string& owner, const std::string& name) {
  static const std::set<std::string> kOfAnyObject = {"isA",       "desc",       "clone",    "copyFrom",
                                                     "isEqualTo", "comparedTo", "subQueryX"};
  return owner.rfind("AcGe", 0) != 0 && owner != "AcRxClass" && owner != "AcApDocManagerReactor" &&
         kOfAnyObject.count(name) == 0;
}

/// Names without their class: a function of a base class is imported, or called by a slot, of another one.
std::set<std::string> operations() {
  std::set<std::string> names;
  for (const std::string& name : standin::host::faults().names())
    names.insert(name.find("::") == std::string::npos ? name : name.substr(name.rfind(':') + 1));
  return names;
}

TEST(Interface, EveryImportedFunctionIsAnOperation) {
  const std::set<std::string> known = operations();
  std::size_t count = 0;
  for (const Texts& row : rowsOf("standin/objectarx/abi/imports.tsv")) {
    std::smatch parts;
    // A plain name, or ?name@Class@@ with its signature. Constructors and operators begin with ??.
    if (row.size() != 4 || row[3] != "function") continue;
    if (!std::regex_search(row[2], parts, std::regex(R"(^\??(\w+)(?:@(\w*)@.*)?$)"))) continue;
    if (!isOperation(parts[2], parts[1])) continue;
    ++count;
    EXPECT_EQ(known.count(parts[1]), 1u) << row[2];
  }
  EXPECT_GT(count, 25u);
}

TEST(Interface, EveryFunctionCalledBySlotIsAnOperation) {
  const std::set<std::string> known = operations();
  std::size_t count = 0;
  for (const Texts& row : rowsOf("tests/abi/interface.tsv")) {
    if (row.size() < 4 || row[0] != "slot") continue;
    const std::string name = row[3].substr(0, row[3].find('('));
    if (!isOperation(row[1], name)) continue;
    ++count;
    EXPECT_EQ(known.count(name), 1u) << row[1] << "::" << name;
  }
  EXPECT_GT(count, 20u);
}

}  // namespace
